#include "tests/contract/SessionStage.h"

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <utility>

namespace ovin {

void SessionStage::wait(Duration duration) { std::this_thread::sleep_for(duration); }

/// On a machine that is busy with a compiler, many waiting threads start one after the other.
Stage::Duration SessionStage::margin() const { return std::chrono::milliseconds(900); }

bool SessionStage::isRunning(ProcessID pid) {
    const auto applications = platform().workspace.runningApplications();
    return std::any_of(applications.begin(), applications.end(), [pid](const auto& each) { return each.pid == pid; });
}

std::size_t SessionStage::itemCount(ProcessID pid) {
    const Accessibility& accessibility = platform().accessibility;
    const AttributeAnswer extras =
        accessibility.copyAttributeValue(accessibility.applicationElement(pid), "AXExtrasMenuBar");
    const auto* container = std::get_if<AccessibilityElement>(&extras.value.content);
    if (extras.error != AccessibilityError::success || container == nullptr) return 0;
    const AttributeAnswer children = accessibility.copyAttributeValue(*container, "AXChildren");
    const auto* items = std::get_if<AttributeValue::Array>(&children.value.content);
    return items == nullptr ? 0 : items->size();
}

ProcessID SessionStage::start(const StagedApplication& application) {
    auto launched = launch(application);
    StatusItemProgram& program = *launched;
    const ProcessID pid = program.pid();
    programs_[pid] = std::move(launched);
    const std::size_t count = application.itemTitles.size();
    const auto isThere = [&] { return program.hasItsItems() && isRunning(pid) && itemCount(pid) == count; };
    require(runUntil(isThere, longTime), application.name + " does not come.");
    return pid;
}

void SessionStage::quit(ProcessID pid) {
    programs_.erase(pid);
    require(runUntil([&] { return !isRunning(pid) && itemCount(pid) == 0; }, longTime), "An application does not go.");
}

void SessionStage::setEnvironment(const std::string& name, const std::optional<std::string>& value) {
    value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
}

}  // namespace ovin
