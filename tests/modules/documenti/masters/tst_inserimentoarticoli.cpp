#include "KRVCatalogoTestKit.h"
#include "KRVMastersTestKit.h"
#include "uKRVInserimentoArticoli.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaUM.h"
#include "uKRVRicercaArticoli.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolButton>

using namespace KRVTest;

namespace {

const QString ActEditor = QStringLiteral("actInserimentoArticoli");
const QString ActIva = QStringLiteral("actModSelezionaAliquotaIVA");
const QString ActUM = QStringLiteral("actModSelezionaUM");

} // namespace

class TestInserimentoArticoli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensOnANewArticleWithAProposedCode();
    void savingUntouchedStoresTheProposedCode();
    void vatRateIsCheckedBeforeTheUnit();
    void checksComeInOrder();
    void cancelInTheVatDialogChangesNothing();
    void openingShowsTheStoredRateAndUnit();
    void deletingANewArticleAsksThenOnlyBlanks();
    void deletingASavedArticleRefreshesTheList();
    void deletingAnArticleInUsePassesTheRule();
    void closingModifiedAndCancelKeepsItOpen();
    void closingModifiedAndYesSavesThenCloses();
    void closingModifiedAndNoClosesWithoutSaving();
    void thresholdsFollowTheDescription();
    void storedThresholdsSurviveAnotherEdit();
    void typedThresholdsAreStored();
    void failedDeleteIsReportedAndTheWindowBlanks();
    void newArticleKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile();
    void deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsArticle();

private:
    template <typename T = QLineEdit>
    T *F(const QString &name) const
    {
        return Field<T>(m_editor, name);
    }
    QString ProposedCode() const;
    void ChooseVat(const QString &code);
    void ChooseUnit(const QString &unit);
    void FillValid(const QString &description);

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVInserimentoArticoli *m_editor = nullptr;
};

void TestInserimentoArticoli::initTestCase()
{
    UseItalianLocale();
}

void TestInserimentoArticoli::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_editor = Run<TKRVInserimentoArticoli>(*m_module, ActEditor);
}

void TestInserimentoArticoli::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

QString TestInserimentoArticoli::ProposedCode() const
{
    return GetCustomCodice(GetLastGeneratorValue(QStringLiteral("GN_IDANA_MAGA"), m_module->Database.Db()) + 1,
                           QStringLiteral("ART"), QString(), 10);
}

void TestInserimentoArticoli::ChooseVat(const QString &code)
{
    Trigger(m_module->Main->Action(ActIva));
    auto dialog = m_module->Main->FormAs<TKRVModSelezionaAliquotaIVA>(ActIva);
    WhileModal(dialog, [dialog, code] {
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, code));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QTest::mouseClick(F<QToolButton>(QStringLiteral("cmdSelezionaAliquotaIVA")), Qt::LeftButton);
}

void TestInserimentoArticoli::ChooseUnit(const QString &unit)
{
    Trigger(m_module->Main->Action(ActUM));
    auto dialog = m_module->Main->FormAs<TKRVModSelezionaUM>(ActUM);
    WhileModal(dialog, [dialog, unit] {
        SelectRow(dialog->gridRisultati(), RowOf(dialog->gridRisultati(), 1, unit));
        Trigger(dialog, QStringLiteral("actOK"));
    });
    QTest::mouseClick(F<QToolButton>(QStringLiteral("cmdSelezionaUM")), Qt::LeftButton);
}

void TestInserimentoArticoli::FillValid(const QString &description)
{
    Type(F(QStringLiteral("txtDescrizione")), description);
    F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->SelezionaCategoria(1);
    ChooseVat(QStringLiteral("20"));
    ChooseUnit(QStringLiteral("PEZZI"));
}

