#pragma once

#include "Q3Records.h"

#include <QSqlDatabase>
#include <QString>

// Master records by key (or customer by code), read on the session; an
// unknown key gives the empty record.
TAliquotaIVA GetAliquotaIVA(const QSqlDatabase &db, int id);
QString GetUM(const QSqlDatabase &db, int id);
QString GetTipoPagamento(const QSqlDatabase &db, int id);
TCliente GetCliente(const QSqlDatabase &db, int id);
TCliente GetCliente(const QSqlDatabase &db, const QString &codice);
TServizio GetServizio(const QSqlDatabase &db, int id);
TArticolo GetArticolo(const QSqlDatabase &db, int id);
QString GetCategoriaAnaMaga(const QSqlDatabase &db, int id);
QString GetCategoriaServizio(const QSqlDatabase &db, int id);
QString GetNotaDocumento(const QSqlDatabase &db, int id);

// Whether another record (key different from id) already holds the value,
// compared without regard to case.
bool CodiceAliquotaIvaExists(const QSqlDatabase &db, const QString &codice, int id);
bool CodiceUMExists(const QSqlDatabase &db, const QString &um, int id);
bool CodiceTipoPagamentoExists(const QSqlDatabase &db, const QString &tipoPagamento, int id);
bool CodiceAnaMagaExists(const QSqlDatabase &db, const QString &codice, int id);
bool CodiceServizioExists(const QSqlDatabase &db, const QString &codice, int id);
bool CodiceClienteExists(const QSqlDatabase &db, const QString &codice, int id);
bool TitoloNotaDocumentiExists(const QSqlDatabase &db, const QString &titolo, int id);
