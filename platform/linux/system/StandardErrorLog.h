#pragma once

#include <unistd.h>

#include "platform/SystemLog.h"

namespace ovin {

/// The standard error stream, which a desktop session keeps in its journal or in a file of its own. An entry is one line:
/// line ends and other control characters in it are written as escapes, so that no program's name can add a line or control
/// the terminal.
class StandardErrorLog final : public SystemLog {
public:
    /// Tests write to another descriptor, which must stay open for as long as this lives.
    explicit StandardErrorLog(int descriptor = STDERR_FILENO) : descriptor_(descriptor) {}

    void write(std::string_view line) override;

private:
    const int descriptor_;
};

}  // namespace ovin
