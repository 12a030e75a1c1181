#include "KRVVerificaCarico.h"

#include "KRVDatasets.h"
#include "KRVFatturaVendita.h"
#include "KRVNotaAccredito.h"
#include "KRVOptions.h"
#include "Q3Sql.h"

#include <QDebug>
#include <QHash>
#include <QSqlQuery>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

// A document of either kind: its kind's letter and its key.
using TChiave = QPair<QString, int>;

// What is stored of one document.
struct TStato
{
    QString Nota;
    QStringList Descrizioni;
};

struct TTabella
{
    QString Sigla;
    QString Testata;
    QString Chiave;
    QString Righe;
};

const TTabella Tabelle[] = {
    {KRVCarico::Fattura, QStringLiteral("FATT_VEND"), QStringLiteral("IDFATT_VEND"), QStringLiteral("FATT_VEND_DETT")},
    {KRVCarico::Nota, QStringLiteral("NOTE_ACCREDITO"), QStringLiteral("IDNOTA_ACCREDITO"),
     QStringLiteral("NOTE_ACCREDITO_DETT")},
};

int Conta(const QSqlDatabase &db, const QString &sql)
{
    return QueryScalar(db, sql).toInt();
}

class TVerifica
{
public:
    TVerifica(TQ3Connection &connessione, const QList<TKRVRichiestaCarico> &richieste)
        : m_db(connessione.Database()), m_richieste(richieste),
          m_dataset(KRVCreaDatasetModulo(&m_proprietario, &connessione))
    {}

    TKRVVerificaCarico Esegui()
    {
        TQ3Transaction istantanea(m_db);
        Numeri();
        for (const TTabella &t : Tabelle) {
            const int orfane = Conta(m_db, QStringLiteral("SELECT COUNT(*) FROM %1 WHERE NOT EXISTS (SELECT 1 FROM %2 "
                                                          "WHERE %2.%3 = %1.%3)")
                                               .arg(t.Righe, t.Testata, t.Chiave));
            if (orfane > 0)
                Difetto(m_v.RigheOrfane, QStringLiteral("%1 righe di %2 senza testata").arg(orfane).arg(t.Righe),
                        orfane);
        }
        Documenti();
        Richieste();
        return m_v;
    }

private:
    void Difetto(int &conto, const QString &testo, int quanti = 1)
    {
        conto += quanti;
        qWarning().noquote() << testo;
    }

