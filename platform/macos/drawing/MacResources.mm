#include "platform/macos/drawing/MacResources.h"

#import <AppKit/AppKit.h>

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

/// The pictures are PNG files; the application's icon is an ICNS file with all its sizes.
NSString* _Nullable pathOf(NSString* name) {
    NSString* picture = [NSBundle.mainBundle pathForResource:name ofType:@"png"];
    return picture != nil ? picture : [NSBundle.mainBundle pathForResource:name ofType:@"icns"];
}

std::optional<Picture> load(std::string_view name) {
    // A name must not lead to another folder.
    if (name.empty() || name.find('/') != std::string_view::npos) return std::nullopt;
    NSString* path = pathOf(toNSString(name));
    NSImage* image = path != nil ? [[NSImage alloc] initWithContentsOfFile:path] : nil;
    if (image == nil || !(image.size.width > 0) || !(image.size.height > 0)) return std::nullopt;
    return Picture{makeImage(image), {image.size.width, image.size.height}};
}

class MacResources final : public Resources {
public:
    [[nodiscard]] const Words& words() const override { return macWords(); }

    [[nodiscard]] std::optional<Picture> picture(std::string_view name) const override {
        if (const auto found = pictures_.find(name); found != pictures_.end()) return found->second;
        auto picture = load(name);
        if (picture) pictures_.emplace(name, *picture);
        return picture;
    }

    /// Loaded when it is drawn, because it needs the application object.
    [[nodiscard]] Image applicationIcon() const override { return icon_; }

    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override {
        id text = [NSBundle.mainBundle objectForInfoDictionaryKey:toNSString(key)];
        if (![text isKindOfClass:[NSString class]]) return std::nullopt;
        return toString(static_cast<NSString*>(text));
    }

private:
    const Image icon_ = makeImage([] { return [NSImage imageNamed:NSImageNameApplicationIcon]; });
    /// Kept so that two calls return equal pictures.
    mutable std::map<std::string, Picture, std::less<>> pictures_;
};

}  // namespace

std::unique_ptr<Resources> makeMacResources() { return std::make_unique<MacResources>(); }

}  // namespace ovin
