// Compares the geometry, the matching, the labels and the order with plain restatements of their rules, over thousands of
// random menu bars. Every bar has a seed that a failure prints.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>

#include "discovery/ItemLabels.h"
#include "discovery/ItemOrder.h"
#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using MenuBarGeometry::Entry;

constexpr unsigned barCount = 3000;

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    /// At least `lowest` and at most `highest`. Not a distribution of the library, because those differ between libraries.
    int between(int lowest, int highest) {
        return lowest + static_cast<int>(engine_() % static_cast<unsigned>(highest - lowest + 1));
    }
    bool oneIn(int count) { return between(1, count) == 1; }

    template <typename Value>
    const Value& pick(const std::vector<Value>& values) {
        return values[static_cast<std::size_t>(between(0, static_cast<int>(values.size()) - 1))];
    }

private:
    std::mt19937 engine_;
};

const std::vector<std::string> someTitles{
    "", " ", "Wi-Fi", "wi-fi", "Volume", "Éclair", "e\u0301clair", "12 characters", "日本語"};
const std::vector<std::string> someNames{"alpha", "Alpha", "beta", "Zeta", "ähre"};

/// A bar with a few applications, their items, and slots that show some of them, or stand-ins for them, anywhere.
struct RandomBar {
    MenuBarScene scene;
    std::vector<Rect> slotFrames;

    explicit RandomBar(Random& random) {
        scene.launchAgent();
        const bool standIns = random.oneIn(3);
        std::vector<MemoryElement> shown;
        for (ProcessID pid = 1; pid <= random.between(0, 6); ++pid) {
            std::vector<std::string> itemTitles;
            for (int i = random.between(0, 4); i > 0; --i) itemTitles.push_back(random.pick(someTitles));
            const ProcessID owner = random.oneIn(8) ? scene.world.process.pid + pid - 1 : pid;
            for (const auto& item : scene.launchWithItems(owner, random.pick(someNames), itemTitles)) {
                shown.push_back(standIns ? scene.world.accessibility.makeElement(owner) : item);
                if (standIns) shown.back().set("AXTitle", {random.pick(someTitles)});
            }
            scene.world.accessibility.setLatency(owner, std::chrono::milliseconds(random.between(0, 3)));
        }
        for (const MemoryElement& item : shown) {
            if (!random.oneIn(4)) addSlot(random, item);
        }
        while (random.oneIn(3)) addSlot(random, std::nullopt);
    }

private:
    void addSlot(Random& random, const std::optional<MemoryElement>& item) {
        // With halves, overlaps of exactly a point, and of just more or less, are frequent.
        const Rect frame{{random.between(0, 400) / 2.0, random.between(0, 3) * 12.0},
                         {random.between(-2, 60) / 2.0, random.between(0, 24) * 1.0}};
        slotFrames.push_back(frame);
        scene.addSlot(frame, item);
    }
};

/// "Drawn when no other slot overlaps it by more than a point": with plain intervals, and every slot compared with every
/// other.
bool isDrawnPlainly(const std::vector<Rect>& frames, std::size_t index) {
    const Rect& own = frames[index];
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (i == index || frames[i].size.width <= 0) continue;
        const Rect& other = frames[i];
        const double left = std::max(own.origin.x, other.origin.x);
        const double right = std::min(own.origin.x + own.size.width, other.origin.x + other.size.width);
        const bool meetVertically =
            own.origin.y <= other.origin.y + other.size.height && other.origin.y <= own.origin.y + own.size.height;
        if (meetVertically && right - left > 1) return false;
    }
    return true;
}

TEST(RandomBars, EverySlotIsDrawnExactlyWhenThePlainRuleSaysSo) {
    int drawnCount = 0;
    int undrawnCount = 0;
    for (unsigned seed = 0; seed < barCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        RandomBar bar(random);
        const auto snapshot = bar.scene.snapshot();
        ASSERT_TRUE(snapshot);

        std::size_t entry = 0;
        double totalWidth = 0;
        for (std::size_t i = 0; i < bar.slotFrames.size(); ++i) {
            if (bar.slotFrames[i].size.width <= 0) continue;
            ASSERT_LT(entry, snapshot->entries.size());
            ASSERT_EQ(snapshot->entries[entry].frame, bar.slotFrames[i]);
            ASSERT_EQ(snapshot->entries[entry].isDrawn, isDrawnPlainly(bar.slotFrames, i)) << "slot " << i;
            ++(snapshot->entries[entry].isDrawn ? drawnCount : undrawnCount);
            totalWidth += bar.slotFrames[i].size.width;
            ++entry;
        }
        ASSERT_EQ(entry, snapshot->entries.size());
        ASSERT_DOUBLE_EQ(snapshot->totalItemsWidth(), totalWidth);
    }
    EXPECT_GT(drawnCount, 1000);
    EXPECT_GT(undrawnCount, 1000);
}

