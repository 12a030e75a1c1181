#include "KRVValidaFatturaPA.h"

#include "KRVNatureIva.h"
#include "KRVRigheDocumento.h"
#include "Q3Controlli.h"

#include <QFile>
#include <QLocale>
#include <QMutex>
#include <QRegularExpression>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

// Where the schema imports the signature schema from: answered with the embedded copy.
constexpr char IndirizzoFirma[] = "http://www.w3.org/TR/2002/REC-xmldsig-core-20020212/xmldsig-core-schema.xsd";

QByteArray Risorsa(const QString &nome)
{
    QFile file(QStringLiteral(":/fatturapa/") + nome);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QByteArray &SchemaFirma()
{
    static const QByteArray schema = Risorsa(QStringLiteral("xmldsig-core-schema.xsd"));
    return schema;
}

// Every external resource comes from the program: the signature schema from
// its resource, anything else from nowhere.
xmlParserInputPtr CaricaRisorsa(const char *url, const char *, xmlParserCtxtPtr contesto)
{
    if (url == nullptr || std::strcmp(url, IndirizzoFirma) != 0 || contesto == nullptr)
        return nullptr;
    const QByteArray &schema = SchemaFirma();
    xmlParserInputBufferPtr buffer =
        xmlParserInputBufferCreateMem(schema.constData(), int(schema.size()), XML_CHAR_ENCODING_NONE);
    return buffer ? xmlNewIOInputStream(contesto, buffer, XML_CHAR_ENCODING_NONE) : nullptr;
}

struct TSchema
{
    xmlSchemaPtr Schema = nullptr;
    ~TSchema() { xmlSchemaFree(Schema); }
};

QMutex &MutexLibxml()
{
    static QMutex mutex;
    return mutex;
}

// The compiled schema, made once; called with MutexLibxml held.
xmlSchemaPtr SchemaFattura()
{
    static TSchema compilato;
    if (compilato.Schema == nullptr) {
        const QByteArray xsd = Risorsa(QStringLiteral("Schema_del_file_xml_FatturaPA_v1.2.2.xsd"));
        const xmlExternalEntityLoader precedente = xmlGetExternalEntityLoader();
        xmlSetExternalEntityLoader(CaricaRisorsa);
        xmlSchemaParserCtxtPtr contesto = xmlSchemaNewMemParserCtxt(xsd.constData(), int(xsd.size()));
        if (contesto) {
            compilato.Schema = xmlSchemaParse(contesto);
            xmlSchemaFreeParserCtxt(contesto);
        }
        xmlSetExternalEntityLoader(precedente);
    }
    return compilato.Schema;
}

QString Messaggio(const xmlError *errore)
{
    const QString testo = QString::fromUtf8(errore->message ? errore->message : "").trimmed();
    const QString elemento =
        errore->node && static_cast<const xmlNode *>(errore->node)->name
            ? QString::fromUtf8(reinterpret_cast<const char *>(static_cast<const xmlNode *>(errore->node)->name))
            : QString();
    QString spiegazione;
    switch (errore->code) {
    case XML_SCHEMAV_CVC_PATTERN_VALID:
    case XML_SCHEMAV_CVC_DATATYPE_VALID_1_2_1:
        spiegazione = QStringLiteral("il valore non ha il formato richiesto");
        break;
    case XML_SCHEMAV_CVC_LENGTH_VALID:
    case XML_SCHEMAV_CVC_MINLENGTH_VALID:
    case XML_SCHEMAV_CVC_MAXLENGTH_VALID:
        spiegazione = QStringLiteral("il valore non ha la lunghezza ammessa");
        break;
    case XML_SCHEMAV_CVC_ENUMERATION_VALID:
        spiegazione = QStringLiteral("il valore non è tra i codici ammessi");
        break;
    case XML_SCHEMAV_ELEMENT_CONTENT:
    case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_4:
        spiegazione = QStringLiteral("elemento mancante, in più o fuori posto");
        break;
    default:
        spiegazione = errore->domain == XML_FROM_SCHEMASV ? QStringLiteral("non conforme allo schema")
                                                          : QStringLiteral("il file non è un XML ben formato");
        break;
    }
    const QString dove = elemento.isEmpty() ? QString() : QStringLiteral(", elemento %1").arg(elemento);
    return QStringLiteral("Riga %1%2: %3 (%4).").arg(QString::number(errore->line), dove, spiegazione, testo);
}

void RaccogliErrore(void *messaggi, xmlErrorPtr errore)
{
    if (errore && errore->level >= XML_ERR_ERROR)
        static_cast<QStringList *>(messaggi)->append(Messaggio(errore));
}

struct TLiberaDocumento
{
    void operator()(xmlDocPtr documento) const { xmlFreeDoc(documento); }
};

} // namespace

