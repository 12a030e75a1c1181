#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// Whether a record may be deleted. Each rule composes its counting query
// (CanDeleteSQL) for a dataset on the session but never opens it: every record
// may be deleted, and the callers keep their refusals.
bool CanDeleteAliquotaIVA(const QSqlDatabase &db, int id);
bool CanDeleteUM(const QSqlDatabase &db, int id);
bool CanDeleteTipoPagamento(const QSqlDatabase &db, int id);
bool CanDeleteCategoriaAnaMaga(const QSqlDatabase &db, int id);
bool CanDeleteCategoriaServizi(const QSqlDatabase &db, int id);
bool CanDeleteAnaMaga(const QSqlDatabase &db, const QString &codice);
bool CanDeleteServizio(const QSqlDatabase &db, const QString &codice);
bool CanDeleteCliente(const QSqlDatabase &db, const QString &codice);
bool CanDeleteCausaleTrasporto(const QSqlDatabase &db, int id);
bool CanDeleteFatturaVendita(const QSqlDatabase &db, int id);
bool CanDeleteNotaAccredito(const QSqlDatabase &db, int id);

// The counting query each rule composes, as it sends it.
QString CanDeleteSQL(const QString &rule, const QString &argument);

// Deletes a record (asking "Confermare l'eliminazione?" first when ask is
// true) in one transaction on the session; answers true when it was deleted.
bool DeleteNotaDocumenti(const QSqlDatabase &db, int id, bool ask);
bool DeleteTipiPagamento(const QSqlDatabase &db, int id, bool ask);
bool DeleteAliquotaIVA(const QSqlDatabase &db, int id, bool ask);
bool DeleteUM(const QSqlDatabase &db, int id, bool ask);
bool DeleteFatturaVendita(const QSqlDatabase &db, int id, bool ask);
bool DeleteNotaAccredito(const QSqlDatabase &db, int id, bool ask);

// Deletes a customer, an article or a service by its key in one transaction,
// asking nothing first; a failure is rolled back and reported ("Errore").
// Answers whether the row went.
bool KRVEliminaCliente(const QSqlDatabase &db, int id);
bool KRVEliminaAnaMaga(const QSqlDatabase &db, int id);
bool KRVEliminaServizio(const QSqlDatabase &db, int id);

// The statements in one transaction on the session (asking first when ask is true); a failure
// is rolled back and reported ("Errore"). Answers whether they ran.
bool KRVDeleteInTransaction(const QSqlDatabase &db, const QStringList &statements, bool ask);

// The messages of deleting.
inline constexpr char KRVMsgConfermaEliminazione[] = "Confermare l'eliminazione?";
inline constexpr char KRVMsgErroreEliminazione[] =
    "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!";
