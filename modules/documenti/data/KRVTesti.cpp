#include "KRVTesti.h"

#include "KRVErrors.h"
#include "Q3Sql.h"

#include <QStringList>

QString KRVMaiuscole(const QString &testo)
{
    QString maiuscole;
    maiuscole.reserve(testo.size());
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        if (c.isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate()) {
            const char32_t capitale = QChar::toUpper(QChar::surrogateToUcs4(c, testo.at(i + 1)));
            maiuscole += QString::fromUcs4(&capitale, 1);
            ++i;
        } else {
            maiuscole += c.toUpper();
        }
    }
    return maiuscole;
}

QString KRVCaratteriNonAmmessi(const QString &testo)
{
    QStringList trovati;
    const auto aggiungi = [&trovati](QChar c, const QString &cosa) {
        const QString voce = QStringLiteral("U+%1 (%2)").arg(c.unicode(), 4, 16, QLatin1Char('0')).toUpper().arg(cosa);
        if (!trovati.contains(voce))
            trovati << voce;
    };
    for (qsizetype i = 0; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        if (c.isNull()) {
            aggiungi(c, QStringLiteral("carattere nullo"));
        } else if (c.isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (c.isSurrogate()) {
            aggiungi(c, QStringLiteral("carattere non valido"));
        }
    }
    return trovati.join(QStringLiteral(", "));
}

QHash<QString, int> KRVLunghezzeColonne(const QSqlDatabase &db, const QString &tabella)
{
    return KRVWrapped("KRVLunghezzeColonne", [&] {
        QSqlQuery query =
            OpenQuery(db,
                      QStringLiteral(
                          "SELECT TRIM(RF.RDB$FIELD_NAME), F.RDB$CHARACTER_LENGTH FROM RDB$RELATION_FIELDS RF "
                          "JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE WHERE RF.RDB$RELATION_NAME = ")
                          + QuotedStr(tabella) + QStringLiteral(" AND F.RDB$FIELD_TYPE IN (14, 37)"));
        QHash<QString, int> lunghezze;
        while (query.next())
            lunghezze.insert(query.value(0).toString(), query.value(1).toInt());
        return lunghezze;
    });
}

int KRVCaratteri(const QString &testo)
{
    int caratteri = 0;
    for (qsizetype i = 0; i < testo.size(); ++i, ++caratteri) {
        if (testo.at(i).isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate())
            ++i;
    }
    return caratteri;
}
