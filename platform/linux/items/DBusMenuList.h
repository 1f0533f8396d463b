#pragma once

#include <QMenu>
#include <cstddef>
#include <functional>

namespace ovin {

/// One list of a menu's entries, or a part of a long one. Unlike a plain menu it is laid out once for many changes while it
/// is open, and stays on its screen. Main thread only.
class DBusMenuList : public QMenu {
    Q_OBJECT

public:
    /// The entry whose children are listed, and the first of these that is.
    struct Content {
        int parent = 0;
        std::size_t first = 0;
    };

    using QMenu::QMenu;

    Content content;

    /// Runs `changes`, which change the actions, and then lays the menu out if it is open.
    void change(const std::function<void()>& changes);

protected:
    void actionEvent(QActionEvent* event) override;

private:
    [[nodiscard]] bool isTooHigh() const;
    void layOut(bool wasTooHigh);

    bool isChanging_ = false;
    bool hasChanged_ = false;
};

}  // namespace ovin
