#pragma once

#include "Q3Global.h"

#include <QByteArray>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The firm's data: the one row of the host's table AZIENDA (the seed row,
// whose key the table's trigger gave), printed on every document.
struct Q3_EXPORT TQ3Azienda
{
    QString RagioneSociale;
    QString Indirizzo;
    QString Cap;
    QString Citta;
    QString Provincia;
    QString Nazione;
    QString CodiceNazione = QStringLiteral("IT");
    QString PartitaIva;
    QString CodiceFiscale;
    QString Telefono;
    QString Fax;
    QString Email;
    QString Web;
    QString Rea;
    QString ReaUfficio;
    QString ReaNumero;
    QString CapitaleSociale;
    QString SocioUnico;                               // "SU", "SM" or empty
    QString StatoLiquidazione = QStringLiteral("LN"); // "LN" or "LS"
    QString RegimeFiscale = QStringLiteral("RF01");
    QString Banca;
    QString Iban;
    QByteArray Logo; // the picture file's bytes; empty for none

    bool operator==(const TQ3Azienda &other) const = default;
};

// A text column of AZIENDA: its name, the record's member that holds it and
// how many characters it takes.
struct Q3_EXPORT TQ3ColonnaAzienda
{
    const char *Colonna;
    QString TQ3Azienda::*Campo;
    int Lunghezza;
};

// Every text column of AZIENDA, in the table's order.
Q3_EXPORT const QList<TQ3ColonnaAzienda> &Q3ColonneAzienda();

// The firm's data as stored; raises EQ3Exception when it cannot be read.
Q3_EXPORT TQ3Azienda Q3LeggiAzienda(const QSqlDatabase &db);

// Stores the firm's data in its row, in one transaction; raises EQ3Exception,
// with nothing stored, when it fails.
Q3_EXPORT void Q3ScriviAzienda(const QSqlDatabase &db, const TQ3Azienda &azienda);

// What is wrong in the firm's data, one warning per field: identifiers whose
// check digits do not add up, a CAP or a province of the wrong form, codes of
// the wrong length. Empty fields are allowed.
Q3_EXPORT QStringList Q3ProblemiAzienda(const TQ3Azienda &azienda);

// The tax regimes of the electronic invoice: code and description.
struct Q3_EXPORT TQ3RegimeFiscale
{
    const char *Codice;
    const char *Descrizione;
};
Q3_EXPORT const QList<TQ3RegimeFiscale> &Q3RegimiFiscali();
