#include "KRVFatturaPA.h"

#include "KRVRigheDocumento.h"

#include <QBuffer>
#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamWriter>

#include <cmath>
#include <utility>

namespace {

const QString NamespaceFattura = QStringLiteral("http://ivaservizi.agenziaentrate.gov.it/docs/xsd/fatture/v1.2");
constexpr int MaxDescrizione = 1000;

qint64 Centesimi(double importo)
{
    return KRVCentesimiFatturaPA(importo);
}

qint64 ArrotondaDiviso(qint64 numeratore, qint64 divisore)
{
    const qint64 meta = divisore / 2;
    return numeratore >= 0 ? (numeratore + meta) / divisore : -((-numeratore + meta) / divisore);
}

QString Importo2(qint64 centesimi)
{
    const QString segno = centesimi < 0 ? QStringLiteral("-") : QString();
    const qint64 assoluto = centesimi < 0 ? -centesimi : centesimi;
    return segno + QString::number(assoluto / 100) + QLatin1Char('.')
           + QStringLiteral("%1").arg(assoluto % 100, 2, 10, QLatin1Char('0'));
}

// From two to eight decimals, as many as the value needs.
QString Decimali2a8(double valore)
{
    QString testo = QString::number(valore, 'f', 8);
    while (testo.endsWith(QLatin1Char('0')) && testo.indexOf(QLatin1Char('.')) < testo.size() - 3)
        testo.chop(1);
    return testo == QStringLiteral("-0.00") ? QStringLiteral("0.00") : testo;
}

QString Aliquota(double percentuale)
{
    return QString::number(double(Centesimi(percentuale)) / 100.0, 'f', 2);
}

// The characters typed in Word or a browser that the file's Latin-1 texts
// cannot carry, in ASCII.
QString Sostituto(QChar c)
{
    switch (c.unicode()) {
    case 0x20AC:
        return QStringLiteral("EUR");
    case 0x2018:
    case 0x2019:
    case 0x201A:
    case 0x201B:
    case 0x2032:
        return QStringLiteral("'");
    case 0x201C:
    case 0x201D:
    case 0x201E:
    case 0x201F:
    case 0x2033:
        return QStringLiteral("\"");
    case 0x2010:
    case 0x2011:
    case 0x2012:
    case 0x2013:
    case 0x2014:
    case 0x2015:
    case 0x2212:
    case 0x2022:
        return QStringLiteral("-");
    case 0x2026:
        return QStringLiteral("...");
    case 0x00A0:
    case 0x2002:
    case 0x2003:
    case 0x2009:
    case 0x202F:
        return QStringLiteral(" ");
    default:
        break;
    }
    // A letter with marks that Latin-1 lacks keeps its base letter.
    const QString scomposto = QString(c).normalized(QString::NormalizationForm_KD);
    QString base;
    for (const QChar s : scomposto)
        if (s.unicode() >= 0x20 && s.unicode() < 0x7F)
            base += s;
    return base.isEmpty() ? QStringLiteral("?") : base;
}

// A text for the schema's Latin types (Basic Latin and Latin-1 Supplement),
// or for its ASCII types when ascii is true: control characters dropped
// (tabs and line ends become blanks), other characters mapped to ASCII.
QString Pulisci(const QString &testo, bool ascii = false)
{
    QString esito;
    esito.reserve(testo.size());
    for (int i = 0; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        const ushort u = c.unicode();
        if (u == '\t' || u == '\n' || u == '\r') {
            esito += QLatin1Char(' ');
        } else if (u < 0x20 || (u >= 0x7F && u < 0xA0)) {
            continue;
        } else if (u < 0x7F || (!ascii && u <= 0xFF && u != 0xA0)) {
            esito += c;
        } else if (c.isHighSurrogate() && i + 1 < testo.size()) {
            ++i; // emoji and other characters beyond the first plane
            esito += QLatin1Char('?');
        } else {
            esito += Sostituto(c);
        }
    }
    return esito;
}

QString Limita(const QString &testo, int lunghezza, bool ascii = false)
{
    return Pulisci(testo, ascii).trimmed().left(lunghezza);
}

// The key of a summary: the rate in hundredths and, for the zero rate, the Natura.
QString ChiaveRiepilogo(double aliquota, const QString &natura)
{
    const qint64 centesimi = Centesimi(aliquota);
    return QString::number(centesimi) + QLatin1Char('/') + (centesimi == 0 ? natura : QString());
}

QString Formato(const TKRVClienteFatturaPA &cliente)
{
    return cliente.PubblicaAmministrazione ? KRVFatturaPAFormatoPA : KRVFatturaPAFormatoPrivati;
}

class TScrittore
{
public:
    // One element a line, not indented: the file stays compact and a
    // validator's message points at the element's own line.
    explicit TScrittore(QBuffer *buffer) : m_xml(buffer)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(0);
    }

