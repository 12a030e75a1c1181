#include "KATAggiornaDatabase.h"
#include "KATPromemoria.h"
#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QtTest>

#include <memory>

// The reminders of recurring invoices and those added by hand, on a copy of
// the upgraded template (which has the invoices) with the module's own schema.
class TestKATPromemoria : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void schemaRecordsItsOwnKey();
    void schemaRunsOnceOnly();
    void schemaNeedsNoInvoiceTables();
    void recurringInvoiceGetsItsReminders();
    void changedRecurrenceRewritesPendingReminders();
    void doneRemindersStayAsHistory();
    void recurrenceTurnedOffRemovesPendingReminders();
    void recurrenceFlagAloneOffRemovesPendingReminders();
    void deletedInvoiceRemovesPendingReminders();
    void otherInvoicesAndManualRemindersStay();
    void unknownDayRuleIsAnswered();
    void unknownUnitIsAnsweredAndGivesNone();
    void dailyRecurrenceOverYearsStopsAtTheCap();
    void dueRemindersArePendingOnesUpToToday();
    void markedDoneKeepsTheGeneratedNumber();
    void markingAMissingReminderRaises();
    void manualReminderKeepsItsTexts();

private:
    // A sales invoice numbered `numero` of 2024 with the recurrence given, or none when `ogni` is 0.
    int AddInvoice(int numero, int ogni = 0, const QString &unita = QString(), const QString &inizio = QString(),
                   const QString &fine = QString(), const QString &regola = QString()) const;
    // Invoice 12, due on the 15th of every month from January 2024 to `fine`,
    // with its reminders, the first of them acted on by invoice 13.
    int MonthlyInvoiceFirstDone(const QString &fine) const;
    void SetRecurrence(int id, int ogni, const QString &unita, const QString &inizio, const QString &fine,
                       const QString &regola) const;
    // The invoice's reminders as "date|state".
    QStringList Reminders(int idFattura) const;
    QSqlDatabase Db() const { return m_db->Db(); }
    std::unique_ptr<TQ3TestDatabase> m_db;
};

namespace {

QString Text(const char *text)
{
    return QString::fromUtf8(text);
}

QString Literal(const QString &value)
{
    return value.isEmpty() ? QStringLiteral("NULL") : QuotedStr(value);
}

} // namespace

void TestKATPromemoria::init()
{
    m_db = std::make_unique<TQ3TestDatabase>(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Upgraded);
    KATAggiornaDatabase(Db());
}

void TestKATPromemoria::cleanup()
{
    m_db.reset();
}

int TestKATPromemoria::AddInvoice(int numero, int ogni, const QString &unita, const QString &inizio,
                                  const QString &fine, const QString &regola) const
{
    m_db->Exec(QStringLiteral("INSERT INTO FATT_VEND (IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, "
                              "CLI_RAGIONESOCIALE, IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, TOTALE_IMPONIBILE, "
                              "TOTALE_IMPOSTA, TOTALE_DOCUMENTO, FC_ABILITATO) VALUES (0, %1, '2024-01-10', 2024, "
                              "'C001', 'Rossi Srl', 1, 'Rimessa diretta', 'False', 0, 0, 0, 'False')")
                   .arg(numero));
    const int id =
        m_db->Scalar(QStringLiteral("SELECT IDFATT_VEND FROM FATT_VEND WHERE NUMERO=%1").arg(numero)).toInt();
    if (ogni > 0)
        SetRecurrence(id, ogni, unita, inizio, fine, regola);
    return id;
}

int TestKATPromemoria::MonthlyInvoiceFirstDone(const QString &fine) const
{
    const int id =
        AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-15"), fine, Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), id);
    KATSegnaFatto(Db(), KATPromemoriaFattura(Db(), id).first().Id, 13);
    return id;
}

void TestKATPromemoria::SetRecurrence(int id, int ogni, const QString &unita, const QString &inizio,
                                      const QString &fine, const QString &regola) const
{
    m_db->Exec(QStringLiteral("UPDATE FATT_VEND SET FC_ABILITATO='True', FC_GENERA_OGNI=%1, FC_GENERA_OGNI_UM=%2, "
                              "FC_DATA_INIZIO=%3, FC_DATA_FINE=%4, FC_DATA_NUOVA_FATTURA=%5 WHERE IDFATT_VEND=%6")
                   .arg(QString::number(ogni), Literal(unita), Literal(inizio), Literal(fine), Literal(regola),
                        QString::number(id)));
}