QStringList KRVValidaSchemaFatturaPA(const QByteArray &xml)
{
    QMutexLocker blocco(&MutexLibxml());
    QStringList messaggi;
    const xmlSchemaPtr schema = SchemaFattura();
    if (schema == nullptr)
        return {QStringLiteral("Lo schema della fattura elettronica non si può leggere.")};
    const xmlExternalEntityLoader precedente = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(CaricaRisorsa);
    xmlSetStructuredErrorFunc(&messaggi, RaccogliErrore);
    const std::unique_ptr<xmlDoc, TLiberaDocumento> documento(
        xmlReadMemory(xml.constData(), int(xml.size()), "fattura.xml", nullptr, XML_PARSE_NONET));
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    xmlSetExternalEntityLoader(precedente);
    if (!documento) {
        if (messaggi.isEmpty())
            messaggi.append(QStringLiteral("Il file non è un XML ben formato."));
        return messaggi;
    }
    xmlSchemaValidCtxtPtr contesto = xmlSchemaNewValidCtxt(schema);
    xmlSchemaSetValidStructuredErrors(contesto, RaccogliErrore, &messaggi);
    const int esito = xmlSchemaValidateDoc(contesto, documento.get());
    xmlSchemaFreeValidCtxt(contesto);
    if (esito != 0 && messaggi.isEmpty())
        messaggi.append(QStringLiteral("Il file non rispetta lo schema della fattura elettronica."));
    return messaggi;
}

namespace {

const QStringList &NatureAmmesse()
{
    static const QStringList nature = [] {
        QStringList codici;
        for (const TKRVNaturaIva &natura : KRVNatureIva())
            codici << natura.Codice;
        return codici;
    }();
    return nature;
}

QString Euro(qint64 centesimi)
{
    return QLocale(QLocale::Italian, QLocale::Italy).toString(double(centesimi) / 100.0, 'f', 2);
}

QString NomeRiepilogo(double aliquota, const QString &natura)
{
    const QString percento = Euro(KRVCentesimiFatturaPA(aliquota)) + QLatin1Char('%');
    return KRVCentesimiFatturaPA(aliquota) == 0 ? percento + QLatin1Char(' ') + natura : percento;
}

bool StessoRiepilogo(double aliquota, const QString &natura, const TKRVRiepilogoCalcolatoFatturaPA &r)
{
    const qint64 centesimi = KRVCentesimiFatturaPA(aliquota);
    return centesimi == KRVCentesimiFatturaPA(r.AliquotaIva) && (centesimi != 0 || natura == r.Natura);
}

class TControlli
{
public:
    explicit TControlli(const TKRVDatiFatturaPA &dati) : m_dati(dati), m_documento(KRVNomeDocumentoFatturaPA(dati)) {}

    void Rifiuta(const QString &motivo) { m_messaggi.append(m_documento + QStringLiteral(": ") + motivo); }
    QStringList Messaggi() const { return m_messaggi; }

    void Azienda()
    {
        const TQ3Azienda &a = m_dati.Azienda;
        if (!Q3PartitaIvaValida(a.PartitaIva))
            Rifiuta(QStringLiteral("la partita IVA dell'azienda \"%1\" non è valida.").arg(a.PartitaIva));
        static const QRegularExpression regime(QStringLiteral("^RF(0[1-24-9]|1[0-9])$"));
        if (!regime.match(a.RegimeFiscale).hasMatch())
            Rifiuta(QStringLiteral("il regime fiscale dell'azienda \"%1\" non esiste.").arg(a.RegimeFiscale));
        if (!a.Iban.isEmpty() && !Q3IbanValido(a.Iban))
            Rifiuta(QStringLiteral("l'IBAN dell'azienda \"%1\" non è valido.").arg(a.Iban));
    }

    void Cliente()
    {
        const TKRVClienteFatturaPA &c = m_dati.Cliente;
        switch (c.Tipo) {
        case EKRVClienteFatturaPA::Azienda:
            if (c.PubblicaAmministrazione && c.PartitaIva.isEmpty()) {
                if (!Q3CodiceFiscaleValido(c.CodiceFiscale))
                    Rifiuta(QStringLiteral("il codice fiscale della pubblica amministrazione \"%1\" non è valido.")
                                .arg(c.CodiceFiscale));
            } else if (!Q3PartitaIvaValida(c.PartitaIva))
                Rifiuta(QStringLiteral("la partita IVA del cliente \"%1\" non è valida.").arg(c.PartitaIva));
            break;
        case EKRVClienteFatturaPA::Privato:
            if (!Q3CodiceFiscaleValido(c.CodiceFiscale))
                Rifiuta(QStringLiteral("il codice fiscale del cliente \"%1\" non è valido.").arg(c.CodiceFiscale));
            if (c.Nome.trimmed().isEmpty() || c.Cognome.trimmed().isEmpty())
                Rifiuta(QStringLiteral("il cliente privato \"%1 %2\" non ha nome e cognome.").arg(c.Nome, c.Cognome));
            break;
        case EKRVClienteFatturaPA::Estero:
            if (c.CodiceNazione.toUpper() == QStringLiteral("IT"))
                Rifiuta(QStringLiteral("il cliente estero ha la nazione \"%1\".").arg(c.CodiceNazione));
            break;
        }
        Destinatario();
    }

