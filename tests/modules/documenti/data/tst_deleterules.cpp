#include "KRVDeleteRules.h"
#include "KRVServiceRows.h"
#include "KRVTestCore.h"
#include "Q3Exception.h"
#include "Q3Guards.h"

#include <QtTest>

#include <functional>
#include <memory>

class TestDeleteRules : public QObject
{
    Q_OBJECT

private slots:
    void failuresWithoutSession_data();
    void failuresWithoutSession();
    void rulesNeverReadTheSession();
    void ruleSql_data();
    void ruleSql();
    void unknownRuleRaises();
    void ruleSqlCountsReferences();
    void everyRuleAnswersTrue();
    void deleteFatturaVenditaAnsweredNo();
    void deleteFatturaVenditaAnsweredYes();
    void deleteFatturaVenditaFailureRollsBack();
    void deleteWithoutAsking_data();
    void deleteWithoutAsking();
    void deleteNotaAccreditoRemovesLines();

private:
    TKRVTestCore &Module();
    // Fills the warehouse and document tables with rows that reference the
    // masters; answers the invoice key.
    int FillReferences();
    std::unique_ptr<TKRVTestCore> m_module;
    int m_fattura = 0;
};

TKRVTestCore &TestDeleteRules::Module()
{
    if (!m_module)
        m_module = std::make_unique<TKRVTestCore>();
    return *m_module;
}

int TestDeleteRules::FillReferences()
{
    if (m_fattura)
        return m_fattura;
    const TQ3TestDatabase &db = Module().Database;
    db.LoadFixture(QStringLiteral("magazzino.sql"));
    db.Exec(QStringLiteral("INSERT INTO CAUSALI_TRASPORTO (CAUSALE_TRASPORTO) VALUES ('Vendita')"));
    db.Exec(QStringLiteral("INSERT INTO DDT_SCARICO (NUMERO, DATA, ANNO, CLI_CODICE, IDCAUSALE_TRASPORTO, PESO_IDUM) "
                           "VALUES (1, '2024-01-10', 2024, 'c001', 1, 4)"));
    db.Exec(
        QStringLiteral("INSERT INTO DDT_SCARICO_DETT (IDDDT_SCARICO, TIPO_RIGA, CODICE, IDCATEGORIA_ANA_MAGA, IDUM) "
                       "VALUES (1, 'Articolo', 'a01', 1, 1)"));
    KRVInsertCliente(db, QStringLiteral("C001"), QStringLiteral("Cliente"), 2);
    KRVInsertArticolo(db, QStringLiteral("A01"), 1, 1, 1);
    KRVInsertServizio(db, QStringLiteral("S01"), 1, 1, 2);
    m_fattura = KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 1, 2024, QStringLiteral("C001"), 2);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), m_fattura, QStringLiteral("Articolo"), QStringLiteral("a01"), 1,
                  1, 1);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), m_fattura, QStringLiteral("Servizio"), QStringLiteral("S01"), 1,
                  1, 2);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), m_fattura, QStringLiteral("Testo"), QStringLiteral("A01"), 1, 1,
                  1);
    const int nota = KRVInsertDocumento(db, QStringLiteral("NOTE_ACCREDITO"), 1, 2024, QStringLiteral("C001"), 1);
    KRVInsertRiga(db, QStringLiteral("NOTE_ACCREDITO_DETT"), nota, QStringLiteral("Articolo"), QStringLiteral("A01"), 1,
                  2, 1);
    return m_fattura;
}

void TestDeleteRules::failuresWithoutSession_data()
{
    QTest::addColumn<std::function<void()>>("call");
    QTest::addColumn<QString>("prefix");
    const QString none;
    const auto row = [](const char *name, std::function<void()> call, const QString &prefix) {
        QTest::newRow(name) << std::move(call) << prefix;
    };
    const QSqlDatabase senzaSessione;
    row(
        "DeleteNotaDocumenti", [=] { DeleteNotaDocumenti(senzaSessione, 1, false); }, none);
    row(
        "DeleteTipiPagamento", [=] { DeleteTipiPagamento(senzaSessione, 1, false); },
        QStringLiteral("[DeleteTipiPagamento]\n\r"));
    row(
        "DeleteAliquotaIVA", [=] { DeleteAliquotaIVA(senzaSessione, 1, false); },
        QStringLiteral("[DeleteAliquotaIVA]\n\r"));
    row(
        "DeleteUM", [=] { DeleteUM(senzaSessione, 1, false); }, QStringLiteral("[DeleteUM]\n\r"));
    row(
        "DeleteFatturaVendita", [=] { DeleteFatturaVendita(senzaSessione, 1, false); },
        QStringLiteral("[DeleteFatturaVendita]\n\r"));
    row(
        "DeleteNotaAccredito", [=] { DeleteNotaAccredito(senzaSessione, 1, false); },
        QStringLiteral("[DeleteNotaAccredito]\n\r"));
}

