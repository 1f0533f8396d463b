#pragma once

#include <functional>

namespace ovin {

/// The stage of an effect on what outlives the program: not yet begun; done, if not refused, but the caller does not know;
/// about to return to the caller.
enum class EffectMoment { before, during, after };

/// Lets a test interfere with effects. What it sets at `before` applies to this effect already. An exception that it throws
/// passes through the program to the code that drives the simulation: so a test ends the program like a crash.
using EffectHook = std::function<void(EffectMoment)>;

inline void reach(const EffectHook& hook, EffectMoment moment) {
    if (hook) hook(moment);
}

}  // namespace ovin
