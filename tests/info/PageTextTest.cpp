#include "info/PageText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace ovin {
namespace {

using Pieces = std::vector<std::pair<std::string, bool>>;

/// The pieces of the text and whether they are bold.
Pieces pieces(std::string_view text) {
    Pieces result;
    for (const TextRun& run : markedText(text, 14, SystemColor::label)) {
        result.emplace_back(run.text, run.font->weight == Font::Weight::bold);
    }
    return result;
}

TEST(PageText, WhatStandsBetweenTwoMarksIsBold) {
    EXPECT_EQ(pieces("**1.** Choose **Organize Menu Bar…** from Ovin’s menu."),
              (Pieces{{"1.", true}, {" Choose ", false}, {"Organize Menu Bar…", true}, {" from Ovin’s menu.", false}}));
}

TEST(PageText, AnUnpairedMarkTurnsTheRestBold) {
    EXPECT_EQ(pieces("a**b"), (Pieces{{"a", false}, {"b", true}}));
    EXPECT_EQ(pieces("**a**b**c"), (Pieces{{"a", true}, {"b", false}, {"c", true}}));
}

TEST(PageText, EmptyPiecesContributeNothing) {
    EXPECT_EQ(pieces("a****b"), (Pieces{{"a", false}, {"b", false}}));
    EXPECT_EQ(pieces("**"), Pieces{});
    EXPECT_EQ(pieces(""), Pieces{});
}

TEST(PageText, ALoneStarIsText) { EXPECT_EQ(pieces("a * b*"), (Pieces{{"a * b*", false}})); }

TEST(PageText, EveryPieceHasTheSizeAndTheColor) {
    for (const TextRun& run : markedText("a **b** c", 12, SystemColor::secondaryLabel)) {
        EXPECT_EQ(run.font->size, 12);
        EXPECT_EQ(run.color, Color{SystemColor::secondaryLabel});
    }
}

}  // namespace
}  // namespace ovin
