#include "KRVPermissions.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QtTest>

#include <memory>

// The host's role tables hold, besides the administrator with "Controllo completo":
//  - "UTENTE1" in the role "Statistiche", which grants "Statistiche (visualizzazione)";
//  - "rotto" in a role whose only permission link points to no catalogue row;
//  - "senzapermessi" in a role with no permission at all.
class TestPermissions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void userWithoutRolesGetsNothing();
    void masterPermissionGrantsEverything();
    void userNameMatchesWithoutRegardToCase();
    void permissionTextMatchesExactly();
    void missingPermissionLinkGrantsNothing();
    void roleWithoutPermissionsGrantsNothing();
    void failureIsBracketed();

private:
    bool Has(const QString &permission, const QString &user) const
    {
        return UserHasAbilitazione(permission, user, m_database->Db());
    }
    std::unique_ptr<TQ3TestDatabase> m_database;
};

void TestPermissions::initTestCase()
{
    m_database = std::make_unique<TQ3TestDatabase>();
    // The host's triggers give the keys: each row's is read back from its generator.
    const auto insert = [&](const QString &sql, const char *generator) {
        m_database->Exec(sql);
        return GetLastGeneratorValue(QLatin1String(generator), m_database->Db());
    };
    const auto permesso = [&](const char *text) {
        return insert(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES (0, %1, 'Documenti')")
                          .arg(QuotedStr(QLatin1String(text))),
                      "GN_IDABILITAZIONE_UTENTE");
    };
    const auto ruolo = [&](const char *name, const char *user) {
        const int id = insert(QStringLiteral("INSERT INTO RUOLI_UTENTE (IDRUOLO_UTENTE, RUOLO_UTENTE) VALUES (0, %1)")
                                  .arg(QuotedStr(QLatin1String(name))),
                              "GN_IDRUOLO_UTENTE");
        m_database->Exec(QStringLiteral("INSERT INTO UTENTI_RUOLI (USER_NAME, IDRUOLO_UTENTE) VALUES (%1, %2)")
                             .arg(QuotedStr(QLatin1String(user)))
                             .arg(id));
        return id;
    };
    const auto concedi = [&](int ruoloId, int permessoId) {
        m_database->Exec(
            QStringLiteral("INSERT INTO ABILITAZIONI_RUOLI (IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) VALUES (%1, %2)")
                .arg(ruoloId)
                .arg(permessoId));
    };
    const int statistiche = permesso("Statistiche (visualizzazione)");
    permesso("Fatture di vendita (modifica)");
    concedi(ruolo("Statistiche", "UTENTE1"), statistiche);
    concedi(ruolo("Rotto", "rotto"), 999);
    ruolo("Vuoto", "senzapermessi");
}

void TestPermissions::userWithoutRolesGetsNothing()
{
    QVERIFY(!Has(QStringLiteral("Controllo completo"), QStringLiteral("nessuno")));
    QVERIFY(!Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("nessuno")));
}

void TestPermissions::masterPermissionGrantsEverything()
{
    QVERIFY(Has(QStringLiteral("Controllo completo"), QStringLiteral("admin")));
    QVERIFY(Has(QStringLiteral("Fatture di vendita (modifica)"), QStringLiteral("admin")));
    QVERIFY(Has(QStringLiteral("Un permesso che nessuno ha definito"), QStringLiteral("ADMIN")));
}

void TestPermissions::userNameMatchesWithoutRegardToCase()
{
    QVERIFY(Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("utente1")));
    QVERIFY(Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("Utente1")));
    QVERIFY(Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("UTENTE1")));
    QVERIFY(!Has(QStringLiteral("Fatture di vendita (modifica)"), QStringLiteral("utente1")));
    QVERIFY(!Has(QStringLiteral("Controllo completo"), QStringLiteral("utente1")));
}

void TestPermissions::permissionTextMatchesExactly()
{
    QVERIFY(!Has(QStringLiteral("statistiche (visualizzazione)"), QStringLiteral("utente1")));
    QVERIFY(!Has(QStringLiteral("Statistiche"), QStringLiteral("utente1")));
    QVERIFY(!Has(QStringLiteral("Statistiche (visualizzazione) "), QStringLiteral("utente1")));
}

void TestPermissions::missingPermissionLinkGrantsNothing()
{
    QCOMPARE(m_database->Rows(QStringLiteral(
                 "SELECT ABILITAZIONI_UTENTE.* FROM UTENTI_RUOLI LEFT JOIN ABILITAZIONI_RUOLI ON "
                 "ABILITAZIONI_RUOLI.IDRUOLO_UTENTE = UTENTI_RUOLI.IDRUOLO_UTENTE LEFT JOIN ABILITAZIONI_UTENTE ON "
                 "ABILITAZIONI_UTENTE.IDABILITAZIONE_UTENTE = ABILITAZIONI_RUOLI.IDABILITAZIONE_UTENTE "
                 "WHERE UPPER(UTENTI_RUOLI.USER_NAME) = 'ROTTO'")),
             QStringList{QStringLiteral("<null>|<null>|<null>")});
    QVERIFY(!Has(QStringLiteral("Controllo completo"), QStringLiteral("rotto")));
    QVERIFY(!Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("rotto")));
}

void TestPermissions::roleWithoutPermissionsGrantsNothing()
{
    QVERIFY(!Has(QStringLiteral("Controllo completo"), QStringLiteral("senzapermessi")));
    QVERIFY(!Has(QStringLiteral("Statistiche (visualizzazione)"), QStringLiteral("senzapermessi")));
}

void TestPermissions::failureIsBracketed()
{
    TQ3TestDatabase bare(TQ3TestDatabase::Where::Embedded, false);
    try {
        UserHasAbilitazione(QStringLiteral("Controllo completo"), QStringLiteral("admin"), bare.Db());
        QFAIL("no failure raised");
    } catch (const EQ3Exception &e) {
        QVERIFY2(e.Message().startsWith(QStringLiteral("[UserHasAbilitazione]\n\r")), qPrintable(e.Message()));
        QVERIFY(e.Message().size() > QStringLiteral("[UserHasAbilitazione]\n\r").size());
    }
}

QTEST_GUILESS_MAIN(TestPermissions)
#include "tst_permissions.moc"
