// The windows "Utenti e ruoli" and "Cambia password", driven as the
// administrator and as a colleague would drive them.
#include "Q3AdminTestKit.h"
#include "Q3CambiaPassword.h"
#include "Q3HostSchema.h"
#include "Q3Messages.h"
#include "Q3Ruoli.h"
#include "Q3Users.h"
#include "Q3UtentiRuoli.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

using namespace Q3AdminTest;

namespace {

const QString Admin = QString::fromLatin1(Q3AdminUser);
const QString Amministratore = QString::fromLatin1(Q3AdminRole);
const QString Modifica = QStringLiteral("Fatture di vendita (modifica)");

// The rights the module "Documenti" adds to the catalogue when it is loaded.
const QStringList DirittiDocumenti = {QStringLiteral("Fatture di vendita (eliminazione)"),
                                      QStringLiteral("Note di accredito (eliminazione)"),
                                      QStringLiteral("Statistiche (visualizzazione)"),
                                      QStringLiteral("Fatture di vendita (visualizzazione)"),
                                      Modifica,
                                      QStringLiteral("Note di accredito (visualizzazione)"),
                                      QStringLiteral("Note di accredito (modifica)")};

void SeedDirittiDocumenti(const TQ3TestDatabase &db)
{
    for (const QString &diritto : DirittiDocumenti)
        db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, %1, 'Documenti')").arg(QuotedStr(diritto)));
}

int IdRuolo(const TQ3TestDatabase &db, const QString &nome)
{
    return db.Scalar(QStringLiteral("SELECT IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = ") + QuotedStr(nome))
        .toInt();
}

QStringList Tabelle(const TQ3TestDatabase &db)
{
    return db.Rows(QStringLiteral("SELECT IDUTENTE, USER_NAME, PASSWORD_HASH, ATTIVO FROM UTENTI ORDER BY 1"))
           + db.Rows(QStringLiteral("SELECT * FROM RUOLI_UTENTE ORDER BY 1"))
           + db.Rows(QStringLiteral("SELECT * FROM UTENTI_RUOLI ORDER BY 1, 2"))
           + db.Rows(QStringLiteral("SELECT * FROM ABILITAZIONI_RUOLI ORDER BY 1, 2"));
}

bool SameBox(const TQ3Message &message, const QString &title, const QString &text, TQ3MsgIcon icon,
             TQ3MsgButtons buttons)
{
    if (message.Title == title && message.Text == text && message.Icon == icon && message.Buttons == buttons)
        return true;
    qWarning("box \"%s\": \"%s\"", qPrintable(message.Title), qPrintable(message.Text));
    return false;
}

bool Warning(const TQ3Message &message, const QString &text)
{
    return SameBox(message, QStringLiteral("Attenzione"), text, TQ3MsgIcon::Warning, TQ3MsgButtons::Ok);
}

// Waits out the delay a refused login earned the name.
void WaitThrottle(const TQ3TestDatabase &db, const QString &user)
{
    QTest::qWait(TQ3Users(db.Db()).Throttle().WaitSeconds(user) * 1000 + 100);
}

} // namespace

class TestQ3UtentiRuoli : public QObject
{
    Q_OBJECT

private slots:
    void entryOpensTheModalWindow();
    void everyControlNamedAndLabelled();
    void colleagueRefusedUntilGrantedInTheWindow();
    void lastAdministratorProtectedInTheWindow();
    void unsavedRightsAskedBeforeAnotherRoleOrClosing();
    void disabledColleagueCannotLogIn();
    void administratorSetsAPassword();
    void ownPasswordChanged();
    void hostileNamesTypedAreStoredUnchanged_data();
    void hostileNamesTypedAreStoredUnchanged();
    void tooLongNameRefusedAndKept();
};

void TestQ3UtentiRuoli::entryOpensTheModalWindow()
{
    TQ3TestDatabase db;
    bool opened = false;
    QString caption;
    QStringList pages;
    WhenModal(
        QStringLiteral("Q3UtentiRuoli"),
        [&](QDialog *window) {
            caption = window->windowTitle();
            auto tabs = Field<QTabWidget>(window, QStringLiteral("tabPagine"));
            for (int i = 0; i < tabs->count(); ++i)
                pages << tabs->tabText(i);
            Click(window, QStringLiteral("btnChiudi"));
        },
        &opened);
    Q3ApriUtentiRuoli(db.Db(), nullptr);
    QVERIFY(opened);
    QCOMPARE(caption, QStringLiteral("Utenti e ruoli"));
    QCOMPARE(pages, QStringList({QStringLiteral("Utenti"), QStringLiteral("Ruoli")}));

    opened = false;
    WhenModal(
        QStringLiteral("Q3CambiaPassword"), [&](QDialog *window) { caption = window->windowTitle(); }, &opened);
    Q3ApriCambiaPassword(db.Db(), Admin, nullptr);
    QVERIFY(opened);
    QCOMPARE(caption, QStringLiteral("Cambia password"));
}

