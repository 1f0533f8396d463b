#include "platform/linux/QtApplication.h"

#include <QApplication>

namespace ovin {

// There is no order among programs here, only among windows: the one that is about to be shown asks for the focus itself.
void QtApplication::activate() {}

void QtApplication::terminate() { QCoreApplication::quit(); }

void QtApplication::beep() { QApplication::beep(); }

}  // namespace ovin
