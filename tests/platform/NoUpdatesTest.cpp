#include "platform/NoUpdates.h"

#include <gtest/gtest.h>

#include <vector>

namespace ovin {
namespace {

class AlertList final : public Alerts {
public:
    void run(const Alert& alert) override { shown.push_back(alert); }

    std::vector<Alert> shown;
};

TEST(NoUpdates, WhoAsksForUpdatesIsToldOfTheirAbsenceEachTime) {
    AlertList alerts;
    NoUpdates updates(alerts, {"None here", "They come from elsewhere."});
    const auto controller = updates.start({});
    EXPECT_TRUE(alerts.shown.empty()) << "Nobody has asked.";
    controller->checkForUpdates();
    controller->checkForUpdates();
    EXPECT_EQ(alerts.shown, std::vector<Alert>(2, {"None here", "They come from elsewhere."}));
}

}  // namespace
}  // namespace ovin
