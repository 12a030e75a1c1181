#include "Q3Exception.h"
#include "Q3ZipWriter.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// Every archive is read back by Python's zipfile, which shares nothing with
// libzip: the names in order, each entry's content, and the first entry whose
// checksum is wrong (none).
static const char *const ReaderScript = R"(
import json, sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as z:
    print(json.dumps({"names": z.namelist(), "bad": z.testzip(),
                      "contents": {n: z.read(n).decode("utf-8") for n in z.namelist()}}))
)";

namespace {

QJsonObject ReadBack(const QString &file)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QString::fromUtf8(ReaderScript), file});
    if (!python.waitForFinished(60000) || python.exitCode() != 0)
        qWarning("%s", python.readAllStandardError().constData());
    return QJsonDocument::fromJson(python.readAllStandardOutput()).object();
}

} // namespace

class TestQ3ZipWriter : public QObject
{
    Q_OBJECT

private slots:
    void entriesReadBackByAnotherReader();
    void archiveNotClosedLeavesNoFile();
    void folderThatIsNotThereSaysWhy();
};

void TestQ3ZipWriter::entriesReadBackByAnotherReader()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("fatture.zip"));
    TQ3ZipWriter zip(file);
    zip.Add(QStringLiteral("IT01234567890_00001.xml"), QByteArrayLiteral("<a>uno</a>"));
    zip.Add(QStringLiteral("riepilogo è.txt"), QStringLiteral("Città: Forlì").toUtf8());
    zip.Add(QStringLiteral("IT01234567890_00002.xml"), QByteArray(100000, 'x'));
    QCOMPARE(zip.Count(), 3);
    QVERIFY(!QFile::exists(file));
    zip.Close();
    const QJsonObject read = ReadBack(file);
    QCOMPARE(read.value(QStringLiteral("names")).toVariant().toStringList(),
             (QStringList{QStringLiteral("IT01234567890_00001.xml"), QStringLiteral("riepilogo è.txt"),
                          QStringLiteral("IT01234567890_00002.xml")}));
    QVERIFY(read.value(QStringLiteral("bad")).isNull());
    const QJsonObject contents = read.value(QStringLiteral("contents")).toObject();
    QCOMPARE(contents.value(QStringLiteral("IT01234567890_00001.xml")).toString(), QStringLiteral("<a>uno</a>"));
    QCOMPARE(contents.value(QStringLiteral("riepilogo è.txt")).toString(), QStringLiteral("Città: Forlì"));
    QCOMPARE(contents.value(QStringLiteral("IT01234567890_00002.xml")).toString(), QString(100000, QLatin1Char('x')));
    // Compressed: the 100 KB of one letter take far less.
    QVERIFY(QFileInfo(file).size() < 10000);
}

void TestQ3ZipWriter::archiveNotClosedLeavesNoFile()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("interrotto.zip"));
    {
        TQ3ZipWriter zip(file);
        zip.Add(QStringLiteral("a.xml"), QByteArrayLiteral("<a/>"));
    }
    QVERIFY(!QFile::exists(file));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestQ3ZipWriter::folderThatIsNotThereSaysWhy()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("manca/fatture.zip"));
    try {
        TQ3ZipWriter zip(file);
        zip.Add(QStringLiteral("a.xml"), QByteArrayLiteral("<a/>"));
        zip.Close();
        QFAIL("no failure");
    } catch (const EQ3Exception &e) {
        QVERIFY2(e.Message().startsWith(QStringLiteral("Impossibile scrivere il file \"%1\":\n").arg(file)),
                 qPrintable(e.Message()));
    }
    QVERIFY(!QFile::exists(file));
}

QTEST_GUILESS_MAIN(TestQ3ZipWriter)
#include "tst_q3zipwriter.moc"
