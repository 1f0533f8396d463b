#include "platform/macos/MacText.h"

#import <Foundation/Foundation.h>

#include <algorithm>

#include "platform/Utf8.h"
#include "platform/macos/Strings.h"

namespace ovin {
namespace {

/// Characters are seldom longer than this many UTF-16 units, the sequences of emoji included.
constexpr std::size_t usualUnits = 16;

bool isLineEnd(NSString* text, NSUInteger index) {
    return index + 1 < text.length && [text characterAtIndex:index] == '\r' && [text characterAtIndex:index + 1] == '\n';
}

/// Where the character that begins at `index` ends, in UTF-16 units.
NSUInteger endOfCharacter(NSString* text, NSUInteger index) {
    if (isLineEnd(text, index)) return index + 2;
    return NSMaxRange([text rangeOfComposedCharacterSequenceAtIndex:index]);
}

/// Where the first `count` characters end, or the text when it has no more, in UTF-16 units.
NSUInteger endOfCharacters(NSString* text, std::size_t count) {
    NSUInteger end = 0;
    for (; count > 0 && end < text.length; --count) end = endOfCharacter(text, end);
    return end;
}

class MacText final : public Text {
public:
    /// Looks at a beginning of the text only, and at a longer one if the end that it has found might be that of the
    /// beginning.
    [[nodiscard]] std::string prefix(std::string_view text, std::size_t count) const override {
        if (count == 0) return {};
        std::size_t length = 0;
        for (std::size_t units = (std::min(count, text.size()) + 1) * usualUnits; length < text.size(); units *= 2) {
            @autoreleasepool {
                length = utf8Length(text, units);
                NSString* beginning = toNSString(text.substr(0, length));
                const NSUInteger end = endOfCharacters(beginning, count);
                if (length == text.size() || end + usualUnits <= beginning.length) {
                    return std::string(text.substr(0, utf8Length(text, end)));
                }
            }
        }
        return std::string(text);
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
