#include "tests/macos/views/ViewDifference.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>
#include <variant>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"
#include "tests/macos/views/NativeLooks.h"

namespace ovin {
namespace {

class Comparison {
public:
    void compare(NSView* native, const View& view) {
        const std::size_t outside = path_.size();
        path_ += " " + std::to_string(view.content.index());
        expect(static_cast<bool>(native.hidden) == view.isHidden, "hidden");
        std::visit([&](const auto& content) { compareContent(native, content); }, view.content);
        path_.resize(outside);
    }

    [[nodiscard]] const std::vector<std::string>& found() const { return found_; }

private:
    void expect(bool isSo, const std::string& what) {
        if (!isSo) found_.push_back(path_ + ": " + what);
    }

    /// Whether it is of a class of AppKit's.
    bool isA(Class kind, NSView* native) {
        const bool is = [native isKindOfClass:kind];
        expect(is, "kind");
        return is;
    }

    void expectWidth(NSView* native, std::optional<double> width) {
        expect(fixedLength(native, NSLayoutAttributeWidth) == width, "width");
    }

    void expectHeight(NSView* native, std::optional<double> height) {
        expect(fixedLength(native, NSLayoutAttributeHeight) == height, "height");
    }

    void expectSize(NSView* native, Size size) {
        expectWidth(native, size.width);
        expectHeight(native, size.height);
    }

    static std::string plain(const AttributedText& text) {
        std::string result;
        for (const TextRun& run : text) result += toString(toNSString(run.text));
        return result;
    }

    void expectRuns(NSAttributedString* shown, const AttributedText& asked) {
        if (!isText(shown.string, plain(asked))) return expect(false, "text");
        NSUInteger place = 0;
        for (const TextRun& run : asked) {
            const NSUInteger end = place + toNSString(run.text).length;
            for (; place < end; ++place) {
                const auto attribute = [&](NSAttributedStringKey key) {
                    return [shown attribute:key atIndex:place effectiveRange:nullptr];
                };
                expect(isFont(attribute(NSFontAttributeName), run.font), "font");
                expect(isColor(attribute(NSForegroundColorAttributeName), run.color.value_or(Color{SystemColor::label})),
                       "colour");
                NSNumber* underline = attribute(NSUnderlineStyleAttributeName);
                expect((underline.integerValue != NSUnderlineStyleNone) == run.isUnderlined, "underline");
            }
        }
    }

    /// A title of one kind without a colour and a line is left to the button, which colours it by its state.
    void expectTitle(NSButton* button, const AttributedText& title) {
        expect(isText(button.title, plain(title)), "title");
        const bool isPlain = title.empty() || (title.size() == 1 && !title[0].color && !title[0].isUnderlined);
        if (!isPlain) return expectRuns(button.attributedTitle, title);
        if (!title.empty() && title[0].font) expect(isFont(button.font, title[0].font), "font");
    }

    void compareContent(NSView* native, const Stack& asked) {
        if (!isA(NSStackView.class, native)) return;
        auto* stack = static_cast<NSStackView*>(native);
        const bool isRow = asked.orientation == Stack::Orientation::horizontal;
        expect(stack.orientation ==
                   (isRow ? NSUserInterfaceLayoutOrientationHorizontal : NSUserInterfaceLayoutOrientationVertical),
               "orientation");
        const NSLayoutAttribute centre = isRow ? NSLayoutAttributeCenterY : NSLayoutAttributeCenterX;
        const NSLayoutAttribute edge = isRow ? NSLayoutAttributeTop : NSLayoutAttributeLeading;
        expect(stack.alignment == (asked.alignment == Stack::Alignment::center ? centre : edge), "alignment");
        expect(stack.spacing == asked.spacing, "spacing");
        const NSEdgeInsets insets = stack.edgeInsets;
        expect(Insets{insets.top, insets.left, insets.bottom, insets.right} == asked.insets, "insets");
        expect(stack.detachesHiddenViews, "hidden views take no room");
        expectWidth(native, asked.width);
        expectBox(native, asked.box);
        if (stack.arrangedSubviews.count != asked.views.size()) return expect(false, "number of views");
        for (NSUInteger i = 0; i < asked.views.size(); ++i) compareArranged(stack, i, asked.views[i]);
    }

