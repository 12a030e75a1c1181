#pragma once

#include "Q3Users.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

// Asks the user name and password and checks them; every wrong attempt makes
// the next one of that name wait longer, in this window and in any later one.
class Q3_EXPORT TQ3LoginDialog : public QDialog
{
    Q_OBJECT

public:
    TQ3LoginDialog(TQ3Users &users, const QString &database, QWidget *parent = nullptr);

    // The user name as stored, after an accepted login.
    QString LoggedUser() const { return m_loggedUser; }
    const TQ3LoginThrottle &Throttle() const { return m_users.Throttle(); }

public slots:
    void TryLogin();

private:
    // The wait of the name typed, as the database keeps it.
    void ReadWait();
    void UpdateWait();

    TQ3Users &m_users;
    QLineEdit *txtUtente;
    QLineEdit *txtPassword;
    QLabel *lblAttesa;
    QDialogButtonBox *m_buttons;
    QTimer m_waitTimer;
    int m_waitLeft = 0;
    QString m_loggedUser;
};

// Asks twice for a new password of a user who has none yet.
class Q3_EXPORT TQ3SetPasswordDialog : public QDialog
{
    Q_OBJECT

public:
    TQ3SetPasswordDialog(const QString &userName, QWidget *parent = nullptr);
    QString Password() const;

public slots:
    void Confirm();

private:
    QLineEdit *txtPassword;
    QLineEdit *txtConferma;
};
