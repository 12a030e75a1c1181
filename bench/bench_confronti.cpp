// The module's own paths against the same statements run raw through the
// Firebird client library, on a generated firm's database: start-up on an
// up-to-date database against a bare connect, the article list's page changes,
// the customer list's fill (and the memory it holds), the category window's
// fill, the invoice list of the last year with and without a line-text filter,
// an invoice, the last year's summaries, statistics prints and the price list
// printed to PDF and to the preview window (until its first page is shown),
// and the two statistics windows' refresh. Prints min / median
// / max of both and their ratio as a Markdown table, and writes it to a file
// when asked.
//
// Where both paths are measured together their runs alternate; the start-up's
// parts share the bare attach as their reference. The warehouse module's
// invoice tables, which three of the statistics prints always read, are
// created empty in the database when it has none.
//
//   bench_confronti --database stress.fdb [--tabella docs/performance.md]
#include "KRVAggiornaDatabase.h"
#include "KRVFatturatoPerCliente.h"
#include "KRVRedditivitaMensile.h"
#include "KRVStampe.h"
#include "KRVStampeRiepiloghi.h"
#include "KRVStatisticheFatturato.h"
#include "KRVStatisticheFatturatoRighe.h"
#include "KRVTestModule.h"
#include "Q3Connection.h"
#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3FbClient.h"
#include "Q3HostSchema.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Packages.h"
#include "Q3Sql.h"
#include "Q3Users.h"
#include "uKRVGestioneCategorieAnaMaga.h"
#include "uKRVMain.h"
#include "uKRVRicercaArticoli.h"
#include "uKRVRicercaClienti.h"
#include "uKRVRicercaFattureVendita.h"
#include "uKRVStatisticheFatturato.h"
#include "uKRVStatisticheRedditivitaMensile.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSpinBox>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace {

struct TMisure
{
    double Min = 0;
    double Mediana = 0;
    double Max = 0;
};

// Milliseconds of each of `runs` calls, after one call that is not timed.
TMisure Misura(int runs, const std::function<void(int run)> &call)
{
    call(0); // once untimed: caches filled, a pending upgrade done
    QList<double> times;
    QElapsedTimer timer;
    for (int run = 0; run < runs; ++run) {
        timer.start();
        call(run);
        times << double(timer.nsecsElapsed()) / 1e6;
    }
    std::sort(times.begin(), times.end());
    return {times.constFirst(), times.at(times.size() / 2), times.constLast()};
}

struct TConfronto
{
    QString Nome;
    QString Cosa;
    TMisure Modulo;
    TMisure Grezzo;
};

// The module's path and the raw one, each run once untimed and then `runs`
// times, a run of one and a run of the other in turn, so that a change in the
// machine's load weighs on both alike.
void Confronta(TConfronto &confronto, int runs, const std::function<void(int run)> &modulo,
               const std::function<void(int run)> &grezzo)
{
    modulo(0);
    grezzo(0);
    QList<double> times[2];
    QElapsedTimer timer;
    for (int run = 0; run < runs; ++run) {
        timer.start();
        modulo(run);
        times[0] << double(timer.nsecsElapsed()) / 1e6;
        timer.start();
        grezzo(run);
        times[1] << double(timer.nsecsElapsed()) / 1e6;
    }
    for (QList<double> &t : times)
        std::sort(t.begin(), t.end());
    confronto.Modulo = {times[0].constFirst(), times[0].at(runs / 2), times[0].constLast()};
    confronto.Grezzo = {times[1].constFirst(), times[1].at(runs / 2), times[1].constLast()};
}

QString Riga(const TConfronto &c)
{
    const auto ms = [](double v) { return QString::number(v, 'f', v < 10 ? 2 : 1); };
    return QStringLiteral("| %1 | %2 | %3 / %4 / %5 | %6 / %7 / %8 | %9 |")
        .arg(c.Nome, c.Cosa, ms(c.Modulo.Min), ms(c.Modulo.Mediana), ms(c.Modulo.Max), ms(c.Grezzo.Min),
             ms(c.Grezzo.Mediana), ms(c.Grezzo.Max))
        .arg(c.Modulo.Mediana / c.Grezzo.Mediana, 0, 'f', 2);
}

