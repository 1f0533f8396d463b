#pragma once

#include <QApplication>
#include <QBoxLayout>
#include <QFont>
#include <QPalette>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Views.h"
#include "platform/linux/displays/EscapeKey.h"

namespace ovin {

/// A view, and what of the desktop the widgets take over that show it.
struct LaidOutView {
    View view;
    QFont font = QApplication::font();
    QPalette palette = QApplication::palette();

    friend bool operator==(const LaidOutView&, const LaidOutView&) = default;
};

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

    /// What the event loop calls with the tag of a button of the ledge.
    using TagHandler = std::function<void(int tag)>;

    /// Sets what the event loop calls when the user presses the Escape key or the system closes the window, until `dismiss`.
    void onDismissal(std::function<void()> handler);

    /// Shows `content`, with the widgets of the last time when they show the same. `clicked` is for the left mouse button,
    /// `menuRequested` for the right one. The window has been painted when this returns. If it has come up under the
    /// pointer, presses do nothing for the time of a double click: the second press of one on whatever opened the ledge is
    /// meant for no button of it.
    void present(const View& content, const QRect& frame, TagHandler clicked, TagHandler menuRequested);

    /// Removes it from the screen, and drops clicks that have not been told of. The widgets stay for the next time.
    void dismiss();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void paintNow();
    void ignoreDoubleClick(const QRect& frame);
    void startToolTip();
    void tellOfDismissal();
    void dropContent();

    QHBoxLayout layout_{this};
    /// What the content shows.
    std::optional<LaidOutView> shown_;
    QWidget* content_ = nullptr;
    /// That of the content, which keeps it: a click is for what its button showed, also once other content is shown.
    std::shared_ptr<TagHandler> clicked_;
    TagHandler menuRequested_;
    /// What the right button was pressed on, until it is released.
    QPointer<QWidget> pressed_;
    /// Runs while presses do nothing.
    QTimer doubleClick_;
    std::shared_ptr<const std::function<void()>> dismissed_;
    std::unique_ptr<EscapeKey> escape_;
};

}  // namespace ovin
