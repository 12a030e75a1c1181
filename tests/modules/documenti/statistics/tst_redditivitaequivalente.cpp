// The monthly margins' statements the window runs, against the statements
// first written, kept as their reference: the same rows, value by value
// (types included) and in the same order, on generated firms with and without
// the warehouse's invoices and on the cases at the edges; and they read each
// month's invoices, not every invoice of every year.
#include "../KRVAziendaGenerataTestKit.h"
#include "KRVRedditivitaMensile.h"
#include "KRVTestCore.h"
#include "Q3Sql.h"

#include <QtTest>

#include <memory>

class TestRedditivitaEquivalente : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_core = std::make_unique<TKRVTestCore>(); }
    void cleanup() { m_core.reset(); }

    void generatedFirmsGiveTheReferenceMargins_data();
    void generatedFirmsGiveTheReferenceMargins();
    void edgeCasesGiveTheReferenceMargins();
    void marginsReadOnlyTheirMonths();

private:
    QSqlDatabase Db() const { return m_core->Db(); }
    // Both statements of every semester of the firm's years, compared.
    void ConfrontaTutto(bool conFattAcc);
    void Confronta(const QString &riferimento, const QString &statement);
    int Testata(const QString &tabella, int numero, const QString &data, const QString &cliente)
    {
        return KRVTestataFattura(m_core->Database, tabella, numero, data, cliente);
    }
    void Riga(const QString &tabella, int testata, const QString &tipo, const QString &codice,
              const QString &descrizione, int categoria, const QString &importo, const QString &costo)
    {
        KRVRigaFattura(m_core->Database, tabella, testata, {tipo, codice, descrizione, categoria, importo, costo});
    }

    std::unique_ptr<TKRVTestCore> m_core;
};

void TestRedditivitaEquivalente::Confronta(const QString &riferimento, const QString &statement)
{
    const QStringList attese = KRVRigheTipizzate(Db(), riferimento);
    const QStringList ottenute = KRVRigheTipizzate(Db(), statement);
    QCOMPARE(ottenute.size(), attese.size());
    for (qsizetype r = 0; r < attese.size(); ++r)
        QCOMPARE(ottenute.at(r), attese.at(r));
}

