#pragma once

#include "Q3ReportSystem.h"

#include <QPrinter>

// The report engine's printer back-end: one high-resolution printer, set up by
// the print dialogs and kept for the system's next runs. Each page is drawn on
// the whole sheet, the document's title naming the print job.
class Q3_EXPORT TQ3ReportPrinter : public IQ3ReportPrinter
{
public:
    TQ3ReportPrinter();

    QPrinter *Printer() { return &m_printer; }

    void Print(const TQ3ReportDocument &document, qreal scaleX, qreal scaleY,
               const std::function<void(int)> &onPage) override;

private:
    QPrinter m_printer;
};

// The printer of the system's printer back-end, which it is given first when
// it has none.
Q3_EXPORT QPrinter *Q3ReportSystemPrinter(TQ3ReportSystem *system);
