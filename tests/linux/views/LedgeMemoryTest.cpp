#include <gtest/gtest.h>
#include <malloc.h>

#include <QCoreApplication>
#include <QPixmapCache>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "discovery/DiscoveredItem.h"
#include "ledge/LedgeView.h"
#include "platform/icu/IcuText.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/windows/QtWindows.h"

namespace ovin {
namespace {

constexpr double widestLedge = 760;
constexpr int openingsBefore = 30;
constexpr int openings = 200;
/// A leak of 100 bytes each time that one of the twenty buttons in sight is painted would exceed this.
constexpr std::size_t mostBytes = 400'000;
/// In KiB: so small that the toolkit's cache is full before anything is measured.
constexpr int pictureCache = 256;

/// Drops the messages in which the toolkit's stand-in for a screen tells at each opening what it cannot do.
class Silence {
public:
    Silence() : before_(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { qInstallMessageHandler(before_); }

private:
    const QtMessageHandler before_;
};

/// Larger than the ledge shows it, as the pictures of many programs are.
Image picture(std::uint8_t shade) {
    constexpr int side = 32;
    BusValue::Bytes bytes(static_cast<std::size_t>(4) * side * side, shade);
    auto icon = std::make_shared<const ItemIcon>("", "", ItemIcon::Pixels{side, side, bytes});
    return Image(std::make_shared<ItemOrApplicationIcon>(std::make_shared<LatestItemIcon>(std::move(icon)), ""));
}

std::vector<DiscoveredItem> items(int count) {
    std::vector<DiscoveredItem> result;
    for (int i = 0; i < count; ++i) {
        result.push_back({AccessibilityElement(nullptr), "Application " + std::to_string(i),
                          picture(static_cast<std::uint8_t>(i)), "", 0, std::nullopt, std::nullopt});
    }
    return result;
}

/// Opens a ledge with these items, lets it be painted, and closes it.
void open(QtWindows& windows, const std::vector<DiscoveredItem>& items) {
    View row = ledgeRow(IcuText(), items, "");
    const Size size = windows.fittingSize(row);
    const LedgeContent content = ledgeContent(std::move(row), size, widestLedge);
    auto panel = windows.makeLedgePanel();
    panel->show(content.view, {{20, 34}, content.size}, [](int) {});
    QCoreApplication::processEvents();
    panel.reset();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(LedgeMemory, ALedgeWithAHundredItemsThatOpensAndClosesTwoHundredTimesLeavesNoMemoryBehind) {
#ifdef OVIN_SANITIZED
    GTEST_SKIP() << "The allocator of a sanitizer keeps what is freed for a while.";
#endif
    const Silence silence;
    QPixmapCache::setCacheLimit(pictureCache);
    QtWindows windows;
    // What is shown again keeps its widgets, so others come in between.
    const std::vector<std::vector<DiscoveredItem>> shown{items(100), items(100), items(90)};
    auto next = [&shown, opening = std::size_t{0} ]() mutable -> const auto& { return shown[opening++ / 2 % shown.size()]; };
    for (int i = 0; i < openingsBefore; ++i) open(windows, next());
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < openings; ++i) open(windows, next());
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_LE(after, before + mostBytes);
}

}  // namespace
}  // namespace ovin
