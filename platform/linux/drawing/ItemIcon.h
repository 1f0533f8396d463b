#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/Image.h"
#include "platform/linux/system/BusValue.h"

namespace ovin {

/// What a status item says that it looks like. Names are whatever its program sent; whether they lead to a picture is seen
/// when it is drawn. There is a name, or there are pixels, or both.
class ItemIcon final : public Image::Content {
public:
    /// Rows of pixels, each alpha, red, green and blue. There are 4 * width * height bytes, and as many as `largestSide` to
    /// a side at most.
    struct Pixels {
        int width = 0;
        int height = 0;
        BusValue::Bytes bytes;

        friend bool operator==(const Pixels&, const Pixels&) = default;
    };
    static constexpr int largestSide = 512;

    ItemIcon(std::string aName, std::string aThemeFolder, Pixels thePixels)
        : name(std::move(aName)), themeFolder(std::move(aThemeFolder)), pixels(std::move(thePixels)) {}

    /// In the icon theme, in the item's own theme folder, or the absolute path of a file.
    const std::string name;
    const std::string themeFolder;
    const Pixels pixels;

    friend bool operator==(const ItemIcon& a, const ItemIcon& b) {
        return a.name == b.name && a.themeFolder == b.themeFolder && a.pixels == b.pixels;
    }
};

/// The icon in the properties of a status item: of its pictures the smallest one that suffices for the ledge, or else the
/// largest. Null when there is none, or nothing that could be one.
[[nodiscard]] std::shared_ptr<const ItemIcon> itemIcon(const BusValue::Dictionary& properties);

/// The icon of an item between those who read and those who show it. Any thread.
class LatestItemIcon {
public:
    /// An icon that looks like the last one leaves that in place.
    void set(std::shared_ptr<const ItemIcon> icon) {
        const std::lock_guard lock(mutex_);
        if (icon && icon_ && *icon == *icon_) return;
        icon_ = std::move(icon);
    }

    [[nodiscard]] std::shared_ptr<const ItemIcon> get() const {
        const std::lock_guard lock(mutex_);
        return icon_;
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const ItemIcon> icon_;
};

}  // namespace ovin
