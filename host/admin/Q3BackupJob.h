#pragma once

#include "Q3Backup.h"

#include <QObject>
#include <QThread>

#include <functional>

// A backup or restore run on a thread of its own, so that the windows stay
// responsive: its progress and its end arrive as signals on the thread that
// started it.
class Q3_EXPORT TQ3BackupJob : public QObject
{
    Q_OBJECT

public:
    // The work: answers the text of its success, raises on failure.
    using TWork = std::function<QString(const TQ3BackupProgress &progress)>;

    explicit TQ3BackupJob(QObject *parent = nullptr);
    // A job still running is waited for: Firebird's service cannot be stopped halfway.
    ~TQ3BackupJob() override;

    void Start(TWork work);
    bool Running() const { return m_thread != nullptr; }
    // Waits for the end of the job, the events of the thread flowing meanwhile.
    void Wait();

signals:
    void Progress(int tablesDone, int tables, const QString &line);
    // The success's text, or the failure's message.
    void Finished(bool succeeded, const QString &text);

private:
    QThread *m_thread = nullptr;
};
