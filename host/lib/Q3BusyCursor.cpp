#include "Q3Guards.h"

#include <QApplication>
#include <QCursor>

namespace {

void ShowBusy()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

void RestoreBusy()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QApplication::restoreOverrideCursor();
}

// Loading the widget library gives the busy guards their hourglass.
const struct BusyCursorInstaller
{
    BusyCursorInstaller() { SetQ3BusyCursorHooks(&ShowBusy, &RestoreBusy); }
} busyCursorInstaller;

} // namespace
