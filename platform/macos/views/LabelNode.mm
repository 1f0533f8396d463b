#include "platform/macos/views/LabelNode.h"

#include "platform/macos/views/NativeText.h"
#include "platform/macos/views/Pinning.h"

using ovin::Label;
using ovin::TextDefaults;

namespace {

TextDefaults defaults(const Label& label) {
    NSFont* font = [NSFont systemFontOfSize:NSFont.systemFontSize];
    const NSLineBreakMode breaking = label.wrapWidth ? NSLineBreakByWordWrapping : NSLineBreakByClipping;
    return {font, label.lineSpacing, breaking, NSTextAlignmentNatural};
}

}  // namespace

@implementation OvinLabelNode

+ (instancetype)nodeWithLabel:(const Label&)label {
    OvinLabelNode* node = label.wrapWidth ? [self wrappingLabelWithString:@""] : [self labelWithString:@""];
    node.selectable = NO;
    node.attributedStringValue = ovin::nativeText(label.text, defaults(label));
    if (label.wrapWidth) node.preferredMaxLayoutWidth = *label.wrapWidth;
    ovin::fixLength(node.widthAnchor, label.wrapWidth);
    return node;
}

@end
