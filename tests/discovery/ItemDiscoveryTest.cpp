#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class ItemDiscovery : public testing::Test {
protected:
    MenuBarScene scene;
    MemoryAccessibility& accessibility = scene.world.accessibility;

    void debug() { scene.world.process.setEnvironment("OVIN_DEBUG", ""); }

    /// Stand-ins under the slots, equal to none of the elements that the applications list.
    std::vector<MemoryElement> doubles(ProcessID pid, const std::vector<std::string>& titles) {
        std::vector<MemoryElement> result;
        for (const std::string& title : titles) {
            result.push_back(accessibility.makeElement(pid));
            result.back().set("AXTitle", {title});
        }
        return result;
    }
};

/// Answers like another one, and delivers the root elements that it is given to be read together.
class ReadTogether final : public Accessibility {
public:
    explicit ReadTogether(const Accessibility& other) : other_(other) {}

    [[nodiscard]] bool isProcessTrusted() const override { return other_.isProcessTrusted(); }
    void promptForTrust() override {}
    [[nodiscard]] AccessibilityElement applicationElement(ProcessID pid) const override {
        return other_.applicationElement(pid);
    }
    [[nodiscard]] std::optional<std::vector<AccessibilityElement>> applicationElementsToReadTogether(
        const std::vector<ProcessID>& pids) const override {
        std::vector<AccessibilityElement> elements;
        for (const ProcessID pid : pids) elements.push_back(other_.applicationElement(pid));
        delivered = elements;
        return elements;
    }
    void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const override {
        other_.setMessagingTimeout(element, timeout);
    }
    [[nodiscard]] AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) const override {
        if (attribute == "AXExtrasMenuBar") read.push_back(&element.reference());
        return other_.copyAttributeValue(element, attribute);
    }
    [[nodiscard]] ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const override {
        return other_.processIdentifier(element);
    }
    [[nodiscard]] AccessibilityError performAction(const AccessibilityElement& element,
                                                   std::string_view action) const override {
        return other_.performAction(element, action);
    }

    mutable std::vector<AccessibilityElement> delivered;
    mutable std::vector<const AccessibilityElement::Reference*> read;

private:
    const Accessibility& other_;
};

// The scan

TEST_F(ItemDiscovery, WhereProcessesCanBeReadTogetherTheyAreReadInTheirOrderAndOnNoThreadsOfTheirOwn) {
    class NoChildren final : public Tasks {
    public:
        void start(Priority, std::function<void()>) override { ADD_FAILURE() << "A task was started."; }
        void forEach(std::size_t, const std::function<void(std::size_t)>&,
                     const std::function<void(std::size_t)>&) override {
            ADD_FAILURE() << "Children were started.";
        }
    } tasks;
    scene.launchWithItems(512, "Net", {"Wi-Fi", "VPN"});
    scene.launch(513, "None");
    scene.launchWithItems(514, "Net", {"Wi-Fi"});
    accessibility.setLatency(512, 50ms);
    ReadTogether together(accessibility);
    const Platform platform = scene.world.platform(together, scene.world.time, tasks);
    const auto found = ItemProvider::discoverItems(platform, ItemProvider::snapshotApps(platform));
    EXPECT_THAT(titles(found), ElementsAre("VPN", "Wi-Fi", "Wi-Fi"));
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[1].ownerPID, 512);
    EXPECT_EQ(found[2].ownerPID, 514);
    std::vector<const AccessibilityElement::Reference*> roots;
    for (const AccessibilityElement& root : together.delivered) roots.push_back(&root.reference());
    EXPECT_EQ(together.read, roots);
}

TEST_F(ItemDiscovery, WithoutTrustNothingIsScanned) {
    scene.launchWithItems(512, "Net", {"Wi-Fi"});
    accessibility.setTrusted(false);
    int requests = 0;
    accessibility.observeRequests([&](const MemoryRequest&) { ++requests; });
    EXPECT_THAT(scene.discover(), IsEmpty());
    EXPECT_EQ(requests, 0);
}

TEST_F(ItemDiscovery, WithoutAnyExtrasMenuBarTheResultIsEmptyWithAndWithoutASnapshot) {
    scene.launch(512, "Net");
    EXPECT_THAT(scene.discover(), IsEmpty());
    scene.launchAgent();
    EXPECT_THAT(scene.discover(), IsEmpty());
}

