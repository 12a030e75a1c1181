#include "KRVLookups.h"
#include "KRVServiceRows.h"
#include "KRVTestCore.h"
#include "Q3Exception.h"

#include <QtTest>

#include <functional>
#include <memory>

class TestLookups : public QObject
{
    Q_OBJECT

private slots:
    void failuresWithoutSession_data();
    void failuresWithoutSession();
    void aliquotaIVA();
    void umAndTipoPagamento();
    void clienteById();
    void clienteByCodeIgnoresCase();
    void unknownClienteIsEmpty();
    void servizioWithCategory();
    void articoloWithCategory();
    void unknownArticoloAndServizioAreEmpty();
    void categoriesAndNotes();
    void codiceClienteExists();
    void codeExistenceTests();
    void titoloNotaDocumentiExists();

private:
    TKRVTestCore &Module();
    std::unique_ptr<TKRVTestCore> m_module;
};

TKRVTestCore &TestLookups::Module()
{
    if (!m_module)
        m_module = std::make_unique<TKRVTestCore>();
    return *m_module;
}

void TestLookups::failuresWithoutSession_data()
{
    QTest::addColumn<std::function<void()>>("call");
    QTest::addColumn<QString>("prefix");
    const QString none;
    QTest::newRow("GetAliquotaIVA") << std::function<void()>([] { GetAliquotaIVA(QSqlDatabase(), 1); }) << none;
    QTest::newRow("GetUM") << std::function<void()>([] { GetUM(QSqlDatabase(), 1); }) << none;
    QTest::newRow("GetTipoPagamento") << std::function<void()>([] { GetTipoPagamento(QSqlDatabase(), 1); }) << none;
    QTest::newRow("GetCliente(id)") << std::function<void()>([] { GetCliente(QSqlDatabase(), 1); }) << none;
    QTest::newRow("GetCliente(codice)") << std::function<void()>([] {
        GetCliente(QSqlDatabase(), QStringLiteral("C001"));
    }) << QStringLiteral("[GetCliente]\n\r");
    QTest::newRow("GetServizio") << std::function<void()>([] { GetServizio(QSqlDatabase(), 1); }) << none;
    QTest::newRow("GetArticolo") << std::function<void()>([] { GetArticolo(QSqlDatabase(), 1); })
                                 << QStringLiteral("[GetArticolo]\n\r");
    QTest::newRow("GetCategoriaAnaMaga") << std::function<void()>([] { GetCategoriaAnaMaga(QSqlDatabase(), 1); })
                                         << QStringLiteral("[GetCategoriaAnaMaga]\n\r");
    QTest::newRow("GetCategoriaServizio") << std::function<void()>([] { GetCategoriaServizio(QSqlDatabase(), 1); })
                                          << QStringLiteral("[GetCategoriaServizio]\n\r");
    QTest::newRow("GetNotaDocumento") << std::function<void()>([] { GetNotaDocumento(QSqlDatabase(), 1); })
                                      << QStringLiteral("[GetNotaDocumento]\n\r");
    QTest::newRow("CodiceAliquotaIvaExists")
        << std::function<void()>([] { CodiceAliquotaIvaExists(QSqlDatabase(), QStringLiteral("20"), 0); }) << none;
    QTest::newRow("CodiceUMExists") << std::function<void()>([] {
        CodiceUMExists(QSqlDatabase(), QStringLiteral("KG"), 0);
    }) << none;
    QTest::newRow("CodiceTipoPagamentoExists") << std::function<void()>([] {
        CodiceTipoPagamentoExists(QSqlDatabase(), QStringLiteral("Rimessa diretta"), 0);
    }) << none;
    QTest::newRow("CodiceAnaMagaExists") << std::function<void()>([] {
        CodiceAnaMagaExists(QSqlDatabase(), QStringLiteral("A1"), 0);
    }) << none;
    QTest::newRow("CodiceServizioExists")
        << std::function<void()>([] { CodiceServizioExists(QSqlDatabase(), QStringLiteral("S1"), 0); }) << none;
    QTest::newRow("CodiceClienteExists") << std::function<void()>([] {
        CodiceClienteExists(QSqlDatabase(), QStringLiteral("C001"), 0);
    }) << none;
    QTest::newRow("TitoloNotaDocumentiExists")
        << std::function<void()>([] { TitoloNotaDocumentiExists(QSqlDatabase(), QStringLiteral("Nota"), 0); }) << none;
}

