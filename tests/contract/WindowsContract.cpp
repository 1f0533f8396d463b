#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/contract/ContractTest.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

using Frames = std::vector<Rect>;

class WindowsContract : public ContractTest {
protected:
    static constexpr int tag = 7;

    [[nodiscard]] Windows& windows() const { return platform().windows; }
    [[nodiscard]] StagedUser& user() const { return stage().user(); }

    [[nodiscard]] static View button(const std::string& title = "Item", int itsTag = tag) {
        Button item;
        item.title = {{title, {}, {}}};
        item.width = ledgeFrame.size.width;
        item.height = ledgeFrame.size.height;
        item.tag = itsTag;
        return {item};
    }
    [[nodiscard]] static View page(double height = 60) {
        return {SamplePages::column({{Spacer{height}}, {PushButton{"Done", {}, KeyEquivalent::none, false, 120, tag}}}, 8)};
    }

    /// Makes and shows a window of each kind in turn, which calls `clicked` with the tag of a button.
    template <typename Look>
    void inEachKind(const std::function<void(int)>& clicked, const Look& look) const {
        auto information = windows().makeInformationWindow("Page", page(), clicked);
        information->show();
        look(information);
        information.reset();
        auto ledge = windows().makeLedgePanel();
        ledge->show(button(), ledgeFrame, clicked);
        look(ledge);
        ledge.reset();
        auto floating = windows().makeFloatingPanel("Card", clicked, [] {});
        floating->show(page(), {});
        look(floating);
    }

    [[nodiscard]] bool areShown(std::size_t count) const {
        return becomes([&] { return user().windows().size() == count; });
    }
    [[nodiscard]] bool isShownAt(const Rect& frame) const {
        return becomes([&] { return isOnly(user().windows(), frame.origin, frame.size); });
    }
    /// Toolkits round lengths to whole points, or to pixels.
    [[nodiscard]] static bool isOnly(const Frames& frames, Point origin, Size size) {
        if (frames.size() != 1 || frames.front().origin != origin) return false;
        const Size shown = frames.front().size;
        return std::abs(shown.width - size.width) < 1 && std::abs(shown.height - size.height) < 1;
    }
    [[nodiscard]] bool hasOrigin(Point origin) const {
        return becomes([&] {
            const Frames frames = user().windows();
            return frames.size() == 1 && frames.front().origin == origin;
        });
    }

    static constexpr Rect ledgeFrame{{300, 200}, {80, 28}};
};

TEST_P(WindowsContract, LengthsThatAViewStatesAddUp) {
    const View spacers{SamplePages::column({{Spacer{3}}, {Spacer{4}}}, 5, {1, 2, 3, 4})};
    EXPECT_EQ(windows().fittingSize(spacers), (Size{7, 16}));
    const View separators = SamplePages::row({{Separator{10}}, {Separator{20}}}, 6);
    EXPECT_EQ(windows().fittingSize(separators).width, 36);
    EXPECT_EQ(windows().fittingSize({Spacer{3}}), (Size{1, 3}));
    EXPECT_EQ(windows().fittingSize(button()), ledgeFrame.size);
}

TEST_P(WindowsContract, AStackIsAsWideAsItStates) {
    EXPECT_EQ(windows().fittingSize(SamplePages::row({{Separator{10}}}, 6, 90)).width, 90);
}

TEST_P(WindowsContract, AHiddenViewTakesNoRoomNorDoesTheSpacingAfterIt) {
    View hidden{Spacer{50}};
    hidden.isHidden = true;
    hidden.spacingAfter = 40;
    View first{Spacer{3}};
    first.spacingAfter = 9;
    EXPECT_EQ(windows().fittingSize({SamplePages::column({first, hidden, {Spacer{4}}}, 5)}), (Size{1, 16}));
}

TEST_P(WindowsContract, AnInformationWindowIsHiddenUntilItIsShownAndCanBeShownAgain) {
    auto shown = windows().makeInformationWindow("Page", page(), [](int) {});
    settle();
    EXPECT_TRUE(areShown(0));
    for (int time = 0; time < 2; ++time) {
        shown->show();
        EXPECT_TRUE(areShown(1));
        EXPECT_TRUE(isShownAt({user().windows().at(0).origin, windows().fittingSize(page())}));
        shown->close();
        EXPECT_TRUE(areShown(0));
    }
    shown->show();
    shown.reset();
    EXPECT_TRUE(areShown(0));
}

TEST_P(WindowsContract, AWindowIsOnTheScreenUntilItIsDestroyed) {
    inEachKind([](int) {},
               [&](auto& window) {
                   EXPECT_TRUE(areShown(1));
                   window.reset();
                   EXPECT_TRUE(areShown(0));
               });
}

TEST_P(WindowsContract, AClickIsToldOnceWithItsTag) {
    std::vector<int> clicks;
    inEachKind([&](int clicked) { clicks.push_back(clicked); },
               [&](auto&) {
                   clicks.clear();
                   user().click(tag);
                   EXPECT_TRUE(becomes([&] { return !clicks.empty(); }));
                   settle();
                   EXPECT_EQ(clicks, std::vector<int>{tag});
               });
}

