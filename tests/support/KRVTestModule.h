#pragma once

// For the module's tests: a host main window on a new database, with the
// "Documenti" module registered, created and initialised on it. The module has
// one main object per process, so one of these lives at a time.
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Packages.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"
#include "uKRVMain.h"

#include <QApplication>

#include <memory>

class TKRVTestModule
{
public:
    // The module registers once per process, as the host's loading would.
    explicit TKRVTestModule(TQ3TestDatabase::Where where = TQ3TestDatabase::Where::Embedded, bool initialize = true)
        : Database(where)
    {
        MainForm = std::make_unique<TQ3MainForm>();
        auto hostConnection = new TQ3Connection(MainForm.get());
        hostConnection->SetConnectionString(Database.ConnectionString());
        hostConnection->Open();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
        if (GetPackageIndex(KRVModuleFileName()) < 0)
            KRVMainUnitInitialization();
        if (KRVMain())
            throw EQ3Exception(QStringLiteral("Un solo modulo di prova alla volta."));
        CreatePackageMainObjects(qApp);
        Main = KRVMain();
        if (initialize)
            Main->Initialize();
    }

    ~TKRVTestModule()
    {
        delete Main;
        MainForm.reset();
    }

    TKRVTestModule(const TKRVTestModule &) = delete;
    TKRVTestModule &operator=(const TKRVTestModule &) = delete;

    // The module's own connection, as its services use it.
    QSqlDatabase Db() const { return Main->ModADOConn()->Database(); }

    TQ3TestDatabase Database;
    std::unique_ptr<TQ3MainForm> MainForm;
    TKRVMain *Main = nullptr;
};
