#include "Q3Report.h"

#include "Q3Exception.h"

#include <QFile>

TQ3ReportProject::TQ3ReportProject(QObject *owner) : QObject(owner) {}

void TQ3ReportProject::Open()
{
    QFile file(m_projectFile);
    if (!file.open(QIODevice::ReadOnly))
        throw EQ3Exception(QStringLiteral("Impossibile aprire il file delle stampe \"%1\": %2")
                               .arg(m_projectFile, file.errorString()));
    m_content = file.readAll();
    m_active = true;
}

void TQ3ReportProject::Close()
{
    m_content.clear();
    m_active = false;
}
