#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class ResourcesContract : public ContractTest {
protected:
    void SetUp() override { OVIN_NEEDS(haveResources); }

    [[nodiscard]] const Resources& resources() const { return platform().resources; }
};

TEST_P(ResourcesContract, ThePicturesOfTheWindowsAreThereInTheSizeInWhichTheyAreMeant) {
    std::vector<std::string> names{"Ovin"};
    for (const GuidePiece& piece : resources().words().guide) {
        if (piece.kind == GuidePiece::Kind::picture) names.push_back(piece.picture);
    }
    for (const std::string& name : names) {
        const auto picture = resources().picture(name);
        ASSERT_TRUE(picture.has_value()) << name;
        EXPECT_GT(picture->size.width, 0) << name;
        EXPECT_GT(picture->size.height, 0) << name;
    }
}

TEST_P(ResourcesContract, EveryWindowAndAnswerHasItsWords) {
    const Words& words = resources().words();
    EXPECT_FALSE(words.guide.empty());
    for (const GuidePiece& piece : words.guide) EXPECT_NE(piece.text, "");
    for (const std::string& text : {words.introduction, words.aboutWidening, words.everythingIsDrawn, words.mirrored,
                                    words.refused, words.withoutLayout.value_or("-"), words.emptyLedge}) {
        EXPECT_NE(text, "");
    }
}

TEST_P(ResourcesContract, APictureIsTheSameEachTime) {
    EXPECT_EQ(resources().picture("Ovin")->image, resources().picture("Ovin")->image);
    EXPECT_EQ(resources().applicationIcon(), resources().applicationIcon());
}

TEST_P(ResourcesContract, OtherPicturesAreMissing) {
    for (const char* name : {"no such", "", "Ovin.png", "../Ovin", "/etc/passwd", "ovin\nOvin"}) {
        EXPECT_FALSE(resources().picture(name).has_value()) << name;
    }
}

TEST_P(ResourcesContract, TheDescriptionHasAVersionAndNothingThatItDoesNotHave) {
    EXPECT_NE(resources().infoString("CFBundleShortVersionString").value_or(""), "");
    EXPECT_NE(resources().infoString("CFBundleVersion").value_or(""), "");
    EXPECT_FALSE(resources().infoString("OvinNoSuchKey").has_value());
    EXPECT_FALSE(resources().infoString("").has_value());
}

OVIN_IN_EVERY_WORLD(ResourcesContract);

}  // namespace
}  // namespace ovin
