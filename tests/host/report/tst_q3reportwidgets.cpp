// The report engine's windows: output options, preview and status, driven as a
// user would, over in-memory data.
#include "Q3PdfText.h"
#include "Q3Report.h"
#include "Q3ReportPreview.h"
#include "Q3ReportPrinter.h"
#include "Q3ReportSetupDialog.h"
#include "Q3ReportStatus.h"
#include "Q3TestDatabase.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QtTest>

namespace {

const char Project[] = R"(<project>
  <report name="Righe">
    <connection name="dsRighe"/>
    <pageFooter height="8"><pageNumber x="0" y="1" width="180" height="5"/></pageFooter>
    <detail connection="dsRighe">
      <header height="6"><text x="0" y="0" width="100" height="5" bold="true">Intestazione</text></header>
      <band height="6"><text x="0" y="0" width="100" height="5">{TESTO}</text></band>
    </detail>
  </report>
</project>)";

// Answers the next modal window with the handler, from the event loop.
void OnNextModal(const std::function<void(QWidget *)> &handler)
{
    auto timer = new QTimer;
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, [timer, handler] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            handler(modal);
        }
    });
    timer->start();
}

class TRun
{
public:
    explicit TRun(int rows)
    {
        for (int i = 1; i <= rows; ++i)
            Righe.AddRow({QStringLiteral("Riga %1").arg(i)});
        Project.SetProjectFile(WriteQ3TestFile(Dir.path(), QStringLiteral("p.rav"), QString::fromUtf8(::Project)));
        Project.Open();
        Project.SetEngine(&System);
        Project.RegisterConnection(QStringLiteral("dsRighe"), &Righe);
        System.OnOverrideSetup = RaveSystemOverrideSetup;
        System.OnOverridePreview = RaveSystemOverridePreview;
    }

    QTemporaryDir Dir;
    TQ3MemoryData Righe{{QStringLiteral("TESTO")}};
    TQ3ReportProject Project;
    TQ3ReportSystem System;
};

} // namespace

