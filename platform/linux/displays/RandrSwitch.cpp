#include "platform/linux/displays/RandrSwitch.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "platform/linux/displays/RandrLayout.h"

namespace ovin {
namespace {

using Answer = RandrServer::Answer;

/// While this exists, other clients wait: they see the X screen before the change or after it, never between.
class Grab {
public:
    explicit Grab(RandrServer& server) : server_(server) { server_.setGrabbed(true); }
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;
    ~Grab() { server_.setGrabbed(false); }

private:
    RandrServer& server_;
};

int inProportion(int millimetres, int before, int after) {
    if (before <= 0) return std::max(millimetres, 1);
    // At least 1, because the server refuses empty lengths.
    return std::max(static_cast<int>(std::lround(static_cast<double>(millimetres) * after / before)), 1);
}

class Switch {
public:
    Switch(RandrServer& server, const RandrState& state) : server_(server), state_(state), screen_(state.screen.size) {}

    Answer run(const RandrLayout& layout) {
        const Answer answer = change(layout);
        if (answer != Answer::done) undo();
        return answer;
    }

private:
    /// While parts move, the X screen holds their old and new places: the server refuses a part that reaches beyond it.
    Answer change(const RandrLayout& layout) {
        if (!resize({std::max(screen_.width, layout.screen.width), std::max(screen_.height, layout.screen.height)})) {
            return Answer::refused;
        }
        for (const RandrCrtc& crtc : layout.changed) {
            // Noted first, because a change that failed may have happened all the same.
            touched_.push_back(crtc.id);
            const Answer answer = server_.setCrtc(crtc, state_.configTime);
            if (answer != Answer::done) return answer;
        }
        return resize(layout.screen) ? Answer::done : Answer::refused;
    }

    void undo() {
        const std::optional<RandrState> now = server_.read();
        // Errors are ignored because there is nothing else to try.
        for (auto id = touched_.rbegin(); now && id != touched_.rend(); ++id) {
            (void)server_.setCrtc(*state_.crtc(*id), now->configTime);
        }
        (void)resize(state_.screen.size);
    }

    /// Keeps the density, in pixels per millimetre.
    bool resize(Extent size) {
        if (size == screen_) return true;
        const Extent was = state_.screen.size;
        const Extent millimetres = size == was
                                       ? state_.screen.millimetres
                                       : Extent{inProportion(state_.screen.millimetres.width, was.width, size.width),
                                                inProportion(state_.screen.millimetres.height, was.height, size.height)};
        if (!server_.setScreen(size, millimetres)) return false;
        screen_ = size;
        return true;
    }

    RandrServer& server_;
    const RandrState& state_;
    Extent screen_;
    std::vector<std::uint32_t> touched_;
};

Answer tryToSwitch(RandrServer& server, std::uint32_t output, std::uint32_t mode) {
    const Grab grab(server);
    const std::optional<RandrState> state = server.read();
    if (!state) return Answer::refused;
    const std::optional<RandrLayout> layout = layoutWithMode(*state, output, mode);
    if (!layout) return Answer::refused;
    return Switch(server, *state).run(*layout);
}

}  // namespace

bool switchMode(RandrServer& server, std::uint32_t output, std::uint32_t mode) {
    Answer answer = tryToSwitch(server, output, mode);
    // Outdated when something was plugged in or out at this moment, which hardly happens twice in a row.
    if (answer == Answer::outdated) answer = tryToSwitch(server, output, mode);
    return answer == Answer::done;
}

}  // namespace ovin
