#pragma once

#include "Q3ReportOutput.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

// Where a report goes: the host's output enumeration.
enum class TQ3ReportDestination { Preview = 0, Printer = 1, File = 2 };

// What a replaced output window is asked to do.
enum class TQ3OverrideMode { Show, Free };

// Where a Printer run prints. Printers need Qt's print support, which needs
// its widgets: the back-end lives in the report widgets library
// (TQ3ReportPrinter), which gives it to a system on first use.
class Q3_EXPORT IQ3ReportPrinter
{
public:
    virtual ~IQ3ReportPrinter() = default;
    // Prints every page of the document at the scale given (1 for none),
    // telling onPage each page's number before it prints it.
    virtual void Print(const TQ3ReportDocument &document, qreal scaleX, qreal scaleY,
                       const std::function<void(int)> &onPage) = 0;
};

// The output side of the report engine: where a run goes, the windows that
// replace the engine's own, and the status of long runs.
class Q3_EXPORT TQ3ReportSystem : public QObject
{
    Q_OBJECT

public:
    // A replacement for the output-options dialog or the preview window. The
    // form is the handler's to create, keep and free (mode Free).
    using TOverrideHandler = std::function<void(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)>;

    explicit TQ3ReportSystem(QObject *owner = nullptr);
    ~TQ3ReportSystem() override;

    QString TitleSetup = QStringLiteral("Output Options");
    QString TitleStatus = QStringLiteral("Report Status");
    QString TitlePreview = QStringLiteral("Report Preview");
    QString StatusFormat = QStringLiteral("Generating page %p");
    QString StatusPrinting = QStringLiteral("Printing page %p");
    int PreviewZoom = 100;
    int PrinterScaleX = 100;
    int PrinterScaleY = 100;
    TQ3ReportDestination DefaultDest = TQ3ReportDestination::Preview;
    bool AllowSetup = true;
    bool DoNativeOutput = true;
    QString OutputFileName;
    QPointer<TQ3RenderPDF> RenderObject;
    TOverrideHandler OnOverrideSetup;
    TOverrideHandler OnOverridePreview;

    // Runs a report: the output options (when allowed), the layout, then the
    // output chosen. Raises EQ3Exception on failure.
    void Execute(const std::function<std::unique_ptr<TQ3ReportDocument>(const std::function<void(int)> &)> &generate);

    // Answers of the output-options dialog for the current run.
    void SetSetupResult(bool accepted, TQ3ReportDestination destination, const QString &fileName = {});
    // The printer back-end a Printer run prints on (null until one is set),
    // set up by the output-options dialog.
    IQ3ReportPrinter *Printer() const { return m_printer.get(); }
    void SetPrinter(std::unique_ptr<IQ3ReportPrinter> printer) { m_printer = std::move(printer); }

    // The document of the run in progress (for the preview).
    const TQ3ReportDocument *Document() const { return m_document.get(); }
    // Prints the run's document on the printer back-end; raises EQ3Exception
    // when there is none.
    void PrintDocument();
    void SaveDocumentAsPdf(const QString &fileName);

signals:
    void StatusChanged(const QString &text);
    void RunFinished();

private:
    void Status(const QString &format, int page);

    TQ3ReportDestination m_reportDest = TQ3ReportDestination::Preview;
    QString m_reportFileName;
    bool m_setupAccepted = false;
    std::unique_ptr<IQ3ReportPrinter> m_printer;
    std::unique_ptr<TQ3ReportDocument> m_document;
    QObject *m_setupForm = nullptr;
    QObject *m_previewForm = nullptr;
};