    void compareArranged(NSStackView* stack, NSUInteger place, const View& asked) {
        NSView* view = stack.arrangedSubviews[place];
        const double spacing = asked.spacingAfter.value_or(NSStackViewSpacingUseDefault);
        // A stack need not know the spacing after a view that it has taken out.
        expect(asked.isHidden || [stack customSpacingAfterView:view] == spacing, "spacing after");
        compare(view, asked);
    }

    void expectBox(NSView* native, const std::optional<Box>& box) {
        expect(static_cast<bool>(native.wantsUpdateLayer) == box.has_value(), "box");
        if (!box) return;
        const Box& asked = *box;
        expect(native.layer.borderWidth == asked.borderWidth, "border's width");
        expect(native.layer.cornerRadius == asked.cornerRadius, "radius");
        const auto hasColors = [&] {
            [native updateLayer];
            return isColor(native.layer.backgroundColor, asked.background) &&
                   isColor(native.layer.borderColor, asked.border);
        };
        expect(isInEveryAppearance(hasColors), "colours");
    }

    void compareContent(NSView* native, const Label& asked) {
        if (!isA(NSTextField.class, native)) return;
        auto* label = static_cast<NSTextField*>(native);
        NSAttributedString* text = label.attributedStringValue;
        expectRuns(text, asked.text);
        expect(!label.selectable && !label.editable, "only shows");
        expectWidth(native, asked.wrapWidth);
        if (asked.wrapWidth) expect(label.preferredMaxLayoutWidth == *asked.wrapWidth, "wrap width");
        if (text.length == 0) return;
        NSParagraphStyle* style = [text attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:nullptr];
        expect(style.lineSpacing == asked.lineSpacing, "line spacing");
        expect(style.lineBreakMode == (asked.wrapWidth ? NSLineBreakByWordWrapping : NSLineBreakByClipping), "wraps");
    }

    void compareContent(NSView* native, const Button& asked) {
        if (!isA(NSButton.class, native)) return;
        auto* button = static_cast<NSButton*>(native);
        expectTitle(button, asked.title);
        expect((button.image != nil) == asked.image.has_value(), "image");
        if (asked.image) expect(isSizedImage(button.image, *asked.image), "picture");
        expect(button.imagePosition == nativePosition(asked.imagePosition), "image position");
        expect(isText(button.toolTip, asked.toolTip), "tool tip");
        if (!asked.toolTip.empty()) expect(isText(button.accessibilityLabel, asked.toolTip), "name");
        expectWidth(native, asked.width);
        expectHeight(native, asked.height);
        expect(button.tag == asked.tag, "tag");
        expect(!button.bordered && [button acceptsFirstMouse:nil], "a button of the ledge");
    }

    static NSCellImagePosition nativePosition(Button::ImagePosition position) {
        if (position == Button::ImagePosition::leading) return NSImageLeading;
        return position == Button::ImagePosition::only ? NSImageOnly : NSNoImage;
    }

    void compareContent(NSView* native, const PushButton& asked) {
        if (!isA(NSButton.class, native)) return;
        auto* button = static_cast<NSButton*>(native);
        expect(isText(button.title, asked.title), "title");
        expect(isFont(button.font, asked.font), "font");
        expect([button.keyEquivalent isEqualToString:nativeKey(asked.keyEquivalent)], "key");
        expect(asked.isProminent ? isColor(button.bezelColor, {SystemColor::controlAccent}) : button.bezelColor == nil,
               "prominence");
        expectWidth(native, asked.width);
        expect(button.tag == asked.tag, "tag");
        expect(button.bordered && button.bezelStyle == NSBezelStylePush && button.controlSize == NSControlSizeLarge,
               "a large button");
    }

    static NSString* nativeKey(KeyEquivalent key) {
        if (key == KeyEquivalent::returnKey) return @"\r";
        return key == KeyEquivalent::escape ? @"\x1b" : @"";
    }

