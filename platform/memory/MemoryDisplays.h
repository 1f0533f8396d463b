#pragma once

#include <algorithm>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/DisplayServices.h"
#include "platform/memory/MemoryEffects.h"

namespace ovin {

/// Displays as the test lists them; the first is the main one.
class MemoryDisplays final : public DisplayServices {
public:
    struct Display {
        DisplayID id = 0;
        Rect bounds;
        std::vector<DisplayMode> modes = {};
        /// The mode it runs in, by its id; need not be among the modes.
        std::optional<DisplayMode> current = {};
        bool isMirrored = false;
    };

    /// What the system does when a mode is applied.
    enum class Answer {
        switches,
        refuses,
        /// Reports success, but does not change the mode.
        pretends,
    };

    /// Set only while no other thread reads, because only `apply` is guarded against reads on other threads.
    std::vector<Display> displays{
        {1, {{0, 0}, {1512, 982}}, {{1, 1512, 982, 3024, true}}, {{1, 1512, 982, 3024, true}}, false}};
    Answer answer = Answer::switches;
    int applyCount = 0;
    bool areModesFixed = false;
    std::optional<std::string> server;
    /// The servers of other sessions that run.
    std::set<std::string> otherServers;
    /// Called around every `apply`, also a refused one.
    EffectHook onEffect;

    [[nodiscard]] std::optional<std::string> serverName() const override { return server; }
    [[nodiscard]] bool isAnotherServer(const std::string& name) const override { return otherServers.contains(name); }

    [[nodiscard]] bool canSwitchModes() const override { return !areModesFixed; }

    [[nodiscard]] DisplayID mainDisplay() const override {
        const std::lock_guard lock(mutex_);
        return displays.empty() ? 0 : displays.front().id;
    }

    [[nodiscard]] Rect bounds(DisplayID display) const override {
        const std::lock_guard lock(mutex_);
        const Display* found = find(display);
        return found == nullptr ? Rect{} : found->bounds;
    }

    [[nodiscard]] bool isInMirrorSet(DisplayID display) const override {
        const Display* found = find(display);
        return found != nullptr && found->isMirrored;
    }

    [[nodiscard]] std::optional<DisplayMode> currentMode(DisplayID display) const override {
        const Display* found = find(display);
        return found == nullptr ? std::nullopt : found->current;
    }

    [[nodiscard]] std::vector<DisplayMode> modes(DisplayID display) const override {
        const Display* found = find(display);
        return found == nullptr ? std::vector<DisplayMode>{} : found->modes;
    }

    [[nodiscard]] bool apply(std::int32_t mode, DisplayID display) override {
        ++applyCount;
        reach(onEffect, EffectMoment::before);
        const bool isDone = answerTo(mode, display);
        reach(onEffect, EffectMoment::during);
        reach(onEffect, EffectMoment::after);
        return isDone;
    }

private:
    [[nodiscard]] bool answerTo(std::int32_t id, DisplayID display) {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(displays.begin(), displays.end(), [&](const Display& d) { return d.id == display; });
        if (found == displays.end() || answer == Answer::refuses) return false;
        const auto& modes = found->modes;
        const auto mode = std::find_if(modes.begin(), modes.end(), [&](const DisplayMode& m) { return m.id == id; });
        if (mode == modes.end()) return false;
        if (answer == Answer::switches) {
            found->current = *mode;
            found->bounds.size = {static_cast<double>(mode->width), static_cast<double>(mode->height)};
        }
        return true;
    }

    [[nodiscard]] const Display* find(DisplayID id) const {
        const auto found = std::find_if(displays.begin(), displays.end(), [&](const Display& d) { return d.id == id; });
        return found == displays.end() ? nullptr : &*found;
    }

    mutable std::mutex mutex_;
};

}  // namespace ovin