void TestQ3UtentiRuoli::everyControlNamedAndLabelled()
{
    TQ3TestDatabase db;
    TQ3UtentiRuoli window(db.Db());
    TQ3CambiaPassword password(db.Db(), Admin, TQ3CambiaPassword::Modo::Cambio);
    for (QWidget *form : {static_cast<QWidget *>(&window), static_cast<QWidget *>(&password)}) {
        QStringList buddies;
        for (QLabel *label : form->findChildren<QLabel *>()) {
            if (label->buddy())
                buddies << label->buddy()->objectName();
        }
        for (QWidget *control : form->findChildren<QWidget *>()) {
            // A list's header is part of the list.
            const bool input = qobject_cast<QLineEdit *>(control)
                               || (qobject_cast<QAbstractItemView *>(control) && !qobject_cast<QHeaderView *>(control));
            if (qobject_cast<QAbstractButton *>(control) || input)
                QVERIFY2(!control->objectName().isEmpty(), control->metaObject()->className());
            if (input && !control->objectName().startsWith(QLatin1String("qt_")))
                QVERIFY2(buddies.contains(control->objectName()), qPrintable(control->objectName()));
        }
    }
    QCOMPARE(Field<QLineEdit>(&password, QStringLiteral("txtPasswordAttuale"))->echoMode(), QLineEdit::Password);
    QCOMPARE(Field<QLineEdit>(&password, QStringLiteral("txtNuovaPassword"))->accessibleName(),
             QStringLiteral("Nuova password"));
}

