#include "KRVPostazione.h"

#include "KRVArchivioRecord.h"
#include "KRVDatasets.h"
#include "KRVDeleteRules.h"
#include "KRVElenco.h"
#include "KRVLookups.h"
#include "KRVNumbering.h"
#include "KRVQueryElenchi.h"
#include "Q3Exception.h"
#include "Q3Messages.h"

#include <QDateTime>

#include <algorithm>

namespace {

// The failures two workstations meet by design on the same rows: a lock or
// update conflict or a deadlock the server breaks, a number another
// workstation saved meanwhile, a document another one deleted meanwhile.
bool FallimentoPrevisto(const QString &messaggio)
{
    const QString testo = messaggio.toLower();
    static const QStringList previsti{QStringLiteral("deadlock"), QStringLiteral("update conflict"),
                                      QStringLiteral("lock conflict"), QStringLiteral("lock time-out"),
                                      // the limit on waiting for another workstation
                                      QStringLiteral("i dati sono in modifica su un'altra postazione"),
                                      QStringLiteral("violation of primary or unique key"),
                                      QStringLiteral("non esiste più")};
    for (const QString &previsto : previsti) {
        if (testo.contains(previsto))
            return true;
    }
    return false;
}

// The keys (or one text column) a list's statement finds, in its order.
QList<int> Chiavi(const QSqlDatabase &db, const QString &testa, const QString &where, const QString &coda,
                  const QString &chiave)
{
    TKRVRisultati risultati;
    risultati.ImpostaColonne({{chiave, 0, chiave, TKRVTipoColonna::Intero}});
    KRVCercaElenco(db, testa, where, coda, risultati);
    QList<int> chiavi;
    for (int r = 0; r < risultati.rowCount(); ++r)
        chiavi << risultati.Valore(r, 0).toInt();
    return chiavi;
}

// The module's datasets on the connection, once it is open.
QHash<QString, TQ3Dataset *> DatasetAperti(TQ3Connection &connessione, const QString &connectionString,
                                           QObject *proprietario)
{
    connessione.SetConnectionString(connectionString);
    connessione.Open();
    return KRVCreaDatasetModulo(proprietario, &connessione);
}

qint64 Adesso()
{
    return QDateTime::currentMSecsSinceEpoch();
}

} // namespace

TKRVPostazione::TKRVPostazione(const TKRVParametriPostazione &parametri, QTextStream &out)
    : m_parametri(parametri), m_out(out), m_caso(parametri.Seme),
      m_dataset(DatasetAperti(m_connessione, parametri.ConnectionString, &m_proprietario)),
      m_fatture(*m_dataset.value(QStringLiteral("adsFattVend"))),
      m_note(*m_dataset.value(QStringLiteral("adsNoteAccredito")))
{
    const QSqlDatabase db = m_connessione.Database();
    m_tipoFattura = {.Sigla = KRVCarico::Fattura,
                     .Layout = &KRVLayoutFattura(),
                     .Testata = &m_testataFattura,
                     .Testate = m_dataset.value(QStringLiteral("adsFattVend")),
                     .Leggi =
                         [this](int id, TKRVRigheDocumento &righe) {
                             return m_fatture.Leggi(id, m_testataFattura, righe);
                         },
                     .Scrivi = [this](TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali, bool nuovo,
                                      int &id) { m_fatture.Scrivi(m_testataFattura, righe, totali, nuovo, id); },
                     .IvaEsente = [this] { return m_testataFattura.IvaEsente; },
                     .Prossimo = &GetNextNumeroFattVend,
                     .Esiste = &FattVendExists,
                     .PuoEliminare = &CanDeleteFatturaVendita,
                     .Elimina = &DeleteFatturaVendita,
                     .Noti = {}};
    m_tipoNota = {.Sigla = KRVCarico::Nota,
                  .Layout = &KRVLayoutNotaAccredito(),
                  .Testata = &m_testataNota,
                  .Testate = m_dataset.value(QStringLiteral("adsNoteAccredito")),
                  .Leggi = [this](int id, TKRVRigheDocumento &righe) { return m_note.Leggi(id, m_testataNota, righe); },
                  .Scrivi = [this](TKRVRigheDocumento &righe, const TKRVTotaliDocumento &totali, bool nuovo,
                                   int &id) { m_note.Scrivi(m_testataNota, righe, totali, nuovo, id); },
                  .IvaEsente = [] { return false; },
                  .Prossimo = &GetNextNumeroNotaAccredito,
                  .Esiste = &NotaAccreditoExists,
                  .PuoEliminare = &CanDeleteNotaAccredito,
                  .Elimina = &DeleteNotaAccredito,
                  .Noti = {}};

    // The masters, as the selection dialogs read them.
    for (int id : Chiavi(db, KRVQueryClientiTesta, QString(), KRVQueryClientiCoda, QStringLiteral("IDCLIENTE")))
        m_clienti << GetCliente(db, id);
    for (int id : Chiavi(db, KRVQueryTipiPagamentoTesta, QString(), KRVQueryTipiPagamentoCoda,
                         QStringLiteral("IDTIPO_PAGAMENTO")))
        m_pagamenti.append({id, GetTipoPagamento(db, id)});
    for (int id :
         Chiavi(db, KRVQuerySelezioneArticoloTesta, QString(), KRVQueryCatalogoCoda, QStringLiteral("IDANA_MAGA"))) {
        const TArticolo a = GetArticolo(db, id);
        m_voci.append({KRVRigaArticolo, a.COSTO, a.CODICE, a.DESCRIZIONE, a.IDCATEGORIA_ANA_MAGA, a.PREZZO,
                       a.IDALIQUOTA_IVA, GetAliquotaIVA(db, a.IDALIQUOTA_IVA).CODICE, a.IDUM, GetUM(db, a.IDUM)});
    }
    for (int id :
         Chiavi(db, KRVQuerySelezioneServizioTesta, QString(), KRVQueryCatalogoCoda, QStringLiteral("IDSERVIZIO"))) {
        const TServizio s = GetServizio(db, id);
        m_voci.append({KRVRigaServizio, s.COSTO, s.CODICE, s.DESCRIZIONE, s.IDCATEGORIA_SERVIZI, s.PREZZO,
                       s.IDALIQUOTA_IVA, GetAliquotaIVA(db, s.IDALIQUOTA_IVA).CODICE, s.IDUM, GetUM(db, s.IDUM)});
    }
    if (m_clienti.isEmpty() || m_pagamenti.isEmpty() || m_voci.isEmpty())
        throw EQ3Exception(QStringLiteral("Mancano clienti, tipi di pagamento, articoli o servizi."));
}

