#include "platform/macos/system/MacUserDefaults.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

UserDefaults::Value valueOfNumber(NSNumber* number) {
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID()) return number.boolValue == YES;
    if (CFNumberIsFloatType((__bridge CFNumberRef)number)) return number.doubleValue;
    return std::int64_t{number.longLongValue};
}

UserDefaults::Value valueOf(NSObject* object) {
    if ([object isKindOfClass:[NSNumber class]]) return valueOfNumber(static_cast<NSNumber*>(object));
    if ([object isKindOfClass:[NSString class]]) return toString(static_cast<NSString*>(object));
    return std::string();
}

id objectOf(const UserDefaults::Value& value) {
    if (const auto* boolean = std::get_if<bool>(&value)) return [NSNumber numberWithBool:*boolean ? YES : NO];
    if (const auto* number = std::get_if<std::int64_t>(&value)) return [NSNumber numberWithLongLong:*number];
    if (const auto* number = std::get_if<double>(&value)) return [NSNumber numberWithDouble:*number];
    return toNSString(std::get<std::string>(value));
}

class MacUserDefaults final : public UserDefaults {
public:
    explicit MacUserDefaults(NSUserDefaults* defaults, std::string domain)
        : defaults_(defaults), domain_(std::move(domain)) {}

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override {
        id object = [defaults_ objectForKey:toNSString(key)];
        if (object == nil) return std::nullopt;
        return valueOf(object);
    }

    [[nodiscard]] bool set(std::string_view key, const Value& value) override { return replace(key, objectOf(value)); }
    [[nodiscard]] bool remove(std::string_view key) override { return replace(key, nil); }

    [[nodiscard]] std::string place() const override { return "the user defaults of " + domain_; }

private:
    bool replace(std::string_view key, id _Nullable object) {
        NSString* name = toNSString(key);
        id before = [defaults_ objectForKey:name];
        if (object == nil && before == nil) return true;
        put(object, name);
        if ([defaults_ synchronize]) return true;
        put(before, name);
        return false;
    }

    void put(id _Nullable object, NSString* name) {
        object != nil ? [defaults_ setObject:object forKey:name] : [defaults_ removeObjectForKey:name];
    }

    NSUserDefaults* const defaults_;
    const std::string domain_;
};

}  // namespace

std::unique_ptr<UserDefaults> makeMacUserDefaults(std::string_view suite) {
    if (!suite.empty()) {
        return std::make_unique<MacUserDefaults>([[NSUserDefaults alloc] initWithSuiteName:toNSString(suite)],
                                                 std::string(suite));
    }
    NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
    // Without a bundle, the system names a program's defaults after its file.
    NSString* domain = identifier != nil ? identifier : NSProcessInfo.processInfo.processName;
    return std::make_unique<MacUserDefaults>(NSUserDefaults.standardUserDefaults, toString(domain));
}

}  // namespace ovin
