#include "KRVMastersTestKit.h"
#include "KRVTestModule.h"
#include "Q3Registry.h"
#include "Q3Sql.h"
#include "Q3TreeUtils.h"
#include "Q3Utils.h"
#include "uKRVGestioneCategorieAnaMaga.h"
#include "uKRVGestioneCategorieServizi.h"
#include "uKRVImages.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QToolButton>
#include <QTreeWidgetItemIterator>
#include <QtTest>

namespace {

const QString ActAnaMaga = QStringLiteral("actGestioneCategorieAnaMaga");
const QString ActServizi = QStringLiteral("actGestioneCategorieServizi");

QImage IconImage(const QIcon &icon)
{
    return icon.pixmap(16, 16).toImage();
}

} // namespace

class TestGestioneCategorie : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void actionsOpenOneWindowEach();
    void opensWithRootAndWholeTreeExpanded();
    void toolbarAndContextMenuOfferTheCommands();
    void newCategoryTakesSmallestFreeNumber();
    void newCategoryUnderCategoryKnowsItsParent();
    void renameToNameInAnotherBranchIsRefused();
    void renameToSameNameInOtherCaseIsRefused();
    void renameOfSavedCategoryThenSaveUpdatesOnlyThatRow();
    void renameOfNewCategoryKeepsItNew();
    void f2StartsInPlaceEditing();
    void newUnderNewSavedTogetherGetsParentsFreshKey();
    void threeLevelNewBranchSavedAtOnce();
    void saveFailureRollsBackAndStaysModified();
    void deleteOfSavedCategoryIsFinalEvenWithoutSaving();
    void deleteOfUnsavedCategoryTouchesNothing();
    void deleteAnsweredNoKeepsTheCategory();
    void categoryWithSubCategoriesCannotBeDeletedUntilEmpty();
    void rootCannotBeRenamedNorDeleted();
    void closingWithUnsavedChangesAsksAndNoKeepsTheWindow();
    void closingCleanWindowAsksNothing();
    void rootNeverCollapsesAndFoldersFollowState();
    void rightPressSelectsBeforeContextMenu();
    void serviceWindowWorksOnServiceCategories();
    void newUnderNewGetsItsParentsOwnKeyWhenAnotherWorkstationInsertsMeanwhile();

private:
    TKRVGestioneCategorieBase *Open(const QString &action = ActAnaMaga);
    QTreeWidget *Tree() const;
    void Act(const QString &name) const;
    QTreeWidgetItem *Item(const QString &text) const;
    void Select(QTreeWidgetItem *item) const;
    void Rename(QTreeWidgetItem *item, const QString &text) const;
    int Insert(const QString &table, const QString &name, int parent = -1) const;
    // A new category under the root and a new one under it, unsaved.
    std::pair<QTreeWidgetItem *, QTreeWidgetItem *> NewParentAndChild() const;
    QVariant Scalar(const QString &sql) const { return m_module->Database.Scalar(sql); }
    QStringList Rows(const QString &sql) const { return m_module->Database.Rows(sql); }
    // How many article categories meet the condition (all of them when empty).
    int Articoli(const QString &condition = QString()) const;

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_responder;
    TKRVGestioneCategorieBase *m_window = nullptr;
    int m_ferramenta = 0;
    int m_viti = 0;
    int m_utensili = 0;
    int m_bulloni = 0;
};

void TestGestioneCategorie::init()
{
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_responder = std::make_unique<TQ3RecordingResponder>();
    // Ferramenta > Viti, Utensili > Bulloni, beside the seeded "Altro".
    m_ferramenta = Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Ferramenta"));
    m_viti = Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Viti"), m_ferramenta);
    m_utensili = Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Utensili"));
    m_bulloni = Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Bulloni"), m_utensili);
}

void TestGestioneCategorie::cleanup()
{
    m_window = nullptr;
    m_responder.reset();
    m_module.reset();
}

int TestGestioneCategorie::Insert(const QString &table, const QString &name, int parent) const
{
    const QString key = table == QLatin1String("CATEGORIE_SERVIZI") ? QStringLiteral("IDCATEGORIA_SERVIZI")
                                                                    : QStringLiteral("IDCATEGORIA_ANA_MAGA");
    m_module->Database.Exec(
        QStringLiteral("INSERT INTO %1 (%2, CATEGORIA, IDPADRE) VALUES (0, %3, %4)")
            .arg(table, key, QuotedStr(name), parent == -1 ? QStringLiteral("NULL") : QString::number(parent)));
    return Scalar(QStringLiteral("SELECT MAX(%1) FROM %2").arg(key, table)).toInt();
}

