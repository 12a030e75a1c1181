#pragma once

#include "KRVRedditivitaMensile.h"

#include <QStringList>
#include <QWidget>

class QSpinBox;
class QTableWidget;
class QToolBar;
class IKRVMain;

// "Redditività mensile": the gross margin of a chosen year by month and line
// kind, with totals and averages.
class TKRVStatisticheRedditivitaMensile : public QWidget
{
    Q_OBJECT

public:
    explicit TKRVStatisticheRedditivitaMensile(IKRVMain &main, QWidget *parent = nullptr);

    void actAggiornaTabellaExecute();
    void CreaGrigliaVuota();
    void RidimensionaGriglia();
    void Ripristina();

    // What a cell shows: money in the currency format where the table holds numbers.
    QString TestoVisualizzato(int riga, int colonna) const;
    // Whether the cell is drawn as a heading.
    static bool CellaIntestazione(int riga, int colonna);
    // The statements the last refresh sent to the database.
    QStringList IstruzioniEseguite() const { return m_istruzioni; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void MostraTabella(const TKRVTabellaRedditivita &tabella);

    QToolBar *tBarStandard;
    QSpinBox *speAnno;
    QTableWidget *grdTabella;
    QStringList m_istruzioni;
};