void TestRedditivitaEquivalente::ConfrontaTutto(bool conFattAcc)
{
    for (int anno : {2023, 2024, 2025}) {
        for (int primoMese : {1, 7}) {
            Confronta(KRVRedditivitaSemestreSQLRiferimento(primoMese, anno, conFattAcc),
                      KRVRedditivitaSemestreSQL(primoMese, anno, conFattAcc));
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void TestRedditivitaEquivalente::generatedFirmsGiveTheReferenceMargins_data()
{
    KRVAziendeProva({{"prova, seme 1", 1, 25, 40}, {"prova, seme 2", 2, 25, 40}, {"80 clienti, seme 3", 3, 80, 300}});
}

void TestRedditivitaEquivalente::generatedFirmsGiveTheReferenceMargins()
{
    KRVGeneraAziendaDelCaso(m_core->Database.Target(), 3);
    ConfrontaTutto(false);
    if (QTest::currentTestFailed())
        return;
    KRVMagazzinoDaVendite(m_core->Database);
    ConfrontaTutto(true);
}

// Lines of no header, headers without lines, dates on the first and last day
// of a month and of a year, costs missing or above the amount, text lines,
// years far apart.
void TestRedditivitaEquivalente::edgeCasesGiveTheReferenceMargins()
{
    m_core->Database.LoadFixture(QStringLiteral("magazzino.sql"));
    for (const QString &tabella : {QStringLiteral("FATT_VEND"), QStringLiteral("FATT_ACC")}) {
        const int inizio = Testata(tabella, 1, QStringLiteral("2025-01-01"), QStringLiteral("C1"));
        Riga(tabella, inizio, QStringLiteral("Articolo"), QStringLiteral("A1"), QStringLiteral("Prima descrizione"), 1,
             QStringLiteral("10"), QStringLiteral("NULL"));
        Riga(tabella, inizio, QStringLiteral("Articolo"), QString(), QStringLiteral("Senza codice"), 1,
             QStringLiteral("5"), QStringLiteral("1"));
        Riga(tabella, inizio, QStringLiteral("Servizio"), QStringLiteral("S1"), QStringLiteral("Servizio"), 2,
             QStringLiteral("7.5"), QStringLiteral("20"));
        const int fine = Testata(tabella, 2, QStringLiteral("2025-01-31"), QStringLiteral("C2"));
        Riga(tabella, fine, QStringLiteral("Articolo"), QStringLiteral("A1"), QStringLiteral("Altra descrizione"), 3,
             QStringLiteral("4"), QStringLiteral("2"));
        Riga(tabella, fine, QStringLiteral("Non imponibile"), QString(), QStringLiteral("Spese"), 0,
             QStringLiteral("3"), QStringLiteral("NULL"));
        Riga(tabella, fine, QStringLiteral("Testo"), QString(), QStringLiteral("Nota"), 0, QStringLiteral("0"),
             QStringLiteral("NULL"));
        const int febbraio = Testata(tabella, 3, QStringLiteral("2025-02-01"), QStringLiteral("C1"));
        Riga(tabella, febbraio, QStringLiteral("Servizio"), QStringLiteral("S1"), QStringLiteral("Servizio bis"), 2,
             QStringLiteral("-2"), QStringLiteral("0"));
        const int dicembre = Testata(tabella, 4, QStringLiteral("2024-12-31"), QStringLiteral("C3"));
        Riga(tabella, dicembre, QStringLiteral("Articolo"), QStringLiteral("A2"), QStringLiteral("Fine anno"), 1,
             QStringLiteral("100"), QStringLiteral("30"));
        Testata(tabella, 5, QStringLiteral("2025-06-15"), QStringLiteral("C1"));
        const int lontano = Testata(tabella, 6, QStringLiteral("1900-12-31"), QStringLiteral("C4"));
        Riga(tabella, lontano, QStringLiteral("Articolo"), QStringLiteral("A1"), QStringLiteral("Antica"), 1,
             QStringLiteral("1"), QStringLiteral("NULL"));
        // Lines whose header is gone.
        Riga(tabella, 999999, QStringLiteral("Articolo"), QStringLiteral("A9"), QStringLiteral("Orfana"), 1,
             QStringLiteral("50"), QStringLiteral("NULL"));
    }
    for (const bool conFattAcc : {false, true}) {
        for (int anno : {1900, 2024, 2025, 3000}) {
            for (int primoMese : {1, 7}) {
                Confronta(KRVRedditivitaSemestreSQLRiferimento(primoMese, anno, conFattAcc),
                          KRVRedditivitaSemestreSQL(primoMese, anno, conFattAcc));
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }
}

// Four years of invoices: the year's margins read the headers of each month
// and those headers' lines, a few pages per line of the year, where the first
// statements read every line of every year once per month and kind.
void TestRedditivitaEquivalente::marginsReadOnlyTheirMonths()
{
    KRVGeneraAziendaProva(m_core->Database.Target(), 5, 4, 60, 400);
    const QSqlDatabase db = Db();
    const int righe = QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT D JOIN FATT_VEND F ON "
                                                     "F.IDFATT_VEND = D.IDFATT_VEND WHERE F.ANNO = 2025"))
                          .toInt();
    const qint64 prima = KRVLetturePagine(db);
    KRVRigheTipizzate(db, KRVRedditivitaSemestreSQL(1, 2025, false));
    KRVRigheTipizzate(db, KRVRedditivitaSemestreSQL(7, 2025, false));
    const qint64 letture = KRVLetturePagine(db) - prima;
    qInfo("%d lines of 2025: %lld page fetches for the year's margins", righe, letture);
    QVERIFY2(letture < 20 * righe, qPrintable(QString::number(letture)));
}

QTEST_GUILESS_MAIN(TestRedditivitaEquivalente)
#include "tst_redditivitaequivalente.moc"
