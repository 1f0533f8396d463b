#include "platform/icu/IcuText.h"

#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <unicode/utf16.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace ovin {
namespace {

const IcuText& english() {
    static const IcuText text("en_US");
    return text;
}

/// The text cut into clusters, as asking for longer and longer prefixes cuts it.
std::vector<std::string> clusters(const std::string& text) {
    std::vector<std::string> result;
    std::string before;
    while (before != text) {
        std::string longer = english().prefix(text, result.size() + 1);
        EXPECT_EQ(longer, text.substr(0, longer.size())) << "A prefix is where the text begins.";
        EXPECT_GT(longer.size(), before.size()) << "A prefix of one more is longer.";
        if (longer.size() <= before.size()) break;
        result.push_back(longer.substr(before.size()));
        before = std::move(longer);
    }
    return result;
}

/// The first character of a text, and its bytes: U+FFFD for the longest sequence that could have begun one (table 3-7 of
/// the Unicode Standard).
std::pair<UChar32, std::size_t> decoded(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const int lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return {0xFFFD, 1};
    const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    int lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    int highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    UChar32 character = lead & (0x7F >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if (i == text.size() || byte(i) < lowest || byte(i) > highest) return {0xFFFD, i};
        character = character << 6 | (byte(i) & 0x3F);
        lowest = 0x80;
        highest = 0xBF;
    }
    return {character, size};
}

/// The same by another way: decoded by hand into UTF-16, cut there, and mapped back to bytes.
std::vector<std::string> clustersThroughUtf16(const std::string& text) {
    std::u16string units;
    std::vector<std::size_t> byteOf;
    for (std::size_t start = 0; start < text.size();) {
        const auto [character, size] = decoded(std::string_view(text).substr(start));
        char16_t encoded[2];
        std::int32_t count = 0;
        U16_APPEND_UNSAFE(encoded, count, character);
        units.append(encoded, static_cast<std::size_t>(count));
        byteOf.insert(byteOf.end(), static_cast<std::size_t>(count), start);
        start += size;
    }
    byteOf.push_back(text.size());

    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* iterator = ubrk_open(UBRK_CHARACTER, "", units.data(), static_cast<std::int32_t>(units.size()), &status);
    std::vector<std::string> result;
    std::int32_t start = 0;
    for (std::int32_t end = ubrk_next(iterator); end != UBRK_DONE; end = ubrk_next(iterator)) {
        const std::size_t startByte = byteOf[static_cast<std::size_t>(start)];
        const std::size_t endByte = byteOf[static_cast<std::size_t>(end)];
        result.push_back(text.substr(startByte, endByte - startByte));
        start = end;
    }
    ubrk_close(iterator);
    EXPECT_EQ(status, U_ZERO_ERROR);
    return result;
}

/// Texts from pieces that join, break or are no UTF-8 at all.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : random_(seed) {}

    std::string next() {
        static const std::vector<std::string> pieces{"a",
                                                     "B",
                                                     " ",
                                                     "\r",
                                                     "\n",
                                                     "\t",
                                                     std::string(1, '\0'),
                                                     "e",
                                                     "\u0301",
                                                     "\u0308",
                                                     "\u00E9",
                                                     "\u200D",
                                                     "\u200B",
                                                     "\U0001F468",
                                                     "\U0001F469",
                                                     "\U0001F3FD",
                                                     "\uFE0F",
                                                     "\U0001F1E9",
                                                     "\U0001F1EA",
                                                     "\u1100",
                                                     "\u1161",
                                                     "\u11A8",
                                                     "\uAC00",
                                                     "\u0915",
                                                     "\u094D",
                                                     "\u0937",
                                                     "\u05E9",
                                                     "\u05C1",
                                                     "\u0628",
                                                     "\u064E",
                                                     "\u65E5",
                                                     "\u00A0",
                                                     "\u3000",
                                                     "\u0E01",
                                                     "\u0E33",
                                                     "\uFFFD",
                                                     "\x80",
                                                     "\xBF",
                                                     "\xC0\xAF",
                                                     "\xC3",
                                                     "\xE2\x82",
                                                     "\xED\xA0\x80",
                                                     "\xED\xB0\x80",
                                                     "\xF0\x9F\x98",
                                                     "\xF0\x80\x80\x80",
                                                     "\xF4\x90\x80\x80",
                                                     "\xF8",
                                                     "\xFE",
                                                     "\xFF"};
        std::string text;
        for (auto count = random_() % 12; count > 0; --count) text += pieces[random_() % pieces.size()];
        return text;
    }

private:
    std::mt19937 random_;
};

