#include "platform/linux/views/MeasuredView.h"

#include <utility>

#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/StackLayout.h"

namespace ovin {
namespace {

using Clicked = std::function<void(int tag)>;

}  // namespace

struct MeasuredView::Widgets {
    explicit Widgets(const View& measured)
        : view(measured), root(makeWidget(view, [clicked = clicked](int tag) { (*clicked)(tag); })) {}

    const View view;
    /// Holds no handler until the widgets are taken.
    const std::shared_ptr<Clicked> clicked = std::make_shared<Clicked>();
    std::unique_ptr<QWidget> root;
};

MeasuredView::MeasuredView() {
    end_.setSingleShot(true);
    QObject::connect(&end_, &QTimer::timeout, [this] { widgets_.reset(); });
}

MeasuredView::~MeasuredView() = default;

QSize MeasuredView::fit(const View& view) {
    widgets_ = std::make_unique<Widgets>(view);
    end_.start(0);
    return view.isHidden ? QSize(0, 0) : naturalSize(*widgets_->root);
}

QWidget* MeasuredView::take(const View& view, const Clicked& clicked) {
    if (!widgets_ || widgets_->view != view) return nullptr;
    const auto taken = std::move(widgets_);
    *taken->clicked = clicked;
    return taken->root.release();
}

}  // namespace ovin
