// Other programs' element trees may hold anything. Whatever they hold, a discovery follows the rules, ends within its bound
// and crashes nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <random>
#include <string>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using MenuBarGeometry::Entry;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

class BadInput : public testing::Test {
protected:
    MenuBarScene scene;
    MemoryAccessibility& accessibility = scene.world.accessibility;

    MemoryElement agentElement() { return accessibility.makeElement(MenuBarScene::agentPID); }
};

TEST_F(BadInput, ASlotThatContainsItselfIsUnowned) {
    scene.launchAgent();
    const MemoryElement slot = scene.addSlot(0, 20);
    slot.setChildren({slot, slot, slot});
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, std::nullopt)));
}

TEST_F(BadInput, AWindowThatContainsTheAgentIsASlotWithoutAFrame) {
    scene.launchAgent();
    scene.window().setChildren({scene.agent(), scene.window()});
    EXPECT_THAT(scene.snapshot()->entries, IsEmpty());
}

TEST_F(BadInput, AnExtrasMenuBarThatIsTheApplicationItselfListsItsChildren) {
    const MemoryElement root = scene.launch(512, "Loop");
    root.set("AXExtrasMenuBar", {root.element()});
    root.setChildren({root, root});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", ""));
}

TEST_F(BadInput, ATreeAThousandLevelsDeepIsReadToTheLevelThatCounts) {
    scene.launchAgent();
    MemoryElement below = scene.launchWithItems(512, "Deep", {"t"})[0];
    for (int level = 0; level < 1000; ++level) {
        const MemoryElement above = agentElement();
        above.setChildren({below});
        below = above;
    }
    scene.addSlot(0, 20, below);
    int requests = 0;
    accessibility.observeRequests([&](const MemoryRequest&) { ++requests; });
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, std::nullopt)));
    EXPECT_LT(requests, 10);
}

