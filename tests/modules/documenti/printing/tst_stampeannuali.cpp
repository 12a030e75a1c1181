// The yearly summaries of the sales invoices: their statements, their rows,
// and their dialogs driven as a user would.
#include "../documents/KRVFattureTestKit.h"
#include "KRVModuloFratello.h"
#include "KRVStampeRiepiloghi.h"
#include "Q3Dataset.h"
#include "uKRVModStampaFatturatoPerCliente.h"
#include "uKRVModStampaRiepilogoFatture.h"

#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <memory>

using namespace KRVTest;

namespace {

const QDate Oggi(2026, 6, 15);

QString Mesi()
{
    return QStringLiteral(
        "(CASE WHEN EXTRACT(MONTH FROM DATA) = 1 THEN 'Gennaio' WHEN EXTRACT(MONTH FROM DATA) = 2 THEN 'Febbraio' WHEN "
        "EXTRACT(MONTH FROM DATA) = 3 THEN 'Marzo' WHEN EXTRACT(MONTH FROM DATA) = 4 THEN 'Aprile' WHEN EXTRACT(MONTH FROM "
        "DATA) = 5 THEN 'Maggio' WHEN EXTRACT(MONTH FROM DATA) = 6 THEN 'Giugno' WHEN EXTRACT(MONTH FROM DATA) = 7 THEN "
        "'Luglio' WHEN EXTRACT(MONTH FROM DATA) = 8 THEN 'Agosto' WHEN EXTRACT(MONTH FROM DATA) = 9 THEN 'Settembre' WHEN "
        "EXTRACT(MONTH FROM DATA) = 10 THEN 'Ottobre' WHEN EXTRACT(MONTH FROM DATA) = 11 THEN 'Novembre' WHEN EXTRACT(MONTH "
        "FROM DATA) = 12 THEN 'Dicembre' END ) AS MESE_DESC, ");
}

const QString Fv =
    QStringLiteral("SELECT NUMERO, DATA, ") + Mesi()
    + QStringLiteral("EXTRACT(MONTH FROM DATA) AS MESE_INT, CLI_CODICE, CLI_RAGIONESOCIALE, (CASE WHEN "
                     "PAGATO='True' THEN 'SI' WHEN PAGATO='False' THEN 'NO' END ) AS PAGATO, SCADENZA_PAGAMENTO, "
                     "'FV' AS TIPO_DOCUMENTO, TOTALE_IMPONIBILE, TOTALE_DOCUMENTO FROM FATT_VEND WHERE ANNO=");

} // namespace

class TestStampeAnnuali : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init();
    void cleanup();
    void allAndAllHaveNoFilter();
    void paidAndDueFiltersAgainstToday();
    void accompanyingInvoicesOnlyWithTheWarehouse();
    void paidStatesOfTheRows();
    void dueStatesOfTheRows();
    void warehouseInvoicesJoinTheSummary();
    void turnoverByCustomerLargestFirst();
    void yearWithoutInvoicesDividesByZero();
    void dialogsKeepTheirChoicesAndPrint();
    void summaryNeedsTheStatisticsRight();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    int Fattura(int numero, const QDate &data, const QString &cliente, const QString &pagato,
                const QString &scadenza = QStringLiteral("NULL"), double imponibile = 100);
    // The print, its output options closed as soon as they show: the rows it read.
    QStringList Righe(const std::function<void()> &stampa, const QString &dataset, const QString &colonne);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
};

void TestStampeAnnuali::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_responder = std::make_unique<TQ3RecordingResponder>();
}

void TestStampeAnnuali::cleanup()
{
    m_responder.reset();
    m_module.reset();
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
}

int TestStampeAnnuali::Fattura(int numero, const QDate &data, const QString &cliente, const QString &pagato,
                               const QString &scadenza, double imponibile)
{
    return KRVInsertRow(Db(),
                        QStringLiteral(
                            "INSERT INTO FATT_VEND (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
                            "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, SCADENZA_PAGAMENTO, TOTALE_IMPONIBILE, "
                            "TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (%1, '%2', %3, %4, 'Cliente', "
                            "1, 'Rimessa diretta', %5, %6, %7, 0, %7, 'False')")
                            .arg(numero)
                            .arg(data.toString(Qt::ISODate))
                            .arg(data.year())
                            .arg(QuotedStr(cliente), QuotedStr(pagato), scadenza)
                            .arg(imponibile),
                        QStringLiteral("GN_IDFATT_VEND"));
}

