// The electronic invoices of one year exported to one ZIP file, each document
// read, checked against the schema and the exchange system's checks, written
// and recorded: the whole time, the time per document, and the reading alone
// (the documents' statements and their records in one transaction, nothing
// checked or written) for comparison. The firm is a generated one: the year of a `stress` firm
// (20,000 invoices), made into a temporary database unless a database is
// given. The export records its files on the documents: the given database
// is changed as an export from the application would change it.
//
//   bench_fatturepa [--database stress.fdb] [--anno 2025]
#include "KRVEsportazioneFatturePA.h"
#include "KRVGeneraAzienda.h"
#include "KRVTestModule.h"
#include "Q3Azienda.h"
#include "Q3BenchTimes.h"
#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

// The firm of the generated data, with the fiscal data the file needs when
// the generated firm lacks them.
void AziendaCompleta(const QSqlDatabase &db)
{
    TQ3Azienda azienda = Q3LeggiAzienda(db);
    if (!azienda.PartitaIva.isEmpty())
        return;
    azienda.RagioneSociale = QStringLiteral("Ferramenta Rossi S.r.l.");
    azienda.Indirizzo = QStringLiteral("Via Roma 1");
    azienda.Cap = QStringLiteral("20100");
    azienda.Citta = QStringLiteral("Milano");
    azienda.Provincia = QStringLiteral("MI");
    azienda.Nazione = QStringLiteral("Italia");
    azienda.PartitaIva = QStringLiteral("01234567897");
    azienda.CodiceFiscale = QStringLiteral("01234567897");
    azienda.Iban = QStringLiteral("IT60X0542811101000000123456");
    Q3ScriviAzienda(db, azienda);
}

QList<int> FattureAnno(const QSqlDatabase &db, int anno)
{
    QList<int> ids;
    QSqlQuery query =
        OpenQuery(db, QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND WHERE ANNO = %1 ORDER BY NUMERO").arg(anno));
    while (query.next())
        ids << query.value(0).toInt();
    return ids;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOptions(
        {{QStringLiteral("database"), QStringLiteral("Database of a generated firm."), QStringLiteral("db")},
         {QStringLiteral("anno"), QStringLiteral("Year of the invoices (default: the last one)."),
          QStringLiteral("anno")}});
    parser.process(app);
    try {
        QTemporaryDir dir;
        TQ3DatabaseTarget target;
        target.Database = parser.value(QStringLiteral("database"));
        if (target.Database.isEmpty()) {
            target.Database = dir.filePath(QStringLiteral("stress-un-anno.fdb"));
            TKRVOpzioniGenerazione opzioni;
            opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("stress"));
            opzioni.Dimensione.Anni = 1;
            opzioni.AnnoFinale = 2025;
            KRVPreparaDatabase(target);
            const TKRVRiepilogoGenerazione r = KRVGeneraAzienda(target, opzioni);
            std::printf("generated: one year of the stress firm, %lld invoices with %lld lines, in %.1f s\n",
                        static_cast<long long>(r.Fatture), static_cast<long long>(r.RigheFatture), r.Secondi);
        }
        TKRVModuloInizializzato modulo(target.ConnectionString());
        const QSqlDatabase db = modulo.Db();
        AziendaCompleta(db);
        const int anno = parser.isSet(QStringLiteral("anno"))
                             ? parser.value(QStringLiteral("anno")).toInt()
                             : QueryScalar(db, QStringLiteral("SELECT MAX(ANNO) FROM FATT_VEND")).toInt();
        const QList<int> ids = FattureAnno(db, anno);

        QElapsedTimer timer;
        timer.start();
        {
            TQ3Transaction lettura(db);
            TKRVLettoreFatturaPA lettore(db, EKRVDocumentoFatturaPA::Fattura);
            for (const int id : ids) {
                QStringList problemi;
                lettore.Leggi(id, problemi);
            }
        }
        const double lettura = Q3Milliseconds(timer);

        const QString zip = dir.filePath(QStringLiteral("fatture-%1.zip").arg(anno));
        timer.restart();
        const TKRVEsportazioneFatturePA esito =
            KRVEsportaFatturePA(db, EKRVDocumentoFatturaPA::Fattura, ids, {zip, true});
        const double esportazione = Q3Milliseconds(timer);

        std::printf("year %d: %lld invoices, %lld written, %lld refused, ZIP %lld kB\n", anno,
                    static_cast<long long>(ids.size()), static_cast<long long>(esito.Scritte.size()),
                    static_cast<long long>(esito.Rifiutate.size()), QFileInfo(zip).size() / 1024);
        std::printf("export to ZIP (read, check, write, record): %.1f s, %.2f ms per document\n", esportazione / 1000.0,
                    esportazione / qMax(qsizetype(1), ids.size()));
        std::printf("reading alone: %.1f s, %.2f ms per document; export / reading: %.2f\n", lettura / 1000.0,
                    lettura / qMax(qsizetype(1), ids.size()), esportazione / qMax(1.0, lettura));
        for (const TKRVEsitoFatturaPA &rifiutata : esito.Rifiutate.mid(0, 5))
            std::printf("refused: %s\n", qPrintable(rifiutata.Errori.join(QStringLiteral(" / "))));
    } catch (const EQ3Exception &e) {
        std::fprintf(stderr, "bench_fatturepa: %s\n", qPrintable(e.Message()));
        return 1;
    }
    return 0;
}
