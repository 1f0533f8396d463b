#pragma once

#include <QBoxLayout>
#include <QRect>
#include <QWidget>

namespace ovin {

/// A window without a frame that the window manager does not manage: so it stays above full-screen windows, takes no focus
/// and appears at once.
///
/// Its corners are smooth where windows are composed. Elsewhere smooth corners would need a picture of what lies below, and
/// Ovin takes no pictures of the screen.
class LedgeWindow final : public QWidget {
public:
    LedgeWindow();

    /// Whether it still suits the desktop: false when windows were not composed when it was made and are now, or the other
    /// way round.
    [[nodiscard]] bool isUpToDate() const;

    /// Takes ownership of `content` and shows it in place of the old content. The window has been painted when this returns.
    void present(QWidget* content, const QRect& frame);

    /// Removes it from the screen. The event loop deletes the content, because a button of it may be handling a click.
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
