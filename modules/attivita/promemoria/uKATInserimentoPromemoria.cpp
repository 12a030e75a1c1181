#include "uKATInserimentoPromemoria.h"

#include "KATPromemoria.h"
#include "Q3Messages.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

TKATInserimentoPromemoria::TKATInserimentoPromemoria(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("KATInserimentoPromemoria"));
    setWindowTitle(QStringLiteral("Promemoria"));
    txtTitolo = new QLineEdit(this);
    txtTitolo->setObjectName(QStringLiteral("txtTitolo"));
    txtTitolo->setMaxLength(KATLunghezzaTitolo);
    txtData = new QDateEdit(this);
    txtData->setObjectName(QStringLiteral("txtData"));
    txtData->setCalendarPopup(true);
    memoNote = new QPlainTextEdit(this);
    memoNote->setObjectName(QStringLiteral("memoNote"));
    memoNote->setTabChangesFocus(true);
    chkFatto = new QCheckBox(QStringLiteral("Fatto"), this);
    chkFatto->setObjectName(QStringLiteral("chkFatto"));

    auto campi = new QFormLayout;
    for (const auto &[etichetta, campo] : {std::pair<QString, QWidget *>{QStringLiteral("Titolo"), txtTitolo},
                                           {QStringLiteral("Data"), txtData},
                                           {QStringLiteral("Note"), memoNote}}) {
        campo->setAccessibleName(etichetta);
        campi->addRow(etichetta, campo);
    }
    campi->addRow(QString(), chkFatto);

    auto pulsanti = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    pulsanti->setObjectName(QStringLiteral("btnPulsanti"));
    pulsanti->button(QDialogButtonBox::Save)->setText(QStringLiteral("Salva"));
    pulsanti->button(QDialogButtonBox::Save)->setObjectName(QStringLiteral("btnSalva"));
    pulsanti->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Annulla"));
    pulsanti->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("btnAnnulla"));
    connect(pulsanti, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pulsanti, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto layout = new QVBoxLayout(this);
    layout->addLayout(campi);
    layout->addWidget(pulsanti);
    resize(420, 260);
}

void TKATInserimentoPromemoria::Imposta(const QString &titolo, const QDate &data, const QString &note, bool fatto)
{
    txtTitolo->setText(titolo);
    txtData->setDate(data);
    memoNote->setPlainText(note);
    chkFatto->setChecked(fatto);
}

void TKATInserimentoPromemoria::accept()
{
    if (Titolo().isEmpty()) {
        Q3ShowWarning(QStringLiteral("Indicare il titolo del promemoria."));
        txtTitolo->setFocus();
        return;
    }
    QDialog::accept();
}
