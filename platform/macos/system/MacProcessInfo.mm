#include "platform/macos/system/MacProcessInfo.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

class MacProcessInfo final : public ProcessInfo {
public:
    [[nodiscard]] ProcessID processIdentifier() const override { return getpid(); }

    [[nodiscard]] std::string bundleIdentifier() const override {
        @autoreleasepool {
            NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
            return identifier != nil ? toString(identifier) : "org.ovin.Ovin";
        }
    }

    /// From the C library, because the system's dictionary may be a copy of an earlier state.
    [[nodiscard]] std::optional<std::string> environment(std::string_view name) const override {
        const char* value = std::getenv(std::string(name).c_str());
        if (value == nullptr) return std::nullopt;
        return value;
    }
};

}  // namespace

std::unique_ptr<ProcessInfo> makeMacProcessInfo() { return std::make_unique<MacProcessInfo>(); }

}  // namespace ovin