class TestQ3ReportWidgets : public QObject
{
    Q_OBJECT

private slots:
    void preview_pagesAndZoom()
    {
        TRun run(120);
        QStringList seen;
        int pages = 0;
        OnNextModal([&](QWidget *setup) {
            seen << setup->windowTitle();
            QVERIFY(setup->findChild<QRadioButton *>(QStringLiteral("rbPreview"))->isChecked());
            QVERIFY(!setup->findChild<QLineEdit *>(QStringLiteral("txtFile"))->isEnabled());
            OnNextModal([&](QWidget *window) {
                auto preview = qobject_cast<TQ3ReportPreview *>(window);
                seen << preview->windowTitle();
                pages = preview->PageCount();
                const QSize full = preview->PageImage().size();
                // 100 %: the paper's real size on the screen.
                QVERIFY(qAbs(full.width() - qRound(210 / 25.4 * preview->logicalDpiX())) <= 2);
                preview->findChild<QAction *>(QStringLiteral("actNext"))->trigger();
                QCOMPARE(preview->PageCurrent(), 1);
                preview->findChild<QAction *>(QStringLiteral("actLast"))->trigger();
                QCOMPARE(preview->PageCurrent(), pages - 1);
                preview->findChild<QAction *>(QStringLiteral("actNext"))->trigger();
                QCOMPARE(preview->PageCurrent(), pages - 1);
                QCOMPARE(preview->findChild<QLabel *>(QStringLiteral("lblInfo"))->text(),
                         QStringLiteral("Pagina %1 di %1 - 100 %").arg(pages));
                preview->findChild<QAction *>(QStringLiteral("actZoomOut"))->trigger();
                QCOMPARE(preview->Zoom(), 75);
                QVERIFY(preview->PageImage().width() < full.width());
                preview->findChild<QAction *>(QStringLiteral("actFirst"))->trigger();
                preview->findChild<QAction *>(QStringLiteral("actZoom100"))->trigger();
                const QString folder = qEnvironmentVariable("Q3_TEST_OUTPUT");
                if (!folder.isEmpty())
                    preview->grab().save(QDir(folder).filePath(QStringLiteral("anteprima.png")));
                preview->findChild<QAction *>(QStringLiteral("actClose"))->trigger();
            });
            setup->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        run.Project.ExecuteReport(QStringLiteral("Righe"));
        QCOMPARE(seen, QStringList({QStringLiteral("Output Options"), QStringLiteral("Report Preview")}));
        QVERIFY(pages >= 3);
    }

    void printer_printsEveryPageWithStatus()
    {
        TRun run(100);
        const QString file = run.Dir.filePath(QStringLiteral("stampante.pdf"));
        // A printer writing to a file stands for the real one.
        Q3ReportSystemPrinter(&run.System)->setOutputFormat(QPrinter::PdfFormat);
        Q3ReportSystemPrinter(&run.System)->setOutputFileName(file);
        run.System.OnOverrideSetup = [](TQ3ReportSystem *system, TQ3OverrideMode, QObject *&) {
            system->SetSetupResult(true, TQ3ReportDestination::Printer);
        };
        QStringList status;
        connect(&run.System, &TQ3ReportSystem::StatusChanged, this, [&](const QString &text) { status << text; });
        run.Project.ExecuteReport(QStringLiteral("Righe"));
        QVERIFY(status.contains(QStringLiteral("Generating page 2")));
        QVERIFY(status.contains(QStringLiteral("Printing page 2")));
        const QString text = Q3PdfText(file);
        QVERIFY(text.contains(QStringLiteral("Riga 100")));
        QVERIFY(text.contains(QStringLiteral("Intestazione")));
    }

    void setupFile_writesTheChosenPdf()
    {
        TRun run(3);
        const QString file = run.Dir.filePath(QStringLiteral("scelto.pdf"));
        OnNextModal([&](QWidget *setup) {
            QCOMPARE(setup->windowTitle(), QStringLiteral("Output Options"));
            setup->findChild<QRadioButton *>(QStringLiteral("rbFile"))->setChecked(true);
            QVERIFY(setup->findChild<QLineEdit *>(QStringLiteral("txtFile"))->isEnabled());
            setup->findChild<QLineEdit *>(QStringLiteral("txtFile"))->setText(file);
            setup->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        run.Project.ExecuteReport(QStringLiteral("Righe"));
        QVERIFY(Q3PdfText(file).contains(QStringLiteral("Riga 3")));
    }

    void status_shownOnlyForLongRuns()
    {
        TRun run(2);
        TQ3ReportStatus status(&run.System);
        QCOMPARE(status.windowTitle(), QStringLiteral("Report Status"));
        bool shown = false;
        run.System.OnOverrideSetup = [](TQ3ReportSystem *system, TQ3OverrideMode, QObject *&) {
            system->SetSetupResult(true, TQ3ReportDestination::Preview);
        };
        run.System.OnOverridePreview = [&](TQ3ReportSystem *, TQ3OverrideMode, QObject *&) {
            shown = status.isVisible();
        };
        run.Project.ExecuteReport(QStringLiteral("Righe"));
        QVERIFY(!shown);
        QCOMPARE(status.Text(), QStringLiteral("Generating page 1"));

        // A run that takes longer than the delay shows its progress.
        TQ3MemoryData slow({QStringLiteral("TESTO")});
        run.Project.RegisterConnection(QStringLiteral("dsRighe"), &slow);
        for (int i = 0; i < 200; ++i)
            slow.AddRow({QStringLiteral("Riga lenta %1").arg(i)});
        connect(&run.System, &TQ3ReportSystem::StatusChanged, this,
                [](const QString &) { QThread::msleep(TQ3ReportStatus::DelayMs / 3); });
        run.Project.ExecuteReport(QStringLiteral("Righe"));
        QVERIFY(shown);
        QVERIFY(status.Text().startsWith(QStringLiteral("Generating page ")));
        QVERIFY(!status.isVisible());
    }
};

QTEST_MAIN(TestQ3ReportWidgets)
#include "tst_q3reportwidgets.moc"
