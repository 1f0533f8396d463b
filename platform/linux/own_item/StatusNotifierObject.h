#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>

namespace ovin {

/// A picture of a status item as the bus carries it: rows of pixels, each alpha, red, green and blue.
struct BusPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using BusPictures = QList<BusPicture>;

/// A tool tip of a status item as the bus carries it.
struct BusToolTip {
    QString iconName;
    BusPictures pictures;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture);
QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip);

/// A status item of this program on the session bus: `org.kde.StatusNotifierItem`. Its menu is another object of the same
/// connection, at `menuPath`.
class StatusNotifierObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(ovin::BusPictures IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ title)
    Q_PROPERTY(ovin::BusToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    static constexpr const char* menuPath = "/MenuBar";

    /// `id` is also the first title.
    explicit StatusNotifierObject(const QString& id);

    /// Sets the icon's name, which may be empty, and the pictures for bars that do not find it.
    void setIcon(const QString& name, const BusPictures& pictures);
    /// Sets the title, the tool tip and the icon's description.
    void setTitle(const QString& title);
    /// The interface has no signal for this.
    void setId(const QString& id);
    /// Whether a program has read the Id since it was set.
    [[nodiscard]] bool hasToldId() const { return hasToldId_; }

    /// Clicks. Where they were is left out, because some bars tell it wrongly.
    std::function<void()> activated;
    std::function<void()> contextMenuRequested;

    [[nodiscard]] QString category() const { return "ApplicationStatus"; }
    [[nodiscard]] QString id() const;
    [[nodiscard]] QString title() const { return title_; }
    [[nodiscard]] QString status() const { return "Active"; }
    [[nodiscard]] QString iconName() const { return iconName_; }
    [[nodiscard]] BusPictures iconPixmap() const { return pictures_; }
    [[nodiscard]] BusToolTip toolTip() const { return {iconName_, {}, title_, {}}; }
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const { return QDBusObjectPath(menuPath); }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewToolTip();

private:
    QString id_;
    mutable bool hasToldId_ = false;
    QString title_;
    QString iconName_;
    BusPictures pictures_;
};

}  // namespace ovin
