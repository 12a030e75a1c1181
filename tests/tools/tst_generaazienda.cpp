// The generated firm keeps the module's own rules: numbers unique within a
// year, header totals as the editors compute them from the lines, valid line
// kinds, no document dated after the day of the generation, and the same firm
// from the same seed and end date.
#include "../modules/documenti/documents/KRVFatturaPATestKit.h"
#include "KRVClientiFatturaPA.h"
#include "KRVEsportazioneFatturePA.h"
#include "KRVGeneraAzienda.h"
#include "KRVNatureIva.h"
#include "KRVRigheDocumento.h"
#include "Q3Controlli.h"
#include "Q3Exception.h"
#include "Q3Messages.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QHash>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <memory>

namespace {

constexpr int AnnoFinale = 2024;

TKRVOpzioniGenerazione Prova(quint64 seme)
{
    TKRVOpzioniGenerazione opzioni;
    opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("prova"));
    opzioni.Seme = seme;
    opzioni.AnnoFinale = AnnoFinale;
    return opzioni;
}

// "12.50" as hundredths.
qint64 Centesimi(const QString &text)
{
    return std::llround(text.toDouble() * 100.0);
}

// A line amount as the editor keeps it: computed in floating point, then held with two decimals.
qint64 ImportoEditor(double amount)
{
    return std::llround(QByteArray::number(amount, 'f', 2).toDouble() * 100.0);
}

// A floating-point total stored in a DECIMAL(13, 2) column.
qint64 Salvato(double value)
{
    return qint64(std::floor(0.5 + value * 100.0));
}

bool PartitaIvaValida(const QString &piva)
{
    if (!QRegularExpression(QStringLiteral("^[0-9]{11}$")).match(piva).hasMatch())
        return false;
    int sum = 0;
    for (int i = 0; i < 10; ++i) {
        const int d = piva.at(i).digitValue();
        sum += i % 2 == 0 ? d : (2 * d > 9 ? 2 * d - 9 : 2 * d);
    }
    return (10 - sum % 10) % 10 == piva.at(10).digitValue();
}

bool CodiceFiscaleValido(const QString &cf)
{
    if (!QRegularExpression(QStringLiteral("^[A-Z]{6}[0-9]{2}[ABCDEHLMPRST][0-9]{2}[A-Z][0-9]{3}[A-Z]$"))
             .match(cf)
             .hasMatch())
        return false;
    static const int odd[26] = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    int sum = 0;
    for (int i = 0; i < 15; ++i) {
        const QChar c = cf.at(i);
        const int v = c.isDigit() ? c.digitValue() : c.toLatin1() - 'A';
        sum += i % 2 == 0 ? odd[v] : v;
    }
    return cf.at(15).toLatin1() == 'A' + sum % 26;
}

} // namespace

class TestGeneraAzienda : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void mastersAreFilled();
    void invoiceNumbersUniqueAndConsecutivePerYear();
    void creditNoteNumbersUniqueAndConsecutivePerYear();
    void lineAmountsAsTheEditorComputesThem();
    void invoiceTotalsEqualTheSumOfTheirLines();
    void creditNoteTotalsEqualTheSumOfTheirLines();
    void documentsAreWhatTheEditorsLineModelComputes_data();
    void documentsAreWhatTheEditorsLineModelComputes();
    void everyLineKindIsValid();
    void exemptRecurringAndNotedInvoicesEveryYear();
    void recurringInvoicesStillRunningHaveTheirReminders();
    void taxCodesAndVatNumbersHaveAValidShape();
    void documentsCopyTheCustomer();
    void zeroRatesCarryANature();
    void everyCustomerOfAMediumFirmCanReceiveElectronicInvoices();
    void sameSeedGivesTheSameFirm();
    void currentYearEndsOnTheDayOfTheGeneration();
    void endDateCutsTheLastYearAndKeepsTheSeed();
    void endDateBeforeTheFinalYearIsRefused();
    void aFirmWithInvoicesIsRefused();
    // Last: it records the files on the documents.
    void everyDocumentExportsAsAValidElectronicInvoice();

private:
    QString Firma(const TQ3TestDatabase &db) const;
    // The last date of the documents of a table.
    static QDate UltimaData(const TQ3TestDatabase &db, const QString &table);

    std::unique_ptr<TQ3TestDatabase> m_db;
    TKRVRiepilogoGenerazione m_riepilogo;
};

void TestGeneraAzienda::recurringInvoicesStillRunningHaveTheirReminders()
{
    const QDate fine(AnnoFinale, 12, 31);
    const QString dopo = QuotedStr(DateToString_YYYYMMDD(fine));
    QVERIFY(m_riepilogo.Promemoria > 0);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA")).toLongLong(), m_riepilogo.Promemoria);
    // Every recurring invoice running at the end has reminders, and only those.
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND F WHERE F.FC_ABILITATO = 'True' AND "
                                         "F.FC_DATA_FINE >= %1 AND NOT EXISTS (SELECT 1 FROM PROMEMORIA P WHERE "
                                         "P.IDFATT_VEND = F.IDFATT_VEND)")
                              .arg(dopo))
                 .toInt(),
             0);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA P JOIN FATT_VEND F ON F.IDFATT_VEND = "
                                         "P.IDFATT_VEND WHERE F.FC_DATA_FINE < %1")
                              .arg(dopo))
                 .toInt(),
             0);
    // Done up to two weeks before the end, to do from then on.
    const QString confine = QuotedStr(DateToString_YYYYMMDD(fine.addDays(-14)));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA WHERE (DATA < %1 AND (STATO <> 'Fatto' OR "
                                         "FATTO_IL IS NULL)) OR (DATA >= %1 AND STATO <> 'Da fare')")
                              .arg(confine))
                 .toInt(),
             0);
}

