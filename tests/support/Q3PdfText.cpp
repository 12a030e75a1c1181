#include "Q3PdfText.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace {

QString Run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

QString Q3PdfText(const QString &fileName, int page)
{
    QStringList arguments{QStringLiteral("-layout")};
    if (page > 0)
        arguments << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l") << QString::number(page);
    return Run(QStringLiteral("pdftotext"), arguments << fileName << QStringLiteral("-"));
}

QString Q3PdfWordBoxes(const QString &fileName)
{
    return Run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), fileName, QStringLiteral("-")});
}

QString Q3PdfInfo(const QString &fileName)
{
    return Run(QStringLiteral("pdfinfo"), {fileName});
}

int Q3PdfToPng(const QString &fileName, const QString &prefix, int dpi)
{
    Run(QStringLiteral("pdftoppm"),
        {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(dpi), fileName, prefix});
    const QFileInfo info(prefix);
    return int(QDir(info.absolutePath()).entryList({info.fileName() + QStringLiteral("*.png")}).size());
}
