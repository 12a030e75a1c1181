#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// What the electronic invoice needs to know of a customer besides the tax
// codes: the kind of subject, a private person's names and where the invoice
// is delivered (the recipient code of the customer's channel, or a PEC).

// The kinds of subject, as stored in CLIENTI.TIPO_SOGGETTO, with their captions.
struct TKRVTipoSoggetto
{
    QString Codice;
    QString Descrizione;
};

inline constexpr char KRVSoggettoAzienda[] = "A";
inline constexpr char KRVSoggettoPrivato[] = "P";
inline constexpr char KRVSoggettoPA[] = "PA";

// Company, private person, public administration: the first is the column's default.
const QList<TKRVTipoSoggetto> &KRVTipiSoggetto();

struct TKRVRecapitoCliente
{
    QString TipoSoggetto;
    QString Nome;
    QString Cognome;
    QString CodiceDestinatario;
    QString Pec;
};

// The code of a customer that receives through its reserved area (or by PEC),
// and the one of a foreign customer.
inline constexpr char KRVDestinatarioNonIndicato[] = "0000000";
inline constexpr char KRVDestinatarioEstero[] = "XXXXXXX";

// The warnings of the checks, each naming its field, in this order; none when
// the data can go on an electronic invoice.
QStringList KRVProblemiRecapito(const TKRVRecapitoCliente &recapito);

// Whether a company has neither a recipient code nor a PEC, so that its
// invoices go with KRVDestinatarioNonIndicato (a private person's always may).
bool KRVSenzaRecapito(const TKRVRecapitoCliente &recapito);

// The recipient code proposed for a customer of that country whose code is
// still empty: the foreign customers' one; otherwise the code as it is.
QString KRVDestinatarioProposto(const QString &nazione, const QString &codice);

inline constexpr char KRVMsgDestinatarioNonValido[] = "Il codice destinatario deve essere di 7 lettere o cifre.";
inline constexpr char KRVMsgDestinatarioPA[] =
    "Per una pubblica amministrazione il codice destinatario (codice univoco ufficio) deve essere di 6 lettere o cifre.";
inline constexpr char KRVMsgPecNonValida[] = "La PEC non è un indirizzo e-mail valido.";
inline constexpr char KRVMsgPrivatoSenzaNome[] = "Per un privato indicare nome e cognome.";
inline constexpr char KRVMsgSenzaRecapito[] =
    "Non sono stati indicati né il codice destinatario, né la PEC:\n\rle fatture elettroniche useranno il codice "
    "destinatario \"0000000\",\n\rproseguire comunque?";