void TestGeneraAzienda::initTestCase()
{
    TQ3RecordingResponder boxes;
    m_db = std::make_unique<TQ3TestDatabase>();
    KRVPreparaDatabase(m_db->Target());
    m_riepilogo = KRVGeneraAzienda(m_db->Target(), Prova(7));
    QVERIFY(boxes.Messages().isEmpty());
}

void TestGeneraAzienda::mastersAreFilled()
{
    const TKRVDimensioneAzienda size = KRVDimensioneAzienda(QStringLiteral("prova"));
    QCOMPARE(m_riepilogo.Clienti, qint64(size.Clienti));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt(), size.Clienti);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), size.Articoli);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM SERVIZI")).toInt(), size.Servizi);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toLongLong(), m_riepilogo.Fatture);
    QCOMPARE(m_riepilogo.Fatture, qint64(size.Anni * size.FattureAnno));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT")).toLongLong(),
             m_riepilogo.RigheFatture);
    QVERIFY(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_DOCUMENTI")).toInt() >= 5);
    // Sub-categories hang under categories that exist.
    QVERIFY(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_ANA_MAGA WHERE IDPADRE IS NOT NULL")).toInt()
            > 0);
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM CATEGORIE_ANA_MAGA C WHERE IDPADRE IS NOT NULL AND NOT EXISTS "
                              "(SELECT 1 FROM CATEGORIE_ANA_MAGA P WHERE P.IDCATEGORIA_ANA_MAGA = C.IDPADRE)"))
                 .toInt(),
             0);
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM ANA_MAGA A WHERE NOT EXISTS (SELECT 1 FROM CATEGORIE_ANA_MAGA C "
                              "WHERE C.IDCATEGORIA_ANA_MAGA = A.IDCATEGORIA_ANA_MAGA)"))
                 .toInt(),
             0);
    // The generators followed the keys: the next key the editors take is free.
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT GEN_ID(GN_IDFATT_VEND, 0) FROM RDB$DATABASE")).toInt(),
             m_db->Scalar(QStringLiteral("SELECT MAX(IDFATT_VEND) FROM FATT_VEND")).toInt());
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT RAGIONESOCIALE FROM AZIENDA")).toString(),
             QStringLiteral("Rinaldi Forniture Tecniche S.r.l."));
}

void TestGeneraAzienda::invoiceNumbersUniqueAndConsecutivePerYear()
{
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT ANNO, NUMERO FROM FATT_VEND GROUP BY ANNO, NUMERO HAVING COUNT(*) > 1")),
             QStringList());
    QCOMPARE(m_db->Rows(QStringLiteral(
                 "SELECT ANNO, MIN(NUMERO), MAX(NUMERO), COUNT(*) FROM FATT_VEND GROUP BY ANNO ORDER BY ANNO")),
             QStringList({QStringLiteral("2023|1|40|40"), QStringLiteral("2024|1|40|40")}));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE EXTRACT(YEAR FROM DATA) <> ANNO"))
                 .toInt(),
             0);
    // Numbers follow the dates.
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND A JOIN FATT_VEND B ON A.ANNO = B.ANNO "
                                         "AND A.NUMERO < B.NUMERO AND A.DATA > B.DATA"))
                 .toInt(),
             0);
}

void TestGeneraAzienda::creditNoteNumbersUniqueAndConsecutivePerYear()
{
    QVERIFY(m_riepilogo.NoteAccredito >= 2);
    QCOMPARE(m_db->Rows(
                 QStringLiteral("SELECT ANNO, NUMERO FROM NOTE_ACCREDITO GROUP BY ANNO, NUMERO HAVING COUNT(*) > 1")),
             QStringList());
    for (const QString &row :
         m_db->Rows(QStringLiteral("SELECT MIN(NUMERO), MAX(NUMERO), COUNT(*) FROM NOTE_ACCREDITO GROUP BY ANNO"))) {
        const QStringList v = row.split(QLatin1Char('|'));
        QCOMPARE(v.at(0), QStringLiteral("1"));
        QCOMPARE(v.at(1), v.at(2));
    }
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE EXTRACT(YEAR FROM DATA) <> ANNO"))
                 .toInt(),
             0);
}

