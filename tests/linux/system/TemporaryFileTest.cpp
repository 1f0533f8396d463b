#include "platform/linux/system/TemporaryFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

class TemporaryFileTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    const std::filesystem::path place = folder.path() / "cache" / "updates";
    std::error_code error;

    std::shared_ptr<TemporaryFile> create(std::uint64_t length = 100) { return TemporaryFile::create(place, length, error); }
    static std::string read(const std::filesystem::path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static mode_t modeOf(const std::filesystem::path& path) {
        struct stat found {};
        return lstat(path.c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
    }
    static std::size_t countIn(const std::filesystem::path& path) {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path), {}));
    }
};

TEST_F(TemporaryFileTest, ItsFolderIsPrivate) {
    ASSERT_TRUE(create());
    EXPECT_EQ(modeOf(place), 0700U);
    std::filesystem::permissions(place, std::filesystem::perms::all);
    ASSERT_TRUE(create());
    EXPECT_EQ(modeOf(place), 0700U);
}

TEST_F(TemporaryFileTest, AFolderThatIsALinkIsNotUsed) {
    std::filesystem::create_directories(folder.path() / "cache");
    std::filesystem::create_directories(folder.path() / "elsewhere");
    std::filesystem::create_directory_symlink(folder.path() / "elsewhere", place);
    EXPECT_FALSE(create());
    EXPECT_TRUE(error);
}

TEST_F(TemporaryFileTest, NothingRemainsOfIt) {
    auto file = create();
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->append("text"));
    EXPECT_EQ(file->size(), 4U);
    file.reset();
    EXPECT_EQ(countIn(place), 0U);
}

TEST_F(TemporaryFileTest, NothingRemainsOfItWhenItsProcessIsKilled) {
    const pid_t child = fork();
    if (child == 0) {
        const auto file = create();
        (void)file->append("text");
        (void)raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    TemporaryFile::clear(place);
    EXPECT_EQ(countIn(place), 0U);
}

TEST_F(TemporaryFileTest, UnfinishedAndOldFilesAreClearedAndFreshOnesKept) {
    ASSERT_TRUE(create());
    std::ofstream(place / "abc.part") << "half";
    std::ofstream(place / ".fresh.deb.Ab3dEf.new") << "half";
    std::ofstream(place / "old.deb") << "old";
    std::ofstream(place / "fresh.deb") << "fresh";
    const auto now = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(place / "old.deb", now - std::chrono::hours(25));
    TemporaryFile::clear(place);
    EXPECT_EQ(countIn(place), 1U);
    EXPECT_EQ(read(place / "fresh.deb"), "fresh");
    TemporaryFile::clear(folder.path() / "missing");
}

TEST_F(TemporaryFileTest, ACopyTakesThePlaceOfAFileWithThePermissionsGiven) {
    const auto file = create();
    ASSERT_TRUE(file);
    const std::string text(200000, 'x');
    EXPECT_FALSE(file->append(text));
    const auto target = folder.path() / "program";
    std::ofstream(target) << "old";
    EXPECT_FALSE(copyInPlace(file->descriptor(), target, 0751));
    EXPECT_EQ(read(target), text);
    EXPECT_EQ(modeOf(target), 0751U);
    EXPECT_EQ(countIn(folder.path()), 2U) << "something is left beside it";
}

TEST_F(TemporaryFileTest, WhatAnInterruptedCopyHasLeftIsRemovedWithTheNextAndNothingElse) {
    const auto file = create();
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->append("new"));
    std::ofstream(folder.path() / ".program.a1B2c3.new") << "half of something long";
    for (const char* other : {".program.new", ".program.long-name.new", "program.a1B2c3.new", ".programme.a1B2c3.new"}) {
        std::ofstream(folder.path() / other) << "of somebody else";
    }
    EXPECT_FALSE(copyInPlace(file->descriptor(), folder.path() / "program", 0644));
    EXPECT_EQ(read(folder.path() / "program"), "new");
    EXPECT_EQ(countIn(folder.path()), 6U);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / ".program.a1B2c3.new"));
}

TEST_F(TemporaryFileTest, ACopyThatFailsLeavesTheOldFile) {
    const auto file = create();
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->append("new"));
    const auto target = folder.path() / "program";
    std::filesystem::create_directories(target / "full");
    EXPECT_TRUE(copyInPlace(file->descriptor(), target, 0644));
    EXPECT_TRUE(std::filesystem::exists(target / "full"));
    EXPECT_EQ(countIn(folder.path()), 2U);
    EXPECT_TRUE(copyInPlace(file->descriptor(), folder.path() / "missing" / "program", 0644));
}

TEST_F(TemporaryFileTest, AFullDiskIsSeenBeforeAnythingComesIn) {
    EXPECT_FALSE(create(std::uint64_t{1} << 60));
    EXPECT_TRUE(error.value() == ENOSPC || error.value() == EFBIG) << error.message();
    EXPECT_EQ(countIn(place), 0U);
}

}  // namespace
}  // namespace ovin
