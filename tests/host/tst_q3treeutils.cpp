#include "Q3Exception.h"
#include "Q3TestDatabase.h"
#include "Q3TreeUtils.h"

#include <QPixmap>
#include <QtTest>

class TestQ3TreeUtils : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nodeRecordIsKeptOnTheEntry();
    void entryWithoutRecordAnswersDefault();
    void fillPutsTopLevelRowsUnderTheGivenEntry();
    void fillNestsChildReadBeforeItsParent();
    void fillFollowsTheOrderingClause();
    void fillWithoutEntryUsesTheTopLevel();
    void fillPutsOrphanRowsAtTheTop();
    void fillShowsRowsInALoopOfParents();
    void fillOfUnknownTableRaises();
    void imagesFollowExpandedState();
    void imagesWithoutImageListAreEmpty();
    void wholeTreeImagesTakenOnce();
    void itemExistsAnywhereInTheTree();
    void itemExistsIgnoresLetterCase();
    void itemExistsLeavesOutTheGivenEntry();

private:
    static QStringList Children(const QTreeWidgetItem *item);
    std::unique_ptr<TQ3TestDatabase> m_database;
};

void TestQ3TreeUtils::initTestCase()
{
    m_database = std::make_unique<TQ3TestDatabase>(TQ3TestDatabase::Where::Embedded, false);
    m_database->Exec(QStringLiteral("CREATE TABLE CATEGORIE_PROVA (IDCAT INTEGER NOT NULL PRIMARY KEY, "
                                    "CATEGORIA VARCHAR(50) NOT NULL, IDPADRE INTEGER)"));
    // A child stored before its parent, and one row whose parent is gone.
    const char *rows[] = {"INSERT INTO CATEGORIE_PROVA VALUES (5, 'Viti', 2)",
                          "INSERT INTO CATEGORIE_PROVA VALUES (1, 'utensili', NULL)",
                          "INSERT INTO CATEGORIE_PROVA VALUES (2, 'Ferramenta', NULL)",
                          "INSERT INTO CATEGORIE_PROVA VALUES (3, 'Bulloni', 2)",
                          "INSERT INTO CATEGORIE_PROVA VALUES (4, 'Orfana', 99)",
                          "INSERT INTO CATEGORIE_PROVA VALUES (6, 'Brugole', 5)"};
    for (const char *row : rows)
        m_database->Exec(QString::fromLatin1(row));
}

QStringList TestQ3TreeUtils::Children(const QTreeWidgetItem *item)
{
    QStringList texts;
    for (int i = 0; i < item->childCount(); ++i)
        texts << item->child(i)->text(0);
    return texts;
}

void TestQ3TreeUtils::nodeRecordIsKeptOnTheEntry()
{
    QTreeWidget tree;
    auto item = new QTreeWidgetItem(&tree);
    SetTreeNode(item, {7, QStringLiteral("Viti"), 3, QString::fromLatin1(Q3NodeStatusTrue)});
    QVERIFY(HasTreeNode(item));
    const TQ3TreeNode node = TreeNode(item);
    QCOMPARE(node.Id, 7);
    QCOMPARE(node.Text, QStringLiteral("Viti"));
    QCOMPARE(node.ParentId, 3);
    QCOMPARE(node.Status, QStringLiteral("True"));
}

void TestQ3TreeUtils::entryWithoutRecordAnswersDefault()
{
    QTreeWidget tree;
    auto item = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    QVERIFY(!HasTreeNode(item));
    QVERIFY(!HasTreeNode(nullptr));
    QCOMPARE(TreeNode(item).Id, -1);
    QCOMPARE(TreeNode(item).ParentId, -1);
    QCOMPARE(TreeNode(item).Status, QStringLiteral("False"));
}

void TestQ3TreeUtils::fillPutsTopLevelRowsUnderTheGivenEntry()
{
    QTreeWidget tree;
    auto root = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    FillTreeView(&tree, root, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QString(), m_database->Db());
    QCOMPARE(tree.topLevelItemCount(), 1);
    QVERIFY(!HasTreeNode(root));
    QTreeWidgetItem *ferramenta = root->child(Children(root).indexOf(QStringLiteral("Ferramenta")));
    const TQ3TreeNode node = TreeNode(ferramenta);
    QCOMPARE(node.Id, 2);
    QCOMPARE(node.ParentId, -1);
    QCOMPARE(node.Text, QStringLiteral("Ferramenta"));
    QCOMPARE(node.Status, QStringLiteral("False"));
    QCOMPARE(TreeNode(ferramenta->child(0)).ParentId, 2);
}

