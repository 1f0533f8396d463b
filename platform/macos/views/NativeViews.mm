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

    NativeView* operator()(const Stack& stack) const {
        NSMutableArray<NativeView*>* views = [NSMutableArray array];
        for (const View& view : stack.views) [views addObject:makeNativeView(view, target)];
        return [OvinStackNode nodeWithStack:stack views:views];
    }
    NativeView* operator()(const Label& label) const { return [OvinLabelNode nodeWithLabel:label]; }
    NativeView* operator()(const Button& button) const { return [OvinButtonNode nodeWithButton:button target:target]; }
    NativeView* operator()(const PushButton& button) const {
        return [OvinPushButtonNode nodeWithButton:button target:target];
    }
    NativeView* operator()(const DisclosureTriangle& triangle) const {
        return [OvinDisclosureNode nodeWithTriangle:triangle target:target];
    }
    NativeView* operator()(const TextButton& button) const {
        return [OvinTextButtonNode nodeWithButton:button target:target];
    }
    NativeView* operator()(const ImageView& image) const { return [OvinImageNode nodeWithImage:image]; }
    NativeView* operator()(const Separator& separator) const { return [OvinSeparatorNode nodeWithSeparator:separator]; }
    NativeView* operator()(const Spacer& spacer) const { return [OvinSpacerNode nodeWithSpacer:spacer]; }
    NativeView* operator()(const FlexibleSpace&) const { return [OvinFlexibleSpaceNode node]; }
    NativeView* operator()(const ScrollView& scroll) const {
        return [OvinScrollNode nodeWithScroll:scroll view:makeNativeView(*scroll.content, target)];
    }
    NativeView* operator()(const MenuBackground& background) const {
        return [OvinMenuBackgroundNode nodeWithBackground:background view:makeNativeView(*background.content, target)];
    }
};

}  // namespace

NativeView* makeNativeView(const View& view, OvinClickTarget* target) {
    NativeView* result = std::visit(Make{target}, view.content);
    result.hidden = view.isHidden;
    result.spacingAfter = view.spacingAfter;
    return result;
}

View readBack(NativeView* view) { return {[view shownContent], static_cast<bool>(view.hidden), view.spacingAfter}; }

Size fittingSize(NativeView* view) {
    [view layoutSubtreeIfNeeded];
    const NSSize size = view.fittingSize;
    return {size.width, size.height};
}

}  // namespace ovin