using Clusters = std::vector<std::string>;

TEST(IcuTextPrefix, CombiningMarksStayWithTheirBase) {
    EXPECT_EQ(clusters("e\u0301a\u0308\u0301x"), (Clusters{"e\u0301", "a\u0308\u0301", "x"}));
    EXPECT_EQ(clusters("\u0301x"), (Clusters{"\u0301", "x"}));
}

TEST(IcuTextPrefix, FlagsArePairs) {
    EXPECT_EQ(clusters("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7\U0001F1E9"),
              (Clusters{"\U0001F1E9\U0001F1EA", "\U0001F1EB\U0001F1F7", "\U0001F1E9"}));
}

TEST(IcuTextPrefix, JoinedPicturesAreOneCharacter) {
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466";
    const std::string thumb = "\U0001F44D\U0001F3FD";
    const std::string keycap = "1\uFE0F\u20E3";
    EXPECT_EQ(clusters(family + thumb + keycap), (Clusters{family, thumb, keycap}));
}

TEST(IcuTextPrefix, HangulLettersFormSyllables) {
    EXPECT_EQ(clusters("\u1112\u1161\u11AB\u1100\u1173\u11AF"), (Clusters{"\u1112\u1161\u11AB", "\u1100\u1173\u11AF"}));
    EXPECT_EQ(clusters("\uD55C\uAE00"), (Clusters{"\uD55C", "\uAE00"}));
}

TEST(IcuTextPrefix, ACarriageReturnAndALineFeedAreOne) {
    EXPECT_EQ(clusters("a\r\n\n\rb"), (Clusters{"a", "\r\n", "\n", "\r", "b"}));
}

TEST(IcuTextPrefix, VowelSignsAndViramasAreNeverCutOff) {
    const std::string text = "\u0915\u094D\u0937\u093F\u0928\u093F";
    for (const std::string& cluster : clusters(text)) {
        EXPECT_NE(cluster.substr(0, 3), "\u094D");
        EXPECT_NE(cluster.substr(0, 3), "\u093F");
    }
    EXPECT_EQ(clusters(text).back(), "\u0928\u093F");
}

TEST(IcuTextPrefix, RightToLeftTextsBeginWhereTheirBytesDo) {
    EXPECT_EQ(clusters("\u05E9\u05C1\u05DC\u05D5\u05DD"), (Clusters{"\u05E9\u05C1", "\u05DC", "\u05D5", "\u05DD"}));
    EXPECT_EQ(clusters("\u0645\u064E\u0631"), (Clusters{"\u0645\u064E", "\u0631"}));
}

TEST(IcuTextPrefix, NulIsACharacter) {
    EXPECT_EQ(clusters(std::string("a\0\0b", 4)), (Clusters{"a", std::string("\0", 1), std::string("\0", 1), "b"}));
}

TEST(IcuTextPrefix, AnIllFormedSequenceIsOneCharacterAndKeepsItsBytes) {
    EXPECT_EQ(clusters("\x80z"), (Clusters{"\x80", "z"}));
    EXPECT_EQ(clusters("\xFF\xFE"), (Clusters{"\xFF", "\xFE"}));
    EXPECT_EQ(clusters("\xE2\x82z"), (Clusters{"\xE2\x82", "z"}));
    EXPECT_EQ(clusters("a\xE2\x82"), (Clusters{"a", "\xE2\x82"}));
    EXPECT_EQ(clusters("a\xF0\x9F\x98"), (Clusters{"a", "\xF0\x9F\x98"}));
    EXPECT_EQ(clusters("\xC0\xAF"), (Clusters{"\xC0", "\xAF"}));
    EXPECT_EQ(clusters("\xED\xA0\x80"), (Clusters{"\xED", "\xA0", "\x80"}));
    EXPECT_EQ(clusters("\xF4\x90\x80\x80"), (Clusters{"\xF4", "\x90", "\x80", "\x80"}));
}

TEST(IcuTextPrefix, AMarkJoinsWhateverIsIllFormedBeforeIt) {
    EXPECT_EQ(clusters("\xFF\u0301z"), (Clusters{"\xFF\u0301", "z"}));
}

TEST(IcuTextPrefix, EveryRandomTextIsCutAsItsDecodedFormIs) {
    RandomTexts texts(20240607);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = texts.next();
        ASSERT_EQ(clusters(text), clustersThroughUtf16(text)) << testing::PrintToString(text);
    }
}

