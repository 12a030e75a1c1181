// The turnover by article, service and customer: the statements the print
// dialogs run against their first forms, kept as the reference. On generated
// firms, with and without the warehouse's invoices and under every filter, both
// give the same rows, value by value with their types, in the same order of
// codes; the statements read the period's sales invoices, not every year's;
// and where the reference splits a code and category over two rows, the
// statement gives the one row the prints are meant to show.
#include "../KRVAziendaGenerataTestKit.h"
#include "KRVStatisticheFatturatoRighe.h"
#include "KRVTestCore.h"

#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

// A dialog by code: its line kind and how it writes its comparisons.
struct TStatistica
{
    const char *Tipo;
    TKRVScritturaSQL Scrittura;
};

// The article, service and averages dialogs.
const TStatistica Statistiche[] = {{"Articolo", TKRVScritturaSQL::Compatta},
                                   {"Servizio", TKRVScritturaSQL::Spaziata},
                                   {"Servizio", TKRVScritturaSQL::Compatta}};

// A year, a quarter of the year before, one day, and "Al" before "Dal".
const QDate Periodi[][2] = {{QDate(2025, 1, 1), QDate(2025, 12, 31)},
                            {QDate(2024, 4, 1), QDate(2024, 6, 30)},
                            {QDate(2025, 3, 14), QDate(2025, 3, 14)},
                            {QDate(2025, 12, 31), QDate(2025, 1, 1)}};

// The codes a firm's lines of a kind hold most often, the first given.
QStringList CodiciFrequenti(const QSqlDatabase &db, const QString &tipo, int quanti)
{
    QStringList codici;
    for (const QString &riga :
         KRVRigheTipizzate(db, QStringLiteral("SELECT FIRST %1 CODICE FROM FATT_VEND_DETT WHERE TIPO_RIGA = %2 GROUP "
                                              "BY CODICE ORDER BY COUNT(*) DESC, CODICE")
                                   .arg(quanti)
                                   .arg(QuotedStr(tipo))))
        codici << KRVColonnaRiga(riga, 0).section(QLatin1Char(':'), 1);
    return codici;
}

// Some categories of a firm's lines of a kind.
QList<int> Categorie(const QSqlDatabase &db, const QString &tipo)
{
    QList<int> categorie;
    for (const QString &riga :
         KRVRigheTipizzate(db, QStringLiteral(
                                   "SELECT FIRST 3 IDCATEGORIA FROM FATT_VEND_DETT WHERE TIPO_RIGA = %1 GROUP BY "
                                   "IDCATEGORIA ORDER BY COUNT(*) DESC, IDCATEGORIA")
                                   .arg(QuotedStr(tipo))))
        categorie << KRVColonnaRiga(riga, 0).section(QLatin1Char(':'), 1).toInt();
    return categorie;
}

} // namespace

class TestFatturatoRigheEquivalente : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_core = std::make_unique<TKRVTestCore>(); }
    void cleanup() { m_core.reset(); }

    void generatedFirmsGiveTheReferenceRows_data();
    void generatedFirmsGiveTheReferenceRows();
    void referenceSplitsACodeAndCategoryTheStatementGivesOneRow();
    void statementsReadOnlyThePeriodsInvoices();

private:
    QSqlDatabase Db() const { return m_core->Db(); }
    // Both statements compared: the same count and codes row by row; within
    // the rows of one code, whose order neither statement fixes (the
    // descriptions they sort by are text objects), the same rows as a whole.
    // Answers the rows.
    int Confronta(const QString &riferimento, const QString &statement, int colonnaCodice);
    // Every dialog, period and filter; answers the rows read by the references.
    int ConfrontaTutto(bool conFattAcc);

    std::unique_ptr<TKRVTestCore> m_core;
};

int TestFatturatoRigheEquivalente::Confronta(const QString &riferimento, const QString &statement, int colonnaCodice)
{
    const QStringList attese = KRVRigheTipizzate(Db(), riferimento);
    KRVConfrontaRighePerChiave(KRVRigheTipizzate(Db(), statement), attese, colonnaCodice);
    return int(attese.size());
}

int TestFatturatoRigheEquivalente::ConfrontaTutto(bool conFattAcc)
{
    int righe = 0;
    for (const TStatistica &statistica : Statistiche) {
        const QString tipo = QString::fromLatin1(statistica.Tipo);
        QList<TKRVFiltroRighe> filtri{{tipo, {}, {}}, {tipo, Categorie(Db(), tipo), {}}};
        for (const QString &codice : CodiciFrequenti(Db(), tipo, 2))
            filtri << TKRVFiltroRighe{tipo, {}, codice};
        for (const TKRVFiltroRighe &filtro : std::as_const(filtri)) {
            for (const auto &periodo : Periodi) {
                if (conFattAcc) {
                    const QString where = KRVWhereRighe(filtro, statistica.Scrittura);
                    righe +=
                        Confronta(KRVSQLFatturatoRigheRiferimento(where, periodo[0], periodo[1], statistica.Scrittura),
                                  KRVSQLFatturatoRighe(where, periodo[0], periodo[1], statistica.Scrittura), 0);
                }
                const QString where = KRVWhereRighe(filtro, TKRVScritturaSQL::Spaziata);
                righe += Confronta(KRVSQLFatturatoClientiServiziRiferimento(where, periodo[0], periodo[1], conFattAcc),
                                   KRVSQLFatturatoClientiServizi(where, periodo[0], periodo[1], conFattAcc), 2);
                if (QTest::currentTestFailed())
                    return righe;
            }
        }
    }
    return righe;
}

