#include "platform/linux/displays/LastingIDs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace ovin {
namespace {

using testing::ElementsAre;

RandrOutput output(std::string name, std::string monitor = {}) {
    RandrOutput output;
    output.name = std::move(name);
    output.monitor = std::move(monitor);
    return output;
}

RandrMode mode(std::uint32_t id, Extent size, std::uint32_t millihertz = 59887, std::uint32_t scan = 6) {
    return {id, size, true, millihertz, scan};
}

/// The ids of these modes at an output that lists them in this order.
std::vector<std::int32_t> modeIDs(const std::vector<RandrMode>& modes) {
    RandrState state;
    state.modes = modes;
    RandrOutput at = output("DP-1");
    for (const RandrMode& mode : modes) at.modes.push_back(mode.id);
    return lastingModeIDs(state, at);
}

TEST(LastingIDs, TheyAreTheSameInEveryVersion) {
    EXPECT_EQ(lastingID(output("DP-1")), 1143025749U);
    EXPECT_THAT(modeIDs({mode(80, {1440, 900})}), ElementsAre(875473710));
}

TEST(LastingIDs, WhatTheServerNumbersMakesNoDifference) {
    RandrOutput first = output("DP-1", "monitor");
    RandrOutput second = first;
    first.id = 66;
    second.id = 78;
    second.crtc = 63;
    EXPECT_EQ(lastingID(first), lastingID(second));
    EXPECT_EQ(modeIDs({mode(80, {1440, 900}), mode(81, {1280, 800})}),
              modeIDs({mode(94, {1440, 900}), mode(80, {1280, 800})}));
}

TEST(LastingIDs, ConnectorsAndMonitorsAreToldApart) {
    std::set<DisplayID> ids;
    for (const char* name : {"DP-1", "DP-2", "HDMI-1", "eDP-1", "DUMMY0", "DUMMY1"}) {
        for (const char* monitor : {"", "one", "two"}) ids.insert(lastingID(output(name, monitor)));
    }
    EXPECT_EQ(ids.size(), 18U);
    EXPECT_EQ(ids.count(0), 0U);
}

TEST(LastingIDs, SizesRatesAndScansAreToldApart) {
    std::vector<RandrMode> modes;
    for (int width = 640; width < 8192; width += 64) {
        for (const std::uint32_t rate : {23976U, 50000U, 59887U, 60000U, 144000U}) {
            for (const std::uint32_t scan : {0U, 6U, 22U}) {
                modes.push_back(mode(static_cast<std::uint32_t>(modes.size()) + 1, {width, width / 2}, rate, scan));
            }
        }
    }
    const auto ids = modeIDs(modes);
    EXPECT_EQ(std::set(ids.begin(), ids.end()).size(), modes.size());
    EXPECT_GT(*std::min_element(ids.begin(), ids.end()), 0);
}

TEST(LastingIDs, ModesThatAgreeInEverythingAreToldApartByTheirOrder) {
    const auto ids = modeIDs({mode(1, {800, 600}), mode(2, {1024, 768}), mode(3, {800, 600})});
    EXPECT_NE(ids[0], ids[2]);
    EXPECT_EQ(ids[0], modeIDs({mode(9, {800, 600})})[0]);
}

}  // namespace
}  // namespace ovin
