#include "KRVGeneraAzienda.h"

#include "KATAggiornaDatabase.h"
#include "KATPromemoria.h"
#include "KRVAggiornaDatabase.h"
#include "KRVCasuale.h"
#include "KRVDatiItaliani.h"
#include "KRVRigheDocumento.h"
#include "Q3DatabaseFile.h"
#include "Q3Exception.h"
#include "Q3FbClient.h"
#include "Q3HostSchema.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace {

// A parameter value as text; no value is SQL null.
using TValore = std::optional<QByteArray>;

TValore Nullo()
{
    return std::nullopt;
}

TValore Num(qint64 value)
{
    return QByteArray::number(value);
}

TValore Txt(const QString &text)
{
    return text.toUtf8();
}

TValore Data(const QDate &date)
{
    return date.toString(Qt::ISODate).toLatin1();
}

// Hundredths (cents, or quantities and percentages with two decimals) as a decimal literal.
QByteArray Centesimi(qint64 hundredths)
{
    const qint64 whole = hundredths < 0 ? -hundredths : hundredths;
    return (hundredths < 0 ? QByteArrayLiteral("-") : QByteArray()) + QByteArray::number(whole / 100) + '.'
           + QByteArray::number(whole % 100).rightJustified(2, '0');
}

TValore Cent(qint64 hundredths)
{
    return Centesimi(hundredths);
}

TValore Flag(bool value)
{
    return value ? QByteArrayLiteral("True") : QByteArrayLiteral("False");
}

void Scrivi(TQ3FbStatement &statement, const QList<TValore> &values)
{
    for (int i = 0; i < values.size(); ++i) {
        if (values.at(i))
            statement.SetText(i, *values.at(i));
        else
            statement.SetNull(i);
    }
    statement.Execute();
}

