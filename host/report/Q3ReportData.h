#pragma once

#include "Q3Global.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class TQ3Dataset;

// A report data connection: the rows a report reads, by row and column
// position. Reports look columns up by name once per run.
class Q3_EXPORT IQ3ReportData
{
public:
    virtual ~IQ3ReportData() = default;
    virtual int RowCount() const = 0;
    // The column's position, or -1 when the connection has no such column.
    virtual int FieldIndex(const QString &name) const = 0;
    virtual QVariant Value(int row, int column) const = 0;
};

// Rows held in memory: for tests, and for data a module computes itself.
class Q3_EXPORT TQ3MemoryData : public IQ3ReportData
{
public:
    explicit TQ3MemoryData(const QStringList &fields = {}) : m_fields(fields) {}

    void SetFields(const QStringList &fields) { m_fields = fields; }
    void AddRow(const QVariantList &values) { m_rows.append(values); }
    void Clear() { m_rows.clear(); }

    int RowCount() const override { return int(m_rows.size()); }
    int FieldIndex(const QString &name) const override;
    QVariant Value(int row, int column) const override;

private:
    QStringList m_fields;
    QList<QVariantList> m_rows;
};

// The rows of a host dataset as they are when the report runs.
class Q3_EXPORT TQ3DatasetConnection : public IQ3ReportData
{
public:
    explicit TQ3DatasetConnection(TQ3Dataset *dataset) : m_dataset(dataset) {}

    int RowCount() const override;
    int FieldIndex(const QString &name) const override;
    QVariant Value(int row, int column) const override;

private:
    TQ3Dataset *m_dataset;
};
