#pragma once

#include "Q3Connection.h"

#include <QString>
#include <QVariantList>

// The module's library file name, under which it is registered with the host.
QString KRVModuleFileName();

// The module's main object as its database session: the connection every
// dataset and query of the module runs on, which the windows hand to the
// services they call.
class IKRVModuleSession
{
public:
    virtual ~IKRVModuleSession() = default;
    virtual TQ3Connection *ModADOConn() const = 0;
};

// Whether the host has loaded the sibling module of that name ("Attivita", "Magazzino").
bool KRVModuloCaricato(const QString &nome);
// Runs a named request of a loaded sibling module through its package action entry.
void KRVEseguiAzioneModulo(const QString &nome, const QString &azione, const QVariantList &parametri);
