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

    /// Handlers are called by the event loop, and no longer once `dismiss` was called: they may destroy whatever they like.
    ViewWindow(const QString& title, Qt::WindowFlags flags, Handlers handlers);

    /// Shows another view, in the size that it takes. The button that has the keyboard keeps it, as the one with the same
    /// tag. One that is held down is let go first.
    void setView(const View& view);

    void scrollToEnd();

    /// Where its frame was when it was last put away, by whomever; nothing before.
    [[nodiscard]] std::optional<QPoint> lastPosition() const { return lastPosition_; }

    /// Takes the window from the screen at once, and deletes it when the event loop runs next.
    void dismiss();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// Whether a button of the content is held down; what waits is shown once it is not.
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
