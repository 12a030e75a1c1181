#include "Q3Ruoli.h"

#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3Sql.h"
#include "Q3Users.h"

#include <QSet>

namespace {

QString Integer(int value)
{
    return QString::number(value);
}

// The condition on a user name, without regard to case, for a column.
QString StessoNome(const QString &column, const QString &nome)
{
    return QStringLiteral("UPPER(%1) = UPPER(%2)").arg(column, QuotedStr(nome));
}

// How many active users that meet the condition (on UTENTI U) hold "Amministratore".
int AmministratoriAttivi(const QSqlDatabase &db, const QString &condition)
{
    return QueryScalar(db, QStringLiteral("SELECT COUNT(DISTINCT U.IDUTENTE) FROM UTENTI U "
                                          "JOIN UTENTI_RUOLI UR ON UPPER(UR.USER_NAME) = UPPER(U.USER_NAME) "
                                          "JOIN RUOLI_UTENTE R ON R.IDRUOLO_UTENTE = UR.IDRUOLO_UTENTE "
                                          "WHERE U.ATTIVO = 'True' AND R.RUOLO_UTENTE = %1 AND %2")
                               .arg(QuotedStr(QString::fromLatin1(Q3AdminRole)), condition))
        .toInt();
}

// Names are counted as the database counts them: in characters, not in UTF-16 units.
void ControllaLunghezza(const QString &text, int maximum, const QString &what)
{
    if (text.toUcs4().size() > maximum)
        throw EQ3Rifiuto(QStringLiteral("%1 può contenere al massimo %2 caratteri.").arg(what).arg(maximum));
}

void ControllaNome(const QString &nome, const QString &what, const QString &missing)
{
    if (nome.trimmed().isEmpty())
        throw EQ3Rifiuto(missing);
    ControllaLunghezza(nome, TQ3Ruoli::LunghezzaNome, what);
}

QString RuoloAmministratore()
{
    return QString::fromLatin1(Q3AdminRole);
}

} // namespace

TQ3Ruoli::TQ3Ruoli(QSqlDatabase db) : m_db(std::move(db)) {}

QList<TQ3Utente> TQ3Ruoli::Utenti() const
{
    QSqlQuery query =
        OpenQuery(m_db, QStringLiteral("SELECT U.USER_NAME, U.NOME_COMPLETO, U.ATTIVO, R.RUOLO_UTENTE FROM UTENTI U "
                                       "LEFT JOIN UTENTI_RUOLI UR ON UPPER(UR.USER_NAME) = UPPER(U.USER_NAME) "
                                       "LEFT JOIN RUOLI_UTENTE R ON R.IDRUOLO_UTENTE = UR.IDRUOLO_UTENTE "
                                       "ORDER BY UPPER(U.USER_NAME), U.USER_NAME, UPPER(R.RUOLO_UTENTE)"));
    QList<TQ3Utente> utenti;
    while (query.next()) {
        const QString nome = query.value(0).toString();
        if (utenti.isEmpty() || utenti.last().Nome != nome) {
            TQ3Utente utente;
            utente.Nome = nome;
            utente.NomeCompleto = query.value(1).toString();
            utente.Attivo = query.value(2).toString() == QLatin1String("True");
            utenti << utente;
        }
        if (!query.value(3).isNull())
            utenti.last().Ruoli << query.value(3).toString();
    }
    return utenti;
}

QString TQ3Ruoli::NomeUtente(const QString &nome) const
{
    const QVariant stored = QueryScalar(m_db, QStringLiteral("SELECT USER_NAME FROM UTENTI WHERE ")
                                                  + StessoNome(QStringLiteral("USER_NAME"), nome));
    if (!stored.isValid())
        throw EQ3Rifiuto(QStringLiteral("L'utente \"%1\" non esiste.").arg(nome));
    return stored.toString();
}

