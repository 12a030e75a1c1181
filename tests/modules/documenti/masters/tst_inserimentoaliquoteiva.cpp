#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoAliquoteIVA.h"
#include "uKRVRicercaAliquoteIva.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QToolBar>
#include <QToolButton>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoAliquoteIVA");
const QString ActList = QStringLiteral("actRicercaAliquoteIVA");

} // namespace

class TestInserimentoAliquoteIVA : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensAsChildOnABlankNewRecord();
    void savesANewRateWithTheNextKey();
    void percentageLimits_data();
    void percentageLimits();
    void checksComeInOrderWithoutIcon();
    void natureListHoldsTheCurrentCodes();
    void zeroRateWithoutNatureIsRefused();
    void natureAndLegalReferenceAreSavedAndShown();
    void startingZeroRatesWithoutNatureOpenAndAskForOne();
    void unlistedStoredNatureIsKept();
    void codeDifferingOnlyInCaseIsRefused();
    void existingRecordKeepsItsOwnCode();
    void failedSaveCountsAsSavedAndClosesWithoutQuestion();
    void deletingAUsedRate_data();
    void deletingAUsedRate();
    void deleteAnsweredNoKeepsTheRate();
    void deletingANewRecordOnlyBlanks();
    void openingAMissingKeyChangesNothing();
    void afterAMissingKeyTheShownRecordSaves();
    void savingARecordDeletedMeanwhileFails();
    void unsavedChangesAreAskedAbout();
    void closingWithUnsavedChangesAsks();
    void listFollowsSaveAndDelete();
    void closingTheFrameFreesTheWindow();

private:
    TKRVInserimentoAliquoteIVA *Open();
    void Fill(const QString &codice, const QString &descrizione, const QString &aliquota);
    void ChooseNatura(const QString &codice);
    int Generator() const;
    QStringList Rates() const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoAliquoteIVA *m_editor = nullptr;
};

void TestInserimentoAliquoteIVA::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoAliquoteIVA::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_editor = Open();
}

void TestInserimentoAliquoteIVA::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

TKRVInserimentoAliquoteIVA *TestInserimentoAliquoteIVA::Open()
{
    return Run<TKRVInserimentoAliquoteIVA>(*m_module, ActEditor);
}

void TestInserimentoAliquoteIVA::Fill(const QString &codice, const QString &descrizione, const QString &aliquota)
{
    Type(Field(m_editor, QStringLiteral("txtCodice")), codice);
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), descrizione);
    Type(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota")), aliquota);
}

void TestInserimentoAliquoteIVA::ChooseNatura(const QString &codice)
{
    auto natura = Field<QComboBox>(m_editor, QStringLiteral("cboNatura"));
    const int index = natura->findData(codice);
    QVERIFY2(index >= 0, qPrintable(codice));
    natura->setCurrentIndex(index);
}

int TestInserimentoAliquoteIVA::Generator() const
{
    return GetLastGeneratorValue(QStringLiteral("GN_IDALIQUOTA_IVA"), m_module->Database.Db());
}

QStringList TestInserimentoAliquoteIVA::Rates() const
{
    return m_module->Database.Rows(QStringLiteral(
        "SELECT IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA FROM ALIQUOTE_IVA ORDER BY IDALIQUOTA_IVA"));
}

