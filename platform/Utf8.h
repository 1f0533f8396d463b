#pragma once

#include <cstddef>
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
/// character (Unicode Standard, section 3.9: a maximal subpart), so that all worlds count the same in a broken text.
[[nodiscard]] Utf8Character utf8Character(std::string_view text, std::size_t offset);

/// `text` with U+FFFD in place of each ill-formed sequence, for systems that refuse texts otherwise.
[[nodiscard]] std::string wellFormedUtf8(std::string_view text);

/// The length in bytes of the beginning of `text` that has `count` UTF-16 units once it is well-formed, or of all of it when
/// it has no more. A character beyond the first 65536, of which that is the first half, does not belong to it.
[[nodiscard]] std::size_t utf8Length(std::string_view text, std::size_t utf16Count);

/// `text` without the characters of the Unicode property White_Space at both its ends. Ill-formed bytes are kept.
[[nodiscard]] std::string_view withoutOuterWhiteSpace(std::string_view text);

}  // namespace ovin
