#include "Q3Guards.h"

namespace {
TQ3CursorHook showBusy = nullptr;
TQ3CursorHook restoreBusy = nullptr;
int depth = 0;
} // namespace

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
