#pragma once

// For the tests of the module's core, which need no window: a new database
// (by default a copy of the upgraded template) and the module's database
// session on it, registered with the host's module registry under the
// module's file name as the loaded module's main object is. No main window,
// no menus, no report project: a suite of these runs under QTEST_GUILESS_MAIN.
#include "KRVSession.h"
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3Module.h"
#include "Q3Packages.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"

#include <QObject>

// The module has one main object per process, so one of these lives at a time.
class TKRVTestCore : public QObject, public IQ3Module, public IKRVModuleSession
{
public:
    explicit TKRVTestCore(TQ3TestDatabase::Where where = TQ3TestDatabase::Where::Embedded,
                          TQ3TestDatabase::Schema schema = TQ3TestDatabase::Schema::Upgraded)
        : Database(where, schema)
    {
        if (GetPackageIndex(KRVModuleFileName()) >= 0)
            throw EQ3Exception(QStringLiteral("Un solo modulo di prova alla volta."));
        m_session.SetConnectionString(Database.ConnectionString());
        m_session.Open();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
        RegisterPackage(KRVModuleFileName(), QStringLiteral("Modulo Documenti"),
                        [this](QObject *) -> IQ3Module * { return this; });
        PackageList()[GetPackageIndex(KRVModuleFileName())].MainObject = this;
    }

    ~TKRVTestCore() override
    {
        const int index = GetPackageIndex(KRVModuleFileName());
        if (index >= 0)
            PackageList().removeAt(index);
    }

    TKRVTestCore(const TKRVTestCore &) = delete;
    TKRVTestCore &operator=(const TKRVTestCore &) = delete;

    // IQ3Module: the core has nothing to initialise, finalise or run by name.
    QObject *AsObject() override { return this; }
    void Initialize() override {}
    int ExecutePkgAction(const QString &, const QVariantList &, int) override { return 0; }
    void ModuloFinalize() override {}
    void Finalize() override {}

    // IKRVModuleSession
    TQ3Connection *ModADOConn() const override { return &m_session; }

    // The module's own connection, as its services use it.
    QSqlDatabase Db() const { return m_session.Database(); }

    // First built, last gone: the session closes before its database goes.
    TQ3TestDatabase Database;

private:
    mutable TQ3Connection m_session;
};
