#include "KRVDocumentoVendita.h"

#include "KRVArchivioRecord.h"
#include "KRVLookups.h"
#include "KRVOptions.h"
#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

namespace {

QString Testo(const TQ3Dataset &dataset, const char *campo)
{
    return dataset.FieldValue(QLatin1String(campo)).toString();
}

QVariant Null(QMetaType::Type tipo)
{
    return QVariant(QMetaType(tipo));
}

// The customer's nine columns, as the header copies them.
struct TKRVColonnaCliente
{
    const char *Colonna;
    QString TCliente::*Campo;
};

const TKRVColonnaCliente ColonneCliente[] = {
    {"CLI_CODICE", &TCliente::CODICE},
    {"CLI_RAGIONESOCIALE", &TCliente::RAGIONESOCIALE},
    {"CLI_INDIRIZZO", &TCliente::INDIRIZZO},
    {"CLI_CITTA", &TCliente::CITTA},
    {"CLI_CAP", &TCliente::CAP},
    {"CLI_PROVINCIA", &TCliente::PROVINCIA},
    {"CLI_NAZIONE", &TCliente::NAZIONE},
    {"CLI_CODICEFISCALE", &TCliente::CODICEFISCALE},
    {"CLI_PARTITAIVA", &TCliente::PARTITAIVA},
};

void LeggiTestata(const TQ3Dataset &dataset, TKRVTestataDocumento &testata)
{
    testata.Numero = dataset.FieldValue(QStringLiteral("NUMERO")).toInt();
    testata.Data = dataset.FieldValue(QStringLiteral("DATA")).toDate();
    for (const TKRVColonnaCliente &colonna : ColonneCliente)
        testata.Cliente.*colonna.Campo = Testo(dataset, colonna.Colonna);
    testata.IdTipoPagamento = dataset.FieldValue(QStringLiteral("IDTIPO_PAGAMENTO")).toInt();
    testata.TipoPagamento = Testo(dataset, "TIPO_PAGAMENTO");
    testata.Pagato = KRVStrToBool(Testo(dataset, "PAGATO"));
    testata.Notificato = KRVStrToBool(Testo(dataset, "NOTIFICATO"));
    if (!dataset.FieldIsNull(QStringLiteral("SCADENZA_PAGAMENTO")))
        testata.Scadenza = dataset.FieldValue(QStringLiteral("SCADENZA_PAGAMENTO")).toDate();
    testata.Note = Testo(dataset, "NOTE");
}

// The numeric columns of a line the document's model has, in the order they
// are written.
struct TKRVColonnaNumero
{
    QString Colonna;
    int Cella;
};

QList<TKRVColonnaNumero> ColonneNumeri(const TKRVLayoutRighe &l)
{
    QList<TKRVColonnaNumero> colonne;
    if (l.Costo >= 0)
        colonne.append({QStringLiteral("COSTO"), l.Costo});
    colonne.append({QStringLiteral("PREZZO"), l.Prezzo});
    if (l.Sconto >= 0)
        colonne.append({QStringLiteral("SCONTO"), l.Sconto});
    colonne.append({QStringLiteral("QUANTITA"), l.Quantita});
    colonne.append({QStringLiteral("IMPORTO"), l.Importo});
    return colonne;
}

// A master name by key, each key read once within one save.
class TKRVNomiLetti
{
public:
    TKRVNomiLetti(const QSqlDatabase &db, QString (*leggi)(const QSqlDatabase &, int)) : m_db(db), m_leggi(leggi) {}
    QString Nome(int id)
    {
        auto letto = m_nomi.constFind(id);
        if (letto == m_nomi.constEnd())
            letto = m_nomi.insert(id, m_leggi(m_db, id));
        return *letto;
    }

private:
    QSqlDatabase m_db;
    QString (*m_leggi)(const QSqlDatabase &, int);
    QHash<int, QString> m_nomi;
};

} // namespace

