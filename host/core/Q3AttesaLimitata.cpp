#include "Q3AttesaLimitata.h"

#include "Q3Sql.h"

#include <QHash>
#include <QSqlDriver>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include <ibase.h>

namespace {

using Clock = std::chrono::steady_clock;

struct TSorvegliato
{
    isc_db_handle Handle = 0;
    Clock::time_point Scadenza;
    bool Annullato = false;
};

// The one thread that watches the statements running under the limit. It
// sends a cancel only while holding the lock that ending a watch takes, so a
// statement that has ended is never cancelled.
class TSorveglianza
{
public:
    static TSorveglianza &Istanza()
    {
        static TSorveglianza sorveglianza;
        return sorveglianza;
    }

    ~TSorveglianza()
    {
        {
            std::lock_guard lock(m_mutex);
            m_fine = true;
        }
        m_cambio.notify_all();
        if (m_thread.joinable())
            m_thread.join();
    }

    quint64 Inizia(isc_db_handle handle)
    {
        std::lock_guard lock(m_mutex);
        if (!m_thread.joinable())
            m_thread = std::thread([this] { Sorveglia(); });
        const quint64 ticket = ++m_ultimo;
        m_attivi[ticket] = {handle, Clock::now() + std::chrono::milliseconds(Q3AttesaMassimaMs), false};
        m_cambio.notify_all();
        return ticket;
    }

    // Ends a watch; answers whether it cancelled its statement.
    bool Termina(quint64 ticket)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_attivi.find(ticket);
        if (it == m_attivi.end())
            return false;
        const bool annullato = it->second.Annullato;
        m_attivi.erase(it);
        return annullato;
    }

    bool Annullato(quint64 ticket)
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_attivi.find(ticket);
        return it != m_attivi.end() && it->second.Annullato;
    }

    // Guarded transactions open, by connection name and kind.
    void Transazione(const QString &connessione, TQ3Attesa attesa, int passo)
    {
        std::lock_guard lock(m_mutex);
        int &aperte = m_transazioni[{connessione, attesa == TQ3Attesa::Limitata}];
        aperte += passo;
        if (aperte <= 0)
            m_transazioni.remove({connessione, attesa == TQ3Attesa::Limitata});
    }

    // Whether the innermost rule for the connection is the limit: a
    // transaction without limit open on it lifts it.
    bool Limitata(const QString &connessione)
    {
        std::lock_guard lock(m_mutex);
        return m_transazioni.value({connessione, true}) > 0 && m_transazioni.value({connessione, false}) == 0;
    }

private:
    TSorveglianza() = default;

    void Sorveglia()
    {
        std::unique_lock lock(m_mutex);
        while (!m_fine) {
            Clock::time_point prossima = Clock::time_point::max();
            const Clock::time_point ora = Clock::now();
            for (auto &[ticket, sorvegliato] : m_attivi) {
                if (sorvegliato.Annullato)
                    continue;
                if (sorvegliato.Scadenza <= ora) {
                    ISC_STATUS_ARRAY status;
                    fb_cancel_operation(status, &sorvegliato.Handle, fb_cancel_raise);
                    sorvegliato.Annullato = true;
                } else if (sorvegliato.Scadenza < prossima) {
                    prossima = sorvegliato.Scadenza;
                }
            }
            if (prossima == Clock::time_point::max())
                m_cambio.wait(lock);
            else
                m_cambio.wait_until(lock, prossima);
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_cambio;
    std::thread m_thread;
    bool m_fine = false;
    quint64 m_ultimo = 0;
    std::map<quint64, TSorvegliato> m_attivi;
    QHash<std::pair<QString, bool>, int> m_transazioni;
};

} // namespace

TQ3AttesaLimitata::TQ3AttesaLimitata(const QSqlDatabase &db)
{
    TSorveglianza &sorveglianza = TSorveglianza::Istanza();
    if (!db.driver() || !sorveglianza.Limitata(db.connectionName()))
        return;
    const QVariant handle = db.driver()->handle();
    if (handle.metaType() != QMetaType::fromType<isc_db_handle>())
        return;
    m_ticket = sorveglianza.Inizia(handle.value<isc_db_handle>());
}

TQ3AttesaLimitata::~TQ3AttesaLimitata()
{
    if (m_ticket)
        TSorveglianza::Istanza().Termina(m_ticket);
}

QString TQ3AttesaLimitata::TestoErrore(const QSqlError &error) const
{
    const QString testo = SqlErrorText(error);
    if (!m_ticket || !TSorveglianza::Istanza().Annullato(m_ticket))
        return testo;
    return QString::fromUtf8(Q3MsgAttesaScaduta).arg(Q3AttesaMassimaMs / 1000) + QLatin1Char('\n') + testo;
}

void Q3InizioTransazioneGuardata(const QSqlDatabase &db, TQ3Attesa attesa)
{
    TSorveglianza::Istanza().Transazione(db.connectionName(), attesa, 1);
}

void Q3FineTransazioneGuardata(const QSqlDatabase &db, TQ3Attesa attesa)
{
    TSorveglianza::Istanza().Transazione(db.connectionName(), attesa, -1);
}
