#include "KRVSession.h"

#include "Q3Exception.h"
#include "Q3Packages.h"

QString KRVModuleFileName()
{
    return QStringLiteral("Documenti") + QString::fromLatin1(Q3ModuleFileExtension);
}

QSqlDatabase KRVModuleDatabase()
{
    const int index = GetPackageIndex(KRVModuleFileName());
    auto session = index < 0 ? nullptr : dynamic_cast<IKRVModuleSession *>(PackageList().at(index).MainObject);
    if (!session)
        throw EQ3Exception(QStringLiteral("Il modulo documenti non è caricato."));
    return session->ModADOConn()->Database();
}
