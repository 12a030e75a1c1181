#pragma once

#include <QList>
#include <QString>

class TQ3Dataset;

// Where a category stands against its row.
enum class TKRVStatoCategoria {
    Scritta,    // as in the table
    Nuova,      // not written yet: to be inserted
    Rinominata, // given a new name: to be updated
};

// A category of a tree being saved, as the tree window holds it.
struct TKRVCategoria
{
    int Id = -1;      // the row's key; -1 while not written
    QString Testo;    // the name as last accepted
    int IdPadre = -1; // the parent row's key; -1 at the top level or while the parent is not written
    int Padre = -1;   // the parent's position among the categories saved; -1 at the top level
    TKRVStatoCategoria Stato = TKRVStatoCategoria::Scritta;
};

// Writing a category table (IDPADRE, CATEGORIA) through the dataset that holds
// all its rows, on the dataset's session.
class TKRVArchivioCategorie
{
public:
    // Opens the dataset unless it is open already.
    TKRVArchivioCategorie(TQ3Dataset &dataset, QString table, QString keyColumn);

    // Deletes the category's row at once, by its key.
    void Elimina(int id);

    // Writes the new and renamed categories in one transaction, in the order
    // given, in which every parent comes before its children. A new one goes
    // under its parent's key (a parent written just before included) and takes
    // the key the database gives it; each one written is Scritta again.
    // Those written before a failure keep what they took; the transaction is
    // rolled back, the dataset's pending row cancelled, and the failure raised.
    void Salva(QList<TKRVCategoria> &categorie);

private:
    TQ3Dataset &m_dataset;
    QString m_table;
    QString m_keyColumn;
};
