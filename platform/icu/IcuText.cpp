#include "platform/icu/IcuText.h"

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
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

/// The library counts in 32 bits, so longer texts are cut; no screen could show the difference.
std::int32_t length(std::string_view text) {
    constexpr auto limit = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    return static_cast<std::int32_t>(std::min(text.size(), limit));
}

/// The environment's locale for sorting, with the precedence of variables that POSIX defines. The library's own default is
/// the language of messages, which many people set to another one.
std::string environmentLocale() {
    for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return value;
    }
    return {};
}

/// The library's name for a locale. "C" and "POSIX", which sort all capital letters before all small ones, become the root
/// locale, whose name is empty.
std::string canonicalName(const std::string& locale) {
    const std::string language = locale.substr(0, locale.find_first_of(".@"));
    if (language == "C" || language.ends_with("POSIX")) return {};

    std::array<char, ULOC_FULLNAME_CAPACITY> name{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_canonicalize(locale.c_str(), name.data(), static_cast<std::int32_t>(name.size() - 1), &status);
    if (U_FAILURE(status)) return {};
    return name.data();
}

}  // namespace

void IcuText::CloseCollator::operator()(UCollator* collator) const { ucol_close(collator); }

IcuText::IcuText(const std::string& locale) {
    const std::string wanted = canonicalName(locale.empty() ? environmentLocale() : locale);
    for (const std::string& name : {wanted, std::string()}) {
        UErrorCode status = U_ZERO_ERROR;
        collator_.reset(ucol_open(name.c_str(), &status));
        if (collator_) break;  // Null for what is no locale at all.
    }
    // The second level distinguishes accents, only the third letter case.
    if (collator_) ucol_setStrength(collator_.get(), UCOL_SECONDARY);
}

IcuText::~IcuText() = default;

std::string IcuText::prefix(std::string_view text, std::size_t count) const {
    if (count == 0 || text.empty()) return {};
    UErrorCode status = U_ZERO_ERROR;
    const OwnedText utf8(utext_openUTF8(nullptr, text.data(), length(text), &status));
    // Made for each call, because threads must not share a break iterator; the library loads the rules only once.
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
    if (!collator_) return a.compare(b) <=> 0;
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult result = ucol_strcollUTF8(collator_.get(), a.data(), length(a), b.data(), length(b), &status);
    if (result == UCOL_EQUAL) return std::weak_ordering::equivalent;
    return result == UCOL_LESS ? std::weak_ordering::less : std::weak_ordering::greater;
}

}  // namespace ovin
