#pragma once

#include "KRVFatturaPA.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>

// The two kinds of saved document an electronic invoice is produced from.
enum class EKRVDocumentoFatturaPA {
    Fattura,      // FATT_VEND, TD01
    NotaAccredito // NOTE_ACCREDITO, TD04
};

// Reads saved documents of one kind into their electronic invoice's records:
// what every document shares (the firm, the module options) read once, the
// statements prepared once, for the documents of an export one after another.
class TKRVLettoreFatturaPA
{
public:
    TKRVLettoreFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo);
    ~TKRVLettoreFatturaPA();
    TKRVLettoreFatturaPA(const TKRVLettoreFatturaPA &) = delete;
    TKRVLettoreFatturaPA &operator=(const TKRVLettoreFatturaPA &) = delete;

    // As KRVLeggiDatiFatturaPA.
    TKRVDatiFatturaPA Leggi(int id, QStringList &problemi);

private:
    struct TStato;
    std::unique_ptr<TStato> m_stato;
};

// A saved document as its electronic invoice describes it: the header with
// the customer's data as the document keeps them, the customer's recipient
// code, PEC and kind from CLIENTI, the lines with their rates' Natura, the
// due date, the firm's data and the stamp duty. What the document lacks for
// the file and no later check would name (missing firm data, an exempt line
// whose rate has no Natura, a foreign customer without a country code) is
// added to problemi. Raises EQ3Exception when the document does not exist.
TKRVDatiFatturaPA KRVLeggiDatiFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id,
                                        QStringList &problemi);

// A saved document's electronic invoice read and checked, not yet numbered:
// the errors name what to correct, the document, the field and the value.
struct TKRVFatturaPAVerificata
{
    TKRVDatiFatturaPA Dati;
    QStringList Errori;
    QByteArray Xml; // the file checked, with a provisional progressive
};
TKRVFatturaPAVerificata KRVVerificaFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id);
TKRVFatturaPAVerificata KRVVerificaFatturaPA(TKRVLettoreFatturaPA &lettore, int id);

// Takes the next send progressive (never given twice) into the checked file
// and its data, and answers the file's name.
QString KRVNumeraFatturaPA(const QSqlDatabase &db, TKRVFatturaPAVerificata &verificata, int &progressivo);

// Writes a file whole or not at all.
void KRVScriviFileFatturaPA(const QString &percorso, const QByteArray &xml);

// A file produced for a document: its name and send progressive.
struct TKRVFileFatturaPA
{
    int Id = 0;
    QString Nome;
    int Progressivo = 0;
};

// Records on each document the file produced for it: name, progressive and
// now. Runs in the caller's transaction.
void KRVRegistraFatturePA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                          const QList<TKRVFileFatturaPA> &prodotti);

// What producing a file came to.
struct TKRVEmissioneFatturaPA
{
    QStringList Errori; // what to correct, naming the document, the field and its value
    QString NomeFile;   // "IT<VAT number>_<progressive>.xml"
    QString Percorso;   // the file written, in the folder asked for
    int Progressivo = 0;
};

// Produces the electronic invoice of a saved document into the folder: the
// document read, its file checked against the schema and the exchange
// system's checks. With any error nothing is written and the errors are
// answered. Otherwise the file takes a new send progressive (never reused,
// so every export has a name of its own), is written into the folder and the
// document records the file's name, progressive and time in one transaction.
// Raises EQ3Exception when the document does not exist or the database fails.
TKRVEmissioneFatturaPA KRVEmettiFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id,
                                          const QString &cartella);

// What a document's electronic invoice has come to: the file produced last
// and, when an administrator unlocked the issued document since, who and when.
struct TKRVStatoFatturaPA
{
    QString NomeFile;
    QDateTime Prodotta; // invalid while never produced
    QString SbloccataDa;
    QDateTime SbloccataIl;

    // An issued document is not changed any more (corrections go through a
    // credit note), unless it was unlocked after its last file.
    bool Bloccato() const { return Prodotta.isValid() && !(SbloccataIl.isValid() && SbloccataIl >= Prodotta); }
};

// The state of the document's electronic invoice (never produced when the
// document does not exist).
TKRVStatoFatturaPA KRVStatoFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id);

// Unlocks an issued document so that it can be changed, recording the
// administrator who did it and when; refuses (EQ3Rifiuto) anyone who is not
// an administrator.
void KRVSbloccaFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id, const QString &utente);
