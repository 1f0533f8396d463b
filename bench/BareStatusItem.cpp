// A Qt program with a status item and nothing else: what Ovin's start and memory are compared with.

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QPixmap picture(22, 22);
    picture.fill(Qt::black);
    QSystemTrayIcon item{QIcon(picture)};
    item.setToolTip("Bare");
    item.show();
    return QApplication::exec();
}
