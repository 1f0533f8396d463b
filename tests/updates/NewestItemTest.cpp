#include "updates/NewestItem.h"

#include <gtest/gtest.h>

#include "platform/Deployment.h"

namespace ovin {
namespace {

FeedItem item(const std::string& version) { return {version, "", ""}; }

/// The version of the newest item; empty for none.
std::string newest(const std::vector<FeedItem>& items, std::string_view skipped = "") {
    const auto found = newestItem(items, "5", skipped);
    return found ? found->version : "";
}

TEST(NewestItem, ItIsFoundWhereverItStands) {
    EXPECT_EQ(newest({item("6"), item("10"), item("9")}), "10");
    EXPECT_EQ(newest({}), "");
}

TEST(NewestItem, NothingOlderOrEqualIsFound) {
    EXPECT_EQ(newest({item("4.9"), item("5"), item("5.0"), item("5b1"), item("5-x"), item("")}), "");
}

TEST(NewestItem, WhatIsSkippedIsNotFoundNorWhatIsOlder) {
    EXPECT_EQ(newest({item("6"), item("7.0")}, "7"), "");
    EXPECT_EQ(newest({item("6"), item("8")}, "7"), "8");
}

TEST(NewestItem, WhatCannotBeAVersionIsNone) {
    EXPECT_EQ(newest({item(std::string(33, '9')), item("9\n"), item("9\xE2\x80\xAE"), item("6")}), "6");
    EXPECT_EQ(newest({item(std::string(32, '9'))}), std::string(32, '9'));
}

TEST(NewestItem, PeopleAreToldTheShortVersionIfItLooksLikeOne) {
    EXPECT_EQ(shownVersion({"200", "2.0 beta", ""}), "2.0 beta");
    for (const std::string& shown : {std::string(), std::string(3000, 'x'), std::string("2\n0"), std::string("２.０")})
        EXPECT_EQ(shownVersion({"200", shown, ""}), "200");
}

TEST(NewestItem, ItsPageIsAWebPageOrElseTheProducts) {
    EXPECT_EQ(pageOf({"2", "", "https://ovin.example/a?b=c"}), "https://ovin.example/a?b=c");
    EXPECT_EQ(pageOf({"2", "", "http://ovin.example/"}), "http://ovin.example/");
    for (const char* link : {"", "https://", "file:///etc/passwd", "mailto:a@ovin.example", "javascript:alert(1)", "/news",
                             "https://ovin.example/a b", "https://ovin.example/\n", "ftp://ovin.example/"}) {
        EXPECT_EQ(pageOf({"2", "", link}), deployment::siteURL) << link;
    }
}

}  // namespace
}  // namespace ovin
