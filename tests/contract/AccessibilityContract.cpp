#include <atomic>
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// Long compared with delays by the machine's other work, short for whoever waits for the tests.
constexpr auto timeout = 150ms;

class AccessibilityContract : public ContractTest {
protected:
    [[nodiscard]] Accessibility& accessibility() const { return platform().accessibility; }

    [[nodiscard]] AttributeAnswer read(const AccessibilityElement& element, std::string_view attribute) const {
        return accessibility().copyAttributeValue(element, attribute);
    }

    /// The root element of a process, with a timeout that an application that answers never needs.
    [[nodiscard]] AccessibilityElement application(ProcessID pid) const {
        const AccessibilityElement element = accessibility().applicationElement(pid);
        accessibility().setMessagingTimeout(element, longTime);
        return element;
    }

    /// The element that holds an application's status items.
    [[nodiscard]] AccessibilityElement extras(const AccessibilityElement& application) const {
        const AttributeAnswer answer = read(application, "AXExtrasMenuBar");
        EXPECT_EQ(answer.error, AccessibilityError::success);
        const auto* element = std::get_if<AccessibilityElement>(&answer.value.content);
        if (element == nullptr) throw std::runtime_error("An application has no element for its status items.");
        return *element;
    }

    [[nodiscard]] std::vector<AccessibilityElement> children(const AccessibilityElement& element) const {
        const AttributeAnswer answer = read(element, "AXChildren");
        EXPECT_EQ(answer.error, AccessibilityError::success);
        const auto* members = std::get_if<AttributeValue::Array>(&answer.value.content);
        if (members == nullptr) throw std::runtime_error("Children are not an array.");
        std::vector<AccessibilityElement> elements;
        for (const AttributeValue& member : *members) elements.push_back(std::get<AccessibilityElement>(member.content));
        return elements;
    }

    [[nodiscard]] std::vector<AccessibilityElement> items(ProcessID pid) const { return children(extras(application(pid))); }

    [[nodiscard]] std::string title(const AccessibilityElement& element) const {
        const AttributeAnswer answer = read(element, "AXTitle");
        EXPECT_EQ(answer.error, AccessibilityError::success);
        const auto* text = std::get_if<std::string>(&answer.value.content);
        return text == nullptr ? "(none)" : *text;
    }

    [[nodiscard]] std::vector<std::string> titles(ProcessID pid) const {
        std::vector<std::string> result;
        for (const AccessibilityElement& item : items(pid)) result.push_back(title(item));
        return result;
    }

    /// Checks that an element answers nothing any more, and says so quickly.
    void expectDead(const AccessibilityElement& element) const {
        for (const char* attribute : {"AXTitle", "AXChildren", "AXExtrasMenuBar", "AXPosition"}) {
            EXPECT_NE(read(element, attribute).error, AccessibilityError::success) << attribute;
        }
        EXPECT_NE(accessibility().performAction(element, "AXPress"), AccessibilityError::success);
    }
};

TEST_P(AccessibilityContract, AnApplicationListsItsItemsInOrder) {
    const std::vector<std::string> names{"One", "Two", "Three"};
    EXPECT_EQ(titles(stage().start({"App", names})), names);
}

TEST_P(AccessibilityContract, AnApplicationWithoutItemsListsNone) {
    const AccessibilityElement element = application(stage().start({"App", {}}));
    const AttributeAnswer answer = read(element, "AXExtrasMenuBar");
    const auto* extrasElement = std::get_if<AccessibilityElement>(&answer.value.content);
    if (answer.error != AccessibilityError::success || extrasElement == nullptr) return;
    EXPECT_TRUE(children(*extrasElement).empty());
}

TEST_P(AccessibilityContract, TitlesArriveAsTheyAre) {
    const std::vector<std::string> names{"W\u00F6rter", "\u65E5\u672C\u8A9E", "\U0001F469\u200D\U0001F4BB", " a|b% ",
                                         "\u05E9"};
    EXPECT_EQ(titles(stage().start({"App", names})), names);
}

