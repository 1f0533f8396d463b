#include "platform/linux/system/ReplaceFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

class ReplaceFileTest : public testing::Test {
protected:
    const TemporaryFolder folder;
    const std::filesystem::path target = folder.path() / "file";

    static std::string read(const std::filesystem::path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::ptrdiff_t count() const {
        return std::distance(std::filesystem::directory_iterator(folder.path()), {});
    }
};

TEST_F(ReplaceFileTest, ATextTakesThePlaceOfAFileWithThePermissionsGiven) {
    std::ofstream(target) << "old";
    const std::string text(200000, 'x');
    EXPECT_FALSE(replaceFile(target, text, 0751));
    EXPECT_EQ(read(target), text);
    struct stat found {};
    EXPECT_EQ(stat(target.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0751U);
    EXPECT_EQ(count(), 1) << "something is left beside it";
}

TEST_F(ReplaceFileTest, ALinkIsReplacedAndWhatItPointsToLeftAlone) {
    std::ofstream(folder.path() / "other") << "other";
    std::filesystem::create_symlink("other", target);
    EXPECT_FALSE(replaceFile(target, "new", 0644));
    EXPECT_FALSE(std::filesystem::is_symlink(target));
    EXPECT_EQ(read(folder.path() / "other"), "other");
}

TEST_F(ReplaceFileTest, WhatAnInterruptedReplacementHasLeftIsRemovedAndNothingElse) {
    std::ofstream(folder.path() / ".file.a1B2c3.new") << "half of something long";
    for (const char* other : {".file.new", ".file.long-name.new", "file.a1B2c3.new", ".files.a1B2c3.new"})
        std::ofstream(folder.path() / other) << "of somebody else";
    removeUnfinishedReplacements(target);
    EXPECT_EQ(count(), 4);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / ".file.a1B2c3.new"));
}

TEST_F(ReplaceFileTest, AFailureLeavesWhatWasThere) {
    std::filesystem::create_directories(target / "full");
    EXPECT_TRUE(replaceFile(target, "new", 0644));
    EXPECT_TRUE(std::filesystem::exists(target / "full"));
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(replaceFile(folder.path() / "missing" / "file", "new", 0644));
}

}  // namespace
}  // namespace ovin
