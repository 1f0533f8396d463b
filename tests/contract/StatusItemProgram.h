#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/ProcessInfo.h"

namespace ovin {

/// Fails a test whose surroundings are not as the test needs them.
void require(bool holds, const std::string& what);

/// Starts a program with the given ends of pipes as its input and output; for -1 it shares this program's own.
ProcessID startProgram(std::vector<std::string> words, int input, int output);

/// A running program with status items, and what it has printed. Each world has its own program, with its own commands.
class StatusItemProgram {
public:
    StatusItemProgram(const StatusItemProgram&) = delete;
    StatusItemProgram& operator=(const StatusItemProgram&) = delete;
    /// Kills the program, stopped or not.
    virtual ~StatusItemProgram();

    [[nodiscard]] ProcessID pid() const { return pid_; }
    /// Returns when the program has stopped, or has been told to go on.
    void setStopped(bool stopped);
    /// `title` has one line.
    virtual void rename(std::size_t item, const std::string& title) = 0;
    /// Whether the program says that all its items are there, if it says anything of them.
    [[nodiscard]] virtual bool hasItsItems() { return true; }
    /// The items that were pressed so far, by their index.
    [[nodiscard]] const std::vector<std::size_t>& presses();

protected:
    /// Its path and its arguments.
    explicit StatusItemProgram(std::vector<std::string> words);

    void command(const std::string& line) const;
    /// Takes what the program has printed since the last time.
    void readOutput();
    void addPress(std::size_t item) { presses_.push_back(item); }

private:
    /// A line that the program has printed, without its line end.
    virtual void take(const std::string& line) = 0;

    ProcessID pid_ = 0;
    bool isStopped_ = false;
    int commands_ = -1;
    int output_ = -1;
    std::string unfinishedLine_;
    std::vector<std::size_t> presses_;
};

}  // namespace ovin
