#pragma once

#include "Q3Ruoli.h"

#include <QSqlDatabase>
#include <QString>

// Whether the user holds the permission or the master permission
// "Controllo completo". User names match without regard to case, permission
// texts exactly. Failures come back as "[UserHasAbilitazione]" + "\n\r" + message.
bool UserHasAbilitazione(const QString &abilitazione, const QString &userName, const QSqlDatabase &connection);

// The message shown when a permission is missing: the host's.
inline constexpr const auto &KRVMsgDirittiInsufficienti = Q3MsgDirittiInsufficienti;
