#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3WidgetServices.h"

#include <QApplication>
#include <QtTest>

#include <stdexcept>

class TestQ3Guards : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { InstallQ3WidgetServices(); }
    void failureIsShownWithItsOwnMessage();
    void failureOfAnyKindIsShown();
    void handlerThatRunsToItsEndShowsNothing();
    void busyCursorIsRestoredInEveryCase();
    void responderAnswersFromItsQueueThenDefaults();
    void boxesWithoutResponderGoToTheDialogPresenter();
};

void TestQ3Guards::failureIsShownWithItsOwnMessage()
{
    TQ3RecordingResponder responder;
    QVERIFY(!Q3Guarded([] { throw EQ3Exception(QStringLiteral("Qualcosa non va.")); }));
    QVERIFY(!Q3Guarded([] { throw std::runtime_error("errore di sistema"); }));
    QCOMPARE(responder.Messages().size(), 2);
    QCOMPARE(responder.Messages().at(0).Title, QStringLiteral("Errore"));
    QCOMPARE(responder.Messages().at(0).Text, QStringLiteral("Qualcosa non va."));
    QCOMPARE(responder.Messages().at(0).Icon, TQ3MsgIcon::Error);
    QCOMPARE(responder.Messages().at(0).Buttons, TQ3MsgButtons::Ok);
    QCOMPARE(responder.Messages().at(1).Text, QStringLiteral("errore di sistema"));
}

void TestQ3Guards::failureOfAnyKindIsShown()
{
    TQ3RecordingResponder responder;
    QVERIFY(!Q3Guarded([] { throw 42; }));
    QCOMPARE(responder.Messages().size(), 1);
    QCOMPARE(responder.Messages().at(0).Title, QStringLiteral("Errore"));
    QCOMPARE(responder.Messages().at(0).Text, QStringLiteral("Si è verificato un errore imprevisto."));
    QCOMPARE(responder.Messages().at(0).Icon, TQ3MsgIcon::Error);
}

void TestQ3Guards::handlerThatRunsToItsEndShowsNothing()
{
    TQ3RecordingResponder responder;
    int runs = 0;
    QVERIFY(Q3Guarded([&] { ++runs; }));
    QCOMPARE(runs, 1);
    QVERIFY(responder.Messages().isEmpty());
}

void TestQ3Guards::busyCursorIsRestoredInEveryCase()
{
    TQ3RecordingResponder responder;
    QVERIFY(!QApplication::overrideCursor());
    {
        TQ3BusyCursor busy;
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QCOMPARE(TQ3BusyCursor::Depth(), 1);
    }
    QVERIFY(!QApplication::overrideCursor());
    Q3Guarded([] {
        TQ3BusyCursor busy;
        throw EQ3Exception(QStringLiteral("interrotto"));
    });
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(TQ3BusyCursor::Depth(), 0);
}

void TestQ3Guards::responderAnswersFromItsQueueThenDefaults()
{
    TQ3RecordingResponder responder;
    responder.Enqueue(TQ3MsgResult::No);
    responder.Enqueue(TQ3MsgResult::Cancel);
    QVERIFY(!Q3AskYesNo(QStringLiteral("Continuare?")));
    QCOMPARE(Q3MessageBox(QStringLiteral("Conferma"), QStringLiteral("Salvare?"), TQ3MsgIcon::Question,
                          TQ3MsgButtons::YesNoCancel),
             TQ3MsgResult::Cancel);
    QVERIFY(Q3AskYesNo(QStringLiteral("Ancora?")));
    QCOMPARE(responder.Messages().at(0).Title, QStringLiteral("Conferma"));
    QCOMPARE(responder.Messages().at(0).Icon, TQ3MsgIcon::Question);
    QCOMPARE(responder.Messages().at(0).Buttons, TQ3MsgButtons::YesNo);
    Q3ShowWarning(QStringLiteral("Attento"));
    QCOMPARE(responder.Messages().last().Title, QStringLiteral("Attenzione"));
    QCOMPARE(responder.Messages().last().Icon, TQ3MsgIcon::Warning);
}

void TestQ3Guards::boxesWithoutResponderGoToTheDialogPresenter()
{
    // The widget library's presenter shows a real dialog: close it as a user would.
    QTimer::singleShot(0, [] {
        QWidget *box = QApplication::activeModalWidget();
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QStringLiteral("Conferma"));
        QTest::keyClick(box, Qt::Key_Escape);
    });
    QCOMPARE(Q3MessageBox(QStringLiteral("Conferma"), QStringLiteral("Uscire?"), TQ3MsgIcon::Question,
                          TQ3MsgButtons::YesNo),
             TQ3MsgResult::No);
}

QTEST_MAIN(TestQ3Guards)
#include "tst_q3guards.moc"