TEST(IcuTextPrefix, RandomBytesAreCutAsTheirDecodedFormIs) {
    std::mt19937 random(7);
    for (int i = 0; i < 1000; ++i) {
        std::string text;
        for (auto count = random() % 20; count > 0; --count) text.push_back(static_cast<char>(random() & 0xFFU));
        ASSERT_EQ(clusters(text), clustersThroughUtf16(text)) << testing::PrintToString(text);
    }
}

TEST(IcuTextPrefix, ALongTextCostsNoMoreThanAShortOne) {
    const auto cost = [](const std::string& text) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 100; ++i) EXPECT_EQ(english().prefix(text, 1), "x");
        return std::chrono::steady_clock::now() - start;
    };
    const std::string shortText(1000, 'x');
    const std::string longText(1000 * 1000, 'x');
    (void)cost(shortText);
    // Looking at the whole text would cost a thousand times as much.
    EXPECT_LT(cost(longText), 100 * cost(shortText));
}

TEST(IcuTextPrefix, TheLargestCountIsTheWholeText) {
    EXPECT_EQ(english().prefix("abc", std::numeric_limits<std::size_t>::max()), "abc");
}

TEST(IcuTextTrimmed, EveryKindOfWhiteSpaceGoes) {
    for (const char* space : {" ", "\t", "\n", "\v", "\f", "\r", "\u0085", "\u00A0", "\u1680", "\u2000", "\u2003", "\u200A",
                              "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
        const std::string white = space;
        EXPECT_EQ(english().trimmed(white + white + "a" + white), "a");
        EXPECT_EQ(english().trimmed(white), "");
        EXPECT_EQ(english().trimmed("a" + white + "b"), "a" + white + "b");
    }
}

TEST(IcuTextTrimmed, WhatIsInvisibleAndYetNoWhiteSpaceStays) {
    for (const char* invisible : {"\u200B", "\u200D", "\u2060", "\uFEFF", "\u180E", "\u001F", "\u00AD"}) {
        EXPECT_EQ(english().trimmed(invisible), invisible);
    }
    EXPECT_EQ(english().trimmed(std::string(" \0 ", 3)), std::string("\0", 1));
}

TEST(IcuTextTrimmed, IllFormedBytesStopTheTrimming) {
    for (const char* bytes : {"\xFF", "\x80", "\xC2", "\xE2\x80", "\xED\xA0\x80", "\xC0\xA0", "\xA0"}) {
        EXPECT_EQ(english().trimmed(" " + std::string(bytes) + " "), bytes);
        EXPECT_EQ(english().trimmed(bytes), bytes);
    }
}

TEST(IcuTextTrimmed, TrimmingIsDoneAfterOneTime) {
    RandomTexts texts(11);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = texts.next();
        const std::string once = english().trimmed(text);
        ASSERT_EQ(english().trimmed(once), once) << testing::PrintToString(text);
        ASSERT_NE(text.find(once), std::string::npos) << testing::PrintToString(text);
    }
}

TEST(IcuTextCompare, CaseDiffersNothingAndAccentsDo) {
    EXPECT_TRUE(english().compareIgnoringCase("STRASSE", "strasse") == 0);
    EXPECT_TRUE(english().compareIgnoringCase("\u00C9", "\u00E9") == 0);
    EXPECT_TRUE(english().compareIgnoringCase("e", "\u00E9") < 0);
    EXPECT_TRUE(english().compareIgnoringCase("\u00E9", "f") < 0);
    EXPECT_TRUE(english().compareIgnoringCase("\u00C9a", "eb") < 0) << "Letters come before accents.";
}

TEST(IcuTextCompare, ComposedAndDecomposedLettersAreEquivalent) {
    EXPECT_TRUE(english().compareIgnoringCase("\u00E9", "E\u0301") == 0);
}

TEST(IcuTextCompare, SpacesAndPunctuationCount) {
    EXPECT_TRUE(english().compareIgnoringCase("a b", "ab") != 0);
    EXPECT_TRUE(english().compareIgnoringCase("a-b", "ab") != 0);
    EXPECT_TRUE(english().compareIgnoringCase("a z", "ab") < 0);
    EXPECT_TRUE(english().compareIgnoringCase("1Password", "Backup") < 0);
}