void TestInserimentoAliquoteIVA::opensAsChildOnABlankNewRecord()
{
    QVERIFY(m_editor);
    QVERIFY(m_module->Main->Action(ActEditor)->isEnabled());
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica aliquote IVA"));
    QCOMPARE(m_editor->minimumSize(), QSize(500, 200));
    QCOMPARE(m_editor->size(), QSize(500, 200));
    QVERIFY(qobject_cast<QMdiSubWindow *>(m_editor->parentWidget()));

    auto bar = m_editor->findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    QStringList buttons;
    for (QAction *action : bar->actions())
        buttons << (action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(buttons, (QStringList{"Nuovo", "Elimina", "Salva", "-", "Chiudi"}));
    QCOMPARE(bar->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QCOMPARE(m_editor->actNuovo()->objectName(), QStringLiteral("actNuovo"));

    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->accessibleName(), QStringLiteral("Codice"));
    QCOMPARE(Field(m_editor, QStringLiteral("txtDescrizione"))->accessibleName(), QStringLiteral("Descrizione"));
    auto aliquota = Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota"));
    QCOMPARE(aliquota->accessibleName(), QStringLiteral("Aliquota"));
    QCOMPARE(aliquota->value(), 0.0);
    QCOMPARE(aliquota->cleanText(), QStringLiteral("0"));
    QCOMPARE(aliquota->suffix(), QStringLiteral(" %"));
    QVERIFY(aliquota->alignment() & Qt::AlignRight);
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->maxLength(), 2);
    QCOMPARE(Field(m_editor, QStringLiteral("txtDescrizione"))->maxLength(), 30);

    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->actNuovo()->isEnabled());
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(Field(m_editor, QStringLiteral("txtCodice"))->isEnabled());

    // Running the action again brings the same window forward.
    QCOMPARE(Open(), m_editor);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
}

void TestInserimentoAliquoteIVA::savesANewRateWithTheNextKey()
{
    const int expected = Generator() + 1;
    Fill(QStringLiteral("x2"), QStringLiteral("Aliquota ridotta"), QStringLiteral("10,5"));
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("X2"));
    QVERIFY(m_editor->Modified());
    QVERIFY(m_editor->actSalva()->isEnabled());

    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA FROM ALIQUOTE_IVA "
                                "WHERE CODICE='X2'")),
             QStringList{QStringLiteral("%1|X2|Aliquota ridotta|10.5").arg(expected)});
    QCOMPARE(m_editor->IdRecord(), expected);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->actSalva()->isEnabled());
    QVERIFY(m_editor->actNuovo()->isEnabled());
    QVERIFY(!Field(m_editor, QStringLiteral("txtCodice"))->isEnabled());

    // A second save of the same record updates its row.
    Type(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota")), QStringLiteral("4"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA")).toInt(), 4);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT ALIQUOTA FROM ALIQUOTE_IVA WHERE CODICE='X2'"))
                 .toDouble(),
             4.0);

    // "Nuovo" blanks the window for the next rate.
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(Field(m_editor, QStringLiteral("txtCodice"))->text().isEmpty());
    QVERIFY(Field(m_editor, QStringLiteral("txtCodice"))->isEnabled());
    QCOMPARE(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota"))->value(), 0.0);
}

void TestInserimentoAliquoteIVA::percentageLimits_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<double>("stored");
    QTest::newRow("100") << QStringLiteral("100") << true << 100.0;
    QTest::newRow("0") << QStringLiteral("0") << true << 0.0;
    QTest::newRow("100,01") << QStringLiteral("100,01") << false << 0.0;
    QTest::newRow("-0,01") << QStringLiteral("-0,01") << false << 0.0;
}

void TestInserimentoAliquoteIVA::percentageLimits()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    QFETCH(double, stored);

    Fill(QStringLiteral("PL"), QStringLiteral("Limite"), typed);
    ChooseNatura(QStringLiteral("N1"));
    PressEnter(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota")));
    Trigger(m_editor, QStringLiteral("actSalva"));

    const QString sql = QStringLiteral("SELECT ALIQUOTA FROM ALIQUOTE_IVA WHERE CODICE='PL'");
    if (accepted) {
        QVERIFY(m_boxes->Messages().isEmpty());
        QCOMPARE(m_module->Database.Rows(sql).size(), 1);
        QCOMPARE(m_module->Database.Scalar(sql).toDouble(), stored);
        return;
    }
    // Refused when the field is confirmed, and again by "Salva": nothing is written.
    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Attenzione", "L'aliquota IVA deve essere compresa tra 0 e 100!", None, Ok);
    QVERIFY(m_module->Database.Rows(sql).isEmpty());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
}