void TestGeneraAzienda::lineAmountsAsTheEditorComputesThem()
{
    const QStringList rows = m_db->Rows(QStringLiteral(
        "SELECT CAST(PREZZO AS VARCHAR(20)), CAST(SCONTO AS VARCHAR(20)), CAST(QUANTITA AS VARCHAR(20)), "
        "CAST(IMPORTO AS VARCHAR(20)) FROM FATT_VEND_DETT WHERE TIPO_RIGA <> 'Testo'"));
    QVERIFY(rows.size() > 100);
    for (const QString &row : rows) {
        const QStringList v = row.split(QLatin1Char('|'));
        const double p = double(Centesimi(v.at(0))) / 100.0;
        const double s = double(Centesimi(v.at(1))) / 100.0;
        const double q = double(Centesimi(v.at(2))) / 100.0;
        QVERIFY2(q > 0, qPrintable(row));
        QVERIFY2(s >= 0, qPrintable(row));
        QVERIFY2(ImportoEditor(q * (p - s * p / 100)) == Centesimi(v.at(3)), qPrintable(row));
    }
    for (const QString &row :
         m_db->Rows(QStringLiteral("SELECT CAST(PREZZO AS VARCHAR(20)), CAST(QUANTITA AS VARCHAR(20)), "
                                   "CAST(IMPORTO AS VARCHAR(20)) FROM NOTE_ACCREDITO_DETT "
                                   "WHERE TIPO_RIGA <> 'Testo'"))) {
        const QStringList v = row.split(QLatin1Char('|'));
        const double amount = double(Centesimi(v.at(1))) / 100.0 * (double(Centesimi(v.at(0))) / 100.0);
        QVERIFY2(ImportoEditor(amount) == Centesimi(v.at(2)), qPrintable(row));
    }
}

void TestGeneraAzienda::invoiceTotalsEqualTheSumOfTheirLines()
{
    // Taxable: article and service lines of a taxable invoice; tax: their amounts
    // at the rate's percentage, unrounded; exempt: every amount of an exempt
    // invoice; non-taxable: "Non imponibile" lines of a taxable invoice.
    struct TSomme
    {
        double Imponibile = 0, Imposta = 0, Esente = 0, NonImponibile = 0;
    };
    QHash<int, TSomme> somme;
    const QStringList lines = m_db->Rows(QStringLiteral(
        "SELECT D.IDFATT_VEND, D.TIPO_RIGA, CAST(D.IMPORTO AS VARCHAR(20)), CAST(A.ALIQUOTA AS VARCHAR(20)), F.IVA_ESENTE "
        "FROM FATT_VEND_DETT D JOIN FATT_VEND F ON F.IDFATT_VEND = D.IDFATT_VEND "
        "LEFT JOIN ALIQUOTE_IVA A ON A.IDALIQUOTA_IVA = D.IVA_IDALIQUOTA_IVA "
        "WHERE D.TIPO_RIGA <> 'Testo' ORDER BY D.IDFATT_VEND_DETT"));
    for (const QString &line : lines) {
        const QStringList v = line.split(QLatin1Char('|'));
        TSomme &s = somme[v.at(0).toInt()];
        const double importo = double(Centesimi(v.at(2))) / 100.0;
        if (v.at(4) == QLatin1String("True")) {
            s.Esente += importo;
        } else if (v.at(1) == QLatin1String("Non imponibile")) {
            s.NonImponibile += importo;
        } else {
            s.Imponibile += importo;
            if (v.at(3) != QLatin1String("<null>"))
                s.Imposta += importo * (double(Centesimi(v.at(3))) / 100.0) / 100;
        }
    }
    const QStringList headers = m_db->Rows(QStringLiteral(
        "SELECT IDFATT_VEND, CAST(TOTALE_IMPONIBILE AS VARCHAR(20)), CAST(TOTALE_IMPOSTA AS VARCHAR(20)), "
        "CAST(TOTALE_DOCUMENTO AS VARCHAR(20)), IVA_ESENTE FROM FATT_VEND"));
    QCOMPARE(headers.size(), int(m_riepilogo.Fatture));
    int esenti = 0;
    for (const QString &header : headers) {
        const QStringList v = header.split(QLatin1Char('|'));
        const TSomme s = somme.value(v.at(0).toInt());
        QVERIFY2(Centesimi(v.at(1)) == Salvato(s.Imponibile), qPrintable(header));
        QVERIFY2(Centesimi(v.at(2)) == Salvato(s.Imposta), qPrintable(header));
        QVERIFY2(Centesimi(v.at(3)) == Salvato(s.Imponibile + s.Imposta + s.Esente + s.NonImponibile),
                 qPrintable(header));
        if (v.at(4) == QLatin1String("True")) {
            ++esenti;
            QCOMPARE(v.at(1), QStringLiteral("0.00"));
            QCOMPARE(v.at(2), QStringLiteral("0.00"));
            QVERIFY(Centesimi(v.at(3)) > 0);
        }
    }
    QVERIFY(esenti >= 2);
}

void TestGeneraAzienda::creditNoteTotalsEqualTheSumOfTheirLines()
{
    QHash<int, QPair<double, double>> somme;
    for (const QString &line : m_db->Rows(QStringLiteral(
             "SELECT D.IDNOTA_ACCREDITO, CAST(D.IMPORTO AS VARCHAR(20)), CAST(A.ALIQUOTA AS VARCHAR(20)) "
             "FROM NOTE_ACCREDITO_DETT D LEFT JOIN ALIQUOTE_IVA A ON A.IDALIQUOTA_IVA = D.IVA_IDALIQUOTA_IVA "
             "WHERE D.TIPO_RIGA <> 'Testo' ORDER BY D.IDNOTA_ACCREDITO_DETT"))) {
        const QStringList v = line.split(QLatin1Char('|'));
        auto &s = somme[v.at(0).toInt()];
        const double importo = double(Centesimi(v.at(1))) / 100.0;
        s.first += importo;
        if (v.at(2) != QLatin1String("<null>"))
            s.second += importo * (double(Centesimi(v.at(2))) / 100.0) / 100;
    }
    for (const QString &header : m_db->Rows(QStringLiteral(
             "SELECT IDNOTA_ACCREDITO, CAST(TOTALE_IMPONIBILE AS VARCHAR(20)), CAST(TOTALE_IMPOSTA AS VARCHAR(20)), "
             "CAST(TOTALE_DOCUMENTO AS VARCHAR(20)) FROM NOTE_ACCREDITO"))) {
        const QStringList v = header.split(QLatin1Char('|'));
        const auto s = somme.value(v.at(0).toInt());
        QVERIFY2(Centesimi(v.at(1)) == Salvato(s.first), qPrintable(header));
        QVERIFY2(Centesimi(v.at(2)) == Salvato(s.second), qPrintable(header));
        QVERIFY2(Centesimi(v.at(3)) == Salvato(s.first + s.second), qPrintable(header));
    }
}

