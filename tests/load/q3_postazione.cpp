// q3_postazione: one workstation of the load test, a process with its own
// connection to the firm's database, no window. For the given seconds it
// creates, opens, changes, searches and deletes invoices and credit notes of
// the year at random, and writes every request to the output file.
//
//   q3_postazione <connection string> <workstation> <seed> <seconds> <year> <output file>
//
// Ends with 0 once its time is up, with 2 when it cannot start.
#include "KRVPostazione.h"
#include "Q3Exception.h"
#include "Q3Messages.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    const QStringList argomenti = app.arguments();
    if (argomenti.size() != 7) {
        std::fprintf(stderr, "Uso: q3_postazione <connessione> <postazione> <seme> <secondi> <anno> <file>\n");
        return 2;
    }
    // No box is ever shown: a box of a failure is answered and recorded.
    TQ3StderrResponder risposte;
    SetQ3MessageResponder(&risposte);
    QFile file(argomenti.at(6));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        std::fprintf(stderr, "Impossibile scrivere %s\n", qPrintable(argomenti.at(6)));
        return 2;
    }
    QTextStream out(&file);
    try {
        TKRVPostazione postazione({.ConnectionString = argomenti.at(1),
                                   .Postazione = argomenti.at(2).toInt(),
                                   .Seme = argomenti.at(3).toUInt(),
                                   .Secondi = argomenti.at(4).toInt(),
                                   .Anno = argomenti.at(5).toInt()},
                                  out);
        postazione.Esegui();
    } catch (const std::exception &e) {
        std::fprintf(stderr, "Postazione %s: %s\n", qPrintable(argomenti.at(2)), qPrintable(ExceptionMessage(e)));
        return 2;
    }
    return 0;
}
