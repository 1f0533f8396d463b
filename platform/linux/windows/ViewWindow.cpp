#include "platform/linux/windows/ViewWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QWindow>
#include <utility>
#include <vector>

#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/views/PressButton.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/StackLayout.h"
#include "platform/linux/views/UprightScroller.h"

namespace ovin {
namespace {

/// The first widget of a type that meets the condition: `root` itself or one below it.
template <typename Widget, typename Condition>
Widget* first(QWidget* root, const Condition& condition) {
    if (auto* const itself = dynamic_cast<Widget*>(root); itself != nullptr && condition(*itself)) return itself;
    for (QWidget* const child : root->findChildren<QWidget*>()) {
        if (auto* const widget = dynamic_cast<Widget*>(child); widget != nullptr && condition(*widget)) return widget;
    }
    return nullptr;
}

UprightScroller* page(QWidget* root) {
    return first<UprightScroller>(root, [](const UprightScroller&) { return true; });
}

/// Puts the pages on the level of the floating panels while there are any: a page below a panel would be hidden by it, and
/// no click could bring it forward. `hidden` counts as hidden already.
void levelPages(const ViewWindow* hidden) {
    std::vector<ViewWindow*> pages;
    bool isBesideAPanel = false;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const window = dynamic_cast<ViewWindow*>(widget);
        if (window == nullptr || window == hidden || !window->isVisible()) continue;
        if (window->windowType() == Qt::Tool) {
            isBesideAPanel = true;
        } else {
            pages.push_back(window);
        }
    }
    for (ViewWindow* const page : pages) {
        if (QWindow* const native = page->windowHandle()) native->setFlag(Qt::WindowStaysOnTopHint, isBesideAPanel);
    }
}

}  // namespace

ViewWindow::ViewWindow(const QString& title, Qt::WindowFlags flags, Handlers handlers)
    : QWidget(nullptr, flags), handlers_(std::make_shared<const Handlers>(std::move(handlers))) {
    setWindowTitle(title);
    setAccessibleName(title);
    setWindowIcon(ownWindowIcon());
}

void ViewWindow::setView(const View& view) {
    if (awaitsRelease()) {
        waiting_ = view;
        return;
    }
    QWidget* const previous = content_;
    // Keeps the handlers alive during the call, whatever it destroys.
    content_ = makeWidget(view, [weak = std::weak_ptr(handlers_)](int tag) {
        if (const auto handlers = weak.lock()) handlers->clicked(tag);
    });
    content_->setParent(this);
    setFixedSize(naturalSize(*content_));
    content_->setGeometry(rect());
    if (!view.isHidden) content_->show();
    if (previous == nullptr) return giveFirstFocus();
    keepFocus(focusWidget());
    previous->hide();
    previous->deleteLater();
}

bool ViewWindow::awaitsRelease() {
    // The release of a button in a hidden window would not be reported.
    if (content_ == nullptr || !isVisible()) return false;
    auto* const button = first<PressButton>(content_, [](const PressButton& one) { return one.isDown(); });
    if (button == nullptr) return false;
    // The button reports the release before the click, but the click is delivered even when the button is gone.
    if (!waiting_) connect(button, &PressButton::released, this, &ViewWindow::showWaiting, Qt::QueuedConnection);
    return true;
}

void ViewWindow::showWaiting() {
    const auto waiting = std::exchange(waiting_, std::nullopt);
    if (waiting) setView(*waiting);
}

void ViewWindow::keepFocus(const QWidget* previous) {
    const auto* const button = dynamic_cast<const PressButton*>(previous);
    if (button == nullptr) return giveFirstFocus();
    const auto isSame = [tag = button->tag()](const PressButton& other) { return other.tag() == tag; };
    PressButton* const same = first<PressButton>(content_, isSame);
    if (same == nullptr) return giveFirstFocus();
    same->setFocus(button->showsFocus() ? Qt::TabFocusReason : Qt::MouseFocusReason);
}

/// A page that scrolls gets the focus, so that its keys work at once; the keys of the window's buttons work anyway.
void ViewWindow::giveFirstFocus() {
    if (UprightScroller* const scroller = page(content_)) return scroller->setFocus(Qt::OtherFocusReason);
    auto* const button = first<PushButtonWidget>(content_, [](const PushButtonWidget& one) { return one.isDefault(); });
    if (button != nullptr) button->setFocus(Qt::MouseFocusReason);
}

void ViewWindow::scrollToEnd() {
    if (UprightScroller* const scroller = page(content_)) scroller->scrollToEnd();
}

void ViewWindow::dismiss() {
    handlers_.reset();
    waiting_.reset();
    hide();
    deleteLater();
}

void ViewWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (!handlers_ || !handlers_->closed) return;
    QMetaObject::invokeMethod(
        this,
        [weak = std::weak_ptr(handlers_)] {
            if (const auto handlers = weak.lock()) handlers->closed();
        },
        Qt::QueuedConnection);
}

/// Keys that no widget handled go to the page; no key closes the window except through its buttons.
void ViewWindow::keyPressEvent(QKeyEvent* event) {
    UprightScroller* const scroller = page(content_);
    event->setAccepted(scroller != nullptr && scroller->scrollBy(*event));
}

void ViewWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    content_->setGeometry(rect());
    levelPages(nullptr);
}

void ViewWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    levelPages(this);
    lastPosition_ = pos();
    showWaiting();
}

}  // namespace ovin
