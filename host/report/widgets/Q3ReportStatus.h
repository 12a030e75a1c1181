#pragma once

#include "Q3ReportSystem.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;

// The "Report Status" window: the system's status texts ("Generating page 3")
// for runs that last long enough to be noticed.
class Q3_EXPORT TQ3ReportStatus : public QWidget
{
    Q_OBJECT

public:
    // Shown once a run has lasted this long.
    static constexpr int DelayMs = 400;

    explicit TQ3ReportStatus(TQ3ReportSystem *system, QWidget *parent = nullptr);

    QString Text() const;

private:
    void Update(const QString &text);
    void Finish();

    QLabel *m_lblStatus;
    QElapsedTimer m_started;
};