TEST_F(BadInput, TenThousandItemsOfOneApplicationAreAllFound) {
    scene.launchWithItems(512, "Many", std::vector<std::string>(10'000, "t"));
    EXPECT_THAT(scene.discover(), SizeIs(10'000));
}

TEST_F(BadInput, ASlotWithTenThousandChildrenFindsItsOwnerAtTheEnd) {
    scene.launchAgent();
    const auto items = scene.launchWithItems(512, "Net", {"t"});
    const MemoryElement slot = scene.addSlot(0, 20);
    std::vector<MemoryElement> children(10'000, agentElement());
    children.push_back(items[0]);
    slot.setChildren(children);
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, 512)));
}

TEST_F(BadInput, TextsOfAMegabyteAreKeptWholeAndLabelledShort) {
    const std::string plain(1'000'000, 'x');
    std::string marks = "e";
    while (marks.size() < 1'000'000) marks += "\u0301";
    const std::string spaces(1'000'000, ' ');
    scene.launchWithItems(512, std::string(1'000'000, 'N'), {plain, marks, spaces});
    const auto items = scene.discover();
    EXPECT_THAT(titles(items), testing::UnorderedElementsAre(plain, marks, spaces));
    EXPECT_THAT(labels(items), testing::UnorderedElementsAre("xxxxxxxxxxx…", marks, std::nullopt));
}

TEST_F(BadInput, NulAndControlCharactersAreCharacters) {
    using namespace std::string_literals;
    scene.launchWithItems(512, "A\0B"s, {"\0"s, "a\0b\x1b[31m"s, "\x7f\x01 234567890abc"s});
    const auto items = scene.discover();
    EXPECT_THAT(titles(items), testing::UnorderedElementsAre("\0"s, "a\0b\x1b[31m"s, "\x7f\x01 234567890abc"s));
    EXPECT_THAT(labels(items), testing::UnorderedElementsAre("\0"s, "a\0b\x1b[31m"s, "\x7f\x01 23456789…"s));
    EXPECT_EQ(items[0].appName, "A\0B"s);
}

TEST_F(BadInput, IllFormedTextIsNeitherLostNorCutWithinACharacter) {
    const std::string illFormed = "\xff\xc0\x80\xed\xa0\x80\xf4\x90\x80\x80 abc\xe2\x82";
    const std::string cutOff = "abc\xf0\x9f\x91";
    const std::string marked = "\xffx\u0301";
    std::string longMarked;
    for (int i = 0; i < 7; ++i) longMarked += marked;
    scene.launchWithItems(512, "\xfe", {illFormed, cutOff, longMarked});
    const auto items = scene.discover();
    EXPECT_THAT(titles(items), testing::UnorderedElementsAre(illFormed, cutOff, longMarked));
    // Each ill-formed byte or sequence is a character of its own; the fifth mark stays with its letter.
    EXPECT_THAT(labels(items), testing::UnorderedElementsAre("\xff\xc0\x80\xed\xa0\x80\xf4\x90\x80\x80 …", cutOff,
                                                             marked + marked + marked + marked + marked + "\xff…"));
}

TEST_F(BadInput, AnEmptyApplicationNameSortsFirst) {
    scene.launchWithItems(1, "A", {"a"});
    scene.launchWithItems(2, "", {"empty"});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("empty", "a"));
}

TEST_F(BadInput, AReusedPidIsWhoeverHasItNow) {
    scene.launchWithItems(512, "Old", {"old"});
    const auto apps = ItemProvider::snapshotApps(scene.world.platform());
    const auto before = ItemProvider::discoverItems(scene.world.platform(), apps);
    ASSERT_THAT(before, SizeIs(1));

    scene.world.workspace.quit(512);
    const auto now = scene.launchWithItems(512, "New", {"new"});
    now[0].answer("AXPress", {});

    const auto after = ItemProvider::discoverItems(scene.world.platform(), apps);
    ASSERT_THAT(titles(after), ElementsAre("new"));
    EXPECT_EQ(after[0].appName, "Old") << "named as the list of applications that was asked for";
    EXPECT_NE(after[0].identity(), before[0].identity());
    EXPECT_FALSE(ItemProvider::activate(scene.world.platform(), before[0])) << "never presses another program's item";
    EXPECT_TRUE(ItemProvider::activate(scene.world.platform(), after[0]));
}

TEST_F(BadInput, PidsOutOfTheOrdinaryAreScannedLikeAnyOther) {
    for (const ProcessID pid : {-1, 0, std::numeric_limits<ProcessID>::min(), std::numeric_limits<ProcessID>::max()}) {
        scene.launchWithItems(pid, "Odd", {std::to_string(pid)});
    }
    EXPECT_THAT(scene.discover(), SizeIs(4));
}

TEST_F(BadInput, OneApplicationListedTwiceIsReadTwice) {
    scene.launchWithItems(512, "Net", {"t"});
    const AppInfo app{512, "com.example.net", "Net", {}};
    EXPECT_THAT(titles(ItemProvider::discoverItems(scene.world.platform(), {app, app})), ElementsAre("t", "t"));
}

TEST_F(BadInput, AnApplicationThatQuitsDuringTheScanKeepsTheItemsReadSoFar) {
    const auto items = scene.launchWithItems(512, "Net", {"a", "b", "c"});
    accessibility.setLatency(512, 10ms);
    scene.world.time.happen(35ms, [this] { accessibility.quit(512); });
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "", "a"));
}

TEST_F(BadInput, AnAgentThatQuitsDuringTheSnapshotLeavesTheSlotsReadSoFar) {
    scene.launchAgent();
    scene.draw(scene.launchWithItems(512, "Net", {"a", "b", "c"}));
    accessibility.setLatency(MenuBarScene::agentPID, 10ms);
    scene.world.time.happen(45ms, [this] { accessibility.quit(MenuBarScene::agentPID); });
    const auto snapshot = scene.snapshot();
    ASSERT_TRUE(snapshot);
    EXPECT_THAT(snapshot->entries, SizeIs(1));
}