TEST(IcuTextCompare, NulDoesNotEndAText) {
    EXPECT_TRUE(english().compareIgnoringCase(std::string("a\0b", 3), std::string("a\0c", 3)) < 0);
}

TEST(IcuTextCompare, IllFormedSequencesCompareAsTheReplacementCharacter) {
    for (const char* bytes : {"\xFF", "\x80", "\xE2\x82", "\xF0\x9F\x98"}) {
        EXPECT_TRUE(english().compareIgnoringCase(bytes, "\uFFFD") == 0) << testing::PrintToString(bytes);
        EXPECT_TRUE(english().compareIgnoringCase(bytes, "a") != 0);
        EXPECT_TRUE(english().compareIgnoringCase("x\xE2\x82", "x\u20AC") != 0);
    }
}

TEST(IcuTextCompare, AViewWithoutBytesIsTheEmptyText) {
    EXPECT_TRUE(english().compareIgnoringCase(std::string_view(), std::string_view()) == 0);
    EXPECT_TRUE(english().compareIgnoringCase(std::string_view(), "a") < 0);
    EXPECT_TRUE(english().compareIgnoringCase("a", std::string_view()) > 0);
    EXPECT_EQ(english().trimmed(std::string_view()), "");
    EXPECT_EQ(english().prefix(std::string_view(), 3), "");
}

TEST(IcuTextCompare, EachLocaleSortsInItsOwnWay) {
    const IcuText swedish("sv_SE");
    const IcuText german("de_DE");
    EXPECT_TRUE(swedish.compareIgnoringCase("\u00F6", "z") > 0);
    EXPECT_TRUE(swedish.compareIgnoringCase("\u00D6", "\u00F6") == 0);
    EXPECT_TRUE(german.compareIgnoringCase("\u00F6", "z") < 0);
    EXPECT_TRUE(IcuText("et").compareIgnoringCase("z", "t") < 0);
}

TEST(IcuTextCompare, LettersOfTurkishKeepTheirDots) {
    const IcuText turkish("tr_TR");
    EXPECT_TRUE(turkish.compareIgnoringCase("I", "\u0131") == 0);
    EXPECT_TRUE(turkish.compareIgnoringCase("i", "\u0130") == 0);
    EXPECT_TRUE(turkish.compareIgnoringCase("I", "i") < 0);
}

TEST(IcuTextCompare, AnUnknownLocaleStillLeavesCaseAside) {
    for (const std::string& locale :
         {std::string("xx_YY"), std::string("no such thing"), std::string("@@@"), std::string("C"), std::string("C.UTF-8"),
          std::string("POSIX"), std::string("en_US_POSIX"), std::string(3000, 'x'), std::string("de_DE@"),
          std::string("sr_RS.UTF-8@latin"), std::string("."), std::string("_")}) {
        const IcuText text(locale);
        EXPECT_TRUE(text.compareIgnoringCase("Wi-Fi", "WI-FI") == 0) << locale;
        EXPECT_TRUE(text.compareIgnoringCase("a", "B") < 0) << locale;
        EXPECT_TRUE(text.compareIgnoringCase("A", "b") < 0) << locale;
        EXPECT_TRUE(text.compareIgnoringCase("\u00E9", "f") < 0) << locale;
    }
}

TEST(IcuTextCompare, RandomTextsAreOrderedWithoutContradiction) {
    RandomTexts texts(3);
    for (const char* locale : {"en_US", "sv_SE", "ja_JP", "th_TH"}) {
        const IcuText text(locale);
        for (int i = 0; i < 2000; ++i) {
            const std::string a = texts.next();
            const std::string b = texts.next();
            const std::string c = texts.next();
            const auto ab = text.compareIgnoringCase(a, b);
            ASSERT_TRUE((ab < 0) == (text.compareIgnoringCase(b, a) > 0));
            ASSERT_TRUE((ab == 0) == (text.compareIgnoringCase(b, a) == 0));
            if (ab <= 0 && text.compareIgnoringCase(b, c) <= 0) {
                ASSERT_TRUE(text.compareIgnoringCase(a, c) <= 0)
                    << testing::PrintToString(a) << testing::PrintToString(b) << testing::PrintToString(c);
            }
            ASSERT_TRUE(text.compareIgnoringCase(a, a) == 0);
        }
    }
}

