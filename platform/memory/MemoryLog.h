#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "platform/SystemLog.h"

namespace ovin {

/// Keeps the lines that were written.
class MemoryLog final : public SystemLog {
public:
    void write(std::string_view line) override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(line);
    }

    [[nodiscard]] std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

}  // namespace ovin
