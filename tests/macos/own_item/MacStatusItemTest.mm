#include "platform/macos/own_item/MacStatusItem.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include <memory>
#include <vector>

#include "platform/macos/system/Strings.h"
#include "tests/contract/MacUser.h"

namespace ovin {
namespace {

/// Notes the item that the bar has made last, which nothing else shows to others. Puts the bar's method back when destroyed.
class MadeItem {
public:
    MadeItem() {
        const auto make = reinterpret_cast<NSStatusItem* (*)(id, SEL, CGFloat)>(original_);
        replacement_ = imp_implementationWithBlock(^NSStatusItem*(NSStatusBar* bar, CGFloat length) {
          NSStatusItem* made = make(bar, @selector(statusItemWithLength:), length);
          item_ = made;
          return made;
        });
        method_setImplementation(method_, replacement_);
    }
    MadeItem(const MadeItem&) = delete;
    MadeItem& operator=(const MadeItem&) = delete;
    ~MadeItem() {
        method_setImplementation(method_, original_);
        imp_removeBlock(replacement_);
    }

    [[nodiscard]] NSStatusItem* item() const { return item_; }

private:
    const Method method_ = class_getInstanceMethod([NSStatusBar.systemStatusBar class], @selector(statusItemWithLength:));
    const IMP original_ = method_getImplementation(method_);
    IMP replacement_ = nullptr;
    __weak NSStatusItem* item_ = nil;
};

class MacStatusItemTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }

    /// The system remembers an item by its name.
    static void TearDownTestSuite() {
        [NSUserDefaults.standardUserDefaults removePersistentDomainForName:NSProcessInfo.processInfo.processName];
    }

    [[nodiscard]] NSStatusItem* native() const { return made.item(); }
    [[nodiscard]] NSStatusBarButton* button() const { return native().button; }

    void press() const { [button() sendAction:button().action to:button().target]; }

    static Menu menuOf(const std::string& title) {
        return {MenuEntry{title, "", false, [] {}}};
    }

    MadeItem made;
    MacUser user;
    const std::unique_ptr<StatusBar> bar = makeMacStatusBar();
    std::unique_ptr<StatusItem> item = bar->makeStatusItem();
};

TEST_F(MacStatusItemTest, ItIsAsWideAsItsImageAndHasTheNameThatItIsGiven) {
    EXPECT_EQ(native().length, NSVariableStatusItemLength);
    item->setAutosaveName("Ovin.Test");
    EXPECT_EQ(toString(native().autosaveName), "Ovin.Test");
}

TEST_F(MacStatusItemTest, ItsButtonActsWhenEitherMouseButtonIsReleased) {
    id target = button().target;
    const SEL action = button().action;
    ASSERT_TRUE(target != nil && action != nullptr);
    EXPECT_TRUE([target respondsToSelector:action]);
    EXPECT_EQ([button() sendActionOn:NSEventMaskLeftMouseUp], 20);
}

TEST_F(MacStatusItemTest, AClickIsWhatTheEventOfTheMomentSays) {
    std::vector<StatusItemClick> clicks;
    item->onClick([&](StatusItemClick click) { clicks.push_back(click); });
    for (const NSEventType type : {NSEventTypeRightMouseUp, NSEventTypeLeftMouseUp, NSEventTypeRightMouseDown}) {
        (void)MacUser::takeEvent(type);
        press();
    }
    EXPECT_EQ(clicks, (std::vector{StatusItemClick::rightMouseUp, StatusItemClick::leftMouseUp, StatusItemClick::other}));
}

TEST_F(MacStatusItemTest, WithTheControlKeyALeftClickIsARightOne) {
    std::vector<StatusItemClick> clicks;
    item->onClick([&](StatusItemClick click) { clicks.push_back(click); });
    for (const NSEventModifierFlags modifiers : {NSEventModifierFlagControl, NSEventModifierFlagShift}) {
        (void)MacUser::takeEvent(NSEventTypeLeftMouseUp, modifiers);
        press();
    }
    EXPECT_EQ(clicks, (std::vector{StatusItemClick::rightMouseUp, StatusItemClick::leftMouseUp}));
}

TEST_F(MacStatusItemTest, AHandlerMayReplaceItself) {
    int later = 0;
    item->onClick([&, held = std::make_shared<int>(1)](StatusItemClick) {
        item->onClick([&](StatusItemClick) { ++later; });
        later += 10 * *held;
    });
    press();
    press();
    EXPECT_EQ(later, 11);
}

TEST_F(MacStatusItemTest, ItShowsImagesAndSymbolsWithoutATitle) {
    button().title = @"Title";
    item->setImage({{22, 18}, "Ovin", [](Appearance) { return std::vector<DrawnShape>(); }});
    EXPECT_EQ(button().title.length, 0U);
    EXPECT_TRUE(NSEqualSizes(button().image.size, NSMakeSize(22, 18)));
    EXPECT_FALSE([button().image isTemplate]);
    button().title = @"Title";
    EXPECT_TRUE(item->setSymbol("checkmark.circle.fill", "Done"));
    EXPECT_EQ(button().title.length, 0U);
    EXPECT_EQ(toString(button().image.accessibilityDescription), "Done");
}

TEST_F(MacStatusItemTest, ItHasAMenuOnlyWhileThatIsOpenAndTellsOfNoClickMeanwhile) {
    int clicks = 0;
    item->onClick([&](StatusItemClick) { ++clicks; });
    __block NSMenu* open = nil;
    NSStatusItem* shown = native();
    const id<NSObject> observer = [NSNotificationCenter.defaultCenter addObserverForName:NSMenuDidBeginTrackingNotification
                                                                                  object:nil
                                                                                   queue:nil
                                                                              usingBlock:^(NSNotification* opening) {
                                                                                open = opening.object;
                                                                                press();
                                                                              }];
    user.willChoose("Entry");
    item->showMenu(menuOf("Entry"));
    [NSNotificationCenter.defaultCenter removeObserver:observer];
    EXPECT_EQ(toString([open itemAtIndex:0].title), "Entry");
    EXPECT_EQ(shown.menu, nil);
    EXPECT_EQ(clicks, 0);
    press();
    EXPECT_EQ(clicks, 1);
}

TEST_F(MacStatusItemTest, AnItemThatIsGoneCallsNobody) {
    int clicks = 0;
    item->onClick([&](StatusItemClick) { ++clicks; });
    NSStatusBarButton* before = button();
    id target = before.target;
    item.reset();
    [before sendAction:before.action to:target];
    EXPECT_EQ(clicks, 0);
}

}  // namespace
}  // namespace ovin
