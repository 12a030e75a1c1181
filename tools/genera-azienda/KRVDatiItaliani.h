#pragma once

// Names, places, banks and products of an Italian firm's world, and the
// check characters that make tax codes, VAT numbers and bank coordinates
// valid in shape.
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

class TKRVCasuale;

struct TKRVComune
{
    QString Nome;
    QString Cap;
    QString Provincia;
    QString Prefisso; // telephone area code
};

struct TKRVBanca
{
    QString Nome;
    QString Abi;
    QString Swift;
};

// A product family: its subcategory name, the nouns of its articles, the
// variants and sizes that complete a description, its unit, price range in
// cents and its usual VAT code.
struct TKRVFamiglia
{
    QString Sottocategoria;
    QStringList Nomi;
    QStringList Varianti;
    QStringList Misure;
    QString Um;
    int PrezzoMin;
    int PrezzoMax;
    QString Iva;
};

struct TKRVCategoriaBase
{
    QString Nome;
    QString Prefisso; // three letters starting the codes of its articles
    QList<TKRVFamiglia> Famiglie;
};

struct TKRVServizioBase
{
    QString Categoria;
    QStringList Descrizioni;
    QString Um;
    int PrezzoMin;
    int PrezzoMax;
};

namespace KRVDati {

const QList<TKRVComune> &Comuni();
const QStringList &Cognomi();
const QStringList &NomiMaschili();
const QStringList &NomiFemminili();
const QStringList &AttivitaAziende();
const QStringList &FormeSocietarie();
const QStringList &Vie();
const QStringList &TipiVia();
const QList<TKRVBanca> &Banche();
const QList<TKRVCategoriaBase> &CategorieArticoli();
const QStringList &Marchi();
const QList<TKRVServizioBase> &CategorieServizi();
const QStringList &QualificheServizi();
const QStringList &RigheTesto();
const QStringList &RigheNonImponibili();
const QStringList &NoteClienti();
// Title and text of the reusable document notes.
const QList<QPair<QString, QString>> &NoteDocumenti();

// The sixteen-character tax code of a person, check character included.
QString CodiceFiscalePersona(const QString &cognome, const QString &nome, const QDate &nascita, bool femmina,
                             const QString &comuneNascita);
// A land-registry code of a town of birth, as tax codes carry it.
QString CodiceComuneNascita(TKRVCasuale &casuale);
// Eleven digits: firm number, tax office, check digit.
QString PartitaIVA(int numero, int ufficio);
// Capital letters and digits, as the channels' recipient codes and the
// public offices' codes are made.
QString CodiceAlfanumerico(TKRVCasuale &casuale, int lunghezza);

struct TKRVCoordinate
{
    QString Paese;
    QString CinEur;
    QString Cin;
    QString Abi;
    QString Cab;
    QString Conto;
    QString Swift;
    QString Banca;
    QString Agenzia;

    QString Iban() const { return Paese + CinEur + Cin + Abi + Cab + Conto; }
};
// Italian bank coordinates whose national and European check characters are right.
TKRVCoordinate Coordinate(TKRVCasuale &casuale, const QString &citta);

} // namespace KRVDati