TEST_F(ItemDiscovery, AnExtrasMenuBarThatIsNoElementYieldsNothing) {
    const MemoryElement root = scene.launch(512, "Net");
    for (const AttributeValue& value : {AttributeValue{std::string("bar")}, AttributeValue{AttributeValue::Null{}},
                                        AttributeValue{AttributeValue::Array{{root.element()}}}}) {
        root.set("AXExtrasMenuBar", value);
        EXPECT_THAT(scene.discover(), IsEmpty());
    }
}

TEST_F(ItemDiscovery, ChildrenThatAreNoArrayOfElementsYieldNothing) {
    const MemoryElement root = scene.launch(512, "Net");
    const MemoryElement bar = accessibility.makeElement(512);
    root.set("AXExtrasMenuBar", {bar.element()});
    EXPECT_THAT(scene.discover(), IsEmpty());
    for (const AttributeValue& value : {AttributeValue{AttributeValue::Array{}}, AttributeValue{bar.element()},
                                        AttributeValue{AttributeValue::Array{{std::string("item")}}}}) {
        bar.set("AXChildren", value);
        EXPECT_THAT(scene.discover(), IsEmpty());
    }
}

TEST_F(ItemDiscovery, AnItemCarriesWhatIsKnownOfItsApplication) {
    const auto elements = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const auto items = scene.discover();
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].element, elements[0].element());
    EXPECT_EQ(items[0].appName, "Net");
    EXPECT_EQ(MemoryImage::nameOf(items[0].appIcon.value()), "Net");
    EXPECT_EQ(items[0].title, "Wi-Fi");
    EXPECT_EQ(items[0].ownerPID, 512);
    EXPECT_EQ(items[0].bundleID, "com.example.Net");
    EXPECT_EQ(items[0].label, std::nullopt);
}

TEST_F(ItemDiscovery, TheTitleIsTheFirstOfTitleDescriptionAndIdentifier) {
    const auto elements = scene.launchWithItems(512, "Net", {"title"});
    elements[0].set("AXDescription", {std::string("description")});
    elements[0].set("AXIdentifier", {std::string("identifier")});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("title"));
    elements[0].set("AXTitle", {std::string()});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("description"));
    elements[0].fail("AXDescription", AccessibilityError::cannotComplete);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("identifier"));
    elements[0].set("AXIdentifier", {Point{}});
    EXPECT_THAT(titles(scene.discover()), ElementsAre(""));
}

TEST_F(ItemDiscovery, WhiteSpaceIsATitle) {
    scene.launchWithItems(512, "Net", {" \n"});
    EXPECT_THAT(titles(scene.discover()), ElementsAre(" \n"));
}

TEST_F(ItemDiscovery, ReadingStopsAtTheFirstTitle) {
    const auto elements = scene.launchWithItems(512, "Net", {"Wi-Fi", ""});
    std::vector<std::pair<MemoryElement, std::string>> asked;
    accessibility.observeRequests([&](const MemoryRequest& request) { asked.emplace_back(request.element, request.name); });
    (void)scene.discover();
    EXPECT_THAT(asked, ElementsAre(testing::_, testing::_, Pair(elements[0], "AXTitle"), Pair(elements[1], "AXTitle"),
                                   Pair(elements[1], "AXDescription"), Pair(elements[1], "AXIdentifier")));
    EXPECT_EQ(asked[0].second, "AXExtrasMenuBar");
    EXPECT_EQ(asked[1].second, "AXChildren");
}

TEST_F(ItemDiscovery, EveryRequestOfTheScanRunsUnderAQuarterOfASecond) {
    scene.launchWithItems(512, "Net", {"Wi-Fi", ""});
    std::vector<MemoryRequest> requests;
    accessibility.observeRequests([&](const MemoryRequest& request) { requests.push_back(request); });
    (void)scene.discover();
    EXPECT_THAT(requests, SizeIs(6));
    for (const MemoryRequest& request : requests) {
        EXPECT_EQ(request.timeout, 250ms) << request.name;
        EXPECT_TRUE(request.wasGivenTimeout) << request.name;
    }
}

