#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/StatusItem.h"

namespace ovin {

/// A status bar that holds this program's item, which a test clicks and looks at.
class MemoryStatusBar final : public StatusBar {
public:
    /// The item shows either an image or a symbol.
    std::optional<DrawnImage> image;
    std::string symbol;
    std::string accessibilityDescription;
    std::optional<Menu> menu;
    /// Makes the menu of a bar that opens menus by itself.
    std::function<Menu()> barMenu;
    bool isDrawn = true;
    /// Runs when a menu is shown.
    std::function<void()> showingMenu;
    std::string autosaveName;
    int itemCount = 0;
    /// The place of the item; nothing when it has no button, or the button no window.
    std::optional<Screen> itemScreen;
    bool hasButton = true;
    std::set<std::string, std::less<>> symbols{"checkmark.circle.fill"};

    void click(StatusItemClick click) const {
        if (const auto handler = handler_) handler(click);
    }

    /// Chooses an entry of the menu that is shown.
    void choose(const std::string& title) const {
        for (const auto& entry : menu.value()) {
            if (entry && entry->title == title) return entry->action();
        }
    }

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override { return std::make_unique<Item>(*this); }

private:
    class Item final : public StatusItem {
    public:
        explicit Item(MemoryStatusBar& bar) : bar_(bar) { ++bar_.itemCount; }
        ~Item() override {
            --bar_.itemCount;
            bar_.handler_ = nullptr;
            bar_.barMenu = nullptr;
        }

        void setAutosaveName(const std::string& name) override { bar_.autosaveName = name; }
        void onClick(std::function<void(StatusItemClick)> handler) override { bar_.handler_ = std::move(handler); }
        void setImage(const DrawnImage& drawn) override {
            if (!bar_.hasButton) return;
            bar_.image = drawn;
            bar_.symbol.clear();
            bar_.accessibilityDescription = drawn.accessibilityDescription;
        }
        [[nodiscard]] bool setSymbol(std::string_view name, const std::string& description) override {
            if (!bar_.hasButton || !bar_.symbols.contains(name)) return false;
            bar_.image.reset();
            bar_.symbol = name;
            bar_.accessibilityDescription = description;
            return true;
        }
        void showMenu(const Menu& shown) override {
            bar_.menu = shown;
            if (bar_.showingMenu) bar_.showingMenu();
        }
        void setMenu(std::function<Menu()> made) override { bar_.barMenu = std::move(made); }
        [[nodiscard]] bool isDrawn() const override { return bar_.isDrawn; }
        [[nodiscard]] std::optional<Screen> screen() const override {
            return bar_.hasButton ? bar_.itemScreen : std::nullopt;
        }

    private:
        MemoryStatusBar& bar_;
    };

    std::function<void(StatusItemClick)> handler_;
};

}  // namespace ovin