QString TQ3Ruoli::NomeRuolo(int idRuolo) const
{
    const QVariant stored =
        QueryScalar(m_db,
                    QStringLiteral("SELECT RUOLO_UTENTE FROM RUOLI_UTENTE WHERE IDRUOLO_UTENTE = ") + Integer(idRuolo));
    if (!stored.isValid())
        throw EQ3Rifiuto(QStringLiteral("Il ruolo non esiste più."));
    return stored.toString();
}

bool TQ3Ruoli::UltimoAmministratore(const QString &nome) const
{
    return Q3UtenteAmministratore(m_db, nome) && AmministratoriAttivi(m_db, QStringLiteral("1 = 1")) == 1;
}

void TQ3Ruoli::NuovoUtente(const QString &nome, const QString &nomeCompleto)
{
    ControllaNome(nome, QStringLiteral("Il nome dell'utente"), QStringLiteral("Indicare il nome dell'utente."));
    ControllaLunghezza(nomeCompleto, LunghezzaNomeCompleto, QStringLiteral("Il nome completo"));
    TQ3Transaction transaction(m_db);
    const QVariant stored = QueryScalar(m_db, QStringLiteral("SELECT USER_NAME FROM UTENTI WHERE ")
                                                  + StessoNome(QStringLiteral("USER_NAME"), nome));
    if (stored.isValid())
        throw EQ3Rifiuto(QStringLiteral("Esiste già un utente di nome \"%1\".").arg(stored.toString()));
    ExecSQL(m_db, QStringLiteral("INSERT INTO UTENTI (IDUTENTE, USER_NAME, NOME_COMPLETO, ATTIVO) "
                                 "VALUES (0, %1, %2, 'True')")
                      .arg(QuotedStr(nome), QuotedStr(nomeCompleto)));
    transaction.Commit();
}

void TQ3Ruoli::ImpostaAttivo(const QString &nome, bool attivo)
{
    TQ3Transaction transaction(m_db);
    const QString stored = NomeUtente(nome);
    if (!attivo && UltimoAmministratore(stored))
        throw EQ3Rifiuto(QStringLiteral("Impossibile disattivare l'ultimo amministratore attivo."));
    ExecSQL(m_db, QStringLiteral("UPDATE UTENTI SET ATTIVO = %1 WHERE USER_NAME = %2")
                      .arg(QuotedStr(attivo ? QStringLiteral("True") : QStringLiteral("False")), QuotedStr(stored)));
    transaction.Commit();
}

void TQ3Ruoli::ImpostaPassword(const QString &nome, const QString &password)
{
    TQ3Users(m_db).SetPassword(NomeUtente(nome), password);
}

void TQ3Ruoli::CambiaPassword(const QString &nome, const QString &attuale, const QString &nuova)
{
    TQ3Users users(m_db);
    const int attesa = users.Throttle().WaitSeconds(nome);
    if (attesa > 0)
        throw EQ3Rifiuto(QStringLiteral("Troppi tentativi non riusciti: riprovare tra %1 secondi.").arg(attesa));
    if (users.Login(nome, attuale).isEmpty())
        throw EQ3Rifiuto(QStringLiteral("La password attuale non è corretta."));
    users.SetPassword(nome, nuova);
}

void TQ3Ruoli::AssegnaRuolo(const QString &nome, int idRuolo)
{
    TQ3Transaction transaction(m_db);
    const QString stored = NomeUtente(nome);
    NomeRuolo(idRuolo);
    ExecSQL(m_db, QStringLiteral("UPDATE OR INSERT INTO UTENTI_RUOLI (USER_NAME, IDRUOLO_UTENTE) VALUES (%1, %2) "
                                 "MATCHING (USER_NAME, IDRUOLO_UTENTE)")
                      .arg(QuotedStr(stored), Integer(idRuolo)));
    transaction.Commit();
}

