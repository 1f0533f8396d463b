#include "platform/linux/system/UrlOpener.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class Lines final : public SystemLog {
public:
    void write(std::string_view line) override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(line);
        written_.notify_all();
    }

    /// The first line, once there is one.
    std::string first() {
        std::unique_lock lock(mutex_);
        if (!written_.wait_for(lock, 20s, [this] { return !lines_.empty(); })) return "nothing was logged";
        return lines_.front();
    }

private:
    std::mutex mutex_;
    std::condition_variable written_;
    std::vector<std::string> lines_;
};

/// With a stand-in for xdg-open that reports how it was started; each test runs in a process of its own.
class UrlOpenerTest : public testing::Test {
protected:
    UrlOpenerTest() { setenv("PATH", (folder_.path().string() + ":/usr/bin:/bin").c_str(), 1); }

    void standIn(const std::string& script) const {
        const auto path = folder_.path() / "xdg-open";
        std::ofstream(path) << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    [[nodiscard]] std::string report() const { return (folder_.path() / "report").string(); }
    /// A script that writes a report, which is there as a whole or not at all.
    [[nodiscard]] std::string reporting(const std::string& script) const {
        return "{ " + script + "; } > " + report() + ".new; mv " + report() + ".new " + report();
    }

    [[nodiscard]] std::string awaitReport() const {
        for (int i = 0; i < 2000 && !std::filesystem::exists(report()); ++i) std::this_thread::sleep_for(10ms);
        std::ifstream file(report());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const TemporaryFolder folder_;
    Lines log_;
    UrlOpener opener_{log_};
};

TEST_F(UrlOpenerTest, AnAddressIsHandedOverAsOneWord) {
    standIn(reporting("printf '%s|' \"$#\" \"$1\""));
    opener_.open("https://ovin.example/a?b=$(touch x)&c='d';e");
    // Brackets and a blank are no part of an address, so that it was refused.
    EXPECT_NE(log_.first().find("Ovin: not an address"), std::string::npos);
    opener_.open("https://ovin.example/a?b=$(x)&c='d';e|f`g`");
    EXPECT_EQ(awaitReport(), "1|https://ovin.example/a?b=$(x)&c='d';e|f`g`|");
}

TEST_F(UrlOpenerTest, WhatIsNotAllowedIsLoggedAndStartsNothing) {
    standIn(reporting("echo started"));
    opener_.open("file:///etc/passwd");
    EXPECT_EQ(log_.first(), "Ovin: not an address to be opened: file:///etc/passwd");
    EXPECT_FALSE(std::filesystem::exists(report()));
}

TEST_F(UrlOpenerTest, AMissingProgramIsLogged) {
    setenv("PATH", folder_.path().c_str(), 1);
    opener_.open("https://ovin.example/");
    EXPECT_NE(log_.first().find("Ovin: xdg-open cannot be started"), std::string::npos);
}

TEST_F(UrlOpenerTest, AFailureIsLogged) {
    standIn("exit 3");
    opener_.open("https://ovin.example/");
    EXPECT_EQ(log_.first(), "Ovin: xdg-open could not open https://ovin.example/: it ended with status 3");
}

TEST_F(UrlOpenerTest, AProgramThatCrashesIsLogged) {
    standIn("kill -SEGV $$");
    opener_.open("mailto:a@b.example");
    EXPECT_EQ(log_.first(), "Ovin: xdg-open could not open mailto:a@b.example: it ended with signal 11");
}

TEST_F(UrlOpenerTest, TheProgramIsASessionOfItsOwnWithNothingOfThisOne) {
    const std::ifstream held(folder_.path() / ".");
    const int descriptor = dup(STDIN_FILENO);  // one that is meant to be inherited
    standIn(reporting("cut -d' ' -f1,6 /proc/$$/stat; readlink /proc/$$/fd/0; ls /proc/$$/fd"));
    opener_.open("https://ovin.example/");
    std::istringstream lines(awaitReport());
    int pid = 0;
    int session = 0;
    std::string input;
    lines >> pid >> session >> input;
    EXPECT_GT(pid, 0);
    EXPECT_EQ(session, pid);
    EXPECT_EQ(input, "/dev/null");
    std::set<int> descriptors;
    for (int each = 0; lines >> each;) descriptors.insert(each);
    EXPECT_FALSE(descriptors.contains(descriptor) && descriptor > 2 && descriptor != 10) << "10 is the shell's own";
    close(descriptor);
}

TEST_F(UrlOpenerTest, WhatAnImageNeedsForItselfIsKeptFromOthers) {
    setenv("APPDIR", "/mount", 1);
    setenv("LD_LIBRARY_PATH", "/mount/lib", 1);
    setenv("OVIN_TEST_KEPT", "yes", 1);
    standIn(reporting("echo \"$LD_LIBRARY_PATH|$APPDIR|$OVIN_TEST_KEPT\""));
    opener_.open("https://ovin.example/");
    EXPECT_EQ(awaitReport(), "||yes\n");
}

TEST_F(UrlOpenerTest, NobodyIsLeftAsAZombie) {
    standIn(reporting("echo $$"));
    opener_.open("https://ovin.example/");
    const std::string pid = awaitReport();
    ASSERT_FALSE(pid.empty());
    // A zombie is still a process.
    for (int i = 0; i < 2000 && kill(std::stoi(pid), 0) == 0; ++i) std::this_thread::sleep_for(10ms);
    EXPECT_EQ(kill(std::stoi(pid), 0), -1);
}

TEST_F(UrlOpenerTest, AProgramMayLastLongerThanTheOpener) {
    standIn(reporting("echo $$") + "; exec sleep 60");
    std::optional<Lines> log(std::in_place);
    std::optional<UrlOpener> opener(std::in_place, *log);
    opener->open("https://ovin.example/");
    const std::string pid = awaitReport();
    ASSERT_FALSE(pid.empty());
    opener.reset();
    log.reset();
    EXPECT_EQ(kill(std::stoi(pid), 0), 0) << "it has ended as well";
    kill(std::stoi(pid), SIGKILL);
    for (int i = 0; i < 2000 && kill(std::stoi(pid), 0) == 0; ++i) std::this_thread::sleep_for(10ms);
}

}  // namespace
}  // namespace ovin