// Handed no session, a delete cannot begin its transaction: the failure,
// raised outside any transaction, is bracketed by the routines that wrap and
// unchanged otherwise, and no box is shown.
void TestDeleteRules::failuresWithoutSession()
{
    QFETCH(std::function<void()>, call);
    QFETCH(QString, prefix);
    TQ3RecordingResponder responder;
    try {
        call();
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), prefix + QString::fromUtf8(KRVMsgSenzaSessione));
    }
    QVERIFY(responder.Messages().isEmpty());
}

// The rules compose their query for the session they are handed but never
// open it: they answer without reading it, even with no session at all.
void TestDeleteRules::rulesNeverReadTheSession()
{
    const QSqlDatabase senzaSessione;
    QVERIFY(CanDeleteAliquotaIVA(senzaSessione, 1));
    QVERIFY(CanDeleteUM(senzaSessione, 1));
    QVERIFY(CanDeleteTipoPagamento(senzaSessione, 1));
    QVERIFY(CanDeleteCategoriaAnaMaga(senzaSessione, 1));
    QVERIFY(CanDeleteCategoriaServizi(senzaSessione, 1));
    QVERIFY(CanDeleteAnaMaga(senzaSessione, QStringLiteral("A01")));
    QVERIFY(CanDeleteServizio(senzaSessione, QStringLiteral("S01")));
    QVERIFY(CanDeleteCliente(senzaSessione, QStringLiteral("C001")));
    QVERIFY(CanDeleteCausaleTrasporto(senzaSessione, 1));
    QVERIFY(CanDeleteFatturaVendita(senzaSessione, 1));
    QVERIFY(CanDeleteNotaAccredito(senzaSessione, 1));
}

