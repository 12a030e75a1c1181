// Invoice and price list prints to PDF: how long a run takes, database reads,
// layout and PDF writing included.
#include "../tests/modules/documenti/printing/KRVStampeTestKit.h"
#include "KRVStampe.h"
#include "KRVTestModule.h"
#include "Q3BenchTimes.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

template <typename Body>
QList<double> Times(int runs, Body &&body)
{
    QList<double> times;
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.restart();
        body();
        times << Q3Milliseconds(timer);
    }
    return times;
}

QList<KRVStampeTest::TRiga> Righe(int count)
{
    QList<KRVStampeTest::TRiga> righe;
    for (int i = 1; i <= count; ++i)
        righe << KRVStampeTest::TRiga{QStringLiteral("COD%1").arg(i, 5, 10, QLatin1Char('0')),
                                      QStringLiteral("Articolo di magazzino numero %1").arg(i), 1.0 + i % 50, 2,
                                      i % 3 ? 0.0 : 10.0};
    return righe;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    TQ3RecordingResponder responder;
    TKRVTestModule module;
    QTemporaryDir dir;
    KRVStampeTest::SetAzienda(module.Database);
    const int breve = KRVStampeTest::InsertFattura(module.Database, 1, Righe(8));
    const int lunga = KRVStampeTest::InsertFattura(module.Database, 2, Righe(500));
    module.Database.Exec(QStringLiteral(
        "EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < 10000) DO BEGIN "
        "INSERT INTO ANA_MAGA (IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, "
        "IDALIQUOTA_IVA, IDUM) VALUES (0, 'ART' || LPAD(:I, 7, '0'), 'Articolo di prova numero ' || :I, 0, 0, 1, "
        "10 + MOD(:I, 90), 5, 1, 1); I = I + 1; END END"));

    const QString file = dir.filePath(QStringLiteral("bench.pdf"));
    StampaFatturaVendita(breve, file, 2); // warms fonts and statements
    Q3PrintTimes("one-page invoice to PDF", Times(21, [&] { StampaFatturaVendita(breve, file, 2); }));
    Q3PrintTimes("500-line invoice to PDF", Times(7, [&] { StampaFatturaVendita(lunga, file, 2); }));

    IKRVStampeHost *host = KRVStampeHost();
    TQ3ReportSystem *system = host->rSystem();
    const QList<double> listino = Times(3, [&] {
        system->RenderObject = host->rRenderPDF();
        system->DefaultDest = TQ3ReportDestination::File;
        system->DoNativeOutput = false;
        system->AllowSetup = false;
        system->OutputFileName = file;
        StampaListinoIVATO();
    });
    Q3PrintTimes("price list of 10,000 articles to PDF", listino);
    std::printf("messages shown: %lld\n", static_cast<long long>(responder.Messages().size()));
    return 0;
}
