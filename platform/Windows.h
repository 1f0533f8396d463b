#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Views.h"

namespace ovin {

/// A panel at the level of the status bar: borderless, clear, with a shadow, on every space and beside full-screen windows.
/// It never takes the focus from the application that the user works with, and stays when the user turns to another
/// application. Destroying it removes it from the screen. Main thread only.
class LedgePanel {
public:
    LedgePanel() = default;
    LedgePanel(const LedgePanel&) = delete;
    LedgePanel& operator=(const LedgePanel&) = delete;
    virtual ~LedgePanel() = default;

    /// Shows `content`, in place of what was shown before, at `frame` in global coordinates. `clicked` is called with the
    /// tag of a button of this content that was clicked, also when the click is delivered only after other content has taken
    /// its place, but never after the panel has been destroyed. `menuRequested` is called in the same way with the tag of a
    /// button whose menu the user asks for by a click with the right mouse button, but not where the system knows no such
    /// click.
    virtual void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked,
                      std::function<void(int tag)> menuRequested = {}) = 0;

    /// Sets what is called when the user puts the panel away with the Escape key, or the system does. Never called where
    /// neither can be.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a world that heeds it keeps it
    virtual void onDismissal(std::function<void()> /*handler*/) {}
};

/// A window with a title bar that shows neither title nor buttons: a page to read and to close. Hidden until `show`;
/// destroying it closes it. Main thread only.
class InformationWindow {
public:
    InformationWindow() = default;
    InformationWindow(const InformationWindow&) = delete;
    InformationWindow& operator=(const InformationWindow&) = delete;
    virtual ~InformationWindow() = default;

    /// Brings the window to the front and gives it the keyboard: the first time in the centre of the screen, later where the
    /// user left it.
    virtual void show() = 0;

    /// Hides the window; it can be shown again.
    virtual void close() = 0;

    /// Scrolls the page to its end.
    virtual void scrollToEnd() = 0;
};

/// A panel with a title bar and a close button that floats above the windows of all applications, on every space and beside
/// full-screen windows, without taking the focus when shown. Destroying it does not call `closed`. Main thread only.
class FloatingPanel {
public:
    FloatingPanel() = default;
    FloatingPanel(const FloatingPanel&) = delete;
    FloatingPanel& operator=(const FloatingPanel&) = delete;
    virtual ~FloatingPanel() = default;

    /// Returns where the top left corner of a panel of this size goes, in global coordinates.
    using Placement = std::function<Point(Size size)>;

    /// Shows `content` at its fitting size where `placement` says; an empty `placement` leaves the place to the system.
    virtual void show(const View& content, const Placement& placement) = 0;

    /// Shows other content at its fitting size. The top left corner stays where it is, also after the user has moved the
    /// panel, and the keyboard focus stays on the button with the same tag. While the user holds a button of the panel down,
    /// the content waits for the release; of several that wait, the last is shown. It is there at the latest when the event
    /// loop has next run with no mouse button held down and no menu of this process open.
    virtual void replace(const View& content) = 0;
};

/// Makes windows; never null. `clicked` is called with the tag of a button that the user clicked or pressed by its key.
/// Handlers may destroy their window, and are not called once it is gone. Main thread only.
class Windows {
public:
    virtual ~Windows() = default;

    /// The size that a view takes when nothing limits it.
    [[nodiscard]] virtual Size fittingSize(const View& view) const = 0;

    /// A panel that is not shown yet.
    [[nodiscard]] virtual std::unique_ptr<LedgePanel> makeLedgePanel() = 0;

    /// A window of the fitting size of `content`. `title` is its name in the system's lists of windows.
    [[nodiscard]] virtual std::unique_ptr<InformationWindow> makeInformationWindow(const std::string& title,
                                                                                   const View& content,
                                                                                   std::function<void(int tag)> clicked) = 0;

    /// `closed` is called when the user has closed the panel with its close button.
    [[nodiscard]] virtual std::unique_ptr<FloatingPanel> makeFloatingPanel(const std::string& title,
                                                                           std::function<void(int tag)> clicked,
                                                                           std::function<void()> closed) = 0;
};

}  // namespace ovin
