#include "platform/linux/items/ItemChoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The file as Plasma writes it.
constexpr const char* file = R"([ActionPlugins][0]
RightButton;NoModifier=org.kde.contextmenu

[Containments][2]
lastScreen=0
plugin=org.kde.panel

[Containments][2][Applets][7][Configuration]
SystrayContainmentId=8

[Containments][2][Applets][7]
plugin=org.kde.plasma.systemtray

[Containments][2][General]
hiddenItems=of another applet

[Containments][8]
plugin=org.kde.plasma.private.systemtray

[Containments][8][General]
extraItems=org.kde.plasma.clipboard
hiddenItems=one,Two words
knownItems=org.kde.plasma.clipboard
shownItems=three
)";

TEST(ItemChoice, WithoutAChoiceABarDrawsWhatDoesNotAskToBeHidden) {
    EXPECT_TRUE(ItemChoice().draws("one", false));
    EXPECT_FALSE(ItemChoice().draws("one", true));
    EXPECT_TRUE(ItemChoice().draws("", false));
}

TEST(ItemChoice, WhatIsHiddenIsNotDrawn) {
    const ItemChoice choice{{}, {"one"}, false};
    EXPECT_FALSE(choice.draws("one", false));
    EXPECT_TRUE(choice.draws("two", false));
}

TEST(ItemChoice, WhatIsToBeShownIsDrawnWhateverItAsksFor) {
    const ItemChoice choice{{"one"}, {"one"}, false};
    EXPECT_TRUE(choice.draws("one", true));
    EXPECT_FALSE(choice.draws("two", true));
    EXPECT_TRUE((ItemChoice{{}, {"one"}, true}).draws("one", true));
}

TEST(ItemChoice, PlasmasFileHasThatOfItsTray) {
    EXPECT_THAT(plasmaChoices(file), ElementsAre(ItemChoice{{"three"}, {"one", "Two words"}, false}));
}

TEST(ItemChoice, EachTrayOfPlasmaHasItsOwn) {
    const std::string second = "[Containments][2][Applets][12][Configuration]\nSystrayContainmentId=9\n";
    EXPECT_THAT(plasmaChoices(file + second + "[Containments][9][General]\nshowAllItems=true"),
                ElementsAre(ItemChoice{{"three"}, {"one", "Two words"}, false}, ItemChoice{{}, {}, true}));
    EXPECT_THAT(plasmaChoices(second), ElementsAre(ItemChoice()));
}

TEST(ItemChoice, WhatIsLeftOfATrayThatWasRemovedIsNone) {
    const std::string text = file;
    EXPECT_THAT(plasmaChoices(text.substr(text.find("[Containments][8]"))), IsEmpty());
}

TEST(ItemChoice, AFileWithoutATrayHasNone) {
    for (const char* text : {"", "\n", "=", "[", "[General]\nhiddenItems=one", "plugin=org.kde.panel\n[\n[General]\n,"}) {
        EXPECT_THAT(plasmaChoices(text), IsEmpty()) << text;
    }
}

}  // namespace
}  // namespace ovin
