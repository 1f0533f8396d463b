#pragma once

#include "platform/Windows.h"
#include "platform/linux/windows/ViewWindow.h"

namespace ovin {

/// A tool window above all others and on all desktops. It leaves the keyboard where it is when it is shown, but takes it
/// when it is clicked. Whether it is seen beside full-screen windows is for the window manager to decide.
class QtFloatingPanel final : public FloatingPanel {
public:
    QtFloatingPanel(const std::string& title, std::function<void(int tag)> clicked, std::function<void()> closed);
    ~QtFloatingPanel() override;

    void show(const View& content, const Placement& placement) override;
    void replace(const View& content) override;

private:
    /// Deleted by the event loop: this panel may go while a button deals with a click.
    ViewWindow* const window_;
    /// Whether it was told where to stand.
    bool hasOrigin_ = false;
};

}  // namespace ovin
