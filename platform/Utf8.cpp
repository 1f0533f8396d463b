#include "platform/Utf8.h"

#include <algorithm>

namespace ovin {
namespace {

constexpr char32_t replacement = 0xFFFD;

/// User-perceived characters, emoji sequences included, seldom have more UTF-16 units.
constexpr std::size_t usualUnits = 16;

unsigned char byteAt(std::string_view text, std::size_t offset) { return static_cast<unsigned char>(text[offset]); }

/// What the first byte of a character says about the others.
struct Lead {
    /// 0 for a byte that begins no character.
    std::size_t length = 0;
    char32_t bits = 0;
    /// The range of the second byte, which is narrower where other bytes would encode a character at more than its shortest
    /// length, a surrogate or more than the last code point (Unicode Standard, table 3-7).
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
};

Lead readLead(unsigned char byte) {
    if (byte < 0x80) return {1, byte};
    if (byte >= 0xC2 && byte <= 0xDF) return {2, byte & 0x1FU};
    if (byte == 0xE0) return {3, byte & 0x0FU, 0xA0, 0xBF};
    if (byte == 0xED) return {3, byte & 0x0FU, 0x80, 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF) return {3, byte & 0x0FU};
    if (byte == 0xF0) return {4, byte & 0x07U, 0x90, 0xBF};
    if (byte >= 0xF1 && byte <= 0xF3) return {4, byte & 0x07U};
    if (byte == 0xF4) return {4, byte & 0x07U, 0x80, 0x8F};
    return {};
}

bool isWhiteSpace(char32_t c) {
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) ||
           c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

}  // namespace

Utf8Character utf8Character(std::string_view text, std::size_t offset) {
    Lead lead = readLead(byteAt(text, offset));
    if (lead.length == 0) return {replacement, 1, false};
    char32_t codePoint = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const bool hasByte = offset + i < text.size();
        const unsigned char byte = hasByte ? byteAt(text, offset + i) : 0;
        if (byte < lead.lowest || byte > lead.highest) return {replacement, i, false};
        codePoint = codePoint << 6U | (byte & 0x3FU);
        lead.lowest = 0x80;
        lead.highest = 0xBF;
    }
    return {codePoint, lead.length, true};
}

std::string utf8(char32_t codePoint) {
    std::string bytes;
    const auto append = [&bytes](char32_t byte) { bytes += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto appendRest = [&](unsigned shift) { append(0x80 | (codePoint >> shift & 0x3FU)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6U);
        appendRest(0);
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12U);
        appendRest(6);
        appendRest(0);
    } else {
        append(0xF0 | codePoint >> 18U);
        appendRest(12);
        appendRest(6);
        appendRest(0);
    }
    return bytes;
}

std::string wellFormedUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const Utf8Character character = utf8Character(text, offset);
        result += character.isWellFormed ? text.substr(offset, character.length) : std::string_view("\uFFFD");
        offset += character.length;
    }
    return result;
}

std::size_t utf8Length(std::string_view text, std::size_t utf16Count) {
    std::size_t offset = 0;
    while (offset < text.size()) {
        const Utf8Character character = utf8Character(text, offset);
        const std::size_t units = character.codePoint > 0xFFFF ? 2 : 1;
        if (units > utf16Count) break;
        utf16Count -= units;
        offset += character.length;
    }
    return offset;
}

std::string utf8Prefix(std::string_view text, std::size_t count, const CharacterEnds& end) {
    if (count == 0) return {};
    for (std::size_t units = (std::min(count, text.size()) + 1) * usualUnits;; units *= 2) {
        const std::size_t length = utf8Length(text, units);
        const std::size_t found = end(wellFormedUtf8(text.substr(0, length)), count);
        if (length < text.size() && found + usualUnits > units) continue;
        return std::string(text.substr(0, utf8Length(text, found)));
    }
}

std::string_view withoutOuterWhiteSpace(std::string_view text) {
    std::size_t start = text.size();
    std::size_t end = text.size();
    bool hasBegun = false;
    for (std::size_t offset = 0; offset < text.size();) {
        const Utf8Character character = utf8Character(text, offset);
        if (!isWhiteSpace(character.codePoint)) {
            if (!hasBegun) start = offset;
            hasBegun = true;
            end = offset + character.length;
        }
        offset += character.length;
    }
    return text.substr(start, end - start);
}

}  // namespace ovin