void TestInserimentoArticoli::opensOnANewArticleWithAProposedCode()
{
    QVERIFY(m_editor);
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("Inserimento / Modifica articoli"));
    QCOMPARE(m_editor->minimumSize(), QSize(750, 550));
    QCOMPARE(m_editor->size(), QSize(750, 550));
    auto pages = F<QTabWidget>(QStringLiteral("pgPagine"));
    QCOMPARE(pages->count(), 2);
    QCOMPARE(pages->tabText(0), QStringLiteral(" Generale "));
    QCOMPARE(pages->tabText(1), QStringLiteral(" Note "));
    QCOMPARE(pages->currentIndex(), 0);

    QCOMPARE(F(QStringLiteral("txtCodice"))->text(), ProposedCode());
    QVERIFY(F(QStringLiteral("txtCodice"))->text().startsWith(QStringLiteral("ART")));
    QCOMPARE(F(QStringLiteral("txtCodice"))->text().size(), 10);
    QCOMPARE(F(QStringLiteral("txtCodice"))->maxLength(), 20);
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->maxLength(), 100);
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtSottoscorta"))->text(), QStringLiteral("0"));
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtRiordino"))->text(), QStringLiteral("0"));
    QCOMPARE(F<QDoubleSpinBox>(QStringLiteral("txtPrezzo"))->text(), QStringLiteral("0,00"));
    QCOMPARE(F<QDoubleSpinBox>(QStringLiteral("txtCosto"))->text(), QStringLiteral("0,00"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("..."));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("..."));
    QCOMPARE(m_editor->AliquotaIVA()->Tag(), 0);
    QCOMPARE(m_editor->UM()->Tag(), 0);
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->accessibleName(), QStringLiteral("Aliquota IVA"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->accessibleName(), QStringLiteral("Unità di misura"));
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtSottoscorta"))->accessibleName(), QStringLiteral("Sottoscorta"));

    // The category box holds the tree, with folder images, and nothing chosen.
    auto categoria = F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"));
    QCOMPARE(categoria->Albero()->topLevelItemCount(), 1);
    QCOMPARE(categoria->Albero()->topLevelItem(0)->text(0), QStringLiteral("Altro"));
    QVERIFY(!categoria->Albero()->topLevelItem(0)->icon(0).isNull());
    QCOMPARE(categoria->Categoria(), -1);
    QVERIFY(categoria->currentText().isEmpty());

    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QCOMPARE(m_editor->IdRecord(), -1);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestInserimentoArticoli::savingUntouchedStoresTheProposedCode()
{
    const QString code = ProposedCode();
    const int expected = GetLastGeneratorValue(QStringLiteral("GN_IDANA_MAGA"), m_module->Database.Db()) + 1;
    FillValid(QStringLiteral("Vite M6"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("20(20%)"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->accessibleName(), QStringLiteral("Aliquota IVA"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->accessibleDescription(), QStringLiteral("20(20%)"));
    QCOMPARE(m_editor->AliquotaIVA()->Tag(), 1);
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("PEZZI"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->accessibleDescription(), QStringLiteral("PEZZI"));
    QCOMPARE(m_editor->UM()->Tag(), 1);
    Type(F<QSpinBox>(QStringLiteral("txtSottoscorta")), QStringLiteral("3"));
    Type(F<QSpinBox>(QStringLiteral("txtRiordino")), QStringLiteral("12"));
    Type(F<QDoubleSpinBox>(QStringLiteral("txtPrezzo")), QStringLiteral("1,5"));
    Type(F<QDoubleSpinBox>(QStringLiteral("txtCosto")), QStringLiteral("0,75"));
    F<QPlainTextEdit>(QStringLiteral("txtNote"))->setPlainText(QStringLiteral("Zincata"));
    QVERIFY(m_editor->Modified());

    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, "
                                                    "IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, IDALIQUOTA_IVA, IDUM, NOTE "
                                                    "FROM ANA_MAGA")),
             QStringList{QStringLiteral("%1|%2|Vite M6|3|12|1|1.5|0.75|1|1|Zincata").arg(expected).arg(code)});
    QCOMPARE(m_editor->IdRecord(), expected);
    QVERIFY(!m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());

    // The next new article proposes the next number.
    Trigger(m_editor, QStringLiteral("actNuovo"));
    QCOMPARE(F(QStringLiteral("txtCodice"))->text(),
             GetCustomCodice(expected + 1, QStringLiteral("ART"), QString(), 10));
}

void TestInserimentoArticoli::vatRateIsCheckedBeforeTheUnit()
{
    // Choosing a category alone marks the record modified.
    F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->SelezionaCategoria(1);
    QVERIFY(m_editor->Modified());
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Senza IVA"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stata indicata l'aliquota IVA!", Warning, Ok);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), 0);
    QVERIFY(m_editor->Modified());
    QVERIFY(m_editor->NewRecord());
}