// Handed no session, the lookups fail: the wrapping ones put their name in
// brackets before the failure, the others let it pass unchanged.
void TestLookups::failuresWithoutSession()
{
    QFETCH(std::function<void()>, call);
    QFETCH(QString, prefix);
    try {
        call();
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), prefix + QString::fromUtf8(KRVMsgSenzaSessione));
    }
}

void TestLookups::aliquotaIVA()
{
    Module();
    const TAliquotaIVA standard = GetAliquotaIVA(Module().Db(), 1);
    QCOMPARE(standard.IDALIQUOTA_IVA, 1);
    QCOMPARE(standard.CODICE, QStringLiteral("20"));
    QCOMPARE(standard.DESCRIZIONE, QStringLiteral("Aliquota standard"));
    QCOMPARE(standard.ALIQUOTA, 20.0);
    QVERIFY(standard.NATURA.isEmpty());
    QVERIFY(standard.RIFERIMENTO_NORMATIVO.isEmpty());

    Module().Database.Exec(QStringLiteral(
        "INSERT INTO ALIQUOTE_IVA (CODICE, DESCRIZIONE, ALIQUOTA, NATURA, RIFERIMENTO_NORMATIVO) VALUES ('E1', "
        "'Esente art. 10', 0, 'N4', 'Art. 10 DPR 633/72')"));
    const TAliquotaIVA esente =
        GetAliquotaIVA(Module().Db(), GetLastGeneratorValue(QStringLiteral("GN_IDALIQUOTA_IVA"), Module().Db()));
    QCOMPARE(esente.CODICE, QStringLiteral("E1"));
    QCOMPARE(esente.NATURA, QStringLiteral("N4"));
    QCOMPARE(esente.RIFERIMENTO_NORMATIVO, QStringLiteral("Art. 10 DPR 633/72"));

    const TAliquotaIVA unknown = GetAliquotaIVA(Module().Db(), 999);
    QCOMPARE(unknown.IDALIQUOTA_IVA, 0);
    QVERIFY(unknown.CODICE.isEmpty());
    QVERIFY(unknown.DESCRIZIONE.isEmpty());
    QVERIFY(unknown.NATURA.isEmpty());
    QCOMPARE(unknown.ALIQUOTA, 0.0);
}

void TestLookups::umAndTipoPagamento()
{
    Module();
    QCOMPARE(GetUM(Module().Db(), 2), QStringLiteral("ORE"));
    QCOMPARE(GetUM(Module().Db(), 999), QString());
    QCOMPARE(GetTipoPagamento(Module().Db(), 1), QStringLiteral("Rimessa diretta"));
    QCOMPARE(GetTipoPagamento(Module().Db(), 999), QString());
}

