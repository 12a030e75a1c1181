#include "KATScadenze.h"

#include <QtTest>

// The due dates of a recurring invoice's reminders, computed without a database.
class TestKATScadenze : public QObject
{
    Q_OBJECT

private slots:
    void everyUnitAndCount_data();
    void everyUnitAndCount();
    void monthEndByEachDayRule_data();
    void monthEndByEachDayRule();
    void twentyNinthOfFebruary_data();
    void twentyNinthOfFebruary();
    void startAfterEndGivesNone();
    void startOnEndGivesThatDay();
    void periodEndingTodayKeepsToday();
    void endBoundsThePeriodNotTheMovedDate();
    void daysMovedToTheSameDayCountOnce();
    void unknownDayRuleKeepsTheExactDayAndSaysSo();
    void knownDayRulesSayNothing();
    void unknownUnitGivesNoneAndSaysSo();
    void countBelowOneGivesNone();
    void missingDateGivesNone();
    void dailyOverDecadesStopsAtTheCap();
    void exactlyTheCapIsNotCut();
};

namespace {

QDate D(int year, int month, int day)
{
    return QDate(year, month, day);
}

QString Text(const char *text)
{
    return QString::fromUtf8(text);
}

TKATScadenze Esatte(int ogni, const char *unita, const QDate &inizio, const QDate &fine)
{
    return KATCalcolaScadenze(ogni, Text(unita), inizio, fine, Text(KATRegolaGiornoEsatto));
}

} // namespace

void TestKATScadenze::everyUnitAndCount_data()
{
    QTest::addColumn<int>("ogni");
    QTest::addColumn<QString>("unita");
    QTest::addColumn<QDate>("inizio");
    QTest::addColumn<QDate>("fine");
    QTest::addColumn<QList<QDate>>("attese");

    QTest::newRow("1 Giorno") << 1 << Text(KATUnitaGiorno) << D(2024, 3, 30) << D(2024, 4, 2)
                              << QList<QDate>{D(2024, 3, 30), D(2024, 3, 31), D(2024, 4, 1), D(2024, 4, 2)};
    QTest::newRow("3 Giorno") << 3 << Text(KATUnitaGiorno) << D(2024, 3, 30) << D(2024, 4, 7)
                              << QList<QDate>{D(2024, 3, 30), D(2024, 4, 2), D(2024, 4, 5)};
    QTest::newRow("1 Settimana") << 1 << Text(KATUnitaSettimana) << D(2024, 12, 20) << D(2025, 1, 3)
                                 << QList<QDate>{D(2024, 12, 20), D(2024, 12, 27), D(2025, 1, 3)};
    QTest::newRow("2 Settimana") << 2 << Text(KATUnitaSettimana) << D(2024, 12, 20) << D(2025, 1, 16)
                                 << QList<QDate>{D(2024, 12, 20), D(2025, 1, 3)};
    QTest::newRow("1 Mese") << 1 << Text(KATUnitaMese) << D(2024, 11, 10) << D(2025, 2, 9)
                            << QList<QDate>{D(2024, 11, 10), D(2024, 12, 10), D(2025, 1, 10)};
    QTest::newRow("3 Mese") << 3 << Text(KATUnitaMese) << D(2024, 11, 10) << D(2025, 11, 10)
                            << QList<QDate>{D(2024, 11, 10), D(2025, 2, 10), D(2025, 5, 10), D(2025, 8, 10),
                                            D(2025, 11, 10)};
    QTest::newRow("1 Anno") << 1 << Text(KATUnitaAnno) << D(2023, 6, 1) << D(2025, 6, 1)
                            << QList<QDate>{D(2023, 6, 1), D(2024, 6, 1), D(2025, 6, 1)};
    QTest::newRow("2 Anno") << 2 << Text(KATUnitaAnno) << D(2023, 6, 1) << D(2028, 1, 1)
                            << QList<QDate>{D(2023, 6, 1), D(2025, 6, 1), D(2027, 6, 1)};
    QTest::newRow("9999 Giorno") << 9999 << Text(KATUnitaGiorno) << D(2000, 1, 1) << D(2060, 1, 1)
                                 << QList<QDate>{D(2000, 1, 1), D(2000, 1, 1).addDays(9999),
                                                 D(2000, 1, 1).addDays(19998)};
}

void TestKATScadenze::everyUnitAndCount()
{
    QFETCH(int, ogni);
    QFETCH(QString, unita);
    QFETCH(QDate, inizio);
    QFETCH(QDate, fine);
    QFETCH(QList<QDate>, attese);
    const TKATScadenze scadenze = KATCalcolaScadenze(ogni, unita, inizio, fine, Text(KATRegolaGiornoEsatto));
    QCOMPARE(scadenze.Date, attese);
    QVERIFY(!scadenze.UnitaSconosciuta);
    QVERIFY(!scadenze.RegolaSconosciuta);
    QVERIFY(!scadenze.Troncate);
}