    void Apri(const QString &nome) { m_xml.writeStartElement(nome); }
    void Chiudi() { m_xml.writeEndElement(); }
    void Campo(const QString &nome, const QString &valore) { m_xml.writeTextElement(nome, valore); }
    void CampoSePresente(const QString &nome, const QString &valore)
    {
        if (!valore.isEmpty())
            Campo(nome, valore);
    }
    QXmlStreamWriter &Xml() { return m_xml; }

    void IdFiscale(const QString &elemento, const QString &paese, const QString &codice)
    {
        Apri(elemento);
        Campo(QStringLiteral("IdPaese"), Limita(paese, 2, true).toUpper());
        Campo(QStringLiteral("IdCodice"), Limita(codice, 28, true).remove(QLatin1Char(' ')));
        Chiudi();
    }

    void Sede(const QString &indirizzo, const QString &cap, const QString &comune, const QString &provincia,
              const QString &nazione)
    {
        Apri(QStringLiteral("Sede"));
        Campo(QStringLiteral("Indirizzo"), Limita(indirizzo, 60));
        Campo(QStringLiteral("CAP"), Limita(cap, 5, true));
        Campo(QStringLiteral("Comune"), Limita(comune, 60));
        CampoSePresente(QStringLiteral("Provincia"), Limita(provincia, 2, true).toUpper());
        Campo(QStringLiteral("Nazione"), Limita(nazione, 2, true).toUpper());
        Chiudi();
    }

private:
    QXmlStreamWriter m_xml;
};

void ScriviTrasmissione(TScrittore &s, const TKRVDatiFatturaPA &dati)
{
    const TQ3Azienda &a = dati.Azienda;
    const TKRVClienteFatturaPA &c = dati.Cliente;
    s.Apri(QStringLiteral("DatiTrasmissione"));
    s.IdFiscale(QStringLiteral("IdTrasmittente"), a.CodiceNazione,
                a.CodiceFiscale.isEmpty() ? a.PartitaIva : a.CodiceFiscale);
    s.Campo(QStringLiteral("ProgressivoInvio"), Limita(dati.ProgressivoInvio, 10, true));
    s.Campo(QStringLiteral("FormatoTrasmissione"), Formato(c));
    QString codice = Limita(c.CodiceDestinatario, 7, true).toUpper();
    if (c.Tipo == EKRVClienteFatturaPA::Estero)
        codice = KRVFatturaPADestinatarioEstero;
    else if (codice.isEmpty())
        codice = KRVFatturaPADestinatarioPec;
    s.Campo(QStringLiteral("CodiceDestinatario"), codice);
    if (codice == KRVFatturaPADestinatarioPec)
        s.CampoSePresente(QStringLiteral("PECDestinatario"), Limita(c.Pec, 256, true));
    s.Chiudi();
}

void ScriviContatti(TScrittore &s, const TQ3Azienda &a)
{
    // Contacts the schema would refuse (a telephone outside 5-12 characters,
    // a malformed or too short e-mail address) are left out of the file.
    const QString telefono = Limita(a.Telefono, 20, true).remove(QLatin1Char(' '));
    const QString fax = Limita(a.Fax, 20, true).remove(QLatin1Char(' '));
    static const QRegularExpression formatoEmail(QStringLiteral("^\\S+@\\S+\\.\\S+$"));
    const QString email = a.Email.trimmed().size() >= 7 && formatoEmail.match(a.Email.trimmed()).hasMatch()
                              ? Limita(a.Email, 256)
                              : QString();
    const auto telFax = [](const QString &numero) { return numero.size() >= 5 && numero.size() <= 12; };
    if (telFax(telefono) || telFax(fax) || !email.isEmpty()) {
        s.Apri(QStringLiteral("Contatti"));
        s.CampoSePresente(QStringLiteral("Telefono"), telFax(telefono) ? telefono : QString());
        s.CampoSePresente(QStringLiteral("Fax"), telFax(fax) ? fax : QString());
        s.CampoSePresente(QStringLiteral("Email"), email);
        s.Chiudi();
    }
}

