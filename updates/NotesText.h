#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// The paragraphs of release notes as plain text: windows show no mark-up. Of HTML, tags and what nobody is meant to read
/// (style sheets, scripts, comments) are left out, blocks become paragraphs, list items get a bullet, and the usual named
/// characters and numbers are read. Whatever the notes are, the result has at most `longestNotes` bytes.
[[nodiscard]] std::vector<std::string> notesParagraphs(std::string_view notes, bool arePlain);

inline constexpr std::size_t longestNotes = 32768;

}  // namespace ovin
