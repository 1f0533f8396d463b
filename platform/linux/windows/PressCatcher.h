#pragma once

#include <QObject>
#include <QWidget>
#include <memory>
#include <vector>

namespace ovin {

/// Makes the X server of a Wayland session hear every press while the ledge or a menu is open: a window that shows nothing
/// covers the screens below them, because presses on the windows of other programs would not reach that server. It takes
/// such a press from these programs, as menus do, and so a turn of the wheel; either closes what is open. No effect in other
/// sessions. Main thread only.
class PressCatcher final : public QObject {
    Q_OBJECT

public:
    PressCatcher();
    PressCatcher(const PressCatcher&) = delete;
    PressCatcher& operator=(const PressCatcher&) = delete;
    ~PressCatcher() override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    class Cover;

    void closeAll();

    /// What closes at a press, in the order in which it was shown.
    std::vector<QWidget*> open_;
    /// Null while nothing is open.
    std::unique_ptr<Cover> cover_;
};

}  // namespace ovin
