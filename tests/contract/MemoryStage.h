#pragma once

#include <map>

#include "platform/memory/MemoryUpdates.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/contract/MemoryUser.h"
#include "tests/contract/Stage.h"

namespace ovin {

/// Applications with status items among the processes of the in-memory world.
class MemoryApplications {
public:
    MemoryApplications(MemoryAccessibility& accessibility, MemoryWorkspace& workspace)
        : accessibility_(accessibility), workspace_(workspace) {}

    ProcessID start(const StagedApplication& application);
    void quit(ProcessID pid);
    void rename(ProcessID pid, std::size_t item, const std::string& title) {
        items_.at(pid).at(item).set("AXTitle", {title});
    }
    [[nodiscard]] std::vector<std::size_t> presses(ProcessID pid) { return *presses_.at(pid); }

private:
    MemoryElement makeItem(ProcessID pid, std::size_t index, const std::string& title);

    MemoryAccessibility& accessibility_;
    MemoryWorkspace& workspace_;
    ProcessID nextPid_ = 500;
    std::map<ProcessID, std::vector<MemoryElement>> items_;
    std::map<ProcessID, std::shared_ptr<std::vector<std::size_t>>> presses_;
};

/// The in-memory world.
class MemoryStage : public Stage {
public:
    MemoryStage();

    [[nodiscard]] Platform platform() override;
    [[nodiscard]] StagedUser& user() override { return user_; }

    bool runUntil(const std::function<bool()>& condition, Duration limit) override;
    void wait(Duration duration) override { world_.time.wait(duration); }
    [[nodiscard]] WallClock& wallClock() override { return wallClock_; }
    [[nodiscard]] Duration margin() const override { return Duration::zero(); }

    ProcessID start(const StagedApplication& application) override { return applications_.start(application); }
    void runCommand() override {}
    void quit(ProcessID pid) override { applications_.quit(pid); }
    [[nodiscard]] ProcessID unusedProcessID() override { return 99999; }
    void setHung(ProcessID pid, bool hung) override { world_.accessibility.setHung(pid, hung); }
    void rename(ProcessID pid, std::size_t item, const std::string& title) override {
        applications_.rename(pid, item, title);
    }
    [[nodiscard]] std::vector<std::size_t> presses(ProcessID pid) override { return applications_.presses(pid); }
    void setTrusted(bool trusted) override { world_.accessibility.setTrusted(trusted); }

    void reopenDefaults() override;
    void changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) override;
    void setRefusesChanges(bool refuses) override { defaults_->refusesChanges = refuses; }
    void setEnvironment(const std::string& name, const std::optional<std::string>& value) override {
        world_.process.setEnvironment(name, value);
    }
    void switchOffLaunchAtLogin() override { world_.launchAtLogin.current = LaunchAtLogin::Status::requiresApproval; }
    void setRefusesLaunchAtLogin(bool refuses) override {
        world_.launchAtLogin.failure = refuses ? std::optional<std::string>("refused") : std::nullopt;
    }
    DisplayID plugDisplay() override;
    void unplugDisplay(DisplayID display) override;
    void mirror(DisplayID display) override;
    void switchElsewhere(const DisplayMode& mode) override;
    [[nodiscard]] UpdateFeed& updateFeed() override { return updateFeed_; }
    std::string announce(const std::vector<FeedItem>& items) override;
    [[nodiscard]] std::vector<std::string> logLines() override { return world_.log.lines(); }

private:
    MemoryWorld world_;
    MemoryWallClock wallClock_{world_.time};
    MemoryUpdateFeed updateFeed_{world_.time};
    std::unique_ptr<MemoryUserDefaults> defaults_ = std::make_unique<MemoryUserDefaults>();
    MemoryApplications applications_{world_.accessibility, world_.workspace};
    MemoryUser user_{world_};
};

}  // namespace ovin
