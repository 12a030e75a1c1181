#pragma once

#include "Q3Connection.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>

// A parameterised query whose rows are held in memory, with a current row.
// Rows are appended or edited field by field and written back to the update
// table with bound values by Post.
class Q3_EXPORT TQ3Dataset : public QObject
{
    Q_OBJECT

public:
    enum class TState { Inactive, Browse, Insert, Edit };

    explicit TQ3Dataset(QObject *owner = nullptr);

    void SetConnection(TQ3Connection *connection) { m_connection = connection; }
    TQ3Connection *Connection() const { return m_connection; }
    // Closes the dataset when the text changes.
    void SetSQL(const QString &sql);
    QString SQL() const { return m_sql; }
    // The table Post writes to and the key column that identifies a row.
    void SetUpdateTable(const QString &table, const QString &keyField);
    QString UpdateTable() const { return m_updateTable; }
    QString KeyField() const { return m_keyField; }
    // A named parameter of the text (":NAME"), bound when the dataset opens.
    void SetParamValue(const QString &name, const QVariant &value);

    // Raises EQ3Exception with the database's message on failure.
    void Open();
    void Close();
    // Closes and opens again, with the current parameters.
    void Requery();
    bool Active() const { return m_state != TState::Inactive; }
    TState State() const { return m_state; }

    bool IsEmpty() const { return m_rows.isEmpty(); }
    int RecordCount() const { return int(m_rows.size()); }
    int RecNo() const { return m_current; }
    void First() { m_current = m_rows.isEmpty() ? -1 : 0; }
    void Next();
    bool Eof() const { return m_current < 0 || m_current >= m_rows.size(); }
    // Moves to the first row whose field equals the value; answers whether found.
    bool Locate(const QString &field, const QVariant &value);

    QStringList FieldNames() const;
    QVariant FieldValue(const QString &field) const;
    // A stored row's column by position, whatever the current row.
    QVariant ValueAt(int row, int column) const { return m_rows.at(row).value(column); }
    bool FieldIsNull(const QString &field) const;

    // A new row (fields null) that Post inserts.
    void Append();
    // Reopens the dataset on no row (the key parameter null) with a new row
    // that Post inserts; the key parameter then takes the inserted row's key,
    // as if the dataset had been opened on it.
    void AppendNew(const QString &keyParam);
    // The current row, which Post updates.
    void Edit();
    void SetFieldValue(const QString &field, const QVariant &value);
    // Writes the appended or edited row; raises EQ3Exception on failure, an
    // update that finds no row included, the dataset then staying in its
    // editing state. An inserted row holds the key the database gave it (the
    // table's trigger assigns keys), whatever key was set.
    void Post();
    void Cancel();

private:
    void PostInsert();
    void PostUpdate();
    void RequireActive() const;
    int FieldIndex(const QString &field) const;

    TQ3Connection *m_connection = nullptr;
    QString m_sql;
    QString m_updateTable;
    QString m_keyField;
    QHash<QString, QVariant> m_params;
    QString m_newKeyParam;
    QSqlRecord m_layout;
    QList<QSqlRecord> m_rows;
    int m_current = -1;
    TState m_state = TState::Inactive;
    QSqlRecord m_buffer;
    QStringList m_changed;
};

// Opens the dataset unless it is open already.
Q3_EXPORT void OpenADODsIfClosed(TQ3Dataset *dataset);
