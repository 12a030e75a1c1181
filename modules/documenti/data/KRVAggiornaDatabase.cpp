#include "KRVAggiornaDatabase.h"

#include "KRVDecimali.h"
#include "Q3Sql.h"

namespace {

const QString V1_0_0 = QStringLiteral("1.0.0");
const QString V1_0_1 = QStringLiteral("1.0.1");
const QString V1_1_0 = QStringLiteral("1.1.0");
const QString V1_2_0 = QStringLiteral("1.2.0");
const QString V1_3_0 = QStringLiteral("1.3.0");
const QString V1_4_0 = QStringLiteral("1.4.0");
const QString V1_5_0 = QStringLiteral("1.5.0");
const QString V1_6_0 = QStringLiteral("1.6.0");

std::function<void(const QString &)> &StatementObserver()
{
    static std::function<void(const QString &)> observer;
    return observer;
}

// Invoice and credit note headers share these columns, from NUMERO to TOTALE_DOCUMENTO.
const QString DocumentHeaderColumns = QStringLiteral(
    "NUMERO INTEGER NOT NULL, DATA DATE NOT NULL, ANNO INTEGER NOT NULL, "
    "CLI_CODICE VARCHAR(20) NOT NULL, CLI_RAGIONESOCIALE VARCHAR(100) NOT NULL, CLI_INDIRIZZO VARCHAR(50), "
    "CLI_CITTA VARCHAR(30), CLI_CAP VARCHAR(5), CLI_PROVINCIA VARCHAR(2), CLI_NAZIONE VARCHAR(30), "
    "CLI_CODICEFISCALE VARCHAR(16), CLI_PARTITAIVA VARCHAR(11), IDTIPO_PAGAMENTO INTEGER NOT NULL, "
    "TIPO_PAGAMENTO VARCHAR(30) NOT NULL, PAGATO VARCHAR(5) NOT NULL, SCADENZA_PAGAMENTO DATE, "
    "TOTALE_IMPONIBILE DECIMAL(13, 2) NOT NULL, TOTALE_IMPOSTA DECIMAL(13, 2) NOT NULL, "
    "TOTALE_DOCUMENTO DECIMAL(13, 2) NOT NULL");

// The columns of a document line up to its prices; invoice lines add the discount.
const QString LineItemColumns =
    QStringLiteral("CODICE VARCHAR(20), DESCRIZIONE BLOB SUB_TYPE 1, IDCATEGORIA INTEGER, CATEGORIA VARCHAR(50), "
                   "PREZZO DECIMAL(13, 2)");
const QString LineAmountColumns = QStringLiteral(
    "QUANTITA DECIMAL(13, 2), IMPORTO DECIMAL(13, 2), IVA_IDALIQUOTA_IVA INTEGER, IVA_CODICE VARCHAR(2), "
    "IVA_DESCRIZIONE VARCHAR(30), IVA_ALIQUOTA DECIMAL(13, 2), IDUM INTEGER, UM VARCHAR(5), "
    "TIPO_RIGA VARCHAR(50) NOT NULL");

QString SeedRow(const QString &table, const QStringList &values)
{
    return QStringLiteral("INSERT INTO ") + table + QStringLiteral(" VALUES(") + values.join(QStringLiteral(", "))
           + QLatin1Char(')');
}

QString QuotedFalse()
{
    return QuotedStr(QStringLiteral("False"));
}

QString AddFlagColumn(const QString &table, const QString &column)
{
    return QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ADD ") + column
           + QStringLiteral(" VARCHAR(5) DEFAULT ") + QuotedFalse() + QStringLiteral(" NOT NULL");
}

// A text column every existing row gets with its default, so NOT NULL holds at once.
QString AddTextColumn(const QString &table, const QString &column, int length, const QString &defaultValue = QString())
{
    return QStringLiteral("ALTER TABLE %1 ADD %2 VARCHAR(%3) DEFAULT %4 NOT NULL")
        .arg(table, column, QString::number(length), QuotedStr(defaultValue));
}

// A line's unit price and quantity with the decimals the grid keeps.
QStringList DecimaliRighe(const QString &table)
{
    return {QStringLiteral("ALTER TABLE %1 ALTER COLUMN PREZZO TYPE DECIMAL(18, %2)")
                .arg(table, QString::number(KRVDecimaliPrezzo)),
            QStringLiteral("ALTER TABLE %1 ALTER COLUMN QUANTITA TYPE DECIMAL(18, %2)")
                .arg(table, QString::number(KRVDecimaliQuantita))};
}

// Where a document keeps its electronic invoice: the file's name, the send
// progressive it took, when it was produced, and which administrator
// unlocked the issued document for changes, and when.
QStringList ColonneFatturaPA(const QString &table)
{
    QStringList statements;
    for (const char *column : {"FPA_NOME_FILE VARCHAR(30)", "FPA_PROGRESSIVO INTEGER", "FPA_PRODOTTA TIMESTAMP",
                               "FPA_SBLOCCATA_DA VARCHAR(50)", "FPA_SBLOCCATA_IL TIMESTAMP"})
        statements << QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ADD ") + QString::fromLatin1(column);
    return statements;
}

QString CostFromMaster(const QString &master, const QString &lineKind)
{
    return QStringLiteral(
               "UPDATE FATT_VEND_DETT SET COSTO=(SELECT %1.COSTO FROM %1 WHERE %1.CODICE=FATT_VEND_DETT.CODICE ) "
               "WHERE TIPO_RIGA=")
               .arg(master)
           + QuotedStr(lineKind);
}

QStringList Permissions(const QStringList &texts)
{
    QStringList statements;
    for (const QString &text : texts)
        statements << QStringLiteral("INSERT INTO ABILITAZIONI_UTENTE VALUES(0, ") + QuotedStr(text)
                          + QStringLiteral(", ") + QuotedStr(QStringLiteral("Documenti")) + QLatin1Char(')');
    return statements;
}

TQ3SchemaStep Upgrade(const QString &key, const QString &from, const QString &to, const QStringList &statements,
                      TQ3MsgIcon failureIcon = TQ3MsgIcon::None)
{
    TQ3SchemaStep step;
    step.Key = key;
    step.From = from;
    step.To = to;
    step.Statements = statements;
    step.FailureIcon = failureIcon;
    return step;
}

TQ3SchemaStep CreateFattVend()
{
    return Q3CreateTableStep(
        QStringLiteral("FATT_VEND"),
        QStringLiteral("CREATE TABLE FATT_VEND (IDFATT_VEND INTEGER NOT NULL, ") + DocumentHeaderColumns
            + QStringLiteral(
                ", FC_ABILITATO VARCHAR(5) NOT NULL, FC_GENERA_OGNI INTEGER, FC_GENERA_OGNI_UM VARCHAR(255), "
                "FC_DATA_INIZIO DATE, FC_DATA_FINE DATE, FC_DATA_NUOVA_FATTURA VARCHAR(255), "
                "NOTE BLOB SUB_TYPE 1, "
                "CONSTRAINT PK_FATT_VEND PRIMARY KEY(IDFATT_VEND), CONSTRAINT UK1_FATT_VEND UNIQUE(NUMERO, ANNO))"),
        QStringLiteral("FATT_VEND"), QStringLiteral("FATT_VEND"));
}

TQ3SchemaStep CreateFattVendDett()
{
    return Q3CreateTableStep(
        QStringLiteral("FATT_VEND_DETT"),
        QStringLiteral("CREATE TABLE FATT_VEND_DETT (IDFATT_VEND_DETT INTEGER NOT NULL, IDFATT_VEND INTEGER NOT NULL, ")
            + LineItemColumns + QStringLiteral(", SCONTO DECIMAL(13, 2), ") + LineAmountColumns
            + QStringLiteral(", CONSTRAINT PK_FATT_VEND_DETT PRIMARY KEY(IDFATT_VEND_DETT))"),
        QStringLiteral("FATT_VEND_DETT"), QStringLiteral("FATT_VEND_DETT"));
}

TQ3SchemaStep CreateNoteAccredito()
{
    return Q3CreateTableStep(
        QStringLiteral("NOTE_ACCREDITO"),
        QStringLiteral("CREATE TABLE NOTE_ACCREDITO (IDNOTA_ACCREDITO INTEGER NOT NULL, ") + DocumentHeaderColumns
            + QStringLiteral(", NOTE BLOB SUB_TYPE 1, CONSTRAINT PK_NOTE_ACCREDITO PRIMARY KEY(IDNOTA_ACCREDITO), "
                             "CONSTRAINT UK1_NOTE_ACCREDITO UNIQUE(NUMERO, ANNO))"),
        QStringLiteral("NOTE_ACCREDITO"), QStringLiteral("NOTA_ACCREDITO"));
}

TQ3SchemaStep CreateNoteAccreditoDett()
{
    return Q3CreateTableStep(QStringLiteral("NOTE_ACCREDITO_DETT"),
                             QStringLiteral("CREATE TABLE NOTE_ACCREDITO_DETT (IDNOTA_ACCREDITO_DETT INTEGER NOT NULL, "
                                            "IDNOTA_ACCREDITO INTEGER NOT NULL, ")
                                 + LineItemColumns + QStringLiteral(", ") + LineAmountColumns
                                 + QStringLiteral(
                                     ", CONSTRAINT PK_NOTE_ACCREDITO_DETT PRIMARY KEY(IDNOTA_ACCREDITO_DETT))"),
                             QStringLiteral("NOTE_ACCREDITO_DETT"), QStringLiteral("NOTA_ACCREDITO_DETT"));
}

TQ3SchemaStep CreateAliquoteIVA()
{
    const QString table = QStringLiteral("ALIQUOTE_IVA");
    return Q3CreateTableStep(
        table,
        QStringLiteral(
            "CREATE TABLE ALIQUOTE_IVA (IDALIQUOTA_IVA INTEGER NOT NULL, CODICE VARCHAR(2) NOT NULL, "
            "DESCRIZIONE VARCHAR(30) NOT NULL, ALIQUOTA DECIMAL(13, 2) NOT NULL, "
            "CONSTRAINT PK_ALIQUOTE_IVA PRIMARY KEY(IDALIQUOTA_IVA), CONSTRAINT UK1_ALIQUOTE_IVA UNIQUE(CODICE))"),
        table, QStringLiteral("ALIQUOTA_IVA"),
        {SeedRow(table, {QStringLiteral("1"), QuotedStr(QStringLiteral("20")),
                         QuotedStr(QStringLiteral("Aliquota standard")), QStringLiteral("20")}),
         SeedRow(table, {QStringLiteral("2"), QuotedStr(QStringLiteral("N0")),
                         QuotedStr(QStringLiteral("Aliquota esente")), QStringLiteral("0")}),
         SeedRow(table, {QStringLiteral("3"), QuotedStr(QStringLiteral("N1")),
                         QuotedStr(QStringLiteral("Aliquota esclusa")), QStringLiteral("0")})});
}

// Seed rows of a table whose columns are its key and one text, keyed 1, 2, 3 ... in order.
QStringList NumberedSeeds(const QString &table, const QStringList &texts, const QStringList &trailing = {})
{
    QStringList seeds;
    for (int i = 0; i < texts.size(); ++i)
        seeds << SeedRow(table, QStringList{QString::number(i + 1), QuotedStr(texts.at(i))} + trailing);
    return seeds;
}

TQ3SchemaStep CreateUM()
{
    const QString table = QStringLiteral("UM");
    return Q3CreateTableStep(table,
                             QStringLiteral("CREATE TABLE UM (IDUM INTEGER NOT NULL, UM VARCHAR(5) NOT NULL, "
                                            "CONSTRAINT PK_UM PRIMARY KEY(IDUM), CONSTRAINT UK1_UM UNIQUE(UM))"),
                             table, QStringLiteral("UM"),
                             NumberedSeeds(table, {QStringLiteral("PEZZI"), QStringLiteral("ORE"),
                                                   QStringLiteral("Q.LI"), QStringLiteral("KG")}));
}

TQ3SchemaStep CreateTipiPagamento()
{
    const QString table = QStringLiteral("TIPI_PAGAMENTO");
    return Q3CreateTableStep(
        table,
        QStringLiteral(
            "CREATE TABLE TIPI_PAGAMENTO (IDTIPO_PAGAMENTO INTEGER NOT NULL, TIPO_PAGAMENTO VARCHAR(30) NOT NULL, "
            "CONSTRAINT PK_TIPI_PAGAMENTO PRIMARY KEY(IDTIPO_PAGAMENTO), "
            "CONSTRAINT UK1_TIPI_PAGAMENTO UNIQUE(TIPO_PAGAMENTO))"),
        table, QStringLiteral("TIPO_PAGAMENTO"),
        NumberedSeeds(table, {QStringLiteral("Rimessa diretta"), QStringLiteral("Bonifico 30 gg Data Fattura"),
                              QStringLiteral("Bonifico 30 gg Fine Mese"), QStringLiteral("Ri.Ba. 30 gg Data Fattura"),
                              QStringLiteral("Ri.Ba. 30 gg Fine Mese")}));
}

// The two category trees share their shape and their one seed row.
TQ3SchemaStep CreateCategoryTree(const QString &table, const QString &entity)
{
    return Q3CreateTableStep(table,
                             QStringLiteral("CREATE TABLE %1 (ID%2 INTEGER NOT NULL, CATEGORIA VARCHAR(50) NOT NULL, "
                                            "IDPADRE INTEGER, CONSTRAINT PK_%1 PRIMARY KEY(ID%2))")
                                 .arg(table, entity),
                             table, entity, NumberedSeeds(table, {QStringLiteral("Altro")}, {QStringLiteral("NULL")}));
}

TQ3SchemaStep CreateServizi()
{
    return Q3CreateTableStep(
        QStringLiteral("SERVIZI"),
        QStringLiteral(
            "CREATE TABLE SERVIZI (IDSERVIZIO INTEGER NOT NULL, CODICE VARCHAR(20) NOT NULL, "
            "DESCRIZIONE VARCHAR(100) NOT NULL, IDCATEGORIA_SERVIZI INTEGER NOT NULL, "
            "PREZZO DECIMAL(13, 2) NOT NULL, COSTO DECIMAL(13, 2) NOT NULL, IDALIQUOTA_IVA INTEGER NOT NULL, "
            "IDUM INTEGER NOT NULL, CONSTRAINT PK_SERVIZI PRIMARY KEY(IDSERVIZIO), "
            "CONSTRAINT UK1_SERVIZI UNIQUE(CODICE))"),
        QStringLiteral("SERVIZI"), QStringLiteral("SERVIZIO"));
}

TQ3SchemaStep CreateClienti()
{
    return Q3CreateTableStep(
        QStringLiteral("CLIENTI"),
        QStringLiteral(
            "CREATE TABLE CLIENTI (IDCLIENTE INTEGER NOT NULL, CODICE VARCHAR(20) NOT NULL, "
            "RAGIONESOCIALE VARCHAR(100) NOT NULL, INDIRIZZO VARCHAR(50), CITTA VARCHAR(30), CAP VARCHAR(5), "
            "PROVINCIA VARCHAR(2), NAZIONE VARCHAR(30), CODICEFISCALE VARCHAR(16), PARTITAIVA VARCHAR(11), "
            "IDTIPO_PAGAMENTO INTEGER, TELEFONO1 VARCHAR(20), TELEFONO2 VARCHAR(20), TELEFONO3 VARCHAR(20), "
            "FAX VARCHAR(20), EMAIL VARCHAR(100), WEB VARCHAR(100), NOTE BLOB SUB_TYPE 1, "
            "CONSTRAINT PK_CLIENTI PRIMARY KEY(IDCLIENTE), CONSTRAINT UK1_CLIENTI UNIQUE(CODICE))"),
        QStringLiteral("CLIENTI"), QStringLiteral("CLIENTE"));
}

TQ3SchemaStep CreateAnaMaga()
{
    return Q3CreateTableStep(
        QStringLiteral("ANA_MAGA"),
        QStringLiteral(
            "CREATE TABLE ANA_MAGA (IDANA_MAGA INTEGER NOT NULL, CODICE VARCHAR(20) NOT NULL, "
            "DESCRIZIONE VARCHAR(100) NOT NULL, SOTTOSCORTA DECIMAL(13, 1) NOT NULL, "
            "RIORDINO DECIMAL(13, 1) NOT NULL, IDCATEGORIA_ANA_MAGA INTEGER NOT NULL, "
            "PREZZO DECIMAL(13, 2) NOT NULL, COSTO DECIMAL(13, 2) NOT NULL, IDALIQUOTA_IVA INTEGER NOT NULL, "
            "IDUM INTEGER NOT NULL, CONSTRAINT PK_ANA_MAGA PRIMARY KEY(IDANA_MAGA), "
            "CONSTRAINT UK1_ANA_MAGA UNIQUE(CODICE))"),
        QStringLiteral("ANA_MAGA"), QStringLiteral("ANA_MAGA"));
}

TQ3SchemaStep CreateNoteDocumenti()
{
    return Q3CreateTableStep(
        QStringLiteral("NOTE_DOCUMENTI"),
        QStringLiteral("CREATE TABLE NOTE_DOCUMENTI (IDNOTA_DOCUMENTI INTEGER NOT NULL, TITOLO VARCHAR(100) NOT NULL, "
                       "TESTO BLOB SUB_TYPE 1, CONSTRAINT PK_NOTE_DOCUMENTI PRIMARY KEY(IDNOTA_DOCUMENTI), "
                       "CONSTRAINT UK1_NOTE_DOCUMENTI UNIQUE(TITOLO))"),
        QStringLiteral("NOTE_DOCUMENTI"), QStringLiteral("NOTA_DOCUMENTI"));
}

// The delivery notes an invoice was loaded from, each a copy of the note's
// key, number and date.
TQ3SchemaStep CreateFattVendDdt()
{
    TQ3SchemaStep step = Q3CreateTableStep(
        QStringLiteral("FATT_VEND_DDT"),
        QStringLiteral("CREATE TABLE FATT_VEND_DDT (IDFATT_VEND_DDT INTEGER NOT NULL, IDFATT_VEND INTEGER NOT NULL, "
                       "IDDDT_SCARICO INTEGER, NUMERO VARCHAR(20) NOT NULL, DATA DATE NOT NULL, "
                       "CONSTRAINT PK_FATT_VEND_DDT PRIMARY KEY(IDFATT_VEND_DDT))"),
        QStringLiteral("FATT_VEND_DDT"), QStringLiteral("FATT_VEND_DDT"));
    step.FailureIcon = TQ3MsgIcon::Error;
    return step;
}

QStringList CoordinateBancarie()
{
    QStringList statements;
    for (const char *column :
         {"COORDBAN_PAESE VARCHAR(2)", "COORDBAN_CIN_EUR VARCHAR(2)", "COORDBAN_CIN VARCHAR(1)",
          "COORDBAN_ABI VARCHAR(5)", "COORDBAN_CAB VARCHAR(5)", "COORDBAN_CONTO VARCHAR(20)",
          "COORDBAN_SWIFT VARCHAR(50)", "COORDBAN_BANCA VARCHAR(100)", "COORDBAN_AGENZIA VARCHAR(100)"})
        statements << QStringLiteral("ALTER TABLE CLIENTI ADD ") + QString::fromLatin1(column);
    return statements;
}

// The indexes the module's reads need, each named after its table and columns:
//  - lines by their document: opening, saving and deleting an invoice or a
//    credit note, the invoice list's search by line text;
//  - documents by year and number, descending: the document lists' order, the
//    next number of a year, the yearly totals of the statistics and summaries;
//  - invoices by customer code and year: the turnover by customer;
//  - invoice lines by code: the first description of a code in the turnover
//    by article and service;
//  - invoices by date: the turnover between two dates;
//  - categories by parent, articles and services by category: the keys below
//    a category and the category filter of the lists;
//  - articles by upper-cased code: the article list's pages;
//  - customers by upper-cased name: the customer list's letters and order.
TQ3SchemaStep CreateIndici()
{
    QStringList statements;
    for (const char *statement :
         {"CREATE INDEX IX_FATT_VEND_DETT_IDFATT_VEND ON FATT_VEND_DETT (IDFATT_VEND)",
          "CREATE INDEX IX_NOTE_ACCREDITO_DETT_IDNOTA ON NOTE_ACCREDITO_DETT (IDNOTA_ACCREDITO)",
          "CREATE DESCENDING INDEX IX_FATT_VEND_ANNO_NUMERO ON FATT_VEND (ANNO, NUMERO)",
          "CREATE DESCENDING INDEX IX_NOTE_ACCREDITO_ANNO_NUMERO ON NOTE_ACCREDITO (ANNO, NUMERO)",
          "CREATE INDEX IX_FATT_VEND_CLI_CODICE_ANNO ON FATT_VEND (CLI_CODICE, ANNO)",
          "CREATE INDEX IX_FATT_VEND_DETT_CODICE ON FATT_VEND_DETT (CODICE)",
          "CREATE INDEX IX_FATT_VEND_DATA ON FATT_VEND (DATA)",
          "CREATE INDEX IX_CATEGORIE_ANA_MAGA_IDPADRE ON CATEGORIE_ANA_MAGA (IDPADRE)",
          "CREATE INDEX IX_CATEGORIE_SERVIZI_IDPADRE ON CATEGORIE_SERVIZI (IDPADRE)",
          "CREATE INDEX IX_ANA_MAGA_IDCATEGORIA ON ANA_MAGA (IDCATEGORIA_ANA_MAGA)",
          "CREATE INDEX IX_SERVIZI_IDCATEGORIA ON SERVIZI (IDCATEGORIA_SERVIZI)",
          "CREATE INDEX IX_ANA_MAGA_UPPER_CODICE ON ANA_MAGA COMPUTED BY (UPPER(CODICE))",
          "CREATE INDEX IX_CLIENTI_UPPER_RAGIONESOCIALE ON CLIENTI COMPUTED BY (UPPER(RAGIONESOCIALE))"})
        statements << QString::fromLatin1(statement);
    return Upgrade(QStringLiteral("KRV_INDICI"), QString(), V1_0_0, statements, TQ3MsgIcon::Error);
}

} // namespace

