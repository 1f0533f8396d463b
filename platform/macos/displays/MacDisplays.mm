#include "platform/macos/displays/MacDisplays.h"

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include "platform/macos/system/Reference.h"

namespace ovin {
namespace {

DisplayMode describe(CGDisplayModeRef mode) {
    return {CGDisplayModeGetIODisplayModeID(mode), static_cast<int>(CGDisplayModeGetWidth(mode)),
            static_cast<int>(CGDisplayModeGetHeight(mode)), static_cast<int>(CGDisplayModeGetPixelWidth(mode)),
            CGDisplayModeIsUsableForDesktopGUI(mode)};
}

/// All modes of a display. The list owns the modes that are read from it.
class ModeList {
public:
    explicit ModeList(DisplayID display) {
        // Without this option the low-resolution doubles of scaled modes would be missing.
        NSDictionary* options = @{(__bridge NSString*)kCGDisplayShowDuplicateLowResolutionModes : @YES};
        modes_ = Reference<CFArrayRef>::adopt(CGDisplayCopyAllDisplayModes(display, (__bridge CFDictionaryRef)options));
    }

    [[nodiscard]] CFIndex count() const { return modes_ ? CFArrayGetCount(modes_.get()) : 0; }

    /// Not retained.
    [[nodiscard]] CGDisplayModeRef at(CFIndex index) const {
        // The array returns constant pointers, but the functions for modes take none.
        return static_cast<CGDisplayModeRef>(const_cast<void*>(CFArrayGetValueAtIndex(modes_.get(), index)));
    }

    /// Null when there is none of this id. Not retained.
    [[nodiscard]] CGDisplayModeRef find(std::int32_t id) const {
        for (CFIndex i = 0; i < count(); ++i) {
            if (CGDisplayModeGetIODisplayModeID(at(i)) == id) return at(i);
        }
        return nullptr;
    }

private:
    Reference<CFArrayRef> modes_;
};

/// Until the end of the session, so that after a crash the next launch finds the mode together with its record.
bool configure(DisplayID display, CGDisplayModeRef mode) {
    CGDisplayConfigRef configuration = nullptr;
    if (CGBeginDisplayConfiguration(&configuration) != kCGErrorSuccess) return false;
    if (CGConfigureDisplayWithDisplayMode(configuration, display, mode, nullptr) != kCGErrorSuccess) {
        CGCancelDisplayConfiguration(configuration);
        return false;
    }
    // Whatever this returns, it ends the configuration, which must not be cancelled any more.
    return CGCompleteDisplayConfiguration(configuration, kCGConfigureForSession) == kCGErrorSuccess;
}

class MacDisplays final : public DisplayServices {
public:
    [[nodiscard]] DisplayID mainDisplay() const override { return CGMainDisplayID(); }

    [[nodiscard]] Rect bounds(DisplayID display) const override {
        const CGRect bounds = CGDisplayBounds(display);
        // A null rectangle has its origin at infinity.
        if (CGRectIsNull(bounds)) return {};
        return {{bounds.origin.x, bounds.origin.y}, {bounds.size.width, bounds.size.height}};
    }

    [[nodiscard]] bool isInMirrorSet(DisplayID display) const override { return CGDisplayIsInMirrorSet(display) != 0; }

    [[nodiscard]] std::optional<DisplayMode> currentMode(DisplayID display) const override {
        const auto mode = Reference<CGDisplayModeRef>::adopt(CGDisplayCopyDisplayMode(display));
        if (!mode) return std::nullopt;
        return describe(mode.get());
    }

    [[nodiscard]] std::vector<DisplayMode> modes(DisplayID display) const override {
        const ModeList list(display);
        std::vector<DisplayMode> result;
        for (CFIndex i = 0; i < list.count(); ++i) result.push_back(describe(list.at(i)));
        return result;
    }

    [[nodiscard]] bool apply(std::int32_t mode, DisplayID display) override {
        const ModeList list(display);
        CGDisplayModeRef found = list.find(mode);
        return found != nullptr && configure(display, found);
    }
};

}  // namespace

std::unique_ptr<DisplayServices> makeMacDisplays() { return std::make_unique<MacDisplays>(); }

}  // namespace ovin
