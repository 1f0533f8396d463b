#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/linux/items/BarSettings.h"
#include "platform/linux/items/ItemChoice.h"

namespace ovin {

/// The settings of Xfce's panel, which are on the bus, and of Plasma's, which are a file, while such a bar runs. Follows
/// changes. Made on the main thread.
class QtBarSettings final : public QObject, public BarSettings {
    Q_OBJECT

public:
    /// `changed` is called on the main thread whenever `draws` may answer differently.
    QtBarSettings(const QDBusConnection& bus, std::function<void()> changed);

    /// With several trays, whether all of them draw the item: one that is missed in a tray is listed.
    [[nodiscard]] bool draws(const std::string& id, bool isPassive) const override;

    /// Whether the running bar has a tray, as `draws` has found when it read the settings last. Never blocks.
    [[nodiscard]] bool hasTray() const { return !isPlasma_ || hasPlasmaTray_; }

private:
    Q_SLOT void xfceChanged(const QDBusMessage& signal);

    void barChanged(const QString& bar, bool runs);
    void askXfce();
    void plasmaChanged();

    QDBusConnection bus_;
    const std::function<void()> changed_;
    QDBusServiceWatcher bars_;
    const QString plasmaFile_;
    QFileSystemWatcher files_;
    bool isXfce_ = false;
    std::atomic<bool> isPlasma_ = false;
    /// Whether `plasma_` is what the file holds.
    mutable std::atomic<bool> isPlasmaRead_ = false;
    mutable std::atomic<bool> hasPlasmaTray_ = true;
    mutable std::mutex xfceMutex_;
    /// No choice unless that bar runs.
    ItemChoice xfce_;
    /// Held while the file is read, so the main thread never waits for it.
    mutable std::mutex plasmaMutex_;
    mutable std::vector<ItemChoice> plasma_;
};

}  // namespace ovin
