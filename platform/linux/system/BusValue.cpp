#include "platform/linux/system/BusValue.h"

#include <systemd/sd-bus.h>

#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace ovin {
namespace {

constexpr int deepestNesting = 16;
/// More than a thousand items need, and so few that a program that sends millions delays no other.
constexpr int mostValues = 50'000;
constexpr std::size_t mostBytes = 4 << 20;

/// How much more of a message may be read.
struct Budget {
    int values = mostValues;
    std::size_t bytes = mostBytes;
};

/// The depth of a value in its message, and what is left to read.
struct Place {
    int depth;
    Budget* budget;

    [[nodiscard]] Place below() const { return {depth + 1, budget}; }
};

std::optional<BusValue> readValue(sd_bus_message* message, Place place);

template <typename Wire, typename Stored>
std::optional<BusValue> readBasic(sd_bus_message* message, char type) {
    Wire value{};
    if (sd_bus_message_read_basic(message, type, &value) <= 0) return std::nullopt;
    return BusValue{static_cast<Stored>(value)};
}

std::optional<BusValue> readString(sd_bus_message* message, char type, Place place) {
    const char* text = nullptr;
    if (sd_bus_message_read_basic(message, type, &text) <= 0) return std::nullopt;
    const std::size_t size = std::strlen(text);
    if (size > place.budget->bytes) return BusValue{};
    place.budget->bytes -= size;
    return BusValue{std::string(text, size)};
}

std::optional<BusValue> readBytes(sd_bus_message* message, Place place) {
    const void* bytes = nullptr;
    std::size_t size = 0;
    // Reads unwanted arrays, too, because sd_bus_message_skip would go through them byte by byte.
    if (sd_bus_message_read_array(message, 'y', &bytes, &size) < 0) return std::nullopt;
    if (size > place.budget->bytes) return BusValue{};
    place.budget->bytes -= size;
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    return BusValue{BusValue::Bytes(first, first + size)};
}

std::optional<BusValue> skipValue(sd_bus_message* message) {
    if (sd_bus_message_skip(message, nullptr) < 0) return std::nullopt;
    return BusValue{};
}

std::optional<BusValue::Array> readMembers(sd_bus_message* message, Place place) {
    BusValue::Array members;
    while (sd_bus_message_at_end(message, 0) == 0) {
        if (--place.budget->values < 0) return std::nullopt;
        auto member = readValue(message, place.below());
        if (!member) return std::nullopt;
        members.push_back(*std::move(member));
    }
    return members;
}

/// Reads the members of a container, and returns what `make` makes of them.
template <typename Make>
std::optional<BusValue> readContainer(sd_bus_message* message, char type, const char* contents, Place place, Make make) {
    if (sd_bus_message_enter_container(message, type, contents) <= 0) return std::nullopt;
    auto members = readMembers(message, place);
    if (!members || sd_bus_message_exit_container(message) < 0) return std::nullopt;
    return make(*std::move(members));
}

BusValue asArray(BusValue::Array&& members) { return {std::move(members)}; }

BusValue asOnlyMember(BusValue::Array&& members) { return members.empty() ? BusValue{} : std::move(members.front()); }

BusValue asDictionary(BusValue::Array&& entries) {
    BusValue::Dictionary dictionary;
    for (BusValue& entry : entries) {
        auto* pair = std::get_if<BusValue::Array>(&entry.content);
        if (pair == nullptr || pair->size() != 2) return {};
        auto* key = std::get_if<std::string>(&(*pair)[0].content);
        if (key == nullptr) return {};
        dictionary.insert_or_assign(std::move(*key), std::move((*pair)[1]));
    }
    return {std::move(dictionary)};
}

std::optional<BusValue> readArray(sd_bus_message* message, const char* contents, Place place) {
    if (std::string_view(contents) == "y") return readBytes(message, place);
    const bool isDictionary = contents[0] == '{';
    return readContainer(message, 'a', contents, place, isDictionary ? asDictionary : asArray);
}

std::optional<BusValue> readValue(sd_bus_message* message, Place place) {
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0) return std::nullopt;
    if (place.depth > deepestNesting) return skipValue(message);
    switch (type) {
        case 'b':
            return readBasic<int, bool>(message, type);
        case 'y':
            return readBasic<std::uint8_t, std::uint64_t>(message, type);
        case 'n':
            return readBasic<std::int16_t, std::int64_t>(message, type);
        case 'q':
            return readBasic<std::uint16_t, std::uint64_t>(message, type);
        case 'i':
            return readBasic<std::int32_t, std::int64_t>(message, type);
        case 'u':
            return readBasic<std::uint32_t, std::uint64_t>(message, type);
        case 'x':
            return readBasic<std::int64_t, std::int64_t>(message, type);
        case 't':
            return readBasic<std::uint64_t, std::uint64_t>(message, type);
        case 's':
        case 'o':
        case 'g':
            return readString(message, type, place);
        case 'a':
            return readArray(message, contents, place);
        case 'v':
            return readContainer(message, type, contents, place, asOnlyMember);
        case 'r':
        case 'e':
            return readContainer(message, type, contents, place, asArray);
        default:
            return skipValue(message);
    }
}

}  // namespace

std::string BusValue::string() const {
    const auto* text = as<std::string>();
    return text != nullptr ? *text : std::string();
}

std::int64_t BusValue::integer(std::int64_t otherwise) const {
    if (const auto* number = as<std::int64_t>()) return *number;
    if (const auto* number = as<std::uint64_t>()) return static_cast<std::int64_t>(*number);
    return otherwise;
}

const BusValue::Array& BusValue::members() const {
    static const Array none;
    const auto* array = as<Array>();
    return array != nullptr ? *array : none;
}

std::vector<BusValue> busValues(sd_bus_message* message) {
    Budget budget;
    return readMembers(message, {0, &budget}).value_or(std::vector<BusValue>{});
}

}  // namespace ovin