QStringList TestStampeAnnuali::Righe(const std::function<void()> &stampa, const QString &dataset,
                                     const QString &colonne)
{
    // The output options go on to the preview, so the layout is laid out for real.
    QStringList finestre;
    QTimer timer;
    timer.setInterval(10);
    connect(&timer, &QTimer::timeout, this, [&finestre] {
        if (auto modale = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            finestre << modale->windowTitle();
            if (modale->windowTitle() == QLatin1String("Output Options"))
                modale->accept();
            else
                modale->reject();
        }
    });
    timer.start();
    stampa();
    timer.stop();
    if (finestre != QStringList{QStringLiteral("Output Options"), QStringLiteral("Report Preview")})
        qWarning("windows: %s", qPrintable(finestre.join(QLatin1Char(','))));
    TQ3Dataset *letto = m_module->Main->StampeDataset(dataset);
    QStringList righe;
    for (letto->First(); !letto->Eof(); letto->Next()) {
        QStringList valori;
        for (const QString &colonna : colonne.split(QLatin1Char(',')))
            valori << letto->FieldValue(colonna).toString().trimmed();
        righe << valori.join(QLatin1Char('|'));
    }
    return righe;
}

void TestStampeAnnuali::allAndAllHaveNoFilter()
{
    QCOMPARE(KRVSQLRiepilogoFatture(2026, TCustomBoolean::cbNull, TCustomBoolean::cbNull, false, Oggi),
             Fv + QStringLiteral("2026 ORDER BY DATA DESC, NUMERO DESC"));
}

void TestStampeAnnuali::paidAndDueFiltersAgainstToday()
{
    QCOMPARE(KRVSQLRiepilogoFatture(2026, TCustomBoolean::cbTrue, TCustomBoolean::cbTrue, false, Oggi),
             Fv
                 + QStringLiteral("2026 AND FATT_VEND.PAGATO='True' AND FATT_VEND.SCADENZA_PAGAMENTO < '2026-06-15' "
                                  "ORDER BY DATA DESC, NUMERO DESC"));
    QCOMPARE(KRVSQLRiepilogoFatture(2026, TCustomBoolean::cbFalse, TCustomBoolean::cbFalse, false, Oggi),
             Fv
                 + QStringLiteral("2026 AND FATT_VEND.PAGATO='False' AND FATT_VEND.SCADENZA_PAGAMENTO >= '2026-06-15' "
                                  "ORDER BY DATA DESC, NUMERO DESC"));
}

void TestStampeAnnuali::accompanyingInvoicesOnlyWithTheWarehouse()
{
    const QString sql = KRVSQLRiepilogoFatture(2025, TCustomBoolean::cbFalse, TCustomBoolean::cbNull, true, Oggi);
    QCOMPARE(sql, Fv + QStringLiteral("2025 AND FATT_VEND.PAGATO='False' UNION SELECT NUMERO, DATA, ") + Mesi()
                      + QStringLiteral(
                          "EXTRACT(MONTH FROM DATA) AS MESE_INT, CLI_CODICE, CLI_RAGIONESOCIALE, (CASE WHEN "
                          "PAGATO='True' THEN 'SI' WHEN PAGATO='False' THEN 'NO' END ) AS PAGATO, "
                          "SCADENZA_PAGAMENTO, 'FA' AS TIPO_DOCUMENTO, TOTALE_IMPONIBILE, TOTALE_DOCUMENTO FROM "
                          "FATT_ACC WHERE ANNO=2025 AND FATT_ACC.PAGATO='False' ORDER BY 2 DESC, 1 DESC"));
    QVERIFY(!KRVSQLRiepilogoFatture(2025, TCustomBoolean::cbNull, TCustomBoolean::cbNull, false, Oggi)
                 .contains(QLatin1String("FATT_ACC")));
}

