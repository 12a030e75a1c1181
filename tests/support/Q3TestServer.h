#pragma once

#include "Q3Messages.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QTemporaryDir>

#include <optional>

// A private Firebird server of one suite's own (scripts/firebird-test-server.sh
// on a state folder of its own), which the suite may stop and start again
// without disturbing the server that the other suites share. While it lives,
// the suite's server databases (TQ3TestDatabase::Where::Server) are made on it.
class TQ3TestServer
{
public:
    // Raises EQ3Exception when the server does not start.
    TQ3TestServer();
    ~TQ3TestServer();
    TQ3TestServer(const TQ3TestServer &) = delete;
    TQ3TestServer &operator=(const TQ3TestServer &) = delete;

    // Stops the server, as when it goes away under its clients.
    void Stop();
    // Starts it again on the same port, with the same users and databases.
    void Resume();

private:
    // Runs the script's command; answers the server's address, user and password.
    QList<QByteArray> Run(const QString &command);

    QTemporaryDir m_state;
    // The variables the suite's server databases read, as they were before.
    QList<QPair<QByteArray, std::optional<QByteArray>>> m_previous;
};

// The box of a failure met while the server is away: "Errore", the error icon,
// "OK", the text beginning as told (after the name of the routine that met it,
// when a service reports it) and going on with the database's own words.
bool Q3ErrorBoxBeginning(const TQ3Message &box, const QString &beginning);

// What such a box begins with: the operation that found the connection gone,
// and a later one while it cannot be opened again.
QString Q3TestConnessioneInterrotta();
QString Q3TestConnessioneNonRipristinata();
