#pragma once

#include "Q3Azienda.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

// One sales invoice or credit note as the electronic invoice (FatturaPA,
// format FPR12) describes it: plain records filled from the document, then
// written by KRVScriviFatturaPA and checked by KRVControlliSdI.

inline const QString KRVFatturaPATipoFattura = QStringLiteral("TD01");
inline const QString KRVFatturaPATipoNotaAccredito = QStringLiteral("TD04");
// A deferred invoice of goods delivered with delivery notes.
inline const QString KRVFatturaPATipoDifferita = QStringLiteral("TD24");
// The recipient code of a customer who receives by PEC or in the reserved
// area, and that of a foreign customer.
inline const QString KRVFatturaPADestinatarioPec = QStringLiteral("0000000");
inline const QString KRVFatturaPADestinatarioEstero = QStringLiteral("XXXXXXX");
// The format of a file for private parties and that for a public administration.
inline const QString KRVFatturaPAFormatoPrivati = QStringLiteral("FPR12");
inline const QString KRVFatturaPAFormatoPA = QStringLiteral("FPA12");

enum class EKRVClienteFatturaPA {
    Azienda, // Italian VAT number, Denominazione
    Privato, // fiscal code only, Nome and Cognome
    Estero   // foreign country, recipient code "XXXXXXX", CAP "00000"
};

struct TKRVClienteFatturaPA
{
    EKRVClienteFatturaPA Tipo = EKRVClienteFatturaPA::Azienda;
    QString CodiceNazione = QStringLiteral("IT");
    QString PartitaIva; // without the country prefix
    QString CodiceFiscale;
    QString Denominazione;
    QString Nome;
    QString Cognome;
    QString Indirizzo;
    QString Cap;
    QString Comune;
    QString Provincia;
    QString CodiceDestinatario;
    QString Pec;
    // A public administration: its office code has 6 characters, the file is
    // an FPA12 and the administration may be known by its fiscal code only.
    bool PubblicaAmministrazione = false;
};

// One line of the document. Tipo is one of the document's line kinds
// (KRVRigaArticolo, KRVRigaServizio, KRVRigaTesto, KRVRigaNonImponibile);
// a text line carries only its description and takes the VAT of the line
// before it (or of the first priced line).
struct TKRVRigaFatturaPA
{
    QString Tipo;
    QString Codice;
    QString Descrizione;
    double Quantita = 1;
    QString UnitaMisura;
    double PrezzoUnitario = 0; // up to 8 decimals
    double Sconto = 0;         // percent on the unit price
    double Totale = 0;         // the line's amount as the document stores it
    double AliquotaIva = 0;    // percent
    QString Natura;            // for a zero rate only
    QString RiferimentoNormativo;
};

// A link to the invoice that a credit note corrects.
struct TKRVFatturaCollegata
{
    QString Numero;
    QDate Data;
};

// A delivery note the invoice was filled from; it covers the whole invoice.
struct TKRVDdtFatturaPA
{
    QString Numero;
    QDate Data;
};

// The summary of one rate (or, for a zero rate, one Natura) as the document's
// totals hold it: the taxable amount may differ from the sum of its lines by
// the rounding of the document, written as Arrotondamento.
struct TKRVRiepilogoFatturaPA
{
    double AliquotaIva = 0;
    QString Natura;
    double Imponibile = 0;
    double Imposta = 0; // as the document computed it
    QString RiferimentoNormativo;
};

struct TKRVDatiFatturaPA
{
    TQ3Azienda Azienda; // transmitter and seller
    QString ProgressivoInvio;
    TKRVClienteFatturaPA Cliente;
    QString TipoDocumento = KRVFatturaPATipoFattura;
    QString Numero;
    QDate Data;
    QString Divisa = QStringLiteral("EUR");
    QList<TKRVFatturaCollegata> FattureCollegate;
    QList<TKRVDdtFatturaPA> Ddt;
    QList<TKRVRigaFatturaPA> Righe;
    // The document's own per-rate totals; when empty they are the sums of the lines.
    QList<TKRVRiepilogoFatturaPA> Riepiloghi;
    bool Bollo = false;
    double ImportoBollo = 2.00;
    // Payment: complete payment (TP02) by bank transfer (MP05) to the firm's IBAN.
    QDate ScadenzaPagamento;
};

// An amount in cents, half away from zero.
qint64 KRVCentesimiFatturaPA(double importo);

// The amount of a line as the exchange system recomputes it: the unit price
// less its discount, times the quantity, rounded half-up to the cent.
double KRVTotaleRigaFatturaPA(double prezzoUnitario, double sconto, double quantita);

// The summaries the file carries: one per rate and, for the zero rate, one per
// Natura, each with the tax computed on its summed taxable amount.
struct TKRVRiepilogoCalcolatoFatturaPA
{
    double AliquotaIva = 0;
    QString Natura;
    QString RiferimentoNormativo;
    qint64 SommaRigheCentesimi = 0; // the lines' amounts
    qint64 ImponibileCentesimi = 0; // what is written as ImponibileImporto
    qint64 ImpostaCentesimi = 0;
};
QList<TKRVRiepilogoCalcolatoFatturaPA> KRVRiepiloghiFatturaPA(const TKRVDatiFatturaPA &dati);

// The lines as written: text lines with their VAT, descriptions over 1000
// characters continued on lines of their own.
QList<TKRVRigaFatturaPA> KRVRigheScritteFatturaPA(const TKRVDatiFatturaPA &dati);

// The amounts without VAT that make the stamp duty due above 77,47 euros
// (exports and intra-EU supplies are exempt from it).
qint64 KRVImportiSenzaIvaCentesimi(const TKRVDatiFatturaPA &dati);
inline constexpr qint64 KRVSogliaBolloCentesimi = 7747;

// The document's "Fattura 12/2026" / "Nota di accredito 3/2026" for messages.
QString KRVNomeDocumentoFatturaPA(const TKRVDatiFatturaPA &dati);

// The file in UTF-8 without BOM, compact, in the schema's element order.
QByteArray KRVScriviFatturaPA(const TKRVDatiFatturaPA &dati);

// The file's name: "IT<VAT number>_<progressive>.xml", the progressive in
// base 36 on at most 5 characters; empty outside 1 .. KRVMaxProgressivoFatturaPA.
inline constexpr int KRVMaxProgressivoFatturaPA = 36 * 36 * 36 * 36 * 36 - 1;
QString KRVNomeFileFatturaPA(const QString &partitaIva, int progressivo);
