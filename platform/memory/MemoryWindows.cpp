#include "platform/memory/MemoryWindows.h"

#include <algorithm>
#include <utility>

namespace ovin {
namespace {

constexpr double characterWidth = 7;
constexpr double lineHeight = 16;

Size textSize(const AttributedText& text) {
    std::size_t length = 0;
    for (const TextRun& run : text) length += run.text.size();
    return {characterWidth * static_cast<double>(length), lineHeight};
}

/// How much room a view takes that nothing holds back.
struct Measure {
    Size operator()(const Label& label) const { return textSize(label.text); }

    Size operator()(const Button& button) const {
        Size size = textSize(button.title);
        if (button.image) size.width += button.image->size.width;
        return {button.width.value_or(size.width), button.height.value_or(size.height)};
    }

    Size operator()(const Stack& stack) const {
        const bool isHorizontal = stack.orientation == Stack::Orientation::horizontal;
        Size total;
        for (const View& view : stack.views) {
            const Size size = std::visit(*this, view.content);
            total.width = isHorizontal ? total.width + size.width : std::max(total.width, size.width);
            total.height = isHorizontal ? std::max(total.height, size.height) : total.height + size.height;
        }
        const double gaps = stack.views.empty() ? 0 : stack.spacing * static_cast<double>(stack.views.size() - 1);
        (isHorizontal ? total.width : total.height) += gaps;
        return {total.width + stack.insets.left + stack.insets.right, total.height + stack.insets.top + stack.insets.bottom};
    }

    Size operator()(const ScrollView& scroll) const { return scroll.size; }
    Size operator()(const MenuBackground& background) const { return std::visit(*this, background.content->content); }
};

}  // namespace

class MemoryWindows::Panel final : public LedgePanel {
public:
    explicit Panel(MemoryWindows& windows) : windows_(windows) {}
    ~Panel() override {
        windows_.ledge_.reset();
        windows_.clicked_ = nullptr;
    }

    void show(const View& content, const Rect& frame) override {
        windows_.ledge_ = Ledge{content, frame};
        ++windows_.layoutCount_;
    }

private:
    MemoryWindows& windows_;
};

void MemoryWindows::click(int tag) {
    // The handler may destroy the panel, and what holds the handler with it.
    const auto clicked = clicked_;
    if (clicked) clicked(tag);
}

Size MemoryWindows::fittingSize(const View& view) const { return std::visit(Measure{}, view.content); }

std::unique_ptr<LedgePanel> MemoryWindows::makeLedgePanel(std::function<void(int tag)> clicked) {
    ++panelCount_;
    clicked_ = std::move(clicked);
    return std::make_unique<Panel>(*this);
}

}  // namespace ovin
