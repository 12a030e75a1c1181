#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3LoginDialog.h"
#include "Q3Messages.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
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
    void passwordsAppearNowhereInTheFile();
    void waitingNameIsRefusedUnchecked();
    void throttleOutlivesTheWindowAndTheConnection();
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
    const QString hash =
        db.Scalar(QStringLiteral("SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'admin'")).toString();
    QVERIFY(hash.startsWith(QLatin1String("$argon2id$")));
    QVERIFY(!hash.contains(QLatin1String("segreto1")));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM UTENTI WHERE PASSWORD_HASH CONTAINING 'segreto1'")).toInt(),
             0);
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
    QList<int> delays;
    for (int failures = 0; failures <= 8; ++failures)
        delays << TQ3LoginThrottle::DelaySeconds(failures);
    QCOMPARE(delays, (QList<int>{0, 1, 2, 4, 8, 16, 30, 30, 30}));

    TQ3TestDatabase db;
    TQ3LoginThrottle throttle(db.Db());
    QCOMPARE(throttle.WaitSeconds(QStringLiteral("admin")), 0);
    throttle.Failed(QStringLiteral("admin"));
    throttle.Failed(QStringLiteral("ADMIN"));
    throttle.Failed(QStringLiteral("chiunque"));
    QCOMPARE(throttle.Failures(QStringLiteral("Admin")), 2);
    QCOMPARE(throttle.Failures(QStringLiteral("chiunque")), 1);
    QVERIFY(throttle.WaitSeconds(QStringLiteral("admin")) >= 1);
    QVERIFY(throttle.WaitSeconds(QStringLiteral("admin")) <= 2);
    // The last failure long ago: nothing left to wait, though the count stays.
    db.Exec(QStringLiteral("UPDATE ACCESSI_FALLITI SET ULTIMO_TENTATIVO = DATEADD(-1 MINUTE TO CURRENT_TIMESTAMP)"));
    QCOMPARE(throttle.WaitSeconds(QStringLiteral("admin")), 0);
    QCOMPARE(throttle.Failures(QStringLiteral("admin")), 2);
    throttle.Succeeded(QStringLiteral("admin"));
    QCOMPARE(throttle.Failures(QStringLiteral("admin")), 0);
    QCOMPARE(throttle.Failures(QStringLiteral("chiunque")), 1);
}

void TestQ3Login::passwordsAppearNowhereInTheFile()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    const QList<QPair<QString, QString>> passwords{
        {QStringLiteral("admin"), QStringLiteral("Amministra-7391")},
        {QStringLiteral("mario"), QStringLiteral("ParolaDiMario#42")},
        {QStringLiteral("lucia"), QStringLiteral("Lucìa€perché2024")},
    };
    for (const auto &[user, password] : passwords) {
        if (user != QLatin1String("admin"))
            db.Exec(QStringLiteral("INSERT INTO UTENTI (IDUTENTE, USER_NAME) VALUES (0, %1)").arg(QuotedStr(user)));
        users.SetPassword(user, password);
        QCOMPARE(users.Login(user, password), user);
    }
    // A mistyped password is not kept either.
    const QString mistyped = QStringLiteral("TentativoSbagliato99");
    QCOMPARE(users.Login(QStringLiteral("mario"), mistyped), QString());
    db.Connection()->Close();

    QFile file(db.Target().Database);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.size() > 0);
    QStringList secrets{mistyped};
    for (const auto &entry : passwords)
        secrets << entry.second;
    for (const QString &secret : std::as_const(secrets)) {
        QByteArray utf16le(reinterpret_cast<const char *>(secret.utf16()), secret.size() * 2);
        QByteArray utf16be;
        for (const QChar c : secret) {
            utf16be.append(char(c.unicode() >> 8));
            utf16be.append(char(c.unicode() & 0xff));
        }
        for (const QByteArray &form : {secret.toUtf8(), utf16le, utf16be})
            QVERIFY2(!bytes.contains(form), qPrintable(secret));
    }
    // The scan does find what is in the file: the names are.
    QVERIFY(bytes.contains(QByteArrayLiteral("lucia")));
}