void TestGeneraAzienda::documentsAreWhatTheEditorsLineModelComputes_data()
{
    QTest::addColumn<QString>("testate");
    QTest::addColumn<QString>("righe");
    QTest::addColumn<bool>("fattura");
    QTest::newRow("fatture") << QStringLiteral("SELECT IDFATT_VEND, IVA_ESENTE, %1 FROM FATT_VEND ORDER BY 1")
                             << QStringLiteral(
                                    "SELECT IDFATT_VEND, %1, CAST(SCONTO AS VARCHAR(20)) FROM FATT_VEND_DETT "
                                    "ORDER BY IDFATT_VEND, IDFATT_VEND_DETT")
                             << true;
    QTest::newRow("note di accredito")
        << QStringLiteral("SELECT IDNOTA_ACCREDITO, 'False', %1 FROM NOTE_ACCREDITO ORDER BY 1")
        << QStringLiteral("SELECT IDNOTA_ACCREDITO, %1 FROM NOTE_ACCREDITO_DETT ORDER BY IDNOTA_ACCREDITO, "
                          "IDNOTA_ACCREDITO_DETT")
        << false;
}

// The lines read back into the editors' own line model: the model computes
// every stored line amount and the header's totals again, to the cent.
void TestGeneraAzienda::documentsAreWhatTheEditorsLineModelComputes()
{
    QFETCH(QString, testate);
    QFETCH(QString, righe);
    QFETCH(bool, fattura);
    QHash<int, double> percentuali;
    for (const QString &row :
         m_db->Rows(QStringLiteral("SELECT IDALIQUOTA_IVA, CAST(ALIQUOTA AS VARCHAR(20)) FROM ALIQUOTE_IVA"))) {
        const QStringList v = row.split(QLatin1Char('|'));
        percentuali.insert(v.at(0).toInt(), double(Centesimi(v.at(1))) / 100.0);
    }
    const TKRVCercaAliquota aliquota = [&percentuali](int id) -> std::optional<double> {
        if (!percentuali.contains(id))
            return std::nullopt;
        return percentuali.value(id);
    };
    const TKRVLayoutRighe &l = fattura ? KRVLayoutFattura() : KRVLayoutNotaAccredito();
    QHash<int, QStringList> perDocumento;
    for (const QString &row :
         m_db->Rows(righe.arg(QStringLiteral("TIPO_RIGA, CAST(PREZZO AS VARCHAR(20)), CAST(QUANTITA AS VARCHAR(20)), "
                                             "COALESCE(IVA_IDALIQUOTA_IVA, 0), CAST(IMPORTO AS VARCHAR(20))"))))
        perDocumento[row.section(QLatin1Char('|'), 0, 0).toInt()] << row;
    const QStringList headers = m_db->Rows(
        testate.arg(QStringLiteral("CAST(TOTALE_IMPONIBILE AS VARCHAR(20)), CAST(TOTALE_IMPOSTA AS VARCHAR(20)), "
                                   "CAST(TOTALE_DOCUMENTO AS VARCHAR(20))")));
    QVERIFY(headers.size() >= 3);
    int importi = 0;
    for (const QString &header : headers) {
        const QStringList h = header.split(QLatin1Char('|'));
        const QStringList lines = perDocumento.value(h.at(0).toInt());
        TKRVRigheDocumento modello(l);
        for (const QString &line : lines) {
            const QStringList v = line.split(QLatin1Char('|'));
            const int riga = modello.AggiungiRiga();
            modello.SetCella(riga, l.Tipo, v.at(1));
            if (v.at(1) == KRVRigaTesto)
                continue;
            modello.SetNumero(riga, l.Prezzo, double(Centesimi(v.at(2))) / 100.0);
            modello.SetNumero(riga, l.Quantita, double(Centesimi(v.at(3))) / 100.0);
            if (fattura)
                modello.SetNumero(riga, l.Sconto, double(Centesimi(v.at(6))) / 100.0);
            modello.SetIntero(riga, l.IdIva, v.at(4).toInt());
        }
        const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(modello, h.at(1) == QLatin1String("True"), aliquota);
        for (int riga = 0; riga < lines.size(); ++riga) {
            const QStringList v = lines.at(riga).split(QLatin1Char('|'));
            if (v.at(1) == KRVRigaTesto)
                continue;
            QVERIFY2(std::llround(modello.Numero(riga, l.Importo) * 100.0) == Centesimi(v.at(5)),
                     qPrintable(lines.at(riga)));
            ++importi;
        }
        QVERIFY2(Centesimi(h.at(2)) == Salvato(totali.Imponibile), qPrintable(header));
        QVERIFY2(Centesimi(h.at(3)) == Salvato(totali.Imposta), qPrintable(header));
        QVERIFY2(Centesimi(h.at(4)) == Salvato(totali.Totale()), qPrintable(header));
    }
    QVERIFY(importi > headers.size());
}

