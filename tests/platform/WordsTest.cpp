#include "platform/Words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ovin {
namespace {

std::vector<std::string> textsOf(const Words& words) {
    std::vector<std::string> texts{words.introduction,  words.aboutCollapsed,    words.aboutExpanded,
                                   words.aboutWidening, words.everythingIsDrawn, words.mirrored,
                                   words.refused,       words.fixedModes,        words.withoutLayout.value_or(""),
                                   words.emptyLedge};
    for (const GuidePiece& piece : words.guide) texts.push_back(piece.text);
    return texts;
}

bool speaksOfMacs(const std::string& text) {
    for (const char* name : {"macOS", "Apple", "Mac", "System Settings", "⌘", "«", "expander", "Control-click"}) {
        if (text.find(name) != std::string::npos) return true;
    }
    return false;
}

TEST(Words, OnADesktopNothingSpeaksOfMacOSOrItsGestures) {
    for (const std::string& text : textsOf(desktopWords())) EXPECT_FALSE(speaksOfMacs(text)) << text;
}

TEST(Words, OnAMacTheyDo) {
    EXPECT_TRUE(speaksOfMacs(macWords().introduction));
    EXPECT_TRUE(speaksOfMacs(macWords().guide.at(1).text));
}

TEST(Words, EveryMarkOfBoldTextHasItsEnd) {
    for (const Words* words : {&macWords(), &desktopWords()}) {
        for (const std::string& text : textsOf(*words)) {
            std::size_t marks = 0;
            for (std::size_t at = text.find("**"); at != std::string::npos; at = text.find("**", at + 2)) ++marks;
            EXPECT_EQ(marks % 2, 0u) << text;
        }
    }
}

TEST(Words, ADisplayIsWidenedWithoutALayoutOnAMacOnly) {
    EXPECT_FALSE(macWords().withoutLayout);
    EXPECT_TRUE(desktopWords().withoutLayout);
}

}  // namespace
}  // namespace ovin