TEST_P(WindowsContract, AHandlerMayDestroyItsWindow) {
    int clicks = 0;
    std::function<void()> destroy;
    inEachKind(
        // What the handler holds must live until it returns.
        [&, held = std::make_shared<int>(1)](int) {
            destroy();
            clicks += *held;
        },
        [&](auto& window) {
            clicks = 0;
            destroy = [&window] { window.reset(); };
            user().click(tag);
            EXPECT_TRUE(becomes([&] { return clicks == 1; }));
            EXPECT_TRUE(areShown(0));
        });
}

TEST_P(WindowsContract, AWindowThatIsGoneTellsOfNoClick) {
    int clicks = 0;
    inEachKind([&](int) { ++clicks; },
               [&](auto& window) {
                   user().click(tag);
                   const int before = clicks;
                   window.reset();
                   settle();
                   EXPECT_EQ(clicks, before);
               });
}

TEST_P(WindowsContract, TheLedgeShowsItsContentWhereItIsToldTo) {
    const auto ledge = windows().makeLedgePanel();
    ledge->show(button(), ledgeFrame, [](int) {});
    EXPECT_TRUE(isShownAt(ledgeFrame));
    const Rect wider{{200, 240}, {160, 28}};
    ledge->show(SamplePages::row({button("One"), button("Two", tag + 1)}, 0), wider, [](int) {});
    EXPECT_TRUE(isShownAt(wider));
}

TEST_P(WindowsContract, AClickIsForTheContentThatWasShownWhenTheButtonWasClicked) {
    std::vector<std::string> clicks;
    const auto ledge = windows().makeLedgePanel();
    const auto show = [&](const std::string& name) {
        ledge->show(button(name), ledgeFrame, [&clicks, name](int) { clicks.push_back(name); });
    };
    show("First");
    EXPECT_TRUE(areShown(1));
    user().click(tag);
    show("Second");
    EXPECT_TRUE(becomes([&] { return !clicks.empty(); }));
    user().click(tag);
    EXPECT_TRUE(becomes([&] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, (std::vector<std::string>{"First", "Second"}));
}

TEST_P(WindowsContract, ALedgeThatGoesLeavesAnotherAlone) {
    auto before = windows().makeLedgePanel();
    before->show(button(), {{100, 100}, ledgeFrame.size}, [](int) {});
    int clicks = 0;
    const auto ledge = windows().makeLedgePanel();
    ledge->show(button(), ledgeFrame, [&](int) { ++clicks; });
    before.reset();
    EXPECT_TRUE(isShownAt(ledgeFrame));
    user().click(tag);
    EXPECT_TRUE(becomes([&] { return clicks == 1; }));
}

TEST_P(WindowsContract, AFloatingPanelStandsWhereItsPlacementSays) {
    const auto panel = windows().makeFloatingPanel(
        "Card", [](int) {}, [] {});
    std::optional<Size> asked;
    panel->show(page(), [&](Size size) {
        asked = size;
        return Point{220, 160};
    });
    EXPECT_EQ(asked, windows().fittingSize(page()));
    EXPECT_TRUE(hasOrigin({220, 160}));
}

TEST_P(WindowsContract, OtherContentLeavesTheTopLeftCornerWhereItIs) {
    const auto panel = windows().makeFloatingPanel(
        "Card", [](int) {}, [] {});
    panel->show(page(), [](Size) { return Point{220, 160}; });
    EXPECT_TRUE(hasOrigin({220, 160}));
    settle();
    panel->replace(page(90));
    // Whoever has moved it by mistake may tell later.
    settle();
    EXPECT_TRUE(isShownAt({{220, 160}, windows().fittingSize(page(90))}));
    user().moveWindow({260, 190});
    EXPECT_TRUE(hasOrigin({260, 190}));
    settle();
    panel->replace(page(30));
    settle();
    EXPECT_TRUE(isShownAt({{260, 190}, windows().fittingSize(page(30))}));
}

TEST_P(WindowsContract, APanelThatTheUserClosesTellsOnceAndMayGoThen) {
    int closed = 0;
    std::unique_ptr<FloatingPanel> panel;
    panel = windows().makeFloatingPanel(
        "Card", [](int) {},
        [&, held = std::make_shared<int>(1)] {
            panel.reset();
            closed += *held;
        });
    panel->show(page(), {});
    EXPECT_TRUE(areShown(1));
    user().closeWindow();
    EXPECT_TRUE(becomes([&] { return closed > 0; }));
    EXPECT_TRUE(areShown(0));
    settle();
    EXPECT_EQ(closed, 1);
}

TEST_P(WindowsContract, APanelThatIsDestroyedTellsNothing) {
    int closed = 0;
    auto panel = windows().makeFloatingPanel(
        "Card", [](int) {}, [&] { ++closed; });
    panel->show(page(), {});
    panel.reset();
    settle();
    EXPECT_EQ(closed, 0);
}

OVIN_IN_EVERY_WORLD(WindowsContract);

}  // namespace
}  // namespace ovin