TEST_P(AccessibilityContract, AManyItemedApplicationListsThemAll) {
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) names.push_back("Item " + std::to_string(i));
    EXPECT_EQ(titles(stage().start({"App", names})), names);
}

TEST_P(AccessibilityContract, ATitleIsReadAfreshEachTime) {
    OVIN_NEEDS(renameItems);
    const ProcessID pid = stage().start({"App", {"Before", "Other"}});
    const AccessibilityElement item = items(pid).front();
    EXPECT_EQ(title(item), "Before");
    stage().rename(pid, 0, "After");
    EXPECT_TRUE(stage().runUntil([&] { return title(item) == "After"; }, longTime));
    EXPECT_EQ(items(pid).front(), item);
    EXPECT_EQ(titles(pid), (std::vector<std::string>{"After", "Other"}));
}

TEST_P(AccessibilityContract, TwoReadsDeliverEqualElementsWithEqualHashes) {
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    EXPECT_EQ(extras(application(pid)), extras(application(pid)));
    const auto first = items(pid);
    const auto second = items(pid);
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(second.size(), 2U);
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(first[i], second[i]);
        EXPECT_EQ(first[i].hash(), second[i].hash());
    }
}

TEST_P(AccessibilityContract, ElementsOfDifferentItemsDiffer) {
    const auto one = items(stage().start({"App", {"Same", "Same"}}));
    const auto other = items(stage().start({"App", {"Same", "Same"}}));
    const std::vector<AccessibilityElement> all{one.at(0), one.at(1), other.at(0), other.at(1)};
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(all[i] == all[j]) << i << " and " << j;
    }
}

TEST_P(AccessibilityContract, AnItemIsNeitherItsContainerNorItsApplication) {
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement root = application(pid);
    const AccessibilityElement container = extras(root);
    EXPECT_FALSE(container == root);
    EXPECT_FALSE(children(container).at(0) == container);
    EXPECT_FALSE(children(container).at(0) == root);
}

TEST_P(AccessibilityContract, ApplicationElementsAreEqualWhenTheirProcessIs) {
    const ProcessID one = stage().start({"One", {"a"}});
    const ProcessID other = stage().start({"Other", {"a"}});
    EXPECT_EQ(application(one), application(one));
    EXPECT_EQ(application(one).hash(), application(one).hash());
    EXPECT_FALSE(application(one) == application(other));
}

TEST_P(AccessibilityContract, ElementsBelongToTheirApplication) {
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    std::vector<AccessibilityElement> elements = items(pid);
    elements.push_back(application(pid));
    elements.push_back(extras(application(pid)));
    for (const AccessibilityElement& element : elements) {
        const ProcessIDAnswer owner = accessibility().processIdentifier(element);
        EXPECT_EQ(owner.error, AccessibilityError::success);
        EXPECT_EQ(owner.pid, pid);
    }
}

TEST_P(AccessibilityContract, AnAttributeThatNobodyHasHasNoValue) {
    const ProcessID pid = stage().start({"App", {"One"}});
    for (const AccessibilityElement& element : {application(pid), items(pid).front()}) {
        for (const char* attribute : {"AXNobodyHasThis", "", "NotEvenThePrefix", "AX\n"}) {
            const AttributeAnswer answer = read(element, attribute);
            const bool isNull = std::holds_alternative<AttributeValue::Null>(answer.value.content);
            EXPECT_TRUE(answer.error != AccessibilityError::success || isNull) << attribute;
        }
    }
}

TEST_P(AccessibilityContract, AnItemsFrameIsAPointAndASizeWhereItHasOne) {
    const AccessibilityElement item = items(stage().start({"App", {"One"}})).front();
    const auto isAbsentOr = [&](const AttributeAnswer& answer, bool isExpected) {
        if (answer.error != AccessibilityError::success) return true;
        return isExpected || std::holds_alternative<AttributeValue::Null>(answer.value.content);
    };
    const AttributeAnswer position = read(item, "AXPosition");
    EXPECT_TRUE(isAbsentOr(position, std::holds_alternative<Point>(position.value.content)));
    const AttributeAnswer size = read(item, "AXSize");
    EXPECT_TRUE(isAbsentOr(size, std::holds_alternative<Size>(size.value.content)));
}

