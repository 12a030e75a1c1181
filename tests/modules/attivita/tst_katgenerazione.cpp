// Which saved invoice is the one generated from a reminder, and the services
// of the reminders added by hand and of the list, without widgets.
#include "KATAggiornaDatabase.h"
#include "KATGenerazione.h"
#include "KATPromemoria.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QtTest>

#include <memory>

class TestKATGenerazione : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_db.reset(); }
    void theCopySavedLaterIsTheGeneratedOne();
    void anInvoiceKnownBeforeTheRequestIsNot();
    void anotherCustomerOrOtherNotesAreNot();
    void generationRefusesWhatCannotBeGenerated();
    void manualRemindersChangeAndGo();
    void onlyManualRemindersAreChangedOrDeletedByHand();
    void listJoinsTheInvoicesAndFilters();
    void dueCountAndOldestToDo();

private:
    // An invoice of 2025 for the customer with the notes; answers its key.
    int Fattura(int numero, const QString &cliente, const QString &note) const;
    QSqlDatabase Db() const { return m_db->Db(); }
    std::unique_ptr<TQ3TestDatabase> m_db;
    int m_ciclica = 0;
    int m_promemoria = 0;
};

int TestKATGenerazione::Fattura(int numero, const QString &cliente, const QString &note) const
{
    return QueryScalar(Db(), QStringLiteral("INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, "
                                            "CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, "
                                            "TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO, NOTE) "
                                            "VALUES (0, %1, '2025-03-10', 2025, %2, 'Rossi Srl', 1, 'Rimessa diretta', "
                                            "'False', 0, 0, 0, 'False', %3) RETURNING IDFATT_VEND")
                                 .arg(numero)
                                 .arg(QuotedStr(cliente), QuotedStr(note)))
        .toInt();
}

void TestKATGenerazione::init()
{
    m_db = std::make_unique<TQ3TestDatabase>(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Upgraded);
    KATAggiornaDatabase(Db());
    m_ciclica = Fattura(12, QStringLiteral("C001"), QStringLiteral("Canone"));
    m_db->Exec(QStringLiteral("UPDATE FATT_VEND SET FC_ABILITATO = 'True', FC_GENERA_OGNI = 1, FC_GENERA_OGNI_UM = "
                              "'Mese', FC_DATA_INIZIO = '2025-01-05', FC_DATA_FINE = '2025-03-05', "
                              "FC_DATA_NUOVA_FATTURA = 'Il giorno esatto'"));
    KATAggiornaPromemoriaFattura(Db(), m_ciclica);
    m_promemoria = KATPromemoriaFattura(Db(), m_ciclica).first().Id;
}

void TestKATGenerazione::theCopySavedLaterIsTheGeneratedOne()
{
    const TKATGenerazione generazione = KATIniziaGenerazione(Db(), m_promemoria);
    QCOMPARE(generazione.IdFattura, m_ciclica);
    QCOMPARE(generazione.FattNumero, 12);
    QCOMPARE(generazione.CliCodice, QStringLiteral("C001"));
    // The copy's notes end with the three lines, "\n\r" between them as the editor writes them.
    const int copia = Fattura(13, QStringLiteral("C001"),
                              QStringLiteral("Canone\n\rFattura ciclica\n\rRif. Fattura n. "
                                             "12\n\rdel 05/01/25"));
    QVERIFY(KATFatturaGenerata(Db(), generazione, copia));
    QCOMPARE(KATNumeroFattura(Db(), copia), 13);
    QCOMPARE(KATNumeroFattura(Db(), copia + 100), 0);
}

void TestKATGenerazione::anInvoiceKnownBeforeTheRequestIsNot()
{
    const int prima = Fattura(13, QStringLiteral("C001"), QStringLiteral("Fattura ciclica\nRif. Fattura n. 12"));
    const TKATGenerazione generazione = KATIniziaGenerazione(Db(), m_promemoria);
    QVERIFY(!KATFatturaGenerata(Db(), generazione, prima));
    QVERIFY(!KATFatturaGenerata(Db(), generazione, m_ciclica));
}

void TestKATGenerazione::anotherCustomerOrOtherNotesAreNot()
{
    const TKATGenerazione generazione = KATIniziaGenerazione(Db(), m_promemoria);
    QVERIFY(!KATFatturaGenerata(Db(), generazione,
                                Fattura(13, QStringLiteral("C002"), QStringLiteral("Rif. Fattura n. 12"))));
    QVERIFY(!KATFatturaGenerata(Db(), generazione, Fattura(14, QStringLiteral("C001"), QStringLiteral("Canone"))));
    QVERIFY(!KATFatturaGenerata(Db(), generazione,
                                Fattura(15, QStringLiteral("C001"), QStringLiteral("Rif. Fattura n. 123"))));
    QVERIFY(KATFatturaGenerata(Db(), generazione,
                               Fattura(16, QStringLiteral("C001"), QStringLiteral("Rif. Fattura n. 12"))));
}

