#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace ovin {

/// One character of a text in UTF-8.
struct Utf8Character {
    /// U+FFFD for an ill-formed sequence.
    char32_t codePoint = 0;
    /// In bytes; at least 1.
    std::size_t length = 0;
    bool isWellFormed = true;
};

/// The character that begins at `offset`, which is less than the length of `text`. Every maximal ill-formed sequence is one
/// character (Unicode Standard, section 3.9: a maximal subpart), so that all worlds count ill-formed text alike.
[[nodiscard]] Utf8Character utf8Character(std::string_view text, std::size_t offset);

/// The bytes of a code point, which is at most U+10FFFF and no surrogate.
[[nodiscard]] std::string utf8(char32_t codePoint);

/// `text` with U+FFFD in place of each ill-formed sequence, for systems that refuse ill-formed texts.
[[nodiscard]] std::string wellFormedUtf8(std::string_view text);

/// The length in bytes of the beginning of `text` that has `utf16Count` UTF-16 units, an ill-formed sequence counting as
/// U+FFFD, or of all of `text` when it has no more. A character of two units of which only the first would fit is left out.
[[nodiscard]] std::size_t utf8Length(std::string_view text, std::size_t utf16Count);

/// Where the first `count` user-perceived characters of a well-formed text end, in UTF-16 units: the end of the text when it
/// has no more.
using CharacterEnds = std::function<std::size_t(const std::string& text, std::size_t count)>;

/// The first `count` user-perceived characters of `text`, or all of it when it has no more, by the rules of a library that
/// counts in UTF-16 units and reads nothing ill-formed. Gives `end` only a beginning of the text, and a longer one when the
/// end that it finds may only be where the beginning was cut: a long text costs no more than a short one.
[[nodiscard]] std::string utf8Prefix(std::string_view text, std::size_t count, const CharacterEnds& end);

/// `text` without the characters of the Unicode property White_Space at both its ends. Ill-formed bytes are kept.
[[nodiscard]] std::string_view withoutOuterWhiteSpace(std::string_view text);

}  // namespace ovin