TEST_F(ItemDiscovery, NoChildIsDroppedForWantOfATitle) {
    scene.launchWithItems(512, "Net", {"", "b", ""});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "", "b"));
}

TEST_F(ItemDiscovery, ApplicationsAreReadAtTheSameTime) {
    for (ProcessID pid = 1; pid <= 50; ++pid) {
        scene.launchWithItems(pid, "App" + std::to_string(pid), {"t"});
        accessibility.setLatency(pid, 10ms);
    }
    EXPECT_THAT(scene.discover(), SizeIs(50));
    EXPECT_EQ(scene.world.time.now(), 30ms);
}

TEST_F(ItemDiscovery, HoweverManyApplicationsHangTheyCostOneTimeout) {
    scene.launchWithItems(1, "Good", {"t"});
    for (ProcessID pid = 2; pid <= 41; ++pid) {
        scene.launchWithItems(pid, "Hung", {"t"});
        accessibility.setHung(pid, true);
    }
    EXPECT_THAT(titles(scene.discover()), ElementsAre("t"));
    EXPECT_EQ(scene.world.time.now(), 250ms);
}

TEST_F(ItemDiscovery, HungApplicationsInTheBarCostNoMoreThanThat) {
    scene.launchAgent();
    for (ProcessID pid = 1; pid <= 40; ++pid) {
        scene.draw(scene.launchWithItems(pid, "Hung", {"t", "u"}));
        accessibility.setHung(pid, true);
    }
    EXPECT_THAT(scene.discover(), IsEmpty());
    EXPECT_EQ(scene.world.time.now(), 250ms);
}

TEST_F(ItemDiscovery, ItemsInTheBarAreAskedForTheirTitleOnlyWhereElementsDoNotMatch) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"a"});
    const auto standIns = doubles(512, {"x"});
    scene.launch(513, "NoItems");
    scene.draw(standIns);
    scene.draw(doubles(513, {"y"}));
    std::vector<std::string> asked;
    accessibility.observeRequests([&](const MemoryRequest& request) {
        if (request.name == "AXDescription") asked.push_back(std::to_string(request.element.owner()));
    });
    (void)scene.discover();
    EXPECT_THAT(asked, ElementsAre("512"));
    scene.draw(net);
    (void)scene.discover();
    EXPECT_THAT(asked, ElementsAre("512"));
}

TEST_F(ItemDiscovery, ASlowTitleFallsThroughToTheDescription) {
    const auto elements = scene.launchWithItems(512, "Net", {"title"});
    elements[0].answer("AXTitle", {{std::string("title")}, AccessibilityError::success, 251ms});
    elements[0].set("AXDescription", {std::string("description")});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("description"));
    EXPECT_EQ(scene.world.time.now(), 250ms);
}

TEST_F(ItemDiscovery, AnApplicationThatStopsAnsweringInTheMiddleKeepsItsItemsAndCostsTwoTimeouts) {
    const auto elements = scene.launchWithItems(512, "Net", {"a", "b", "c", "d"});
    accessibility.setLatency(512, 1ms);
    elements[0].answerWith("AXTitle", [this]() -> MemoryAnswer {
        scene.world.time.happen(1ms, [this] { accessibility.setHung(512, true); });
        return {{std::string("a")}};
    });
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "", "", "a"));
    EXPECT_EQ(scene.world.time.now(), 503ms);
}

TEST_F(ItemDiscovery, AnApplicationThatLeavesTwoRequestsInARowUnansweredIsAskedNothingMore) {
    const auto elements = scene.launchWithItems(512, "Net", {"", "", ""});
    for (const auto& element : elements) {
        element.answer("AXTitle", {{}, AccessibilityError::success, 0ms, true});
        element.answer("AXDescription", {{}, AccessibilityError::success, 0ms, true});
        element.set("AXIdentifier", {std::string("id")});
    }
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "", ""));
    EXPECT_EQ(scene.world.time.now(), 500ms);
}

