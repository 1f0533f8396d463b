#pragma once

#include <map>

#include "platform/UserDefaults.h"
#include "platform/memory/MemoryEffects.h"

namespace ovin {

/// Settings in memory. A copy of `values` is what a relaunched program finds.
class MemoryUserDefaults final : public UserDefaults {
public:
    std::map<std::string, Value, std::less<>> values;
    /// Makes the store refuse changes, as a full or read-only disk does.
    bool refusesChanges = false;
    /// Called around every change, also a refused one.
    EffectHook onEffect;

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        return found->second;
    }

    [[nodiscard]] bool set(std::string_view key, const Value& value) override {
        return change([&] { values.insert_or_assign(std::string(key), value); });
    }

    [[nodiscard]] bool remove(std::string_view key) override {
        return change([&] {
            if (const auto found = values.find(key); found != values.end()) values.erase(found);
        });
    }

private:
    template <typename Change>
    bool change(const Change& make) {
        reach(onEffect, EffectMoment::before);
        const bool isRefused = refusesChanges;
        if (!isRefused) make();
        reach(onEffect, EffectMoment::during);
        reach(onEffect, EffectMoment::after);
        return !isRefused;
    }
};

}  // namespace ovin
