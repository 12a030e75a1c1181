// Page changes of the article list over 10,000 articles: how long one takes.
#include "KRVTestModule.h"
#include "Q3BenchTimes.h"
#include "Q3Sql.h"
#include "uKRVRicercaArticoli.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int Articles = 10000;

void InsertArticles(const TQ3TestDatabase &database)
{
    database.Exec(
        QStringLiteral(
            "EXECUTE BLOCK AS DECLARE I INTEGER = 0; BEGIN WHILE (I < %1) DO BEGIN "
            "INSERT INTO ANA_MAGA (IDANA_MAGA, CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, PREZZO, COSTO, "
            "IDALIQUOTA_IVA, IDUM) VALUES (0, 'ART' || LPAD(:I, 7, '0'), 'Articolo di prova numero ' || :I, 0, 0, 1, "
            "10 + MOD(:I, 90), 5, 1, 1); I = I + 1; END END")
            .arg(Articles));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    TQ3RecordingResponder responder;
    TKRVTestModule module;
    InsertArticles(module.Database);

    module.Main->Run(QStringLiteral("actRicercaArticoli"));
    auto list = module.Main->FormAs<TKRVRicercaArticoli>(QStringLiteral("actRicercaArticoli"));
    list->show();

    QElapsedTimer timer;
    timer.start();
    list->findChild<QAction *>(QStringLiteral("actCerca"))->trigger();
    const double search = Q3Milliseconds(timer);

    QList<double> forward;
    QAction *next = list->findChild<QAction *>(QStringLiteral("actPageNext"));
    while (next->isEnabled()) {
        timer.restart();
        next->trigger();
        QCoreApplication::processEvents();
        forward << Q3Milliseconds(timer);
    }
    timer.restart();
    list->findChild<QAction *>(QStringLiteral("actPageFirst"))->trigger();
    QCoreApplication::processEvents();
    const double first = Q3Milliseconds(timer);

    std::printf("articles: %d, pages: %d\n", Articles, list->PageTotal());
    std::printf("search (page 1): %.1f ms\n", search);
    std::printf("page next: median %.1f ms, worst %.1f ms over %lld changes\n", Q3Median(forward),
                *std::max_element(forward.cbegin(), forward.cend()), static_cast<long long>(forward.size()));
    std::printf("back to page 1: %.1f ms\n", first);
    std::printf("messages shown: %lld\n", static_cast<long long>(responder.Messages().size()));
    return 0;
}
