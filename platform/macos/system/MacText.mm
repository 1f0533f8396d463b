#include "platform/macos/system/MacText.h"

#import <Foundation/Foundation.h>

#include "platform/Utf8.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

bool isLineEnd(NSString* text, NSUInteger index) {
    return index + 1 < text.length && [text characterAtIndex:index] == '\r' && [text characterAtIndex:index + 1] == '\n';
}

/// The end of the character that begins at `index`, in UTF-16 units.
NSUInteger endOfCharacter(NSString* text, NSUInteger index) {
    if (isLineEnd(text, index)) return index + 2;
    return NSMaxRange([text rangeOfComposedCharacterSequenceAtIndex:index]);
}

/// The end of the first `count` characters, or of the text when it has no more, in UTF-16 units.
NSUInteger endOfCharacters(NSString* text, std::size_t count) {
    NSUInteger end = 0;
    for (; count > 0 && end < text.length; --count) end = endOfCharacter(text, end);
    return end;
}

class MacText final : public Text {
public:
    [[nodiscard]] std::string prefix(std::string_view text, std::size_t count) const override {
        return utf8Prefix(text, count, [](const std::string& beginning, std::size_t characters) -> std::size_t {
            @autoreleasepool {
                return endOfCharacters(toNSString(beginning), characters);
            }
        });
    }

    [[nodiscard]] std::string trimmed(std::string_view text) const override {
        return std::string(withoutOuterWhiteSpace(text));
    }

    [[nodiscard]] std::weak_ordering compareIgnoringCase(std::string_view a, std::string_view b) const override {
        @autoreleasepool {
            const NSComparisonResult result = [toNSString(a) localizedCaseInsensitiveCompare:toNSString(b)];
            if (result == NSOrderedSame) return std::weak_ordering::equivalent;
            return result == NSOrderedAscending ? std::weak_ordering::less : std::weak_ordering::greater;
        }
    }
};

}  // namespace

std::unique_ptr<Text> makeMacText() { return std::make_unique<MacText>(); }

}  // namespace ovin
