#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "KRVUtils.h"
#include "uKRVInserimentoClienti.h"
#include "uKRVRicercaClienti.h"

#include <QHeaderView>
#include <QLabel>
#include <QToolBar>

using namespace KRVTest;

namespace {

const QString ActList = QStringLiteral("actRicercaClienti");
const QString ActEditor = QStringLiteral("actInserimentoClienti");

} // namespace

class TestRicercaClienti : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensOnTheNamesBeginningWithA();
    void filtersComposeTheirClause();
    void filtersSearchOnEnter();
    void quoteInAFilterIsDoubled();
    void telephoneSearchesAllFourNumbers();
    void letterBarClauses();
    void starListsEveryCustomer();
    void lowerCaseLetterFindsAnyCase();
    void ripristinaKeepsTheTelephone();
    void deleteWithEmptyCodeFilterDeletesTheSelectedRow();
    void deleteWithAUsedCodeInTheFilterFollowsTheRule();
    void deleteAnsweredNoKeepsTheRow();
    void failedDeleteIsReported();
    void modificaAndDoubleClickOpenTheEditor();
    void nuovoShowsTheEditor();
    void nameColumnTakesTheFreeWidth();

private:
    int Insert(const QString &codice, const QString &ragioneSociale, const QString &telefono1 = QString(),
               const QString &telefono2 = QString(), const QString &telefono3 = QString(),
               const QString &fax = QString());
    QStringList Names() const;
    QLineEdit *Filter(const char *name) const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    TKRVRicercaClienti *m_list = nullptr;
};

void TestRicercaClienti::initTestCase()
{
    UseItalianLocale();
}

void TestRicercaClienti::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    Insert(QStringLiteral("C01"), QStringLiteral("Alfa S.r.l."), QStringLiteral("051111"), QStringLiteral("051222"));
    Insert(QStringLiteral("C02"), QStringLiteral("acme spa"), QString(), QString(), QStringLiteral("333999"));
    Insert(QStringLiteral("C03"), QStringLiteral("Beta"), QString(), QString(), QString(), QStringLiteral("051999"));
    Insert(QStringLiteral("X04"), QStringLiteral("bianchi mario"));
    Insert(QStringLiteral("C05"), QStringLiteral("O'Brien Ltd"));
    Insert(QStringLiteral("C06"), QStringLiteral("Zeta"), QStringLiteral("02777"));
    m_list = Run<TKRVRicercaClienti>(*m_module, ActList);
}

void TestRicercaClienti::cleanup()
{
    m_boxes.reset();
    m_module.reset();
}

int TestRicercaClienti::Insert(const QString &codice, const QString &ragioneSociale, const QString &telefono1,
                               const QString &telefono2, const QString &telefono3, const QString &fax)
{
    return KRVInsertRow(m_module->Database,
                        QStringLiteral(
                            "INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, TELEFONO1, TELEFONO2, TELEFONO3, FAX) "
                            "VALUES (")
                            + QStringList{QuotedStr(codice), QuotedStr(ragioneSociale), QuotedStr(telefono1),
                                          QuotedStr(telefono2), QuotedStr(telefono3), QuotedStr(fax)}
                                  .join(QStringLiteral(", "))
                            + QStringLiteral(")"),
                        QStringLiteral("GN_IDCLIENTE"));
}

QStringList TestRicercaClienti::Names() const
{
    return Column(m_list->GridRisultati(), 2);
}

QLineEdit *TestRicercaClienti::Filter(const char *name) const
{
    return Field(m_list, QString::fromLatin1(name));
}