QStringList TestKATPromemoria::Reminders(int idFattura) const
{
    QStringList rows;
    for (const TKATPromemoria &row : KATPromemoriaFattura(Db(), idFattura))
        rows << row.Data.toString(Qt::ISODate) + QLatin1Char('|') + row.Stato;
    return rows;
}

void TestKATPromemoria::schemaRecordsItsOwnKey()
{
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA='PROMEMORIA'")),
             QStringList{QStringLiteral("1.1.0")});
    // The reminders of an invoice and the due ones are found through indexes.
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT TRIM(RDB$INDEX_NAME) FROM RDB$INDICES WHERE RDB$RELATION_NAME="
                                       "'PROMEMORIA' AND RDB$INDEX_NAME STARTING WITH 'IX_' ORDER BY 1")),
             (QStringList{QStringLiteral("IX_PROMEMORIA_IDFATT_VEND"), QStringLiteral("IX_PROMEMORIA_STATO_DATA")}));
    // The module's rights form a group of their own in the host's catalogue.
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE GRUPPO='Attivita' "
                                       "ORDER BY 1")),
             (QStringList{QStringLiteral("Promemoria (modifica)"), QStringLiteral("Promemoria (visualizzazione)")}));
    QCOMPARE(m_db->Rows(
                 QStringLiteral("SELECT COUNT(*) FROM RDB$GENERATORS WHERE RDB$GENERATOR_NAME='GN_IDPROMEMORIA'")),
             QStringList{QStringLiteral("1")});
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT COUNT(*) FROM RDB$TRIGGERS WHERE RDB$TRIGGER_NAME='TG_BI_PROMEMORIA'")),
             QStringList{QStringLiteral("1")});
}

void TestKATPromemoria::schemaRunsOnceOnly()
{
    KATAggiungiManuale(Db(), QStringLiteral("Rinnovo dominio"), QDate(2024, 3, 1), QString());
    KATAggiornaDatabase(Db());
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT COUNT(*) FROM TABLE_VERSION WHERE TABELLA='PROMEMORIA'")),
             QStringList{QStringLiteral("1")});
    QCOMPARE(KATPromemoriaFattura(Db(), 0).size(), 1);
}

// Reminders by hand need only the host's tables.
void TestKATPromemoria::schemaNeedsNoInvoiceTables()
{
    const TQ3TestDatabase host(TQ3TestDatabase::Where::Embedded, TQ3TestDatabase::Schema::Host);
    KATAggiornaDatabase(host.Db());
    const int id = KATAggiungiManuale(host.Db(), QStringLiteral("Rinnovo dominio"), QDate(2024, 3, 1), QString());
    QCOMPARE(KATPromemoriaScaduti(host.Db(), QDate(2024, 3, 1)).first().Id, id);
}

void TestKATPromemoria::recurringInvoiceGetsItsReminders()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-31"), QStringLiteral("2024-03-31"),
                              Text(KATRegolaGiornoEsatto));
    const TKATScadenze scadenze = KATAggiornaPromemoriaFattura(Db(), id);
    QCOMPARE(scadenze.Date.size(), 3);
    QVERIFY(!scadenze.RegolaSconosciuta);
    const QList<TKATPromemoria> rows = KATPromemoriaFattura(Db(), id);
    QCOMPARE(Reminders(id), QStringList({QStringLiteral("2024-01-31|Da fare"), QStringLiteral("2024-02-29|Da fare"),
                                         QStringLiteral("2024-03-31|Da fare")}));
    for (const TKATPromemoria &row : rows) {
        QCOMPARE(row.Tipo, Text(KATTipoFatturaCiclica));
        QCOMPARE(row.IdFattura, id);
        QCOMPARE(row.Titolo, QStringLiteral("Fattura ciclica n. 12/2024"));
        QVERIFY(row.Id > 0);
    }
}

