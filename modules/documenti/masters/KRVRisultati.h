#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QSqlQuery>
#include <QString>

// How a results column shows its value. A check box column reads no query
// column: its boxes start unchecked.
enum class TKRVTipoColonna { Intero, Testo, Importo, Percentuale, Data, Spunta };

// A results column: title, width in pixels (0: hidden), the query column it
// shows and how.
struct TKRVColonna
{
    QString Title;
    int Width = 0;
    QString Field;
    TKRVTipoColonna Tipo = TKRVTipoColonna::Testo;
};

// The rows of a search as they were read, one typed vector per column:
// integers, texts, amounts and percentages as floating-point numbers, dates as
// days, check boxes as their state. The text a view shows is made only when
// it asks for a cell: amounts in the currency format, percentages with two
// decimals and " %", dates in the short form of the user's language; numbers
// right-aligned, the rest left-aligned. Sorting keeps equal rows in their
// order; rows are never written back.
class TKRVRisultati : public QAbstractTableModel
{
    Q_OBJECT

public:
    // The value of a cell as kept: amounts and percentages as "%.2f", dates as "YYYY-MM-DD".
    static constexpr int StoredRole = Qt::UserRole;

    explicit TKRVRisultati(QObject *owner = nullptr);

    // These columns and no row.
    void ImpostaColonne(const QList<TKRVColonna> &columns);
    // No row.
    void Svuota();
    // Appends every row of the query, reading each column at its field's position.
    void Carica(QSqlQuery &query);
    void RimuoviRiga(int row);

    QString Valore(int row, int column) const;
    QString Testo(int row, int column) const;
    QString Titolo(int column) const;
    Qt::CheckState Spunta(int row, int column) const;
    void ImpostaSpunte(int column, Qt::CheckState state);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    // One column's values: the list its kind uses, the others empty.
    struct TValori
    {
        QList<QString> Testi; // Testo
        QList<qint64> Interi; // Intero; Data as Julian days; Spunta as Qt::CheckState
        QList<double> Numeri; // Importo, Percentuale
    };

    TKRVTipoColonna Tipo(int column) const { return m_colonne.at(column).Tipo; }
    // Whether row a comes before row b in the column's ascending order.
    bool Precede(int column, int a, int b) const;

    QList<TKRVColonna> m_colonne;
    QList<TValori> m_valori;
    int m_righe = 0;
};
