// The electronic invoice of a saved invoice or credit note: the document read
// from a real database, its file written into a folder and validated by the
// program's validator and by xmllint, the refusals that write nothing, and
// the file's name, progressive and time recorded on the document.
#include "KRVEmissioneFatturaPA.h"
#include "KRVEmissioneTestKit.h"
#include "KRVFatturaPATestKit.h"
#include "KRVTestCore.h"
#include "Q3ArchivioOpzioni.h"
#include "Q3Controlli.h"

#include <QDir>
#include <QTemporaryDir>
#include <QThread>

using namespace KRVTest;

namespace {

const QString FattVend = QStringLiteral("FATT_VEND");
const QString NoteAccredito = QStringLiteral("NOTE_ACCREDITO");

QByteArray Contenuto(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString Anno()
{
    return QString::number(QDate::currentDate().year());
}

} // namespace

class TestEmissioneFatturaPA : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_core = std::make_unique<TKRVTestCore>();
        m_cartella = std::make_unique<QTemporaryDir>();
        Q3ScriviAzienda(Db().Db(), AziendaFatturaPA());
        Db().Exec(QStringLiteral("UPDATE ALIQUOTE_IVA SET NATURA = 'N4', RIFERIMENTO_NORMATIVO = 'Esente art. 10 DPR "
                                 "633/72' WHERE CODICE = 'N0'"));
        Db().Exec(QStringLiteral("INSERT INTO ALIQUOTE_IVA (CODICE, DESCRIZIONE, ALIQUOTA) VALUES ('10', 'Aliquota "
                                 "ridotta', 10)"));
    }
    void cleanup()
    {
        m_cartella.reset();
        m_core.reset();
    }

    void fatturaConIQuattroTipiDiRiga()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 7, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id, {QStringLiteral("Articolo"), QStringLiteral("Viti"), 2, 10, 10, "20"});
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Servizio"), QStringLiteral("Montaggio"), 1, 50, 0, "10"});
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Testo"), QStringLiteral("Consegna in cantiere"), 1, 0, 0, QString()});
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Non imponibile"), QStringLiteral("Spese anticipate"), 1, 30, 0,
                             QString()});

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        QCOMPARE(esito.NomeFile,
                 QStringLiteral("IT01234567897_%1.xml").arg(QString::number(esito.Progressivo, 36).toUpper()));
        QCOMPARE(esito.Percorso, QDir(m_cartella->path()).filePath(esito.NomeFile));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "TipoDocumento"), QStringList({"TD01"}));
        QCOMPARE(Valori(xml, "Numero"), QStringList({"7"}));
        QCOMPARE(Valori(xml, "Descrizione"),
                 QStringList({"Viti", "Montaggio", "Consegna in cantiere", "Spese anticipate"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"18.00", "50.00", "0.00", "30.00"}));
        QCOMPARE(Valori(xml, "AliquotaIVA").mid(0, 4), QStringList({"20.00", "10.00", "10.00", "0.00"}));
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N1", "N1"}));
        QCOMPARE(Valori(xml, "CodiceValore"), QStringList({"COD-1"}));
        QCOMPARE(Valori(xml, "UnitaMisura"), QStringList({"PZ"}));
        QCOMPARE(Valori(xml, "ImportoTotaleDocumento"), QStringList({"106.60"}));
        QCOMPARE(Valori(xml, "DataScadenzaPagamento"),
                 QStringList({QDate::currentDate().addDays(30).toString(Qt::ISODate)}));
        // Out-of-VAT amounts of 30 euros carry no stamp duty.
        QVERIFY(Valori(xml, "BolloVirtuale").isEmpty());
        QCOMPARE(Valori(xml, "ProgressivoInvio"), QStringList({QString::number(esito.Progressivo, 36).toUpper()}));
        // The document records its file.
        QCOMPARE(Db().Rows(QStringLiteral("SELECT FPA_NOME_FILE, FPA_PROGRESSIVO, "
                                          "IIF(FPA_PRODOTTA IS NULL, 'no', 'si') FROM FATT_VEND WHERE IDFATT_VEND = ")
                           + QString::number(id)),
                 QStringList({esito.NomeFile + QStringLiteral("|") + QString::number(esito.Progressivo)
                              + QStringLiteral("|si")}));
    }

    // Prices with up to 6 decimals and quantities with up to 3 go into the file
    // as they were typed; the line's total is the one the exchange system
    // recomputes. "Non imponibile" lines carry the nature of the module option.
    void decimaliDiPrezziEQuantitaENaturaDellOpzione()
    {
        InsertClienteFatturaPA(Db(), {});
        Q3ScriviOpzioni(Db().Db(), {{QStringLiteral("FATTURAPA_NATURA_NON_IMPONIBILE"), QStringLiteral("N2.2")}});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 8, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Articolo"), QStringLiteral("Viti a peso"), 3, 0.333333, 0, "20"});
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Servizio"), QStringLiteral("Cavo a metro"), 1.125, 8, 12.5, "20"});
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Non imponibile"), QStringLiteral("Rimborso"), 1, 5, 0, QString()});

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "Quantita"), QStringList({"3.00", "1.125", "1.00"}));
        QCOMPARE(Valori(xml, "PrezzoUnitario"), QStringList({"0.333333", "8.00", "5.00"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"1.00", "7.88", "5.00"}));
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N2.2", "N2.2"}));
    }

    void notaDiAccreditoTD04()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), NoteAccredito, 3, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), NoteAccredito, id,
                            {QStringLiteral("Servizio"), QStringLiteral("Reso"), 2, 25, 0, "20"});

        QStringList problemi;
        TKRVDatiFatturaPA dati = KRVLeggiDatiFatturaPA(Db().Db(), EKRVDocumentoFatturaPA::NotaAccredito, id, problemi);
        QVERIFY2(problemi.isEmpty(), qPrintable(problemi.join(QLatin1Char('\n'))));
        QCOMPARE(dati.TipoDocumento, QStringLiteral("TD04"));
        QCOMPARE(dati.Righe.size(), 1);
        QCOMPARE(dati.Righe.at(0).Totale, 50.0);

        // The credit note does not say which invoice it corrects: refused, nothing written.
        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::NotaAccredito, id);
        QCOMPARE(esito.Errori, QStringList({QStringLiteral("Nota di accredito 3/%1: la nota di accredito non indica la "
                                                           "fattura che corregge.")
                                                .arg(Anno())}));
        QVERIFY(QDir(m_cartella->path()).isEmpty());
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM NOTE_ACCREDITO WHERE FPA_NOME_FILE IS NULL "
                                            "AND FPA_PROGRESSIVO IS NULL AND FPA_PRODOTTA IS NULL"))
                     .toInt(),
                 1);

        // With the invoice it corrects, the credit note's file is valid, its amounts positive.
        dati.FattureCollegate = {{QStringLiteral("7"), QDate::currentDate()}};
        dati.ProgressivoInvio = QStringLiteral("1");
        QVERIFY(KRVControlliSdI(dati).isEmpty());
        const QByteArray xml = KRVScriviFatturaPA(dati);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "TipoDocumento"), QStringList({"TD04"}));
        QCOMPARE(Valori(xml, "ImportoTotaleDocumento"), QStringList({"60.00"}));

        // The note saved with the invoice it corrects goes out naming it.
        const QDate dataFattura = QDate::currentDate().addDays(-10);
        Db().Exec(QStringLiteral("UPDATE NOTE_ACCREDITO SET FATT_IDFATT_VEND = 77, FATT_NUMERO = 12, FATT_DATA = '%1' "
                                 "WHERE IDNOTA_ACCREDITO = %2")
                      .arg(dataFattura.toString(Qt::ISODate))
                      .arg(id));
        const TKRVEmissioneFatturaPA collegata = Emetti(EKRVDocumentoFatturaPA::NotaAccredito, id);
        QVERIFY2(collegata.Errori.isEmpty(), qPrintable(collegata.Errori.join(QLatin1Char('\n'))));
        const QByteArray file = Contenuto(collegata.Percorso);
        VALIDA(file);
        QCOMPARE(Valori(file, "TipoDocumento"), QStringList({"TD04"}));
        QCOMPARE(Valori(file, "IdDocumento"), QStringList({"12"}));
        QCOMPARE(Valori(file, "Data").mid(1), QStringList({dataFattura.toString(Qt::ISODate)}));
    }

    // An invoice filled from two delivery notes is a deferred invoice (TD24)
    // that names both; a note dated after the invoice is refused.
    void fatturaDaDueDdtTD24()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 9, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id, {QStringLiteral("Articolo"), QStringLiteral("Viti"), 2, 10, 0, "20"});
        const QDate oggi = QDate::currentDate();
        for (const auto &[numero, giorni] : {std::pair{"12/B", 20}, std::pair{"13", 5}})
            Db().Exec(QStringLiteral("INSERT INTO FATT_VEND_DDT (IDFATT_VEND, NUMERO, DATA) VALUES (%1, '%2', '%3')")
                          .arg(id)
                          .arg(QString::fromLatin1(numero), oggi.addDays(-giorni).toString(Qt::ISODate)));
        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "TipoDocumento"), QStringList({"TD24"}));
        QCOMPARE(Valori(xml, "NumeroDDT"), QStringList({"12/B", "13"}));
        QCOMPARE(Valori(xml, "DataDDT"),
                 QStringList({oggi.addDays(-20).toString(Qt::ISODate), oggi.addDays(-5).toString(Qt::ISODate)}));

        Db().Exec(QStringLiteral("UPDATE FATT_VEND_DDT SET DATA = '%1' WHERE NUMERO = '13'")
                      .arg(oggi.addDays(1).toString(Qt::ISODate)));
        Db().Exec(QStringLiteral("UPDATE FATT_VEND SET DATA = '%1' WHERE IDFATT_VEND = %2")
                      .arg(oggi.addDays(-1).toString(Qt::ISODate))
                      .arg(id));
        const TKRVEmissioneFatturaPA rifiutata = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QCOMPARE(rifiutata.Errori,
                 QStringList({QStringLiteral("Fattura 9/%1: il D.d.T. n. 13 ha data %2, successiva alla fattura.")
                                  .arg(QString::number(oggi.addDays(-1).year()),
                                       oggi.addDays(1).toString(QStringLiteral("dd/MM/yyyy")))}));
    }

    void fatturaEsenteConNaturaEBollo()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 8, QStringLiteral("C001"), true);
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Servizio"), QStringLiteral("Visita medica"), 1, 100, 0, "N0"});

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N4", "N4"}));
        QCOMPARE(Valori(xml, "RiferimentoNormativo"), QStringList({"Esente art. 10 DPR 633/72"}));
        QCOMPARE(Valori(xml, "Imposta"), QStringList({"0.00"}));
        QCOMPARE(Valori(xml, "BolloVirtuale"), QStringList({"SI"}));
        QCOMPARE(Valori(xml, "ImportoBollo"), QStringList({"2.00"}));
    }

    // The lines of an exempt invoice whose rate has no nature take the one of
    // the module option (N4 unless chosen otherwise) with the exemption note.
    void fatturaEsenteConAliquotaSenzaNaturaPrendeQuellaDellOpzione()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 9, QStringLiteral("C001"), true);
        InsertRigaFatturaPA(Db(), FattVend, id, {QStringLiteral("Articolo"), QStringLiteral("Viti"), 1, 100, 0, "20"});
        Q3ScriviOpzioni(Db().Db(), {{QStringLiteral("FATT_IVA_ESENTE_NOTE"),
                                     QStringLiteral("Operazione esente\nart. 10 n. 18 DPR 633/72")}});

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "AliquotaIVA"), QStringList({"0.00", "0.00"}));
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N4", "N4"}));
        QCOMPARE(Valori(xml, "RiferimentoNormativo"), QStringList({"Operazione esente art. 10 n. 18 DPR 633/72"}));

        Q3ScriviOpzioni(Db().Db(), {{QStringLiteral("FATTURAPA_NATURA_ESENTE"), QStringLiteral("N3.2")}});
        const TKRVEmissioneFatturaPA ancora = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(ancora.Errori.isEmpty(), qPrintable(ancora.Errori.join(QLatin1Char('\n'))));
        QCOMPARE(Valori(Contenuto(ancora.Percorso), "Natura"), QStringList({"N3.2", "N3.2"}));
    }

    void privatoConSoloCodiceFiscale()
    {
        TClienteFatturaPA privato;
        privato.RagioneSociale = QStringLiteral("Rossi Mario");
        privato.PartitaIva.clear();
        privato.CodiceFiscale = QStringLiteral("RSSMRA80A01H501U");
        privato.CodiceDestinatario.clear();
        privato.TipoSoggetto = QStringLiteral("P");
        privato.Nome = QStringLiteral("Mario");
        privato.Cognome = QStringLiteral("Rossi");
        QVERIFY(Q3CodiceFiscaleValido(privato.CodiceFiscale));
        InsertClienteFatturaPA(Db(), privato);
        const QByteArray xml = EmettiFatturaSemplice();
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"0000000"}));
        QCOMPARE(Valori(xml, "CodiceFiscale"), QStringList({"01234567897", "RSSMRA80A01H501U"}));
        // Only the firm has a VAT id.
        QCOMPARE(Valori(xml, "IdFiscaleIVA").size(), 1);
        QCOMPARE(Valori(xml, "Nome"), QStringList({"Mario"}));
        QCOMPARE(Valori(xml, "Cognome"), QStringList({"Rossi"}));
        QCOMPARE(Valori(xml, "Denominazione").size(), 1);
    }

    void clienteConPec()
    {
        TClienteFatturaPA pec;
        pec.CodiceDestinatario = QStringLiteral("0000000");
        pec.Pec = QStringLiteral("bianchi@pec.example.it");
        InsertClienteFatturaPA(Db(), pec);
        const QByteArray xml = EmettiFatturaSemplice();
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"0000000"}));
        QCOMPARE(Valori(xml, "PECDestinatario"), QStringList({"bianchi@pec.example.it"}));
    }

    void clienteEstero()
    {
        TClienteFatturaPA estero;
        estero.RagioneSociale = QStringLiteral("Müller GmbH");
        estero.Nazione = QStringLiteral("DE");
        estero.Cap = QStringLiteral("80331");
        estero.Provincia.clear();
        estero.PartitaIva = QStringLiteral("DE123456789");
        estero.CodiceDestinatario.clear();
        InsertClienteFatturaPA(Db(), estero);
        const QByteArray xml = EmettiFatturaSemplice();
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"XXXXXXX"}));
        QCOMPARE(Valori(xml, "IdPaese"), QStringList({"IT", "IT", "DE"}));
        QCOMPARE(Valori(xml, "IdCodice"), QStringList({"01234567897", "01234567897", "123456789"}));
        QCOMPARE(Valori(xml, "CAP"), QStringList({"20100", "00000"}));
        QCOMPARE(Valori(xml, "Provincia"), QStringList({"MI"}));
        QCOMPARE(Valori(xml, "Nazione"), QStringList({"IT", "DE"}));
        QCOMPARE(Valori(xml, "Denominazione").at(1), QStringLiteral("Müller GmbH"));
    }

    void pubblicaAmministrazione()
    {
        TClienteFatturaPA pa;
        pa.RagioneSociale = QStringLiteral("Comune di Torino");
        pa.CodiceDestinatario = QStringLiteral("UFE3RT");
        pa.TipoSoggetto = QStringLiteral("PA");
        InsertClienteFatturaPA(Db(), pa);
        const QByteArray xml = EmettiFatturaSemplice();
        QVERIFY(xml.contains("versione=\"FPA12\""));
        QCOMPARE(Valori(xml, "FormatoTrasmissione"), QStringList({"FPA12"}));
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"UFE3RT"}));
    }

    void pubblicaAmministrazioneConCodiceDiSetteCaratteriRifiutata()
    {
        TClienteFatturaPA pa;
        pa.TipoSoggetto = QStringLiteral("PA");
        InsertClienteFatturaPA(Db(), pa);
        const int id = FatturaConViti(1);
        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QCOMPARE(esito.Errori, QStringList({QStringLiteral("Fattura 1/%1: il codice ufficio \"ABC1234\" della pubblica "
                                                           "amministrazione non è di 6 lettere maiuscole o cifre.")
                                                .arg(Anno())}));
    }

    void caratteriFuoriDalLatin1()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, 4, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Articolo"), QStringLiteral("Prezzo € 10 – “speciale” … così ✓ Ω"), 1, 10,
                             0, "20"});
        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.isEmpty(), qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        const QByteArray xml = Contenuto(esito.Percorso);
        VALIDA(xml);
        QCOMPARE(Valori(xml, "Descrizione"), QStringList({"Prezzo EUR 10 - \"speciale\" ... così ? ?"}));
    }

    void partitaIvaErrataRifiutataSenzaScrivere()
    {
        TClienteFatturaPA errato;
        errato.PartitaIva = QStringLiteral("01234567890");
        InsertClienteFatturaPA(Db(), errato);
        const int id = FatturaConViti(5);

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QCOMPARE(esito.Errori, QStringList({QStringLiteral("Fattura 5/%1: la partita IVA del cliente \"01234567890\" "
                                                           "non è valida.")
                                                .arg(Anno())}));
        QVERIFY(esito.NomeFile.isEmpty());
        QVERIFY(QDir(m_cartella->path()).isEmpty());
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FPA_NOME_FILE IS NULL")).toInt(), 1);
        // A refusal takes no progressive.
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT GEN_ID(GEN_FPA_PROGRESSIVO, 0) FROM RDB$DATABASE")).toInt(), 0);
    }

    void datiAziendaMancanti()
    {
        TQ3Azienda azienda = AziendaFatturaPA();
        azienda.PartitaIva.clear();
        azienda.Indirizzo.clear();
        Q3ScriviAzienda(Db().Db(), azienda);
        InsertClienteFatturaPA(Db(), {});
        const int id = FatturaConViti(6);

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY2(esito.Errori.mid(0, 2)
                     == QStringList({QStringLiteral("Dati azienda: manca la partita IVA."),
                                     QStringLiteral("Dati azienda: manca l'indirizzo.")}),
                 qPrintable(esito.Errori.join(QLatin1Char('\n'))));
        QVERIFY(QDir(m_cartella->path()).isEmpty());
    }

    void nuovaEsportazioneNuovoProgressivo()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = FatturaConViti(10);

        const TKRVEmissioneFatturaPA prima = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        const TKRVEmissioneFatturaPA seconda = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY(prima.Errori.isEmpty() && seconda.Errori.isEmpty());
        QCOMPARE(seconda.Progressivo, prima.Progressivo + 1);
        QVERIFY(seconda.NomeFile != prima.NomeFile);
        QVERIFY(QFileInfo::exists(prima.Percorso) && QFileInfo::exists(seconda.Percorso));
        VALIDA(Contenuto(seconda.Percorso));
        // The file carries its own progressive, not the one it was checked with.
        QCOMPARE(Valori(Contenuto(seconda.Percorso), "ProgressivoInvio"),
                 QStringList({QString::number(seconda.Progressivo, 36).toUpper()}));
        QCOMPARE(Db().Rows(QStringLiteral("SELECT FPA_NOME_FILE, FPA_PROGRESSIVO FROM FATT_VEND")),
                 QStringList({seconda.NomeFile + QStringLiteral("|") + QString::number(seconda.Progressivo)}));
    }

    void documentoEmessoBloccatoFinoAlloSblocco()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = FatturaConViti(11);
        const auto stato = [this, id] { return KRVStatoFatturaPA(m_core->Db(), EKRVDocumentoFatturaPA::Fattura, id); };
        QVERIFY(!stato().Bloccato());

        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QCOMPARE(stato().NomeFile, esito.NomeFile);
        QVERIFY(stato().Prodotta.isValid());
        QVERIFY(stato().Bloccato());

        KRVSbloccaFatturaPA(m_core->Db(), EKRVDocumentoFatturaPA::Fattura, id, QString::fromLatin1(Q3AdminUser));
        QVERIFY(!stato().Bloccato());
        QCOMPARE(stato().SbloccataDa, QString::fromLatin1(Q3AdminUser));
        QVERIFY(stato().SbloccataIl.isValid());

        // A new file issues the document again.
        QThread::msleep(20);
        Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY(stato().Bloccato());
        QCOMPARE(stato().SbloccataDa, QString::fromLatin1(Q3AdminUser));
    }

    void soloUnAmministratoreSblocca()
    {
        InsertClienteFatturaPA(Db(), {});
        const int id = FatturaConViti(12);
        Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        QVERIFY_THROWS_EXCEPTION(EQ3Rifiuto, KRVSbloccaFatturaPA(m_core->Db(), EKRVDocumentoFatturaPA::Fattura, id,
                                                                 QStringLiteral("mario")));
        QVERIFY(KRVStatoFatturaPA(m_core->Db(), EKRVDocumentoFatturaPA::Fattura, id).Bloccato());
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FPA_SBLOCCATA_DA IS NULL")).toInt(),
                 1);
    }

    void documentoNonSalvato() { QVERIFY_THROWS_EXCEPTION(EQ3Exception, Emetti(EKRVDocumentoFatturaPA::Fattura, 999)); }

