#pragma once

#include <QDBusConnection>
#include <QObject>
#include <optional>

#include "platform/linux/drawing/ColorSchemeSetting.h"

namespace ovin {

/// Keeps the program's palette to the desktop's colours where the toolkit does not by itself. Main thread only.
class DesktopColors final : public QObject {
    Q_OBJECT

public:
    explicit DesktopColors(const QDBusConnection& session);

private:
    /// Of KDE's programs that change what many programs show.
    Q_SLOT void globalSettingsChanged(int kind, int argument);

    void apply();

    QDBusConnection session_;
    /// Nothing under KDE.
    std::optional<ColorSchemeSetting> setting_;
};

}  // namespace ovin
