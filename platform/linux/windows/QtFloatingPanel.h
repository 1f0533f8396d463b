#pragma once

#include "platform/Windows.h"
#include "platform/linux/windows/ViewWindow.h"

namespace ovin {

/// A tool window above all others and on all desktops. It does not take the keyboard when it is shown, but does when it is
/// clicked. The window manager decides whether it is visible beside full-screen windows.
class QtFloatingPanel final : public FloatingPanel {
public:
    QtFloatingPanel(const std::string& title, std::function<void(int tag)> clicked, std::function<void()> closed);
    ~QtFloatingPanel() override;

    void show(const View& content, const Placement& placement) override;
    void replace(const View& content) override;

private:
    /// Deleted by the event loop, because a button that handles a click may destroy this panel.
    ViewWindow* const window_;
    /// Whether it was given a place.
    bool hasOrigin_ = false;
};

}  // namespace ovin
