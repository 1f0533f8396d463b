#pragma once

#include <QBoxLayout>
#include <QRect>
#include <QWidget>

namespace ovin {

/// A window without a frame that is none of the window manager's business, which is how it stays above full-screen windows,
/// takes no focus and appears at once.
///
/// Its corners are smooth where windows are composed. Elsewhere that would take a picture of what lies below, and Ovin takes
/// no pictures of the screen.
class LedgeWindow final : public QWidget {
public:
    LedgeWindow();

    /// Whether it still suits the desktop: windows may be composed now, and not have been when it was made, or the other way
    /// round.
    [[nodiscard]] bool isUpToDate() const;

    /// Shows `content`, which belongs to it from now on, in place of what it showed before. It has been painted when this
    /// returns.
    void present(QWidget* content, const QRect& frame);

    /// Takes it from the screen. What it showed is deleted by the event loop: a button of that may be dealing with a click.
    void dismiss();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void paintNow();
    void dropContent();

    QHBoxLayout layout_{this};
    QWidget* content_ = nullptr;
};

}  // namespace ovin
