#include "KRVCaricaDaDdt.h"
#include "KRVDdtScarico.h"
#include "KRVDdtTestRows.h"
#include "Q3Exception.h"

#include <QLocale>
#include <QtTest>

using namespace KRVTest;

namespace {

QStringList Testo(const QString &descrizione)
{
    QStringList riga(14);
    riga[3] = descrizione;
    riga[13] = QStringLiteral("Testo");
    return riga;
}

} // namespace

class TestCaricaDaDdt : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void searchConditionHasTheYearAndTheQuotedName();
    void notesInTheOrderGivenWithReferenceAndClosingLines();
    void linesFollowTheirKeysNotTheirInsertion();
    void missingValuesOfAnArticleLineReadAsZero();
    void noteWithoutLinesAddsNothing();
    void sameNoteTwiceAddsItsLinesTwiceAndWritesNothing();
    void failureKeepsTheLinesHandedOnBefore();
    void notesWithLinesReportTheirKeyNumberAndDate();

private:
    QList<QStringList> Carica(const QList<int> &chiavi) const;

    std::unique_ptr<TQ3TestDatabase> m_db;
};

void TestCaricaDaDdt::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
}

// Three notes: 10 with an article, a service, a text and a non-taxable line
// (written out of key order), 11 with one article lacking its optional values,
// 12 without lines.
void TestCaricaDaDdt::init()
{
    m_db = std::make_unique<TQ3TestDatabase>();
    LoadDdtTables(*m_db);
    InsertDdt(*m_db, 10, 7, QDate(2026, 1, 15), QStringLiteral("C001"), QStringLiteral("Idraulica Dell'Acqua"));
    InsertDdt(*m_db, 11, 8, QDate(2026, 2, 3), QStringLiteral("C002"), QStringLiteral("Bianchi S.r.l."));
    InsertDdt(*m_db, 12, 9, QDate(2026, 2, 4), QStringLiteral("C002"), QStringLiteral("Bianchi S.r.l."));
    InsertRigaTesto(*m_db, 103, 10, QStringLiteral("Testo"), QStringLiteral("Consegna al piano"));
    InsertRigaVoce(*m_db, 101, 10, QStringLiteral("Articolo"), QStringLiteral("ART1"),
                   QStringLiteral("Rubinetto\nin ottone"), QStringLiteral("5.5, 3, 12.5, 2, 25, 1, '20', 4, 'PZ'"));
    InsertRigaTesto(*m_db, 104, 10, QStringLiteral("Non imponibile"), QStringLiteral("Trasporto"));
    InsertRigaVoce(*m_db, 102, 10, QStringLiteral("Servizio"), QStringLiteral("SRV1"), QStringLiteral("Montaggio"),
                   QStringLiteral("10, 2, 40, 1.5, 60, 1, '20', 2, 'ORE'"));
    InsertRigaVoce(*m_db, 105, 11, QStringLiteral("Articolo"), QStringLiteral("ART2"), QStringLiteral("Guarnizione"),
                   QStringLiteral("NULL, NULL, 0.33, 3, 0.99, NULL, NULL, NULL, NULL"));
}

void TestCaricaDaDdt::cleanup()
{
    m_db.reset();
}

QList<QStringList> TestCaricaDaDdt::Carica(const QList<int> &chiavi) const
{
    QList<QStringList> righe;
    KRVCaricaDaDdt(m_db->Db(), chiavi, [&righe](const QStringList &riga) { righe << riga; });
    return righe;
}

void TestCaricaDaDdt::searchConditionHasTheYearAndTheQuotedName()
{
    QCOMPARE(KRVCondizioneDdtScarico(2026, QString()), QStringLiteral("WHERE ANNO=2026"));
    QCOMPARE(KRVCondizioneDdtScarico(2025, QStringLiteral("dell'acqua")),
             QStringLiteral("WHERE ANNO=2025 AND CLI_RAGIONESOCIALE CONTAINING 'dell''acqua'"));
    QCOMPARE(KRVQueryDdtScaricoTesta + KRVCondizioneDdtScarico(2026, QStringLiteral("O'")) + KRVQueryDdtScaricoCoda,
             QStringLiteral("SELECT * FROM DDT_SCARICO WHERE ANNO=2026 AND CLI_RAGIONESOCIALE CONTAINING 'O''' "
                            "ORDER BY ANNO DESC, NUMERO DESC"));
}

void TestCaricaDaDdt::notesInTheOrderGivenWithReferenceAndClosingLines()
{
    const QList<QStringList> righe = Carica({11, 10});
    QCOMPARE(righe.size(), 8);
    QCOMPARE(righe.at(0), Testo(QStringLiteral("-- Rif. D.d.T. n. 8 del 03/02/26 --")));
    QCOMPARE(righe.at(1), (QStringList{"-1", "0,00", "ART2", "Guarnizione", "0", "0,33", "0,00", "3,00", "0,99", "0",
                                       "", "0", "", "Articolo"}));
    QCOMPARE(righe.at(2), Testo(QStringLiteral("-- --")));
    QCOMPARE(righe.at(3), Testo(QStringLiteral("-- Rif. D.d.T. n. 7 del 15/01/26 --")));
    QCOMPARE(righe.at(4), (QStringList{"-1", "5,50", "ART1", "Rubinetto\nin ottone", "3", "12,50", "0,00", "2,00",
                                       "25,00", "1", "20", "4", "PZ", "Articolo"}));
    QCOMPARE(righe.at(5), (QStringList{"-1", "10,00", "SRV1", "Montaggio", "2", "40,00", "0,00", "1,50", "60,00", "1",
                                       "20", "2", "ORE", "Servizio"}));
    QCOMPARE(righe.at(6), Testo(QStringLiteral("Consegna al piano")));
    QCOMPARE(righe.at(7), Testo(QStringLiteral("-- --")));
}

