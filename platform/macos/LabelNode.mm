#include "platform/macos/LabelNode.h"

#include "platform/macos/NativeText.h"
#include "platform/macos/Pinning.h"

using ovin::Label;
using ovin::TextDefaults;

@implementation OvinLabelNode {
    Label _asked;
    NSLayoutConstraint* _width;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithLabel:(const Label&)label {
    OvinLabelNode* node = label.wrapWidth ? [self wrappingLabelWithString:@""] : [self labelWithString:@""];
    [node show:label];
    return node;
}

- (void)show:(const Label&)label {
    _asked = label;
    self.selectable = NO;
    self.attributedStringValue = ovin::nativeText(label.text, [self defaults]);
    if (!label.wrapWidth) return;
    self.preferredMaxLayoutWidth = *label.wrapWidth;
    _width = ovin::fixLength(self.widthAnchor, *label.wrapWidth);
}

- (TextDefaults)defaults {
    NSFont* font = [NSFont systemFontOfSize:NSFont.systemFontSize];
    return {font, _asked.lineSpacing, _asked.wrapWidth ? NSLineBreakByWordWrapping : NSLineBreakByClipping};
}

- (ovin::ViewContent)content {
    return Label{ovin::readBackText(self.attributedStringValue, _asked.text, [self defaults]), ovin::fixedLength(_width),
                 [self lineSpacing]};
}

- (double)lineSpacing {
    NSAttributedString* text = self.attributedStringValue;
    if (text.length == 0) return _asked.lineSpacing;
    NSParagraphStyle* style = [text attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:nullptr];
    return style.lineSpacing;
}

@end
