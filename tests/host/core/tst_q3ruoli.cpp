// The store of users, roles and rights: its rules, its refusals, and that
// nobody can lock the firm out.
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3Ruoli.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"

#include <QtTest>

#include <functional>

namespace {

// The message of the refusal the command raises; empty when it is not refused.
QString Rifiuto(const std::function<void()> &command)
{
    try {
        command();
    } catch (const EQ3Rifiuto &rifiuto) {
        return rifiuto.Message();
    }
    return {};
}

int IdRuolo(const TQ3TestDatabase &db, const QString &nome)
{
    return db.Scalar(QStringLiteral("SELECT IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = ") + QuotedStr(nome))
        .toInt();
}

int IdDiritto(const TQ3TestDatabase &db, const QString &nome)
{
    return db
        .Scalar(QStringLiteral("SELECT IDABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = ")
                + QuotedStr(nome))
        .toInt();
}

// Every row of the tables of users, roles and rights.
QStringList Tabelle(const TQ3TestDatabase &db)
{
    return db.Rows(QStringLiteral("SELECT IDUTENTE, USER_NAME, NOME_COMPLETO, PASSWORD_HASH, ATTIVO FROM UTENTI "
                                  "ORDER BY IDUTENTE"))
           + db.Rows(QStringLiteral("SELECT * FROM RUOLI_UTENTE ORDER BY 1"))
           + db.Rows(QStringLiteral("SELECT * FROM UTENTI_RUOLI ORDER BY 1, 2"))
           + db.Rows(QStringLiteral("SELECT * FROM ABILITAZIONI_RUOLI ORDER BY 1, 2"));
}

const TQ3Utente *Utente(const QList<TQ3Utente> &utenti, const QString &nome)
{
    for (const TQ3Utente &utente : utenti) {
        if (utente.Nome == nome)
            return &utente;
    }
    return nullptr;
}

QStringList NomiRuoli(const QList<TQ3Ruolo> &ruoli)
{
    QStringList nomi;
    for (const TQ3Ruolo &ruolo : ruoli)
        nomi << ruolo.Nome;
    return nomi;
}

const QString Admin = QString::fromLatin1(Q3AdminUser);
const QString Amministratore = QString::fromLatin1(Q3AdminRole);

// Two rights of the module in the catalogue, and a role "Vendite" with none of them.
struct TVendite
{
    TVendite()
    {
        for (const QString &diritto :
             {QStringLiteral("Fatture di vendita (modifica)"), QStringLiteral("Statistiche (visualizzazione)")})
            Db.Exec(
                QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, %1, 'Documenti')").arg(QuotedStr(diritto)));
        Modifica = IdDiritto(Db, QStringLiteral("Fatture di vendita (modifica)"));
        Statistiche = IdDiritto(Db, QStringLiteral("Statistiche (visualizzazione)"));
        Vendite = Ruoli.NuovoRuolo(QStringLiteral("Vendite"));
    }

    TQ3TestDatabase Db;
    TQ3Ruoli Ruoli{Db.Db()};
    int Modifica = 0;
    int Statistiche = 0;
    int Vendite = 0;
};

} // namespace

class TestQ3Ruoli : public QObject
{
    Q_OBJECT

private slots:
    void newDatabaseAdminIsAdministrator();
    void userNamesUniqueWithoutRegardToCase();
    void emptyAndTooLongNamesRefused();
    void hostileNamesStoredAndReadBackUnchanged_data();
    void hostileNamesStoredAndReadBackUnchanged();
    void disabledUserCannotLogIn();
    void administratorSetsPassword();
    void ownPasswordChange();
    void rolesCreatedRenamedDeletedWithTheirLinks();
    void catalogueGroupedByGroup();
    void roleRightsReplaced();
    void roleRightsWrittenInOneTransaction();
    void lastActiveAdministratorProtected();
    void anotherActiveAdministratorLiftsTheProtection();
    void administratorRoleKeepsFullControl();
};

