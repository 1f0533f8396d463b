#pragma once

#include <map>
#include <mutex>

#include "platform/ProcessInfo.h"

namespace ovin {

/// A process whose environment the test sets.
class MemoryProcessInfo final : public ProcessInfo {
public:
    /// Not guarded: set them before other threads read them.
    ProcessID pid = 100;
    std::string bundleID = "example.ovin.Ovin";

    void setEnvironment(const std::string& name, std::optional<std::string> value) {
        const std::lock_guard lock(mutex_);
        if (value) {
            environment_.insert_or_assign(name, *std::move(value));
        } else {
            environment_.erase(name);
        }
    }

    [[nodiscard]] ProcessID processIdentifier() const override { return pid; }
    [[nodiscard]] std::string bundleIdentifier() const override { return bundleID; }
    [[nodiscard]] std::optional<std::string> environment(std::string_view name) const override {
        const std::lock_guard lock(mutex_);
        const auto found = environment_.find(name);
        if (found == environment_.end()) return std::nullopt;
        return found->second;
    }

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::string, std::less<>> environment_;
};

}  // namespace ovin
