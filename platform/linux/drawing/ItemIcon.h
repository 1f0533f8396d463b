#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/Image.h"
#include "platform/linux/system/BusValue.h"

namespace ovin {

/// The icon of a status item as its program sent it: a name, pixels or both, perhaps with a smaller one upon it. Whether a
/// name leads to a picture turns out when the icon is drawn.
class ItemIcon {
public:
    /// Rows of pixels, each alpha, red, green and blue. There are 4 * width * height bytes; a side has at most `largestSide`
    /// pixels.
    struct Pixels {
        int width = 0;
        int height = 0;
        BusValue::Bytes bytes;

        friend bool operator==(const Pixels&, const Pixels&) = default;
    };
    static constexpr int largestSide = 512;

    struct Overlay {
        std::string name;
        Pixels pixels;

        friend bool operator==(const Overlay&, const Overlay&) = default;
    };

    ItemIcon(std::string aName, std::string aThemeFolder, Pixels thePixels)
        : ItemIcon(std::move(aName), std::move(aThemeFolder), std::move(thePixels), {}) {}
    ItemIcon(std::string aName, std::string aThemeFolder, Pixels thePixels, Overlay anOverlay)
        : name(std::move(aName)),
          themeFolder(std::move(aThemeFolder)),
          pixels(std::move(thePixels)),
          overlay(std::move(anOverlay)) {}

    /// In the icon theme, in the item's own theme folder, or the absolute path of a file.
    const std::string name;
    const std::string themeFolder;
    const Pixels pixels;
    const Overlay overlay;

    /// Whether it names nothing, so that no file of it can change.
    [[nodiscard]] bool isOfPixelsAlone() const { return name.empty() && overlay.name.empty() && !pixels.bytes.empty(); }

    friend bool operator==(const ItemIcon& a, const ItemIcon& b) {
        return a.name == b.name && a.themeFolder == b.themeFolder && a.pixels == b.pixels && a.overlay == b.overlay;
    }
};

/// The icon in the properties of a status item, as its status has it: one that needs attention may have another. Of the
/// pictures, the smallest one that suffices for the ledge, or else the largest. Null when there is no usable icon.
[[nodiscard]] std::shared_ptr<const ItemIcon> itemIcon(const BusValue::Dictionary& properties);

/// Passes the icon of an item from the threads that read it to those that show it. Any thread.
class LatestItemIcon {
public:
    explicit LatestItemIcon(std::shared_ptr<const ItemIcon> icon = nullptr) : icon_(std::move(icon)) {}

    /// Keeps the last icon when the new one is equal to it.
    void set(std::shared_ptr<const ItemIcon> icon) {
        const std::lock_guard lock(mutex_);
        if (icon && icon_ ? *icon == *icon_ : icon == icon_) return;
        icon_ = std::move(icon);
        for (const auto& [viewer, changed] : viewers_) changed();
    }

    [[nodiscard]] std::shared_ptr<const ItemIcon> get() const {
        const std::lock_guard lock(mutex_);
        return icon_;
    }

    /// Calls `changed`, on the thread that brings another icon, until `viewer` leaves. `changed` must not call this object.
    void addViewer(const void* viewer, std::function<void()> changed) {
        const std::lock_guard lock(mutex_);
        viewers_[viewer] = std::move(changed);
    }

    /// When it returns, `changed` does not run and will not run again.
    void removeViewer(const void* viewer) {
        const std::lock_guard lock(mutex_);
        viewers_.erase(viewer);
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const ItemIcon> icon_;
    std::map<const void*, std::function<void()>> viewers_;
};

/// An item's icon, always the latest, and the name of its application's, which is drawn where the item's leads to no
/// picture; empty when there is none.
class ItemOrApplicationIcon final : public Image::Content {
public:
    ItemOrApplicationIcon(std::shared_ptr<LatestItemIcon> itemIcon, std::string applicationIcon)
        : item(std::move(itemIcon)), application(std::move(applicationIcon)) {}

    [[nodiscard]] bool isSameAs(const Content& other) const override {
        const auto* icon = dynamic_cast<const ItemOrApplicationIcon*>(&other);
        return icon != nullptr && icon->item == item && icon->application == application;
    }

    const std::shared_ptr<LatestItemIcon> item;
    const std::string application;
};

}  // namespace ovin
