// Which folder of the module may know which: the shell knows the windows, the
// windows know the main object only through the interface of its services.
// Read from the module's sources, as they are in the tree.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtTest>

namespace {

// The module's folder, beside the tests' fixtures in the source tree.
QDir Modulo()
{
    return QDir(QStringLiteral(Q3_TEST_FIXTURES "/../../modules/documenti"));
}

// The module's sources below the folder, by their path from the module's folder.
QStringList Sorgenti(const QString &folder = QString())
{
    const QDir modulo = Modulo();
    QStringList files;
    QDirIterator it(modulo.filePath(folder), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        files << modulo.relativeFilePath(it.next());
    files.sort();
    return files;
}

bool DellaShell(const QString &path)
{
    return path.startsWith(QLatin1String("shell/"));
}

// The headers a file includes by name ("...").
QStringList Inclusi(const QString &path)
{
    QFile file(Modulo().filePath(path));
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("(illeggibile)")};
    static const QRegularExpression include(QStringLiteral(R"(^\s*#\s*include\s*"([^"]+)\")"),
                                            QRegularExpression::MultilineOption);
    QStringList headers;
    for (auto match = include.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();)
        headers << match.next().captured(1);
    return headers;
}

QStringList NomiDi(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names << QFileInfo(path).fileName();
    return names;
}

// What every window may use of the windows' own kit, the shell included: the
// main object's services, the shared images and the building blocks. Data
// modules are no windows.
bool HeaderDiFinestra(const QString &header, const QStringList &shell)
{
    static const QStringList kit{QStringLiteral("uKRVServiziFinestre.h"), QStringLiteral("uKRVImages.h"),
                                 QStringLiteral("uKRVFormKit.h")};
    return header.startsWith(QLatin1String("uKRV")) && header.endsWith(QLatin1String(".h")) && !shell.contains(header)
           && !kit.contains(header) && !header.startsWith(QLatin1String("uKRVdm"));
}

} // namespace

class TestDipendenzeFinestre : public QObject
{
    Q_OBJECT

private slots:
    void theModuleIsRead();
    void noWindowIncludesTheMainHeader();
    void nothingOutsideTheShellIncludesAShellHeader();
    void theShellKnowsWindowsOnlyThroughItsWindowTable();
};

void TestDipendenzeFinestre::theModuleIsRead()
{
    const QStringList all = Sorgenti();
    QVERIFY2(all.contains(QStringLiteral("shell/uKRVMain.cpp")), qPrintable(Modulo().absolutePath()));
    QVERIFY(all.size() > 100);
}

void TestDipendenzeFinestre::noWindowIncludesTheMainHeader()
{
    QStringList offenders;
    for (const QString &path : Sorgenti()) {
        if (!DellaShell(path) && QFileInfo(path).fileName().startsWith(QLatin1String("uKRV"))
            && Inclusi(path).contains(QStringLiteral("uKRVMain.h")))
            offenders << path;
    }
    QVERIFY2(offenders.isEmpty(), qPrintable(offenders.join(QStringLiteral(", "))));
}

void TestDipendenzeFinestre::nothingOutsideTheShellIncludesAShellHeader()
{
    const QStringList shell = NomiDi(Sorgenti(QStringLiteral("shell")));
    QStringList offenders;
    for (const QString &path : Sorgenti()) {
        if (DellaShell(path))
            continue;
        for (const QString &header : Inclusi(path)) {
            if (shell.contains(header))
                offenders << path + QStringLiteral(" -> ") + header;
        }
    }
    QVERIFY2(offenders.isEmpty(), qPrintable(offenders.join(QStringLiteral(", "))));
}

void TestDipendenzeFinestre::theShellKnowsWindowsOnlyThroughItsWindowTable()
{
    const QStringList shell = NomiDi(Sorgenti(QStringLiteral("shell")));
    QVERIFY(shell.contains(QStringLiteral("uKRVAzioni.cpp")));
    QStringList offenders;
    for (const QString &path : Sorgenti(QStringLiteral("shell"))) {
        if (path == QLatin1String("shell/uKRVAzioni.cpp"))
            continue;
        for (const QString &header : Inclusi(path)) {
            if (HeaderDiFinestra(header, shell))
                offenders << path + QStringLiteral(" -> ") + header;
        }
    }
    QVERIFY2(offenders.isEmpty(), qPrintable(offenders.join(QStringLiteral(", "))));
}

QTEST_GUILESS_MAIN(TestDipendenzeFinestre)
#include "tst_dipendenzefinestre.moc"