TEST_P(AccessibilityContract, AnApplicationElementOfNobodyCanBeMadeAndReadWithoutSuccess) {
    const ProcessID nobody = stage().unusedProcessID();
    const AccessibilityElement element = application(nobody);
    EXPECT_EQ(element, application(nobody));
    expectDead(element);
}

TEST_P(AccessibilityContract, ApplicationElementsOfImpossibleProcessesAreReadWithoutSuccess) {
    for (const ProcessID pid : {ProcessID{-1}, ProcessID{-512}, ProcessID{0}}) {
        EXPECT_NE(read(application(pid), "AXExtrasMenuBar").error, AccessibilityError::success) << pid;
    }
}

TEST_P(AccessibilityContract, AfterAnApplicationQuitItsElementsFail) {
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    const AccessibilityElement root = application(pid);
    const AccessibilityElement container = extras(root);
    const auto before = children(container);
    stage().quit(pid);
    stage().start({"Another", {"One", "Two"}});
    for (const AccessibilityElement& element : {root, container, before.at(0), before.at(1)}) {
        EXPECT_LE(duration([&] { expectDead(element); }), stage().margin());
    }
}

TEST_P(AccessibilityContract, ElementsOfAnApplicationThatQuitAreStillToldApart) {
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    const auto first = items(pid);
    const auto second = items(pid);
    stage().quit(pid);
    EXPECT_EQ(first.at(0), second.at(0));
    EXPECT_FALSE(first.at(0) == first.at(1));
}

TEST_P(AccessibilityContract, AHungApplicationCostsOneTimeoutAndCannotComplete) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement item = items(pid).front();
    const AccessibilityElement root = application(pid);
    stage().setHung(pid, true);
    accessibility().setMessagingTimeout(root, timeout);
    accessibility().setMessagingTimeout(item, timeout);
    AttributeAnswer answer;
    const auto elapsed = duration([&] { answer = read(root, "AXExtrasMenuBar"); });
    // The system may know the items by itself; a world that has to ask for them finds that nobody answers.
    if (answer.error != AccessibilityError::success) {
        expectTook(timeout, elapsed);
        EXPECT_EQ(answer.error, AccessibilityError::cannotComplete);
    }
    EXPECT_LE(elapsed, timeout + stage().margin());
    expectTook(timeout, duration([&] { answer = read(item, "AXTitle"); }));
    EXPECT_EQ(answer.error, AccessibilityError::cannotComplete);
}

TEST_P(AccessibilityContract, PressingAnItemOfAHungApplicationIsBoundToo) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement item = items(pid).front();
    accessibility().setMessagingTimeout(item, timeout);
    stage().setHung(pid, true);
    AccessibilityError error{};
    expectTook(timeout, duration([&] { error = accessibility().performAction(item, "AXPress"); }));
    EXPECT_EQ(error, AccessibilityError::cannotComplete);
}

TEST_P(AccessibilityContract, APressWaitsItsWholeTimeAlsoAfterAReadingInVain) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement item = items(pid).front();
    accessibility().setMessagingTimeout(item, timeout);
    stage().setHung(pid, true);
    EXPECT_EQ(read(item, "AXTitle").error, AccessibilityError::cannotComplete);
    AccessibilityError error{};
    expectTook(timeout, duration([&] { error = accessibility().performAction(item, "AXPress"); }));
    EXPECT_EQ(error, AccessibilityError::cannotComplete);
}

TEST_P(AccessibilityContract, AnApplicationThatAnswersAgainIsReadAgain) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement item = items(pid).front();
    accessibility().setMessagingTimeout(item, timeout);
    stage().setHung(pid, true);
    EXPECT_EQ(read(item, "AXTitle").error, AccessibilityError::cannotComplete);
    stage().setHung(pid, false);
    accessibility().setMessagingTimeout(item, longTime);
    EXPECT_EQ(title(item), "One");
}

