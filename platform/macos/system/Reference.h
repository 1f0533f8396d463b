// For Objective-C++ files only.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace ovin {

/// Owns one reference to a CoreFoundation object, or none. Copying retains the object; moving does not. Counting is safe on
/// any thread. An object must not be owned both by this and, through a bridge, by automatic reference counting.
template <typename T>
class Reference {
public:
    Reference() = default;
    Reference(const Reference& other) : object_(other.object_) {
        if (object_ != nullptr) CFRetain(object_);
    }
    Reference(Reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Reference& operator=(Reference other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Reference() {
        if (object_ != nullptr) CFRelease(object_);
    }

    /// Takes over the reference that a function with Create or Copy in its name has returned; may be null.
    [[nodiscard]] static Reference adopt(T object) { return Reference(object); }

    /// Retains an object that others own, as a function with Get in its name returns it; may be null.
    [[nodiscard]] static Reference retain(T object) {
        if (object != nullptr) CFRetain(object);
        return Reference(object);
    }

    [[nodiscard]] T get() const { return object_; }
    [[nodiscard]] explicit operator bool() const { return object_ != nullptr; }

private:
    explicit Reference(T object) : object_(object) {}

    T object_ = nullptr;
};

}  // namespace ovin
