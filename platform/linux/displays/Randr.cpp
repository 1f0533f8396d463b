#include "platform/linux/displays/Randr.h"

#include <algorithm>

namespace ovin {
namespace {

constexpr unsigned quarterTurns = 2U | 8U;

template <typename Thing>
const Thing* withID(const std::vector<Thing>& things, std::uint32_t id) {
    const auto found = std::find_if(things.begin(), things.end(), [id](const Thing& thing) { return thing.id == id; });
    return found == things.end() ? nullptr : &*found;
}

bool contains(const RandrCrtc& outer, const RandrCrtc& inner) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.size.width <= outer.x + outer.size.width &&
           inner.y + inner.size.height <= outer.y + outer.size.height;
}

bool showTheSame(const RandrCrtc& a, const RandrCrtc& b) {
    return (a.x == b.x && a.y == b.y) || contains(a, b) || contains(b, a);
}

}  // namespace

const RandrOutput* RandrState::output(std::uint32_t id) const { return withID(outputs, id); }
const RandrCrtc* RandrState::crtc(std::uint32_t id) const { return withID(crtcs, id); }
const RandrMode* RandrState::mode(std::uint32_t id) const { return withID(modes, id); }

const RandrCrtc* RandrState::crtcOf(std::uint32_t id) const {
    const RandrOutput* found = output(id);
    const RandrCrtc* driver = found == nullptr || found->crtc == 0 ? nullptr : crtc(found->crtc);
    return driver == nullptr || driver->mode == 0 ? nullptr : driver;
}

Extent turned(Extent size, std::uint16_t rotation) {
    if ((rotation & quarterTurns) == 0) return size;
    return {size.height, size.width};
}

bool isMirrored(const RandrState& state, std::uint32_t output) {
    const RandrCrtc* own = state.crtcOf(output);
    if (own == nullptr) return false;
    if (own->outputs.size() > 1) return true;
    return std::any_of(state.crtcs.begin(), state.crtcs.end(), [own](const RandrCrtc& other) {
        return other.id != own->id && other.mode != 0 && showTheSame(*own, other);
    });
}

}  // namespace ovin
