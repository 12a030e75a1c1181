#include "Q3FbClient.h"

#include "Q3DatabaseFile.h"
#include "Q3Exception.h"

#include <QStringList>

#include <ibase.h>

#include <cstring>
#include <vector>

namespace {

void Check(const ISC_STATUS *status, const char *what)
{
    if (status[0] == 1 && status[1] != 0)
        throw EQ3Exception(QString::fromLatin1(what) + QStringLiteral(": ") + Q3FirebirdStatusText(status));
}

// An XSQLDA with room for n variables, and the buffers its variables point to.
class TSqlda
{
public:
    explicit TSqlda(int n) : m_memory(XSQLDA_LENGTH(n > 0 ? n : 1))
    {
        Get()->version = SQLDA_VERSION1;
        Get()->sqln = short(n > 0 ? n : 1);
    }
    XSQLDA *Get() { return reinterpret_cast<XSQLDA *>(m_memory.data()); }
    int Count() { return Get()->sqld; }
    XSQLVAR &Var(int i) { return Get()->sqlvar[i]; }

    // Gives every variable a buffer of its described size and an indicator.
    void Allocate()
    {
        m_buffers.assign(size_t(Count()), {});
        m_indicators.assign(size_t(Count()), 0);
        for (int i = 0; i < Count(); ++i) {
            XSQLVAR &var = Var(i);
            const int extra = (var.sqltype & ~1) == SQL_VARYING ? 2 : 0;
            m_buffers[size_t(i)].resize(size_t(var.sqllen + extra) + 8);
            var.sqldata = m_buffers[size_t(i)].data();
            var.sqlind = &m_indicators[size_t(i)];
        }
    }

private:
    std::vector<char> m_memory;
    std::vector<std::vector<char>> m_buffers;
    std::vector<ISC_SHORT> m_indicators;
};

} // namespace

struct TQ3FbClient::TPrivate
{
    isc_db_handle Db = 0;
    isc_tr_handle Tr = 0;
};

TQ3FbClient::TQ3FbClient(const TQ3DatabaseTarget &target) : d(std::make_unique<TPrivate>())
{
    const QByteArray dpb = Q3AttachParameters(target);
    const QByteArray name = target.Database.toUtf8();
    ISC_STATUS_ARRAY status{};
    isc_attach_database(status, 0, name.constData(), &d->Db, short(dpb.size()), dpb.constData());
    Check(status, "isc_attach_database");
}

TQ3FbClient::~TQ3FbClient()
{
    ISC_STATUS_ARRAY status{};
    if (d->Tr)
        isc_rollback_transaction(status, &d->Tr);
    isc_detach_database(status, &d->Db);
}

void TQ3FbClient::Begin(bool bulk)
{
    static const char tpb[] = {isc_tpb_version3,    isc_tpb_write, isc_tpb_read_committed,
                               isc_tpb_rec_version, isc_tpb_wait,  isc_tpb_no_auto_undo};
    ISC_STATUS_ARRAY status{};
    isc_start_transaction(status, &d->Tr, 1, &d->Db, short(bulk ? sizeof tpb : sizeof tpb - 1), tpb);
    Check(status, "isc_start_transaction");
}

void TQ3FbClient::Commit()
{
    ISC_STATUS_ARRAY status{};
    isc_commit_transaction(status, &d->Tr);
    Check(status, "isc_commit_transaction");
}

void TQ3FbClient::Rollback()
{
    ISC_STATUS_ARRAY status{};
    isc_rollback_transaction(status, &d->Tr);
    Check(status, "isc_rollback_transaction");
}

bool TQ3FbClient::InTransaction() const
{
    return d->Tr != 0;
}

void TQ3FbClient::Execute(const QByteArray &sql)
{
    ISC_STATUS_ARRAY status{};
    isc_dsql_execute_immediate(status, &d->Db, &d->Tr, 0, sql.constData(), SQL_DIALECT_V6, nullptr);
    Check(status, "isc_dsql_execute_immediate");
}

struct TQ3FbStatement::TPrivate
{
    explicit TPrivate(TQ3FbClient::TPrivate &client) : Client(client) {}
    TQ3FbClient::TPrivate &Client;
    isc_stmt_handle Stmt = 0;
    TSqlda In{1};
    TSqlda Out{1};
    std::vector<int> Capacity;
};

