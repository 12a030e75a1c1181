// The electronic invoice: the file written for a document, checked by the
// program's own schema validator and by xmllint against the reference schema,
// and the exchange system's checks on the document.
#include "KRVFatturaPA.h"
#include "KRVFatturaPATestKit.h"
#include "KRVRigheDocumento.h"
#include "KRVValidaFatturaPA.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace KRVTest;

namespace {

TKRVRigaFatturaPA Riga(const QString &tipo, double quantita, double prezzo, double sconto, double aliquota,
                       const QString &natura = {})
{
    TKRVRigaFatturaPA r;
    r.Tipo = tipo;
    r.Codice = tipo == KRVRigaArticolo ? QStringLiteral("ART-01") : QString();
    r.Descrizione = QStringLiteral("Voce %1").arg(tipo);
    r.Quantita = quantita;
    r.UnitaMisura = tipo == KRVRigaArticolo ? QStringLiteral("PZ") : QString();
    r.PrezzoUnitario = prezzo;
    r.Sconto = sconto;
    r.Totale = KRVTotaleRigaFatturaPA(prezzo, sconto, quantita);
    r.AliquotaIva = aliquota;
    r.Natura = natura;
    if (!natura.isEmpty())
        r.RiferimentoNormativo = QStringLiteral("Operazione %1").arg(natura);
    return r;
}

TKRVRigaFatturaPA Testo(const QString &descrizione)
{
    TKRVRigaFatturaPA r;
    r.Tipo = KRVRigaTesto;
    r.Descrizione = descrizione;
    return r;
}

// Invoice 12 of 15/03/2026 of a company with an Italian customer company.
TKRVDatiFatturaPA Fattura()
{
    TKRVDatiFatturaPA d;
    d.Azienda.RagioneSociale = QStringLiteral("Ferramenta Rossi & Figli S.r.l.");
    d.Azienda.Indirizzo = QStringLiteral("Via Roma 1");
    d.Azienda.Cap = QStringLiteral("20100");
    d.Azienda.Citta = QStringLiteral("Milano");
    d.Azienda.Provincia = QStringLiteral("MI");
    d.Azienda.PartitaIva = QStringLiteral("01234567897");
    d.Azienda.CodiceFiscale = QStringLiteral("01234567897");
    d.Azienda.ReaUfficio = QStringLiteral("MI");
    d.Azienda.ReaNumero = QStringLiteral("123456");
    d.Azienda.Banca = QStringLiteral("Banca Popolare");
    d.Azienda.Telefono = QStringLiteral("02/123 4567");
    d.Azienda.Fax = QStringLiteral("02");
    d.Azienda.Email = QStringLiteral("info@rossi.example.it");
    d.Azienda.Iban = QStringLiteral("IT60 X054 2811 1010 0000 0123 456");
    d.ProgressivoInvio = QStringLiteral("A1");
    d.Cliente.PartitaIva = QStringLiteral("07654321012");
    d.Cliente.Denominazione = QStringLiteral("Bianchi S.p.A.");
    d.Cliente.Indirizzo = QStringLiteral("Corso Italia 5");
    d.Cliente.Cap = QStringLiteral("10121");
    d.Cliente.Comune = QStringLiteral("Torino");
    d.Cliente.Provincia = QStringLiteral("TO");
    d.Cliente.CodiceDestinatario = QStringLiteral("ABC1234");
    d.Numero = QStringLiteral("12");
    d.Data = QDate(2026, 3, 15);
    d.ScadenzaPagamento = QDate(2026, 4, 30);
    d.Righe = {Riga(KRVRigaArticolo, 2, 10, 0, 22)};
    return d;
}

} // namespace

using TModifica = void (*)(TKRVDatiFatturaPA &);
Q_DECLARE_METATYPE(TModifica)

