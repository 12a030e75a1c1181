#include "KRVRisultati.h"

#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QDate>
#include <QSqlRecord>

#include <algorithm>
#include <numeric>

namespace {

bool Numerica(TKRVTipoColonna tipo)
{
    return tipo == TKRVTipoColonna::Intero || tipo == TKRVTipoColonna::Importo || tipo == TKRVTipoColonna::Percentuale;
}

// The values in the new order: position i takes the value at order[i].
template <typename T>
void Riordina(QList<T> &values, const QList<int> &order)
{
    if (values.isEmpty())
        return;
    QList<T> sorted;
    sorted.reserve(values.size());
    for (const int from : order)
        sorted.append(std::move(values[from]));
    values = std::move(sorted);
}

template <typename T>
void Rimuovi(QList<T> &values, int row)
{
    if (!values.isEmpty())
        values.removeAt(row);
}

} // namespace

TKRVRisultati::TKRVRisultati(QObject *owner) : QAbstractTableModel(owner) {}

void TKRVRisultati::ImpostaColonne(const QList<TKRVColonna> &columns)
{
    beginResetModel();
    m_colonne = columns;
    m_valori = QList<TValori>(columns.size());
    m_righe = 0;
    endResetModel();
    // The header measures the new titles, as it does when titles are set one by one.
    if (!columns.isEmpty())
        emit headerDataChanged(Qt::Horizontal, 0, int(columns.size()) - 1);
}

void TKRVRisultati::Svuota()
{
    if (m_righe == 0)
        return;
    beginRemoveRows({}, 0, m_righe - 1);
    for (TValori &valori : m_valori)
        valori = TValori();
    m_righe = 0;
    endRemoveRows();
}

void TKRVRisultati::Carica(QSqlQuery &query)
{
    const QSqlRecord layout = query.record();
    QList<int> fields;
    for (const TKRVColonna &colonna : std::as_const(m_colonne))
        fields << (colonna.Tipo == TKRVTipoColonna::Spunta ? -1 : FieldIndex(layout, colonna.Field));
    QList<TValori> letti(m_colonne.size());
    int count = 0;
    while (query.next()) {
        for (int column = 0; column < m_colonne.size(); ++column) {
            TValori &valori = letti[column];
            switch (Tipo(column)) {
            case TKRVTipoColonna::Intero:
                valori.Interi.append(query.value(fields.at(column)).toLongLong());
                break;
            case TKRVTipoColonna::Testo:
                valori.Testi.append(query.value(fields.at(column)).toString());
                break;
            case TKRVTipoColonna::Importo:
            case TKRVTipoColonna::Percentuale:
                valori.Numeri.append(query.value(fields.at(column)).toDouble());
                break;
            case TKRVTipoColonna::Data:
                valori.Interi.append(query.value(fields.at(column)).toDate().toJulianDay());
                break;
            case TKRVTipoColonna::Spunta:
                valori.Interi.append(Qt::Unchecked);
                break;
            }
        }
        ++count;
    }
    if (count == 0)
        return;
    beginInsertRows({}, m_righe, m_righe + count - 1);
    for (int column = 0; column < m_colonne.size(); ++column) {
        m_valori[column].Testi.append(std::move(letti[column].Testi));
        m_valori[column].Interi.append(std::move(letti[column].Interi));
        m_valori[column].Numeri.append(std::move(letti[column].Numeri));
    }
    m_righe += count;
    endInsertRows();
}

void TKRVRisultati::RimuoviRiga(int row)
{
    beginRemoveRows({}, row, row);
    for (TValori &valori : m_valori) {
        Rimuovi(valori.Testi, row);
        Rimuovi(valori.Interi, row);
        Rimuovi(valori.Numeri, row);
    }
    --m_righe;
    endRemoveRows();
}

QString TKRVRisultati::Valore(int row, int column) const
{
    const TValori &valori = m_valori.at(column);
    switch (Tipo(column)) {
    case TKRVTipoColonna::Intero:
        return QString::number(valori.Interi.at(row));
    case TKRVTipoColonna::Testo:
        return valori.Testi.at(row);
    case TKRVTipoColonna::Importo:
    case TKRVTipoColonna::Percentuale:
        return QString::asprintf("%.2f", valori.Numeri.at(row));
    case TKRVTipoColonna::Data:
        return QDate::fromJulianDay(valori.Interi.at(row)).toString(Qt::ISODate);
    case TKRVTipoColonna::Spunta:
        break;
    }
    return QString();
}

