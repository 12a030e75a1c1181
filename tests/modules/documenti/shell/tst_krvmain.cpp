#include "../masters/KRVMastersTestKit.h"
#include "KRVTestModule.h"
#include "KRVUtils.h"
#include "Q3Exception.h"
#include "Q3Registry.h"
#include "Q3Sql.h"
#include "uKRVAzioni.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSqlQuery>
#include <QTimer>
#include <QToolBar>
#include <QtTest>

namespace {

QStringList Entries(const QMenu *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions())
        entries << (action->isSeparator() ? QStringLiteral("-") : action->text());
    return entries;
}

QStringList TopMenus(const TQ3MainForm *form)
{
    QStringList captions;
    for (const QAction *action : form->menuBar()->actions())
        captions << action->text().remove(QLatin1Char('&'));
    return captions;
}

} // namespace

class TestKRVMain : public QObject
{
    Q_OBJECT

private slots:
    void catalogueHasTheModuleActions();
    void everyKeyFindsItsOwnRowAndIcon();
    void everyActionOpensItsWindow_aDisabledOneDoesNothing();
    void menusMergeIntoTheHost();
    void toolBarsCarryTheirHints();
    void takesOverTheHostConnection();
    void lowerComponentIndexWins();
    void withoutHostConnectionStaysClosed();
    void reportProjectIsOpened();
    void statisticsPermissions();
    void namedRequestsIgnoreWrongShapes();
    void namedRequestWithAKeyThatIsNoNumberFails();
    void finalizingLeavesTheSessionToItsOwner();
    void everyInputReadsItsLabel();
    void runningAnActionTwiceShowsOneWindow();
};

void TestKRVMain::catalogueHasTheModuleActions()
{
    TKRVTestModule module;
    QCOMPARE(module.Main->actListModDocumenti().size(), 37);
    QCOMPARE(module.Main->parent(), qApp);
    const QAction *action = module.Main->Action(QStringLiteral("actModSelezionaDdtScaricoMulti"));
    QCOMPARE(action->text(), QStringLiteral("actModSelezionaDdtScaricoMulti"));
    QCOMPARE(action->property("Category").toString(), QStringLiteral("Modali"));
    QCOMPARE(module.Main->Action(QStringLiteral("actStatisticheMedieServizi1"))->text(),
             QStringLiteral("Medie produttività per servizio"));
    QCOMPARE(module.Main->Action(QStringLiteral("actRicercaFattureVendita"))->text(), QStringLiteral("Fatture"));
    QCOMPARE(KRVFindAction(QStringLiteral("actRicercaFattureVendita"))->Permission,
             QStringLiteral("Fatture di vendita (visualizzazione)"));
    QCOMPARE(KRVFindAction(QStringLiteral("actRicercaNoteAccredito"))->Permission,
             QStringLiteral("Note di accredito (visualizzazione)"));
    QStringList gated;
    for (const TKRVActionInfo &info : KRVActionCatalogue()) {
        if (!info.Permission.isEmpty())
            gated << info.Name;
    }
    QCOMPARE(gated, (QStringList{"actRicercaFattureVendita", "actRicercaNoteAccredito", "actModStampaRiepilogoFatture",
                                 "actModStampaFatturatoPerCliente", "actStatisticheFatturato",
                                 "actStatisticheFatturatoPerServizio", "actStatisticheFatturatoPerArticolo",
                                 "actStatisticheRedditivitaMensile", "actStatisticheFatturatoClientiServizi"}));
}

