#pragma once

#include <functional>

#include "platform/Windows.h"
#include "platform/linux/windows/ViewWindow.h"

namespace ovin {

/// A page in an ordinary window with a title but without title-bar buttons. Where the window manager shows a close button
/// all the same, it hides the page.
class QtInformationWindow final : public InformationWindow {
public:
    QtInformationWindow(const std::string& title, const View& content, std::function<void(int tag)> clicked);
    ~QtInformationWindow() override;

    void show() override;
    void close() override;
    void scrollToEnd() override;

private:
    void place();

    /// Deleted by the event loop, because a button that handles a click may destroy this window.
    ViewWindow* const window_;
};

}  // namespace ovin
