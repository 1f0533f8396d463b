#pragma once

#include "platform/Windows.h"
#include "platform/linux/ViewWindow.h"

namespace ovin {

/// A page in an ordinary window with a title but without the buttons beside it, where the window manager can do without.
/// Where it cannot, its close button puts the page away.
class QtInformationWindow final : public InformationWindow {
public:
    QtInformationWindow(const std::string& title, const View& content, Size size, std::function<void(int tag)> clicked);
    ~QtInformationWindow() override;

    void show() override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;
    void scrollToEnd() override;
    void replace(const View& content, Size size) override { window_->setView(content, size); }

private:
    void place();

    /// Deleted by the event loop: this window may go while a button deals with a click.
    ViewWindow* const window_;
};

}  // namespace ovin
