#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/views/NativeViews.h"
#include "tests/macos/views/ViewDifference.h"
#include "tests/support/RandomViews.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

using Differences = std::vector<std::string>;

const Image& icon() {
    static const Image image = makeImage([NSImage imageWithSize:NSMakeSize(32, 32)
                                                        flipped:NO
                                                 drawingHandler:^BOOL(NSRect place) {
                                                   [NSColor.systemOrangeColor setFill];
                                                   [[NSBezierPath bezierPathWithOvalInRect:place] fill];
                                                   return YES;
                                                 }]);
    return image;
}

class ViewReadBack : public testing::Test {
protected:
    // Controls ask it for what the user prefers.
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }
};

Differences differencesOf(const View& view) {
    @autoreleasepool {
        return differences(makeNativeView(view, nil), view);
    }
}

Differences differencesInAWindow(const View& view) {
    @autoreleasepool {
        NSView* native = makeNativeView(view, nil);
        NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                                       styleMask:NSWindowStyleMaskBorderless
                                                         backing:NSBackingStoreBuffered
                                                           defer:YES];
        window.releasedWhenClosed = NO;
        [window.contentView addSubview:native];
        native.translatesAutoresizingMaskIntoConstraints = NO;
        [window layoutIfNeeded];
        return differences(native, view);
    }
}

TEST_F(ViewReadBack, EveryKindReadsBackAsItWasMade) {
    for (View view : oneOfEach(icon())) {
        EXPECT_EQ(differencesOf(view), Differences());
        view.isHidden = true;
        view.spacingAfter = 3.3;
        EXPECT_EQ(differencesOf(view), Differences());
    }
}

TEST_F(ViewReadBack, EveryKindReadsBackInsideEveryContainer) {
    for (const View& view : oneOfEach(icon())) {
        for (const View& container : inEveryContainer(view)) EXPECT_EQ(differencesOf(container), Differences());
    }
}

TEST_F(ViewReadBack, WindowsOfEveryKindReadBackOnceTheyAreLaidOut) {
    for (const View& view : {SamplePages::guide(icon(), 300), SamplePages::about(icon()), SamplePages::card(1, true),
                             SamplePages::card(1.3, false), SamplePages::everything(icon())}) {
        EXPECT_EQ(differencesInAWindow(view), Differences());
    }
}

TEST_F(ViewReadBack, RandomTreesReadBackAsTheyWereMade) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const View view = RandomViews(seed, oneOfEach(icon())).view(4);
        EXPECT_EQ(differencesOf(view), Differences()) << seed;
    }
}

TEST_F(ViewReadBack, IllFormedTextReadsBackAsAllOfOvinShowsIt) {
    const std::string broken = "A\xff\xc3 B";
    Button button;
    button.title = {{broken, {}, {}}};
    button.toolTip = broken;
    for (const View& view :
         {View{Label{{{broken, {}, {}}}, {}}}, View{button}, View{PushButton{broken, {}, {}, false, {}, 1}}}) {
        EXPECT_EQ(differencesOf(view), Differences());
    }
}

/// Checks that the native view of a description no longer matches the description once the view was changed.
void expectChange(const View& view, void (^change)(__kindof NSView* view)) {
    @autoreleasepool {
        NSView* native = makeNativeView(view, nil);
        EXPECT_EQ(differences(native, view), Differences());
        change(native);
        EXPECT_NE(differences(native, view), Differences());
    }
}

void changeWidth(NSView* view) {
    for (NSLayoutConstraint* constraint in view.constraints) {
        if (constraint.firstAttribute == NSLayoutAttributeWidth) constraint.constant += 1;
    }
}

TEST_F(ViewReadBack, AChangedWidthReadsBack) {
    const Label paragraph{{{"One ", {}, {}}, {"two", Font{20}, {}}}, 99.6};
    const PushButton button{"Done", {}, KeyEquivalent::none, false, 90.4, 1};
    const ImageView image{icon(), {20, 20}, 2, "Icon"};
    for (const View& view : {View{paragraph}, View{button}, View{image}, View{Separator{10}}}) {
        expectChange(view, ^(NSView* native) {
          changeWidth(native);
        });
    }
}

TEST_F(ViewReadBack, AChangedLabelReadsBack) {
    const View label{Label{{{"One ", {}, {}}, {"two", Font{20}, {}}}, 99.6}};
    expectChange(label, ^(NSTextField* view) {
      view.stringValue = @"One three";
    });
    expectChange(label, ^(NSTextField* view) {
      view.hidden = YES;
    });
    for (const TextRun& run :
         {TextRun{"One", Font{13, Font::Weight::bold}, {}}, TextRun{"One", {}, Color{SystemColor::secondaryLabel}},
          TextRun{"One", {}, Color{SystemColor::label, 0.5}}, TextRun{"One", {}, {}, true}}) {
        NSView* other = makeNativeView({Label{{run}, {}}}, nil);
        expectChange({Label{{{"One", Font{13}, {}}}, {}}}, ^(NSTextField* view) {
          view.attributedStringValue = static_cast<NSTextField*>(other).attributedStringValue;
        });
    }
}

TEST_F(ViewReadBack, AChangedStackReadsBack) {
    const View column{SamplePages::column({{Spacer{3}}, {Spacer{4}}}, 5.2)};
    expectChange(column, ^(NSStackView* view) {
      view.spacing = 6;
    });
    expectChange(column, ^(NSStackView* view) {
      view.edgeInsets = NSEdgeInsetsMake(0, 1, 0, 0);
    });
    expectChange(column, ^(NSStackView* view) {
      view.alignment = NSLayoutAttributeCenterX;
    });
    expectChange(column, ^(NSStackView* view) {
      [view.arrangedSubviews[0] removeFromSuperview];
    });
    expectChange(column, ^(NSStackView* view) {
      view.arrangedSubviews[1].hidden = YES;
    });
    expectChange(column, ^(NSStackView* view) {
      [view setCustomSpacing:1 afterView:view.arrangedSubviews[0]];
    });
}

TEST_F(ViewReadBack, AChangedPushButtonReadsBack) {
    const View done{PushButton{"Done", {}, KeyEquivalent::none, false, 90.4, 1}};
    expectChange(done, ^(NSButton* view) {
      view.title = @"Other";
    });
    expectChange(done, ^(NSButton* view) {
      view.keyEquivalent = @"\r";
    });
    expectChange(done, ^(NSButton* view) {
      view.tag = 2;
    });
}

TEST_F(ViewReadBack, AChangedTextButtonReadsBack) {
    const View text{TextButton{{{"Text", {}, {}}}, "Tip", false, 1}};
    expectChange(text, ^(NSButton* view) {
      view.title = @"Other";
    });
    expectChange(text, ^(NSButton* view) {
      view.toolTip = @"Other";
    });
}

TEST_F(ViewReadBack, AChangedTriangleReadsBack) {
    const View triangle{DisclosureTriangle{false, {13}, "Details", 1}};
    expectChange(triangle, ^(NSButton* view) {
      view.state = NSControlStateValueOn;
    });
    expectChange(triangle, ^(NSButton* view) {
      view.font = [NSFont systemFontOfSize:14];
    });
    expectChange(triangle, ^(NSButton* view) {
      view.accessibilityLabel = @"Other";
    });
}

}  // namespace
}  // namespace ovin
