#include "Q3Host.h"

#include "Q3Application.h"
#include "Q3BackupAutomatico.h"
#include "Q3BackupDialog.h"
#include "Q3CambiaPassword.h"
#include "Q3DatabaseFile.h"
#include "Q3DatiAzienda.h"
#include "Q3Exception.h"
#include "Q3HostSchema.h"
#include "Q3LoginDialog.h"
#include "Q3MenuAmministrazione.h"
#include "Q3Messages.h"
#include "Q3OpzioniDialog.h"
#include "Q3Registry.h"
#include "Q3RipristinoDialog.h"
#include "Q3Ruoli.h"
#include "Q3Users.h"
#include "Q3UtentiRuoli.h"
#include "Q3WidgetServices.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

namespace {

QCommandLineParser &Parser()
{
    static QCommandLineParser parser;
    static bool ready = false;
    if (!ready) {
        parser.setApplicationDescription(QStringLiteral("Quillo 3: gestionale per piccole imprese"));
        parser.addHelpOption();
        parser.addOptions({
            {QStringLiteral("database"),
             QStringLiteral("Database: un file, oppure host:/percorso o host/porta:/percorso."), QStringLiteral("db")},
            {QStringLiteral("db-user"), QStringLiteral("Utente del server Firebird (altrimenti ISC_USER)."),
             QStringLiteral("name")},
            {QStringLiteral("db-password-file"),
             QStringLiteral("File con la password del server Firebird (altrimenti ISC_PASSWORD)."),
             QStringLiteral("file")},
            {QStringLiteral("headless"), QStringLiteral("Senza finestre: accede, aggiorna il database ed esce.")},
            {QStringLiteral("user"), QStringLiteral("Utente di Quillo 3 (modalità headless)."), QStringLiteral("name")},
            {QStringLiteral("password-file"), QStringLiteral("File con la password dell'utente (modalità headless)."),
             QStringLiteral("file")},
        });
        ready = true;
    }
    return parser;
}

void PrintHelp()
{
    std::fputs(Parser().helpText().toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

void PrintError(const QString &text)
{
    std::fprintf(stderr, "quillo3: %s\n", text.toLocal8Bit().constData());
    std::fflush(stderr);
}

} // namespace

bool TQ3StartOptions::Parse(const QStringList &arguments, QString *error)
{
    QCommandLineParser &parser = Parser();
    if (!parser.parse(arguments)) {
        const QStringList unknown = parser.unknownOptionNames();
        if (unknown.isEmpty()) {
            *error = parser.errorText();
        } else {
            const QString dashes = unknown.first().size() == 1 ? QStringLiteral("-") : QStringLiteral("--");
            *error = QStringLiteral("Opzione sconosciuta: %1%2.").arg(dashes, unknown.first());
        }
        *error += QStringLiteral(" Le opzioni ammesse sono elencate da: quillo3 --help");
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("Argomento non previsto: \"%1\". Le opzioni ammesse sono elencate da: quillo3 --help")
                     .arg(parser.positionalArguments().first());
        return false;
    }
    Help = parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"));
    Database = parser.value(QStringLiteral("database"));
    DbUser = parser.value(QStringLiteral("db-user"));
    DbPasswordFile = parser.value(QStringLiteral("db-password-file"));
    User = parser.value(QStringLiteral("user"));
    PasswordFile = parser.value(QStringLiteral("password-file"));
    Headless = parser.isSet(QStringLiteral("headless"));
    if (Headless && !Help && (User.isEmpty() || PasswordFile.isEmpty())) {
        *error = QStringLiteral("La modalità --headless richiede --user e --password-file.");
        return false;
    }
    return true;
}

QString DefaultQ3Database()
{
    // A chosen file that is gone is not made anew: the default opens instead.
    const QString scelto = Q3DatabaseAllAvvio();
    if (!scelto.isEmpty() && (TQ3DatabaseTarget{scelto, {}, {}}.IsRemote() || QFileInfo::exists(scelto)))
        return scelto;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir(folder).filePath(QStringLiteral("quillo3.fdb"));
}

QString ReadQ3SecretFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw EQ3Exception(QStringLiteral("Impossibile leggere il file \"%1\": %2").arg(fileName, file.errorString()));
    return QString::fromUtf8(file.readLine()).remove(QLatin1Char('\n')).remove(QLatin1Char('\r'));
}

TQ3Host::TQ3Host(const TQ3StartOptions &options) : m_options(options) {}

TQ3Host::~TQ3Host()
{
    UnloadModules();
}

QString TQ3Host::ModulesFolder()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("modules"));
}

