#include "platform/macos/views/Pinning.h"

namespace ovin {

void fixLength(NSLayoutDimension* dimension, const std::optional<double>& length) {
    if (length) [dimension constraintEqualToConstant:*length].active = YES;
}

void fill(NSView* container, NSView* view) {
    view.translatesAutoresizingMaskIntoConstraints = NO;
    [container addSubview:view];
    [NSLayoutConstraint activateConstraints:@[
        [view.leadingAnchor constraintEqualToAnchor:container.leadingAnchor],
        [view.trailingAnchor constraintEqualToAnchor:container.trailingAnchor],
        [view.topAnchor constraintEqualToAnchor:container.topAnchor],
        [view.bottomAnchor constraintEqualToAnchor:container.bottomAnchor]
    ]];
}

}  // namespace ovin
