#include "tests/contract/StatusItemProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

/// Programs on a Mac declare it themselves.
extern char** environ;

namespace ovin {
namespace {

/// A pipe for this program alone: nothing else is started meanwhile that could inherit its ends.
std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "There are no pipes.");
    for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    return ends;
}

}  // namespace

void require(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

ProcessID startProgram(std::vector<std::string> words, int input, int output) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input >= 0) posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    if (output >= 0) posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    require(error == 0, words.front() + " cannot be started.");
    return pid;
}

StatusItemProgram::StatusItemProgram(std::vector<std::string> words) {
    const auto input = makePipe();
    const auto output = makePipe();
    pid_ = startProgram(std::move(words), input[0], output[1]);
    close(input[0]);
    close(output[1]);
    commands_ = input[1];
    output_ = output[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
}

StatusItemProgram::~StatusItemProgram() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    close(commands_);
    close(output_);
}

void StatusItemProgram::setStopped(bool stopped) {
    kill(pid_, stopped ? SIGSTOP : SIGCONT);
    // The system tells of a stop only once, so later calls would wait for ever.
    if (stopped == std::exchange(isStopped_, stopped) || !stopped) return;
    int status = 0;
    require(waitpid(pid_, &status, WUNTRACED) == pid_ && WIFSTOPPED(status), "A program of status items has ended.");
}

void StatusItemProgram::command(const std::string& line) const {
    const std::string text = line + "\n";
    require(write(commands_, text.data(), text.size()) == static_cast<ssize_t>(text.size()),
            "A program of status items takes no command.");
}

const std::vector<std::size_t>& StatusItemProgram::presses() {
    readOutput();
    return presses_;
}

void StatusItemProgram::readOutput() {
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(output_, buffer.data(), buffer.size())) > 0;) {
        unfinishedLine_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    for (std::size_t end = 0; (end = unfinishedLine_.find('\n')) != std::string::npos; unfinishedLine_.erase(0, end + 1)) {
        take(unfinishedLine_.substr(0, end));
    }
}

}  // namespace ovin
