#include "uKRVGrafico3D.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double AsseMassimo = 12;
constexpr int Margine = 40;
constexpr int Profondita = 18;

} // namespace

TKRVGrafico3D::TKRVGrafico3D(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("grf3D"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
}

void TKRVGrafico3D::ImpostaSerie(const QList<TKRVSerieFatturato> &serie, const QList<QColor> &colori)
{
    m_serie = serie;
    m_colori = colori;
    m_visibili.resize(serie.size(), true);
    update();
}

void TKRVGrafico3D::ImpostaVisibile(int serie, bool visibile)
{
    if (serie < 0 || serie >= m_visibili.size())
        return;
    m_visibili[serie] = visibile;
    update();
}

void TKRVGrafico3D::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int strati = int(m_serie.size());
    const QRect area =
        rect().adjusted(Margine, Margine / 2 + strati * Profondita, -Margine - strati * Profondita, -Margine);
    if (area.width() <= 0 || area.height() <= 0)
        return;

    double minimo = 0;
    double massimo = 0;
    for (const TKRVSerieFatturato &linea : m_serie) {
        // Points beyond the axis are not drawn, so they do not set the scale.
        for (int x = 0; x < linea.Valori.size() && x <= int(AsseMassimo); ++x) {
            minimo = std::min(minimo, linea.Valori.at(x));
            massimo = std::max(massimo, linea.Valori.at(x));
        }
    }
    if (massimo == minimo)
        massimo = minimo + 1;
    const auto punto = [&](double x, double valore, int strato) {
        return QPointF(area.left() + x * area.width() / AsseMassimo + strato * Profondita,
                       area.bottom() - (valore - minimo) * area.height() / (massimo - minimo) - strato * Profondita);
    };

    // The walls: floor and back, with the month marks.
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    const QPointF fondo[] = {punto(0, minimo, 0), punto(AsseMassimo, minimo, 0), punto(AsseMassimo, minimo, strati),
                             punto(0, minimo, strati)};
    painter.drawPolygon(fondo, 4);
    painter.drawLine(punto(0, minimo, strati), punto(0, massimo, strati));
    painter.drawLine(punto(AsseMassimo, minimo, strati), punto(AsseMassimo, massimo, strati));
    painter.setPen(palette().color(QPalette::Text));
    const QStringList etichette = m_serie.isEmpty() ? QStringList() : m_serie.constFirst().Etichette;
    for (int x = 0; x <= int(AsseMassimo) && x < etichette.size(); ++x)
        painter.drawText(QRectF(punto(x, minimo, 0) - QPointF(15, -2), QSizeF(30, 16)), Qt::AlignCenter,
                         etichette.at(x));

    // Back years first, so that the front ones cover them.
    painter.setClipRect(area.adjusted(0, -strati * Profondita, strati * Profondita, 0));
    for (int strato = strati - 1; strato >= 0; --strato) {
        if (!m_visibili.value(strato))
            continue;
        const TKRVSerieFatturato &linea = m_serie.at(strato);
        const QColor colore = m_colori.value(strato, Qt::black);
        QColor riempimento = colore;
        riempimento.setAlpha(110);
        painter.setPen(QPen(colore, LarghezzaLinee()));
        for (int i = 0; i + 1 < linea.Valori.size(); ++i) {
            const QPointF faccia[] = {punto(i, linea.Valori.at(i), strato),
                                      punto(i + 1, linea.Valori.at(i + 1), strato),
                                      punto(i + 1, linea.Valori.at(i + 1), strato)
                                          + QPointF(Profondita * 0.7, -Profondita * 0.7),
                                      punto(i, linea.Valori.at(i), strato)
                                          + QPointF(Profondita * 0.7, -Profondita * 0.7)};
            painter.setBrush(riempimento);
            painter.drawPolygon(faccia, 4);
        }
    }
}