void TestKRVMain::everyKeyFindsItsOwnRowAndIcon()
{
    TKRVTestModule module;
    const QList<TKRVActionInfo> &catalogue = KRVActionCatalogue();
    for (int i = 0; i < catalogue.size(); ++i) {
        const auto azione = static_cast<TKRVAzione>(i);
        QCOMPARE(KRVAction(azione).Name, catalogue.at(i).Name);
        QCOMPARE(module.Main->Action(azione)->objectName(), catalogue.at(i).Name);
        QCOMPARE(KRVFindAction(catalogue.at(i).Name)->Azione, azione);
    }
    QVERIFY(!KRVFindAction(QStringLiteral("actNessuna")));
    QVERIFY(!module.Main->Action(QStringLiteral("actNessuna")));

    // The icon of each kind of action.
    const auto icona = [&](const char *name) {
        return module.Main->Action(QString::fromLatin1(name))->icon().pixmap(16).toImage();
    };
    QCOMPARE(icona("actRicercaUM"), KRVImage(KRVImgTabelle).pixmap(16).toImage());
    QCOMPARE(icona("actGestioneCategorieAnaMaga"), KRVImage(KRVImgArticoli).pixmap(16).toImage());
    QCOMPARE(icona("actStatisticheMedieServizi1"), KRVImage(KRVImgServizi).pixmap(16).toImage());
    QCOMPARE(icona("actModStampaFatturatoPerCliente"), KRVImage(KRVImgClienti).pixmap(16).toImage());
    QCOMPARE(icona("actModStampaRiepilogoFatture"), KRVImage(KRVImgStampa).pixmap(16).toImage());
    QCOMPARE(icona("actStatisticheFatturato"), KRVImage(KRVImgStatistiche).pixmap(16).toImage());
    QCOMPARE(icona("actRicercaNoteDocumenti"), KRVImage(KRVImgFatture).pixmap(16).toImage());
}

void TestKRVMain::everyActionOpensItsWindow_aDisabledOneDoesNothing()
{
    TKRVTestModule module;
    // Each action by name.
    const QStringList withWindow{"actInserimentoAliquoteIVA",
                                 "actRicercaAliquoteIVA",
                                 "actModSelezionaAliquotaIVA",
                                 "actInserimentoUM",
                                 "actRicercaUM",
                                 "actModSelezionaUM",
                                 "actInserimentoTipiPagamento",
                                 "actRicercaTipiPagamento",
                                 "actModSelezionaTipoPagamento",
                                 "actGestioneCategorieAnaMaga",
                                 "actGestioneCategorieServizi",
                                 "actInserimentoClienti",
                                 "actRicercaClienti",
                                 "actModSelezionaCliente",
                                 "actInserimentoArticoli",
                                 "actRicercaArticoli",
                                 "actModSelezionaArticolo",
                                 "actInserimentoServizi",
                                 "actRicercaServizi",
                                 "actModSelezionaServizio",
                                 "actInserimentoFattureVendita",
                                 "actRicercaFattureVendita",
                                 "actRicercaNoteDocumenti",
                                 "actInserimentoNoteDocumenti",
                                 "actModSelezionaNotaDocumenti",
                                 "actModSelezionaDdtScaricoMulti",
                                 "actModSelezionaFatturaVendita",
                                 "actInserimentoNoteAccredito",
                                 "actRicercaNoteAccredito",
                                 "actModStampaRiepilogoFatture",
                                 "actModStampaFatturatoPerCliente",
                                 "actStatisticheRedditivitaMensile",
                                 "actStatisticheFatturato",
                                 "actStatisticheFatturatoPerServizio",
                                 "actStatisticheFatturatoPerArticolo",
                                 "actStatisticheMedieServizi1",
                                 "actStatisticheFatturatoClientiServizi"};
    QCOMPARE(withWindow.size(), module.Main->actListModDocumenti().size());
    for (const QString &name : withWindow) {
        QVERIFY2(module.Main->Action(name), qPrintable(name));
        QVERIFY2(module.Main->Action(name)->isEnabled(), qPrintable(name));
        QVERIFY2(KRVFindAction(name)->Form.Create, qPrintable(name));
    }

    // A disabled action does nothing, not even its permission check.
    TQ3RecordingResponder responder;
    module.Main->Action(QStringLiteral("actStatisticheFatturatoPerServizio"))->setEnabled(false);
    module.Main->Run(QStringLiteral("actStatisticheFatturatoPerServizio"));
    QVERIFY(responder.Messages().isEmpty());
    QVERIFY(!module.Main->Form(QStringLiteral("actStatisticheFatturatoPerServizio")));
}