// An invoice whose flag is neither word prints an empty flag and passes
// neither "Pagate" nor "Da pagare".
void TestStampeAnnuali::paidStatesOfTheRows()
{
    const int anno = QDate::currentDate().year();
    Fattura(1, QDate(anno, 1, 10), QStringLiteral("C1"), QStringLiteral("True"));
    Fattura(2, QDate(anno, 2, 10), QStringLiteral("C2"), QStringLiteral("False"));
    Fattura(3, QDate(anno, 3, 10), QStringLiteral("C3"), QStringLiteral("Forse"));
    Fattura(4, QDate(anno - 1, 3, 10), QStringLiteral("C3"), QStringLiteral("True"));
    const QString colonne = QStringLiteral("NUMERO,MESE_DESC,MESE_INT,PAGATO,TIPO_DOCUMENTO");
    const QString dataset = QStringLiteral("adsRiepilogoFatture");
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(anno, TCustomBoolean::cbNull, TCustomBoolean::cbNull); }, dataset,
                   colonne),
             (QStringList{"3|Marzo|3||FV", "2|Febbraio|2|NO|FV", "1|Gennaio|1|SI|FV"}));
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(anno, TCustomBoolean::cbTrue, TCustomBoolean::cbNull); }, dataset,
                   colonne),
             QStringList{"1|Gennaio|1|SI|FV"});
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(anno, TCustomBoolean::cbFalse, TCustomBoolean::cbNull); }, dataset,
                   colonne),
             QStringList{"2|Febbraio|2|NO|FV"});
}

void TestStampeAnnuali::dueStatesOfTheRows()
{
    const QDate oggi = QDate::currentDate();
    const auto data = [](const QDate &d) { return QLatin1Char('\'') + d.toString(Qt::ISODate) + QLatin1Char('\''); };
    Fattura(1, QDate(oggi.year(), 1, 2), QStringLiteral("C1"), QStringLiteral("False"), data(oggi.addDays(-1)));
    Fattura(2, QDate(oggi.year(), 1, 3), QStringLiteral("C1"), QStringLiteral("False"), data(oggi));
    Fattura(3, QDate(oggi.year(), 1, 4), QStringLiteral("C1"), QStringLiteral("False"), data(oggi.addDays(30)));
    Fattura(4, QDate(oggi.year(), 1, 5), QStringLiteral("C1"), QStringLiteral("False"));
    const QString dataset = QStringLiteral("adsRiepilogoFatture");
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(oggi.year(), TCustomBoolean::cbNull, TCustomBoolean::cbTrue); },
                   dataset, QStringLiteral("NUMERO")),
             QStringList{"1"});
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(oggi.year(), TCustomBoolean::cbNull, TCustomBoolean::cbFalse); },
                   dataset, QStringLiteral("NUMERO")),
             (QStringList{"3", "2"}));
}

void TestStampeAnnuali::warehouseInvoicesJoinTheSummary()
{
    TKRVModuloFratello magazzino(QStringLiteral("Magazzino"));
    Db().LoadFixture(QStringLiteral("magazzino.sql"));
    const int anno = QDate::currentDate().year();
    Fattura(1, QDate(anno, 1, 10), QStringLiteral("C1"), QStringLiteral("True"));
    Db().Exec(
        QStringLiteral("INSERT INTO FATT_ACC (IDFATT_ACC, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, PAGATO) "
                       "VALUES (0, 2, '%1-02-10', %1, 'C2', 'Cliente', 'True')")
            .arg(anno));
    QCOMPARE(Righe([&] { StampaRiepilogoFatture(anno, TCustomBoolean::cbTrue, TCustomBoolean::cbNull); },
                   QStringLiteral("adsRiepilogoFatture"), QStringLiteral("NUMERO,TIPO_DOCUMENTO")),
             (QStringList{"2|FA", "1|FV"}));
}

// Customers with invoices in other years only are listed with nothing.
void TestStampeAnnuali::turnoverByCustomerLargestFirst()
{
    KRVInsertCliente(Db(), QStringLiteral("C1"), QStringLiteral("Alfa"));
    KRVInsertCliente(Db(), QStringLiteral("C2"), QStringLiteral("Beta"));
    KRVInsertCliente(Db(), QStringLiteral("C3"), QStringLiteral("Gamma"));
    KRVInsertCliente(Db(), QStringLiteral("C4"), QStringLiteral("Senza fatture"));
    Fattura(1, QDate(2025, 1, 10), QStringLiteral("C1"), QStringLiteral("True"), QStringLiteral("NULL"), 100);
    Fattura(2, QDate(2025, 2, 10), QStringLiteral("C2"), QStringLiteral("True"), QStringLiteral("NULL"), 200);
    Fattura(3, QDate(2025, 3, 10), QStringLiteral("C2"), QStringLiteral("True"), QStringLiteral("NULL"), 100);
    Fattura(1, QDate(2024, 3, 10), QStringLiteral("C3"), QStringLiteral("True"), QStringLiteral("NULL"), 900);
    const QStringList righe = Righe([] { StampaFatturatoPerCliente(2025); }, QStringLiteral("adsFatturatoPerCliente"),
                                    QStringLiteral("CODICE,NUM_DOC,TOTALE_IMPONIBILE,PERC_FATTURATO"));
    QCOMPARE(righe, (QStringList{"C2|2|300|75", "C1|1|100|25", "C3|0|0|0"}));
}

