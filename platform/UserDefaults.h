#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace ovin {

/// The user's settings of this application: a small store of typed values under string keys. Main thread only.
///
/// Whoever edits the store by other means may leave any type under any key, so readers that want one type say what becomes
/// of the others.
class UserDefaults {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string>;

    virtual ~UserDefaults() = default;

    /// The value under `key`, whatever its type; nothing when there is none.
    [[nodiscard]] virtual std::optional<Value> object(std::string_view key) const = 0;

    /// Stores a value. Once this has returned true the value is durable: it survives the end of this process, however it
    /// ends, and a loss of power. False means that it could not be stored and that the store is as it was.
    [[nodiscard]] virtual bool set(std::string_view key, const Value& value) = 0;

    /// Removes the value under `key`, if any; durable, and failing, like `set`.
    [[nodiscard]] virtual bool remove(std::string_view key) = 0;

    /// Where a person who is to mend the settings by hand finds them; empty where nobody can.
    [[nodiscard]] virtual std::string place() const { return {}; }

    /// The value as an integer. A Boolean counts as 0 or 1, a number loses its fraction and stops at the ends of the range,
    /// a string counts as the decimal number that it begins with; 0 for everything else and for an absent value.
    [[nodiscard]] std::int64_t integer(std::string_view key) const;

    /// The value as a Boolean. A number is true unless it is zero; a string is true when it begins with one of "YyTt1-9"
    /// after any zeros, a sign or white space; false for everything else and for an absent value.
    [[nodiscard]] bool boolean(std::string_view key) const;
};

}  // namespace ovin
