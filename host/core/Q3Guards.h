#pragma once

#include "Q3Exception.h"
#include "Q3Messages.h"

// The text shown for a failure that carries no message of its own.
inline constexpr char Q3MsgErroreImprevisto[] = "Si è verificato un errore imprevisto.";

// Inside a catch block: shows the failure being handled with its own message
// in a box titled "Errore" with the error icon.
Q3_EXPORT void Q3ShowCaughtFailure();

// Runs an event handler; any failure inside it is shown with its own message
// in a box titled "Errore" with the error icon, and goes no further.
// Answers whether the handler ran to its end.
template <typename Handler>
bool Q3Guarded(Handler &&handler)
{
    try {
        handler();
        return true;
    } catch (...) {
        Q3ShowCaughtFailure();
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
