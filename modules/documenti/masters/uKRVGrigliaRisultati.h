#pragma once

#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QTableWidget>

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

// The read-only results grid of search lists and selection dialogs: one
// header row, whole rows selected, sorting by a click on a header, and in
// column 0 the row's key, hidden. Numbers are kept as "%.2f" texts and dates
// as "YYYY-MM-DD", formatted only for display.
class TKRVGrigliaRisultati : public QTableWidget
{
    Q_OBJECT

public:
    explicit TKRVGrigliaRisultati(const QString &name, QWidget *parent = nullptr);

    // The header row only: the hidden key column, then these.
    void CreaGrigliaVuota(const QString &keyField, const QList<TKRVColonna> &columns);
    // Down to the header row.
    void Svuota();
    // One row per query row, in the query's order; the first row is selected.
    void Carica(QSqlQuery &query);

    bool HaRigaSelezionata() const;
    // The key of the selected row, or -1.
    int ChiaveSelezionata() const;
    // The stored text of a cell of the selected row, or an empty text.
    QString ValoreSelezionato(int column) const;
    void RimuoviSelezionata();
    // The stored text of a cell.
    QString Valore(int row, int column) const;

    // Gives the column what the client width leaves after the other visible
    // columns and room for the vertical scroll bar.
    void AdattaColonna(int column);

signals:
    void Ridimensionata();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    int RigaSelezionata() const;

    QList<TKRVColonna> m_columns;
};
