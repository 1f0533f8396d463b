#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

struct sd_bus_message;

namespace ovin {

/// A value as it came over a message bus. Structures are arrays of their members, a variant is the value that it holds,
/// object paths and signatures are strings. Numbers that are no integers, and dictionaries whose keys are no strings, are
/// empty values.
struct BusValue {
    using Array = std::vector<BusValue>;
    using Bytes = std::vector<std::uint8_t>;
    using Dictionary = std::map<std::string, BusValue, std::less<>>;

    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, std::string, Array, Dictionary, Bytes> content;

    template <typename Type>
    [[nodiscard]] const Type* as() const {
        return std::get_if<Type>(&content);
    }

    /// The string; empty when this is no string.
    [[nodiscard]] std::string string() const;

    /// The integer, of any sign and width; `otherwise` when this is no integer.
    [[nodiscard]] std::int64_t integer(std::int64_t otherwise = 0) const;

    /// The members; none when this is no array or structure.
    [[nodiscard]] const Array& members() const;
};

/// The values in a message; none when it cannot be understood or holds more than 50,000 values. Leaves out values that are
/// nested too deep, and texts and arrays of bytes beyond 4 MiB in one message, because status items send pictures of any
/// size with their texts.
[[nodiscard]] std::vector<BusValue> busValues(sd_bus_message* message);

}  // namespace ovin
