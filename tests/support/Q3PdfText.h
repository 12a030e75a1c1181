#pragma once

#include <QString>

// The text of a PDF file as poppler's pdftotext reads it (physical layout), of
// all pages or of one page (from 1).
QString Q3PdfText(const QString &fileName, int page = 0);
// The word boxes of a PDF file (pdftotext -bbox), as XHTML.
QString Q3PdfWordBoxes(const QString &fileName);
// The document information as pdfinfo prints it.
QString Q3PdfInfo(const QString &fileName);
// Renders the pages as PNG files (pdftoppm) beside a prefix; answers their count.
int Q3PdfToPng(const QString &fileName, const QString &prefix, int dpi = 60);
