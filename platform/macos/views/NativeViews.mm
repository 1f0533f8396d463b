#include "platform/macos/views/NativeViews.h"

#include <variant>

#include "platform/macos/views/ButtonNode.h"
#include "platform/macos/views/DisclosureNode.h"
#include "platform/macos/views/ImageNode.h"
#include "platform/macos/views/LabelNode.h"
#include "platform/macos/views/MenuBackgroundNode.h"
#include "platform/macos/views/PushButtonNode.h"
#include "platform/macos/views/ScrollNode.h"
#include "platform/macos/views/SpacerNodes.h"
#include "platform/macos/views/StackNode.h"
#include "platform/macos/views/TextButtonNode.h"

namespace ovin {
namespace {

struct Make {
    OvinClickTarget* target;

    NSView* operator()(const Stack& stack) const {
        NSMutableArray<NSView*>* views = [NSMutableArray array];
        for (const View& view : stack.views) [views addObject:makeNativeView(view, target)];
        return [OvinStackNode nodeWithStack:stack views:views];
    }
    NSView* operator()(const Label& label) const { return [OvinLabelNode nodeWithLabel:label]; }
    NSView* operator()(const Button& button) const { return [OvinButtonNode nodeWithButton:button target:target]; }
    NSView* operator()(const PushButton& button) const { return [OvinPushButtonNode nodeWithButton:button target:target]; }
    NSView* operator()(const DisclosureTriangle& triangle) const {
        return [OvinDisclosureNode nodeWithTriangle:triangle target:target];
    }
    NSView* operator()(const TextButton& button) const { return [OvinTextButtonNode nodeWithButton:button target:target]; }
    NSView* operator()(const ImageView& image) const { return [OvinImageNode nodeWithImage:image]; }
    NSView* operator()(const Separator& separator) const { return [OvinSeparatorNode nodeWithSeparator:separator]; }
    NSView* operator()(const Spacer& spacer) const { return [OvinSpacerNode nodeWithSpacer:spacer]; }
    NSView* operator()(const FlexibleSpace&) const { return [OvinFlexibleSpaceNode node]; }
    NSView* operator()(const ScrollView& scroll) const {
        return [OvinScrollNode nodeWithScroll:scroll view:makeNativeView(*scroll.content, target)];
    }
    NSView* operator()(const MenuBackground& background) const {
        return [OvinMenuBackgroundNode nodeWithBackground:background view:makeNativeView(*background.content, target)];
    }
};

}  // namespace

NSView* makeNativeView(const View& view, OvinClickTarget* target) {
    NSView* result = std::visit(Make{target}, view.content);
    result.hidden = view.isHidden;
    return result;
}

Size fittingSize(NSView* view) {
    // The frame, which is empty as yet, is not to be a constraint.
    view.translatesAutoresizingMaskIntoConstraints = NO;
    const NSSize size = view.fittingSize;
    return {size.width, size.height};
}

}  // namespace ovin
