#pragma once

#include <string_view>

namespace ovin {

/// The system's log. Any thread.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Writes one entry. `line` is text, never a format, and begins with "Ovin: ", or as a diagnostic with "Ovin DEBUG ".
    /// The line may hold any character, line ends included, because it quotes names and titles of other programs; a log that
    /// is read line by line escapes them.
    virtual void write(std::string_view line) = 0;
};

}  // namespace ovin
