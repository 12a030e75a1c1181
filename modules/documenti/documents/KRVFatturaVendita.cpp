#include "KRVFatturaVendita.h"

#include "KRVLookups.h"
#include "KRVOptions.h"
#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3Utils.h"

#include <QHash>

#include <algorithm>
#include <QSqlError>
#include <QSqlQuery>

namespace {

const QString ChiaveFattura = QStringLiteral("IDFATT_VEND");

QString Testo(const TQ3Dataset &dataset, const char *campo)
{
    return dataset.FieldValue(QLatin1String(campo)).toString();
}

QDate Data(const TQ3Dataset &dataset, const char *campo)
{
    return dataset.FieldValue(QLatin1String(campo)).toDate();
}

QVariant DataOppureNull(const QDate &data)
{
    return data.isValid() ? QVariant(data) : QVariant(QMetaType(QMetaType::QDate));
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

TKRVTestataFattura LeggiTestata(const TQ3Dataset &dataset)
{
    TKRVTestataFattura testata;
    testata.Numero = dataset.FieldValue(QStringLiteral("NUMERO")).toInt();
    testata.Data = Data(dataset, "DATA");
    for (const TKRVColonnaCliente &colonna : ColonneCliente)
        testata.Cliente.*colonna.Campo = Testo(dataset, colonna.Colonna);
    testata.IdTipoPagamento = dataset.FieldValue(QStringLiteral("IDTIPO_PAGAMENTO")).toInt();
    testata.TipoPagamento = Testo(dataset, "TIPO_PAGAMENTO");
    testata.Pagato = KRVStrToBool(Testo(dataset, "PAGATO"));
    testata.Notificato = KRVStrToBool(Testo(dataset, "NOTIFICATO"));
    if (!dataset.FieldIsNull(QStringLiteral("SCADENZA_PAGAMENTO")))
        testata.Scadenza = Data(dataset, "SCADENZA_PAGAMENTO");
    TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    ricorrenza.Abilitato = KRVStrToBool(Testo(dataset, "FC_ABILITATO"));
    if (ricorrenza.Abilitato) {
        ricorrenza.GeneraOgni = dataset.FieldValue(QStringLiteral("FC_GENERA_OGNI")).toInt();
        ricorrenza.GeneraOgniUM = Testo(dataset, "FC_GENERA_OGNI_UM");
        ricorrenza.DataInizio = Data(dataset, "FC_DATA_INIZIO");
        ricorrenza.DataFine = Data(dataset, "FC_DATA_FINE");
        ricorrenza.DataNuovaFattura = Testo(dataset, "FC_DATA_NUOVA_FATTURA");
    }
    testata.IvaEsente = KRVStrToBool(Testo(dataset, "IVA_ESENTE"));
    testata.Note = Testo(dataset, "NOTE");
    return testata;
}

// The lines of the invoice in the order the database returns them, each
// as the grid's cells.
void LeggiRighe(const QSqlDatabase &db, int id, TKRVRigheDocumento &righe)
{
    const TKRVLayoutRighe &l = righe.Layout();
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(QStringLiteral("SELECT\r\n*\r\nFROM FATT_VEND_DETT\r\nWHERE IDFATT_VEND=:IDFATT_VEND")))
        throw EQ3Exception(SqlErrorText(query.lastError()));
    query.bindValue(QStringLiteral(":IDFATT_VEND"), id);
    if (!query.exec())
        throw EQ3Exception(SqlErrorText(query.lastError()));
    const QSqlRecord layout = query.record();
    const auto at = [&](const char *campo) { return FieldIndex(layout, QLatin1String(campo)); };
    const int idRiga = at("IDFATT_VEND_DETT"), tipo = at("TIPO_RIGA"), descrizione = at("DESCRIZIONE"),
              prezzo = at("PREZZO"), sconto = at("SCONTO"), quantita = at("QUANTITA"), importo = at("IMPORTO"),
              costo = at("COSTO"), codice = at("CODICE"), categoria = at("IDCATEGORIA"),
              idIva = at("IVA_IDALIQUOTA_IVA"), iva = at("IVA_CODICE"), idUM = at("IDUM"), um = at("UM");
    const auto numero = [&](int colonna) { return TKRVRigheDocumento::TestoNumero(query.value(colonna).toDouble()); };
    QList<QStringList> lette;
    while (query.next()) {
        QStringList celle(l.Colonne);
        celle[l.Id] = query.value(idRiga).toString();
        celle[l.Tipo] = query.value(tipo).toString();
        celle[l.Descrizione] = query.value(descrizione).toString();
        if (celle[l.Tipo] != KRVRigaTesto) {
            celle[l.Prezzo] = numero(prezzo);
            celle[l.Sconto] = numero(sconto);
            celle[l.Quantita] = numero(quantita);
            celle[l.Importo] = numero(importo);
            celle[l.Costo] = numero(costo);
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

// A master name by key, each key read once within one save.
class TKRVNomiLetti
{
public:
    explicit TKRVNomiLetti(QString (*leggi)(int)) : m_leggi(leggi) {}
    QString Nome(int id)
    {
        auto letto = m_nomi.constFind(id);
        if (letto == m_nomi.constEnd())
            letto = m_nomi.insert(id, m_leggi(id));
        return *letto;
    }

private:
    QString (*m_leggi)(int);
    QHash<int, QString> m_nomi;
};

} // namespace

QString KRVTestoFlag(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

TKRVArchivioFattureVendita::TKRVArchivioFattureVendita(TQ3Dataset &adsFattVend) : m_testata(adsFattVend) {}

bool TKRVArchivioFattureVendita::Leggi(int id, TKRVTestataFattura &testata, TKRVRigheDocumento &righe)
{
    TQ3Dataset letta;
    letta.SetConnection(m_testata.Connection());
    letta.SetSQL(m_testata.SQL());
    letta.SetUpdateTable(m_testata.UpdateTable(), m_testata.KeyField());
    letta.SetParamValue(ChiaveFattura, id);
    letta.Open();
    // An invoice that is gone leaves the editor, and the header's dataset,
    // on the invoice it shows.
    if (letta.IsEmpty())
        return false;
    testata = LeggiTestata(letta);
    m_testata.Close();
    m_testata.SetParamValue(ChiaveFattura, id);
    m_testata.Open();
    righe.Svuota();
    LeggiRighe(m_testata.Connection()->Database(), id, righe);
    return true;
}

void TKRVArchivioFattureVendita::Scrivi(const TKRVTestataFattura &testata, TKRVRigheDocumento &righe,
                                       const TKRVTotaliDocumento &totali, bool nuova, int &id)
{
    const QSqlDatabase db = m_testata.Connection()->Database();
    TQ3Transaction transazione(db);
    try {
        if (nuova) {
            id = GetLastGeneratorValue(QStringLiteral("GN_IDFATT_VEND"), db) + 1;
            m_testata.Close();
            m_testata.SetParamValue(ChiaveFattura, id);
            m_testata.Open();
            m_testata.Append();
        } else {
            m_testata.Edit();
        }
        ScriviTestata(testata, totali, id);
        m_testata.Post();
        ExecSQL(db, QStringLiteral("DELETE FROM FATT_VEND_DETT WHERE IDFATT_VEND=") + QString::number(id));
        ScriviRighe(righe, id);
        transazione.Commit();
    } catch (...) {
        m_testata.Cancel();
        throw;
    }
}

void TKRVArchivioFattureVendita::ScriviTestata(const TKRVTestataFattura &testata, const TKRVTotaliDocumento &totali, int id)
{
    TQ3Dataset &d = m_testata;
    const auto scrivi = [&d](const char *campo, const QVariant &valore) { d.SetFieldValue(QLatin1String(campo), valore); };
    scrivi("IDFATT_VEND", id);
    scrivi("NUMERO", testata.Numero);
    scrivi("DATA", testata.Data);
    scrivi("ANNO", testata.Data.year());
    for (const TKRVColonnaCliente &colonna : ColonneCliente)
        scrivi(colonna.Colonna, testata.Cliente.*colonna.Campo);
    scrivi("IDTIPO_PAGAMENTO", testata.IdTipoPagamento);
    scrivi("TIPO_PAGAMENTO", testata.TipoPagamento);
    scrivi("PAGATO", KRVTestoFlag(testata.Pagato));
    scrivi("NOTIFICATO", KRVTestoFlag(testata.Notificato));
    scrivi("SCADENZA_PAGAMENTO", DataOppureNull(testata.Scadenza.value_or(QDate())));
    scrivi("TOTALE_IMPONIBILE", totali.Imponibile);
    scrivi("TOTALE_IMPOSTA", totali.Imposta);
    scrivi("TOTALE_DOCUMENTO", totali.Totale());
    const TKRVRicorrenza &ricorrenza = testata.Ricorrenza;
    scrivi("FC_ABILITATO", KRVTestoFlag(ricorrenza.Abilitato));
    if (ricorrenza.Abilitato) {
        scrivi("FC_GENERA_OGNI", ricorrenza.GeneraOgni);
        scrivi("FC_GENERA_OGNI_UM", ricorrenza.GeneraOgniUM);
        scrivi("FC_DATA_INIZIO", DataOppureNull(ricorrenza.DataInizio));
        scrivi("FC_DATA_FINE", DataOppureNull(ricorrenza.DataFine));
        scrivi("FC_DATA_NUOVA_FATTURA", ricorrenza.DataNuovaFattura.isEmpty() ? Null(QMetaType::QString)
                                                                              : QVariant(ricorrenza.DataNuovaFattura));
    } else {
        scrivi("FC_GENERA_OGNI", Null(QMetaType::Int));
        scrivi("FC_GENERA_OGNI_UM", Null(QMetaType::QString));
        scrivi("FC_DATA_INIZIO", Null(QMetaType::QDate));
        scrivi("FC_DATA_FINE", Null(QMetaType::QDate));
        scrivi("FC_DATA_NUOVA_FATTURA", Null(QMetaType::QString));
    }
    scrivi("IVA_ESENTE", KRVTestoFlag(testata.IvaEsente));
    scrivi("NOTE", testata.Note);
}

void TKRVArchivioFattureVendita::ScriviRighe(TKRVRigheDocumento &righe, int id)
{
    if (righe.Righe() == 0)
        return;
    const QSqlDatabase db = m_testata.Connection()->Database();
    const TKRVLayoutRighe &l = righe.Layout();
    QSqlQuery insert(db);
    if (!insert.prepare(QStringLiteral(
            "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, DESCRIZIONE, TIPO_RIGA, CODICE, IDCATEGORIA, "
            "CATEGORIA, IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, COSTO, PREZZO, SCONTO, "
            "QUANTITA, IMPORTO) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
        throw EQ3Exception(SqlErrorText(insert.lastError()));
    // Each insert moves the generator on by one, as the table's trigger does.
    const int ultima = GetLastGeneratorValue(QStringLiteral("GN_IDFATT_VEND_DETT"), db);
    TKRVNomiLetti categorieArticoli(&GetCategoriaAnaMaga);
    TKRVNomiLetti categorieServizi(&GetCategoriaServizio);
    QHash<int, TAliquotaIVA> aliquote;
    const QVariant testoNullo = Null(QMetaType::QString), interoNullo = Null(QMetaType::Int),
                   numeroNullo = Null(QMetaType::Double);
    for (int r = 0; r < righe.Righe(); ++r) {
        const QString tipo = righe.Tipo(r);
        QVariantList valori{ultima + r + 1, id, righe.Cella(r, l.Descrizione), tipo};
        if (tipo == KRVRigaTesto) {
            valori << testoNullo << interoNullo << testoNullo << interoNullo << testoNullo << testoNullo << numeroNullo
                   << interoNullo << testoNullo << numeroNullo << numeroNullo << numeroNullo << numeroNullo
                   << numeroNullo;
        } else {
            if (tipo == KRVRigaNonImponibile) {
                valori << testoNullo << interoNullo << testoNullo << interoNullo << testoNullo << testoNullo
                       << numeroNullo << interoNullo << testoNullo;
            } else {
                valori << righe.Cella(r, l.Codice);
                const int idCategoria = righe.Intero(r, l.IdCategoria);
                const QString categoria = tipo == KRVRigaArticolo ? categorieArticoli.Nome(idCategoria)
                                                                  : categorieServizi.Nome(idCategoria);
                if (categoria.isEmpty())
                    valori << interoNullo << testoNullo;
                else
                    valori << idCategoria << categoria;
                const int idIva = righe.Intero(r, l.IdIva);
                if (!aliquote.contains(idIva))
                    aliquote.insert(idIva, GetAliquotaIVA(idIva));
                const TAliquotaIVA &aliquota = aliquote[idIva];
                if (aliquota.IDALIQUOTA_IVA > 0)
                    valori << aliquota.IDALIQUOTA_IVA << aliquota.CODICE << aliquota.DESCRIZIONE << aliquota.ALIQUOTA;
                else
                    valori << interoNullo << testoNullo << testoNullo << numeroNullo;
                valori << righe.Intero(r, l.IdUM) << righe.Cella(r, l.UM);
            }
            valori << righe.Numero(r, l.Costo) << righe.Numero(r, l.Prezzo) << righe.Numero(r, l.Sconto)
                   << righe.Numero(r, l.Quantita) << righe.Numero(r, l.Importo);
        }
        for (int i = 0; i < valori.size(); ++i)
            insert.bindValue(i, valori.at(i));
        if (!insert.exec())
            throw EQ3Exception(SqlErrorText(insert.lastError()));
    }
}
