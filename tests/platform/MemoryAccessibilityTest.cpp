#include "platform/memory/MemoryAccessibility.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory/SimulatedTime.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Error = AccessibilityError;

constexpr ProcessID pid = 512;

class MemoryAccessibilityTest : public testing::Test {
protected:
    [[nodiscard]] Error read(const AccessibilityElement& element, const std::string& attribute = "AXTitle") const {
        return accessibility.copyAttributeValue(element, attribute).error;
    }
    [[nodiscard]] AccessibilityElement readElement(const AccessibilityElement& element, const std::string& attribute) const {
        return std::get<AccessibilityElement>(accessibility.copyAttributeValue(element, attribute).value.content);
    }

    SimulatedTime time;
    MemoryAccessibility accessibility{[this](std::chrono::nanoseconds duration) { time.wait(duration); }};
    MemoryElement root = accessibility.launch(pid);
};

TEST_F(MemoryAccessibilityTest, AReadTakesTheLatencyOfTheProcessAndOfTheAnswer) {
    root.answer("AXTitle", {{std::string("App")}, Error::success, 7ms});
    accessibility.setLatency(pid, 5ms);
    const AttributeAnswer answer = accessibility.copyAttributeValue(root.element(), "AXTitle");
    EXPECT_EQ(answer.error, Error::success);
    EXPECT_EQ(answer.value, AttributeValue{std::string("App")});
    EXPECT_EQ(time.now(), 12ms);
}

TEST_F(MemoryAccessibilityTest, AnAnswerJustInTimeCountsAndALaterOneDoesNot) {
    const AccessibilityElement element = root.element();
    accessibility.setMessagingTimeout(element, 50ms);
    root.answer("AXTitle", {{std::string("App")}, Error::success, 50ms});
    EXPECT_EQ(read(element), Error::success);
    root.answer("AXTitle", {{std::string("App")}, Error::success, 50ms + 1ns});
    EXPECT_EQ(read(element), Error::cannotComplete);
    EXPECT_EQ(time.now(), 100ms);
}

TEST_F(MemoryAccessibilityTest, WhatNeverAnswersCostsTheTimeout) {
    MemoryAnswer never;
    never.neverAnswers = true;
    root.answer("AXTitle", never);
    const AccessibilityElement element = root.element();
    accessibility.setMessagingTimeout(element, 250ms);
    EXPECT_EQ(read(element), Error::cannotComplete);
    EXPECT_EQ(time.now(), 250ms);
}

TEST_F(MemoryAccessibilityTest, WithoutATimeoutOfItsOwnAnElementHasTheSystems) {
    accessibility.setHung(pid, true);
    EXPECT_EQ(read(accessibility.applicationElement(pid)), Error::cannotComplete);
    EXPECT_EQ(time.now(), MemoryAccessibility::systemTimeout);
}

TEST_F(MemoryAccessibilityTest, AnApplicationMayQuitWhileItIsAsked) {
    root.answer("AXTitle", {{std::string("App")}, Error::success, 20ms});
    time.happen(10ms, [&] { accessibility.quit(pid); });
    EXPECT_EQ(read(root.element()), Error::invalidElement);
}

TEST_F(MemoryAccessibilityTest, ElementsDoNotComeBackWithTheirPid) {
    const MemoryElement item = accessibility.makeElement(pid);
    item.set("AXTitle", {std::string("old")});
    const AccessibilityElement application = accessibility.applicationElement(pid);
    accessibility.quit(pid);
    EXPECT_EQ(read(application), Error::invalidElement);
    accessibility.launch(pid).set("AXTitle", {std::string("new")});
    EXPECT_EQ(accessibility.copyAttributeValue(application, "AXTitle").value, AttributeValue{std::string("new")});
    EXPECT_EQ(read(item.element()), Error::invalidElement);
    EXPECT_FALSE(accessibility.makeElement(pid).element() == item.element());
}

TEST_F(MemoryAccessibilityTest, LaunchingOverARunningProcessEndsIt) {
    const MemoryElement item = accessibility.makeElement(pid);
    item.set("AXTitle", {std::string("old")});
    accessibility.setHung(pid, true);
    accessibility.launch(pid);
    EXPECT_EQ(read(item.element()), Error::invalidElement);
    EXPECT_EQ(read(accessibility.applicationElement(pid)), Error::attributeUnsupported);
}

TEST_F(MemoryAccessibilityTest, DeliveredElementsHaveTheTimeoutOfWhereTheyWereReadFrom) {
    const MemoryElement extras = accessibility.makeElement(pid);
    const MemoryElement item = accessibility.makeElement(pid);
    root.set("AXExtrasMenuBar", {extras.element()});
    extras.setChildren({item});
    const AccessibilityElement application = accessibility.applicationElement(pid);
    accessibility.setMessagingTimeout(application, 30ms);
    const AccessibilityElement container = readElement(application, "AXExtrasMenuBar");
    const AttributeAnswer children = accessibility.copyAttributeValue(container, "AXChildren");
    accessibility.setHung(pid, true);
    EXPECT_EQ(read(container), Error::cannotComplete);
    EXPECT_EQ(time.now(), 30ms);
    EXPECT_EQ(read(std::get<AccessibilityElement>(std::get<AttributeValue::Array>(children.value.content).at(0).content)),
              Error::cannotComplete);
    EXPECT_EQ(time.now(), 60ms);
}

TEST_F(MemoryAccessibilityTest, EachReadDeliversReferencesOfItsOwn) {
    root.set("AXExtrasMenuBar", {accessibility.makeElement(pid).element()});
    const AccessibilityElement first = readElement(root.element(), "AXExtrasMenuBar");
    const AccessibilityElement second = readElement(root.element(), "AXExtrasMenuBar");
    EXPECT_EQ(first, second);
    EXPECT_NE(&first.reference(), &second.reference());
}

