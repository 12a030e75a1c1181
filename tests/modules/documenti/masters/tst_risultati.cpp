// The rows of a search as the results grids hold them: read by position into
// typed columns, kept values and shown texts, alignment, check boxes, stable
// sorting that selection follows, removal, and a second load appended.
#include "KRVRisultati.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QDate>
#include <QItemSelectionModel>
#include <QLocale>
#include <QPersistentModelIndex>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

const QList<TKRVColonna> Colonne = {
    {QString(), 0, QStringLiteral("ID"), TKRVTipoColonna::Intero},
    {QString(), 30, QString(), TKRVTipoColonna::Spunta},
    {QStringLiteral("Nome"), 200, QStringLiteral("NOME"), TKRVTipoColonna::Testo},
    {QStringLiteral("Totale"), 110, QStringLiteral("TOTALE"), TKRVTipoColonna::Importo},
    {QStringLiteral("Aliquota"), 80, QStringLiteral("ALIQUOTA"), TKRVTipoColonna::Percentuale},
    {QStringLiteral("Data"), 80, QStringLiteral("DATA"), TKRVTipoColonna::Data},
};

// The texts a column shows, top to bottom.
QStringList Testi(const TKRVRisultati &righe, int column)
{
    QStringList texts;
    for (int row = 0; row < righe.rowCount(); ++row)
        texts << righe.Testo(row, column);
    return texts;
}

} // namespace

class TestRisultati : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void readsEachColumnByItsKind();
    void nullsReadAsZeroEmptyOrNoDate();
    void numbersRightTextsLeft();
    void checkBoxesStartUncheckedAndToggle();
    void sortingIsStableAndSelectionFollowsTheRow();
    void removingARowKeepsTheOthers();
    void aSecondLoadIsAppendedAndEmptyingClearsAll();
    void aMissingFieldFailsBeforeAnyRow();

private:
    void Carica(TKRVRisultati &righe, const QString &order = QStringLiteral("ID")) const;

    std::unique_ptr<TQ3TestDatabase> m_db;
};

void TestRisultati::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
}

// Five rows; Beta and beta share their total, two rows are mostly empty.
void TestRisultati::init()
{
    m_db = std::make_unique<TQ3TestDatabase>(TQ3TestDatabase::Where::Embedded, false);
    m_db->Exec(QStringLiteral("CREATE TABLE RIGHE (ID INTEGER NOT NULL, NOME VARCHAR(40), TOTALE DECIMAL(13, 2), "
                              "ALIQUOTA DECIMAL(13, 2), DATA DATE, ALTRO VARCHAR(10))"));
    m_db->Exec(QStringLiteral("INSERT INTO RIGHE VALUES (1, 'Beta', 1234.5, 22, '2025-03-01', 'x')"));
    m_db->Exec(QStringLiteral("INSERT INTO RIGHE VALUES (2, 'alfa', 10, 4, '2024-12-31', 'y')"));
    m_db->Exec(QStringLiteral("INSERT INTO RIGHE VALUES (3, 'beta', 1234.5, 10, '2025-01-15', 'z')"));
    m_db->Exec(QStringLiteral("INSERT INTO RIGHE (ID) VALUES (4)"));
    m_db->Exec(QStringLiteral("INSERT INTO RIGHE VALUES (5, 'Gamma', -3.25, 0, '2025-03-01', NULL)"));
}

void TestRisultati::Carica(TKRVRisultati &righe, const QString &order) const
{
    QSqlQuery query = OpenQuery(m_db->Db(), QStringLiteral("SELECT ALTRO, DATA, ALIQUOTA, TOTALE, NOME, ID FROM RIGHE "
                                                           "ORDER BY ")
                                                + order);
    righe.Carica(query);
}

void TestRisultati::readsEachColumnByItsKind()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    QCOMPARE(righe.columnCount(), 6);
    QCOMPARE(righe.rowCount(), 0);
    QCOMPARE(righe.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Nome"));
    QCOMPARE(righe.Titolo(3), QStringLiteral("Totale"));
    Carica(righe);
    QCOMPARE(righe.rowCount(), 5);

    QCOMPARE(righe.Valore(0, 0), QStringLiteral("1"));
    QCOMPARE(righe.Valore(0, 2), QStringLiteral("Beta"));
    QCOMPARE(righe.Valore(0, 3), QStringLiteral("1234.50"));
    QCOMPARE(righe.Valore(0, 4), QStringLiteral("22.00"));
    QCOMPARE(righe.Valore(0, 5), QStringLiteral("2025-03-01"));
    QCOMPARE(righe.Testo(0, 3), FormatCurrency(1234.5));
    QCOMPARE(righe.Testo(0, 3), QStringLiteral("1.234,50\u00A0€"));
    QCOMPARE(righe.Testo(4, 3), FormatCurrency(-3.25));
    QCOMPARE(righe.Testo(0, 4), QStringLiteral("22,00 %"));
    QCOMPARE(righe.Testo(0, 5), FormatShortDate(QDate(2025, 3, 1)));
    QCOMPARE(righe.Testo(0, 0), QStringLiteral("1"));
    // What a view asks for.
    const QModelIndex totale = righe.index(0, 3);
    QCOMPARE(totale.data().toString(), righe.Testo(0, 3));
    QCOMPARE(totale.data(TKRVRisultati::StoredRole).toString(), QStringLiteral("1234.50"));
}