void TestStampeAnnuali::yearWithoutInvoicesDividesByZero()
{
    KRVInsertCliente(Db(), QStringLiteral("C1"), QStringLiteral("Alfa"));
    Fattura(1, QDate(2025, 1, 10), QStringLiteral("C1"), QStringLiteral("True"));
    try {
        QCOMPARE(ModalTitlesWhile([] { StampaFatturatoPerCliente(2020); }), QStringList{});
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QVERIFY(e.Message().startsWith(QStringLiteral("[StampaFatturatoPerCliente]\n\r")));
        QVERIFY2(e.Message().contains(QStringLiteral("divide"), Qt::CaseInsensitive), qPrintable(e.Message()));
    }
}

void TestStampeAnnuali::dialogsKeepTheirChoicesAndPrint()
{
    const int anno = QDate::currentDate().year();
    Fattura(1, QDate(anno - 1, 1, 10), QStringLiteral("C1"), QStringLiteral("True"));
    Fattura(2, QDate(anno - 1, 2, 10), QStringLiteral("C1"), QStringLiteral("False"));
    QStringList finestre;
    QTimer timer;
    timer.setInterval(10);
    connect(&timer, &QTimer::timeout, this, [&finestre] {
        QWidget *modale = QApplication::activeModalWidget();
        if (!modale)
            return;
        finestre << modale->windowTitle();
        if (auto dialogo = qobject_cast<TKRVModStampaRiepilogoFatture *>(modale)) {
            QVERIFY(Field<QRadioButton>(dialogo, QStringLiteral("opzFatturePagatoTutte"))->isChecked()
                    || finestre.size() > 2);
            Field<QSpinBox>(dialogo, QStringLiteral("txtAnno"))->setValue(QDate::currentDate().year() - 1);
            Click(Field<QRadioButton>(dialogo, QStringLiteral("opzFattureDaPagare")));
            Click(Field<QPushButton>(dialogo, QStringLiteral("cmdOk")));
        } else if (auto dialogo = qobject_cast<QDialog *>(modale)) {
            dialogo->reject();
        }
    });
    timer.start();
    m_module->Main->Run(QStringLiteral("actModStampaRiepilogoFatture"));
    QCOMPARE(finestre, (QStringList{"Stampa riepilogo fatture", "Output Options"}));
    TQ3Dataset *righe = m_module->Main->StampeDataset(QStringLiteral("adsRiepilogoFatture"));
    QCOMPARE(righe->RecordCount(), 1);
    QCOMPARE(righe->FieldValue(QStringLiteral("NUMERO")).toInt(), 2);
    timer.stop();
    // Shown again, the dialog keeps the year and the options of last time.
    auto dialogo =
        m_module->Main->FormAs<TKRVModStampaRiepilogoFatture>(QStringLiteral("actModStampaRiepilogoFatture"));
    QCOMPARE(dialogo->Anno(), anno - 1);
    QCOMPARE(dialogo->Pagato(), TCustomBoolean::cbFalse);
    QCOMPARE(dialogo->Scadenza(), TCustomBoolean::cbNull);
    QVERIFY(dialogo->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(dialogo->minimumSize(), dialogo->maximumSize());

    auto fatturato = new TKRVModStampaFatturatoPerCliente;
    QCOMPARE(fatturato->Anno(), anno);
    QCOMPARE(fatturato->windowTitle(), QStringLiteral("Stampa fatturato per cliente"));
    delete fatturato;
}

void TestStampeAnnuali::summaryNeedsTheStatisticsRight()
{
    LoginWithRights(Db(), QStringLiteral("ospite"), {QStringLiteral("Fatture di vendita (visualizzazione)")});
    QCOMPARE(ModalTitlesWhile([this] { m_module->Main->Run(QStringLiteral("actModStampaRiepilogoFatture")); }),
             QStringList{});
    QCOMPARE(ModalTitlesWhile([this] { m_module->Main->Run(QStringLiteral("actModStampaFatturatoPerCliente")); }),
             QStringList{});
    QCOMPARE(m_responder->Messages().size(), 2);
    for (const TQ3Message &box : m_responder->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "Non si dispone di diritti sufficienti per eseguire questa operazione.",
                        Warning, Ok);
}

QTEST_MAIN(TestStampeAnnuali)
#include "tst_stampeannuali.moc"