void TestQ3UtentiRuoli::colleagueRefusedUntilGrantedInTheWindow()
{
    TQ3TestDatabase db;
    SeedDirittiDocumenti(db);
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();

    NewUser(&window, QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    NewRole(&window, QStringLiteral("Vendite"));
    QCOMPARE(CurrentRole(&window), QStringLiteral("Vendite"));
    for (const QString &diritto : DirittiDocumenti) {
        QCOMPARE(Right(&window, diritto)->checkState(0), Qt::Unchecked);
        if (diritto != Modifica)
            Right(&window, diritto)->setCheckState(0, Qt::Checked);
    }
    QVERIFY(window.DirittiModificati());
    Click(&window, QStringLiteral("btnSalvaDiritti"));
    QVERIFY(!window.DirittiModificati());

    SelectUser(&window, QStringLiteral("mrossi"));
    const int vendite = IdRuolo(db, QStringLiteral("Vendite"));
    QVERIFY(!RoleBox(&window, vendite)->isChecked());
    Click(RoleBox(&window, vendite));
    QVERIFY(RoleBox(&window, vendite)->isChecked());

    SetPassword(&window, QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    QCOMPARE(boxes.Messages().size(), 0);

    const QString utente = TQ3Users(db.Db()).Login(QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    QCOMPARE(utente, QStringLiteral("mrossi"));
    QVERIFY(UserHolds(db, utente, QStringLiteral("Fatture di vendita (visualizzazione)")));
    QVERIFY(!UserHolds(db, utente, Modifica));
    QVERIFY(!Q3UtenteAmministratore(db.Db(), utente));

    SelectRole(&window, QStringLiteral("Vendite"));
    Right(&window, Modifica)->setCheckState(0, Qt::Checked);
    Click(&window, QStringLiteral("btnSalvaDiritti"));
    QVERIFY(UserHolds(db, utente, Modifica));
    QCOMPARE(boxes.Messages().size(), 0);
}

void TestQ3UtentiRuoli::lastAdministratorProtectedInTheWindow()
{
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();
    const QStringList prima = Tabelle(db);
    const int amministratore = IdRuolo(db, Amministratore);

    SelectUser(&window, Admin);
    QCOMPARE(Field<QPushButton>(&window, QStringLiteral("btnAttivaUtente"))->text(), QStringLiteral("&Disattiva"));
    Click(&window, QStringLiteral("btnAttivaUtente"));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(Warning(boxes.Messages().at(0), QStringLiteral("Impossibile disattivare l'ultimo amministratore attivo.")));

    boxes.Clear();
    QVERIFY(RoleBox(&window, amministratore)->isChecked());
    Click(RoleBox(&window, amministratore));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(
        Warning(boxes.Messages().at(0),
                QStringLiteral("Impossibile togliere il ruolo \"Amministratore\" all'ultimo amministratore attivo.")));
    // The box shows again what the database holds.
    QVERIFY(RoleBox(&window, amministratore)->isChecked());

    boxes.Clear();
    SelectRole(&window, Amministratore);
    Click(&window, QStringLiteral("btnEliminaRuolo"));
    QCOMPARE(boxes.Messages().size(), 2);
    QVERIFY(SameBox(boxes.Messages().at(0), QStringLiteral("Conferma"),
                    QStringLiteral("Eliminare il ruolo \"Amministratore\"?"), TQ3MsgIcon::Question,
                    TQ3MsgButtons::YesNo));
    QVERIFY(Warning(boxes.Messages().at(1), QStringLiteral("Il ruolo \"Amministratore\" non può essere eliminato.")));

    boxes.Clear();
    bool stayedOpen = false;
    WhenModal(QStringLiteral("Q3RinominaRuolo"), [&](QDialog *form) {
        QCOMPARE(Field<QLineEdit>(form, QStringLiteral("txtNomeRuolo"))->text(), Amministratore);
        stayedOpen = !FillAndConfirm(form, {{QStringLiteral("txtNomeRuolo"), QStringLiteral("Capo")}});
        QCOMPARE(Field<QLineEdit>(form, QStringLiteral("txtNomeRuolo"))->text(), QStringLiteral("Capo"));
    });
    Click(&window, QStringLiteral("btnRinominaRuolo"));
    QVERIFY(stayedOpen);
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(Warning(boxes.Messages().at(0), QStringLiteral("Il ruolo \"Amministratore\" non può essere rinominato.")));
    QCOMPARE(CurrentRole(&window), Amministratore);

    boxes.Clear();
    QCOMPARE(Right(&window, QStringLiteral("Controllo completo"))->checkState(0), Qt::Checked);
    Right(&window, QStringLiteral("Controllo completo"))->setCheckState(0, Qt::Unchecked);
    Click(&window, QStringLiteral("btnSalvaDiritti"));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(
        Warning(boxes.Messages().at(0),
                QStringLiteral("Il diritto \"Controllo completo\" non può essere tolto al ruolo \"Amministratore\".")));
    // What the user chose is still there, unsaved.
    QVERIFY(window.DirittiModificati());
    QCOMPARE(Right(&window, QStringLiteral("Controllo completo"))->checkState(0), Qt::Unchecked);

    QCOMPARE(Tabelle(db), prima);
    QVERIFY(Q3UtenteAmministratore(db.Db(), Admin));
    boxes.Clear();
    boxes.Enqueue(TQ3MsgResult::No);
    Click(&window, QStringLiteral("btnChiudi"));
    QVERIFY(!window.isVisible());
    QCOMPARE(Tabelle(db), prima);
}

void TestQ3UtentiRuoli::unsavedRightsAskedBeforeAnotherRoleOrClosing()
{
    TQ3TestDatabase db;
    SeedDirittiDocumenti(db);
    TQ3Ruoli ruoli(db.Db());
    const int vendite = ruoli.NuovoRuolo(QStringLiteral("Vendite"));
    const int acquisti = ruoli.NuovoRuolo(QStringLiteral("Acquisti"));
    const int statistiche =
        db.Scalar(QStringLiteral("SELECT IDABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = "
                                 "'Statistiche (visualizzazione)'"))
            .toInt();
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();

    SelectRole(&window, QStringLiteral("Vendite"));
    Right(&window, QStringLiteral("Statistiche (visualizzazione)"))->setCheckState(0, Qt::Checked);
    boxes.Enqueue(TQ3MsgResult::Cancel);
    SelectRole(&window, QStringLiteral("Acquisti"));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(SameBox(boxes.Messages().at(0), QStringLiteral("Conferma"),
                    QStringLiteral("I diritti del ruolo \"Vendite\" sono stati modificati e non salvati.\n\rSalvarli?"),
                    TQ3MsgIcon::Question, TQ3MsgButtons::YesNoCancel));
    QCOMPARE(CurrentRole(&window), QStringLiteral("Vendite"));
    QCOMPARE(Right(&window, QStringLiteral("Statistiche (visualizzazione)"))->checkState(0), Qt::Checked);
    QCOMPARE(ruoli.DirittiRuolo(vendite), QList<int>());

    boxes.Clear();
    boxes.Enqueue(TQ3MsgResult::Yes);
    SelectRole(&window, QStringLiteral("Acquisti"));
    QCOMPARE(boxes.Messages().size(), 1);
    QCOMPARE(CurrentRole(&window), QStringLiteral("Acquisti"));
    QCOMPARE(ruoli.DirittiRuolo(vendite), QList<int>{statistiche});
    QCOMPARE(Right(&window, QStringLiteral("Statistiche (visualizzazione)"))->checkState(0), Qt::Unchecked);

    boxes.Clear();
    Right(&window, Modifica)->setCheckState(0, Qt::Checked);
    boxes.Enqueue(TQ3MsgResult::Cancel);
    Click(&window, QStringLiteral("btnChiudi"));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(
        SameBox(boxes.Messages().at(0), QStringLiteral("Conferma"),
                QStringLiteral("I diritti del ruolo \"Acquisti\" sono stati modificati e non salvati.\n\rSalvarli?"),
                TQ3MsgIcon::Question, TQ3MsgButtons::YesNoCancel));
    QVERIFY(window.isVisible());
    QVERIFY(window.DirittiModificati());

    boxes.Clear();
    boxes.Enqueue(TQ3MsgResult::No);
    Click(&window, QStringLiteral("btnChiudi"));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(!window.isVisible());
    QCOMPARE(ruoli.DirittiRuolo(acquisti), QList<int>());
}

void TestQ3UtentiRuoli::disabledColleagueCannotLogIn()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    ruoli.ImpostaPassword(QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();
    TQ3Users users(db.Db());

    SelectUser(&window, QStringLiteral("mrossi"));
    Click(&window, QStringLiteral("btnAttivaUtente"));
    QCOMPARE(users.Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QString());
    auto list = Field<QTreeWidget>(&window, QStringLiteral("lstUtenti"));
    QCOMPARE(list->currentItem()->text(0), QStringLiteral("mrossi"));
    QCOMPARE(list->currentItem()->text(2), QStringLiteral("Disattivato"));
    QCOMPARE(Field<QPushButton>(&window, QStringLiteral("btnAttivaUtente"))->text(), QStringLiteral("&Riattiva"));

    Click(&window, QStringLiteral("btnAttivaUtente"));
    QCOMPARE(list->currentItem()->text(2), QStringLiteral("Attivo"));
    WaitThrottle(db, QStringLiteral("mrossi"));
    QCOMPARE(users.Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QStringLiteral("mrossi"));
    QCOMPARE(boxes.Messages().size(), 0);
}

void TestQ3UtentiRuoli::administratorSetsAPassword()
{
    TQ3TestDatabase db;
    TQ3Ruoli(db.Db()).NuovoUtente(QStringLiteral("mrossi"), QString());
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();
    SelectUser(&window, QStringLiteral("mrossi"));

    QStringList steps;
    WhenModal(QStringLiteral("Q3CambiaPassword"), [&](QDialog *form) {
        steps << form->windowTitle();
        QVERIFY(!form->findChild<QLineEdit *>(QStringLiteral("txtPasswordAttuale")));
        if (!FillAndConfirm(form, {{QStringLiteral("txtNuovaPassword"), QStringLiteral("segreto1")},
                                   {QStringLiteral("txtRipetiPassword"), QStringLiteral("segreto2")}}))
            steps << Field<QLineEdit>(form, QStringLiteral("txtNuovaPassword"))->text();
        if (!FillAndConfirm(form, {{QStringLiteral("txtNuovaPassword"), QStringLiteral("corta")},
                                   {QStringLiteral("txtRipetiPassword"), QStringLiteral("corta")}}))
            steps << QStringLiteral("corta rifiutata");
        if (FillAndConfirm(form, {{QStringLiteral("txtNuovaPassword"), QStringLiteral("segreto1")},
                                  {QStringLiteral("txtRipetiPassword"), QStringLiteral("segreto1")}}))
            steps << QStringLiteral("chiusa");
    });
    Click(&window, QStringLiteral("btnPasswordUtente"));
    QCOMPARE(steps, QStringList({QStringLiteral("Imposta password - mrossi"), QStringLiteral("segreto1"),
                                 QStringLiteral("corta rifiutata"), QStringLiteral("chiusa")}));
    QCOMPARE(boxes.Messages().size(), 2);
    QVERIFY(Warning(boxes.Messages().at(0), QStringLiteral("La nuova password e la sua ripetizione non coincidono.")));
    QVERIFY(Warning(boxes.Messages().at(1), QStringLiteral("La password deve contenere almeno 6 caratteri.")));
    QCOMPARE(TQ3Users(db.Db()).Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QStringLiteral("mrossi"));
}

void TestQ3UtentiRuoli::ownPasswordChanged()
{
    TQ3TestDatabase db;
    TQ3Ruoli(db.Db()).ImpostaPassword(Admin, QStringLiteral("vecchia1"));
    TQ3RecordingResponder boxes;
    QStringList steps;
    WhenModal(QStringLiteral("Q3CambiaPassword"), [&](QDialog *form) {
        const QList<std::pair<QString, QString>> nuova = {{QStringLiteral("txtNuovaPassword"),
                                                           QStringLiteral("nuova123")},
                                                          {QStringLiteral("txtRipetiPassword"),
                                                           QStringLiteral("nuova123")}};
        Type(form, QStringLiteral("txtPasswordAttuale"), QStringLiteral("sbagliata"));
        if (!FillAndConfirm(form, nuova))
            steps << QStringLiteral("attuale sbagliata rifiutata");
        WaitThrottle(db, Admin);
        Type(form, QStringLiteral("txtPasswordAttuale"), QStringLiteral("vecchia1"));
        if (FillAndConfirm(form, nuova))
            steps << QStringLiteral("chiusa");
    });
    Q3ApriCambiaPassword(db.Db(), Admin, nullptr);
    QCOMPARE(steps, QStringList({QStringLiteral("attuale sbagliata rifiutata"), QStringLiteral("chiusa")}));
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(Warning(boxes.Messages().at(0), QStringLiteral("La password attuale non è corretta.")));
    TQ3Users users(db.Db());
    QCOMPARE(users.Login(Admin, QStringLiteral("nuova123")), Admin);
    QCOMPARE(users.Login(Admin, QStringLiteral("vecchia1")), QString());
}

void TestQ3UtentiRuoli::hostileNamesTypedAreStoredUnchanged_data()
{
    QTest::addColumn<QString>("nome");
    QTest::newRow("quotes") << QStringLiteral("l'utente \"doppio\" ''");
    QTest::newRow("sql") << QStringLiteral("x'); DELETE FROM UTENTI; --");
    QTest::newRow("ampersand and placeholders") << QStringLiteral("R&D %1 %2");
    QTest::newRow("non-latin") << QStringLiteral("Ελένη 山田 Жанна");
}

void TestQ3UtentiRuoli::hostileNamesTypedAreStoredUnchanged()
{
    QFETCH(QString, nome);
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();
    NewUser(&window, nome, nome + QStringLiteral(" completo"));
    NewRole(&window, nome);
    const int id = IdRuolo(db, nome);
    QVERIFY(id > 0);
    SelectUser(&window, nome);
    QCOMPARE(RoleBox(&window, id)->text().replace(QStringLiteral("&&"), QStringLiteral("&")), nome);
    Click(RoleBox(&window, id));
    QCOMPARE(boxes.Messages().size(), 0);

    const QList<TQ3Utente> utenti = TQ3Ruoli(db.Db()).Utenti();
    QCOMPARE(utenti.size(), 2);
    const TQ3Utente &utente = utenti.at(utenti.at(0).Nome == Admin ? 1 : 0);
    QCOMPARE(utente.Nome, nome);
    QCOMPARE(utente.NomeCompleto, nome + QStringLiteral(" completo"));
    QCOMPARE(utente.Ruoli, QStringList{nome});
    QCOMPARE(CurrentRole(&window), nome);
}

void TestQ3UtentiRuoli::tooLongNameRefusedAndKept()
{
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    TQ3UtentiRuoli window(db.Db());
    window.show();
    const QStringList prima = Tabelle(db);
    const QString lungo = QString(1000, QChar(0x00E9));
    QString kept;
    bool stayedOpen = false;
    WhenModal(QStringLiteral("Q3NuovoUtente"), [&](QDialog *form) {
        stayedOpen = !FillAndConfirm(form, {{QStringLiteral("txtNomeUtente"), lungo}});
        kept = Field<QLineEdit>(form, QStringLiteral("txtNomeUtente"))->text();
    });
    Click(&window, QStringLiteral("btnNuovoUtente"));
    QVERIFY(stayedOpen);
    QCOMPARE(kept, lungo);
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(
        Warning(boxes.Messages().at(0), QStringLiteral("Il nome dell'utente può contenere al massimo 50 caratteri.")));
    QCOMPARE(Tabelle(db), prima);
}

QTEST_MAIN(TestQ3UtentiRuoli)
#include "tst_q3utentiruoli.moc"