void TestQ3TreeUtils::fillNestsChildReadBeforeItsParent()
{
    QTreeWidget tree;
    auto root = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    FillTreeView(&tree, root, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QStringLiteral("ORDER BY IDCAT DESC"), m_database->Db());
    QCOMPARE(Children(root),
             (QStringList{QStringLiteral("Orfana"), QStringLiteral("Ferramenta"), QStringLiteral("utensili")}));
    QTreeWidgetItem *ferramenta = root->child(1);
    QCOMPARE(Children(ferramenta), (QStringList{QStringLiteral("Viti"), QStringLiteral("Bulloni")}));
    QCOMPARE(Children(ferramenta->child(0)), QStringList{QStringLiteral("Brugole")});
    QCOMPARE(TreeNode(ferramenta->child(0)->child(0)).Id, 6);
}

void TestQ3TreeUtils::fillFollowsTheOrderingClause()
{
    QTreeWidget tree;
    auto root = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    FillTreeView(&tree, root, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QStringLiteral("ORDER BY UPPER(CATEGORIA)"), m_database->Db());
    QCOMPARE(Children(root),
             (QStringList{QStringLiteral("Ferramenta"), QStringLiteral("Orfana"), QStringLiteral("utensili")}));
    QCOMPARE(Children(root->child(0)), (QStringList{QStringLiteral("Bulloni"), QStringLiteral("Viti")}));
}

void TestQ3TreeUtils::fillWithoutEntryUsesTheTopLevel()
{
    QTreeWidget tree;
    FillTreeView(&tree, nullptr, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QStringLiteral("ORDER BY UPPER(CATEGORIA)"), m_database->Db());
    QCOMPARE(tree.topLevelItemCount(), 3);
    QCOMPARE(tree.topLevelItem(0)->text(0), QStringLiteral("Ferramenta"));
    QCOMPARE(tree.topLevelItem(0)->childCount(), 2);
}

void TestQ3TreeUtils::fillPutsOrphanRowsAtTheTop()
{
    QTreeWidget tree;
    auto root = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    FillTreeView(&tree, root, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QString(), m_database->Db());
    QVERIFY(Children(root).contains(QStringLiteral("Orfana")));
    int entries = 0;
    for (QTreeWidgetItemIterator it(&tree); *it; ++it)
        ++entries;
    QCOMPARE(entries, 7);
}

void TestQ3TreeUtils::fillShowsRowsInALoopOfParents()
{
    m_database->Exec(QStringLiteral("CREATE TABLE CATEGORIE_CICLO (IDCAT INTEGER NOT NULL PRIMARY KEY, "
                                    "CATEGORIA VARCHAR(50) NOT NULL, IDPADRE INTEGER)"));
    m_database->Exec(QStringLiteral("INSERT INTO CATEGORIE_CICLO VALUES (1, 'Prima', 2)"));
    m_database->Exec(QStringLiteral("INSERT INTO CATEGORIE_CICLO VALUES (2, 'Seconda', 1)"));
    QTreeWidget tree;
    FillTreeView(&tree, nullptr, QStringLiteral("CATEGORIE_CICLO"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QStringLiteral("ORDER BY IDCAT"), m_database->Db());
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(tree.topLevelItem(0)->text(0), QStringLiteral("Prima"));
    QCOMPARE(Children(tree.topLevelItem(0)), QStringList{QStringLiteral("Seconda")});
}

void TestQ3TreeUtils::fillOfUnknownTableRaises()
{
    QTreeWidget tree;
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, FillTreeView(&tree, nullptr, QStringLiteral("NESSUNA_TABELLA"),
                                                        QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                                                        QStringLiteral("CATEGORIA"), QString(), m_database->Db()));
    QCOMPARE(tree.topLevelItemCount(), 0);
}

void TestQ3TreeUtils::imagesFollowExpandedState()
{
    QPixmap closedPixmap(16, 16);
    closedPixmap.fill(Qt::red);
    QPixmap openPixmap(16, 16);
    openPixmap.fill(Qt::green);
    const QIcon closed(closedPixmap);
    const QIcon open(openPixmap);
    QTreeWidget tree;
    SetTreeImages(&tree, [&](int index) { return index == 38 ? closed : index == 39 ? open : QIcon(); });
    auto parent = new QTreeWidgetItem(&tree, {QStringLiteral("Ferramenta")});
    new QTreeWidgetItem(parent, {QStringLiteral("Viti")});

    UpdateTreeNodeImages(parent, 38, 39);
    QCOMPARE(parent->icon(0).cacheKey(), closed.cacheKey());
    parent->setExpanded(true);
    UpdateTreeNodeImages(parent, 38, 39);
    QCOMPARE(parent->icon(0).cacheKey(), open.cacheKey());
    parent->setExpanded(false);
    UpdateTreeNodeImages(parent, 38, 39);
    QCOMPARE(parent->icon(0).cacheKey(), closed.cacheKey());
    QCOMPARE(TreeImage(&tree, 39).cacheKey(), open.cacheKey());

    // An entry with nothing below it shows the closed folder even when expanded.
    QTreeWidgetItem *leaf = parent->child(0);
    leaf->setExpanded(true);
    UpdateTreeNodeImages(leaf, 38, 39);
    QCOMPARE(leaf->icon(0).cacheKey(), closed.cacheKey());
}