void TestQ3Ruoli::newDatabaseAdminIsAdministrator()
{
    TQ3TestDatabase db;
    QVERIFY(Q3UtenteAmministratore(db.Db(), Admin));
    QVERIFY(Q3UtenteAmministratore(db.Db(), QStringLiteral("ADMIN")));
    QVERIFY(!Q3UtenteAmministratore(db.Db(), QStringLiteral("nessuno")));
    TQ3Ruoli ruoli(db.Db());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    QVERIFY(!Q3UtenteAmministratore(db.Db(), QStringLiteral("mrossi")));
    ruoli.AssegnaRuolo(QStringLiteral("mrossi"), IdRuolo(db, Amministratore));
    QVERIFY(Q3UtenteAmministratore(db.Db(), QStringLiteral("mrossi")));
    ruoli.ImpostaAttivo(QStringLiteral("mrossi"), false);
    QVERIFY(!Q3UtenteAmministratore(db.Db(), QStringLiteral("mrossi")));
}

void TestQ3Ruoli::userNamesUniqueWithoutRegardToCase()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoUtente(QStringLiteral("MRossi"), QStringLiteral("Marco Rossi")); }),
             QStringLiteral("Esiste già un utente di nome \"mrossi\"."));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoUtente(QStringLiteral("ADMIN"), QString()); }),
             QStringLiteral("Esiste già un utente di nome \"admin\"."));
    const QList<TQ3Utente> utenti = ruoli.Utenti();
    QCOMPARE(utenti.size(), 2);
    QCOMPARE(utenti.at(0).Nome, Admin);
    QCOMPARE(utenti.at(0).Ruoli, QStringList{Amministratore});
    QCOMPARE(utenti.at(1).Nome, QStringLiteral("mrossi"));
    QCOMPARE(utenti.at(1).NomeCompleto, QStringLiteral("Mario Rossi"));
    QVERIFY(utenti.at(1).Attivo);
    QCOMPARE(utenti.at(1).Ruoli, QStringList());
    // A new user has no password until one is set.
    QVERIFY(TQ3Users(db.Db()).NeedsPassword(QStringLiteral("mrossi")));
}

void TestQ3Ruoli::emptyAndTooLongNamesRefused()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    const QStringList prima = Tabelle(db);
    QCOMPARE(Rifiuto([&] { ruoli.NuovoUtente(QStringLiteral("   "), QString()); }),
             QStringLiteral("Indicare il nome dell'utente."));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoUtente(QString(1000, QLatin1Char('x')), QString()); }),
             QStringLiteral("Il nome dell'utente può contenere al massimo 50 caratteri."));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoUtente(QStringLiteral("mrossi"), QString(101, QLatin1Char('x'))); }),
             QStringLiteral("Il nome completo può contenere al massimo 100 caratteri."));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoRuolo(QString()); }), QStringLiteral("Indicare il nome del ruolo."));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoRuolo(QString(51, QChar(0x0416))); }),
             QStringLiteral("Il nome del ruolo può contenere al massimo 50 caratteri."));
    QCOMPARE(Tabelle(db), prima);
    // Characters, not bytes nor UTF-16 units: fifty letters outside the first
    // plane are a name as long as fifty Latin ones.
    const QString lungo = QString::fromUcs4(QList<char32_t>(50, U'\U0001D49C').constData(), 50);
    ruoli.NuovoUtente(lungo, QString(100, QChar(0x4E2D)));
    QVERIFY(Utente(ruoli.Utenti(), lungo));
    QCOMPARE(Utente(ruoli.Utenti(), lungo)->NomeCompleto, QString(100, QChar(0x4E2D)));
}

void TestQ3Ruoli::hostileNamesStoredAndReadBackUnchanged_data()
{
    QTest::addColumn<QString>("nome");
    QTest::newRow("quotes") << QStringLiteral("l'utente \"doppio\" ''");
    QTest::newRow("sql") << QStringLiteral("x'); DELETE FROM UTENTI; --");
    QTest::newRow("placeholders") << QStringLiteral("%1 %2 %L1 \\n");
    QTest::newRow("non-latin") << QStringLiteral("Ελένη Ñoño 山田 Жанна");
    QTest::newRow("spaces around") << QStringLiteral("  spazi  ");
    QTest::newRow("fifty characters") << QString(50, QChar(0x00E8));
}