TEST_P(AccessibilityContract, AnotherApplicationIsReadWhileOneHangs) {
    OVIN_NEEDS(hangApplications);
    const ProcessID hung = stage().start({"Hung", {"One"}});
    const ProcessID other = stage().start({"Other", {"Two"}});
    stage().setHung(hung, true);
    EXPECT_EQ(titles(other), std::vector<std::string>{"Two"});
}

TEST_P(AccessibilityContract, WhatNeedsNoRequestWorksWhileTheApplicationHangs) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    const auto elements = items(pid);
    stage().setHung(pid, true);
    EXPECT_LE(duration([&] {
                  EXPECT_FALSE(elements.at(0) == elements.at(1));
                  EXPECT_EQ(elements.at(0).hash(), elements.at(0).hash());
                  EXPECT_EQ(accessibility().processIdentifier(elements.at(0)).pid, pid);
                  EXPECT_EQ(application(pid), application(pid));
              }),
              stage().margin());
}

TEST_P(AccessibilityContract, ATimeoutOfOneReferenceLeavesOthersAlone) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement patient = items(pid).front();
    const AccessibilityElement hasty = items(pid).front();
    const auto longer = timeout + stage().margin() + 200ms;
    accessibility().setMessagingTimeout(patient, longer);
    accessibility().setMessagingTimeout(hasty, timeout);
    stage().setHung(pid, true);
    expectTook(longer, duration([&] { EXPECT_EQ(read(patient, "AXTitle").error, AccessibilityError::cannotComplete); }));
    expectTook(timeout, duration([&] { EXPECT_EQ(read(hasty, "AXTitle").error, AccessibilityError::cannotComplete); }));
}

TEST_P(AccessibilityContract, CopiesOfAnElementShareItsTimeout) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement item = items(pid).front();
    const AccessibilityElement copy = item;  // NOLINT(performance-unnecessary-copy-initialization)
    accessibility().setMessagingTimeout(copy, timeout);
    stage().setHung(pid, true);
    expectTook(timeout, duration([&] { EXPECT_EQ(read(item, "AXTitle").error, AccessibilityError::cannotComplete); }));
}

TEST_P(AccessibilityContract, DeliveredElementsInheritTheTimeoutThroughEveryRead) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    const auto inherited = timeout + stage().margin();
    const AccessibilityElement root = accessibility().applicationElement(pid);
    accessibility().setMessagingTimeout(root, inherited);
    const auto delivered = children(extras(root));
    stage().setHung(pid, true);
    expectTook(inherited, duration([&] { (void)read(delivered.at(1), "AXTitle"); }));
}

TEST_P(AccessibilityContract, ALaterTimeoutOfTheParentDoesNotReachDeliveredElements) {
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const auto longer = timeout + stage().margin() + 200ms;
    const AccessibilityElement root = accessibility().applicationElement(pid);
    accessibility().setMessagingTimeout(root, longer);
    const AccessibilityElement container = extras(root);
    accessibility().setMessagingTimeout(root, timeout);
    const AccessibilityElement item = children(container).front();
    accessibility().setMessagingTimeout(container, timeout);
    stage().setHung(pid, true);
    expectTook(longer, duration([&] { (void)read(item, "AXTitle"); }));
}

TEST_P(AccessibilityContract, HungApplicationsReadAtOnceCostOneTimeout) {
    OVIN_NEEDS(hangApplications);
    std::vector<AccessibilityElement> elements;
    // Far more than there are processors; one after the other they would cost several times the margin.
    for (int i = 0; i < 30; ++i) {
        const ProcessID pid = stage().start({"App " + std::to_string(i), {"One"}});
        elements.push_back(items(pid).front());
        accessibility().setMessagingTimeout(elements.back(), timeout);
        stage().setHung(pid, true);
    }
    std::vector<AccessibilityError> errors(elements.size());
    Stage::Duration elapsed{};
    inTask([&] {
        const auto readOne = [&](std::size_t i) { errors[i] = read(elements[i], "AXTitle").error; };
        elapsed = duration([&] { platform().tasks.forEach(elements.size(), readOne, [](std::size_t) {}); });
    });
    expectTook(timeout, elapsed);
    EXPECT_EQ(errors, std::vector<AccessibilityError>(elements.size(), AccessibilityError::cannotComplete));
}

