#pragma once

#include <QString>

// The statements of the search lists and selection dialogs, each the head,
// the clause of the list's filters and the tail (KRVCercaElenco).

inline const QString KRVQueryUMTesta = QStringLiteral("SELECT * FROM UM ");
inline const QString KRVQueryUMCoda = QStringLiteral(" ORDER BY UPPER(UM)");

inline const QString KRVQueryTipiPagamentoTesta = QStringLiteral("SELECT * FROM TIPI_PAGAMENTO ");
inline const QString KRVQueryTipiPagamentoCoda = QStringLiteral(" ORDER BY UPPER(TIPO_PAGAMENTO)");

// The search list orders the rates by code as stored, the selection dialog
// without regard to case.
inline const QString KRVQueryAliquoteIVATesta = QStringLiteral("SELECT * FROM ALIQUOTE_IVA ");
inline const QString KRVQueryAliquoteIVACoda = QStringLiteral(" ORDER BY CODICE");
inline const QString KRVQuerySelezioneAliquotaIVACoda = QStringLiteral(" ORDER BY UPPER(CODICE)");

inline const QString KRVQueryClientiTesta = QStringLiteral("SELECT * FROM CLIENTI ");
inline const QString KRVQueryClientiCoda = QStringLiteral(" ORDER BY UPPER(RAGIONESOCIALE)");

inline const QString KRVQueryNoteDocumentiTesta = QStringLiteral("SELECT * FROM NOTE_DOCUMENTI ");
inline const QString KRVQueryNoteDocumentiCoda = QStringLiteral(" ORDER BY UPPER(TITOLO)");

// Articles and services with the name of their category, by code.
inline const QString KRVQuerySelezioneArticoloTesta =
    QStringLiteral("SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM ANA_MAGA LEFT JOIN "
                   "CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA="
                   "ANA_MAGA.IDCATEGORIA_ANA_MAGA ");
inline const QString KRVQuerySelezioneServizioTesta =
    QStringLiteral("SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN "
                   "CATEGORIE_SERVIZI ON CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI="
                   "SERVIZI.IDCATEGORIA_SERVIZI ");
inline const QString KRVQueryRicercaServiziTesta =
    QStringLiteral("SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN "
                   "CATEGORIE_SERVIZI ON SERVIZI.IDCATEGORIA_SERVIZI="
                   "CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI ");
inline const QString KRVQueryCatalogoCoda = QStringLiteral(" ORDER BY UPPER(CODICE)");

// Sales invoices and credit notes, the latest first.
inline const QString KRVQueryFattVendTesta = QStringLiteral("SELECT * FROM FATT_VEND ");
inline const QString KRVQueryNoteAccreditoTesta = QStringLiteral("SELECT * FROM NOTE_ACCREDITO ");
inline const QString KRVQueryDocumentiCoda = QStringLiteral(" ORDER BY ANNO DESC, NUMERO DESC");
// The invoices with a line whose description contains the quoted text that
// follows the condition and comes before its closing.
inline const QString KRVCondizioneRigaFattVend =
    QStringLiteral("(FATT_VEND.IDFATT_VEND IN (SELECT FATT_VEND_DETT.IDFATT_VEND "
                   "FROM FATT_VEND_DETT WHERE FATT_VEND_DETT.DESCRIZIONE "
                   "CONTAINING ");
inline const QString KRVCondizioneRigaFattVendChiusura = QStringLiteral("))");

// The year's documents, the year following.
inline const QString KRVCondizioneAnnoFattVend = QStringLiteral("WHERE ANNO=");
inline const QString KRVCondizioneAnnoNoteAccredito = QStringLiteral("WHERE ANNO = ");
