#include "tests/contract/MemoryStage.h"

#include <utility>

namespace ovin {

ProcessID MemoryApplications::start(const StagedApplication& application) {
    const ProcessID pid = nextPid_++;
    const MemoryElement root = accessibility_.launch(pid);
    const MemoryElement extras = accessibility_.makeElement(pid);
    auto& items = items_[pid];
    presses_[pid] = std::make_shared<std::vector<std::size_t>>();
    for (const std::string& title : application.itemTitles) items.push_back(makeItem(pid, items.size(), title));
    extras.setChildren(items);
    root.set("AXExtrasMenuBar", {extras.element()});

    RunningApplication running;
    running.pid = pid;
    running.localizedName = application.name;
    running.bundlePath = "/Applications/" + application.name + ".app";
    workspace_.launch(std::move(running));
    return pid;
}

MemoryElement MemoryApplications::makeItem(ProcessID pid, std::size_t index, const std::string& title) {
    const MemoryElement item = accessibility_.makeElement(pid);
    item.set("AXTitle", {title});
    item.setFrame({{100.0 + 24.0 * static_cast<double>(index), 0}, {24, 24}});
    item.answerWith("AXPress", [pressed = presses_.at(pid), index] {
        pressed->push_back(index);
        return MemoryAnswer{};
    });
    return item;
}

void MemoryApplications::quit(ProcessID pid) {
    accessibility_.quit(pid);
    workspace_.quit(pid);
}

MemoryStage::MemoryStage() {
    world_.displays.displays.front().modes = {{1, 1512, 982, 3024, true}, {2, 1800, 1169, 3600, true}};
}

Platform MemoryStage::platform() { return world_.platform(*defaults_); }

bool MemoryStage::runUntil(const std::function<bool()>& condition, Duration limit) {
    const Duration end = world_.time.now() + limit;
    while (!condition()) {
        if (world_.time.now() >= end) return false;
        world_.time.advance(std::chrono::milliseconds(1));
    }
    return true;
}

void MemoryStage::reopenDefaults() {
    auto reopened = std::make_unique<MemoryUserDefaults>();
    reopened->values = defaults_->values;
    defaults_ = std::move(reopened);
}

void MemoryStage::changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) {
    if (value) {
        defaults_->values.insert_or_assign(key, *value);
    } else {
        defaults_->values.erase(key);
    }
}

DisplayID MemoryStage::plugDisplay() {
    const DisplayID id = world_.displays.displays.back().id + 1;
    const DisplayMode mode{1, 1920, 1080, 1920, true};
    world_.displays.displays.push_back({id, {{1512, 0}, {1920, 1080}}, {mode}, mode, false});
    world_.screens.change();
    return id;
}

void MemoryStage::unplugDisplay(DisplayID display) {
    std::erase_if(world_.displays.displays, [=](const MemoryDisplays::Display& each) { return each.id == display; });
    world_.screens.change();
}

void MemoryStage::mirror(DisplayID) {
    for (MemoryDisplays::Display& each : world_.displays.displays) each.isMirrored = true;
    world_.screens.change();
}

void MemoryStage::switchElsewhere(const DisplayMode& mode) {
    (void)world_.displays.apply(mode.id, world_.displays.mainDisplay());
    const Size size = world_.displays.bounds(world_.displays.mainDisplay()).size;
    world_.screens.mainScreen = Screen{{{0, 0}, size}, {{0, 37}, {size.width, size.height - 37}}};
    world_.screens.change();
}

std::string MemoryStage::announce(const std::vector<FeedItem>& items) {
    const std::string url = "http://localhost/" + std::to_string(updateFeed_.answers.size());
    updateFeed_.answers[url] = items;
    return url;
}

}  // namespace ovin
