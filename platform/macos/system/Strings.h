// For Objective-C++ files only.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Never nil: each ill-formed sequence in `text` becomes U+FFFD, as in all of Ovin. NUL is kept. Any thread.
NSString* toNSString(std::string_view text);

/// In UTF-8, NUL included; empty for nil. A surrogate without its other half becomes U+FFFD. Any thread.
std::string toString(NSString* _Nullable string);

}  // namespace ovin

NS_ASSUME_NONNULL_END