// 31 January plus one month, and plus two (counted from the start, not from
// the shortened February), in a leap and in a common year.
void TestKATScadenze::monthEndByEachDayRule_data()
{
    QTest::addColumn<QString>("regola");
    QTest::addColumn<int>("anno");
    QTest::addColumn<QList<QDate>>("attese");

    QTest::newRow("primo, bisestile") << Text(KATRegolaPrimoGiorno) << 2024
                                      << QList<QDate>{D(2024, 1, 1), D(2024, 2, 1), D(2024, 3, 1)};
    QTest::newRow("15, bisestile") << Text(KATRegolaGiorno15) << 2024
                                   << QList<QDate>{D(2024, 1, 15), D(2024, 2, 15), D(2024, 3, 15)};
    QTest::newRow("esatto, bisestile") << Text(KATRegolaGiornoEsatto) << 2024
                                       << QList<QDate>{D(2024, 1, 31), D(2024, 2, 29), D(2024, 3, 31)};
    QTest::newRow("ultimo, bisestile") << Text(KATRegolaUltimoGiorno) << 2024
                                       << QList<QDate>{D(2024, 1, 31), D(2024, 2, 29), D(2024, 3, 31)};
    QTest::newRow("primo, comune") << Text(KATRegolaPrimoGiorno) << 2023
                                   << QList<QDate>{D(2023, 1, 1), D(2023, 2, 1), D(2023, 3, 1)};
    QTest::newRow("15, comune") << Text(KATRegolaGiorno15) << 2023
                                << QList<QDate>{D(2023, 1, 15), D(2023, 2, 15), D(2023, 3, 15)};
    QTest::newRow("esatto, comune") << Text(KATRegolaGiornoEsatto) << 2023
                                    << QList<QDate>{D(2023, 1, 31), D(2023, 2, 28), D(2023, 3, 31)};
    QTest::newRow("ultimo, comune") << Text(KATRegolaUltimoGiorno) << 2023
                                    << QList<QDate>{D(2023, 1, 31), D(2023, 2, 28), D(2023, 3, 31)};
}

void TestKATScadenze::monthEndByEachDayRule()
{
    QFETCH(QString, regola);
    QFETCH(int, anno);
    QFETCH(QList<QDate>, attese);
    const TKATScadenze scadenze = KATCalcolaScadenze(1, Text(KATUnitaMese), D(anno, 1, 31), D(anno, 3, 31), regola);
    QCOMPARE(scadenze.Date, attese);
    QVERIFY(!scadenze.RegolaSconosciuta);
}

// A yearly recurrence from 29 February falls on 28 February in common years
// and on the 29th again in the next leap year; a monthly one from 29 January
// meets February's end.
void TestKATScadenze::twentyNinthOfFebruary_data()
{
    QTest::addColumn<QString>("unita");
    QTest::addColumn<QDate>("inizio");
    QTest::addColumn<QDate>("fine");
    QTest::addColumn<QList<QDate>>("attese");

    QTest::newRow("ogni anno dal 29/02") << Text(KATUnitaAnno) << D(2024, 2, 29) << D(2028, 12, 31)
                                         << QList<QDate>{D(2024, 2, 29), D(2025, 2, 28), D(2026, 2, 28), D(2027, 2, 28),
                                                         D(2028, 2, 29)};
    QTest::newRow("ogni mese dal 29/01, bisestile") << Text(KATUnitaMese) << D(2024, 1, 29) << D(2024, 3, 29)
                                                    << QList<QDate>{D(2024, 1, 29), D(2024, 2, 29), D(2024, 3, 29)};
    QTest::newRow("ogni mese dal 29/01, comune") << Text(KATUnitaMese) << D(2023, 1, 29) << D(2023, 3, 29)
                                                 << QList<QDate>{D(2023, 1, 29), D(2023, 2, 28), D(2023, 3, 29)};
}

void TestKATScadenze::twentyNinthOfFebruary()
{
    QFETCH(QString, unita);
    QFETCH(QDate, inizio);
    QFETCH(QDate, fine);
    QFETCH(QList<QDate>, attese);
    QCOMPARE(KATCalcolaScadenze(1, unita, inizio, fine, Text(KATRegolaGiornoEsatto)).Date, attese);
}

void TestKATScadenze::startAfterEndGivesNone()
{
    const TKATScadenze scadenze = Esatte(1, KATUnitaGiorno, D(2024, 5, 2), D(2024, 5, 1));
    QVERIFY(scadenze.Date.isEmpty());
    QVERIFY(!scadenze.UnitaSconosciuta);
    QVERIFY(!scadenze.RegolaSconosciuta);
}

void TestKATScadenze::startOnEndGivesThatDay()
{
    QCOMPARE(Esatte(1, KATUnitaAnno, D(2024, 5, 2), D(2024, 5, 2)).Date, QList<QDate>{D(2024, 5, 2)});
}