void TestKRVMain::menusMergeIntoTheHost()
{
    TKRVTestModule module;
    const TQ3MainForm *form = module.MainForm.get();
    QCOMPARE(TopMenus(form),
             (QStringList{"File", "Anagrafiche", "Documenti", "Tabelle", "Stampe", "Statistiche", "?"}));
    QCOMPARE(Entries(form->TopMenu(QStringLiteral("Anagrafiche"))),
             (QStringList{"Clienti", "-", "Articoli", "Servizi"}));
    QCOMPARE(Entries(form->TopMenu(QStringLiteral("Documenti"))),
             (QStringList{"Fatture di vendita", "-", "Note di accredito"}));
    QCOMPARE(Entries(form->TopMenu(QStringLiteral("Tabelle"))),
             (QStringList{"Aliquote IVA", "Unità di misura", "Tipi di pagamento", "Gestione categorie articoli",
                          "Gestione categorie servizi", "Note documenti"}));
    QCOMPARE(Entries(form->TopMenu(QStringLiteral("Stampe"))),
             (QStringList{"Stampa riepilogo fatture", "Stampa fatturato per cliente"}));
    QCOMPARE(Entries(form->TopMenu(QStringLiteral("Statistiche"))),
             (QStringList{"Fatturato", "Fatturato per servizio", "Fatturato clienti-servizi", "Fatturato per articolo",
                          "Redditività mensile"}));
    QCOMPARE(MenuGroupIndex(module.Main->TopItem(QStringLiteral("mnAnagrafiche"))), 100);
    QCOMPARE(MenuGroupIndex(module.Main->TopItem(QStringLiteral("mnDocumenti"))), 100);
    QCOMPARE(MenuGroupIndex(module.Main->TopItem(QStringLiteral("mnTabelle"))), 100);
    QVERIFY(MenuGroupIndex(module.Main->TopItem(QStringLiteral("mnStampe"))) != 100);
    // The invoice entry stands for its action and follows its state.
    QAction *entry = form->TopMenu(QStringLiteral("Documenti"))->actions().first();
    QCOMPARE(entry->isEnabled(), module.Main->Action(QStringLiteral("actRicercaFattureVendita"))->isEnabled());
}

void TestKRVMain::toolBarsCarryTheirHints()
{
    TKRVTestModule module;
    QToolBar *documenti = module.MainForm->findChild<QToolBar *>(QStringLiteral("tBarKRVDocumenti"));
    QToolBar *anagrafiche = module.MainForm->findChild<QToolBar *>(QStringLiteral("tBarKRVAnagrafiche"));
    QVERIFY(documenti && anagrafiche);
    QCOMPARE(documenti->windowTitle(), QStringLiteral("Documenti"));
    QCOMPARE(anagrafiche->windowTitle(), QStringLiteral("Anagrafiche"));
    QStringList names;
    for (const QAction *action : anagrafiche->actions())
        names << action->objectName();
    QCOMPARE(names, (QStringList{"actRicercaClienti", "actRicercaArticoli", "actRicercaServizi"}));
    QCOMPARE(documenti->actions().size(), 1);
    const QWidget *fatture =
        documenti->widgetForAction(module.Main->Action(QStringLiteral("actRicercaFattureVendita")));
    QCOMPARE(RichHintTitle(fatture), QStringLiteral("Ricerca fatture di vendita"));
    QCOMPARE(RichHintNote(fatture), QStringLiteral("Cerca una fattura di vendita."));
    const struct
    {
        const char *action;
        const char *title;
        const char *note;
    } hints[] = {{"actRicercaClienti", "Gestione clienti",
                  "Apre la maschera per la ricerca, modifica e creazione di anagrafiche cliente."},
                 {"actRicercaArticoli", "Gestione articoli",
                  "Apre la maschera per cercare, creare o eliminare gli articoli."},
                 {"actRicercaServizi", "Gestione servizi",
                  "Apre la maschera per cercare, creare o eliminare i servizi."}};
    for (const auto &hint : hints) {
        const QWidget *button = anagrafiche->widgetForAction(module.Main->Action(QString::fromLatin1(hint.action)));
        QCOMPARE(RichHintTitle(button), QString::fromUtf8(hint.title));
        QCOMPARE(RichHintNote(button), QString::fromUtf8(hint.note));
        QVERIFY(button->toolTip().contains(QString::fromUtf8(hint.title)));
    }
}

