#include "KRVTestModule.h"

#include <QFileInfo>
#include <QtTest>

// Runs from a folder with no report project beside the executable.
class TestKRVMainOutside : public QObject
{
    Q_OBJECT

private slots:
    void missingReportProjectGivesOneMessage();
};

void TestKRVMainOutside::missingReportProjectGivesOneMessage()
{
    QVERIFY(!QFileInfo::exists(TKRVMain::ReportProjectPath()));
    TQ3RecordingResponder responder;
    TKRVTestModule module(TQ3TestDatabase::Where::Embedded, false);
    module.Main->Initialize();
    QCOMPARE(responder.Messages().size(), 1);
    const TQ3Message &message = responder.Messages().first();
    QCOMPARE(message.Title, QStringLiteral("Errore"));
    QCOMPARE(message.Text, QStringLiteral("Impossibile trovare il file delle stampe del modulo documenti!"));
    QCOMPARE(message.Icon, TQ3MsgIcon::Error);
    QCOMPARE(message.Buttons, TQ3MsgButtons::Ok);
    QVERIFY(!module.Main->rProject()->Active());
    // The module goes on: the rest of the start-up ran.
    QVERIFY(module.Main->dmStampe());
    QVERIFY(module.MainForm->findChild<QToolBar *>(QStringLiteral("tBarKRVDocumenti")));
}

QTEST_MAIN(TestKRVMainOutside)
#include "tst_krvmain_outside.moc"