QList<TQ3SchemaStep> KRVSchemaSteps()
{
    const QString fattVend = QStringLiteral("FATT_VEND");
    const QString fattVendDett = QStringLiteral("FATT_VEND_DETT");
    const QString noteAccredito = QStringLiteral("NOTE_ACCREDITO");
    const QString clienti = QStringLiteral("CLIENTI");
    const QString abilitazioni = QStringLiteral("KRV_ABILITAZIONI");
    const QString aliquoteIva = QStringLiteral("ALIQUOTE_IVA");
    const TQ3MsgIcon error = TQ3MsgIcon::Error;

    return {
        CreateFattVend(),
        CreateFattVendDett(),
        CreateNoteAccredito(),
        CreateNoteAccreditoDett(),
        CreateAliquoteIVA(),
        CreateUM(),
        CreateTipiPagamento(),
        CreateCategoryTree(QStringLiteral("CATEGORIE_ANA_MAGA"), QStringLiteral("CATEGORIA_ANA_MAGA")),
        CreateCategoryTree(QStringLiteral("CATEGORIE_SERVIZI"), QStringLiteral("CATEGORIA_SERVIZI")),
        CreateServizi(),
        CreateClienti(),
        CreateAnaMaga(),
        // The widening of SERVIZI is recorded under FATT_VEND: existing databases depend on it.
        Upgrade(fattVend, V1_0_0, V1_1_0,
                {QStringLiteral("ALTER TABLE SERVIZI ALTER COLUMN DESCRIZIONE TYPE VARCHAR(150)")}),
        Upgrade(QStringLiteral("TIPI_PAGAMENTO"), V1_0_0, V1_1_0,
                {QStringLiteral("ALTER TABLE TIPI_PAGAMENTO DROP CONSTRAINT UK1_TIPI_PAGAMENTO"),
                 QStringLiteral("ALTER TABLE TIPI_PAGAMENTO ALTER COLUMN TIPO_PAGAMENTO TYPE VARCHAR(50)"),
                 QStringLiteral(
                     "ALTER TABLE TIPI_PAGAMENTO ADD CONSTRAINT UK1_TIPI_PAGAMENTO UNIQUE(TIPO_PAGAMENTO)")}),
        Upgrade(fattVendDett, V1_0_0, V1_1_0, {QStringLiteral("ALTER TABLE FATT_VEND_DETT ADD COSTO DECIMAL(13,2)")}),
        Upgrade(fattVendDett, V1_1_0, V1_2_0, {CostFromMaster(QStringLiteral("ANA_MAGA"), QStringLiteral("Articolo"))}),
        Upgrade(fattVendDett, V1_2_0, V1_3_0, {CostFromMaster(QStringLiteral("SERVIZI"), QStringLiteral("Servizio"))}),
        CreateNoteDocumenti(),
        Upgrade(QStringLiteral("ANA_MAGA"), V1_0_0, V1_1_0,
                {QStringLiteral("ALTER TABLE ANA_MAGA ADD NOTE BLOB SUB_TYPE 1")}),
        Upgrade(clienti, V1_0_0, V1_1_0, CoordinateBancarie()),
        Upgrade(clienti, V1_1_0, V1_2_0,
                {QStringLiteral("ALTER TABLE CLIENTI ALTER COLUMN INDIRIZZO TYPE VARCHAR(100)")}, error),
        Upgrade(fattVend, V1_1_0, V1_2_0, {AddFlagColumn(fattVend, QStringLiteral("NOTIFICATO"))}, error),
        Upgrade(noteAccredito, V1_0_0, V1_1_0, {AddFlagColumn(noteAccredito, QStringLiteral("NOTIFICATO"))}, error),
        // KRV_ABILITAZIONI is no table: its "create" step adds the first permissions and the key's row.
        Upgrade(abilitazioni, QString(), V1_0_0,
                Permissions({QStringLiteral("Fatture di vendita (eliminazione)"),
                             QStringLiteral("Note di accredito (eliminazione)"),
                             QStringLiteral("Statistiche (visualizzazione)")})),
        Upgrade(clienti, V1_2_0, V1_3_0,
                {QStringLiteral("ALTER TABLE CLIENTI ALTER COLUMN PARTITAIVA TYPE VARCHAR(13)")}, error),
        Upgrade(fattVend, V1_2_0, V1_3_0,
                {QStringLiteral("ALTER TABLE FATT_VEND ALTER COLUMN CLI_PARTITAIVA TYPE VARCHAR(13)")}, error),
        Upgrade(noteAccredito, V1_1_0, V1_2_0,
                {QStringLiteral("ALTER TABLE NOTE_ACCREDITO ALTER COLUMN CLI_PARTITAIVA TYPE VARCHAR(13)")}, error),
        Upgrade(abilitazioni, V1_0_0, V1_0_1,
                Permissions({QStringLiteral("Fatture di vendita (visualizzazione)"),
                             QStringLiteral("Fatture di vendita (modifica)"),
                             QStringLiteral("Note di accredito (visualizzazione)"),
                             QStringLiteral("Note di accredito (modifica)")}),
                error),
        Upgrade(fattVend, V1_3_0, V1_4_0, {AddFlagColumn(fattVend, QStringLiteral("IVA_ESENTE"))}, error),
        Upgrade(fattVend, V1_4_0, V1_5_0, {QStringLiteral("UPDATE FATT_VEND SET IVA_ESENTE = ") + QuotedFalse()},
                error),
        // After the recorded history, under a key of its own.
        CreateIndici(),
        // The data the electronic invoice needs about the buyer and about exempt rates.
        Upgrade(clienti, V1_3_0, V1_4_0,
                {AddTextColumn(clienti, QStringLiteral("CODICE_DESTINATARIO"), 7),
                 AddTextColumn(clienti, QStringLiteral("PEC"), 256),
                 AddTextColumn(clienti, QStringLiteral("TIPO_SOGGETTO"), 2, QStringLiteral("A")),
                 AddTextColumn(clienti, QStringLiteral("NOME"), 60),
                 AddTextColumn(clienti, QStringLiteral("COGNOME"), 60)},
                error),
        Upgrade(aliquoteIva, V1_0_0, V1_1_0,
                {AddTextColumn(aliquoteIva, QStringLiteral("NATURA"), 4),
                 AddTextColumn(aliquoteIva, QStringLiteral("RIFERIMENTO_NORMATIVO"), 100)},
                error),
        // Unit prices and quantities keep the decimals the user typed.
        Upgrade(fattVendDett, V1_3_0, V1_4_0, DecimaliRighe(fattVendDett), error),
        Upgrade(QStringLiteral("NOTE_ACCREDITO_DETT"), V1_0_0, V1_1_0,
                DecimaliRighe(QStringLiteral("NOTE_ACCREDITO_DETT")), error),
        // The electronic invoice produced from a document, and the progressive of its files.
        Upgrade(fattVend, V1_5_0, V1_6_0, ColonneFatturaPA(fattVend), error),
        Upgrade(noteAccredito, V1_2_0, V1_3_0, ColonneFatturaPA(noteAccredito), error),
        Upgrade(QStringLiteral("FATTURAPA"), QString(), V1_0_0, {QStringLiteral("CREATE SEQUENCE GEN_FPA_PROGRESSIVO")},
                error),
        // The invoice a credit note corrects, copied as the customer is.
        Upgrade(noteAccredito, V1_3_0, V1_4_0,
                {QStringLiteral("ALTER TABLE NOTE_ACCREDITO ADD FATT_IDFATT_VEND INTEGER"),
                 QStringLiteral("ALTER TABLE NOTE_ACCREDITO ADD FATT_NUMERO INTEGER"),
                 QStringLiteral("ALTER TABLE NOTE_ACCREDITO ADD FATT_DATA DATE")},
                error),
        CreateFattVendDdt(),
        // An invoice's delivery notes are read by the invoice's key.
        Upgrade(QStringLiteral("FATT_VEND_DDT"), V1_0_0, V1_1_0,
                {QStringLiteral("CREATE INDEX IX_FATT_VEND_DDT_IDFATT_VEND ON FATT_VEND_DDT (IDFATT_VEND)")}, error),
    };
}

void AggiornaDatabase(const QSqlDatabase &db)
{
    TQ3SchemaUpgrade upgrade(db);
    upgrade.SetStatementObserver(StatementObserver());
    upgrade.Run(KRVSchemaSteps());
}

void SetAggiornaDatabaseObserver(std::function<void(const QString &)> observer)
{
    StatementObserver() = std::move(observer);
}
