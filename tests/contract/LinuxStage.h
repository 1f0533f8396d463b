#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/BootClock.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/QtDownloads.h"
#include "platform/linux/StandardErrorLog.h"
#include "tests/contract/LoopbackServer.h"
#include "tests/contract/Stage.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {

/// A running status-item program: what it has printed, and a way to command it.
class StatusItemProcess {
public:
    StatusItemProcess(const std::string& name, const std::vector<std::string>& titles);
    StatusItemProcess(const StatusItemProcess&) = delete;
    StatusItemProcess& operator=(const StatusItemProcess&) = delete;
    /// Kills the program, stopped or not.
    ~StatusItemProcess();

    [[nodiscard]] ProcessID pid() const { return pid_; }
    /// Returns when it has stopped, or is to go on.
    void setStopped(bool stopped) const;
    void rename(std::size_t item, const std::string& title) const;

    [[nodiscard]] std::size_t registrations();
    [[nodiscard]] std::vector<std::size_t> presses();

private:
    void readOutput();
    void take(const std::string& line);

    ProcessID pid_ = 0;
    int commands_ = -1;
    int output_ = -1;
    std::string unfinishedLine_;
    std::size_t registrations_ = 0;
    std::vector<std::size_t> presses_;
};

/// The Linux desktop that the test program runs on, with real programs as its applications. The settings are in a folder of
/// the stage's own and the log writes to a file of its own; all else is the world as a program opens it.
class LinuxStage final : public Stage {
public:
    LinuxStage();
    ~LinuxStage() override;

    [[nodiscard]] Platform platform() override;

    bool runUntil(const std::function<bool()>& condition, Duration limit) override;
    void wait(Duration duration) override;
    [[nodiscard]] WallClock& wallClock() override { return wallClock_; }
    [[nodiscard]] Duration margin() const override;

    ProcessID start(const StagedApplication& application) override;
    void quit(ProcessID pid) override;
    [[nodiscard]] ProcessID unusedProcessID() override;
    void setHung(ProcessID pid, bool hung) override { applications_.at(pid)->setStopped(hung); }
    void rename(ProcessID pid, std::size_t item, const std::string& title) override {
        applications_.at(pid)->rename(item, title);
    }
    [[nodiscard]] std::vector<std::size_t> presses(ProcessID pid) override { return applications_.at(pid)->presses(); }
    void setTrusted(bool trusted) override;

    void reopenDefaults() override;
    void setRefusesChanges(bool refuses) override;
    void setEnvironment(const std::string& name, const std::optional<std::string>& value) override;
    void switchOffLaunchAtLogin() override;
    void setRefusesLaunchAtLogin(bool refuses) override;
    DisplayID plugDisplay() override;
    void unplugDisplay(DisplayID display) override;
    void mirror(DisplayID display) override;
    void switchElsewhere(const DisplayMode& mode) override;
    [[nodiscard]] Downloads& downloads() override { return downloads_; }
    Downloads::Source offer(const std::string& text) override;
    [[nodiscard]] std::vector<std::string> logLines() override;

private:
    [[nodiscard]] std::filesystem::path defaultsPath() const { return folder_.path() / "defaults"; }
    [[nodiscard]] bool isRunning(ProcessID pid);
    [[nodiscard]] std::size_t itemCount(ProcessID pid);
    [[nodiscard]] AutostartPlaces autostartPlaces() const;
    void putDisplaysBack();

    const TemporaryFolder folder_;
    const int logFile_;
    std::unique_ptr<LinuxWorld> world_;
    std::unique_ptr<FileUserDefaults> defaults_;
    AutostartEntry launchAtLogin_;
    StandardErrorLog log_;
    BootClock wallClock_;
    QtDownloads downloads_{folder_.path() / "cache"};
    LoopbackServer server_;
    DisplayMode firstMode_;
    bool hasSecondDisplay_ = false;
    std::map<ProcessID, std::unique_ptr<StatusItemProcess>> applications_;
};

}  // namespace ovin
