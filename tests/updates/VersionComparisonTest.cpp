#include "updates/VersionComparison.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ovin {
namespace {

void expectNewer(const std::string& newer, const std::string& older) {
    EXPECT_TRUE(compareVersions(newer, older) > 0) << newer << " and " << older;
    EXPECT_TRUE(compareVersions(older, newer) < 0) << older << " and " << newer;
}

void expectSame(const std::string& a, const std::string& b) {
    EXPECT_TRUE(compareVersions(a, b) == 0) << a << " and " << b;
    EXPECT_TRUE(compareVersions(b, a) == 0) << b << " and " << a;
}

TEST(VersionComparison, NumbersCompareByTheirValue) {
    expectNewer("1.10", "1.9");
    expectNewer("2", "1.99.99");
    expectNewer("1.0.1", "1.0");
    expectNewer("20261120", "20261119");
    expectNewer("1.2.3", "1.2");
}

TEST(VersionComparison, NumbersMayBeLongerThanAnyMachineNumber) {
    expectNewer("1." + std::string(4000, '9'), "1." + std::string(3999, '9'));
    expectNewer("18446744073709551617", "18446744073709551616");
    expectSame("1." + std::string(4000, '0') + "7", "1.7");
}

TEST(VersionComparison, WhatComesBeforeAReleaseIsOlder) {
    expectNewer("1.0", "1.0b1");
    expectNewer("1.0b2", "1.0b1");
    expectNewer("1.0b10", "1.0b9");
    expectNewer("1.0b1", "1.0a9");
    expectNewer("1.0rc1", "1.0b3");
    expectNewer("1.0b1", "0.9");
    expectNewer("1.0.1", "1.0b1");
    expectNewer("1.0b", "1.0a2");
    expectNewer("1.0b1", "1.0b");
}

TEST(VersionComparison, ZerosAtTheEndDoNotCount) {
    expectSame("1", "1.0");
    expectSame("1.0", "1.0.0");
    expectSame("1b1", "1.0b1");
    expectSame("01.02", "1.2");
    expectSame("1.0b0", "1.0b");
}

TEST(VersionComparison, SeparatorsOnlySeparate) {
    expectSame("1.2", "1_2");
    expectSame("1.0 b1", "1.0b1");
    expectSame(" 1..2. ", "1.2");
}

TEST(VersionComparison, WhatFollowsADashDoesNotCount) {
    expectSame("1.5.5-335d3e2", "1.5.5-a655360");
    expectSame("1.5-x", "1.5.0-x");
    expectSame("1.0", "1.0-beta");
    expectSame("1", "1-2");
    expectSame("1.0 (3-4)", "1.0 (3)");
    expectNewer("1.5.6-1", "1.5.5-2");
    expectSame("-1", "");
}

TEST(VersionComparison, WhatIsInParenthesesCountsOnlyBetweenVersionsThatAreTheSame) {
    expectNewer("3.3.1b1 (5902)", "3.3 (5847)");
    expectSame("3.3 (5847)", "3.3.0 (5847)");
    expectNewer("3.3.0 (5848)", "3.3 (5847)");
    expectNewer("3.3.1 (1)", "3.3 (5847)");
    expectNewer("3.3 (5847)", "3.3b1 (5902)");
    expectNewer("3.3.0.1 (1)", "3.3 (2)");
    expectNewer("1.0 (10)", "1.0 (9)");
    expectNewer("1.0 (10)", "1.0");
    expectNewer("1.0", "1.0 (beta)");
    expectSame("1.0 (0)", "1.0");
    expectSame("1.0 ()", "1.0");
    expectNewer("1 (2) (3)", "1 (2)");
}

TEST(VersionComparison, AnythingIsComparable) {
    expectSame("", "");
    expectSame("", "0");
    expectNewer("1", "");
    expectNewer("", "beta");
    expectNewer("1", "\xFF\xFE");
    expectNewer("ä", "a");
}

TEST(VersionComparison, ItIsAnOrder) {
    const std::vector<std::string> versions{
        "",      "0",    "1",       "1.0",   "1b",    "1.0b",    "1.0b1", "1.b",   "1.0.1", "1.1",     "1.10",       "1.9",
        "b",     "b1",   "1b0",     "1.0.b", "1-1",   "1.0.0b1", "0.0b",  "00001", "1.0rc", "1.0.0.1", "1.1a",       "a.1",
        "1 b 2", "1b.1", "0.b.0.1", "1 (1)", "1 (b)", "1.0 (0)", "1-1",   "(1)",   "(",     "1 ((2)",  "1 (1.0) (b)"};
    for (const auto& a : versions) {
        EXPECT_TRUE(compareVersions(a, a) == 0);
        for (const auto& b : versions) {
            EXPECT_TRUE((compareVersions(a, b) < 0) == (compareVersions(b, a) > 0));
            for (const auto& c : versions) {
                const bool isChain = compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0;
                EXPECT_TRUE(!isChain || compareVersions(a, c) <= 0) << a << " " << b << " " << c;
            }
        }
    }
}

}  // namespace
}  // namespace ovin
