// For Objective-C++ files only.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace ovin {

/// Owns one reference to a CoreFoundation object, or none. Copies share the object and count; moving counts nothing.
/// Counting is safe on any thread. Objects that automatic reference counting owns are handed over with a bridge, never both
/// ways.
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

    /// Takes over the reference that a function with Create or Copy in its name has handed out; null is none.
    [[nodiscard]] static Reference adopt(T object) { return Reference(object); }

    /// Shares an object that somebody else owns, as a function with Get in its name delivers it; null is none.
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
