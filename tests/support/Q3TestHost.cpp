#include "Q3TestHost.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

TQ3HostRun RunQuillo3Process(const QStringList &arguments, const QProcessEnvironment &extra)
{
    QDir bin(QCoreApplication::applicationDirPath());
    if (!bin.exists(QStringLiteral("quillo3")))
        bin.cdUp();
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(extra);
    process.setProcessEnvironment(environment);
    process.start(bin.filePath(QStringLiteral("quillo3")), arguments);
    process.waitForFinished(120000);
    TQ3HostRun run;
    run.ExitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.StdOut = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.StdErr = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}
