#include "organize/DisplayModeChoice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

namespace ovin {
namespace {

/// A mode that is known by its place in the list.
DisplayMode mode(std::int32_t id, int width, int height, int pixelWidth = 0, bool isUsable = true) {
    return {id, width, height, pixelWidth, isUsable};
}

const DisplayMode notched = mode(1, 1512, 982);

/// The id of the chosen mode; 0 when there is none.
std::int32_t chosen(const std::vector<DisplayMode>& modes, double needed, const DisplayMode& current = notched) {
    const auto choice = chooseWiderMode(modes, current, needed);
    return choice ? choice->id : 0;
}

TEST(DisplayModeChoice, TheNarrowestModeThatIsWideEnoughIsChosen) {
    EXPECT_EQ(chosen({mode(1, 2560, 1600), mode(2, 1800, 1125), mode(3, 2048, 1280)}, 1900), 3);
}

TEST(DisplayModeChoice, AModeOfExactlyTheNeededWidthIsWideEnough) {
    EXPECT_EQ(chosen({mode(1, 1800, 1125), mode(2, 2048, 1280)}, 1800), 1);
    EXPECT_EQ(chosen({mode(1, 1800, 1125), mode(2, 2048, 1280)}, 1800.001), 2);
}

TEST(DisplayModeChoice, WhereNoneIsWideEnoughTheWidestIsChosen) {
    EXPECT_EQ(chosen({mode(1, 1800, 1125), mode(2, 2048, 1280)}, 2100), 2);
    EXPECT_EQ(chosen({mode(1, 2048, 1280), mode(2, 1800, 1125)}, 2100), 1);
}

TEST(DisplayModeChoice, AnEquallyWideModeOf16By10MakesRoomForAModeOfAnotherShape) {
    EXPECT_EQ(chosen({mode(1, 1512, 982), mode(2, 1512, 945)}, 1900), 2);
    EXPECT_EQ(chosen({mode(1, 1512, 982), mode(2, 1512, 945)}, 100), 2);
    EXPECT_EQ(chosen({mode(1, 1512, 950)}, 100), 1);
    EXPECT_EQ(chosen({mode(1, 1512, 982), mode(2, 1512, 1000)}, 1900), 0);
}

TEST(DisplayModeChoice, AnEquallyWideModeDoesNotMakeRoomWhereTheCurrentOneIs16By10Already) {
    EXPECT_EQ(chosen({mode(1, 1512, 945), mode(2, 1512, 982)}, 1900, mode(9, 1512, 945)), 0);
}

TEST(DisplayModeChoice, ShapesWithinFiveThousandthsAre16By10) {
    // 625 of 1000 is the shape; the tolerance itself is outside.
    EXPECT_EQ(chosen({mode(1, 1000, 629)}, 1, mode(9, 1000, 700)), 1);
    EXPECT_EQ(chosen({mode(1, 1000, 621)}, 1, mode(9, 1000, 700)), 1);
    EXPECT_EQ(chosen({mode(1, 1000, 631)}, 1, mode(9, 1000, 700)), 0);
    EXPECT_EQ(chosen({mode(1, 1000, 619)}, 1, mode(9, 1000, 700)), 0);
    EXPECT_EQ(chosen({mode(1, 10000, 6299)}, 1, mode(9, 10000, 7000)), 1);
    EXPECT_EQ(chosen({mode(1, 10000, 6301)}, 1, mode(9, 10000, 7000)), 0);
}

TEST(DisplayModeChoice, NarrowerModesAreNeverChosen) { EXPECT_EQ(chosen({mode(1, 1440, 900), mode(2, 1511, 945)}, 100), 0); }

TEST(DisplayModeChoice, AModeThatTheDesktopCannotUseIsNeverChosen) {
    EXPECT_EQ(chosen({mode(1, 8000, 5000, 8000, false), mode(2, 1800, 1125)}, 5000), 2);
    EXPECT_EQ(chosen({mode(1, 8000, 5000, 8000, false), mode(2, 1512, 945, 0, false)}, 1600), 0);
}

TEST(DisplayModeChoice, OfEquallyWideModesThe16By10OneWinsOverMorePixels) {
    const DisplayMode sharp = mode(1, 2048, 1330, 4096);
    const DisplayMode shaped = mode(2, 2048, 1280, 2048);
    for (const double needed : {1900.0, 3000.0}) {
        EXPECT_EQ(chosen({sharp, shaped}, needed), 2) << needed;
        EXPECT_EQ(chosen({shaped, sharp}, needed), 2) << needed;
    }
}

TEST(DisplayModeChoice, OfEquallyWideModesOfOneShapeTheOneWithMorePixelsWins) {
    for (const int height : {1280, 1330}) {
        const DisplayMode blurred = mode(1, 2048, height, 2048);
        const DisplayMode sharp = mode(2, 2048, height, 4096);
        for (const double needed : {1900.0, 3000.0}) {
            EXPECT_EQ(chosen({blurred, sharp}, needed), 2) << needed;
            EXPECT_EQ(chosen({sharp, blurred}, needed), 2) << needed;
        }
    }
}

TEST(DisplayModeChoice, OfModesThatAreAlikeTheFirstListedWins) {
    for (const double needed : {1900.0, 3000.0}) {
        EXPECT_EQ(chosen({mode(7, 2048, 1280, 4096), mode(3, 2048, 1280, 4096)}, needed), 7);
        EXPECT_EQ(chosen({mode(3, 2048, 1280, 4096), mode(7, 2048, 1280, 4096)}, needed), 3);
        EXPECT_EQ(chosen({mode(7, 2048, 1330, 4096), mode(3, 2048, 1340, 4096)}, needed), 7);
    }
}

TEST(DisplayModeChoice, OfNoModesNoneIsChosen) { EXPECT_EQ(chosen({}, 100), 0); }

TEST(DisplayModeChoice, WidthsThatMakeNoSenseAreSurvived) {
    EXPECT_EQ(chosen({mode(1, 0, 0), mode(2, -5, 10)}, 100), 0);
    EXPECT_EQ(chosen({mode(1, 0, 0), mode(2, 800, 500)}, 100, mode(9, 0, 0)), 2);
    EXPECT_EQ(chosen({mode(1, 1600, 1000)}, std::nan("")), 1);
    EXPECT_EQ(chosen({mode(1, 1600, 1000), mode(2, 1700, 1000)}, std::numeric_limits<double>::infinity()), 2);
    EXPECT_EQ(chosen({mode(1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min())}, 100), 1);
}

/// The rules once more, step by step and without library algorithms.
class NaiveChoice {
public:
    explicit NaiveChoice(const DisplayMode& current) : current_(current) {}

