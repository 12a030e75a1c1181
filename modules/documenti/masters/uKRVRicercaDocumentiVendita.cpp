#include "uKRVRicercaDocumentiVendita.h"

#include "KRVClausole.h"
#include "uKRVEsportaFatturePA.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVInserimentoBase.h"
#include "uKRVServiziFinestre.h"

#include <QDate>
#include <QKeyEvent>
#include <QLabel>
#include <QToolBar>

TKRVRicercaDocumentiVendita::TKRVRicercaDocumentiVendita(IKRVMain &main, TKRVRicercaInfo info, QString condizioneAnno,
                                                         EKRVDocumentoFatturaPA tipo)
    : TKRVRicercaBase(main, std::move(info)), m_condizioneAnno(std::move(condizioneAnno)), m_tipo(tipo),
      txtAnno(new QSpinBox)
{
    AggiungiFiltroAnno();
    // Several documents go out together as electronic invoices.
    GridRisultati()->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QToolBar *barra = findChild<QToolBar *>(QStringLiteral("tBarStandard"));
    barra->addSeparator();
    barra->addAction(KRVCreaAzione(this, QStringLiteral("actEsportaFattureElettroniche"),
                                   QStringLiteral("Fatture elettroniche..."), KRVImgFatture,
                                   [this] { actEsportaFattureElettronicheExecute(); }));
}

void TKRVRicercaDocumentiVendita::actEsportaFattureElettronicheExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoModifica))
        return;
    if (KRVEsportaFattureElettroniche(this, {Main().FolderDialogFatturaPA(), Main().ZipDialogFatturePA()}, Sessione(),
                                      m_tipo, GridRisultati()->ChiaviSelezionate(), GridRisultati()->Chiavi()))
        actCercaExecute();
}

QList<TKRVColonna> TKRVRicercaDocumentiVendita::ColonneDocumento()
{
    return {{QStringLiteral("N."), 50, QStringLiteral("NUMERO"), TKRVTipoColonna::Intero},
            {QStringLiteral("Data"), 80, QStringLiteral("DATA"), TKRVTipoColonna::Data},
            {QStringLiteral("Codice"), 120, QStringLiteral("CLI_CODICE"), TKRVTipoColonna::Testo},
            {QStringLiteral("Ragione sociale"), 350, QStringLiteral("CLI_RAGIONESOCIALE"), TKRVTipoColonna::Testo},
            {QStringLiteral("Totale"), 110, QStringLiteral("TOTALE_DOCUMENTO"), TKRVTipoColonna::Importo},
            {QStringLiteral("Pagato"), 60, QStringLiteral("PAGATO"), TKRVTipoColonna::Testo},
            {QStringLiteral("Fattura elettronica"), 170, QStringLiteral("FPA_NOME_FILE"), TKRVTipoColonna::Testo}};
}

QList<TKRVFiltro> TKRVRicercaDocumentiVendita::FiltriCliente()
{
    return {{.Name = QStringLiteral("txtCodice"),
             .Label = QStringLiteral("Codice"),
             .Condition = QStringLiteral("CLI_CODICE CONTAINING ")},
            {.Name = QStringLiteral("txtRagioneSociale"),
             .Label = QStringLiteral("Ragione sociale"),
             .Condition = QStringLiteral("CLI_RAGIONESOCIALE CONTAINING ")}};
}

// The year follows the customer's name, and always filters.
void TKRVRicercaDocumentiVendita::AggiungiFiltroAnno()
{
    txtAnno->setObjectName(QStringLiteral("txtAnno"));
    txtAnno->setRange(0, 9999);
    txtAnno->setGroupSeparatorShown(false);
    txtAnno->installEventFilter(this);
    QToolBar *barra = Elenco()->BarraRicerca();
    QLineEdit *ragioneSociale = Elenco()->Filtro(QStringLiteral("txtRagioneSociale"));
    // The filters and the search actions fit in the window's opening width.
    Elenco()->Filtro(QStringLiteral("txtCodice"))->setFixedWidth(80);
    ragioneSociale->setFixedWidth(130);
    if (QLineEdit *riga = Elenco()->Filtro(QStringLiteral("txtRigaDescrizione")))
        riga->setFixedWidth(110);
    txtAnno->setFixedWidth(60);
    // After the name's field and its separator.
    const QList<QAction *> azioni = barra->actions();
    QAction *prima = nullptr;
    for (int i = 0; i + 2 < azioni.size(); ++i) {
        if (barra->widgetForAction(azioni.at(i)) == ragioneSociale)
            prima = azioni.at(i + 2);
    }
    barra->insertWidget(prima, KRVEtichetta(QStringLiteral("Anno"), txtAnno));
    barra->insertWidget(prima, txtAnno);
    barra->insertSeparator(prima);
}

bool TKRVRicercaDocumentiVendita::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtAnno && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Elenco()->actCerca()->trigger();
            return true;
        }
    }
    return TKRVRicercaBase::eventFilter(watched, event);
}

QString TKRVRicercaDocumentiVendita::ClausolaFiltri() const
{
    return KRVClausolaAnno(m_condizioneAnno, txtAnno->value(), Elenco()->ClausolaFiltri());
}

void TKRVRicercaDocumentiVendita::RicercaIniziale()
{
    actRipristinaExecute();
}

void TKRVRicercaDocumentiVendita::actCercaExecute()
{
    AggiornaGriglia(ClausolaFiltri());
}

void TKRVRicercaDocumentiVendita::actRipristinaExecute()
{
    Elenco()->SvuotaFiltri();
    txtAnno->setValue(QDate::currentDate().year());
}

void TKRVRicercaDocumentiVendita::actNuovoExecute()
{
    if (!KRVVerificaPermesso(Entita().PermessoModifica))
        return;
    Main().Run(Entita().Editor);
    // The document the editor holds is not dropped without a question.
    if (auto editor = Main().FormAs<TKRVInserimentoBase>(Entita().Editor); editor && editor->AbbandonaModifiche())
        editor->NuovoRecord();
}
