#include "updates/UpdateChoice.h"

#include <gtest/gtest.h>

#include "platform/memory/MemoryUpdates.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class UpdateChoiceTest : public testing::Test {
protected:
    MemoryPackages packages;
    UpdateSeeker seeker{"5"};

    static FeedItem item(const std::string& version) {
        FeedItem item;
        item.version = version;
        item.operatingSystem = "linux";
        item.url = "https://ovin.example/ovin-" + version + ".package";
        item.length = 1000;
        item.edSignature = std::string(86, 'A') + "==";
        return item;
    }

    /// The version that is chosen; empty for none.
    [[nodiscard]] std::string chosen(const Feed& feed) const {
        const auto item = chooseUpdate(feed, packages, seeker);
        return item ? item->version : "";
    }
    template <typename Change>
    [[nodiscard]] std::string chosenWith(const Change& change) const {
        FeedItem one = item("6");
        EXPECT_EQ(chosen({one}), "6");
        change(one);
        return chosen({one});
    }
};

TEST_F(UpdateChoiceTest, TheNewestVersionIsChosenWhereverItStands) {
    EXPECT_EQ(chosen({item("6"), item("10"), item("9")}), "10");
    EXPECT_EQ(chosen({}), "");
}

TEST_F(UpdateChoiceTest, NothingOlderOrEqualIsChosen) {
    EXPECT_EQ(chosen({item("4.9"), item("5"), item("5.0"), item("5b1"), item("")}), "");
}

TEST_F(UpdateChoiceTest, UnsignedOnesAreNeverChosen) {
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.edSignature.clear(); }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.edSignature.pop_back(); }), "");
    FeedItem newest = item("7");
    newest.edSignature.clear();
    EXPECT_EQ(chosen({item("6"), newest}), "6");
}

TEST_F(UpdateChoiceTest, OnesWithoutAPlausibleLengthAreNeverChosen) {
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.length.reset(); }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.length = 0; }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.length = (std::uint64_t{1} << 30) + 1; }), "") << "it would fill a disk";
    EXPECT_NE(chosenWith([](FeedItem& one) { one.length = std::uint64_t{1} << 30; }), "");
}

TEST_F(UpdateChoiceTest, OnesOfOtherSystemsAreLeftToThem) {
    for (const char* system : {"", "macos", "windows", "Linux"}) {
        EXPECT_EQ(chosenWith([&](FeedItem& one) { one.operatingSystem = system; }), "") << system;
    }
}

TEST_F(UpdateChoiceTest, TheSystemMustBeNewAndOldEnough) {
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.minimumSystemVersion = "2.36"; }), "6");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.minimumSystemVersion = "2.37"; }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.maximumSystemVersion = "2.36"; }), "6");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.maximumSystemVersion = "2.9"; }), "");
}

TEST_F(UpdateChoiceTest, ItemsOfAChannelAreNotForEverybody) {
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.channel = "beta"; }), "");
}

TEST_F(UpdateChoiceTest, APackageOfAnotherKindDoesNotSuit) {
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "https://ovin.example/ovin.dmg"; }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "https://ovin.example/?x=/ovin.package"; }), "");
}

TEST_F(UpdateChoiceTest, OnlySafeAddressesAreDownloadedFrom) {
    for (const char* url : {"http://ovin.example/a.package", "ftp://ovin.example/a.package", "file:///a.package",
                            "a.package", "http://127.0.0.1/a.package", "HTTPS://ovin.example/a.package"}) {
        EXPECT_EQ(chosenWith([&](FeedItem& one) { one.url = url; }), "") << url;
    }
}

TEST_F(UpdateChoiceTest, ATestFeedMayLeadToThisMachineAndNoFurther) {
    seeker.mayReadThisMachine = true;
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "http://127.0.0.1:80/a.package"; }), "6");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "http://localhost/a.package"; }), "6");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "http://localhost.example/a.package"; }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "http://127.0.0.1@ovin.example/a.package"; }), "");
    EXPECT_EQ(chosenWith([](FeedItem& one) { one.url = "http://localhost:80@ovin.example/a.package"; }), "");
}

TEST_F(UpdateChoiceTest, ASkippedVersionIsNotOfferedUnasked) {
    seeker.unasked = UpdateSeeker::Unasked{"6"};
    EXPECT_EQ(chosen({item("6")}), "");
    EXPECT_EQ(chosen({item("5.5")}), "");
    EXPECT_EQ(chosen({item("6"), item("6.1")}), "6.1");
    seeker.unasked.reset();
    EXPECT_EQ(chosen({item("6")}), "6");
}

TEST_F(UpdateChoiceTest, ACriticalOneCannotBeSkipped) {
    seeker.unasked = UpdateSeeker::Unasked{"6"};
    FeedItem one = item("6");
    one.isCritical = true;
    EXPECT_EQ(chosen({one}), "6");
    one.criticalBefore = "5";
    EXPECT_EQ(chosen({one}), "");
    one.criticalBefore = "5.1";
    EXPECT_EQ(chosen({one}), "6");
}

TEST_F(UpdateChoiceTest, APhasedOneReachesOneGroupAfterTheOther) {
    FeedItem one = item("6");
    one.published = 1000000s;
    one.phasedRolloutInterval = 100s;
    const auto isTold = [&](int group, std::chrono::seconds after) {
        seeker.unasked = UpdateSeeker::Unasked{"", group, 1000000s + after};
        return chosen({one}) == "6";
    };
    EXPECT_TRUE(isTold(0, 0s));
    EXPECT_FALSE(isTold(1, 99s));
    EXPECT_TRUE(isTold(1, 100s));
    EXPECT_FALSE(isTold(6, 599s));
    EXPECT_TRUE(isTold(6, 600s));
    EXPECT_FALSE(isTold(6, -100000s));
    one.published.reset();
    EXPECT_TRUE(isTold(6, 0s));
    one.published = 1000000s;
    one.phasedRolloutInterval = -5s;
    EXPECT_TRUE(isTold(6, 0s));
    one.phasedRolloutInterval = 100s;
    seeker.unasked.reset();
    EXPECT_EQ(chosen({one}), "6") << "who asks does not wait";
}

TEST(FileNameIn, IsTheLastPartOfThePath) {
    EXPECT_EQ(fileNameIn("https://ovin.example/a/b.deb"), "b.deb");
    EXPECT_EQ(fileNameIn("https://ovin.example/b.deb?c=/d#e/f"), "b.deb");
    EXPECT_EQ(fileNameIn("https://ovin.example"), "");
    EXPECT_EQ(fileNameIn("https://ovin.example/"), "");
    EXPECT_EQ(fileNameIn("https://ovin.example?/a.deb"), "");
    EXPECT_EQ(fileNameIn(""), "");
}

}  // namespace
}  // namespace ovin