void TQ3Host::OpenDatabase()
{
    m_target.Database = m_options.Database.isEmpty() ? DefaultQ3Database() : m_options.Database;
    if (m_target.IsRemote()) {
        m_target.User = m_options.DbUser.isEmpty() ? qEnvironmentVariable("ISC_USER") : m_options.DbUser;
        m_target.Password = m_options.DbPasswordFile.isEmpty() ? qEnvironmentVariable("ISC_PASSWORD")
                                                               : ReadQ3SecretFile(m_options.DbPasswordFile);
    } else if (Q3DatabaseFileMissing(m_target)) {
        QDir().mkpath(QFileInfo(m_target.Database).absolutePath());
        CreateQ3Database(m_target);
    }

    m_mainForm = std::make_unique<TQ3MainForm>();
    m_connection = new TQ3Connection(m_mainForm.get());
    m_connection->setObjectName(QStringLiteral("Q3ADOConn"));
    m_connection->SetConnectionString(m_target.ConnectionString());
    m_connection->Open();
    UpgradeQ3HostSchema(m_connection->Database());
}

bool TQ3Host::Login()
{
    TQ3Users users(m_connection->Database());
    QString logged;
    if (m_options.Headless) {
        const QString password = ReadQ3SecretFile(m_options.PasswordFile);
        // Failed attempts of the name, from here or from the login window,
        // make the next one wait: guessing from a script is slow.
        const int wait = users.Throttle().WaitSeconds(m_options.User);
        if (wait > 0) {
            PrintError(QStringLiteral("troppi tentativi di accesso non riusciti: riprovare tra %1 secondi.").arg(wait));
            return false;
        }
        if (users.NeedsPassword(m_options.User))
            users.SetPassword(m_options.User, password);
        logged = users.Login(m_options.User, password);
        if (logged.isEmpty()) {
            PrintError(QStringLiteral("nome utente o password non validi."));
            return false;
        }
    } else {
        const QString admin = QString::fromLatin1(Q3AdminUser);
        if (users.NeedsPassword(admin)) {
            TQ3SetPasswordDialog setPassword(admin);
            if (setPassword.exec() != QDialog::Accepted)
                return false;
            users.SetPassword(admin, setPassword.Password());
        }
        TQ3LoginDialog login(users, m_target.Database);
        if (login.exec() != QDialog::Accepted)
            return false;
        logged = login.LoggedUser();
    }
    SetQ3CurrentUserName(logged);
    m_mainForm->SetStatusInfo(logged, m_target.Database);
    return true;
}

void TQ3Host::LoadModules()
{
    m_modules.Load(ModulesFolder(), qApp);
}

void TQ3Host::UnloadModules()
{
    m_modules.Unload();
}

TQ3ModuleMetadata TQ3Host::OpzioniHost()
{
    TQ3ModuleMetadata host;
    host.Name = QStringLiteral("Quillo3");
    host.Description = QStringLiteral("Quillo 3");
    host.Options = {
        {QStringLiteral("BACKUP_AUTOMATICO"), QStringLiteral("Backup automatico all'uscita"), TQ3ModuleOptionKind::SiNo,
         QStringLiteral("False")},
        {QStringLiteral("BACKUP_CARTELLA"), QStringLiteral("Cartella dei backup automatici"),
         TQ3ModuleOptionKind::Testo, QString()},
        {QStringLiteral("BACKUP_COPIE"), QStringLiteral("Copie dei backup automatici da conservare"),
         TQ3ModuleOptionKind::Testo, QStringLiteral("5")},
    };
    return host;
}

