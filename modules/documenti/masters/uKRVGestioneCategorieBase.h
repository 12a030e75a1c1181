#pragma once

#include "KRVArchivioCategorie.h"

#include <QAction>
#include <QMenu>
#include <QSqlDatabase>
#include <QString>
#include <QToolBar>
#include <QTreeWidget>
#include <QWidget>

class IKRVMain;

// What sets one category table apart from the other.
struct TKRVCategorieTabella
{
    QString Caption;   // the window's caption
    QString Table;     // the category table
    QString KeyColumn; // its key column
    QString Dataset;   // the main object's dataset on the table
    bool (*CanDelete)(const QSqlDatabase &db, int id) = nullptr;
};

// A window that edits a tree of categories in memory (new, rename, delete)
// and writes new and renamed categories back on "Salva". Deleting a saved
// category is immediate. Below the fixed root entry every entry carries a node
// record (Q3TreeUtils).
class TKRVGestioneCategorieBase : public QWidget
{
    Q_OBJECT

public:
    TKRVGestioneCategorieBase(IKRVMain &main, const TKRVCategorieTabella &tabella, QWidget *parent = nullptr);

    bool Modified() const { return m_modified; }
    // Enables "Salva" exactly when there is something to save.
    void SetModified(bool value);
    // Reads the whole tree again from the table.
    void CaricaAlberoCategorie();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *AddAction(const QString &name, const QString &caption, int image,
                       void (TKRVGestioneCategorieBase::*handler)());
    void CreateToolBar();
    void CreateTree();

    void actChiudiExecute();
    void actNuovaCategoriaExecute();
    void actRinominaCategoriaExecute();
    void actEliminaCategoriaExecute();
    void actSalvaExecute();
    // The tree's categories in tree order, with the entries they stand for.
    QList<TKRVCategoria> Categorie(QList<QTreeWidgetItem *> &voci) const;
    // What the save made of the categories back into their entries.
    static void RiportaCategorie(const QList<QTreeWidgetItem *> &voci, const QList<TKRVCategoria> &categorie);

    void tvCategorieEdited(QTreeWidgetItem *item, const QString &text);
    void tvCategorieExpanded(QTreeWidgetItem *item);
    void tvCategorieCollapsed(QTreeWidgetItem *item);
    void tvCategorieMouseDown(const QPoint &position);
    void tvCategorieContextPopup(const QPoint &position);
    void tvCategorieChange();

    QString NomeNuovaCategoria() const;
    QTreeWidgetItem *Categoria() const;

    IKRVMain &m_main;
    const TKRVCategorieTabella m_tabella;
    TKRVArchivioCategorie m_archivio;
    bool m_modified = false;
    bool m_inEdited = false;
    QTreeWidget *m_tvCategorie;
    QTreeWidgetItem *m_root = nullptr;
    QToolBar *m_tBarCategorie;
    QMenu *m_pmCategorie;
    QAction *m_actChiudi;
    QAction *m_actNuovaCategoria;
    QAction *m_actRinominaCategoria;
    QAction *m_actEliminaCategoria;
    QAction *m_actSalva;
};
