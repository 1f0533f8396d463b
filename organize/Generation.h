#pragma once

#include <cstdint>
#include <limits>

#include "organize/FatalError.h"

namespace ovin {

/// Counts the ends of sessions. A step that runs later keeps the number that was current when it was scheduled, and gives
/// up when it finds another.
class Generation {
public:
    using Number = std::int64_t;

    explicit Generation(Number first = 0) : number_(first) {}

    [[nodiscard]] Number number() const { return number_; }

    /// Silences every step that is still to come. Ends the program when there is no further number: an old step could not be
    /// told from a new one.
    void advance(SystemLog& log) {
        if (number_ == std::numeric_limits<Number>::max()) fatalError(log, "Ovin: fatal: no session number is left");
        ++number_;
    }

private:
    Number number_;
};

}  // namespace ovin