    // Numbers within kind and year; invoices also against the accompanying
    // ones when they share the sequence.
    void Numeri()
    {
        for (const TTabella &t : Tabelle) {
            QSqlQuery doppi = OpenQuery(m_db, QStringLiteral("SELECT ANNO, NUMERO, COUNT(*) FROM %1 GROUP BY ANNO, "
                                                             "NUMERO HAVING COUNT(*) > 1")
                                                  .arg(t.Testata));
            while (doppi.next())
                Difetto(m_v.NumeriDoppi, QStringLiteral("%1: il numero %2/%3 %4 volte")
                                             .arg(t.Testata, doppi.value(1).toString(), doppi.value(0).toString(),
                                                  doppi.value(2).toString()));
        }
        QVariant condivisa;
        if (GetOptionValue(m_db, QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), condivisa)
            && KRVStrToBool(condivisa.toString())) {
            QSqlQuery doppi = OpenQuery(m_db, QStringLiteral("SELECT V.ANNO, V.NUMERO FROM FATT_VEND V JOIN FATT_ACC A "
                                                             "ON A.ANNO = V.ANNO AND A.NUMERO = V.NUMERO"));
            while (doppi.next())
                Difetto(m_v.NumeriDoppi, QStringLiteral("il numero %1/%2 di una fattura accompagnatoria")
                                             .arg(doppi.value(1).toString(), doppi.value(0).toString()));
        }
    }

    // Every stored document: totals as its lines give them, lines as the save
    // that left it wrote them.
    void Documenti()
    {
        TKRVArchivioFattureVendita fatture(*m_dataset.value(QStringLiteral("adsFattVend")));
        TKRVArchivioNoteAccredito note(*m_dataset.value(QStringLiteral("adsNoteAccredito")));
        for (const TTabella &t : Tabelle) {
            const bool fattura = t.Sigla == KRVCarico::Fattura;
            QSqlQuery testate =
                OpenQuery(m_db, QStringLiteral("SELECT %1, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM %2")
                                    .arg(t.Chiave, t.Testata));
            while (testate.next()) {
                const int id = testate.value(0).toInt();
                TKRVTestataFattura testataFattura;
                TKRVTestataNota testataNota;
                TKRVRigheDocumento righe(fattura ? KRVLayoutFattura() : KRVLayoutNotaAccredito());
                const bool letto =
                    fattura ? fatture.Leggi(id, testataFattura, righe) : note.Leggi(id, testataNota, righe);
                ++m_v.Documenti;
                if (!letto) {
                    Difetto(m_v.RighePerse, QStringLiteral("%1 %2 illeggibile").arg(t.Testata).arg(id));
                    continue;
                }
                const TKRVTotaliDocumento totali =
                    AggiornaTotaliDocumento(righe, fattura && testataFattura.IvaEsente, KRVAliquoteArchivio(m_db));
                const double calcolati[] = {totali.Imponibile, totali.Imposta, totali.Totale()};
                for (int i = 0; i < 3; ++i) {
                    // The header holds the sums rounded to the cent.
                    const double scritto = testate.value(i + 1).toDouble();
                    if (std::abs(scritto - calcolati[i]) > 0.005 + 1e-7)
                        Difetto(m_v.TotaliErrati, QStringLiteral("%1 %2: totale %3 %4, dalle righe %5")
                                                      .arg(t.Testata)
                                                      .arg(id)
                                                      .arg(i)
                                                      .arg(scritto, 0, 'f', 2)
                                                      .arg(calcolati[i], 0, 'f', 4));
                }
                TStato stato{fattura ? testataFattura.Note : testataNota.Note, {}};
                for (int r = 0; r < righe.Righe(); ++r)
                    stato.Descrizioni << righe.Cella(r, righe.Layout().Descrizione);
                m_stati.insert({t.Sigla, id}, stato);
            }
        }
    }

    // The stored documents against the requests that succeeded.
    void Richieste()
    {
        QHash<QString, const TKRVRichiestaCarico *> salvataggi; // by mark
        QHash<TChiave, const TKRVRichiestaCarico *> eliminazioni;
        for (const TKRVRichiestaCarico &r : m_richieste) {
            if (r.Esito != KRVCarico::Riuscito)
                continue;
            if (r.Salvataggio())
                salvataggi.insert(r.Segno, &r);
            else if (r.Operazione == KRVCarico::Elimina)
                eliminazioni.insert({r.Documento, r.Id}, &r);
        }
        // The save that left each document, and its lines.
        QHash<TChiave, const TKRVRichiestaCarico *> ultimi;
        for (auto s = m_stati.cbegin(); s != m_stati.cend(); ++s) {
            QString segno;
            int righe = 0;
            if (!KRVLeggiNotaCarico(s->Nota, segno, righe))
                continue; // a document of the firm, which no workstation saved
            const TKRVRichiestaCarico *salvato = salvataggi.value(segno);
            if (!salvato || TChiave{salvato->Documento, salvato->Id} != s.key()) {
                Difetto(m_v.SalvataggiIgnoti, QStringLiteral("%1 %2: salvataggio %3 mai riuscito")
                                                  .arg(s.key().first)
                                                  .arg(s.key().second)
                                                  .arg(segno));
                continue;
            }
            ultimi.insert(s.key(), salvato);
            QStringList attese;
            for (int i = 1; i <= salvato->Righe; ++i)
                attese << KRVDescrizioneCarico(segno, i);
            if (s->Descrizioni != attese)
                Difetto(m_v.RighePerse, QStringLiteral("%1 %2: %3 righe salvate da %4, %5 trovate")
                                            .arg(s.key().first)
                                            .arg(s.key().second)
                                            .arg(salvato->Righe)
                                            .arg(segno)
                                            .arg(s->Descrizioni.size()));
        }
        for (const TKRVRichiestaCarico *s : std::as_const(salvataggi)) {
            const TChiave chiave{s->Documento, s->Id};
            if (!m_stati.contains(chiave)) {
                if (!eliminazioni.contains(chiave))
                    Difetto(m_v.DocumentiPersi, QStringLiteral("%1 %2 salvato da %3 e sparito")
                                                    .arg(chiave.first)
                                                    .arg(chiave.second)
                                                    .arg(s->Segno));
                continue;
            }
            // Saves of one document follow one another: the one that stays
            // ended after every other had begun.
            const TKRVRichiestaCarico *ultimo = ultimi.value(chiave);
            if (!ultimo || (ultimo != s && ultimo->Fine < s->Inizio))
                Difetto(m_v.SalvataggiPersi,
                        QStringLiteral("%1 %2: il salvataggio %3 perso sotto %4")
                            .arg(chiave.first)
                            .arg(chiave.second)
                            .arg(s->Segno, ultimo ? ultimo->Segno : QStringLiteral("l'originale")));
        }
        for (auto e = eliminazioni.cbegin(); e != eliminazioni.cend(); ++e) {
            if (m_stati.contains(e.key()))
                Difetto(m_v.EliminazioniPerse,
                        QStringLiteral("%1 %2 eliminato e ancora presente").arg(e.key().first).arg(e.key().second));
        }
    }

    QSqlDatabase m_db;
    const QList<TKRVRichiestaCarico> &m_richieste;
    QObject m_proprietario;
    QHash<QString, TQ3Dataset *> m_dataset;
    QHash<TChiave, TStato> m_stati;
    TKRVVerificaCarico m_v;
};

