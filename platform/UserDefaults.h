#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace ovin {

/// The user's settings of this application: a small store of typed values under string keys. Main thread only.
///
/// Other programs can edit the store and leave any type under any key, so functions that read one type say how they convert
/// the others.
class UserDefaults {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string>;

    virtual ~UserDefaults() = default;

    /// The value under `key`, whatever its type; nothing when there is none.
    [[nodiscard]] virtual std::optional<Value> object(std::string_view key) const = 0;

    /// Stores a value. Once this has returned true the value is durable: it survives the end of this process, however it
    /// ends, and a loss of power. False means that it could not be stored and that the store is unchanged.
    [[nodiscard]] virtual bool set(std::string_view key, const Value& value) = 0;

    /// Removes the value under `key`, if any. Durable like `set`; returns false like `set`.
    [[nodiscard]] virtual bool remove(std::string_view key) = 0;

    /// Where a user finds the settings to repair them by hand; empty where that is not possible.
    [[nodiscard]] virtual std::string place() const { return {}; }

    /// The value as an integer. A Boolean counts as 0 or 1, a number loses its fraction and is limited to the range, a
    /// string counts as the decimal number that it begins with; 0 for everything else and for an absent value.
    [[nodiscard]] std::int64_t integer(std::string_view key) const;

    /// The value as a Boolean. A number is true unless it is zero; a string is true when one of "YyTt1-9" follows any white
    /// space, sign and zeros at its beginning; false for everything else and for an absent value.
    [[nodiscard]] bool boolean(std::string_view key) const;
};

}  // namespace ovin