void TestInserimentoAliquoteIVA::checksComeInOrderWithoutIcon()
{
    const QStringList before = Rates();
    // Nothing to save on a clean new record: "Salva" is disabled.
    QVERIFY(!Action(m_editor, QStringLiteral("actSalva"))->isEnabled());

    Fill(QString(), QStringLiteral("Manca il codice"), QStringLiteral("5"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Fill(QString(), QString(), QStringLiteral("5"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Fill(QStringLiteral(" "), QString(), QStringLiteral("5"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    Fill(QStringLiteral("20"), QStringLiteral("Doppia"), QStringLiteral("5"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 4);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stato indicato il codice!", None, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Attenzione", "Non è stato indicato il codice!", None, Ok);
    // A blank code passes the first check: the text is taken as typed.
    KRV_COMPARE_BOX(m_boxes->Messages().at(2), "Attenzione", "Non è stata indicata la descrizione!", None, Ok);
    KRV_COMPARE_BOX(m_boxes->Messages().at(3), "Attenzione", "Codice già utilizzato!", None, Ok);
    QCOMPARE(Rates(), before);
    QVERIFY(m_editor->Modified());
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoAliquoteIVA::natureListHoldsTheCurrentCodes()
{
    auto natura = Field<QComboBox>(m_editor, QStringLiteral("cboNatura"));
    QCOMPARE(natura->accessibleName(), QStringLiteral("Natura"));
    QStringList codes;
    for (int i = 0; i < natura->count(); ++i)
        codes << natura->itemData(i).toString();
    QCOMPARE(codes, (QStringList{"",   "N1",   "N2.1", "N2.2", "N3.1", "N3.2", "N3.3", "N3.4", "N3.5", "N3.6", "N4",
                                 "N5", "N6.1", "N6.2", "N6.3", "N6.4", "N6.5", "N6.6", "N6.7", "N6.8", "N6.9", "N7"}));
    QCOMPARE(natura->currentIndex(), 0);
    QCOMPARE(natura->itemText(0), QString());
    QCOMPARE(natura->itemText(10), QStringLiteral("N4 - Esenti"));
    QCOMPARE(natura->itemText(4), QStringLiteral("N3.1 - Non imponibili - esportazioni"));
    auto riferimento = Field(m_editor, QStringLiteral("txtRiferimentoNormativo"));
    QCOMPARE(riferimento->accessibleName(), QStringLiteral("Riferimento normativo"));
    QCOMPARE(riferimento->maxLength(), 100);
}

void TestInserimentoAliquoteIVA::zeroRateWithoutNatureIsRefused()
{
    const QStringList before = Rates();
    Fill(QStringLiteral("E0"), QStringLiteral("Esente"), QStringLiteral("0"));
    Type(Field(m_editor, QStringLiteral("txtRiferimentoNormativo")), QStringLiteral("Art. 10 DPR 633/72"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                    "Per un'aliquota dello 0% indicare la natura dell'operazione.", None, Ok);
    QCOMPARE(Rates(), before);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());

    // Once the nature is chosen the same record is saved.
    m_boxes->Clear();
    ChooseNatura(QStringLiteral("N4"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT CODICE, NATURA, RIFERIMENTO_NORMATIVO FROM ALIQUOTE_IVA WHERE CODICE='E0'")),
             QStringList{QStringLiteral("E0|N4|Art. 10 DPR 633/72")});
}

void TestInserimentoAliquoteIVA::natureAndLegalReferenceAreSavedAndShown()
{
    Fill(QStringLiteral("NI"), QStringLiteral("Non imponibile art. 8"), QStringLiteral("0"));
    ChooseNatura(QStringLiteral("N3.1"));
    Type(Field(m_editor, QStringLiteral("txtRiferimentoNormativo")), QStringLiteral("Art. 8 c.1 lett. a) DPR 633/72"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    const int id = m_editor->IdRecord();
    QCOMPARE(m_module->Database.Rows(QStringLiteral(
                 "SELECT CODICE, ALIQUOTA, NATURA, RIFERIMENTO_NORMATIVO FROM ALIQUOTE_IVA WHERE CODICE='NI'")),
             QStringList{QStringLiteral("NI|0|N3.1|Art. 8 c.1 lett. a) DPR 633/72")});

    // A non-zero rate needs no nature; "Nuovo" blanks both fields.
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboNatura"))->currentIndex(), 0);
    QVERIFY(Field(m_editor, QStringLiteral("txtRiferimentoNormativo"))->text().isEmpty());
    Fill(QStringLiteral("R5"), QStringLiteral("Ridotta"), QStringLiteral("5"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT NATURA, RIFERIMENTO_NORMATIVO FROM ALIQUOTE_IVA WHERE CODICE='R5'")),
             QStringList{QStringLiteral("|")});

    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboNatura"))->currentData().toString(), QStringLiteral("N3.1"));
    QCOMPARE(Field(m_editor, QStringLiteral("txtRiferimentoNormativo"))->text(),
             QStringLiteral("Art. 8 c.1 lett. a) DPR 633/72"));
    QVERIFY(!m_editor->Modified());
}

// The zero rates every database starts with ("N0", "N1") carry no nature:
// they open as they are, and a change is saved once a nature is chosen.
void TestInserimentoAliquoteIVA::startingZeroRatesWithoutNatureOpenAndAskForOne()
{
    const int id =
        m_module->Database.Scalar(QStringLiteral("SELECT IDALIQUOTA_IVA FROM ALIQUOTE_IVA WHERE CODICE = 'N0'"))
            .toInt();
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT ALIQUOTA, NATURA FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = ")
                                     + QString::number(id)),
             QStringList{QStringLiteral("0|")});
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboNatura"))->currentIndex(), 0);
    QVERIFY(m_boxes->Messages().isEmpty());

    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Esente art. 10"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                    "Per un'aliquota dello 0% indicare la natura dell'operazione.", None, Ok);
    ChooseNatura(QStringLiteral("N4"));
    m_boxes->Clear();
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT DESCRIZIONE, NATURA FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = ")
                 + QString::number(id)),
             QStringList{QStringLiteral("Esente art. 10|N4")});
}

void TestInserimentoAliquoteIVA::unlistedStoredNatureIsKept()
{
    // A generic code written before the 2021 codes is shown and saved again as stored.
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (CODICE, DESCRIZIONE, ALIQUOTA, NATURA) "
                                           "VALUES ('N2', 'Non soggetta', 0, 'N2')"));
    const int id = Generator();
    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(Field<QComboBox>(m_editor, QStringLiteral("cboNatura"))->currentData().toString(), QStringLiteral("N2"));
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Non soggetta IVA"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT DESCRIZIONE, NATURA FROM ALIQUOTE_IVA WHERE CODICE = 'N2'")),
             QStringList{QStringLiteral("Non soggetta IVA|N2")});
}

void TestInserimentoAliquoteIVA::codeDifferingOnlyInCaseIsRefused()
{
    m_module->Database.Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) "
                                           "VALUES (50, 'ab', 'Minuscola', 4)"));
    const QStringList before = Rates();
    Fill(QStringLiteral("AB"), QStringLiteral("Maiuscola"), QStringLiteral("4"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione", "Codice già utilizzato!", None, Ok);
    QCOMPARE(Rates(), before);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(m_editor->Modified());
}

void TestInserimentoAliquoteIVA::existingRecordKeepsItsOwnCode()
{
    QCOMPARE(m_editor->ApriRecord(1), 0);
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("20"));
    QCOMPARE(Field(m_editor, QStringLiteral("txtDescrizione"))->text(), QStringLiteral("Aliquota standard"));
    QCOMPARE(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota"))->value(), 20.0);
    QCOMPARE(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota"))->text(), QStringLiteral("20,00 %"));
    QVERIFY(!Field(m_editor, QStringLiteral("txtCodice"))->isEnabled());
    QVERIFY(!m_editor->Modified());

    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Aliquota ordinaria"));
    Type(Field<QDoubleSpinBox>(m_editor, QStringLiteral("txtAliquota")), QStringLiteral("22"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Rates().first(), QStringLiteral("1|20|Aliquota ordinaria|22"));
    QCOMPARE(Rates().size(), 3);
    QCOMPARE(m_editor->IdRecord(), 1);
}

void TestInserimentoAliquoteIVA::failedSaveCountsAsSavedAndClosesWithoutQuestion()
{
    // The generator behind its rows: the new key is one a row already has.
    m_module->Database.Exec(QStringLiteral("SET GENERATOR GN_IDALIQUOTA_IVA TO 0"));
    const QStringList before = Rates();
    Fill(QStringLiteral("ZZ"), QStringLiteral("Non entrera"), QStringLiteral("7"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    None, Ok);
    QCOMPARE(Rates(), before);
    QCOMPARE(m_editor->IdRecord(), 1);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->actSalva()->isEnabled());

    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!m_module->Main->Form(ActEditor));
}

void TestInserimentoAliquoteIVA::deletingAUsedRate_data()
{
    QTest::addColumn<QString>("user");
    QTest::newRow("riga di fattura") << QStringLiteral("FATT_VEND_DETT");
    QTest::newRow("riga di nota di accredito") << QStringLiteral("NOTE_ACCREDITO_DETT");
    QTest::newRow("articolo") << QStringLiteral("ANA_MAGA");
    QTest::newRow("servizio") << QStringLiteral("SERVIZI");
}

// The delete rule never reads its count (it always allows), so a rate in use
// is deleted like any other once the user confirms.
void TestInserimentoAliquoteIVA::deletingAUsedRate()
{
    QFETCH(QString, user);
    const TQ3TestDatabase &db = m_module->Database;
    if (user == QLatin1String("FATT_VEND_DETT"))
        KRVInsertRiga(db, user, KRVInsertDocumento(db, QStringLiteral("FATT_VEND"), 1, 2024),
                      QStringLiteral("Articolo"), QStringLiteral("A1"), 1, 2, 1);
    else if (user == QLatin1String("NOTE_ACCREDITO_DETT"))
        KRVInsertRiga(db, user, KRVInsertDocumento(db, QStringLiteral("NOTE_ACCREDITO"), 1, 2024),
                      QStringLiteral("Articolo"), QStringLiteral("A1"), 1, 2, 1);
    else if (user == QLatin1String("ANA_MAGA"))
        KRVInsertArticolo(db, QStringLiteral("A1"), 1, 2);
    else
        KRVInsertServizio(db, QStringLiteral("S1"), 1, 2);

    QCOMPARE(m_editor->ApriRecord(2), 0);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA=2")).toInt(), 0);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + user + QStringLiteral(" WHERE ")
                       + (user.endsWith(QLatin1String("_DETT")) ? QStringLiteral("IVA_IDALIQUOTA_IVA")
                                                                : QStringLiteral("IDALIQUOTA_IVA"))
                       + QStringLiteral("=2"))
                 .toInt(),
             1);
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(Field(m_editor, QStringLiteral("txtCodice"))->text().isEmpty());
}

