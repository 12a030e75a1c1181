#include "uKRVGestioneCategorieBase.h"

#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3TreeUtils.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVServiziFinestre.h"

#include <QCloseEvent>
#include <QHash>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <functional>

namespace {

const QString ColonnaPadre = QStringLiteral("IDPADRE");
const QString ColonnaCategoria = QStringLiteral("CATEGORIA");
const QString TestoRadice = QStringLiteral("Categorie");
const QString PrefissoNuovaCategoria = QStringLiteral("Nuova categoria ");
const QString StatusFalse = QString::fromLatin1(Q3NodeStatusFalse);
const QString StatusNew = QString::fromLatin1(Q3NodeStatusNew);
const QString StatusTrue = QString::fromLatin1(Q3NodeStatusTrue);

const char MsgNomeEsistente[] = "Esiste già un oggetto con questo nome!";
const char MsgDatiCorrelati[] = "Non è possibile eliminare questa categoria,\n\resistono dei dati correlati!";
const char MsgNonVuoto[] = "Impossibile eliminare, l'oggetto non è vuoto!";
const char MsgConfermaEliminazione[] = "Confermare l'eliminazione?";
const char MsgErroreSalvataggio[] = "Si è verificato un errore durante il salvataggio dei dati!";
const char MsgModificheNonSalvate[] = "Ci sono delle modifiche non salvate.\n\rContinuare comunque?";

// The tree, letting the window know which entry an editor belongs to.
class TKRVAlberoModificabile : public QTreeWidget
{
public:
    using QTreeWidget::QTreeWidget;
    QTreeWidgetItem *ItemFromIndex(const QModelIndex &index) const { return itemFromIndex(index); }
};

// Hands the text of a finished in-place edit to the window, which decides
// whether the entry takes it.
class TKRVCategoriaDelegate : public QStyledItemDelegate
{
public:
    using TEdited = std::function<void(const QModelIndex &index, const QString &text)>;
    TKRVCategoriaDelegate(QObject *parent, TEdited edited) : QStyledItemDelegate(parent), m_edited(std::move(edited)) {}

    void setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const override
    {
        if (auto line = qobject_cast<QLineEdit *>(editor))
            m_edited(index, line->text());
    }

private:
    TEdited m_edited;
};

// The entry's depth: the root is level 0, top-level categories level 1.
int Livello(const QTreeWidgetItem *item)
{
    int level = 0;
    for (const QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
        ++level;
    return level;
}

TKRVStatoCategoria StatoCategoria(const QString &status)
{
    if (status == StatusNew)
        return TKRVStatoCategoria::Nuova;
    if (status == StatusTrue)
        return TKRVStatoCategoria::Rinominata;
    return TKRVStatoCategoria::Scritta;
}

QString StatusNodo(TKRVStatoCategoria stato)
{
    switch (stato) {
    case TKRVStatoCategoria::Nuova:
        return StatusNew;
    case TKRVStatoCategoria::Rinominata:
        return StatusTrue;
    case TKRVStatoCategoria::Scritta:
        break;
    }
    return StatusFalse;
}

} // namespace

TKRVGestioneCategorieBase::TKRVGestioneCategorieBase(IKRVMain &main, const TKRVCategorieTabella &tabella,
                                                     QWidget *parent)
    : QWidget(parent), m_main(main), m_tabella(tabella),
      m_archivio(*main.Dataset(tabella.Dataset), tabella.Table, tabella.KeyColumn)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_tabella.Caption);
    setWindowIcon(KRVImage(KRVImgFolderOpen));

    m_actChiudi = AddAction(QStringLiteral("actChiudi"), QStringLiteral("Chiudi"), KRVImgChiudi,
                            &TKRVGestioneCategorieBase::actChiudiExecute);
    m_actNuovaCategoria = AddAction(QStringLiteral("actNuovaCategoria"), QStringLiteral("Nuova categoria"), KRVImgNuovo,
                                    &TKRVGestioneCategorieBase::actNuovaCategoriaExecute);
    m_actRinominaCategoria = AddAction(QStringLiteral("actRinominaCategoria"), QStringLiteral("Rinomina categoria"),
                                       KRVImgModifica, &TKRVGestioneCategorieBase::actRinominaCategoriaExecute);
    m_actRinominaCategoria->setShortcut(QKeySequence(Qt::Key_F2));
    m_actEliminaCategoria = AddAction(QStringLiteral("actEliminaCategoria"), QStringLiteral("Elimina categoria"),
                                      KRVImgElimina, &TKRVGestioneCategorieBase::actEliminaCategoriaExecute);
    m_actSalva = AddAction(QStringLiteral("actSalva"), QStringLiteral("Salva"), KRVImgSalva,
                           &TKRVGestioneCategorieBase::actSalvaExecute);

    CreateToolBar();

    CreateTree();

    m_pmCategorie = new QMenu(this);
    m_pmCategorie->setObjectName(QStringLiteral("pmCategorie"));
    m_pmCategorie->addActions({m_actNuovaCategoria, m_actRinominaCategoria, m_actEliminaCategoria});

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tBarCategorie);
    layout->addWidget(m_tvCategorie);

    // Wide enough for the whole toolbar.
    setMinimumSize(qMax(layout->sizeHint().width(), 360), 420);
    resize(minimumSize());
    CaricaAlberoCategorie();
    SetModified(false);
}

