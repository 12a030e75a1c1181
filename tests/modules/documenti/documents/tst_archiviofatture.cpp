// Reading and writing sales invoices, header and lines, on a real database,
// with no window.
#include "../data/KRVServiceRows.h"
#include "KRVFatturaVendita.h"
#include "KRVTestModule.h"
#include "Q3Exception.h"

#include <QtTest>

#include <memory>

class TestArchivioFatture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); }
    void init();
    void cleanup();
    void newInvoiceHeaderColumns();
    void linesOfEveryKind();
    void readBackGivesTheSameCells();
    void resavingChangesEveryLineKey();
    void linesKeepTheirOrderOverManySaves();
    void savingWithoutLinesDeletesStoredLines();
    void deletedVatRateGivesNullVatColumns();
    void recurrenceClearedWritesNulls();
    void recurrenceSetWritesCaptions();
    void missingInvoiceChangesNothing();
    void failureRollsBackAndKeepsDrawnKey();
    void resavingAfterFailedNewSaveStoresTheInvoiceOnce();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    TKRVTestataFattura Testata() const;
    int Salva(TKRVTestataFattura testata, TKRVRigheDocumento &righe, bool nuova, int id = 0);
    void RigheDiOgniTipo(TKRVRigheDocumento &righe) const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TKRVArchivioFattureVendita> m_archivio;
    int m_articolo = 0;
    int m_servizio = 0;
};

void TestArchivioFatture::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_archivio = std::make_unique<TKRVArchivioFattureVendita>(*m_module->Main->Dataset(QStringLiteral("adsFattVend")));
    m_articolo = KRVInsertArticolo(Db(), QStringLiteral("ART1"));
    m_servizio = KRVInsertServizio(Db(), QStringLiteral("SRV1"));
}

void TestArchivioFatture::cleanup()
{
    m_archivio.reset();
    m_module.reset();
}

TKRVTestataFattura TestArchivioFatture::Testata() const
{
    TKRVTestataFattura testata;
    testata.Numero = 7;
    testata.Data = QDate(2025, 3, 10);
    testata.Cliente.CODICE = QStringLiteral("CLN0000001");
    testata.Cliente.RAGIONESOCIALE = QStringLiteral("Rossi & Figli S.r.l.");
    testata.Cliente.INDIRIZZO = QStringLiteral("Via dell'Orto 3");
    testata.Cliente.CITTA = QStringLiteral("Bologna");
    testata.Cliente.CAP = QStringLiteral("40100");
    testata.Cliente.PROVINCIA = QStringLiteral("BO");
    testata.Cliente.NAZIONE = QStringLiteral("Italia");
    testata.Cliente.CODICEFISCALE = QStringLiteral("RSSMRA80A01A944X");
    testata.Cliente.PARTITAIVA = QStringLiteral("01234567890");
    testata.IdTipoPagamento = 2;
    testata.TipoPagamento = QStringLiteral("Bonifico 30 gg Data Fattura");
    testata.Scadenza = QDate(2025, 4, 9);
    testata.Pagato = true;
    testata.Notificato = false;
    testata.Note = QStringLiteral("Consegna al piano terra");
    return testata;
}

int TestArchivioFatture::Salva(TKRVTestataFattura testata, TKRVRigheDocumento &righe, bool nuova, int id)
{
    const TKRVTotaliDocumento totali =
        AggiornaTotaliDocumento(righe, testata.IvaEsente, KRVAliquoteArchivio(m_module->Db()));
    m_archivio->Scrivi(testata, righe, totali, nuova, id);
    return id;
}

void TestArchivioFatture::RigheDiOgniTipo(TKRVRigheDocumento &righe) const
{
    righe.AggiungiVoce({KRVRigaArticolo, 5.6, QStringLiteral("ART1"), QStringLiteral("Articolo di prova"), 1, 12.34, 1,
                        QStringLiteral("20"), 1, QStringLiteral("PEZZI")});
    const int testo = righe.AggiungiTesto();
    righe.setData(righe.index(testo, 3), QStringLiteral("Consegna del 3 marzo\nsecondo piano"));
    righe.AggiungiVoce({KRVRigaServizio, 20.5, QStringLiteral("SRV1"), QStringLiteral("Servizio di prova"), 1, 50, 1,
                        QStringLiteral("20"), 2, QStringLiteral("ORE")});
    righe.setData(righe.index(2, 7), QStringLiteral("2,5"));
    const int nonImponibile = righe.AggiungiNonImponibile();
    righe.setData(righe.index(nonImponibile, 3), QStringLiteral("Spese di bollo"));
    righe.setData(righe.index(nonImponibile, 5), QStringLiteral("2"));
}

