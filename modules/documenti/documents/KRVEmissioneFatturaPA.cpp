#include "KRVEmissioneFatturaPA.h"

#include "KRVDdtFattura.h"
#include "KRVFatturaRiferimento.h"
#include "KRVNatureIva.h"
#include "KRVOptions.h"
#include "KRVRigheDocumento.h"
#include "KRVValidaFatturaPA.h"
#include "Q3Controlli.h"
#include "Q3Exception.h"
#include "Q3Ruoli.h"
#include "Q3Sql.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSqlError>

namespace {

// "Non imponibile" lines carry amounts outside VAT, with the nature the
// module option gives them: as a rule excluded under art. 15.
const QString NaturaEsclusa = QStringLiteral("N1");
const QString RiferimentoEscluse = QStringLiteral("Escluse art. 15 DPR 633/72");

QString RiferimentoNatura(const QString &natura)
{
    if (natura == NaturaEsclusa)
        return RiferimentoEscluse;
    for (const TKRVNaturaIva &n : KRVNatureIva()) {
        if (n.Codice == natura)
            return n.Descrizione;
    }
    return {};
}

// Where a kind of document lives.
struct TTabelleFatturaPA
{
    QString Testata;
    QString Chiave;
    QString Righe;
    QString ChiaveRiga;
    bool Fattura; // discounts, exemption and "Non imponibile" lines
};

TTabelleFatturaPA Tabelle(EKRVDocumentoFatturaPA tipo)
{
    if (tipo == EKRVDocumentoFatturaPA::Fattura)
        return {QStringLiteral("FATT_VEND"), QStringLiteral("IDFATT_VEND"), QStringLiteral("FATT_VEND_DETT"),
                QStringLiteral("IDFATT_VEND_DETT"), true};
    return {QStringLiteral("NOTE_ACCREDITO"), QStringLiteral("IDNOTA_ACCREDITO"), QStringLiteral("NOTE_ACCREDITO_DETT"),
            QStringLiteral("IDNOTA_ACCREDITO_DETT"), false};
}

QString Testo(const QSqlQuery &query, int colonna)
{
    return query.value(colonna).toString().trimmed();
}

// The firm's fields the file cannot do without.
void ControllaAzienda(const TQ3Azienda &a, QStringList &problemi)
{
    const struct
    {
        const QString &Valore;
        const char *Manca;
    } campi[] = {
        {a.RagioneSociale, "manca la ragione sociale."},
        {a.PartitaIva, "manca la partita IVA."},
        {a.Indirizzo, "manca l'indirizzo."},
        {a.Cap, "manca il CAP."},
        {a.Citta, "manca la città."},
    };
    for (const auto &campo : campi)
        if (!Q3Compilato(campo.Valore))
            problemi << QStringLiteral("Dati azienda: ") + QString::fromUtf8(campo.Manca);
}

// A VAT number without the country prefix it may be stored with.
QString SenzaPrefisso(const QString &partitaIva)
{
    static const QRegularExpression prefisso(QStringLiteral("^[A-Za-z]{2}"));
    return QString(partitaIva).remove(prefisso).remove(QLatin1Char(' '));
}

// The customer as the document keeps it, with its electronic invoice data from CLIENTI.
TKRVClienteFatturaPA LeggiCliente(TQ3PreparedQuery &clienti, const QSqlQuery &testata, const QString &documento,
                                  QStringList &problemi)
{
    // Header columns 2 to 10: code, name, address, city, CAP, province, country, fiscal code, VAT number.
    TKRVClienteFatturaPA c;
    const QString codice = Testo(testata, 2);
    c.Denominazione = Testo(testata, 3);
    c.Indirizzo = Testo(testata, 4);
    c.Comune = Testo(testata, 5);
    c.Cap = Testo(testata, 6);
    c.Provincia = Testo(testata, 7).toUpper();
    const QString nazione = Testo(testata, 8);
    c.CodiceFiscale = Testo(testata, 9).toUpper();
    const QString partitaIva = Testo(testata, 10).toUpper();

    QString soggetto = QStringLiteral("A");
    QSqlQuery &cliente = clienti.Run({codice});
    if (cliente.next()) {
        c.CodiceDestinatario = Testo(cliente, 0).toUpper();
        c.Pec = Testo(cliente, 1);
        soggetto = Testo(cliente, 2).toUpper();
        c.Nome = Testo(cliente, 3);
        c.Cognome = Testo(cliente, 4);
    }

    if (!Q3NazioneItaliana(nazione)) {
        c.Tipo = EKRVClienteFatturaPA::Estero;
        static const QRegularExpression sigla(QStringLiteral("^[A-Za-z]{2}$"));
        static const QRegularExpression prefisso(QStringLiteral("^[A-Za-z]{2}"));
        if (sigla.match(nazione).hasMatch())
            c.CodiceNazione = nazione.toUpper();
        else if (prefisso.match(partitaIva).hasMatch())
            c.CodiceNazione = partitaIva.left(2);
        else
            problemi << documento
                            + QStringLiteral(": il cliente estero ha la nazione \"%1\": indicare la sigla di 2 lettere "
                                             "(ad esempio DE) nella nazione o davanti alla partita IVA.")
                                  .arg(nazione);
        c.PartitaIva = SenzaPrefisso(partitaIva);
        return c;
    }
    if (soggetto == QStringLiteral("P")) {
        c.Tipo = EKRVClienteFatturaPA::Privato;
    } else {
        c.PartitaIva = SenzaPrefisso(partitaIva);
        c.PubblicaAmministrazione = soggetto == QStringLiteral("PA");
    }
    if (!Q3CapValido(c.Cap))
        problemi << documento + QStringLiteral(": il CAP del cliente \"%1\" non è di 5 cifre.").arg(c.Cap);
    return c;
}

// What the lines without a nature of their own carry: the "Non imponibile"
// lines, and the lines of an exempt invoice whose rate has none (with the
// exemption's note).
struct TNatureOpzioni
{
    QString NonImponibile;
    QString Esente;
    QString NotaEsente;

