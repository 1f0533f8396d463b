#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Views.h"

namespace ovin {

/// A panel at the level of the status bar: borderless, clear, with a shadow, on every space and beside full-screen windows.
/// It never takes the focus from the application that the user works with, and stays when that one changes. Goes when it is
/// destroyed. Main thread only.
class LedgePanel {
public:
    LedgePanel() = default;
    LedgePanel(const LedgePanel&) = delete;
    LedgePanel& operator=(const LedgePanel&) = delete;
    virtual ~LedgePanel() = default;

    /// Shows `content`, in place of what was shown before, at `frame` in global coordinates. `clicked` is told of the clicks
    /// on the buttons of this content, by their tags, also of one that is still on its way when other content has taken its
    /// place. Nobody is told of a click after the panel has been destroyed.
    virtual void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked) = 0;
};

/// A window with a title bar that shows neither title nor buttons: a page to read and to put away. Hidden until it is shown;
/// goes when it is destroyed. Main thread only.
class InformationWindow {
public:
    InformationWindow() = default;
    InformationWindow(const InformationWindow&) = delete;
    InformationWindow& operator=(const InformationWindow&) = delete;
    virtual ~InformationWindow() = default;

    /// Brings the window to the front and gives it the keyboard, in the centre of the screen when it is shown for the first
    /// time, and where the user left it otherwise.
    virtual void show() = 0;

    /// Puts the window away; it can be shown again.
    virtual void close() = 0;

    /// Scrolls the page to its end.
    virtual void scrollToEnd() = 0;
};

/// A panel with a title bar and a close button that floats above the windows of all applications, on every space and beside
/// full-screen windows, without taking the focus when it is shown. Goes silently when it is destroyed. Main thread only.
class FloatingPanel {
public:
    FloatingPanel() = default;
    FloatingPanel(const FloatingPanel&) = delete;
    FloatingPanel& operator=(const FloatingPanel&) = delete;
    virtual ~FloatingPanel() = default;

    /// Where the top left corner of a panel of this size goes, in global coordinates.
    using Placement = std::function<Point(Size size)>;

    /// Shows `content` in the size that it takes, where `placement` says; an empty one leaves that to the system.
    virtual void show(const View& content, const Placement& placement) = 0;

    /// Shows other content in the size that it takes. The top left corner stays where it is, also after the user has moved
    /// the panel, and the button that has the keyboard keeps it: the one with the same tag.
    virtual void replace(const View& content) = 0;
};

/// Makes windows; never null. `clicked` is called with the tag of a button that the user clicked or pressed by its key; it
/// may destroy the window, and no handler is called once its window is gone. Main thread only.
class Windows {
public:
    virtual ~Windows() = default;

    /// The size that a view takes when nothing holds it back.
    [[nodiscard]] virtual Size fittingSize(const View& view) const = 0;

    /// A panel that is not shown yet.
    [[nodiscard]] virtual std::unique_ptr<LedgePanel> makeLedgePanel() = 0;

    /// A window in the size that `content` takes. `title` is what the system calls the window in lists of windows.
    [[nodiscard]] virtual std::unique_ptr<InformationWindow> makeInformationWindow(const std::string& title,
                                                                                   const View& content,
                                                                                   std::function<void(int tag)> clicked) = 0;

    /// `closed` is called when the user has closed the panel with its close button; it may destroy the panel.
    [[nodiscard]] virtual std::unique_ptr<FloatingPanel> makeFloatingPanel(const std::string& title,
                                                                           std::function<void(int tag)> clicked,
                                                                           std::function<void()> closed) = 0;
};

}  // namespace ovin
