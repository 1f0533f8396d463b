#pragma once

#include <QPixmap>
#include <QWidget>
#include <cstdint>
#include <map>
#include <vector>

#include "desktop/ActiveApplication.h"
#include "desktop/BarLayout.h"
#include "desktop/BarPainter.h"
#include "desktop/MinuteClock.h"
#include "desktop/StatusNotifierHost.h"

namespace ovin {

/// The menu bar: a dock at the top of the primary screen. On the left the name of the active application, on the right the
/// clock and, from there leftwards, the status items.
class BarWindow : public QWidget {
    Q_OBJECT

public:
    /// A place in the bar's right part.
    struct Slot {
        enum class Kind { item, expander, clock };

        Kind kind = Kind::item;
        /// Null unless the slot is an item's.
        StatusItem* item = nullptr;
        BarSpan span;
        bool isDrawn = true;
    };

    BarWindow(StatusNotifierHost& host, ActiveApplication& application, MinuteClock& clock);

    /// Puts the bar on the screen.
    void open();

    /// Items from left to right, drawn or not, then the expander if there is one, then the clock.
    [[nodiscard]] const std::vector<Slot>& barSlots() const { return slots_; }

    /// Does what a click on the item with that button would do, drawn or not.
    void press(StatusItem& item, Qt::MouseButton button = Qt::LeftButton);
    /// Shows more items over the application's half of the bar, or gives that half back.
    void toggleExpanded();

Q_SIGNALS:
    /// `barSlots` has changed.
    void slotsChanged();
    void slotRemoved(StatusItem* item);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Icon {
        std::uint64_t revision = 0;
        QPixmap picture;
    };

    void followScreen();
    void place();
    void layOut();
    void tick();
    void forget(StatusItem* item);
    void showMenu(StatusItem* item, QMenu* menu);
    void menuClosed(StatusItem* item);

    void pressSlot(const Slot& slot, Qt::MouseButton button);
    void pressBesideMenu(const QMouseEvent& event);
    void drag(int x);

    [[nodiscard]] BarContent content();
    [[nodiscard]] const QPixmap& icon(const StatusItem& item);
    [[nodiscard]] const Slot* slotAt(QPoint position) const;
    [[nodiscard]] const Slot* slotOf(const StatusItem* item) const;
    /// The position that an item is given with a click: below the middle of its slot, in the X server's pixels.
    [[nodiscard]] QPoint clickPosition(const StatusItem& item) const;
    [[nodiscard]] int itemsLeft() const;
    void paintSlot(BarPainter& painter, const Slot& slot);

    StatusNotifierHost& host_;
    ActiveApplication& application_;
    BarLayout layout_;
    std::vector<Slot> slots_;
    std::map<const StatusItem*, Icon> icons_;
    QString time_;
    QMetaObject::Connection screenGeometry_;
    bool isExpanded_ = false;

    StatusItem* pressed_ = nullptr;
    StatusItem* dragged_ = nullptr;
    /// The item whose menu is open.
    StatusItem* opened_ = nullptr;
};

}  // namespace ovin