void TestInserimentoAliquoteIVA::deleteAnsweredNoKeepsTheRate()
{
    QCOMPARE(m_editor->ApriRecord(3), 0);
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(Rates().size(), 3);
    QCOMPARE(m_editor->IdRecord(), 3);
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("N1"));
}

void TestInserimentoAliquoteIVA::deletingANewRecordOnlyBlanks()
{
    Fill(QStringLiteral("NN"), QStringLiteral("Mai salvata"), QStringLiteral("3"));
    Trigger(m_editor, QStringLiteral("actElimina"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Rates().size(), 3);
    QVERIFY(Field(m_editor, QStringLiteral("txtCodice"))->text().isEmpty());
    QVERIFY(Field(m_editor, QStringLiteral("txtDescrizione"))->text().isEmpty());
    QVERIFY(!m_editor->Modified());
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoAliquoteIVA::openingAMissingKeyChangesNothing()
{
    QCOMPARE(m_editor->ApriRecord(1), 0);
    QCOMPARE(m_editor->ApriRecord(999), -1);

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_editor->IdRecord(), 1);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("20"));
    QCOMPARE(Field(m_editor, QStringLiteral("txtDescrizione"))->text(), QStringLiteral("Aliquota standard"));
}

void TestInserimentoAliquoteIVA::afterAMissingKeyTheShownRecordSaves()
{
    QCOMPARE(m_editor->ApriRecord(1), 0);
    QCOMPARE(m_editor->ApriRecord(999), -1);
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Ancora mia"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT DESCRIZIONE FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = 1"))
                 .toString(),
             QStringLiteral("Ancora mia"));
    QCOMPARE(m_editor->IdRecord(), 1);
}