int TestGestioneCategorie::Articoli(const QString &condition) const
{
    QString sql = QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_ANA_MAGA");
    if (!condition.isEmpty())
        sql += QStringLiteral(" WHERE ") + condition;
    return Scalar(sql).toInt();
}

TKRVGestioneCategorieBase *TestGestioneCategorie::Open(const QString &action)
{
    KRVTest::Trigger(m_module->Main->Action(action));
    m_window = m_module->Main->FormAs<TKRVGestioneCategorieBase>(action);
    return m_window;
}

QTreeWidget *TestGestioneCategorie::Tree() const
{
    return m_window->findChild<QTreeWidget *>(QStringLiteral("tvCategorie"));
}

void TestGestioneCategorie::Act(const QString &name) const
{
    KRVTest::Trigger(m_window->findChild<QAction *>(name));
}

QTreeWidgetItem *TestGestioneCategorie::Item(const QString &text) const
{
    for (QTreeWidgetItemIterator it(Tree()); *it; ++it) {
        if ((*it)->text(0) == text)
            return *it;
    }
    return nullptr;
}

std::pair<QTreeWidgetItem *, QTreeWidgetItem *> TestGestioneCategorie::NewParentAndChild() const
{
    Select(Tree()->topLevelItem(0));
    Act(QStringLiteral("actNuovaCategoria"));
    QTreeWidgetItem *parent = Tree()->currentItem();
    Act(QStringLiteral("actNuovaCategoria"));
    return {parent, Tree()->currentItem()};
}

void TestGestioneCategorie::Select(QTreeWidgetItem *item) const
{
    QTreeWidget *tree = Tree();
    if (tree->currentItem() == item)
        return;
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
    QCOMPARE(tree->currentItem(), item);
}

void TestGestioneCategorie::Rename(QTreeWidgetItem *item, const QString &text) const
{
    Select(item);
    Act(QStringLiteral("actRinominaCategoria"));
    auto editor = Tree()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QVERIFY(editor->isVisible());
    QCOMPARE(editor->text(), item->text(0));
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The view takes the text and closes the editor once the key is handled.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!Tree()->viewport()->findChild<QLineEdit *>());
}

void TestGestioneCategorie::actionsOpenOneWindowEach()
{
    QVERIFY(m_module->Main->Action(ActAnaMaga)->isEnabled());
    QVERIFY(m_module->Main->Action(ActServizi)->isEnabled());
    TKRVGestioneCategorieBase *first = Open();
    QVERIFY(qobject_cast<TKRVGestioneCategorieAnaMaga *>(first));
    QVERIFY(first->isVisible());
    QCOMPARE(Open(), first);
    QCOMPARE(m_module->MainForm->MdiArea()->subWindowList().size(), 1);
    QCOMPARE(first->windowTitle(), QStringLiteral("Gestione categorie articoli"));
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestGestioneCategorie::opensWithRootAndWholeTreeExpanded()
{
    Open();
    QTreeWidget *tree = Tree();
    QCOMPARE(tree->topLevelItemCount(), 1);
    QTreeWidgetItem *root = tree->topLevelItem(0);
    QCOMPARE(root->text(0), QStringLiteral("Categorie"));
    QVERIFY(!HasTreeNode(root));
    QCOMPARE(root->childCount(), 3);
    QVERIFY(Item(QStringLiteral("Altro")));
    QCOMPARE(Item(QStringLiteral("Viti"))->parent(), Item(QStringLiteral("Ferramenta")));
    QCOMPARE(Item(QStringLiteral("Bulloni"))->parent(), Item(QStringLiteral("Utensili")));
    QVERIFY(root->isExpanded());
    QVERIFY(Item(QStringLiteral("Ferramenta"))->isExpanded());
    QVERIFY(Item(QStringLiteral("Utensili"))->isExpanded());

    const TQ3TreeNode viti = TreeNode(Item(QStringLiteral("Viti")));
    QCOMPARE(viti.Id, m_viti);
    QCOMPARE(viti.ParentId, m_ferramenta);
    QCOMPARE(viti.Status, QStringLiteral("False"));
    QCOMPARE(TreeNode(Item(QStringLiteral("Ferramenta"))).ParentId, -1);

    QCOMPARE(IconImage(Item(QStringLiteral("Ferramenta"))->icon(0)), IconImage(KRVImage(KRVImgFolderOpen)));
    QCOMPARE(IconImage(Item(QStringLiteral("Viti"))->icon(0)), IconImage(KRVImage(KRVImgFolderClosed)));
    QVERIFY(!m_window->Modified());
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("actSalva"))->isEnabled());
}

