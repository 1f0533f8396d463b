#include "updates/NotesText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/Utf8.h"

namespace ovin {
namespace {

constexpr std::string_view white = " \t\r\n";

bool isWhite(char character) { return white.find(character) != std::string_view::npos; }

char lowered(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

std::optional<std::string> characterNamed(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 13> names{{{"amp", "&"},
                                                                                   {"lt", "<"},
                                                                                   {"gt", ">"},
                                                                                   {"quot", "\""},
                                                                                   {"apos", "'"},
                                                                                   {"nbsp", " "},
                                                                                   {"ndash", "–"},
                                                                                   {"mdash", "—"},
                                                                                   {"hellip", "…"},
                                                                                   {"lsquo", "‘"},
                                                                                   {"rsquo", "’"},
                                                                                   {"ldquo", "“"},
                                                                                   {"rdquo", "”"}}};
    for (const auto& [known, character] : names) {
        if (known == name) return std::string(character);
    }
    return std::nullopt;
}

/// `number` is decimal, or hexadecimal behind an "x". Those below the blank are none.
std::optional<std::string> characterNumbered(std::string_view number) {
    const bool isHexadecimal = number.starts_with('x') || number.starts_with('X');
    if (isHexadecimal) number.remove_prefix(1);
    std::uint32_t point = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), point, isHexadecimal ? 16 : 10);
    const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
    if (error != std::errc() || end != number.data() + number.size() || point < ' ' || point > 0x10FFFF || isSurrogate) {
        return std::nullopt;
    }
    return utf8(point);
}

/// What stands between "&" and ";".
std::optional<std::string> readReference(std::string_view reference) {
    return reference.starts_with('#') ? characterNumbered(reference.substr(1)) : characterNamed(reference);
}

using Kind = NotesParagraph::Kind;

/// Collects paragraphs, and stops when there is enough.
class Paragraphs {
public:
    [[nodiscard]] bool isFull() const { return size_ >= longestNotes; }

    void append(std::string_view text) {
        // A character is not cut in two.
        if (size_ + text.size() > longestNotes) {
            size_ = longestNotes;
            return;
        }
        current_ += text;
        size_ += text.size();
    }

    /// However much white space there is, it is one blank.
    void appendWhite() {
        if (!current_.empty() && current_.back() != ' ') append(" ");
    }

    /// A kind waits for its text.
    void end() {
        while (current_.ends_with(' ')) current_.pop_back();
        if (current_.empty()) return;
        all_.push_back({std::exchange(current_, {}), kind_});
        kind_ = Kind::text;
    }

    void begin(Kind kind) {
        end();
        kind_ = kind;
    }

    [[nodiscard]] std::vector<NotesParagraph> take() {
        end();
        return std::move(all_);
    }

private:
    std::vector<NotesParagraph> all_;
    std::string current_;
    Kind kind_ = Kind::text;
    std::size_t size_ = 0;
};

struct Tag {
    /// In lower case.
    std::string name;
    bool isEnd = false;
};

/// Whether an element holds what nobody is meant to read.
bool isHidden(std::string_view name) { return name == "style" || name == "script" || name == "title"; }

/// Whether a tag ends a line and begins nothing: an item or a heading that has no text yet still waits for it, as in
/// "<li><p>".
bool endsLine(std::string_view name) { return name == "p" || name == "br" || name == "div"; }

/// What begins with a block; nothing for what stands within a text.
std::optional<Kind> kindOfBlock(std::string_view name) {
    constexpr std::array<std::string_view, 8> blocks{"ul", "ol", "hr", "tr", "table", "pre", "body", "head"};
    if (name == "li") return Kind::listItem;
    if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') return Kind::heading;
    if (std::find(blocks.begin(), blocks.end(), name) != blocks.end()) return Kind::text;
    return std::nullopt;
}

class Html {
public:
    explicit Html(std::string_view text) : rest_(text) {}

    std::vector<NotesParagraph> paragraphs() {
        while (!rest_.empty() && !found_.isFull()) step();
        return found_.take();
    }

private:
    void step() {
        const char character = rest_.front();
        if (rest_.starts_with("<!--")) return skipPast("-->");
        if (character == '<') return readTag();
        if (character == '&') return readCharacter();
        if (isWhite(character)) {
            found_.appendWhite();
            return rest_.remove_prefix(1);
        }
        const std::size_t length = std::min(rest_.find_first_of("<& \t\r\n"), rest_.size());
        found_.append(rest_.substr(0, length));
        rest_.remove_prefix(length);
    }

    void readCharacter() {
        constexpr std::size_t longestName = 10;
        const std::size_t end = rest_.substr(0, longestName).find(';');
        const auto character = end == std::string_view::npos ? std::nullopt : readReference(rest_.substr(1, end - 1));
        found_.append(character.value_or("&"));
        rest_.remove_prefix(character ? end + 1 : 1);
    }

    void readTag() {
        const Tag tag = takeTag();
        if (isHidden(tag.name) && !tag.isEnd) return skipElement(tag.name);
        if (endsLine(tag.name)) return found_.end();
        if (const auto kind = kindOfBlock(tag.name)) found_.begin(tag.isEnd ? Kind::text : *kind);
    }

    Tag takeTag() {
        std::string_view inside = rest_.substr(1, std::min(rest_.find('>'), rest_.size()) - 1);
        skipPast(">");
        Tag tag;
        tag.isEnd = inside.starts_with('/');
        if (tag.isEnd) inside.remove_prefix(1);
        for (const char character : inside.substr(0, inside.find_first_of(" \t\r\n/"))) tag.name += lowered(character);
        return tag;
    }

    void skipElement(const std::string& name) {
        const std::string end = "</" + name;
        const auto isSame = [](char actual, char expected) { return lowered(actual) == expected; };
        const auto* const found = std::search(rest_.begin(), rest_.end(), end.begin(), end.end(), isSame);
        rest_.remove_prefix(static_cast<std::size_t>(found - rest_.begin()));
        skipPast(">");
    }

    /// To the end when there is no such mark.
    void skipPast(std::string_view mark) {
        const std::size_t found = std::min(rest_.find(mark), rest_.size());
        rest_.remove_prefix(std::min(found + mark.size(), rest_.size()));
    }

    std::string_view rest_;
    Paragraphs found_;
};

std::vector<NotesParagraph> linesOf(std::string_view text) {
    Paragraphs found;
    while (!text.empty() && !found.isFull()) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, length);
        while (!line.empty() && isWhite(line.back())) line.remove_suffix(1);
        found.append(line);
        found.end();
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return found.take();
}

}  // namespace

std::vector<NotesParagraph> notesParagraphs(std::string_view notes, bool arePlain) {
    return arePlain ? linesOf(notes) : Html(notes).paragraphs();
}

}  // namespace ovin
