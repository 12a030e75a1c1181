#pragma once

#include "Q3Module.h"
#include "Q3ModuleMetadata.h"

#include <QList>
#include <QString>
#include <QStringList>

// Starts the modules of a folder as the host does, and stops them again.
class Q3_EXPORT TQ3ModuleLoader
{
public:
    TQ3ModuleLoader() = default;
    ~TQ3ModuleLoader();

    TQ3ModuleLoader(const TQ3ModuleLoader &) = delete;
    TQ3ModuleLoader &operator=(const TQ3ModuleLoader &) = delete;

    // Reads the metadata of every module library of the folder without loading
    // it and orders the modules so that each comes after the ones it depends on
    // (otherwise by file name). Then, for each in turn: loads its library,
    // registers the module under its file name with the metadata's description
    // and the plug-in's factory, creates its main object with the owner and
    // initialises it. Last, AllModulesInitialized of every module started.
    // A module already registered is left as it is. A module that cannot start
    // is told in a message box ("Errore" for a fault of its own, "Attenzione"
    // when a module it needs is missing) and left out, with the modules that
    // need it; the others start all the same.
    void Load(const QString &folder, QObject *owner);
    // ModuloFinalize of every module started, then Finalize, in the reverse
    // order of their start; then deletes the main objects and takes the modules
    // out of the registry. A failure in a module is shown and the others go on.
    void Unload();
    // The file names of the modules started, in the order they started.
    QStringList Started() const;
    // The metadata of the modules started, in the same order.
    QList<TQ3ModuleMetadata> StartedMetadata() const;

private:
    struct TStarted
    {
        TQ3ModuleMetadata Metadata;
        IQ3Module *Main = nullptr;
    };

    void Start(const TQ3ModuleMetadata &metadata, QObject *owner);

    QList<TStarted> m_started;
};

// The notices of every registered module for the user who has just logged in
// (IQ3Module::AvvisiAccesso), in the order the modules were registered: each
// in a box with its title; one with a window to open asks "Sì"/"No" and opens
// it on "Sì", the others only inform. A module's failure is shown and the
// others go on.
Q3_EXPORT void Q3MostraAvvisiAccesso();
