// Makes the database the tests start from: a new file with the host's tables,
// then the whole schema upgrade of the "Documenti" module. The tests copy it
// instead of running the upgrade again for every test function.
//
//   q3_test_template <file>
//
// The database is made under a name of its own (the process's) beside the
// file and takes the file's name only once it is complete, its one attachment
// ended and the embedded engine shut down: a test never copies a half-made
// file, nor one that an attachment still writes to.
#include "KRVAggiornaDatabase.h"
#include "Q3Connection.h"
#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3Messages.h"
#include "Q3TestDatabaseFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <filesystem>

#include <ibase.h>

namespace {

// Answers what went wrong, empty when the database is complete.
QString Make(const QString &path)
{
    // A step that fails says so in a box and the upgrade goes on: here the box fails the run.
    TQ3RecordingResponder boxes;
    try {
        TQ3DatabaseTarget target;
        target.Database = path;
        CreateQ3Database(target);
        // Made quickly, the copies then force their writes as a new database does.
        SetQ3TestForcedWrites(path, false);
        {
            TQ3Connection connection;
            connection.SetConnectionString(target.ConnectionString());
            connection.Open();
            UpgradeQ3HostSchema(connection.Database());
            AggiornaDatabase(connection.Database());
        }
        SetQ3TestForcedWrites(path, true);
    } catch (const EQ3Exception &e) {
        return e.Message();
    }
    return boxes.Testi(QStringLiteral("\n"));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: q3_test_template <file>\n");
        return 2;
    }
    const QString path = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    const QString partial = path + QLatin1Char('.') + QString::number(QCoreApplication::applicationPid());
    QFile::remove(partial);
    const QString failure = Make(partial);
    // The engine writes back and closes every database it holds.
    fb_shutdown(0, fb_shutrsn_app_stopped);
    if (!failure.isEmpty()) {
        QFile::remove(partial);
        std::fprintf(stderr, "%s\n", qPrintable(failure));
        return 1;
    }
    std::error_code error;
    std::filesystem::rename(partial.toStdString(), path.toStdString(), error);
    if (error) {
        QFile::remove(partial);
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), error.message().c_str());
        return 1;
    }
    std::printf("%s\n", qPrintable(path));
    return 0;
}
