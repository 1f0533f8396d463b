#include "platform/linux/own_item/QtStatusMenu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTextLayout>
#include <string>

namespace ovin {
namespace {

class QtStatusMenuTest : public testing::Test {
protected:
    ~QtStatusMenuTest() override { QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }

    /// The title of a menu's only entry, as the toolkit has it.
    QString shown(const std::string& title) {
        MenuEntry entry;
        entry.title = title;
        menu.show({entry}, {100, 100});
        const auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return popup == nullptr ? QString() : popup->actions().at(0)->text();
    }

    /// Where a character stands in a line of menus that run in the program's direction. Not for the first of a run.
    static double placeOf(QChar character, const QString& text) {
        QTextOption option;
        option.setTextDirection(QGuiApplication::layoutDirection());
        QTextLayout layout(text);
        layout.setTextOption(option);
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        return line.cursorToX(static_cast<int>(text.indexOf(character)));
    }

    QtStatusMenu menu;
};

TEST_F(QtStatusMenuTest, TheDotsOfATitleStandAtItsEndAlsoWhereMenusRunFromRightToLeft) {
    const QChar dots(0x2026);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QGuiApplication::setLayoutDirection(direction);
        const QString text = shown("Organize Menu Bar…");
        ASSERT_TRUE(text.contains(dots));
        EXPECT_GT(placeOf(dots, text), placeOf('r', text)) << direction;
    }
}

}  // namespace
}  // namespace ovin