    void Destinatario()
    {
        const TKRVClienteFatturaPA &c = m_dati.Cliente;
        if (c.Tipo == EKRVClienteFatturaPA::Estero)
            return;
        const QString codice = c.CodiceDestinatario;
        if (c.PubblicaAmministrazione) {
            static const QRegularExpression ufficio(QStringLiteral("^[A-Z0-9]{6}$"));
            if (!ufficio.match(codice).hasMatch())
                Rifiuta(QStringLiteral("il codice ufficio \"%1\" della pubblica amministrazione non è di 6 lettere "
                                       "maiuscole o cifre.")
                            .arg(codice));
            return;
        }
        static const QRegularExpression formato(QStringLiteral("^[A-Z0-9]{7}$"));
        if (codice.isEmpty() && c.Pec.isEmpty() && c.Tipo == EKRVClienteFatturaPA::Azienda)
            Rifiuta(QStringLiteral("il cliente non ha né codice destinatario né PEC."));
        else if (codice == KRVFatturaPADestinatarioEstero)
            Rifiuta(QStringLiteral("il codice destinatario \"%1\" è solo per i clienti esteri.").arg(codice));
        else if (!codice.isEmpty() && !formato.match(codice).hasMatch())
            Rifiuta(QStringLiteral("il codice destinatario \"%1\" non è di 7 lettere maiuscole o cifre.").arg(codice));
        else if (!c.Pec.isEmpty() && !codice.isEmpty() && codice != KRVFatturaPADestinatarioPec)
            Rifiuta(
                QStringLiteral("la PEC \"%1\" si indica solo con il codice destinatario \"0000000\", non con \"%2\".")
                    .arg(c.Pec, codice));
    }

    void Documento()
    {
        static const QRegularExpression cifra(QStringLiteral("[0-9]"));
        if (!m_dati.Numero.contains(cifra))
            Rifiuta(QStringLiteral("il numero \"%1\" non contiene cifre.").arg(m_dati.Numero));
        if (m_dati.Numero.size() > 20)
            Rifiuta(QStringLiteral("il numero \"%1\" supera i 20 caratteri.").arg(m_dati.Numero));
        if (!m_dati.Data.isValid() || m_dati.Data < QDate(1970, 1, 1) || m_dati.Data > QDate::currentDate())
            Rifiuta(
                QStringLiteral("la data \"%1\" non è tra il 1970 e oggi.").arg(m_dati.Data.toString(u"dd/MM/yyyy")));
        for (const TKRVDdtFatturaPA &ddt : m_dati.Ddt)
            if (!ddt.Data.isValid() || ddt.Data > m_dati.Data)
                Rifiuta(QStringLiteral("il D.d.T. n. %1 ha data %2, successiva alla fattura.")
                            .arg(ddt.Numero, ddt.Data.toString(u"dd/MM/yyyy")));
        if (m_dati.TipoDocumento != KRVFatturaPATipoNotaAccredito)
            return;
        if (m_dati.FattureCollegate.isEmpty())
            Rifiuta(QStringLiteral("la nota di accredito non indica la fattura che corregge."));
        qint64 totale = 0;
        for (const TKRVRiepilogoCalcolatoFatturaPA &r : KRVRiepiloghiFatturaPA(m_dati))
            totale += r.ImponibileCentesimi + r.ImpostaCentesimi;
        if (totale < 0)
            Rifiuta(QStringLiteral("il totale %1 è negativo: gli importi di una nota di accredito si indicano "
                                   "positivi.")
                        .arg(Euro(totale)));
        for (const TKRVFatturaCollegata &f : m_dati.FattureCollegate)
            if (f.Data.isValid() && f.Data > m_dati.Data)
                Rifiuta(QStringLiteral("la fattura collegata %1 ha data %2, successiva alla nota di accredito.")
                            .arg(f.Numero, f.Data.toString(u"dd/MM/yyyy")));
    }