// The value below which that share of the sorted times falls (nearest rank).
qint64 Percentile(const QList<qint64> &ordinati, int percento)
{
    if (ordinati.isEmpty())
        return 0;
    const qsizetype rango = qsizetype(std::ceil(percento / 100.0 * double(ordinati.size())));
    return ordinati.at(std::clamp<qsizetype>(rango - 1, 0, ordinati.size() - 1));
}

} // namespace

TKRVVerificaCarico KRVVerificaArchivioCarico(TQ3Connection &connessione, const QList<TKRVRichiestaCarico> &richieste)
{
    return TVerifica(connessione, richieste).Esegui();
}

TKRVCifreCarico KRVCifreCarico(const QList<TKRVRichiestaCarico> &richieste, int secondi, qint64 limite)
{
    TKRVCifreCarico c;
    c.Limite = limite;
    QList<qint64> tempi;
    const QHash<QString, int *> esiti{{KRVCarico::Conflitto, &c.Conflitti},
                                      {KRVCarico::Rifiutato, &c.Rifiutati},
                                      {KRVCarico::Assente, &c.Assenti},
                                      {KRVCarico::LetturaMista, &c.LettureMiste},
                                      {KRVCarico::Errore, &c.Errori}};
    const QHash<QString, int *> operazioni{{KRVCarico::Elimina, &c.Eliminazioni},
                                           {KRVCarico::Apri, &c.Letture},
                                           {KRVCarico::Cerca, &c.Ricerche}};
    for (const TKRVRichiestaCarico &r : richieste) {
        ++c.Richieste;
        c.AttesaMassima = std::max(c.AttesaMassima, r.Durata());
        if (r.Durata() > limite)
            ++c.OltreLimite;
        if (int *conto = esiti.value(r.Esito))
            ++*conto;
        if (int *conto = operazioni.value(r.Operazione))
            ++*conto;
        if (r.Salvataggio() && r.Esito == KRVCarico::Riuscito)
            tempi << r.Durata();
    }
    std::sort(tempi.begin(), tempi.end());
    c.Salvataggi = int(tempi.size());
    c.SalvataggiAlSecondo = secondi > 0 ? c.Salvataggi / double(secondi) : 0;
    c.P50 = Percentile(tempi, 50);
    c.P95 = Percentile(tempi, 95);
    c.P99 = Percentile(tempi, 99);
    c.MassimoSalvataggio = tempi.isEmpty() ? 0 : tempi.constLast();
    return c;
}

QStringList KRVTestoCifre(const TKRVCifreCarico &c, const TKRVVerificaCarico &v)
{
    return {
        QStringLiteral("richieste: %1 (letture %2, ricerche %3, eliminazioni %4)")
            .arg(c.Richieste)
            .arg(c.Letture)
            .arg(c.Ricerche)
            .arg(c.Eliminazioni),
        QStringLiteral("salvataggi riusciti: %1, %2 al secondo")
            .arg(c.Salvataggi)
            .arg(c.SalvataggiAlSecondo, 0, 'f', 1),
        QStringLiteral("tempo di salvataggio: p50 %1 ms, p95 %2 ms, p99 %3 ms, massimo %4 ms")
            .arg(c.P50)
            .arg(c.P95)
            .arg(c.P99)
            .arg(c.MassimoSalvataggio),
        QStringLiteral("attesa massima di una richiesta: %1 ms; richieste oltre %2 ms: %3")
            .arg(c.AttesaMassima)
            .arg(c.Limite)
            .arg(c.OltreLimite),
        QStringLiteral("conflitti previsti: %1, numeri rifiutati: %2, documenti spariti all'apertura: %3, letture "
                       "miste: %4, errori imprevisti: %5")
            .arg(c.Conflitti)
            .arg(c.Rifiutati)
            .arg(c.Assenti)
            .arg(c.LettureMiste)
            .arg(c.Errori),
        QStringLiteral("documenti verificati: %1; numeri doppi %2, righe orfane %3, righe perse %4, totali errati %5, "
                       "salvataggi ignoti %6, salvataggi persi %7, documenti persi %8, eliminazioni perse %9")
            .arg(v.Documenti)
            .arg(v.NumeriDoppi)
            .arg(v.RigheOrfane)
            .arg(v.RighePerse)
            .arg(v.TotaliErrati)
            .arg(v.SalvataggiIgnoti)
            .arg(v.SalvataggiPersi)
            .arg(v.DocumentiPersi)
            .arg(v.EliminazioniPerse),
    };
}
