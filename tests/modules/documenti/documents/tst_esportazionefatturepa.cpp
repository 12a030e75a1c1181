// Many saved documents exported at once, into a folder or into one ZIP file:
// each written file validated by the program's validator and by xmllint, the
// refused ones named with what to correct, the summary, the documents'
// records written only once every file is on the disk, and an export stopped
// halfway.
#include "KRVEmissioneTestKit.h"
#include "KRVEsportazioneFatturePA.h"
#include "KRVFatturaPATestKit.h"
#include "KRVTestCore.h"
#include "Q3Controlli.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace KRVTest;

namespace {

const QString FattVend = QStringLiteral("FATT_VEND");

QByteArray Contenuto(const QString &percorso)
{
    QFile file(percorso);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The entries of a ZIP file, extracted by Python's zipfile into the folder.
QStringList Estrai(const QString &zip, const QString &cartella)
{
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-m"), QStringLiteral("zipfile"), QStringLiteral("-e"), zip, cartella});
    python.waitForFinished(60000);
    return QDir(cartella).entryList(QDir::Files, QDir::Name);
}

} // namespace

class TestEsportazioneFatturePA : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void inUnaCartellaScritteERifiutate();
    void inUnFileZip();
    void interrottaTieneQuelloCheHaScritto();
    void fileZipEsistenteNonToccato();
    void cartellaMancanteNonRegistraNulla();

private:
    const TQ3TestDatabase &Db() const { return m_core->Database; }
    // Three invoices of today: 1 and 3 of a valid customer, 2 of one whose
    // VAT number has a wrong check digit. Answers their keys.
    QList<int> TreFatture();
    QStringList Registrate() const;

    std::unique_ptr<TKRVTestCore> m_core;
    std::unique_ptr<QTemporaryDir> m_cartella;
};

void TestEsportazioneFatturePA::init()
{
    m_core = std::make_unique<TKRVTestCore>();
    m_cartella = std::make_unique<QTemporaryDir>();
    Q3ScriviAzienda(Db().Db(), AziendaFatturaPA());
}

void TestEsportazioneFatturePA::cleanup()
{
    m_cartella.reset();
    m_core.reset();
}

QList<int> TestEsportazioneFatturePA::TreFatture()
{
    InsertClienteFatturaPA(Db(), {});
    TClienteFatturaPA sbagliato;
    sbagliato.Codice = QStringLiteral("C002");
    sbagliato.PartitaIva = QStringLiteral("07654321013");
    InsertClienteFatturaPA(Db(), sbagliato);
    QList<int> ids;
    for (int numero = 1; numero <= 3; ++numero) {
        const int id = InsertDocumentoFatturaPA(Db(), FattVend, numero,
                                                numero == 2 ? QStringLiteral("C002") : QStringLiteral("C001"));
        InsertRigaFatturaPA(Db(), FattVend, id,
                            {QStringLiteral("Articolo"), QStringLiteral("Viti"), double(numero), 10, 0, "20"});
        ids << id;
    }
    return ids;
}

QStringList TestEsportazioneFatturePA::Registrate() const
{
    return Db().Rows(QStringLiteral("SELECT NUMERO, FPA_NOME_FILE FROM FATT_VEND WHERE FPA_NOME_FILE IS NOT NULL "
                                    "ORDER BY NUMERO"));
}

void TestEsportazioneFatturePA::inUnaCartellaScritteERifiutate()
{
    const QList<int> ids = TreFatture();
    QList<int> fatti;
    const TKRVEsportazioneFatturePA esito =
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {m_cartella->path(), false},
                            [&fatti](int fatto, int totale) {
                                fatti << fatto * 10 + totale;
                                return true;
                            });
    QCOMPARE(fatti, (QList<int>{13, 23, 33}));
    QCOMPARE(esito.Scritte.size(), 2);
    QCOMPARE(esito.Rifiutate.size(), 1);
    QCOMPARE(esito.NonEsaminate, 0);
    const QString anno = QString::number(QDate::currentDate().year());
    QCOMPARE(esito.Rifiutate.first().Documento, QStringLiteral("Fattura 2/") + anno);
    QVERIFY2(esito.Rifiutate.first().Errori.join(QLatin1Char('\n')).contains(QStringLiteral("07654321013")),
             qPrintable(esito.Rifiutate.first().Errori.join(QLatin1Char('\n'))));
    const QStringList files = QDir(m_cartella->path()).entryList(QDir::Files, QDir::Name);
    QCOMPARE(files, (QStringList{esito.Scritte.at(0).NomeFile, esito.Scritte.at(1).NomeFile}));
    for (const QString &file : files) {
        const QByteArray xml = Contenuto(QDir(m_cartella->path()).filePath(file));
        VALIDA(xml);
    }
    QCOMPARE(Registrate(), (QStringList{QStringLiteral("1|") + esito.Scritte.at(0).NomeFile,
                                        QStringLiteral("3|") + esito.Scritte.at(1).NomeFile}));

    const QString riepilogo = KRVRiepilogoEsportazione(esito);
    QVERIFY2(riepilogo.startsWith(QStringLiteral("Fatture elettroniche scritte: 2\nDocumenti rifiutati: 1\n\n"
                                                 "Da correggere:\n- Fattura 2/")
                                  + anno),
             qPrintable(riepilogo));
    QVERIFY(riepilogo.endsWith(QStringLiteral("File scritti:\nFattura 1/%1: %2\nFattura 3/%1: %3")
                                   .arg(anno, esito.Scritte.at(0).NomeFile, esito.Scritte.at(1).NomeFile)));

    // Exported again, each gets a new progressive.
    const TKRVEsportazioneFatturePA ancora =
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {m_cartella->path(), false});
    QCOMPARE(ancora.Scritte.size(), 2);
    QVERIFY(ancora.Scritte.at(0).NomeFile != esito.Scritte.at(0).NomeFile);
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files).size(), 4);
}