void ScriviCedente(TScrittore &s, const TQ3Azienda &a)
{
    s.Apri(QStringLiteral("CedentePrestatore"));
    s.Apri(QStringLiteral("DatiAnagrafici"));
    s.IdFiscale(QStringLiteral("IdFiscaleIVA"), a.CodiceNazione, a.PartitaIva);
    s.CampoSePresente(QStringLiteral("CodiceFiscale"), Limita(a.CodiceFiscale, 16, true).toUpper());
    s.Apri(QStringLiteral("Anagrafica"));
    s.Campo(QStringLiteral("Denominazione"), Limita(a.RagioneSociale, 80));
    s.Chiudi();
    s.Campo(QStringLiteral("RegimeFiscale"), a.RegimeFiscale);
    s.Chiudi();
    s.Sede(a.Indirizzo, a.Cap, a.Citta, a.Provincia, a.CodiceNazione);
    if (!a.ReaUfficio.isEmpty() && !a.ReaNumero.isEmpty()) {
        s.Apri(QStringLiteral("IscrizioneREA"));
        s.Campo(QStringLiteral("Ufficio"), Limita(a.ReaUfficio, 2, true).toUpper());
        s.Campo(QStringLiteral("NumeroREA"), Limita(a.ReaNumero, 20, true));
        s.CampoSePresente(QStringLiteral("SocioUnico"), a.SocioUnico);
        s.Campo(QStringLiteral("StatoLiquidazione"), a.StatoLiquidazione);
        s.Chiudi();
    }
    ScriviContatti(s, a);
    s.Chiudi();
}

void ScriviCessionario(TScrittore &s, const TKRVClienteFatturaPA &c)
{
    const bool estero = c.Tipo == EKRVClienteFatturaPA::Estero;
    s.Apri(QStringLiteral("CessionarioCommittente"));
    s.Apri(QStringLiteral("DatiAnagrafici"));
    if (c.Tipo == EKRVClienteFatturaPA::Azienda && !c.PartitaIva.isEmpty())
        s.IdFiscale(QStringLiteral("IdFiscaleIVA"), c.CodiceNazione, c.PartitaIva);
    else if (estero) // a customer with no VAT id keeps a placeholder code
        s.IdFiscale(QStringLiteral("IdFiscaleIVA"), c.CodiceNazione,
                    c.PartitaIva.isEmpty() ? QStringLiteral("99999999999") : c.PartitaIva);
    if (!estero)
        s.CampoSePresente(QStringLiteral("CodiceFiscale"), Limita(c.CodiceFiscale, 16, true).toUpper());
    s.Apri(QStringLiteral("Anagrafica"));
    if (c.Tipo == EKRVClienteFatturaPA::Privato || (estero && c.Denominazione.isEmpty())) {
        s.Campo(QStringLiteral("Nome"), Limita(c.Nome, 60));
        s.Campo(QStringLiteral("Cognome"), Limita(c.Cognome, 60));
    } else {
        s.Campo(QStringLiteral("Denominazione"), Limita(c.Denominazione, 80));
    }
    s.Chiudi();
    s.Chiudi();
    if (estero)
        s.Sede(c.Indirizzo, QStringLiteral("00000"), c.Comune, QString(), c.CodiceNazione);
    else
        s.Sede(c.Indirizzo, c.Cap, c.Comune, c.Provincia, c.CodiceNazione);
    s.Chiudi();
}

