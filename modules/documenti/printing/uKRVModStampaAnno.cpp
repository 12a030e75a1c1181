#include "uKRVModStampaAnno.h"

#include "uKRVFormKit.h"

#include <QDate>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>

TKRVModStampaAnno::TKRVModStampaAnno(const QString &caption)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::MSWindowsFixedSizeDialogHint), txtAnno(new QSpinBox),
      m_scelte(new QVBoxLayout)
{
    setWindowTitle(caption);
    setModal(true);
    txtAnno->setObjectName(QStringLiteral("txtAnno"));
    txtAnno->setRange(1900, 3000);
    txtAnno->setValue(QDate::currentDate().year());
    auto anno = new QHBoxLayout;
    anno->addWidget(KRVEtichetta(QStringLiteral("Anno"), txtAnno));
    anno->addWidget(txtAnno);
    anno->addStretch(1);

    auto ok = new QPushButton(QStringLiteral("OK"));
    ok->setObjectName(QStringLiteral("cmdOk"));
    ok->setDefault(true);
    auto annulla = new QPushButton(QStringLiteral("Annulla"));
    annulla->setObjectName(QStringLiteral("cmdAnnulla"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(annulla, &QPushButton::clicked, this, &QDialog::reject);
    auto pulsanti = new QHBoxLayout;
    pulsanti->addStretch(1);
    pulsanti->addWidget(ok);
    pulsanti->addWidget(annulla);

    auto layout = new QVBoxLayout(this);
    layout->addLayout(anno);
    layout->addLayout(m_scelte);
    layout->addStretch(1);
    layout->addLayout(pulsanti);
}

void TKRVModStampaAnno::FormCreate()
{
    setFixedSize(sizeHint().expandedTo(QSize(300, 0)));
    if (QScreen *screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}
