#pragma once

#include <QStyledItemDelegate>

#include <functional>

class QTableWidget;
class QTableWidgetItem;

// The statistics windows' grids: no header sections, rows 21 high, read only;
// heading cells drawn as header sections, every cell showing the text the
// window gives for it.
using TKRVTestoCella = std::function<QString(int riga, int colonna)>;
using TKRVCellaIntestazione = std::function<bool(int riga, int colonna)>;

class TKRVDelegatoStatistiche : public QStyledItemDelegate
{
public:
    TKRVDelegatoStatistiche(TKRVTestoCella testo, TKRVCellaIntestazione intestazione, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    TKRVTestoCella m_testo;
    TKRVCellaIntestazione m_intestazione;
};

void KRVPreparaGrigliaStatistiche(QTableWidget *griglia, const QString &nome, TKRVTestoCella testo,
                                  TKRVCellaIntestazione intestazione);

// Writes the rows of texts into the grid's cells; the window then styles each
// cell for what it now holds.
using TKRVStileCella = std::function<void(QTableWidgetItem *cella, int riga, int colonna)>;
void KRVMostraTestiStatistiche(QTableWidget *griglia, const QList<QStringList> &testi, const TKRVStileCella &stile);
