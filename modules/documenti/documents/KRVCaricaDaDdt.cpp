#include "KRVCaricaDaDdt.h"

#include "KRVRigheDocumento.h"

#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QDate>
#include <QSqlRecord>

namespace {

const TKRVLayoutRighe &Layout = KRVLayoutFattura();

QString QueryRigheDdt(int chiave)
{
    return QStringLiteral("SELECT DDT_SCARICO.NUMERO AS DDT_NUMERO, DDT_SCARICO.DATA AS DDT_DATA, DDT_SCARICO_DETT.* "
                          "FROM DDT_SCARICO_DETT LEFT JOIN DDT_SCARICO ON DDT_SCARICO.IDDDT_SCARICO = "
                          "DDT_SCARICO_DETT.IDDDT_SCARICO WHERE DDT_SCARICO_DETT.IDDDT_SCARICO = ")
           + QString::number(chiave) + QStringLiteral(" ORDER BY IDDDT_SCARICO_DETT");
}

QString Importo(const QVariant &value)
{
    return TKRVRigheDocumento::TestoNumero(value.toDouble());
}

QString Intero(const QVariant &value)
{
    return QString::number(value.toLongLong());
}

QStringList RigaTesto(const QString &descrizione)
{
    QStringList riga(Layout.Colonne);
    riga[Layout.Descrizione] = descrizione;
    riga[Layout.Tipo] = KRVRigaTesto;
    return riga;
}

// The positions of the columns read, taken once per query.
struct TKRVCampiRigaDdt
{
    explicit TKRVCampiRigaDdt(const QSqlRecord &layout)
        : Numero(FieldIndex(layout, QStringLiteral("DDT_NUMERO"))),
          Data(FieldIndex(layout, QStringLiteral("DDT_DATA"))),
          TipoRiga(FieldIndex(layout, QStringLiteral("TIPO_RIGA"))), Costo(FieldIndex(layout, QStringLiteral("COSTO"))),
          Codice(FieldIndex(layout, QStringLiteral("CODICE"))),
          Descrizione(FieldIndex(layout, QStringLiteral("DESCRIZIONE"))),
          IdCategoria(FieldIndex(layout, QStringLiteral("IDCATEGORIA"))),
          Prezzo(FieldIndex(layout, QStringLiteral("PREZZO"))),
          Quantita(FieldIndex(layout, QStringLiteral("QUANTITA"))),
          Importo(FieldIndex(layout, QStringLiteral("IMPORTO"))),
          IdAliquotaIva(FieldIndex(layout, QStringLiteral("IVA_IDALIQUOTA_IVA"))),
          CodiceIva(FieldIndex(layout, QStringLiteral("IVA_CODICE"))), IdUM(FieldIndex(layout, QStringLiteral("IDUM"))),
          UM(FieldIndex(layout, QStringLiteral("UM")))
    {}

    int Numero, Data, TipoRiga, Costo, Codice, Descrizione, IdCategoria, Prezzo, Quantita, Importo, IdAliquotaIva,
        CodiceIva, IdUM, UM;
};

QStringList RigaVoce(const QSqlQuery &query, const TKRVCampiRigaDdt &campi, const QString &tipo)
{
    QStringList riga(Layout.Colonne);
    riga[Layout.Id] = QStringLiteral("-1");
    riga[Layout.Costo] = Importo(query.value(campi.Costo));
    riga[Layout.Codice] = query.value(campi.Codice).toString();
    riga[Layout.Descrizione] = query.value(campi.Descrizione).toString();
    riga[Layout.IdCategoria] = Intero(query.value(campi.IdCategoria));
    riga[Layout.Prezzo] = Importo(query.value(campi.Prezzo));
    // Delivery note lines carry no discount.
    riga[Layout.Sconto] = Importo(0);
    riga[Layout.Quantita] = Importo(query.value(campi.Quantita));
    riga[Layout.Importo] = Importo(query.value(campi.Importo));
    riga[Layout.IdIva] = Intero(query.value(campi.IdAliquotaIva));
    riga[Layout.Iva] = query.value(campi.CodiceIva).toString();
    riga[Layout.IdUM] = Intero(query.value(campi.IdUM));
    riga[Layout.UM] = query.value(campi.UM).toString();
    riga[Layout.Tipo] = tipo;
    return riga;
}

void CaricaDdt(const QSqlDatabase &db, int chiave, const TKRVAggiungiRiga &aggiungi, const TKRVDdtCaricato &caricato)
{
    QSqlQuery query = OpenQuery(db, QueryRigheDdt(chiave));
    if (!query.next())
        return;
    const TKRVCampiRigaDdt campi(query.record());
    const TKRVDdtFattura ddt{chiave, query.value(campi.Numero).toString(), query.value(campi.Data).toDate()};
    aggiungi(RigaTesto(QStringLiteral("-- Rif. D.d.T. n. ") + ddt.Numero + QStringLiteral(" del ")
                       + FormatShortDate(ddt.Data) + QStringLiteral(" --")));
    if (caricato)
        caricato(ddt);
    do {
        const QString tipo = query.value(campi.TipoRiga).toString();
        if (tipo == KRVRigaArticolo || tipo == KRVRigaServizio)
            aggiungi(RigaVoce(query, campi, tipo));
        else if (tipo == KRVRigaTesto)
            aggiungi(RigaTesto(query.value(campi.Descrizione).toString()));
    } while (query.next());
    aggiungi(RigaTesto(QStringLiteral("-- --")));
}

} // namespace

void KRVCaricaDaDdt(const QSqlDatabase &db, const QList<int> &chiavi, const TKRVAggiungiRiga &aggiungi,
                    const TKRVDdtCaricato &caricato)
{
    for (const int chiave : chiavi)
        CaricaDdt(db, chiave, aggiungi, caricato);
}
