#include "platform/linux/own_item/QtStatusItem.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/items/StatusNotifierWatcher.h"
#include "platform/linux/system/DBusCall.h"
#include "platform/linux/system/QtMainQueue.h"

namespace ovin {
namespace {

const QString interfaceName = "org.kde.StatusNotifierItem";

template <typename Condition>
bool becomes(Condition condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 20'000) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return condition();
}

/// The session's watcher when it is another program, on a connection of its own.
class ForeignWatcher final : public QDBusVirtualObject {
public:
    explicit ForeignWatcher(const QString& program) : program_(program) {
        bus_.registerVirtualObject("/", this, QDBusConnection::SubPath);
        bus_.interface()->registerService(name, QDBusConnectionInterface::ReplaceExistingService);
    }
    ForeignWatcher(const ForeignWatcher&) = delete;
    ForeignWatcher& operator=(const ForeignWatcher&) = delete;
    ~ForeignWatcher() override { QDBusConnection::disconnectFromBus("watcher"); }

    void tellOfHost(bool hasHost) {
        hasHost_ = hasHost;
        bus_.send(QDBusMessage::createSignal("/StatusNotifierWatcher", name,
                                             hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered"));
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        const QString property = call.arguments().value(1).toString();
        const QVariant value = property == "applicationName" ? QVariant(program_) : QVariant(hasHost_);
        return connection.send(call.createReply(QVariant::fromValue(QDBusVariant(value))));
    }

private:
    static constexpr const char* name = "org.kde.StatusNotifierWatcher";

    const QString program_;
    bool hasHost_ = false;
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "watcher");
};

/// The item as a bar sees it, over a connection of its own.
class QtStatusItemTest : public testing::Test {
protected:
    QtMainQueue queue;
    StatusNotifierWatcher watcher{QDBusConnection::sessionBus(), queue, WatcherClaim::Begin::atOnce};
    QDBusConnection bar = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "bar");
    QtScreens screens;
    std::vector<StatusItemClick> clicks;

    QString service() {
        EXPECT_TRUE(becomes([this] { return watcher.registeredItems().size() == 1; }));
        return watcher.registeredItems().value(0).section('/', 0, 0);
    }

    QDBusMessage ask(const QString& interface, const QString& method, const QVariantList& arguments) {
        const QDBusPendingCall call =
            bar.asyncCall(dbusCall(service(), "/StatusNotifierItem", interface, method, arguments));
        EXPECT_TRUE(becomes([&] { return call.isFinished(); }));
        return QDBusPendingReply<>(call).reply();
    }

