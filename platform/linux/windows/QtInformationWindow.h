#pragma once

#include <functional>
#include <utility>

#include "platform/Windows.h"
#include "platform/linux/windows/ViewWindow.h"

namespace ovin {

/// A page in an ordinary window with a title but without the buttons beside it, where the window manager can do without.
/// Where it cannot, its close button puts the page away.
class QtInformationWindow final : public InformationWindow {
public:
    QtInformationWindow(const std::string& title, const View& content, std::function<void(int tag)> clicked);
    ~QtInformationWindow() override;

    void show() override;
    void close() override;
    [[nodiscard]] bool isOpen() const override;
    void onClose(std::function<void()> closed) override { closed_ = std::move(closed); }
    void scrollToEnd() override;
    void replace(const View& content) override { window_->setView(content); }

private:
    void place();
    void closedByUser();

    std::function<void()> closed_;

    /// Deleted by the event loop: this window may go while a button deals with a click.
    ViewWindow* const window_;
};

}  // namespace ovin