    void compareContent(NSView* native, const DisclosureTriangle& asked) {
        if (!isA(NSButton.class, native)) return;
        auto* button = static_cast<NSButton*>(native);
        expect(button.bezelStyle == NSBezelStyleDisclosure, "a triangle");
        expect((button.state == NSControlStateValueOn) == asked.isOn, "on");
        expect(isFont(button.font, asked.font), "font");
        // Without a name of its own it has one that AppKit makes up.
        if (!asked.accessibilityLabel.empty()) expect(isText(button.accessibilityLabel, asked.accessibilityLabel), "name");
        expect(button.tag == asked.tag, "tag");
    }

    void compareContent(NSView* native, const TextButton& asked) {
        if (!isA(NSButton.class, native)) return;
        auto* button = static_cast<NSButton*>(native);
        expect(!button.bordered && button.imagePosition == NSNoImage, "text alone");
        expectTitle(button, asked.title);
        expect(isText(button.toolTip, asked.toolTip), "tool tip");
        expect(static_cast<bool>([button.accessibilityRole isEqualToString:NSAccessibilityLinkRole]) == asked.isLink,
               "link");
        expect(button.tag == asked.tag, "tag");
    }

    void compareContent(NSView* native, const ImageView& asked) {
        if (!isA(NSImageView.class, native)) return;
        expect(static_cast<NSImageView*>(native).image == nativeImage(asked.image), "picture");
        expectSize(native, asked.size);
        expect(native.layer.cornerRadius == asked.cornerRadius && native.layer.masksToBounds, "radius");
        expect(isText(native.accessibilityLabel, asked.accessibilityLabel), "name");
        expect(static_cast<bool>(native.accessibilityElement) != asked.accessibilityLabel.empty(), "decoration");
    }

    void compareContent(NSView* native, const Separator& asked) {
        if (!isA(NSBox.class, native)) return;
        expect(static_cast<NSBox*>(native).boxType == NSBoxSeparator, "a line");
        expectWidth(native, asked.width);
    }

    void compareContent(NSView* native, const Spacer& asked) {
        expect(native.subviews.count == 0, "nothing");
        expectSize(native, {1, asked.height});
    }

    void compareContent(NSView* native, const FlexibleSpace&) {
        expect(native.subviews.count == 0, "nothing");
        expectWidth(native, std::nullopt);
        const NSLayoutPriority hugging =
            [native contentHuggingPriorityForOrientation:NSLayoutConstraintOrientationHorizontal];
        expect(native.intrinsicContentSize.width == 0 && hugging < NSLayoutPriorityDefaultLow, "flexible");
    }

    void compareContent(NSView* native, const ScrollView& asked) {
        if (!isA(NSScrollView.class, native)) return;
        auto* scroll = static_cast<NSScrollView*>(native);
        expectSize(native, asked.size);
        const bool isUpright = asked.orientation == Stack::Orientation::vertical;
        expect(scroll.hasVerticalScroller == isUpright && scroll.hasHorizontalScroller != isUpright, "orientation");
        compareOnly(scroll.documentView, *asked.content);
    }

    void compareContent(NSView* native, const MenuBackground& asked) {
        if (!isA(NSVisualEffectView.class, native)) return;
        expect(static_cast<NSVisualEffectView*>(native).material == NSVisualEffectMaterialMenu, "material");
        expect(native.layer.cornerRadius == asked.cornerRadius && native.layer.masksToBounds, "radius");
        compareOnly(native, *asked.content);
    }

    /// What fills a view: the last one that was put into it.
    void compareOnly(NSView* container, const View& asked) {
        NSView* view = container.subviews.lastObject;
        expect(view != nil, "content");
        if (view != nil) compare(view, asked);
    }

    std::string path_;
    std::vector<std::string> found_;
};

}  // namespace

std::vector<std::string> differences(NSView* native, const View& view) {
    Comparison comparison;
    comparison.compare(native, view);
    return comparison.found();
}

}  // namespace ovin
