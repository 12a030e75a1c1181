#include "Q3ReportData.h"

#include "Q3Dataset.h"

namespace {

// Column names are matched as SQL matches them: regardless of case.
int IndexOfName(const QStringList &names, const QString &name)
{
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (names.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

} // namespace

int TQ3MemoryData::FieldIndex(const QString &name) const
{
    return IndexOfName(m_fields, name);
}

QVariant TQ3MemoryData::Value(int row, int column) const
{
    const QVariantList &values = m_rows.at(row);
    return column < values.size() ? values.at(column) : QVariant();
}

int TQ3DatasetConnection::RowCount() const
{
    return m_dataset->Active() ? m_dataset->RecordCount() : 0;
}

int TQ3DatasetConnection::FieldIndex(const QString &name) const
{
    return IndexOfName(m_dataset->FieldNames(), name);
}

QVariant TQ3DatasetConnection::Value(int row, int column) const
{
    return m_dataset->ValueAt(row, column);
}
