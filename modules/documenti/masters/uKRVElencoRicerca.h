#pragma once

#include "uKRVGrigliaRisultati.h"

#include <QAction>
#include <QLineEdit>
#include <QList>
#include <QObject>
#include <QString>
#include <QToolBar>

#include <functional>

// A text filter: "WHERE " (or " AND ") + Condition + the quoted text.
struct TKRVFiltro
{
    QString Name;
    QString Label;
    QString Condition;      // "UM CONTAINING "
    QString Closing{};      // after the quoted text, when the condition opens brackets
    bool UpperCase = false; // the text is quoted in capitals
    bool EnterSearches = true;
};

// A searchable view of a table: its query around the filter clause, its
// columns and its filters.
struct TKRVElencoInfo
{
    QString Caption;
    QString QueryHead;  // "SELECT * FROM UM "
    QString QueryTail;  // " ORDER BY UPPER(UM)"
    QString KeyField{}; // the key of the rows (a search list takes its table's)
    QList<TKRVColonna> Columns;
    QList<TKRVFiltro> Filters;
};

// The results grid and the search toolbar (filters, "Cerca", "Ripristina")
// shared by search lists and selection dialogs. The window that holds it
// decides what "Cerca" and "Ripristina" do.
class TKRVElencoRicerca : public QObject
{
    Q_OBJECT

public:
    TKRVElencoRicerca(QWidget *owner, const QString &gridName, TKRVElencoInfo info, const std::function<void()> &cerca,
                      const std::function<void()> &ripristina);

    const TKRVElencoInfo &Info() const { return m_info; }
    TKRVGrigliaRisultati *Griglia() const { return m_griglia; }
    QToolBar *BarraRicerca() const { return m_barra; }
    QAction *actCerca() const { return m_actCerca; }
    QLineEdit *Filtro(const QString &name) const;

    void CreaGrigliaVuota();
    // The rows of the query with the clause (empty, or beginning with "WHERE ").
    void AggiornaGriglia(const QString &where);
    // The clause of the filters that hold a text.
    QString ClausolaFiltri() const;
    void SvuotaFiltri();

private:
    TKRVElencoInfo m_info;
    TKRVGrigliaRisultati *m_griglia;
    QToolBar *m_barra;
    QAction *m_actCerca;
    QList<QLineEdit *> m_filtri;
};
