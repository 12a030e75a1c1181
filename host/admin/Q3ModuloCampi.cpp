#include "Q3ModuloCampi.h"

#include "Q3AdminKit.h"
#include "Q3Guards.h"
#include "Q3Messages.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

bool Q3EseguiComando(const std::function<void()> &comando)
{
    try {
        comando();
        return true;
    } catch (const EQ3Rifiuto &rifiuto) {
        Q3ShowWarning(rifiuto.Message());
    } catch (...) {
        Q3ShowCaughtFailure();
    }
    return false;
}

TQ3ModuloCampi::TQ3ModuloCampi(const QString &objectName, const QString &caption, QWidget *parent) : QDialog(parent)
{
    setObjectName(objectName);
    setWindowTitle(caption);
    m_campi = new QFormLayout;
    auto pulsanti = new QDialogButtonBox;
    pulsanti->setObjectName(QStringLiteral("btnPulsanti"));
    QPushButton *ok = pulsanti->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("btnOK"));
    ok->setDefault(true);
    QPushButton *annulla = pulsanti->addButton(QStringLiteral("Annulla"), QDialogButtonBox::RejectRole);
    annulla->setObjectName(QStringLiteral("btnAnnulla"));
    connect(pulsanti, &QDialogButtonBox::accepted, this, &TQ3ModuloCampi::accept);
    connect(pulsanti, &QDialogButtonBox::rejected, this, &TQ3ModuloCampi::reject);
    auto layout = new QVBoxLayout(this);
    layout->addLayout(m_campi);
    layout->addWidget(pulsanti);
}

QLineEdit *TQ3ModuloCampi::AggiungiCampo(const QString &name, const QString &caption, bool password)
{
    QLineEdit *campo = Q3CampoTesto(name);
    if (password)
        campo->setEchoMode(QLineEdit::Password);
    campo->setMinimumWidth(280);
    m_campi->addRow(Q3Etichetta(caption, campo), campo);
    return campo;
}

QString TQ3ModuloCampi::Testo(const QString &name) const
{
    auto campo = findChild<QLineEdit *>(name);
    return campo ? campo->text() : QString();
}

void TQ3ModuloCampi::accept()
{
    if (!m_conferma || Q3EseguiComando(m_conferma))
        QDialog::accept();
}