void TestGeneraAzienda::everyLineKindIsValid()
{
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT DISTINCT TIPO_RIGA FROM FATT_VEND_DETT ORDER BY 1")),
             QStringList({QStringLiteral("Articolo"), QStringLiteral("Non imponibile"), QStringLiteral("Servizio"),
                          QStringLiteral("Testo")}));
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT DISTINCT TIPO_RIGA FROM NOTE_ACCREDITO_DETT ORDER BY 1")).size() >= 2,
             true);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT WHERE TIPO_RIGA NOT IN "
                                         "('Articolo', 'Servizio', 'Testo')"))
                 .toInt(),
             0);
    // Text lines carry their text only.
    QCOMPARE(m_db
                 ->Scalar(QStringLiteral(
                     "SELECT COUNT(*) FROM FATT_VEND_DETT WHERE TIPO_RIGA = 'Testo' AND (DESCRIZIONE IS NULL "
                     "OR CODICE IS NOT NULL OR PREZZO IS NOT NULL OR SCONTO IS NOT NULL OR QUANTITA IS NOT NULL "
                     "OR IMPORTO IS NOT NULL OR IVA_IDALIQUOTA_IVA IS NOT NULL OR IDUM IS NOT NULL "
                     "OR COSTO IS NOT NULL OR IDCATEGORIA IS NOT NULL)"))
                 .toInt(),
             0);
    // Non-taxable lines have no code, category, VAT or unit.
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM FATT_VEND_DETT WHERE TIPO_RIGA = 'Non imponibile' AND "
                              "(CODICE IS NOT NULL OR IDCATEGORIA IS NOT NULL OR IVA_IDALIQUOTA_IVA IS NOT NULL "
                              "OR IVA_CODICE IS NOT NULL OR IDUM IS NOT NULL OR UM IS NOT NULL OR IMPORTO IS NULL)"))
                 .toInt(),
             0);
    // Article and service lines copy an existing article or service, its category, rate and unit.
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM FATT_VEND_DETT D WHERE TIPO_RIGA = 'Articolo' AND NOT EXISTS "
                              "(SELECT 1 FROM ANA_MAGA A JOIN CATEGORIE_ANA_MAGA C ON C.IDCATEGORIA_ANA_MAGA = "
                              "A.IDCATEGORIA_ANA_MAGA JOIN UM U ON U.IDUM = A.IDUM WHERE A.CODICE = D.CODICE "
                              "AND C.IDCATEGORIA_ANA_MAGA = D.IDCATEGORIA AND C.CATEGORIA = D.CATEGORIA "
                              "AND A.IDALIQUOTA_IVA = D.IVA_IDALIQUOTA_IVA AND U.UM = D.UM AND A.COSTO = D.COSTO)"))
                 .toInt(),
             0);
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM FATT_VEND_DETT D WHERE TIPO_RIGA = 'Servizio' AND NOT EXISTS "
                              "(SELECT 1 FROM SERVIZI S JOIN CATEGORIE_SERVIZI C ON C.IDCATEGORIA_SERVIZI = "
                              "S.IDCATEGORIA_SERVIZI JOIN ALIQUOTE_IVA A ON A.IDALIQUOTA_IVA = S.IDALIQUOTA_IVA "
                              "WHERE S.CODICE = D.CODICE AND C.CATEGORIA = D.CATEGORIA AND A.CODICE = D.IVA_CODICE "
                              "AND A.ALIQUOTA = D.IVA_ALIQUOTA AND A.DESCRIZIONE = D.IVA_DESCRIZIONE)"))
                 .toInt(),
             0);
    // From 1 to 40 lines per invoice.
    QCOMPARE(m_db->Scalar(
                     QStringLiteral("SELECT COUNT(*) FROM FATT_VEND F WHERE (SELECT COUNT(*) FROM FATT_VEND_DETT D "
                                    "WHERE D.IDFATT_VEND = F.IDFATT_VEND) NOT BETWEEN 1 AND 40"))
                 .toInt(),
             0);
}

void TestGeneraAzienda::exemptRecurringAndNotedInvoicesEveryYear()
{
    for (int year = AnnoFinale - 1; year <= AnnoFinale; ++year) {
        const QString where = QStringLiteral(" AND ANNO = %1").arg(year);
        QVERIFY(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE IVA_ESENTE = 'True'") + where).toInt()
                >= 1);
        QVERIFY(
            m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FC_ABILITATO = 'True'") + where).toInt()
            >= 1);
        QVERIFY(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE 1 = 1") + where).toInt() >= 1);
    }
    // Recurring invoices carry their settings as the editor writes them; the others none.
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM FATT_VEND WHERE FC_ABILITATO = 'True' AND (FC_GENERA_OGNI IS NULL "
                              "OR FC_GENERA_OGNI_UM NOT IN ('Giorno', 'Settimana', 'Mese', 'Anno') "
                              "OR FC_DATA_INIZIO IS NULL OR FC_DATA_FINE IS NULL OR FC_DATA_NUOVA_FATTURA NOT IN "
                              "('Primo giorno del mese', 'Il giorno 15 del mese', 'Il giorno esatto', "
                              "'Ultimo giorno del mese'))"))
                 .toInt(),
             0);
    QCOMPARE(m_db
                 ->Scalar(QStringLiteral(
                     "SELECT COUNT(*) FROM FATT_VEND WHERE FC_ABILITATO = 'False' AND (FC_GENERA_OGNI IS NOT NULL "
                     "OR FC_GENERA_OGNI_UM IS NOT NULL OR FC_DATA_INIZIO IS NOT NULL OR FC_DATA_FINE IS NOT NULL "
                     "OR FC_DATA_NUOVA_FATTURA IS NOT NULL)"))
                 .toInt(),
             0);
    QVERIFY(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE NOTE IS NOT NULL")).toInt() >= 2);
    QCOMPARE(m_db->Scalar(
                     QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE PAGATO NOT IN ('True', 'False') "
                                    "OR NOTIFICATO NOT IN ('True', 'False') OR IVA_ESENTE NOT IN ('True', 'False')"))
                 .toInt(),
             0);
}