TEST_P(AccessibilityContract, HungApplicationsReadTogetherByOneThreadCostOneTimeout) {
    OVIN_NEEDS(hangApplications);
    std::vector<ProcessID> pids;
    for (int i = 0; i < 12; ++i) pids.push_back(stage().start({"App " + std::to_string(i), {"One", "Two"}}));
    for (const ProcessID pid : pids) EXPECT_EQ(items(pid).size(), 2U);
    for (std::size_t i = 0; i < pids.size(); i += 2) stage().setHung(pids[i], true);
    const auto together = accessibility().applicationElementsToReadTogether(pids);
    if (!together) return;  // Then nothing is promised.
    ASSERT_EQ(together->size(), pids.size());
    expectTook(timeout, duration([&] {
                   for (std::size_t i = 0; i < pids.size(); ++i) {
                       accessibility().setMessagingTimeout(together->at(i), timeout);
                       for (const AccessibilityElement& item : children(extras(together->at(i)))) {
                           EXPECT_EQ(accessibility().processIdentifier(item).pid, pids[i]);
                           const bool isHung = i % 2 == 0;
                           EXPECT_EQ(read(item, "AXTitle").error,
                                     isHung ? AccessibilityError::cannotComplete : AccessibilityError::success);
                           // An item without a title is read on.
                           EXPECT_EQ(read(item, "AXDescription").error == AccessibilityError::cannotComplete, isHung);
                       }
                   }
               }));
}

TEST_P(AccessibilityContract, ElementsThatAreReadTogetherAreThoseThatAreReadAlone) {
    OVIN_NEEDS(renameItems);
    const std::vector<ProcessID> pids{stage().start({"App", {"One", "Two"}}), stage().start({"None", {}})};
    const auto alone = items(pids[0]);
    const auto together = accessibility().applicationElementsToReadTogether(pids);
    if (!together) return;  // Then nothing is promised.
    EXPECT_EQ(*together, (std::vector{application(pids[0]), application(pids[1])}));
    accessibility().setMessagingTimeout(together->at(0), longTime);
    const auto read = children(extras(together->at(0)));
    EXPECT_EQ(read, alone);
    // A program takes a title a little later; the other reference tells when it has.
    const auto rename = [&](const std::string& name) {
        stage().rename(pids[0], 1, name);
        EXPECT_TRUE(stage().runUntil([&] { return title(alone.at(1)) == name; }, longTime));
    };
    rename("Second");
    const std::vector<std::string> before{title(read.at(0)), title(read.at(1))};
    EXPECT_EQ(before, (std::vector<std::string>{"One", "Second"})) << "Nothing is asked before the first reading.";
    rename("Third");
    EXPECT_EQ(title(read.at(1)), "Third") << "What is read again is asked again.";
    EXPECT_NE(this->read(together->at(1), "AXExtrasMenuBar").error, AccessibilityError::success);
}

TEST_P(AccessibilityContract, OneElementCanBeReadByManyTasksAtOnce) {
    const ProcessID pid = stage().start({"App", {"One", "Two", "Three"}});
    const AccessibilityElement root = application(pid);
    std::vector<std::vector<std::string>> answers(16);
    inTask([&] {
        const auto readAll = [&](std::size_t i) {
            for (const AccessibilityElement& item : children(extras(root))) answers[i].push_back(title(item));
        };
        platform().tasks.forEach(answers.size(), readAll, [](std::size_t) {});
    });
    for (const auto& answer : answers) EXPECT_EQ(answer, (std::vector<std::string>{"One", "Two", "Three"}));
}

