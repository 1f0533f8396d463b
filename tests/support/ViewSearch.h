#pragma once

#include <string>
#include <vector>

#include "platform/Views.h"

namespace ovin {

/// All views of a kind below a view, itself included, in the order in which they are seen; also those in scroll views.
template <typename Kind>
void collectViews(const View& view, std::vector<Kind>& found) {
    if (const auto* match = std::get_if<Kind>(&view.content)) found.push_back(*match);
    if (const auto* stack = std::get_if<Stack>(&view.content)) {
        for (const View& child : stack->views) collectViews(child, found);
    } else if (const auto* scroll = std::get_if<ScrollView>(&view.content)) {
        collectViews(*scroll->content, found);
    } else if (const auto* background = std::get_if<MenuBackground>(&view.content)) {
        collectViews(*background->content, found);
    }
}

template <typename Kind>
[[nodiscard]] std::vector<Kind> viewsOf(const View& view) {
    std::vector<Kind> found;
    collectViews(view, found);
    return found;
}

/// What a text says, whatever it looks like.
[[nodiscard]] inline std::string plainText(const AttributedText& text) {
    std::string result;
    for (const TextRun& run : text) result += run.text;
    return result;
}

/// What the labels say, in the order in which they are seen.
[[nodiscard]] inline std::vector<std::string> labelTexts(const View& view) {
    std::vector<std::string> texts;
    for (const Label& label : viewsOf<Label>(view)) texts.push_back(plainText(label.text));
    return texts;
}

}  // namespace ovin
