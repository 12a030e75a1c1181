#include "Q3TreeUtils.h"

#include "Q3Guards.h"
#include "Q3Sql.h"

#include <QHash>
#include <QList>
#include <QSqlQuery>
#include <QTreeWidgetItemIterator>

namespace {

constexpr int NodeRole = Qt::UserRole;
constexpr char ImagesProperty[] = "Q3TreeImages";

struct TQ3TreeImageList
{
    TQ3TreeImages Images;
};

struct TTreeRow
{
    int Id;
    int ParentId;
    QString Text;
};

} // namespace

Q_DECLARE_METATYPE(TQ3TreeImageList)

bool HasTreeNode(const QTreeWidgetItem *item)
{
    return item && item->data(0, NodeRole).canConvert<TQ3TreeNode>();
}

TQ3TreeNode TreeNode(const QTreeWidgetItem *item)
{
    return HasTreeNode(item) ? item->data(0, NodeRole).value<TQ3TreeNode>() : TQ3TreeNode();
}

void SetTreeNode(QTreeWidgetItem *item, const TQ3TreeNode &node)
{
    item->setData(0, NodeRole, QVariant::fromValue(node));
}

void SetTreeImages(QTreeWidget *tree, const TQ3TreeImages &images)
{
    tree->setProperty(ImagesProperty, QVariant::fromValue(TQ3TreeImageList{images}));
}

QIcon TreeImage(const QTreeWidget *tree, int index)
{
    if (!tree)
        return QIcon();
    const TQ3TreeImageList list = tree->property(ImagesProperty).value<TQ3TreeImageList>();
    return list.Images ? list.Images(index) : QIcon();
}

void FillTreeView(QTreeWidget *tree, QTreeWidgetItem *rootItem, const QString &table, const QString &keyColumn,
                  const QString &parentColumn, const QString &textColumn, const QString &orderBy,
                  const QSqlDatabase &connection)
{
    TQ3BusyCursor busy;
    QString sql = QStringLiteral("SELECT ") + keyColumn + QStringLiteral(", ") + parentColumn + QStringLiteral(", ")
                  + textColumn + QStringLiteral(" FROM ") + table;
    if (!orderBy.isEmpty())
        sql += QLatin1Char(' ') + orderBy;
    QSqlQuery query = OpenQuery(connection, sql);

    QList<TTreeRow> rows;
    QHash<int, qsizetype> rowOfKey;
    while (query.next()) {
        rows.append({query.value(0).toInt(), query.isNull(1) ? -1 : query.value(1).toInt(), query.value(2).toString()});
        rowOfKey.insert(rows.last().Id, rows.size() - 1);
    }

    // Children by parent row, in row order; the rest are top-level rows.
    QHash<qsizetype, QList<qsizetype>> children;
    QList<qsizetype> topLevel;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const auto parent = rowOfKey.constFind(rows.at(i).ParentId);
        if (rows.at(i).ParentId == -1 || parent == rowOfKey.constEnd())
            topLevel.append(i);
        else
            children[parent.value()].append(i);
    }

    QList<bool> placed(rows.size(), false);
    const auto place = [&](qsizetype first, QTreeWidgetItem *firstParent) {
        QList<std::pair<qsizetype, QTreeWidgetItem *>> pending{{first, firstParent}};
        while (!pending.isEmpty()) {
            const auto [row, parent] = pending.takeFirst();
            if (placed.at(row))
                continue;
            placed[row] = true;
            auto item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(tree);
            item->setText(0, rows.at(row).Text);
            SetTreeNode(item, {rows.at(row).Id, rows.at(row).Text, rows.at(row).ParentId,
                               QString::fromLatin1(Q3NodeStatusFalse)});
            // Children go first, in their order, so that each subtree is whole
            // before the next sibling of its parent is placed.
            const QList<qsizetype> below = children.value(row);
            for (auto it = below.crbegin(); it != below.crend(); ++it)
                pending.prepend({*it, item});
        }
    };
    for (const qsizetype row : std::as_const(topLevel))
        place(row, rootItem);
    // Rows in a loop of parents reach no top-level row: they are shown at the top.
    for (qsizetype row = 0; row < rows.size(); ++row)
        place(row, rootItem);
}

void UpdateTreeNodeImages(QTreeWidgetItem *node, int closedImage, int openImage)
{
    const bool open = node->isExpanded() && node->childCount() > 0;
    node->setIcon(0, TreeImage(node->treeWidget(), open ? openImage : closedImage));
}

void UpdateTreeImages(QTreeWidget *tree, int closedImage, int openImage)
{
    const QIcon closed = TreeImage(tree, closedImage);
    const QIcon open = TreeImage(tree, openImage);
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        (*it)->setIcon(0, (*it)->isExpanded() && (*it)->childCount() > 0 ? open : closed);
}

bool TreeItemExists(const QTreeWidget *tree, const QString &text, const QTreeWidgetItem *except)
{
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget *>(tree)); *it; ++it) {
        if (*it != except && (*it)->text(0).compare(text, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}