TEST(IcuText, ManyThreadsGetTheAnswersOfOne) {
    struct Answers {
        std::string prefix;
        std::string trimmed;
        std::vector<int> order;
        bool operator==(const Answers&) const = default;
    };
    const auto ask = [] {
        RandomTexts texts(99);
        Answers answers;
        for (int i = 0; i < 300; ++i) {
            const std::string a = texts.next();
            const std::string b = texts.next();
            const auto order = english().compareIgnoringCase(a, b);
            answers.prefix += english().prefix(a, 2);
            answers.trimmed += english().trimmed(b);
            answers.order.push_back(order < 0 ? -1 : order > 0 ? 1 : 0);
        }
        return answers;
    };
    std::vector<Answers> answers(8);
    std::vector<std::thread> threads;
    for (Answers& each : answers) threads.emplace_back([&] { each = ask(); });
    for (std::thread& thread : threads) thread.join();
    const Answers expected = ask();
    for (const Answers& each : answers) EXPECT_TRUE(each == expected);
}

/// Sets the variables that choose a locale, and sets them back.
class LocaleEnvironment {
public:
    explicit LocaleEnvironment(const std::map<std::string, std::string>& variables) {
        for (const char* name : {"LC_ALL", "LC_COLLATE", "LC_MESSAGES", "LANG"}) {
            const char* value = std::getenv(name);
            before_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
            const auto wanted = variables.find(name);
            set(name, wanted == variables.end() ? std::nullopt : std::optional<std::string>(wanted->second));
        }
    }
    LocaleEnvironment(const LocaleEnvironment&) = delete;
    LocaleEnvironment& operator=(const LocaleEnvironment&) = delete;
    ~LocaleEnvironment() {
        for (const auto& [name, value] : before_) set(name, value);
    }

private:
    static void set(const std::string& name, const std::optional<std::string>& value) {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }

    std::map<std::string, std::optional<std::string>> before_;
};

bool sortsAsSwedish(const std::map<std::string, std::string>& variables) {
    const LocaleEnvironment environment(variables);
    return IcuText().compareIgnoringCase("\u00F6", "z") > 0;
}

TEST(IcuTextEnvironment, TheFirstVariableThatIsSetDecides) {
    EXPECT_TRUE(sortsAsSwedish({{"LC_ALL", "sv_SE.UTF-8"}, {"LC_COLLATE", "de_DE.UTF-8"}, {"LANG", "de_DE.UTF-8"}}));
    EXPECT_TRUE(sortsAsSwedish({{"LC_COLLATE", "sv_SE.UTF-8"}, {"LANG", "de_DE.UTF-8"}}));
    EXPECT_TRUE(sortsAsSwedish({{"LANG", "sv_SE"}}));
    EXPECT_FALSE(sortsAsSwedish({{"LC_ALL", "de_DE.UTF-8"}, {"LC_COLLATE", "sv_SE.UTF-8"}, {"LANG", "sv_SE.UTF-8"}}));
    EXPECT_FALSE(sortsAsSwedish({{"LC_COLLATE", "de_DE.UTF-8"}, {"LANG", "sv_SE.UTF-8"}}));
}

TEST(IcuTextEnvironment, AnEmptyVariableIsNotSet) {
    EXPECT_TRUE(sortsAsSwedish({{"LC_ALL", ""}, {"LC_COLLATE", ""}, {"LANG", "sv_SE.UTF-8"}}));
}

TEST(IcuTextEnvironment, TheLanguageOfMessagesDoesNotSort) {
    EXPECT_FALSE(sortsAsSwedish({{"LC_MESSAGES", "sv_SE.UTF-8"}, {"LANG", "de_DE.UTF-8"}}));
}

TEST(IcuTextEnvironment, CharacterSetsAndModifiersAreLeftAside) {
    EXPECT_TRUE(sortsAsSwedish({{"LANG", "sv_SE.ISO-8859-15@euro"}}));
    EXPECT_TRUE(sortsAsSwedish({{"LANG", "sv_FI@euro"}}));
}

TEST(IcuTextEnvironment, WithoutALocaleCaseIsStillLeftAside) {
    for (const char* none : {"C", "POSIX", "C.UTF-8", "C@euro", "en_US_POSIX.UTF-8", ""}) {
        const LocaleEnvironment environment(std::map<std::string, std::string>{{"LC_ALL", none}});
        const IcuText text;
        EXPECT_TRUE(text.compareIgnoringCase("Wi-Fi", "WI-FI") == 0) << none;
        EXPECT_TRUE(text.compareIgnoringCase("a", "B") < 0) << none;
    }
}

}  // namespace
}  // namespace ovin