void TestLookups::clienteById()
{
    const TQ3TestDatabase &db = Module().Database;
    db.Exec(QStringLiteral(
        "INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, CAP, PROVINCIA, NAZIONE, CODICEFISCALE, PARTITAIVA, "
        "IDTIPO_PAGAMENTO, TELEFONO1, TELEFONO2, TELEFONO3, FAX, EMAIL, WEB, NOTE, TIPO_SOGGETTO, NOME, COGNOME, "
        "CODICE_DESTINATARIO, PEC) VALUES ('CL01', 'Rossi S.r.l.', "
        "'Via Roma 1', 'Torino', '10100', 'TO', 'Italia', 'RSSMRA80A01L219X', '01234567890', 2, '011 1', '011 2', "
        "'011 3', '011 4', 'info@rossi.it', 'www.rossi.it', 'nota', 'P', 'Mario', 'Rossi', 'ABC1234', "
        "'rossi@pec.it')"));
    const int id = GetLastGeneratorValue(QStringLiteral("GN_IDCLIENTE"), db.Db());

    const TCliente cliente = GetCliente(Module().Db(), id);
    QCOMPARE(cliente.IDCLIENTE, id);
    QCOMPARE(cliente.CODICE, QStringLiteral("CL01"));
    QCOMPARE(cliente.RAGIONESOCIALE, QStringLiteral("Rossi S.r.l."));
    QCOMPARE(cliente.INDIRIZZO, QStringLiteral("Via Roma 1"));
    QCOMPARE(cliente.CITTA, QStringLiteral("Torino"));
    QCOMPARE(cliente.CAP, QStringLiteral("10100"));
    QCOMPARE(cliente.PROVINCIA, QStringLiteral("TO"));
    QCOMPARE(cliente.NAZIONE, QStringLiteral("Italia"));
    QCOMPARE(cliente.CODICEFISCALE, QStringLiteral("RSSMRA80A01L219X"));
    QCOMPARE(cliente.PARTITAIVA, QStringLiteral("01234567890"));
    QCOMPARE(cliente.IDTIPO_PAGAMENTO, 2);
    QCOMPARE(cliente.TIPO_PAGAMENTO, QStringLiteral("Bonifico 30 gg Data Fattura"));
    QCOMPARE(cliente.TELEFONO1, QStringLiteral("011 1"));
    QCOMPARE(cliente.TELEFONO2, QStringLiteral("011 2"));
    QCOMPARE(cliente.TELEFONO3, QStringLiteral("011 3"));
    QCOMPARE(cliente.FAX, QStringLiteral("011 4"));
    QCOMPARE(cliente.EMAIL, QStringLiteral("info@rossi.it"));
    QCOMPARE(cliente.WEB, QStringLiteral("www.rossi.it"));
    QCOMPARE(cliente.TIPO_SOGGETTO, QStringLiteral("P"));
    QCOMPARE(cliente.NOME, QStringLiteral("Mario"));
    QCOMPARE(cliente.COGNOME, QStringLiteral("Rossi"));
    QCOMPARE(cliente.CODICE_DESTINATARIO, QStringLiteral("ABC1234"));
    QCOMPARE(cliente.PEC, QStringLiteral("rossi@pec.it"));
}

void TestLookups::clienteByCodeIgnoresCase()
{
    const int id = KRVInsertCliente(Module().Database, QStringLiteral("Bianchi"), QStringLiteral("Bianchi S.p.A."), 5);
    const TCliente cliente = GetCliente(Module().Db(), QStringLiteral("bIANCHI"));
    QCOMPARE(cliente.IDCLIENTE, id);
    QCOMPARE(cliente.CODICE, QStringLiteral("Bianchi"));
    QCOMPARE(cliente.RAGIONESOCIALE, QStringLiteral("Bianchi S.p.A."));
    QCOMPARE(cliente.TIPO_PAGAMENTO, QStringLiteral("Ri.Ba. 30 gg Fine Mese"));
    QVERIFY(cliente.INDIRIZZO.isEmpty());
    // A customer saved without the electronic invoice's data is a company with no recipient code.
    QCOMPARE(cliente.TIPO_SOGGETTO, QStringLiteral("A"));
    QVERIFY(cliente.CODICE_DESTINATARIO.isEmpty());
}

void TestLookups::unknownClienteIsEmpty()
{
    Module();
    for (const TCliente &cliente :
         {GetCliente(Module().Db(), 999), GetCliente(Module().Db(), QStringLiteral("NESSUNO"))}) {
        QCOMPARE(cliente.IDCLIENTE, 0);
        QCOMPARE(cliente.IDTIPO_PAGAMENTO, 0);
        for (const QString &text : {cliente.CODICE,
                                    cliente.RAGIONESOCIALE,
                                    cliente.INDIRIZZO,
                                    cliente.CITTA,
                                    cliente.CAP,
                                    cliente.PROVINCIA,
                                    cliente.NAZIONE,
                                    cliente.CODICEFISCALE,
                                    cliente.PARTITAIVA,
                                    cliente.TIPO_PAGAMENTO,
                                    cliente.TELEFONO1,
                                    cliente.TELEFONO2,
                                    cliente.TELEFONO3,
                                    cliente.FAX,
                                    cliente.EMAIL,
                                    cliente.WEB,
                                    cliente.TIPO_SOGGETTO,
                                    cliente.NOME,
                                    cliente.COGNOME,
                                    cliente.CODICE_DESTINATARIO,
                                    cliente.PEC})
            QVERIFY(text.isEmpty());
    }
}