TEST_F(BadInput, AListThatGrowsWithEveryReadIsReadOnce) {
    const MemoryElement root = scene.launch(512, "Grows");
    const MemoryElement bar = accessibility.makeElement(512);
    root.set("AXExtrasMenuBar", {bar.element()});
    AttributeValue::Array children;
    bar.answerWith("AXChildren", [&]() -> MemoryAnswer {
        children.push_back({accessibility.makeElement(512).element()});
        return {{children}};
    });
    EXPECT_THAT(scene.discover(), SizeIs(1));
    EXPECT_THAT(scene.discover(), SizeIs(2));
}

/// A value, of any type and often a wrong one, that may list any of `elements`.
AttributeValue randomValue(std::mt19937& random, const std::vector<MemoryElement>& elements, int depth = 0) {
    const auto number = [&]() -> double {
        switch (random() % 6) {
            case 0:
                return std::numeric_limits<double>::quiet_NaN();
            case 1:
                return std::numeric_limits<double>::infinity();
            case 2:
                return -std::numeric_limits<double>::max();
            default:
                return static_cast<double>(random() % 2000) - 500;
        }
    };
    const auto anyElement = [&] { return elements[random() % elements.size()].element(); };
    switch (random() % (depth > 3 ? 6 : 12)) {
        case 0:
            return {AttributeValue::Null{}};
        case 1:
            return {AttributeValue::Other{}};
        case 2:
            return {std::string(random() % 40, static_cast<char>(random() % 256))};
        case 3:
            return {Point{number(), number()}};
        case 4:
            return {Size{number(), number()}};
        case 5:
            return {anyElement()};
        default:
            break;
    }
    AttributeValue::Array array;
    for (auto count = random() % 6; count > 0; --count) {
        array.push_back(random() % 8 == 0 ? randomValue(random, elements, depth + 1) : AttributeValue{anyElement()});
    }
    return {std::move(array)};
}

TEST_F(BadInput, RandomTreesWithAnyValueAnywhereAreSurvived) {
    std::size_t found = 0;
    std::size_t slots = 0;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        MenuBarScene bar;
        bar.launchAgent();
        bar.world.process.setEnvironment("OVIN_DEBUG", "");
        bar.world.process.setEnvironment("OVIN_DEBUG_FRAMES", "");
        std::vector<MemoryElement> elements{bar.agent(), bar.window()};
        for (ProcessID pid = 1; pid <= 3; ++pid) elements.push_back(bar.launch(pid, "App" + std::to_string(pid)));
        for (ProcessID pid = 0; pid < 12; ++pid) {
            elements.push_back(bar.world.accessibility.makeElement(pid % 4 == 0 ? MenuBarScene::agentPID : pid % 4));
        }
        for (const MemoryElement& element : elements) {
            for (const char* attribute : {"AXWindows", "AXChildren", "AXExtrasMenuBar", "AXPosition", "AXSize", "AXTitle",
                                          "AXDescription", "AXIdentifier"}) {
                if (random() % 8 != 0) element.set(attribute, randomValue(random, elements));
            }
            if (random() % 2 == 0) element.setFrame({{static_cast<double>(random() % 100), 0}, {20, 24}});
            if (random() % 2 == 0) element.setChildren({elements[random() % elements.size()]});
            if (random() % 2 == 0) element.set("AXExtrasMenuBar", {elements[random() % elements.size()].element()});
        }
        bar.setWindows({bar.window(), elements[random() % elements.size()]});

        found += bar.discover().size();
        if (const auto snapshot = bar.snapshot()) slots += snapshot->entries.size();
    }
    EXPECT_GT(found, 1000u);
    EXPECT_GT(slots, 500u);
}

}  // namespace
}  // namespace ovin
