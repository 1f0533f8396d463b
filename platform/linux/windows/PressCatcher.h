#pragma once

#include <xcb/xcb.h>

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <vector>

namespace ovin {

/// Makes the X server of a Wayland session hear every press while the ledge or a menu is open: a window that shows nothing
/// covers the screens below them, because presses on the windows of other programs would not reach that server. It takes
/// such a press from these programs, as menus do. No effect in other sessions. Main thread only.
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
    void cover();
    void uncover();

    std::vector<const QObject*> open_;
    xcb_window_t cover_ = XCB_WINDOW_NONE;
};

}  // namespace ovin
