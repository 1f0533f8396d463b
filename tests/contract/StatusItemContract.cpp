#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using Strings = std::vector<std::string>;
using Clicks = std::vector<StatusItemClick>;

class StatusItemContract : public ContractTest {
protected:
    /// An item called "Ovin", once it is in the bar.
    [[nodiscard]] std::unique_ptr<StatusItem> makeItem() const {
        auto item = platform().statusBar.makeStatusItem();
        item->setImage(imageCalled("Ovin"));
        EXPECT_TRUE(isInTheBarAs("Ovin"));
        return item;
    }

    [[nodiscard]] static DrawnImage imageCalled(const std::string& name) {
        return {{22, 18}, name, [](Appearance) { return std::vector<DrawnShape>(); }};
    }

    [[nodiscard]] bool isInTheBarAs(const std::string& name) const {
        return becomes([&] { return user().items() == Strings{name}; });
    }

    [[nodiscard]] StagedUser& user() const { return stage().user(); }
};

TEST_P(StatusItemContract, AnItemIsInTheBarUntilItIsDestroyed) {
    auto item = makeItem();
    item.reset();
    EXPECT_TRUE(becomes([&] { return user().items().empty(); }));
}

TEST_P(StatusItemContract, AnItemShowsTheLastImageOrSymbol) {
    const auto item = makeItem();
    item->setImage(imageCalled("Other"));
    EXPECT_TRUE(isInTheBarAs("Other"));
    EXPECT_TRUE(item->setSymbol("checkmark.circle.fill", "Done"));
    EXPECT_TRUE(isInTheBarAs("Done"));
    item->setImage(imageCalled("Ovin"));
    EXPECT_TRUE(isInTheBarAs("Ovin"));
}

TEST_P(StatusItemContract, ASymbolThatTheSystemDoesNotHaveChangesNothing) {
    const auto item = makeItem();
    EXPECT_FALSE(item->setSymbol("no.such.symbol", "Done"));
    settle();
    EXPECT_EQ(user().items(), Strings{"Ovin"});
}

TEST_P(StatusItemContract, EachClickIsToldOnceWithItsButton) {
    const auto item = makeItem();
    Clicks clicks;
    item->onClick([&](StatusItemClick click) { clicks.push_back(click); });
    Clicks expected;
    for (const auto click : {StatusItemClick::leftMouseUp, StatusItemClick::rightMouseUp, StatusItemClick::leftMouseUp}) {
        user().clickItem(click);
        expected.push_back(click);
        EXPECT_TRUE(becomes([&] { return clicks.size() == expected.size(); }));
    }
    settle();
    EXPECT_EQ(clicks, expected);
}

TEST_P(StatusItemContract, OnlyTheLastHandlerHearsOfClicks) {
    const auto item = makeItem();
    int before = 0;
    int now = 0;
    item->onClick([&](StatusItemClick) { ++before; });
    item->onClick([&](StatusItemClick) { ++now; });
    user().clickItem(StatusItemClick::leftMouseUp);
    EXPECT_TRUE(becomes([&] { return now == 1; }));
    EXPECT_EQ(before, 0);
}

TEST_P(StatusItemContract, TheEntryThatTheUserChoosesRunsAndNoOther) {
    const auto item = makeItem();
    Strings chosen;
    const auto entry = [&](const std::string& title) {
        return MenuEntry{title, "", title == "First", [&chosen, title] { chosen.push_back(title); }};
    };
    for (const std::string title : {"Second", "First", "Fish & Chips"}) {
        chosen.clear();
        user().willChoose(title);
        item->showMenu({entry("First"), entry("Second"), std::nullopt, entry("Fish & Chips")});
        EXPECT_TRUE(becomes([&] { return !chosen.empty(); })) << title;
        settle();
        EXPECT_EQ(chosen, Strings{title});
    }
}

TEST_P(StatusItemContract, AfterAMenuClicksAreToldAgain) {
    const auto item = makeItem();
    int chosen = 0;
    int clicks = 0;
    item->onClick([&](StatusItemClick) { ++clicks; });
    user().willChoose("Entry");
    item->showMenu({MenuEntry{"Entry", "", false, [&] { ++chosen; }}});
    EXPECT_TRUE(becomes([&] { return chosen == 1; }));
    EXPECT_EQ(clicks, 0);
    user().clickItem(StatusItemClick::rightMouseUp);
    EXPECT_TRUE(becomes([&] { return clicks == 1; }));
}

TEST_P(StatusItemContract, AClickMayShowAMenu) {
    const auto item = makeItem();
    int chosen = 0;
    item->onClick([&](StatusItemClick) { item->showMenu({MenuEntry{"Entry", "", false, [&] { ++chosen; }}}); });
    for (int time = 1; time <= 2; ++time) {
        user().willChoose("Entry");
        user().clickItem(StatusItemClick::rightMouseUp);
        EXPECT_TRUE(becomes([&] { return chosen == time; }));
    }
}

TEST_P(StatusItemContract, AScreenThatIsKnownIsAWholeOne) {
    const auto item = makeItem();
    user().clickItem(StatusItemClick::leftMouseUp);
    settle();
    const auto screen = item->screen();
    if (!screen) return;
    EXPECT_GT(screen->visibleFrame.size.width, 0);
    EXPECT_EQ(intersection(screen->frame, screen->visibleFrame), screen->visibleFrame);
}

OVIN_IN_EVERY_WORLD(StatusItemContract);

}  // namespace
}  // namespace ovin
