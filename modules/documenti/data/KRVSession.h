#pragma once

#include "Q3Connection.h"

#include <QSqlDatabase>
#include <QString>

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
