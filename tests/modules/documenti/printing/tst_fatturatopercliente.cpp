// The turnover by customer, without windows: the statement the print runs
// gives the rows of the reference statement, value by value (types included)
// and in the same order of turnover, on generated firms and on the cases at
// the edges, and it reads the year's invoices once instead of once per
// customer.
#include "../KRVAziendaGenerataTestKit.h"
#include "KRVFatturatoPerCliente.h"
#include "KRVTestCore.h"
#include "KRVdmStampe.h"
#include "Q3Report.h"
#include "Q3Sql.h"

#include <QtTest>

#include <memory>

namespace {

// What a statement gave: its rows, every value with its type ("type:value",
// apart by "|"), or its failure.
struct TEsito
{
    QStringList Colonne;
    QStringList Righe;
    QString Errore;
};

TEsito Esegui(TQ3Connection *connection, const QString &sql, int anno)
{
    TQ3Dataset dataset;
    dataset.SetConnection(connection);
    dataset.SetSQL(sql);
    TEsito esito;
    try {
        KRVApriFatturatoPerCliente(dataset, anno);
    } catch (const std::exception &e) {
        esito.Errore = ExceptionMessage(e);
        return esito;
    }
    esito.Colonne = dataset.FieldNames();
    for (int r = 0; r < dataset.RecordCount(); ++r) {
        QStringList valori;
        for (int c = 0; c < esito.Colonne.size(); ++c)
            valori << KRVValoreTipizzato(dataset.ValueAt(r, c));
        esito.Righe << valori.join(QLatin1Char('|'));
    }
    return esito;
}

} // namespace

class TestFatturatoPerCliente : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_core = std::make_unique<TKRVTestCore>(); }
    void cleanup() { m_core.reset(); }

    void generatedFirmsGiveTheReferenceRows_data();
    void generatedFirmsGiveTheReferenceRows();
    void edgeCasesGiveTheReferenceRows();
    void yearWithoutInvoicesFailsAsTheReference();
    void noInvoiceAtAllGivesNoRows();
    void printReadsTheYearsInvoicesOnce();

private:
    // The print's own statement, as its report dataset holds it.
    QString StatementoStampa() const;
    // Both statements on the year, compared row by row; answers the rows.
    int Confronta(int anno);
    void Cliente(const QString &codice, const QString &ragioneSociale);
    void Fattura(int numero, int anno, const QString &cliente, const QString &imponibile);

    std::unique_ptr<TKRVTestCore> m_core;
};

QString TestFatturatoPerCliente::StatementoStampa() const
{
    TQ3ReportProject progetto;
    TKRVdmStampe stampe(nullptr, m_core->ModADOConn(), &progetto);
    return stampe.Dataset(QStringLiteral("adsFatturatoPerCliente"))->SQL();
}

int TestFatturatoPerCliente::Confronta(int anno)
{
    const TEsito atteso = Esegui(m_core->ModADOConn(), KRVSQLFatturatoPerClienteRiferimento(), anno);
    const TEsito ottenuto = Esegui(m_core->ModADOConn(), StatementoStampa(), anno);
    [&] {
        QCOMPARE(ottenuto.Errore, atteso.Errore);
        QCOMPARE(ottenuto.Colonne, atteso.Colonne);
        QCOMPARE(ottenuto.Righe.size(), atteso.Righe.size());
        if (!atteso.Errore.isEmpty())
            return;
        const int totale = int(atteso.Colonne.indexOf(QStringLiteral("TOTALE_IMPONIBILE")));
        QVERIFY(totale >= 0);
        // Row by row the turnover, largest first. Customers of equal turnover
        // come in the order the database's sort leaves them, which its
        // statement does not fix (it depends on the size of the sorted
        // records): within such a run the rows are compared as a whole.
        KRVConfrontaRighePerChiave(ottenuto.Righe, atteso.Righe, totale);
    }();
    return int(atteso.Righe.size());
}

void TestFatturatoPerCliente::Cliente(const QString &codice, const QString &ragioneSociale)
{
    m_core->Database.Exec(QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE) VALUES (%1, %2)")
                              .arg(QuotedStr(codice), QuotedStr(ragioneSociale)));
}

void TestFatturatoPerCliente::Fattura(int numero, int anno, const QString &cliente, const QString &imponibile)
{
    m_core->Database.Exec(
        QStringLiteral("INSERT INTO FATT_VEND (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, "
                       "TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) "
                       "VALUES (%1, '%2-03-01', %2, %3, 'Cliente', 1, 'Rimessa diretta', 'False', %4, 0, 0, 'False')")
            .arg(numero)
            .arg(anno)
            .arg(QuotedStr(cliente), imponibile));
}

void TestFatturatoPerCliente::generatedFirmsGiveTheReferenceRows_data()
{
    // The last two: more customers than invoices, many customers without
    // turnover in a year, all tied at 0.
    KRVAziendeProva({{"prova, seme 1", 1, 0, 0},
                     {"prova, seme 2", 2, 0, 0},
                     {"prova, seme 3", 3, 0, 0},
                     {"400 clienti, seme 4", 4, 400, 300},
                     {"150 clienti, seme 5", 5, 150, 600}});
}

