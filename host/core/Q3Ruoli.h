#pragma once

#include "Q3Global.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// A user of the UTENTI table with the names of its roles.
struct TQ3Utente
{
    QString Nome;
    QString NomeCompleto;
    bool Attivo = true;
    QStringList Ruoli;
};

// A role of RUOLI_UTENTE.
struct TQ3Ruolo
{
    int Id = 0;
    QString Nome;
};

// A right of the catalogue ABILITAZIONI_UTENTE.
struct TQ3Diritto
{
    int Id = 0;
    QString Nome;
};

// The rights of one group of the catalogue (the host's, or a module's).
struct TQ3GruppoDiritti
{
    QString Gruppo;
    QList<TQ3Diritto> Diritti;
};

// Users, roles and rights of the host's tables. Names of users and roles are
// unique without regard to case. Nobody can lock the firm out: the role
// "Amministratore" is neither renamed nor deleted, keeps "Controllo completo",
// and the last active user holding it stays active and keeps it. Every
// refusal raises EQ3Exception with its message.
class Q3_EXPORT TQ3Ruoli
{
public:
    explicit TQ3Ruoli(QSqlDatabase db);

    // Users by name, with their roles by name.
    QList<TQ3Utente> Utenti() const;
    // A new active user with no password and no role.
    void NuovoUtente(const QString &nome, const QString &nomeCompleto);
    void ImpostaAttivo(const QString &nome, bool attivo);
    // The administrator's reset: the user's new password, by the rules of TQ3Users::SetPassword.
    void ImpostaPassword(const QString &nome, const QString &password);
    // The user's own change: the current password must be right (a wrong one
    // counts as a failed login of the name).
    void CambiaPassword(const QString &nome, const QString &attuale, const QString &nuova);
    void AssegnaRuolo(const QString &nome, int idRuolo);
    void RimuoviRuolo(const QString &nome, int idRuolo);

    // Roles by name.
    QList<TQ3Ruolo> Ruoli() const;
    // Answers the new role's key.
    int NuovoRuolo(const QString &nome);
    void RinominaRuolo(int idRuolo, const QString &nome);
    // The role with its rights and its users' links.
    void EliminaRuolo(int idRuolo);

    // The catalogue by group, rights by name within each group.
    QList<TQ3GruppoDiritti> Catalogo() const;
    QList<int> DirittiRuolo(int idRuolo) const;
    // Replaces the role's rights with these.
    void ImpostaDirittiRuolo(int idRuolo, const QList<int> &diritti);

    // The longest user and role name the tables hold, and the longest full name.
    static constexpr int LunghezzaNome = 50;
    static constexpr int LunghezzaNomeCompleto = 100;

private:
    QString NomeUtente(const QString &nome) const;
    QString NomeRuolo(int idRuolo) const;
    bool UltimoAmministratore(const QString &nome) const;
    void ControllaNomeRuolo(const QString &nome, int idRuolo) const;
    QSqlDatabase m_db;
};

// Whether the user is active and holds the role "Amministratore".
Q3_EXPORT bool Q3UtenteAmministratore(const QSqlDatabase &db, const QString &userName);

// What a user is told when a right is missing.
inline constexpr char Q3MsgDirittiInsufficienti[] =
    "Non si dispone di diritti sufficienti per eseguire questa operazione.";

// Whether a role of the user grants the right (by its text, exactly) or the
// master right "Controllo completo". User names match without regard to case.
Q3_EXPORT bool Q3UtenteHaDiritto(const QSqlDatabase &db, const QString &userName, const QString &diritto);
