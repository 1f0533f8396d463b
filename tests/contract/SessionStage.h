#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/contract/Stage.h"
#include "tests/contract/StatusItemProgram.h"

namespace ovin {

/// A stage in the session that the test program runs in, with real programs as its applications and real time.
class SessionStage : public Stage {
public:
    void wait(Duration duration) override;
    [[nodiscard]] Duration margin() const override;

    ProcessID start(const StagedApplication& application) override;
    void quit(ProcessID pid) override;
    void setHung(ProcessID pid, bool hung) override { programs_.at(pid)->setStopped(hung); }
    void rename(ProcessID pid, std::size_t item, const std::string& title) override {
        programs_.at(pid)->rename(item, title);
    }
    [[nodiscard]] std::vector<std::size_t> presses(ProcessID pid) override { return programs_.at(pid)->presses(); }

    void setEnvironment(const std::string& name, const std::optional<std::string>& value) override;

protected:
    /// Nothing that works takes this long.
    static constexpr std::chrono::seconds longTime{20};

    [[nodiscard]] virtual std::unique_ptr<StatusItemProgram> launch(const StagedApplication& application) = 0;

private:
    [[nodiscard]] bool isRunning(ProcessID pid);
    [[nodiscard]] std::size_t itemCount(ProcessID pid);

    std::map<ProcessID, std::unique_ptr<StatusItemProgram>> programs_;
};

}  // namespace ovin
