#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// One run of the quillo3 executable of the build.
struct TQ3HostRun
{
    int ExitCode = -1;
    QString StdOut;
    QString StdErr;
};

// Runs quillo3 with the arguments and environment additions; waits for it.
TQ3HostRun RunQuillo3Process(const QStringList &arguments, const QProcessEnvironment &extra = {});