// Column names written one after the other, separated by blanks.
QStringList Colonne(const char *names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QByteArray Insert(const char *table, const QStringList &columns, const QStringList &blobs = {})
{
    QStringList marks;
    for (const QString &column : columns)
        marks << (blobs.contains(column) ? QStringLiteral("CAST(? AS VARCHAR(4000))") : QStringLiteral("?"));
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(QString::fromLatin1(table), columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")))
        .toUtf8();
}

// Whether a product lies exactly half way between two cents, where formatting
// libraries round differently: the generator never writes such a line.
bool A_Meta_Centesimo(double amount)
{
    const double eighths = amount * 8.0; // exact in binary
    return std::floor(eighths) == eighths && std::fmod(std::fabs(eighths), 2.0) == 1.0;
}

// An amount typed with two decimals, in cents.
qint64 CentesimiDigitati(double amount)
{
    return std::llround(QByteArray::number(amount, 'f', 2).toDouble() * 100.0);
}

// How a floating-point total lands in a DECIMAL(13, 2) column when the editor saves it.
qint64 CentesimiSalvati(double value)
{
    return qint64(std::floor(0.5 + value * 100.0));
}

struct TAliquota
{
    int Id;
    QString Codice;
    QString Descrizione;
    qint64 Percentuale; // hundredths
};

struct TCategoria
{
    int Id;
    QString Nome;
};

struct TProdotto // an article or a service
{
    QString Codice;
    QString Descrizione;
    int IdCategoria;
    QString Categoria;
    qint64 Prezzo;
    qint64 Costo;
    int Aliquota; // index into the rates
    int IdUm;
    QString Um;
};

struct TCliente
{
    QString Codice;
    QString RagioneSociale;
    QString Indirizzo;
    QString Citta;
    QString Cap;
    QString Provincia;
    QString Nazione;
    QString CodiceFiscale;
    QString PartitaIva;
    int IdTipoPagamento;
    bool Estero;
    QString TipoSoggetto; // "A" company, "P" private person, "PA" public administration
    QString CodiceDestinatario;
    QString Pec;
};

// Where a customer's electronic invoices go: a public office through its
// six-character office code, a foreign customer through the foreign
// customers' code; firms mostly through their channel's code, else by PEC
// with "0000000"; private persons through their reserved area ("0000000"),
// a few of them by PEC.
void Recapito(TKRVCasuale &casuale, TCliente &c, const QString &slug)
{
    const QString nessuno = QStringLiteral("0000000");
    const QString pec = slug.left(40) + QStringLiteral("@pec.it");
    if (c.TipoSoggetto == QLatin1String("PA")) {
        c.CodiceDestinatario = KRVDati::CodiceAlfanumerico(casuale, 6);
    } else if (c.Estero) {
        c.CodiceDestinatario = QStringLiteral("XXXXXXX");
    } else if (c.TipoSoggetto == QLatin1String("P")) {
        c.CodiceDestinatario = nessuno;
        if (casuale.Vero(0.15))
            c.Pec = pec;
    } else if (casuale.Vero(0.75)) {
        c.CodiceDestinatario = KRVDati::CodiceAlfanumerico(casuale, 7);
    } else {
        c.CodiceDestinatario = nessuno;
        c.Pec = pec;
    }
}

struct TTipoPagamento
{
    int Id;
    QString Testo;
    int Giorni;
    bool FineMese;
};

const char *const RigaArticolo = "Articolo";
const char *const RigaServizio = "Servizio";
const char *const RigaTesto = "Testo";
const char *const RigaNonImponibile = "Non imponibile";

struct TRiga
{
    QString Tipo;
    const TProdotto *Prodotto = nullptr;
    QString Descrizione;
    qint64 Prezzo = 0;
    qint64 Sconto = 0;
    qint64 Quantita = 0;
    qint64 Costo = 0;
    qint64 Importo = 0; // cents, as the editor's line model computes it (Conti)
};

// What a credit note needs of the invoice it refers to.
struct TRiferimento
{
    QDate Data;
    int Numero;
    int Cliente;
    QList<TRiga> Righe;
    int Chiave; // the invoice's key
};

class TGeneratore
{
public:
    TGeneratore(const TQ3DatabaseTarget &target, const TKRVOpzioniGenerazione &opzioni);
    TKRVRiepilogoGenerazione Esegui();

private:
    void Promemoria();
    void Avanza(const QString &text) const
    {
        if (m_opzioni.Avanzamento)
            m_opzioni.Avanzamento(text);
    }
    int ChiaveSuccessiva(const char *generator);
    void VerificaGeneratore(const char *generator, int last);

    void Tabelle();
    void Azienda();
    void NoteDocumenti();
    QList<TCategoria> Categorie(const char *table, const char *generator, const QStringList &tops,
                                const QList<QStringList> &children, const QStringList &third,
                                QHash<QString, QList<TCategoria>> *leaves);
    void Articoli();
    void Servizi();
    void Clienti();
    void Anno(int year);
    QList<TRiga> RigheFattura(TKRVCasuale &casuale, const QDate &date, bool ciclica);
    TRiga RigaProdotto(TKRVCasuale &casuale, const char *tipo, const TProdotto &prodotto, bool conSconto);
    TKRVTotaliDocumento Conti(QList<TRiga> &righe, const TKRVLayoutRighe &layout, bool esente) const;
    void NoteAccredito(int year, QList<TRiferimento> riferimenti);
    QList<TValore> Intestazione(int key, int numero, const QDate &date, const TCliente &cliente, qint64 imponibile,
                                qint64 imposta, qint64 totale, bool pagato);

    TKRVOpzioniGenerazione m_opzioni;
    QDate m_fine; // the last day a document may carry
    TQ3Connection m_connection;
    TQ3FbClient m_client;
    TKRVRiepilogoGenerazione m_riepilogo;

    QList<TAliquota> m_aliquote;
    QHash<QString, int> m_aliquotaPerCodice;
    QHash<QString, int> m_idUm;
    QList<TTipoPagamento> m_pagamenti;
    QList<TProdotto> m_articoli;
    QList<TProdotto> m_servizi;
    QList<TCliente> m_clienti;
    QString m_notaEsenzione;
    QStringList m_noteFattura;
};

TGeneratore::TGeneratore(const TQ3DatabaseTarget &target, const TKRVOpzioniGenerazione &opzioni)
    : m_opzioni(opzioni), m_fine(opzioni.AnnoFinale, 12, 31), m_client(target)
{
    if (m_opzioni.DataFinale.isValid()) {
        if (m_opzioni.DataFinale.year() < m_opzioni.AnnoFinale) {
            throw EQ3Exception(QStringLiteral("La data finale %1 precede l'anno finale %2.")
                                   .arg(m_opzioni.DataFinale.toString(Qt::ISODate))
                                   .arg(m_opzioni.AnnoFinale));
        }
        m_fine = qMin(m_fine, m_opzioni.DataFinale);
    }
    m_connection.SetConnectionString(target.ConnectionString());
    m_connection.Open();
}

int TGeneratore::ChiaveSuccessiva(const char *generator)
{
    return GetLastGeneratorValue(QString::fromLatin1(generator), m_connection.Database()) + 1;
}

// The keys were taken as "last value plus one", row by row: the generator must have followed.
void TGeneratore::VerificaGeneratore(const char *generator, int last)
{
    const int value = GetLastGeneratorValue(QString::fromLatin1(generator), m_connection.Database());
    if (value != last) {
        throw EQ3Exception(
            QStringLiteral("Il generatore %1 vale %2 invece di %3: il database è stato usato durante la generazione.")
                .arg(QString::fromLatin1(generator))
                .arg(value)
                .arg(last));
    }
}

TKRVRiepilogoGenerazione TGeneratore::Esegui()
{
    QElapsedTimer timer;
    timer.start();
    const QSqlDatabase db = m_connection.Database();
    if (QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM FATT_VEND")).toInt() > 0
        || QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM CLIENTI")).toInt() > 0)
        throw EQ3Exception(
            QStringLiteral("Il database contiene già clienti o fatture: la generazione richiede un'azienda vuota."));

    m_client.Begin();
    Tabelle();
    Azienda();
    NoteDocumenti();
    Articoli();
    Servizi();
    Clienti();
    m_client.Commit();
    Avanza(QStringLiteral("Anagrafiche: %1 clienti, %2 articoli, %3 servizi, %4 categorie (%5 s)")
               .arg(m_riepilogo.Clienti)
               .arg(m_riepilogo.Articoli)
               .arg(m_riepilogo.Servizi)
               .arg(m_riepilogo.Categorie)
               .arg(double(timer.elapsed()) / 1000.0, 0, 'f', 1));

    const int first = m_opzioni.AnnoFinale - m_opzioni.Dimensione.Anni + 1;
    for (int year = first; year <= m_opzioni.AnnoFinale; ++year) {
        const qint64 fatture = m_riepilogo.Fatture;
        const qint64 righe = m_riepilogo.RigheFatture;
        m_client.Begin(true);
        Anno(year);
        m_client.Commit();
        Avanza(QStringLiteral("%1: %2 fatture, %3 righe (%4 s)")
                   .arg(year)
                   .arg(m_riepilogo.Fatture - fatture)
                   .arg(m_riepilogo.RigheFatture - righe)
                   .arg(double(timer.elapsed()) / 1000.0, 0, 'f', 1));
    }
    Promemoria();
    m_riepilogo.Secondi = double(timer.elapsed()) / 1000.0;
    return m_riepilogo;
}

// The reminders of the recurring invoices still running at the end, as the
// activities module keeps them; those up to two weeks before the end were
// acted on then, the later ones are still to do.
void TGeneratore::Promemoria()
{
    const QSqlDatabase db = m_connection.Database();
    QSqlQuery query =
        OpenQuery(db, QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND WHERE FC_ABILITATO = 'True' "
                                     "AND FC_DATA_FINE >= ")
                          + QuotedStr(DateToString_YYYYMMDD(m_fine)) + QStringLiteral(" ORDER BY IDFATT_VEND"));
    QList<int> cicliche;
    while (query.next())
        cicliche << query.value(0).toInt();
    query.finish();
    for (const int id : std::as_const(cicliche))
        KATAggiornaPromemoriaFattura(db, id);
    TQ3Transaction transaction(db);
    ExecSQL(db, QStringLiteral("UPDATE PROMEMORIA SET STATO = %1, FATTO_IL = DATA WHERE STATO = %2 AND DATA < %3")
                    .arg(QuotedStr(QString::fromUtf8(KATStatoFatto)), QuotedStr(QString::fromUtf8(KATStatoDaFare)),
                         QuotedStr(DateToString_YYYYMMDD(m_fine.addDays(-14)))));
    transaction.Commit();
    m_riepilogo.Promemoria = QueryScalar(db, QStringLiteral("SELECT COUNT(*) FROM PROMEMORIA")).toLongLong();
    Avanza(QStringLiteral("Promemoria: %1 di %2 fatture cicliche").arg(m_riepilogo.Promemoria).arg(cicliche.size()));
}

void TGeneratore::Tabelle()
{
    // The rates, units and payment types of a working firm, beside the ones every database starts with.
    const QSqlDatabase db = m_connection.Database();
    const auto addIfMissing = [this, &db](const QString &exists, const QByteArray &insert) {
        if (QueryScalar(db, exists).toInt() == 0)
            m_client.Execute(insert);
    };
    addIfMissing(
        QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE CODICE = '22'"),
        "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES(0, '22', 'Aliquota ordinaria 22%', 22)");
    addIfMissing(
        QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE CODICE = '10'"),
        "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES(0, '10', 'Aliquota ridotta 10%', 10)");
    addIfMissing(
        QStringLiteral("SELECT COUNT(*) FROM ALIQUOTE_IVA WHERE CODICE = '04'"),
        "INSERT INTO ALIQUOTE_IVA (IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA) VALUES(0, '04', 'Aliquota minima 4%', 4)");
    for (const char *um : {"CF", "MT", "LT"})
        addIfMissing(QStringLiteral("SELECT COUNT(*) FROM UM WHERE UM = '%1'").arg(QString::fromLatin1(um)),
                     QByteArrayLiteral("INSERT INTO UM VALUES(0, '") + um + "')");
    for (const char *tipo : {"Bonifico 60 gg Fine Mese", "Ri.Ba. 60 gg Fine Mese", "Contrassegno"}) {
        addIfMissing(QStringLiteral("SELECT COUNT(*) FROM TIPI_PAGAMENTO WHERE TIPO_PAGAMENTO = '%1'")
                         .arg(QString::fromLatin1(tipo)),
                     QByteArrayLiteral("INSERT INTO TIPI_PAGAMENTO VALUES(0, '") + tipo + "')");
    }
    // The zero rates the database starts with carry no nature: the exempt one
    // gets the exempt operations' (art. 10), every other the excluded ones' (art. 15).
    m_client.Execute("UPDATE ALIQUOTE_IVA SET NATURA = 'N4', RIFERIMENTO_NORMATIVO = 'Esente art. 10 DPR 633/72' "
                     "WHERE ALIQUOTA = 0 AND NATURA = '' AND CODICE = 'N0'");
    m_client.Execute("UPDATE ALIQUOTE_IVA SET NATURA = 'N1', RIFERIMENTO_NORMATIVO = 'Escluso art. 15 DPR 633/72' "
                     "WHERE ALIQUOTA = 0 AND NATURA = ''");
    addIfMissing(QStringLiteral("SELECT COUNT(*) FROM OPZIONI WHERE OPZIONE = 'FATT_IVA_ESENTE_NOTE'"),
                 "INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES ('FATT_IVA_ESENTE_NOTE', "
                 "'Operazione non imponibile ai sensi dell''art. 41 D.L. 331/93')");
    m_client.Commit();
    m_client.Begin();

    QSqlQuery rates =
        OpenQuery(db,
                  QStringLiteral("SELECT IDALIQUOTA_IVA, CODICE, DESCRIZIONE, ALIQUOTA FROM ALIQUOTE_IVA ORDER BY 1"));
    while (rates.next()) {
        m_aliquotaPerCodice.insert(rates.value(1).toString(), int(m_aliquote.size()));
        m_aliquote.append({rates.value(0).toInt(), rates.value(1).toString(), rates.value(2).toString(),
                           std::llround(rates.value(3).toDouble() * 100.0)});
    }
    QSqlQuery units = OpenQuery(db, QStringLiteral("SELECT IDUM, UM FROM UM"));
    while (units.next())
        m_idUm.insert(units.value(1).toString(), units.value(0).toInt());
    QSqlQuery payments =
        OpenQuery(db, QStringLiteral("SELECT IDTIPO_PAGAMENTO, TIPO_PAGAMENTO FROM TIPI_PAGAMENTO ORDER BY 1"));
    while (payments.next()) {
        const QString text = payments.value(1).toString();
        if (text.size() > 30) // a document keeps at most 30 characters of it
            continue;
        const int days = text.contains(QLatin1String("60 gg")) ? 60 : text.contains(QLatin1String("30 gg")) ? 30 : 0;
        m_pagamenti.append({payments.value(0).toInt(), text, days, text.contains(QLatin1String("Fine Mese"))});
    }
}

void TGeneratore::Azienda()
{
    TKRVCasuale casuale(m_opzioni.Seme, 1);
    const QString piva = KRVDati::PartitaIVA(casuale.Intero(1000000, 3999999), 16);
    TQ3FbStatement update(m_client,
                          "UPDATE AZIENDA SET RAGIONESOCIALE = ?, INDIRIZZO = ?, CAP = ?, CITTA = ?, PROVINCIA = ?, "
                          "NAZIONE = ?, PARTITAIVA = ?, CODICEFISCALE = ?, TELEFONO = ?, FAX = ?, EMAIL = ?, WEB = ?, "
                          "REA = ?, CAPITALE_SOCIALE = ?, BANCA = ?, IBAN = ?");
    const KRVDati::TKRVCoordinate banca = KRVDati::Coordinate(casuale, QStringLiteral("Bergamo"));
    Scrivi(update,
           {Txt(QStringLiteral("Rinaldi Forniture Tecniche S.r.l.")), Txt(QStringLiteral("Via dell'Industria 15")),
            Txt(QStringLiteral("24121")), Txt(QStringLiteral("Bergamo")), Txt(QStringLiteral("BG")),
            Txt(QStringLiteral("Italia")), Txt(piva), Txt(piva), Txt(QStringLiteral("035 4123456")),
            Txt(QStringLiteral("035 4123457")), Txt(QStringLiteral("amministrazione@rinaldiforniture.it")),
            Txt(QStringLiteral("www.rinaldiforniture.it")), Txt(QStringLiteral("BG-123456")),
            Txt(QString::fromUtf8("€ 50.000,00 i.v.")), Txt(banca.Banca + QStringLiteral(" - ") + banca.Agenzia),
            Txt(banca.Iban())});
}

void TGeneratore::NoteDocumenti()
{
    TQ3FbStatement insert(m_client, Insert("NOTE_DOCUMENTI", Colonne("IDNOTA_DOCUMENTI TITOLO TESTO"),
                                           {QStringLiteral("TESTO")}));
    for (const auto &[titolo, testo] : KRVDati::NoteDocumenti()) {
        if (QueryScalar(m_connection.Database(),
                        QStringLiteral("SELECT COUNT(*) FROM NOTE_DOCUMENTI WHERE TITOLO = %1").arg(QuotedStr(titolo)))
                .toInt()
            == 0)
            Scrivi(insert, {Num(0), Txt(titolo), Txt(testo)});
        m_noteFattura << testo;
        if (titolo.startsWith(QLatin1String("Dichiarazione")))
            m_notaEsenzione = testo;
    }
}

// Top-level categories, the children of each and, when asked, a third level
// under every child; answers every category, and by name of a second-level
// category the categories its items may take (itself and its children).
QList<TCategoria> TGeneratore::Categorie(const char *table, const char *generator, const QStringList &tops,
                                         const QList<QStringList> &children, const QStringList &third,
                                         QHash<QString, QList<TCategoria>> *leaves)
{
    const QString keyColumn =
        QStringLiteral("ID")
        + QString::fromLatin1(table).replace(QLatin1String("CATEGORIE"), QLatin1String("CATEGORIA"));
    TQ3FbStatement insert(m_client, Insert(table, {keyColumn, QStringLiteral("CATEGORIA"), QStringLiteral("IDPADRE")}));
    int key = ChiaveSuccessiva(generator);
    QList<TCategoria> all;
    const auto add = [&](const QString &name, std::optional<int> parent) {
        Scrivi(insert, {Num(key), Txt(name), parent ? Num(*parent) : Nullo()});
        all.append({key, name});
        ++m_riepilogo.Categorie;
        return key++;
    };
    for (int i = 0; i < tops.size(); ++i) {
        const int top = add(tops.at(i), std::nullopt);
        for (const QString &child : children.at(i)) {
            const int middle = add(child, top);
            QList<TCategoria> &list = (*leaves)[child];
            list.append({middle, child});
            for (const QString &name : third)
                list.append({add(name, middle), name});
        }
    }
    VerificaGeneratore(generator, key - 1);
    return all;
}

void TGeneratore::Articoli()
{
    QStringList tops;
    QList<QStringList> children;
    for (const TKRVCategoriaBase &base : KRVDati::CategorieArticoli()) {
        tops << base.Nome;
        QStringList names;
        for (const TKRVFamiglia &famiglia : base.Famiglie)
            names << famiglia.Sottocategoria;
        children << names;
    }
    QHash<QString, QList<TCategoria>> leaves;
    const QStringList third = m_opzioni.Dimensione.TerzoLivello ? KRVDati::Marchi() : QStringList();
    Categorie("CATEGORIE_ANA_MAGA", "GN_IDCATEGORIA_ANA_MAGA", tops, children, third, &leaves);

    struct TFamigliaScelta
    {
        const TKRVCategoriaBase *Base;
        const TKRVFamiglia *Famiglia;
    };
    QList<TFamigliaScelta> famiglie;
    for (const TKRVCategoriaBase &base : KRVDati::CategorieArticoli()) {
        for (const TKRVFamiglia &famiglia : base.Famiglie)
            famiglie.append({&base, &famiglia});
    }

    TKRVCasuale casuale(m_opzioni.Seme, 2);
    TQ3FbStatement insert(m_client, Insert("ANA_MAGA",
                                           Colonne("IDANA_MAGA CODICE DESCRIZIONE SOTTOSCORTA RIORDINO "
                                                   "IDCATEGORIA_ANA_MAGA PREZZO COSTO IDALIQUOTA_IVA IDUM NOTE"),
                                           {QStringLiteral("NOTE")}));
    const QStringList note = {QStringLiteral("Articolo a esaurimento."), QStringLiteral("Disponibile su ordinazione."),
                              QStringLiteral("Prezzo soggetto a variazioni del listino fornitore.")};
    for (int i = 1; i <= m_opzioni.Dimensione.Articoli; ++i) {
        const TFamigliaScelta &scelta = casuale.Scelta(famiglie);
        const TKRVFamiglia &f = *scelta.Famiglia;
        const TCategoria &categoria = casuale.Scelta(leaves.value(f.Sottocategoria));
        TProdotto p;
        p.Codice = scelta.Base->Prefisso + QStringLiteral("%1").arg(i, 6, 10, QLatin1Char('0'));
        p.Descrizione = (casuale.Scelta(f.Nomi) + QLatin1Char(' ') + casuale.Scelta(f.Varianti) + QLatin1Char(' ')
                         + casuale.Scelta(f.Misure))
                            .left(100);
        p.IdCategoria = categoria.Id;
        p.Categoria = categoria.Nome;
        p.Prezzo = qint64(casuale.Intero(f.PrezzoMin / 10, f.PrezzoMax / 10)) * 10 - (casuale.Vero(0.5) ? 1 : 0);
        p.Costo = p.Prezzo * casuale.Intero(50, 75) / 100;
        p.Aliquota = m_aliquotaPerCodice.value(f.Iva);
        p.IdUm = m_idUm.value(f.Um);
        p.Um = f.Um;
        const bool decimals = f.Um == QLatin1String("KG") || f.Um == QLatin1String("MT") || f.Um == QLatin1String("LT")
                              || f.Um == QLatin1String("Q.LI");
        const int scorta = casuale.Intero(1, 20) * (decimals ? 10 : 1);
        Scrivi(insert, {Num(0), Txt(p.Codice), Txt(p.Descrizione), Txt(QString::number(scorta)),
                        Txt(QString::number(scorta * 3)), Num(p.IdCategoria), Cent(p.Prezzo), Cent(p.Costo),
                        Num(m_aliquote.at(p.Aliquota).Id), Num(p.IdUm),
                        casuale.Vero(0.05) ? Txt(casuale.Scelta(note)) : Nullo()});
        m_articoli.append(p);
    }
    m_riepilogo.Articoli = m_articoli.size();
}

void TGeneratore::Servizi()
{
    QStringList tops;
    QList<QStringList> children;
    for (const TKRVServizioBase &base : KRVDati::CategorieServizi())
        tops << base.Categoria;
    // Service categories: the top level, and for bigger firms one level by kind of customer.
    for (const QString &top : std::as_const(tops)) {
        children << (m_opzioni.Dimensione.TerzoLivello
                         ? QStringList({top + QStringLiteral(" civili"), top + QStringLiteral(" industriali")})
                         : QStringList());
    }
    QHash<QString, QList<TCategoria>> leaves;
    const QList<TCategoria> all = Categorie("CATEGORIE_SERVIZI", "GN_IDCATEGORIA_SERVIZI", tops, children, {}, &leaves);

    TKRVCasuale casuale(m_opzioni.Seme, 3);
    TQ3FbStatement insert(m_client,
                          Insert("SERVIZI", Colonne("IDSERVIZIO CODICE DESCRIZIONE IDCATEGORIA_SERVIZI PREZZO COSTO "
                                                    "IDALIQUOTA_IVA IDUM")));
    const QList<TKRVServizioBase> &bases = KRVDati::CategorieServizi();
    for (int i = 1; i <= m_opzioni.Dimensione.Servizi; ++i) {
        const int b = (i - 1) % int(bases.size());
        const TKRVServizioBase &base = bases.at(b);
        QList<TCategoria> candidates;
        for (const TCategoria &c : std::as_const(all)) {
            if (c.Nome.startsWith(base.Categoria))
                candidates << c;
        }
        const TCategoria &categoria = casuale.Scelta(candidates);
        TProdotto p;
        p.Codice = QStringLiteral("SRV%1").arg(i, 5, 10, QLatin1Char('0'));
        const QString qualifica = i <= bases.size() ? QString() : casuale.Scelta(KRVDati::QualificheServizi());
        p.Descrizione = (casuale.Scelta(base.Descrizioni) + QLatin1Char(' ') + qualifica).trimmed();
        p.IdCategoria = categoria.Id;
        p.Categoria = categoria.Nome;
        p.Prezzo = qint64(casuale.Intero(base.PrezzoMin / 50, base.PrezzoMax / 50)) * 50;
        p.Costo = p.Prezzo * casuale.Intero(55, 80) / 100;
        p.Aliquota = m_aliquotaPerCodice.value(QStringLiteral("22"));
        p.IdUm = m_idUm.value(base.Um);
        p.Um = base.Um;
        Scrivi(insert, {Num(0), Txt(p.Codice), Txt(p.Descrizione), Num(p.IdCategoria), Cent(p.Prezzo), Cent(p.Costo),
                        Num(m_aliquote.at(p.Aliquota).Id), Num(p.IdUm)});
        m_servizi.append(p);
    }
    m_riepilogo.Servizi = m_servizi.size();
}

void TGeneratore::Clienti()
{
    TKRVCasuale casuale(m_opzioni.Seme, 4);
    const QStringList columns = Colonne("IDCLIENTE CODICE RAGIONESOCIALE INDIRIZZO CITTA CAP PROVINCIA NAZIONE "
                                        "CODICEFISCALE PARTITAIVA IDTIPO_PAGAMENTO TELEFONO1 TELEFONO2 "
                                        "TELEFONO3 FAX EMAIL WEB NOTE COORDBAN_PAESE COORDBAN_CIN_EUR "
                                        "COORDBAN_CIN COORDBAN_ABI COORDBAN_CAB COORDBAN_CONTO COORDBAN_SWIFT "
                                        "COORDBAN_BANCA COORDBAN_AGENZIA TIPO_SOGGETTO NOME COGNOME "
                                        "CODICE_DESTINATARIO PEC");
    TQ3FbStatement insert(m_client, Insert("CLIENTI", columns, {QStringLiteral("NOTE")}));
    const QList<TKRVComune> &comuni = KRVDati::Comuni();
    const struct
    {
        const char *Citta;
        const char *Cap;
        const char *Nazione;
        const char *Prefisso;
        const char *Telefono;
    } esteri[] = {{"München", "80331", "Germania", "DE", "+49 89"},
                  {"Lyon", "69001", "Francia", "FR", "+33 4"},
                  {"Wien", "10100", "Austria", "AT", "+43 1"},
                  {"Barcelona", "08001", "Spagna", "ES", "+34 93"}};

    for (int i = 1; i <= m_opzioni.Dimensione.Clienti; ++i) {
        TCliente c;
        c.Codice = GetCustomCodice(i, QStringLiteral("C"), QString(), 7);
        const bool persona = casuale.Vero(0.25);
        c.Estero = !persona && casuale.Vero(0.02);
        // A few public offices among the Italian customers.
        const bool ente = !persona && !c.Estero && casuale.Vero(0.03);
        c.TipoSoggetto = persona ? QStringLiteral("P") : ente ? QStringLiteral("PA") : QStringLiteral("A");
        const QString cognome = casuale.Scelta(KRVDati::Cognomi());
        const bool femmina = casuale.Vero(0.4);
        const QString nome = casuale.Scelta(femmina ? KRVDati::NomiFemminili() : KRVDati::NomiMaschili());
        QString slug;
        if (persona) {
            c.RagioneSociale = cognome + QLatin1Char(' ') + nome;
            slug = (nome + QLatin1Char('.') + cognome).toLower().remove(QLatin1Char(' ')).remove(QLatin1Char('\''));
        } else {
            const QString attivita = casuale.Scelta(KRVDati::AttivitaAziende());
            const QString forma = casuale.Scelta(KRVDati::FormeSocietarie());
            switch (casuale.Intero(0, 3)) {
            case 0:
                c.RagioneSociale = attivita + QLatin1Char(' ') + cognome + QLatin1Char(' ') + forma;
                break;
            case 1:
                c.RagioneSociale = cognome + QLatin1Char(' ') + attivita + QLatin1Char(' ') + forma;
                break;
            case 2:
                c.RagioneSociale = attivita + QStringLiteral(" di ") + cognome + QLatin1Char(' ') + nome
                                   + QStringLiteral(" & C. S.a.s.");
                break;
            default:
                c.RagioneSociale = QStringLiteral("F.lli ") + cognome + QLatin1Char(' ') + forma;
                break;
            }
            slug = (cognome + attivita).toLower().remove(QLatin1Char(' ')).remove(QLatin1Char('\''));
        }
        // The copy kept in documents holds 50 characters of the address.
        c.Indirizzo = (casuale.Scelta(KRVDati::TipiVia()) + QLatin1Char(' ') + casuale.Scelta(KRVDati::Vie())
                       + QStringLiteral(", ") + QString::number(casuale.Intero(1, 180)))
                          .left(50);
        QString prefisso;
        if (c.Estero) {
            const auto &estero = esteri[casuale.Intero(0, 3)];
            c.Citta = QString::fromUtf8(estero.Citta);
            c.Cap = QString::fromLatin1(estero.Cap);
            c.Provincia = QStringLiteral("EE");
            c.Nazione = QString::fromUtf8(estero.Nazione);
            c.PartitaIva = QString::fromLatin1(estero.Prefisso) + QString::number(casuale.Intero(100000000, 999999999));
            prefisso = QString::fromLatin1(estero.Telefono);
        } else {
            const TKRVComune &comune = casuale.Scelta(comuni);
            c.Citta = comune.Nome;
            c.Cap = comune.Cap;
            c.Provincia = comune.Provincia;
            c.Nazione = QStringLiteral("Italia");
            prefisso = comune.Prefisso;
            if (persona) {
                const QDate nascita(casuale.Intero(1950, 2000), casuale.Intero(1, 12), casuale.Intero(1, 28));
                c.CodiceFiscale = KRVDati::CodiceFiscalePersona(cognome, nome, nascita, femmina,
                                                                KRVDati::CodiceComuneNascita(casuale));
            } else {
                c.PartitaIva = KRVDati::PartitaIVA(casuale.Intero(1000000, 9999999), casuale.Intero(1, 100));
                c.CodiceFiscale = c.PartitaIva;
            }
            if (ente)
                c.RagioneSociale = QStringLiteral("Comune di ") + c.Citta;
        }
        Recapito(casuale, c, slug);
        // Private customers pay cash; firms mostly by bank transfer or bank receipt.
        c.IdTipoPagamento = persona ? m_pagamenti.constFirst().Id : casuale.Scelta(m_pagamenti).Id;
        const bool banca = !c.Estero && !persona && casuale.Vero(0.45);
        const KRVDati::TKRVCoordinate coordinate =
            banca ? KRVDati::Coordinate(casuale, c.Citta) : KRVDati::TKRVCoordinate();
        const auto opzionale = [](bool present, const QString &text) { return present ? Txt(text) : Nullo(); };
        const QString telefono = prefisso + QLatin1Char(' ') + QString::number(casuale.Intero(200000, 9999999));
        const QString cellulare =
            QStringLiteral("3%1 %2").arg(casuale.Intero(20, 93)).arg(casuale.Intero(1000000, 9999999));
        const QString dominio = slug.left(24) + (c.Estero ? QStringLiteral(".eu") : QStringLiteral(".it"));
        Scrivi(insert, {Num(0),
                        Txt(c.Codice),
                        Txt(c.RagioneSociale),
                        Txt(c.Indirizzo),
                        Txt(c.Citta),
                        Txt(c.Cap),
                        Txt(c.Provincia),
                        Txt(c.Nazione),
                        opzionale(!c.CodiceFiscale.isEmpty(), c.CodiceFiscale),
                        opzionale(!c.PartitaIva.isEmpty(), c.PartitaIva),
                        Num(c.IdTipoPagamento),
                        Txt(telefono),
                        opzionale(casuale.Vero(0.5), cellulare),
                        opzionale(casuale.Vero(0.1), telefono),
                        opzionale(!persona && casuale.Vero(0.3),
                                  prefisso + QStringLiteral(" ") + QString::number(casuale.Intero(200000, 9999999))),
                        Txt((persona ? slug : QStringLiteral("info")) + QLatin1Char('@')
                            + (persona ? QStringLiteral("gmail.com") : dominio)),
                        opzionale(!persona, QStringLiteral("www.") + dominio),
                        opzionale(casuale.Vero(0.08), casuale.Scelta(KRVDati::NoteClienti())),
                        opzionale(banca, coordinate.Paese),
                        opzionale(banca, coordinate.CinEur),
                        opzionale(banca, coordinate.Cin),
                        opzionale(banca, coordinate.Abi),
                        opzionale(banca, coordinate.Cab),
                        opzionale(banca, coordinate.Conto),
                        opzionale(banca, coordinate.Swift),
                        opzionale(banca, coordinate.Banca),
                        opzionale(banca, coordinate.Agenzia),
                        Txt(c.TipoSoggetto),
                        Txt(persona ? nome : QString()),
                        Txt(persona ? cognome : QString()),
                        Txt(c.CodiceDestinatario),
                        Txt(c.Pec)});
        m_clienti.append(c);
    }
    m_riepilogo.Clienti = m_clienti.size();
}

TRiga TGeneratore::RigaProdotto(TKRVCasuale &casuale, const char *tipo, const TProdotto &prodotto, bool conSconto)
{
    static const QList<int> sconti = {500, 1000, 1250, 1500, 2000, 2500, 3000};
    TRiga r;
    r.Tipo = QString::fromLatin1(tipo);
    r.Prodotto = &prodotto;
    r.Descrizione = prodotto.Descrizione;
    r.Costo = prodotto.Costo;
    for (;;) {
        if (prodotto.Um == QLatin1String("ORE"))
            r.Quantita = qint64(casuale.Intero(1, 32)) * 50;
        else if (prodotto.Um == QLatin1String("PEZZI") || prodotto.Um == QLatin1String("CF"))
            r.Quantita = qint64(casuale.Intero(1, 24)) * 100;
        else
            r.Quantita = qint64(casuale.Intero(5, 2000)) * 10;
        r.Prezzo = casuale.Vero(0.9) ? prodotto.Prezzo : prodotto.Prezzo * casuale.Intero(90, 110) / 100;
        r.Sconto = conSconto && casuale.Vero(0.25) ? casuale.Scelta(sconti) : 0;
        const double q = double(r.Quantita) / 100.0;
        const double p = double(r.Prezzo) / 100.0;
        const double s = double(r.Sconto) / 100.0;
        if (!A_Meta_Centesimo(q * (p - s * p / 100)))
            return r;
    }
}

QList<TRiga> TGeneratore::RigheFattura(TKRVCasuale &casuale, const QDate &date, bool ciclica)
{
    QList<TRiga> righe;
    if (ciclica) {
        // A service contract: one to three services every period.
        const int count = casuale.Intero(1, 3);
        for (int i = 0; i < count; ++i)
            righe << RigaProdotto(casuale, RigaServizio, m_servizi.at(casuale.Preferito(int(m_servizi.size()))), false);
        return righe;
    }
    const int count = casuale.Vero(0.06) ? casuale.Intero(20, 40) : 1 + casuale.Intero(0, 8) + casuale.Intero(0, 8);
    const QString data = date.addDays(-casuale.Intero(1, 20)).toString(QStringLiteral("dd/MM/yyyy"));
    for (int i = 0; i < count; ++i) {
        const double kind = casuale.Reale();
        if ((i == 0 && casuale.Vero(0.3)) || (i > 0 && kind >= 0.85 && kind < 0.93)) {
            TRiga r;
            r.Tipo = QString::fromLatin1(RigaTesto);
            // Not every text names a number and a date.
            r.Descrizione = QString(casuale.Scelta(KRVDati::RigheTesto()))
                                .replace(QLatin1String("%1"), QString::number(casuale.Intero(1, 999)))
                                .replace(QLatin1String("%2"), data);
            righe << r;
        } else if (kind < 0.70) {
            righe << RigaProdotto(casuale, RigaArticolo, m_articoli.at(casuale.Preferito(int(m_articoli.size()))),
                                  true);
        } else if (kind < 0.85) {
            righe << RigaProdotto(casuale, RigaServizio, m_servizi.at(casuale.Preferito(int(m_servizi.size()))), true);
        } else {
            TRiga r;
            r.Tipo = QString::fromLatin1(RigaNonImponibile);
            r.Descrizione = casuale.Scelta(KRVDati::RigheNonImponibili());
            r.Prezzo = r.Descrizione.startsWith(QLatin1String("Imposta di bollo")) ? 200 : casuale.Intero(500, 8000);
            r.Quantita = 100;
            righe << r;
        }
    }
    return righe;
}

// The editors' arithmetic, done by the module's own line model: every line's
// amount recomputed into its cell (and taken from there into the line) and the
// document's sums, the tax at the rates of the generated VAT table.
TKRVTotaliDocumento TGeneratore::Conti(QList<TRiga> &righe, const TKRVLayoutRighe &layout, bool esente) const
{
    TKRVRigheDocumento modello(layout);
    for (const TRiga &r : std::as_const(righe)) {
        const int riga = modello.AggiungiRiga();
        modello.SetCella(riga, layout.Tipo, r.Tipo);
        if (r.Tipo == QLatin1String(RigaTesto))
            continue;
        modello.SetNumero(riga, layout.Prezzo, double(r.Prezzo) / 100.0);
        modello.SetNumero(riga, layout.Quantita, double(r.Quantita) / 100.0);
        if (layout.Sconto >= 0)
            modello.SetNumero(riga, layout.Sconto, double(r.Sconto) / 100.0);
        if (r.Prodotto)
            modello.SetIntero(riga, layout.IdIva, m_aliquote.at(r.Prodotto->Aliquota).Id);
    }
    const TKRVCercaAliquota aliquota = [this](int id) -> std::optional<double> {
        for (const TAliquota &a : m_aliquote) {
            if (a.Id == id)
                return double(a.Percentuale) / 100.0;
        }
        return std::nullopt;
    };
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(modello, esente, aliquota);
    for (int riga = 0; riga < righe.size(); ++riga) {
        if (righe.at(riga).Tipo != QLatin1String(RigaTesto))
            righe[riga].Importo = std::llround(modello.Numero(riga, layout.Importo) * 100.0);
    }
    return totali;
}

QList<TValore> TGeneratore::Intestazione(int key, int numero, const QDate &date, const TCliente &cliente,
                                         qint64 imponibile, qint64 imposta, qint64 totale, bool pagato)
{
    const TTipoPagamento *pagamento = &m_pagamenti.constFirst();
    for (const TTipoPagamento &p : std::as_const(m_pagamenti)) {
        if (p.Id == cliente.IdTipoPagamento)
            pagamento = &p;
    }
    QDate scadenza = date.addDays(pagamento->Giorni);
    if (pagamento->FineMese)
        scadenza = QDate(scadenza.year(), scadenza.month(), scadenza.daysInMonth());
    const auto opzionale = [](const QString &text) { return text.isEmpty() ? Nullo() : Txt(text); };
    return {Num(key),
            Num(numero),
            Data(date),
            Num(date.year()),
            Txt(cliente.Codice),
            Txt(cliente.RagioneSociale),
            Txt(cliente.Indirizzo),
            Txt(cliente.Citta),
            Txt(cliente.Cap),
            Txt(cliente.Provincia),
            Txt(cliente.Nazione),
            opzionale(cliente.CodiceFiscale),
            opzionale(cliente.PartitaIva),
            Num(pagamento->Id),
            Txt(pagamento->Testo),
            Flag(pagato),
            Data(scadenza),
            Cent(imponibile),
            Cent(imposta),
            Cent(totale)};
}

const QStringList &ColonneIntestazione()
{
    static const QStringList columns = Colonne("NUMERO DATA ANNO CLI_CODICE CLI_RAGIONESOCIALE CLI_INDIRIZZO "
                                               "CLI_CITTA CLI_CAP CLI_PROVINCIA CLI_NAZIONE CLI_CODICEFISCALE "
                                               "CLI_PARTITAIVA IDTIPO_PAGAMENTO TIPO_PAGAMENTO PAGATO "
                                               "SCADENZA_PAGAMENTO TOTALE_IMPONIBILE TOTALE_IMPOSTA TOTALE_DOCUMENTO");
    return columns;
}

const QStringList &ColonneRiga()
{
    static const QStringList columns = Colonne("DESCRIZIONE TIPO_RIGA CODICE IDCATEGORIA CATEGORIA IVA_IDALIQUOTA_IVA "
                                               "IVA_CODICE IVA_DESCRIZIONE IVA_ALIQUOTA IDUM UM PREZZO QUANTITA "
                                               "IMPORTO");
    return columns;
}

// The line columns both documents share, as the editors write them for each kind.
QList<TValore> ValoriRiga(const TRiga &r, const QList<TAliquota> &aliquote)
{
    QList<TValore> values(ColonneRiga().size(), Nullo());
    values[0] = Txt(r.Descrizione);
    values[1] = Txt(r.Tipo);
    if (r.Tipo == QLatin1String(RigaTesto))
        return values;
    values[11] = Cent(r.Prezzo);
    values[12] = Cent(r.Quantita);
    values[13] = Cent(r.Importo);
    if (!r.Prodotto)
        return values;
    const TProdotto &p = *r.Prodotto;
    const TAliquota &a = aliquote.at(p.Aliquota);
    values[2] = Txt(p.Codice);
    values[3] = Num(p.IdCategoria);
    values[4] = Txt(p.Categoria);
    values[5] = Num(a.Id);
    values[6] = Txt(a.Codice);
    values[7] = Txt(a.Descrizione);
    values[8] = Cent(a.Percentuale);
    values[9] = Num(p.IdUm);
    values[10] = Txt(p.Um);
    return values;
}

// Working days of the year up to the last day, in order (several on one day
// when needed): the year's number of invoices, in proportion to the working
// days kept.
QList<QDate> Date(TKRVCasuale &casuale, int year, int perYear, const QDate &last)
{
    QList<QDate> working;
    qint64 all = 0;
    for (QDate d(year, 1, 2); d.year() == year; d = d.addDays(1)) {
        if (d.dayOfWeek() <= 5 && !(d.month() == 8 && d.day() >= 8 && d.day() <= 22)
            && !(d.month() == 12 && d.day() >= 24)) {
            ++all;
            if (d <= last)
                working << d;
        }
    }
    const qint64 count = perYear * qint64(working.size()) / qMax<qint64>(1, all);
    QList<QDate> dates;
    for (qint64 i = 0; i < count; ++i)
        dates << casuale.Scelta(working);
    std::sort(dates.begin(), dates.end());
    return dates;
}

void TGeneratore::Anno(int year)
{
    TKRVCasuale casuale(m_opzioni.Seme, 100 + std::uint64_t(year));
    QStringList header = {QStringLiteral("IDFATT_VEND")};
    header << ColonneIntestazione()
           << Colonne("FC_ABILITATO FC_GENERA_OGNI FC_GENERA_OGNI_UM FC_DATA_INIZIO "
                      "FC_DATA_FINE FC_DATA_NUOVA_FATTURA NOTE NOTIFICATO IVA_ESENTE");
    TQ3FbStatement insertHeader(m_client, Insert("FATT_VEND", header, {QStringLiteral("NOTE")}));
    QStringList lineColumns = Colonne("IDFATT_VEND_DETT IDFATT_VEND");
    lineColumns << ColonneRiga() << Colonne("SCONTO COSTO");
    TQ3FbStatement insertLine(m_client, Insert("FATT_VEND_DETT", lineColumns, {QStringLiteral("DESCRIZIONE")}));

    static const QStringList unitaCicliche = {QStringLiteral("Mese"), QStringLiteral("Mese"), QStringLiteral("Anno"),
                                              QStringLiteral("Settimana"), QStringLiteral("Giorno")};
    static const QStringList dataNuova = {QStringLiteral("Primo giorno del mese"),
                                          QStringLiteral("Il giorno 15 del mese"), QStringLiteral("Il giorno esatto"),
                                          QStringLiteral("Ultimo giorno del mese")};
    const QList<QDate> dates = Date(casuale, year, m_opzioni.Dimensione.FattureAnno, m_fine);
    QList<TRiferimento> riferimenti;
    int key = ChiaveSuccessiva("GN_IDFATT_VEND");
    for (int n = 1; n <= int(dates.size()); ++n) {
        const QDate date = dates.at(n - 1);
        const int indice = casuale.Preferito(int(m_clienti.size()));
        const TCliente &cliente = m_clienti.at(indice);
        // Every year has at least one exempt and one recurring invoice.
        const bool esente = cliente.Estero || n == 3 || casuale.Vero(0.01);
        const bool ciclica = !esente && (n == 5 || casuale.Vero(0.02));
        QList<TRiga> righe = RigheFattura(casuale, date, ciclica);
        const TKRVTotaliDocumento t = Conti(righe, KRVLayoutFattura(), esente);
        const qint64 imponibile = CentesimiSalvati(t.Imponibile);
        const qint64 imposta = CentesimiSalvati(t.Imposta);
        const qint64 totale = CentesimiSalvati(t.Totale());
        const bool pagato = date.addDays(90) < m_fine ? casuale.Vero(0.97) : casuale.Vero(0.3);

        QList<TValore> values = Intestazione(key, n, date, cliente, imponibile, imposta, totale, pagato);
        if (ciclica) {
            values << Flag(true) << Num(casuale.Scelta(QList<int>{1, 1, 1, 3, 6})) << Txt(casuale.Scelta(unitaCicliche))
                   << Data(date) << Data(date.addYears(casuale.Intero(1, 3))) << Txt(casuale.Scelta(dataNuova));
        } else {
            values << Flag(false) << Nullo() << Nullo() << Nullo() << Nullo() << Nullo();
        }
        QString note;
        if (esente)
            note = m_notaEsenzione;
        else if (casuale.Vero(0.15))
            note = casuale.Scelta(m_noteFattura);
        values << (note.isEmpty() ? Nullo() : Txt(note)) << Flag(casuale.Vero(0.1)) << Flag(esente);
        Scrivi(insertHeader, values);

        for (const TRiga &r : std::as_const(righe)) {
            QList<TValore> line = {Num(0), Num(key)};
            line << ValoriRiga(r, m_aliquote);
            if (r.Tipo == QLatin1String(RigaTesto))
                line << Nullo() << Nullo();
            else
                line << Cent(r.Sconto) << Cent(r.Costo);
            Scrivi(insertLine, line);
        }
        m_riepilogo.RigheFatture += righe.size();
        ++m_riepilogo.Fatture;

        // Now and then goods come back or a price is corrected: a credit note follows.
        if (!esente && (n == 7 || casuale.Vero(0.02))) {
            QList<TRiga> prodotti;
            for (const TRiga &r : std::as_const(righe)) {
                if (r.Prodotto)
                    prodotti << r;
            }
            if (!prodotti.isEmpty())
                riferimenti.append({date, n, indice, prodotti, key});
        }
        ++key;
    }
    VerificaGeneratore("GN_IDFATT_VEND", key - 1);
    NoteAccredito(year, riferimenti);
}

void TGeneratore::NoteAccredito(int year, QList<TRiferimento> riferimenti)
{
    TKRVCasuale casuale(m_opzioni.Seme, 10000 + std::uint64_t(year));
    QStringList header = {QStringLiteral("IDNOTA_ACCREDITO")};
    // Each credit note names the invoice it corrects, as its electronic invoice must.
    header << ColonneIntestazione() << Colonne("NOTE NOTIFICATO FATT_IDFATT_VEND FATT_NUMERO FATT_DATA");
    TQ3FbStatement insertHeader(m_client, Insert("NOTE_ACCREDITO", header, {QStringLiteral("NOTE")}));
    QStringList lineColumns = Colonne("IDNOTA_ACCREDITO_DETT IDNOTA_ACCREDITO");
    lineColumns << ColonneRiga();
    TQ3FbStatement insertLine(m_client, Insert("NOTE_ACCREDITO_DETT", lineColumns, {QStringLiteral("DESCRIZIONE")}));

    const QDate end = qMin(QDate(year, 12, 31), m_fine);
    QList<QDate> dates;
    for (const TRiferimento &r : std::as_const(riferimenti))
        dates << qMin(end, r.Data.addDays(casuale.Intero(3, 45)));
    QList<int> order(riferimenti.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&dates](int a, int b) { return dates.at(a) < dates.at(b); });

    static const QStringList causali = {QStringLiteral("Storno parziale fattura n. %1 del %2"),
                                        QStringLiteral("Reso merce - Rif. fattura n. %1 del %2"),
                                        QStringLiteral("Abbuono concordato su fattura n. %1 del %2")};
    int key = ChiaveSuccessiva("GN_IDNOTA_ACCREDITO");
    int numero = 0;
    for (const int i : std::as_const(order)) {
        const TRiferimento &rif = riferimenti.at(i);
        QList<TRiga> righe;
        TRiga testo;
        testo.Tipo = QString::fromLatin1(RigaTesto);
        testo.Descrizione =
            casuale.Scelta(causali).arg(rif.Numero).arg(rif.Data.toString(QStringLiteral("dd/MM/yyyy")));
        righe << testo;
        const int count = qMin(int(rif.Righe.size()), casuale.Intero(1, 2));
        for (int k = 0; k < count; ++k) {
            TRiga r = rif.Righe.at(casuale.Intero(0, int(rif.Righe.size()) - 1));
            // No discount on a credit note: the net unit price of the invoice, for part of the quantity.
            const double p = double(r.Prezzo) / 100.0;
            r.Prezzo = CentesimiDigitati(p - double(r.Sconto) / 100.0 * p / 100);
            r.Quantita = r.Quantita > 100 ? qint64(100) * casuale.Intero(1, int(r.Quantita / 100)) : r.Quantita;
            if (A_Meta_Centesimo(double(r.Quantita) / 100.0 * (double(r.Prezzo) / 100.0)))
                continue;
            righe << r;
        }
        const TKRVTotaliDocumento t = Conti(righe, KRVLayoutNotaAccredito(), false);
        const TCliente &cliente = m_clienti.at(rif.Cliente);
        QList<TValore> values =
            Intestazione(key, ++numero, dates.at(i), cliente, CentesimiSalvati(t.Imponibile),
                         CentesimiSalvati(t.Imposta), CentesimiSalvati(t.Totale()), casuale.Vero(0.8));
        values << Nullo() << Flag(false) << Num(rif.Chiave) << Num(rif.Numero) << Data(rif.Data);
        Scrivi(insertHeader, values);
        for (const TRiga &r : std::as_const(righe)) {
            QList<TValore> line = {Num(0), Num(key)};
            line << ValoriRiga(r, m_aliquote);
            Scrivi(insertLine, line);
        }
        m_riepilogo.RigheNoteAccredito += righe.size();
        ++m_riepilogo.NoteAccredito;
        ++key;
    }
    VerificaGeneratore("GN_IDNOTA_ACCREDITO", key - 1);
}

} // namespace