void ScriviDatiGenerali(TScrittore &s, const TKRVDatiFatturaPA &dati, qint64 totaleCentesimi)
{
    s.Apri(QStringLiteral("DatiGenerali"));
    s.Apri(QStringLiteral("DatiGeneraliDocumento"));
    s.Campo(QStringLiteral("TipoDocumento"), dati.TipoDocumento);
    s.Campo(QStringLiteral("Divisa"), dati.Divisa);
    s.Campo(QStringLiteral("Data"), dati.Data.toString(Qt::ISODate));
    s.Campo(QStringLiteral("Numero"), Limita(dati.Numero, 20, true));
    if (dati.Bollo) {
        s.Apri(QStringLiteral("DatiBollo"));
        s.Campo(QStringLiteral("BolloVirtuale"), QStringLiteral("SI"));
        s.Campo(QStringLiteral("ImportoBollo"), Importo2(Centesimi(dati.ImportoBollo)));
        s.Chiudi();
    }
    s.Campo(QStringLiteral("ImportoTotaleDocumento"), Importo2(totaleCentesimi));
    s.Chiudi();
    for (const TKRVFatturaCollegata &collegata : dati.FattureCollegate) {
        s.Apri(QStringLiteral("DatiFattureCollegate"));
        s.Campo(QStringLiteral("IdDocumento"), Limita(collegata.Numero, 20, true));
        if (collegata.Data.isValid())
            s.Campo(QStringLiteral("Data"), collegata.Data.toString(Qt::ISODate));
        s.Chiudi();
    }
    for (const TKRVDdtFatturaPA &ddt : dati.Ddt) {
        s.Apri(QStringLiteral("DatiDDT"));
        s.Campo(QStringLiteral("NumeroDDT"), Limita(ddt.Numero, 20, true));
        s.Campo(QStringLiteral("DataDDT"), ddt.Data.toString(Qt::ISODate));
        s.Chiudi();
    }
    s.Chiudi();
}

void ScriviRiga(TScrittore &s, int numero, const TKRVRigaFatturaPA &r)
{
    const bool testo = r.Tipo == KRVRigaTesto;
    s.Apri(QStringLiteral("DettaglioLinee"));
    s.Campo(QStringLiteral("NumeroLinea"), QString::number(numero));
    if (r.Tipo == KRVRigaArticolo && !r.Codice.isEmpty()) {
        s.Apri(QStringLiteral("CodiceArticolo"));
        s.Campo(QStringLiteral("CodiceTipo"), QStringLiteral("INTERNO"));
        s.Campo(QStringLiteral("CodiceValore"), Limita(r.Codice, 35));
        s.Chiudi();
    }
    const QString descrizione = r.Descrizione.trimmed();
    s.Campo(QStringLiteral("Descrizione"), descrizione.isEmpty() ? QStringLiteral(".") : descrizione);
    if (!testo) {
        s.Campo(QStringLiteral("Quantita"), Decimali2a8(r.Quantita));
        s.CampoSePresente(QStringLiteral("UnitaMisura"), Limita(r.UnitaMisura, 10, true));
    }
    s.Campo(QStringLiteral("PrezzoUnitario"), testo ? QStringLiteral("0.00") : Decimali2a8(r.PrezzoUnitario));
    if (!testo && Centesimi(r.Sconto) != 0) {
        s.Apri(QStringLiteral("ScontoMaggiorazione"));
        s.Campo(QStringLiteral("Tipo"), r.Sconto > 0 ? QStringLiteral("SC") : QStringLiteral("MG"));
        s.Campo(QStringLiteral("Percentuale"), Aliquota(std::fabs(r.Sconto)));
        s.Chiudi();
    }
    s.Campo(QStringLiteral("PrezzoTotale"), testo ? QStringLiteral("0.00") : Importo2(Centesimi(r.Totale)));
    s.Campo(QStringLiteral("AliquotaIVA"), Aliquota(r.AliquotaIva));
    if (Centesimi(r.AliquotaIva) == 0)
        s.CampoSePresente(QStringLiteral("Natura"), r.Natura);
    s.Chiudi();
}

void ScriviRiepilogo(TScrittore &s, const TKRVRiepilogoCalcolatoFatturaPA &r)
{
    s.Apri(QStringLiteral("DatiRiepilogo"));
    s.Campo(QStringLiteral("AliquotaIVA"), Aliquota(r.AliquotaIva));
    if (Centesimi(r.AliquotaIva) == 0)
        s.CampoSePresente(QStringLiteral("Natura"), r.Natura);
    if (r.ImponibileCentesimi != r.SommaRigheCentesimi)
        s.Campo(QStringLiteral("Arrotondamento"), Importo2(r.ImponibileCentesimi - r.SommaRigheCentesimi));
    s.Campo(QStringLiteral("ImponibileImporto"), Importo2(r.ImponibileCentesimi));
    s.Campo(QStringLiteral("Imposta"), Importo2(r.ImpostaCentesimi));
    s.Campo(QStringLiteral("EsigibilitaIVA"), QStringLiteral("I"));
    if (Centesimi(r.AliquotaIva) == 0)
        s.CampoSePresente(QStringLiteral("RiferimentoNormativo"), Limita(r.RiferimentoNormativo, 100));
    s.Chiudi();
}