    explicit TNatureOpzioni(const QSqlDatabase &db)
        : NonImponibile(KRVNaturaNonImponibile(db)), Esente(KRVNaturaEsente(db))
    {
        if (QVariant nota; GetOptionValue(db, QString::fromLatin1(KRVOpzioneNotaIvaEsente), nota))
            NotaEsente = nota.toString().simplified();
        if (NotaEsente.isEmpty())
            NotaEsente = RiferimentoNatura(Esente);
    }
};

// The lines in the order they were saved, with their rates' Natura.
void LeggiRighe(QSqlQuery &righe, bool esente, const TNatureOpzioni &nature, TKRVDatiFatturaPA &dati)
{
    while (righe.next()) {
        TKRVRigaFatturaPA r;
        r.Tipo = Testo(righe, 0);
        r.Descrizione = righe.value(2).toString();
        if (r.Tipo != KRVRigaTesto) {
            r.Quantita = righe.value(3).toDouble();
            r.PrezzoUnitario = righe.value(5).toDouble();
            r.Sconto = righe.value(6).toDouble();
            r.Totale = righe.value(7).toDouble();
        }
        if (r.Tipo == KRVRigaArticolo || r.Tipo == KRVRigaServizio) {
            r.Codice = Testo(righe, 1);
            r.UnitaMisura = Testo(righe, 4);
            const QString natura = Testo(righe, 10);
            r.RiferimentoNormativo = Testo(righe, 11);
            if (esente && natura.isEmpty()) {
                r.Natura = nature.Esente;
                r.RiferimentoNormativo = nature.NotaEsente;
            } else if (esente) {
                r.Natura = natura;
            } else {
                r.AliquotaIva = righe.value(8).toDouble();
                r.Natura = KRVCentesimiFatturaPA(r.AliquotaIva) == 0 ? natura : QString();
            }
        } else if (r.Tipo == KRVRigaNonImponibile) {
            r.Natura = nature.NonImponibile;
            r.RiferimentoNormativo = RiferimentoNatura(nature.NonImponibile);
        }
        dati.Righe.append(r);
    }
}

// The address data a file cannot be without.
void ControllaIndirizzoCliente(const TKRVClienteFatturaPA &c, const QString &documento, QStringList &problemi)
{
    const struct
    {
        const QString &Valore;
        const char *Manca;
    } campi[] = {{c.Indirizzo, "manca l'indirizzo del cliente."}, {c.Comune, "manca la città del cliente."}};
    for (const auto &campo : campi)
        if (!Q3Compilato(campo.Valore))
            problemi << documento + QStringLiteral(": ") + QString::fromUtf8(campo.Manca);
}

QString ProgressivoInvio(int progressivo)
{
    return QString::number(progressivo, 36).toUpper();
}

} // namespace

