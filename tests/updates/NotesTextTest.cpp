#include "updates/NotesText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Kind = NotesParagraph::Kind;

std::vector<std::string> texts(const std::string& notes, bool arePlain) {
    std::vector<std::string> all;
    for (const NotesParagraph& paragraph : notesParagraphs(notes, arePlain)) all.push_back(paragraph.text);
    return all;
}
std::vector<std::string> html(const std::string& text) { return texts(text, false); }

TEST(NotesText, BlocksBecomeParagraphs) {
    EXPECT_THAT(html("<h2>Ovin 2</h2>\n<p>It is <b>faster</b>\n  now.</p>Also<br>nicer<br/>"),
                ElementsAre("Ovin 2", "It is faster now.", "Also", "nicer"));
}

TEST(NotesText, ListItemsAndHeadingsAreTold) {
    EXPECT_THAT(
        notesParagraphs("<H2 class=a>A <i>b</i></H2>c<ul>\n <li>One</li>\n <li><p>Two</p></li><li></li></ul>d", false),
        ElementsAre(NotesParagraph{"A b", Kind::heading}, NotesParagraph{"c", Kind::text},
                    NotesParagraph{"One", Kind::listItem}, NotesParagraph{"Two", Kind::listItem},
                    NotesParagraph{"d", Kind::text}));
    EXPECT_THAT(notesParagraphs("<li>a<li></ul>b<h1></h1>c<h6>d", false),
                ElementsAre(NotesParagraph{"a", Kind::listItem}, NotesParagraph{"b", Kind::text},
                            NotesParagraph{"c", Kind::text}, NotesParagraph{"d", Kind::heading}));
    EXPECT_THAT(notesParagraphs("<h7>a</h7><hr>b<header>c</header>", false),
                ElementsAre(NotesParagraph{"a", Kind::text}, NotesParagraph{"bc", Kind::text}));
    EXPECT_THAT(notesParagraphs("<li>a", true), ElementsAre(NotesParagraph{"<li>a", Kind::text}));
}

TEST(NotesText, CharactersMayBeNamed) {
    EXPECT_THAT(html("a &lt;b&gt; &amp; &#228;&#x20AC;&#128512; &hellip;"), ElementsAre("a <b> & ä€😀 …"));
    EXPECT_THAT(html("AT&T &unknown; &; &#0; &#xD800; &#x110000; &#999999999999;"),
                ElementsAre("AT&T &unknown; &; &#0; &#xD800; &#x110000; &#999999999999;"));
}

TEST(NotesText, WhatNobodyIsMeantToReadIsLeftOut) {
    EXPECT_THAT(html("<style>p { x }</style>a<!-- <p>b</p> --><SCRIPT src='x'>alert('c')</script >d"), ElementsAre("ad"));
    EXPECT_THAT(html("<STYLE>p { x }</STYLE>a<script>alert('b')</Script>c"), ElementsAre("ac"));
}

TEST(NotesText, HalfATagIsNoText) {
    EXPECT_THAT(html("a<b"), ElementsAre("a"));
    EXPECT_THAT(html("a<!-- b"), ElementsAre("a"));
    EXPECT_THAT(html("<style>a"), IsEmpty());
    EXPECT_THAT(html("<style>a</style"), IsEmpty());
    EXPECT_THAT(html("<"), IsEmpty());
    EXPECT_THAT(html(""), IsEmpty());
}

TEST(NotesText, PlainNotesKeepTheirLinesAndMeanNothingByBrackets) {
    EXPECT_THAT(texts("- a <b>\r\n\r\n  - c &amp;\n", true), ElementsAre("- a <b>", "  - c &amp;"));
}

TEST(NotesText, HugeNotesAreCutOff) {
    for (const bool arePlain : {false, true}) {
        std::string text;
        for (int i = 0; i < 100000; ++i) text += arePlain ? "word\n" : "<p>word</p>";
        std::size_t size = 0;
        for (const std::string& paragraph : texts(text, arePlain)) size += paragraph.size();
        EXPECT_LE(size, longestNotes);
        EXPECT_GT(size, longestNotes - 100);
    }
}

}  // namespace
}  // namespace ovin
