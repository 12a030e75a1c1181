// The command "Fattura elettronica" of the invoice and credit note editors,
// driven as a user would: the folder chosen in its dialog, the file written
// there, the boxes that say so or list what to correct.
#include "KRVEmissioneTestKit.h"
#include "KRVFatturaPATestKit.h"
#include "KRVFattureTestKit.h"
#include "Q3AdminTestKit.h"
#include "uKRVInserimentoFattureVendita.h"
#include "uKRVInserimentoNoteAccredito.h"
#include "uKRVScegliCartella.h"

#include <QDir>
#include <QTemporaryDir>

using namespace KRVTest;

namespace {

const QString ActFatturaElettronica = QStringLiteral("actFatturaElettronica");

QString Anno()
{
    return QString::number(QDate::currentDate().year());
}

} // namespace

class TestComandoFatturaPA : public QObject, public TKRVDocumentoTest<TKRVInserimentoFattureVendita>
{
    Q_OBJECT

public:
    TestComandoFatturaPA() : TKRVDocumentoTest(QStringLiteral("actInserimentoFattureVendita")) {}

private slots:
    void initTestCase() { UseItalianLocale(); }
    void init()
    {
        Prepara();
        m_cartella = std::make_unique<QTemporaryDir>();
        Q3ScriviAzienda(Db().Db(), AziendaFatturaPA());
        TClienteFatturaPA cliente;
        cliente.Codice = QStringLiteral("CFP0001");
        InsertClienteFatturaPA(Db(), cliente);
    }
    void cleanup()
    {
        m_cartella.reset();
        Chiudi();
    }

    void soloPerUnDocumentoSalvatoENonModificato()
    {
        Editor();
        QAction *comando = Action(m_editor, ActFatturaElettronica);
        QCOMPARE(comando->text(), QStringLiteral("Fattura elettronica"));
        QVERIFY(!comando->isEnabled());
        ChooseCustomer(*m_module, m_editor, QStringLiteral("CFP0001"));
        AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
        QVERIFY(!comando->isEnabled());
        Trigger(m_editor, QStringLiteral("actSalva"));
        QVERIFY(comando->isEnabled());
        Field<QCheckBox>(m_editor, QStringLiteral("chkPagato"))->click();
        QVERIFY(!comando->isEnabled());
        Trigger(m_editor, QStringLiteral("actNuovo"));
        QVERIFY(!comando->isEnabled());
    }

    void fatturaSalvataScriveIlFileNellaCartella()
    {
        FatturaDelClienteCFP();
        const int numero = Field<QSpinBox>(m_editor, QStringLiteral("txtNumero"))->value();
        m_responder->Clear();

        Q3AdminTest::ChooseFileWhenShown(m_editor, m_cartella->path());
        Trigger(m_editor, ActFatturaElettronica);

        const QStringList file = QDir(m_cartella->path()).entryList(QDir::Files);
        QCOMPARE(file.size(), 1);
        QVERIFY(file.constFirst().startsWith(QStringLiteral("IT01234567897_")));
        const QString percorso = QDir(m_cartella->path()).filePath(file.constFirst());
        QCOMPARE(m_responder->Messages().size(), 1);
        const TQ3Message box = m_responder->Messages().constFirst();
        QCOMPARE(box.Title, QStringLiteral("Informazioni"));
        QCOMPARE(box.Icon, TQ3MsgIcon::Information);
        QCOMPARE(box.Text, QStringLiteral("La fattura elettronica è stata creata nel file:\n\r")
                               + QDir::toNativeSeparators(percorso));
        QFile scritto(percorso);
        QVERIFY(scritto.open(QIODevice::ReadOnly));
        VALIDA(scritto.readAll());
        QCOMPARE(Db().Rows(QStringLiteral("SELECT NUMERO, FPA_NOME_FILE FROM FATT_VEND")),
                 QStringList({QString::number(numero) + QLatin1Char('|') + file.constFirst()}));
        QCOMPARE(m_module->Main->FolderDialogFatturaPA()->UltimaCartella(), m_cartella->path());
        // Issued: the document is no longer changed.
        QVERIFY(!Modificabile());
    }

