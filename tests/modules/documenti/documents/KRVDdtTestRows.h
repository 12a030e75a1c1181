#pragma once

// Outgoing delivery notes of the warehouse module for the tests, written with
// the keys given (the tables' triggers are switched off).
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QDate>

namespace KRVTest {

inline void LoadDdtTables(const TQ3TestDatabase &db)
{
    db.LoadFixture(QStringLiteral("magazzino.sql"));
    db.Exec(QStringLiteral("ALTER TRIGGER TG_BI_DDT_SCARICO INACTIVE"));
    db.Exec(QStringLiteral("ALTER TRIGGER TG_BI_DDT_SCARICO_DETT INACTIVE"));
}

inline void InsertDdt(const TQ3TestDatabase &db, int id, int numero, const QDate &data, const QString &codice,
                      const QString &ragioneSociale)
{
    db.Exec(
        QStringLiteral("INSERT INTO DDT_SCARICO (IDDDT_SCARICO, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE) "
                       "VALUES (%1, %2, '%3', %4, %5, %6)")
            .arg(id)
            .arg(numero)
            .arg(data.toString(Qt::ISODate))
            .arg(data.year())
            .arg(QuotedStr(codice), QuotedStr(ragioneSociale)));
}

// A line of an article or a service.
inline void InsertRigaVoce(const TQ3TestDatabase &db, int id, int ddt, const QString &tipo, const QString &codice,
                           const QString &descrizione, const QString &valori)
{
    db.Exec(
        QStringLiteral("INSERT INTO DDT_SCARICO_DETT (IDDDT_SCARICO_DETT, IDDDT_SCARICO, TIPO_RIGA, CODICE, "
                       "DESCRIZIONE, COSTO, IDCATEGORIA, PREZZO, QUANTITA, IMPORTO, IVA_IDALIQUOTA_IVA, IVA_CODICE, "
                       "IDUM, UM) VALUES (%1, %2, %3, %4, %5, %6)")
            .arg(id)
            .arg(ddt)
            .arg(QuotedStr(tipo), QuotedStr(codice), QuotedStr(descrizione), valori));
}

inline void InsertRigaTesto(const TQ3TestDatabase &db, int id, int ddt, const QString &tipo, const QString &descrizione)
{
    db.Exec(QStringLiteral("INSERT INTO DDT_SCARICO_DETT (IDDDT_SCARICO_DETT, IDDDT_SCARICO, TIPO_RIGA, DESCRIZIONE) "
                           "VALUES (%1, %2, %3, %4)")
                .arg(id)
                .arg(ddt)
                .arg(QuotedStr(tipo), QuotedStr(descrizione)));
}

} // namespace KRVTest