    void Righe()
    {
        const QList<TKRVRigaFatturaPA> righe = KRVRigheScritteFatturaPA(m_dati);
        if (righe.size() > 9999)
            Rifiuta(QStringLiteral("%1 righe: al massimo se ne possono scrivere 9999.").arg(righe.size()));
        for (qsizetype i = 0; i < righe.size(); ++i) {
            const TKRVRigaFatturaPA &r = righe.at(i);
            const QString riga = QStringLiteral("riga %1").arg(i + 1);
            const bool zero = KRVCentesimiFatturaPA(r.AliquotaIva) == 0;
            if (zero && r.Natura.isEmpty())
                Rifiuta(riga + QStringLiteral(": l'aliquota IVA è zero e manca la natura."));
            else if (!zero && !r.Natura.isEmpty())
                Rifiuta(riga
                        + QStringLiteral(": la natura \"%1\" si indica solo con aliquota IVA zero.").arg(r.Natura));
            else if (zero && !NatureAmmesse().contains(r.Natura))
                Rifiuta(riga + QStringLiteral(": la natura \"%1\" non è ammessa.").arg(r.Natura));
            if (r.Tipo == KRVRigaTesto)
                continue;
            const double sconto = double(KRVCentesimiFatturaPA(r.Sconto)) / 100.0;
            const qint64 atteso = KRVCentesimiFatturaPA(KRVTotaleRigaFatturaPA(r.PrezzoUnitario, sconto, r.Quantita));
            const qint64 totale = KRVCentesimiFatturaPA(r.Totale);
            if (qAbs(atteso - totale) > 1)
                Rifiuta(riga
                        + QStringLiteral(": il prezzo totale %1 non corrisponde a prezzo unitario, sconto e "
                                         "quantità (%2).")
                              .arg(Euro(totale), Euro(atteso)));
        }
    }

    void Riepiloghi()
    {
        const QList<TKRVRiepilogoCalcolatoFatturaPA> calcolati = KRVRiepiloghiFatturaPA(m_dati);
        for (const TKRVRiepilogoCalcolatoFatturaPA &r : calcolati) {
            const QString nome = NomeRiepilogo(r.AliquotaIva, r.Natura);
            if (qAbs(r.ImponibileCentesimi - r.SommaRigheCentesimi) > 100)
                Rifiuta(QStringLiteral("riepilogo IVA %1: l'imponibile %2 differisce di oltre 1,00 € dalla somma delle "
                                       "righe (%3).")
                            .arg(nome, Euro(r.ImponibileCentesimi), Euro(r.SommaRigheCentesimi)));
            bool nelDocumento = m_dati.Riepiloghi.isEmpty();
            for (const TKRVRiepilogoFatturaPA &d : m_dati.Riepiloghi) {
                if (!StessoRiepilogo(d.AliquotaIva, d.Natura, r))
                    continue;
                nelDocumento = true;
                const qint64 imposta = KRVCentesimiFatturaPA(d.Imposta);
                if (qAbs(imposta - r.ImpostaCentesimi) > 1)
                    Rifiuta(QStringLiteral("riepilogo IVA %1: l'imposta %2 non è l'aliquota applicata "
                                           "all'imponibile (%3).")
                                .arg(nome, Euro(imposta), Euro(r.ImpostaCentesimi)));
            }
            if (!nelDocumento)
                Rifiuta(QStringLiteral("riepilogo IVA %1: manca nei totali del documento.").arg(nome));
        }
        for (const TKRVRiepilogoFatturaPA &d : m_dati.Riepiloghi)
            if (std::none_of(calcolati.cbegin(), calcolati.cend(), [&d](const TKRVRiepilogoCalcolatoFatturaPA &r) {
                    return StessoRiepilogo(d.AliquotaIva, d.Natura, r);
                }))
                Rifiuta(QStringLiteral("riepilogo IVA %1: nessuna riga ha questa aliquota.")
                            .arg(NomeRiepilogo(d.AliquotaIva, d.Natura)));
    }

    void Bollo()
    {
        const qint64 senzaIva = KRVImportiSenzaIvaCentesimi(m_dati);
        if (senzaIva > KRVSogliaBolloCentesimi && !m_dati.Bollo)
            Rifiuta(QStringLiteral("gli importi senza IVA (%1 €) superano 77,47 € e manca il bollo virtuale.")
                        .arg(Euro(senzaIva)));
        else if (senzaIva <= KRVSogliaBolloCentesimi && m_dati.Bollo)
            Rifiuta(QStringLiteral("il bollo virtuale è indicato ma gli importi senza IVA (%1 €) non superano 77,47 €.")
                        .arg(Euro(senzaIva)));
    }

private:
    const TKRVDatiFatturaPA &m_dati;
    QString m_documento;
    QStringList m_messaggi;
};

} // namespace

QStringList KRVControlliSdI(const TKRVDatiFatturaPA &dati)
{
    TControlli controlli(dati);
    controlli.Azienda();
    controlli.Cliente();
    controlli.Documento();
    controlli.Righe();
    controlli.Riepiloghi();
    controlli.Bollo();
    return controlli.Messaggi();
}
