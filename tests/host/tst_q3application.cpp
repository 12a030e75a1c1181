// The host's application object as the last net under every handler: a
// failure that no window caught is shown in the "Errore" box, and the
// application goes on with its windows.
#include "Q3Application.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3Messages.h"

#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <stdexcept>

namespace {

const QEvent::Type Guasto = QEvent::Type(QEvent::User + 1);
const QEvent::Type Prova = QEvent::Type(QEvent::User + 2);

// A window one of whose handlers fails without a guard of its own.
class TFinestraGuasta : public QWidget
{
public:
    // What the failing handler throws: the application's failure, a standard
    // one, or something that is neither.
    enum class TFallimento { Applicazione, Standard, Altro };

    TFallimento Fallimento = TFallimento::Applicazione;
    int Guasti = 0;
    int Prove = 0;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == Prova) {
            ++Prove;
            return true;
        }
        if (event->type() != Guasto)
            return QWidget::event(event);
        ++Guasti;
        switch (Fallimento) {
        case TFallimento::Applicazione:
            throw EQ3Exception(QStringLiteral("Archivio non raggiungibile."));
        case TFallimento::Standard:
            throw std::runtime_error("errore di sistema");
        case TFallimento::Altro:
            throw 42;
        }
        return true;
    }
};

bool ErrorBox(const TQ3Message &box, const QString &text)
{
    const bool same = box.Title == QLatin1String("Errore") && box.Icon == TQ3MsgIcon::Error
                      && box.Buttons == TQ3MsgButtons::Ok && box.Text == text;
    if (!same)
        qWarning("box was: %s / %s", qPrintable(box.Title), qPrintable(box.Text));
    return same;
}

} // namespace

class TestQ3Application : public QObject
{
    Q_OBJECT

private slots:
    void failureOfAnEventHandlerIsShownAndTheLoopGoesOn();
    void everyKindOfFailureIsShown();
    void failureOfATimerIsShown();
};

void TestQ3Application::failureOfAnEventHandlerIsShownAndTheLoopGoesOn()
{
    QVERIFY(qobject_cast<TQ3Application *>(qApp));
    TQ3RecordingResponder boxes;
    TFinestraGuasta finestra;
    finestra.setWindowTitle(QStringLiteral("Fattura"));
    finestra.show();
    // The failing event, then one more for the same window, then the end of
    // the loop: the loop must get to all three.
    QCoreApplication::postEvent(&finestra, new QEvent(Guasto));
    QCoreApplication::postEvent(&finestra, new QEvent(Prova));
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
    QCOMPARE(QApplication::exec(), 7);
    QCOMPARE(finestra.Guasti, 1);
    QCOMPARE(finestra.Prove, 1);
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(ErrorBox(boxes.Messages().at(0), QStringLiteral("Archivio non raggiungibile.")));
    QVERIFY(finestra.isVisible());
    QCOMPARE(finestra.windowTitle(), QStringLiteral("Fattura"));
}

void TestQ3Application::everyKindOfFailureIsShown()
{
    TQ3RecordingResponder boxes;
    TFinestraGuasta finestra;
    for (const auto fallimento : {TFinestraGuasta::TFallimento::Standard, TFinestraGuasta::TFallimento::Altro}) {
        finestra.Fallimento = fallimento;
        QEvent guasto(Guasto);
        QVERIFY(!QCoreApplication::sendEvent(&finestra, &guasto));
    }
    QCOMPARE(finestra.Guasti, 2);
    QCOMPARE(boxes.Messages().size(), 2);
    QVERIFY(ErrorBox(boxes.Messages().at(0), QStringLiteral("errore di sistema")));
    QVERIFY(ErrorBox(boxes.Messages().at(1), QString::fromUtf8(Q3MsgErroreImprevisto)));
}

void TestQ3Application::failureOfATimerIsShown()
{
    TQ3RecordingResponder boxes;
    int dopo = 0;
    QTimer::singleShot(0, qApp, [] { throw EQ3Exception(QStringLiteral("Promemoria non letto.")); });
    QTimer::singleShot(0, qApp, [&dopo] { ++dopo; });
    QTRY_COMPARE(dopo, 1);
    QCOMPARE(boxes.Messages().size(), 1);
    QVERIFY(ErrorBox(boxes.Messages().at(0), QStringLiteral("Promemoria non letto.")));
}

int main(int argc, char **argv)
{
    TQ3Application app(argc, argv);
    TestQ3Application test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_q3application.moc"
