#pragma once

#include <memory>

#include "platform/Text.h"

namespace ovin {

/// The text services of Foundation. It sorts names like the Finder, in the language and the order that the user has chosen
/// in the system's settings; a library that comes with the program would not know these. White space, ill-formed texts and
/// the counting of bytes are the same in every world (`platform/Utf8.h`).
///
/// Characters are Foundation's composed sequences, but CR with LF is one character, as everywhere in Ovin. Where versions of
/// Unicode group characters differently, the system's version decides.
[[nodiscard]] std::unique_ptr<Text> makeMacText();

}  // namespace ovin