QAction *TKRVGestioneCategorieBase::AddAction(const QString &name, const QString &caption, int image,
                                              void (TKRVGestioneCategorieBase::*handler)())
{
    QAction *action = KRVCreaAzione(this, name, caption, image, [this, handler] { (this->*handler)(); });
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

void TKRVGestioneCategorieBase::CreateToolBar()
{
    m_tBarCategorie = KRVCreaToolBar(this, QStringLiteral("tBarCategorie"));
    const struct
    {
        QAction *action;
        const char *hint;
    } buttons[] = {
        {m_actChiudi, "Chiudi"},
        {m_actNuovaCategoria, "Nuova categoria"},
        {m_actRinominaCategoria, "Rimonima categoria"},
        {m_actEliminaCategoria, "Elimina categoria"},
        {nullptr, nullptr},
        {m_actSalva, "Salva"},
    };
    for (const auto &button : buttons) {
        if (!button.action) {
            m_tBarCategorie->addSeparator();
            continue;
        }
        m_tBarCategorie->addAction(button.action);
        SetRichHint(m_tBarCategorie->widgetForAction(button.action), QString::fromLatin1(button.hint), QString());
    }
}

void TKRVGestioneCategorieBase::CreateTree()
{
    auto tree = new TKRVAlberoModificabile(this);
    m_tvCategorie = tree;
    m_tvCategorie->setObjectName(QStringLiteral("tvCategorie"));
    m_tvCategorie->setAccessibleName(m_tabella.Caption);
    m_tvCategorie->setHeaderHidden(true);
    // One line of text per entry: rows need not be measured one by one.
    m_tvCategorie->setUniformRowHeights(true);
    m_tvCategorie->setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
    m_tvCategorie->setContextMenuPolicy(Qt::CustomContextMenu);
    const auto edited = [this, tree](const QModelIndex &index, const QString &text) {
        Q3Guarded([&] { tvCategorieEdited(tree->ItemFromIndex(index), text); });
    };
    m_tvCategorie->setItemDelegate(new TKRVCategoriaDelegate(m_tvCategorie, edited));
    SetTreeImages(m_tvCategorie, &KRVImage);
    m_tvCategorie->viewport()->installEventFilter(this);
    connect(m_tvCategorie, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *item) { Q3Guarded([&] { tvCategorieExpanded(item); }); });
    connect(m_tvCategorie, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem *item) { Q3Guarded([&] { tvCategorieCollapsed(item); }); });
    connect(m_tvCategorie, &QTreeWidget::customContextMenuRequested, this,
            [this](const QPoint &position) { Q3Guarded([&] { tvCategorieContextPopup(position); }); });
    connect(m_tvCategorie, &QTreeWidget::currentItemChanged, this, [this] { Q3Guarded([&] { tvCategorieChange(); }); });
}

void TKRVGestioneCategorieBase::SetModified(bool value)
{
    m_modified = value;
    m_actSalva->setEnabled(value);
}