void TestKATPromemoria::changedRecurrenceRewritesPendingReminders()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-31"), QStringLiteral("2024-03-31"),
                              Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), id);
    SetRecurrence(id, 2, Text(KATUnitaMese), QStringLiteral("2024-01-31"), QStringLiteral("2024-05-31"),
                  Text(KATRegolaPrimoGiorno));
    KATAggiornaPromemoriaFattura(Db(), id);
    QCOMPARE(Reminders(id), QStringList({QStringLiteral("2024-01-01|Da fare"), QStringLiteral("2024-03-01|Da fare"),
                                         QStringLiteral("2024-05-01|Da fare")}));
}

// The reminder acted on keeps its row; its date gets no new pending one when
// the recurrence still falls on it.
void TestKATPromemoria::doneRemindersStayAsHistory()
{
    const int id = MonthlyInvoiceFirstDone(QStringLiteral("2024-03-15"));
    SetRecurrence(id, 1, Text(KATUnitaMese), QStringLiteral("2024-01-15"), QStringLiteral("2024-04-15"),
                  Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), id);
    QCOMPARE(Reminders(id), QStringList({QStringLiteral("2024-01-15|Fatto"), QStringLiteral("2024-02-15|Da fare"),
                                         QStringLiteral("2024-03-15|Da fare"), QStringLiteral("2024-04-15|Da fare")}));
    QCOMPARE(KATPromemoriaFattura(Db(), id).first().FattNumeroGenerata, 13);
}

void TestKATPromemoria::recurrenceTurnedOffRemovesPendingReminders()
{
    const int id = MonthlyInvoiceFirstDone(QStringLiteral("2024-03-15"));
    m_db->Exec(QStringLiteral("UPDATE FATT_VEND SET FC_ABILITATO='False', FC_GENERA_OGNI=NULL, FC_GENERA_OGNI_UM=NULL, "
                              "FC_DATA_INIZIO=NULL, FC_DATA_FINE=NULL, FC_DATA_NUOVA_FATTURA=NULL"));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).Date.isEmpty());
    QCOMPARE(Reminders(id), QStringList{QStringLiteral("2024-01-15|Fatto")});
}

// Only the flag decides: settings left behind by an invoice whose recurrence is off give nothing.
void TestKATPromemoria::recurrenceFlagAloneOffRemovesPendingReminders()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-15"), QStringLiteral("2024-03-15"),
                              Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), id);
    m_db->Exec(QStringLiteral("UPDATE FATT_VEND SET FC_ABILITATO='False'"));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).Date.isEmpty());
    QVERIFY(Reminders(id).isEmpty());
}

void TestKATPromemoria::deletedInvoiceRemovesPendingReminders()
{
    const int id = MonthlyInvoiceFirstDone(QStringLiteral("2024-03-15"));
    m_db->Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND=%1").arg(id));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).Date.isEmpty());
    QCOMPARE(Reminders(id), QStringList{QStringLiteral("2024-01-15|Fatto")});
}

void TestKATPromemoria::otherInvoicesAndManualRemindersStay()
{
    const int altra = AddInvoice(11, 1, Text(KATUnitaAnno), QStringLiteral("2024-06-01"), QStringLiteral("2025-06-01"),
                                 Text(KATRegolaGiornoEsatto));
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-15"), QStringLiteral("2024-02-15"),
                              Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), altra);
    KATAggiungiManuale(Db(), QStringLiteral("Rinnovo dominio"), QDate(2024, 2, 15), QString());
    KATAggiornaPromemoriaFattura(Db(), id);
    m_db->Exec(QStringLiteral("DELETE FROM FATT_VEND WHERE IDFATT_VEND=%1").arg(id));
    KATAggiornaPromemoriaFattura(Db(), id);
    QVERIFY(Reminders(id).isEmpty());
    QCOMPARE(Reminders(altra),
             QStringList({QStringLiteral("2024-06-01|Da fare"), QStringLiteral("2025-06-01|Da fare")}));
    QCOMPARE(Reminders(0), QStringList{QStringLiteral("2024-02-15|Da fare")});
}

void TestKATPromemoria::unknownDayRuleIsAnswered()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-31"), QStringLiteral("2024-02-29"),
                              QStringLiteral("Il giorno 31 del mese"));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).RegolaSconosciuta);
    QCOMPARE(Reminders(id), QStringList({QStringLiteral("2024-01-31|Da fare"), QStringLiteral("2024-02-29|Da fare")}));
}