void TestInserimentoArticoli::checksComeInOrder()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("DOPPIO"), QStringLiteral("Esistente"));
    const auto save = [this] {
        m_boxes->Clear();
        Trigger(m_editor, QStringLiteral("actSalva"));
        return m_boxes->Messages().size() == 1 ? m_boxes->Messages().at(0).Text : QString();
    };
    Type(F(QStringLiteral("txtCodice")), QString());
    QCOMPARE(save(), QStringLiteral("Non è stato indicato il codice!"));
    Type(F(QStringLiteral("txtCodice")), QStringLiteral("doppio"));
    QCOMPARE(save(), QStringLiteral("Non è stata indicata la descrizione!"));
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Nuovo"));
    QCOMPARE(save(), QStringLiteral("Non è stata indicata la categoria!"));
    F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->SelezionaCategoria(1);
    QCOMPARE(save(), QStringLiteral("Codice già utilizzato!"));
    Type(F(QStringLiteral("txtCodice")), QStringLiteral("UNICO"));
    QCOMPARE(save(), QStringLiteral("Non è stata indicata l'aliquota IVA!"));
    ChooseVat(QStringLiteral("N0"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("N0(0%)"));
    QCOMPARE(save(), QStringLiteral("Non è stata indicata l'unità di misura!"));
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Attenzione", "Non è stata indicata l'unità di misura!", Warning, Ok);
    ChooseUnit(QStringLiteral("KG"));
    QCOMPARE(save(), QString());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT IDALIQUOTA_IVA, IDUM FROM ANA_MAGA WHERE CODICE='UNICO'")),
             QStringList{QStringLiteral("2|4")});
}

void TestInserimentoArticoli::cancelInTheVatDialogChangesNothing()
{
    Trigger(m_module->Main->Action(ActIva));
    auto dialog = m_module->Main->FormAs<TKRVModSelezionaAliquotaIVA>(ActIva);
    WhileModal(dialog, [dialog] { Trigger(dialog, QStringLiteral("actAnnulla")); });
    QTest::mouseClick(F<QToolButton>(QStringLiteral("cmdSelezionaAliquotaIVA")), Qt::LeftButton);
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("..."));
    QCOMPARE(m_editor->AliquotaIVA()->Tag(), 0);
    QVERIFY(!m_editor->Modified());
}

void TestInserimentoArticoli::openingShowsTheStoredRateAndUnit()
{
    const int parent = InsertCategoria(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("Ferramenta"));
    const int child = InsertCategoria(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("Viti"), parent);
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("V01"), QStringLiteral("Vite"), child);
    // The tree was read when the window opened: a new window reads the new categories.
    CloseFrame(m_editor);
    m_editor = Run<TKRVInserimentoArticoli>(*m_module, ActEditor);

    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(F(QStringLiteral("txtCodice"))->text(), QStringLiteral("V01"));
    QCOMPARE(F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->Categoria(), child);
    QCOMPARE(F<TKRVCategoriaBox>(QStringLiteral("txtCategoria"))->currentText(), QStringLiteral("Viti"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtAliquotaIVA"))->text(), QStringLiteral("20(20%)"));
    QCOMPARE(F<QLabel>(QStringLiteral("txtUM"))->text(), QStringLiteral("PEZZI"));
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtSottoscorta"))->value(), 5);
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtRiordino"))->value(), 10);
    QCOMPARE(F<QDoubleSpinBox>(QStringLiteral("txtPrezzo"))->text(), QStringLiteral("12,50"));
    QVERIFY(!m_editor->Modified());
    QVERIFY(!m_editor->NewRecord());

    // An edit of the saved row keeps its key.
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Vite lunga"));
    Trigger(m_editor, QStringLiteral("actSalva"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT IDANA_MAGA, DESCRIZIONE, IDCATEGORIA_ANA_MAGA FROM ANA_MAGA")),
             QStringList{QStringLiteral("%1|Vite lunga|%2").arg(id).arg(child)});
}

void TestInserimentoArticoli::deletingANewArticleAsksThenOnlyBlanks()
{
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("ALTRO"), QStringLiteral("Resta"));
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Mai salvato"));
    m_boxes->Enqueue(TQ3MsgResult::Yes);

    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QVERIFY(F(QStringLiteral("txtDescrizione"))->text().isEmpty());
    QCOMPARE(F(QStringLiteral("txtCodice"))->text(), ProposedCode());
    QVERIFY(m_editor->NewRecord());
    QVERIFY(!m_editor->Modified());
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), 1);

    // Answering No keeps what the window shows.
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Tenuto"));
    m_boxes->Clear();
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_editor, QStringLiteral("actElimina"));
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->text(), QStringLiteral("Tenuto"));
}

