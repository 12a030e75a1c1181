// The monthly profitability refresh over one year of 20,000 invoices of three
// lines each: how long one refresh takes.
#include "KRVTestModule.h"
#include "Q3BenchTimes.h"
#include "uKRVStatisticheRedditivitaMensile.h"

#include <QAction>
#include <QApplication>
#include <QSpinBox>

#include <cstdio>

namespace {

constexpr int Invoices = 20000;

void InsertInvoices(const TQ3TestDatabase &database)
{
    database.Exec(
        QStringLiteral(
            "EXECUTE BLOCK AS DECLARE I INTEGER = 0; DECLARE ID INTEGER; BEGIN WHILE (I < %1) DO BEGIN "
            "ID = GEN_ID(GN_IDFATT_VEND, 0) + 1; "
            "INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, "
            "TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (0, :I + 1, "
            "DATEADD(MOD(:I, 365) DAY TO DATE '2025-01-01'), 2025, 'C001', 'Cliente', 1, 'Rimessa diretta', 'False', 0, 0, 0, "
            "'False'); "
            "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, TIPO_RIGA, IMPORTO, COSTO, QUANTITA) "
            "VALUES (0, :ID, 'Articolo', 100, 40, 1); "
            "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, TIPO_RIGA, IMPORTO, COSTO, QUANTITA) "
            "VALUES (0, :ID, 'Servizio', 50, NULL, 1); "
            "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, TIPO_RIGA, IMPORTO, COSTO, QUANTITA) "
            "VALUES (0, :ID, 'Non imponibile', 10, 0, 1); I = I + 1; END END")
            .arg(Invoices));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    TQ3RecordingResponder responder;
    TKRVTestModule module;
    InsertInvoices(module.Database);

    QElapsedTimer timer;
    timer.start();
    module.Main->Run(QStringLiteral("actStatisticheRedditivitaMensile"));
    const double opening = Q3Milliseconds(timer);
    auto window =
        module.Main->FormAs<TKRVStatisticheRedditivitaMensile>(QStringLiteral("actStatisticheRedditivitaMensile"));
    window->findChild<QSpinBox *>(QStringLiteral("speAnno"))->setValue(2025);

    QList<double> refreshes;
    for (int run = 0; run < 3; ++run) {
        timer.restart();
        window->findChild<QAction *>(QStringLiteral("actAggiornaTabella"))->trigger();
        refreshes << Q3Milliseconds(timer);
    }
    std::printf("invoices: %d, lines: %d\n", Invoices, Invoices * 3);
    std::printf("opening (current year): %.1f ms\n", opening);
    Q3PrintTimes("refresh of 2025", refreshes);
    std::printf("grand total: %s\n", qPrintable(window->TestoVisualizzato(14, 5)));
    std::printf("messages shown: %lld\n", static_cast<long long>(responder.Messages().size()));
    return 0;
}
