#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// A piece of release notes, without mark-up; its text is never empty.
struct NotesParagraph {
    enum class Kind { text, heading, listItem };
    std::string text;
    Kind kind = Kind::text;

    friend bool operator==(const NotesParagraph&, const NotesParagraph&) = default;
};

/// The paragraphs of release notes. Of HTML, tags and what nobody is meant to read (style sheets, scripts, comments) are
/// left out, blocks become paragraphs, and the usual named characters and numbers are read. Whatever the notes are, the
/// texts have at most `longestNotes` bytes.
[[nodiscard]] std::vector<NotesParagraph> notesParagraphs(std::string_view notes, bool arePlain);

inline constexpr std::size_t longestNotes = 32768;

}  // namespace ovin
