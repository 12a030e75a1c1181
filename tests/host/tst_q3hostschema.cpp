#include "Q3HostSchema.h"
#include "Q3Messages.h"
#include "Q3TestDatabase.h"

#include <QtTest>

class TestQ3HostSchema : public QObject
{
    Q_OBJECT

private slots:
    void newDatabaseGetsHostTablesAndSeeds();
    void permissionCatalogueHasThreeColumnsInOrder();
    void secondUpgradeChangesNothing();
};

void TestQ3HostSchema::newDatabaseGetsHostTablesAndSeeds()
{
    TQ3TestDatabase db;
    QCOMPARE(db.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY TABELLA")),
             (QStringList{"ABILITAZIONI_RUOLI|1.0.0", "ABILITAZIONI_UTENTE|1.0.0", "ACCESSI_FALLITI|1.0.0",
                          "AZIENDA|1.0.0", "OPZIONI|1.0.0", "RUOLI_UTENTE|1.0.0", "TABLE_VERSION|1.0.0", "UTENTI|1.0.0",
                          "UTENTI_RUOLI|1.0.0"}));
    QCOMPARE(db.Rows(QStringLiteral("SELECT OPZIONE, VALORE FROM OPZIONI")),
             QStringList{"NUMERAZIONE_UNICA_FATTURE|False"});
    QCOMPARE(db.Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE")),
             QStringList{"Controllo completo"});
    QCOMPARE(db.Rows(QStringLiteral("SELECT RUOLO_UTENTE FROM RUOLI_UTENTE")), QStringList{"Amministratore"});
    QCOMPARE(db.Rows(
                 QStringLiteral("SELECT U.USER_NAME, R.RUOLO_UTENTE, A.ABILITAZIONE_UTENTE FROM UTENTI_RUOLI U "
                                "JOIN RUOLI_UTENTE R ON R.IDRUOLO_UTENTE = U.IDRUOLO_UTENTE "
                                "JOIN ABILITAZIONI_RUOLI AR ON AR.IDRUOLO_UTENTE = R.IDRUOLO_UTENTE "
                                "JOIN ABILITAZIONI_UTENTE A ON A.IDABILITAZIONE_UTENTE = AR.IDABILITAZIONE_UTENTE")),
             QStringList{"admin|Amministratore|Controllo completo"});
    QCOMPARE(db.Rows(QStringLiteral("SELECT USER_NAME, PASSWORD_HASH FROM UTENTI")), QStringList{"admin|<null>"});
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM AZIENDA")).toInt(), 1);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT RDB$CHARACTER_SET_NAME FROM RDB$DATABASE")).toString().trimmed(),
             QStringLiteral("UTF8"));
}

void TestQ3HostSchema::permissionCatalogueHasThreeColumnsInOrder()
{
    TQ3TestDatabase db;
    QCOMPARE(db.Rows(QStringLiteral("SELECT RDB$FIELD_NAME FROM RDB$RELATION_FIELDS "
                                    "WHERE RDB$RELATION_NAME = 'ABILITAZIONI_UTENTE' ORDER BY RDB$FIELD_POSITION")),
             (QStringList{"IDABILITAZIONE_UTENTE", "ABILITAZIONE_UTENTE", "GRUPPO"}));
    // Modules insert positionally with a placeholder key that the trigger replaces.
    db.Exec(QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES(0, 'Prova', 'Documenti')"));
    QCOMPARE(db.Scalar(QStringLiteral(
                           "SELECT IDABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = 'Prova'"))
                 .toInt(),
             2);
}

void TestQ3HostSchema::secondUpgradeChangesNothing()
{
    TQ3TestDatabase db;
    const QString everything = QStringLiteral(
        "SELECT (SELECT COUNT(*) FROM TABLE_VERSION) || '/' || (SELECT COUNT(*) FROM OPZIONI) || '/' || "
        "(SELECT COUNT(*) FROM UTENTI) || '/' || (SELECT COUNT(*) FROM ABILITAZIONI_UTENTE) || '/' || "
        "(SELECT COUNT(*) FROM ABILITAZIONI_RUOLI) || '/' || (SELECT COUNT(*) FROM AZIENDA) FROM RDB$DATABASE");
    const QString before = db.Scalar(everything).toString();
    TQ3RecordingResponder responder;
    UpgradeQ3HostSchema(db.Db());
    QCOMPARE(db.Scalar(everything).toString(), before);
    QVERIFY(responder.Messages().isEmpty());
}

QTEST_GUILESS_MAIN(TestQ3HostSchema)
#include "tst_q3hostschema.moc"
