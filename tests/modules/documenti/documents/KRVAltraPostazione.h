#pragma once

// Another workstation for the suites of concurrent saves: its own attachment,
// on a thread of its own, writes its change in one transaction, says so
// (Scritta), holds the transaction open as long as the suite's case wants,
// then commits. A failure is kept in Errore and also releases Scritta.
#include "Q3Connection.h"
#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QSemaphore>
#include <QThread>

class TKRVAltraPostazione : public QThread
{
public:
    TKRVAltraPostazione(QString connessione, int id) : m_connessione(std::move(connessione)), m_id(id) {}

    QSemaphore Scritta;
    QString Errore;

protected:
    // The change, inside the open transaction of the attachment db.
    virtual void Scrivi(const QSqlDatabase &db, int id) = 0;
    // Returns when the transaction may commit.
    virtual void Attendi(const QSqlDatabase &db) = 0;
    QString Connessione() const { return m_connessione; }

private:
    void run() override
    {
        try {
            TQ3Connection altra;
            altra.SetConnectionString(m_connessione);
            altra.Open();
            TQ3Transaction transazione(altra.Database());
            Scrivi(altra.Database(), m_id);
            Scritta.release();
            Attendi(altra.Database());
            transazione.Commit();
        } catch (const std::exception &e) {
            Errore = ExceptionMessage(e);
            Scritta.release();
        }
    }

    QString m_connessione;
    int m_id;
};