void TestGeneraAzienda::taxCodesAndVatNumbersHaveAValidShape()
{
    int persone = 0;
    int aziende = 0;
    for (const QString &row : m_db->Rows(QStringLiteral("SELECT CODICEFISCALE, PARTITAIVA, NAZIONE FROM CLIENTI"))) {
        const QStringList v = row.split(QLatin1Char('|'));
        if (v.at(2) != QLatin1String("Italia"))
            continue;
        if (v.at(1) == QLatin1String("<null>")) {
            ++persone;
            QVERIFY2(CodiceFiscaleValido(v.at(0)), qPrintable(row));
        } else {
            ++aziende;
            QVERIFY2(PartitaIvaValida(v.at(1)), qPrintable(row));
            QCOMPARE(v.at(0), v.at(1));
        }
    }
    QVERIFY(persone > 0);
    QVERIFY(aziende > 0);
    QVERIFY(PartitaIvaValida(m_db->Scalar(QStringLiteral("SELECT PARTITAIVA FROM AZIENDA")).toString()));
    // Bank coordinates: the IBAN's check digits hold.
    for (const QString &row : m_db->Rows(QStringLiteral("SELECT COORDBAN_PAESE || COORDBAN_CIN_EUR || COORDBAN_CIN || "
                                                        "COORDBAN_ABI || COORDBAN_CAB || COORDBAN_CONTO FROM CLIENTI "
                                                        "WHERE COORDBAN_ABI IS NOT NULL"))) {
        const QString moved = row.mid(4) + row.left(4);
        int rest = 0;
        for (const QChar c : moved) {
            const QString digits = c.isDigit() ? QString(c) : QString::number(c.toLatin1() - 'A' + 10);
            for (const QChar d : digits)
                rest = (rest * 10 + d.digitValue()) % 97;
        }
        QVERIFY2(rest == 1, qPrintable(row));
    }
}

// A rate of 0% goes on an electronic invoice only with the nature of the
// operation and its legal reference.
void TestGeneraAzienda::zeroRatesCarryANature()
{
    QStringList codici;
    for (const TKRVNaturaIva &natura : KRVNatureIva())
        codici << natura.Codice;
    const QStringList zero = m_db->Rows(QStringLiteral(
        "SELECT CODICE, COALESCE(NATURA, ''), COALESCE(RIFERIMENTO_NORMATIVO, '') FROM ALIQUOTE_IVA WHERE ALIQUOTA = 0"));
    QVERIFY(zero.size() >= 2);
    for (const QString &row : zero) {
        const QStringList v = row.split(QLatin1Char('|'));
        QVERIFY2(codici.contains(v.at(1)), qPrintable(row));
        QVERIFY2(!v.at(2).isEmpty(), qPrintable(row));
    }
    // The rates with VAT have none.
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE ALIQUOTA > 0 AND COALESCE(NATURA, '') <> ''"))
                 .toInt(),
             0);
}

// Every customer of a firm of the medium size passes the editor's checks: tax
// codes that add up to their check digits (each Italian customer has the one
// of its kind), the kind of subject with a private person's names, and a
// recipient code or a PEC.
void TestGeneraAzienda::everyCustomerOfAMediumFirmCanReceiveElectronicInvoices()
{
    TQ3RecordingResponder boxes;
    TQ3TestDatabase db;
    KRVPreparaDatabase(db.Target());
    TKRVOpzioniGenerazione opzioni = Prova(11);
    opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("medio"));
    // The customers are the point here, not years of invoices.
    opzioni.Dimensione.Anni = 1;
    opzioni.Dimensione.FattureAnno = 0;
    KRVGeneraAzienda(db.Target(), opzioni);
    QVERIFY(boxes.Messages().isEmpty());

    QHash<QString, int> tipi;
    int pec = 0;
    int codici = 0;
    const QStringList clienti = db.Rows(QStringLiteral(
        "SELECT CODICE, COALESCE(PARTITAIVA, ''), COALESCE(CODICEFISCALE, ''), NAZIONE, TIPO_SOGGETTO, "
        "COALESCE(NOME, ''), COALESCE(COGNOME, ''), COALESCE(CODICE_DESTINATARIO, ''), COALESCE(PEC, '') FROM CLIENTI"));
    QCOMPARE(clienti.size(), KRVDimensioneAzienda(QStringLiteral("medio")).Clienti);
    for (const QString &row : clienti) {
        const QStringList v = row.split(QLatin1Char('|'));
        const TKRVRecapitoCliente recapito{v.at(4), v.at(5), v.at(6), v.at(7), v.at(8)};
        QVERIFY2(Q3ProblemiCodiciFiscali(v.at(1), v.at(2), v.at(3)).isEmpty(), qPrintable(row));
        QVERIFY2(KRVProblemiRecapito(recapito).isEmpty(), qPrintable(row));
        QVERIFY2(!KRVSenzaRecapito(recapito), qPrintable(row));
        if (Q3NazioneItaliana(v.at(3))) {
            QVERIFY2(v.at(4) == QLatin1String("P") ? Q3CodiceFiscaleValido(v.at(2)) : Q3PartitaIvaValida(v.at(1)),
                     qPrintable(row));
        } else {
            QCOMPARE(v.at(7), QStringLiteral("XXXXXXX"));
        }
        // The PEC goes only with the code of those who receive by PEC.
        if (!v.at(8).isEmpty()) {
            ++pec;
            QCOMPARE(v.at(7), QStringLiteral("0000000"));
        }
        if (v.at(7) != QLatin1String("0000000"))
            ++codici;
        ++tipi[v.at(4)];
    }
    QCOMPARE(tipi.size(), 3);
    QVERIFY(tipi.value(QStringLiteral("A")) > tipi.value(QStringLiteral("P")));
    QVERIFY(tipi.value(QStringLiteral("P")) > tipi.value(QStringLiteral("PA")));
    QVERIFY(tipi.value(QStringLiteral("PA")) > 0);
    QVERIFY(pec > 0);
    QVERIFY(codici > pec);
}

