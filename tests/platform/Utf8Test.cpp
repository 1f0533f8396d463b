#include "platform/Utf8.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/icu/IcuText.h"

namespace ovin {
namespace {

std::string encoded(char32_t codePoint) {
    std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, codePoint);
    return {bytes.begin(), bytes.begin() + length};
}

std::vector<char32_t> codePoints(std::string_view text) {
    std::vector<char32_t> result;
    for (std::size_t offset = 0; offset < text.size(); offset += utf8Character(text, offset).length) {
        result.push_back(utf8Character(text, offset).codePoint);
    }
    return result;
}

std::vector<char32_t> codePointsOfTheLibrary(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText* opened = utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
    std::vector<char32_t> result;
    for (UChar32 c = utext_next32(opened); c != U_SENTINEL; c = utext_next32(opened)) {
        result.push_back(static_cast<char32_t>(c));
    }
    utext_close(opened);
    return result;
}

TEST(Utf8, EveryCodePointIsReadAndWrittenAsItself) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        const std::string text = encoded(c);
        const bool isSurrogate = c >= 0xD800 && c <= 0xDFFF;
        const Utf8Character character = utf8Character(text, 0);
        ASSERT_EQ(character.isWellFormed, !isSurrogate) << static_cast<unsigned>(c);
        if (isSurrogate) continue;
        ASSERT_EQ(character.codePoint, c);
        ASSERT_EQ(character.length, text.size());
        ASSERT_EQ(utf8(c), text);
    }
}

TEST(Utf8, EachMaximalIllFormedSequenceIsOneReplacement) {
    EXPECT_EQ(wellFormedUtf8("a\xF0\x9F\x98z"), "a\uFFFDz");
    EXPECT_EQ(wellFormedUtf8("\xFF\xFE"), "\uFFFD\uFFFD");
    EXPECT_EQ(wellFormedUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(wellFormedUtf8("\xC0\xAF"), "\uFFFD\uFFFD");
    EXPECT_EQ(wellFormedUtf8("e\xCC"), "e\uFFFD");
    EXPECT_EQ(wellFormedUtf8("W\u00F6rter"), "W\u00F6rter");
}

/// Of bytes that are often the ends of ranges, so that broken sequences of every kind occur.
TEST(Utf8, ReadsBrokenTextsAsTheLibraryOfTheOtherWorldsDoes) {
    const std::string bytes(
        "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF", 25);
    std::mt19937 random(1);
    for (int round = 0; round < 200000; ++round) {
        std::string text;
        for (std::size_t n = random() % 9; n > 0; --n) text += bytes[random() % bytes.size()];
        ASSERT_EQ(codePoints(text), codePointsOfTheLibrary(text)) << testing::PrintToString(text);
    }
}

TEST(Utf8, ALengthIsCountedInUtf16Units) {
    const std::string text = "a\u00E9\U0001F600\xFFz";
    EXPECT_EQ(utf8Length(text, 0), 0U);
    EXPECT_EQ(utf8Length(text, 1), 1U);
    EXPECT_EQ(utf8Length(text, 2), 3U);
    EXPECT_EQ(utf8Length(text, 3), 3U) << "Half a character is none.";
    EXPECT_EQ(utf8Length(text, 4), 7U);
    EXPECT_EQ(utf8Length(text, 5), 8U) << "An ill-formed byte is one unit.";
    EXPECT_EQ(utf8Length(text, 6), 9U);
    EXPECT_EQ(utf8Length(text, 100), 9U);
}

/// What a library that counts in UTF-16 would say, by the rules of the library of the other worlds.
std::size_t endInUtf16(const std::string& text, std::size_t count) {
    const IcuText library("root");
    std::size_t units = 0;
    for (const char32_t c : codePoints(library.prefix(text, count))) units += c > 0xFFFF ? 2 : 1;
    return units;
}

TEST(Utf8, APrefixIsThatOfTheLibraryWhateverTheTextIsMadeOf) {
    const std::vector<std::string> parts{"a",      "\u0301",     "\U0001F1E9",         "\U0001F468", "\u200D",
                                         "\r",     "\n",         "\xF0\x9F",           "\xFF",       "\u1100",
                                         "\u1161", "\U0001F3FD", std::string(1, '\0'), "\u65E5"};
    const IcuText library("root");
    std::mt19937 random(2);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        // Often many of one kind, so that there are long characters.
        for (std::size_t n = random() % 12; n > 0; --n) {
            const std::string& part = parts[random() % parts.size()];
            for (std::size_t times = random() % 3 == 0 ? random() % 40 : 1; times > 0; --times) text += part;
        }
        const std::size_t count = random() % 14;
        ASSERT_EQ(utf8Prefix(text, count, endInUtf16), library.prefix(text, count))
            << testing::PrintToString(text) << " " << count;
    }
}

TEST(Utf8, APrefixOfALongTextLooksAtItsBeginningOnly) {
    std::size_t longest = 0;
    const auto end = [&](const std::string& text, std::size_t count) {
        longest = std::max(longest, text.size());
        return std::min(text.size(), count);
    };
    EXPECT_EQ(utf8Prefix(std::string(1000000, 'x'), 13, end), std::string(13, 'x'));
    EXPECT_LT(longest, 1000U);
}

TEST(Utf8, APrefixHoldsACharacterThatIsLongerThanUsual) {
    std::string character = "e";
    for (int i = 0; i < 5000; ++i) character += "\u0301";
    EXPECT_EQ(utf8Prefix(character + "xyz", 1, endInUtf16), character);
    EXPECT_EQ(utf8Prefix(character + "xyz", 2, endInUtf16), character + "x");
    EXPECT_EQ(utf8Prefix(character, 9, endInUtf16), character);
    EXPECT_EQ(utf8Prefix("", 9, endInUtf16), "");
    EXPECT_EQ(utf8Prefix("abc", 0, endInUtf16), "");
}

TEST(Utf8, OuterWhiteSpaceIsThatOfTheUnicodeProperty) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        const std::string text = encoded(c) + "x" + encoded(c);
        const bool isWhite = u_isUWhiteSpace(static_cast<UChar32>(c)) != 0;
        ASSERT_EQ(withoutOuterWhiteSpace(text), isWhite ? std::string_view("x") : std::string_view(text))
            << static_cast<unsigned>(c);
    }
}

TEST(Utf8, WhiteSpaceWithinATextAndIllFormedBytesStay) {
    EXPECT_EQ(withoutOuterWhiteSpace(" a \n b\t"), "a \n b");
    EXPECT_EQ(withoutOuterWhiteSpace(" \xFF "), "\xFF");
    EXPECT_EQ(withoutOuterWhiteSpace(" \u3000\n"), "");
    EXPECT_EQ(withoutOuterWhiteSpace(""), "");
    const IcuText library("root");
    for (const char* text : {"\xE2\x80 a", " \xE2\x80", "\xC2 \xA0 a \xA0", "\u0085a\xC2"}) {
        EXPECT_EQ(withoutOuterWhiteSpace(text), library.trimmed(text));
    }
}

}  // namespace
}  // namespace ovin
