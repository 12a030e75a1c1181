#include "Q3HostSchema.h"

#include "Q3SchemaUpgrade.h"
#include "Q3Sql.h"

namespace {

// A create step for a table without a key generator of its own.
TQ3SchemaStep CreateStep(const QString &key, const QStringList &statements, const QStringList &seeds)
{
    TQ3SchemaStep step;
    step.Key = key;
    step.To = QStringLiteral("1.0.0");
    step.Statements = statements;
    step.Seeds = seeds;
    return step;
}

// The firm's data the electronic invoice needs beyond what the table had:
// the tax regime, the company register entry in its parts, whether the
// company has a sole shareholder, whether it is being wound up, and the
// country code of its address.
TQ3SchemaStep AziendaFatturaElettronica()
{
    TQ3SchemaStep step;
    step.Key = QStringLiteral("AZIENDA");
    step.From = QStringLiteral("1.0.0");
    step.To = QStringLiteral("1.1.0");
    for (const char *column :
         {"REGIME_FISCALE VARCHAR(4) DEFAULT 'RF01' NOT NULL", "REA_UFFICIO VARCHAR(2) DEFAULT '' NOT NULL",
          "REA_NUMERO VARCHAR(20) DEFAULT '' NOT NULL", "SOCIO_UNICO VARCHAR(2) DEFAULT '' NOT NULL",
          "STATO_LIQUIDAZIONE VARCHAR(2) DEFAULT 'LN' NOT NULL", "CODICE_NAZIONE VARCHAR(2) DEFAULT 'IT' NOT NULL"})
        step.Statements << QStringLiteral("ALTER TABLE AZIENDA ADD ") + QString::fromLatin1(column);
    return step;
}

QList<TQ3SchemaStep> HostSteps()
{
    const QString master = QString::fromLatin1(Q3MasterPermission);
    const QString admin = QString::fromLatin1(Q3AdminUser);
    const QString adminRole = QString::fromLatin1(Q3AdminRole);

    return {
        CreateStep(QStringLiteral("TABLE_VERSION"), {}, {}),
        CreateStep(QStringLiteral("OPZIONI"),
                   {QStringLiteral("CREATE TABLE OPZIONI (OPZIONE VARCHAR(100) NOT NULL, VALORE VARCHAR(1000), "
                                   "CONSTRAINT PK_OPZIONI PRIMARY KEY(OPZIONE))")},
                   {QStringLiteral("INSERT INTO OPZIONI (OPZIONE, VALORE) VALUES (%1, %2)")
                        .arg(QuotedStr(QStringLiteral("NUMERAZIONE_UNICA_FATTURE")),
                             QuotedStr(QStringLiteral("False")))}),
        Q3CreateTableStep(
            QStringLiteral("RUOLI_UTENTE"),
            QStringLiteral(
                "CREATE TABLE RUOLI_UTENTE (IDRUOLO_UTENTE INTEGER NOT NULL, RUOLO_UTENTE VARCHAR(50) NOT NULL, "
                "CONSTRAINT PK_RUOLI_UTENTE PRIMARY KEY(IDRUOLO_UTENTE), "
                "CONSTRAINT UK1_RUOLI_UTENTE UNIQUE(RUOLO_UTENTE))"),
            QStringLiteral("RUOLI_UTENTE"), QStringLiteral("RUOLO_UTENTE"),
            {QStringLiteral("INSERT INTO RUOLI_UTENTE VALUES(0, %1)").arg(QuotedStr(adminRole))}),
        Q3CreateTableStep(QStringLiteral("ABILITAZIONI_UTENTE"),
                          QStringLiteral("CREATE TABLE ABILITAZIONI_UTENTE (IDABILITAZIONE_UTENTE INTEGER NOT NULL, "
                                         "ABILITAZIONE_UTENTE VARCHAR(100) NOT NULL, GRUPPO VARCHAR(50), "
                                         "CONSTRAINT PK_ABILITAZIONI_UTENTE PRIMARY KEY(IDABILITAZIONE_UTENTE))"),
                          QStringLiteral("ABILITAZIONI_UTENTE"), QStringLiteral("ABILITAZIONE_UTENTE"),
                          {QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES(0, %1, %2)")
                               .arg(QuotedStr(master), QuotedStr(QStringLiteral("Quillo 3")))}),
        CreateStep(QStringLiteral("ABILITAZIONI_RUOLI"),
                   {QStringLiteral(
                       "CREATE TABLE ABILITAZIONI_RUOLI (IDRUOLO_UTENTE INTEGER NOT NULL, "
                       "IDABILITAZIONE_UTENTE INTEGER NOT NULL, "
                       "CONSTRAINT PK_ABILITAZIONI_RUOLI PRIMARY KEY(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE))")},
                   {QStringLiteral(
                        "INSERT INTO ABILITAZIONI_RUOLI (IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) "
                        "SELECT R.IDRUOLO_UTENTE, A.IDABILITAZIONE_UTENTE FROM RUOLI_UTENTE R, ABILITAZIONI_UTENTE A "
                        "WHERE R.RUOLO_UTENTE = %1 AND A.ABILITAZIONE_UTENTE = %2")
                        .arg(QuotedStr(adminRole), QuotedStr(master))}),
        Q3CreateTableStep(QStringLiteral("UTENTI"),
                          QStringLiteral(
                              "CREATE TABLE UTENTI (IDUTENTE INTEGER NOT NULL, USER_NAME VARCHAR(50) NOT NULL, "
                              "NOME_COMPLETO VARCHAR(100), PASSWORD_HASH VARCHAR(255), "
                              "ATTIVO VARCHAR(5) DEFAULT 'True' NOT NULL, "
                              "CONSTRAINT PK_UTENTI PRIMARY KEY(IDUTENTE), CONSTRAINT UK1_UTENTI UNIQUE(USER_NAME))"),
                          QStringLiteral("UTENTI"), QStringLiteral("UTENTE"),
                          {QStringLiteral("INSERT INTO UTENTI (IDUTENTE, USER_NAME, NOME_COMPLETO) VALUES (0, %1, %2)")
                               .arg(QuotedStr(admin), QuotedStr(QStringLiteral("Amministratore")))}),
        CreateStep(QStringLiteral("UTENTI_RUOLI"),
                   {QStringLiteral("CREATE TABLE UTENTI_RUOLI (USER_NAME VARCHAR(50) NOT NULL, "
                                   "IDRUOLO_UTENTE INTEGER NOT NULL, "
                                   "CONSTRAINT PK_UTENTI_RUOLI PRIMARY KEY(USER_NAME, IDRUOLO_UTENTE))")},
                   {QStringLiteral("INSERT INTO UTENTI_RUOLI (USER_NAME, IDRUOLO_UTENTE) "
                                   "SELECT %1, IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = %2")
                        .arg(QuotedStr(admin), QuotedStr(adminRole))}),
        Q3CreateTableStep(QStringLiteral("AZIENDA"),
                          QStringLiteral("CREATE TABLE AZIENDA (IDAZIENDA INTEGER NOT NULL, "
                                         "RAGIONESOCIALE VARCHAR(100) DEFAULT '' NOT NULL, "
                                         "INDIRIZZO VARCHAR(100) DEFAULT '' NOT NULL, "
                                         "CAP VARCHAR(5) DEFAULT '' NOT NULL, "
                                         "CITTA VARCHAR(30) DEFAULT '' NOT NULL, "
                                         "PROVINCIA VARCHAR(2) DEFAULT '' NOT NULL, "
                                         "NAZIONE VARCHAR(30) DEFAULT '' NOT NULL, "
                                         "PARTITAIVA VARCHAR(13) DEFAULT '' NOT NULL, "
                                         "CODICEFISCALE VARCHAR(16) DEFAULT '' NOT NULL, "
                                         "TELEFONO VARCHAR(20) DEFAULT '' NOT NULL, "
                                         "FAX VARCHAR(20) DEFAULT '' NOT NULL, "
                                         "EMAIL VARCHAR(100) DEFAULT '' NOT NULL, "
                                         "WEB VARCHAR(100) DEFAULT '' NOT NULL, "
                                         "REA VARCHAR(30) DEFAULT '' NOT NULL, "
                                         "CAPITALE_SOCIALE VARCHAR(50) DEFAULT '' NOT NULL, "
                                         "BANCA VARCHAR(100) DEFAULT '' NOT NULL, "
                                         "IBAN VARCHAR(34) DEFAULT '' NOT NULL, "
                                         "LOGO BLOB SUB_TYPE 0, "
                                         "CONSTRAINT PK_AZIENDA PRIMARY KEY(IDAZIENDA))"),
                          QStringLiteral("AZIENDA"), QStringLiteral("AZIENDA"),
                          {QStringLiteral("INSERT INTO AZIENDA (IDAZIENDA) VALUES (0)")}),
        AziendaFatturaElettronica(),
        // Failed logins of a user name in a row, and when the last one was.
        CreateStep(QStringLiteral("ACCESSI_FALLITI"),
                   {QStringLiteral("CREATE TABLE ACCESSI_FALLITI (USER_NAME VARCHAR(50) NOT NULL, "
                                   "TENTATIVI INTEGER NOT NULL, ULTIMO_TENTATIVO TIMESTAMP NOT NULL, "
                                   "CONSTRAINT PK_ACCESSI_FALLITI PRIMARY KEY(USER_NAME))")},
                   {}),
    };
}

} // namespace

void UpgradeQ3HostSchema(const QSqlDatabase &db)
{
    Q3EnsureTableVersion(db);
    QList<TQ3SchemaStep> steps = HostSteps();
    for (TQ3SchemaStep &step : steps)
        step.FailureIcon = TQ3MsgIcon::Error;
    TQ3SchemaUpgrade(db).Run(steps);
}