void TestLookups::servizioWithCategory()
{
    const TQ3TestDatabase &db = Module().Database;
    const int categoria =
        KRVInsertRow(db, QStringLiteral("INSERT INTO CATEGORIE_SERVIZI (CATEGORIA, IDPADRE) VALUES ('Consulenza', 1)"),
                     QStringLiteral("GN_IDCATEGORIA_SERVIZI"));
    const int id = KRVInsertServizio(db, QStringLiteral("S01"), categoria, 2, 2);
    const TServizio servizio = GetServizio(Module().Db(), id);
    QCOMPARE(servizio.IDSERVIZIO, id);
    QCOMPARE(servizio.CODICE, QStringLiteral("S01"));
    QCOMPARE(servizio.DESCRIZIONE, QStringLiteral("Servizio di prova"));
    QCOMPARE(servizio.IDCATEGORIA_SERVIZI, categoria);
    QCOMPARE(servizio.CATEGORIA_SERVIZI, QStringLiteral("Consulenza"));
    QCOMPARE(servizio.PREZZO, 50.0);
    QCOMPARE(servizio.COSTO, 20.5);
    QCOMPARE(servizio.IDALIQUOTA_IVA, 2);
    QCOMPARE(servizio.IDUM, 2);
}

void TestLookups::articoloWithCategory()
{
    const TQ3TestDatabase &db = Module().Database;
    const int categoria =
        KRVInsertRow(db, QStringLiteral("INSERT INTO CATEGORIE_ANA_MAGA (CATEGORIA, IDPADRE) VALUES ('Viti', 1)"),
                     QStringLiteral("GN_IDCATEGORIA_ANA_MAGA"));
    const int id = KRVInsertArticolo(db, QStringLiteral("A01"), categoria, 3, 4);
    const TArticolo articolo = GetArticolo(Module().Db(), id);
    QCOMPARE(articolo.IDANA_MAGA, id);
    QCOMPARE(articolo.CODICE, QStringLiteral("A01"));
    QCOMPARE(articolo.DESCRIZIONE, QStringLiteral("Articolo di prova"));
    QCOMPARE(articolo.SOTTOSCORTA, 2.5);
    QCOMPARE(articolo.RIORDINO, 10.0);
    QCOMPARE(articolo.IDCATEGORIA_ANA_MAGA, categoria);
    QCOMPARE(articolo.CATEGORIA_ANA_MAGA, QStringLiteral("Viti"));
    QCOMPARE(articolo.PREZZO, 12.34);
    QCOMPARE(articolo.COSTO, 5.6);
    QCOMPARE(articolo.IDALIQUOTA_IVA, 3);
    QCOMPARE(articolo.IDUM, 4);
}

void TestLookups::unknownArticoloAndServizioAreEmpty()
{
    Module();
    const TArticolo articolo = GetArticolo(Module().Db(), 999);
    QCOMPARE(articolo.IDANA_MAGA, 0);
    QVERIFY(articolo.CODICE.isEmpty());
    QVERIFY(articolo.CATEGORIA_ANA_MAGA.isEmpty());
    QCOMPARE(articolo.PREZZO, 0.0);
    QCOMPARE(articolo.IDCATEGORIA_ANA_MAGA, 0);

    const TServizio servizio = GetServizio(Module().Db(), 999);
    QCOMPARE(servizio.IDSERVIZIO, 0);
    QVERIFY(servizio.CODICE.isEmpty());
    QVERIFY(servizio.CATEGORIA_SERVIZI.isEmpty());
    QCOMPARE(servizio.COSTO, 0.0);
}

void TestLookups::categoriesAndNotes()
{
    const int nota = KRVInsertNotaDocumenti(Module().Database, QStringLiteral("Esenzione"),
                                            QStringLiteral("Operazione esente\nart. 10"));
    QCOMPARE(GetCategoriaAnaMaga(Module().Db(), 1), QStringLiteral("Altro"));
    QCOMPARE(GetCategoriaServizio(Module().Db(), 1), QStringLiteral("Altro"));
    QCOMPARE(GetCategoriaAnaMaga(Module().Db(), 999), QString());
    QCOMPARE(GetCategoriaServizio(Module().Db(), 999), QString());
    QCOMPARE(GetNotaDocumento(Module().Db(), nota), QStringLiteral("Operazione esente\nart. 10"));
    QCOMPARE(GetNotaDocumento(Module().Db(), 999), QString());
}

