#pragma once

#include "Q3Global.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVersionNumber>

// A module another module needs: its name and the least version it accepts
// (null: any).
struct Q3_EXPORT TQ3ModuleDependency
{
    QString Name;
    QVersionNumber Version;
};

// How an option of a module is shown and stored: "Sì"/"No" stored as
// "True"/"False", a text, or one of a list of values stored as shown.
enum class TQ3ModuleOptionKind { SiNo, Testo, Scelta };

// An option a module keeps in the host's option store OPZIONI.
struct Q3_EXPORT TQ3ModuleOption
{
    QString Key;     // its row in OPZIONI
    QString Caption; // what the user reads
    TQ3ModuleOptionKind Kind = TQ3ModuleOptionKind::Testo;
    QString Default;      // shown while the store has no row for it
    QStringList Values{}; // what a "Scelta" option offers, in this order
};

// What a module library says of itself in the JSON file that its plug-in class
// names in Q_PLUGIN_METADATA(IID IQ3ModulePlugin_iid FILE "<Name>.json"):
//
//     { "Name": "Documenti", "Version": "3.0.0", "Description": "Modulo Documenti",
//       "Dependencies": [ { "Name": "Magazzino", "Version": "3.0" } ],
//       "Options": [ { "Key": "NUMERAZIONE_UNICA_FATTURE", "Caption": "...",
//                      "Type": "SiNo", "Default": "False" } ] }
//
// "Dependencies" may be left out; a dependency's "Version" too. "Options" may
// be left out; an option's "Type" is "SiNo", "Testo" or "Scelta", its "Default"
// may be left out (empty text). A "Scelta" option lists its "Values", texts
// none of them empty, and its "Default" is one of them:
//
//       { "Key": "K", "Caption": "...", "Type": "Scelta", "Values": [ "N1", "N4" ], "Default": "N1" }
struct Q3_EXPORT TQ3ModuleMetadata
{
    QString Name;
    QVersionNumber Version;
    QString Description;
    QList<TQ3ModuleDependency> Dependencies;
    QList<TQ3ModuleOption> Options;

    // The library file of the module, which is also its key in the host's
    // registry: the name with the module-file extension.
    QString FileName() const;
};

// Reads the metadata of the module library at the path without loading it.
// Raises EQ3Exception whose message is the cause, in Italian.
Q3_EXPORT TQ3ModuleMetadata ReadQ3ModuleMetadata(const QString &libraryPath);
// The same from a plug-in's metadata as QPluginLoader::metaData() answers it.
Q3_EXPORT TQ3ModuleMetadata Q3ModuleMetadataFromJson(const QJsonObject &pluginMetaData);