/// The items that a discovery must return, in any order and without labels, by each rule written out for one item at a time.
std::multiset<std::string> undrawnPlainly(const std::vector<DiscoveredItem>& found, const std::vector<Entry>& entries,
                                          ProcessID own, bool& byElement) {
    std::vector<Entry> foreign;
    for (const Entry& entry : entries) {
        if (entry.owner && *entry.owner != own) foreign.push_back(entry);
    }
    byElement = false;
    for (const auto& item : found) {
        for (const auto& entry : foreign) byElement = byElement || *entry.element == item.element;
    }

    std::multiset<std::string> undrawn;
    for (const auto& item : found) {
        int drawnOfProcess = 0;
        int foundOfProcess = 0;
        bool elementIsDrawn = false;
        bool titleIsDrawn = false;
        for (const auto& other : found) foundOfProcess += other.ownerPID == item.ownerPID ? 1 : 0;
        for (const auto& entry : foreign) {
            if (!entry.isDrawn) continue;
            elementIsDrawn = elementIsDrawn || *entry.element == item.element;
            if (*entry.owner != item.ownerPID) continue;
            ++drawnOfProcess;
            titleIsDrawn = titleIsDrawn || (!item.title.empty() && entry.title == item.title);
        }
        const bool countedAsDrawn = drawnOfProcess >= foundOfProcess ||
                                    (drawnOfProcess >= 1 && drawnOfProcess <= foundOfProcess - 1 && titleIsDrawn);
        if (!(byElement ? elementIsDrawn : countedAsDrawn)) undrawn.insert(item.identity());
    }
    return undrawn;
}

TEST(RandomBars, ExactlyTheItemsThatThePlainRulesCallUndrawnAreReturned) {
    int byElementCount = 0;
    int removedByCount = 0;
    for (unsigned seed = 0; seed < barCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        RandomBar bar(random);
        const auto snapshot = bar.scene.snapshotWithTitles();
        const auto result = bar.scene.discover();
        bar.scene.world.workspace.quit(MenuBarScene::agentPID);
        const auto found = bar.scene.discover();

        bool byElement = false;
        const auto expected = undrawnPlainly(found, snapshot->entries, bar.scene.world.process.pid, byElement);
        std::multiset<std::string> actual;
        for (const auto& item : result) actual.insert(item.identity());
        ASSERT_EQ(actual, expected);
        byElementCount += byElement ? 1 : 0;
        removedByCount += !byElement && expected.size() < found.size() ? 1 : 0;
    }
    EXPECT_GT(byElementCount, 500);
    EXPECT_GT(removedByCount, 100);
}

TEST(RandomBars, ApplicationsAreInOrderAndSoAreTheItemsOfEach) {
    for (unsigned seed = 0; seed < barCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        RandomBar bar(random);
        const Text& text = bar.scene.world.text;
        const auto items = bar.scene.discover();
        for (std::size_t later = 1; later < items.size(); ++later) {
            for (std::size_t earlier = 0; earlier < later; ++earlier) {
                const bool sameName = items[earlier].appName == items[later].appName;
                ASSERT_TRUE((sameName ? text.compareIgnoringCase(items[earlier].title, items[later].title)
                                      : text.compareIgnoringCase(items[earlier].appName, items[later].appName)) <= 0)
                    << items[earlier].identity() << " before " << items[later].identity();
            }
        }
    }
}

TEST(RandomBars, SortingIsStableWhateverTheItems) {
    for (unsigned seed = 0; seed < barCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        MemoryWorld world;
        world.accessibility.launch(1);
        std::vector<DiscoveredItem> items;
        for (int i = random.between(0, 60); i > 0; --i) {
            const auto element = world.accessibility.makeElement(1).element();
            items.push_back({element, random.pick(someNames), {}, random.pick(someTitles), 1, {}, {}});
        }
        sortForDisplay(world.text, items);
        // Elements are numbered in the order in which they were made.
        for (std::size_t i = 1; i < items.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                // Among applications whose names sort as the same, titles move items only within their own application's
                // places. Items of one application whose titles sort as the same keep their order.
                if (items[j].appName != items[i].appName) continue;
                if (world.text.compareIgnoringCase(items[j].title, items[i].title) != 0) continue;
                ASSERT_LT(items[j].element.hash(), items[i].element.hash());
            }
        }
    }
}

TEST(RandomBars, LabelsStandExactlyWhereAProcessHasSeveralUndrawnItems) {
    for (unsigned seed = 0; seed < barCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        RandomBar bar(random);
        const auto items = bar.scene.discover();
        std::map<ProcessID, int> counts;
        for (const auto& item : items) ++counts[item.ownerPID];
        for (const auto& item : items) {
            const bool hasText = item.title != "" && item.title != " ";
            ASSERT_EQ(item.label.has_value(), counts[item.ownerPID] >= 2 && hasText) << item.identity();
            if (item.label) {
                ASSERT_EQ(*item.label, item.title == "12 characters" ? "12 characte…" : item.title);
            }
        }
    }
}

}  // namespace
}  // namespace ovin