void TestDeleteRules::ruleSql_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("sql");
    QTest::newRow("CanDeleteAliquotaIVA")
        << QStringLiteral("CanDeleteAliquotaIVA") << QStringLiteral("5")
        << QStringLiteral("SELECT FIRST 1 ((SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IVA_IDALIQUOTA_IVA=5) + "
                          "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE IVA_IDALIQUOTA_IVA=5) + "
                          "(SELECT COUNT(*) FROM ANA_MAGA WHERE IDALIQUOTA_IVA=5) + "
                          "(SELECT COUNT(*) FROM SERVIZI WHERE IDALIQUOTA_IVA=5)) AS NUMERO FROM ALIQUOTE_IVA");
    QTest::newRow("CanDeleteUM") << QStringLiteral("CanDeleteUM") << QStringLiteral("3")
                                 << QStringLiteral(
                                        "SELECT FIRST 1 ((SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDUM=3) + "
                                        "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE IDUM=3) + "
                                        "(SELECT COUNT(*) FROM ANA_MAGA WHERE IDUM=3) + "
                                        "(SELECT COUNT(*) FROM SERVIZI WHERE IDUM=3) + "
                                        "(SELECT COUNT(*) FROM DDT_SCARICO WHERE PESO_IDUM=3) + "
                                        "(SELECT COUNT(*) FROM DDT_SCARICO_DETT WHERE IDUM=3)) AS NUMERO FROM UM");
    QTest::newRow("CanDeleteTipoPagamento")
        << QStringLiteral("CanDeleteTipoPagamento") << QStringLiteral("2")
        << QStringLiteral("SELECT FIRST 1 ((SELECT COUNT(*) FROM FATT_VEND WHERE IDTIPO_PAGAMENTO=2) + "
                          "(SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE IDTIPO_PAGAMENTO=2) + "
                          "(SELECT COUNT(*) FROM CLIENTI WHERE IDTIPO_PAGAMENTO=2)) AS NUMERO FROM TIPI_PAGAMENTO");
    QTest::newRow("CanDeleteCategoriaAnaMaga")
        << QStringLiteral("CanDeleteCategoriaAnaMaga") << QStringLiteral("4")
        << QStringLiteral("SELECT FIRST 1 ((SELECT COUNT(*) FROM ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA=4) + "
                          "(SELECT COUNT(*) FROM DDT_SCARICO_DETT WHERE IDCATEGORIA_ANA_MAGA=4) + "
                          "(SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDCATEGORIA=4 AND TIPO_RIGA='Articolo') + "
                          "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE IDCATEGORIA=4 AND TIPO_RIGA='Articolo')) "
                          "AS NUMERO FROM CATEGORIE_ANA_MAGA");
    QTest::newRow("CanDeleteCategoriaServizi")
        << QStringLiteral("CanDeleteCategoriaServizi") << QStringLiteral("6")
        << QStringLiteral("SELECT FIRST 1 ((SELECT COUNT(*) FROM SERVIZI WHERE IDCATEGORIA_SERVIZI=6) + "
                          "(SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDCATEGORIA=6 AND TIPO_RIGA='Servizio') + "
                          "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE IDCATEGORIA=6 AND TIPO_RIGA='Servizio')) "
                          "AS NUMERO FROM CATEGORIE_SERVIZI");
    QTest::newRow("CanDeleteAnaMaga")
        << QStringLiteral("CanDeleteAnaMaga") << QStringLiteral("vite-m4")
        << QStringLiteral(
               "SELECT FIRST 1 ((SELECT COUNT(*) FROM DDT_SCARICO_DETT WHERE UPPER(CODICE)='VITE-M4' AND TIPO_RIGA='Articolo') + "
               "(SELECT COUNT(*) FROM FATT_VEND_DETT WHERE UPPER(CODICE)='VITE-M4' AND TIPO_RIGA='Articolo') + "
               "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE UPPER(CODICE)='VITE-M4' AND TIPO_RIGA='Articolo')) "
               "AS NUMERO FROM ANA_MAGA");
    QTest::newRow("CanDeleteServizio")
        << QStringLiteral("CanDeleteServizio") << QStringLiteral("posa")
        << QStringLiteral(
               "SELECT FIRST 1 ((SELECT COUNT(*) FROM FATT_VEND_DETT WHERE UPPER(CODICE)='POSA' AND TIPO_RIGA='Servizio') + "
               "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE UPPER(CODICE)='POSA' AND TIPO_RIGA='Servizio')) "
               "AS NUMERO FROM SERVIZI");
    QTest::newRow("CanDeleteCliente")
        << QStringLiteral("CanDeleteCliente") << QStringLiteral("d'amico")
        << QStringLiteral(
               "SELECT FIRST 1 ((SELECT COUNT(*) FROM DDT_SCARICO WHERE UPPER(CLI_CODICE)='D''AMICO') + "
               "(SELECT COUNT(*) FROM FATT_VEND WHERE UPPER(CLI_CODICE)='D''AMICO') + "
               "(SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE UPPER(CLI_CODICE)='D''AMICO')) AS NUMERO FROM CLIENTI");
    QTest::newRow("CanDeleteCausaleTrasporto")
        << QStringLiteral("CanDeleteCausaleTrasporto") << QStringLiteral("8")
        << QStringLiteral("SELECT FIRST 1 ((SELECT COUNT(*) FROM DDT_SCARICO WHERE IDCAUSALE_TRASPORTO=8)) AS NUMERO "
                          "FROM CAUSALI_TRASPORTO");
    QTest::newRow("CanDeleteFatturaVendita")
        << QStringLiteral("CanDeleteFatturaVendita") << QStringLiteral("1") << QString();
    QTest::newRow("CanDeleteNotaAccredito")
        << QStringLiteral("CanDeleteNotaAccredito") << QStringLiteral("1") << QString();
}

void TestDeleteRules::ruleSql()
{
    QFETCH(QString, rule);
    QFETCH(QString, argument);
    QFETCH(QString, sql);
    QCOMPARE(CanDeleteSQL(rule, argument), sql);
}

void TestDeleteRules::unknownRuleRaises()
{
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, CanDeleteSQL(QStringLiteral("CanDeleteNulla"), QStringLiteral("1")));
}

