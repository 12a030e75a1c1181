#pragma once

#include "Q3Global.h"

#include <QIcon>
#include <QMetaType>
#include <QSqlDatabase>
#include <QString>
#include <QTreeWidget>
#include <QTreeWidgetItem>

#include <functional>

// Trees of categories read from a table with a key column, a parent column
// (null for a top-level row) and a text column, shown in a QTreeWidget whose
// entries each carry a node record.

// The node record's states.
inline constexpr char Q3NodeStatusFalse[] = "False"; // as in the table
inline constexpr char Q3NodeStatusNew[] = "New";     // not written yet: to be inserted
inline constexpr char Q3NodeStatusTrue[] = "True";   // given a new name: to be updated

// What a category entry knows of its row.
struct TQ3TreeNode
{
    int Id = -1;       // the row's key; -1 while not written
    QString Text;      // the name as last accepted
    int ParentId = -1; // the parent row's key; -1 at the top level or while the parent is not written
    QString Status = QString::fromLatin1(Q3NodeStatusFalse);
};
Q_DECLARE_METATYPE(TQ3TreeNode)

// Whether the entry carries a node record (a fixed entry of the window, such
// as a root or "all categories", does not).
Q3_EXPORT bool HasTreeNode(const QTreeWidgetItem *item);
// The entry's node record; a default record (Id -1) when it carries none.
Q3_EXPORT TQ3TreeNode TreeNode(const QTreeWidgetItem *item);
Q3_EXPORT void SetTreeNode(QTreeWidgetItem *item, const TQ3TreeNode &node);

// The image list of a tree: image index -> icon. The module that owns the
// images sets it once on each of its trees; the host keeps no images.
using TQ3TreeImages = std::function<QIcon(int index)>;
Q3_EXPORT void SetTreeImages(QTreeWidget *tree, const TQ3TreeImages &images);
// The tree's image at the index; a null icon when the tree has no image list.
Q3_EXPORT QIcon TreeImage(const QTreeWidget *tree, int index);

// Adds one entry per row of the table, each under the entry of its parent row,
// top-level rows (and rows whose parent is not in the table) under rootItem,
// or at the tree's top level when rootItem is null. Siblings follow the order
// of the rows, as orderBy gives it ("ORDER BY UPPER(CATEGORIA)", or empty for
// the table's natural order). Every entry shows the text column and carries a
// node record with status "False". Existing entries are kept.
// Raises EQ3Exception when the table cannot be read.
Q3_EXPORT void FillTreeView(QTreeWidget *tree, QTreeWidgetItem *rootItem, const QString &table,
                            const QString &keyColumn, const QString &parentColumn, const QString &textColumn,
                            const QString &orderBy, const QSqlDatabase &connection);

// Gives the entry its folder image from the tree's image list: openImage while
// it is expanded and has entries below it, closedImage otherwise.
Q3_EXPORT void UpdateTreeNodeImages(QTreeWidgetItem *node, int closedImage, int openImage);

// The same for every entry of the tree, each image taken from the image list
// once: the way to give a whole tree just filled its images.
Q3_EXPORT void UpdateTreeImages(QTreeWidget *tree, int closedImage, int openImage);

// Whether an entry of the whole tree other than except bears the text. Letter
// case is not regarded: "Viti" and "VITI" are the same name, as they are in the
// lists sorted by UPPER(CATEGORIA).
Q3_EXPORT bool TreeItemExists(const QTreeWidget *tree, const QString &text, const QTreeWidgetItem *except);
