#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/macos/MacWorld.h"
#include "tests/contract/SessionStage.h"

namespace ovin {

/// The program of status items (MacStatusItem.mm).
class MacStatusItems final : public StatusItemProgram {
public:
    explicit MacStatusItems(const std::vector<std::string>& titles);

    void rename(std::size_t item, const std::string& title) override;

private:
    void take(const std::string& line) override;
};

/// The session in which the tests run, with real programs. Whoever starts them must have given the terminal access to the
/// Accessibility interface. The settings are in a domain of the stage's own; all else is the world as a program opens it.
class MacStage final : public SessionStage {
public:
    MacStage();
    ~MacStage() override;

    /// Makes the application object. To be called once, before any stage, with the path of the program of status items.
    static void prepareProcess(const std::string& program);

    [[nodiscard]] std::optional<std::string> reasonWithout(Ability ability) const override;
    [[nodiscard]] Platform platform() override;
    [[nodiscard]] StagedUser& user() override { return *user_; }

    bool runUntil(const std::function<bool()>& condition, Duration limit) override;
    [[nodiscard]] WallClock& wallClock() override;

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
    [[nodiscard]] UpdateFeed& updateFeed() override;
    std::string announce(const std::vector<FeedItem>& items) override;
    [[nodiscard]] std::vector<std::string> logLines() override;

private:
    [[nodiscard]] std::unique_ptr<StatusItemProgram> launch(const StagedApplication& application) override;

    MacWorld world_;
    std::unique_ptr<UserDefaults> defaults_;
    std::optional<DisplayMode> firstMode_;
    const std::unique_ptr<StagedUser> user_;
};

}  // namespace ovin
