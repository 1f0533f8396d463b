#pragma once

#include <functional>

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
    void scrollToEnd() override;

private:
    void place();

    /// Deleted by the event loop: this window may go while a button deals with a click.
    ViewWindow* const window_;
};

}  // namespace ovin
