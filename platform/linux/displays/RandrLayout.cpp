#include "platform/linux/displays/RandrLayout.h"

#include <algorithm>
#include <limits>

namespace ovin {
namespace {

/// An area on one of the axes.
struct Span {
    int start = 0;
    int length = 0;

    [[nodiscard]] int end() const { return start + length; }
};

/// A driven part of the X screen along one axis, before and after the change.
struct Part {
    Span before;
    Span after;
    /// Its area on the other axis.
    Span across;
};

bool overlap(Span a, Span b) { return a.start < b.end() && b.start < a.end(); }
bool touch(Span a, Span b) { return a.start <= b.end() && b.start <= a.end(); }

/// The start of `part`, given that the parts before it are placed. `isKeptApart` says whether two parts must not overlap on
/// this axis.
template <typename IsKeptApart>
int startOf(const Part& part, const std::vector<Part*>& placed, const IsKeptApart& isKeptApart) {
    constexpr int none = std::numeric_limits<int>::min();
    int neighbour = none;
    int obstacle = none;
    for (const Part* other : placed) {
        if (other->before.end() > part.before.start) continue;
        if (other->before.end() == part.before.start && touch(other->across, part.across)) {
            neighbour = std::max(neighbour, other->after.end());
        }
        if (isKeptApart(*other, part)) obstacle = std::max(obstacle, other->after.end());
    }
    return std::max(neighbour == none ? part.before.start : neighbour, obstacle);
}

/// Places all parts along one axis, in the order of their starts.
template <typename IsKeptApart>
void arrange(std::vector<Part>& parts, const IsKeptApart& isKeptApart) {
    std::vector<Part*> ordered;
    for (Part& part : parts) ordered.push_back(&part);
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Part* a, const Part* b) { return a->before.start < b->before.start; });
    std::vector<Part*> placed;
    for (Part* part : ordered) {
        part->after.start = startOf(*part, placed, isKeptApart);
        placed.push_back(part);
    }
}

std::vector<RandrCrtc> driven(const RandrState& state) {
    std::vector<RandrCrtc> crtcs;
    std::copy_if(state.crtcs.begin(), state.crtcs.end(), std::back_inserter(crtcs),
                 [](const RandrCrtc& crtc) { return crtc.mode != 0; });
    return crtcs;
}

/// Parts that were side by side, sharing rows, stay side by side. All others were one above the other, and stay so where
/// they now share columns.
void makeRoom(const std::vector<RandrCrtc>& before, std::vector<RandrCrtc>& after) {
    std::vector<Part> across;
    std::vector<Part> down;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Span x{before[i].x, before[i].size.width};
        const Span y{before[i].y, before[i].size.height};
        across.push_back({x, {x.start, after[i].size.width}, y});
        down.push_back({y, {y.start, after[i].size.height}, x});
    }
    arrange(across, [](const Part& left, const Part& right) { return overlap(left.across, right.across); });
    for (std::size_t i = 0; i < down.size(); ++i) down[i].across = across[i].after;
    arrange(down, [](const Part& upper, const Part& lower) { return overlap(upper.across, lower.across); });
    for (std::size_t i = 0; i < after.size(); ++i) {
        after[i].x = across[i].after.start;
        after[i].y = down[i].after.start;
    }
}

/// A CRTC may scale its mode to the X screen; the same scale then applies to the new mode.
Extent sizeInMode(const RandrCrtc& crtc, const RandrMode& from, const RandrMode& to) {
    const Extent was = turned(from.size, crtc.rotation);
    const Extent is = turned(to.size, crtc.rotation);
    if (was == crtc.size || was.width <= 0 || was.height <= 0) return is;
    const auto scaled = [](int length, int part, int whole) { return (length * part + whole - 1) / whole; };
    return {scaled(is.width, crtc.size.width, was.width), scaled(is.height, crtc.size.height, was.height)};
}

Extent boundsOf(const std::vector<RandrCrtc>& crtcs, Extent smallest) {
    Extent bounds = smallest;
    for (const RandrCrtc& crtc : crtcs) {
        bounds.width = std::max(bounds.width, crtc.x + crtc.size.width);
        bounds.height = std::max(bounds.height, crtc.y + crtc.size.height);
    }
    return bounds;
}

}  // namespace

std::optional<RandrLayout> layoutWithMode(const RandrState& state, std::uint32_t output, std::uint32_t mode) {
    const RandrCrtc* crtc = state.crtcOf(output);
    const RandrMode* wanted = state.mode(mode);
    if (crtc == nullptr || wanted == nullptr) return std::nullopt;
    const RandrMode* current = state.mode(crtc->mode);
    const std::vector<std::uint32_t>& offered = state.output(output)->modes;
    if (current == nullptr || std::find(offered.begin(), offered.end(), mode) == offered.end()) return std::nullopt;

    const std::vector<RandrCrtc> before = driven(state);
    std::vector<RandrCrtc> after = before;
    const auto switched = std::find_if(after.begin(), after.end(), [&](const RandrCrtc& c) { return c.id == crtc->id; });
    switched->size = sizeInMode(*crtc, *current, *wanted);
    switched->mode = mode;
    makeRoom(before, after);

    RandrLayout layout;
    layout.screen = boundsOf(after, state.screen.smallest);
    const Extent most = state.screen.largest;
    if (layout.screen.width > most.width || layout.screen.height > most.height) return std::nullopt;
    std::iter_swap(after.begin(), switched);
    std::copy_if(after.begin(), after.end(), std::back_inserter(layout.changed),
                 [&](const RandrCrtc& each) { return !(each == *state.crtc(each.id)); });
    return layout;
}

}  // namespace ovin
