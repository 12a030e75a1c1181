#pragma once

#include "Q3ReportSystem.h"

#include <QDialog>

class QLabel;
class QScrollArea;

// The host's "Report Preview" window: the pages of the run in progress, page
// by page, with zoom, printing and saving as PDF. Modal.
class Q3_EXPORT TQ3ReportPreview : public QDialog
{
    Q_OBJECT

public:
    explicit TQ3ReportPreview(TQ3ReportSystem *system, QWidget *parent = nullptr);

    // Shows the run's document from its first page at the system's zoom.
    void Run();

    int PageCurrent() const { return m_page; }
    int PageCount() const;
    int Zoom() const { return m_zoom; }
    void SetPage(int page);
    void SetZoom(int percent);
    // The page shown, as drawn on screen.
    QImage PageImage() const;

private:
    void Redraw();
    void Print();
    void SavePdf();

    TQ3ReportSystem *m_system;
    QScrollArea *m_scroll;
    QLabel *m_lblPage;
    QLabel *m_lblInfo;
    int m_page = 0;
    int m_zoom = 100;
};