struct TKRVLettoreFatturaPA::TStato
{
    TStato(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo)
        : Tabella(Tabelle(tipo)), Nature(db),
          Testate(db, QStringLiteral("SELECT NUMERO, DATA, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, CLI_CITTA, "
                                     "CLI_CAP, CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, "
                                     "SCADENZA_PAGAMENTO, %1 FROM %2 WHERE %3 = ?")
                          .arg(Tabella.Fattura ? QStringLiteral("IVA_ESENTE") : QStringLiteral("'False'"),
                               Tabella.Testata, Tabella.Chiave)),
          Clienti(db, QStringLiteral("SELECT CODICE_DESTINATARIO, PEC, TIPO_SOGGETTO, NOME, COGNOME FROM CLIENTI "
                                     "WHERE CODICE = ?")),
          // "+ 0": a document's few rows are sorted, rather than found by
          // walking the whole primary key's index in its order.
          Righe(db, QStringLiteral("SELECT R.TIPO_RIGA, R.CODICE, R.DESCRIZIONE, R.QUANTITA, R.UM, R.PREZZO, %1, "
                                   "R.IMPORTO, R.IVA_ALIQUOTA, R.IVA_CODICE, A.NATURA, A.RIFERIMENTO_NORMATIVO FROM %2 "
                                   "R LEFT JOIN ALIQUOTE_IVA A ON A.IDALIQUOTA_IVA = R.IVA_IDALIQUOTA_IVA "
                                   "WHERE R.%3 = ? ORDER BY R.%4 + 0")
                        .arg(Tabella.Fattura ? QStringLiteral("R.SCONTO") : QStringLiteral("0"), Tabella.Righe,
                             Tabella.Chiave, Tabella.ChiaveRiga)),
          // An invoice names the delivery notes it was filled from, a credit note the invoice it corrects.
          Riferimenti(db, Tabella.Fattura ? KRVQueryDdtFattura : KRVQueryFatturaDellaNota)
    {
        try {
            Azienda = Q3LeggiAzienda(db);
        } catch (const EQ3Exception &e) {
            ProblemiAzienda << QStringLiteral("Dati azienda: ") + e.Message();
        }
        ControllaAzienda(Azienda, ProblemiAzienda);
    }

    TTabelleFatturaPA Tabella;
    TNatureOpzioni Nature;
    TQ3Azienda Azienda;
    QStringList ProblemiAzienda;
    TQ3PreparedQuery Testate;
    TQ3PreparedQuery Clienti;
    TQ3PreparedQuery Righe;
    TQ3PreparedQuery Riferimenti;
};

TKRVLettoreFatturaPA::TKRVLettoreFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo)
    : m_stato(std::make_unique<TStato>(db, tipo))
{}

TKRVLettoreFatturaPA::~TKRVLettoreFatturaPA() = default;

