#include "platform/macos/system/Strings.h"

#import <CoreFoundation/CoreFoundation.h>

#include "platform/Utf8.h"

namespace ovin {
namespace {

NSString* _Nullable decoded(std::string_view text) {
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

/// The UTF-8 bytes of the string from UTF-16 unit `start` to the first unit that has none; moves `start` there.
std::string encodedRun(CFStringRef string, CFIndex& start) {
    const CFRange range = CFRangeMake(start, CFStringGetLength(string) - start);
    CFIndex size = 0;
    const CFIndex units = CFStringGetBytes(string, range, kCFStringEncodingUTF8, 0, false, nullptr, 0, &size);
    std::string result(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(string, CFRangeMake(start, units), kCFStringEncodingUTF8, 0, false,
                     reinterpret_cast<UInt8*>(result.data()), size, nullptr);
    start += units;
    return result;
}

}  // namespace

NSString* toNSString(std::string_view text) {
    if (text.empty()) return @"";
    if (NSString* string = decoded(text)) return string;
    NSString* repaired = decoded(wellFormedUtf8(text));
    return repaired != nil ? repaired : @"";
}

std::string toString(NSString* _Nullable string) {
    if (string == nil) return {};
    const auto text = (__bridge CFStringRef)string;
    std::string result;
    const CFIndex length = CFStringGetLength(text);
    for (CFIndex start = 0; start < length;) {
        result += encodedRun(text, start);
        if (start >= length) break;
        // Half a surrogate pair.
        result += "\uFFFD";
        ++start;
    }
    return result;
}

}  // namespace ovin