TEST_F(ItemDiscovery, AnApplicationThatAnswersSlowlyIsHeardToTheEnd) {
    scene.launchWithItems(512, "Slow", {"a", "b", "c", "d", "e", "f"});
    accessibility.setLatency(512, 249ms);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(ItemDiscovery, HowLongAnswersTakeIsNoMatterAsLongAsTheyCome) {
    const auto elements = scene.launchWithItems(512, "Slow", {"", "b", "c", "d"});
    elements[0].set("AXIdentifier", {std::string("id")});
    for (const auto latency : {166ms, 167ms, 249ms}) {
        accessibility.setLatency(512, latency);
        EXPECT_THAT(titles(scene.discover()), ElementsAre("b", "c", "d", "id")) << latency.count();
    }
}

TEST_F(ItemDiscovery, AnApplicationThatLeavesSomeRequestsUnansweredIsHeardToTheEnd) {
    const auto elements = scene.launchWithItems(512, "Busy", {"a", "b", "c"});
    for (const auto& element : elements) {
        element.answer("AXTitle", {{}, AccessibilityError::success, 0ms, true});
        element.set("AXDescription", {std::string("text")});
    }
    EXPECT_THAT(titles(scene.discover()), ElementsAre("text", "text", "text"));
}

TEST_F(ItemDiscovery, OwnersThatAnswerSlowlyAreMatchedByTheirTitlesAllTheSame) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    scene.draw(doubles(512, {"a", "b"}));
    scene.agent().answerWith("AXWindows", [this]() -> MemoryAnswer {
        accessibility.setLatency(512, 300ms);
        return {{AttributeValue::Array{{scene.window().element()}}}};
    });
    EXPECT_THAT(titles(scene.discover()), ElementsAre("c"));
}

TEST_F(ItemDiscovery, OneLostAnswerOfTheAgentPutsOneDrawnItemOnTheLedge) {
    scene.launchAgent();
    const auto items = scene.launchWithItems(512, "Net", {"a", "b", "c", "d", "e", "f"});
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto slot = scene.addSlot(static_cast<double>(i) * 30, 30, items[i]);
        if (i == 1) slot.answer("AXPosition", {{}, AccessibilityError::success, 0ms, true});
    }
    EXPECT_THAT(titles(scene.discover()), ElementsAre("b"));
}

TEST_F(ItemDiscovery, OneItemWithoutATitleDoesNotMakeASlowApplicationSilent) {
    scene.launchWithItems(512, "Slow", {"a", "", "c"});
    accessibility.setLatency(512, 150ms);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "a", "c"));
}

TEST_F(ItemDiscovery, AHungFinderDelaysTheLogByOneTimeout) {
    debug();
    scene.world.workspace.launch({40, "com.apple.finder", "Finder", {}, {}});
    accessibility.launch(40);
    accessibility.setHung(40, true);
    (void)scene.discover();
    EXPECT_EQ(scene.world.time.now(), 500ms) << "one for the probe, one for the scan";
}

TEST_F(ItemDiscovery, OwnersThatFallSilentBetweenScanAndMatchingCostOneTitleEach) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    const auto standIns = doubles(512, {"a", "b"});
    scene.draw(standIns);
    scene.agent().answerWith("AXWindows", [this]() -> MemoryAnswer {
        accessibility.setHung(512, true);
        return {{AttributeValue::Array{{scene.window().element()}}}};
    });
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "b", "c"));
    EXPECT_EQ(scene.world.time.now(), 1s);
}

// With a snapshot: matching by element

TEST_F(ItemDiscovery, WithoutASnapshotAllFoundItemsAreReturnedLabelledAndSorted) {
    scene.launchWithItems(512, "Net", {"b", "a"});
    const auto items = scene.discover();
    EXPECT_THAT(titles(items), ElementsAre("a", "b"));
    EXPECT_THAT(labels(items), ElementsAre("a", "b"));
}

TEST_F(ItemDiscovery, DrawnItemsAreLeftOut) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"a", "b"});
    const auto sound = scene.launchWithItems(513, "Sound", {"c"});
    scene.draw({net[1]});
    scene.hide({net[0], sound[0]});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "c"));
}

TEST_F(ItemDiscovery, WithEverythingDrawnOnlyItemsWithoutASlotStay) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"a", "b"});
    scene.launchWithItems(513, "Sound", {"no slot"});
    scene.draw(net);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("no slot"));
}

TEST_F(ItemDiscovery, OneMatchingElementDecidesForMatchingByElement) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"a"});
    scene.launchWithItems(513, "Sound", {"v"});
    scene.hide({net[0]});
    scene.draw(doubles(513, {"v"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "v")) << "by count v would be drawn";
}

