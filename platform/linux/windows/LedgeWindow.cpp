#include "platform/linux/windows/LedgeWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QMouseEvent>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "platform/linux/views/ItemButton.h"
#include "platform/linux/views/MenuBackgroundWidget.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/windows/WindowManager.h"

namespace ovin {

LedgeWindow::LedgeWindow()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::X11BypassWindowManagerHint | Qt::ToolTip) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    // By default only active windows show tool tips, and this one never becomes active.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground, WindowManager::composesWindows());
    setWindowTitle("Ovin");
    setAccessibleName("Ovin");
    layout_.setContentsMargins(0, 0, 0, 0);
    // By default the minimum size of the old content would keep the window too large for smaller new content.
    layout_.setSizeConstraint(QLayout::SetNoConstraint);
    doubleClick_.setSingleShot(true);
    connect(&doubleClick_, &QTimer::timeout, this, [this] {
        if (content_ != nullptr) content_->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    });
}

bool LedgeWindow::isUpToDate() const {
    return testAttribute(Qt::WA_TranslucentBackground) == WindowManager::composesWindows();
}

void LedgeWindow::present(const View& content, const QRect& frame, TagHandler clicked, TagHandler menuRequested) {
    const bool wasVisible = isVisible();
    // The toolkit hears of no release after a window has gone, and takes what was pressed there for pressed as long as it
    // lives.
    const bool isPressed = QGuiApplication::mouseButtons() != Qt::NoButton;
    if (LaidOutView laidOut{content}; wasVisible || isPressed || shown_ != laidOut) {
        dropContent();
        clicked_ = std::make_shared<TagHandler>();
        content_ = makeWidget(content, [clicked = clicked_](int tag) {
            // Called from a copy, because the handler may close the ledge.
            if (const TagHandler handler = *clicked) handler(tag);
        });
        layout_.addWidget(content_);
        shown_ = std::move(laidOut);
    }
    *clicked_ = std::move(clicked);
    menuRequested_ = std::move(menuRequested);
    setGeometry(frame);
    // In a window that is shown already, both would otherwise wait for the event loop, and it would be painted empty now.
    content_->show();
    layout_.activate();
    show();
    raise();
    paintNow();
    // What follows asks the X server, and the first frame does not wait for that.
    if (wasVisible)
        startToolTip();
    else
        ignoreDoubleClick(frame);
    content_->setAttribute(Qt::WA_TransparentForMouseEvents, doubleClick_.isActive());
    // A window without the keyboard hears of no key.
    if (!escape_) escape_ = EscapeKey::grab([this] { tellOfDismissal(); });
}

void LedgeWindow::ignoreDoubleClick(const QRect& frame) {
    if (frame.contains(QCursor::pos())) doubleClick_.start(QApplication::doubleClickInterval());
}

/// The toolkit waits for the mouse to move before it shows a tool tip, and here the pointer has come upon a new button
/// without.
void LedgeWindow::startToolTip() {
    QWidget* const below = childAt(mapFromGlobal(QCursor::pos()));
    if (below == nullptr) return;
    QTimer::singleShot(style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay), below, [below] {
        const bool isFree = below->underMouse() && QApplication::activePopupWidget() == nullptr;
        if (isFree) QToolTip::showText(QCursor::pos(), below->toolTip(), below);
    });
}

void LedgeWindow::onDismissal(std::function<void()> handler) {
    dismissed_ = std::make_shared<const std::function<void()>>(std::move(handler));
}

void LedgeWindow::tellOfDismissal() {
    QMetaObject::invokeMethod(
        this,
        [weak = std::weak_ptr(dismissed_)] {
            if (const auto dismissed = weak.lock()) (*dismissed)();
        },
        Qt::QueuedConnection);
}

/// A window that no window manager manages may still be closed, by a Wayland compositor or by a program of the user.
void LedgeWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    tellOfDismissal();
}

/// Buttons leave the right mouse button to their window.
void LedgeWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) pressed_ = childAt(event->position().toPoint());
}

/// Only now, because while the button is down no program can open a menu.
void LedgeWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton || !menuRequested_) return;
    auto* const button = dynamic_cast<ItemButton*>(childAt(event->position().toPoint()));
    if (button == nullptr || button != pressed_) return;
    // Queued, because the handler may delete the button.
    QMetaObject::invokeMethod(
        button, [requested = menuRequested_, tag = button->tag()] { requested(tag); }, Qt::QueuedConnection);
}

void LedgeWindow::dismiss() {
    dismissed_.reset();
    escape_.reset();
    doubleClick_.stop();
    hide();
    pressed_ = nullptr;
    // They may hold all that the ledge showed, and the next ledge may never come.
    if (clicked_) *clicked_ = nullptr;
    menuRequested_ = nullptr;
    for (QAbstractButton* const button : findChildren<QAbstractButton*>())
        QCoreApplication::removePostedEvents(button, QEvent::MetaCall);
}

void LedgeWindow::dropContent() {
    if (content_ == nullptr) return;
    // Hidden, because it would be painted until it is deleted.
    content_->hide();
    content_->deleteLater();
    layout_.removeWidget(content_);
    content_ = nullptr;
}

/// Paints without waiting for the X server's request, which is read only when the event loop runs again. No window manager
/// delays this window, so the server maps it at once and accepts what is drawn after that. Showing has posted a painting of
/// each widget, which would be a second one, and is left out.
void LedgeWindow::paintNow() {
    setAttribute(Qt::WA_Mapped);
    qApp->installEventFilter(this);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
    qApp->removeEventFilter(this);
    repaint();
}

bool LedgeWindow::eventFilter(QObject* object, QEvent* event) {
    return event->type() == QEvent::UpdateLater && object->isWidgetType() && static_cast<QWidget*>(object)->window() == this;
}

void LedgeWindow::resizeEvent(QResizeEvent*) {
    const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_);
    if (background == nullptr) return clearMask();
    const double radius = std::min(background->cornerRadius(), height() / 2.0);
    const bool isSmooth = testAttribute(Qt::WA_TranslucentBackground);
    setMask(roundedRegion(rect(), radius, isSmooth ? Coverage::touch : Coverage::middle));
}

}  // namespace ovin
