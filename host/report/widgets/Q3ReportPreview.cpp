#include "Q3ReportPreview.h"

#include "Q3Exception.h"
#include "Q3Messages.h"
#include "Q3ReportPrinter.h"

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QScreen>
#include <QScrollArea>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QAction *AddAction(QToolBar *bar, const QString &name, const QString &text, const QString &icon,
                   const QKeySequence &key = {})
{
    QAction *action = bar->addAction(QIcon::fromTheme(icon), text);
    action->setObjectName(name);
    action->setShortcut(key);
    return action;
}

} // namespace

TQ3ReportPreview::TQ3ReportPreview(TQ3ReportSystem *system, QWidget *parent)
    : QDialog(parent), m_system(system), m_scroll(new QScrollArea(this)), m_lblPage(new QLabel(this)),
      m_lblInfo(new QLabel(this))
{
    setObjectName(QStringLiteral("Q3ReportPreview"));
    setWindowTitle(system->TitlePreview);
    setWindowFlags(windowFlags() | Qt::WindowMaximizeButtonHint);
    m_lblPage->setObjectName(QStringLiteral("lblPage"));
    m_lblInfo->setObjectName(QStringLiteral("lblInfo"));
    m_scroll->setObjectName(QStringLiteral("scrPage"));
    m_scroll->setAlignment(Qt::AlignCenter);
    m_scroll->setBackgroundRole(QPalette::Dark);
    m_scroll->setWidget(m_lblPage);

    auto bar = new QToolBar(this);
    bar->setObjectName(QStringLiteral("tBarPreview"));
    connect(AddAction(bar, QStringLiteral("actPrint"), QStringLiteral("Stampa"), QStringLiteral("document-print"),
                      QKeySequence::Print),
            &QAction::triggered, this, &TQ3ReportPreview::Print);
    connect(AddAction(bar, QStringLiteral("actSavePdf"), QStringLiteral("Salva PDF"), QStringLiteral("document-save")),
            &QAction::triggered, this, &TQ3ReportPreview::SavePdf);
    bar->addSeparator();
    connect(AddAction(bar, QStringLiteral("actFirst"), QStringLiteral("Prima"), QStringLiteral("go-first"),
                      Qt::Key_Home),
            &QAction::triggered, this, [this] { SetPage(0); });
    connect(AddAction(bar, QStringLiteral("actPrevious"), QStringLiteral("Precedente"), QStringLiteral("go-previous"),
                      Qt::Key_PageUp),
            &QAction::triggered, this, [this] { SetPage(m_page - 1); });
    connect(AddAction(bar, QStringLiteral("actNext"), QStringLiteral("Successiva"), QStringLiteral("go-next"),
                      Qt::Key_PageDown),
            &QAction::triggered, this, [this] { SetPage(m_page + 1); });
    connect(AddAction(bar, QStringLiteral("actLast"), QStringLiteral("Ultima"), QStringLiteral("go-last"), Qt::Key_End),
            &QAction::triggered, this, [this] { SetPage(PageCount() - 1); });
    bar->addSeparator();
    connect(AddAction(bar, QStringLiteral("actZoomIn"), QStringLiteral("Ingrandisci"), QStringLiteral("zoom-in"),
                      QKeySequence::ZoomIn),
            &QAction::triggered, this, [this] { SetZoom(m_zoom + 25); });
    connect(AddAction(bar, QStringLiteral("actZoomOut"), QStringLiteral("Riduci"), QStringLiteral("zoom-out"),
                      QKeySequence::ZoomOut),
            &QAction::triggered, this, [this] { SetZoom(m_zoom - 25); });
    connect(AddAction(bar, QStringLiteral("actZoom100"), QStringLiteral("100 %"), QStringLiteral("zoom-original")),
            &QAction::triggered, this, [this] { SetZoom(100); });
    bar->addSeparator();
    bar->addWidget(m_lblInfo);
    bar->addSeparator();
    connect(AddAction(bar, QStringLiteral("actClose"), QStringLiteral("Chiudi"), QStringLiteral("window-close")),
            &QAction::triggered, this, &QDialog::accept);

    auto layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    layout->addWidget(m_scroll);
    resize(900, 1000);
}

int TQ3ReportPreview::PageCount() const
{
    return m_system->Document() ? m_system->Document()->PageCount() : 0;
}

void TQ3ReportPreview::Run()
{
    m_page = 0;
    m_zoom = m_system->PreviewZoom;
    Redraw();
    exec();
    m_lblPage->clear();
}

void TQ3ReportPreview::SetPage(int page)
{
    m_page = qBound(0, page, qMax(0, PageCount() - 1));
    Redraw();
}

void TQ3ReportPreview::SetZoom(int percent)
{
    m_zoom = qBound(25, percent, 400);
    Redraw();
}

QImage TQ3ReportPreview::PageImage() const
{
    const TQ3ReportDocument *document = m_system->Document();
    if (!document || PageCount() == 0)
        return {};
    // 100 % is the paper's real size on this screen.
    const qreal dpi = (screen() ? screen()->logicalDotsPerInch() : 96.0) * m_zoom / 100.0;
    const qreal scale = dpi / (25.4 * Q3ReportUnitsPerMm);
    const QSizeF paper = document->PaperSize() * scale;
    QImage image(paper.toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(scale, scale);
    document->DrawPage(painter, m_page);
    return image;
}

void TQ3ReportPreview::Redraw()
{
    m_lblPage->setPixmap(QPixmap::fromImage(PageImage()));
    m_lblPage->adjustSize();
    m_lblInfo->setText(QStringLiteral("Pagina %1 di %2 - %3 %").arg(m_page + 1).arg(PageCount()).arg(m_zoom));
}

void TQ3ReportPreview::Print()
{
    try {
        QPrintDialog dialog(Q3ReportSystemPrinter(m_system), this);
        if (dialog.exec() == QDialog::Accepted)
            m_system->PrintDocument();
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    }
}

void TQ3ReportPreview::SavePdf()
{
    try {
        const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Salva come PDF"), QString(),
                                                          QStringLiteral("File PDF (*.pdf)"));
        if (!name.isEmpty())
            m_system->SaveDocumentAsPdf(name);
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    }
}
