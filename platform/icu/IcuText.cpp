#include "platform/icu/IcuText.h"

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ovin {
namespace {

struct CloseText {
    void operator()(UText* text) const { utext_close(text); }
};
using OwnedText = std::unique_ptr<UText, CloseText>;

struct CloseIterator {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
using OwnedIterator = std::unique_ptr<UBreakIterator, CloseIterator>;

/// The library counts in 32 bits. Longer texts are cut, which no caller of these services can notice on a screen.
std::int32_t length(std::string_view text) {
    constexpr auto limit = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    return static_cast<std::int32_t>(std::min(text.size(), limit));
}

}  // namespace

void IcuText::CloseCollator::operator()(UCollator* collator) const { ucol_close(collator); }

IcuText::IcuText(const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    collator_.reset(ucol_open(locale.empty() ? nullptr : locale.c_str(), &status));
    // The second level tells accents apart; letter case is the third.
    if (collator_) ucol_setStrength(collator_.get(), UCOL_SECONDARY);
}

IcuText::~IcuText() = default;

std::string IcuText::prefix(std::string_view text, std::size_t count) const {
    if (count == 0 || text.empty()) return {};
    UErrorCode status = U_ZERO_ERROR;
    const OwnedText utf8(utext_openUTF8(nullptr, text.data(), length(text), &status));
    // A break iterator is not safe to share between threads; the rules behind it are loaded once by the library.
    const OwnedIterator characters(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    ubrk_setUText(characters.get(), utf8.get(), &status);
    if (U_FAILURE(status)) return std::string(text);

    std::int32_t end = ubrk_first(characters.get());
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t next = ubrk_next(characters.get());
        if (next == UBRK_DONE) return std::string(text);
        end = next;
    }
    return std::string(text.substr(0, static_cast<std::size_t>(end)));
}

std::string IcuText::trimmed(std::string_view text) const {
    UErrorCode status = U_ZERO_ERROR;
    const OwnedText utf8(utext_openUTF8(nullptr, text.data(), length(text), &status));
    if (U_FAILURE(status)) return std::string(text);

    std::int64_t start = 0;
    while (u_isUWhiteSpace(utext_next32From(utf8.get(), start)) != 0) start = utext_getNativeIndex(utf8.get());
    std::int64_t end = utext_nativeLength(utf8.get());
    while (end > start && u_isUWhiteSpace(utext_previous32From(utf8.get(), end)) != 0) {
        end = utext_getNativeIndex(utf8.get());
    }
    return std::string(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
}

std::weak_ordering IcuText::compareIgnoringCase(std::string_view a, std::string_view b) const {
    if (!collator_) return a <=> b;
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult result = ucol_strcollUTF8(collator_.get(), a.data(), length(a), b.data(), length(b), &status);
    if (result == UCOL_EQUAL) return std::weak_ordering::equivalent;
    return result == UCOL_LESS ? std::weak_ordering::less : std::weak_ordering::greater;
}

}  // namespace ovin
