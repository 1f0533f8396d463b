#include "platform/memory/MemoryWindows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace ovin {
namespace {

constexpr double characterWidth = 7;
constexpr double lineHeight = 16;

/// Counts code points: all bytes that do not continue one.
std::ptrdiff_t lengthOf(const std::string& text) {
    return std::count_if(text.begin(), text.end(),
                         [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
}

Size textSize(const AttributedText& text) {
    std::ptrdiff_t length = 0;
    for (const TextRun& run : text) length += lengthOf(run.text);
    return {characterWidth * static_cast<double>(length), lineHeight};
}

/// The size that a view takes when nothing limits it.
struct Measure {
    Size operator()(const Label& label) const {
        const Size line = textSize(label.text);
        if (!label.wrapWidth) return line;
        const double lines = std::max(1.0, std::ceil(line.width / *label.wrapWidth));
        return {*label.wrapWidth, lines * lineHeight + (lines - 1) * label.lineSpacing};
    }

    Size operator()(const Button& button) const {
        Size size = textSize(button.title);
        if (button.image) size.width += button.image->size.width;
        return {button.width.value_or(size.width), button.height.value_or(size.height)};
    }

    Size operator()(const PushButton& button) const {
        const Size size = textSize({{button.title, {}, {}}});
        return {button.width.value_or(size.width), size.height};
    }

    Size operator()(const DisclosureTriangle&) const { return {lineHeight, lineHeight}; }
    Size operator()(const TextButton& button) const { return textSize(button.title); }
    Size operator()(const ImageView& image) const { return image.size; }
    Size operator()(const Separator& separator) const { return {separator.width, 1}; }
    Size operator()(const Spacer& spacer) const { return {1, spacer.height}; }
    Size operator()(const FlexibleSpace&) const { return {}; }

    Size operator()(const Stack& stack) const {
        const bool isHorizontal = stack.orientation == Stack::Orientation::horizontal;
        Size total;
        double gap = 0;
        for (const View& view : stack.views) {
            if (view.isHidden) continue;
            const Size size = std::visit(*this, view.content);
            total.width = isHorizontal ? total.width + gap + size.width : std::max(total.width, size.width);
            total.height = isHorizontal ? std::max(total.height, size.height) : total.height + gap + size.height;
            gap = view.spacingAfter.value_or(stack.spacing);
        }
        total.width += stack.insets.left + stack.insets.right;
        return {stack.width.value_or(total.width), total.height + stack.insets.top + stack.insets.bottom};
    }

    Size operator()(const ScrollView& scroll) const { return scroll.size; }
    Size operator()(const MenuBackground& background) const { return std::visit(*this, background.content->content); }
};

}  // namespace

class MemoryWindows::Panel final : public LedgePanel {
public:
    explicit Panel(MemoryWindows& windows) : windows_(windows) {}
    ~Panel() override {
        if (windows_.panel_ == this) windows_.ledge_.reset();
    }

    void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked,
              std::function<void(int tag)> menuRequested) override {
        const auto whileAlive = [this](const std::function<void(int tag)>& handler) {
            return [alive = std::weak_ptr(alive_), handler](int tag) {
                if (!alive.expired() && handler) handler(tag);
            };
        };
        windows_.ledge_ = Ledge{content, frame, whileAlive(clicked), whileAlive(menuRequested), dismissed_};
        windows_.panel_ = this;
        ++windows_.layoutCount_;
    }

    void onDismissal(std::function<void()> handler) override { dismissed_ = std::move(handler); }

private:
    MemoryWindows& windows_;
    std::function<void()> dismissed_;
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

class MemoryWindows::InformationPage final : public InformationWindow {
public:
    InformationPage(MemoryWindows& windows, Information description, std::function<void(int tag)> whenClicked)
        : information(std::move(description)), clicked(std::move(whenClicked)), windows_(windows) {
        windows_.pages_.push_back(this);
    }
    ~InformationPage() override { std::erase(windows_.pages_, this); }

    void show() override {
        information.isOpen = true;
        ++information.showCount;
    }
    void close() override { information.isOpen = false; }
    void scrollToEnd() override { information.isAtEnd = true; }

    Information information;
    const std::function<void(int tag)> clicked;

private:
    MemoryWindows& windows_;
};

class MemoryWindows::FloatingCard final : public FloatingPanel {
public:
    FloatingCard(MemoryWindows& windows, std::string title, std::function<void(int tag)> whenClicked,
                 std::function<void()> whenClosed)
        : clicked(std::move(whenClicked)), closed(std::move(whenClosed)), windows_(windows) {
        floating.title = std::move(title);
        windows_.hadTwoCards_ |= windows_.card_ != nullptr;
        windows_.card_ = this;
    }
    ~FloatingCard() override {
        if (windows_.card_ == this) windows_.card_ = nullptr;
    }

    void show(const View& content, const Placement& placement) override {
        describe(content);
        if (placement) floating.origin = placement(floating.size);
        floating.isShown = true;
    }
    void replace(const View& content) override {
        describe(content);
        ++floating.replaceCount;
    }

    Floating floating;
    const std::function<void(int tag)> clicked;
    const std::function<void()> closed;

private:
    void describe(const View& content) {
        floating.content = content;
        floating.size = windows_.fittingSize(content);
    }

    MemoryWindows& windows_;
};

void MemoryWindows::click(int tag) {
    if (!ledge_) return;
    // A copy, because the handler may destroy the panel, and itself with it.
    const auto clicked = ledge_->clicked;
    clicked(tag);
}

void MemoryWindows::rightClick(int tag) {
    if (!ledge_) return;
    // A copy, because the handler may destroy the panel, and itself with it.
    const auto requested = ledge_->menuRequested;
    requested(tag);
}

void MemoryWindows::dismissLedge() {
    if (!ledge_) return;
    // A copy, because the handler may destroy the panel, and itself with it.
    const auto dismissed = ledge_->dismissed;
    dismissed();
}

Size MemoryWindows::fittingSize(const View& view) const { return std::visit(Measure{}, view.content); }

std::unique_ptr<LedgePanel> MemoryWindows::makeLedgePanel() {
    ++panelCount_;
    return std::make_unique<Panel>(*this);
}

std::vector<MemoryWindows::Information> MemoryWindows::informationWindows() const {
    std::vector<Information> all;
    for (const InformationPage* page : pages_) all.push_back(page->information);
    return all;
}

void MemoryWindows::click(const std::string& title, int tag) {
    for (const InformationPage* page : pages_) {
        if (page->information.title != title) continue;
        // A copy, because the handler may destroy the window, and itself with it.
        const auto clicked = page->clicked;
        return clicked(tag);
    }
}

std::optional<MemoryWindows::Floating> MemoryWindows::floatingPanel() const {
    if (card_ == nullptr) return std::nullopt;
    return card_->floating;
}

void MemoryWindows::clickFloatingPanel(int tag) {
    if (card_ == nullptr) return;
    const auto clicked = card_->clicked;
    clicked(tag);
}

void MemoryWindows::moveFloatingPanel(Point origin) {
    if (card_ != nullptr) card_->floating.origin = origin;
}

void MemoryWindows::closeFloatingPanel() {
    if (card_ == nullptr) return;
    card_->floating.isShown = false;
    const auto closed = card_->closed;
    closed();
}

std::unique_ptr<InformationWindow> MemoryWindows::makeInformationWindow(const std::string& title, const View& content,
                                                                        std::function<void(int tag)> clicked) {
    return std::make_unique<InformationPage>(*this, Information{title, content, fittingSize(content)}, std::move(clicked));
}

std::unique_ptr<FloatingPanel> MemoryWindows::makeFloatingPanel(const std::string& title,
                                                                std::function<void(int tag)> clicked,
                                                                std::function<void()> closed) {
    return std::make_unique<FloatingCard>(*this, title, std::move(clicked), std::move(closed));
}

}  // namespace ovin