void TestArchivioFatture::newInvoiceHeaderColumns()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    const int id = Salva(Testata(), righe, true);
    QCOMPARE(id, 1);
    QCOMPARE(
        Db().Rows(QStringLiteral(
            "SELECT IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, CLI_CITTA, CLI_CAP, "
            "CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, "
            "NOTIFICATO, SCADENZA_PAGAMENTO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, IVA_ESENTE, NOTE "
            "FROM FATT_VEND")),
        QStringList{QStringLiteral(
            "1|7|2025-03-10|2025|CLN0000001|Rossi & Figli S.r.l.|Via dell'Orto 3|Bologna|40100|BO|Italia|"
            "RSSMRA80A01A944X|01234567890|2|Bonifico 30 gg Data Fattura|True|False|2025-04-09|137.34|27.47|166.81|"
            "False|Consegna al piano terra")});
}

void TestArchivioFatture::linesOfEveryKind()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    const int id = Salva(Testata(), righe, true);
    QCOMPARE(
        Db().Rows(QStringLiteral(
            "SELECT IDFATT_VEND, DESCRIZIONE, TIPO_RIGA, CODICE, IDCATEGORIA, CATEGORIA, IVA_IDALIQUOTA_IVA, IVA_CODICE, "
            "IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, CAST(COSTO AS VARCHAR(20)), CAST(PREZZO AS VARCHAR(20)), "
            "CAST(SCONTO AS VARCHAR(20)), CAST(QUANTITA AS VARCHAR(20)), CAST(IMPORTO AS VARCHAR(20)) FROM FATT_VEND_DETT "
            "ORDER BY IDFATT_VEND_DETT")),
        (QStringList{
            QString::number(id)
                + QStringLiteral(
                    "|Articolo di prova|Articolo|ART1|1|Altro|1|20|Aliquota standard|20|1|PEZZI|5.60|12.340000|0.00|1.000|12.34"),
            QString::number(id)
                + QStringLiteral(
                    "|Consegna del 3 marzo\nsecondo piano|Testo|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>"),
            QString::number(id)
                + QStringLiteral(
                    "|Servizio di prova|Servizio|SRV1|1|Altro|1|20|Aliquota standard|20|2|ORE|20.50|50.000000|0.00|2.500|125.00"),
            QString::number(id)
                + QStringLiteral(
                    "|Spese di bollo|Non imponibile|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|<null>|0.00|2.000000|0.00|1.000|2.00"),
        }));
}

void TestArchivioFatture::readBackGivesTheSameCells()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    TKRVTestataFattura scritta = Testata();
    scritta.Ricorrenza =
        {true, 3, QStringLiteral("Mese"), QDate(2025, 3, 10), QDate(2026, 3, 10), QStringLiteral("Il giorno esatto")};
    const int id = Salva(scritta, righe, true);

    TKRVRigheDocumento lette(KRVLayoutFattura());
    TKRVTestataFattura letta;
    QVERIFY(m_archivio->Leggi(id, letta, lette));
    QCOMPARE(letta.Numero, 7);
    QCOMPARE(letta.Data, QDate(2025, 3, 10));
    QCOMPARE(letta.Cliente.RAGIONESOCIALE, scritta.Cliente.RAGIONESOCIALE);
    QCOMPARE(letta.Cliente.PARTITAIVA, scritta.Cliente.PARTITAIVA);
    QCOMPARE(letta.IdTipoPagamento, 2);
    QCOMPARE(letta.Scadenza, std::optional<QDate>(QDate(2025, 4, 9)));
    QVERIFY(letta.Pagato);
    QVERIFY(!letta.Notificato);
    QCOMPARE(letta.Ricorrenza.GeneraOgni, 3);
    QCOMPARE(letta.Ricorrenza.GeneraOgniUM, QStringLiteral("Mese"));
    QCOMPARE(letta.Ricorrenza.DataFine, QDate(2026, 3, 10));
    QCOMPARE(letta.Ricorrenza.DataNuovaFattura, QStringLiteral("Il giorno esatto"));
    QCOMPARE(letta.Note, scritta.Note);
    QCOMPARE(lette.Righe(), 4);
    for (int r = 0; r < 4; ++r) {
        for (int c = 1; c < 14; ++c) {
            // A text line keeps only its kind and description.
            const bool numero = c == 1 || (c >= 5 && c <= 8);
            if (righe.Tipo(r) == KRVRigaTesto && c != 3 && c != 13)
                QCOMPARE(lette.Cella(r, c), QString());
            else if (numero)
                QCOMPARE(lette.Numero(r, c), righe.Numero(r, c));
            else
                QCOMPARE(lette.Cella(r, c), righe.Cella(r, c));
        }
    }
    QVERIFY(lette.Intero(0, 0) > 0);
}

