#pragma once

#include "Q3Global.h"

#include <QSqlDatabase>

// Brings the host's own tables (versions, options, users, roles, permissions,
// the firm) to their current shape. A new database gets the option
// NUMERAZIONE_UNICA_FATTURE, the permission "Controllo completo", the role
// "Amministratore" holding it and the user "admin" in that role, with no
// password yet.
Q3_EXPORT void UpgradeQ3HostSchema(const QSqlDatabase &db);

// The permission that grants everything.
inline constexpr char Q3MasterPermission[] = "Controllo completo";
inline constexpr char Q3AdminUser[] = "admin";
inline constexpr char Q3AdminRole[] = "Amministratore";
