#pragma once

#include "Q3Records.h"

#include <QString>

// Master records by key (or customer by code); an unknown key gives the empty record.
TAliquotaIVA GetAliquotaIVA(int id);
QString GetUM(int id);
QString GetTipoPagamento(int id);
TCliente GetCliente(int id);
TCliente GetCliente(const QString &codice);
TServizio GetServizio(int id);
TArticolo GetArticolo(int id);
QString GetCategoriaAnaMaga(int id);
QString GetCategoriaServizio(int id);
QString GetNotaDocumento(int id);

// Whether another record (key different from id) already holds the value,
// compared without regard to case.
bool CodiceAliquotaIvaExists(const QString &codice, int id);
bool CodiceUMExists(const QString &um, int id);
bool CodiceTipoPagamentoExists(const QString &tipoPagamento, int id);
bool CodiceAnaMagaExists(const QString &codice, int id);
bool CodiceServizioExists(const QString &codice, int id);
bool CodiceClienteExists(const QString &codice, int id);
bool TitoloNotaDocumentiExists(const QString &titolo, int id);