void TestGeneraAzienda::documentsCopyTheCustomer()
{
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND F WHERE NOT EXISTS (SELECT 1 FROM CLIENTI C "
                                         "WHERE C.CODICE = F.CLI_CODICE AND C.RAGIONESOCIALE = F.CLI_RAGIONESOCIALE "
                                         "AND C.INDIRIZZO = F.CLI_INDIRIZZO AND C.CITTA = F.CLI_CITTA)"))
                 .toInt(),
             0);
    QCOMPARE(m_db->Scalar(QStringLiteral(
                              "SELECT COUNT(*) FROM FATT_VEND F WHERE NOT EXISTS (SELECT 1 FROM TIPI_PAGAMENTO T "
                              "WHERE T.IDTIPO_PAGAMENTO = F.IDTIPO_PAGAMENTO AND T.TIPO_PAGAMENTO = F.TIPO_PAGAMENTO)"))
                 .toInt(),
             0);
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE SCADENZA_PAGAMENTO < DATA")).toInt(), 0);
}

QString TestGeneraAzienda::Firma(const TQ3TestDatabase &db) const
{
    return (db.Rows(
                QStringLiteral("SELECT CODICE, RAGIONESOCIALE, CODICEFISCALE, PARTITAIVA FROM CLIENTI ORDER BY CODICE"))
            + db.Rows(QStringLiteral("SELECT CODICE, DESCRIZIONE, PREZZO FROM ANA_MAGA ORDER BY CODICE"))
            + db.Rows(QStringLiteral(
                "SELECT ANNO, NUMERO, DATA, CLI_CODICE, TOTALE_DOCUMENTO FROM FATT_VEND ORDER BY ANNO, NUMERO"))
            + db.Rows(QStringLiteral(
                "SELECT ANNO, NUMERO, DATA, TOTALE_DOCUMENTO FROM NOTE_ACCREDITO ORDER BY ANNO, NUMERO")))
        .join(QLatin1Char('\n'));
}

void TestGeneraAzienda::sameSeedGivesTheSameFirm()
{
    TQ3TestDatabase same;
    KRVPreparaDatabase(same.Target());
    KRVGeneraAzienda(same.Target(), Prova(7));
    QCOMPARE(Firma(same), Firma(*m_db));

    TQ3TestDatabase other;
    KRVPreparaDatabase(other.Target());
    KRVGeneraAzienda(other.Target(), Prova(8));
    QVERIFY(Firma(other) != Firma(*m_db));
}

QDate TestGeneraAzienda::UltimaData(const TQ3TestDatabase &db, const QString &table)
{
    return QDate::fromString(db.Scalar(QStringLiteral("SELECT MAX(DATA) FROM ") + table).toString(), Qt::ISODate);
}

// As the command generates a firm by default: the final year is the current
// one and the end date today.
void TestGeneraAzienda::currentYearEndsOnTheDayOfTheGeneration()
{
    const QDate oggi = QDate::currentDate();
    TQ3TestDatabase db;
    KRVPreparaDatabase(db.Target());
    TKRVOpzioniGenerazione opzioni = Prova(7);
    opzioni.AnnoFinale = oggi.year();
    opzioni.DataFinale = oggi;
    const TKRVRiepilogoGenerazione riepilogo = KRVGeneraAzienda(db.Target(), opzioni);

    QVERIFY(UltimaData(db, QStringLiteral("FATT_VEND")) <= oggi);
    QVERIFY(UltimaData(db, QStringLiteral("NOTE_ACCREDITO")) <= oggi);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE DATA > CURRENT_DATE")).toInt(), 0);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE DATA > CURRENT_DATE")).toInt(), 0);
    // The year before is whole; the current one has no more invoices than a whole year.
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE ANNO = %1").arg(oggi.year() - 1)).toInt(),
             40);
    QVERIFY(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE ANNO = %1").arg(oggi.year())).toInt() <= 40);
    QCOMPARE(riepilogo.Fatture, db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toLongLong());
}

