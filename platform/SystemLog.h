#pragma once

#include <string_view>

namespace ovin {

/// The system's log. Any thread.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Writes one entry. `line` is UTF-8 without a line end; what it holds is written as it stands, never taken as a format.
    virtual void write(std::string_view line) = 0;
};

}  // namespace ovin
