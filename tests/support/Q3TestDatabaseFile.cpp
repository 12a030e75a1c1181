#include "Q3TestDatabaseFile.h"

#include "Q3DatabaseFile.h"
#include "Q3Exception.h"

#include <ibase.h>

void SetQ3TestForcedWrites(const QString &file, bool forced)
{
    const QByteArray name = file.toUtf8();
    const char dpb[] = {isc_dpb_version1, isc_dpb_force_write, 1, char(forced ? 1 : 0)};
    ISC_STATUS_ARRAY status{};
    isc_db_handle db = 0;
    if (isc_attach_database(status, 0, name.constData(), &db, short(sizeof dpb), dpb))
        throw EQ3Exception(
            QStringLiteral("Impossibile aprire il database \"%1\":\n%2").arg(file, Q3FirebirdStatusText(status)));
    isc_detach_database(status, &db);
}

bool Q3TestWritesCached()
{
    return !qEnvironmentVariableIsEmpty("Q3_TEST_CACHED_WRITES");
}
