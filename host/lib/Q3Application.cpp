#include "Q3Application.h"

#include "Q3Guards.h"

TQ3Application::TQ3Application(int &argc, char **argv) : QApplication(argc, argv) {}

TQ3Application::~TQ3Application() = default;

bool TQ3Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        Q3ShowCaughtFailure();
    }
    return false;
}
