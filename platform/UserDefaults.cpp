#include "platform/UserDefaults.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace ovin {
namespace {

// The conversions are those of the macOS class NSUserDefaults and of the numbers and strings that it returns, so that a
// store edited by hand means the same on every system.

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

std::string_view withoutLeading(std::string_view text, std::string_view characters) {
    const std::size_t start = text.find_first_not_of(characters);
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

std::int64_t integerFrom(double number) {
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    if (std::isnan(number)) return 0;
    if (number <= static_cast<double>(lowest)) return lowest;
    if (number >= static_cast<double>(highest)) return highest;
    return static_cast<std::int64_t>(number);
}

std::int64_t integerFrom(std::string_view text) {
    text = withoutLeading(text, whiteSpace);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);

    // Counted downwards, because the lowest number is one further from zero than the highest.
    std::int64_t negated = 0;
    for (const char character : text) {
        if (character < '0' || character > '9') break;
        const int digit = character - '0';
        if (negated < (std::numeric_limits<std::int64_t>::min() + digit) / 10) {
            negated = std::numeric_limits<std::int64_t>::min();
            break;
        }
        negated = negated * 10 - digit;
    }
    if (isNegative) return negated;
    return negated == std::numeric_limits<std::int64_t>::min() ? std::numeric_limits<std::int64_t>::max() : -negated;
}

bool booleanFrom(std::string_view text) {
    text = withoutLeading(text, whiteSpace);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    text = withoutLeading(text, "0");
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

std::int64_t UserDefaults::integer(std::string_view key) const {
    const auto value = object(key);
    if (!value) return 0;
    if (const auto* boolean = std::get_if<bool>(&*value)) return *boolean ? 1 : 0;
    if (const auto* number = std::get_if<std::int64_t>(&*value)) return *number;
    if (const auto* number = std::get_if<double>(&*value)) return integerFrom(*number);
    return integerFrom(std::get<std::string>(*value));
}

bool UserDefaults::boolean(std::string_view key) const {
    const auto value = object(key);
    if (!value) return false;
    if (const auto* boolean = std::get_if<bool>(&*value)) return *boolean;
    if (const auto* number = std::get_if<std::int64_t>(&*value)) return *number != 0;
    if (const auto* number = std::get_if<double>(&*value)) return *number != 0;
    return booleanFrom(std::get<std::string>(*value));
}

}  // namespace ovin
