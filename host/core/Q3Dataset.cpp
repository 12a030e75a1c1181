#include "Q3Dataset.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>

TQ3Dataset::TQ3Dataset(QObject *owner) : QObject(owner) {}

void TQ3Dataset::SetSQL(const QString &sql)
{
    if (sql != m_sql)
        Close();
    m_sql = sql;
}

void TQ3Dataset::SetUpdateTable(const QString &table, const QString &keyField)
{
    m_updateTable = table;
    m_keyField = keyField;
}

void TQ3Dataset::SetParamValue(const QString &name, const QVariant &value)
{
    m_params.insert(name.startsWith(QLatin1Char(':')) ? name : QLatin1Char(':') + name, value);
}

void TQ3Dataset::Open()
{
    if (Active())
        return;
    if (!m_connection)
        throw EQ3Exception(QStringLiteral("Dataset \"%1\" senza connessione.").arg(objectName()));
    QSqlQuery query(m_connection->Database());
    query.setForwardOnly(true);
    if (!query.prepare(m_sql))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    for (auto it = m_params.cbegin(); it != m_params.cend(); ++it)
        query.bindValue(it.key(), it.value());
    if (!query.exec())
        throw EQ3Exception(SqlErrorText(query.lastError()));
    // The row description is read once: asking the driver for it per row costs
    // a metadata query per column.
    m_layout = query.record();
    m_rows.clear();
    while (query.next()) {
        QSqlRecord row = m_layout;
        for (int i = 0; i < row.count(); ++i)
            row.setValue(i, query.value(i));
        m_rows.append(row);
    }
    // A row that fails to fetch (a division by zero, say) ends the reading:
    // that is a failure, not the end of the rows.
    if (query.lastError().isValid()) {
        m_rows.clear();
        throw EQ3Exception(SqlErrorText(query.lastError()));
    }
    m_state = TState::Browse;
    First();
}

void TQ3Dataset::Close()
{
    m_rows.clear();
    m_layout.clear();
    m_buffer.clear();
    m_changed.clear();
    m_newKeyParam.clear();
    m_current = -1;
    m_state = TState::Inactive;
}

void TQ3Dataset::Requery()
{
    Close();
    Open();
}

void TQ3Dataset::Next()
{
    if (m_current >= 0 && m_current < m_rows.size())
        ++m_current;
}

bool TQ3Dataset::Locate(const QString &field, const QVariant &value)
{
    RequireActive();
    const int index = FieldIndex(field);
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).value(index) == value) {
            m_current = i;
            return true;
        }
    }
    return false;
}

QStringList TQ3Dataset::FieldNames() const
{
    QStringList names;
    for (int i = 0; i < m_layout.count(); ++i)
        names << m_layout.fieldName(i);
    return names;
}

QVariant TQ3Dataset::FieldValue(const QString &field) const
{
    RequireActive();
    const int index = FieldIndex(field);
    if (m_state == TState::Insert || m_state == TState::Edit)
        return m_buffer.value(index);
    return Eof() ? QVariant() : m_rows.at(m_current).value(index);
}

bool TQ3Dataset::FieldIsNull(const QString &field) const
{
    return FieldValue(field).isNull();
}

void TQ3Dataset::Append()
{
    RequireActive();
    m_buffer = m_layout;
    m_buffer.clearValues();
    m_changed.clear();
    m_state = TState::Insert;
}

void TQ3Dataset::AppendNew(const QString &keyParam)
{
    Close();
    SetParamValue(keyParam, QVariant(QMetaType::fromType<int>()));
    Open();
    Append();
    m_newKeyParam = keyParam;
}

void TQ3Dataset::Edit()
{
    RequireActive();
    if (Eof())
        throw EQ3Exception(QStringLiteral("Nessun record da modificare."));
    m_buffer = m_rows.at(m_current);
    m_changed.clear();
    m_state = TState::Edit;
}

