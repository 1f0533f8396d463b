#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/ProcessInfo.h"

namespace ovin {

/// Fails a test whose surroundings are not what they have to be.
void require(bool holds, const std::string& what);

/// Starts a program, with the given ends of pipes where it reads and writes; -1 leaves it those of this program.
ProcessID startProgram(std::vector<std::string> words, int input, int output);

/// A running program with status items, and what it has printed. Each world has one of its own, with a language of its own.
class StatusItemProgram {
public:
    StatusItemProgram(const StatusItemProgram&) = delete;
    StatusItemProgram& operator=(const StatusItemProgram&) = delete;
    /// Kills the program, stopped or not.
    virtual ~StatusItemProgram();

    [[nodiscard]] ProcessID pid() const { return pid_; }
    /// Returns when it has stopped, or is to go on.
    void setStopped(bool stopped);
    /// `title` is of one line.
    virtual void rename(std::size_t item, const std::string& title) = 0;
    /// Whether it says that all its items are there, if it says anything of them.
    [[nodiscard]] virtual bool hasItsItems() { return true; }
    /// The items that were pressed so far, by their index.
    [[nodiscard]] const std::vector<std::size_t>& presses();

protected:
    /// Its path and its arguments.
    explicit StatusItemProgram(std::vector<std::string> words);

    void command(const std::string& line) const;
    /// Takes what it has printed since the last time.
    void readOutput();
    void addPress(std::size_t item) { presses_.push_back(item); }

private:
    /// A line that it has printed, without its end.
    virtual void take(const std::string& line) = 0;

    ProcessID pid_ = 0;
    bool isStopped_ = false;
    int commands_ = -1;
    int output_ = -1;
    std::string unfinishedLine_;
    std::vector<std::size_t> presses_;
};

}  // namespace ovin