void TestKATPromemoria::unknownUnitIsAnsweredAndGivesNone()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaMese), QStringLiteral("2024-01-31"), QStringLiteral("2024-02-29"),
                              Text(KATRegolaGiornoEsatto));
    KATAggiornaPromemoriaFattura(Db(), id);
    SetRecurrence(id, 1, QStringLiteral("Trimestre"), QStringLiteral("2024-01-31"), QStringLiteral("2024-12-31"),
                  Text(KATRegolaGiornoEsatto));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).UnitaSconosciuta);
    QVERIFY(Reminders(id).isEmpty());
}

void TestKATPromemoria::dailyRecurrenceOverYearsStopsAtTheCap()
{
    const int id = AddInvoice(12, 1, Text(KATUnitaGiorno), QStringLiteral("2024-01-01"), QStringLiteral("2034-12-31"),
                              Text(KATRegolaGiornoEsatto));
    QVERIFY(KATAggiornaPromemoriaFattura(Db(), id).Troncate);
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT COUNT(*), MAX(DATA) FROM PROMEMORIA")),
             QStringList{
                 QStringLiteral("%1|%2").arg(QString::number(KATMaxScadenze),
                                             QDate(2024, 1, 1).addDays(KATMaxScadenze - 1).toString(Qt::ISODate))});
}

void TestKATPromemoria::dueRemindersArePendingOnesUpToToday()
{
    MonthlyInvoiceFirstDone(QStringLiteral("2024-04-15"));
    const int manuale = KATAggiungiManuale(Db(), QStringLiteral("Rinnovo dominio"), QDate(2024, 2, 1), QString());
    KATAggiungiManuale(Db(), QStringLiteral("Assicurazione"), QDate(2024, 3, 16), QString());
    QStringList scaduti;
    for (const TKATPromemoria &row : KATPromemoriaScaduti(Db(), QDate(2024, 3, 15)))
        scaduti << row.Data.toString(Qt::ISODate) + QLatin1Char('|') + row.Tipo;
    QCOMPARE(scaduti, QStringList({QStringLiteral("2024-02-01|Manuale"), QStringLiteral("2024-02-15|Fattura ciclica"),
                                   QStringLiteral("2024-03-15|Fattura ciclica")}));
    QCOMPARE(KATPromemoriaScaduti(Db(), QDate(2024, 3, 15)).first().Id, manuale);
}

void TestKATPromemoria::markedDoneKeepsTheGeneratedNumber()
{
    const int id = KATAggiungiManuale(Db(), QStringLiteral("Rinnovo dominio"), QDate(2024, 2, 1), QString());
    const QDateTime prima = QDateTime::currentDateTime().addSecs(-1);
    KATSegnaFatto(Db(), id, 0);
    const TKATPromemoria fatto = KATPromemoriaFattura(Db(), 0).first();
    QCOMPARE(fatto.Stato, Text(KATStatoFatto));
    QVERIFY(fatto.FattoIl >= prima);
    QCOMPARE(m_db->Rows(QStringLiteral("SELECT COALESCE(FATT_NUMERO_GENERATA, -1) FROM PROMEMORIA")),
             QStringList{QStringLiteral("-1")});
    QVERIFY(KATPromemoriaScaduti(Db(), QDate(2024, 12, 31)).isEmpty());
}

void TestKATPromemoria::markingAMissingReminderRaises()
{
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, KATSegnaFatto(Db(), 4711, 1));
}

void TestKATPromemoria::manualReminderKeepsItsTexts()
{
    const QString titolo = QStringLiteral("Chiamare l'ufficio \"Rossi\"");
    const QString note = QStringLiteral("Prima riga\n\rseconda riga con l'apostrofo");
    const int id = KATAggiungiManuale(Db(), titolo, QDate(2024, 2, 1), note);
    const TKATPromemoria row = KATPromemoriaFattura(Db(), 0).first();
    QCOMPARE(row.Id, id);
    QCOMPARE(row.Titolo, titolo);
    QCOMPARE(row.Note, note);
    QCOMPARE(row.Tipo, Text(KATTipoManuale));
    QCOMPARE(row.Stato, Text(KATStatoDaFare));
    QCOMPARE(row.IdFattura, 0);
}

QTEST_GUILESS_MAIN(TestKATPromemoria)
#include "tst_katpromemoria.moc"
