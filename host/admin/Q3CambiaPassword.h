#pragma once

#include "Q3ModuloCampi.h"

#include <QSqlDatabase>

// A user's new password, typed twice. The user's own change ("Cambia
// password") asks first for the current password; the administrator's reset
// ("Imposta password") does not.
class Q3_EXPORT TQ3CambiaPassword : public TQ3ModuloCampi
{
    Q_OBJECT

public:
    enum class Modo { Cambio, Reimpostazione };
    TQ3CambiaPassword(const QSqlDatabase &db, const QString &userName, Modo modo, QWidget *parent = nullptr);

private:
    void Conferma();

    QSqlDatabase m_db;
    QString m_userName;
    Modo m_modo;
};

// The logged-in user changes their own password.
Q3_EXPORT void Q3ApriCambiaPassword(const QSqlDatabase &db, const QString &userName, QWidget *parent);