void TQ3Ruoli::RimuoviRuolo(const QString &nome, int idRuolo)
{
    TQ3Transaction transaction(m_db);
    const QString stored = NomeUtente(nome);
    if (NomeRuolo(idRuolo) == RuoloAmministratore() && UltimoAmministratore(stored))
        throw EQ3Rifiuto(QStringLiteral("Impossibile togliere il ruolo \"%1\" all'ultimo amministratore attivo.")
                             .arg(RuoloAmministratore()));
    ExecSQL(m_db, QStringLiteral("DELETE FROM UTENTI_RUOLI WHERE IDRUOLO_UTENTE = %1 AND ").arg(Integer(idRuolo))
                      + StessoNome(QStringLiteral("USER_NAME"), stored));
    transaction.Commit();
}

QList<TQ3Ruolo> TQ3Ruoli::Ruoli() const
{
    QSqlQuery query = OpenQuery(m_db, QStringLiteral("SELECT IDRUOLO_UTENTE, RUOLO_UTENTE FROM RUOLI_UTENTE "
                                                     "ORDER BY UPPER(RUOLO_UTENTE), RUOLO_UTENTE"));
    QList<TQ3Ruolo> ruoli;
    while (query.next())
        ruoli << TQ3Ruolo{query.value(0).toInt(), query.value(1).toString()};
    return ruoli;
}

void TQ3Ruoli::ControllaNomeRuolo(const QString &nome, int idRuolo) const
{
    ControllaNome(nome, QStringLiteral("Il nome del ruolo"), QStringLiteral("Indicare il nome del ruolo."));
    const QVariant stored =
        QueryScalar(m_db, QStringLiteral("SELECT RUOLO_UTENTE FROM RUOLI_UTENTE WHERE IDRUOLO_UTENTE <> %1 AND ")
                                  .arg(Integer(idRuolo))
                              + StessoNome(QStringLiteral("RUOLO_UTENTE"), nome));
    if (stored.isValid())
        throw EQ3Rifiuto(QStringLiteral("Esiste già un ruolo di nome \"%1\".").arg(stored.toString()));
}

int TQ3Ruoli::NuovoRuolo(const QString &nome)
{
    TQ3Transaction transaction(m_db);
    ControllaNomeRuolo(nome, -1);
    ExecSQL(m_db, QStringLiteral("INSERT INTO RUOLI_UTENTE (IDRUOLO_UTENTE, RUOLO_UTENTE) VALUES (0, %1)")
                      .arg(QuotedStr(nome)));
    const int id = QueryScalar(m_db, QStringLiteral("SELECT IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = ")
                                         + QuotedStr(nome))
                       .toInt();
    transaction.Commit();
    return id;
}

void TQ3Ruoli::RinominaRuolo(int idRuolo, const QString &nome)
{
    TQ3Transaction transaction(m_db);
    if (NomeRuolo(idRuolo) == RuoloAmministratore())
        throw EQ3Rifiuto(QStringLiteral("Il ruolo \"%1\" non può essere rinominato.").arg(RuoloAmministratore()));
    ControllaNomeRuolo(nome, idRuolo);
    ExecSQL(m_db, QStringLiteral("UPDATE RUOLI_UTENTE SET RUOLO_UTENTE = %1 WHERE IDRUOLO_UTENTE = %2")
                      .arg(QuotedStr(nome), Integer(idRuolo)));
    transaction.Commit();
}

void TQ3Ruoli::EliminaRuolo(int idRuolo)
{
    TQ3Transaction transaction(m_db);
    if (NomeRuolo(idRuolo) == RuoloAmministratore())
        throw EQ3Rifiuto(QStringLiteral("Il ruolo \"%1\" non può essere eliminato.").arg(RuoloAmministratore()));
    for (const char *table : {"ABILITAZIONI_RUOLI", "UTENTI_RUOLI", "RUOLI_UTENTE"})
        ExecSQL(m_db,
                QStringLiteral("DELETE FROM %1 WHERE IDRUOLO_UTENTE = %2").arg(QLatin1String(table), Integer(idRuolo)));
    transaction.Commit();
}

