#pragma once

#include <QCache>
#include <QHash>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/linux/drawing/IconReader.h"

namespace ovin {

/// The icons that other programs name, read by a process that lives for as long as something is asked of it. Nobody waits
/// for it: an icon is there or will come. Main thread.
class IconLoader final : public QObject {
    Q_OBJECT

public:
    /// `program` is started with `readIconsArgument`. An answer that takes longer than `patience` is none.
    explicit IconLoader(QString program, std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~IconLoader() override;

    /// The one of the application object, which owns it; null where there is none, as in programs that show no icons of
    /// others.
    [[nodiscard]] static IconLoader* shared();
    static void share(std::unique_ptr<IconLoader> loader);

    /// Asks for an icon in the size that fits a square of `side` pixels, again if a file or the theme may have changed
    /// since. `loaded` follows unless it is known and cannot have changed.
    void load(const IconName& icon, int side);

    /// The icon as far as it is known; nothing while it has never come.
    [[nodiscard]] std::optional<ReadIcon> known(const IconName& icon, int side) const;

Q_SIGNALS:
    /// Some icons have come.
    void loaded();

private:
    struct Request {
        IconName icon;
        int side = 0;

        friend bool operator==(const Request&, const Request&) = default;
        friend size_t qHash(const Request& request, size_t seed) {
            return qHashMulti(seed, request.icon.name, request.icon.themeFolder, request.side);
        }
    };

    struct Known {
        ReadIcon icon;
        /// The theme in which it was looked for.
        QString theme;
    };

    void start();
    void send(const Request& request);
    void receive();
    void settle(ReadIcon icon);
    /// Gives the first icon up, and leaves the others to a new reader.
    void giveUp();
    void dismiss();

    const QString program_;
    QTimer starting_;
    QTimer patience_;
    /// Null while nothing is asked. Those that were dismissed are children of this object until they have ended.
    QProcess* reader_ = nullptr;
    /// The theme that the last reader was told.
    QString theme_;
    /// Those that are not answered, in the order in which the reader gets them.
    QList<Request> outstanding_;
    /// Killed readers that have not ended, each with the icon at which it was: a file system that took a question holds
    /// whoever asked. The same is not asked again meanwhile.
    QHash<const QProcess*, Request> hanging_;
    int failures_ = 0;
    /// Counted in bytes.
    QCache<Request, Known> known_;
};

}  // namespace ovin
