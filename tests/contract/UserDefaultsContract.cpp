#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;

std::vector<Value> valuesOfEveryKind() {
    return {
        true,
        false,
        std::int64_t{0},
        std::int64_t{-1},
        std::numeric_limits<std::int64_t>::min(),
        std::numeric_limits<std::int64_t>::max(),
        0.0,
        1.0,
        0.1,
        -1.0 / 3,
        std::numeric_limits<double>::max(),
        std::numeric_limits<double>::denorm_min(),
        std::string(),
        std::string("text"),
        std::string("true"),
        std::string("17"),
        std::string(" leading, trailing \t"),
        std::string("lines\nand\r\nmore; = # [x] \"quoted\" \\n %s"),
        std::string("W\u00F6rter \u65E5\u672C \U0001F469\u200D\U0001F4BB"),
        std::string(20000, 'x'),
    };
}

class UserDefaultsContract : public ContractTest {
protected:
    /// Asked for afresh each time, because reopening makes another store.
    [[nodiscard]] UserDefaults& defaults() const { return platform().defaults; }
};

TEST_P(UserDefaultsContract, AnAbsentKeyHasNoValue) {
    EXPECT_EQ(defaults().object("nobody set this"), std::nullopt);
    EXPECT_EQ(defaults().integer("nobody set this"), 0);
    EXPECT_FALSE(defaults().boolean("nobody set this"));
}

TEST_P(UserDefaultsContract, AValueKeepsItsTypeAndItsContent) {
    for (const Value& value : valuesOfEveryKind()) {
        ASSERT_TRUE(defaults().set("key", value));
        EXPECT_EQ(defaults().object("key"), value) << "kind " << value.index();
    }
}

TEST_P(UserDefaultsContract, AValueSurvivesARelaunchWithItsType) {
    const auto values = valuesOfEveryKind();
    for (std::size_t i = 0; i < values.size(); ++i) ASSERT_TRUE(defaults().set("key" + std::to_string(i), values[i]));
    stage().reopenDefaults();
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(defaults().object("key" + std::to_string(i)), values[i]) << "value " << i;
    }
}

TEST_P(UserDefaultsContract, ALaterValueReplacesAnEarlierOneOfAnotherType) {
    ASSERT_TRUE(defaults().set("key", std::string("text")));
    ASSERT_TRUE(defaults().set("key", std::int64_t{5}));
    EXPECT_EQ(defaults().object("key"), Value(std::int64_t{5}));
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("key"), Value(std::int64_t{5}));
}

TEST_P(UserDefaultsContract, ARemovedValueIsGoneForGood) {
    ASSERT_TRUE(defaults().set("key", true));
    ASSERT_TRUE(defaults().set("other", true));
    stage().reopenDefaults();
    ASSERT_TRUE(defaults().remove("key"));
    EXPECT_EQ(defaults().object("key"), std::nullopt);
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("key"), std::nullopt);
    EXPECT_EQ(defaults().object("other"), Value(true));
}

TEST_P(UserDefaultsContract, RemovingAnAbsentValueSucceeds) { EXPECT_TRUE(defaults().remove("nobody set this")); }

TEST_P(UserDefaultsContract, WhatAnotherProgramChangesIsSeenAndKept) {
    ASSERT_TRUE(defaults().set("own", std::int64_t{1}));
    stage().changeDefaultsElsewhere("others", true);
    EXPECT_EQ(defaults().object("others"), Value(true));
    ASSERT_TRUE(defaults().set("own", std::int64_t{2}));
    EXPECT_EQ(defaults().object("others"), Value(true));
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("own"), Value(std::int64_t{2}));
    EXPECT_EQ(defaults().object("others"), Value(true));
}

TEST_P(UserDefaultsContract, WhatAnotherProgramRemovesDoesNotComeBack) {
    ASSERT_TRUE(defaults().set("record", std::int64_t{1}));
    EXPECT_EQ(defaults().object("record"), Value(std::int64_t{1}));
    stage().changeDefaultsElsewhere("record", std::nullopt);
    EXPECT_EQ(defaults().object("record"), std::nullopt);
    ASSERT_TRUE(defaults().set("own", true));
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("record"), std::nullopt);
}

TEST_P(UserDefaultsContract, KeysThatLookAlikeAreToldApart) {
    const std::vector<std::string> keys{"key", "Key", "key ", "k.e.y", "key=1", "group/key", "key\u00E9", "[key]", "# key"};
    for (std::size_t i = 0; i < keys.size(); ++i) ASSERT_TRUE(defaults().set(keys[i], static_cast<std::int64_t>(i)));
    stage().reopenDefaults();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(defaults().object(keys[i]), Value(static_cast<std::int64_t>(i))) << keys[i];
    }
}

TEST_P(UserDefaultsContract, WhenAChangeIsRefusedTheStoreIsAsItWas) {
    OVIN_NEEDS(refuseChanges);
    ASSERT_TRUE(defaults().set("kept", std::int64_t{1}));
    stage().setRefusesChanges(true);
    EXPECT_FALSE(defaults().set("kept", std::int64_t{2}));
    EXPECT_FALSE(defaults().set("new", true));
    EXPECT_FALSE(defaults().remove("kept"));
    EXPECT_EQ(defaults().object("kept"), Value(std::int64_t{1}));
    EXPECT_EQ(defaults().object("new"), std::nullopt);
    stage().setRefusesChanges(false);
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("kept"), Value(std::int64_t{1}));
    EXPECT_EQ(defaults().object("new"), std::nullopt);
}

TEST_P(UserDefaultsContract, AfterARefusalChangesWorkAgain) {
    OVIN_NEEDS(refuseChanges);
    stage().setRefusesChanges(true);
    EXPECT_FALSE(defaults().set("key", true));
    stage().setRefusesChanges(false);
    EXPECT_TRUE(defaults().set("key", std::string("again")));
    stage().reopenDefaults();
    EXPECT_EQ(defaults().object("key"), Value(std::string("again")));
}

OVIN_IN_EVERY_WORLD(UserDefaultsContract);

}  // namespace
}  // namespace ovin
