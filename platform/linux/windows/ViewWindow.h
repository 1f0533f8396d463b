#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Views.h"

namespace ovin {

/// A window of its own that shows one view in a size that the user cannot change.
class ViewWindow final : public QWidget {
public:
    struct Handlers {
        std::function<void(int tag)> clicked;
        /// May be empty.
        std::function<void()> closed;
    };

    /// Handlers are called by the event loop, so they may destroy anything, and no longer after `dismiss`.
    ViewWindow(const QString& title, Qt::WindowFlags flags, Handlers handlers);

    /// Shows another view at its fitting size. The focus stays on the button with the same tag. While a button is held down,
    /// the view waits for its release.
    void setView(const View& view);

    void scrollToEnd();

    /// Where the frame was when the window was last hidden, by this program or another; nothing before that.
    [[nodiscard]] std::optional<QPoint> lastPosition() const { return lastPosition_; }

    /// Removes the window from the screen at once, and deletes it when the event loop runs next.
    void dismiss();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// Whether a button of the content is held down; shows the waiting view when it is released.
    [[nodiscard]] bool awaitsRelease();
    void showWaiting();
    void giveFirstFocus();
    void keepFocus(const QWidget* previous);

    std::shared_ptr<const Handlers> handlers_;
    QWidget* content_ = nullptr;
    std::optional<View> waiting_;
    std::optional<QPoint> lastPosition_;
};

}  // namespace ovin
