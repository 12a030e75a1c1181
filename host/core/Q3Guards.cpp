#include "Q3Guards.h"

#include <exception>

namespace {
TQ3CursorHook showBusy = nullptr;
TQ3CursorHook restoreBusy = nullptr;
int depth = 0;
} // namespace

void Q3ShowCaughtFailure()
{
    try {
        throw;
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    } catch (...) {
        Q3ShowError(QString::fromUtf8(Q3MsgErroreImprevisto));
    }
}

TQ3BusyCursor::TQ3BusyCursor()
{
    ++depth;
    if (showBusy)
        showBusy();
}

TQ3BusyCursor::~TQ3BusyCursor()
{
    --depth;
    if (restoreBusy)
        restoreBusy();
}

int TQ3BusyCursor::Depth()
{
    return depth;
}

void SetQ3BusyCursorHooks(TQ3CursorHook show, TQ3CursorHook restore)
{
    showBusy = show;
    restoreBusy = restore;
}
