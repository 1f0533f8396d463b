#pragma once

#include <functional>

namespace ovin {

/// Where an effect on what outlives the program stands: nothing has happened yet; it has happened, if it was not refused,
/// and who asked for it does not know; it is about to tell.
enum class EffectMoment { before, during, after };

/// Lets a test interfere with effects. What it sets at `before` holds for this very effect. An exception that it throws goes
/// through the program to whoever drives the simulation: so a test ends the program there, as a crash does.
using EffectHook = std::function<void(EffectMoment)>;

inline void reach(const EffectHook& hook, EffectMoment moment) {
    if (hook) hook(moment);
}

}  // namespace ovin