void ScriviPagamento(TScrittore &s, const TKRVDatiFatturaPA &dati, qint64 totaleCentesimi)
{
    const QString iban = dati.Azienda.Iban.simplified().remove(QLatin1Char(' ')).toUpper();
    if (iban.isEmpty())
        return;
    s.Apri(QStringLiteral("DatiPagamento"));
    s.Campo(QStringLiteral("CondizioniPagamento"), QStringLiteral("TP02"));
    s.Apri(QStringLiteral("DettaglioPagamento"));
    s.Campo(QStringLiteral("ModalitaPagamento"), QStringLiteral("MP05"));
    if (dati.ScadenzaPagamento.isValid())
        s.Campo(QStringLiteral("DataScadenzaPagamento"), dati.ScadenzaPagamento.toString(Qt::ISODate));
    s.Campo(QStringLiteral("ImportoPagamento"), Importo2(totaleCentesimi));
    s.CampoSePresente(QStringLiteral("IstitutoFinanziario"), Limita(dati.Azienda.Banca, 80));
    s.Campo(QStringLiteral("IBAN"), Limita(iban, 34, true));
    s.Chiudi();
    s.Chiudi();
}

} // namespace

qint64 KRVCentesimiFatturaPA(double importo)
{
    return qint64(std::llround(importo * 100.0 + (importo >= 0 ? 1e-7 : -1e-7)));
}

double KRVTotaleRigaFatturaPA(double prezzoUnitario, double sconto, double quantita)
{
    return double(Centesimi(prezzoUnitario * (1.0 - sconto / 100.0) * quantita)) / 100.0;
}

QList<TKRVRigaFatturaPA> KRVRigheScritteFatturaPA(const TKRVDatiFatturaPA &dati)
{
    QList<TKRVRigaFatturaPA> righe;
    righe.reserve(dati.Righe.size());
    for (const TKRVRigaFatturaPA &riga : dati.Righe) {
        TKRVRigaFatturaPA scritta = riga;
        // The file's quantity has no sign: a return carries a negative price.
        if (scritta.Quantita < 0) {
            scritta.Quantita = -scritta.Quantita;
            scritta.PrezzoUnitario = -scritta.PrezzoUnitario;
        }
        const QString descrizione = Pulisci(riga.Descrizione).trimmed();
        scritta.Descrizione = descrizione.left(MaxDescrizione);
        righe.append(scritta);
        // The rest of a long description follows on text lines of its own.
        for (qsizetype da = MaxDescrizione; da < descrizione.size(); da += MaxDescrizione) {
            TKRVRigaFatturaPA seguito = riga;
            seguito.Tipo = KRVRigaTesto;
            seguito.Descrizione = descrizione.mid(da, MaxDescrizione);
            righe.append(seguito);
        }
    }
    // A text line takes the VAT of the priced line before it, or of the first one.
    const TKRVRigaFatturaPA *iva = nullptr;
    for (const TKRVRigaFatturaPA &riga : std::as_const(righe))
        if (riga.Tipo != KRVRigaTesto) {
            iva = &riga;
            break;
        }
    double aliquota = iva ? iva->AliquotaIva : 0.0;
    QString natura = iva ? iva->Natura : QStringLiteral("N1");
    for (TKRVRigaFatturaPA &riga : righe) {
        if (riga.Tipo == KRVRigaTesto) {
            riga.AliquotaIva = aliquota;
            riga.Natura = natura;
            riga.Totale = 0;
        } else {
            aliquota = riga.AliquotaIva;
            natura = riga.Natura;
        }
    }
    return righe;
}