void TQ3Host::CreaMenuAmministrazione()
{
    TQ3MainForm *form = m_mainForm.get();
    const QSqlDatabase db = m_connection->Database();
    const TQ3DatabaseTarget target = m_target;
    const QList<TQ3ModuleMetadata> opzioni = QList<TQ3ModuleMetadata>{OpzioniHost()} + m_modules.StartedMetadata();
    Q3CreaMenuAmministrazione(form,
                              {{QStringLiteral("actDatiAzienda"), QStringLiteral("Dati azienda..."), true,
                                [db, form] { Q3ApriDatiAzienda(db, form); }},
                               {QStringLiteral("actUtentiRuoli"), QStringLiteral("Utenti e ruoli..."), true,
                                [db, form] { Q3ApriUtentiRuoli(db, form); }},
                               {QStringLiteral("actOpzioni"), QStringLiteral("Opzioni..."), true,
                                [db, opzioni, form] { Q3ApriOpzioni(db, opzioni, form); }},
                               {},
                               {QStringLiteral("actBackup"), QStringLiteral("Backup..."), true,
                                [target, form] { Q3ApriBackup(target, form); }},
                               {QStringLiteral("actRipristino"), QStringLiteral("Ripristino..."), true,
                                [target, form] { Q3ApriRipristino(target, form); }},
                               {},
                               {QStringLiteral("actCambiaPassword"), QStringLiteral("Cambia password..."), false,
                                [db, form] { Q3ApriCambiaPassword(db, GetQ3CurrentUserName(), form); }}},
                              [db] { return Q3UtenteAmministratore(db, GetQ3CurrentUserName()); });
}

void TQ3Host::AutoBackup()
{
    if (m_connection && m_connection->Connected())
        Q3BackupAutomaticoAllUscita(m_target, m_connection->Database());
}

int RunQuillo3(int argc, char **argv)
{
    // Neither the headless mode nor the help needs a screen.
    bool headless = false;
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"--headless", "--help", "-h", "-?", "--help-all"})
            headless = headless || qstrcmp(argv[i], option) == 0;
    }
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    TQ3Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillo3"));
    QApplication::setApplicationVersion(QStringLiteral("3.0.0"));
    if (QLocale::system().language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));

    TQ3StartOptions options;
    QString error;
    if (!options.Parse(QApplication::arguments(), &error)) {
        PrintError(error);
        return 2;
    }
    if (options.Help) {
        PrintHelp();
        return 0;
    }

    InstallQ3WidgetServices();
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("x-office-document")));
    std::unique_ptr<TQ3StderrResponder> stderrResponder;
    if (options.Headless) {
        stderrResponder = std::make_unique<TQ3StderrResponder>();
        SetQ3MessageResponder(stderrResponder.get());
    }

    TQ3Host host(options);
    try {
        host.OpenDatabase();
        if (!host.Login())
            return options.Headless ? 3 : 0;
        host.LoadModules();
        host.CreaMenuAmministrazione();
    } catch (const std::exception &e) {
        if (options.Headless)
            PrintError(ExceptionMessage(e));
        else
            Q3ShowError(ExceptionMessage(e));
        return 1;
    }

    int code = 0;
    if (!options.Headless) {
        host.MainForm()->showMaximized();
        // The modules' notices once the main window is on the screen.
        QTimer::singleShot(0, qApp, [] { Q3MostraAvvisiAccesso(); });
        code = QApplication::exec();
    }
    host.UnloadModules();
    host.AutoBackup();
    SetQ3MessageResponder(nullptr);
    return code;
}
