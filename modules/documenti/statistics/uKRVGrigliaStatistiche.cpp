#include "uKRVGrigliaStatistiche.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QTableWidget>

TKRVDelegatoStatistiche::TKRVDelegatoStatistiche(TKRVTestoCella testo, TKRVCellaIntestazione intestazione,
                                                 QObject *parent)
    : QStyledItemDelegate(parent), m_testo(std::move(testo)), m_intestazione(std::move(intestazione))
{}

void TKRVDelegatoStatistiche::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    QStyleOptionViewItem opzione = option;
    initStyleOption(&opzione, index);
    opzione.text = m_testo(index.row(), index.column());
    QStyle *stile = opzione.widget ? opzione.widget->style() : QApplication::style();
    if (m_intestazione(index.row(), index.column())) {
        QStyleOptionHeader intestazione;
        intestazione.rect = opzione.rect;
        intestazione.palette = opzione.palette;
        intestazione.fontMetrics = opzione.fontMetrics;
        intestazione.state = QStyle::State_Enabled | QStyle::State_Raised;
        intestazione.text = opzione.text;
        intestazione.textAlignment = opzione.displayAlignment;
        painter->save();
        painter->setFont(opzione.font);
        stile->drawControl(QStyle::CE_Header, &intestazione, painter, opzione.widget);
        painter->restore();
        return;
    }
    stile->drawControl(QStyle::CE_ItemViewItem, &opzione, painter, opzione.widget);
}

void KRVPreparaGrigliaStatistiche(QTableWidget *griglia, const QString &nome, TKRVTestoCella testo,
                                  TKRVCellaIntestazione intestazione)
{
    griglia->setObjectName(nome);
    griglia->horizontalHeader()->hide();
    griglia->verticalHeader()->hide();
    griglia->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    griglia->verticalHeader()->setDefaultSectionSize(21);
    griglia->setSelectionMode(QAbstractItemView::ContiguousSelection);
    griglia->setSelectionBehavior(QAbstractItemView::SelectItems);
    griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    griglia->setItemDelegate(new TKRVDelegatoStatistiche(std::move(testo), std::move(intestazione), griglia));
}

void KRVMostraTestiStatistiche(QTableWidget *griglia, const QList<QStringList> &testi, const TKRVStileCella &stile)
{
    for (int riga = 0; riga < testi.size(); ++riga) {
        for (int colonna = 0; colonna < testi.at(riga).size(); ++colonna) {
            QTableWidgetItem *cella = griglia->item(riga, colonna);
            if (!cella) {
                cella = new QTableWidgetItem;
                griglia->setItem(riga, colonna, cella);
            }
            cella->setText(testi.at(riga).at(colonna));
            stile(cella, riga, colonna);
        }
    }
}
