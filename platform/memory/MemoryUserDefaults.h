#pragma once

#include <map>

#include "platform/UserDefaults.h"

namespace ovin {

/// Settings in memory. A copy of `values` is what a relaunched program finds.
class MemoryUserDefaults final : public UserDefaults {
public:
    std::map<std::string, Value, std::less<>> values;
    /// Lets the store refuse to change, as a full or read-only disk does.
    bool refusesChanges = false;

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        return found->second;
    }

    [[nodiscard]] bool set(std::string_view key, const Value& value) override {
        if (refusesChanges) return false;
        values.insert_or_assign(std::string(key), value);
        return true;
    }

    [[nodiscard]] bool remove(std::string_view key) override {
        if (refusesChanges) return false;
        if (const auto found = values.find(key); found != values.end()) values.erase(found);
        return true;
    }
};

}  // namespace ovin
