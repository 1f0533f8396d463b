// What else may be found in the place of the settings, with the real kernel.

#include "platform/linux/system/FileUserDefaults.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;

class FileUserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path path() const { return folder_.path() / "ovin" / "defaults"; }

    void write(const std::filesystem::path& file, const std::string& text) const {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    [[nodiscard]] static std::string textIn(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Checks that whatever lies there is left alone, and nothing is stored.
    void expectRefusal() const {
        FileUserDefaults defaults(path());
        EXPECT_FALSE(defaults.isReadable());
        EXPECT_EQ(defaults.object("key"), std::nullopt);
        EXPECT_FALSE(defaults.set("key", true));
        EXPECT_FALSE(defaults.remove("key"));
        EXPECT_EQ(defaults.object("key"), std::nullopt);
    }

    TemporaryFolder folder_;
};

TEST_F(FileUserDefaultsTest, TheFileAndItsFolderAreTheUsersAlone) {
    ASSERT_TRUE(FileUserDefaults(path()).set("key", true));
    struct stat status {};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(stat(path().parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(FileUserDefaultsTest, AFolderThatGoesMeanwhileIsMadeAgain) {
    FileUserDefaults defaults(path());
    ASSERT_TRUE(defaults.set("key", true));
    std::filesystem::remove_all(path().parent_path());
    EXPECT_TRUE(defaults.set("other", true));
    EXPECT_EQ(textIn(path()), "other\tb\t1\n");
}

TEST_F(FileUserDefaultsTest, ThePlaceIsTheFile) { EXPECT_EQ(FileUserDefaults(path()).place(), path().string()); }

TEST_F(FileUserDefaultsTest, LinesThatMakeNoSenseAreLeftOut) {
    const std::string zero(1, '\0');
    write(path(),
          "\n\t\t\nkey\nkey\ti\nnumber\ti\t12x\nnumber2\ti\t99999999999999999999\nflag\tb\t2\nreal\td\tone\nodd\tz\t1\n" +
              zero + "\xff\xfe\tq\t\n" + "good\ti\t-5\nagain\ts\ta\\tb\\n\\\\");
    FileUserDefaults defaults(path());
    EXPECT_TRUE(defaults.isReadable());
    for (const char* key : {"key", "number", "number2", "flag", "real", "odd"})
        EXPECT_EQ(defaults.object(key), std::nullopt);
    EXPECT_EQ(defaults.object("good"), Value(std::int64_t{-5}));
    EXPECT_EQ(defaults.object("again"), Value(std::string("a\tb\n\\")));
    ASSERT_TRUE(defaults.remove("again"));
    EXPECT_EQ(textIn(path()), "good\ti\t-5\n");
}

TEST_F(FileUserDefaultsTest, AFolderInItsPlaceIsLeftAlone) {
    std::filesystem::create_directories(path() / "inside");
    expectRefusal();
    EXPECT_TRUE(std::filesystem::exists(path() / "inside"));
}

TEST_F(FileUserDefaultsTest, APipeInItsPlaceIsNotWaitedFor) {
    std::filesystem::create_directories(path().parent_path());
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    expectRefusal();
    EXPECT_TRUE(std::filesystem::is_fifo(path()));
}

TEST_F(FileUserDefaultsTest, ADeviceWithoutEndInItsPlaceIsNotRead) {
    std::filesystem::create_directories(path().parent_path());
    std::filesystem::create_symlink("/dev/zero", path());
    expectRefusal();
}

TEST_F(FileUserDefaultsTest, AFileOfAnUnlikelyLengthIsLeftAlone) {
    write(path(), "key\ti\t1\n");
    std::filesystem::resize_file(path(), 1ULL << 34U);  // with a hole, which takes no room
    expectRefusal();
    EXPECT_EQ(std::filesystem::file_size(path()), 1ULL << 34U);
}

TEST_F(FileUserDefaultsTest, AFileThatMayNotBeReadIsLeftAlone) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    write(path(), "key\ti\t1\n");
    std::filesystem::permissions(path(), std::filesystem::perms::none);
    expectRefusal();
    std::filesystem::permissions(path(), std::filesystem::perms::owner_read);
    EXPECT_EQ(textIn(path()), "key\ti\t1\n");
}

TEST_F(FileUserDefaultsTest, ALinkStaysOneAndTheFileThatItLeadsToIsChanged) {
    const auto target = folder_.path() / "files" / "defaults";
    write(target, "key\ti\t1\n");
    std::filesystem::create_directories(path().parent_path());
    std::filesystem::create_symlink("../other", path());
    std::filesystem::create_symlink(target, folder_.path() / "other");
    FileUserDefaults defaults(path());
    EXPECT_EQ(defaults.object("key"), Value(std::int64_t{1}));
    ASSERT_TRUE(defaults.set("key", std::int64_t{2}));
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    EXPECT_EQ(textIn(target), "key\ti\t2\n");
}

TEST_F(FileUserDefaultsTest, ALinkInALinkedFolderIsFollowedAsTheKernelDoes) {
    const auto target = folder_.path() / "files" / "common";
    write(target, "key\ti\t1\n");
    std::filesystem::create_directories(folder_.path() / "files" / "ovin");
    std::filesystem::create_directory_symlink("files/ovin", path().parent_path());
    std::filesystem::create_symlink("../common", path());
    FileUserDefaults defaults(path());
    ASSERT_TRUE(defaults.set("key", std::int64_t{2}));
    EXPECT_EQ(defaults.object("key"), Value(std::int64_t{2}));
    EXPECT_EQ(textIn(target), "key\ti\t2\n");
}

TEST_F(FileUserDefaultsTest, ALinkThatLeadsNowhereGetsItsFile) {
    std::filesystem::create_directories(path().parent_path());
    std::filesystem::create_symlink(folder_.path() / "nowhere" / "defaults", path());
    ASSERT_TRUE(FileUserDefaults(path()).set("key", true));
    EXPECT_EQ(textIn(folder_.path() / "nowhere" / "defaults"), "key\tb\t1\n");
    EXPECT_EQ(FileUserDefaults(path()).object("key"), Value(true));
}

TEST_F(FileUserDefaultsTest, ALinkToItselfIsLeftAlone) {
    std::filesystem::create_directories(path().parent_path());
    std::filesystem::create_symlink(path(), path());
    expectRefusal();
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
}

TEST_F(FileUserDefaultsTest, ProgramsThatChangeItAtTheSameTimeLoseNothing) {
    constexpr int programs = 4;
    constexpr int changes = 50;
    std::vector<pid_t> children;
    for (int program = 0; program < programs; ++program) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // On a busy machine this program may not get the lock in time; then it tries again, as a person would.
            const auto until = [](const auto& isDone) {
                while (!isDone()) continue;
            };
            FileUserDefaults defaults(path());
            const auto key = [&](int i) { return std::to_string(program) + "." + std::to_string(i); };
            for (int i = 0; i < changes; ++i) {
                until([&] { return defaults.set(key(i), std::int64_t{i}); });
                if (i > 0) until([&] { return defaults.remove(key(i - 1)); });
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(textIn(path()), "0.49\ti\t49\n1.49\ti\t49\n2.49\ti\t49\n3.49\ti\t49\n");
}

TEST_F(FileUserDefaultsTest, AProgramThatDoesNotFinishItsChangeIsWaitedForASecond) {
    FileUserDefaults defaults(path());
    ASSERT_TRUE(defaults.set("key", std::int64_t{1}));
    const int folder = open(path().parent_path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    EXPECT_FALSE(defaults.set("key", std::int64_t{2}));
    const auto afterTheFirst = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) EXPECT_FALSE(defaults.set("key", std::int64_t{2}));
    EXPECT_LT(std::chrono::steady_clock::now() - afterTheFirst, std::chrono::seconds(5)) << "each of them has waited";
    EXPECT_EQ(defaults.object("key"), Value(std::int64_t{1}));
    close(folder);
    EXPECT_TRUE(defaults.set("key", std::int64_t{2}));
}

TEST_F(FileUserDefaultsTest, WhatCouldBeReadOnceIsRememberedWhereItNoLongerCan) {
    FileUserDefaults defaults(path());
    ASSERT_TRUE(defaults.set("key", true));
    EXPECT_EQ(defaults.object("key"), Value(true));
    std::filesystem::remove(path());
    std::filesystem::create_directories(path());
    EXPECT_EQ(defaults.object("key"), Value(true));
    EXPECT_FALSE(defaults.set("key", false));
}

TEST_F(FileUserDefaultsTest, WhatACrashLeftBesideItIsInNobodysWay) {
    const auto target = folder_.path() / "elsewhere";
    write(target, "untouched");
    std::filesystem::create_directories(path().parent_path());
    std::filesystem::create_symlink(target, path().string() + ".new");
    ASSERT_TRUE(FileUserDefaults(path()).set("key", true));
    EXPECT_EQ(textIn(target), "untouched");
    EXPECT_EQ(FileUserDefaults(path()).object("key"), Value(true));
    EXPECT_FALSE(std::filesystem::exists(path().string() + ".new"));
}

TEST_F(FileUserDefaultsTest, AFolderBesideItThatIsInTheWayIsTold) {
    std::filesystem::create_directories(path().parent_path());
    FileUserDefaults defaults(path());
    ASSERT_TRUE(defaults.set("key", true));
    std::filesystem::create_directories(path().string() + ".new/inside");
    EXPECT_FALSE(defaults.set("key", false));
    EXPECT_EQ(defaults.object("key"), Value(true));
    EXPECT_EQ(textIn(path()), "key\tb\t1\n");
}

}  // namespace
}  // namespace ovin
