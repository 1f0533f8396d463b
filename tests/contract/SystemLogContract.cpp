#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class SystemLogContract : public ContractTest {
protected:
    [[nodiscard]] SystemLog& log() const { return platform().log; }

    /// Whether the log comes to hold these lines and no others.
    [[nodiscard]] bool arrive(const std::vector<std::string>& lines) const {
        return stage().runUntil([&] { return stage().logLines() == lines; }, longTime);
    }
};

TEST_P(SystemLogContract, LinesAreWrittenInOrder) {
    OVIN_NEEDS(readLog);
    for (const char* line : {"one", "two", "three"}) log().write(line);
    EXPECT_TRUE(arrive({"one", "two", "three"}));
}

TEST_P(SystemLogContract, ALineIsNoFormat) {
    OVIN_NEEDS(readLog);
    const std::string line = "100 % %s %n %{public}@ \\n W\u00F6rter";
    log().write(line);
    EXPECT_TRUE(arrive({line}));
}

TEST_P(SystemLogContract, OnlyTheLineIsWrittenAndNotWhatStandsBehindIt) {
    OVIN_NEEDS(readLog);
    log().write(std::string_view("line and more").substr(0, 4));
    EXPECT_TRUE(arrive({"line"}));
}

TEST_P(SystemLogContract, LinesFromManyTasksStayWhole) {
    OVIN_NEEDS(readLog);
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < 40; ++i) expected.push_back(std::string(50, static_cast<char>('A' + i % 26)));
    inTask([&] {
        platform().tasks.forEach(
            40, [&](std::size_t i) { log().write(expected[i]); }, [](std::size_t) {});
    });
    EXPECT_TRUE(stage().runUntil([&] { return stage().logLines().size() == expected.size(); }, longTime));
    EXPECT_THAT(stage().logLines(), testing::UnorderedElementsAreArray(expected));
}

OVIN_IN_EVERY_WORLD(SystemLogContract);

}  // namespace
}  // namespace ovin
