#pragma once

#include <memory>

#include "platform/Text.h"

namespace ovin {

/// The text services of Foundation. Names are to be sorted as the Finder beside them sorts them, in the language and the
/// order that the user has chosen in the system's settings, which no library that comes with the program would know of.
/// White space, broken texts and the counting of bytes are the same in every world (`platform/Utf8.h`).
///
/// Characters are Foundation's composed sequences, with CR and LF held together as everywhere in Ovin. Where scripts are
/// concerned that newer versions of Unicode group anew, the system's version decides.
[[nodiscard]] std::unique_ptr<Text> makeMacText();

}  // namespace ovin