TQ3FbStatement::TQ3FbStatement(TQ3FbClient &client, const QByteArray &sql) : d(std::make_unique<TPrivate>(*client.d))
{
    if (!client.InTransaction())
        throw EQ3Exception(QStringLiteral("TQ3FbStatement: nessuna transazione aperta."));
    ISC_STATUS_ARRAY status{};
    isc_dsql_allocate_statement(status, &d->Client.Db, &d->Stmt);
    Check(status, "isc_dsql_allocate_statement");
    isc_dsql_prepare(status, &d->Client.Tr, &d->Stmt, 0, sql.constData(), SQL_DIALECT_V6, d->Out.Get());
    Check(status, "isc_dsql_prepare");
    if (d->Out.Count() > d->Out.Get()->sqln) {
        d->Out = TSqlda(d->Out.Count());
        isc_dsql_describe(status, &d->Stmt, SQL_DIALECT_V6, d->Out.Get());
        Check(status, "isc_dsql_describe");
    }
    d->Out.Allocate();

    isc_dsql_describe_bind(status, &d->Stmt, SQL_DIALECT_V6, d->In.Get());
    Check(status, "isc_dsql_describe_bind");
    if (d->In.Count() > d->In.Get()->sqln) {
        d->In = TSqlda(d->In.Count());
        isc_dsql_describe_bind(status, &d->Stmt, SQL_DIALECT_V6, d->In.Get());
        Check(status, "isc_dsql_describe_bind");
    }
    // Every parameter travels as text: room for the column's own text, or for any number or date.
    for (int i = 0; i < d->In.Count(); ++i) {
        XSQLVAR &var = d->In.Var(i);
        const int type = var.sqltype & ~1;
        const bool text = type == SQL_VARYING || type == SQL_TEXT;
        var.sqllen = text ? var.sqllen : 64;
        if (!text)
            var.sqlsubtype = 0;
        var.sqlscale = 0;
        var.sqltype = SQL_VARYING | 1;
        d->Capacity.push_back(var.sqllen);
    }
    d->In.Allocate();
    for (int i = 0; i < d->In.Count(); ++i)
        SetNull(i);
}

TQ3FbStatement::~TQ3FbStatement()
{
    ISC_STATUS_ARRAY status{};
    isc_dsql_free_statement(status, &d->Stmt, DSQL_drop);
}

int TQ3FbStatement::ParameterCount() const
{
    return d->In.Count();
}

void TQ3FbStatement::SetText(int index, const QByteArray &value)
{
    XSQLVAR &var = d->In.Var(index);
    if (value.size() > d->Capacity.at(size_t(index)))
        throw EQ3Exception(QStringLiteral("Parametro %1 troppo lungo (%2 byte): %3")
                               .arg(index + 1)
                               .arg(value.size())
                               .arg(QString::fromUtf8(value.left(60))));
    const auto length = ISC_USHORT(value.size());
    std::memcpy(var.sqldata, &length, sizeof length);
    std::memcpy(var.sqldata + sizeof length, value.constData(), size_t(value.size()));
    *var.sqlind = 0;
}

void TQ3FbStatement::SetNull(int index)
{
    *d->In.Var(index).sqlind = -1;
}

void TQ3FbStatement::Execute()
{
    ISC_STATUS_ARRAY status{};
    isc_dsql_execute(status, &d->Client.Tr, &d->Stmt, SQL_DIALECT_V6, d->In.Count() > 0 ? d->In.Get() : nullptr);
    Check(status, "isc_dsql_execute");
}

qint64 TQ3FbStatement::FetchAll()
{
    Execute();
    ISC_STATUS_ARRAY status{};
    qint64 rows = 0;
    std::vector<char> segment(65535);
    ISC_STATUS fetched = 0;
    while ((fetched = isc_dsql_fetch(status, &d->Stmt, SQL_DIALECT_V6, d->Out.Get())) == 0) {
        ++rows;
        for (int i = 0; i < d->Out.Count(); ++i) {
            XSQLVAR &var = d->Out.Var(i);
            if ((var.sqltype & ~1) != SQL_BLOB || *var.sqlind < 0)
                continue;
            isc_blob_handle blob = 0;
            auto id = reinterpret_cast<ISC_QUAD *>(var.sqldata);
            isc_open_blob2(status, &d->Client.Db, &d->Client.Tr, &blob, id, 0, nullptr);
            Check(status, "isc_open_blob2");
            unsigned short read = 0;
            for (;;) {
                const ISC_STATUS got =
                    isc_get_segment(status, &blob, &read, ISC_USHORT(segment.size()), segment.data());
                if (got != 0 && status[1] != isc_segment)
                    break;
            }
            isc_close_blob(status, &blob);
        }
    }
    if (fetched != 100)
        Check(status, "isc_dsql_fetch");
    isc_dsql_free_statement(status, &d->Stmt, DSQL_close);
    return rows;
}
