#include "desktop/ItemOrderFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ItemOrderFileTest : public testing::Test {
protected:
    std::filesystem::path folder;
    std::filesystem::path path;

    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "ovin-order-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "config" / "menu-bar-order";
    }

    void TearDown() override { std::filesystem::remove_all(folder); }

    void write(const std::string& text) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
};

TEST_F(ItemOrderFileTest, IsEmptyBeforeTheFirstSave) { EXPECT_THAT(ItemOrderFile(path).load(), IsEmpty()); }

TEST_F(ItemOrderFileTest, LoadsWhatWasSaved) {
    ASSERT_TRUE(ItemOrderFile(path).save({"mail#1", "clip board#2"}));
    EXPECT_THAT(ItemOrderFile(path).load(), ElementsAre("mail#1", "clip board#2"));
}

TEST_F(ItemOrderFileTest, ReplacesTheOldOrderAndLeavesNothingBeside) {
    ASSERT_TRUE(ItemOrderFile(path).save({"a", "b", "c"}));
    ASSERT_TRUE(ItemOrderFile(path).save({"b"}));
    EXPECT_THAT(ItemOrderFile(path).load(), ElementsAre("b"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path.parent_path()), {}), 1);
}

TEST_F(ItemOrderFileTest, SaysWhenItCannotSave) {
    std::ofstream(folder / "config") << "a file where the folder should be";
    EXPECT_FALSE(ItemOrderFile(path).save({"a"}));
}

TEST_F(ItemOrderFileTest, PassesOverEmptyLines) {
    write("\na\n\nb");
    EXPECT_THAT(ItemOrderFile(path).load(), ElementsAre("a", "b"));
}

TEST_F(ItemOrderFileTest, ReadsNoAbsurdlyLargeFile) {
    write(std::string(2 << 20, 'x'));
    EXPECT_THAT(ItemOrderFile(path).load(), IsEmpty());
}

TEST_F(ItemOrderFileTest, ReadsNoFolder) {
    std::filesystem::create_directories(path);
    EXPECT_THAT(ItemOrderFile(path).load(), IsEmpty());
}

}  // namespace
}  // namespace ovin
