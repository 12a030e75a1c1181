#pragma once

#include <QSqlDatabase>
#include <QString>

#include <functional>
#include <optional>

class TQ3Dataset;

// Whether the dataset holds the row of the record it was read or written for:
// false for a new record whose first save failed, which is stored nowhere
// whatever the key it goes by (the key it expected, maybe by then another
// workstation's row).
bool KRVRigaMemorizzata(const TQ3Dataset &dataset);

// The key a new row of a table is expected to take: the current value of the
// table's generator plus one, read on the session.
int KRVProssimaChiave(const QSqlDatabase &db, const QString &generator);

// Reading and writing one row of a master table through the dataset that
// holds it (opened on the row's key parameter), on the dataset's session.
class TKRVArchivioRecord
{
public:
    TKRVArchivioRecord(TQ3Dataset &dataset, QString keyField, QString generator);

    // Opens the dataset on the row with that key; answers false when there is
    // none, the dataset then back on the row of the current key, or closed
    // when there is no current key.
    bool Leggi(int id, std::optional<int> corrente);

    // Writes the row in one transaction: inserted when nuovo says so or the
    // dataset holds no row (its first save failed), updated otherwise. The
    // columns are the scrivi callback's. A new row goes by the key it expects
    // (set into id before the columns are written) until the database gives
    // it its own, which then goes into id. Raises, rolled back, on failure.
    void Scrivi(bool nuovo, const std::function<void(TQ3Dataset &)> &scrivi, int &id);

private:
    TQ3Dataset &m_dataset;
    QString m_keyField;
    QString m_generator;
};