void TestInserimentoArticoli::deletingASavedArticleRefreshesTheList()
{
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("VIA"), QStringLiteral("Da togliere"));
    InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("RESTA"), QStringLiteral("Resta"));
    auto list = Run<TKRVRicercaArticoli>(*m_module, QStringLiteral("actRicercaArticoli"));
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(list->GridRisultati()->rowCount(), 2);
    m_editor = Run<TKRVInserimentoArticoli>(*m_module, ActEditor);
    QCOMPARE(m_editor->ApriRecord(id), 0);
    m_boxes->Enqueue(TQ3MsgResult::Yes);

    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE FROM ANA_MAGA")),
             QStringList{QStringLiteral("RESTA")});
    QCOMPARE(Column(list->GridRisultati(), 1), QStringList{QStringLiteral("RESTA")});
    QVERIFY(m_editor->NewRecord());
    QCOMPARE(m_editor->IdRecord(), -1);
}

void TestInserimentoArticoli::deletingAnArticleInUsePassesTheRule()
{
    // The delete rule composes its count but never reads it: it lets every
    // article go, and the question is asked.
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("USATO"), QStringLiteral("In fattura"));
    const int fattura = KRVInsertDocumento(m_module->Database, QStringLiteral("FATT_VEND"), 1, 2024);
    KRVInsertRiga(m_module->Database, QStringLiteral("FATT_VEND_DETT"), fattura, QStringLiteral("Articolo"),
                  QStringLiteral("usato"));
    QCOMPARE(m_editor->ApriRecord(id), 0);
    m_boxes->Enqueue(TQ3MsgResult::No);

    Trigger(m_editor, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), 1);
    QCOMPARE(m_editor->IdRecord(), id);
}

void TestInserimentoArticoli::closingModifiedAndCancelKeepsItOpen()
{
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("In corso"));
    m_boxes->Enqueue(TQ3MsgResult::Cancel);
    QPointer<TKRVInserimentoArticoli> editor(m_editor);

    CloseFrame(m_editor);

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().at(0), "Conferma",
                    "Salvare le modifiche al record corrente\n\rprima di continuare?", Question, YesNoCancel);
    QVERIFY(editor);
    QVERIFY(editor->isVisible());
    QCOMPARE(F(QStringLiteral("txtDescrizione"))->text(), QStringLiteral("In corso"));
    QVERIFY(editor->Modified());
    QCOMPARE(m_module->Main->Form(ActEditor), editor.data());
}

void TestInserimentoArticoli::closingModifiedAndYesSavesThenCloses()
{
    FillValid(QStringLiteral("Salvato chiudendo"));
    m_boxes->Enqueue(TQ3MsgResult::Yes);
    QPointer<TKRVInserimentoArticoli> editor(m_editor);

    CloseFrame(m_editor);

    QCOMPARE(m_boxes->Messages().size(), 1);
    QVERIFY(!editor);
    QVERIFY(!m_module->Main->Form(ActEditor));
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT DESCRIZIONE FROM ANA_MAGA")),
             QStringList{QStringLiteral("Salvato chiudendo")});
}

void TestInserimentoArticoli::closingModifiedAndNoClosesWithoutSaving()
{
    FillValid(QStringLiteral("Perso"));
    m_boxes->Enqueue(TQ3MsgResult::No);
    QPointer<TKRVInserimentoArticoli> editor(m_editor);

    CloseFrame(m_editor);

    QVERIFY(!editor);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM ANA_MAGA")).toInt(), 0);
}

