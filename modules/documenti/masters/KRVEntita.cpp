#include "KRVEntita.h"

#include "KRVDeleteRules.h"
#include "KRVLookups.h"
#include "KRVSession.h"

const TKRVEntita &KRVEntitaAliquoteIVA()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("ALIQUOTE_IVA"),
        .Chiave = QStringLiteral("IDALIQUOTA_IVA"),
        .Generatore = QStringLiteral("GN_IDALIQUOTA_IVA"),
        .Dataset = QStringLiteral("adsAliquoteIVA"),
        .ColonnaCodice = QStringLiteral("CODICE"),
        .Editor = TKRVAzione::InserimentoAliquoteIVA,
        .Ricerca = TKRVAzione::RicercaAliquoteIVA,
        .CodiceEsiste = &CodiceAliquotaIvaExists,
        .CanDelete = &CanDeleteAliquotaIVA,
        .Delete = &DeleteAliquotaIVA,
        .Rifiuto = QStringLiteral("Non è possibile eliminare questa aliquota,\n\resistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaUM()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("UM"),
        .Chiave = QStringLiteral("IDUM"),
        .Generatore = QStringLiteral("GN_IDUM"),
        .Dataset = QStringLiteral("adsUM"),
        .ColonnaCodice = QStringLiteral("UM"),
        .Editor = TKRVAzione::InserimentoUM,
        .Ricerca = TKRVAzione::RicercaUM,
        .CodiceEsiste = &CodiceUMExists,
        .CanDelete = &CanDeleteUM,
        .Delete = &DeleteUM,
        .Rifiuto = QStringLiteral("Non è possibile eliminare questa unità di misura,\n\rEsistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaTipiPagamento()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("TIPI_PAGAMENTO"),
        .Chiave = QStringLiteral("IDTIPO_PAGAMENTO"),
        .Generatore = QStringLiteral("GN_IDTIPO_PAGAMENTO"),
        .Dataset = QStringLiteral("adsTipiPagamento"),
        .ColonnaCodice = QStringLiteral("TIPO_PAGAMENTO"),
        .Editor = TKRVAzione::InserimentoTipiPagamento,
        .Ricerca = TKRVAzione::RicercaTipiPagamento,
        .CodiceEsiste = &CodiceTipoPagamentoExists,
        .CanDelete = &CanDeleteTipoPagamento,
        .Delete = &DeleteTipiPagamento,
        .Rifiuto =
            QStringLiteral("Non è possibile eliminare questo tipo di pagamento,\n\resistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaArticoli()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("ANA_MAGA"),
        .Chiave = QStringLiteral("IDANA_MAGA"),
        .Generatore = QStringLiteral("GN_IDANA_MAGA"),
        .Dataset = QStringLiteral("adsAnaMaga"),
        .ColonnaCodice = QStringLiteral("CODICE"),
        .Editor = TKRVAzione::InserimentoArticoli,
        .Ricerca = TKRVAzione::RicercaArticoli,
        .CodiceEsiste = &CodiceAnaMagaExists,
        .PerCodice = {.CanDelete = &CanDeleteAnaMaga, .Delete = &KRVEliminaAnaMaga},
        .Rifiuto = QStringLiteral("Non è possibile eliminare questo articolo,\n\resistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaServizi()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("SERVIZI"),
        .Chiave = QStringLiteral("IDSERVIZIO"),
        .Generatore = QStringLiteral("GN_IDSERVIZIO"),
        .Dataset = QStringLiteral("adsServizi"),
        .ColonnaCodice = QStringLiteral("CODICE"),
        .Editor = TKRVAzione::InserimentoServizi,
        .Ricerca = TKRVAzione::RicercaServizi,
        .CodiceEsiste = &CodiceServizioExists,
        .PerCodice = {.CanDelete = &CanDeleteServizio, .Delete = &KRVEliminaServizio},
        .Rifiuto = QStringLiteral("Non è possibile eliminare questo servizio,\n\resistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaClienti()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("CLIENTI"),
        .Chiave = QStringLiteral("IDCLIENTE"),
        .Generatore = QStringLiteral("GN_IDCLIENTE"),
        .Dataset = QStringLiteral("adsClienti"),
        .ColonnaCodice = QStringLiteral("CODICE"),
        .Editor = TKRVAzione::InserimentoClienti,
        .Ricerca = TKRVAzione::RicercaClienti,
        .CodiceEsiste = &CodiceClienteExists,
        .PerCodice = {.CanDelete = &CanDeleteCliente, .Delete = &KRVEliminaCliente},
        .Rifiuto = QStringLiteral("Non è possibile eliminare questo cliente,\n\resistono dei dati correlati!"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaNoteDocumenti()
{
    // Every note may be deleted.
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("NOTE_DOCUMENTI"),
        .Chiave = QStringLiteral("IDNOTA_DOCUMENTI"),
        .Generatore = QStringLiteral("GN_IDNOTA_DOCUMENTI"),
        .Dataset = QStringLiteral("adsNotaDocumenti"),
        .ColonnaCodice = QStringLiteral("TITOLO"),
        .Editor = TKRVAzione::InserimentoNoteDocumenti,
        .Ricerca = TKRVAzione::RicercaNoteDocumenti,
        .CodiceEsiste = &TitoloNotaDocumentiExists,
        .CanDelete = [](const QSqlDatabase &, int) { return true; },
        .Delete = &DeleteNotaDocumenti,
    };
    return entita;
}

namespace {

// The activities module keeps reminders of recurring invoices: told of a
// delete as of a save, it drops those still to do.
bool EliminaFatturaVendita(const QSqlDatabase &db, int id, bool ask)
{
    if (!DeleteFatturaVendita(db, id, ask))
        return false;
    KRVEseguiAzioneModulo(QStringLiteral("Attivita"), QStringLiteral("Nuova fattura ciclica"), {id, 0});
    return true;
}

} // namespace

const TKRVEntita &KRVEntitaFattureVendita()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("FATT_VEND"),
        .Chiave = QStringLiteral("IDFATT_VEND"),
        .Generatore = QStringLiteral("GN_IDFATT_VEND"),
        .Dataset = QStringLiteral("adsFattVend"),
        .ColonnaCodice = QStringLiteral("NUMERO"),
        .Editor = TKRVAzione::InserimentoFattureVendita,
        .Ricerca = TKRVAzione::RicercaFattureVendita,
        .CanDelete = &CanDeleteFatturaVendita,
        .Delete = &EliminaFatturaVendita,
        .Rifiuto = QStringLiteral("Non è possibile eliminare questa fattura,\n\resistono dei dati correlati!"),
        .PermessoVisualizzazione = QStringLiteral("Fatture di vendita (visualizzazione)"),
        .PermessoModifica = QStringLiteral("Fatture di vendita (modifica)"),
        .PermessoEliminazione = QStringLiteral("Fatture di vendita (eliminazione)"),
    };
    return entita;
}

const TKRVEntita &KRVEntitaNoteAccredito()
{
    static const TKRVEntita entita{
        .Tabella = QStringLiteral("NOTE_ACCREDITO"),
        .Chiave = QStringLiteral("IDNOTA_ACCREDITO"),
        .Generatore = QStringLiteral("GN_IDNOTA_ACCREDITO"),
        .Dataset = QStringLiteral("adsNoteAccredito"),
        .ColonnaCodice = QStringLiteral("NUMERO"),
        .Editor = TKRVAzione::InserimentoNoteAccredito,
        .Ricerca = TKRVAzione::RicercaNoteAccredito,
        .CanDelete = &CanDeleteNotaAccredito,
        .Delete = &DeleteNotaAccredito,
        .Rifiuto =
            QStringLiteral("Non è possibile eliminare questa nota di accredito,\n\resistono dei dati correlati!"),
        .PermessoVisualizzazione = QStringLiteral("Note di accredito (visualizzazione)"),
        .PermessoModifica = QStringLiteral("Note di accredito (modifica)"),
        .PermessoEliminazione = QStringLiteral("Note di accredito (eliminazione)"),
    };
    return entita;
}