class TestFatturaPA : public QObject
{
    Q_OBJECT

private slots:
    void tipiDiRiga()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaArticolo, 2, 10, 0, 22), Riga(KRVRigaServizio, 1, 50, 0, 22),
                   Testo(QStringLiteral("Consegna al piano")), Riga(KRVRigaNonImponibile, 1, 30, 0, 0, "N3.1")};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QVERIFY(xml.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        QCOMPARE(Valori(xml, "NumeroLinea"), QStringList({"1", "2", "3", "4"}));
        QCOMPARE(Valori(xml, "CodiceValore"), QStringList({"ART-01"}));
        QCOMPARE(Valori(xml, "Quantita"), QStringList({"2.00", "1.00", "1.00"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"20.00", "50.00", "0.00", "30.00"}));
        QCOMPARE(Valori(xml, "AliquotaIVA"), QStringList({"22.00", "22.00", "22.00", "0.00", "22.00", "0.00"}));
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N3.1", "N3.1"}));
        QCOMPARE(Valori(xml, "ImponibileImporto"), QStringList({"70.00", "30.00"}));
        QCOMPARE(Valori(xml, "Imposta"), QStringList({"15.40", "0.00"}));
        QCOMPARE(Valori(xml, "ImportoTotaleDocumento"), QStringList({"115.40"}));
        QCOMPARE(Valori(xml, "ImportoPagamento"), QStringList({"115.40"}));
        QCOMPARE(Valori(xml, "IBAN"), QStringList({"IT60X0542811101000000123456"}));
        QCOMPARE(Valori(xml, "Telefono"), QStringList({"02/1234567"}));
        QCOMPARE(Valori(xml, "Email"), QStringList({"info@rossi.example.it"}));
        QVERIFY(Valori(xml, "Fax").isEmpty());
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void scontiSulPrezzoUnitario()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaArticolo, 3, 80, 12.5, 22), Riga(KRVRigaServizio, 1, 30, 100, 22)};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "Tipo"), QStringList({"SC", "SC"}));
        QCOMPARE(Valori(xml, "Percentuale"), QStringList({"12.50", "100.00"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"210.00", "0.00"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void resoConQuantitaNegativa()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe.append(Riga(KRVRigaArticolo, -1.5, 10, 0, 22));
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "Quantita"), QStringList({"2.00", "1.50"}));
        QCOMPARE(Valori(xml, "PrezzoUnitario"), QStringList({"10.00", "-10.00"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"20.00", "-15.00"}));
        QCOMPARE(Valori(xml, "ImponibileImporto"), QStringList({"5.00"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void quantitaEPrezziConDecimali()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaArticolo, 1.234, 1.234567, 0, 22), Riga(KRVRigaArticolo, 0.5, 0.12345678, 0, 22)};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "Quantita"), QStringList({"1.234", "0.50"}));
        QCOMPARE(Valori(xml, "PrezzoUnitario"), QStringList({"1.234567", "0.12345678"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"1.52", "0.06"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    // The VAT of each rate is computed on its summed taxable amount: the sum
    // of the lines' VAT would drift by cents on 500 lines.
    void cinquecentoRigheTreAliquote()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe.clear();
        const double aliquote[] = {22, 10, 4};
        qint64 ivaPerRiga[3] = {0, 0, 0};
        qint64 imponibili[3] = {0, 0, 0};
        for (int i = 0; i < 500; ++i) {
            const TKRVRigaFatturaPA r = Riga(KRVRigaArticolo, 3, 0.35 + (i % 17) * 0.01, 0, aliquote[i % 3]);
            d.Righe.append(r);
            imponibili[i % 3] += KRVCentesimiFatturaPA(r.Totale);
            ivaPerRiga[i % 3] += KRVCentesimiFatturaPA(r.Totale * r.AliquotaIva / 100.0);
        }
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "DettaglioLinee").size(), 500);
        const QStringList imposte = Valori(xml, "Imposta");
        QCOMPARE(imposte.size(), 3);
        bool scarto = false;
        for (int a = 0; a < 3; ++a) {
            const qint64 attesa = (imponibili[a] * qint64(aliquote[a]) + 50) / 100;
            QCOMPARE(imposte.at(a), QString::number(double(attesa) / 100.0, 'f', 2));
            scarto = scarto || attesa != ivaPerRiga[a];
            d.Riepiloghi.append({aliquote[a], {}, double(imponibili[a]) / 100.0, double(attesa) / 100.0, {}});
        }
        QVERIFY2(scarto, "the lines' VAT never drifts: the case does not test the summed taxable amount");
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    // A cent of the document's rounding on a rate goes in Arrotondamento.
    void arrotondamentoDelDocumento()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaArticolo, 1, 10.005, 0, 22), Riga(KRVRigaArticolo, 1, 10.004, 0, 22)};
        d.Riepiloghi = {{22, {}, 20.01, 4.40, {}}};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"10.01", "10.00"}));
        QVERIFY(Valori(xml, "Arrotondamento").isEmpty());
        d.Riepiloghi = {{22, {}, 20.02, 4.40, {}}};
        const QByteArray arrotondato = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(arrotondato, "Arrotondamento"), QStringList({"0.01"}));
        QCOMPARE(Valori(arrotondato, "ImponibileImporto"), QStringList({"20.02"}));
        QCOMPARE(Valori(arrotondato, "Imposta"), QStringList({"4.40"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(arrotondato);
    }

    void aliquotaZeroConNatura()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaServizio, 1, 40, 0, 0, "N4"), Riga(KRVRigaArticolo, 1, 100, 0, 22),
                   Riga(KRVRigaServizio, 1, 20, 0, 0, "N2.2"), Riga(KRVRigaServizio, 1, 5, 0, 0, "N4")};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "Natura"), QStringList({"N4", "N2.2", "N4", "N4", "N2.2"}));
        QCOMPARE(Valori(xml, "ImponibileImporto"), QStringList({"45.00", "100.00", "20.00"}));
        QCOMPARE(Valori(xml, "RiferimentoNormativo"), QStringList({"Operazione N4", "Operazione N2.2"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void bolloSuFatturaEsente()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaServizio, 1, 77.48, 0, 0, "N4")};
        d.Bollo = true;
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "BolloVirtuale"), QStringList({"SI"}));
        QCOMPARE(Valori(xml, "ImportoBollo"), QStringList({"2.00"}));
        QCOMPARE(Valori(xml, "ImportoTotaleDocumento"), QStringList({"77.48"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void bolloNonDovutoAllaSoglia()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe = {Riga(KRVRigaServizio, 1, 77.47, 0, 0, "N4"), Riga(KRVRigaServizio, 1, 500, 0, 0, "N3.1")};
        QCOMPARE(KRVControlliSdI(d), QStringList());
        QVERIFY(Valori(KRVScriviFatturaPA(d), "DatiBollo").isEmpty());
    }

    void clientePrivatoConCodiceFiscale()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Cliente = {};
        d.Cliente.Tipo = EKRVClienteFatturaPA::Privato;
        d.Cliente.CodiceFiscale = QStringLiteral("RSSMRA85T10A562S");
        d.Cliente.Nome = QStringLiteral("Mario");
        d.Cliente.Cognome = QStringLiteral("Rossi");
        d.Cliente.Indirizzo = QStringLiteral("Via Verdi 3");
        d.Cliente.Cap = QStringLiteral("00100");
        d.Cliente.Comune = QStringLiteral("Roma");
        d.Cliente.Provincia = QStringLiteral("RM");
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "IdFiscaleIVA").size(), 1); // the seller's only
        QCOMPARE(Valori(xml, "CodiceFiscale"), QStringList({"01234567897", "RSSMRA85T10A562S"}));
        QCOMPARE(Valori(xml, "Nome"), QStringList({"Mario"}));
        QCOMPARE(Valori(xml, "Cognome"), QStringList({"Rossi"}));
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"0000000"}));
        QVERIFY(Valori(xml, "PECDestinatario").isEmpty());
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void clienteConPec()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Cliente.CodiceDestinatario.clear();
        d.Cliente.Pec = QStringLiteral("bianchi@pec.example.it");
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"0000000"}));
        QCOMPARE(Valori(xml, "PECDestinatario"), QStringList({"bianchi@pec.example.it"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void clienteEstero()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Cliente = {};
        d.Cliente.Tipo = EKRVClienteFatturaPA::Estero;
        d.Cliente.CodiceNazione = QStringLiteral("DE");
        d.Cliente.PartitaIva = QStringLiteral("123456789");
        d.Cliente.Denominazione = QStringLiteral("Müller GmbH");
        d.Cliente.Indirizzo = QStringLiteral("Hauptstraße 7");
        d.Cliente.Cap = QStringLiteral("10115");
        d.Cliente.Comune = QStringLiteral("Berlin");
        d.Cliente.Provincia = QStringLiteral("BE");
        d.Righe = {Riga(KRVRigaArticolo, 1, 500, 0, 0, "N3.2")};
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "CodiceDestinatario"), QStringList({"XXXXXXX"}));
        QCOMPARE(Valori(xml, "IdPaese"), QStringList({"IT", "IT", "DE"}));
        QCOMPARE(Valori(xml, "CAP"), QStringList({"20100", "00000"}));
        QCOMPARE(Valori(xml, "Provincia"), QStringList({"MI"}));
        QCOMPARE(Valori(xml, "Nazione"), QStringList({"IT", "DE"}));
        QCOMPARE(Valori(xml, "Denominazione").last(), QStringLiteral("Müller GmbH"));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void notaDiAccredito()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.TipoDocumento = KRVFatturaPATipoNotaAccredito;
        d.Numero = QStringLiteral("3");
        d.FattureCollegate = {{QStringLiteral("12"), QDate(2026, 3, 15)}};
        d.Data = QDate(2026, 3, 20);
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "TipoDocumento"), QStringList({"TD04"}));
        QCOMPARE(Valori(xml, "IdDocumento"), QStringList({"12"}));
        QCOMPARE(Valori(xml, "Data"), QStringList({"2026-03-20", "2026-03-15"}));
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"20.00"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void caratteriFuoriDalloSchema()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe.first().Descrizione = QStringLiteral("Prezzo 10 € – “speciale” ‘x’ — Ω… à°\x01\x07"
                                                     "fine\ttab 😀 <&>");
        d.Righe.first().UnitaMisura = QStringLiteral("m²");
        d.Numero = QStringLiteral("12/À");
        d.Cliente.Denominazione = QStringLiteral("Żabka “Due” S.r.l.");
        const QByteArray xml = KRVScriviFatturaPA(d);
        QCOMPARE(Valori(xml, "Descrizione"), QStringList({"Prezzo 10 EUR - \"speciale\" 'x' - ?... à°fine tab ? <&>"}));
        QCOMPARE(Valori(xml, "UnitaMisura"), QStringList({"m2"}));
        QCOMPARE(Valori(xml, "Numero"), QStringList({"12/A"}));
        QCOMPARE(Valori(xml, "Denominazione").last(), QStringLiteral("Zabka \"Due\" S.r.l."));
        QVERIFY(!xml.startsWith("\xEF\xBB\xBF"));
        VALIDA(xml);
    }

    void descrizioneLungaDivisa()
    {
        TKRVDatiFatturaPA d = Fattura();
        d.Righe.first().Descrizione = QString(2500, QLatin1Char('a'));
        const QByteArray xml = KRVScriviFatturaPA(d);
        const QStringList descrizioni = Valori(xml, "Descrizione");
        QCOMPARE(descrizioni.size(), 3);
        QCOMPARE(descrizioni.join(QString()), QString(2500, QLatin1Char('a')));
        QCOMPARE(descrizioni.at(0).size(), 1000);
        QCOMPARE(Valori(xml, "PrezzoTotale"), QStringList({"20.00", "0.00", "0.00"}));
        QCOMPARE(Valori(xml, "Quantita"), QStringList({"2.00"}));
        QCOMPARE(KRVControlliSdI(d), QStringList());
        VALIDA(xml);
    }

    void nomeDelFile()
    {
        QCOMPARE(KRVNomeFileFatturaPA(QStringLiteral("01234567897"), 1), QStringLiteral("IT01234567897_1.xml"));
        QCOMPARE(KRVNomeFileFatturaPA(QStringLiteral("01234567897"), 36), QStringLiteral("IT01234567897_10.xml"));
        QCOMPARE(KRVNomeFileFatturaPA(QStringLiteral("01234567897"), 60466175),
                 QStringLiteral("IT01234567897_ZZZZZ.xml"));
        QCOMPARE(KRVNomeFileFatturaPA(QStringLiteral("01234567897"), 60466176), QString());
        QCOMPARE(KRVNomeFileFatturaPA(QStringLiteral("01234567897"), 0), QString());
    }

    void controlliSdI_data()
    {
        QTest::addColumn<TModifica>("modifica");
        QTest::addColumn<QString>("messaggio");
        QTest::newRow("destinatario") << TModifica([](TKRVDatiFatturaPA &d) { d.Cliente.CodiceDestinatario.clear(); })
                                      << "Fattura 12/2026: il cliente non ha né codice destinatario né PEC.";
        QTest::newRow("pec con codice") << TModifica([](TKRVDatiFatturaPA &d) { d.Cliente.Pec = "a@pec.it"; })
                                        << "Fattura 12/2026: la PEC \"a@pec.it\" si indica solo con il codice "
                                           "destinatario \"0000000\", non con \"ABC1234\".";
        QTest::newRow("codice corto") << TModifica([](TKRVDatiFatturaPA &d) { d.Cliente.CodiceDestinatario = "AB12"; })
                                      << "Fattura 12/2026: il codice destinatario \"AB12\" non è di 7 lettere "
                                         "maiuscole o cifre.";
        QTest::newRow("codice estero") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Cliente.CodiceDestinatario = "XXXXXXX";
        }) << "Fattura 12/2026: il codice destinatario \"XXXXXXX\" è solo per i clienti esteri.";
        QTest::newRow("estero italiano") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Cliente.Tipo = EKRVClienteFatturaPA::Estero;
        }) << "Fattura 12/2026: il cliente estero ha la nazione \"IT\".";
        QTest::newRow("partita iva cliente")
            << TModifica([](TKRVDatiFatturaPA &d) { d.Cliente.PartitaIva = "01234567890"; })
            << "Fattura 12/2026: la partita IVA del cliente \"01234567890\" non è valida.";
        QTest::newRow("partita iva azienda")
            << TModifica([](TKRVDatiFatturaPA &d) { d.Azienda.PartitaIva = "01234567890"; })
            << "Fattura 12/2026: la partita IVA dell'azienda \"01234567890\" non è valida.";
        QTest::newRow("regime") << TModifica([](TKRVDatiFatturaPA &d) { d.Azienda.RegimeFiscale = "RF03"; })
                                << "Fattura 12/2026: il regime fiscale dell'azienda \"RF03\" non esiste.";
        QTest::newRow("iban") << TModifica([](TKRVDatiFatturaPA &d) { d.Azienda.Iban = "IT60X0542811101000000123457"; })
                              << "Fattura 12/2026: l'IBAN dell'azienda \"IT60X0542811101000000123457\" non è valido.";
        QTest::newRow("codice fiscale privato") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Cliente.Tipo = EKRVClienteFatturaPA::Privato;
            d.Cliente.Nome = "Mario";
            d.Cliente.Cognome = "Rossi";
            d.Cliente.CodiceFiscale = "RSSMRA85T10A562T";
        }) << "Fattura 12/2026: il codice fiscale del cliente \"RSSMRA85T10A562T\" non è valido.";
        QTest::newRow("numero senza cifre") << TModifica([](TKRVDatiFatturaPA &d) { d.Numero = "ABC"; })
                                            << "Fattura ABC/2026: il numero \"ABC\" non contiene cifre.";
        QTest::newRow("data futura") << TModifica([](TKRVDatiFatturaPA &d) { d.Data = QDate(2999, 1, 2); })
                                     << "Fattura 12/2999: la data \"02/01/2999\" non è tra il 1970 e oggi.";
        QTest::newRow("nota senza fattura")
            << TModifica([](TKRVDatiFatturaPA &d) { d.TipoDocumento = KRVFatturaPATipoNotaAccredito; })
            << "Nota di accredito 12/2026: la nota di accredito non indica la fattura che corregge.";
        QTest::newRow("fattura collegata successiva")
            << TModifica([](TKRVDatiFatturaPA &d) {
                   d.TipoDocumento = KRVFatturaPATipoNotaAccredito;
                   d.FattureCollegate = {{"15", QDate(2026, 3, 16)}};
               })
            << "Nota di accredito 12/2026: la fattura collegata 15 ha data 16/03/2026, successiva alla nota di "
               "accredito.";
        QTest::newRow("nota negativa")
            << TModifica([](TKRVDatiFatturaPA &d) {
                   d.TipoDocumento = KRVFatturaPATipoNotaAccredito;
                   d.FattureCollegate = {{"15", QDate(2026, 3, 1)}};
                   d.Righe = {Riga(KRVRigaArticolo, 2, -10, 0, 22)};
               })
            << "Nota di accredito 12/2026: il totale -24,40 è negativo: gli importi di una nota di accredito si "
               "indicano positivi.";
        QTest::newRow("00423 prezzo totale") << TModifica([](TKRVDatiFatturaPA &d) { d.Righe.first().Totale = 20.02; })
                                             << "Fattura 12/2026: riga 1: il prezzo totale 20,02 non corrisponde a "
                                                "prezzo unitario, sconto e quantità (20,00).";
        QTest::newRow("00422 imponibile")
            << TModifica([](TKRVDatiFatturaPA &d) {
                   d.Riepiloghi = {{22, {}, 21.01, 4.62, {}}};
               })
            << "Fattura 12/2026: riepilogo IVA 22,00%: l'imponibile 21,01 differisce di oltre 1,00 € dalla somma "
               "delle righe (20,00).";
        QTest::newRow("00421 imposta")
            << TModifica([](TKRVDatiFatturaPA &d) {
                   d.Riepiloghi = {{22, {}, 20.00, 4.42, {}}};
               })
            << "Fattura 12/2026: riepilogo IVA 22,00%: l'imposta 4,42 non è l'aliquota applicata all'imponibile "
               "(4,40).";
        QTest::newRow("00443 aliquota nei totali") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Riepiloghi = {{22, {}, 20.00, 4.40, {}}, {10, {}, 0, 0, {}}};
        }) << "Fattura 12/2026: riepilogo IVA 10,00%: nessuna riga ha questa aliquota.";
        QTest::newRow("00443 aliquota delle righe") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Righe.append(Riga(KRVRigaServizio, 1, 10, 0, 10));
            d.Riepiloghi = {{22, {}, 20.00, 4.40, {}}};
        }) << "Fattura 12/2026: riepilogo IVA 10,00%: manca nei totali del documento.";
        QTest::newRow("00400 natura mancante")
            << TModifica([](TKRVDatiFatturaPA &d) { d.Righe.first().AliquotaIva = 0; })
            << "Fattura 12/2026: riga 1: l'aliquota IVA è zero e manca la natura.";
        QTest::newRow("00401 natura con aliquota")
            << TModifica([](TKRVDatiFatturaPA &d) { d.Righe.first().Natura = "N4"; })
            << "Fattura 12/2026: riga 1: la natura \"N4\" si indica solo con aliquota IVA zero.";
        QTest::newRow("00445 natura generica")
            << TModifica([](TKRVDatiFatturaPA &d) { d.Righe = {Riga(KRVRigaServizio, 1, 10, 0, 0, "N2")}; })
            << "Fattura 12/2026: riga 1: la natura \"N2\" non è ammessa.";
        QTest::newRow("bollo mancante") << TModifica([](TKRVDatiFatturaPA &d) {
            d.Righe = {Riga(KRVRigaServizio, 1, 77.48, 0, 0, "N4")};
        }) << "Fattura 12/2026: gli importi senza IVA (77,48 €) superano 77,47 € e manca il bollo virtuale.";
        QTest::newRow("bollo non dovuto")
            << TModifica([](TKRVDatiFatturaPA &d) {
                   d.Righe = {Riga(KRVRigaServizio, 1, 77.47, 0, 0, "N4")};
                   d.Bollo = true;
               })
            << "Fattura 12/2026: il bollo virtuale è indicato ma gli importi senza IVA (77,47 €) non superano "
               "77,47 €.";
    }

    void controlliSdI()
    {
        QFETCH(TModifica, modifica);
        QFETCH(QString, messaggio);
        TKRVDatiFatturaPA d = Fattura();
        QCOMPARE(KRVControlliSdI(d), QStringList());
        modifica(d);
        QCOMPARE(KRVControlliSdI(d), QStringList({messaggio}));
    }

    void schemaRifiutaXmlRotto()
    {
        const QStringList malformato = KRVValidaSchemaFatturaPA("<?xml version=\"1.0\"?>\n<a>\n<b></a>");
        QVERIFY(!malformato.isEmpty());
        QVERIFY2(malformato.first().startsWith(QStringLiteral("Riga 3")), qPrintable(malformato.first()));
        QVERIFY(malformato.first().contains(QStringLiteral("non è un XML ben formato")));

        QByteArray xml = KRVScriviFatturaPA(Fattura());
        xml.replace("<Divisa>EUR</Divisa>", "<Divisa>euro</Divisa>");
        const QString riga = QString::number(xml.left(xml.indexOf("<Divisa>")).count('\n') + 1);
        const QStringList errori = KRVValidaSchemaFatturaPA(xml);
        QCOMPARE(errori.size(), 1);
        QVERIFY2(errori.first().startsWith(QStringLiteral("Riga %1, elemento Divisa: il valore non ha il formato "
                                                          "richiesto")
                                               .arg(riga)),
                 qPrintable(errori.first()));
        QVERIFY(riga.toInt() > 1);

        QByteArray euro = KRVScriviFatturaPA(Fattura());
        euro.replace("Voce Articolo", "Voce \xE2\x82\xAC Articolo");
        const QStringList latino = KRVValidaSchemaFatturaPA(euro);
        QCOMPARE(latino.size(), 1);
        QVERIFY2(latino.first().contains(QStringLiteral("elemento Descrizione: il valore non ha il formato richiesto")),
                 qPrintable(latino.first()));

        QByteArray senzaNumero = KRVScriviFatturaPA(Fattura());
        senzaNumero.replace("<Numero>12</Numero>", "");
        const QStringList mancante = KRVValidaSchemaFatturaPA(senzaNumero);
        QCOMPARE(mancante.size(), 1);
        QVERIFY2(mancante.first().contains(QStringLiteral("elemento mancante, in più o fuori posto")),
                 qPrintable(mancante.first()));
    }

    void esempiDellAgenzia()
    {
        const QString esempi = QStringLiteral(Q3_FATTURAPA_ESEMPI);
        if (!QFileInfo::exists(esempi))
            QSKIP("the agency's samples are not beside the project");
        QFile valido(esempi + QStringLiteral("/IT01234567890_FPR01.xml"));
        QVERIFY(valido.open(QIODevice::ReadOnly));
        QCOMPARE(KRVValidaSchemaFatturaPA(valido.readAll()), QStringList());
        // The agency's second sample puts ContattiTrasmittente out of place.
        QFile fuoriPosto(esempi + QStringLiteral("/IT01234567890_FPR02.xml"));
        QVERIFY(fuoriPosto.open(QIODevice::ReadOnly));
        const QStringList errori = KRVValidaSchemaFatturaPA(fuoriPosto.readAll());
        QCOMPARE(errori.size(), 1);
        QVERIFY2(errori.first().contains(QStringLiteral("ContattiTrasmittente")), qPrintable(errori.first()));
    }
};

QTEST_GUILESS_MAIN(TestFatturaPA)
#include "tst_fatturapa.moc"
