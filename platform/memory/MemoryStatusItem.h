#pragma once

#include <optional>
#include <utility>

#include "platform/StatusItem.h"

namespace ovin {

/// A status item that a test clicks.
class MemoryStatusItem final : public StatusItem {
public:
    std::optional<DrawnImage> image;
    std::optional<Menu> menu;
    std::optional<Screen> itemScreen;

    void click(StatusItemClick click) const { handler_(click); }

    void onClick(std::function<void(StatusItemClick)> handler) override { handler_ = std::move(handler); }
    void setImage(const DrawnImage& newImage) override { image = newImage; }
    void showMenu(const Menu& shown) override { menu = shown; }
    [[nodiscard]] std::optional<Screen> screen() const override { return itemScreen; }

private:
    std::function<void(StatusItemClick)> handler_;
};

}  // namespace ovin
