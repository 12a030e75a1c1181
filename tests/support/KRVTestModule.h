#pragma once

// For the module's tests: a host main window with the "Documenti" module
// registered, created and initialised on a database, a new one or one named
// by its connection string.
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

// Registers the module as the host does once it has loaded Documenti.so (under
// its file name, with its metadata's description and its plug-in's factory),
// once per process.
inline void KRVRegistraModulo()
{
    if (GetPackageIndex(KRVModuleFileName()) < 0)
        RegisterPackage(KRVModuleFileName(), QStringLiteral("Modulo Documenti"),
                        [](QObject *owner) -> IQ3Module * { return new TKRVMain(owner); });
}

// The module registered, created and initialised in a host main window whose
// connection opens the database of the connection string. The module has one
// main object per process, so one of these lives at a time.
class TKRVModuloInizializzato
{
public:
    // The module registers once per process, as the host's loading would.
    explicit TKRVModuloInizializzato(const QString &connectionString, bool initialize = true)
    {
        MainForm = std::make_unique<TQ3MainForm>();
        auto hostConnection = new TQ3Connection(MainForm.get());
        hostConnection->SetConnectionString(connectionString);
        hostConnection->Open();
        SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
        KRVRegistraModulo();
        if (KRVMain())
            throw EQ3Exception(QStringLiteral("Un solo modulo di prova alla volta."));
        CreatePackageMainObjects(qApp);
        Main = KRVMain();
        if (initialize)
            Main->Initialize();
    }

    ~TKRVModuloInizializzato()
    {
        delete Main;
        MainForm.reset();
    }

    TKRVModuloInizializzato(const TKRVModuloInizializzato &) = delete;
    TKRVModuloInizializzato &operator=(const TKRVModuloInizializzato &) = delete;

    // The module's own connection, as its services use it.
    QSqlDatabase Db() const { return Main->ModADOConn()->Database(); }

    std::unique_ptr<TQ3MainForm> MainForm;
    TKRVMain *Main = nullptr;
};

// The new database comes first: the module opens it and closes before it goes.
struct TKRVDatabaseNuovo
{
    TKRVDatabaseNuovo(TQ3TestDatabase::Where where, TQ3TestDatabase::Schema schema) : Database(where, schema) {}
    TQ3TestDatabase Database;
};

// A module to be initialised by its test starts on the host's tables alone,
// as a database the module has not upgraded yet; an initialised one on a copy
// of the upgraded template, where its own upgrade finds nothing left to do
// (on the server, where there is no file to copy, its upgrade makes its tables).
class TKRVTestModule : public TKRVDatabaseNuovo, public TKRVModuloInizializzato
{
public:
    explicit TKRVTestModule(TQ3TestDatabase::Where where = TQ3TestDatabase::Where::Embedded, bool initialize = true)
        : TKRVDatabaseNuovo(where, initialize && where == TQ3TestDatabase::Where::Embedded
                                       ? TQ3TestDatabase::Schema::Upgraded
                                       : TQ3TestDatabase::Schema::Host),
          TKRVModuloInizializzato(Database.ConnectionString(), initialize)
    {}
};