// The composed texts are valid queries whose single row sums the references.
void TestDeleteRules::ruleSqlCountsReferences()
{
    FillReferences();
    const TQ3TestDatabase &db = Module().Database;
    const auto count = [&](const char *rule, const QString &argument) {
        return db.Scalar(CanDeleteSQL(QLatin1String(rule), argument)).toInt();
    };
    QCOMPARE(count("CanDeleteAliquotaIVA", QStringLiteral("1")), 5); // 3 invoice lines, article, service
    QCOMPARE(count("CanDeleteAliquotaIVA", QStringLiteral("2")), 1); // the credit note line
    QCOMPARE(count("CanDeleteAliquotaIVA", QStringLiteral("3")), 0);
    QCOMPARE(count("CanDeleteUM", QStringLiteral("1")), 5); // 2 invoice lines, note line, article, delivery line
    QCOMPARE(count("CanDeleteUM", QStringLiteral("4")), 1); // delivery note weight
    QCOMPARE(count("CanDeleteTipoPagamento", QStringLiteral("2")), 2); // invoice, customer
    QCOMPARE(count("CanDeleteTipoPagamento", QStringLiteral("1")), 1); // credit note
    QCOMPARE(count("CanDeleteCategoriaAnaMaga", QStringLiteral("1")),
             4); // article, delivery line, invoice and note "Articolo" lines
    QCOMPARE(count("CanDeleteCategoriaServizi", QStringLiteral("1")), 2); // service, invoice "Servizio" line
    QCOMPARE(count("CanDeleteAnaMaga", QStringLiteral("a01")), 3);        // "Testo" line with the code not counted
    QCOMPARE(count("CanDeleteServizio", QStringLiteral("s01")), 1);
    QCOMPARE(count("CanDeleteServizio", QStringLiteral("a01")), 0);
    QCOMPARE(count("CanDeleteCliente", QStringLiteral("c001")), 3);
    QCOMPARE(count("CanDeleteCausaleTrasporto", QStringLiteral("1")), 1);
    QCOMPARE(count("CanDeleteCausaleTrasporto", QStringLiteral("2")), 0);
}

// The rules set their query but never open it: referenced records may be deleted too.
void TestDeleteRules::everyRuleAnswersTrue()
{
    const int fattura = FillReferences();
    QVERIFY(CanDeleteAliquotaIVA(Module().Db(), 1));
    QVERIFY(CanDeleteUM(Module().Db(), 1));
    QVERIFY(CanDeleteTipoPagamento(Module().Db(), 2));
    QVERIFY(CanDeleteCategoriaAnaMaga(Module().Db(), 1));
    QVERIFY(CanDeleteCategoriaServizi(Module().Db(), 1));
    QVERIFY(CanDeleteAnaMaga(Module().Db(), QStringLiteral("A01")));
    QVERIFY(CanDeleteServizio(Module().Db(), QStringLiteral("S01")));
    QVERIFY(CanDeleteCliente(Module().Db(), QStringLiteral("C001")));
    QVERIFY(CanDeleteCausaleTrasporto(Module().Db(), 1));
    QVERIFY(CanDeleteFatturaVendita(Module().Db(), fattura));
    QVERIFY(CanDeleteNotaAccredito(Module().Db(), 1));
    QCOMPARE(
        Module().Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = 1")).toInt(),
        1);
}

namespace {

void CompareConfirmation(const TQ3RecordingResponder &responder)
{
    QCOMPARE(responder.Messages().size(), 1);
    const TQ3Message &box = responder.Messages().first();
    QCOMPARE(box.Title, QStringLiteral("Conferma"));
    QCOMPARE(box.Text, QStringLiteral("Confermare l'eliminazione?"));
    QCOMPARE(box.Icon, TQ3MsgIcon::Question);
    QCOMPARE(box.Buttons, TQ3MsgButtons::YesNo);
}

QString InvoiceRows(const TQ3TestDatabase &db, int id)
{
    const QString key = QString::number(id);
    return db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE IDFATT_VEND = ") + key).toString()
           + QLatin1Char('/')
           + db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDFATT_VEND = ") + key).toString();
}

} // namespace

