#pragma once

#include "Q3ReportDocument.h"

#include <QObject>
#include <QString>

#include <functional>

class QPagedPaintDevice;

// Draws every page of a document onto a paged device (PDF writer, printer),
// starting a new device page for each after the first. The device's page
// layout is set to the document's paper with no margins.
Q3_EXPORT void Q3DrawReport(const TQ3ReportDocument &document, QPagedPaintDevice &device, int resolution,
                            qreal scaleX = 1, qreal scaleY = 1, const std::function<void(int)> &onPage = {});

// The PDF back-end and its settings.
class Q3_EXPORT TQ3RenderPDF : public QObject
{
    Q_OBJECT

public:
    explicit TQ3RenderPDF(QObject *owner = nullptr);

    // Named in the output options; the whole document is built in memory
    // before the file is written, with its fonts' subsets embedded.
    QString DisplayName = QStringLiteral("Adobe Acrobat (PDF)");
    QString FileExtension = QStringLiteral("*.pdf");
    QString Title;
    QString Author;
    QString Creator;
    QString Producer;

    // Writes the document to the file, replacing it; raises EQ3Exception when
    // the file cannot be written.
    void Render(const TQ3ReportDocument &document, const QString &fileName) const;
    // The PDF as bytes.
    QByteArray RenderToBytes(const TQ3ReportDocument &document) const;
};
