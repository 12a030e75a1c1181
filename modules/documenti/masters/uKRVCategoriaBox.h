#pragma once

#include "uKRVElencoRicerca.h"

#include <QComboBox>
#include <QList>
#include <QString>
#include <QTreeWidget>

// Where a category tree box reads its entries and how it shows them.
struct TKRVAlberoCategorie
{
    QString Table;      // "CATEGORIE_ANA_MAGA"
    QString KeyColumn;  // "IDCATEGORIA_ANA_MAGA"
    QString OrderBy;    // siblings' order, or empty for the table's own
    QString FirstEntry; // an entry before the tree standing for all categories, or empty
    // The tree hangs below the first entry instead; loading then selects
    // nothing, and the box shows the first entry's text until one is chosen.
    bool UnderFirstEntry = false;
};

// A drop-down whose list is the whole tree of a category table, every entry
// with the folder images, the entry chosen standing for its category key.
class TKRVCategoriaBox : public QComboBox
{
    Q_OBJECT

public:
    TKRVCategoriaBox(const QString &name, TKRVAlberoCategorie albero, QWidget *parent = nullptr);

    // Reads the tree again; selects the first entry when it stands for all
    // categories before the tree, otherwise nothing.
    void CaricaCategorie();
    // The key of the selected category; -1 when none is selected or the entry
    // for all categories is.
    int Categoria() const;
    // The selected category's key followed by the keys of all categories below
    // it; empty when no category is selected.
    QList<int> CategorieSelezionate() const;
    // Those keys in decimal with the separator between them.
    QString ElencoCategorie(const QString &separator) const;
    // Selects the entry of that category; nothing when no entry has the key.
    void SelezionaCategoria(int key);

    QTreeWidget *Albero() const { return m_albero; }

private:
    TKRVAlberoCategorie m_info;
    QTreeWidget *m_albero;
};

// Puts the box, labelled "Categoria", on a toolbar of its own below the
// search toolbar of the owner's list.
void KRVInserisciCategorie(QWidget *owner, const TKRVElencoRicerca &elenco, TKRVCategoriaBox *box);
