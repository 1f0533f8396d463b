#pragma once

#include "platform/SystemLog.h"

namespace ovin {

/// The standard error stream, which a desktop session keeps in its journal or in a file of its own. An entry is one line:
/// line ends and other control characters in it are written as escapes, so that no program's name can write a line of its
/// own or paint the terminal.
class StandardErrorLog final : public SystemLog {
public:
    void write(std::string_view line) override;
};

}  // namespace ovin