void TestInserimentoAliquoteIVA::savingARecordDeletedMeanwhileFails()
{
    Fill(QStringLiteral("ZZ"), QStringLiteral("Di passaggio"), QStringLiteral("7"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    const int id = m_editor->IdRecord();
    QCOMPARE(m_editor->ApriRecord(id), 0);
    // Another workstation deletes the rate while it is shown.
    m_module->Database.Exec(QStringLiteral("DELETE FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = %1").arg(id));
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Non salvata"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Errore", "Si è verificato un errore durante il salvataggio dei dati!",
                    None, Ok);
    QCOMPARE(m_module->Database
                 .Scalar(QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE IDALIQUOTA_IVA = %1").arg(id))
                 .toInt(),
             0);
}

void TestInserimentoAliquoteIVA::unsavedChangesAreAskedAbout()
{
    QCOMPARE(m_editor->ApriRecord(1), 0);
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("In sospeso"));

    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actNuovo"));
    m_boxes->Enqueue(TQ3MsgResult::No);
    QCOMPARE(m_editor->ApriRecord(2), -1);

    QCOMPARE(m_boxes->Messages().size(), 2);
    for (const TQ3Message &box : m_boxes->Messages())
        KRV_COMPARE_BOX(box, "Conferma", "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question,
                        YesNo);
    QCOMPARE(m_editor->IdRecord(), 1);
    QCOMPARE(Field(m_editor, QStringLiteral("txtDescrizione"))->text(), QStringLiteral("In sospeso"));
    QVERIFY(m_editor->Modified());

    m_boxes->Enqueue(TQ3MsgResult::Yes);
    QCOMPARE(m_editor->ApriRecord(2), 0);
    QCOMPARE(Field(m_editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("N0"));
    QVERIFY(!m_editor->Modified());

    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Cambiata"));
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(m_boxes->Messages().size(), 4);
    QVERIFY(m_editor->NewRecord());
    QVERIFY(Field(m_editor, QStringLiteral("txtDescrizione"))->text().isEmpty());
    QCOMPARE(Rates().mid(0, 2), (QStringList{"1|20|Aliquota standard|20", "2|N0|Aliquota esente|0"}));
}

void TestInserimentoAliquoteIVA::closingWithUnsavedChangesAsks()
{
    Type(Field(m_editor, QStringLiteral("txtDescrizione")), QStringLiteral("Qualcosa"));
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actChiudi"));
    ProcessDeletes();

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma",
                    "Ci sono delle modifiche non salvate.\n\rContinuare comunque?", Question, YesNo);
    QCOMPARE(m_module->Main->Form(ActEditor), m_editor);
    QVERIFY(m_editor->isVisible());

    m_boxes->Enqueue(TQ3MsgResult::Yes);
    CloseFrame(m_editor);
    QCOMPARE(m_boxes->Messages().size(), 2);
    QVERIFY(!m_module->Main->Form(ActEditor));
    QVERIFY(m_module->MainForm->MdiArea()->subWindowList().isEmpty());
}

void TestInserimentoAliquoteIVA::listFollowsSaveAndDelete()
{
    auto list = Run<TKRVRicercaAliquoteIva>(*m_module, ActList);
    QVERIFY(list);
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"20", "N0", "N1"}));

    m_editor = Open();
    Fill(QStringLiteral("R4"), QStringLiteral("Ridotta"), QStringLiteral("4"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"20", "N0", "N1", "R4"}));
    QCOMPARE(list->GridRisultati()->Testo(3, 3), QStringLiteral("4,00 %"));

    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(Column(list->GridRisultati(), 1), (QStringList{"20", "N0", "N1"}));
    KRV_COMPARE_BOX(m_boxes->Messages().last(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
}

void TestInserimentoAliquoteIVA::closingTheFrameFreesTheWindow()
{
    QPointer<QWidget> editor = m_editor;
    CloseFrame(m_editor);
    QVERIFY(m_boxes->Messages().isEmpty());
    QVERIFY(!editor);
    QVERIFY(!m_module->Main->Form(ActEditor));

    m_editor = Open();
    QVERIFY(m_editor);
    QVERIFY(m_editor->isVisible());
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
}

QTEST_MAIN(TestInserimentoAliquoteIVA)
#include "tst_inserimentoaliquoteiva.moc"
