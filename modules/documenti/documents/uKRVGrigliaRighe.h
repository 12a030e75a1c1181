#pragma once

#include "KRVRigheDocumento.h"

#include <QAction>
#include <QTableView>
#include <QToolBar>

class QHelpEvent;
class IKRVMain;

// The line grid of a sales document, with its line commands: adding an
// article, a service, a text or (invoices) a non-taxable line, deleting and
// moving the selected line. Each command and each accepted cell edit is
// reported by Modificata, asking for the totals again when amounts changed.
class TKRVGrigliaRighe : public QTableView
{
    Q_OBJECT

public:
    TKRVGrigliaRighe(IKRVMain &main, TKRVRigheDocumento *righe, const QString &name, QWidget *parent = nullptr);

    TKRVRigheDocumento *Righe() const { return m_righe; }

    // The commands on a toolbar of the document's page, with their hints.
    QToolBar *BarraComandi();

    // Column widths from the grid's width: the description takes what the
    // others leave.
    void RidimensionaGriglia();
    // Row heights fitted to the descriptions.
    void AdattaAltezzeRighe();
    // The selected line, or -1.
    int RigaSelezionata() const;
    void SelezionaCella(int riga, int colonna);

    void actAggiungiArticoloExecute();
    void actAggiungiServizioExecute();
    void actAggiungiTestoExecute();
    void actAggiungiNonImponibileExecute();
    void actEliminaRigaExecute();
    void actSpostaRigaSuExecute();
    void actSpostaRigaGiuExecute();

signals:
    void Modificata(bool ricalcolaTotali);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    // The hint of the VAT cell under the pointer; answers whether it shows one.
    bool MostraSuggerimentoIva(const QHelpEvent &help);
    void AggiungiVoce(const TKRVVoceCatalogo &voce);
    void AdattaAltezzaRiga(int riga);
    void SpostaRiga(bool su);

    IKRVMain &m_main;
    TKRVRigheDocumento *m_righe;
    QToolBar *m_barra = nullptr;
};