    [[nodiscard]] std::int32_t of(const std::vector<DisplayMode>& modes, double needed) const {
        std::vector<DisplayMode> kept;
        std::vector<DisplayMode> fitting;
        for (const DisplayMode& m : modes) {
            if (!m.isUsableForDesktopGUI) continue;
            const bool counts = m.width > current_.width || (m.width == current_.width && has(m) && !has(current_));
            if (!counts) continue;
            kept.push_back(m);
            if (m.width >= needed) fitting.push_back(m);
        }
        if (kept.empty()) return 0;
        return fitting.empty() ? scan(kept) : firstSorted(fitting);
    }

private:
    static bool has(const DisplayMode& m) { return std::fabs(double(m.height) / double(m.width) - 0.625) < 0.005; }

    static std::int32_t scan(const std::vector<DisplayMode>& kept) {
        DisplayMode best = kept[0];
        for (const DisplayMode& m : kept) {
            bool replaces = false;
            if (m.width > best.width) replaces = true;
            if (m.width == best.width && has(m) && !has(best)) replaces = true;
            if (m.width == best.width && has(m) == has(best) && m.pixelWidth > best.pixelWidth) replaces = true;
            if (replaces) best = m;
        }
        return best.id;
    }

    /// Sorts by exchanging neighbours, which keeps the order of equals.
    static std::int32_t firstSorted(std::vector<DisplayMode> fitting) {
        const auto comesBefore = [](const DisplayMode& a, const DisplayMode& b) {
            if (a.width < b.width) return true;
            if (a.width > b.width) return false;
            if (has(a) && !has(b)) return true;
            if (!has(a) && has(b)) return false;
            return a.pixelWidth > b.pixelWidth;
        };
        for (std::size_t end = fitting.size(); end > 1; --end) {
            for (std::size_t i = 0; i + 1 < end; ++i) {
                if (comesBefore(fitting[i + 1], fitting[i])) std::swap(fitting[i], fitting[i + 1]);
            }
        }
        return fitting[0].id;
    }

    DisplayMode current_;
};

TEST(DisplayModeChoice, RandomListsLeadToTheModeThatTheRulesNameStepByStep) {
    std::mt19937 random(20260101);
    const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
    const auto randomMode = [&](std::int32_t id) {
        // Few widths, shapes and densities, so that ties of every kind are frequent.
        const int width = 1000 + 8 * below(6);
        const int height = std::vector<int>{width * 5 / 8, width * 5 / 8 + 2, width * 13 / 20,
                                            width * 3 / 5}[static_cast<std::size_t>(below(4))];
        return mode(id, width, height, width * (1 + below(2)), below(6) != 0);
    };
    int choices = 0;
    for (int round = 0; round < 20000; ++round) {
        std::vector<DisplayMode> modes;
        for (int count = below(9); count > 0; --count) {
            modes.push_back(!modes.empty() && below(8) == 0 ? modes.front()
                                                            : randomMode(static_cast<std::int32_t>(modes.size()) + 1));
        }
        const DisplayMode current = randomMode(100);
        const double needed = 990 + below(60);
        const auto expected = NaiveChoice(current).of(modes, needed);
        ASSERT_EQ(chosen(modes, needed, current), expected) << "round " << round;
        if (expected != 0) ++choices;
    }
    EXPECT_GT(choices, 10000);
}

}  // namespace
}  // namespace ovin
