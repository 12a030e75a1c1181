#include "KRVDdtFattura.h"

#include "Q3Sql.h"

#include <QSqlQuery>

QList<TKRVDdtFattura> KRVDdtDellaFattura(const QSqlDatabase &db, int idFattura)
{
    TQ3PreparedQuery lettura(db, KRVQueryDdtFattura);
    QSqlQuery &query = lettura.Run({idFattura});
    QList<TKRVDdtFattura> ddt;
    while (query.next())
        ddt.append({query.value(0).toInt(), query.value(1).toString(), query.value(2).toDate()});
    return ddt;
}

void KRVScriviDdtFattura(const QSqlDatabase &db, int idFattura, const QList<TKRVDdtFattura> &ddt)
{
    ExecSQL(db, QStringLiteral("DELETE FROM FATT_VEND_DDT WHERE IDFATT_VEND = ") + QString::number(idFattura));
    if (ddt.isEmpty())
        return;
    // Each row takes its key from the table's trigger.
    TQ3PreparedQuery insert(
        db, QStringLiteral("INSERT INTO FATT_VEND_DDT (IDFATT_VEND, IDDDT_SCARICO, NUMERO, DATA) VALUES (?, ?, ?, ?)"));
    for (const TKRVDdtFattura &nota : ddt)
        insert.Run({idFattura, nota.IdDdt > 0 ? QVariant(nota.IdDdt) : QVariant(QMetaType(QMetaType::Int)), nota.Numero,
                    nota.Data});
}