// The article list's page statement, as the list composes it with no filter.
QByteArray PaginaArticoli(int page)
{
    return QStringLiteral("SELECT FIRST 200 SKIP %1 ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM ANA_MAGA "
                          "LEFT JOIN CATEGORIE_ANA_MAGA ON ANA_MAGA.IDCATEGORIA_ANA_MAGA = "
                          "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA  ORDER BY UPPER(CODICE)")
        .arg((page - 1) * 200)
        .toUtf8();
}

// The raw statement, prepared and run to its last row in a transaction of its own.
void Grezzo(TQ3FbClient &client, const QByteArray &sql)
{
    client.Begin();
    TQ3FbStatement statement(client, sql);
    statement.FetchAll();
    client.Commit();
}

// The statements a print reads, as the report datasets hold them, with the key written in.
QList<QByteArray> StatementsOf(IKRVStampeHost *host, const QStringList &datasets, const QString &parameter, int key)
{
    QList<QByteArray> statements;
    for (const QString &name : datasets) {
        QString sql = host->StampeDataset(name)->SQL();
        if (!parameter.isEmpty())
            sql.replace(parameter, QString::number(key), Qt::CaseInsensitive);
        statements << sql.toUtf8();
    }
    return statements;
}

// The statement with its year parameters (:ANNO1, :ANNO2, ...) written in.
QByteArray ConAnno(const QString &sql, int anno)
{
    QString testo = sql;
    testo.replace(QRegularExpression(QStringLiteral(":ANNO[0-9]+")), QString::number(anno));
    return testo.toUtf8();
}

// The warehouse module's two invoice tables, empty, as that module creates
// them, when the database has none.
void TabelleMagazzino(const QSqlDatabase &db)
{
    if (KRVEsisteFattAcc(db))
        return;
    ExecSQL(db, QStringLiteral(
                    "CREATE TABLE FATT_ACC (IDFATT_ACC INTEGER NOT NULL, NUMERO INTEGER NOT NULL, DATA DATE NOT NULL, "
                    "ANNO INTEGER NOT NULL, CLI_CODICE VARCHAR(20), CLI_RAGIONESOCIALE VARCHAR(100), PAGATO "
                    "VARCHAR(5) DEFAULT 'False' NOT NULL, SCADENZA_PAGAMENTO DATE, TOTALE_IMPONIBILE DECIMAL(13,2) "
                    "DEFAULT 0 NOT NULL, TOTALE_IMPOSTA DECIMAL(13,2) DEFAULT 0 NOT NULL, TOTALE_DOCUMENTO "
                    "DECIMAL(13,2) DEFAULT 0 NOT NULL, CONSTRAINT PK_FATT_ACC PRIMARY KEY(IDFATT_ACC), CONSTRAINT "
                    "UK1_FATT_ACC UNIQUE(NUMERO, ANNO))"));
    ExecSQL(db, QStringLiteral("CREATE TABLE FATT_ACC_DETT (IDFATT_ACC_DETT INTEGER NOT NULL, IDFATT_ACC INTEGER NOT "
                               "NULL, CODICE VARCHAR(20), DESCRIZIONE BLOB SUB_TYPE 1, IDCATEGORIA INTEGER, PREZZO "
                               "DECIMAL(13,2), QUANTITA DECIMAL(13,2), IMPORTO DECIMAL(13,2), COSTO DECIMAL(13,2), "
                               "TIPO_RIGA VARCHAR(50) NOT NULL, CONSTRAINT PK_FATT_ACC_DETT PRIMARY "
                               "KEY(IDFATT_ACC_DETT))"));
}

// Megabytes the process holds in memory.
double MemoriaResidente()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').constFirst().toDouble() / 1024.0;
    }
    return 0;
}

// The next PDF of a print: the report engine's file back-end, no dialog.
// Where a print goes: to a PDF file, written whole, or to the preview window,
// which shows its first page (and is closed as soon as it is shown).
enum class TUscita { PDF, Video };

