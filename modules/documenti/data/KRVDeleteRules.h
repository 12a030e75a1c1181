#pragma once

#include <QString>
#include <QStringList>

// Whether a record may be deleted.
bool CanDeleteAliquotaIVA(int id);
bool CanDeleteUM(int id);
bool CanDeleteTipoPagamento(int id);
bool CanDeleteCategoriaAnaMaga(int id);
bool CanDeleteCategoriaServizi(int id);
bool CanDeleteAnaMaga(const QString &codice);
bool CanDeleteServizio(const QString &codice);
bool CanDeleteCliente(const QString &codice);
bool CanDeleteCausaleTrasporto(int id);
bool CanDeleteFatturaVendita(int id);
bool CanDeleteNotaAccredito(int id);

// The counting query each rule composes, as it sends it.
QString CanDeleteSQL(const QString &rule, const QString &argument);

// Deletes a record (asking "Confermare l'eliminazione?" first when ask is
// true) in one transaction; answers true when it was deleted.
bool DeleteNotaDocumenti(int id, bool ask);
bool DeleteTipiPagamento(int id, bool ask);
bool DeleteAliquotaIVA(int id, bool ask);
bool DeleteUM(int id, bool ask);
bool DeleteFatturaVendita(int id, bool ask);
bool DeleteNotaAccredito(int id, bool ask);

// The statements in one transaction (asking first when ask is true); a failure
// is rolled back and reported ("Errore"). Answers whether they ran.
bool KRVDeleteInTransaction(const QStringList &statements, bool ask);

// The messages of deleting.
inline constexpr char KRVMsgConfermaEliminazione[] = "Confermare l'eliminazione?";
inline constexpr char KRVMsgErroreEliminazione[] =
    "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!";
