#include "Q3LoginDialog.h"

#include "Q3Guards.h"
#include "Q3HostSchema.h"
#include "Q3Messages.h"

#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// A caption as read aloud: without the "&" that marks its mnemonic ("&&" is a plain "&").
QString WithoutMnemonic(QString caption)
{
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption.at(i) == QLatin1Char('&'))
            caption.remove(i, 1);
    }
    return caption;
}

QLineEdit *AddField(QFormLayout *form, const QString &objectName, const QString &caption, bool secret)
{
    auto edit = new QLineEdit;
    edit->setObjectName(objectName);
    edit->setAccessibleName(WithoutMnemonic(caption));
    if (secret)
        edit->setEchoMode(QLineEdit::Password);
    auto label = new QLabel(caption + QLatin1Char(':'));
    label->setBuddy(edit);
    form->addRow(label, edit);
    return edit;
}

} // namespace

TQ3LoginDialog::TQ3LoginDialog(TQ3Users &users, const QString &database, QWidget *parent)
    : QDialog(parent), m_users(users)
{
    setObjectName(QStringLiteral("TQ3LoginDialog"));
    setWindowTitle(QStringLiteral("Quillo 3 - Accesso"));
    auto layout = new QVBoxLayout(this);
    auto intro = new QLabel(QStringLiteral("Database: %1").arg(database));
    intro->setWordWrap(true);
    layout->addWidget(intro);
    auto form = new QFormLayout;
    txtUtente = AddField(form, QStringLiteral("txtUtente"), QStringLiteral("&Utente"), false);
    txtPassword = AddField(form, QStringLiteral("txtPassword"), QStringLiteral("&Password"), true);
    layout->addLayout(form);
    lblAttesa = new QLabel;
    lblAttesa->setObjectName(QStringLiteral("lblAttesa"));
    layout->addWidget(lblAttesa);
    m_buttons = new QDialogButtonBox;
    m_buttons->addButton(QStringLiteral("Accedi"), QDialogButtonBox::AcceptRole)
        ->setObjectName(QStringLiteral("cmdAccedi"));
    m_buttons->addButton(QStringLiteral("Annulla"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdAnnulla"));
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &TQ3LoginDialog::TryLogin);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_waitTimer.setInterval(1000);
    connect(&m_waitTimer, &QTimer::timeout, this, [this] {
        --m_waitLeft;
        UpdateWait();
    });
    txtUtente->setText(QString::fromLatin1(Q3AdminUser));
    txtPassword->setFocus();
    setMinimumWidth(380);
    // Failures of an earlier window or start still count.
    ReadWait();
    connect(txtUtente, &QLineEdit::textChanged, this, &TQ3LoginDialog::ReadWait);
}

void TQ3LoginDialog::TryLogin()
{
    ReadWait();
    if (m_waitLeft > 0)
        return;
    Q3Guarded([this] {
        const QString user = m_users.Login(txtUtente->text().trimmed(), txtPassword->text());
        if (!user.isEmpty()) {
            m_loggedUser = user;
            accept();
            return;
        }
        txtPassword->clear();
        Q3ShowWarning(QStringLiteral("Nome utente o password non validi."));
        ReadWait();
    });
}

void TQ3LoginDialog::ReadWait()
{
    Q3Guarded([this] { m_waitLeft = m_users.Throttle().WaitSeconds(txtUtente->text().trimmed()); });
    UpdateWait();
}

void TQ3LoginDialog::UpdateWait()
{
    const bool waiting = m_waitLeft > 0;
    m_buttons->buttons().first()->setEnabled(!waiting);
    lblAttesa->setText(waiting ? QStringLiteral("Attendere %1 secondi prima di riprovare.").arg(m_waitLeft)
                               : QString());
    if (waiting && !m_waitTimer.isActive())
        m_waitTimer.start();
    if (!waiting)
        m_waitTimer.stop();
}

TQ3SetPasswordDialog::TQ3SetPasswordDialog(const QString &userName, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("TQ3SetPasswordDialog"));
    setWindowTitle(QStringLiteral("Quillo 3 - Password dell'amministratore"));
    auto layout = new QVBoxLayout(this);
    auto intro = new QLabel(QStringLiteral("Il database è nuovo. Scegliere la password dell'utente \"%1\" "
                                           "(almeno %2 caratteri).")
                                .arg(userName)
                                .arg(Q3MinPasswordLength));
    intro->setWordWrap(true);
    layout->addWidget(intro);
    auto form = new QFormLayout;
    txtPassword = AddField(form, QStringLiteral("txtPassword"), QStringLiteral("&Password"), true);
    txtConferma = AddField(form, QStringLiteral("txtConferma"), QStringLiteral("&Conferma password"), true);
    layout->addLayout(form);
    auto buttons = new QDialogButtonBox;
    buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole)->setObjectName(QStringLiteral("cmdOK"));
    buttons->addButton(QStringLiteral("Annulla"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdAnnulla"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &TQ3SetPasswordDialog::Confirm);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setMinimumWidth(380);
}

QString TQ3SetPasswordDialog::Password() const
{
    return txtPassword->text();
}

void TQ3SetPasswordDialog::Confirm()
{
    if (txtPassword->text().size() < Q3MinPasswordLength) {
        Q3ShowWarning(QStringLiteral("La password deve contenere almeno %1 caratteri.").arg(Q3MinPasswordLength));
        return;
    }
    if (txtPassword->text() != txtConferma->text()) {
        Q3ShowWarning(QStringLiteral("Le due password non coincidono."));
        return;
    }
    accept();
}
