#include "Q3ReportOutput.h"

#include "Q3Exception.h"

#include <QBuffer>
#include <QFile>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

namespace {

QByteArray PdfText(const QString &text)
{
    // UTF-16 big-endian with its byte order mark: any text, in plain ASCII.
    QByteArray bytes("<FEFF");
    for (const QChar c : text)
        bytes += QByteArray::number(c.unicode(), 16).rightJustified(4, '0').toUpper();
    return bytes + '>';
}

// The PDF writer fills the document information with its own producer and no
// author: an incremental update replaces the information dictionary.
QByteArray WithInformation(QByteArray pdf, const TQ3RenderPDF &render)
{
    const qsizetype trailer = pdf.lastIndexOf("trailer");
    const qsizetype start = pdf.lastIndexOf("startxref");
    if (trailer < 0 || start < trailer)
        return pdf;
    const QString tail = QString::fromLatin1(pdf.mid(trailer));
    const auto size = QRegularExpression(QStringLiteral("/Size (\\d+)")).match(tail);
    const auto root = QRegularExpression(QStringLiteral("/Root (\\d+ \\d+ R)")).match(tail);
    const auto previous = QRegularExpression(QStringLiteral("startxref\\s+(\\d+)")).match(tail);
    if (!size.hasMatch() || !root.hasMatch() || !previous.hasMatch())
        return pdf;
    const int object = size.captured(1).toInt();
    if (!pdf.endsWith('\n'))
        pdf += '\n';
    const qsizetype offset = pdf.size();
    pdf += QByteArray::number(object) + " 0 obj\n<<\n/Title " + PdfText(render.Title) + "\n/Author "
           + PdfText(render.Author) + "\n/Creator " + PdfText(render.Creator) + "\n/Producer "
           + PdfText(render.Producer) + "\n>>\nendobj\n";
    const qsizetype xref = pdf.size();
    pdf += "xref\n" + QByteArray::number(object) + " 1\n" + QByteArray::number(offset).rightJustified(10, '0')
           + " 00000 n \ntrailer\n<<\n/Size " + QByteArray::number(object + 1) + "\n/Root "
           + root.captured(1).toLatin1() + "\n/Info " + QByteArray::number(object) + " 0 R\n/Prev "
           + previous.captured(1).toLatin1() + "\n>>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";
    return pdf;
}

} // namespace

void Q3DrawReport(const TQ3ReportDocument &document, QPagedPaintDevice &device, int resolution, qreal scaleX,
                  qreal scaleY, const std::function<void(int)> &onPage)
{
    const QPageLayout &page = document.Layout().Page;
    device.setPageLayout(
        QPageLayout(page.pageSize(), page.orientation(), QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    QPainter painter;
    if (!painter.begin(&device))
        throw EQ3Exception(QStringLiteral("Impossibile iniziare la stampa."));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const qreal scale = resolution / (25.4 * Q3ReportUnitsPerMm);
    for (int index = 0; index < document.PageCount(); ++index) {
        if (onPage)
            onPage(index + 1);
        if (index > 0)
            device.newPage();
        painter.resetTransform();
        painter.scale(scale * scaleX, scale * scaleY);
        document.DrawPage(painter, index);
    }
    painter.end();
}

TQ3RenderPDF::TQ3RenderPDF(QObject *owner) : QObject(owner) {}

QByteArray TQ3RenderPDF::RenderToBytes(const TQ3ReportDocument &document) const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(1200);
        writer.setTitle(Title);
        writer.setCreator(Creator);
        Q3DrawReport(document, writer, writer.resolution());
    }
    return WithInformation(buffer.data(), *this);
}

void TQ3RenderPDF::Render(const TQ3ReportDocument &document, const QString &fileName) const
{
    const QByteArray pdf = RenderToBytes(document);
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(pdf) != pdf.size())
        throw EQ3Exception(QStringLiteral("Impossibile scrivere il file \"%1\": %2").arg(fileName, file.errorString()));
}
