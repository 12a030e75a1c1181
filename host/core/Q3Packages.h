#pragma once

#include "Q3Module.h"

#include <QList>

#include <functional>

// The extension of module library files.
inline constexpr char Q3ModuleFileExtension[] = ".so";

// Makes a module's main object, owned by the given owner (the application).
using TQ3ModuleClass = std::function<IQ3Module *(QObject *owner)>;

struct Q3_EXPORT TQ3PackageEntry
{
    QString FileName;
    QString Description;
    TQ3ModuleClass ModuleClass;
    IQ3Module *MainObject = nullptr;
};

Q3_EXPORT void RegisterPackage(const QString &fileName, const QString &description, TQ3ModuleClass moduleClass);
Q3_EXPORT QList<TQ3PackageEntry> &PackageList();
// Index of a module by its file name, -1 when not loaded.
Q3_EXPORT int GetPackageIndex(const QString &fileName);

// Creates the main object of every registered module that has none yet, with
// the given owner; answers the ones created, in registration order.
Q3_EXPORT QList<IQ3Module *> CreatePackageMainObjects(QObject *owner);
// Forgets a module's main object (it is being destroyed).
Q3_EXPORT void ReleasePackageMainObject(IQ3Module *mainObject);
// Takes a module out of the registry.
Q3_EXPORT void UnregisterPackage(const QString &fileName);

// A named request's parameter as the whole number it must be; raises
// EQ3Exception naming the parameter otherwise.
Q3_EXPORT int Q3ParametroIntero(const QVariant &parametro);

// Whether a module of that name ("Documenti", "Attivita") is registered.
Q3_EXPORT bool Q3ModuloCaricato(const QString &nome);
// Asks the module of that name for a named request through its package action
// entry, with the parameters and the index of the last one; answers what the
// module answers, or -1 when no such module has a main object.
Q3_EXPORT int Q3EseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri);
