#include "uKRVGrigliaRisultati.h"

#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QDate>
#include <QHeaderView>

namespace {

// Room kept for the vertical scroll bar.
constexpr int ScrollBarRoom = 21;
constexpr int StoredRole = Qt::UserRole;

class TKRVCella : public QTableWidgetItem
{
public:
    TKRVCella(const QString &stored, TKRVTipoColonna tipo) : m_tipo(tipo)
    {
        setData(StoredRole, stored);
        setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        if (tipo == TKRVTipoColonna::Spunta) {
            setFlags(flags() | Qt::ItemIsUserCheckable);
            setCheckState(Qt::Unchecked);
        }
        const bool numeric = tipo == TKRVTipoColonna::Intero || tipo == TKRVTipoColonna::Importo
                             || tipo == TKRVTipoColonna::Percentuale;
        setTextAlignment((numeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }

    QVariant data(int role) const override
    {
        if (role != Qt::DisplayRole)
            return QTableWidgetItem::data(role);
        const QString stored = Stored();
        switch (m_tipo) {
        case TKRVTipoColonna::Importo:
            return FormatCurrency(stored.toDouble());
        case TKRVTipoColonna::Percentuale:
            return FormatNumber(stored.toDouble(), 2) + QStringLiteral(" %");
        case TKRVTipoColonna::Data:
            return FormatShortDate(QDate::fromString(stored, Qt::ISODate));
        case TKRVTipoColonna::Intero:
        case TKRVTipoColonna::Testo:
        case TKRVTipoColonna::Spunta:
            break;
        }
        return stored;
    }

    bool operator<(const QTableWidgetItem &other) const override
    {
        const auto &cella = static_cast<const TKRVCella &>(other);
        if (m_tipo == TKRVTipoColonna::Testo)
            return Stored().localeAwareCompare(cella.Stored()) < 0;
        if (m_tipo == TKRVTipoColonna::Data)
            return Stored() < cella.Stored();
        if (m_tipo == TKRVTipoColonna::Spunta)
            return checkState() < cella.checkState();
        return Stored().toDouble() < cella.Stored().toDouble();
    }

    QString Stored() const { return QTableWidgetItem::data(StoredRole).toString(); }

private:
    TKRVTipoColonna m_tipo;
};

QString StoredText(const QVariant &value, TKRVTipoColonna tipo)
{
    switch (tipo) {
    case TKRVTipoColonna::Intero:
        return QString::number(value.toLongLong());
    case TKRVTipoColonna::Importo:
    case TKRVTipoColonna::Percentuale:
        return QString::asprintf("%.2f", value.toDouble());
    case TKRVTipoColonna::Data:
        return value.toDate().toString(Qt::ISODate);
    case TKRVTipoColonna::Spunta:
    case TKRVTipoColonna::Testo:
        break;
    }
    return value.toString();
}

} // namespace

TKRVGrigliaRisultati::TKRVGrigliaRisultati(const QString &name, QWidget *parent) : QTableWidget(parent)
{
    setObjectName(name);
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
            sortItems(column, order);
    });
}

void TKRVGrigliaRisultati::CreaGrigliaVuota(const QString &keyField, const QList<TKRVColonna> &columns)
{
    m_columns = columns;
    m_columns.prepend({QString(), 0, keyField, TKRVTipoColonna::Intero});
    setRowCount(0);
    setColumnCount(int(m_columns.size()));
    QStringList titles;
    for (const TKRVColonna &column : std::as_const(m_columns))
        titles << column.Title;
    setHorizontalHeaderLabels(titles);
    for (int i = 0; i < m_columns.size(); ++i) {
        setColumnHidden(i, m_columns.at(i).Width == 0);
        setColumnWidth(i, m_columns.at(i).Width);
    }
}

void TKRVGrigliaRisultati::Svuota()
{
    setRowCount(0);
    horizontalHeader()->blockSignals(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->blockSignals(false);
}

void TKRVGrigliaRisultati::Carica(QSqlQuery &query)
{
    const QSqlRecord layout = query.record();
    QList<int> fields;
    for (const TKRVColonna &definition : std::as_const(m_columns))
        fields << (definition.Tipo == TKRVTipoColonna::Spunta ? -1 : FieldIndex(layout, definition.Field));
    setUpdatesEnabled(false);
    while (query.next()) {
        const int row = rowCount();
        insertRow(row);
        for (int column = 0; column < m_columns.size(); ++column) {
            const TKRVTipoColonna tipo = m_columns.at(column).Tipo;
            const int field = fields.at(column);
            setItem(row, column, new TKRVCella(field < 0 ? QString() : StoredText(query.value(field), tipo), tipo));
        }
    }
    setUpdatesEnabled(true);
    if (rowCount() > 0)
        selectRow(0);
}

int TKRVGrigliaRisultati::RigaSelezionata() const
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
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

QString TKRVGrigliaRisultati::Valore(int row, int column) const
{
    const auto cella = static_cast<const TKRVCella *>(item(row, column));
    return cella ? cella->Stored() : QString();
}

void TKRVGrigliaRisultati::RimuoviSelezionata()
{
    if (HaRigaSelezionata())
        removeRow(RigaSelezionata());
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
    QTableWidget::resizeEvent(event);
    emit Ridimensionata();
}