void Uscita(IKRVStampeHost *host, TUscita uscita, const QString &file)
{
    TQ3ReportSystem *system = host->rSystem();
    system->RenderObject = host->rRenderPDF();
    system->DefaultDest = uscita == TUscita::PDF ? TQ3ReportDestination::File : TQ3ReportDestination::Preview;
    system->DoNativeOutput = uscita == TUscita::Video;
    system->AllowSetup = false;
    system->OutputFileName = file;
}

// Closes the print preview once it is on the screen with its first page.
class TChiudiAnteprima : public QObject
{
public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show && object->objectName() == QLatin1String("Q3ReportPreview"))
            QMetaObject::invokeMethod(object, "reject", Qt::QueuedConnection);
        return false;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOptions(
        {{QStringLiteral("database"), QStringLiteral("Database of a generated firm."), QStringLiteral("db")},
         {QStringLiteral("tabella"), QStringLiteral("File where the table is written."), QStringLiteral("file")},
         {QStringLiteral("ripetizioni"), QStringLiteral("Runs of each measure (default 15)."), QStringLiteral("n"),
          QStringLiteral("15")}});
    parser.process(app);
    TQ3DatabaseTarget target;
    target.Database = parser.value(QStringLiteral("database"));
    const int runs = qMax(3, parser.value(QStringLiteral("ripetizioni")).toInt());
    if (target.Database.isEmpty()) {
        std::fprintf(stderr, "bench_confronti: manca --database.\n");
        return 2;
    }
    TQ3RecordingResponder responder;
    QList<TConfronto> confronti;
    try {
        TQ3FbClient raw(target);

        // Start-up: the host's connection and schema check, then the module's, against a bare attach.
        TConfronto avvio{QStringLiteral("Avvio su database aggiornato"),
                         QStringLiteral("connessione + verifica schema host e modulo / attach"),
                         {},
                         {}};
        Confronta(
            avvio, runs,
            [&](int) {
                TQ3Connection connection;
                connection.SetConnectionString(target.ConnectionString());
                connection.Open();
                UpgradeQ3HostSchema(connection.Database());
                AggiornaDatabase(connection.Database());
            },
            [&](int) { TQ3FbClient attach(target); });
        confronti << avvio;
        // Of which the driver's own connection, without any statement.
        TConfronto connessione{QStringLiteral("di cui connessione del driver Qt"),
                               QStringLiteral("apertura / attach"),
                               {},
                               avvio.Grezzo};
        connessione.Modulo = Misura(runs, [&](int) {
            TQ3Connection connection;
            connection.SetConnectionString(target.ConnectionString());
            connection.Open();
        });
        confronti << connessione;
        // And the two schema checks on a connection already open.
        TQ3Connection open;
        open.SetConnectionString(target.ConnectionString());
        open.Open();
        confronti << TConfronto{QStringLiteral("di cui verifica schema host"), QStringLiteral("/ attach"),
                                Misura(runs, [&](int) { UpgradeQ3HostSchema(open.Database()); }), avvio.Grezzo};
        confronti << TConfronto{QStringLiteral("di cui verifica schema modulo"), QStringLiteral("/ attach"),
                                Misura(runs, [&](int) { AggiornaDatabase(open.Database()); }), avvio.Grezzo};

        // The module as the host loads it, on the same database.
        auto mainForm = std::make_unique<TQ3MainForm>();
        auto hostConnection = new TQ3Connection(mainForm.get());
        hostConnection->SetConnectionString(target.ConnectionString());
        hostConnection->Open();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
        KRVRegistraModulo();
        CreatePackageMainObjects(qApp);
        TKRVMain *main = KRVMain();
        main->Initialize();

        main->Run(QStringLiteral("actRicercaArticoli"));
        auto articoli = main->FormAs<TKRVRicercaArticoli>(QStringLiteral("actRicercaArticoli"));
        articoli->show();
        articoli->AggiornaGriglia(QString(), 1);
        const int pages = articoli->PageTotal();
        // Pages spread over the whole list, the last one included.
        const auto pagina = [&](int run) { return 1 + int(qint64(run) * (pages - 1) / qMax(1, runs - 1)); };
        TConfronto pagine{QStringLiteral("Elenco articoli, cambio pagina"),
                          QStringLiteral("%1 articoli, %2 pagine da 200").arg(pages * 200).arg(pages),
                          {},
                          {}};
        Confronta(
            pagine, runs,
            [&](int run) {
                articoli->AggiornaGriglia(articoli->LastSearchString(), pagina(run));
                QCoreApplication::processEvents();
            },
            [&](int run) {
                Grezzo(raw, QByteArrayLiteral("SELECT COUNT(*) AS NUMERO FROM ANA_MAGA "));
                Grezzo(raw, PaginaArticoli(pagina(run)));
            });
        confronti << pagine;

        main->Run(QStringLiteral("actRicercaClienti"));
        auto clienti = main->FormAs<TKRVRicercaClienti>(QStringLiteral("actRicercaClienti"));
        clienti->show();
        TConfronto elenco{QStringLiteral("Elenco clienti, tutti"), QString(), {}, {}};
        const double primaMB = MemoriaResidente();
        Confronta(
            elenco, runs,
            [&](int) {
                clienti->AggiornaGriglia(QString());
                QCoreApplication::processEvents();
            },
            [&](int) { Grezzo(raw, QByteArrayLiteral("SELECT * FROM CLIENTI  ORDER BY UPPER(RAGIONESOCIALE)")); });
        const double conElencoMB = MemoriaResidente();
        elenco.Cosa = QStringLiteral("%1 clienti; memoria residente del processo con l'elenco aperto %2 MB (%3 MB "
                                     "prima dell'elenco completo)")
                          .arg(clienti->GridRisultati()->rowCount())
                          .arg(conElencoMB, 0, 'f', 0)
                          .arg(primaMB, 0, 'f', 0);
        confronti << elenco;

        main->Run(QStringLiteral("actGestioneCategorieAnaMaga"));
        auto categorie = main->FormAs<TKRVGestioneCategorieAnaMaga>(QStringLiteral("actGestioneCategorieAnaMaga"));
        categorie->show();
        TConfronto albero{QStringLiteral("Finestra categorie articoli, riempimento"), QString(), {}, {}};
        Confronta(
            albero, runs,
            [&](int) {
                categorie->CaricaAlberoCategorie();
                QCoreApplication::processEvents();
            },
            [&](int) {
                Grezzo(raw,
                       QByteArrayLiteral("SELECT IDCATEGORIA_ANA_MAGA, IDPADRE, CATEGORIA FROM CATEGORIE_ANA_MAGA"));
            });
        albero.Cosa = QStringLiteral("%1 categorie")
                          .arg(QueryScalar(main->ModADOConn()->Database(),
                                           QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_ANA_MAGA"))
                                   .toInt());
        confronti << albero;

        // The invoices of the last year, all of them and those with a line holding a text.
        const int anno =
            QueryScalar(main->ModADOConn()->Database(), QStringLiteral("SELECT MAX(ANNO) FROM FATT_VEND")).toInt();
        main->Run(QStringLiteral("actRicercaFattureVendita"));
        auto fatture = main->FormAs<TKRVRicercaFattureVendita>(QStringLiteral("actRicercaFattureVendita"));
        fatture->show();
        fatture->findChild<QSpinBox *>(QStringLiteral("txtAnno"))->setValue(anno);
        QAction *cerca = fatture->findChild<QAction *>(QStringLiteral("actCerca"));
        const auto elencoFatture = [&](const QString &nome, const QString &cosa) {
            TConfronto confronto{nome, QString(), {}, {}};
            const QByteArray sql = (QStringLiteral("SELECT * FROM FATT_VEND ") + fatture->ClausolaFiltri()
                                    + QStringLiteral(" ORDER BY ANNO DESC, NUMERO DESC"))
                                       .toUtf8();
            Confronta(
                confronto, runs,
                [&](int) {
                    cerca->trigger();
                    QCoreApplication::processEvents();
                },
                [&](int) { Grezzo(raw, sql); });
            confronto.Cosa = cosa.arg(fatture->GridRisultati()->rowCount()).arg(anno);
            return confronto;
        };
        confronti << elencoFatture(QStringLiteral("Elenco fatture di un anno"), QStringLiteral("%1 fatture del %2"));
        const QString testo = QStringLiteral("cantiere");
        fatture->findChild<QLineEdit *>(QStringLiteral("txtRigaDescrizione"))->setText(testo);
        confronti << elencoFatture(QStringLiteral("Elenco fatture, ricerca nelle righe"),
                                   QStringLiteral("%1 fatture del %2 con una riga che contiene \"") + testo
                                       + QStringLiteral("\""));

        // Prints to PDF, from the statements to the file written.
        QTemporaryDir cartella;
        const QString pdf = cartella.filePath(QStringLiteral("bench.pdf"));
        IKRVStampeHost *stampe = KRVStampeHost();
        const int fattura =
            QueryScalar(main->ModADOConn()->Database(),
                        QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND WHERE ANNO=%1 AND NUMERO=1").arg(anno))
                .toInt();
        const int righe =
            QueryScalar(main->ModADOConn()->Database(),
                        QStringLiteral("SELECT COUNT(*) FROM FATT_VEND_DETT WHERE IDFATT_VEND=%1").arg(fattura))
                .toInt();
        const QList<QByteArray> letture =
            StatementsOf(stampe,
                         {QStringLiteral("adsAzienda"), QStringLiteral("adsFattVend"),
                          QStringLiteral("adsFattVendDett"), QStringLiteral("adsFattVendIva")},
                         QStringLiteral(":IDFATT_VEND"), fattura);
        TChiudiAnteprima chiudiAnteprima;
        app.installEventFilter(&chiudiAnteprima);
        for (const TUscita uscita : {TUscita::PDF, TUscita::Video}) {
            TConfronto stampaFattura{QStringLiteral("Stampa di una fattura ")
                                         + (uscita == TUscita::PDF ? QStringLiteral("in PDF")
                                                                   : QStringLiteral("a video")),
                                     QStringLiteral("fattura n. 1 del %1, %2 righe").arg(anno).arg(righe),
                                     {},
                                     {}};
            // To the screen without the output options, as to the file.
            const TQ3ReportDestination destinazione =
                uscita == TUscita::PDF ? TQ3ReportDestination::File : TQ3ReportDestination::Preview;
            Confronta(
                stampaFattura, runs,
                [&](int) {
                    Uscita(stampe, uscita, pdf);
                    StampaFatturaVendita(fattura, pdf, int(destinazione));
                },
                [&](int) {
                    for (const QByteArray &sql : letture)
                        Grezzo(raw, sql);
                });
            confronti << stampaFattura;
        }

        // A print to a PDF file and to the screen, each against the statements
        // its datasets hold once it has run.
        const auto stampa = [&](const QString &nome, const QStringList &datasets, const std::function<void()> &esegui,
                                const std::function<QByteArray(const QString &)> &istruzione) {
            for (const TUscita uscita : {TUscita::PDF, TUscita::Video}) {
                TConfronto confronto{nome
                                         + (uscita == TUscita::PDF ? QStringLiteral(" in PDF")
                                                                   : QStringLiteral(" a video")),
                                     QString(),
                                     {},
                                     {}};
                QFile::remove(pdf);
                Confronta(
                    confronto, 3,
                    [&](int) {
                        Uscita(stampe, uscita, pdf);
                        esegui();
                    },
                    [&](int) {
                        for (const QString &dataset : datasets)
                            Grezzo(raw, istruzione(stampe->StampeDataset(dataset)->SQL()));
                    });
                confronto.Cosa =
                    QStringLiteral("%1 righe").arg(stampe->StampeDataset(datasets.constLast())->RecordCount());
                if (uscita == TUscita::PDF)
                    confronto.Cosa += QStringLiteral(", %1 kB di PDF").arg(QFileInfo(pdf).size() / 1024);
                confronti << confronto;
            }
        };
        const auto comeScritta = [](const QString &sql) { return sql.toUtf8(); };
        // The rows of the last two prints measured, their subject put first.
        const auto soggetto = [&](const QString &testo) {
            for (qsizetype i = confronti.size() - 2; i < confronti.size(); ++i)
                confronti[i].Cosa.prepend(testo);
        };
        stampa(
            QStringLiteral("Stampa del riepilogo fatture di un anno"),
            {QStringLiteral("adsAzienda"), QStringLiteral("adsRiepilogoFatture")},
            [&] { StampaRiepilogoFatture(anno, TCustomBoolean::cbNull, TCustomBoolean::cbNull); }, comeScritta);
        soggetto(QStringLiteral("fatture del %1: ").arg(anno));
        stampa(
            QStringLiteral("Stampa del fatturato per cliente di un anno"),
            {QStringLiteral("adsAzienda"), QStringLiteral("adsFatturatoPerCliente")},
            [&] { StampaFatturatoPerCliente(anno); }, [&](const QString &sql) { return ConAnno(sql, anno); });
        soggetto(QStringLiteral("clienti, anno %1: ").arg(anno));

        // The statistics prints over the last year, as their dialogs compose them.
        TabelleMagazzino(main->ModADOConn()->Database());
        const QDate dal(anno, 1, 1);
        const QDate al(anno, 12, 31);
        const struct
        {
            const char *Nome;
            const char *Tipo;
            TKRVScritturaSQL Scrittura;
            const char *Dataset;
            const char *Report;
            const char *Titolo;
        } statistiche[] = {
            {"Stampa del fatturato per articolo di un anno", "Articolo", TKRVScritturaSQL::Compatta,
             "adsFatturatoPerArticolo", "FatturatoPerArticolo", "Fatturato per articolo dal "},
            {"Stampa del fatturato per servizio di un anno", "Servizio", TKRVScritturaSQL::Spaziata,
             "adsFatturatoPerServizio", "FatturatoPerServizio", "Fatturato per servizio dal "},
            {"Stampa delle medie di produttività per servizio di un anno", "Servizio", TKRVScritturaSQL::Compatta,
             "adsFatturatoPerArticolo", "FatturatoPerArticolo", "Fatturato per articolo dal "},
        };
        for (const auto &statistica : statistiche) {
            TKRVFiltroRighe filtro;
            filtro.TipoRiga = QString::fromLatin1(statistica.Tipo);
            const QString sql =
                KRVSQLFatturatoRighe(KRVWhereRighe(filtro, statistica.Scrittura), dal, al, statistica.Scrittura);
            const QString dataset = QString::fromLatin1(statistica.Dataset);
            stampa(
                QString::fromUtf8(statistica.Nome), {QStringLiteral("adsAzienda"), dataset},
                [&] {
                    KRVStampaStatistica(dataset, sql, QString::fromLatin1(statistica.Report),
                                        KRVTitoloStatistica(QString::fromLatin1(statistica.Titolo), dal, al));
                },
                comeScritta);
            soggetto(QStringLiteral("codici, %1: ").arg(anno));
        }
        {
            TKRVFiltroRighe filtro;
            filtro.TipoRiga = QStringLiteral("Servizio");
            const QString sql = KRVSQLFatturatoClientiServizi(KRVWhereRighe(filtro, TKRVScritturaSQL::Spaziata), dal,
                                                              al, KRVEsisteFattAcc(main->ModADOConn()->Database()));
            stampa(
                QStringLiteral("Stampa del fatturato clienti-servizi di un anno"),
                {QStringLiteral("adsAzienda"), QStringLiteral("adsFatturatoClientiServizi")},
                [&] {
                    KRVStampaStatistica(QStringLiteral("adsFatturatoClientiServizi"), sql,
                                        QStringLiteral("FatturatoClientiServizi01"),
                                        KRVTitoloStatistica(QStringLiteral("Fatturato clienti-servizi dal "), dal, al));
                },
                comeScritta);
            soggetto(QStringLiteral("clienti e servizi, %1: ").arg(anno));
        }
        stampa(
            QStringLiteral("Stampa del listino articoli IVA inclusa"),
            {QStringLiteral("adsAzienda"), QStringLiteral("adsListinoArticoli01")}, [] { StampaListinoIVATO(); },
            comeScritta);
        soggetto(QStringLiteral("articoli: "));

        // The statistics windows' refresh, grid and chart, against their statements.
        const QSqlDatabase db = main->ModADOConn()->Database();
        main->Run(QStringLiteral("actStatisticheFatturato"));
        auto statisticheFatturato = main->FormAs<TKRVStatisticheFatturato>(QStringLiteral("actStatisticheFatturato"));
        statisticheFatturato->show();
        const int annoCorrente = QDate::currentDate().year();
        TConfronto fatturato{QStringLiteral("Finestra statistiche fatturato, aggiornamento"),
                             QStringLiteral("anni %1-%2").arg(annoCorrente - 2).arg(annoCorrente),
                             {},
                             {}};
        QList<QByteArray> fonti;
        for (const QString &tabella :
             {QStringLiteral("FATT_VEND"), QStringLiteral("FATT_ACC"), QStringLiteral("NOTE_ACCREDITO")})
            fonti << KRVSQLFatturato(tabella, annoCorrente).toUtf8();
        QAction *aggiorna = statisticheFatturato->findChild<QAction *>(QStringLiteral("actAggiorna"));
        Confronta(
            fatturato, runs,
            [&](int) {
                aggiorna->trigger();
                QCoreApplication::processEvents();
            },
            [&](int) {
                for (const QByteArray &sql : std::as_const(fonti))
                    Grezzo(raw, sql);
            });
        confronti << fatturato;

        main->Run(QStringLiteral("actStatisticheRedditivitaMensile"));
        auto redditivita =
            main->FormAs<TKRVStatisticheRedditivitaMensile>(QStringLiteral("actStatisticheRedditivitaMensile"));
        redditivita->show();
        redditivita->findChild<QSpinBox *>(QStringLiteral("speAnno"))->setValue(anno);
        const bool conFattAcc = KRVEsisteFattAcc(db);
        const QList<QByteArray> semestri = {KRVRedditivitaSemestreSQL(1, anno, conFattAcc).toUtf8(),
                                            KRVRedditivitaSemestreSQL(7, anno, conFattAcc).toUtf8()};
        TConfronto margini{QStringLiteral("Finestra redditività mensile, aggiornamento"),
                           QStringLiteral("anno %1").arg(anno),
                           {},
                           {}};
        QAction *aggiornaTabella = redditivita->findChild<QAction *>(QStringLiteral("actAggiornaTabella"));
        Confronta(
            margini, runs,
            [&](int) {
                aggiornaTabella->trigger();
                QCoreApplication::processEvents();
            },
            [&](int) {
                for (const QByteArray &sql : semestri)
                    Grezzo(raw, sql);
            });
        confronti << margini;

        redditivita->close();
        statisticheFatturato->close();
        fatture->close();
        categorie->close();
        articoli->close();
        clienti->close();
        QCoreApplication::processEvents();
        delete main;
        mainForm.reset();
    } catch (const std::exception &e) {
        std::fprintf(stderr, "bench_confronti: %s\n", ExceptionMessage(e).toLocal8Bit().constData());
        return 1;
    }

    QStringList table = {
        QStringLiteral("Database: `%1`. Machine: %2, %3 cores, %4. %5 runs per measure (the prints of a year and the "
                       "price list: 3), the module's and the raw one in turn.")
            .arg(target.Database, QSysInfo::prettyProductName())
            .arg(QThread::idealThreadCount())
            .arg(QSysInfo::currentCpuArchitecture())
            .arg(runs),
        QString(),
        QStringLiteral("| Benchmark | What | Module min / median / max (ms) | Raw client API min / median / max (ms) | "
                       "Ratio of medians |"),
        QStringLiteral("|---|---|---|---|---|")};
    for (const TConfronto &c : std::as_const(confronti))
        table << Riga(c);
    const QString text = table.join(QLatin1Char('\n')) + QLatin1Char('\n');
    std::printf("%s", text.toUtf8().constData());
    if (parser.isSet(QStringLiteral("tabella"))) {
        QFile file(parser.value(QStringLiteral("tabella")));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            std::fprintf(stderr, "bench_confronti: impossibile scrivere %s\n", qPrintable(file.fileName()));
            return 1;
        }
        file.write(text.toUtf8());
    }
    return 0;
}
