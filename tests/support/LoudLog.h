#pragma once

#include <cstdio>
#include <string>

#include "platform/SystemLog.h"

namespace ovin {

/// Shows on the standard error stream, where a death test looks, what the program has written to its log before it died.
class LoudLog final : public SystemLog {
public:
    void write(std::string_view line) override { std::fprintf(stderr, "%s\n", std::string(line).c_str()); }
};

}  // namespace ovin