TEST_F(ItemDiscovery, AnUndrawnMatchCountsForTheMode) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"a", "b"});
    scene.hide({net[0]});
    scene.draw(doubles(512, {"b", "x"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "b"));
}

// With a snapshot: matching by count

TEST_F(ItemDiscovery, ByCountAProcessWithNothingDrawnKeepsAll) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    scene.hide(doubles(512, {"a", "b", "c"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "b", "c"));
}

TEST_F(ItemDiscovery, ByCountAProcessWithAllDrawnKeepsNone) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    scene.draw(doubles(512, {"x", "y", "z"}));
    EXPECT_THAT(scene.discover(), IsEmpty());
    scene.draw(doubles(512, {"more"}));
    EXPECT_THAT(scene.discover(), IsEmpty());
}

TEST_F(ItemDiscovery, ByCountAPartlyDrawnProcessLosesTheItemsWithADrawnTitle) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    scene.draw(doubles(512, {"b"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "c"));
}

TEST_F(ItemDiscovery, ByCountAnItemWithoutATitleStaysInAPartlyDrawnProcess) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"", "b", "c"});
    scene.draw(doubles(512, {""}));
    scene.draw(doubles(512, {"c"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("", "b"));
}

TEST_F(ItemDiscovery, ByCountTitlesAreComparedExactly) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"Wi-Fi", "b"});
    scene.draw(doubles(512, {"wi-fi"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("b", "Wi-Fi"));
}

TEST_F(ItemDiscovery, ByCountTitlesOfUndrawnSlotsOrOtherProcessesDoNotCount) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a", "b", "c"});
    scene.launch(513, "Other");
    scene.draw(doubles(512, {"x"}));
    scene.draw(doubles(513, {"a"}));
    scene.hide(doubles(512, {"b", "c"}));
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "b", "c"));
}

// Labels

TEST_F(ItemDiscovery, TheOnlyUndrawnItemOfAProcessHasNoLabel) {
    scene.launchAgent();
    const auto net = scene.launchWithItems(512, "Net", {"A title that is long", "drawn"});
    scene.draw({net[1]});
    scene.hide({net[0]});
    EXPECT_THAT(labels(scene.discover()), ElementsAre(std::nullopt));
}

TEST_F(ItemDiscovery, ProcessesAreCountedNotApplications) {
    scene.launchWithItems(512, "Net", {"a"});
    scene.launchWithItems(513, "Net", {"b"});
    EXPECT_THAT(labels(scene.discover()), ElementsAre(std::nullopt, std::nullopt));
}

TEST_F(ItemDiscovery, ATitleOfTwelveCharactersIsALabelAndOneOfThirteenIsCutToEleven) {
    scene.launchWithItems(512, "Net", {"123456789012", "1234567890123"});
    EXPECT_THAT(labels(scene.discover()), ElementsAre("123456789012", "12345678901…"));
}

TEST_F(ItemDiscovery, LabelsAreTrimmedAndTitlesAreNot) {
    scene.launchWithItems(512, "Net", {"\t 123456789012 \n", " \u00A0\u3000\r\n", " 1234567890123\n"});
    const auto items = scene.discover();
    EXPECT_THAT(titles(items), testing::UnorderedElementsAre("\t 123456789012 \n", " \u00A0\u3000\r\n", " 1234567890123\n"));
    EXPECT_THAT(labels(items), testing::UnorderedElementsAre("123456789012", std::nullopt, "12345678901…"));
}

TEST_F(ItemDiscovery, LabelsCountWhatAPersonTakesForACharacter) {
    const std::string family = "👨‍👩‍👧‍👦";
    const std::string accented = "e\u0301";
    std::string twelve, thirteen, elevenAccented;
    for (int i = 0; i < 12; ++i) twelve += family;
    for (int i = 0; i < 13; ++i) thirteen += accented;
    for (int i = 0; i < 11; ++i) elevenAccented += accented;
    scene.launchWithItems(512, "Net", {twelve, thirteen});
    EXPECT_THAT(labels(scene.discover()), testing::UnorderedElementsAre(twelve, elevenAccented + "…"));
}

// Order

