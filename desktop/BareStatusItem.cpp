// A Qt program with a status item, and a window that comes and goes with each click on it: what Ovin's start, memory and
// answer to a click are compared with.

#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QWidget>

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QPixmap picture(22, 22);
    picture.fill(Qt::black);
    QSystemTrayIcon item{QIcon(picture)};
    item.setToolTip("Bare");
    item.show();

    QWidget window(nullptr, Qt::ToolTip);
    QObject::connect(&item, &QSystemTrayIcon::activated, &window, [&window] {
        window.setGeometry(QCursor::pos().x() - 50, 30, 100, 60);
        window.setVisible(!window.isVisible());
    });
    return QApplication::exec();
}
