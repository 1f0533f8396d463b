#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/LinuxWorld.h"
#include "platform/linux/system/BootClock.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "platform/linux/system/StandardErrorLog.h"
#include "platform/linux/updates/QtUpdateFeed.h"
#include "tests/contract/LinuxUser.h"
#include "tests/contract/LoopbackServer.h"
#include "tests/contract/SessionStage.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {

/// The program `status-item` of the private desktop.
class LinuxStatusItems final : public StatusItemProgram {
public:
    explicit LinuxStatusItems(const StagedApplication& application);

    void rename(std::size_t item, const std::string& title) override;
    [[nodiscard]] bool hasItsItems() override;

private:
    void take(const std::string& line) override;

    const std::size_t count_;
    std::size_t registrations_ = 0;
};

/// The Linux desktop that the test program runs on, with real programs as its applications. The settings are in a folder of
/// the stage's own and the log writes to a file of its own; all else is the world as a program opens it.
class LinuxStage final : public SessionStage {
public:
    LinuxStage();
    ~LinuxStage() override;

    [[nodiscard]] std::optional<std::string> reasonWithout(Ability ability) const override;
    [[nodiscard]] Platform platform() override;
    [[nodiscard]] StagedUser& user() override { return user_; }

    bool runUntil(const std::function<bool()>& condition, Duration limit) override;
    [[nodiscard]] WallClock& wallClock() override { return wallClock_; }

    [[nodiscard]] ProcessID unusedProcessID() override;
    void setTrusted(bool trusted) override;

    void runCommand() override;
    void reopenDefaults() override;
    void changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) override;
    void setRefusesChanges(bool refuses) override;
    void switchOffLaunchAtLogin() override;
    void setRefusesLaunchAtLogin(bool refuses) override;
    DisplayID plugDisplay() override;
    void unplugDisplay(DisplayID display) override;
    void mirror(DisplayID display) override;
    void switchElsewhere(const DisplayMode& mode) override;
    [[nodiscard]] UpdateFeed& updateFeed() override { return updateFeed_; }
    std::string announce(const std::vector<FeedItem>& items) override;
    [[nodiscard]] std::vector<std::string> logLines() override;

private:
    [[nodiscard]] std::filesystem::path defaultsPath() const { return folder_.path() / "defaults"; }
    [[nodiscard]] std::unique_ptr<StatusItemProgram> launch(const StagedApplication& application) override;
    [[nodiscard]] AutostartPlaces autostartPlaces() const;
    void putDisplaysBack();

    const TemporaryFolder folder_;
    const int logFile_;
    std::unique_ptr<LinuxWorld> world_;
    std::unique_ptr<FileUserDefaults> defaults_;
    AutostartEntry launchAtLogin_;
    StandardErrorLog log_;
    BootClock wallClock_;
    QtUpdateFeed updateFeed_;
    LoopbackServer server_;
    LinuxUser user_;
    DisplayMode firstMode_;
    bool hasSecondDisplay_ = false;
};

}  // namespace ovin