TKRVDatiFatturaPA TKRVLettoreFatturaPA::Leggi(int id, QStringList &problemi)
{
    TStato &s = *m_stato;
    const TTabelleFatturaPA &t = s.Tabella;
    QSqlQuery &testata = s.Testate.Run({id});
    if (!testata.next())
        throw EQ3Exception(QStringLiteral("Il documento non è presente nell'archivio: salvarlo prima."));

    TKRVDatiFatturaPA dati;
    dati.TipoDocumento = t.Fattura ? KRVFatturaPATipoFattura : KRVFatturaPATipoNotaAccredito;
    dati.Numero = Testo(testata, 0);
    dati.Data = testata.value(1).toDate();
    dati.ScadenzaPagamento = testata.value(11).toDate();
    const bool esente = Testo(testata, 12) == QStringLiteral("True");
    const QString documento = KRVNomeDocumentoFatturaPA(dati);
    dati.Azienda = s.Azienda;
    problemi << s.ProblemiAzienda;
    dati.Cliente = LeggiCliente(s.Clienti, testata, documento, problemi);
    ControllaIndirizzoCliente(dati.Cliente, documento, problemi);
    LeggiRighe(s.Righe.Run({id}), esente, s.Nature, dati);
    // Both queries answer key, number and date; a note without an invoice has no date.
    QSqlQuery &riferimenti = s.Riferimenti.Run({id});
    while (riferimenti.next()) {
        if (t.Fattura)
            dati.Ddt.append({Testo(riferimenti, 1), riferimenti.value(2).toDate()});
        else if (!riferimenti.isNull(2))
            dati.FattureCollegate.append({Testo(riferimenti, 1), riferimenti.value(2).toDate()});
    }
    // Filled from delivery notes, an invoice is a deferred one.
    if (!dati.Ddt.isEmpty())
        dati.TipoDocumento = KRVFatturaPATipoDifferita;
    dati.Bollo = KRVImportiSenzaIvaCentesimi(dati) > KRVSogliaBolloCentesimi;
    return dati;
}

TKRVDatiFatturaPA KRVLeggiDatiFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id,
                                        QStringList &problemi)
{
    return TKRVLettoreFatturaPA(db, tipo).Leggi(id, problemi);
}

TKRVFatturaPAVerificata KRVVerificaFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id)
{
    TKRVLettoreFatturaPA lettore(db, tipo);
    return KRVVerificaFatturaPA(lettore, id);
}

TKRVFatturaPAVerificata KRVVerificaFatturaPA(TKRVLettoreFatturaPA &lettore, int id)
{
    TKRVFatturaPAVerificata verificata;
    verificata.Dati = lettore.Leggi(id, verificata.Errori);
    const QString documento = KRVNomeDocumentoFatturaPA(verificata.Dati);
    // The checks run on the file as it will be written but for its progressive,
    // taken only for a file that is going to be written.
    verificata.Dati.ProgressivoInvio = ProgressivoInvio(1);
    verificata.Errori << KRVControlliSdI(verificata.Dati);
    verificata.Xml = KRVScriviFatturaPA(verificata.Dati);
    for (const QString &errore : KRVValidaSchemaFatturaPA(verificata.Xml))
        verificata.Errori << documento + QStringLiteral(": ") + errore;
    return verificata;
}

QString KRVNumeraFatturaPA(const QSqlDatabase &db, TKRVFatturaPAVerificata &verificata, int &progressivo)
{
    progressivo =
        QueryScalar(db, QStringLiteral("SELECT NEXT VALUE FOR GEN_FPA_PROGRESSIVO FROM RDB$DATABASE")).toInt();
    const QString nome = KRVNomeFileFatturaPA(SenzaPrefisso(verificata.Dati.Azienda.PartitaIva), progressivo);
    if (nome.isEmpty())
        throw EQ3Exception(QStringLiteral("I progressivi dei file della fattura elettronica sono esauriti."));
    // The checked file differs from the one written only in this element.
    const auto elemento = [](const QString &valore) {
        return QStringLiteral("<ProgressivoInvio>%1</ProgressivoInvio>").arg(valore).toUtf8();
    };
    const QByteArray provvisorio = elemento(verificata.Dati.ProgressivoInvio);
    if (verificata.Xml.count(provvisorio) != 1)
        throw EQ3Exception(QStringLiteral("Il file della fattura elettronica non ha il suo progressivo d'invio."));
    verificata.Dati.ProgressivoInvio = ProgressivoInvio(progressivo);
    verificata.Xml.replace(provvisorio, elemento(verificata.Dati.ProgressivoInvio));
    return nome;
}

