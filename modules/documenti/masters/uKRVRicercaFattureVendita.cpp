#include "uKRVRicercaFattureVendita.h"

#include "KRVDeleteRules.h"
#include "uKRVImages.h"

TKRVRicercaFattureVendita::TKRVRicercaFattureVendita(TKRVMain &main)
    : TKRVRicercaDocumentiVendita(
          main,
          {.Elenco = {.Caption = QStringLiteral("Gestione fatture di vendita"),
                      .QueryHead = QStringLiteral("SELECT * FROM FATT_VEND "),
                      .QueryTail = QStringLiteral(" ORDER BY ANNO DESC, NUMERO DESC"),
                      .KeyField = QStringLiteral("IDFATT_VEND"),
                      .Columns = ColonneDocumento(),
                      .Filters = {{.Name = QStringLiteral("txtCodice"), .Label = QStringLiteral("Codice"),
                                   .Condition = QStringLiteral("CLI_CODICE CONTAINING ")},
                                  {.Name = QStringLiteral("txtRagioneSociale"), .Label = QStringLiteral("Ragione sociale"),
                                   .Condition = QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ")},
                                  {.Name = QStringLiteral("txtRigaDescrizione"), .Label = QStringLiteral("Riga"),
                                   .Condition = QStringLiteral("(FATT_VEND.IDFATT_VEND IN (SELECT FATT_VEND_DETT.IDFATT_VEND "
                                                               "FROM FATT_VEND_DETT WHERE FATT_VEND_DETT.DESCRIZIONE "
                                                               "CONTAINING "),
                                   .Closing = QStringLiteral("))")}}},
           .EditorAction = QStringLiteral("actInserimentoFattureVendita"),
           .ColonnaDescrizione = 4,
           .CanDelete = &CanDeleteFatturaVendita,
           .Delete = &DeleteFatturaVendita,
           .PermessoApertura = QStringLiteral("Fatture di vendita (visualizzazione)"),
           .PermessoNuovo = QStringLiteral("Fatture di vendita (modifica)"),
           .PermessoEliminazione = QStringLiteral("Fatture di vendita (eliminazione)"),
           .DeleteRefused = QStringLiteral("Non è possibile eliminare questa fattura,\n\resistono dei dati correlati!")},
          QStringLiteral("WHERE ANNO="))
{
    setObjectName(QStringLiteral("KRVRicercaFattureVendita"));
    setWindowIcon(KRVImage(KRVImgFatture));
    AggiungiStampe();
    FormCreate();
}

// Printing comes with the report engine: the commands show, not yet active.
void TKRVRicercaFattureVendita::AggiungiStampe()
{
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    QAction *stampa = new QAction(KRVImage(KRVImgStampa), QStringLiteral("Stampa"), this);
    stampa->setObjectName(QStringLiteral("actStampa"));
    QAction *pdf = new QAction(KRVImage(KRVImgStampa), QStringLiteral("Salva in PDF"), this);
    pdf->setObjectName(QStringLiteral("actSalvaPDF"));
    for (QAction *action : {stampa, pdf}) {
        action->setEnabled(false);
        barra->addAction(action);
    }
}