TEST_P(AccessibilityContract, AnApplicationMayQuitWhileTasksReadIt) {
    const ProcessID pid = stage().start({"App", {"One", "Two"}});
    const AccessibilityElement root = application(pid);
    const auto elements = items(pid);
    std::atomic<int> running = 8;
    for (int i = 0; i < 8; ++i) {
        platform().tasks.start(Tasks::Priority::utility, [&] {
            for (int n = 0; n < 50; ++n) {
                (void)read(root, "AXExtrasMenuBar");
                (void)read(elements[static_cast<std::size_t>(n) % 2], "AXTitle");
            }
            --running;
        });
    }
    stage().quit(pid);
    ASSERT_TRUE(stage().runUntil([&] { return running == 0; }, longTime));
    expectDead(elements.at(0));
}

TEST_P(AccessibilityContract, APressReachesTheApplicationOnce) {
    OVIN_NEEDS(reportPresses);
    const ProcessID pid = stage().start({"App", {"One", "Two", "Three"}});
    const auto elements = items(pid);
    // An application that opens a menu answers only when it closes.
    const auto hasBeenSent = [](AccessibilityError error) {
        return error == AccessibilityError::success || error == AccessibilityError::cannotComplete;
    };
    EXPECT_TRUE(hasBeenSent(accessibility().performAction(elements.at(1), "AXPress")));
    ASSERT_TRUE(stage().runUntil([&] { return !stage().presses(pid).empty(); }, longTime));
    EXPECT_TRUE(hasBeenSent(accessibility().performAction(elements.at(2), "AXPress")));
    ASSERT_TRUE(stage().runUntil([&] { return stage().presses(pid).size() > 1; }, longTime));
    EXPECT_EQ(stage().presses(pid), (std::vector<std::size_t>{1, 2}));
}

TEST_P(AccessibilityContract, AReadPressesNothing) {
    OVIN_NEEDS(reportPresses);
    const ProcessID pid = stage().start({"App", {"One"}});
    (void)read(items(pid).front(), "AXPress");
    EXPECT_TRUE(stage().presses(pid).empty());
}

TEST_P(AccessibilityContract, AnActionThatNobodyHasIsRefused) {
    const AccessibilityElement item = items(stage().start({"App", {"One"}})).front();
    EXPECT_NE(accessibility().performAction(item, "AXNobodyHasThis"), AccessibilityError::success);
    EXPECT_NE(accessibility().performAction(item, ""), AccessibilityError::success);
    EXPECT_NE(accessibility().performAction(item, "AXTitle"), AccessibilityError::success) << "an attribute";
}

TEST_P(AccessibilityContract, WithTrustTheProcessIsTrusted) { EXPECT_TRUE(accessibility().isProcessTrusted()); }

TEST_P(AccessibilityContract, WithoutTrustEveryRequestAnswersAtOnceThatTheInterfaceIsDisabled) {
    OVIN_NEEDS(withdrawTrust);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement root = application(pid);
    const AccessibilityElement item = items(pid).front();
    stage().setTrusted(false);
    EXPECT_FALSE(accessibility().isProcessTrusted());
    for (const AccessibilityElement& element : {root, item, application(stage().unusedProcessID())}) {
        EXPECT_EQ(read(element, "AXTitle").error, AccessibilityError::apiDisabled);
        EXPECT_EQ(accessibility().performAction(element, "AXPress"), AccessibilityError::apiDisabled);
    }
    stage().setTrusted(true);
    EXPECT_TRUE(accessibility().isProcessTrusted());
    EXPECT_EQ(title(item), "One");
}

TEST_P(AccessibilityContract, WithoutTrustAHungApplicationCostsNothing) {
    OVIN_NEEDS(withdrawTrust);
    OVIN_NEEDS(hangApplications);
    const ProcessID pid = stage().start({"App", {"One"}});
    const AccessibilityElement root = application(pid);
    stage().setHung(pid, true);
    stage().setTrusted(false);
    EXPECT_LE(duration([&] { (void)read(root, "AXExtrasMenuBar"); }), stage().margin());
}

OVIN_IN_EVERY_WORLD(AccessibilityContract);

}  // namespace
}  // namespace ovin