void TestDeleteRules::deleteFatturaVenditaAnsweredNo()
{
    const TQ3TestDatabase &db = Module().Database;
    const int id = KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 20, 2025);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Testo"));
    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::No);
    QVERIFY(!DeleteFatturaVendita(Module().Db(), id, true));
    CompareConfirmation(responder);
    QCOMPARE(InvoiceRows(db, id), QStringLiteral("1/1"));
}

void TestDeleteRules::deleteFatturaVenditaAnsweredYes()
{
    const TQ3TestDatabase &db = Module().Database;
    // The header may go only once its lines are gone.
    ExecSQL(Module().Db(), QStringLiteral("CREATE EXCEPTION E_RIGHE_PRESENTI 'Righe ancora presenti'"));
    ExecSQL(Module().Db(),
            QStringLiteral("CREATE TRIGGER TG_BD_FATT_VEND_PROVA FOR FATT_VEND BEFORE DELETE AS BEGIN "
                           "IF (EXISTS(SELECT 1 FROM FATT_VEND_DETT WHERE IDFATT_VEND = OLD.IDFATT_VEND)) "
                           "THEN EXCEPTION E_RIGHE_PRESENTI; END"));
    const int id = KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 21, 2025);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Articolo"), QStringLiteral("A01"));
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Testo"));
    const int other = KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 22, 2025);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), other, QStringLiteral("Testo"));

    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::Yes);
    QVERIFY(DeleteFatturaVendita(Module().Db(), id, true));
    CompareConfirmation(responder);
    QCOMPARE(InvoiceRows(db, id), QStringLiteral("0/0"));
    QCOMPARE(InvoiceRows(db, other), QStringLiteral("1/1"));
}

// The header's delete fails after the lines went: the lines come back.
void TestDeleteRules::deleteFatturaVenditaFailureRollsBack()
{
    const TQ3TestDatabase &db = Module().Database;
    ExecSQL(Module().Db(), QStringLiteral("CREATE EXCEPTION E_FATTURA_BLOCCATA 'Fattura bloccata'"));
    ExecSQL(Module().Db(), QStringLiteral("CREATE TRIGGER TG_BD_FATT_VEND_BLOCCO FOR FATT_VEND BEFORE DELETE AS BEGIN "
                                          "IF (OLD.NUMERO = 99) THEN EXCEPTION E_FATTURA_BLOCCATA; END"));
    const int id = KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 99, 2025);
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Testo"));
    KRVInsertRiga(db, QStringLiteral("FATT_VEND_DETT"), id, QStringLiteral("Testo"));

    TQ3RecordingResponder responder;
    int busyAtBox = -1;
    responder.SetOnShow([&](const TQ3Message &) { busyAtBox = TQ3BusyCursor::Depth(); });
    QVERIFY(!DeleteFatturaVendita(Module().Db(), id, false));
    // The busy cursor is gone before the box shows, and stays gone.
    QCOMPARE(busyAtBox, 0);
    QCOMPARE(TQ3BusyCursor::Depth(), 0);
    QCOMPARE(responder.Messages().size(), 1);
    const TQ3Message &box = responder.Messages().first();
    QCOMPARE(box.Title, QStringLiteral("Errore"));
    QCOMPARE(box.Text,
             QStringLiteral(
                 "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"));
    QCOMPARE(box.Icon, TQ3MsgIcon::Error);
    QCOMPARE(box.Buttons, TQ3MsgButtons::Ok);
    QCOMPARE(InvoiceRows(db, id), QStringLiteral("1/2"));
}

