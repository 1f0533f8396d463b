#include "platform/macos/drawing/NativeImages.h"

#include <memory>
#include <utility>

namespace ovin {
namespace {

class NativeImage final : public Image::Content {
public:
    explicit NativeImage(NSImage* image) : image_(image) {}
    explicit NativeImage(std::function<NSImage* _Nullable()> load) : load_(std::move(load)) {}

    NSImage* _Nullable image() const {
        if (load_) image_ = std::exchange(load_, nullptr)();
        return image_;
    }

private:
    mutable std::function<NSImage* _Nullable()> load_;
    mutable NSImage* _Nullable image_ = nil;
};

}  // namespace

Image makeImage(NSImage* image) { return Image(std::make_shared<NativeImage>(image)); }

Image makeImage(std::function<NSImage* _Nullable()> load) { return Image(std::make_shared<NativeImage>(std::move(load))); }

NSImage* nativeImage(const Image& image) {
    const auto* content = dynamic_cast<const NativeImage*>(&image.content());
    return content != nullptr ? content->image() : nil;
}

NSImage* sizedImage(const SizedImage& image) {
    NSImage* copy = [nativeImage(image.image) copy];
    copy.size = NSMakeSize(image.size.width, image.size.height);
    return copy;
}

}  // namespace ovin
