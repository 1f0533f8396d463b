#include <thread>

#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"
#include "tests/contract/MemoryStage.h"

namespace ovin {
namespace {

/// The processes of the in-memory world, read by real threads in real time. This stage has no main queue, so contracts of
/// interfaces that need one do not run here.
class ThreadStage final : public MemoryStage {
public:
    [[nodiscard]] Platform platform() override {
        const Platform memory = MemoryStage::platform();
        return {accessibility_,     memory.workspace,     memory.displays,  memory.defaults,  memory.process,
                memory.text,        memory.log,           clock_,           memory.mainQueue, tasks_,
                memory.application, memory.screens,       memory.windows,   memory.events,    memory.statusBar,
                memory.alerts,      memory.launchAtLogin, memory.resources, memory.updates};
    }

    bool runUntil(const std::function<bool()>& condition, Duration limit) override {
        const Duration end = clock_.now() + limit;
        while (!condition()) {
            if (clock_.now() >= end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    void wait(Duration duration) override { std::this_thread::sleep_for(duration); }
    [[nodiscard]] Duration margin() const override { return std::chrono::milliseconds(900); }

    ProcessID start(const StagedApplication& application) override { return applications_.start(application); }
    void quit(ProcessID pid) override { applications_.quit(pid); }
    void setHung(ProcessID pid, bool hung) override { accessibility_.setHung(pid, hung); }
    void rename(ProcessID pid, std::size_t item, const std::string& title) override {
        applications_.rename(pid, item, title);
    }
    [[nodiscard]] std::vector<std::size_t> presses(ProcessID pid) override { return applications_.presses(pid); }
    void setTrusted(bool trusted) override { accessibility_.setTrusted(trusted); }

private:
    MemoryAccessibility accessibility_{[](Duration duration) { std::this_thread::sleep_for(duration); }};
    MemoryWorkspace workspace_;
    MemoryApplications applications_{accessibility_, workspace_};
    SteadyClock clock_;
    ThreadTasks tasks_;
};

}  // namespace

std::vector<NamedStageFactory> contractStages() {
    return {{"Threads", [] { return std::make_unique<ThreadStage>(); }}};
}

}  // namespace ovin
