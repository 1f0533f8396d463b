#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class ProcessInfoContract : public ContractTest {
protected:
    [[nodiscard]] ProcessInfo& process() const { return platform().process; }
};

TEST_P(ProcessInfoContract, ThisProcessHasOnePid) {
    EXPECT_GT(process().processIdentifier(), 0);
    EXPECT_EQ(process().processIdentifier(), process().processIdentifier());
    EXPECT_NE(process().processIdentifier(), stage().start({"Another", {"One"}}));
}

TEST_P(ProcessInfoContract, ThisApplicationHasAnIdentifier) {
    EXPECT_FALSE(process().bundleIdentifier().empty());
    EXPECT_EQ(process().bundleIdentifier(), process().bundleIdentifier());
}

TEST_P(ProcessInfoContract, AVariableThatNobodySetIsAbsent) {
    EXPECT_EQ(process().environment("OVIN_NOBODY_SETS_THIS"), std::nullopt);
    EXPECT_EQ(process().environment(""), std::nullopt);
}

TEST_P(ProcessInfoContract, AVariableIsReadAfresh) {
    OVIN_NEEDS(setEnvironment);
    for (const char* value : {"one", "", "two=2", "W\u00F6rter"}) {
        stage().setEnvironment("OVIN_CONTRACT", value);
        EXPECT_EQ(process().environment("OVIN_CONTRACT"), value);
    }
    stage().setEnvironment("OVIN_CONTRACT", std::nullopt);
    EXPECT_EQ(process().environment("OVIN_CONTRACT"), std::nullopt);
}

TEST_P(ProcessInfoContract, OnlyTheWholeNameCounts) {
    OVIN_NEEDS(setEnvironment);
    stage().setEnvironment("OVIN_CONTRACT", "one");
    EXPECT_EQ(process().environment("OVIN_CONTRAC"), std::nullopt);
    EXPECT_EQ(process().environment("OVIN_CONTRACT_"), std::nullopt);
    // A view need not end where its text ends.
    EXPECT_EQ(process().environment(std::string_view("OVIN_CONTRACT_MORE").substr(0, 13)), "one");
    stage().setEnvironment("OVIN_CONTRACT", std::nullopt);
}

OVIN_IN_EVERY_WORLD(ProcessInfoContract);

}  // namespace
}  // namespace ovin