void TestQ3TreeUtils::wholeTreeImagesTakenOnce()
{
    QPixmap closedPixmap(16, 16);
    closedPixmap.fill(Qt::red);
    QPixmap openPixmap(16, 16);
    openPixmap.fill(Qt::green);
    const QIcon closed(closedPixmap);
    const QIcon open(openPixmap);
    QTreeWidget tree;
    int lookups = 0;
    SetTreeImages(&tree, [&](int index) {
        ++lookups;
        return index == 38 ? closed : index == 39 ? open : QIcon();
    });
    auto top = new QTreeWidgetItem(&tree, {QStringLiteral("Ferramenta")});
    auto middle = new QTreeWidgetItem(top, {QStringLiteral("Viteria")});
    auto leaf = new QTreeWidgetItem(middle, {QStringLiteral("Viti legno")});
    auto shut = new QTreeWidgetItem(&tree, {QStringLiteral("Idraulica")});
    new QTreeWidgetItem(shut, {QStringLiteral("Tubi")});
    top->setExpanded(true);
    middle->setExpanded(true);
    leaf->setExpanded(true);

    UpdateTreeImages(&tree, 38, 39);
    QCOMPARE(lookups, 2);
    QCOMPARE(top->icon(0).cacheKey(), open.cacheKey());
    QCOMPARE(middle->icon(0).cacheKey(), open.cacheKey());
    QCOMPARE(leaf->icon(0).cacheKey(), closed.cacheKey());
    QCOMPARE(shut->icon(0).cacheKey(), closed.cacheKey());
    QCOMPARE(shut->child(0)->icon(0).cacheKey(), closed.cacheKey());
}

void TestQ3TreeUtils::imagesWithoutImageListAreEmpty()
{
    QTreeWidget tree;
    auto item = new QTreeWidgetItem(&tree, {QStringLiteral("Ferramenta")});
    UpdateTreeNodeImages(item, 38, 39);
    QVERIFY(item->icon(0).isNull());
    QVERIFY(TreeImage(nullptr, 38).isNull());
}

void TestQ3TreeUtils::itemExistsAnywhereInTheTree()
{
    QTreeWidget tree;
    auto root = new QTreeWidgetItem(&tree, {QStringLiteral("Categorie")});
    FillTreeView(&tree, root, QStringLiteral("CATEGORIE_PROVA"), QStringLiteral("IDCAT"), QStringLiteral("IDPADRE"),
                 QStringLiteral("CATEGORIA"), QString(), m_database->Db());
    QVERIFY(TreeItemExists(&tree, QStringLiteral("Brugole"), nullptr));
    QVERIFY(TreeItemExists(&tree, QStringLiteral("Categorie"), nullptr));
    QVERIFY(!TreeItemExists(&tree, QStringLiteral("Chiodi"), nullptr));
    QVERIFY(!TreeItemExists(&tree, QStringLiteral("Brugole "), nullptr));
}

void TestQ3TreeUtils::itemExistsIgnoresLetterCase()
{
    QTreeWidget tree;
    new QTreeWidgetItem(&tree, {QStringLiteral("Ferramenta")});
    QVERIFY(TreeItemExists(&tree, QStringLiteral("FERRAMENTA"), nullptr));
    QVERIFY(TreeItemExists(&tree, QStringLiteral("ferramenta"), nullptr));
}

void TestQ3TreeUtils::itemExistsLeavesOutTheGivenEntry()
{
    QTreeWidget tree;
    auto first = new QTreeWidgetItem(&tree, {QStringLiteral("Viti")});
    auto second = new QTreeWidgetItem(first, {QStringLiteral("Bulloni")});
    QVERIFY(!TreeItemExists(&tree, QStringLiteral("Viti"), first));
    QVERIFY(!TreeItemExists(&tree, QStringLiteral("VITI"), first));
    QVERIFY(TreeItemExists(&tree, QStringLiteral("Viti"), second));
}

QTEST_MAIN(TestQ3TreeUtils)
#include "tst_q3treeutils.moc"
