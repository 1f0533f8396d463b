#include "platform/linux/drawing/QtResources.h"

#include <QImage>
#include <array>
#include <memory>
#include <utility>

#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/OvinVersion.h"

/// Keeps the linker from leaving the resources out. The toolkit requires this outside of all namespaces.
static void loadResources() { Q_INIT_RESOURCE(ovin); }

namespace ovin {
namespace {

constexpr double pixelsPerPoint = 2;

Image iconNamed(const std::string& path) { return Image(std::make_shared<NamedIcon>(path)); }

std::string loadedIconPath() {
    loadResources();
    return ":/ovin/icon";
}

}  // namespace

QtResources::QtResources() : icon_(iconNamed(loadedIconPath())) {}

std::optional<Picture> QtResources::picture(std::string_view name) const {
    if (const auto found = pictures_.find(name); found != pictures_.end()) return found->second;
    // A name must not lead to another folder.
    if (name.find('/') != std::string_view::npos) return std::nullopt;
    const std::string path = ":/ovin/pictures/" + std::string(name) + ".png";
    const QImage image(QString::fromStdString(path));
    if (image.isNull()) return std::nullopt;
    Picture picture{iconNamed(path), {image.width() / pixelsPerPoint, image.height() / pixelsPerPoint}};
    return pictures_.emplace(name, std::move(picture)).first->second;
}

std::optional<std::string> QtResources::infoString(std::string_view key) const {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 3> texts{
        {{"CFBundleName", "Ovin"}, {"CFBundleShortVersionString", version}, {"CFBundleVersion", buildNumber}}};
    for (const auto& [known, text] : texts) {
        if (known == key) return std::string(text);
    }
    return std::nullopt;
}

}  // namespace ovin