QList<TQ3GruppoDiritti> TQ3Ruoli::Catalogo() const
{
    QSqlQuery query = OpenQuery(m_db, QStringLiteral("SELECT IDABILITAZIONE_UTENTE, ABILITAZIONE_UTENTE, GRUPPO "
                                                     "FROM ABILITAZIONI_UTENTE ORDER BY GRUPPO, ABILITAZIONE_UTENTE"));
    QList<TQ3GruppoDiritti> gruppi;
    while (query.next()) {
        const QString gruppo = query.value(2).toString();
        if (gruppi.isEmpty() || gruppi.last().Gruppo != gruppo)
            gruppi << TQ3GruppoDiritti{gruppo, {}};
        gruppi.last().Diritti << TQ3Diritto{query.value(0).toInt(), query.value(1).toString()};
    }
    return gruppi;
}

QList<int> TQ3Ruoli::DirittiRuolo(int idRuolo) const
{
    QSqlQuery query = OpenQuery(m_db, QStringLiteral("SELECT IDABILITAZIONE_UTENTE FROM ABILITAZIONI_RUOLI "
                                                     "WHERE IDRUOLO_UTENTE = %1 ORDER BY IDABILITAZIONE_UTENTE")
                                          .arg(Integer(idRuolo)));
    QList<int> diritti;
    while (query.next())
        diritti << query.value(0).toInt();
    return diritti;
}

void TQ3Ruoli::ImpostaDirittiRuolo(int idRuolo, const QList<int> &diritti)
{
    const QSet<int> scelti(diritti.cbegin(), diritti.cend());
    TQ3Transaction transaction(m_db);
    if (NomeRuolo(idRuolo) == RuoloAmministratore()) {
        QSqlQuery master =
            OpenQuery(m_db, QStringLiteral(
                                "SELECT IDABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE ABILITAZIONE_UTENTE = ")
                                + QuotedStr(QString::fromLatin1(Q3MasterPermission)));
        while (master.next()) {
            if (!scelti.contains(master.value(0).toInt()))
                throw EQ3Rifiuto(QStringLiteral("Il diritto \"%1\" non può essere tolto al ruolo \"%2\".")
                                     .arg(QString::fromLatin1(Q3MasterPermission), RuoloAmministratore()));
        }
    }
    ExecSQL(m_db, QStringLiteral("DELETE FROM ABILITAZIONI_RUOLI WHERE IDRUOLO_UTENTE = ") + Integer(idRuolo));
    for (int diritto : scelti)
        ExecSQL(m_db, QStringLiteral("INSERT INTO ABILITAZIONI_RUOLI (IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) "
                                     "SELECT %1, IDABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE "
                                     "WHERE IDABILITAZIONE_UTENTE = %2")
                          .arg(Integer(idRuolo), Integer(diritto)));
    transaction.Commit();
}

bool Q3UtenteAmministratore(const QSqlDatabase &db, const QString &userName)
{
    return AmministratoriAttivi(db, StessoNome(QStringLiteral("U.USER_NAME"), userName)) > 0;
}

bool Q3UtenteHaDiritto(const QSqlDatabase &db, const QString &userName, const QString &diritto)
{
    return QueryScalar(db, QStringLiteral(
                               "SELECT COUNT(*) FROM UTENTI_RUOLI UR "
                               "JOIN ABILITAZIONI_RUOLI AR ON AR.IDRUOLO_UTENTE = UR.IDRUOLO_UTENTE "
                               "JOIN ABILITAZIONI_UTENTE A ON A.IDABILITAZIONE_UTENTE = AR.IDABILITAZIONE_UTENTE "
                               "WHERE %1 AND A.ABILITAZIONE_UTENTE IN (%2, %3)")
                               .arg(StessoNome(QStringLiteral("UR.USER_NAME"), userName), QuotedStr(diritto),
                                    QuotedStr(QString::fromLatin1(Q3MasterPermission))))
               .toInt()
           > 0;
}
