#include "platform/linux/items/QtBarSettings.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QVariantMap>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "tests/support/TemporaryFolder.h"

namespace ovin {

/// Xfce's service of settings, as far as its panel's are concerned.
class XfceSettings final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.xfce.Xfconf")

public:
    QVariantMap properties;

public Q_SLOTS:
    Q_SCRIPTABLE QVariantMap GetAllProperties(const QString& channel, const QString& base) {
        return channel == "xfce4-panel" && base == "/plugins" ? properties : QVariantMap();
    }
};

namespace {

/// A session with the bars that a test says.
class QtBarSettingsTest : public testing::Test {
protected:
    QtBarSettingsTest() {
        qputenv("XDG_CONFIG_HOME", folder.path().c_str());
        desktop.registerObject("/org/xfce/Xfconf", &xfce, QDBusConnection::ExportScriptableSlots);
        desktop.registerService("org.xfce.Xfconf");
    }
    ~QtBarSettingsTest() override { QDBusConnection::disconnectFromBus("desktop"); }

    void begin() {
        settings = std::make_unique<QtBarSettings>(QDBusConnection::sessionBus(), [this] { ++changes; });
    }

    void hideInXfce(const QStringList& ids) {
        xfce.properties = {{"/plugins/plugin-2", "systray"},
                           {"/plugins/plugin-2/hidden-items", QVariantList(ids.begin(), ids.end())}};
        auto signal = QDBusMessage::createSignal("/org/xfce/Xfconf", "org.xfce.Xfconf", "PropertyChanged");
        signal << "xfce4-panel"
               << "/plugins/plugin-2/hidden-items" << QVariant::fromValue(QDBusVariant(QVariantList{""}));
        desktop.send(signal);
    }

    std::filesystem::path plasmaFile() const { return folder.path() / "plasma-org.kde.plasma.desktop-appletsrc"; }

    void hideInPlasma(const std::string& ids) {
        writePlasmaFile(
            "[Containments][2][Applets][7][Configuration]\nSystrayContainmentId=8\n"
            "[Containments][8][General]\nhiddenItems=" +
            ids + "\n");
    }

    /// As Plasma does: a new file takes the place of the old one.
    void writePlasmaFile(const std::string& text) {
        std::ofstream(plasmaFile().string() + ".new") << text;
        std::filesystem::rename(plasmaFile().string() + ".new", plasmaFile());
    }