TKRVPostazione::~TKRVPostazione() = default;

int TKRVPostazione::Esegui()
{
    const QDeadlineTimer fine(qint64(m_parametri.Secondi) * 1000);
    Cerca();
    int fatte = 0;
    for (; fatte < KRVRichiesteMassimePostazione && !fine.hasExpired(); ++fatte) {
        TTipo &tipo = Caso(3) == 0 ? m_tipoNota : m_tipoFattura;
        TKRVRigheDocumento righe(*tipo.Layout);
        const int scelta = Caso(100);
        if (scelta < 25 || tipo.Noti.isEmpty())
            Nuovo(tipo);
        else if (scelta < 55)
            Modifica(tipo);
        else if (scelta < 75)
            Apri(tipo, righe);
        else if (scelta < 85)
            Cerca();
        else
            EliminaDocumento(tipo);
    }
    return fatte;
}

// A new document as the editor starts it, its number proposed; a save refused
// or failed on a number taken meanwhile is tried again with a new proposal.
// As in the editor, a document whose write failed keeps the key it was given
// and is saved again as an existing one.
void TKRVPostazione::Nuovo(TTipo &tipo)
{
    NuovaTestata(*tipo.Testata);
    TKRVRigheDocumento righe(*tipo.Layout);
    AggiungiRighe(righe, 1 + Caso(KRVRigheMassimeCarico));
    bool nuovo = true;
    int id = 0;
    for (int tentativo = 0; tentativo < 3; ++tentativo) {
        tipo.Testata->Numero = tipo.Prossimo(m_connessione.Database(), m_parametri.Anno);
        const QString esito = Salva(tipo, righe, nuovo, id);
        if (esito == KRVCarico::Riuscito) {
            tipo.Noti << id;
            return;
        }
        if (esito == KRVCarico::Rifiutato)
            continue;
        nuovo = false;
        // Now and then the user gives the document up, as the editor deletes
        // one that counts as saved: by the key it was given.
        if (Caso(3) == 0) {
            Abbandona(tipo, id);
            return;
        }
    }
}

