#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "platform/memory/MemoryUserDefaults.h"

namespace ovin {
namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

MemoryUserDefaults storeOf(UserDefaults::Value value) {
    MemoryUserDefaults defaults;
    defaults.values.emplace("key", std::move(value));
    return defaults;
}

std::int64_t integerOf(UserDefaults::Value value) { return storeOf(std::move(value)).integer("key"); }
bool booleanOf(UserDefaults::Value value) { return storeOf(std::move(value)).boolean("key"); }

// A literal must not turn into a Boolean.
std::int64_t integerOfText(std::string text) { return integerOf(std::move(text)); }
bool booleanOfText(std::string text) { return booleanOf(std::move(text)); }

TEST(UserDefaultsInteger, AnAbsentValueIsZero) { EXPECT_EQ(MemoryUserDefaults().integer("key"), 0); }

TEST(UserDefaultsInteger, AnIntegerIsItself) {
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-7}, lowest, highest})
        EXPECT_EQ(integerOf(number), number);
}

TEST(UserDefaultsInteger, ABooleanIsZeroOrOne) {
    EXPECT_EQ(integerOf(true), 1);
    EXPECT_EQ(integerOf(false), 0);
}

TEST(UserDefaultsInteger, ANumberLosesItsFraction) {
    EXPECT_EQ(integerOf(2.9), 2);
    EXPECT_EQ(integerOf(-2.9), -2);
    EXPECT_EQ(integerOf(-0.0), 0);
    EXPECT_EQ(integerOf(9007199254740993.0), 9007199254740992);
}

TEST(UserDefaultsInteger, ANumberStopsAtTheEndsOfTheRange) {
    EXPECT_EQ(integerOf(1e300), highest);
    EXPECT_EQ(integerOf(-1e300), lowest);
    EXPECT_EQ(integerOf(infinity), highest);
    EXPECT_EQ(integerOf(-infinity), lowest);
    EXPECT_EQ(integerOf(9223372036854775808.0), highest);
    EXPECT_EQ(integerOf(-9223372036854775808.0), lowest);
    EXPECT_EQ(integerOf(9223372036854774784.0), 9223372036854774784);
}

TEST(UserDefaultsInteger, WhatIsNotANumberIsZero) { EXPECT_EQ(integerOf(notANumber), 0); }

TEST(UserDefaultsInteger, ATextCountsAsTheNumberThatItBeginsWith) {
    EXPECT_EQ(integerOfText("12"), 12);
    EXPECT_EQ(integerOfText("12abc"), 12);
    EXPECT_EQ(integerOfText("12.9"), 12);
    EXPECT_EQ(integerOfText(" -5"), -5);
    EXPECT_EQ(integerOfText("\t\n+5 6"), 5);
    EXPECT_EQ(integerOfText("007"), 7);
    EXPECT_EQ(integerOfText(std::string("1\0"
                                        "2",
                                        3)),
              1);
}

TEST(UserDefaultsInteger, AnyOtherTextIsZero) {
    for (const char* text : {"", " ", "-", "+", "abc", "a12", "- 5", "--5", "+-5", "true",
                             "\u00A0"
                             "5",
                             "\u0665"}) {
        EXPECT_EQ(integerOfText(text), 0) << text;
    }
}

TEST(UserDefaultsInteger, ATextStopsAtTheEndsOfTheRange) {
    EXPECT_EQ(integerOfText("9223372036854775806"), highest - 1);
    EXPECT_EQ(integerOfText("9223372036854775807"), highest);
    EXPECT_EQ(integerOfText("9223372036854775808"), highest);
    EXPECT_EQ(integerOfText("9223372036854775809"), highest);
    EXPECT_EQ(integerOfText("92233720368547758070"), highest);
    EXPECT_EQ(integerOfText("-9223372036854775807"), lowest + 1);
    EXPECT_EQ(integerOfText("-9223372036854775808"), lowest);
    EXPECT_EQ(integerOfText("-9223372036854775809"), lowest);
    EXPECT_EQ(integerOfText(std::string(1000, '9')), highest);
    EXPECT_EQ(integerOfText("-" + std::string(1000, '9')), lowest);
    EXPECT_EQ(integerOfText(std::string(1000, '0') + "3"), 3);
}

TEST(UserDefaultsBoolean, AnAbsentValueIsFalse) { EXPECT_FALSE(MemoryUserDefaults().boolean("key")); }

TEST(UserDefaultsBoolean, ABooleanIsItself) {
    EXPECT_TRUE(booleanOf(true));
    EXPECT_FALSE(booleanOf(false));
}

TEST(UserDefaultsBoolean, ANumberIsTrueUnlessItIsZero) {
    for (const std::int64_t number : {std::int64_t{1}, std::int64_t{-1}, std::int64_t{256}, lowest, highest}) {
        EXPECT_TRUE(booleanOf(number)) << number;
    }
    for (const double number : {0.1, -2.0, infinity, notANumber, std::numeric_limits<double>::denorm_min()}) {
        EXPECT_TRUE(booleanOf(number)) << number;
    }
    EXPECT_FALSE(booleanOf(std::int64_t{0}));
    EXPECT_FALSE(booleanOf(0.0));
    EXPECT_FALSE(booleanOf(-0.0));
}

TEST(UserDefaultsBoolean, ATextThatBeginsLikeYesOrTrueOrANumberIsTrue) {
    for (const char* text :
         {"YES", "yes", "y", "True", "t", "1", "9", "  1", "-1", "+3", "007", "-0004", " \t0yes", "tofu"}) {
        EXPECT_TRUE(booleanOfText(text)) << text;
    }
}

TEST(UserDefaultsBoolean, AnyOtherTextIsFalse) {
    for (const char* text : {"", " ", "NO", "false", "0", "000", "-0", "+", "on", "-", "x1", "0.5", "--1"}) {
        EXPECT_FALSE(booleanOfText(text)) << text;
    }
}

}  // namespace
}  // namespace ovin