QList<TKRVRiepilogoCalcolatoFatturaPA> KRVRiepiloghiFatturaPA(const TKRVDatiFatturaPA &dati)
{
    QList<TKRVRiepilogoCalcolatoFatturaPA> riepiloghi;
    QHash<QString, qsizetype> indici;
    for (const TKRVRigaFatturaPA &riga : KRVRigheScritteFatturaPA(dati)) {
        const QString chiave = ChiaveRiepilogo(riga.AliquotaIva, riga.Natura);
        auto trovato = indici.constFind(chiave);
        if (trovato == indici.constEnd()) {
            TKRVRiepilogoCalcolatoFatturaPA nuovo;
            nuovo.AliquotaIva = double(Centesimi(riga.AliquotaIva)) / 100.0;
            nuovo.Natura = Centesimi(riga.AliquotaIva) == 0 ? riga.Natura : QString();
            nuovo.RiferimentoNormativo = riga.RiferimentoNormativo;
            trovato = indici.insert(chiave, riepiloghi.size());
            riepiloghi.append(nuovo);
        }
        riepiloghi[*trovato].SommaRigheCentesimi += Centesimi(riga.Totale);
    }
    for (TKRVRiepilogoCalcolatoFatturaPA &r : riepiloghi) {
        r.ImponibileCentesimi = r.SommaRigheCentesimi;
        for (const TKRVRiepilogoFatturaPA &documento : dati.Riepiloghi)
            if (ChiaveRiepilogo(documento.AliquotaIva, documento.Natura) == ChiaveRiepilogo(r.AliquotaIva, r.Natura)) {
                r.ImponibileCentesimi = Centesimi(documento.Imponibile);
                if (!documento.RiferimentoNormativo.isEmpty())
                    r.RiferimentoNormativo = documento.RiferimentoNormativo;
            }
        r.ImpostaCentesimi = ArrotondaDiviso(r.ImponibileCentesimi * Centesimi(r.AliquotaIva), 10000);
    }
    return riepiloghi;
}

qint64 KRVImportiSenzaIvaCentesimi(const TKRVDatiFatturaPA &dati)
{
    qint64 somma = 0;
    for (const TKRVRiepilogoCalcolatoFatturaPA &r : KRVRiepiloghiFatturaPA(dati)) {
        const bool esente = r.Natura == QStringLiteral("N3.1") || r.Natura == QStringLiteral("N3.2")
                            || r.Natura.startsWith(QStringLiteral("N6")) || r.Natura == QStringLiteral("N7");
        if (Centesimi(r.AliquotaIva) == 0 && !esente)
            somma += r.ImponibileCentesimi;
    }
    return somma;
}

QString KRVNomeDocumentoFatturaPA(const TKRVDatiFatturaPA &dati)
{
    const QString tipo = dati.TipoDocumento == KRVFatturaPATipoNotaAccredito ? QStringLiteral("Nota di accredito")
                                                                             : QStringLiteral("Fattura");
    return QStringLiteral("%1 %2/%3").arg(tipo, dati.Numero, QString::number(dati.Data.year()));
}

QByteArray KRVScriviFatturaPA(const TKRVDatiFatturaPA &dati)
{
    const QList<TKRVRiepilogoCalcolatoFatturaPA> riepiloghi = KRVRiepiloghiFatturaPA(dati);
    qint64 totale = 0;
    for (const TKRVRiepilogoCalcolatoFatturaPA &r : riepiloghi)
        totale += r.ImponibileCentesimi + r.ImpostaCentesimi;

    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    TScrittore s(&buffer);
    s.Xml().writeStartDocument();
    s.Xml().writeNamespace(NamespaceFattura, QStringLiteral("p"));
    s.Xml().writeStartElement(NamespaceFattura, QStringLiteral("FatturaElettronica"));
    s.Xml().writeAttribute(QStringLiteral("versione"), Formato(dati.Cliente));
    s.Apri(QStringLiteral("FatturaElettronicaHeader"));
    ScriviTrasmissione(s, dati);
    ScriviCedente(s, dati.Azienda);
    ScriviCessionario(s, dati.Cliente);
    s.Chiudi();
    s.Apri(QStringLiteral("FatturaElettronicaBody"));
    ScriviDatiGenerali(s, dati, totale);
    s.Apri(QStringLiteral("DatiBeniServizi"));
    int numero = 0;
    for (const TKRVRigaFatturaPA &riga : KRVRigheScritteFatturaPA(dati))
        ScriviRiga(s, ++numero, riga);
    for (const TKRVRiepilogoCalcolatoFatturaPA &r : riepiloghi)
        ScriviRiepilogo(s, r);
    s.Chiudi();
    ScriviPagamento(s, dati, totale);
    s.Chiudi();
    s.Xml().writeEndDocument();
    return file;
}

QString KRVNomeFileFatturaPA(const QString &partitaIva, int progressivo)
{
    if (progressivo < 1 || progressivo > KRVMaxProgressivoFatturaPA)
        return {};
    return QStringLiteral("IT%1_%2.xml").arg(partitaIva, QString::number(progressivo, 36).toUpper());
}