void TestQ3Ruoli::hostileNamesStoredAndReadBackUnchanged()
{
    QFETCH(QString, nome);
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    const QString completo = nome + QStringLiteral(" (completo) ") + nome;
    ruoli.NuovoUtente(nome, completo.left(100));
    const int id = ruoli.NuovoRuolo(nome);
    ruoli.AssegnaRuolo(nome, id);
    const QList<TQ3Utente> utenti = ruoli.Utenti();
    QCOMPARE(utenti.size(), 2);
    QVERIFY(Utente(utenti, nome));
    QCOMPARE(Utente(utenti, nome)->NomeCompleto, completo.left(100));
    QCOMPARE(Utente(utenti, nome)->Ruoli, QStringList{nome});
    QVERIFY(NomiRuoli(ruoli.Ruoli()).contains(nome));
    ruoli.ImpostaPassword(nome, QStringLiteral("segreto1"));
    QCOMPARE(TQ3Users(db.Db()).Login(nome, QStringLiteral("segreto1")), nome);
    const QString altro = QStringLiteral("'") + nome.left(48) + QStringLiteral("'");
    ruoli.RinominaRuolo(id, altro);
    QVERIFY(NomiRuoli(ruoli.Ruoli()).contains(altro));
    QCOMPARE(Utente(ruoli.Utenti(), nome)->Ruoli, QStringList{altro});
    ruoli.EliminaRuolo(id);
    QCOMPARE(NomiRuoli(ruoli.Ruoli()), QStringList{Amministratore});
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM UTENTI")).toInt(), 2);
}

void TestQ3Ruoli::disabledUserCannotLogIn()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    TQ3Users users(db.Db());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    ruoli.ImpostaPassword(QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    QCOMPARE(users.Login(QStringLiteral("MROSSI"), QStringLiteral("segreto1")), QStringLiteral("mrossi"));
    ruoli.ImpostaAttivo(QStringLiteral("mrossi"), false);
    QVERIFY(!Utente(ruoli.Utenti(), QStringLiteral("mrossi"))->Attivo);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT ATTIVO FROM UTENTI WHERE USER_NAME = 'mrossi'")).toString(),
             QStringLiteral("False"));
    QCOMPARE(users.Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QString());
    // Enabled again, after the wait its refused attempt earned, the same password opens.
    ruoli.ImpostaAttivo(QStringLiteral("mrossi"), true);
    QTest::qWait(users.Throttle().WaitSeconds(QStringLiteral("mrossi")) * 1000 + 100);
    QCOMPARE(users.Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QStringLiteral("mrossi"));
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaAttivo(QStringLiteral("nessuno"), false); }),
             QStringLiteral("L'utente \"nessuno\" non esiste."));
}

void TestQ3Ruoli::administratorSetsPassword()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QString());
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaPassword(QStringLiteral("mrossi"), QStringLiteral("corta")); }),
             QStringLiteral("La password deve contenere almeno 6 caratteri."));
    QVERIFY(TQ3Users(db.Db()).NeedsPassword(QStringLiteral("mrossi")));
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaPassword(QStringLiteral("nessuno"), QStringLiteral("segreto1")); }),
             QStringLiteral("L'utente \"nessuno\" non esiste."));
    ruoli.ImpostaPassword(QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    const QString hash =
        db.Scalar(QStringLiteral("SELECT PASSWORD_HASH FROM UTENTI WHERE USER_NAME = 'mrossi'")).toString();
    QVERIFY(hash.startsWith(QLatin1String("$argon2id$")));
    QVERIFY(!hash.contains(QLatin1String("segreto1")));
    QCOMPARE(TQ3Users(db.Db()).Login(QStringLiteral("mrossi"), QStringLiteral("segreto1")), QStringLiteral("mrossi"));
}

