#include "KRVNumbering.h"

#include "KRVDataset.h"
#include "KRVErrors.h"
#include "KRVOptions.h"

#include <QSqlQuery>

namespace {

// Whether sales invoices share their numbers with the warehouse's accompanying
// invoices. The option must exist: an absent or unreadable one raises.
bool NumerazioneUnicaFatture(const QSqlDatabase &db)
{
    QVariant value;
    GetOptionValue(db, QStringLiteral("NUMERAZIONE_UNICA_FATTURE"), value);
    return KRVStrToBool(value.toString());
}

// The first row's NUMERO + 1 (a null maximum counting as 0), raised past every
// other row's NUMERO: the highest number of all the rows, plus 1.
int NextNumero(const QSqlDatabase &db, const QString &maxSql)
{
    int next = 1;
    QSqlQuery dataset = OpenQuery(db, maxSql);
    if (!dataset.next())
        return next;
    const int column = FieldIndex(dataset.record(), QStringLiteral("NUMERO"));
    next = dataset.value(column).toInt() + 1;
    do {
        const QVariant numero = dataset.value(column);
        if (!numero.isNull() && numero.toInt() > next - 1)
            next = numero.toInt() + 1;
    } while (dataset.next());
    return next;
}

} // namespace

int GetNextNumeroFattVend(const QSqlDatabase &db, int anno)
{
    return KRVWrapped("GetNextNumeroFattVend", [&] {
        const QString year = QString::number(anno);
        QString sql = QStringLiteral("SELECT MAX(NUMERO) AS NUMERO FROM FATT_VEND WHERE ANNO=") + year;
        if (NumerazioneUnicaFatture(db))
            sql += QStringLiteral(" UNION SELECT MAX(NUMERO) AS NUMERO FROM FATT_ACC WHERE ANNO=") + year;
        return NextNumero(db, sql);
    });
}

int GetNextNumeroNotaAccredito(const QSqlDatabase &db, int anno)
{
    return KRVWrapped("GetNextNumeroNotaAccredito", [&] {
        return NextNumero(db, QStringLiteral("SELECT MAX(NUMERO) AS NUMERO FROM NOTE_ACCREDITO WHERE ANNO=")
                                  + QString::number(anno));
    });
}

bool FattVendExists(const QSqlDatabase &db, int numero, int anno, int id)
{
    const QString number = QString::number(numero);
    const QString year = QString::number(anno);
    bool exists = KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUM FROM FATT_VEND WHERE NUMERO = ") + number
                                            + QStringLiteral(" AND ANNO = ") + year
                                            + QStringLiteral(" AND NOT IDFATT_VEND=") + QString::number(id));
    if (NumerazioneUnicaFatture(db)
        && KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUM FROM FATT_ACC WHERE NUMERO = ") + number
                                     + QStringLiteral(" AND ANNO = ") + year))
        exists = true;
    return exists;
}

bool NotaAccreditoExists(const QSqlDatabase &db, int numero, int anno, int id)
{
    return KRVCountAboveZero(db, QStringLiteral("SELECT COUNT(*) AS NUM FROM NOTE_ACCREDITO WHERE NUMERO = ")
                                     + QString::number(numero) + QStringLiteral(" AND ANNO = ") + QString::number(anno)
                                     + QStringLiteral(" AND NOT IDNOTA_ACCREDITO=") + QString::number(id));
}
