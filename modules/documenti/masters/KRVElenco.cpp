#include "KRVElenco.h"

#include "Q3Sql.h"

void KRVCercaElenco(const QSqlDatabase &db, const QString &head, const QString &where, const QString &tail,
                    TKRVRisultati &risultati)
{
    QSqlQuery query = OpenQuery(db, head + where + tail);
    risultati.Carica(query);
}

int KRVContaArticoli(const QSqlDatabase &db, const QString &where)
{
    return QueryScalar(db, QStringLiteral("SELECT COUNT(*) AS NUMERO FROM ANA_MAGA ") + where).toInt();
}

void KRVCaricaPaginaArticoli(const QSqlDatabase &db, const QString &where, int page, int pageSize,
                             TKRVRisultati &risultati)
{
    QSqlQuery query =
        OpenQuery(db, QStringLiteral("SELECT FIRST ") + QString::number(pageSize) + QStringLiteral(" SKIP ")
                          + QString::number((page - 1) * pageSize) + QStringLiteral(" ")
                          + QStringLiteral("ANA_MAGA.*, ") + QStringLiteral("CATEGORIE_ANA_MAGA.CATEGORIA ")
                          + QStringLiteral("FROM ANA_MAGA ") + QStringLiteral("LEFT JOIN CATEGORIE_ANA_MAGA ON ")
                          + QStringLiteral("ANA_MAGA.IDCATEGORIA_ANA_MAGA = "
                                           "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA ")
                          + where + QStringLiteral(" ORDER BY UPPER(CODICE)"));
    risultati.Carica(query);
}
