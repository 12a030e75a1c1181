#include "Q3ReportStatus.h"

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>

TQ3ReportStatus::TQ3ReportStatus(TQ3ReportSystem *system, QWidget *parent)
    : QWidget(parent, Qt::Dialog | Qt::WindowTitleHint), m_lblStatus(new QLabel(this))
{
    setObjectName(QStringLiteral("Q3ReportStatus"));
    setWindowTitle(system->TitleStatus);
    m_lblStatus->setObjectName(QStringLiteral("lblStatus"));
    m_lblStatus->setMinimumWidth(260);
    auto layout = new QVBoxLayout(this);
    layout->addWidget(m_lblStatus);
    connect(system, &TQ3ReportSystem::StatusChanged, this, &TQ3ReportStatus::Update);
    connect(system, &TQ3ReportSystem::RunFinished, this, &TQ3ReportStatus::Finish);
    connect(system, &QObject::destroyed, this, &QObject::deleteLater);
}

QString TQ3ReportStatus::Text() const
{
    return m_lblStatus->text();
}

void TQ3ReportStatus::Update(const QString &text)
{
    if (!m_started.isValid())
        m_started.start();
    m_lblStatus->setText(text);
    if (!isVisible() && m_started.elapsed() >= DelayMs)
        show();
    if (isVisible())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void TQ3ReportStatus::Finish()
{
    m_started.invalidate();
    hide();
}