QString KRVColonnaCliente(QString TCliente::*campo)
{
    for (const TKRVColonnaCliente &colonna : ColonneCliente) {
        if (colonna.Campo == campo)
            return QLatin1String(colonna.Colonna);
    }
    return {};
}

QString KRVTestoFlag(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QVariant KRVDataOppureNull(const QDate &data)
{
    return data.isValid() ? QVariant(data) : Null(QMetaType::QDate);
}

TKRVArchivioDocumentoVendita::TKRVArchivioDocumentoVendita(TQ3Dataset &testata, TKRVTabelleDocumento tabelle)
    : m_testata(testata), m_tabelle(std::move(tabelle))
{}

TKRVArchivioDocumentoVendita::~TKRVArchivioDocumentoVendita() = default;

bool TKRVArchivioDocumentoVendita::LeggiDocumento(int id, TKRVTestataDocumento &testata, TKRVRigheDocumento &righe)
{
    // Header, lines and linked notes as one save left them.
    const TQ3LetturaCoerente lettura(m_testata.Connection()->Database());
    TQ3Dataset letta;
    letta.SetConnection(m_testata.Connection());
    letta.SetSQL(m_testata.SQL());
    letta.SetUpdateTable(m_testata.UpdateTable(), m_testata.KeyField());
    letta.SetParamValue(m_tabelle.Parametro, id);
    letta.Open();
    // A document that is gone leaves the editor, and the header's dataset,
    // on the document it shows.
    if (letta.IsEmpty())
        return false;
    LeggiTestata(letta, testata);
    LeggiColonneProprie(letta, testata);
    m_testata.Close();
    m_testata.SetParamValue(m_tabelle.Parametro, id);
    m_testata.Open();
    righe.Svuota();
    LeggiRighe(id, righe);
    LeggiCollegati(m_testata.Connection()->Database(), id, testata);
    return true;
}

// The lines in the order the database returns them, each as the grid's cells.
void TKRVArchivioDocumentoVendita::LeggiRighe(int id, TKRVRigheDocumento &righe) const
{
    const TKRVLayoutRighe &l = righe.Layout();
    QSqlQuery query(m_testata.Connection()->Database());
    query.setForwardOnly(true);
    const QString parametro = QLatin1Char(':') + m_tabelle.Chiave;
    if (!query.prepare(QStringLiteral("SELECT\r\n*\r\nFROM ") + m_tabelle.Righe + QStringLiteral("\r\nWHERE ")
                       + m_tabelle.Chiave + QLatin1Char('=') + parametro))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    query.bindValue(parametro, id);
    if (!query.exec())
        throw EQ3Exception(SqlErrorText(query.lastError()));
    const QSqlRecord layout = query.record();
    const auto at = [&](const QString &campo) { return FieldIndex(layout, campo); };
    const int idRiga = at(m_tabelle.ChiaveRiga), tipo = at(QStringLiteral("TIPO_RIGA")),
              descrizione = at(QStringLiteral("DESCRIZIONE")), codice = at(QStringLiteral("CODICE")),
              categoria = at(QStringLiteral("IDCATEGORIA")), idIva = at(QStringLiteral("IVA_IDALIQUOTA_IVA")),
              iva = at(QStringLiteral("IVA_CODICE")), idUM = at(QStringLiteral("IDUM")), um = at(QStringLiteral("UM"));
    QList<QPair<int, int>> numeri; // column of the row, cell of the line
    for (const TKRVColonnaNumero &numero : ColonneNumeri(l))
        numeri.append({at(numero.Colonna), numero.Cella});
    QList<QStringList> lette;
    while (query.next()) {
        QStringList celle(l.Colonne);
        celle[l.Id] = query.value(idRiga).toString();
        celle[l.Tipo] = query.value(tipo).toString();
        celle[l.Descrizione] = query.value(descrizione).toString();
        if (celle[l.Tipo] != KRVRigaTesto) {
            for (const auto &[colonna, cella] : std::as_const(numeri))
                celle[cella] =
                    TKRVRigheDocumento::TestoNumero(query.value(colonna).toDouble(), righe.DecimaliMassimi(cella));
            if (celle[l.Tipo] != KRVRigaNonImponibile) {
                celle[l.Codice] = query.value(codice).toString();
                celle[l.IdCategoria] = query.value(categoria).toString();
                celle[l.IdIva] = query.value(idIva).toString();
                celle[l.Iva] = query.value(iva).toString();
                celle[l.IdUM] = query.value(idUM).toString();
                celle[l.UM] = query.value(um).toString();
            }
        }
        lette.append(celle);
    }
    // The database hands rows back in the order they are stored, which re-saving
    // reshuffles; the keys follow the grid order of the last save.
    std::stable_sort(lette.begin(), lette.end(), [&l](const QStringList &a, const QStringList &b) {
        return a.at(l.Id).toInt() < b.at(l.Id).toInt();
    });
    for (const QStringList &celle : std::as_const(lette))
        righe.AccodaRiga(celle);
}

void TKRVArchivioDocumentoVendita::ScriviDocumento(const TKRVTestataDocumento &testata, TKRVRigheDocumento &righe,
                                                   const TKRVTotaliDocumento &totali, bool nuovo, int &id)
{
    const QSqlDatabase db = m_testata.Connection()->Database();
    TQ3Transaction transazione(db);
    try {
        // A document whose first save failed has no header row yet: it is
        // stored whole, header and lines, as a new one.
        if (nuovo || !KRVRigaMemorizzata(m_testata)) {
            // The document goes by the key it expects until the header has its own.
            id = GetLastGeneratorValue(QStringLiteral("GN_") + m_tabelle.Chiave, db) + 1;
            m_testata.AppendNew(m_tabelle.Parametro);
        } else {
            m_testata.Edit();
        }
        ScriviTestata(testata, totali);
        m_testata.Post();
        // The key the database gave the header: the lines hang from it.
        id = m_testata.FieldValue(m_tabelle.Chiave).toInt();
        ExecSQL(db, QStringLiteral("DELETE FROM ") + m_tabelle.Righe + QStringLiteral(" WHERE ") + m_tabelle.Chiave
                        + QLatin1Char('=') + QString::number(id));
        ScriviRighe(righe, id);
        ScriviCollegati(db, id, testata);
        transazione.Commit();
    } catch (...) {
        m_testata.Cancel();
        throw;
    }
}

void TKRVArchivioDocumentoVendita::ScriviTestata(const TKRVTestataDocumento &testata, const TKRVTotaliDocumento &totali)
{
    TQ3Dataset &d = m_testata;
    const auto scrivi = [&d](const char *campo, const QVariant &valore) {
        d.SetFieldValue(QLatin1String(campo), valore);
    };
    scrivi("NUMERO", testata.Numero);
    scrivi("DATA", testata.Data);
    scrivi("ANNO", testata.Data.year());
    for (const TKRVColonnaCliente &colonna : ColonneCliente)
        scrivi(colonna.Colonna, testata.Cliente.*colonna.Campo);
    scrivi("IDTIPO_PAGAMENTO", testata.IdTipoPagamento);
    scrivi("TIPO_PAGAMENTO", testata.TipoPagamento);
    scrivi("PAGATO", KRVTestoFlag(testata.Pagato));
    scrivi("NOTIFICATO", KRVTestoFlag(testata.Notificato));
    scrivi("SCADENZA_PAGAMENTO", KRVDataOppureNull(testata.Scadenza.value_or(QDate())));
    scrivi("TOTALE_IMPONIBILE", totali.Imponibile);
    scrivi("TOTALE_IMPOSTA", totali.Imposta);
    scrivi("TOTALE_DOCUMENTO", totali.Totale());
    ScriviColonneProprie(d, testata);
    scrivi("NOTE", testata.Note);
}

void TKRVArchivioDocumentoVendita::ScriviRighe(TKRVRigheDocumento &righe, int id) const
{
    if (righe.Righe() == 0)
        return;
    const QSqlDatabase db = m_testata.Connection()->Database();
    const TKRVLayoutRighe &l = righe.Layout();
    const QList<TKRVColonnaNumero> numeri = ColonneNumeri(l);
    // Each line takes its key from the table's trigger.
    QStringList colonne{m_tabelle.Chiave,
                        QStringLiteral("DESCRIZIONE"),
                        QStringLiteral("TIPO_RIGA"),
                        QStringLiteral("CODICE"),
                        QStringLiteral("IDCATEGORIA"),
                        QStringLiteral("CATEGORIA"),
                        QStringLiteral("IVA_IDALIQUOTA_IVA"),
                        QStringLiteral("IVA_CODICE"),
                        QStringLiteral("IVA_DESCRIZIONE"),
                        QStringLiteral("IVA_ALIQUOTA"),
                        QStringLiteral("IDUM"),
                        QStringLiteral("UM")};
    for (const TKRVColonnaNumero &numero : numeri)
        colonne << numero.Colonna;
    QStringList segnaposti;
    for (int i = 0; i < colonne.size(); ++i)
        segnaposti << QStringLiteral("?");
    QSqlQuery insert(db);
    if (!insert.prepare(QStringLiteral("INSERT INTO ") + m_tabelle.Righe + QStringLiteral(" (")
                        + colonne.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (")
                        + segnaposti.join(QStringLiteral(", ")) + QLatin1Char(')')))
        throw EQ3Exception(SqlErrorText(insert.lastError()));
    TKRVNomiLetti categorieArticoli(db, &GetCategoriaAnaMaga);
    TKRVNomiLetti categorieServizi(db, &GetCategoriaServizio);
    QHash<int, TAliquotaIVA> aliquote;
    const QVariant testoNullo = Null(QMetaType::QString), interoNullo = Null(QMetaType::Int),
                   numeroNullo = Null(QMetaType::Double);
    for (int r = 0; r < righe.Righe(); ++r) {
        const QString tipo = righe.Tipo(r);
        QVariantList valori{id, righe.Cella(r, l.Descrizione), tipo};
        if (tipo == KRVRigaTesto || tipo == KRVRigaNonImponibile) {
            valori << testoNullo << interoNullo << testoNullo << interoNullo << testoNullo << testoNullo << numeroNullo
                   << interoNullo << testoNullo;
        } else {
            valori << righe.Cella(r, l.Codice);
            const int idCategoria = righe.Intero(r, l.IdCategoria);
            const QString categoria =
                tipo == KRVRigaArticolo ? categorieArticoli.Nome(idCategoria) : categorieServizi.Nome(idCategoria);
            if (categoria.isEmpty())
                valori << interoNullo << testoNullo;
            else
                valori << idCategoria << categoria;
            const int idIva = righe.Intero(r, l.IdIva);
            if (!aliquote.contains(idIva))
                aliquote.insert(idIva, GetAliquotaIVA(db, idIva));
            const TAliquotaIVA &aliquota = aliquote[idIva];
            if (aliquota.IDALIQUOTA_IVA > 0)
                valori << aliquota.IDALIQUOTA_IVA << aliquota.CODICE << aliquota.DESCRIZIONE << aliquota.ALIQUOTA;
            else
                valori << interoNullo << testoNullo << testoNullo << numeroNullo;
            valori << righe.Intero(r, l.IdUM) << righe.Cella(r, l.UM);
        }
        for (const TKRVColonnaNumero &numero : numeri)
            valori << (tipo == KRVRigaTesto ? numeroNullo : QVariant(righe.Numero(r, numero.Cella)));
        for (int i = 0; i < valori.size(); ++i)
            insert.bindValue(i, valori.at(i));
        const TQ3AttesaLimitata attesa(db);
        if (!insert.exec())
            throw EQ3Exception(attesa.TestoErrore(insert.lastError()));
    }
}