    bool becomesDrawn(const std::string& id, bool isDrawn) {
        QElapsedTimer timer;
        timer.start();
        while (settings->draws(id, false) != isDrawn && timer.elapsed() < 10'000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        return settings->draws(id, false) == isDrawn;
    }

    /// Until all that was asked on the bus so far has been answered.
    void settle() {
        for (int i = 0; i < 2; ++i) {
            desktop.call(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId"));
            QCoreApplication::processEvents();
        }
    }

    const TemporaryFolder folder;
    QDBusConnection desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    XfceSettings xfce;
    int changes = 0;
    std::unique_ptr<QtBarSettings> settings;
};

TEST_F(QtBarSettingsTest, WhatXfcesPanelHidesIsNotDrawnAndChangesAreTold) {
    desktop.registerService("org.xfce.Panel");
    hideInXfce({"one", "two"});
    begin();
    EXPECT_TRUE(becomesDrawn("one", false));
    EXPECT_TRUE(settings->draws("three", false));
    EXPECT_FALSE(settings->draws("three", true));
    EXPECT_EQ(changes, 1);
    hideInXfce({"two", "three"});
    EXPECT_TRUE(becomesDrawn("three", false));
    EXPECT_TRUE(settings->draws("one", false));
    EXPECT_EQ(changes, 2);
}

TEST_F(QtBarSettingsTest, XfcesSettingsCountOnlyWhileItsPanelRuns) {
    hideInXfce({"one"});
    begin();
    settle();
    EXPECT_TRUE(settings->draws("one", false));
    EXPECT_EQ(changes, 0);
    desktop.registerService("org.xfce.Panel");
    EXPECT_TRUE(becomesDrawn("one", false));
    desktop.unregisterService("org.xfce.Panel");
    EXPECT_TRUE(becomesDrawn("one", true));
    EXPECT_EQ(changes, 2);
}

TEST_F(QtBarSettingsTest, WhatPlasmasPanelHidesIsNotDrawnAndEveryNewFileIsRead) {
    hideInPlasma("one");
    desktop.registerService("org.kde.plasmashell");
    begin();
    EXPECT_TRUE(becomesDrawn("one", false));
    for (const char* id : {"two", "one", "two"}) {
        const int before = changes;
        hideInPlasma(id);
        EXPECT_TRUE(becomesDrawn(id, false)) << id;
        EXPECT_GT(changes, before);
    }
    EXPECT_TRUE(settings->draws("one", false));
    desktop.unregisterService("org.kde.plasmashell");
    EXPECT_TRUE(becomesDrawn("two", true));
}

TEST_F(QtBarSettingsTest, AFileThatPlasmaWritesOnlyLaterIsReadToo) {
    desktop.registerService("org.kde.plasmashell");
    begin();
    settle();
    EXPECT_TRUE(settings->draws("one", false));
    hideInPlasma("one");
    EXPECT_TRUE(becomesDrawn("one", false));
    hideInPlasma("two");
    EXPECT_TRUE(becomesDrawn("two", false));
}

TEST_F(QtBarSettingsTest, APlasmaWithoutATrayDrawsNothing) {
    writePlasmaFile("[Containments][8][General]\nhiddenItems=one\n");
    begin();
    settle();
    EXPECT_TRUE(settings->draws("two", false));
    EXPECT_TRUE(settings->hasTray());
    desktop.registerService("org.kde.plasmashell");
    EXPECT_TRUE(becomesDrawn("two", false));
    EXPECT_FALSE(settings->hasTray());
    hideInPlasma("one");
    EXPECT_TRUE(becomesDrawn("two", true));
    EXPECT_TRUE(settings->hasTray());
}

/// Until the file may be read. Opening it takes long while another program has a lease on it.
class Lease {
public:
    explicit Lease(const std::filesystem::path& path) : file_(open(path.c_str(), O_RDWR)) {
        // The signal that tells of a reader would end this program.
        std::signal(SIGIO, SIG_IGN);
        isHeld_ = fcntl(file_, F_SETLEASE, F_WRLCK) == 0;
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease() { close(file_); }

    [[nodiscard]] bool isHeld() const { return isHeld_; }
    [[nodiscard]] bool isWantedBack() const { return fcntl(file_, F_GETLEASE) != F_WRLCK; }

private:
    const int file_;
    bool isHeld_ = false;
};

TEST_F(QtBarSettingsTest, WhileReadingPlasmasFileTakesLongTheMainThreadGoesOn) {
    hideInPlasma("one");
    desktop.registerService("org.kde.plasmashell");
    begin();
    settle();
    auto lease = std::make_unique<Lease>(plasmaFile());
    if (!lease->isHeld()) GTEST_SKIP() << "There are no leases on this file system.";
    bool isDrawn = true;
    std::thread reader([&] { isDrawn = settings->draws("one", false); });
    QElapsedTimer timer;
    timer.start();
    while (!lease->isWantedBack() && timer.elapsed() < 10'000) std::this_thread::yield();

    const int before = changes;
    desktop.registerService("org.xfce.Panel");
    hideInXfce({"two"});
    while (changes == before && timer.elapsed() < 10'000) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_GT(changes, before);
    EXPECT_LT(timer.elapsed(), 10'000);
    lease.reset();
    reader.join();
    EXPECT_FALSE(isDrawn);
}

}  // namespace
}  // namespace ovin

#include "QtBarSettingsTest.moc"
