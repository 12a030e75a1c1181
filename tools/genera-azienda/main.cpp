// quillo3-genera-azienda: creates (when missing) and fills a firm's database
// with generated Italian data, for demonstrations and measurements.
#include "KRVGeneraAzienda.h"
#include "Q3Exception.h"
#include "Q3Host.h"
#include "Q3Messages.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDate>

#include <cstdio>

namespace {

void Print(const QString &text)
{
    std::printf("%s\n", text.toLocal8Bit().constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillo3-genera-azienda"));

    QStringList sizes;
    for (const TKRVDimensioneAzienda &size : KRVDimensioniAzienda())
        sizes << size.Nome;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Crea (se manca) e riempie il database di un'azienda con dati italiani generati."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("database"), QStringLiteral("Database: un file, oppure host:/percorso o host/porta:/percorso."),
         QStringLiteral("db")},
        {QStringLiteral("dimensione"),
         QStringLiteral("Dimensione: %1 (predefinita: demo).").arg(sizes.join(QStringLiteral(", "))),
         QStringLiteral("nome"), QStringLiteral("demo")},
        {QStringLiteral("seme"), QStringLiteral("Seme dei dati: lo stesso seme dà la stessa azienda (predefinito: 1)."),
         QStringLiteral("n"), QStringLiteral("1")},
        {QStringLiteral("anno-finale"),
         QStringLiteral("Ultimo anno delle fatture (predefinito: l'anno della data finale)."), QStringLiteral("anno")},
        {QStringLiteral("data-finale"),
         QStringLiteral("Nessun documento è datato dopo questo giorno, AAAA-MM-GG (predefinito: oggi): lo stesso "
                        "giorno ridà la stessa azienda."),
         QStringLiteral("data")},
        {QStringLiteral("db-user"), QStringLiteral("Utente del server Firebird (altrimenti ISC_USER)."),
         QStringLiteral("name")},
        {QStringLiteral("db-password-file"),
         QStringLiteral("File con la password del server Firebird (altrimenti ISC_PASSWORD)."), QStringLiteral("file")},
    });
    parser.process(app);
    if (!parser.isSet(QStringLiteral("database"))) {
        std::fprintf(stderr, "quillo3-genera-azienda: manca --database.\n");
        return 2;
    }

    TQ3StderrResponder responder;
    SetQ3MessageResponder(&responder);
    try {
        TQ3DatabaseTarget target;
        target.Database = parser.value(QStringLiteral("database"));
        if (target.IsRemote()) {
            target.User = parser.isSet(QStringLiteral("db-user")) ? parser.value(QStringLiteral("db-user"))
                                                                  : qEnvironmentVariable("ISC_USER");
            target.Password = parser.isSet(QStringLiteral("db-password-file"))
                                  ? ReadQ3SecretFile(parser.value(QStringLiteral("db-password-file")))
                                  : qEnvironmentVariable("ISC_PASSWORD");
        }
        TKRVOpzioniGenerazione opzioni;
        opzioni.Dimensione = KRVDimensioneAzienda(parser.value(QStringLiteral("dimensione")));
        opzioni.Seme = parser.value(QStringLiteral("seme")).toULongLong();
        opzioni.DataFinale = parser.isSet(QStringLiteral("data-finale"))
                                 ? QDate::fromString(parser.value(QStringLiteral("data-finale")), Qt::ISODate)
                                 : QDate::currentDate();
        if (!opzioni.DataFinale.isValid())
            throw EQ3Exception(QStringLiteral("Data finale non valida."));
        opzioni.AnnoFinale = parser.isSet(QStringLiteral("anno-finale"))
                                 ? parser.value(QStringLiteral("anno-finale")).toInt()
                                 : opzioni.DataFinale.year();
        opzioni.Avanzamento = Print;
        if (opzioni.AnnoFinale < 1900)
            throw EQ3Exception(QStringLiteral("Anno finale non valido."));

        KRVPreparaDatabase(target);
        const TKRVRiepilogoGenerazione r = KRVGeneraAzienda(target, opzioni);
        Print(QStringLiteral("Generata l'azienda \"%1\" (seme %2) in %3: %4 clienti, %5 articoli, %6 servizi, "
                             "%7 fatture con %8 righe, %9 note di accredito con %10 righe, %11 promemoria, in %12 s.")
                  .arg(opzioni.Dimensione.Nome)
                  .arg(opzioni.Seme)
                  .arg(target.Database)
                  .arg(r.Clienti)
                  .arg(r.Articoli)
                  .arg(r.Servizi)
                  .arg(r.Fatture)
                  .arg(r.RigheFatture)
                  .arg(r.NoteAccredito)
                  .arg(r.RigheNoteAccredito)
                  .arg(r.Promemoria)
                  .arg(r.Secondi, 0, 'f', 1));
    } catch (const std::exception &e) {
        std::fprintf(stderr, "quillo3-genera-azienda: %s\n", ExceptionMessage(e).toLocal8Bit().constData());
        SetQ3MessageResponder(nullptr);
        return 1;
    }
    SetQ3MessageResponder(nullptr);
    return 0;
}
