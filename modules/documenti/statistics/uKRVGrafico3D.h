#pragma once

#include "KRVStatisticheFatturato.h"

#include <QColor>
#include <QWidget>

// The turnover lines drawn in depth: each year a ribbon one step further back,
// the first year in front, on the same fixed horizontal range as the flat chart.
class TKRVGrafico3D : public QWidget
{
    Q_OBJECT

public:
    explicit TKRVGrafico3D(QWidget *parent = nullptr);

    void ImpostaSerie(const QList<TKRVSerieFatturato> &serie, const QList<QColor> &colori);
    void ImpostaVisibile(int serie, bool visibile);
    bool SerieVisibile(int serie) const { return m_visibili.value(serie, false); }
    static int LarghezzaLinee() { return 1; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<TKRVSerieFatturato> m_serie;
    QList<QColor> m_colori;
    QList<bool> m_visibili;
};
