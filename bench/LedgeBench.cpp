// How long this program itself takes from a click on its item to the ledge's first frame. Runs within
// desktop/private-desktop; docs/benchmarks.md tells how, and holds the results.

#include <QApplication>
#include <QCommandLineParser>
#include <QEventLoop>
#include <QPaintEvent>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "discovery/DiscoveredItem.h"
#include "ledge/LedgeView.h"
#include "platform/icu/IcuText.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/windows/QtWindows.h"

namespace ovin {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double widestLedge = 1400;
constexpr int iconSide = 22;
constexpr int warmUps = 5;

/// Tells when the first window has been painted and handed to the X server.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const bool isPaint = event->type() == QEvent::Paint;
        ++depth_;
        const bool result = QApplication::notify(receiver, event);
        --depth_;
        hasPainted_ = hasPainted_ || isPaint;
        // The toolkit sends paint events while it handles the event that shows the window.
        if (depth_ == 0 && hasPainted_ && loop_ != nullptr) loop_->quit();
        return result;
    }

    void awaitPaint() {
        if (hasPainted_) return;
        QEventLoop loop;
        loop_ = &loop;
        depth_ = 0;
        loop.exec();
        loop_ = nullptr;
    }

    void forgetPaint() { hasPainted_ = false; }

private:
    QEventLoop* loop_ = nullptr;
    int depth_ = 0;
    bool hasPainted_ = false;
};

Image pixels(int number) {
    BusValue::Bytes bytes(static_cast<std::size_t>(4) * iconSide * iconSide);
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        bytes[i] = 0xff;
        bytes[i + 1] = static_cast<std::uint8_t>(number);
    }
    auto icon = std::make_shared<const ItemIcon>("", "", ItemIcon::Pixels{iconSide, iconSide, bytes});
    return Image(std::make_shared<ItemOrApplicationIcon>(std::make_shared<LatestItemIcon>(std::move(icon)), ""));
}

std::vector<DiscoveredItem> makeItems(int count, const std::string& icon, bool isLabelled) {
    std::vector<DiscoveredItem> items;
    for (int i = 0; i < count; ++i) {
        DiscoveredItem item{AccessibilityElement(nullptr), {}, {}, {}, {}, {}, {}};
        item.appName = "Application " + std::to_string(i);
        item.title = "Item " + std::to_string(i);
        item.appIcon = icon.empty() ? pixels(i) : Image(std::make_shared<NamedIcon>(icon));
        if (isLabelled) item.label = "Item " + std::to_string(i);
        items.push_back(std::move(item));
    }
    return items;
}

struct Series {
    const char* name;
    std::vector<double> all;

    void print() {
        std::sort(all.begin(), all.end());
        const auto at = [this](double part) {
            return all[static_cast<std::size_t>(part * static_cast<double>(all.size() - 1))];
        };
        std::printf("| %s | %.2f ms | %.2f ms | %.2f ms |\n", name, at(0.5), at(0.99), all.back());
    }
};

class Bench {
public:
    Bench(Application& application, std::vector<DiscoveredItem> items)
        : application_(application), items_(std::move(items)) {}

    void run(int times) {
        for (int i = 0; i < times + warmUps; ++i) openOnce(i >= warmUps);
        std::puts("| | median | 99 % | slowest |\n|---|---|---|---|");
        for (Series* series : {&described_, &measured_, &shown_, &painted_, &whole_, &closed_}) series->print();
    }

private:
    void openOnce(bool counts) {
        application_.forgetPaint();
        auto last = Clock::now();
        const auto start = last;
        const auto lap = [&](Series& series) {
            const auto now = Clock::now();
            if (counts) series.all.push_back(Milliseconds(now - last).count());
            last = now;
        };
        View row = ledgeRow(text_, items_, "");
        lap(described_);
        const Size size = windows_.fittingSize(row);
        lap(measured_);
        const LedgeContent content = ledgeContent(std::move(row), size, widestLedge);
        auto panel = windows_.makeLedgePanel();
        panel->show(content.view, {{20, 34}, content.size}, [](int) {});
        lap(shown_);
        application_.awaitPaint();
        lap(painted_);
        if (counts) whole_.all.push_back(Milliseconds(last - start).count());
        rest();
        last = Clock::now();
        panel.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        lap(closed_);
        rest();
    }

    static void rest() {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }

    Application& application_;
    const std::vector<DiscoveredItem> items_;
    IcuText text_;
    QtWindows windows_;
    Series described_{"describing it", {}};
    Series measured_{"its size", {}};
    Series shown_{"its window", {}};
    Series painted_{"until painted", {}};
    Series whole_{"**all of that**", {}};
    Series closed_{"(closing)", {}};
};

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    ovin::Application application(argumentCount, arguments);
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures the ledge's first frame; to be run in desktop/private-desktop.");
    parser.addOptions({{"items", "So many buttons.", "count", "100"},
                       {"runs", "Open it so many times.", "count", "200"},
                       {"icon", "All with the icon of this name, or the file of this path.", "name", ""},
                       {"labels", "With captions."}});
    parser.addHelpOption();
    parser.process(application);
    const auto items =
        ovin::makeItems(parser.value("items").toInt(), parser.value("icon").toStdString(), parser.isSet("labels"));
    ovin::Bench(application, items).run(std::max(1, parser.value("runs").toInt()));
}
