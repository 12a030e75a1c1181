#include "uKRVGrigliaRisultati.h"

#include <QHeaderView>

namespace {

// Room kept for the vertical scroll bar.
constexpr int ScrollBarRoom = 21;

} // namespace

TKRVGrigliaRisultati::TKRVGrigliaRisultati(const QString &name, QWidget *parent)
    : QTableView(parent), m_risultati(new TKRVRisultati(this))
{
    setObjectName(name);
    setModel(m_risultati);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setAlternatingRowColors(true);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    // Sorting only when a header is clicked: a search shows its rows in the query's order.
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        if (column > 0)
            m_risultati->sort(column, order);
    });
}

void TKRVGrigliaRisultati::CreaGrigliaVuota(const QString &keyField, const QList<TKRVColonna> &columns)
{
    QList<TKRVColonna> all = columns;
    all.prepend({QString(), 0, keyField, TKRVTipoColonna::Intero});
    m_risultati->ImpostaColonne(all);
    for (int i = 0; i < all.size(); ++i) {
        setColumnHidden(i, all.at(i).Width == 0);
        setColumnWidth(i, all.at(i).Width);
    }
}

void TKRVGrigliaRisultati::Svuota()
{
    m_risultati->Svuota();
    horizontalHeader()->blockSignals(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->blockSignals(false);
}

void TKRVGrigliaRisultati::Carica(const std::function<void(TKRVRisultati &)> &leggi)
{
    leggi(*m_risultati);
    if (rowCount() > 0)
        selectRow(0);
}

int TKRVGrigliaRisultati::RigaSelezionata() const
{
    // Of several selected rows, the one the user is on.
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isRowSelected(current.row(), {}))
        return current.row();
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

QList<int> TKRVGrigliaRisultati::ChiaviSelezionate() const
{
    QList<int> chiavi;
    for (int row = 0; row < rowCount(); ++row) {
        if (selectionModel()->isRowSelected(row, {}))
            chiavi << Valore(row, 0).toInt();
    }
    return chiavi;
}

QList<int> TKRVGrigliaRisultati::Chiavi() const
{
    QList<int> chiavi;
    for (int row = 0; row < rowCount(); ++row)
        chiavi << Valore(row, 0).toInt();
    return chiavi;
}

bool TKRVGrigliaRisultati::HaRigaSelezionata() const
{
    return RigaSelezionata() >= 0;
}

int TKRVGrigliaRisultati::ChiaveSelezionata() const
{
    return HaRigaSelezionata() ? ValoreSelezionato(0).toInt() : -1;
}

QString TKRVGrigliaRisultati::ValoreSelezionato(int column) const
{
    return HaRigaSelezionata() ? Valore(RigaSelezionata(), column) : QString();
}

void TKRVGrigliaRisultati::RimuoviSelezionata()
{
    if (HaRigaSelezionata())
        m_risultati->RimuoviRiga(RigaSelezionata());
}

void TKRVGrigliaRisultati::AdattaColonna(int column)
{
    int others = 0;
    for (int i = 0; i < columnCount(); ++i) {
        if (i != column && !isColumnHidden(i))
            others += columnWidth(i);
    }
    setColumnWidth(column, qMax(40, contentsRect().width() - ScrollBarRoom - others));
}

void TKRVGrigliaRisultati::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    emit Ridimensionata();
}