void TestFatturatoRigheEquivalente::generatedFirmsGiveTheReferenceRows_data()
{
    KRVAziendeProva({{"prova, seme 1", 1, 25, 40}, {"prova, seme 2", 2, 25, 40}, {"80 clienti, seme 3", 3, 80, 300}});
}

// The dialogs by code always read the warehouse's invoices too, so they are
// compared once the firm has them; the customer and service dialog both
// without and with them.
void TestFatturatoRigheEquivalente::generatedFirmsGiveTheReferenceRows()
{
    KRVGeneraAziendaDelCaso(m_core->Database.Target(), 2);
    QVERIFY(ConfrontaTutto(false) > 0);
    KRVMagazzinoDaVendite(m_core->Database);
    QVERIFY(ConfrontaTutto(true) > 0);
}

// One code in two categories, its lines read in the order category 1, 2, 1:
// the reference sums the lines per description, a text object made for each
// line, and the database groups those by the object rather than its text, so
// the two lines of category 1 come out in two rows. The statement gives one
// row per code and category, with the first description written for the code.
void TestFatturatoRigheEquivalente::referenceSplitsACodeAndCategoryTheStatementGivesOneRow()
{
    m_core->Database.LoadFixture(QStringLiteral("magazzino.sql"));
    const int testata = KRVTestataFattura(m_core->Database, QStringLiteral("FATT_VEND"), 1,
                                          QStringLiteral("2025-05-01"), QStringLiteral("C1"));
    const QString articolo = QStringLiteral("Articolo");
    KRVRigaFattura(m_core->Database, QStringLiteral("FATT_VEND"), testata,
                   {articolo, QStringLiteral("A1"), QStringLiteral("Prima descrizione"), 1, QStringLiteral("10"),
                    QStringLiteral("NULL")});
    KRVRigaFattura(m_core->Database, QStringLiteral("FATT_VEND"), testata,
                   {articolo, QStringLiteral("A1"), QStringLiteral("Seconda"), 2, QStringLiteral("7"),
                    QStringLiteral("NULL")});
    KRVRigaFattura(m_core->Database, QStringLiteral("FATT_VEND"), testata,
                   {articolo, QStringLiteral("A1"), QStringLiteral("Terza"), 1, QStringLiteral("1"),
                    QStringLiteral("NULL")});
    const QDate dal(2025, 1, 1);
    const QDate al(2025, 12, 31);
    const QString where = KRVWhereRighe({articolo, {}, {}}, TKRVScritturaSQL::Compatta);
    QStringList righe;
    for (const QString &riga :
         KRVRigheTipizzate(Db(), KRVSQLFatturatoRighe(where, dal, al, TKRVScritturaSQL::Compatta)))
        righe << riga.section(QLatin1Char('|'), 0, 3).remove(QRegularExpression(QStringLiteral("[A-Za-z]+:")));
    std::sort(righe.begin(), righe.end());
    QCOMPARE(righe, (QStringList{"A1|Prima descrizione|1|11", "A1|Prima descrizione|2|7"}));

    const QStringList riferimento =
        KRVRigheTipizzate(Db(), KRVSQLFatturatoRigheRiferimento(where, dal, al, TKRVScritturaSQL::Compatta));
    QCOMPARE(riferimento.size(), 3);
    const QStringList clienti =
        KRVRigheTipizzate(Db(),
                          KRVSQLFatturatoClientiServizi(KRVWhereRighe({articolo, {}, {}}, TKRVScritturaSQL::Spaziata),
                                                        dal, al, true));
    QCOMPARE(clienti.size(), 2);
}

// Four years of invoices: the year's turnover by article reads the headers of
// the period and their lines, a few pages per line of the period and per
// code, where the reference reads every line of every year and looks the
// description up once per line.
void TestFatturatoRigheEquivalente::statementsReadOnlyThePeriodsInvoices()
{
    KRVGeneraAziendaProva(m_core->Database.Target(), 5, 4, 60, 400);
    KRVMagazzinoDaVendite(m_core->Database);
    const QSqlDatabase db = Db();
    const QDate dal(2025, 1, 1);
    const QDate al(2025, 3, 31);
    const int righe = QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT D JOIN FATT_VEND F ON "
                                                     "F.IDFATT_VEND = D.IDFATT_VEND WHERE F.DATA BETWEEN "
                                                     "'2025-01-01' AND '2025-03-31'"))
                          .toInt();
    const QString where = KRVWhereRighe({QStringLiteral("Articolo"), {}, {}}, TKRVScritturaSQL::Compatta);
    const auto letture = [&](const QString &sql) {
        const qint64 prima = KRVLetturePagine(db);
        KRVRigheTipizzate(db, sql);
        return KRVLetturePagine(db) - prima;
    };
    const qint64 riferimento = letture(KRVSQLFatturatoRigheRiferimento(where, dal, al, TKRVScritturaSQL::Compatta));
    const qint64 statement = letture(KRVSQLFatturatoRighe(where, dal, al, TKRVScritturaSQL::Compatta));
    qInfo("%d sales lines in the quarter: %lld page fetches, %lld for the reference", righe, statement, riferimento);
    QVERIFY2(statement * 3 < riferimento, qPrintable(QString::number(statement)));
}

QTEST_GUILESS_MAIN(TestFatturatoRigheEquivalente)
#include "tst_fatturatorigheequivalente.moc"