void TestGestioneCategorie::toolbarAndContextMenuOfferTheCommands()
{
    Open();
    auto bar = m_window->findChild<QToolBar *>(QStringLiteral("tBarCategorie"));
    QVERIFY(bar);
    QStringList captions;
    QStringList hints;
    for (QAction *action : bar->actions()) {
        captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
        if (!action->isSeparator())
            hints << RichHintTitle(bar->widgetForAction(action));
    }
    QCOMPARE(captions, (QStringList{QStringLiteral("Chiudi"), QStringLiteral("Nuova categoria"),
                                    QStringLiteral("Rinomina categoria"), QStringLiteral("Elimina categoria"),
                                    QStringLiteral("-"), QStringLiteral("Salva")}));
    QCOMPARE(hints, (QStringList{QStringLiteral("Chiudi"), QStringLiteral("Nuova categoria"),
                                 QStringLiteral("Rimonima categoria"), QStringLiteral("Elimina categoria"),
                                 QStringLiteral("Salva")}));
    QCOMPARE(m_window->findChild<QAction *>(QStringLiteral("actRinominaCategoria"))->shortcut(),
             QKeySequence(Qt::Key_F2));
    // The hints the user sees outlive the buttons' changes of state.
    for (QAction *action : bar->actions()) {
        action->setEnabled(false);
        action->setEnabled(true);
    }
    QVERIFY2(bar->widgetForAction(m_window->findChild<QAction *>(QStringLiteral("actRinominaCategoria")))
                 ->toolTip()
                 .contains(QLatin1String("Rimonima categoria")),
             qPrintable(bar->widgetForAction(m_window->findChild<QAction *>(QStringLiteral("actRinominaCategoria")))
                            ->toolTip()));

    auto menu = m_window->findChild<QMenu *>(QStringLiteral("pmCategorie"));
    QVERIFY(menu);
    QStringList entries;
    for (QAction *action : menu->actions())
        entries << action->objectName();
    QCOMPARE(entries, (QStringList{QStringLiteral("actNuovaCategoria"), QStringLiteral("actRinominaCategoria"),
                                   QStringLiteral("actEliminaCategoria")}));
}

void TestGestioneCategorie::newCategoryTakesSmallestFreeNumber()
{
    Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Nuova categoria 1"));
    Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Nuova categoria 3"), m_viti);
    const int rows = Articoli();
    Open();
    QTreeWidgetItem *root = Tree()->topLevelItem(0);
    Select(root);
    Act(QStringLiteral("actNuovaCategoria"));

    QTreeWidgetItem *added = Tree()->currentItem();
    QCOMPARE(added->text(0), QStringLiteral("Nuova categoria 2"));
    QCOMPARE(added->parent(), root);
    QCOMPARE(root->indexOfChild(added), root->childCount() - 1);
    const TQ3TreeNode node = TreeNode(added);
    QCOMPARE(node.Id, -1);
    QCOMPARE(node.ParentId, -1);
    QCOMPARE(node.Text, QStringLiteral("Nuova categoria 2"));
    QCOMPARE(node.Status, QStringLiteral("New"));
    QCOMPARE(IconImage(added->icon(0)), IconImage(KRVImage(KRVImgFolderClosed)));
    QVERIFY(m_window->Modified());
    QVERIFY(m_window->findChild<QAction *>(QStringLiteral("actSalva"))->isEnabled());
    QCOMPARE(Articoli(), rows);

    Select(root);
    Act(QStringLiteral("actNuovaCategoria"));
    QCOMPARE(Tree()->currentItem()->text(0), QStringLiteral("Nuova categoria 4"));
}

void TestGestioneCategorie::newCategoryUnderCategoryKnowsItsParent()
{
    Open();
    QTreeWidgetItem *viti = Item(QStringLiteral("Viti"));
    Select(viti);
    Act(QStringLiteral("actNuovaCategoria"));
    QTreeWidgetItem *added = Tree()->currentItem();
    QCOMPARE(added->parent(), viti);
    QVERIFY(viti->isExpanded());
    QCOMPARE(IconImage(viti->icon(0)), IconImage(KRVImage(KRVImgFolderOpen)));
    QCOMPARE(TreeNode(added).ParentId, m_viti);
}

