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
    void newDatabase_firmHasElectronicInvoiceColumnsWithDefaults();
    void firmOfVersion100_upgradedKeepingItsData();
};

namespace {

const QString NuoveColonneAzienda =
    QStringLiteral("REGIME_FISCALE, REA_UFFICIO, REA_NUMERO, SOCIO_UNICO, STATO_LIQUIDAZIONE, CODICE_NAZIONE");

// Each new column of AZIENDA with its type, length, default and whether it takes NULL.
QStringList DescrizioneNuoveColonne(const TQ3TestDatabase &db)
{
    return db.Rows(QStringLiteral(
        "SELECT TRIM(RF.RDB$FIELD_NAME), F.RDB$FIELD_TYPE, F.RDB$CHARACTER_LENGTH, "
        "CAST(RF.RDB$DEFAULT_SOURCE AS VARCHAR(50)), COALESCE(RF.RDB$NULL_FLAG, 0) "
        "FROM RDB$RELATION_FIELDS RF JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE "
        "WHERE RF.RDB$RELATION_NAME = 'AZIENDA' AND RF.RDB$FIELD_POSITION > 17 ORDER BY RF.RDB$FIELD_POSITION"));
}

const QStringList NuoveColonneAttese = {"REGIME_FISCALE|37|4|DEFAULT 'RF01'|1",   "REA_UFFICIO|37|2|DEFAULT ''|1",
                                        "REA_NUMERO|37|20|DEFAULT ''|1",          "SOCIO_UNICO|37|2|DEFAULT ''|1",
                                        "STATO_LIQUIDAZIONE|37|2|DEFAULT 'LN'|1", "CODICE_NAZIONE|37|2|DEFAULT 'IT'|1"};

} // namespace

void TestQ3HostSchema::newDatabaseGetsHostTablesAndSeeds()
{
    TQ3TestDatabase db;
    QCOMPARE(db.Rows(QStringLiteral("SELECT TABELLA, VERSIONE FROM TABLE_VERSION ORDER BY TABELLA")),
             (QStringList{"ABILITAZIONI_RUOLI|1.0.0", "ABILITAZIONI_UTENTE|1.0.0", "ACCESSI_FALLITI|1.0.0",
                          "AZIENDA|1.1.0", "OPZIONI|1.0.0", "RUOLI_UTENTE|1.0.0", "TABLE_VERSION|1.0.0", "UTENTI|1.0.0",
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

void TestQ3HostSchema::newDatabase_firmHasElectronicInvoiceColumnsWithDefaults()
{
    TQ3TestDatabase db;
    QCOMPARE(DescrizioneNuoveColonne(db), NuoveColonneAttese);
    QCOMPARE(db.Rows(QStringLiteral("SELECT %1 FROM AZIENDA").arg(NuoveColonneAzienda)), QStringList{"RF01||||LN|IT"});
}

// A database whose firm table is still as version 1.0.0 made it, with the
// firm's data filled in: the upgrade adds the columns, with their defaults in
// the existing row, and leaves every recorded value as it was.
void TestQ3HostSchema::firmOfVersion100_upgradedKeepingItsData()
{
    TQ3TestDatabase db;
    db.Exec(QStringLiteral("ALTER TABLE AZIENDA DROP REGIME_FISCALE, DROP REA_UFFICIO, DROP REA_NUMERO, "
                           "DROP SOCIO_UNICO, DROP STATO_LIQUIDAZIONE, DROP CODICE_NAZIONE"));
    db.Exec(QStringLiteral("UPDATE TABLE_VERSION SET VERSIONE = '1.0.0' WHERE TABELLA = 'AZIENDA'"));
    db.Exec(QStringLiteral("UPDATE AZIENDA SET RAGIONESOCIALE = 'Rossi S.r.l.', PARTITAIVA = '12345678903', "
                           "REA = 'BO-123456', CAPITALE_SOCIALE = '10.000,00', LOGO = 'PNG'"));
    const QString vecchie = QStringLiteral("SELECT IDAZIENDA, RAGIONESOCIALE, PARTITAIVA, REA, CAPITALE_SOCIALE, "
                                           "CAST(LOGO AS VARCHAR(10)) FROM AZIENDA");
    const QStringList prima = db.Rows(vecchie);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = "
                                      "'AZIENDA' AND RDB$FIELD_NAME = 'REGIME_FISCALE'"))
                 .toInt(),
             0);

    TQ3RecordingResponder responder;
    UpgradeQ3HostSchema(db.Db());
    QVERIFY(responder.Messages().isEmpty());
    QCOMPARE(db.Scalar(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = 'AZIENDA'")).toString(),
             QStringLiteral("1.1.0"));
    QCOMPARE(DescrizioneNuoveColonne(db), NuoveColonneAttese);
    QCOMPARE(db.Rows(vecchie), prima);
    QCOMPARE(db.Rows(QStringLiteral("SELECT %1 FROM AZIENDA").arg(NuoveColonneAzienda)), QStringList{"RF01||||LN|IT"});
}

QTEST_GUILESS_MAIN(TestQ3HostSchema)
#include "tst_q3hostschema.moc"
