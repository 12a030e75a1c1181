#include "uKRVModSelezionaFatturaVendita.h"

#include "KRVEntita.h"
#include "KRVFatturaRiferimento.h"

TKRVModSelezionaFatturaVendita::TKRVModSelezionaFatturaVendita()
    : TKRVModSelezionaBase({.Caption = QStringLiteral("Seleziona una fattura di vendita"),
                            .QueryHead = KRVQueryFattureClienteTesta,
                            .QueryTail = KRVQueryFattureClienteCoda,
                            .KeyField = KRVEntitaFattureVendita().Chiave,
                            .Columns = {{QStringLiteral("N."), 90, QStringLiteral("NUMERO"), TKRVTipoColonna::Intero},
                                        {QStringLiteral("Data"), 110, QStringLiteral("DATA"), TKRVTipoColonna::Data},
                                        {QStringLiteral("Totale"), 140, QStringLiteral("TOTALE_DOCUMENTO"),
                                         TKRVTipoColonna::Importo}},
                            .Filters = {}},
                           QSize(420, 420))
{
    setObjectName(QStringLiteral("KRVModSelezionaFatturaVendita"));
    FormCreate();
}

void TKRVModSelezionaFatturaVendita::SetCliente(const QString &codice)
{
    m_cliente = codice;
}

int TKRVModSelezionaFatturaVendita::ApriSelezionato() const
{
    return gridRisultati()->ChiaveSelezionata();
}

void TKRVModSelezionaFatturaVendita::FormShow()
{
    actCercaExecute();
}

void TKRVModSelezionaFatturaVendita::actCercaExecute()
{
    AggiornaGriglia(KRVCondizioneFattureCliente(m_cliente));
}