void TestGestioneCategorie::renameToNameInAnotherBranchIsRefused()
{
    Open();
    QTreeWidgetItem *bulloni = Item(QStringLiteral("Bulloni"));
    Rename(bulloni, QStringLiteral("Viti"));

    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message message = m_responder->Messages().first();
    QCOMPARE(message.Title, QStringLiteral("Attenzione"));
    QCOMPARE(message.Text, QStringLiteral("Esiste già un oggetto con questo nome!"));
    QCOMPARE(message.Icon, TQ3MsgIcon::Warning);
    QCOMPARE(message.Buttons, TQ3MsgButtons::Ok);
    QCOMPARE(bulloni->text(0), QStringLiteral("Bulloni"));
    QCOMPARE(TreeNode(bulloni).Text, QStringLiteral("Bulloni"));
    QCOMPARE(TreeNode(bulloni).Status, QStringLiteral("False"));
    QVERIFY(!m_window->Modified());
}

void TestGestioneCategorie::renameToSameNameInOtherCaseIsRefused()
{
    Open();
    QTreeWidgetItem *bulloni = Item(QStringLiteral("Bulloni"));
    Rename(bulloni, QStringLiteral("FERRAMENTA"));
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(bulloni->text(0), QStringLiteral("Bulloni"));

    m_responder->Clear();
    Rename(bulloni, QStringLiteral("BULLONI"));
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(bulloni->text(0), QStringLiteral("BULLONI"));
}

void TestGestioneCategorie::renameOfSavedCategoryThenSaveUpdatesOnlyThatRow()
{
    const QString all = QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA, CATEGORIA, IDPADRE FROM CATEGORIE_ANA_MAGA "
                                       "ORDER BY IDCATEGORIA_ANA_MAGA");
    QStringList expected = Rows(all);
    Open();
    QTreeWidgetItem *viti = Item(QStringLiteral("Viti"));
    Rename(viti, QStringLiteral("Viti inox"));
    QVERIFY(m_responder->Messages().isEmpty());
    QCOMPARE(viti->text(0), QStringLiteral("Viti inox"));
    QCOMPARE(TreeNode(viti).Text, QStringLiteral("Viti inox"));
    QCOMPARE(TreeNode(viti).Status, QStringLiteral("True"));
    QVERIFY(m_window->Modified());
    QCOMPARE(Rows(all), expected);

    Act(QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    expected.replace(expected.indexOf(QStringLiteral("%1|Viti|%2").arg(m_viti).arg(m_ferramenta)),
                     QStringLiteral("%1|Viti inox|%2").arg(m_viti).arg(m_ferramenta));
    QCOMPARE(Rows(all), expected);
    QCOMPARE(TreeNode(viti).Status, QStringLiteral("False"));
    QCOMPARE(TreeNode(viti).Id, m_viti);
    QVERIFY(!m_window->Modified());
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("actSalva"))->isEnabled());
}

void TestGestioneCategorie::renameOfNewCategoryKeepsItNew()
{
    Open();
    Select(Item(QStringLiteral("Ferramenta")));
    Act(QStringLiteral("actNuovaCategoria"));
    QTreeWidgetItem *added = Tree()->currentItem();
    Rename(added, QStringLiteral("Chiodi"));
    QCOMPARE(TreeNode(added).Text, QStringLiteral("Chiodi"));
    QCOMPARE(TreeNode(added).Status, QStringLiteral("New"));

    Act(QStringLiteral("actSalva"));
    QCOMPARE(Rows(QStringLiteral("SELECT CATEGORIA, IDPADRE FROM CATEGORIE_ANA_MAGA WHERE CATEGORIA = 'Chiodi'")),
             QStringList{QStringLiteral("Chiodi|%1").arg(m_ferramenta)});
}

void TestGestioneCategorie::f2StartsInPlaceEditing()
{
    Open();
    QTreeWidgetItem *viti = Item(QStringLiteral("Viti"));
    Select(viti);
    Tree()->setFocus();
    QTest::keyClick(Tree(), Qt::Key_F2);
    auto editor = Tree()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("Viti"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(viti->text(0), QStringLiteral("Viti"));
    QVERIFY(!m_window->Modified());
}

void TestGestioneCategorie::newUnderNewSavedTogetherGetsParentsFreshKey()
{
    Open();
    const auto [parent, child] = NewParentAndChild();
    QCOMPARE(child->parent(), parent);
    QCOMPARE(child->text(0), QStringLiteral("Nuova categoria 2"));
    QCOMPARE(TreeNode(child).ParentId, -1);

    Act(QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    const int parentKey = Scalar(QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA FROM CATEGORIE_ANA_MAGA "
                                                "WHERE CATEGORIA = 'Nuova categoria 1' AND IDPADRE IS NULL"))
                              .toInt();
    QVERIFY(parentKey > m_bulloni);
    QCOMPARE(Rows(QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA, IDPADRE FROM CATEGORIE_ANA_MAGA "
                                 "WHERE CATEGORIA = 'Nuova categoria 2'")),
             QStringList{QStringLiteral("%1|%2").arg(parentKey + 1).arg(parentKey)});
    QCOMPARE(TreeNode(parent).Id, parentKey);
    QCOMPARE(TreeNode(child).Id, parentKey + 1);
    QCOMPARE(TreeNode(child).ParentId, parentKey);
    QCOMPARE(TreeNode(child).Status, QStringLiteral("False"));
    QVERIFY(!m_window->Modified());
}