// A document whose first save failed has no row of its own, whatever the key
// it goes by (the one it expected, maybe another workstation's by then): the
// editor deletes by key only a document the header's dataset holds.
void TKRVPostazione::Abbandona(TTipo &tipo, int id)
{
    TKRVRichiestaCarico r = Inizia(KRVCarico::Abbandona, tipo.Sigla, id);
    const QSqlDatabase db = m_connessione.Database();
    try {
        TQ3RecordingResponder risposte;
        const bool eliminato =
            !KRVRigaMemorizzata(*tipo.Testate) || (tipo.PuoEliminare(db, id) && tipo.Elimina(db, id, false));
        Registra(r, eliminato ? KRVCarico::Riuscito : KRVCarico::Conflitto);
    } catch (const std::exception &e) {
        RegistraFallimento(r, e);
    }
}

// A document opened, changed and saved again.
void TKRVPostazione::Modifica(TTipo &tipo)
{
    TKRVRigheDocumento righe(*tipo.Layout);
    const int id = Apri(tipo, righe);
    if (id == 0)
        return;
    // Some lines go, some come; the flags change now and then.
    const int tolte = Caso(righe.Righe() + 1);
    for (int i = 0; i < tolte; ++i)
        righe.EliminaRiga(Caso(righe.Righe()));
    const int quante = 1 + Caso(KRVRigheMassimeCarico);
    AggiungiRighe(righe, std::max(0, quante - righe.Righe()));
    if (Caso(4) == 0)
        tipo.Testata->Pagato = !tipo.Testata->Pagato;
    int salvato = id;
    Salva(tipo, righe, false, salvato);
}

int TKRVPostazione::Apri(TTipo &tipo, TKRVRigheDocumento &righe)
{
    const int id = tipo.Noti.at(Caso(int(tipo.Noti.size())));
    TKRVRichiestaCarico r = Inizia(KRVCarico::Apri, tipo.Sigla, id);
    try {
        if (!tipo.Leggi(id, righe)) {
            tipo.Noti.removeAll(id);
            Registra(r, KRVCarico::Assente);
            return 0;
        }
        r.Righe = righe.Righe();
        // The header and the lines come from one save, however many saves fall between the reads.
        QString segno;
        int scritte = 0;
        bool intero = true;
        if (KRVLeggiNotaCarico(tipo.Testata->Note, segno, scritte)) {
            r.Segno = segno;
            intero = scritte == righe.Righe();
            for (int i = 0; intero && i < righe.Righe(); ++i)
                intero = righe.Cella(i, righe.Layout().Descrizione) == KRVDescrizioneCarico(segno, i + 1);
        }
        Registra(r, intero ? KRVCarico::Riuscito : KRVCarico::LetturaMista);
        return id;
    } catch (const std::exception &e) {
        RegistraFallimento(r, e);
    }
    return 0;
}

// The search lists of the year: every workstation then works on the
// documents of all of them.
void TKRVPostazione::Cerca()
{
    TKRVRichiestaCarico r = Inizia(KRVCarico::Cerca, QString(), 0);
    const QSqlDatabase db = m_connessione.Database();
    const QString anno = QString::number(m_parametri.Anno);
    try {
        m_tipoFattura.Noti = Chiavi(db, KRVQueryFattVendTesta, KRVCondizioneAnnoFattVend + anno, KRVQueryDocumentiCoda,
                                    QStringLiteral("IDFATT_VEND"));
        m_tipoNota.Noti = Chiavi(db, KRVQueryNoteAccreditoTesta, KRVCondizioneAnnoNoteAccredito + anno,
                                 KRVQueryDocumentiCoda, QStringLiteral("IDNOTA_ACCREDITO"));
        r.Righe = int(m_tipoFattura.Noti.size() + m_tipoNota.Noti.size());
        Registra(r, KRVCarico::Riuscito);
    } catch (const std::exception &e) {
        RegistraFallimento(r, e);
    }
}

// As the editor deletes: the rule asked first, then the delete service,
// which reports its own failure in a box and answers false.
void TKRVPostazione::EliminaDocumento(TTipo &tipo)
{
    const int id = tipo.Noti.at(Caso(int(tipo.Noti.size())));
    TKRVRichiestaCarico r = Inizia(KRVCarico::Elimina, tipo.Sigla, id);
    const QSqlDatabase db = m_connessione.Database();
    try {
        if (!tipo.PuoEliminare(db, id)) {
            Registra(r, KRVCarico::Rifiutato);
            return;
        }
        TQ3RecordingResponder risposte;
        const bool eliminato = tipo.Elimina(db, id, false);
        if (eliminato)
            tipo.Noti.removeAll(id);
        if (!risposte.Messages().isEmpty())
            r.Messaggio = risposte.Messages().constLast().Text;
        Registra(r, eliminato ? KRVCarico::Riuscito : KRVCarico::Conflitto);
    } catch (const std::exception &e) {
        RegistraFallimento(r, e);
    }
}