// Generated on 15 March 2024: the year keeps its invoices of the working days
// up to that day, in proportion, and the same day gives the same firm again.
void TestGeneraAzienda::endDateCutsTheLastYearAndKeepsTheSeed()
{
    const QDate fine(AnnoFinale, 3, 15);
    TKRVOpzioniGenerazione opzioni = Prova(7);
    opzioni.DataFinale = fine;
    TQ3TestDatabase db;
    KRVPreparaDatabase(db.Target());
    KRVGeneraAzienda(db.Target(), opzioni);

    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE DATA > '2024-03-15'")).toInt(), 0);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE DATA > '2024-03-15'")).toInt(), 0);
    QVERIFY(UltimaData(db, QStringLiteral("FATT_VEND")).isValid());
    // 54 of the year's 244 working days: 8 of its 40 invoices.
    QCOMPARE(db.Rows(QStringLiteral(
                 "SELECT ANNO, MIN(NUMERO), MAX(NUMERO), COUNT(*) FROM FATT_VEND GROUP BY ANNO ORDER BY ANNO")),
             QStringList({QStringLiteral("2023|1|40|40"), QStringLiteral("2024|1|8|8")}));

    TQ3TestDatabase same;
    KRVPreparaDatabase(same.Target());
    KRVGeneraAzienda(same.Target(), opzioni);
    QCOMPARE(Firma(same), Firma(db));
    // The whole year before is the one of the firm generated to the year's end.
    const QString anno =
        QStringLiteral("SELECT NUMERO, DATA, CLI_CODICE, TOTALE_DOCUMENTO FROM FATT_VEND WHERE ANNO = 2023 "
                       "ORDER BY NUMERO");
    QCOMPARE(db.Rows(anno), m_db->Rows(anno));
}

void TestGeneraAzienda::endDateBeforeTheFinalYearIsRefused()
{
    TKRVOpzioniGenerazione opzioni = Prova(7);
    opzioni.DataFinale = QDate(AnnoFinale - 1, 12, 31);
    TQ3TestDatabase db;
    KRVPreparaDatabase(db.Target());
    QString failure;
    try {
        KRVGeneraAzienda(db.Target(), opzioni);
    } catch (const EQ3Exception &e) {
        failure = e.Message();
    }
    QCOMPARE(failure, QStringLiteral("La data finale 2023-12-31 precede l'anno finale 2024."));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt(), 0);
}

void TestGeneraAzienda::aFirmWithInvoicesIsRefused()
{
    const int before = m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt();
    QString failure;
    try {
        KRVGeneraAzienda(m_db->Target(), Prova(9));
    } catch (const EQ3Exception &e) {
        failure = e.Message();
    }
    QCOMPARE(failure,
             QStringLiteral("Il database contiene già clienti o fatture: la generazione richiede un'azienda vuota."));
    QCOMPARE(m_db->Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt(), before);
}

QTEST_GUILESS_MAIN(TestGeneraAzienda)
#include "tst_generaazienda.moc"

// Every invoice and credit note of the generated firm goes out as an
// electronic invoice that the program's checks accept and xmllint validates
// against the reference schema: credit notes name their invoice, exempt
// invoices carry their nature.
void TestGeneraAzienda::everyDocumentExportsAsAValidElectronicInvoice()
{
    QTemporaryDir cartella;
    QStringList files;
    for (const auto &[tipo, tabella, chiave] :
         {std::tuple{EKRVDocumentoFatturaPA::Fattura, "FATT_VEND", "IDFATT_VEND"},
          std::tuple{EKRVDocumentoFatturaPA::NotaAccredito, "NOTE_ACCREDITO", "IDNOTA_ACCREDITO"}}) {
        QList<int> ids;
        for (const QString &id : m_db->Rows(
                 QStringLiteral("SELECT %1 FROM %2 ORDER BY %1").arg(QLatin1String(chiave), QLatin1String(tabella))))
            ids << id.toInt();
        QVERIFY(!ids.isEmpty());
        const TKRVEsportazioneFatturePA esito = KRVEsportaFatturePA(m_db->Db(), tipo, ids, {cartella.path(), false});
        QVERIFY2(esito.Rifiutate.isEmpty(), qPrintable(KRVRiepilogoEsportazione(esito).left(2000)));
        QCOMPARE(esito.Scritte.size(), ids.size());
        for (const TKRVEsitoFatturaPA &scritta : esito.Scritte)
            files << cartella.filePath(scritta.NomeFile);
    }
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty())
        QSKIP("xmllint is not installed");
    QProcess processo;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QStringLiteral("XML_CATALOG_FILES"), KRVTest::Riferimento + QStringLiteral("/catalog.xml"));
    processo.setProcessEnvironment(ambiente);
    processo.setProcessChannelMode(QProcess::MergedChannels);
    processo.start(xmllint,
                   QStringList{QStringLiteral("--noout"), QStringLiteral("--nonet"), QStringLiteral("--catalogs"),
                               QStringLiteral("--schema"),
                               KRVTest::Riferimento + QStringLiteral("/Schema_del_file_xml_FatturaPA_v1.2.2.xsd")}
                       + files);
    QVERIFY(processo.waitForFinished(120000));
    const QString detto = QString::fromUtf8(processo.readAll());
    QVERIFY2(processo.exitCode() == 0, qPrintable(detto.left(2000)));
    QCOMPARE(detto.count(QStringLiteral(" validates")), files.size());
}