void TestKRVMain::takesOverTheHostConnection()
{
    TKRVTestModule module;
    QVERIFY(module.Main->ModADOConn()->Connected());
    QCOMPARE(module.Main->ModADOConn()->ConnectionString(), module.Database.ConnectionString());
    QCOMPARE(KRVSessioneModulo().connectionName(), module.Db().connectionName());
}

void TestKRVMain::lowerComponentIndexWins()
{
    TKRVTestModule module(TQ3TestDatabase::Where::Embedded, false);
    TQ3TestDatabase other;
    // A second connection added later to the main window comes after the first.
    auto second = new TQ3Connection(module.MainForm.get());
    second->SetConnectionString(other.ConnectionString());
    module.Main->Initialize();
    QCOMPARE(module.Main->ModADOConn()->ConnectionString(), module.Database.ConnectionString());
}

void TestKRVMain::withoutHostConnectionStaysClosed()
{
    TKRVTestModule module(TQ3TestDatabase::Where::Embedded, false);
    delete module.MainForm->findChild<TQ3Connection *>();
    TQ3RecordingResponder responder;
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, module.Main->Initialize());
    QCOMPARE(module.Main->ModADOConn()->ConnectionString(), TKRVMain::DesignedConnectionString());
    QVERIFY(!module.Main->ModADOConn()->Connected());
    // The first query fails with the connection's own error.
    QSqlQuery query(module.Main->ModADOConn()->Database());
    QVERIFY(!query.exec(QStringLiteral("SELECT 1 FROM RDB$DATABASE")));
}

void TestKRVMain::reportProjectIsOpened()
{
    TQ3RecordingResponder responder;
    TKRVTestModule module;
    QVERIFY(module.Main->rProject()->Active());
    QCOMPARE(module.Main->rProject()->ProjectFile(), TKRVMain::ReportProjectPath());
    QVERIFY(module.Main->dmStampe());
    for (const TQ3Message &message : responder.Messages())
        QVERIFY2(!message.Text.contains(QLatin1String("stampe")), qPrintable(message.Text));
}

void TestKRVMain::statisticsPermissions()
{
    TKRVTestModule module;
    module.Database.Exec(QStringLiteral("INSERT INTO UTENTI (IDUTENTE, USER_NAME) VALUES (0, 'mario')"));
    QVERIFY(
        !UserHasAbilitazione(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("mario"), module.Db()));
    QVERIFY(UserHasAbilitazione(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("ADMIN"), module.Db()));
    // "Medie produttività per servizio" is the one statistics action run without a check.
    QVERIFY(KRVFindAction(QStringLiteral("actStatisticheMedieServizi1"))->Permission.isEmpty());
    QCOMPARE(KRVFindAction(QStringLiteral("actStatisticheFatturatoPerServizio"))->Permission,
             QStringLiteral("Statistiche (visualizzazione)"));
}

void TestKRVMain::namedRequestsIgnoreWrongShapes()
{
    TKRVTestModule module;
    TQ3RecordingResponder responder;
    module.Main->ExecutePkgAction(QStringLiteral("Nuova fattura di vendita ciclica"), {}, -1);
    module.Main->ExecutePkgAction(QStringLiteral("Nuova fattura di vendita ciclica"), {1, 2}, 1);
    module.Main->ExecutePkgAction(QStringLiteral("nuova fattura di vendita ciclica"), {1}, 0);
    module.Main->ExecutePkgAction(QStringLiteral("Crea fattura di vendita da d.d.t."), {1}, 0);
    QVERIFY(responder.Messages().isEmpty());
    QVERIFY(!module.Main->Form(QStringLiteral("actInserimentoFattureVendita")));
}

