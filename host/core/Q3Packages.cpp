#include "Q3Packages.h"

#include "Q3Exception.h"

QList<TQ3PackageEntry> &PackageList()
{
    static QList<TQ3PackageEntry> list;
    return list;
}

void RegisterPackage(const QString &fileName, const QString &description, TQ3ModuleClass moduleClass)
{
    TQ3PackageEntry entry;
    entry.FileName = fileName;
    entry.Description = description;
    entry.ModuleClass = std::move(moduleClass);
    PackageList().append(entry);
}

int GetPackageIndex(const QString &fileName)
{
    const QList<TQ3PackageEntry> &list = PackageList();
    for (int i = 0; i < list.size(); ++i) {
        if (list.at(i).FileName.compare(fileName, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QList<IQ3Module *> CreatePackageMainObjects(QObject *owner)
{
    QList<IQ3Module *> created;
    for (TQ3PackageEntry &entry : PackageList()) {
        if (entry.MainObject || !entry.ModuleClass)
            continue;
        entry.MainObject = entry.ModuleClass(owner);
        created.append(entry.MainObject);
    }
    return created;
}

void ReleasePackageMainObject(IQ3Module *mainObject)
{
    for (TQ3PackageEntry &entry : PackageList()) {
        if (entry.MainObject == mainObject)
            entry.MainObject = nullptr;
    }
}

void UnregisterPackage(const QString &fileName)
{
    const int index = GetPackageIndex(fileName);
    if (index >= 0)
        PackageList().removeAt(index);
}

bool Q3ModuloCaricato(const QString &nome)
{
    return GetPackageIndex(nome + QString::fromLatin1(Q3ModuleFileExtension)) >= 0;
}

int Q3EseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri)
{
    const int index = GetPackageIndex(nome + QString::fromLatin1(Q3ModuleFileExtension));
    IQ3Module *modulo = index < 0 ? nullptr : PackageList().at(index).MainObject;
    return modulo ? modulo->ExecutePkgAction(azione, parametri, int(parametri.size()) - 1) : -1;
}

int Q3ParametroIntero(const QVariant &parametro)
{
    bool ok = false;
    const int value = parametro.toInt(&ok);
    if (!ok)
        throw EQ3Exception(QStringLiteral("Il parametro \"%1\" non è un numero intero.").arg(parametro.toString()));
    return value;
}