    void cartellaNonSceltaNonScriveNulla()
    {
        SaveReady();
        m_responder->Clear();
        auto annulla = new QTimer(m_editor);
        annulla->setInterval(20);
        connect(annulla, &QTimer::timeout, annulla, [annulla] {
            if (auto dialog = qobject_cast<TKRVCartellaFatturaPA *>(QApplication::activeModalWidget())) {
                annulla->deleteLater();
                dialog->reject();
            }
        });
        annulla->start();
        Trigger(m_editor, ActFatturaElettronica);
        QVERIFY(m_responder->Messages().isEmpty());
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FPA_NOME_FILE IS NULL")).toInt(), 1);
    }

    void fatturaRifiutataDiceCosaCorreggere()
    {
        // Customer CLN0000001 has a wrong VAT number and no recipient code.
        SaveReady();
        const int numero = Field<QSpinBox>(m_editor, QStringLiteral("txtNumero"))->value();
        m_responder->Clear();

        Q3AdminTest::ChooseFileWhenShown(m_editor, m_cartella->path());
        Trigger(m_editor, ActFatturaElettronica);

        QVERIFY(QDir(m_cartella->path()).isEmpty());
        QCOMPARE(m_responder->Messages().size(), 1);
        const TQ3Message box = m_responder->Messages().constFirst();
        QCOMPARE(box.Title, QStringLiteral("Attenzione"));
        QCOMPARE(box.Icon, TQ3MsgIcon::Warning);
        const QString documento = QStringLiteral("Fattura %1/%2: ").arg(QString::number(numero), Anno());
        QCOMPARE(box.Text, QStringLiteral("La fattura elettronica non è stata creata.\n\rCorreggere prima:\n\r")
                               + documento
                               + QStringLiteral("la partita IVA del cliente \"01234567890\" non è valida.\n\r")
                               + documento + QStringLiteral("il cliente non ha né codice destinatario né PEC."));
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FPA_NOME_FILE IS NULL")).toInt(), 1);
    }

    void notaDiAccreditoHaIlComando()
    {
        auto nota = Run<TKRVInserimentoNoteAccredito>(*m_module, QStringLiteral("actInserimentoNoteAccredito"));
        QAction *comando = Action(nota, ActFatturaElettronica);
        QVERIFY(!comando->isEnabled());
        ChooseWhenShown<TKRVModSelezionaCliente>(*m_module, nota, QStringLiteral("actModSelezionaCliente"), 1,
                                                 QStringLiteral("CFP0001"));
        Trigger(nota, QStringLiteral("actSelezionaCliente"));
        AddArticle(*m_module, nota, QStringLiteral("ART1"));
        Trigger(nota, QStringLiteral("actSalva"));
        QVERIFY(comando->isEnabled());
        const int numero = Field<QSpinBox>(nota, QStringLiteral("txtNumero"))->value();
        m_responder->Clear();

        Q3AdminTest::ChooseFileWhenShown(nota, m_cartella->path());
        Trigger(nota, ActFatturaElettronica);

        QVERIFY(QDir(m_cartella->path()).isEmpty());
        QCOMPARE(m_responder->Messages().size(), 1);
        QCOMPARE(m_responder->Messages().constFirst().Text,
                 QStringLiteral("La fattura elettronica non è stata creata.\n\rCorreggere prima:\n\rNota di accredito "
                                "%1/%2: la nota di accredito non indica la fattura che corregge.")
                     .arg(QString::number(numero), Anno()));
    }

    void fatturaEmessaSiApreInSolaLettura()
    {
        const int id = FatturaDelClienteCFP();
        const TKRVEmissioneFatturaPA esito =
            KRVEmettiFatturaPA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, id, m_cartella->path());
        QVERIFY(esito.Errori.isEmpty());
        Trigger(m_editor, QStringLiteral("actNuovo"));
        QVERIFY(Modificabile());
        m_responder->Clear();

        QCOMPARE(m_editor->ApriRecord(id), 0);
        QCOMPARE(m_responder->Messages().size(), 1);
        const TQ3Message box = m_responder->Messages().constFirst();
        QCOMPARE(box.Title, QStringLiteral("Attenzione"));
        QCOMPARE(box.Icon, TQ3MsgIcon::Warning);
        QCOMPARE(box.Text,
                 QStringLiteral("La fattura elettronica di questo documento è già stata prodotta (file %1 del %2).\n\r"
                                "Il documento non si può più modificare: le correzioni si fanno con una nota di "
                                "accredito.")
                     .arg(esito.NomeFile, QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));
        QVERIFY(!Modificabile());
        for (const char *consentita : {"actNuovo", "actChiudi", "actStampa", "actSalvaPDF", "actFatturaElettronica"})
            QVERIFY2(Action(m_editor, QString::fromLatin1(consentita))->isEnabled(), consentita);