void TestLookups::codiceClienteExists()
{
    const TQ3TestDatabase &db = Module().Database;
    db.Exec(QStringLiteral("SET GENERATOR GN_IDCLIENTE TO 6"));
    QCOMPARE(KRVInsertCliente(db, QStringLiteral("C001"), QStringLiteral("Cliente sette")), 7);
    // Only customer 7 has the code: editing 7 keeps it, a new customer may not take it.
    QVERIFY(!CodiceClienteExists(Module().Db(), QStringLiteral("c001"), 7));
    QVERIFY(CodiceClienteExists(Module().Db(), QStringLiteral("c001"), 0));

    // Another customer has it: customer 7 may not take it.
    db.Exec(QStringLiteral("UPDATE CLIENTI SET CODICE = 'C007' WHERE IDCLIENTE = 7"));
    KRVInsertCliente(db, QStringLiteral("C001"), QStringLiteral("Cliente otto"));
    QVERIFY(CodiceClienteExists(Module().Db(), QStringLiteral("c001"), 7));
    QVERIFY(!CodiceClienteExists(Module().Db(), QStringLiteral("c0001"), 7));
}

void TestLookups::codeExistenceTests()
{
    const TQ3TestDatabase &db = Module().Database;
    QVERIFY(CodiceAliquotaIvaExists(Module().Db(), QStringLiteral("n0"), 0));
    QVERIFY(!CodiceAliquotaIvaExists(Module().Db(), QStringLiteral("n0"), 2));
    QVERIFY(CodiceAliquotaIvaExists(Module().Db(), QStringLiteral("n0"), 1));
    QVERIFY(!CodiceAliquotaIvaExists(Module().Db(), QStringLiteral("N9"), 0));

    QVERIFY(CodiceUMExists(Module().Db(), QStringLiteral("pezzi"), 0));
    QVERIFY(!CodiceUMExists(Module().Db(), QStringLiteral("pezzi"), 1));
    QVERIFY(!CodiceUMExists(Module().Db(), QStringLiteral("MT"), 0));

    QVERIFY(CodiceTipoPagamentoExists(Module().Db(), QStringLiteral("RIMESSA DIRETTA"), 0));
    QVERIFY(!CodiceTipoPagamentoExists(Module().Db(), QStringLiteral("rimessa diretta"), 1));
    QVERIFY(!CodiceTipoPagamentoExists(Module().Db(), QStringLiteral("Contanti"), 0));

    const int articolo = KRVInsertArticolo(db, QStringLiteral("VITE-M4"));
    QVERIFY(CodiceAnaMagaExists(Module().Db(), QStringLiteral("vite-m4"), 0));
    QVERIFY(!CodiceAnaMagaExists(Module().Db(), QStringLiteral("vite-m4"), articolo));
    QVERIFY(!CodiceAnaMagaExists(Module().Db(), QStringLiteral("vite-m5"), 0));

    const int servizio = KRVInsertServizio(db, QStringLiteral("Posa"));
    QVERIFY(CodiceServizioExists(Module().Db(), QStringLiteral("POSA"), 0));
    QVERIFY(!CodiceServizioExists(Module().Db(), QStringLiteral("posa"), servizio));
    QVERIFY(!CodiceServizioExists(Module().Db(), QStringLiteral("Trasporto"), 0));
}

void TestLookups::titoloNotaDocumentiExists()
{
    const int nota =
        KRVInsertNotaDocumenti(Module().Database, QStringLiteral("Reverse charge"), QStringLiteral("testo"));
    QVERIFY(TitoloNotaDocumentiExists(Module().Db(), QStringLiteral("REVERSE CHARGE"), 0));
    QVERIFY(!TitoloNotaDocumentiExists(Module().Db(), QStringLiteral("reverse charge"), nota));
    QVERIFY(!TitoloNotaDocumentiExists(Module().Db(), QStringLiteral("Reverse"), 0));
}

QTEST_GUILESS_MAIN(TestLookups)
#include "tst_lookups.moc"