void TQ3Dataset::SetFieldValue(const QString &field, const QVariant &value)
{
    if (m_state != TState::Insert && m_state != TState::Edit)
        throw EQ3Exception(QStringLiteral("Il dataset non è in modifica."));
    const int index = FieldIndex(field);
    m_buffer.setValue(index, value);
    const QString name = m_layout.fieldName(index);
    if (!m_changed.contains(name))
        m_changed << name;
}

void TQ3Dataset::Post()
{
    if (m_state != TState::Insert && m_state != TState::Edit)
        return;
    if (m_updateTable.isEmpty())
        throw EQ3Exception(QStringLiteral("Dataset \"%1\" senza tabella di aggiornamento.").arg(objectName()));
    if (!m_changed.isEmpty()) {
        if (m_state == TState::Insert)
            PostInsert();
        else
            PostUpdate();
    }
    if (m_state == TState::Insert) {
        m_rows.append(m_buffer);
        m_current = int(m_rows.size()) - 1;
    } else {
        m_rows[m_current] = m_buffer;
    }
    m_buffer.clear();
    m_changed.clear();
    m_state = TState::Browse;
}

// The key is what the table's trigger assigned, not what the row was given:
// another workstation may have drawn keys meanwhile.
void TQ3Dataset::PostInsert()
{
    QStringList marks;
    for (int i = 0; i < m_changed.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery query(m_connection->Database());
    if (!query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING %4")
                           .arg(m_updateTable, m_changed.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")),
                                m_keyField)))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    for (const QString &name : std::as_const(m_changed))
        query.addBindValue(m_buffer.value(name));
    const TQ3AttesaLimitata attesa(m_connection->Database());
    if (!query.exec())
        throw EQ3Exception(attesa.TestoErrore(query.lastError()));
    if (!query.next())
        throw EQ3Exception(QStringLiteral("Il database non ha restituito la chiave del nuovo record."));
    const QVariant key = query.value(0);
    m_buffer.setValue(FieldIndex(m_keyField), key);
    if (!m_newKeyParam.isEmpty()) {
        SetParamValue(m_newKeyParam, key);
        m_newKeyParam.clear();
    }
}

void TQ3Dataset::PostUpdate()
{
    QStringList sets;
    for (const QString &name : std::as_const(m_changed))
        sets << name + QStringLiteral(" = ?");
    QSqlQuery query(m_connection->Database());
    if (!query.prepare(QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?")
                           .arg(m_updateTable, sets.join(QStringLiteral(", ")), m_keyField)))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    for (const QString &name : std::as_const(m_changed))
        query.addBindValue(m_buffer.value(name));
    query.addBindValue(m_rows.at(m_current).value(m_keyField));
    const TQ3AttesaLimitata attesa(m_connection->Database());
    if (!query.exec())
        throw EQ3Exception(attesa.TestoErrore(query.lastError()));
    // An update that finds no row wrote nothing: the row went meanwhile.
    if (query.numRowsAffected() == 0)
        throw EQ3Exception(QStringLiteral("Il record da aggiornare non esiste più."));
}

void TQ3Dataset::Cancel()
{
    if (m_state == TState::Insert || m_state == TState::Edit) {
        m_buffer.clear();
        m_changed.clear();
        m_newKeyParam.clear();
        m_state = TState::Browse;
    }
}

void TQ3Dataset::RequireActive() const
{
    if (!Active())
        throw EQ3Exception(QStringLiteral("Dataset \"%1\" non aperto.").arg(objectName()));
}

int TQ3Dataset::FieldIndex(const QString &field) const
{
    const int index = m_layout.indexOf(field);
    if (index < 0)
        throw EQ3Exception(QStringLiteral("Campo \"%1\" non trovato.").arg(field));
    return index;
}

void OpenADODsIfClosed(TQ3Dataset *dataset)
{
    if (!dataset->Active())
        dataset->Open();
}