TEST_F(ItemDiscovery, ApplicationsSortByNameWhateverTheLetterCase) {
    scene.launchWithItems(1, "zeta", {"t"});
    scene.launchWithItems(2, "Alpha", {"t"});
    scene.launchWithItems(3, "beta", {"t"});
    const auto items = scene.discover();
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[0].appName + items[1].appName + items[2].appName, "Alphabetazeta");
}

TEST_F(ItemDiscovery, AccentsSortWithTheirLetters) {
    scene.launchWithItems(1, "zeta", {"4"});
    scene.launchWithItems(2, "Éclair", {"2"});
    scene.launchWithItems(3, "beta", {"1"});
    scene.launchWithItems(4, "FAX", {"3"});
    scene.launchWithItems(5, "ähre", {"0"});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("0", "1", "2", "3", "4"));
}

TEST_F(ItemDiscovery, ItemsOfOneApplicationSortByTitleWhateverTheLetterCase) {
    scene.launchWithItems(1, "App", {"c", "B", "a", "b"});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "B", "b", "c"));
}

TEST_F(ItemDiscovery, ManyTitlesThatDifferOnlyInLetterCaseKeepTheirOrder) {
    std::vector<std::string> same;
    for (int i = 0; i < 40; ++i) same.emplace_back(i % 3 == 0 ? "x" : "X");
    scene.launchWithItems(1, "App", same);
    EXPECT_EQ(titles(scene.discover()), same);
}

TEST_F(ItemDiscovery, ManyNamesThatDifferOnlyInLetterCaseKeepTheirOrder) {
    std::vector<std::string> numbers;
    for (ProcessID pid = 1; pid <= 40; ++pid) {
        numbers.push_back(std::to_string(100 - pid));
    }
    std::vector<AppInfo> apps;
    for (ProcessID pid = 101; pid <= 140; ++pid) {
        scene.launchWithItems(pid, "unused", {numbers[static_cast<std::size_t>(pid - 101)]});
        std::string name = "abcdef";
        for (std::size_t bit = 0; bit < name.size(); ++bit) {
            if (((pid - 101) >> bit) % 2 == 1) name[bit] = static_cast<char>(name[bit] - 'a' + 'A');
        }
        apps.push_back({pid, {}, name, {}});
    }
    EXPECT_EQ(titles(ItemProvider::discoverItems(scene.world.platform(), apps)), numbers);
}

TEST_F(ItemDiscovery, NamesThatDifferOnlyInLetterCaseKeepTheirOrder) {
    scene.launchWithItems(1, "zed", {"z"});
    scene.launchWithItems(2, "Zed", {"a"});
    EXPECT_THAT(titles(scene.discover()), ElementsAre("z", "a"));
    accessibility.setLatency(1, 1ms);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("a", "z")) << "the order in which the applications finished";
}

TEST_F(ItemDiscovery, ItemsKeepTheOrderInWhichTheirApplicationsFinished) {
    scene.launchWithItems(1, "Same", {"t"});
    scene.launchWithItems(2, "Same", {"T"});
    accessibility.setLatency(1, 2ms);
    accessibility.setLatency(2, 1ms);
    EXPECT_THAT(titles(scene.discover()), ElementsAre("T", "t"));
}

// The log

TEST_F(ItemDiscovery, TheDebugVariableMayHoldAnythingAndIsLookedUpAtEachUse) {
    const MemoryElement root = scene.launch(512, "Net");
    scene.world.process.setEnvironment("OVIN_DEBUG", "0");
    root.answerWith("AXExtrasMenuBar", [this]() -> MemoryAnswer {
        scene.world.process.setEnvironment("OVIN_DEBUG", std::nullopt);
        return {};
    });
    (void)scene.discover();
    EXPECT_THAT(scene.world.log.lines(), ElementsAre("Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -1"));
}

TEST_F(ItemDiscovery, NothingIsLoggedUnlessAsked) {
    scene.launchAgent();
    scene.launchWithItems(512, "Net", {"a"});
    (void)scene.discover();
    EXPECT_THAT(scene.world.log.lines(), IsEmpty());
}