void TestQ3Login::waitingNameIsRefusedUnchecked()
{
    TQ3TestDatabase db;
    TQ3Users users(db.Db());
    users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
    QCOMPARE(users.Login(QStringLiteral("admin"), QStringLiteral("sbagliata")), QString());
    QCOMPARE(users.Throttle().Failures(QStringLiteral("admin")), 1);
    // Within the wait even the right password is refused, and the refusal is no failure.
    QCOMPARE(users.Login(QStringLiteral("admin"), QStringLiteral("segreto1")), QString());
    QCOMPARE(users.Throttle().Failures(QStringLiteral("admin")), 1);
    // Another name does not wait for this one.
    QCOMPARE(users.Login(QStringLiteral("nessuno"), QStringLiteral("segreto1")), QString());
    QCOMPARE(users.Throttle().Failures(QStringLiteral("nessuno")), 1);
    db.Exec(QStringLiteral("UPDATE ACCESSI_FALLITI SET ULTIMO_TENTATIVO = DATEADD(-1 MINUTE TO CURRENT_TIMESTAMP)"));
    QCOMPARE(users.Login(QStringLiteral("ADMIN"), QStringLiteral("segreto1")), QStringLiteral("admin"));
    QCOMPARE(users.Throttle().Failures(QStringLiteral("admin")), 0);
}

void TestQ3Login::throttleOutlivesTheWindowAndTheConnection()
{
    TQ3TestDatabase db;
    {
        TQ3Users users(db.Db());
        users.SetPassword(QStringLiteral("admin"), QStringLiteral("segreto1"));
        for (int i = 0; i < 5; ++i)
            TQ3LoginThrottle(db.Db()).Failed(QStringLiteral("admin"));
    }
    db.Connection()->Close();

    // A new connection to the file, as a new start of the program makes.
    TQ3Connection again;
    again.SetConnectionString(db.ConnectionString());
    again.Open();
    TQ3Users users(again.Database());
    TQ3RecordingResponder responder;
    TQ3LoginDialog dialog(users, db.Target().Database);
    auto login = dialog.findChild<QPushButton *>(QStringLiteral("cmdAccedi"));
    QVERIFY(!login->isEnabled());
    static const QRegularExpression waitText(QStringLiteral("^Attendere (\\d+) secondi prima di riprovare\\.$"));
    const QRegularExpressionMatch match =
        waitText.match(dialog.findChild<QLabel *>(QStringLiteral("lblAttesa"))->text());
    QVERIFY(match.hasMatch());
    // Sixteen seconds after the fifth failure, less the time this test took to get here.
    QVERIFY(match.captured(1).toInt() > 10 && match.captured(1).toInt() <= 16);
    dialog.findChild<QLineEdit *>(QStringLiteral("txtPassword"))->setText(QStringLiteral("segreto1"));
    dialog.TryLogin();
    QVERIFY(dialog.result() != QDialog::Accepted);
    QVERIFY(responder.Messages().isEmpty());
    QCOMPARE(dialog.Throttle().Failures(QStringLiteral("admin")), 5);
    // Another name is not held up by this one's wait.
    dialog.findChild<QLineEdit *>(QStringLiteral("txtUtente"))->setText(QStringLiteral("mario"));
    QVERIFY(login->isEnabled());
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
    QCOMPARE(dialog.Throttle().Failures(QStringLiteral("admin")), 1);
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
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("txtPassword"))->accessibleName(),
             QStringLiteral("Password"));
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("txtConferma"))->accessibleName(),
             QStringLiteral("Conferma password"));
}

QTEST_MAIN(TestQ3Login)
#include "tst_q3login.moc"
