#include "KRVArchivioCategorie.h"

#include "Q3Dataset.h"
#include "Q3Sql.h"

namespace {

const QString ColonnaPadre = QStringLiteral("IDPADRE");
const QString ColonnaCategoria = QStringLiteral("CATEGORIA");

} // namespace

TKRVArchivioCategorie::TKRVArchivioCategorie(TQ3Dataset &dataset, QString table, QString keyColumn)
    : m_dataset(dataset), m_table(std::move(table)), m_keyColumn(std::move(keyColumn))
{
    OpenADODsIfClosed(&m_dataset);
}

void TKRVArchivioCategorie::Elimina(int id)
{
    ExecSQL(m_dataset.Connection()->Database(), QStringLiteral("DELETE FROM ") + m_table + QStringLiteral(" WHERE ")
                                                    + m_keyColumn + QStringLiteral("=") + QString::number(id));
}

void TKRVArchivioCategorie::Salva(QList<TKRVCategoria> &categorie)
{
    TQ3Transaction transaction(m_dataset.Connection()->Database());
    try {
        for (TKRVCategoria &categoria : categorie) {
            TKRVCategoria scritta = categoria;
            if (scritta.Stato == TKRVStatoCategoria::Nuova) {
                m_dataset.Append();
                m_dataset.SetFieldValue(ColonnaCategoria, scritta.Testo);
                if (scritta.IdPadre == -1 && scritta.Padre >= 0)
                    scritta.IdPadre = categorie.at(scritta.Padre).Id;
                const QVariant padre =
                    scritta.IdPadre == -1 ? QVariant(QMetaType::fromType<int>()) : QVariant(scritta.IdPadre);
                m_dataset.SetFieldValue(ColonnaPadre, padre);
                m_dataset.Post();
                // The key the database gave the row: the children written next refer to it.
                scritta.Id = m_dataset.FieldValue(m_keyColumn).toInt();
            } else if (scritta.Stato == TKRVStatoCategoria::Rinominata && m_dataset.Locate(m_keyColumn, scritta.Id)) {
                m_dataset.Edit();
                m_dataset.SetFieldValue(ColonnaCategoria, scritta.Testo);
                m_dataset.Post();
            } else {
                continue;
            }
            scritta.Stato = TKRVStatoCategoria::Scritta;
            categoria = scritta;
        }
        transaction.Commit();
    } catch (...) {
        transaction.Rollback();
        m_dataset.Cancel();
        throw;
    }
}