void TestRisultati::nullsReadAsZeroEmptyOrNoDate()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    QCOMPARE(righe.Valore(3, 0), QStringLiteral("4"));
    QCOMPARE(righe.Valore(3, 2), QString());
    QCOMPARE(righe.Valore(3, 3), QStringLiteral("0.00"));
    QCOMPARE(righe.Valore(3, 4), QStringLiteral("0.00"));
    QCOMPARE(righe.Valore(3, 5), QString());
    QCOMPARE(righe.Testo(3, 5), FormatShortDate(QDate()));
}

void TestRisultati::numbersRightTextsLeft()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    const auto alignment = [&righe](int column) {
        return Qt::Alignment::fromInt(righe.index(0, column).data(Qt::TextAlignmentRole).toInt());
    };
    QCOMPARE(alignment(0), Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(alignment(3), Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(alignment(4), Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(alignment(2), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(alignment(5), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(alignment(1), Qt::AlignLeft | Qt::AlignVCenter);
    // Read-only cells; only the check boxes can be checked.
    QCOMPARE(righe.flags(righe.index(0, 2)), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    QCOMPARE(righe.flags(righe.index(0, 1)), Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    QVERIFY(!righe.setData(righe.index(0, 2), QStringLiteral("Delta")));
    QCOMPARE(righe.Valore(0, 2), QStringLiteral("Beta"));
}

void TestRisultati::checkBoxesStartUncheckedAndToggle()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    QCOMPARE(righe.index(0, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QVERIFY(!righe.index(0, 2).data(Qt::CheckStateRole).isValid());
    QCOMPARE(righe.Testo(0, 1), QString());

    QVERIFY(righe.setData(righe.index(2, 1), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(righe.Spunta(2, 1), Qt::Checked);
    QCOMPARE(righe.Spunta(1, 1), Qt::Unchecked);
    righe.ImpostaSpunte(1, Qt::Checked);
    for (int row = 0; row < righe.rowCount(); ++row)
        QCOMPARE(righe.Spunta(row, 1), Qt::Checked);
    righe.ImpostaSpunte(1, Qt::Unchecked);
    QCOMPARE(righe.Spunta(2, 1), Qt::Unchecked);
}

void TestRisultati::sortingIsStableAndSelectionFollowsTheRow()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    QItemSelectionModel selection(&righe);
    selection.select(righe.index(2, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    righe.setData(righe.index(2, 1), int(Qt::Checked), Qt::CheckStateRole);

    // Equal totals keep the order they had: Beta (1) before beta (3), both ways.
    righe.sort(3, Qt::AscendingOrder);
    QCOMPARE(Testi(righe, 0), (QStringList{"5", "4", "2", "1", "3"}));
    righe.sort(3, Qt::DescendingOrder);
    QCOMPARE(Testi(righe, 0), (QStringList{"1", "3", "2", "4", "5"}));
    // The selected row and its check box went with it.
    QCOMPARE(selection.selectedRows().size(), 1);
    QCOMPARE(righe.Valore(selection.selectedRows().first().row(), 0), QStringLiteral("3"));
    QCOMPARE(righe.Spunta(1, 1), Qt::Checked);

    // Texts in the order of the user's language, the empty one first; dates and percentages by value.
    QStringList nomi = Testi(righe, 2);
    std::stable_sort(nomi.begin(), nomi.end(),
                     [](const QString &a, const QString &b) { return a.localeAwareCompare(b) < 0; });
    righe.sort(2, Qt::AscendingOrder);
    QCOMPARE(Testi(righe, 2), nomi);
    QCOMPARE(nomi.first(), QString());
    righe.sort(5, Qt::AscendingOrder);
    QCOMPARE(Testi(righe, 0), (QStringList{"4", "2", "3", "1", "5"}));
    righe.sort(4, Qt::DescendingOrder);
    QCOMPARE(Testi(righe, 0), (QStringList{"1", "3", "2", "4", "5"}));
    righe.sort(1, Qt::DescendingOrder);
    QCOMPARE(Testi(righe, 0).first(), QStringLiteral("3"));
}

void TestRisultati::removingARowKeepsTheOthers()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    righe.RimuoviRiga(1);
    QCOMPARE(righe.rowCount(), 4);
    QCOMPARE(Testi(righe, 0), (QStringList{"1", "3", "4", "5"}));
    QCOMPARE(Testi(righe, 2), (QStringList{"Beta", "beta", "", "Gamma"}));
    QCOMPARE(righe.Valore(1, 3), QStringLiteral("1234.50"));
}

void TestRisultati::aSecondLoadIsAppendedAndEmptyingClearsAll()
{
    TKRVRisultati righe;
    righe.ImpostaColonne(Colonne);
    Carica(righe);
    Carica(righe, QStringLiteral("ID DESC"));
    QCOMPARE(righe.rowCount(), 10);
    QCOMPARE(righe.Valore(5, 0), QStringLiteral("5"));
    righe.Svuota();
    QCOMPARE(righe.rowCount(), 0);
    QCOMPARE(righe.columnCount(), 6);
    Carica(righe);
    QCOMPARE(righe.Valore(0, 2), QStringLiteral("Beta"));
}

void TestRisultati::aMissingFieldFailsBeforeAnyRow()
{
    TKRVRisultati righe;
    righe.ImpostaColonne({{QString(), 0, QStringLiteral("ID"), TKRVTipoColonna::Intero},
                          {QStringLiteral("Codice"), 100, QStringLiteral("CODICE"), TKRVTipoColonna::Testo}});
    QString failure;
    try {
        Carica(righe);
    } catch (const EQ3Exception &e) {
        failure = e.Message();
    }
    QCOMPARE(failure, QStringLiteral("Campo \"CODICE\" non trovato."));
    QCOMPARE(righe.rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestRisultati)
#include "tst_risultati.moc"
