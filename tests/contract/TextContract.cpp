#include <compare>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

/// What every world's text services agree on, whatever the user's locale; all texts are in the Latin script.
class TextContract : public ContractTest {
protected:
    [[nodiscard]] Text& text() const { return platform().text; }
};

TEST_P(TextContract, APrefixCountsWhatUsersSeeAsCharacters) {
    const std::string eAcute = "e\u0301";
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    const std::string flags = "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7";
    EXPECT_EQ(text().prefix("Wi-Fi", 2), "Wi");
    EXPECT_EQ(text().prefix(eAcute + eAcute, 1), eAcute);
    EXPECT_EQ(text().prefix(family + "x", 1), family);
    EXPECT_EQ(text().prefix(flags, 1), "\U0001F1E9\U0001F1EA");
    EXPECT_EQ(text().prefix("\r\nx", 1), "\r\n");
}

TEST_P(TextContract, APrefixLongerThanTheTextIsTheText) {
    for (const std::string& whole : {std::string(), std::string("a"), std::string("W\u00F6rter")}) {
        EXPECT_EQ(text().prefix(whole, 100), whole);
        EXPECT_EQ(text().prefix(whole, 0), "");
    }
}

TEST_P(TextContract, IllFormedBytesAreKept) {
    EXPECT_EQ(text().prefix("a\xFF\xFE"
                            "b",
                            100),
              "a\xFF\xFE"
              "b");
    EXPECT_EQ(text().trimmed(" \xFF "), "\xFF");
    EXPECT_EQ(text().prefix("\xFFz", 1), "\xFF");
}

TEST_P(TextContract, ATextMayHoldNul) {
    const std::string whole("a\0b", 3);
    EXPECT_EQ(text().prefix(whole, 2), std::string("a\0", 2));
    EXPECT_EQ(text().prefix(whole, 9), whole);
    EXPECT_EQ(text().trimmed(" " + whole + " "), whole);
}

TEST_P(TextContract, TrimmingTakesWhiteSpaceAndLineEndsFromBothEndsOnly) {
    EXPECT_EQ(text().trimmed(" \t\n a  b \r\n"), "a  b");
    EXPECT_EQ(text().trimmed("\u00A0\u3000a\u2003\u0085"), "a");
    EXPECT_EQ(text().trimmed(" \n "), "");
    EXPECT_EQ(text().trimmed(""), "");
    EXPECT_EQ(text().trimmed("a"), "a");
}

TEST_P(TextContract, LetterCaseIsLeftAside) {
    for (const auto& [lower, upper] : {std::pair("wi-fi", "WI-FI"), std::pair("\u00E9t\u00E9", "\u00C9T\u00C9")}) {
        EXPECT_TRUE(text().compareIgnoringCase(lower, upper) == 0) << lower;
    }
    EXPECT_TRUE(text().compareIgnoringCase("a", "B") < 0);
    EXPECT_TRUE(text().compareIgnoringCase("A", "b") < 0);
}

TEST_P(TextContract, AShorterTextComesBeforeALongerOneThatBeginsLikeIt) {
    EXPECT_TRUE(text().compareIgnoringCase("", "a") < 0);
    EXPECT_TRUE(text().compareIgnoringCase("App", "App 2") < 0);
    EXPECT_TRUE(text().compareIgnoringCase("App 2", "App") > 0);
    EXPECT_TRUE(text().compareIgnoringCase("", "") == 0);
}

TEST_P(TextContract, ComparingIsAWeakOrder) {
    const std::vector<std::string> texts{"",
                                         "a",
                                         "A",
                                         "b",
                                         "\u00E9",
                                         "e\u0301",
                                         "E",
                                         "e",
                                         "\xFF",
                                         " a",
                                         "a b",
                                         "ab",
                                         "10",
                                         "9",
                                         "\u00DF",
                                         "ss",
                                         "\u65E5",
                                         std::string("a\0b", 3),
                                         "\u05E9\u05DC",
                                         "-"};
    for (const auto& a : texts) {
        for (const auto& b : texts) {
            EXPECT_TRUE((text().compareIgnoringCase(a, b) < 0) == (text().compareIgnoringCase(b, a) > 0)) << a << b;
            for (const auto& c : texts) {
                const bool isChain = text().compareIgnoringCase(a, b) <= 0 && text().compareIgnoringCase(b, c) <= 0;
                EXPECT_TRUE(!isChain || text().compareIgnoringCase(a, c) <= 0) << a << "," << b << "," << c;
            }
        }
    }
}

TEST_P(TextContract, TasksMayAskAtOnce) {
    std::vector<int> right(16);
    inTask([&] {
        const auto ask = [&](std::size_t i) {
            for (int n = 0; n < 100; ++n) {
                right[i] += text().prefix("e\u0301x", 1) == "e\u0301" ? 1 : 0;
                right[i] += text().trimmed(" a ") == "a" ? 1 : 0;
                right[i] += text().compareIgnoringCase("\u00C4rger", "\u00E4RGER") == 0 ? 1 : 0;
            }
        };
        platform().tasks.forEach(right.size(), ask, [](std::size_t) {});
    });
    EXPECT_EQ(right, std::vector<int>(16, 300));
}

OVIN_IN_EVERY_WORLD(TextContract);

}  // namespace
}  // namespace ovin
