#pragma once

#include <QString>

// Plain records of master rows, filled from the columns of the same names.
// A field whose row was not found stays empty (empty text, zero).

struct TAliquotaIVA
{
    int IDALIQUOTA_IVA = 0;
    QString CODICE;
    QString DESCRIZIONE;
    double ALIQUOTA = 0;
    QString NATURA; // the electronic invoice's nature code of a zero rate
    QString RIFERIMENTO_NORMATIVO;
};

struct TCliente
{
    int IDCLIENTE = 0;
    QString CODICE;
    QString RAGIONESOCIALE;
    QString INDIRIZZO;
    QString CITTA;
    QString CAP;
    QString PROVINCIA;
    QString NAZIONE;
    QString CODICEFISCALE;
    QString PARTITAIVA;
    int IDTIPO_PAGAMENTO = 0;
    QString TIPO_PAGAMENTO;
    QString TELEFONO1;
    QString TELEFONO2;
    QString TELEFONO3;
    QString FAX;
    QString EMAIL;
    QString WEB;
    // For the electronic invoice: 'A' company, 'P' private person, 'PA' public administration.
    QString TIPO_SOGGETTO;
    QString NOME;
    QString COGNOME;
    QString CODICE_DESTINATARIO;
    QString PEC;
};

struct TArticolo
{
    int IDANA_MAGA = 0;
    QString CODICE;
    QString DESCRIZIONE;
    double SOTTOSCORTA = 0;
    double RIORDINO = 0;
    int IDCATEGORIA_ANA_MAGA = 0;
    QString CATEGORIA_ANA_MAGA;
    double PREZZO = 0;
    double COSTO = 0;
    int IDALIQUOTA_IVA = 0;
    int IDUM = 0;
};

struct TServizio
{
    int IDSERVIZIO = 0;
    QString CODICE;
    QString DESCRIZIONE;
    int IDCATEGORIA_SERVIZI = 0;
    QString CATEGORIA_SERVIZI;
    double PREZZO = 0;
    double COSTO = 0;
    int IDALIQUOTA_IVA = 0;
    int IDUM = 0;
};
