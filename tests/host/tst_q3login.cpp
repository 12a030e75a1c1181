#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3LoginDialog.h"
#include "Q3Messages.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestQ3Login : public QObject
{
    Q_OBJECT

private slots:
    void newDatabaseAdminNeedsPassword();
    void passwordStoredOnlyAsSaltedHash();
    void rightAndWrongPassword();
    void shortPasswordRefused();
    void throttleGrows();
    void dialogRefusesWrongPasswordAndWaits();
    void dialogAcceptsRightPassword();
    void newPasswordFieldsReadTheirLabels();
};

void TestQ3Login::newDatabaseAdminNeedsPassword()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    QVERIFY(users.NeedsPassword(QStringLiteral("admin")));
    QVERIFY(users.NeedsPassword(QStringLiteral("ADMIN")));
    QVERIFY(!users.NeedsPassword(QStringLiteral("nessuno")));
    QCOMPARE(users.Login(QStringLiteral("admin"), QString()), QString());
}

void TestQ3Login::passwordStoredOnlyAsSaltedHash()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
    const QString hash = db.Scalar(QStringLiteral("SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'admin'")).toString();
    QVERIFY(hash.startsWith(QLatin1String("$argon2id$")));
    QVERIFY(!hash.contains(QLatin1String("segreto1")));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM UTENTI WHERE PASSWORD_HASH CONTAINING 'segreto1'")).toInt(), 0);
    // The same password hashes differently each time: the salt is random.
    QVERIFY(Q3HashPassword(QStringLiteral("segreto1")) != Q3HashPassword(QStringLiteral("segreto1")));
    QVERIFY(!users.NeedsPassword(QStringLiteral("admin")));
}

void TestQ3Login::rightAndWrongPassword()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
    QCOMPARE(users.Login(QStringLiteral("admin"), QStringLiteral("segreto1")), QStringLiteral("admin"));
    QCOMPARE(users.Login(QStringLiteral("Admin"), QStringLiteral("segreto1")), QStringLiteral("admin"));
    QCOMPARE(users.Login(QStringLiteral("admin"), QStringLiteral("Segreto1")), QString());
    QCOMPARE(users.Login(QStringLiteral("admin"), QStringLiteral("x' OR '1'='1")), QString());
    QCOMPARE(users.Login(QStringLiteral("x' OR '1'='1"), QStringLiteral("segreto1")), QString());
}

void TestQ3Login::shortPasswordRefused()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, users.SetPassword(QStringLiteral("admin"), QStringLiteral("abc")));
    QVERIFY(users.NeedsPassword(QStringLiteral("admin")));
}

void TestQ3Login::throttleGrows()
{
    TQ3LoginThrottle throttle;
    QCOMPARE(throttle.DelaySeconds(), 0);
    QList<int> delays;
    for (int i = 0; i < 8; ++i) {
        throttle.Failed();
        delays << throttle.DelaySeconds();
    }
    QCOMPARE(delays, (QList<int>{1, 2, 4, 8, 16, 30, 30, 30}));
    throttle.Succeeded();
    QCOMPARE(throttle.DelaySeconds(), 0);
}

void TestQ3Login::dialogRefusesWrongPasswordAndWaits()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
    TQ3RecordingResponder responder;
    TQ3LoginDialog dialog(users, db.Target().Database);
    auto user = dialog.findChild<QLineEdit *>(QStringLiteral("txtUtente"));
    auto password = dialog.findChild<QLineEdit *>(QStringLiteral("txtPassword"));
    auto login = dialog.findChild<QPushButton *>(QStringLiteral("cmdAccedi"));
    QVERIFY(user && password && login);
    QCOMPARE(user->accessibleName(), QStringLiteral("Utente"));
    QCOMPARE(password->accessibleName(), QStringLiteral("Password"));
    QCOMPARE(password->echoMode(), QLineEdit::Password);
    user->setText(QStringLiteral("admin"));
    password->setText(QStringLiteral("sbagliata"));
    login->click();
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().at(0).Title, QStringLiteral("Attenzione"));
    QCOMPARE(responder.Messages().at(0).Text, QStringLiteral("Nome utente o password non validi."));
    QCOMPARE(responder.Messages().at(0).Icon, TQ3MsgIcon::Warning);
    QCOMPARE(dialog.Throttle().Failures(), 1);
    QVERIFY(!login->isEnabled());
    QVERIFY(password->text().isEmpty());
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lblAttesa"))->text(),
             QStringLiteral("Attendere 1 secondi prima di riprovare."));
    QVERIFY(dialog.result() != QDialog::Accepted);
}

void TestQ3Login::dialogAcceptsRightPassword()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
    TQ3RecordingResponder responder;
    TQ3LoginDialog dialog(users, db.Target().Database);
    dialog.findChild<QLineEdit *>(QStringLiteral("txtUtente"))->setText(QStringLiteral("ADMIN"));
    dialog.findChild<QLineEdit *>(QStringLiteral("txtPassword"))->setText(QStringLiteral("segreto1"));
    dialog.findChild<QPushButton *>(QStringLiteral("cmdAccedi"))->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.LoggedUser(), QStringLiteral("admin"));
    QVERIFY(responder.Messages().isEmpty());
}

void TestQ3Login::newPasswordFieldsReadTheirLabels()
{
    TQ3SetPasswordDialog dialog(QStringLiteral("admin"));
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("txtPassword"))->accessibleName(), QStringLiteral("Password"));
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("txtConferma"))->accessibleName(),
             QStringLiteral("Conferma password"));
}

QTEST_MAIN(TestQ3Login)
#include "tst_q3login.moc"
