#include "Q3ReportSystem.h"

#include "Q3Exception.h"

TQ3ReportSystem::TQ3ReportSystem(QObject *owner) : QObject(owner) {}

TQ3ReportSystem::~TQ3ReportSystem()
{
    if (OnOverrideSetup && m_setupForm)
        OnOverrideSetup(this, TQ3OverrideMode::Free, m_setupForm);
    if (OnOverridePreview && m_previewForm)
        OnOverridePreview(this, TQ3OverrideMode::Free, m_previewForm);
}

void TQ3ReportSystem::SetSetupResult(bool accepted, TQ3ReportDestination destination, const QString &fileName)
{
    m_setupAccepted = accepted;
    m_reportDest = destination;
    m_reportFileName = fileName;
}

void TQ3ReportSystem::Status(const QString &format, int page)
{
    emit StatusChanged(QString(format).replace(QStringLiteral("%p"), QString::number(page)));
}

void TQ3ReportSystem::Execute(
    const std::function<std::unique_ptr<TQ3ReportDocument>(const std::function<void(int)> &)> &generate)
{
    struct TFinish
    {
        TQ3ReportSystem *System;
        ~TFinish()
        {
            System->m_document.reset();
            emit System->RunFinished();
        }
    } finish{this};
    const auto onPage = [this](int page) { Status(StatusFormat, page); };

    // Straight to a file through the PDF back-end, with no window at all.
    if (!DoNativeOutput && DefaultDest == TQ3ReportDestination::File && RenderObject && !AllowSetup) {
        m_document = generate(onPage);
        RenderObject->Render(*m_document, OutputFileName);
        return;
    }

    m_reportDest = DefaultDest;
    m_reportFileName = OutputFileName;
    if (AllowSetup && OnOverrideSetup) {
        m_setupAccepted = false;
        OnOverrideSetup(this, TQ3OverrideMode::Show, m_setupForm);
        if (!m_setupAccepted)
            return;
    }

    m_document = generate(onPage);
    switch (m_reportDest) {
    case TQ3ReportDestination::Preview:
        if (!OnOverridePreview)
            throw EQ3Exception(QStringLiteral("Nessuna anteprima di stampa disponibile."));
        OnOverridePreview(this, TQ3OverrideMode::Show, m_previewForm);
        break;
    case TQ3ReportDestination::Printer:
        PrintDocument();
        break;
    case TQ3ReportDestination::File:
        SaveDocumentAsPdf(m_reportFileName);
        break;
    }
}

void TQ3ReportSystem::PrintDocument()
{
    if (!m_printer)
        throw EQ3Exception(QStringLiteral("Nessuna stampante disponibile."));
    m_printer->Print(*m_document, PrinterScaleX / 100.0, PrinterScaleY / 100.0,
                     [this](int page) { Status(StatusPrinting, page); });
}

void TQ3ReportSystem::SaveDocumentAsPdf(const QString &fileName)
{
    if (fileName.isEmpty())
        throw EQ3Exception(QStringLiteral("Nessun file indicato per la stampa."));
    TQ3RenderPDF fallback;
    const TQ3RenderPDF &render = RenderObject ? *RenderObject : fallback;
    render.Render(*m_document, fileName);
}
