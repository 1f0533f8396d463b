#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

namespace ovin {

/// Text functions that need to know the world's scripts. Strings are UTF-8; every maximal ill-formed sequence counts as one
/// U+FFFD, and its bytes are kept. Any thread.
class Text {
public:
    virtual ~Text() = default;

    /// The first `count` user-perceived characters (extended grapheme clusters, Unicode Standard Annex 29) of `text`, or all
    /// of it when it has no more. Costs no more for a long text than for a short one.
    [[nodiscard]] virtual std::string prefix(std::string_view text, std::size_t count) const = 0;

    /// `text` without the white space and line ends (Unicode property White_Space) at both its ends.
    [[nodiscard]] virtual std::string trimmed(std::string_view text) const = 0;

    /// Compares as the user's locale sorts, ignoring letter case and differences as small as that, such as width. A weak
    /// order: equivalent texts may differ.
    [[nodiscard]] virtual std::weak_ordering compareIgnoringCase(std::string_view a, std::string_view b) const = 0;
};

}  // namespace ovin
