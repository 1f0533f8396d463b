#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Platform.h"

namespace ovin {

/// The one window about updates, which shows one page after the other, and the panel that reminds of one. Main thread only.
class UpdateWindow {
public:
    /// `clicked` is called with the tag of a button, or `UpdatePages::closed` once the user has closed the window, and may
    /// put window and panel away. Closing the panel is a click on "Later". Everything behind `platform` must outlive this
    /// object.
    UpdateWindow(const Platform& platform, std::function<void(int tag)> clicked)
        : platform_(platform), clicked_(std::move(clicked)) {}
    UpdateWindow(const UpdateWindow&) = delete;
    UpdateWindow& operator=(const UpdateWindow&) = delete;
    ~UpdateWindow() = default;

    /// Shows a page: in front of everything when the window is not open yet, and where it is otherwise.
    void show(const View& page);
    /// Does nothing while it is not open.
    void bringForward();

    /// Shows the panel in the top right corner of the screen, without taking the keyboard from anybody.
    void remind(const View& page);

    /// Puts everything away.
    void close();

private:
    const Platform platform_;
    const std::function<void(int tag)> clicked_;
    std::unique_ptr<InformationWindow> window_;
    std::unique_ptr<FloatingPanel> reminder_;
    View shown_{};
};

}  // namespace ovin
