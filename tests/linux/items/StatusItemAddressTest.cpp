#include "platform/linux/items/StatusItemAddress.h"

#include <gtest/gtest.h>

namespace ovin {
namespace {

std::string joined(std::string_view argument, std::string_view sender = ":1.7") {
    const auto address = statusItemAddress(argument, sender);
    return address ? address->destination + " " + address->path : "none";
}

TEST(StatusItemAddress, OfABusNameIsAtTheCustomaryPath) {
    EXPECT_EQ(joined(":1.23"), ":1.23 /StatusNotifierItem");
    EXPECT_EQ(joined("org.kde.StatusNotifierItem-812-1"), "org.kde.StatusNotifierItem-812-1 /StatusNotifierItem");
}

TEST(StatusItemAddress, OfAPathIsTheSenders) {
    EXPECT_EQ(joined("/org/ayatana/NotificationItem/mixer"), ":1.7 /org/ayatana/NotificationItem/mixer");
}

TEST(StatusItemAddress, OfBothJoinedIsSplitAtTheFirstSlash) { EXPECT_EQ(joined(":1.9/a/b"), ":1.9 /a/b"); }

TEST(StatusItemAddress, MayHaveAnAtSignBetweenNameAndPath) {
    EXPECT_EQ(joined(":1.10@/StatusNotifierItem"), ":1.10 /StatusNotifierItem");
    EXPECT_EQ(joined("org.kde.StatusNotifierItem-812-1@/a/b"), "org.kde.StatusNotifierItem-812-1 /a/b");
    for (const auto* garbage : {"@/a", ":1.10@", "a@b.c/d", ":1.10@@/a", "/a@/b"})
        EXPECT_EQ(joined(garbage), "none") << garbage;
}

TEST(StatusItemAddress, JoinsToTheEntryThatItWasReadFrom) {
    EXPECT_EQ(statusItemAddress(":1.23/StatusNotifierItem", "")->joined(), ":1.23/StatusNotifierItem");
}

TEST(StatusItemAddress, IsNothingForGarbage) {
    for (const auto* garbage : {"", "name", "a..b", ".a.b", "a.b.", "1a.b", ":1.2/a//b", ":1.2/a/", "a b.c", "//", "a.b/ü",
                                ":", ":1", "a.b\n", "org.1x"}) {
        EXPECT_EQ(joined(garbage), "none") << garbage;
    }
}

TEST(StatusItemAddress, IsNothingForATextWithAZeroByte) {
    EXPECT_EQ(joined({"a.b\0c", 5}), "none");
    EXPECT_EQ(joined({"/a\0b", 4}), "none");
}

TEST(StatusItemAddress, IsNothingForAPathOfNobody) { EXPECT_EQ(joined("/item", ""), "none"); }

TEST(StatusItemAddress, IsNothingForAbsurdLengths) {
    EXPECT_EQ(joined("a." + std::string(1'000'000, 'b')), "none");
    EXPECT_EQ(joined("/" + std::string(1'000'000, 'b')), "none");
    EXPECT_EQ(joined("a." + std::string(253, 'b')), "a." + std::string(253, 'b') + " /StatusNotifierItem");
}

TEST(StatusItemAddress, TakesTheRootPath) { EXPECT_EQ(joined("/"), ":1.7 /"); }

}  // namespace
}  // namespace ovin
