#include "platform/macos/views/Pinning.h"

namespace ovin {

NSLayoutConstraint* fixLength(NSLayoutDimension* dimension, double length) {
    NSLayoutConstraint* constraint = [dimension constraintEqualToConstant:length];
    constraint.active = YES;
    return constraint;
}

NSLayoutConstraint* fixLength(NSLayoutDimension* dimension, const std::optional<double>& length) {
    return length ? fixLength(dimension, *length) : nil;
}

std::optional<double> fixedLength(NSLayoutConstraint* constraint) {
    return constraint.active ? std::optional<double>(constraint.constant) : std::nullopt;
}

double fixedLengthOr(NSLayoutConstraint* constraint, double otherwise) {
    return fixedLength(constraint).value_or(otherwise);
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