void TestEsportazioneFatturePA::inUnFileZip()
{
    const QList<int> ids = TreFatture();
    const QString zip = m_cartella->filePath(QStringLiteral("fatture.zip"));
    const TKRVEsportazioneFatturePA esito =
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {zip, true});
    QCOMPARE(esito.Scritte.size(), 2);
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList{QStringLiteral("fatture.zip")});
    const QString estratti = m_cartella->filePath(QStringLiteral("estratti"));
    const QStringList files = Estrai(zip, estratti);
    QCOMPARE(files, (QStringList{esito.Scritte.at(0).NomeFile, esito.Scritte.at(1).NomeFile}));
    for (const QString &file : files) {
        const QByteArray xml = Contenuto(QDir(estratti).filePath(file));
        VALIDA(xml);
    }
    QCOMPARE(Registrate().size(), 2);
}

void TestEsportazioneFatturePA::interrottaTieneQuelloCheHaScritto()
{
    const QList<int> ids = TreFatture();
    const TKRVEsportazioneFatturePA esito =
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {m_cartella->path(), false},
                            [](int, int) { return false; });
    QCOMPARE(esito.Scritte.size(), 1);
    QCOMPARE(esito.Rifiutate.size(), 0);
    QCOMPARE(esito.NonEsaminate, 2);
    QCOMPARE(QDir(m_cartella->path()).entryList(QDir::Files), QStringList{esito.Scritte.first().NomeFile});
    QCOMPARE(Registrate(), QStringList{QStringLiteral("1|") + esito.Scritte.first().NomeFile});
    QVERIFY(KRVRiepilogoEsportazione(esito).contains(
        QStringLiteral("Documenti non esaminati (esportazione interrotta): 2")));
}

void TestEsportazioneFatturePA::fileZipEsistenteNonToccato()
{
    const QList<int> ids = TreFatture();
    const QString zip = m_cartella->filePath(QStringLiteral("fatture.zip"));
    QFile esistente(zip);
    QVERIFY(esistente.open(QIODevice::WriteOnly));
    esistente.write("da non perdere");
    esistente.close();
    try {
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {zip, true});
        QFAIL("no failure");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(),
                 QStringLiteral("Il file \"%1\" esiste già: indicarne uno nuovo.").arg(QDir::toNativeSeparators(zip)));
    }
    QCOMPARE(Contenuto(zip), QByteArray("da non perdere"));
    QVERIFY(Registrate().isEmpty());
}

void TestEsportazioneFatturePA::cartellaMancanteNonRegistraNulla()
{
    const QList<int> ids = TreFatture();
    const QString manca = m_cartella->filePath(QStringLiteral("manca"));
    try {
        KRVEsportaFatturePA(Db().Db(), EKRVDocumentoFatturaPA::Fattura, ids, {manca, false});
        QFAIL("no failure");
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(), QStringLiteral("La cartella \"%1\" non esiste.").arg(QDir::toNativeSeparators(manca)));
    }
    QVERIFY(Registrate().isEmpty());
    QCOMPARE(Db().Scalar(QStringLiteral("SELECT GEN_ID(GEN_FPA_PROGRESSIVO, 0) FROM RDB$DATABASE")).toInt(), 0);
}

QTEST_GUILESS_MAIN(TestEsportazioneFatturePA)
#include "tst_esportazionefatturepa.moc"
