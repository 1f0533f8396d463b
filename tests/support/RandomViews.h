#pragma once

#include <cstddef>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "platform/Views.h"
#include "tests/support/SamplePages.h"

/// Views for worlds to show, which tests compare with what is shown.
namespace ovin {

inline std::shared_ptr<const View> shared(View view) { return std::make_shared<const View>(std::move(view)); }

/// At least one of each kind, with lengths that are no whole pixels.
inline std::vector<View> oneOfEach(const Image& icon) {
    constexpr double third = 13 * 1.3;
    Stack stack = SamplePages::column({{Spacer{third}}, {Separator{third}}}, third, {0.4, 1.5, 2.6, 3.3});
    stack.width = 440 * 1.3;
    stack.box = Box{{SystemColor::label, 0.07}, {SRGB{0.1, 0.2, 0.3}}, 1.5, 6.5};
    Button button;
    button.title = {{"A", Font{third}, Color{SystemColor::systemOrange}}, {"&B", {}, {}, true}};
    button.image = SizedImage{icon, {16.4, 17.7}};
    button.imagePosition = Button::ImagePosition::leading;
    button.toolTip = "<b>A</b> & B";
    button.width = 80.5;
    button.height = 28.3;
    button.tag = -3;
    Button withoutTitle = button;
    withoutTitle.imagePosition = Button::ImagePosition::only;
    withoutTitle.width = {};
    Button withoutImage = button;
    withoutImage.imagePosition = Button::ImagePosition::none;
    withoutImage.height = {};
    return {{stack},
            {Label{{}, {}}},
            {Label{{{"One run", {}, {}}}, {}}},
            {Label{{{"", Font{9.1}, {}}, {"Two\nlines", Font{third}, Color{SRGB{1, 0, 0}, 0.5}, true}}, 99.6, 3.9}},
            {button},
            {withoutTitle},
            {withoutImage},
            {PushButton{"&Done <b>", Font{third, Font::Weight::bold}, KeyEquivalent::returnKey, true, 110.2, 4}},
            {PushButton{"Cancel", {}, KeyEquivalent::escape, false, {}, 5}},
            {DisclosureTriangle{false, {third}, "Details", 6}},
            {DisclosureTriangle{true, {11.5}, "", 7}},
            {TextButton{{{"A ", {}, {}}, {"link", Font{17}, Color{SystemColor::controlAccent}, true}}, "<i>Tip", true, 8}},
            {TextButton{{{"Text", {}, {}}}, "", false, 9}},
            {ImageView{icon, {56.5, 40.2}, 12.5, "Icon"}},
            {Separator{310.7}},
            {Spacer{7.5}},
            {FlexibleSpace{}},
            {ScrollView{{120.4, 60.6}, shared({Spacer{200}}), Stack::Orientation::vertical}},
            {ScrollView{{120.4, 60.6}, shared({Separator{400}})}},
            {MenuBackground{9.5, shared({Spacer{10}})}}};
}

/// One view in each kind of container, hidden in two of them.
inline std::vector<View> inEveryContainer(const View& view) {
    const View hidden{view.content, true, 0.5};
    return {{SamplePages::column({view, hidden, view}, 1)},
            SamplePages::row({hidden, view}),
            {ScrollView{{90, 90}, shared(view), Stack::Orientation::vertical}},
            {ScrollView{{90, 90}, shared(view)}},
            {MenuBackground{4, shared(view)}}};
}

/// Views made from the kinds above, in which a random number decides a few things.
class RandomViews {
public:
    RandomViews(unsigned seed, std::vector<View> leaves) : random_(seed), leaves_(std::move(leaves)) {}

    View view(int depth) {
        View result = depth > 0 && chance(0.6) ? View{stack(depth)} : leaf();
        if (depth > 0 && chance(0.1)) result = {MenuBackground{length(), shared(view(depth - 1))}};
        if (depth > 0 && chance(0.1)) {
            const auto orientation = chance(0.5) ? Stack::Orientation::vertical : Stack::Orientation::horizontal;
            result = {ScrollView{{length(), length()}, shared(view(depth - 1)), orientation}};
        }
        result.isHidden = chance(0.15);
        if (chance(0.3)) result.spacingAfter = length() / 10;
        return result;
    }

private:
    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
    double length() { return std::uniform_real_distribution(0.0, 300.0)(random_); }
    View leaf() { return leaves_[std::uniform_int_distribution<std::size_t>(0, leaves_.size() - 1)(random_)]; }

    Stack stack(int depth) {
        Stack result;
        result.orientation = chance(0.5) ? Stack::Orientation::vertical : Stack::Orientation::horizontal;
        result.alignment = static_cast<Stack::Alignment>(std::uniform_int_distribution(0, 2)(random_));
        result.spacing = length() / 10;
        result.insets = {length() / 10, length() / 10, length() / 10, length() / 10};
        if (chance(0.3)) result.width = length();
        if (chance(0.3)) result.box = Box{{SystemColor::separator}, {SystemColor::label}, length() / 100, length() / 20};
        const int count = std::uniform_int_distribution(0, 4)(random_);
        for (int i = 0; i < count; ++i) result.views.push_back(view(depth - 1));
        return result;
    }

    std::mt19937 random_;
    const std::vector<View> leaves_;
};

}  // namespace ovin
