#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "platform/macos/NativeImages.h"
#include "platform/macos/NativeViews.h"
#include "tests/support/RandomViews.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

const Image& icon() {
    static const Image image = makeImage([NSImage imageWithSize:NSMakeSize(32, 32)
                                                        flipped:NO
                                                 drawingHandler:^BOOL(NSRect) {
                                                   return YES;
                                                 }]);
    return image;
}

class ViewReadBack : public testing::Test {
protected:
    // Controls ask it for what the user prefers.
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }
};

View readBackUnchanged(const View& view) {
    @autoreleasepool {
        return readBack(makeNativeView(view, nil));
    }
}

View readBackInAWindow(const View& view) {
    @autoreleasepool {
        NativeView* native = makeNativeView(view, nil);
        NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                                       styleMask:NSWindowStyleMaskBorderless
                                                         backing:NSBackingStoreBuffered
                                                           defer:YES];
        window.releasedWhenClosed = NO;
        [window.contentView addSubview:native];
        native.translatesAutoresizingMaskIntoConstraints = NO;
        [window layoutIfNeeded];
        return readBack(native);
    }
}

TEST_F(ViewReadBack, EveryKindReadsBackAsItWasMade) {
    for (View view : oneOfEach(icon())) {
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
        view.isHidden = true;
        view.spacingAfter = 3.3;
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
    }
}

TEST_F(ViewReadBack, EveryKindReadsBackInsideEveryContainer) {
    for (const View& view : oneOfEach(icon())) {
        for (const View& container : inEveryContainer(view)) {
            EXPECT_TRUE(readBackUnchanged(container) == container) << view.content.index();
        }
    }
}

TEST_F(ViewReadBack, WindowsOfEveryKindReadBackOnceTheyAreLaidOut) {
    for (const View& view : {SamplePages::guide(icon(), 300), SamplePages::about(icon()), SamplePages::card(1, true),
                             SamplePages::card(1.3, false), SamplePages::everything(icon())}) {
        EXPECT_TRUE(readBackInAWindow(view) == view);
    }
}

TEST_F(ViewReadBack, RandomTreesReadBackAsTheyWereMade) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const View view = RandomViews(seed, oneOfEach(icon())).view(4);
        EXPECT_TRUE(readBackUnchanged(view) == view) << seed;
    }
}

TEST_F(ViewReadBack, IllFormedTextReadsBackByItsBytes) {
    const std::string broken = "A\xff\xc3 B";
    Button button;
    button.title = {{broken, {}, {}}};
    button.toolTip = broken;
    for (const View& view :
         {View{Label{{{broken, {}, {}}}, {}}}, View{button}, View{PushButton{broken, {}, {}, false, {}, 1}}}) {
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
    }
}

struct Change {
    View view;
    void (^change)(__kindof NSView* view);
};

void changeWidth(NSView* view) {
    for (NSLayoutConstraint* constraint in view.constraints) {
        if (constraint.firstAttribute == NSLayoutAttributeWidth) constraint.constant += 1;
    }
}

TEST_F(ViewReadBack, AChangedViewReadsBackDifferently) {
    const Label label{{{"One ", {}, {}}, {"two", Font{20}, {}}}, 99.6};
    const View column{SamplePages::column({{Spacer{3}}, {Spacer{4}}}, 5.2)};
    const View pushButton{PushButton{"Done", {}, KeyEquivalent::none, false, 90.4, 1}};
    const View textButton{TextButton{{{"Text", {}, {}}}, "Tip", false, 1}};
    const View triangle{DisclosureTriangle{false, {13}, "Details", 1}};
    const View image{ImageView{icon(), {20, 20}, 2, "Icon"}};
    const std::vector<Change> changes{{{label}, ^(NSTextField* view){
                                           view.stringValue = @"One three";
}
}
, {{label}, ^(NSTextField* view){
       changeWidth(view);
}
}
, {{label}, ^(NSTextField* view){
       view.hidden = YES;
}
}
, {column, ^(NSStackView* view){
       view.spacing = 6;
}
}
, {column, ^(NSStackView* view){
       view.edgeInsets = NSEdgeInsetsMake(0, 1, 0, 0);
}
}
, {column, ^(NSStackView* view){
       view.alignment = NSLayoutAttributeCenterX;
}
}
, {column, ^(NSStackView* view){
       [view.arrangedSubviews[0] removeFromSuperview];
}
}
, {column, ^(NSStackView* view){
       view.arrangedSubviews[1].hidden = YES;
}
}
, {column, ^(NSStackView* view){
       [view setCustomSpacing:1 afterView:view.arrangedSubviews[0]];
}
}
, {pushButton, ^(NSButton* view){
       view.title = @"Other";
}
}
, {pushButton, ^(NSButton* view){
       view.keyEquivalent = @"\r";
}
}
, {pushButton, ^(NSButton* view){
       view.tag = 2;
}
}
, {pushButton, ^(NSButton* view){
       changeWidth(view);
}
}
, {textButton, ^(NSButton* view){
       view.title = @"Other";
}
}
, {textButton, ^(NSButton* view){
       view.toolTip = @"Other";
}
}
, {triangle, ^(NSButton* view){
       view.state = NSControlStateValueOn;
}
}
, {triangle, ^(NSButton* view){
       view.font = [NSFont systemFontOfSize:14];
}
}
, {triangle, ^(NSButton* view){
       view.accessibilityLabel = @"Other";
}
}
, {image, ^(NSImageView* view){
       changeWidth(view);
}
}
, {
    {Separator{10}}, ^(NSBox* view) {
      changeWidth(view);
    }
}
}
;
for (std::size_t i = 0; i < changes.size(); ++i) {
    @autoreleasepool {
        NativeView* native = makeNativeView(changes[i].view, nil);
        EXPECT_TRUE(readBack(native) == changes[i].view) << i;
        changes[i].change(native);
        EXPECT_FALSE(readBack(native) == changes[i].view) << i;
    }
}
}

}  // namespace
}  // namespace ovin
