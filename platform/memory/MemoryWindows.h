#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Windows.h"

namespace ovin {

/// Windows that nobody sees: keeps what is shown, and lets a test click.
class MemoryWindows final : public Windows {
public:
    struct Ledge {
        View content;
        Rect frame;
        /// A test that keeps a copy has a queued click, which it can deliver after other content has taken this one's place.
        std::function<void(int tag)> clicked;
        std::function<void(int tag)> menuRequested;
        std::function<void()> dismissed;
    };

    /// The ledge that is shown now.
    [[nodiscard]] const std::optional<Ledge>& ledge() const { return ledge_; }
    /// How often any ledge was shown or laid out again.
    [[nodiscard]] int layoutCount() const { return layoutCount_; }
    /// How many panels have been made.
    [[nodiscard]] int panelCount() const { return panelCount_; }
    /// Clicks the button with this tag, which need not exist: a button may disappear while a click is queued.
    void click(int tag);
    /// The same with the right button.
    void rightClick(int tag);
    /// The user presses the Escape key.
    void dismissLedge();

    struct Information {
        std::string title;
        View content;
        Size size;
        bool isOpen = false;
        bool isAtEnd = false;
        int showCount = 0;
    };
    /// The information windows that exist, open or closed, in the order of their making.
    [[nodiscard]] std::vector<Information> informationWindows() const;
    /// Clicks a button of the information window with this title.
    void click(const std::string& title, int tag);

    struct Floating {
        std::string title;
        View content;
        Size size;
        /// Where its top left corner is; nothing when the system chose.
        std::optional<Point> origin;
        bool isShown = false;
        int replaceCount = 0;
    };
    /// The floating panel that exists.
    [[nodiscard]] std::optional<Floating> floatingPanel() const;
    /// Whether there have ever been two at once.
    [[nodiscard]] bool hadTwoFloatingPanels() const { return hadTwoCards_; }
    void clickFloatingPanel(int tag);
    /// The user moves the panel, or closes it with its close button.
    void moveFloatingPanel(Point origin);
    void closeFloatingPanel();

    /// Every character is seven points wide and every line sixteen high.
    [[nodiscard]] Size fittingSize(const View& view) const override;
    [[nodiscard]] std::unique_ptr<LedgePanel> makeLedgePanel() override;
    [[nodiscard]] std::unique_ptr<InformationWindow> makeInformationWindow(const std::string& title, const View& content,
                                                                           std::function<void(int tag)> clicked) override;
    [[nodiscard]] std::unique_ptr<FloatingPanel> makeFloatingPanel(const std::string& title,
                                                                   std::function<void(int tag)> clicked,
                                                                   std::function<void()> closed) override;

private:
    class Panel;
    class InformationPage;
    class FloatingCard;

    std::optional<Ledge> ledge_;
    /// Whose content that is.
    const Panel* panel_ = nullptr;
    std::vector<InformationPage*> pages_;
    FloatingCard* card_ = nullptr;
    bool hadTwoCards_ = false;
    int layoutCount_ = 0;
    int panelCount_ = 0;
};

}  // namespace ovin