    QVariant property(const QString& name) {
        const QDBusMessage reply = ask("org.freedesktop.DBus.Properties", "Get", {interfaceName, name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    QString toolTip() { return qdbus_cast<BusToolTip>(property("ToolTip")).title; }

    void press(const QString& method) {
        EXPECT_EQ(ask(interfaceName, method, {30, 40}).type(), QDBusMessage::ReplyMessage);
        QCoreApplication::processEvents();
    }

    /// Makes calls that the item finds all at once when it looks next.
    void pressAtOnce(const std::vector<StatusItemClick>& presses) {
        const QString item = service();
        for (const StatusItemClick press : presses) {
            const QString method = press == StatusItemClick::rightMouseUp ? "ContextMenu" : "Activate";
            static_cast<void>(bar.asyncCall(dbusCall(item, "/StatusNotifierItem", interfaceName, method, {30, 40})));
        }
        QThread::msleep(200);
    }
};

TEST_F(QtStatusItemTest, BarsRememberItByItsAutosaveName) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.setAutosaveName("Ovin.Control");
    EXPECT_EQ(property("Id"), "Ovin.Control");
}

TEST_F(QtStatusItemTest, AnItemThatIsKnownByAnotherNameComesBackUnderTheNewOne) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    EXPECT_EQ(property("Id"), "Ovin");
    const QString before = service();
    item.setAutosaveName("Ovin.Control");
    EXPECT_TRUE(becomes([&] {
        const QStringList items = watcher.registeredItems();
        return items.size() == 1 && !items.first().startsWith(before + "/");
    }));
    EXPECT_EQ(property("Id"), "Ovin.Control");
}

TEST_F(QtStatusItemTest, TitleAndToolTipFollowWhatIsShown) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.setImage({{22, 18}, "Ovin", [](Appearance) { return std::vector<DrawnShape>(); }});
    EXPECT_EQ(property("Title"), "Ovin");
    EXPECT_TRUE(item.setSymbol("checkmark.circle.fill", "Finish arranging"));
    for (const char* name : {"Title", "IconAccessibleDesc"}) EXPECT_EQ(property(name), "Finish arranging") << name;
    EXPECT_EQ(toolTip(), "Finish arranging");
    const auto pictures = qdbus_cast<BusPictures>(property("IconPixmap"));
    ASSERT_EQ(pictures.size(), 2);
    EXPECT_EQ(pictures[0].width, 18);
    EXPECT_EQ(pictures[1].width, 36);
    EXPECT_FALSE(item.setSymbol("no.such.symbol", "Other"));
    EXPECT_EQ(property("Title"), "Finish arranging");
}

TEST_F(QtStatusItemTest, ItsImageIsDrawnAnewWhenTheDesktopTurnsDarkOrLight) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.setImage({{22, 18}, "Ovin", [](Appearance appearance) {
                       DrawnShape shape;
                       shape.rect = {{0, 0}, {22, 18}};
                       shape.fill = {appearance == Appearance::dark ? SRGB{1, 0, 0} : SRGB{0, 0, 1}};
                       return std::vector{shape};
                   }});
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QPalette light = before;
    light.setColor(QPalette::Window, Qt::white);
    light.setColor(QPalette::WindowText, Qt::black);
    // Alpha, red, green and blue.
    const auto pixel = [this] { return qdbus_cast<BusPictures>(property("IconPixmap")).at(0).pixels.left(4).toHex(); };
    for (int turn = 0; turn < 2; ++turn) {
        QApplication::setPalette(dark);
        EXPECT_TRUE(becomes([&] { return pixel() == "ffff0000"; }));
        QApplication::setPalette(light);
        EXPECT_TRUE(becomes([&] { return pixel() == "ff0000ff"; }));
    }
    QApplication::setPalette(before);
}

TEST_F(QtStatusItemTest, OnlyClicksOfTheLeftAndTheRightButtonCount) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.onClick([this](StatusItemClick click) { clicks.push_back(click); });
    press("SecondaryActivate");
    EXPECT_EQ(ask(interfaceName, "Scroll", {120, "vertical"}).type(), QDBusMessage::ReplyMessage);
    press("Activate");
    EXPECT_TRUE(becomes([this] { return clicks.size() == 1; }));
    press("ContextMenu");
    EXPECT_TRUE(becomes([this] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, (std::vector{StatusItemClick::leftMouseUp, StatusItemClick::rightMouseUp}));
}

TEST_F(QtStatusItemTest, AClickWithTheControlKeyHeldIsASecondaryOne) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.onClick([this](StatusItemClick click) { clicks.push_back(click); });
    ASSERT_EQ(QProcess::execute("xdotool", {"keydown", "Control_L"}), 0);
    press("Activate");
    EXPECT_TRUE(becomes([this] { return !clicks.empty(); }));
    ASSERT_EQ(QProcess::execute("xdotool", {"keyup", "Control_L"}), 0);
    press("Activate");
    EXPECT_TRUE(becomes([this] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, (std::vector{StatusItemClick::rightMouseUp, StatusItemClick::leftMouseUp}));
}

TEST_F(QtStatusItemTest, ClicksThatComeAtOnceAreDeliveredOneByOneAndAMenuOnlyForTheLast) {
    constexpr auto left = StatusItemClick::leftMouseUp;
    constexpr auto right = StatusItemClick::rightMouseUp;
    const std::vector<std::pair<std::vector<StatusItemClick>, std::vector<StatusItemClick>>> cases{
        {{left, left, left}, {left, left, left}},
        {{left, right}, {left, right}},
        {{right, left, left}, {left, left}},
        {{right, right}, {right}}};
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.onClick([this](StatusItemClick click) { clicks.push_back(click); });
    for (const auto& [made, delivered] : cases) {
        clicks.clear();
        pressAtOnce(made);
        EXPECT_TRUE(becomes([this, &expected = delivered] { return clicks.size() >= expected.size(); }));
        QCoreApplication::processEvents();
        EXPECT_EQ(clicks, delivered);
    }
}

TEST_F(QtStatusItemTest, AClickMayDestroyTheItemAndTheNextOneIsForgotten) {
    auto item = std::make_unique<QtStatusItem>(
        screens, [] { return true; }, [](bool) {});
    item->onClick([&](StatusItemClick click) {
        clicks.push_back(click);
        item.reset();
    });
    pressAtOnce({StatusItemClick::leftMouseUp, StatusItemClick::leftMouseUp});
    EXPECT_TRUE(becomes([&] { return !item; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks.size(), 1u);
}

TEST_F(QtStatusItemTest, ItsScreenIsKnownFromTheFirstClickOn) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    EXPECT_EQ(item.screen(), std::nullopt);
    press("Activate");
    EXPECT_EQ(item.screen(), screens.ofItem(Point{30, 40}));
    EXPECT_NE(item.screen(), std::nullopt);
}

TEST_F(QtStatusItemTest, ItsMenuIsToldAsItIsNow) {
    bool isOn = false;
    int chosen = 0;
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    item.setMenu([&] {
        return Menu{MenuEntry{"Some_thing…", "q", isOn, [&chosen] { ++chosen; }}, std::nullopt,
                    MenuEntry{"Last", "", false, {}}};
    });
    EXPECT_EQ(qvariant_cast<QDBusObjectPath>(property("Menu")).path(), "/MenuBar");
    const QString menu = "com.canonical.dbusmenu";
    const auto askMenu = [&](const QString& method, const QVariantList& arguments) {
        const QDBusPendingCall call = bar.asyncCall(dbusCall(service(), "/MenuBar", menu, method, arguments));
        EXPECT_TRUE(becomes([&] { return call.isFinished(); }));
        return QDBusPendingReply<>(call).reply();
    };
    const auto entries = [&] {
        QStringList lines;
        const auto arguments = askMenu("GetLayout", {0, -1, QStringList()}).arguments();
        for (const QDBusVariant& child : qdbus_cast<BusMenuLayout>(arguments.value(1)).children) {
            const auto entry = qdbus_cast<BusMenuLayout>(child.variant());
            lines += QString::number(entry.id) + entry.properties.value("type").toString() +
                     entry.properties.value("label").toString() + entry.properties.value("toggle-state").toString();
        }
        return lines;
    };
    EXPECT_EQ(entries(), (QStringList{"1Some__thing…", "2separator", "3Last"}));
    EXPECT_EQ(askMenu("AboutToShow", {0}).arguments().value(0), false);
    isOn = true;
    EXPECT_EQ(askMenu("AboutToShow", {0}).arguments().value(0), true);
    EXPECT_EQ(entries(), (QStringList{"1Some__thing…1", "2separator", "3Last"}));
    const auto press = [&](int id, const QString& name) {
        return askMenu("Event", {id, name, QVariant::fromValue(QDBusVariant(0)), 0U}).type();
    };
    EXPECT_EQ(press(1, "clicked"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(becomes([&] { return chosen == 1; }));
    for (const int id : {-1, 0, 2, 3, 4}) EXPECT_EQ(press(id, "clicked"), QDBusMessage::ReplyMessage) << id;
    EXPECT_EQ(press(1, "hovered"), QDBusMessage::ReplyMessage);
    QCoreApplication::processEvents();
    EXPECT_EQ(chosen, 1);
    const auto group = qdbus_cast<BusMenuGroup>(
        askMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{3, 9, 3}), QStringList{"label"}})
            .arguments()
            .value(0));
    ASSERT_EQ(group.size(), 1);
    EXPECT_EQ(group[0].properties, (QVariantMap{{"label", "Last"}}));
}

TEST_F(QtStatusItemTest, BarsGetTheNameOfAnIconOnlyWhereItIsInstalled) {
    QTemporaryDir data;
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    const DrawnImage image{{22, 18}, "Ovin", [](Appearance) { return std::vector<DrawnShape>(); }};
    item.setImage(image);
    EXPECT_EQ(property("IconName"), "");
    ASSERT_TRUE(QDir(data.path()).mkpath("icons/hicolor/symbolic/apps"));
    for (const char* name : {"org.ovin.Ovin-symbolic", "org.ovin.Ovin-done-symbolic"}) {
        QFile file(data.path() + "/icons/hicolor/symbolic/apps/" + name + ".svg");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    item.setImage(image);
    EXPECT_EQ(property("IconName"), "org.ovin.Ovin-symbolic");
    EXPECT_TRUE(item.setSymbol("checkmark.circle.fill", "Done"));
    EXPECT_EQ(property("IconName"), "org.ovin.Ovin-done-symbolic");
    EXPECT_EQ(qdbus_cast<BusPictures>(property("IconPixmap")).size(), 2);
    qputenv("XDG_DATA_HOME", before);
}

/// A line in the text colour alone would be lost on a bar that has the colour of that text.
TEST_F(QtStatusItemTest, ItsPictureHasBothDarkAndLightInIt) {
    QtStatusItem item(
        screens, [] { return true; }, [](bool) {});
    for (const bool isSymbol : {false, true}) {
        if (isSymbol) {
            ASSERT_TRUE(item.setSymbol("checkmark.circle.fill", "Done"));
        } else {
            DrawnShape line;
            line.rect = {{2, 2}, {18, 3}};
            line.fill = {SystemColor::label};
            item.setImage({{22, 18}, "Ovin", [line](Appearance) { return std::vector{line}; }});
        }
        int darkest = 255;
        int lightest = 0;
        for (const BusPicture& picture : qdbus_cast<BusPictures>(property("IconPixmap"))) {
            for (qsizetype i = 0; i + 3 < picture.pixels.size(); i += 4) {
                if (static_cast<uchar>(picture.pixels[i]) < 100) continue;
                const int green = static_cast<uchar>(picture.pixels[i + 2]);
                darkest = std::min(darkest, green);
                lightest = std::max(lightest, green);
            }
        }
        EXPECT_LT(darkest, 80);
        EXPECT_GT(lightest, 175);
    }
}

TEST_F(QtStatusItemTest, ABarDrawsItWhereAHostIsRegistered) {
    bool hasBar = false;
    bool isToldAsDrawn = false;
    QtStatusItem item(
        screens, [&] { return hasBar; }, [&](bool isDrawn) { isToldAsDrawn = isDrawn; });
    EXPECT_FALSE(item.isDrawn());
    hasBar = true;
    EXPECT_TRUE(becomes([&] { return item.isDrawn() && isToldAsDrawn; }));
}

TEST_F(QtStatusItemTest, OfAnotherWatcherItBelievesWhetherThereIsAHost) {
    ForeignWatcher other("bar");
    int answers = 0;
    const QtStatusItem item(
        screens, [] { return true; }, [&](bool) { ++answers; });
    EXPECT_TRUE(becomes([&] { return answers == 1; }));
    EXPECT_FALSE(item.isDrawn());
    for (const bool hasHost : {true, false}) {
        other.tellOfHost(hasHost);
        EXPECT_TRUE(becomes([&] { return item.isDrawn() == hasHost; })) << hasHost;
    }
}

TEST_F(QtStatusItemTest, OfKdesWatcherItBelievesThatOnlyWhereAHostHasAName) {
    ForeignWatcher kdes("kded5");
    int answers = 0;
    const QtStatusItem item(
        screens, [] { return true; }, [&](bool) { ++answers; });
    kdes.tellOfHost(true);
    EXPECT_TRUE(becomes([&] { return answers == 2; }));
    EXPECT_FALSE(item.isDrawn());
    bar.registerService("org.kde.StatusNotifierHost-1");
    EXPECT_TRUE(becomes([&] { return item.isDrawn(); }));
    bar.unregisterService("org.kde.StatusNotifierHost-1");
    EXPECT_TRUE(becomes([&] { return !item.isDrawn(); }));
}

TEST_F(QtStatusItemTest, AnItemThatIsDestroyedLeavesTheBar) {
    {
        const QtStatusItem item(
            screens, [] { return true; }, [](bool) {});
        EXPECT_NE(service(), "");
    }
    EXPECT_TRUE(becomes([this] { return watcher.registeredItems().isEmpty(); }));
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
