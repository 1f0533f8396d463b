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

double readBackLineSpacing(NSAttributedString* text, double asked) {
    if (text.length == 0) return asked;
    NSParagraphStyle* style = [text attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:nullptr];
    return style.lineSpacing;
}

}  // namespace

@implementation OvinLabelNode {
    Label _asked;
    NSLayoutConstraint* _width;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithLabel:(const Label&)label {
    OvinLabelNode* node = label.wrapWidth ? [self wrappingLabelWithString:@""] : [self labelWithString:@""];
    node->_asked = label;
    node.selectable = NO;
    node.attributedStringValue = ovin::nativeText(label.text, defaults(label));
    if (label.wrapWidth) node.preferredMaxLayoutWidth = *label.wrapWidth;
    node->_width = ovin::fixLength(node.widthAnchor, label.wrapWidth);
    return node;
}

- (ovin::ViewContent)shownContent {
    NSAttributedString* text = self.attributedStringValue;
    return Label{ovin::readBackText(text, _asked.text, defaults(_asked)), ovin::fixedLength(_width),
                 readBackLineSpacing(text, _asked.lineSpacing)};
}

@end
