#pragma once

#include <QImage>
#include <QString>
#include <QVariantMap>

#include "platform/linux/items/StatusItemClick.h"

namespace ovin {

/// What a status item says about itself, made safe to show: every property may be missing, of a type that nobody expects or
/// absurdly long.
struct StatusItemState {
    enum class Status { passive, active, needsAttention };

    struct Picture {
        /// A name of the icon theme or a path.
        QString name;
        /// The largest picture that came along; null when none did.
        QImage image;

        [[nodiscard]] bool isEmpty() const { return name.isEmpty() && image.isNull(); }
    };

    QString id;
    /// The title, or what comes closest to one.
    QString title;
    Status status = Status::active;
    Picture icon;
    Picture attentionIcon;
    QString iconThemePath;
    /// Empty when the item has no menu object.
    QString menuPath;
    StatusItemClickTraits clickTraits;

    /// The picture for the bar at this status.
    [[nodiscard]] const Picture& shownIcon() const;
};

[[nodiscard]] StatusItemState readStatusItemState(const QVariantMap& properties);

}  // namespace ovin