void TestQ3Ruoli::ownPasswordChange()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    TQ3Users users(db.Db());
    ruoli.ImpostaPassword(Admin, QStringLiteral("vecchia1"));
    QCOMPARE(Rifiuto([&] { ruoli.CambiaPassword(Admin, QStringLiteral("sbagliata"), QStringLiteral("nuova123")); }),
             QStringLiteral("La password attuale non è corretta."));
    // The wrong attempt counts as a failed login of the name.
    QCOMPARE(users.Throttle().Failures(Admin), 1);
    QVERIFY(Rifiuto([&] {
                ruoli.CambiaPassword(Admin, QStringLiteral("vecchia1"), QStringLiteral("nuova123"));
            }).startsWith(QLatin1String("Troppi tentativi non riusciti: riprovare tra ")));
    QTest::qWait(users.Throttle().WaitSeconds(Admin) * 1000 + 100);
    QCOMPARE(Rifiuto([&] { ruoli.CambiaPassword(Admin, QStringLiteral("vecchia1"), QStringLiteral("corta")); }),
             QStringLiteral("La password deve contenere almeno 6 caratteri."));
    QCOMPARE(users.Login(Admin, QStringLiteral("vecchia1")), Admin);
    ruoli.CambiaPassword(Admin, QStringLiteral("vecchia1"), QStringLiteral("nuova123"));
    QCOMPARE(users.Login(Admin, QStringLiteral("nuova123")), Admin);
    QCOMPARE(users.Login(Admin, QStringLiteral("vecchia1")), QString());
}

void TestQ3Ruoli::rolesCreatedRenamedDeletedWithTheirLinks()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    const int vendite = ruoli.NuovoRuolo(QStringLiteral("Vendite"));
    QCOMPARE(vendite, IdRuolo(db, QStringLiteral("Vendite")));
    QCOMPARE(Rifiuto([&] { ruoli.NuovoRuolo(QStringLiteral("VENDITE")); }),
             QStringLiteral("Esiste già un ruolo di nome \"Vendite\"."));
    const int acquisti = ruoli.NuovoRuolo(QStringLiteral("Acquisti"));
    QCOMPARE(NomiRuoli(ruoli.Ruoli()),
             QStringList({QStringLiteral("Acquisti"), Amministratore, QStringLiteral("Vendite")}));
    QCOMPARE(Rifiuto([&] { ruoli.RinominaRuolo(acquisti, QStringLiteral("vendite")); }),
             QStringLiteral("Esiste già un ruolo di nome \"Vendite\"."));
    QCOMPARE(Rifiuto([&] { ruoli.RinominaRuolo(acquisti, QStringLiteral("amministratore")); }),
             QStringLiteral("Esiste già un ruolo di nome \"Amministratore\"."));
    // Its own name in other letters is no clash.
    ruoli.RinominaRuolo(vendite, QStringLiteral("VENDITE"));
    ruoli.RinominaRuolo(vendite, QStringLiteral("Vendite Italia"));
    QCOMPARE(IdRuolo(db, QStringLiteral("Vendite Italia")), vendite);

    ruoli.NuovoUtente(QStringLiteral("mrossi"), QString());
    ruoli.AssegnaRuolo(QStringLiteral("MROSSI"), vendite);
    ruoli.AssegnaRuolo(QStringLiteral("mrossi"), vendite);
    ruoli.AssegnaRuolo(QStringLiteral("mrossi"), acquisti);
    QCOMPARE(Utente(ruoli.Utenti(), QStringLiteral("mrossi"))->Ruoli,
             QStringList({QStringLiteral("Acquisti"), QStringLiteral("Vendite Italia")}));
    QCOMPARE(db.Rows(QStringLiteral("SELECT USER_NAME FROM UTENTI_RUOLI WHERE IDRUOLO_UTENTE = %1").arg(vendite)),
             QStringList{QStringLiteral("mrossi")});
    ruoli.ImpostaDirittiRuolo(vendite, {IdDiritto(db, QString::fromLatin1(Q3MasterPermission))});
    ruoli.RimuoviRuolo(QStringLiteral("mrossi"), acquisti);
    QCOMPARE(Utente(ruoli.Utenti(), QStringLiteral("mrossi"))->Ruoli, QStringList{QStringLiteral("Vendite Italia")});

    ruoli.EliminaRuolo(vendite);
    QCOMPARE(NomiRuoli(ruoli.Ruoli()), QStringList({QStringLiteral("Acquisti"), Amministratore}));
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM UTENTI_RUOLI WHERE IDRUOLO_UTENTE = %1").arg(vendite))
                 .toInt(),
             0);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ABILITAZIONI_RUOLI WHERE IDRUOLO_UTENTE = %1").arg(vendite))
                 .toInt(),
             0);
    QCOMPARE(Utente(ruoli.Utenti(), QStringLiteral("mrossi"))->Ruoli, QStringList());
    QCOMPARE(Rifiuto([&] { ruoli.AssegnaRuolo(QStringLiteral("mrossi"), vendite); }),
             QStringLiteral("Il ruolo non esiste più."));
}

