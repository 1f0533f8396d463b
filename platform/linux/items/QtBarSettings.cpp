#include "platform/linux/items/QtBarSettings.h"

#include <QDBusArgument>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "platform/linux/system/DBusCall.h"
#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

const QString xfcePanel = QStringLiteral("org.xfce.Panel");
const QString plasmaShell = QStringLiteral("org.kde.plasmashell");

const QString xfceSettings = QStringLiteral("org.xfce.Xfconf");
const QString xfceSettingsPath = QStringLiteral("/org/xfce/Xfconf");
const QString xfceChannel = QStringLiteral("xfce4-panel");
/// The last part of a property's name; the parts before it are those of a plug-in. The panel adds new items to this list by
/// itself where its user wants them hidden.
const QString xfceHidden = QStringLiteral("/hidden-items");

/// The file takes tens of kilobytes.
constexpr qint64 longestFile = 1 << 20;

/// Where there is no file yet, a tray without a choice.
std::vector<ItemChoice> choicesIn(const QString& path) {
    QFile file(path);
    // Only a regular file, because opening anything else might block.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {ItemChoice()};
    return plasmaChoices(file.read(longestFile).toStdString());
}

}  // namespace

QtBarSettings::QtBarSettings(const QDBusConnection& bus, std::function<void()> changed)
    : bus_(bus),
      changed_(std::move(changed)),
      plasmaFile_(QString::fromStdString(
          (userFolder("XDG_CONFIG_HOME", ".config") / "plasma-org.kde.plasma.desktop-appletsrc").string())) {
    connect(&files_, &QFileSystemWatcher::fileChanged, this, &QtBarSettings::plasmaChanged);
    connect(&files_, &QFileSystemWatcher::directoryChanged, this, &QtBarSettings::plasmaChanged);
    for (const char* signal : {"PropertyChanged", "PropertyRemoved"}) {
        bus_.connect(xfceSettings, xfceSettingsPath, xfceSettings, signal, {xfceChannel}, QString(), this,
                     SLOT(xfceChanged(QDBusMessage)));
    }
    bars_.setConnection(bus_);
    connect(&bars_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& bar, const QString&, const QString& newOwner) { barChanged(bar, !newOwner.isEmpty()); });
    for (const QString& bar : {xfcePanel, plasmaShell}) {
        bars_.addWatchedService(bar);
        const auto question = dbusCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"), {bar});
        callLater(bus_, question, untilAnswered, this, [this, bar](const QDBusMessage& answer) {
            if (answer.arguments().value(0).toBool()) barChanged(bar, true);
        });
    }
}

bool QtBarSettings::draws(const std::string& id, bool isPassive) const {
    if (isPlasma_) {
        const std::lock_guard lock(plasmaMutex_);
        if (!isPlasmaRead_.exchange(true)) {
            plasma_ = choicesIn(plasmaFile_);
            hasPlasmaTray_ = !plasma_.empty();
        }
        return hasPlasmaTray_ &&
               std::ranges::all_of(plasma_, [&](const ItemChoice& tray) { return tray.draws(id, isPassive); });
    }
    const std::lock_guard lock(xfceMutex_);
    return xfce_.draws(id, isPassive);
}

void QtBarSettings::barChanged(const QString& bar, bool runs) {
    if (bar == xfcePanel) {
        isXfce_ = runs;
        return askXfce();
    }
    isPlasma_ = runs;
    plasmaChanged();
}

void QtBarSettings::xfceChanged(const QDBusMessage& signal) {
    if (signal.arguments().value(1).toString().endsWith(xfceHidden)) askXfce();
}

/// Without the panel its settings do not count.
void QtBarSettings::askXfce() {
    const auto question = dbusCall(xfceSettings, xfceSettingsPath, xfceSettings, QStringLiteral("GetAllProperties"),
                                   {xfceChannel, QStringLiteral("/plugins")});
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        ItemChoice choice;
        const auto properties = qdbus_cast<QVariantMap>(answer.arguments().value(0));
        for (const auto& [name, value] : properties.asKeyValueRange()) {
            if (!isXfce_ || !name.endsWith(xfceHidden)) continue;
            for (const QVariant& id : qdbus_cast<QVariantList>(value)) choice.hidden.insert(id.toString().toStdString());
        }
        {
            const std::lock_guard lock(xfceMutex_);
            if (xfce_ == choice) return;
            xfce_ = std::move(choice);
        }
        changed_();
    });
}

void QtBarSettings::plasmaChanged() {
    const QString folder = QFileInfo(plasmaFile_).path();
    // A file that was replaced is no longer watched. One that does not exist cannot be; then its folder is.
    const bool isMissing = isPlasma_ && files_.files().isEmpty() && !files_.addPath(plasmaFile_);
    isMissing ? files_.addPath(folder) : files_.removePath(folder);
    // Only now, so that what is read is not older than what is watched.
    isPlasmaRead_ = false;
    changed_();
}

}  // namespace ovin