void TestArchivioFatture::resavingChangesEveryLineKey()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    const int id = Salva(Testata(), righe, true);
    const QStringList prima = Db().Rows(QStringLiteral("SELECT IDFATT_VEND_DETT FROM FATT_VEND_DETT ORDER BY 1"));
    TKRVTestataFattura testata;
    QVERIFY(m_archivio->Leggi(id, testata, righe));
    QCOMPARE(Salva(testata, righe, false, id), id);
    const QStringList dopo = Db().Rows(QStringLiteral("SELECT IDFATT_VEND_DETT FROM FATT_VEND_DETT ORDER BY 1"));
    QCOMPARE(prima, (QStringList{"1", "2", "3", "4"}));
    QCOMPARE(dopo, (QStringList{"5", "6", "7", "8"}));
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 1);
}

void TestArchivioFatture::linesKeepTheirOrderOverManySaves()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    QStringList attese;
    for (int i = 0; i < 60; ++i) {
        const int r = righe.AggiungiTesto();
        righe.SetCella(r, 3, QStringLiteral("Riga %1").arg(i));
        attese << righe.Cella(r, 3);
    }
    int id = Salva(Testata(), righe, true);
    for (int giro = 0; giro < 6; ++giro) {
        // Moving a line each time, as a user reorders them.
        righe.SpostaSu(righe.Righe() - 1 - giro);
        attese.move(attese.size() - 1 - giro, attese.size() - 2 - giro);
        Salva(Testata(), righe, false, id);
        TKRVTestataFattura testata;
        QVERIFY(m_archivio->Leggi(id, testata, righe));
        QStringList lette;
        for (int r = 0; r < righe.Righe(); ++r)
            lette << righe.Cella(r, 3);
        QCOMPARE(lette, attese);
    }
}

void TestArchivioFatture::savingWithoutLinesDeletesStoredLines()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    const int id = Salva(Testata(), righe, true);
    righe.Svuota();
    Salva(Testata(), righe, false, id);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toInt(), 0);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT TOTALE_DOCUMENTO FROM FATT_VEND")), QStringList{"0"});
}

void TestArchivioFatture::deletedVatRateGivesNullVatColumns()
{
    Db().Exec(QStringLiteral(
        "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES (0, '10', 'Ridotta', 10)"));
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiVoce({KRVRigaArticolo, 0, QStringLiteral("ART1"), QStringLiteral("A"), 1, 100, 4,
                        QStringLiteral("10"), 1, QStringLiteral("PEZZI")});
    Db().Exec(QStringLiteral("DELETE FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA=4"));
    const int id = Salva(Testata(), righe, true);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IMPORTO "
                                      "FROM FATT_VEND_DETT WHERE IDFATT_VEND=")
                       + QString::number(id)),
             QStringList{QStringLiteral("<null>|<null>|<null>|<null>|100")});
    QCOMPARE(Db().Rows(QStringLiteral("SELECT TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_VEND")),
             QStringList{QStringLiteral("100|0|100")});
}

