#include "Q3Report.h"

#include "Q3Exception.h"

#include <QFile>
#include <QFileInfo>

TQ3ReportProject::TQ3ReportProject(QObject *owner) : QObject(owner) {}

void TQ3ReportProject::Open()
{
    QFile file(m_projectFile);
    if (!file.open(QIODevice::ReadOnly))
        throw EQ3Exception(QStringLiteral("Impossibile aprire il file delle stampe \"%1\": %2")
                               .arg(m_projectFile, file.errorString()));
    const auto reports = Q3ReadReportProject(file.readAll(), QFileInfo(m_projectFile).absolutePath());
    m_reports.clear();
    m_order.clear();
    for (const auto &report : reports) {
        m_reports.insert(report->Name, report);
        m_order << report->Name;
    }
    m_active = true;
}

void TQ3ReportProject::Close()
{
    m_reports.clear();
    m_order.clear();
    m_active = false;
}

QStringList TQ3ReportProject::ReportNames() const
{
    return m_order;
}

std::shared_ptr<const TQ3ReportLayout> TQ3ReportProject::Report(const QString &name) const
{
    return m_reports.value(name);
}

void TQ3ReportProject::RegisterConnection(const QString &name, IQ3ReportData *data)
{
    m_connections.insert(name, data);
}

std::unique_ptr<TQ3ReportDocument> TQ3ReportProject::Generate(const QString &name,
                                                              const std::function<void(int)> &onPage) const
{
    if (!m_active)
        throw EQ3Exception(QStringLiteral("Il progetto delle stampe non è aperto."));
    const auto layout = Report(name);
    if (!layout)
        throw EQ3Exception(QStringLiteral("Il report \"%1\" non esiste nel progetto delle stampe.").arg(name));
    TQ3ReportContext context;
    for (const QString &connection : layout->Connections)
        context.Connections.insert(connection, m_connections.value(connection));
    context.Parameters = m_parameters;
    return std::make_unique<TQ3ReportDocument>(layout, context, onPage);
}

void TQ3ReportProject::ExecuteReport(const QString &name)
{
    if (!m_engine)
        throw EQ3Exception(QStringLiteral("Il progetto delle stampe non ha un motore di stampa."));
    m_engine->Execute([this, &name](const std::function<void(int)> &onPage) { return Generate(name, onPage); });
}
