#include "organize/DisplayModeChoice.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace ovin {
namespace {

constexpr double shape16By10 = 0.625;
/// Modes have whole numbers of points, so few have exactly the shape 16:10.
constexpr double shapeTolerance = 0.005;

bool is16By10(const DisplayMode& mode) {
    const double shape = static_cast<double>(mode.height) / static_cast<double>(mode.width);
    return std::abs(shape - shape16By10) < shapeTolerance;
}

bool makesRoom(const DisplayMode& mode, const DisplayMode& current) {
    if (!mode.isUsableForDesktopGUI) return false;
    // A menu bar beside a camera housing loses the housing's width; the 16:10 mode lies below it and has the whole width.
    return mode.width > current.width || (mode.width == current.width && is16By10(mode) && !is16By10(current));
}

bool isBetterAtEqualWidth(const DisplayMode& a, const DisplayMode& b) {
    if (is16By10(a) != is16By10(b)) return is16By10(a);
    return a.pixelWidth > b.pixelWidth;
}

bool isNarrower(const DisplayMode& a, const DisplayMode& b) {
    return a.width != b.width ? a.width < b.width : isBetterAtEqualWidth(a, b);
}

bool isWider(const DisplayMode& a, const DisplayMode& b) {
    return a.width != b.width ? a.width > b.width : isBetterAtEqualWidth(a, b);
}

}  // namespace

std::optional<DisplayMode> chooseWiderMode(const std::vector<DisplayMode>& modes, const DisplayMode& current,
                                           double neededWidth) {
    std::vector<DisplayMode> candidates;
    std::copy_if(modes.begin(), modes.end(), std::back_inserter(candidates),
                 [&](const DisplayMode& mode) { return makesRoom(mode, current); });
    if (candidates.empty()) return std::nullopt;

    std::vector<DisplayMode> wideEnough;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(wideEnough),
                 [&](const DisplayMode& mode) { return static_cast<double>(mode.width) >= neededWidth; });
    // Of equals, the first that is listed.
    if (!wideEnough.empty()) return *std::min_element(wideEnough.begin(), wideEnough.end(), isNarrower);
    return *std::min_element(candidates.begin(), candidates.end(), isWider);
}

}  // namespace ovin