void TestKATGenerazione::generationRefusesWhatCannotBeGenerated()
{
    const auto rifiuto = [this](int id) {
        try {
            KATIniziaGenerazione(Db(), id);
        } catch (const EQ3Exception &e) {
            return e.Message();
        }
        return QString();
    };
    const int manuale = KATAggiungiManuale(Db(), QStringLiteral("Telefonare"), QDate(2025, 1, 1), QString());
    QCOMPARE(rifiuto(manuale), QStringLiteral("Il promemoria non riguarda una fattura ciclica."));
    QCOMPARE(rifiuto(99999), QStringLiteral("Il promemoria non esiste più."));
    KATSegnaFatto(Db(), m_promemoria, 0);
    QCOMPARE(rifiuto(m_promemoria), QStringLiteral("Il promemoria è già stato eseguito."));
    const int secondo = KATPromemoriaFattura(Db(), m_ciclica).at(1).Id;
    // Another workstation deleted the invoice without telling the module.
    m_db->Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND = %1").arg(m_ciclica));
    QCOMPARE(rifiuto(secondo), QStringLiteral("La fattura ciclica del promemoria non esiste più."));
}

void TestKATGenerazione::manualRemindersChangeAndGo()
{
    const int id = KATAggiungiManuale(Db(), QStringLiteral("Rinnovo"), QDate(2025, 5, 1), QStringLiteral("PEC"));
    const int altro = KATAggiungiManuale(Db(), QStringLiteral("Altro"), QDate(2025, 5, 2), QString());
    QCOMPARE(altro, id + 1);
    KATModificaManuale(Db(), id, QStringLiteral("Rinnovo dominio"), QDate(2025, 6, 1), QStringLiteral("l'aruba"), true);
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT TITOLO, DATA, NOTE, STATO, FATTO_IL IS NOT NULL FROM PROMEMORIA WHERE "
                                       "IDPROMEMORIA = %1")
                            .arg(id)),
             QStringList{QStringLiteral("Rinnovo dominio|2025-06-01|l'aruba|Fatto|true")});
    KATModificaManuale(Db(), id, QStringLiteral("Rinnovo dominio"), QDate(2025, 6, 1), QString(), false);
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT STATO, FATTO_IL FROM PROMEMORIA WHERE IDPROMEMORIA = %1").arg(id)),
             QStringList{QStringLiteral("Da fare|<null>")});
    KATEliminaManuale(Db(), id);
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT TITOLO FROM PROMEMORIA WHERE TIPO = 'Manuale'")),
             QStringList{QStringLiteral("Altro")});
}

void TestKATGenerazione::onlyManualRemindersAreChangedOrDeletedByHand()
{
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, KATEliminaManuale(Db(), m_promemoria));
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, KATModificaManuale(Db(), m_promemoria, QStringLiteral("X"),
                                                              QDate(2025, 1, 1), QString(), true));
    QCOMPARE(KATPromemoriaFattura(Db(), m_ciclica).size(), 3);
    QCOMPARE(KATPromemoriaFattura(Db(), m_ciclica).first().Stato, QStringLiteral("Da fare"));
}

void TestKATGenerazione::listJoinsTheInvoicesAndFilters()
{
    KATAggiungiManuale(Db(), QStringLiteral("Telefonare"), QDate(2025, 2, 10), QString());
    KATSegnaFatto(Db(), m_promemoria, 13);
    TKATFiltroPromemoria filtro{QDate(2025, 1, 1), QDate(2025, 2, 28), QString()};
    const QList<TKATRigaPromemoria> tutti = KATElencoPromemoria(Db(), filtro);
    QStringList righe;
    for (const TKATRigaPromemoria &r : tutti)
        righe << QStringLiteral("%1|%2|%3|%4|%5|%6")
                     .arg(r.Promemoria.Data.toString(Qt::ISODate), r.Promemoria.Stato, r.Cliente)
                     .arg(r.FattNumero)
                     .arg(r.FattData.toString(Qt::ISODate))
                     .arg(r.Promemoria.FattNumeroGenerata);
    QCOMPARE(righe, (QStringList{QStringLiteral("2025-01-05|Fatto|Rossi Srl|12|2025-03-10|13"),
                                 QStringLiteral("2025-02-05|Da fare|Rossi Srl|12|2025-03-10|0"),
                                 QStringLiteral("2025-02-10|Da fare||0||0")}));
    filtro.Stato = QStringLiteral("Fatto");
    QCOMPARE(KATElencoPromemoria(Db(), filtro).size(), 1);
    filtro = {QDate(2025, 2, 6), QDate(2025, 3, 5), QStringLiteral("Da fare")};
    QCOMPARE(KATElencoPromemoria(Db(), filtro).size(), 2);
}

void TestKATGenerazione::dueCountAndOldestToDo()
{
    QCOMPARE(KATContaScaduti(Db(), QDate(2025, 2, 4)), 1);
    QCOMPARE(KATContaScaduti(Db(), QDate(2025, 2, 5)), 2);
    QCOMPARE(KATPrimoDaFare(Db()), QDate(2025, 1, 5));
    KATSegnaFatto(Db(), m_promemoria, 0);
    QCOMPARE(KATContaScaduti(Db(), QDate(2025, 2, 5)), 1);
    QCOMPARE(KATPrimoDaFare(Db()), QDate(2025, 2, 5));
    m_db->Exec(QStringLiteral("UPDATE PROMEMORIA SET STATO = 'Fatto'"));
    QVERIFY(!KATPrimoDaFare(Db()).isValid());
    QCOMPARE(KATContaScaduti(Db(), QDate(2030, 1, 1)), 0);
}

QTEST_GUILESS_MAIN(TestKATGenerazione)
#include "tst_katgenerazione.moc"
