#pragma once

#include "Q3Connection.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariantList>

// The module's library file name, under which it is registered with the host.
QString KRVModuleFileName();

// What the services need of the module's main object: its database session.
class IKRVModuleSession
{
public:
    virtual ~IKRVModuleSession() = default;
    virtual TQ3Connection *ModADOConn() const = 0;
};

// The module database session, found through the host's module registry.
// Raises EQ3Exception when the module is not loaded.
QSqlDatabase KRVModuleDatabase();

// Whether the host has loaded the sibling module of that name ("Attivita", "Magazzino").
bool KRVModuloCaricato(const QString &nome);
// Runs a named request of a loaded sibling module through its package action entry.
void KRVEseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri);