void TestKRVMain::namedRequestWithAKeyThatIsNoNumberFails()
{
    TKRVTestModule module;
    TQ3RecordingResponder responder;
    module.Main->ExecutePkgAction(QStringLiteral("Nuova fattura di vendita ciclica"), {QStringLiteral("abc")}, 0);
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Errore"));
    QCOMPARE(responder.Messages().first().Icon, TQ3MsgIcon::Error);
    QCOMPARE(responder.Messages().first().Buttons, TQ3MsgButtons::Ok);
    QVERIFY(responder.Messages().first().Text.contains(QLatin1String("abc")));
    QVERIFY(!module.Main->Form(QStringLiteral("actInserimentoFattureVendita")));
    QVERIFY(module.MainForm->MdiArea()->subWindowList().isEmpty());

    responder.Clear();
    module.Main->ExecutePkgAction(QStringLiteral("Crea fattura di vendita da D.d.T."), {QStringLiteral("abc")}, 0);
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Errore"));
    QVERIFY(module.MainForm->MdiArea()->subWindowList().isEmpty());
}

void TestKRVMain::finalizingLeavesTheSessionToItsOwner()
{
    TKRVTestModule module;
    TQ3RecordingResponder responder;
    module.Main->ModuloFinalize();
    module.Main->Finalize();
    QVERIFY(responder.Messages().isEmpty());
    QVERIFY(module.Main->ModADOConn()->Connected());
}

void TestKRVMain::everyInputReadsItsLabel()
{
    TKRVTestModule module;
    module.MainForm->show();
    TQ3RecordingResponder responder;
    // The print dialogs are modal: each is looked at once closed.
    QTimer chiudi;
    chiudi.setInterval(20);
    connect(&chiudi, &QTimer::timeout, [] {
        if (auto dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    chiudi.start();
    int labels = 0;
    for (const TKRVActionInfo &info : KRVActionCatalogue()) {
        const QString &name = info.Name;
        QAction *action = module.Main->Action(name);
        QVERIFY2(action, qPrintable(name));
        KRVTest::Trigger(action);
        QWidget *form = module.Main->Form(name);
        QVERIFY2(form, qPrintable(name));
        for (const QLabel *label : form->findChildren<QLabel *>()) {
            if (!label->buddy())
                continue;
            ++labels;
            QString caption = label->text();
            caption.remove(QLatin1Char('&'));
            QVERIFY2(label->buddy()->accessibleName() == caption,
                     qPrintable(name + QStringLiteral(": ") + label->buddy()->objectName() + QStringLiteral(" reads \"")
                                + label->buddy()->accessibleName() + QStringLiteral("\", its label \"") + caption
                                + QLatin1Char('"')));
        }
    }
    QVERIFY(labels > 30);
    // Only the averages dialog speaks: the key column it names is not in its category table.
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().first().Title, QStringLiteral("Errore"));
    QVERIFY(responder.Messages().first().Text.contains(QStringLiteral("IDCATEGORIA_SERVIZIO")));
}

void TestKRVMain::runningAnActionTwiceShowsOneWindow()
{
    TKRVTestModule module;
    module.MainForm->show();
    module.Main->Run(QStringLiteral("actRicercaClienti"));
    QWidget *first = module.Main->Form(QStringLiteral("actRicercaClienti"));
    QVERIFY(first);
    module.Main->Run(QStringLiteral("actRicercaClienti"));
    QCOMPARE(module.Main->Form(QStringLiteral("actRicercaClienti")), first);
    QCOMPARE(module.MainForm->MdiArea()->subWindowList().size(), 1);
    QCOMPARE(module.MainForm->MdiArea()->activeSubWindow()->widget(), first);
    // Closing the window frees it; the next run makes a new one.
    CloseQ3ChildForm(first);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!module.Main->Form(QStringLiteral("actRicercaClienti")));
    module.Main->Run(QStringLiteral("actRicercaClienti"));
    QVERIFY(module.Main->Form(QStringLiteral("actRicercaClienti")));
    QCOMPARE(module.MainForm->MdiArea()->subWindowList().size(), 1);
}

QTEST_MAIN(TestKRVMain)
#include "tst_krvmain.moc"