private:
    const TQ3TestDatabase &Db() const { return m_core->Database; }

    TKRVEmissioneFatturaPA Emetti(EKRVDocumentoFatturaPA tipo, int id)
    {
        return KRVEmettiFatturaPA(m_core->Db(), tipo, id, m_cartella->path());
    }

    // Invoice of that number of customer C001 with one article at 20%; answers its key.
    int FatturaConViti(int numero)
    {
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, numero, QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id, {QStringLiteral("Articolo"), QStringLiteral("Viti"), 1, 10, 0, "20"});
        return id;
    }

    // Invoice 1 of customer C001 with one article at 20%: its file, validated.
    QByteArray EmettiFatturaSemplice()
    {
        const int id = FatturaConViti(1);
        const TKRVEmissioneFatturaPA esito = Emetti(EKRVDocumentoFatturaPA::Fattura, id);
        if (!esito.Errori.isEmpty())
            QTest::qFail(qPrintable(esito.Errori.join(QLatin1Char('\n'))), __FILE__, __LINE__);
        const QByteArray xml = Contenuto(esito.Percorso);
        const QString problemi = ProblemiFatturaPA(xml);
        if (!problemi.isEmpty())
            QTest::qFail(qPrintable(problemi), __FILE__, __LINE__);
        return xml;
    }

    std::unique_ptr<TKRVTestCore> m_core;
    std::unique_ptr<QTemporaryDir> m_cartella;
};

QTEST_GUILESS_MAIN(TestEmissioneFatturaPA)
#include "tst_emissionefatturapa.moc"
