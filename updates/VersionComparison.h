#pragma once

#include <compare>
#include <string_view>

namespace ovin {

/// Compares versions as the macOS update framework does. A version consists of numbers and of texts, which begin wherever
/// digits and letters meet; everything else only separates them. What follows a dash does not count. What follows an opening
/// parenthesis counts only between versions that are the same before it: 3.3 (5847) is older than 3.3.1b1 (5902), and the
/// same as 3.3.0 (5847). At the first difference:
/// - numbers compare by their value, of whatever length: 1.10 is newer than 1.9;
/// - texts compare byte by byte: 1.0b1 is newer than 1.0a2;
/// - a text is older than any number and than the end, because it marks what comes before a release: 1.0b1 is older
/// than 1.0;
/// - zeros that end a run of numbers do not count: 1.0.0 is 1.
///
/// A weak order of all strings.
[[nodiscard]] std::weak_ordering compareVersions(std::string_view a, std::string_view b);

}  // namespace ovin