void TestFatturatoPerCliente::generatedFirmsGiveTheReferenceRows()
{
    KRVGeneraAziendaDelCaso(m_core->Database.Target(), 0);
    for (int anno : {2024, 2025}) {
        const int righe = Confronta(anno);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(righe > 0);
    }
}

// A customer with invoices only in other years (listed with 0), one whose
// invoices have a taxable total of 0, an invoice of no customer on file (in the
// year's total, in no row), ties on the turnover, a negative turnover and
// codes that differ in case and trailing blanks.
void TestFatturatoPerCliente::edgeCasesGiveTheReferenceRows()
{
    Cliente(QStringLiteral("A1"), QStringLiteral("Alfa"));
    Cliente(QStringLiteral("a1"), QStringLiteral("alfa minuscola"));
    Cliente(QStringLiteral("B2"), QStringLiteral("Beta"));
    Cliente(QStringLiteral("C3"), QStringLiteral("Gamma"));
    Cliente(QStringLiteral("D4"), QStringLiteral("Delta"));
    Cliente(QStringLiteral("E5"), QStringLiteral("Epsilon"));
    Cliente(QStringLiteral("F6"), QStringLiteral("Senza fatture"));
    Fattura(1, 2025, QStringLiteral("A1"), QStringLiteral("100.10"));
    Fattura(2, 2025, QStringLiteral("a1"), QStringLiteral("100.10"));
    Fattura(3, 2025, QStringLiteral("B2"), QStringLiteral("0"));
    Fattura(4, 2025, QStringLiteral("C3"), QStringLiteral("-50"));
    Fattura(5, 2025, QStringLiteral("ZZ"), QStringLiteral("1000"));
    Fattura(6, 2025, QStringLiteral("A1"), QStringLiteral("0.01"));
    Fattura(7, 2025, QStringLiteral("E5 "), QStringLiteral("33.33"));
    Fattura(1, 2024, QStringLiteral("D4"), QStringLiteral("77"));
    Fattura(2, 2024, QStringLiteral("A1"), QStringLiteral("12"));
    QCOMPARE(Confronta(2025), 6);
    QCOMPARE(Confronta(2024), 6);
    // Taxable totals that sum to 0 in a year: the share divides by zero in both.
    Fattura(1, 2023, QStringLiteral("A1"), QStringLiteral("10"));
    Fattura(2, 2023, QStringLiteral("B2"), QStringLiteral("-10"));
    QCOMPARE(Confronta(2023), 0);
}

void TestFatturatoPerCliente::yearWithoutInvoicesFailsAsTheReference()
{
    Cliente(QStringLiteral("A1"), QStringLiteral("Alfa"));
    Fattura(1, 2025, QStringLiteral("A1"), QStringLiteral("100"));
    const TEsito esito = Esegui(m_core->ModADOConn(), StatementoStampa(), 2020);
    QVERIFY2(esito.Errore.contains(QLatin1String("divide by zero"), Qt::CaseInsensitive), qPrintable(esito.Errore));
    QCOMPARE(Confronta(2020), 0);
}

void TestFatturatoPerCliente::noInvoiceAtAllGivesNoRows()
{
    Cliente(QStringLiteral("A1"), QStringLiteral("Alfa"));
    const TEsito esito = Esegui(m_core->ModADOConn(), StatementoStampa(), 2025);
    QCOMPARE(esito.Errore, QString());
    QCOMPARE(esito.Righe.size(), 0);
    QCOMPARE(Confronta(2025), 0);
}

// The reference sums the year's invoices again for every customer row: on a
// firm of 400 customers and 800 invoices a year it reads several hundred
// thousand pages. The print reads each customer's invoices through their
// index and the year's once: its page reads stay within a few tens per
// customer and invoice.
void TestFatturatoPerCliente::printReadsTheYearsInvoicesOnce()
{
    KRVGeneraAziendaProva(m_core->Database.Target(), 6, 0, 400, 800);
    const QSqlDatabase db = m_core->Db();
    const int clienti = QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt();
    const int fatture = QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE ANNO=2025")).toInt();
    TQ3Dataset dataset;
    dataset.SetConnection(m_core->ModADOConn());
    dataset.SetSQL(StatementoStampa());
    const qint64 prima = KRVLetturePagine(db);
    KRVApriFatturatoPerCliente(dataset, 2025);
    const qint64 letture = KRVLetturePagine(db) - prima;
    qInfo("%d customers, %d invoices of the year, %d rows: %lld page fetches", clienti, fatture, dataset.RecordCount(),
          letture);
    QVERIFY(dataset.RecordCount() > 0);
    QVERIFY2(letture < 20 * (clienti + fatture), qPrintable(QString::number(letture)));
}

QTEST_GUILESS_MAIN(TestFatturatoPerCliente)
#include "tst_fatturatopercliente.moc"