QString TKRVRisultati::Testo(int row, int column) const
{
    const TValori &valori = m_valori.at(column);
    switch (Tipo(column)) {
    case TKRVTipoColonna::Importo:
        return FormatCurrency(valori.Numeri.at(row));
    case TKRVTipoColonna::Percentuale:
        return FormatNumber(valori.Numeri.at(row), 2) + QStringLiteral(" %");
    case TKRVTipoColonna::Data:
        return FormatShortDate(QDate::fromJulianDay(valori.Interi.at(row)));
    case TKRVTipoColonna::Intero:
    case TKRVTipoColonna::Testo:
    case TKRVTipoColonna::Spunta:
        break;
    }
    return Valore(row, column);
}

QString TKRVRisultati::Titolo(int column) const
{
    return m_colonne.at(column).Title;
}

Qt::CheckState TKRVRisultati::Spunta(int row, int column) const
{
    return Qt::CheckState(m_valori.at(column).Interi.at(row));
}

void TKRVRisultati::ImpostaSpunte(int column, Qt::CheckState state)
{
    if (m_righe == 0)
        return;
    std::fill(m_valori[column].Interi.begin(), m_valori[column].Interi.end(), qint64(state));
    emit dataChanged(index(0, column), index(m_righe - 1, column), {Qt::CheckStateRole});
}

int TKRVRisultati::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_righe;
}

int TKRVRisultati::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_colonne.size());
}

QVariant TKRVRisultati::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return Testo(row, column);
    case StoredRole:
        return Valore(row, column);
    case Qt::TextAlignmentRole:
        return int((Numerica(Tipo(column)) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        if (Tipo(column) == TKRVTipoColonna::Spunta)
            return int(Spunta(row, column));
        break;
    default:
        break;
    }
    return {};
}

bool TKRVRisultati::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || Tipo(index.column()) != TKRVTipoColonna::Spunta)
        return false;
    m_valori[index.column()].Interi[index.row()] = value.toInt() == Qt::Checked ? Qt::Checked : Qt::Unchecked;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

QVariant TKRVRisultati::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < m_colonne.size())
        return m_colonne.at(section).Title;
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags TKRVRisultati::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (Tipo(index.column()) == TKRVTipoColonna::Spunta)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool TKRVRisultati::Precede(int column, int a, int b) const
{
    const TValori &valori = m_valori.at(column);
    switch (Tipo(column)) {
    case TKRVTipoColonna::Testo:
        return valori.Testi.at(a).localeAwareCompare(valori.Testi.at(b)) < 0;
    case TKRVTipoColonna::Importo:
    case TKRVTipoColonna::Percentuale:
        return valori.Numeri.at(a) < valori.Numeri.at(b);
    case TKRVTipoColonna::Intero:
    case TKRVTipoColonna::Data:
    case TKRVTipoColonna::Spunta:
        break;
    }
    return valori.Interi.at(a) < valori.Interi.at(b);
}

void TKRVRisultati::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= m_colonne.size())
        return;
    QList<int> ordine(m_righe);
    std::iota(ordine.begin(), ordine.end(), 0);
    const bool ascending = order == Qt::AscendingOrder;
    std::stable_sort(ordine.begin(), ordine.end(),
                     [&](int a, int b) { return ascending ? Precede(column, a, b) : Precede(column, b, a); });

    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    for (TValori &valori : m_valori) {
        Riordina(valori.Testi, ordine);
        Riordina(valori.Interi, ordine);
        Riordina(valori.Numeri, ordine);
    }
    // Selection and current cell follow their rows.
    QList<int> nuovaRiga(m_righe);
    for (int i = 0; i < m_righe; ++i)
        nuovaRiga[ordine.at(i)] = i;
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &old : before)
        after.append(index(nuovaRiga.at(old.row()), old.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}