void TestKATScadenze::periodEndingTodayKeepsToday()
{
    const QDate oggi = QDate::currentDate();
    QCOMPARE(Esatte(1, KATUnitaSettimana, oggi.addDays(-14), oggi).Date,
             QList<QDate>({oggi.addDays(-14), oggi.addDays(-7), oggi}));
}

// The end date bounds the periods: the last one, on 10 February, is dated at
// the end of its month, after the end; the first, by the first-day rule, before the start.
void TestKATScadenze::endBoundsThePeriodNotTheMovedDate()
{
    QCOMPARE(KATCalcolaScadenze(1, Text(KATUnitaMese), D(2024, 1, 10), D(2024, 2, 10), Text(KATRegolaUltimoGiorno))
                 .Date,
             QList<QDate>({D(2024, 1, 31), D(2024, 2, 29)}));
    QCOMPARE(KATCalcolaScadenze(1, Text(KATUnitaMese), D(2024, 1, 10), D(2024, 2, 10), Text(KATRegolaPrimoGiorno)).Date,
             QList<QDate>({D(2024, 1, 1), D(2024, 2, 1)}));
}

void TestKATScadenze::daysMovedToTheSameDayCountOnce()
{
    QCOMPARE(KATCalcolaScadenze(1, Text(KATUnitaGiorno), D(2024, 1, 30), D(2024, 2, 2), Text(KATRegolaPrimoGiorno))
                 .Date,
             QList<QDate>({D(2024, 1, 1), D(2024, 2, 1)}));
}

void TestKATScadenze::unknownDayRuleKeepsTheExactDayAndSaysSo()
{
    for (const QString &regola : {QStringLiteral("Il giorno 31 del mese"), QStringLiteral("il giorno esatto"),
                                  QStringLiteral("Il giorno esatto "), QString()}) {
        const TKATScadenze scadenze = KATCalcolaScadenze(1, Text(KATUnitaMese), D(2024, 1, 31), D(2024, 2, 29), regola);
        QCOMPARE(scadenze.Date, QList<QDate>({D(2024, 1, 31), D(2024, 2, 29)}));
        QVERIFY2(scadenze.RegolaSconosciuta, qPrintable(regola));
    }
}

void TestKATScadenze::knownDayRulesSayNothing()
{
    for (const char *regola : {KATRegolaPrimoGiorno, KATRegolaGiorno15, KATRegolaGiornoEsatto, KATRegolaUltimoGiorno})
        QVERIFY(
            !KATCalcolaScadenze(1, Text(KATUnitaMese), D(2024, 1, 1), D(2024, 3, 1), Text(regola)).RegolaSconosciuta);
}

void TestKATScadenze::unknownUnitGivesNoneAndSaysSo()
{
    for (const QString &unita :
         {QStringLiteral("Mesi"), QStringLiteral("mese"), QStringLiteral("Trimestre"), QString()}) {
        const TKATScadenze scadenze =
            KATCalcolaScadenze(1, unita, D(2024, 1, 1), D(2024, 12, 31), Text(KATRegolaGiornoEsatto));
        QVERIFY(scadenze.Date.isEmpty());
        QVERIFY2(scadenze.UnitaSconosciuta, qPrintable(unita));
    }
}

void TestKATScadenze::countBelowOneGivesNone()
{
    QVERIFY(Esatte(0, KATUnitaGiorno, D(2024, 1, 1), D(2024, 1, 31)).Date.isEmpty());
    QVERIFY(Esatte(-1, KATUnitaMese, D(2024, 1, 1), D(2024, 12, 31)).Date.isEmpty());
}

void TestKATScadenze::missingDateGivesNone()
{
    QVERIFY(Esatte(1, KATUnitaGiorno, QDate(), D(2024, 1, 31)).Date.isEmpty());
    QVERIFY(Esatte(1, KATUnitaGiorno, D(2024, 1, 1), QDate()).Date.isEmpty());
}

void TestKATScadenze::dailyOverDecadesStopsAtTheCap()
{
    const TKATScadenze scadenze = Esatte(1, KATUnitaGiorno, D(2000, 1, 1), D(2099, 12, 31));
    QCOMPARE(scadenze.Date.size(), KATMaxScadenze);
    QCOMPARE(scadenze.Date.last(), D(2000, 1, 1).addDays(KATMaxScadenze - 1));
    QVERIFY(scadenze.Troncate);
}

void TestKATScadenze::exactlyTheCapIsNotCut()
{
    const TKATScadenze scadenze = Esatte(1, KATUnitaGiorno, D(2000, 1, 1), D(2000, 1, 1).addDays(KATMaxScadenze - 1));
    QCOMPARE(scadenze.Date.size(), KATMaxScadenze);
    QVERIFY(!scadenze.Troncate);
}

QTEST_GUILESS_MAIN(TestKATScadenze)
#include "tst_katscadenze.moc"