void TKRVGestioneCategorieBase::CaricaAlberoCategorie()
{
    {
        // Filled whole before it is drawn, without an expand signal per entry:
        // the images are given once below.
        const QSignalBlocker quiet(m_tvCategorie);
        m_tvCategorie->setUpdatesEnabled(false);
        const auto draw = qScopeGuard([this] { m_tvCategorie->setUpdatesEnabled(true); });
        m_tvCategorie->clear();
        // The root belongs to the window: it is never edited.
        m_root = new QTreeWidgetItem(m_tvCategorie, {TestoRadice});
        FillTreeView(m_tvCategorie, m_root, m_tabella.Table, m_tabella.KeyColumn, ColonnaPadre, ColonnaCategoria,
                     QString(), m_main.Sessione());
        for (QTreeWidgetItemIterator it(m_tvCategorie); *it; ++it) {
            if (*it != m_root)
                (*it)->setFlags((*it)->flags() | Qt::ItemIsEditable);
        }
        m_tvCategorie->expandAll();
        UpdateTreeImages(m_tvCategorie, KRVImgFolderClosed, KRVImgFolderOpen);
        m_tvCategorie->setCurrentItem(m_root);
    }
    tvCategorieChange();
}

QTreeWidgetItem *TKRVGestioneCategorieBase::Categoria() const
{
    QTreeWidgetItem *item = m_tvCategorie->currentItem();
    return HasTreeNode(item) ? item : nullptr;
}

QString TKRVGestioneCategorieBase::NomeNuovaCategoria() const
{
    for (int number = 1;; ++number) {
        const QString name = PrefissoNuovaCategoria + QString::number(number);
        if (!TreeItemExists(m_tvCategorie, name, nullptr))
            return name;
    }
}

void TKRVGestioneCategorieBase::actChiudiExecute()
{
    CloseQ3ChildForm(this);
}

void TKRVGestioneCategorieBase::actNuovaCategoriaExecute()
{
    QTreeWidgetItem *parent = m_tvCategorie->currentItem();
    if (!parent)
        return;
    const QString name = NomeNuovaCategoria();
    auto item = new QTreeWidgetItem(parent, {name});
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    SetTreeNode(item, {-1, name, HasTreeNode(parent) ? TreeNode(parent).Id : -1, StatusNew});
    UpdateTreeNodeImages(item, KRVImgFolderClosed, KRVImgFolderOpen);
    parent->setExpanded(true);
    UpdateTreeNodeImages(parent, KRVImgFolderClosed, KRVImgFolderOpen);
    m_tvCategorie->setCurrentItem(item);
    SetModified(true);
}

void TKRVGestioneCategorieBase::actRinominaCategoriaExecute()
{
    QTreeWidgetItem *item = Categoria();
    if (!item)
        return;
    m_tvCategorie->scrollToItem(item);
    m_tvCategorie->setFocus();
    m_tvCategorie->editItem(item);
}

void TKRVGestioneCategorieBase::actEliminaCategoriaExecute()
{
    QTreeWidgetItem *item = Categoria();
    if (!item)
        return;
    const TQ3TreeNode node = TreeNode(item);
    if (!m_tabella.CanDelete(m_main.Sessione(), node.Id)) {
        Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(MsgDatiCorrelati), TQ3MsgIcon::Warning);
        return;
    }
    if (item->childCount() > 0) {
        Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(MsgNonVuoto), TQ3MsgIcon::Warning);
        return;
    }
    if (Q3MessageBox(QStringLiteral("Conferma"), QString::fromUtf8(MsgConfermaEliminazione), TQ3MsgIcon::Question,
                     TQ3MsgButtons::YesNo)
        != TQ3MsgResult::Yes)
        return;
    // A saved category goes at once: the deletion does not wait for "Salva".
    if (node.Status != StatusNew)
        m_archivio.Elimina(node.Id);
    QTreeWidgetItem *parent = item->parent();
    delete item;
    UpdateTreeNodeImages(parent, KRVImgFolderClosed, KRVImgFolderOpen);
}

void TKRVGestioneCategorieBase::actSalvaExecute()
{
    TQ3BusyCursor busy;
    QList<QTreeWidgetItem *> voci;
    QList<TKRVCategoria> categorie = Categorie(voci);
    try {
        m_archivio.Salva(categorie);
        RiportaCategorie(voci, categorie);
        SetModified(false);
    } catch (const std::exception &) {
        RiportaCategorie(voci, categorie);
        Q3MessageBox(QStringLiteral("Errore"), QString::fromUtf8(MsgErroreSalvataggio), TQ3MsgIcon::Error);
    }
}

