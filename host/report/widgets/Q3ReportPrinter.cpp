#include "Q3ReportPrinter.h"

TQ3ReportPrinter::TQ3ReportPrinter() : m_printer(QPrinter::HighResolution) {}

void TQ3ReportPrinter::Print(const TQ3ReportDocument &document, qreal scaleX, qreal scaleY,
                             const std::function<void(int)> &onPage)
{
    m_printer.setFullPage(true);
    m_printer.setDocName(document.Layout().Title);
    Q3DrawReport(document, m_printer, m_printer.resolution(), scaleX, scaleY, onPage);
}

QPrinter *Q3ReportSystemPrinter(TQ3ReportSystem *system)
{
    auto printer = dynamic_cast<TQ3ReportPrinter *>(system->Printer());
    if (!printer) {
        auto installed = std::make_unique<TQ3ReportPrinter>();
        printer = installed.get();
        system->SetPrinter(std::move(installed));
    }
    return printer->Printer();
}
