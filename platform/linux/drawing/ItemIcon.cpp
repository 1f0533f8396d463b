#include "platform/linux/drawing/ItemIcon.h"

namespace ovin {
namespace {

/// A longer name is no name. It is not cut, because it would then name something else.
constexpr std::size_t longestName = 1024;
/// Icons are shown 28 points high, on screens with up to two pixels to a point.
constexpr int sufficientSide = 56;

const BusValue& property(const BusValue::Dictionary& properties, const char* name) {
    static const BusValue missing;
    const auto found = properties.find(name);
    return found == properties.end() ? missing : found->second;
}

std::string nameIn(const BusValue::Dictionary& properties, const char* name) {
    std::string text = property(properties, name).string();
    return text.size() > longestName ? std::string() : text;
}

/// Null when the numbers are impossible or do not fit the bytes.
const BusValue::Bytes* bytesOf(const BusValue::Array& picture) {
    if (picture.size() != 3) return nullptr;
    const std::int64_t width = picture[0].integer();
    const std::int64_t height = picture[1].integer();
    if (width <= 0 || height <= 0 || width > ItemIcon::largestSide || height > ItemIcon::largestSide) return nullptr;
    const auto* bytes = picture[2].as<BusValue::Bytes>();
    return bytes != nullptr && bytes->size() == static_cast<std::size_t>(4 * width * height) ? bytes : nullptr;
}

/// Whether a picture with sides of `candidate` serves better than one of `chosen`.
bool isBetter(std::int64_t candidate, std::int64_t chosen) {
    return chosen < sufficientSide ? candidate > chosen : candidate >= sufficientSide && candidate < chosen;
}

bool canBeSeen(const BusValue::Bytes& pixels) {
    for (std::size_t alpha = 0; alpha < pixels.size(); alpha += 4) {
        if (pixels[alpha] != 0) return true;
    }
    return false;
}

ItemIcon::Pixels bestPicture(const BusValue& pictures) {
    const BusValue::Array* best = nullptr;
    for (const BusValue& picture : pictures.members()) {
        const BusValue::Array& parts = picture.members();
        if (bytesOf(parts) == nullptr) continue;
        if (best == nullptr || isBetter(parts[0].integer(), best->front().integer())) best = &parts;
    }
    if (best == nullptr || !canBeSeen(*bytesOf(*best))) return {};
    return {static_cast<int>((*best)[0].integer()), static_cast<int>((*best)[1].integer()), *bytesOf(*best)};
}

}  // namespace

std::shared_ptr<const ItemIcon> itemIcon(const BusValue::Dictionary& properties) {
    const auto make = [&properties](const char* name, const char* pictures) {
        return std::make_shared<const ItemIcon>(nameIn(properties, name), nameIn(properties, "IconThemePath"),
                                                bestPicture(property(properties, pictures)),
                                                ItemIcon::Overlay{nameIn(properties, "OverlayIconName"),
                                                                  bestPicture(property(properties, "OverlayIconPixmap"))});
    };
    const auto isUsable = [](const auto& icon) { return !icon->name.empty() || !icon->pixels.bytes.empty(); };
    if (property(properties, "Status").string() == "NeedsAttention") {
        if (auto icon = make("AttentionIconName", "AttentionIconPixmap"); isUsable(icon)) return icon;
    }
    auto icon = make("IconName", "IconPixmap");
    return isUsable(icon) ? icon : nullptr;
}

}  // namespace ovin
