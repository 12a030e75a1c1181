#include "Q3TestServer.h"

#include "Q3Exception.h"
#include "Q3Sql.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>

namespace {

const QList<QByteArray> ServerVariables{"Q3_TEST_SERVER", "Q3_TEST_SERVER_USER", "Q3_TEST_SERVER_PASSWORD"};

} // namespace

TQ3TestServer::TQ3TestServer()
{
    const QList<QByteArray> values = Run(QStringLiteral("start"));
    for (int i = 0; i < ServerVariables.size(); ++i) {
        const char *name = ServerVariables.at(i).constData();
        m_previous.append(
            {ServerVariables.at(i), qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt});
        qputenv(name, values.at(i));
    }
}

TQ3TestServer::~TQ3TestServer()
{
    try {
        Stop();
    } catch (const EQ3Exception &) {
        // The state folder goes with the server's files all the same.
    }
    for (const auto &[name, value] : std::as_const(m_previous)) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

void TQ3TestServer::Stop()
{
    Run(QStringLiteral("stop"));
}

void TQ3TestServer::Resume()
{
    Run(QStringLiteral("resume"));
}

QList<QByteArray> TQ3TestServer::Run(const QString &command)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("Q3_TEST_SERVER_STATE"), m_state.path());
    process.setProcessEnvironment(environment);
    // The script prints shell assignments: the shell reads them, and hands
    // the values back separated by NULs, whatever characters they hold.
    process.start(QStringLiteral("bash"),
                  {QStringLiteral("-c"),
                   QStringLiteral(
                       "set -e; if [ \"$1\" = stop ]; then \"$0\" stop; exit; fi; eval \"$(\"$0\" \"$1\")\"; "
                       "printf '%s\\0' \"$Q3_TEST_SERVER\" \"$Q3_TEST_SERVER_USER\" \"$Q3_TEST_SERVER_PASSWORD\""),
                   QStringLiteral(Q3_TEST_SERVER_SCRIPT), command});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw EQ3Exception(QStringLiteral("Server di prova (%1) non riuscito: %2")
                               .arg(command, QString::fromLocal8Bit(process.readAllStandardError())));
    QList<QByteArray> values = process.readAllStandardOutput().split('\0');
    values.removeLast();
    if (command != QLatin1String("stop") && values.size() != ServerVariables.size())
        throw EQ3Exception(QStringLiteral("Server di prova (%1): risposta inattesa.").arg(command));
    return values;
}

bool Q3ErrorBoxBeginning(const TQ3Message &box, const QString &beginning)
{
    static const QRegularExpression routine(QStringLiteral("^\\[\\w+\\]\n\r"));
    const QString text = QString(box.Text).remove(routine);
    const bool same = box.Title == QLatin1String("Errore") && box.Icon == TQ3MsgIcon::Error
                      && box.Buttons == TQ3MsgButtons::Ok && text.startsWith(beginning)
                      && text.size() > beginning.size();
    if (!same)
        qWarning("box was: %s / %s", qPrintable(box.Title), qPrintable(box.Text));
    return same;
}

QString Q3TestConnessioneInterrotta()
{
    return QString::fromUtf8(Q3MsgConnessioneInterrotta) + QLatin1Char('\n');
}

QString Q3TestConnessioneNonRipristinata()
{
    return QString::fromUtf8(Q3MsgConnessioneNonRipristinata) + QLatin1Char('\n');
}
