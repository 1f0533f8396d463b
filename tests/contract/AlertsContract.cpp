#include <algorithm>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

class AlertsContract : public ContractTest {
protected:
    const Alert plain{"The display cannot be widened", "It has no wider mode."};
    const Alert odd{"Grüße & <b>no mark-up</b>", ""};

    [[nodiscard]] std::vector<Alert> acknowledged() const { return stage().user().acknowledged(); }

    [[nodiscard]] bool areAcknowledged(std::size_t count) const {
        return becomes([&] { return acknowledged().size() == count; });
    }
};

TEST_P(AlertsContract, AnAlertHasItsTextsAndOneButton) {
    for (const Alert& alert : {plain, odd}) {
        const std::size_t before = acknowledged().size();
        platform().alerts.run(alert);
        ASSERT_TRUE(areAcknowledged(before + 1)) << alert.message;
        EXPECT_EQ(acknowledged().back(), alert);
    }
}

TEST_P(AlertsContract, EachOfTwoAlertsIsShownOnce) {
    platform().alerts.run(plain);
    platform().alerts.run(odd);
    ASSERT_TRUE(areAcknowledged(2));
    settle();
    const auto shown = acknowledged();
    const std::vector<Alert> both{plain, odd};
    EXPECT_TRUE(std::is_permutation(shown.begin(), shown.end(), both.begin(), both.end()));
}

TEST_P(AlertsContract, WorkOfTheMainQueueMayShowAnAlert) {
    platform().mainQueue.async([this] { platform().alerts.run(plain); });
    EXPECT_TRUE(areAcknowledged(1));
}

OVIN_IN_EVERY_WORLD(AlertsContract);

}  // namespace
}  // namespace ovin
