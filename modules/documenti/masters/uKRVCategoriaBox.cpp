#include "uKRVCategoriaBox.h"

#include "Q3TreeUtils.h"
#include "Q3Utils.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QBoxLayout>
#include <QTreeWidgetItemIterator>

namespace {

// The category key of an entry, absent on the entry for all categories.
constexpr int KeyRole = Qt::UserRole + 1;

} // namespace

TKRVCategoriaBox::TKRVCategoriaBox(const QString &name, TKRVAlberoCategorie albero, QWidget *parent)
    : QComboBox(parent), m_info(std::move(albero)), m_albero(new QTreeWidget(this))
{
    setObjectName(name);
    m_albero->setObjectName(name + QStringLiteral("Albero"));
    m_albero->setHeaderHidden(true);
    // The list is always the whole tree: an entry is chosen with one click.
    m_albero->setItemsExpandable(false);
    m_albero->setRootIsDecorated(false);
    m_albero->setUniformRowHeights(true);
    SetTreeImages(m_albero, &KRVImage);
    setModel(m_albero->model());
    setView(m_albero);
    setMaxVisibleItems(20);
    setMinimumWidth(200);
    if (m_info.UnderFirstEntry)
        setPlaceholderText(m_info.FirstEntry);
}

void TKRVCategoriaBox::CaricaCategorie()
{
    m_albero->clear();
    QTreeWidgetItem *first = m_info.FirstEntry.isEmpty() ? nullptr : new QTreeWidgetItem(m_albero, {m_info.FirstEntry});
    FillTreeView(m_albero, m_info.UnderFirstEntry ? first : nullptr, m_info.Table, m_info.KeyColumn,
                 QStringLiteral("IDPADRE"), QStringLiteral("CATEGORIA"), m_info.OrderBy, KRVSessioneModulo());
    m_albero->expandAll();
    for (QTreeWidgetItemIterator it(m_albero); *it; ++it) {
        if (HasTreeNode(*it))
            (*it)->setData(0, KeyRole, TreeNode(*it).Id);
        UpdateTreeNodeImages(*it, KRVImgFolderClosed, KRVImgFolderOpen);
    }
    setCurrentIndex(first && !m_info.UnderFirstEntry ? 0 : -1);
}

int TKRVCategoriaBox::Categoria() const
{
    const QVariant key = currentData(KeyRole);
    return key.isValid() ? key.toInt() : -1;
}

QList<int> TKRVCategoriaBox::CategorieSelezionate() const
{
    const int key = Categoria();
    if (key < 0)
        return {};
    return GetElencoIdFiglio(m_info.KeyColumn, key, m_info.Table, KRVSessioneModulo());
}

QString TKRVCategoriaBox::ElencoCategorie(const QString &separator) const
{
    QStringList keys;
    for (const int key : CategorieSelezionate())
        keys << QString::number(key);
    return keys.join(separator);
}

void TKRVCategoriaBox::SelezionaCategoria(int key)
{
    for (QTreeWidgetItemIterator it(m_albero); *it; ++it) {
        if ((*it)->data(0, KeyRole) != QVariant(key))
            continue;
        // The drop-down picks a row under its root: a nested entry is reached
        // through its parent, and the whole tree is shown again after.
        const QModelIndex index = m_albero->indexFromItem(*it);
        setRootModelIndex(index.parent());
        setCurrentIndex(index.row());
        setRootModelIndex(QModelIndex());
        return;
    }
    setCurrentIndex(-1);
}

void KRVInserisciCategorie(QWidget *owner, const TKRVElencoRicerca &elenco, TKRVCategoriaBox *box)
{
    QToolBar *bar = KRVCreaToolBar(owner, QStringLiteral("tBarCategorie"));
    QLabel *label = KRVEtichetta(QStringLiteral("Categoria"), box);
    label->setContentsMargins(6, 0, 6, 0);
    bar->addWidget(label);
    bar->addWidget(box);
    box->setMinimumWidth(300);
    auto layout = static_cast<QBoxLayout *>(owner->layout());
    layout->insertWidget(layout->indexOf(elenco.BarraRicerca()) + 1, bar);
}