// Key order, whatever order the lines were written in; the kind that delivery
// notes do not know is left out.
void TestCaricaDaDdt::linesFollowTheirKeysNotTheirInsertion()
{
    QStringList kinds;
    QStringList descriptions;
    for (const QStringList &riga : Carica({10})) {
        kinds << riga.at(13);
        descriptions << riga.at(3);
    }
    QCOMPARE(kinds, (QStringList{"Testo", "Articolo", "Servizio", "Testo", "Testo"}));
    QCOMPARE(descriptions.mid(1, 3), (QStringList{"Rubinetto\nin ottone", "Montaggio", "Consegna al piano"}));
    QVERIFY(!descriptions.contains(QStringLiteral("Trasporto")));
}

void TestCaricaDaDdt::missingValuesOfAnArticleLineReadAsZero()
{
    const QStringList riga = Carica({11}).at(1);
    QCOMPARE(riga.at(1), QStringLiteral("0,00"));
    QCOMPARE(riga.at(4), QStringLiteral("0"));
    QCOMPARE(riga.at(9), QStringLiteral("0"));
    QCOMPARE(riga.at(11), QStringLiteral("0"));
    QVERIFY(riga.at(10).isEmpty());
    QVERIFY(riga.at(12).isEmpty());
}

void TestCaricaDaDdt::noteWithoutLinesAddsNothing()
{
    QVERIFY(Carica({12}).isEmpty());
    // Not even the reference or the separator between two others.
    const QList<QStringList> righe = Carica({11, 12, 11});
    QCOMPARE(righe.size(), 6);
    QCOMPARE(righe.at(2), Testo(QStringLiteral("-- --")));
    QCOMPARE(righe.at(3), Testo(QStringLiteral("-- Rif. D.d.T. n. 8 del 03/02/26 --")));
    // A key of no note at all gives nothing either.
    QVERIFY(Carica({999}).isEmpty());
}

void TestCaricaDaDdt::sameNoteTwiceAddsItsLinesTwiceAndWritesNothing()
{
    const QString notes = QStringLiteral("SELECT * FROM DDT_SCARICO ORDER BY IDDDT_SCARICO");
    const QString lines = QStringLiteral("SELECT * FROM DDT_SCARICO_DETT ORDER BY IDDDT_SCARICO_DETT");
    const QStringList notesBefore = m_db->Rows(notes);
    const QStringList linesBefore = m_db->Rows(lines);

    const QList<QStringList> once = Carica({10});
    const QList<QStringList> twice = Carica({10, 10});
    QCOMPARE(once.size(), 5);
    QCOMPARE(twice, once + once);
    // And a later loading, into another invoice, reads them again.
    QCOMPARE(Carica({10}), once);
    QCOMPARE(m_db->Rows(notes), notesBefore);
    QCOMPARE(m_db->Rows(lines), linesBefore);
}

void TestCaricaDaDdt::failureKeepsTheLinesHandedOnBefore()
{
    QList<QStringList> righe;
    QSqlDatabase db = m_db->Db();
    // The connection goes away once the first note is through.
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, KRVCaricaDaDdt(db, {11, 10}, [&](const QStringList &riga) {
                                 righe << riga;
                                 if (riga.at(3) == QLatin1String("-- --"))
                                     db.close();
                             }));
    QCOMPARE(righe.size(), 3);
    QCOMPARE(righe.at(0), Testo(QStringLiteral("-- Rif. D.d.T. n. 8 del 03/02/26 --")));
    QCOMPARE(righe.at(2), Testo(QStringLiteral("-- --")));
}

// The caller learns which notes went into the invoice, in the order given:
// a note without lines is not one of them.
void TestCaricaDaDdt::notesWithLinesReportTheirKeyNumberAndDate()
{
    QStringList riportate;
    int righe = 0;
    KRVCaricaDaDdt(
        m_db->Db(), {11, 12, 10}, [&righe](const QStringList &) { ++righe; },
        [&](const TKRVDdtFattura &ddt) {
            riportate << QStringLiteral("%1|%2|%3 after %4 lines")
                             .arg(ddt.IdDdt)
                             .arg(ddt.Numero, ddt.Data.toString(Qt::ISODate))
                             .arg(righe);
        });
    QCOMPARE(riportate, (QStringList{"11|8|2026-02-03 after 1 lines", "10|7|2026-01-15 after 4 lines"}));
}

QTEST_GUILESS_MAIN(TestCaricaDaDdt)
#include "tst_caricadaddt.moc"