QList<TKRVCategoria> TKRVGestioneCategorieBase::Categorie(QList<QTreeWidgetItem *> &voci) const
{
    QList<TKRVCategoria> categorie;
    QHash<const QTreeWidgetItem *, int> posizioni;
    for (QTreeWidgetItemIterator it(m_tvCategorie); *it; ++it) {
        QTreeWidgetItem *item = *it;
        if (!HasTreeNode(item))
            continue;
        const TQ3TreeNode node = TreeNode(item);
        // Below a category the parent is the category's entry, saved before it.
        const int padre = Livello(item) > 1 ? posizioni.value(item->parent(), -1) : -1;
        posizioni.insert(item, int(categorie.size()));
        categorie.append({node.Id, node.Text, node.ParentId, padre, StatoCategoria(node.Status)});
        voci.append(item);
    }
    return categorie;
}

void TKRVGestioneCategorieBase::RiportaCategorie(const QList<QTreeWidgetItem *> &voci,
                                                 const QList<TKRVCategoria> &categorie)
{
    for (int i = 0; i < voci.size(); ++i) {
        const TKRVCategoria &categoria = categorie.at(i);
        SetTreeNode(voci.at(i), {categoria.Id, categoria.Testo, categoria.IdPadre, StatusNodo(categoria.Stato)});
    }
}

void TKRVGestioneCategorieBase::tvCategorieEdited(QTreeWidgetItem *item, const QString &text)
{
    // A box shown while the editor closes takes its focus, which ends the same
    // edit a second time.
    if (m_inEdited || !HasTreeNode(item))
        return;
    m_inEdited = true;
    const auto done = qScopeGuard([this] { m_inEdited = false; });
    TQ3TreeNode node = TreeNode(item);
    if (text.isEmpty() || text == node.Text)
        return;
    if (TreeItemExists(m_tvCategorie, text, item)) {
        Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(MsgNomeEsistente), TQ3MsgIcon::Warning);
        item->setText(0, node.Text);
        return;
    }
    item->setText(0, text);
    node.Text = text;
    if (node.Status != StatusNew)
        node.Status = StatusTrue;
    SetTreeNode(item, node);
    SetModified(true);
}

void TKRVGestioneCategorieBase::tvCategorieExpanded(QTreeWidgetItem *item)
{
    UpdateTreeNodeImages(item, KRVImgFolderClosed, KRVImgFolderOpen);
}

void TKRVGestioneCategorieBase::tvCategorieCollapsed(QTreeWidgetItem *item)
{
    if (item == m_root) {
        m_tvCategorie->expandItem(m_root);
        return;
    }
    UpdateTreeNodeImages(item, KRVImgFolderClosed, KRVImgFolderOpen);
}

void TKRVGestioneCategorieBase::tvCategorieMouseDown(const QPoint &position)
{
    if (QTreeWidgetItem *item = m_tvCategorie->itemAt(position))
        m_tvCategorie->setCurrentItem(item);
}

void TKRVGestioneCategorieBase::tvCategorieContextPopup(const QPoint &position)
{
    if (m_tvCategorie->itemAt(position))
        m_pmCategorie->popup(m_tvCategorie->viewport()->mapToGlobal(position));
}

void TKRVGestioneCategorieBase::tvCategorieChange()
{
    const bool categoria = Categoria() != nullptr;
    m_actNuovaCategoria->setEnabled(m_tvCategorie->currentItem() != nullptr);
    m_actRinominaCategoria->setEnabled(categoria);
    m_actEliminaCategoria->setEnabled(categoria);
}

bool TKRVGestioneCategorieBase::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_tvCategorie->viewport() && event->type() == QEvent::MouseButtonPress) {
        auto press = static_cast<QMouseEvent *>(event);
        if (press->button() == Qt::RightButton)
            Q3Guarded([&] { tvCategorieMouseDown(press->position().toPoint()); });
    }
    return QWidget::eventFilter(watched, event);
}

void TKRVGestioneCategorieBase::closeEvent(QCloseEvent *event)
{
    bool close = true;
    Q3Guarded([&] {
        close = !m_modified
                || Q3MessageBox(QStringLiteral("Conferma"), QString::fromUtf8(MsgModificheNonSalvate),
                                TQ3MsgIcon::Question, TQ3MsgButtons::YesNo)
                       == TQ3MsgResult::Yes;
    });
    if (close)
        event->accept();
    else
        event->ignore();
}
