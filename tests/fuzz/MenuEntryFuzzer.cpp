// Entries of menus: properties, each of them a byte for its name, one for its type, two for its length, and its value.
// Whatever they are, what is shown is short, in one line, and its picture small.

#include <QVariantMap>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/linux/items/DBusMenuLayout.h"

namespace {

constexpr std::array names{"label",        "shortcut", "icon-name", "icon-data",        "toggle-type",
                           "toggle-state", "type",     "enabled",   "children-display", "visible"};

void require(bool condition) {
    if (!condition) __builtin_trap();
}

QVariant value(std::uint8_t type, std::string_view bytes) {
    const auto size = static_cast<qsizetype>(bytes.size());
    switch (type % 4) {
        case 0:
            return QString::fromUtf8(bytes.data(), size);
        case 1:
            return QByteArray(bytes.data(), size);
        case 2:
            return bytes.empty() ? 0 : bytes[0] - '0';
        default:
            return !bytes.empty() && bytes[0] == '1';
    }
}

bool isOneLine(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character.category() != QChar::Other_Control; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    QVariantMap properties;
    while (rest.size() >= 4) {
        const auto byte = [&rest](std::size_t index) { return static_cast<std::uint8_t>(rest[index]); };
        const std::size_t length = byte(2) * 256U + byte(3);
        properties.insert(QLatin1String(names.at(byte(0) % names.size())), value(byte(1), rest.substr(4, length)));
        rest.remove_prefix(std::min(rest.size(), 4 + length));
    }
    constexpr int mostPixels = 1 << 16;
    int pixels = mostPixels;
    const auto entry = ovin::readDBusMenuEntry(1, properties, pixels);
    require(pixels >= 0 && pixels <= mostPixels);
    // Each mark of a mnemonic may be doubled.
    require(entry.label.size() <= 400 && isOneLine(entry.label) && entry.iconName.size() <= 200);
    require(std::max(entry.icon.width(), entry.icon.height()) <= 48);
    pixels = mostPixels;
    require(entry == ovin::readDBusMenuEntry(1, properties, pixels));
    return 0;
}
