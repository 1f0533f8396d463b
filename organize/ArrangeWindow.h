#pragma once

#include <functional>
#include <memory>

#include "organize/ArrangeView.h"
#include "platform/Platform.h"

namespace ovin {

/// The card that floats above everything while the display is widened: it tells the user what to do, and its Done button and
/// its close button end organizing. The card grows with the display, and so keeps about its usual size to the eye.
///
/// Main thread only.
class ArrangeWindow {
public:
    /// `onDone` is called when the user is done or has closed the window; it may close or destroy this object. Never empty.
    /// Everything behind `platform` must outlive the window.
    ArrangeWindow(const Platform& platform, std::function<void()> onDone);

    ArrangeWindow(const ArrangeWindow&) = delete;
    ArrangeWindow& operator=(const ArrangeWindow&) = delete;
    ~ArrangeWindow();

    /// Shows the window in place of any that was shown before, on the user's screen. `scale` is how many times wider the
    /// display is than usual.
    void show(double scale, bool allItemsFit);

    /// Warns that not all items fit, once per showing. Does nothing while the window is hidden.
    void addFitWarning();

    /// Shows the explanation; what the user has chosen for the next time stays.
    void expandCard();

    /// Hides the window silently.
    void close();

private:
    void clicked(int tag);
    void toggleCard();
    void doneClicked();
    void closedByUser();
    void describeAgain();

    const Platform platform_;
    const std::function<void()> onDone_;
    std::unique_ptr<FloatingPanel> panel_;
    /// What is shown; meaningless without a panel.
    ArrangeContent content_;
};

}  // namespace ovin