        // An administrator unlocks it, and the unlocking is recorded.
        QVERIFY(Action(m_editor, QStringLiteral("actSbloccaDocumento"))->isEnabled());
        m_responder->Clear();
        Trigger(m_editor, QStringLiteral("actSbloccaDocumento"));
        QCOMPARE(m_responder->Messages().size(), 1);
        QCOMPARE(m_responder->Messages().constFirst().Title, QStringLiteral("Conferma"));
        QVERIFY(Modificabile());
        QVERIFY(!Action(m_editor, QStringLiteral("actSbloccaDocumento"))->isEnabled());
        QCOMPARE(Db().Rows(QStringLiteral("SELECT FPA_SBLOCCATA_DA, IIF(FPA_SBLOCCATA_IL IS NULL, 'no', 'si') FROM "
                                          "FATT_VEND")),
                 QStringList({QStringLiteral("admin|si")}));
        // Unlocked, it opens for changes.
        m_responder->Clear();
        QCOMPARE(m_editor->ApriRecord(id), 0);
        QVERIFY(m_responder->Messages().isEmpty());
        QVERIFY(Modificabile());
    }

    void sbloccoNegatoNonSblocca()
    {
        const int id = FatturaDelClienteCFP();
        KRVEmettiFatturaPA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, id, m_cartella->path());
        Trigger(m_editor, QStringLiteral("actNuovo"));
        m_editor->ApriRecord(id);
        m_responder->Clear();
        m_responder->Enqueue(TQ3MsgResult::No);
        Trigger(m_editor, QStringLiteral("actSbloccaDocumento"));
        QVERIFY(!Modificabile());
        QCOMPARE(Db().Scalar(QStringLiteral("SELECT COUNT(*) FROM FATT_VEND WHERE FPA_SBLOCCATA_DA IS NULL")).toInt(),
                 1);
    }

    void soloGliAmministratoriPossonoSbloccare()
    {
        LoginWithRights(Db(), QStringLiteral("mario"),
                        {QStringLiteral("Fatture di vendita (visualizzazione)"),
                         QStringLiteral("Fatture di vendita (modifica)")});
        const int id = FatturaDelClienteCFP();
        KRVEmettiFatturaPA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, id, m_cartella->path());
        Trigger(m_editor, QStringLiteral("actNuovo"));
        m_editor->ApriRecord(id);
        QVERIFY(!Modificabile());
        QVERIFY(!Action(m_editor, QStringLiteral("actSbloccaDocumento"))->isEnabled());
        // A new document is open to changes again.
        Trigger(m_editor, QStringLiteral("actNuovo"));
        QVERIFY(Modificabile());
    }

private:
    // A saved invoice of customer CFP0001 with article ART1, in the editor; answers its key.
    int FatturaDelClienteCFP()
    {
        Editor();
        ChooseCustomer(*m_module, m_editor, QStringLiteral("CFP0001"));
        AddArticle(*m_module, m_editor, QStringLiteral("ART1"));
        Trigger(m_editor, QStringLiteral("actSalva"));
        return m_editor->IdRecord();
    }

    // Whether the user can change the document: its pages and its editing commands.
    bool Modificabile() const
    {
        auto pagine = Field<QTabWidget>(m_editor, QStringLiteral("pgcPagine"));
        bool pagineAttive = true;
        for (int i = 0; i < pagine->count(); ++i)
            pagineAttive = pagineAttive && (!pagine->isTabVisible(i) || pagine->widget(i)->isEnabled());
        bool comandiAttivi = true;
        for (const char *comando : {"actElimina", "actSelezionaCliente", "actSelezionaTipoPagamento",
                                    "actAggiungiArticolo", "actInserisciNotaDocumento"})
            comandiAttivi = comandiAttivi && Action(m_editor, QString::fromLatin1(comando))->isEnabled();
        return pagineAttive && comandiAttivi;
    }

    std::unique_ptr<QTemporaryDir> m_cartella;
};

QTEST_MAIN(TestComandoFatturaPA)
#include "tst_comandofatturapa.moc"