QString TKRVPostazione::Salva(TTipo &tipo, TKRVRigheDocumento &righe, bool nuovo, int &id)
{
    TKRVTestataDocumento &testata = *tipo.Testata;
    const QString segno = QStringLiteral("P%1.%2").arg(m_parametri.Postazione).arg(++m_salvataggi);
    Segna(testata, righe, segno);
    TKRVRichiestaCarico r = Inizia(nuovo ? KRVCarico::Nuovo : KRVCarico::Modifica, tipo.Sigla, id);
    r.Segno = segno;
    r.Numero = testata.Numero;
    r.Righe = righe.Righe();
    const QSqlDatabase db = m_connessione.Database();
    try {
        if (tipo.Esiste(db, testata.Numero, testata.Data.year(), nuovo ? 0 : id)) {
            return Registra(r, KRVCarico::Rifiutato);
        }
        const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, tipo.IvaEsente(), KRVAliquoteArchivio(db));
        tipo.Scrivi(righe, totali, nuovo, id);
        r.Id = id;
        return Registra(r, KRVCarico::Riuscito);
    } catch (const std::exception &e) {
        r.Id = id;
        return RegistraFallimento(r, e);
    }
}

void TKRVPostazione::NuovaTestata(TKRVTestataDocumento &testata)
{
    m_testataFattura = {};
    m_testataNota = {};
    testata.Data = QDate(m_parametri.Anno, 1 + Caso(12), 1 + Caso(28));
    testata.Cliente = m_clienti.at(Caso(int(m_clienti.size())));
    const auto &pagamento = m_pagamenti.at(Caso(int(m_pagamenti.size())));
    testata.IdTipoPagamento = pagamento.first;
    testata.TipoPagamento = pagamento.second;
    if (Caso(2) == 0)
        testata.Scadenza = testata.Data.addDays(30);
    m_testataFattura.IvaEsente = Caso(10) == 0;
}

// Lines of every kind the document knows: articles and services of the
// masters with their own quantities and prices, texts, non-taxable amounts.
void TKRVPostazione::AggiungiRighe(TKRVRigheDocumento &righe, int quante)
{
    const TKRVLayoutRighe &l = righe.Layout();
    for (int i = 0; i < quante; ++i) {
        const int tipo = Caso(10);
        if (tipo == 0) {
            righe.AggiungiTesto();
            continue;
        }
        const int riga = tipo == 1 && l.NonImponibili ? righe.AggiungiNonImponibile()
                                                      : righe.AggiungiVoce(m_voci.at(Caso(int(m_voci.size()))));
        righe.SetNumero(riga, l.Quantita, (1 + Caso(200)) / 10.0);
        if (tipo <= 2)
            righe.SetNumero(riga, l.Prezzo, Caso(100000) / 100.0);
        if (l.Sconto >= 0 && Caso(5) == 0)
            righe.SetNumero(riga, l.Sconto, Caso(30));
    }
}

void TKRVPostazione::Segna(TKRVTestataDocumento &testata, TKRVRigheDocumento &righe, const QString &segno)
{
    for (int r = 0; r < righe.Righe(); ++r)
        righe.SetCella(r, righe.Layout().Descrizione, KRVDescrizioneCarico(segno, r + 1));
    testata.Note = KRVNotaCarico(segno, righe.Righe());
}

TKRVRichiestaCarico TKRVPostazione::Inizia(const QString &operazione, const QString &documento, int id) const
{
    TKRVRichiestaCarico r;
    r.Postazione = m_parametri.Postazione;
    r.Operazione = operazione;
    r.Documento = documento;
    r.Id = id;
    r.Inizio = Adesso();
    return r;
}

QString TKRVPostazione::Registra(TKRVRichiestaCarico &richiesta, const QString &esito)
{
    richiesta.Fine = Adesso();
    richiesta.Esito = esito;
    KRVScriviRichiesta(m_out, richiesta);
    m_out.flush();
    return esito;
}

QString TKRVPostazione::RegistraFallimento(TKRVRichiestaCarico &richiesta, const std::exception &e)
{
    richiesta.Messaggio = ExceptionMessage(e);
    return Registra(richiesta, FallimentoPrevisto(richiesta.Messaggio) ? KRVCarico::Conflitto : KRVCarico::Errore);
}