void TestDeleteRules::deleteWithoutAsking_data()
{
    QTest::addColumn<std::function<bool(const QSqlDatabase &, int)>>("remove");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("key");
    const auto row = [](const char *name, std::function<bool(const QSqlDatabase &, int)> remove, const char *insert,
                        const char *table, const char *key) {
        QTest::newRow(name) << std::move(remove) << QString::fromLatin1(insert) << QString::fromLatin1(table)
                            << QString::fromLatin1(key);
    };
    row(
        "DeleteNotaDocumenti", [](const QSqlDatabase &db, int id) { return DeleteNotaDocumenti(db, id, false); },
        "INSERT INTO NOTE_DOCUMENTI (TITOLO, TESTO) VALUES ('Nota da eliminare', 'x')", "NOTE_DOCUMENTI",
        "IDNOTA_DOCUMENTI");
    row(
        "DeleteTipiPagamento", [](const QSqlDatabase &db, int id) { return DeleteTipiPagamento(db, id, false); },
        "INSERT INTO TIPI_PAGAMENTO (TIPO_PAGAMENTO) VALUES ('Contanti')", "TIPI_PAGAMENTO", "IDTIPO_PAGAMENTO");
    row(
        "DeleteAliquotaIVA", [](const QSqlDatabase &db, int id) { return DeleteAliquotaIVA(db, id, false); },
        "INSERT INTO ALIQUOTE_IVA (CODICE, DESCRIZIONE, ALIQUOTA) VALUES ('10', 'Ridotta', 10)", "ALIQUOTE_IVA",
        "IDALIQUOTA_IVA");
    row(
        "DeleteUM", [](const QSqlDatabase &db, int id) { return DeleteUM(db, id, false); },
        "INSERT INTO UM (UM) VALUES ('MT')", "UM", "IDUM");
    row("KRVEliminaCliente", &KRVEliminaCliente,
        "INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE) VALUES ('C900', 'Cliente da eliminare')", "CLIENTI", "IDCLIENTE");
    row("KRVEliminaAnaMaga", &KRVEliminaAnaMaga,
        "INSERT INTO ANA_MAGA (CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, "
        "IDALIQUOTA_IVA, IDUM) VALUES ('A900', 'x', 0, 0, 1, 0, 0, 1, 1)",
        "ANA_MAGA", "IDANA_MAGA");
    row("KRVEliminaServizio", &KRVEliminaServizio,
        "INSERT INTO SERVIZI (CODICE, DESCRIZIONE, IDCATEGORIA_SERVIZI, PREZZO, COSTO, IDALIQUOTA_IVA, IDUM) "
        "VALUES ('S900', 'x', 1, 0, 0, 1, 1)",
        "SERVIZI", "IDSERVIZIO");
}

// Without asking, no box is shown and exactly the one row goes.
void TestDeleteRules::deleteWithoutAsking()
{
    QFETCH(std::function<bool(const QSqlDatabase &, int)>, remove);
    QFETCH(QString, insert);
    QFETCH(QString, table);
    QFETCH(QString, key);
    const TQ3TestDatabase &db = Module().Database;
    const QString generator = QStringLiteral("GN_") + key;
    const int id = KRVInsertRow(db, insert, generator);
    const QString all =
        QStringLiteral("SELECT ") + key + QStringLiteral(" FROM ") + table + QStringLiteral(" ORDER BY ") + key;
    QStringList expected = db.Rows(all);
    expected.removeOne(QString::number(id));
    TQ3RecordingResponder responder;
    QVERIFY(remove(Module().Db(), id));
    QVERIFY(responder.Messages().isEmpty());
    QCOMPARE(db.Rows(all), expected);
}

void TestDeleteRules::deleteNotaAccreditoRemovesLines()
{
    const TQ3TestDatabase &db = Module().Database;
    const int id = KRVInsertDocumento(db, QStringLiteral("NOTE_ACCREDITO"), 30, 2025);
    KRVInsertRiga(db, QStringLiteral("NOTE_ACCREDITO_DETT"), id, QStringLiteral("Testo"));
    KRVInsertRiga(db, QStringLiteral("NOTE_ACCREDITO_DETT"), id, QStringLiteral("Testo"));
    const int other = KRVInsertDocumento(db, QStringLiteral("NOTE_ACCREDITO"), 31, 2025);
    KRVInsertRiga(db, QStringLiteral("NOTE_ACCREDITO_DETT"), other, QStringLiteral("Testo"));

    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::Yes);
    QVERIFY(DeleteNotaAccredito(Module().Db(), id, true));
    CompareConfirmation(responder);
    const auto rows = [&](int key) {
        return db.Rows(
            QStringLiteral("SELECT (SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE IDNOTA_ACCREDITO = %1), "
                           "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE IDNOTA_ACCREDITO = %1) FROM RDB$DATABASE")
                .arg(key));
    };
    QCOMPARE(rows(id), QStringList{QStringLiteral("0|0")});
    QCOMPARE(rows(other), QStringList{QStringLiteral("1|1")});
}

QTEST_GUILESS_MAIN(TestDeleteRules)
#include "tst_deleterules.moc"