void TestQ3Ruoli::catalogueGroupedByGroup()
{
    TQ3TestDatabase db;
    db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, 'Statistiche (visualizzazione)', 'Documenti')"));
    db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, 'Fatture di vendita (modifica)', 'Documenti')"));
    db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, 'Carico merci', 'Magazzino')"));
    const QList<TQ3GruppoDiritti> catalogo = TQ3Ruoli(db.Db()).Catalogo();
    QStringList visto;
    for (const TQ3GruppoDiritti &gruppo : catalogo) {
        for (const TQ3Diritto &diritto : gruppo.Diritti) {
            visto << gruppo.Gruppo + QStringLiteral(": ") + diritto.Nome;
            QCOMPARE(diritto.Id, IdDiritto(db, diritto.Nome));
        }
    }
    QCOMPARE(visto,
             QStringList({QStringLiteral("Documenti: Fatture di vendita (modifica)"),
                          QStringLiteral("Documenti: Statistiche (visualizzazione)"),
                          QStringLiteral("Magazzino: Carico merci"), QStringLiteral("Quillo 3: Controllo completo")}));
    QCOMPARE(catalogo.size(), 3);
}

void TestQ3Ruoli::roleRightsReplaced()
{
    TVendite v;
    QCOMPARE(v.Ruoli.DirittiRuolo(v.Vendite), QList<int>());
    v.Ruoli.ImpostaDirittiRuolo(v.Vendite, {v.Statistiche, v.Modifica, v.Modifica});
    QCOMPARE(v.Ruoli.DirittiRuolo(v.Vendite), QList<int>({v.Modifica, v.Statistiche}));
    v.Ruoli.ImpostaDirittiRuolo(v.Vendite, {v.Statistiche});
    QCOMPARE(v.Ruoli.DirittiRuolo(v.Vendite), QList<int>{v.Statistiche});
    // The other roles keep theirs.
    QCOMPARE(v.Ruoli.DirittiRuolo(IdRuolo(v.Db, Amministratore)),
             QList<int>{IdDiritto(v.Db, QString::fromLatin1(Q3MasterPermission))});
}

void TestQ3Ruoli::roleRightsWrittenInOneTransaction()
{
    TVendite v;
    v.Ruoli.ImpostaDirittiRuolo(v.Vendite, {v.Modifica});
    // The database refuses the link of the statistics: the links written
    // before it, and the removal of the old ones, go back with it.
    v.Db.Exec(QStringLiteral("CREATE EXCEPTION E_RIFIUTO 'collegamento rifiutato'"));
    v.Db.Exec(QStringLiteral("CREATE TRIGGER TG_RIFIUTO FOR ABILITAZIONI_RUOLI BEFORE INSERT AS BEGIN "
                             "IF (NEW.IDABILITAZIONE_UTENTE = %1) THEN EXCEPTION E_RIFIUTO; END")
                  .arg(v.Statistiche));
    try {
        v.Ruoli.ImpostaDirittiRuolo(v.Vendite, {v.Modifica, v.Statistiche});
        QFAIL("the refused link went through");
    } catch (const EQ3Exception &e) {
        QVERIFY2(e.Message().contains(QLatin1String("collegamento rifiutato")), qPrintable(e.Message()));
    }
    QCOMPARE(v.Ruoli.DirittiRuolo(v.Vendite), QList<int>{v.Modifica});
}