void TestRicercaClienti::opensOnTheNamesBeginningWithA()
{
    QVERIFY(m_list);
    QVERIFY(m_module->Main->Action(ActList)->isEnabled());
    QCOMPARE(m_list->windowTitle(), QStringLiteral("Ricerca clienti"));
    QCOMPARE(m_list->size(), QSize(800, 600));

    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    QCOMPARE(grid->columnCount(), 5);
    QVERIFY(grid->isColumnHidden(0));
    QStringList titles;
    for (int column = 1; column < 5; ++column)
        titles << grid->Titolo(column);
    QCOMPARE(titles, (QStringList{"Codice", "Ragione sociale", "Telefono 1", "Telefono 2"}));
    QCOMPARE(grid->columnWidth(1), 100);
    QCOMPARE(grid->columnWidth(3), 90);
    QCOMPARE(grid->columnWidth(4), 90);

    // Whatever their case, ordered by the upper-cased name.
    QCOMPARE(Names(), (QStringList{"acme spa", "Alfa S.r.l."}));
    QCOMPARE(Column(grid, 1), (QStringList{"C02", "C01"}));
    QCOMPARE(Column(grid, 3), (QStringList{"", "051111"}));
    QCOMPARE(Column(grid, 4), (QStringList{"", "051222"}));

    QCOMPARE(Filter("txtCodice")->accessibleName().trimmed(), QStringLiteral("Codice"));
    QCOMPARE(Filter("txtRagioneSociale")->accessibleName().trimmed(), QStringLiteral("Ragione sociale"));
    QCOMPARE(Filter("txtTelefono")->accessibleName(), QStringLiteral("Telefono"));
    QCOMPARE(m_list->findChild<QLabel *>(QStringLiteral("lbltxtTelefono"))->text(), QStringLiteral("Telefono"));

    // Running the action again brings the same window forward.
    QCOMPARE(Run<TKRVRicercaClienti>(*m_module, ActList), m_list);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
}

void TestRicercaClienti::filtersComposeTheirClause()
{
    QVERIFY(m_list->ClausolaFiltri().isEmpty());
    Type(Filter("txtTelefono"), QStringLiteral("05"));
    QCOMPARE(m_list->ClausolaFiltri(),
             QStringLiteral(
                 "WHERE (TELEFONO1 CONTAINING '05' OR TELEFONO2 CONTAINING '05' OR TELEFONO3 CONTAINING '05' "
                 "OR FAX CONTAINING '05')"));
    Type(Filter("txtCodice"), QStringLiteral("c0"));
    Type(Filter("txtRagioneSociale"), QStringLiteral("O'B"));
    QCOMPARE(m_list->ClausolaFiltri(),
             QStringLiteral("WHERE CODICE CONTAINING 'c0' AND RAGIONESOCIALE CONTAINING 'O''B' AND "
                            "(TELEFONO1 CONTAINING '05' OR TELEFONO2 CONTAINING '05' OR TELEFONO3 CONTAINING '05' "
                            "OR FAX CONTAINING '05')"));
}

