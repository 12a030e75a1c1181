#pragma once

#include "KRVRisultati.h"

#include <QList>
#include <QString>
#include <QTableView>

#include <functional>

// The read-only results grid of search lists and selection dialogs: one
// header row, whole rows selected, sorting by a click on a header, and in
// column 0 the row's key, hidden. It shows the rows of its TKRVRisultati,
// which formats only the cells in sight.
class TKRVGrigliaRisultati : public QTableView
{
    Q_OBJECT

public:
    explicit TKRVGrigliaRisultati(const QString &name, QWidget *parent = nullptr);

    TKRVRisultati *Risultati() const { return m_risultati; }

    // The header row only: the hidden key column, then these.
    void CreaGrigliaVuota(const QString &keyField, const QList<TKRVColonna> &columns);
    // Down to the header row, in the query's order again.
    void Svuota();
    // The rows the reading appends to the results, in its order; the first
    // row is selected.
    void Carica(const std::function<void(TKRVRisultati &)> &leggi);

    int rowCount() const { return m_risultati->rowCount(); }
    int columnCount() const { return m_risultati->columnCount(); }

    bool HaRigaSelezionata() const;
    // The key of the selected row, or -1.
    int ChiaveSelezionata() const;
    // The keys of the selected rows, and of every row, in the grid's order.
    QList<int> ChiaviSelezionate() const;
    QList<int> Chiavi() const;
    // The stored text of a cell of the selected row, or an empty text.
    QString ValoreSelezionato(int column) const;
    void RimuoviSelezionata();
    // The stored text of a cell: amounts as "%.2f", dates as "YYYY-MM-DD".
    QString Valore(int row, int column) const { return m_risultati->Valore(row, column); }
    // The text a cell shows.
    QString Testo(int row, int column) const { return m_risultati->Testo(row, column); }
    QString Titolo(int column) const { return m_risultati->Titolo(column); }

    // Gives the column what the client width leaves after the other visible
    // columns and room for the vertical scroll bar.
    void AdattaColonna(int column);

signals:
    void Ridimensionata();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    int RigaSelezionata() const;

    TKRVRisultati *m_risultati;
};