void TestArchivioFatture::recurrenceClearedWritesNulls()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    TKRVTestataFattura testata = Testata();
    testata.Ricorrenza =
        {false, 3, QStringLiteral("Mese"), QDate(2025, 3, 10), QDate(2026, 3, 10), QStringLiteral("Il giorno esatto")};
    Salva(testata, righe, true);
    QCOMPARE(Db().Rows(
                 QStringLiteral("SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM, FC_DATA_INIZIO, FC_DATA_FINE, "
                                "FC_DATA_NUOVA_FATTURA, FC_GENERA_OGNI IS NULL, FC_DATA_NUOVA_FATTURA IS NULL "
                                "FROM FATT_VEND")),
             QStringList{QStringLiteral("False|<null>|<null>|<null>|<null>|<null>|true|true")});
}

void TestArchivioFatture::recurrenceSetWritesCaptions()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    TKRVTestataFattura testata = Testata();
    testata.Ricorrenza = {true,
                          2,
                          QStringLiteral("Settimana"),
                          QDate(2025, 3, 10),
                          QDate(2025, 12, 31),
                          QStringLiteral("Ultimo giorno del mese")};
    Salva(testata, righe, true);
    QCOMPARE(Db().Rows(
                 QStringLiteral("SELECT FC_ABILITATO, FC_GENERA_OGNI, FC_GENERA_OGNI_UM, FC_DATA_INIZIO, FC_DATA_FINE, "
                                "FC_DATA_NUOVA_FATTURA FROM FATT_VEND")),
             QStringList{QStringLiteral("True|2|Settimana|2025-03-10|2025-12-31|Ultimo giorno del mese")});
}

void TestArchivioFatture::missingInvoiceChangesNothing()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    const int id = Salva(Testata(), righe, true);
    TKRVTestataFattura testata;
    QVERIFY(m_archivio->Leggi(id, testata, righe));
    TKRVTestataFattura altra = testata;
    QVERIFY(!m_archivio->Leggi(id + 100, altra, righe));
    QCOMPARE(altra.Numero, testata.Numero);
    QCOMPARE(righe.Righe(), 4);
    // The header's dataset still stands on the invoice shown: its save works.
    testata.Note = QStringLiteral("Cambiata");
    Salva(testata, righe, false, id);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT NOTE FROM FATT_VEND")), QStringList{"Cambiata"});
}

void TestArchivioFatture::failureRollsBackAndKeepsDrawnKey()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    RigheDiOgniTipo(righe);
    TKRVTestataFattura testata = Testata();
    // The header keeps thirty characters of the payment type.
    testata.TipoPagamento = QString(31, QLatin1Char('x'));
    int id = 0;
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, m_archivio->Scrivi(testata, righe, {}, true, id));
    QCOMPARE(id, 1);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), 0);
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toInt(), 0);
}

// After a failed first save the editor saves again down the path of a stored
// invoice; with no header row to edit, the invoice is stored whole, once.
void TestArchivioFatture::resavingAfterFailedNewSaveStoresTheInvoiceOnce()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.setData(righe.index(righe.AggiungiTesto(), 3), QStringLiteral("Prima riga"));
    TKRVTestataFattura testata = Testata();
    testata.TipoPagamento = QString(31, QLatin1Char('x'));
    int id = 0;
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, m_archivio->Scrivi(testata, righe, {}, true, id));
    testata.TipoPagamento = QStringLiteral("Rimessa diretta");
    m_archivio->Scrivi(testata, righe, {}, false, id);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDFATT_VEND, TIPO_PAGAMENTO FROM FATT_VEND")),
             QStringList{QStringLiteral("%1|Rimessa diretta").arg(id)});
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDFATT_VEND, DESCRIZIONE FROM FATT_VEND_DETT")),
             QStringList{QStringLiteral("%1|Prima riga").arg(id)});
    // And from then on it is edited in place.
    testata.Pagato = true;
    m_archivio->Scrivi(testata, righe, {}, false, id);
    QCOMPARE(Db().Rows(QStringLiteral("SELECT IDFATT_VEND, PAGATO FROM FATT_VEND")),
             QStringList{QStringLiteral("%1|True").arg(id)});
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toInt(), 1);
}

QTEST_MAIN(TestArchivioFatture)
#include "tst_archiviofatture.moc"
