#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/macos/MacWorld.h"
#include "tests/contract/Stage.h"

namespace ovin {

/// A program with status items of its own (MacStatusItem.mm), and what it has printed.
class MacStatusItems {
public:
    explicit MacStatusItems(const std::vector<std::string>& titles);
    MacStatusItems(const MacStatusItems&) = delete;
    MacStatusItems& operator=(const MacStatusItems&) = delete;
    /// Kills the program, stopped or not.
    ~MacStatusItems();

    [[nodiscard]] ProcessID pid() const { return pid_; }
    void setStopped(bool stopped) const;
    void rename(std::size_t item, const std::string& title) const;
    [[nodiscard]] std::vector<std::size_t> presses();

private:
    void readOutput();

    ProcessID pid_ = 0;
    int commands_ = -1;
    int output_ = -1;
    std::string unread_;
    std::vector<std::size_t> presses_;
};

/// The session in which the tests run, with real programs. Whoever starts them must have given the terminal access to the
/// Accessibility interface. The settings are in a domain of the stage's own; all else is the world as a program opens it.
class MacStage final : public Stage {
public:
    MacStage();
    ~MacStage() override;

    /// Makes the application object. To be called once, before any stage, with the path of the program of status items.
    static void prepareProcess(const std::string& program);

    [[nodiscard]] std::optional<std::string> reasonWithout(Ability ability) const override;
    [[nodiscard]] Platform platform() override;

    bool runUntil(const std::function<bool()>& condition, Duration limit) override;
    void wait(Duration duration) override;
    [[nodiscard]] WallClock& wallClock() override;
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
    [[nodiscard]] Downloads& downloads() override;
    Downloads::Source offer(const std::string& text) override;
    [[nodiscard]] std::vector<std::string> logLines() override;

private:
    [[nodiscard]] bool isRunning(ProcessID pid);
    [[nodiscard]] std::size_t itemCount(ProcessID pid);

    MacWorld world_;
    std::unique_ptr<UserDefaults> defaults_;
    std::optional<DisplayMode> firstMode_;
    std::map<ProcessID, std::unique_ptr<MacStatusItems>> applications_;
};

}  // namespace ovin
