#include "Q3BackupJob.h"

#include "Q3Exception.h"
#include "Q3Guards.h"

#include <QEventLoop>

TQ3BackupJob::TQ3BackupJob(QObject *parent) : QObject(parent) {}

TQ3BackupJob::~TQ3BackupJob()
{
    if (m_thread) {
        m_thread->wait();
        delete m_thread;
    }
}

void TQ3BackupJob::Start(TWork work)
{
    m_thread = QThread::create([this, work = std::move(work)] {
        bool succeeded = true;
        QString text;
        try {
            text = work([this](int done, int tables, const QString &line) { emit Progress(done, tables, line); });
        } catch (const std::exception &e) {
            succeeded = false;
            text = ExceptionMessage(e);
        } catch (...) {
            succeeded = false;
            text = QString::fromUtf8(Q3MsgErroreImprevisto);
        }
        QMetaObject::invokeMethod(
            this,
            [this, succeeded, text] {
                m_thread->wait();
                delete m_thread;
                m_thread = nullptr;
                emit Finished(succeeded, text);
            },
            Qt::QueuedConnection);
    });
    m_thread->start();
}

void TQ3BackupJob::Wait()
{
    if (!Running())
        return;
    QEventLoop loop;
    connect(this, &TQ3BackupJob::Finished, &loop, &QEventLoop::quit);
    loop.exec();
}