void TestGestioneCategorie::threeLevelNewBranchSavedAtOnce()
{
    Open();
    Select(Item(QStringLiteral("Ferramenta")));
    Act(QStringLiteral("actNuovaCategoria"));
    Rename(Tree()->currentItem(), QStringLiteral("Fissaggio"));
    Act(QStringLiteral("actNuovaCategoria"));
    Rename(Tree()->currentItem(), QStringLiteral("Tasselli"));
    Act(QStringLiteral("actNuovaCategoria"));
    Rename(Tree()->currentItem(), QStringLiteral("Tasselli a espansione"));
    QVERIFY(m_responder->Messages().isEmpty());

    Act(QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    const auto key = [this](const char *name) {
        return Scalar(QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA FROM CATEGORIE_ANA_MAGA WHERE CATEGORIA = ")
                      + QuotedStr(QString::fromLatin1(name)))
            .toInt();
    };
    const auto parentOf = [this](const char *name) {
        return Scalar(QStringLiteral("SELECT IDPADRE FROM CATEGORIE_ANA_MAGA WHERE CATEGORIA = ")
                      + QuotedStr(QString::fromLatin1(name)))
            .toInt();
    };
    QCOMPARE(parentOf("Fissaggio"), m_ferramenta);
    QCOMPARE(parentOf("Tasselli"), key("Fissaggio"));
    QCOMPARE(parentOf("Tasselli a espansione"), key("Tasselli"));
    QCOMPARE(TreeNode(Item(QStringLiteral("Tasselli a espansione"))).Id, key("Tasselli a espansione"));
    for (QTreeWidgetItemIterator it(Tree()); *it; ++it) {
        if (HasTreeNode(*it))
            QCOMPARE(TreeNode(*it).Status, QStringLiteral("False"));
    }
}

void TestGestioneCategorie::saveFailureRollsBackAndStaysModified()
{
    const int rows = Articoli();
    Open();
    QTreeWidgetItem *root = Tree()->topLevelItem(0);
    Select(root);
    Act(QStringLiteral("actNuovaCategoria"));
    Select(root);
    Act(QStringLiteral("actNuovaCategoria"));
    // Longer than the column holds: the second row cannot be written.
    Rename(Tree()->currentItem(), QString(60, QLatin1Char('X')));
    Rename(Item(QStringLiteral("Viti")), QStringLiteral("Viti inox"));

    Act(QStringLiteral("actSalva"));
    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message message = m_responder->Messages().first();
    QCOMPARE(message.Title, QStringLiteral("Errore"));
    QCOMPARE(message.Text, QStringLiteral("Si è verificato un errore durante il salvataggio dei dati!"));
    QCOMPARE(message.Icon, TQ3MsgIcon::Error);
    QCOMPARE(Articoli(), rows);
    QCOMPARE(Rows(QStringLiteral("SELECT CATEGORIA FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA = %1")
                      .arg(m_viti)),
             QStringList{QStringLiteral("Viti")});
    QVERIFY(m_window->Modified());
    QVERIFY(m_window->findChild<QAction *>(QStringLiteral("actSalva"))->isEnabled());
    QCOMPARE(TreeNode(Item(QString(60, QLatin1Char('X')))).Status, QStringLiteral("New"));
    // Entries written before the failure keep what they were given in memory,
    // although their rows went with the rollback.
    QCOMPARE(TreeNode(Item(QStringLiteral("Viti inox"))).Status, QStringLiteral("False"));
    QCOMPARE(TreeNode(Item(QStringLiteral("Nuova categoria 1"))).Status, QStringLiteral("False"));
    QVERIFY(TreeNode(Item(QStringLiteral("Nuova categoria 1"))).Id > m_bulloni);
}

void TestGestioneCategorie::deleteOfSavedCategoryIsFinalEvenWithoutSaving()
{
    Open();
    Rename(Item(QStringLiteral("Altro")), QStringLiteral("Varie"));
    Select(Item(QStringLiteral("Viti")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actEliminaCategoria"));

    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message question = m_responder->Messages().first();
    QCOMPARE(question.Title, QStringLiteral("Conferma"));
    QCOMPARE(question.Text, QStringLiteral("Confermare l'eliminazione?"));
    QCOMPARE(question.Icon, TQ3MsgIcon::Question);
    QCOMPARE(question.Buttons, TQ3MsgButtons::YesNo);
    QVERIFY(!Item(QStringLiteral("Viti")));
    QCOMPARE(Articoli(QStringLiteral("IDCATEGORIA_ANA_MAGA = %1").arg(m_viti)), 0);
    QVERIFY(m_window->Modified());

    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_module->Main->Form(ActAnaMaga));
    QCOMPARE(Articoli(QStringLiteral("IDCATEGORIA_ANA_MAGA = %1").arg(m_viti)), 0);
    QCOMPARE(Articoli(QStringLiteral("CATEGORIA = 'Varie'")), 0);
}

void TestGestioneCategorie::deleteOfUnsavedCategoryTouchesNothing()
{
    const QString all = QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA, CATEGORIA, IDPADRE FROM CATEGORIE_ANA_MAGA "
                                       "ORDER BY IDCATEGORIA_ANA_MAGA");
    const QStringList before = Rows(all);
    Open();
    Select(Item(QStringLiteral("Viti")));
    Act(QStringLiteral("actNuovaCategoria"));
    QTreeWidgetItem *viti = Item(QStringLiteral("Viti"));
    QCOMPARE(viti->childCount(), 1);
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actEliminaCategoria"));

    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(viti->childCount(), 0);
    QVERIFY(!Item(QStringLiteral("Nuova categoria 1")));
    QCOMPARE(Rows(all), before);
    QVERIFY(m_window->Modified());
}

void TestGestioneCategorie::deleteAnsweredNoKeepsTheCategory()
{
    Open();
    Select(Item(QStringLiteral("Viti")));
    m_responder->Enqueue(TQ3MsgResult::No);
    Act(QStringLiteral("actEliminaCategoria"));
    QVERIFY(Item(QStringLiteral("Viti")));
    QCOMPARE(Articoli(QStringLiteral("IDCATEGORIA_ANA_MAGA = %1").arg(m_viti)), 1);
}

void TestGestioneCategorie::categoryWithSubCategoriesCannotBeDeletedUntilEmpty()
{
    Open();
    Select(Item(QStringLiteral("Ferramenta")));
    Act(QStringLiteral("actEliminaCategoria"));
    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message refusal = m_responder->Messages().first();
    QCOMPARE(refusal.Title, QStringLiteral("Attenzione"));
    QCOMPARE(refusal.Text, QStringLiteral("Impossibile eliminare, l'oggetto non è vuoto!"));
    QCOMPARE(refusal.Icon, TQ3MsgIcon::Warning);
    QVERIFY(Item(QStringLiteral("Ferramenta")));
    QCOMPARE(Articoli(QStringLiteral("IDCATEGORIA_ANA_MAGA = %1").arg(m_ferramenta)), 1);

    m_responder->Clear();
    Select(Item(QStringLiteral("Viti")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actEliminaCategoria"));
    Select(Item(QStringLiteral("Ferramenta")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actEliminaCategoria"));
    QCOMPARE(m_responder->Messages().size(), 2);
    QCOMPARE(m_responder->Messages().at(1).Text, QStringLiteral("Confermare l'eliminazione?"));
    QVERIFY(!Item(QStringLiteral("Ferramenta")));
    QCOMPARE(Articoli(QStringLiteral("IDCATEGORIA_ANA_MAGA IN (%1, %2)").arg(m_ferramenta).arg(m_viti)), 0);
}

void TestGestioneCategorie::rootCannotBeRenamedNorDeleted()
{
    Open();
    QTreeWidgetItem *root = Tree()->topLevelItem(0);
    Select(root);
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("actRinominaCategoria"))->isEnabled());
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("actEliminaCategoria"))->isEnabled());
    QVERIFY(m_window->findChild<QAction *>(QStringLiteral("actNuovaCategoria"))->isEnabled());
    // What the user can still try: the keys that rename and delete.
    QTest::keyClick(Tree(), Qt::Key_F2);
    QTest::keyClick(Tree(), Qt::Key_Delete);
    QVERIFY(!Tree()->viewport()->findChild<QLineEdit *>());
    QVERIFY(!(root->flags() & Qt::ItemIsEditable));
    QCOMPARE(Tree()->topLevelItem(0), root);
    QVERIFY(m_responder->Messages().isEmpty());

    Select(Item(QStringLiteral("Viti")));
    QVERIFY(m_window->findChild<QAction *>(QStringLiteral("actRinominaCategoria"))->isEnabled());
    QVERIFY(m_window->findChild<QAction *>(QStringLiteral("actEliminaCategoria"))->isEnabled());
}

void TestGestioneCategorie::closingWithUnsavedChangesAsksAndNoKeepsTheWindow()
{
    Open();
    Select(Tree()->topLevelItem(0));
    Act(QStringLiteral("actNuovaCategoria"));
    m_responder->Enqueue(TQ3MsgResult::No);
    Act(QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QCOMPARE(m_responder->Messages().size(), 1);
    const TQ3Message question = m_responder->Messages().first();
    QCOMPARE(question.Title, QStringLiteral("Conferma"));
    QCOMPARE(question.Text, QStringLiteral("Ci sono delle modifiche non salvate.\n\rContinuare comunque?"));
    QCOMPARE(question.Icon, TQ3MsgIcon::Question);
    QCOMPARE(question.Buttons, TQ3MsgButtons::YesNo);
    QCOMPARE(m_module->Main->Form(ActAnaMaga), m_window);
    QVERIFY(m_window->isVisible());
    QVERIFY(Item(QStringLiteral("Nuova categoria 1")));

    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_module->Main->Form(ActAnaMaga));
    QVERIFY(m_module->MainForm->MdiArea()->subWindowList().isEmpty());
    QCOMPARE(Articoli(QStringLiteral("CATEGORIA = 'Nuova categoria 1'")), 0);
}

void TestGestioneCategorie::closingCleanWindowAsksNothing()
{
    const QPointer<TKRVGestioneCategorieBase> first = Open();
    Act(QStringLiteral("actChiudi"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(m_responder->Messages().isEmpty());
    QVERIFY(first.isNull());
    QVERIFY(!m_module->Main->Form(ActAnaMaga));

    // A new window reads the table again.
    Insert(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("Chiodi"), m_ferramenta);
    QVERIFY(Open());
    QCOMPARE(Item(QStringLiteral("Chiodi"))->parent(), Item(QStringLiteral("Ferramenta")));
}

void TestGestioneCategorie::rootNeverCollapsesAndFoldersFollowState()
{
    Open();
    QTreeWidget *tree = Tree();
    QTreeWidgetItem *root = tree->topLevelItem(0);
    tree->collapseItem(root);
    QVERIFY(root->isExpanded());

    QTreeWidgetItem *ferramenta = Item(QStringLiteral("Ferramenta"));
    tree->collapseItem(ferramenta);
    QCOMPARE(IconImage(ferramenta->icon(0)), IconImage(KRVImage(KRVImgFolderClosed)));
    tree->expandItem(ferramenta);
    QCOMPARE(IconImage(ferramenta->icon(0)), IconImage(KRVImage(KRVImgFolderOpen)));
    QVERIFY(m_responder->Messages().isEmpty());
}

void TestGestioneCategorie::rightPressSelectsBeforeContextMenu()
{
    Open();
    QTreeWidget *tree = Tree();
    QTreeWidgetItem *bulloni = Item(QStringLiteral("Bulloni"));
    const QPoint position = tree->visualItemRect(bulloni).center();
    QVERIFY(tree->currentItem() != bulloni);
    QTest::mousePress(tree->viewport(), Qt::RightButton, {}, position);
    QCOMPARE(tree->currentItem(), bulloni);
    QTest::mouseRelease(tree->viewport(), Qt::RightButton, {}, position);

    QContextMenuEvent event(QContextMenuEvent::Mouse, position, tree->viewport()->mapToGlobal(position));
    QCoreApplication::sendEvent(tree->viewport(), &event);
    auto menu = m_window->findChild<QMenu *>(QStringLiteral("pmCategorie"));
    QVERIFY(menu->isVisible());
    menu->hide();

    m_responder->Enqueue(TQ3MsgResult::No);
    KRVTest::Trigger(menu->actions().at(2));
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(m_responder->Messages().first().Text, QStringLiteral("Confermare l'eliminazione?"));
}

void TestGestioneCategorie::serviceWindowWorksOnServiceCategories()
{
    const int pulizie = Insert(QStringLiteral("CATEGORIE_SERVIZI"), QStringLiteral("Pulizie"));
    const int vetri = Insert(QStringLiteral("CATEGORIE_SERVIZI"), QStringLiteral("Vetri"), pulizie);
    const int articoli = Articoli();
    TKRVGestioneCategorieBase *window = Open(ActServizi);
    QVERIFY(qobject_cast<TKRVGestioneCategorieServizi *>(window));
    QCOMPARE(window->windowTitle(), QStringLiteral("Gestione categorie servizi"));
    QVERIFY(!Item(QStringLiteral("Ferramenta")));
    QCOMPARE(Item(QStringLiteral("Vetri"))->parent(), Item(QStringLiteral("Pulizie")));

    Select(Item(QStringLiteral("Vetri")));
    Act(QStringLiteral("actNuovaCategoria"));
    Act(QStringLiteral("actNuovaCategoria"));
    Rename(Item(QStringLiteral("Pulizie")), QStringLiteral("Pulizie civili"));
    Act(QStringLiteral("actSalva"));
    QVERIFY(m_responder->Messages().isEmpty());
    const int first = Scalar(QStringLiteral("SELECT IDCATEGORIA_SERVIZI FROM CATEGORIE_SERVIZI "
                                            "WHERE CATEGORIA = 'Nuova categoria 1'"))
                          .toInt();
    QCOMPARE(Rows(QStringLiteral("SELECT CATEGORIA, IDPADRE FROM CATEGORIE_SERVIZI WHERE IDPADRE IS NOT NULL "
                                 "ORDER BY IDCATEGORIA_SERVIZI")),
             (QStringList{QStringLiteral("Vetri|%1").arg(pulizie), QStringLiteral("Nuova categoria 1|%1").arg(vetri),
                          QStringLiteral("Nuova categoria 2|%1").arg(first)}));
    QCOMPARE(Rows(
                 QStringLiteral("SELECT CATEGORIA FROM CATEGORIE_SERVIZI WHERE IDCATEGORIA_SERVIZI = %1").arg(pulizie)),
             QStringList{QStringLiteral("Pulizie civili")});
    QCOMPARE(Articoli(), articoli);

    Select(Item(QStringLiteral("Nuova categoria 2")));
    m_responder->Enqueue(TQ3MsgResult::Yes);
    Act(QStringLiteral("actEliminaCategoria"));
    QCOMPARE(Scalar(QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_SERVIZI WHERE CATEGORIA = 'Nuova categoria 2'"))
                 .toInt(),
             0);
    QCOMPARE(Articoli(), articoli);
}

// Another workstation's category takes the key the generator would have
// given the new parent next.
void TestGestioneCategorie::newUnderNewGetsItsParentsOwnKeyWhenAnotherWorkstationInsertsMeanwhile()
{
    const int expected = GetLastGeneratorValue(QStringLiteral("GN_IDCATEGORIA_ANA_MAGA"), m_module->Database.Db()) + 1;
    m_module->Database.InsertOfAnotherWorkstationAtNextInsert(
        QStringLiteral("CATEGORIE_ANA_MAGA"),
        QStringLiteral("INSERT INTO CATEGORIE_ANA_MAGA (CATEGORIA) VALUES ('Altrui')"));
    Open();
    const auto [parent, child] = NewParentAndChild();
    Act(QStringLiteral("actSalva"));

    QVERIFY(m_responder->Messages().isEmpty());
    const QString all = QStringLiteral("SELECT IDCATEGORIA_ANA_MAGA, CATEGORIA, IDPADRE FROM CATEGORIE_ANA_MAGA "
                                       "WHERE IDCATEGORIA_ANA_MAGA >= %1 ORDER BY IDCATEGORIA_ANA_MAGA")
                            .arg(expected);
    QCOMPARE(Rows(all), (QStringList{QStringLiteral("%1|Altrui|<null>").arg(expected),
                                     QStringLiteral("%1|Nuova categoria 1|<null>").arg(expected + 1),
                                     QStringLiteral("%1|Nuova categoria 2|%2").arg(expected + 2).arg(expected + 1)}));
    QCOMPARE(TreeNode(parent).Id, expected + 1);
    QCOMPARE(TreeNode(child).Id, expected + 2);
    QCOMPARE(TreeNode(child).ParentId, expected + 1);

    // Renaming and deleting afterwards touch the window's own rows only.
    Rename(parent, QStringLiteral("Fissaggio"));
    Act(QStringLiteral("actSalva"));
    Select(child);
    Act(QStringLiteral("actEliminaCategoria"));
    QCOMPARE(m_responder->Messages().size(), 1);
    QCOMPARE(Rows(all), (QStringList{QStringLiteral("%1|Altrui|<null>").arg(expected),
                                     QStringLiteral("%1|Fissaggio|<null>").arg(expected + 1)}));
}

QTEST_MAIN(TestGestioneCategorie)
#include "tst_gestionecategorie.moc"
