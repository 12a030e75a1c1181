#include "uKRVModSelezionaCliente.h"

#include "KRVClausole.h"
#include "KRVEntita.h"
#include "KRVQueryElenchi.h"
#include "uKRVBarraLettere.h"

#include <QVBoxLayout>

TKRVModSelezionaCliente::TKRVModSelezionaCliente()
    : TKRVModSelezionaBase(
        {.Caption = QStringLiteral("Seleziona un cliente"),
         .QueryHead = KRVQueryClientiTesta,
         .QueryTail = KRVQueryClientiCoda,
         .KeyField = KRVEntitaClienti().Chiave,
         .Columns = {{QStringLiteral("Codice"), 120, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Ragione sociale"), 358, QStringLiteral("RAGIONESOCIALE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Codice fiscale"), 160, QStringLiteral("CODICEFISCALE"), TKRVTipoColonna::Testo},
                     {QStringLiteral("Partita IVA"), 130, QStringLiteral("PARTITAIVA"), TKRVTipoColonna::Testo}},
         .Filters = {{QStringLiteral("txtRagioneSociale"), QStringLiteral("Ragione sociale"),
                      QStringLiteral("RAGIONESOCIALE CONTAINING ")}}},
        QSize(800, 500))
{
    setObjectName(QStringLiteral("KRVModSelezionaCliente"));
    // The letters below the filter.
    static_cast<QVBoxLayout *>(layout())->insertWidget(1, new TKRVBarraLettere(this, [this](const QString &letter) {
                                                           BarraRicercaButtonClick(letter);
                                                       }));
    FormCreate();
}

int TKRVModSelezionaCliente::ApriSelezionato() const
{
    return gridRisultati()->ChiaveSelezionata();
}

void TKRVModSelezionaCliente::BarraRicercaButtonClick(const QString &letter)
{
    AggiornaGriglia(ClausolaLettera(letter));
}

QString TKRVModSelezionaCliente::ClausolaLettera(const QString &letter)
{
    return KRVClausolaLetteraSelezioneCliente(letter);
}

void TKRVModSelezionaCliente::FormShow()
{
    AggiornaGriglia(KRVClausolaClientiIniziale);
}