TEST_F(ItemDiscovery, TheLogTellsOfADiscoveryWithoutGeometry) {
    debug();
    scene.launchWithItems(512, "zeta", {"a", "b"});
    scene.launchWithItems(513, "Alpha", {"c"});
    accessibility.setLatency(512, 1ms);
    accessibility.setLatency(513, 78ms);
    (void)scene.discover();
    EXPECT_THAT(scene.world.log.lines(), ElementsAre("Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -1",
                                                     "Ovin DEBUG discovery: 3 items from 2 apps; geometry unavailable",
                                                     "Ovin DEBUG discovery: 3 undrawn items, 0.23s: zeta, zeta, Alpha"));
}

TEST_F(ItemDiscovery, WithoutGeometryWhatABarDrawsByItsProtocolIsLeftOut) {
    const auto items = scene.launchWithItems(512, "Net", {"a", "b"});
    accessibility.drawnByProtocol = [shown = items[0].element()](const auto& item) { return item == shown; };
    const auto found = scene.discover();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].element, items[1].element());
}

TEST_F(ItemDiscovery, WithGeometryTheProtocolDoesNotCount) {
    scene.launchAgent();
    const auto items = scene.launchWithItems(512, "Net", {"a", "b"});
    scene.hide(items);
    accessibility.drawnByProtocol = [](const auto&) { return true; };
    EXPECT_EQ(scene.discover().size(), 2u);
}

TEST_F(ItemDiscovery, TheLogTellsHowItemsWereMatched) {
    scene.launchAgent();
    debug();
    const auto net = scene.launchWithItems(512, "Net", {"a", "b"});
    scene.draw({net[0]});
    scene.hide({net[1]});
    (void)scene.discover();
    EXPECT_THAT(scene.world.log.lines(),
                ElementsAre("Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -1",
                            "Ovin DEBUG discovery: 2 items from 1 apps; 2 containers; matching by element",
                            "Ovin DEBUG discovery: 1 undrawn items, 0.00s: Net"));
}

TEST_F(ItemDiscovery, TheLogTellsOfMatchingByCount) {
    scene.launchAgent();
    debug();
    scene.launchWithItems(512, "Net", {"a"});
    scene.draw(doubles(512, {"a"}));
    (void)scene.discover();
    EXPECT_THAT(scene.world.log.lines(),
                ElementsAre("Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -1",
                            "Ovin DEBUG discovery: 1 items from 1 apps; 1 containers; matching by per-app count",
                            "Ovin DEBUG discovery: 0 undrawn items, 0.00s: "));
}

TEST_F(ItemDiscovery, TheProbeOfFinderReportsItsErrorWithAndWithoutTrust) {
    debug();
    scene.world.workspace.launch({40, "com.apple.finder", "Finder", {}, {}});
    const MemoryElement finder = accessibility.launch(40);
    finder.set("AXRole", {std::string("AXApplication")});
    (void)scene.discover();
    accessibility.setTrusted(false);
    (void)scene.discover();
    const auto lines = scene.world.log.lines();
    EXPECT_EQ(lines.front(), "Ovin DEBUG AX: trusted=1, probe of Finder returned AXError 0");
    EXPECT_EQ(lines.back(), "Ovin DEBUG AX: trusted=0, probe of Finder returned AXError -25211");
}

TEST_F(ItemDiscovery, OnlyTheFirstFinderIsProbed) {
    debug();
    scene.world.workspace.launch({40, "com.apple.finder", "Finder", {}, {}});
    scene.world.workspace.launch({41, "com.apple.finder", "Finder", {}, {}});
    accessibility.launch(41).set("AXRole", {std::string("AXApplication")});
    (void)scene.discover();
    EXPECT_EQ(scene.world.log.lines().front(), "Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -25202");
}

TEST_F(ItemDiscovery, TheTimeInTheLogIsRoundedToHundredths) {
    debug();
    scene.launch(512, "Slow");
    for (const auto& [latency, text] : {std::pair(4ms, "0.00s"), std::pair(6ms, "0.01s"), std::pair(96ms, "0.10s"),
                                        std::pair(204ms, "0.20s"), std::pair(15ms, "0.01s"), std::pair(45ms, "0.04s")}) {
        accessibility.setLatency(512, latency);
        (void)scene.discover();
        EXPECT_EQ(scene.world.log.lines().back(), std::string("Ovin DEBUG discovery: 0 undrawn items, ") + text + ": ");
    }
}

}  // namespace
}  // namespace ovin