void TestRicercaClienti::filtersSearchOnEnter()
{
    Type(Filter("txtCodice"), QStringLiteral("x0"));
    PressEnter(Filter("txtCodice"));
    QCOMPARE(Names(), QStringList{QStringLiteral("bianchi mario")});

    Type(Filter("txtCodice"), QString());
    Type(Filter("txtRagioneSociale"), QStringLiteral("ZET"));
    PressEnter(Filter("txtRagioneSociale"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Zeta")});

    Type(Filter("txtRagioneSociale"), QString());
    Type(Filter("txtTelefono"), QStringLiteral("02777"));
    PressEnter(Filter("txtTelefono"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Zeta")});

    // "Cerca" with every filter empty lists all.
    Type(Filter("txtTelefono"), QString());
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Names().size(), 6);
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaClienti::quoteInAFilterIsDoubled()
{
    Type(Filter("txtRagioneSociale"), QStringLiteral("o'brien"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QVERIFY(m_boxes->Messages().isEmpty());
    QCOMPARE(Names(), QStringList{QStringLiteral("O'Brien Ltd")});
}

void TestRicercaClienti::telephoneSearchesAllFourNumbers()
{
    Type(Filter("txtTelefono"), QStringLiteral("999"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Names(), (QStringList{"acme spa", "Beta"}));

    Type(Filter("txtTelefono"), QStringLiteral("0512"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Alfa S.r.l.")});

    // Joined to the other filters with AND.
    Type(Filter("txtTelefono"), QStringLiteral("051"));
    Type(Filter("txtRagioneSociale"), QStringLiteral("beta"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Beta")});
}

void TestRicercaClienti::letterBarClauses()
{
    QCOMPARE(TKRVRicercaClienti::ClausolaLettera(QStringLiteral("b")),
             QStringLiteral("WHERE UPPER(RAGIONESOCIALE)LIKE  'B%'"));
    QCOMPARE(TKRVRicercaClienti::ClausolaLettera(QStringLiteral("Z")),
             QStringLiteral("WHERE UPPER(RAGIONESOCIALE)LIKE  'Z%'"));
    QVERIFY(TKRVRicercaClienti::ClausolaLettera(QStringLiteral("*")).isEmpty());

    auto bar = m_list->findChild<QToolBar *>(QStringLiteral("tBarLettere"));
    QVERIFY(bar);
    QString letters;
    for (QAction *action : bar->actions())
        letters += action->text();
    QCOMPARE(letters, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ*"));

    Trigger(m_list, QStringLiteral("actLetteraZ"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Zeta")});
    Trigger(m_list, QStringLiteral("actLetteraQ"));
    QVERIFY(Names().isEmpty());
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaClienti::starListsEveryCustomer()
{
    Type(Filter("txtRagioneSociale"), QStringLiteral("zeta"));
    Trigger(m_list, QStringLiteral("actLetteraTutte"));
    QCOMPARE(Names(), (QStringList{"acme spa", "Alfa S.r.l.", "Beta", "bianchi mario", "O'Brien Ltd", "Zeta"}));
}

void TestRicercaClienti::lowerCaseLetterFindsAnyCase()
{
    m_list->BarraRicercaButtonClick(QStringLiteral("b"));
    QCOMPARE(Names(), (QStringList{"Beta", "bianchi mario"}));
    Trigger(m_list, QStringLiteral("actLetteraB"));
    QCOMPARE(Names(), (QStringList{"Beta", "bianchi mario"}));
    m_list->BarraRicercaButtonClick(QStringLiteral("o"));
    QCOMPARE(Names(), QStringList{QStringLiteral("O'Brien Ltd")});
}

void TestRicercaClienti::ripristinaKeepsTheTelephone()
{
    Type(Filter("txtCodice"), QStringLiteral("C0"));
    Type(Filter("txtRagioneSociale"), QStringLiteral("Alfa"));
    Type(Filter("txtTelefono"), QStringLiteral("051"));
    Trigger(m_list, QStringLiteral("actCerca"));
    QCOMPARE(Names(), QStringList{QStringLiteral("Alfa S.r.l.")});

    Trigger(m_list, QStringLiteral("actRipristina"));
    QVERIFY(Filter("txtCodice")->text().isEmpty());
    QVERIFY(Filter("txtRagioneSociale")->text().isEmpty());
    QCOMPARE(Filter("txtTelefono")->text(), QStringLiteral("051"));
    // No search again: the grid keeps what it showed.
    QCOMPARE(Names(), QStringList{QStringLiteral("Alfa S.r.l.")});
}

void TestRicercaClienti::deleteWithEmptyCodeFilterDeletesTheSelectedRow()
{
    KRVInsertDocumento(m_module->Database, QStringLiteral("FATT_VEND"), 1, 2024, QStringLiteral("C01"));
    KRVInsertDocumento(m_module->Database, QStringLiteral("NOTE_ACCREDITO"), 1, 2024, QStringLiteral("C01"));
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    SelectRow(grid, RowOf(grid, 2, QStringLiteral("Alfa S.r.l.")));
    Trigger(m_list, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI WHERE CODICE='C01'")).toInt(), 0);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt(), 5);
    QCOMPARE(Names(), QStringList{QStringLiteral("acme spa")});
}

// The rule is asked about the code typed in the filter, whichever row is
// selected; it never reads its count and answers true, so the selected row goes.
void TestRicercaClienti::deleteWithAUsedCodeInTheFilterFollowsTheRule()
{
    KRVInsertDocumento(m_module->Database, QStringLiteral("FATT_VEND"), 1, 2024, QStringLiteral("C06"));
    QVERIFY(CanDeleteCliente(m_module->Db(), QStringLiteral("C06")));
    Type(Filter("txtCodice"), QStringLiteral("C06"));
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    SelectRow(grid, RowOf(grid, 2, QStringLiteral("acme spa")));
    Trigger(m_list, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Conferma", "Confermare l'eliminazione?", Question, YesNo);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI WHERE CODICE='C02'")).toInt(), 0);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI WHERE CODICE='C06'")).toInt(), 1);
    QCOMPARE(Names(), QStringList{QStringLiteral("Alfa S.r.l.")});
}

void TestRicercaClienti::deleteAnsweredNoKeepsTheRow()
{
    m_boxes->Enqueue(TQ3MsgResult::No);
    Trigger(m_list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt(), 6);
    QCOMPARE(Names().size(), 2);

    // Nothing selected: nothing happens.
    Trigger(m_list, QStringLiteral("actLetteraQ"));
    Trigger(m_list, QStringLiteral("actElimina"));
    QCOMPARE(m_boxes->Messages().size(), 1);
}

void TestRicercaClienti::failedDeleteIsReported()
{
    m_module->Database.Exec(QStringLiteral("CREATE EXCEPTION E_CLIENTE_BLOCCATO 'Cliente bloccato'"));
    m_module->Database.Exec(QStringLiteral("CREATE TRIGGER TG_BD_CLIENTI_TEST FOR CLIENTI BEFORE DELETE AS "
                                           "BEGIN EXCEPTION E_CLIENTE_BLOCCATO; END"));
    Trigger(m_list, QStringLiteral("actElimina"));

    QCOMPARE(m_boxes->Messages().size(), 2);
    KRV_COMPARE_BOX(m_boxes->Messages().at(1), "Errore",
                    "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!",
                    Error, Ok);
    QCOMPARE(m_module->Database.Scalar(QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt(), 6);
    QCOMPARE(Names().size(), 2);
}

void TestRicercaClienti::modificaAndDoubleClickOpenTheEditor()
{
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    const int alfa = RowOf(grid, 2, QStringLiteral("Alfa S.r.l."));
    SelectRow(grid, alfa);
    Trigger(m_list, QStringLiteral("actModifica"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoClienti>(ActEditor);
    QVERIFY(editor);
    QCOMPARE(Field(editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("C01"));
    QCOMPARE(editor->IdRecord(), grid->Valore(alfa, 0).toInt());

    DoubleClickRow(grid, RowOf(grid, 2, QStringLiteral("acme spa")));
    QCOMPARE(m_module->Main->FormAs<TKRVInserimentoClienti>(ActEditor), editor);
    QCOMPARE(Field(editor, QStringLiteral("txtCodice"))->text(), QStringLiteral("C02"));
    QVERIFY(m_boxes->Messages().isEmpty());
}

void TestRicercaClienti::nuovoShowsTheEditor()
{
    Trigger(m_list, QStringLiteral("actNuovo"));
    auto editor = m_module->Main->FormAs<TKRVInserimentoClienti>(ActEditor);
    QVERIFY(editor);
    QVERIFY(editor->isVisible());
    QVERIFY(editor->NewRecord());
}

void TestRicercaClienti::nameColumnTakesTheFreeWidth()
{
    TKRVGrigliaRisultati *grid = m_list->GridRisultati();
    const auto expected = [grid] { return grid->contentsRect().width() - 21 - 100 - 90 - 90; };
    QCOMPARE(grid->columnWidth(2), expected());
    auto frame = qobject_cast<QMdiSubWindow *>(m_list->parentWidget());
    QVERIFY(frame);
    frame->resize(frame->width() + 150, frame->height());
    QCOMPARE(grid->columnWidth(2), expected());
}

QTEST_MAIN(TestRicercaClienti)
#include "tst_ricercaclienti.moc"
