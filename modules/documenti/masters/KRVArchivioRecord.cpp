#include "KRVArchivioRecord.h"

#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

bool KRVRigaMemorizzata(const TQ3Dataset &dataset)
{
    return dataset.Active() && !dataset.Eof();
}

int KRVProssimaChiave(const QSqlDatabase &db, const QString &generator)
{
    return GetLastGeneratorValue(generator, db) + 1;
}

TKRVArchivioRecord::TKRVArchivioRecord(TQ3Dataset &dataset, QString keyField, QString generator)
    : m_dataset(dataset), m_keyField(std::move(keyField)), m_generator(std::move(generator))
{}

bool TKRVArchivioRecord::Leggi(int id, std::optional<int> corrente)
{
    m_dataset.Close();
    m_dataset.SetParamValue(m_keyField, id);
    m_dataset.Open();
    if (!m_dataset.IsEmpty())
        return true;
    // The window keeps its record: so does the dataset its save writes through.
    m_dataset.Close();
    if (corrente) {
        m_dataset.SetParamValue(m_keyField, *corrente);
        m_dataset.Open();
    }
    return false;
}

void TKRVArchivioRecord::Scrivi(bool nuovo, const std::function<void(TQ3Dataset &)> &scrivi, int &id)
{
    TQ3BusyCursor busy;
    const QSqlDatabase db = m_dataset.Connection()->Database();
    TQ3Transaction transaction(db);
    try {
        // A record whose first save failed has no row yet: it is inserted.
        if (nuovo || !KRVRigaMemorizzata(m_dataset)) {
            id = KRVProssimaChiave(db, m_generator);
            m_dataset.AppendNew(m_keyField);
        } else {
            m_dataset.Edit();
        }
        scrivi(m_dataset);
        const bool inserita = m_dataset.State() == TQ3Dataset::TState::Insert;
        m_dataset.Post();
        if (inserita)
            id = m_dataset.FieldValue(m_keyField).toInt();
        transaction.Commit();
    } catch (...) {
        m_dataset.Cancel();
        transaction.Rollback();
        throw;
    }
}
