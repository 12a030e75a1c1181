#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QVariant>

// The note an exempt invoice carries (printed, and the legal reference of its
// electronic copy).
inline constexpr char KRVOpzioneNotaIvaEsente[] = "FATT_IVA_ESENTE_NOTE";

// The host's option store OPZIONI on the session. Both swallow every failure
// and answer false.
bool GetOptionValue(const QSqlDatabase &db, const QString &option, QVariant &value);
// Updates an existing option only; never inserts.
bool SetOptionValue(const QSqlDatabase &db, const QString &option, const QVariant &value);

// The words "True"/"False" and numbers (0 false, any other true) as a boolean;
// raises EQ3Exception for any other text.
bool KRVStrToBool(const QString &text);