const QList<TKRVDimensioneAzienda> &KRVDimensioniAzienda()
{
    static const QList<TKRVDimensioneAzienda> sizes = {
        {QStringLiteral("prova"), 2, 25, 60, 12, 40, false},
        {QStringLiteral("demo"), 1, 120, 600, 36, 300, false},
        {QStringLiteral("medio"), 3, 5000, 10000, 200, 10000, true},
        {QStringLiteral("stress"), 10, 20000, 50000, 500, 20000, true},
    };
    return sizes;
}

TKRVDimensioneAzienda KRVDimensioneAzienda(const QString &nome)
{
    for (const TKRVDimensioneAzienda &size : KRVDimensioniAzienda()) {
        if (size.Nome == nome)
            return size;
    }
    throw EQ3Exception(QStringLiteral("Dimensione sconosciuta: \"%1\".").arg(nome));
}

void KRVPreparaDatabase(const TQ3DatabaseTarget &target)
{
    if (Q3DatabaseFileMissing(target)) {
        QDir().mkpath(QFileInfo(target.Database).absolutePath());
        CreateQ3Database(target);
    }
    TQ3Connection connection;
    connection.SetConnectionString(target.ConnectionString());
    connection.Open();
    UpgradeQ3HostSchema(connection.Database());
    AggiornaDatabase(connection.Database());
    KATAggiornaDatabase(connection.Database());
}

TKRVRiepilogoGenerazione KRVGeneraAzienda(const TQ3DatabaseTarget &target, const TKRVOpzioniGenerazione &opzioni)
{
    TGeneratore generatore(target, opzioni);
    return generatore.Esegui();
}