void KRVScriviFileFatturaPA(const QString &percorso, const QByteArray &xml)
{
    QSaveFile file(percorso);
    if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size() || !file.commit())
        throw EQ3Exception(
            QStringLiteral("Impossibile scrivere il file \"%1\":\n\r%2").arg(percorso, file.errorString()));
}

void KRVRegistraFatturePA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, const QList<TKRVFileFatturaPA> &prodotti)
{
    const TTabelleFatturaPA t = Tabelle(tipo);
    TQ3PreparedQuery registra(db, QStringLiteral("UPDATE %1 SET FPA_NOME_FILE = ?, FPA_PROGRESSIVO = ?, "
                                                 "FPA_PRODOTTA = CURRENT_TIMESTAMP WHERE %2 = ?")
                                      .arg(t.Testata, t.Chiave));
    for (const TKRVFileFatturaPA &prodotto : prodotti)
        registra.Run({prodotto.Nome, prodotto.Progressivo, prodotto.Id});
}

TKRVEmissioneFatturaPA KRVEmettiFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id,
                                          const QString &cartella)
{
    TKRVEmissioneFatturaPA esito;
    TKRVFatturaPAVerificata verificata = KRVVerificaFatturaPA(db, tipo, id);
    if (!QFileInfo(cartella).isDir())
        esito.Errori << QStringLiteral("La cartella \"%1\" non esiste.").arg(QDir::toNativeSeparators(cartella));
    esito.Errori << verificata.Errori;
    if (!esito.Errori.isEmpty())
        return esito;

    int progressivo = 0;
    const QString nome = KRVNumeraFatturaPA(db, verificata, progressivo);
    const QString percorso = QDir(cartella).filePath(nome);
    KRVScriviFileFatturaPA(percorso, verificata.Xml);
    try {
        TQ3Transaction transazione(db);
        KRVRegistraFatturePA(db, tipo, {{id, nome, progressivo}});
        transazione.Commit();
    } catch (...) {
        // A file the document does not record would be sent without a trace.
        QFile::remove(percorso);
        throw;
    }
    esito.NomeFile = nome;
    esito.Percorso = percorso;
    esito.Progressivo = progressivo;
    return esito;
}

TKRVStatoFatturaPA KRVStatoFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id)
{
    const TTabelleFatturaPA t = Tabelle(tipo);
    QSqlQuery query = OpenQuery(db, QStringLiteral("SELECT FPA_NOME_FILE, FPA_PRODOTTA, FPA_SBLOCCATA_DA, "
                                                   "FPA_SBLOCCATA_IL FROM %1 WHERE %2 = %3")
                                        .arg(t.Testata, t.Chiave, QString::number(id)));
    TKRVStatoFatturaPA stato;
    if (query.next()) {
        stato.NomeFile = Testo(query, 0);
        stato.Prodotta = query.value(1).toDateTime();
        stato.SbloccataDa = Testo(query, 2);
        stato.SbloccataIl = query.value(3).toDateTime();
    }
    return stato;
}

void KRVSbloccaFatturaPA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo, int id, const QString &utente)
{
    if (!Q3UtenteAmministratore(db, utente))
        throw EQ3Rifiuto(QStringLiteral("Solo un amministratore può sbloccare un documento già emesso."));
    const TTabelleFatturaPA t = Tabelle(tipo);
    TQ3Transaction transazione(db);
    ExecSQL(db,
            QStringLiteral("UPDATE %1 SET FPA_SBLOCCATA_DA = %2, FPA_SBLOCCATA_IL = CURRENT_TIMESTAMP WHERE %3 = %4")
                .arg(t.Testata, QuotedStr(utente), t.Chiave, QString::number(id)));
    transazione.Commit();
}
