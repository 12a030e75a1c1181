#pragma once

#include "Q3Connection.h"
#include "Q3MainForm.h"
#include "Q3ModuleLoader.h"

#include <QStringList>

#include <memory>

// How the host was asked to start.
struct Q3_EXPORT TQ3StartOptions
{
    QString Database; // empty: the embedded default in the user's data folder
    QString DbUser;
    QString DbPasswordFile;
    QString User;
    QString PasswordFile;
    bool Headless = false;
    bool Help = false; // print the options and stop

    // Reads the command line; answers false with a message when it is wrong.
    bool Parse(const QStringList &arguments, QString *error);
};

// The database used when none is named: the one the user chose for the next
// start (a restored one), otherwise the embedded default in the user's data folder.
Q3_EXPORT QString DefaultQ3Database();

// The first line of a text file, without its line ending; raises EQ3Exception.
Q3_EXPORT QString ReadQ3SecretFile(const QString &fileName);

// The host application's life: database, login, modules, main window.
class Q3_EXPORT TQ3Host
{
public:
    explicit TQ3Host(const TQ3StartOptions &options);
    ~TQ3Host();

    // Opens (creating an embedded file when missing) and upgrades the database;
    // raises EQ3Exception when it cannot be opened.
    void OpenDatabase();
    // Headless: logs in with the password file (which sets the password of a
    // user who has none). Interactive: the set-password and login dialogs.
    // Answers false when no user logged in.
    bool Login();
    // Starts the modules of the modules folder (TQ3ModuleLoader::Load), owned
    // by the application.
    void LoadModules();
    // The "Amministrazione" menu of the main form: the firm's data, users and
    // roles, the options of the host and of the modules started, backup and
    // restore for administrators, "Cambia password" for every user.
    void CreaMenuAmministrazione();
    // The host's own options, shown with the modules' ones.
    static TQ3ModuleMetadata OpzioniHost();
    // ModuloFinalize, then Finalize, of every module; then the main objects go.
    void UnloadModules();
    // At the exit, after the modules: the automatic backup, when the options
    // ask for it; a failure is shown and the exit goes on.
    void AutoBackup();

    TQ3MainForm *MainForm() const { return m_mainForm.get(); }
    TQ3Connection *Connection() const { return m_connection; }

    static QString ModulesFolder();

private:
    TQ3StartOptions m_options;
    TQ3DatabaseTarget m_target;
    std::unique_ptr<TQ3MainForm> m_mainForm;
    TQ3Connection *m_connection = nullptr;
    TQ3ModuleLoader m_modules;
};

// The whole program: answers the process exit code.
Q3_EXPORT int RunQuillo3(int argc, char **argv);
