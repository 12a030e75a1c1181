#include "Q3Azienda.h"

#include "Q3Controlli.h"
#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QSqlError>

const QList<TQ3ColonnaAzienda> &Q3ColonneAzienda()
{
    static const QList<TQ3ColonnaAzienda> colonne = {
        {"RAGIONESOCIALE", &TQ3Azienda::RagioneSociale, 100},
        {"INDIRIZZO", &TQ3Azienda::Indirizzo, 100},
        {"CAP", &TQ3Azienda::Cap, 5},
        {"CITTA", &TQ3Azienda::Citta, 30},
        {"PROVINCIA", &TQ3Azienda::Provincia, 2},
        {"NAZIONE", &TQ3Azienda::Nazione, 30},
        {"PARTITAIVA", &TQ3Azienda::PartitaIva, 13},
        {"CODICEFISCALE", &TQ3Azienda::CodiceFiscale, 16},
        {"TELEFONO", &TQ3Azienda::Telefono, 20},
        {"FAX", &TQ3Azienda::Fax, 20},
        {"EMAIL", &TQ3Azienda::Email, 100},
        {"WEB", &TQ3Azienda::Web, 100},
        {"REA", &TQ3Azienda::Rea, 30},
        {"CAPITALE_SOCIALE", &TQ3Azienda::CapitaleSociale, 50},
        {"BANCA", &TQ3Azienda::Banca, 100},
        {"IBAN", &TQ3Azienda::Iban, 34},
        {"REGIME_FISCALE", &TQ3Azienda::RegimeFiscale, 4},
        {"REA_UFFICIO", &TQ3Azienda::ReaUfficio, 2},
        {"REA_NUMERO", &TQ3Azienda::ReaNumero, 20},
        {"SOCIO_UNICO", &TQ3Azienda::SocioUnico, 2},
        {"STATO_LIQUIDAZIONE", &TQ3Azienda::StatoLiquidazione, 2},
        {"CODICE_NAZIONE", &TQ3Azienda::CodiceNazione, 2},
    };
    return colonne;
}

TQ3Azienda Q3LeggiAzienda(const QSqlDatabase &db)
{
    QStringList columns;
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda())
        columns << QString::fromLatin1(colonna.Colonna);
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT %1, LOGO FROM AZIENDA ORDER BY IDAZIENDA ROWS 1")
                                        .arg(columns.join(QStringLiteral(", "))));
    TQ3Azienda azienda;
    if (!query.next())
        throw EQ3Exception(QStringLiteral("I dati dell'azienda non sono presenti nel database."));
    int position = 0;
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda())
        azienda.*colonna.Campo = query.value(position++).toString();
    azienda.Logo = query.value(position).toByteArray();
    return azienda;
}

void Q3ScriviAzienda(const QSqlDatabase &db, const TQ3Azienda &azienda)
{
    QStringList assignments;
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda())
        assignments << QString::fromLatin1(colonna.Colonna) + QStringLiteral(" = ") + QuotedStr(azienda.*colonna.Campo);
    TQ3Transaction transaction(db);
    // The picture goes as a parameter: bytes have no place in a statement's text.
    TQ3PreparedQuery update(
        db, QStringLiteral("UPDATE AZIENDA SET %1, LOGO = ? WHERE IDAZIENDA = (SELECT MIN(IDAZIENDA) FROM AZIENDA)")
                .arg(assignments.join(QStringLiteral(", "))));
    const QSqlQuery &query =
        update.Run({azienda.Logo.isEmpty() ? QVariant(QMetaType::fromType<QByteArray>()) : QVariant(azienda.Logo)});
    if (query.numRowsAffected() != 1)
        throw EQ3Exception(QStringLiteral("I dati dell'azienda non sono presenti nel database."));
    transaction.Commit();
}

QStringList Q3ProblemiAzienda(const TQ3Azienda &azienda)
{
    QStringList problems = Q3ProblemiCodiciFiscali(azienda.PartitaIva, azienda.CodiceFiscale, azienda.CodiceNazione);
    if (Q3Compilato(azienda.Iban) && !Q3IbanValido(azienda.Iban))
        problems << QString::fromUtf8(Q3MsgIbanNonValido);
    if (Q3NazioneItaliana(azienda.CodiceNazione)) {
        if (Q3Compilato(azienda.Cap) && !Q3CapValido(azienda.Cap))
            problems << QString::fromUtf8(Q3MsgCapNonValido);
        if (Q3Compilato(azienda.Provincia) && !Q3ProvinciaValida(azienda.Provincia))
            problems << QString::fromUtf8(Q3MsgProvinciaNonValida);
    }
    if (Q3Compilato(azienda.ReaUfficio) && !Q3ProvinciaValida(azienda.ReaUfficio))
        problems << QStringLiteral("L'ufficio del REA deve essere la sigla di 2 lettere della provincia.");
    if (Q3Compilato(azienda.CodiceNazione) && !Q3ProvinciaValida(azienda.CodiceNazione))
        problems << QStringLiteral("Il codice della nazione deve essere di 2 lettere.");
    return problems;
}

const QList<TQ3RegimeFiscale> &Q3RegimiFiscali()
{
    // RF03 was withdrawn: it has no place here.
    static const QList<TQ3RegimeFiscale> regimi = {
        {"RF01", "Ordinario"},
        {"RF02", "Contribuenti minimi (art. 1, c. 96-117, L. 244/2007)"},
        {"RF04", "Agricoltura e attività connesse e pesca (artt. 34 e 34-bis, D.P.R. 633/1972)"},
        {"RF05", "Vendita sali e tabacchi (art. 74, c. 1, D.P.R. 633/1972)"},
        {"RF06", "Commercio dei fiammiferi (art. 74, c. 1, D.P.R. 633/1972)"},
        {"RF07", "Editoria (art. 74, c. 1, D.P.R. 633/1972)"},
        {"RF08", "Gestione di servizi di telefonia pubblica (art. 74, c. 1, D.P.R. 633/1972)"},
        {"RF09", "Rivendita di documenti di trasporto pubblico e di sosta (art. 74, c. 1, D.P.R. 633/1972)"},
        {"RF10", "Intrattenimenti, giochi e altre attività di cui alla tariffa allegata al D.P.R. 640/1972 "
                 "(art. 74, c. 6, D.P.R. 633/1972)"},
        {"RF11", "Agenzie di viaggi e turismo (art. 74-ter, D.P.R. 633/1972)"},
        {"RF12", "Agriturismo (art. 5, c. 2, L. 413/1991)"},
        {"RF13", "Vendite a domicilio (art. 25-bis, c. 6, D.P.R. 600/1973)"},
        {"RF14", "Rivendita di beni usati, di oggetti d'arte, d'antiquariato o da collezione (art. 36, D.L. 41/1995)"},
        {"RF15", "Agenzie di vendite all'asta di oggetti d'arte, antiquariato o da collezione "
                 "(art. 40-bis, D.L. 41/1995)"},
        {"RF16", "IVA per cassa P.A. (art. 6, c. 5, D.P.R. 633/1972)"},
        {"RF17", "IVA per cassa (art. 32-bis, D.L. 83/2012)"},
        {"RF18", "Altro"},
        {"RF19", "Regime forfettario (art. 1, c. 54-89, L. 190/2014)"},
    };
    return regimi;
}
