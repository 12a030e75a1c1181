#include "uKRVRiepilogoFatturePA.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

TKRVRiepilogoFatturePA::TKRVRiepilogoFatturePA(const TKRVEsportazioneFatturePA &esito,
                                               const TKRVDestinazioneFatturePA &destinazione, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmRiepilogoFatturePA"));
    setWindowTitle(QStringLiteral("Fatture elettroniche"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto dove = new QLabel((destinazione.Zip ? QStringLiteral("File ZIP: ") : QStringLiteral("Cartella: "))
                           + QDir::toNativeSeparators(destinazione.Percorso));
    dove->setObjectName(QStringLiteral("lblDestinazione"));
    dove->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto testo = new QPlainTextEdit(KRVRiepilogoEsportazione(esito));
    testo->setObjectName(QStringLiteral("txtRiepilogo"));
    testo->setAccessibleName(QStringLiteral("Riepilogo"));
    testo->setReadOnly(true);
    testo->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto pulsanti = new QDialogButtonBox;
    pulsanti->addButton(QStringLiteral("Chiudi"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("btnChiudi"));
    connect(pulsanti, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto layout = new QVBoxLayout(this);
    layout->addWidget(dove);
    layout->addWidget(testo, 1);
    layout->addWidget(pulsanti);
    resize(640, 420);
}
