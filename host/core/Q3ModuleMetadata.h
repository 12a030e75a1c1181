#pragma once

#include "Q3Global.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVersionNumber>

// A module another module needs: its name and the least version it accepts
// (null: any).
struct Q3_EXPORT TQ3ModuleDependency
{
    QString Name;
    QVersionNumber Version;
};

// What a module library says of itself in the JSON file that its plug-in class
// names in Q_PLUGIN_METADATA(IID IQ3ModulePlugin_iid FILE "<Name>.json"):
//
//     { "Name": "Documenti", "Version": "3.0.0", "Description": "Modulo Documenti",
//       "Dependencies": [ { "Name": "Magazzino", "Version": "3.0" } ] }
//
// "Dependencies" may be left out; a dependency's "Version" too.
struct Q3_EXPORT TQ3ModuleMetadata
{
    QString Name;
    QVersionNumber Version;
    QString Description;
    QList<TQ3ModuleDependency> Dependencies;

    // The library file of the module, which is also its key in the host's
    // registry: the name with the module-file extension.
    QString FileName() const;
};

// Reads the metadata of the module library at the path without loading it.
// Raises EQ3Exception whose message is the cause, in Italian.
Q3_EXPORT TQ3ModuleMetadata ReadQ3ModuleMetadata(const QString &libraryPath);
// The same from a plug-in's metadata as QPluginLoader::metaData() answers it.
Q3_EXPORT TQ3ModuleMetadata Q3ModuleMetadataFromJson(const QJsonObject &pluginMetaData);
