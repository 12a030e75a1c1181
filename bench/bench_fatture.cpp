// A 500-line invoice among 10,000 invoices and 100,000 lines: opening it in
// the editor, saving it, and one line edit with the totals recomputed.
#include "KRVTestModule.h"
#include "Q3BenchTimes.h"
#include "uKRVGrigliaRighe.h"
#include "uKRVInserimentoFattureVendita.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int Fatture = 10000;
constexpr int RighePerFattura = 10;
constexpr int RigheGrande = 500;
constexpr int Giri = 15;

// Invoices numbered 1.. in 2025, each with its lines of the four kinds.
void InserisciFatture(const TQ3TestDatabase &db)
{
    db.Exec(
        QStringLiteral(
            "EXECUTE BLOCK AS DECLARE I INTEGER = 1; DECLARE J INTEGER; DECLARE ID INTEGER; BEGIN "
            "WHILE (I <= %1) DO BEGIN "
            "INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_PARTITAIVA, IDTIPO_PAGAMENTO, "
            "TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (0, :I, "
            "'2025-03-10', 2025, 'CLN' || LPAD(MOD(:I, 500), 7, '0'), 'Cliente ' || MOD(:I, 500), '01234567890', 1, 'Rimessa diretta', "
            "'False', 0, 0, 0, 'False') RETURNING IDFATT_VEND INTO :ID; "
            "J = 0; WHILE (J < IIF(:I = 1, %3, %2)) DO BEGIN "
            "INSERT INTO FATT_VEND_DETT (IDFATT_VEND_DETT, IDFATT_VEND, CODICE, DESCRIZIONE, IDCATEGORIA, PREZZO, SCONTO, "
            "QUANTITA, IMPORTO, IVA_IDALIQUOTA_IVA, IVA_CODICE, IDUM, UM, TIPO_RIGA, COSTO) VALUES (0, :ID, 'ART' || :J, "
            "'Riga ' || :J || ' della fattura ' || :I, 1, 12.5, 0, 2, 25, 1, '20', 1, 'PEZZI', "
            "DECODE(MOD(:J, 4), 0, 'Articolo', 1, 'Servizio', 2, 'Testo', 'Non imponibile'), 5); J = J + 1; END "
            "I = I + 1; END END")
            .arg(Fatture)
            .arg(RighePerFattura)
            .arg(RigheGrande));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    TQ3RecordingResponder responder;
    TKRVTestModule module;
    QElapsedTimer timer;
    timer.start();
    InserisciFatture(module.Database);
    std::printf("invoices: %d, lines: %d (one invoice of %d lines), written in %.1f s\n", Fatture,
                (Fatture - 1) * RighePerFattura + RigheGrande, RigheGrande, Q3Milliseconds(timer) / 1000);
    const int id = module.Database.Scalar(QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND WHERE NUMERO = 1")).toInt();

    module.Main->Run(QStringLiteral("actInserimentoFattureVendita"));
    auto editor = module.Main->FormAs<TKRVInserimentoFattureVendita>(QStringLiteral("actInserimentoFattureVendita"));
    editor->show();
    QAction *salva = editor->actSalva();
    TKRVRigheDocumento *righe = editor->Righe();

    QList<double> apertura, salvataggio, modifica;
    for (int giro = 0; giro < Giri; ++giro) {
        timer.restart();
        editor->ApriRecord(id);
        QCoreApplication::processEvents();
        apertura << Q3Milliseconds(timer);

        timer.restart();
        if (!righe->setData(righe->index(giro * 4, 7), QString::number(giro + 2)))
            std::printf("edit refused: row %d of %d, kind %s\n", giro * 4, righe->Righe(),
                        qPrintable(righe->Tipo(giro * 4)));
        QCoreApplication::processEvents();
        modifica << Q3Milliseconds(timer);

        timer.restart();
        salva->trigger();
        QCoreApplication::processEvents();
        salvataggio << Q3Milliseconds(timer);
    }
    Q3PrintTimes("open 500-line invoice", apertura);
    Q3PrintTimes("line edit with totals", modifica);
    Q3PrintTimes("save 500-line invoice", salvataggio);
    std::printf("messages shown: %lld\n", static_cast<long long>(responder.Messages().size()));
    return responder.Messages().isEmpty() ? 0 : 1;
}
