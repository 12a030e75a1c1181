#include "KRVSession.h"

#include "Q3Packages.h"

QString KRVModuleFileName()
{
    return QStringLiteral("Documenti") + QString::fromLatin1(Q3ModuleFileExtension);
}

bool KRVModuloCaricato(const QString &nome)
{
    return Q3ModuloCaricato(nome);
}

void KRVEseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri)
{
    Q3EseguiAzioneModulo(nome, azione, parametri);
}