void TestInserimentoArticoli::thresholdsFollowTheDescription()
{
    auto form = qobject_cast<QFormLayout *>(F(QStringLiteral("txtCodice"))->parentWidget()->layout());
    QVERIFY(form);
    QStringList order;
    for (int row = 0; row < form->rowCount(); ++row) {
        // A chosen value's row holds its label and button: it goes by the label's name.
        QWidget *field = form->itemAt(row, QFormLayout::FieldRole)->widget();
        order << (field->objectName().isEmpty() ? field->findChild<QLabel *>()->objectName() : field->objectName());
    }
    QCOMPARE(order, (QStringList{"txtCodice", "txtDescrizione", "txtSottoscorta", "txtRiordino", "txtCategoria",
                                 "txtPrezzo", "txtCosto", "txtAliquotaIVA", "txtUM"}));
}

void TestInserimentoArticoli::storedThresholdsSurviveAnotherEdit()
{
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("S01"), QStringLiteral("Soglie"));
    m_module->Database.Exec(
        QStringLiteral("UPDATE ANA_MAGA SET SOTTOSCORTA = 2.5, RIORDINO = -3 WHERE IDANA_MAGA = %1").arg(id));

    QCOMPARE(m_editor->ApriRecord(id), 0);
    QCOMPARE(F<QSpinBox>(QStringLiteral("txtRiordino"))->value(), -3);
    Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Solo la descrizione"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(
                 QStringLiteral("SELECT DESCRIZIONE, SOTTOSCORTA * 10, RIORDINO * 10 FROM ANA_MAGA")),
             QStringList{QStringLiteral("Solo la descrizione|25|-30")});
}

void TestInserimentoArticoli::typedThresholdsAreStored()
{
    const int id =
        InsertVoce(m_module->Database, KRVCatalogoArticoli(), QStringLiteral("S02"), QStringLiteral("Soglie"));
    m_module->Database.Exec(QStringLiteral("UPDATE ANA_MAGA SET SOTTOSCORTA = 2.5 WHERE IDANA_MAGA = %1").arg(id));

    QCOMPARE(m_editor->ApriRecord(id), 0);
    Type(F<QSpinBox>(QStringLiteral("txtSottoscorta")), QStringLiteral("7"));
    Type(F<QSpinBox>(QStringLiteral("txtRiordino")), QStringLiteral("12"));
    Trigger(m_editor, QStringLiteral("actSalva"));

    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT SOTTOSCORTA * 10, RIORDINO * 10 FROM ANA_MAGA")),
             QStringList{QStringLiteral("70|120")});
}

void TestInserimentoArticoli::failedDeleteIsReportedAndTheWindowBlanks()
{
    VerifyFailedDeleteBlanks(m_module->Database, KRVCatalogoArticoli(), m_editor, *m_boxes);
}

void TestInserimentoArticoli::newArticleKeepsItsOwnKeyWhenAnotherWorkstationInsertsMeanwhile()
{
    const TKRVCatalogo &articoli = KRVCatalogoArticoli();
    FillValid(QStringLiteral("Vite M6"));
    SaveChangeDeleteBesideAnotherWorkstation(*m_module, m_editor, articoli.Entita.Tabella, articoli.Entita.Chiave,
                                             InsertVoceSQL(articoli, QuotedStr(QStringLiteral("ALTRO")),
                                                           QStringLiteral("Altra postazione"), 1, QStringLiteral("2")),
                                             [this] {
                                                 Type(F(QStringLiteral("txtDescrizione")), QStringLiteral("Vite M8"));
                                             });
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Rows(QStringLiteral("SELECT CODICE, DESCRIZIONE FROM ANA_MAGA")),
             QStringList{QStringLiteral("ALTRO|Altra postazione")});
}

void TestInserimentoArticoli::deletingAfterAFailedFirstSaveLeavesTheOtherWorkstationsArticle()
{
    const TKRVCatalogo &articoli = KRVCatalogoArticoli();
    const QString codice = ProposedCode();
    FillValid(QStringLiteral("Vite M6"));
    DeleteAfterAFailedSaveBesideAnotherWorkstation(*m_module, m_editor, *m_boxes, articoli.Entita.Tabella,
                                                   articoli.Entita.Chiave,
                                                   InsertVoceSQL(articoli, QuotedStr(codice),
                                                                 QStringLiteral("Altra postazione"), 1,
                                                                 QStringLiteral("2")));
}

QTEST_MAIN(TestInserimentoArticoli)
#include "tst_inserimentoarticoli.moc"