TEST_F(MemoryAccessibilityTest, HashesAreThoseOfEveryRun) {
    SimulatedTime otherTime;
    MemoryAccessibility other([&](std::chrono::nanoseconds duration) { otherTime.wait(duration); });
    EXPECT_EQ(other.launch(pid).element().hash(), root.element().hash());
    EXPECT_EQ(other.makeElement(pid).element().hash(), accessibility.makeElement(pid).element().hash());
}

TEST_F(MemoryAccessibilityTest, TreesThatListOneAnotherInCirclesAreFreed) {
    const auto canary = std::make_shared<int>(1);
    {
        MemoryAccessibility circular([](std::chrono::nanoseconds) {});
        const MemoryElement parent = circular.launch(1);
        const MemoryElement child = circular.makeElement(1);
        parent.setChildren({child, parent});
        child.set("AXParent", {parent.element()});
        child.answerWith("AXTitle", [child, canary] { return MemoryAnswer{{std::string("child")}}; });
        EXPECT_EQ(canary.use_count(), 2);
    }
    EXPECT_EQ(canary.use_count(), 1);
}

TEST_F(MemoryAccessibilityTest, ElementsMayOutliveTheWorld) {
    std::vector<AccessibilityElement> kept;
    {
        MemoryAccessibility shortLived([](std::chrono::nanoseconds) {});
        kept.push_back(shortLived.launch(1).element());
        kept.push_back(shortLived.makeElement(1).element());
    }
    EXPECT_FALSE(kept[0] == kept[1]);
    EXPECT_EQ(kept[1].hash(), 2U);
}

TEST_F(MemoryAccessibilityTest, WhatAnElementWasToldNothingAboutItRefuses) {
    EXPECT_EQ(read(root.element(), "AXTitle"), Error::attributeUnsupported);
    EXPECT_EQ(accessibility.performAction(root.element(), "AXPress"), Error::actionUnsupported);
}

TEST_F(MemoryAccessibilityTest, RequestsFailAsTheyWereTold) {
    root.fail("AXTitle", Error::noValue);
    root.fail("AXPress", Error::notImplemented);
    EXPECT_EQ(read(root.element()), Error::noValue);
    EXPECT_EQ(accessibility.performAction(root.element(), "AXPress"), Error::notImplemented);
}

TEST_F(MemoryAccessibilityTest, AnAnswerCanBeFoundAfreshAndMayChangeTheElement) {
    int reads = 0;
    root.answerWith("AXTitle", [&] {
        ++reads;
        root.set("AXDescription", {std::to_string(reads)});
        return MemoryAnswer{{std::to_string(reads)}};
    });
    EXPECT_EQ(accessibility.copyAttributeValue(root.element(), "AXTitle").value, AttributeValue{std::string("1")});
    EXPECT_EQ(accessibility.copyAttributeValue(root.element(), "AXTitle").value, AttributeValue{std::string("2")});
    EXPECT_EQ(accessibility.copyAttributeValue(root.element(), "AXDescription").value, AttributeValue{std::string("2")});
}

TEST_F(MemoryAccessibilityTest, AHiddenOwnerIsUnknown) {
    const MemoryElement item = accessibility.makeElement(pid);
    EXPECT_EQ(accessibility.processIdentifier(item.element()).pid, pid);
    accessibility.hideOwner(item);
    EXPECT_NE(accessibility.processIdentifier(item.element()).error, Error::success);
}

TEST_F(MemoryAccessibilityTest, PromptsAreCountedAndChangeNothing) {
    accessibility.setTrusted(false);
    accessibility.promptForTrust();
    accessibility.promptForTrust();
    EXPECT_EQ(accessibility.promptCount(), 2);
    EXPECT_FALSE(accessibility.isProcessTrusted());
}

TEST_F(MemoryAccessibilityTest, WithoutTrustARequestIsSeenAndRefusedAtOnce) {
    int requests = 0;
    accessibility.observeRequests([&](const MemoryRequest&) { ++requests; });
    accessibility.setTrusted(false);
    accessibility.setHung(pid, true);
    EXPECT_EQ(read(root.element()), Error::apiDisabled);
    EXPECT_EQ(time.now(), 0ns);
    EXPECT_EQ(requests, 1);
}

TEST_F(MemoryAccessibilityTest, TheObserverIsToldOfEveryRequestBeforeItsAnswer) {
    std::vector<MemoryRequest> requests;
    accessibility.observeRequests([&](const MemoryRequest& request) {
        requests.push_back(request);
        if (request.name == "AXTitle") root.set("AXTitle", {std::string("just in time")});
    });
    const AccessibilityElement element = accessibility.applicationElement(pid);
    accessibility.setMessagingTimeout(element, 70ms);
    EXPECT_EQ(accessibility.copyAttributeValue(element, "AXTitle").value, AttributeValue{std::string("just in time")});
    (void)accessibility.performAction(element, "AXPress");
    accessibility.quit(pid);
    (void)accessibility.copyAttributeValue(element, "AXRole");

    ASSERT_EQ(requests.size(), 3U);
    EXPECT_EQ(requests[0].kind, MemoryRequest::Kind::read);
    EXPECT_EQ(requests[0].name, "AXTitle");
    EXPECT_EQ(requests[0].element, root);
    EXPECT_EQ(requests[0].timeout, 70ms);
    EXPECT_EQ(requests[1].kind, MemoryRequest::Kind::action);
    EXPECT_EQ(requests[1].name, "AXPress");
    EXPECT_EQ(requests[2].element.owner(), pid);
}

}  // namespace
}  // namespace ovin
