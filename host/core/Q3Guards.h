#pragma once

#include "Q3Exception.h"
#include "Q3Messages.h"

#include <exception>

// Runs an event handler; a failure inside it is shown with its own message in
// a box titled "Errore" with the error icon, and goes no further.
// Answers whether the handler ran to its end.
template <typename Handler>
bool Q3Guarded(Handler &&handler)
{
    try {
        handler();
        return true;
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    }
    return false;
}

// The busy cursor for the life of the guard, restored in every case. The
// host's widget library installs what shows it.
class Q3_EXPORT TQ3BusyCursor
{
public:
    TQ3BusyCursor();
    ~TQ3BusyCursor();
    TQ3BusyCursor(const TQ3BusyCursor &) = delete;
    TQ3BusyCursor &operator=(const TQ3BusyCursor &) = delete;

    // How many guards are alive now.
    static int Depth();
};

using TQ3CursorHook = void (*)();
Q3_EXPORT void SetQ3BusyCursorHooks(TQ3CursorHook show, TQ3CursorHook restore);
