#include "KRVSession.h"

#include "Q3Packages.h"

QString KRVModuleFileName()
{
    return QStringLiteral("Documenti") + QString::fromLatin1(Q3ModuleFileExtension);
}

bool KRVModuloCaricato(const QString &nome)
{
    return GetPackageIndex(nome + QString::fromLatin1(Q3ModuleFileExtension)) >= 0;
}

void KRVEseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri)
{
    const int index = GetPackageIndex(nome + QString::fromLatin1(Q3ModuleFileExtension));
    if (index < 0)
        return;
    if (IQ3Module *modulo = PackageList().at(index).MainObject)
        modulo->ExecutePkgAction(azione, parametri, int(parametri.size()) - 1);
}