void TestQ3Ruoli::lastActiveAdministratorProtected()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    const int amministratore = IdRuolo(db, Amministratore);
    // A disabled administrator is no way back in.
    ruoli.NuovoUtente(QStringLiteral("vecchio"), QString());
    ruoli.AssegnaRuolo(QStringLiteral("vecchio"), amministratore);
    ruoli.ImpostaAttivo(QStringLiteral("vecchio"), false);
    const QStringList prima = Tabelle(db);
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaAttivo(QStringLiteral("ADMIN"), false); }),
             QStringLiteral("Impossibile disattivare l'ultimo amministratore attivo."));
    QCOMPARE(Rifiuto([&] { ruoli.RimuoviRuolo(Admin, amministratore); }),
             QStringLiteral("Impossibile togliere il ruolo \"Amministratore\" all'ultimo amministratore attivo."));
    QCOMPARE(Rifiuto([&] { ruoli.EliminaRuolo(amministratore); }),
             QStringLiteral("Il ruolo \"Amministratore\" non può essere eliminato."));
    QCOMPARE(Rifiuto([&] { ruoli.RinominaRuolo(amministratore, QStringLiteral("Capo")); }),
             QStringLiteral("Il ruolo \"Amministratore\" non può essere rinominato."));
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaDirittiRuolo(amministratore, {}); }),
             QStringLiteral("Il diritto \"Controllo completo\" non può essere tolto al ruolo \"Amministratore\"."));
    QCOMPARE(Tabelle(db), prima);
    QVERIFY(Q3UtenteAmministratore(db.Db(), Admin));
    // The disabled one may lose the role; enabling them again is always allowed.
    ruoli.RimuoviRuolo(QStringLiteral("vecchio"), amministratore);
    ruoli.ImpostaAttivo(QStringLiteral("vecchio"), true);
}

void TestQ3Ruoli::anotherActiveAdministratorLiftsTheProtection()
{
    TQ3TestDatabase db;
    TQ3Ruoli ruoli(db.Db());
    const int amministratore = IdRuolo(db, Amministratore);
    ruoli.NuovoUtente(QStringLiteral("vice"), QString());
    ruoli.AssegnaRuolo(QStringLiteral("vice"), amministratore);
    ruoli.ImpostaAttivo(Admin, false);
    QVERIFY(!Q3UtenteAmministratore(db.Db(), Admin));
    // Now "vice" is the last one.
    QCOMPARE(Rifiuto([&] { ruoli.RimuoviRuolo(QStringLiteral("vice"), amministratore); }),
             QStringLiteral("Impossibile togliere il ruolo \"Amministratore\" all'ultimo amministratore attivo."));
    ruoli.ImpostaAttivo(Admin, true);
    ruoli.RimuoviRuolo(QStringLiteral("vice"), amministratore);
    QVERIFY(!Q3UtenteAmministratore(db.Db(), QStringLiteral("vice")));
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaAttivo(Admin, false); }),
             QStringLiteral("Impossibile disattivare l'ultimo amministratore attivo."));
}

void TestQ3Ruoli::administratorRoleKeepsFullControl()
{
    TQ3TestDatabase db;
    db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, 'Statistiche (visualizzazione)', 'Documenti')"));
    TQ3Ruoli ruoli(db.Db());
    const int amministratore = IdRuolo(db, Amministratore);
    const int master = IdDiritto(db, QString::fromLatin1(Q3MasterPermission));
    const int statistiche = IdDiritto(db, QStringLiteral("Statistiche (visualizzazione)"));
    QCOMPARE(Rifiuto([&] { ruoli.ImpostaDirittiRuolo(amministratore, {statistiche}); }),
             QStringLiteral("Il diritto \"Controllo completo\" non può essere tolto al ruolo \"Amministratore\"."));
    QCOMPARE(ruoli.DirittiRuolo(amministratore), QList<int>{master});
    // Adding to it is allowed.
    ruoli.ImpostaDirittiRuolo(amministratore, {master, statistiche});
    QCOMPARE(ruoli.DirittiRuolo(amministratore), QList<int>({master, statistiche}));
}

QTEST_GUILESS_MAIN(TestQ3Ruoli)
#include "tst_q3ruoli.moc"
