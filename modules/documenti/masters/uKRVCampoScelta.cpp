#include "uKRVCampoScelta.h"

#include <QHBoxLayout>

TKRVCampoScelta::TKRVCampoScelta(const QString &labelName, const QString &buttonName, QWidget *parent)
    : QWidget(parent), m_etichetta(new QLabel(this)), m_pulsante(new QToolButton(this))
{
    m_etichetta->setObjectName(labelName);
    m_etichetta->setFrameShape(QFrame::StyledPanel);
    m_etichetta->setFrameShadow(QFrame::Sunken);
    m_etichetta->setMinimumWidth(200);
    m_etichetta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pulsante->setObjectName(buttonName);
    m_pulsante->setText(QStringLiteral("..."));
    auto layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_etichetta);
    layout->addWidget(m_pulsante);
    layout->addStretch(1);
    Svuota();
}

void TKRVCampoScelta::Imposta(int tag, const QString &text)
{
    m_tag = tag;
    m_etichetta->setText(text);
    // Its name is the field's caption; what it shows is read as its description.
    m_etichetta->setAccessibleDescription(text);
}

void TKRVCampoScelta::Svuota()
{
    Imposta(0, QStringLiteral("..."));
}
