#pragma once

#include "Q3BackupJob.h"
#include "Q3Connection.h"

#include <QDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

// What the backup and the restore windows share: file inputs with their
// "Sfoglia..." button, a progress bar, the button that runs the job and
// "Chiudi". While the job runs the inputs are disabled and the window stays
// open; its end re-enables them.
class Q3_EXPORT TQ3BackupWindow : public QDialog
{
    Q_OBJECT

public:
    TQ3BackupWindow(const TQ3DatabaseTarget &target, const QString &title, const QString &name,
                    const QString &runCaption, const QString &runName, QWidget *parent);

    bool Running() const { return m_job->Running(); }
    TQ3BackupJob *Job() const { return m_job; }
    void reject() override;

protected:
    enum class TFileChoice { Open, Save };
    // A file input with its label and "Sfoglia..." button; for a server's
    // database the path is the server's, which the caption says.
    QLineEdit *AddFileField(const QString &caption, const QString &name, TFileChoice choice, const QString &filter);
    // Runs the work on its thread; the success's text goes to Succeeded,
    // a failure to an "Errore" box.
    void RunJob(TQ3BackupJob::TWork work);
    virtual void Run() = 0;
    virtual void Succeeded(const QString &text) = 0;

    const TQ3DatabaseTarget m_target;

private:
    void SetRunning(bool running);

    QFormLayout *m_form;
    QProgressBar *m_progress;
    QPushButton *m_run;
    QPushButton *m_close;
    TQ3BackupJob *m_job;
};

// The file input's text, trimmed; a warning when it is empty.
bool Q3FileFieldFilled(const QLineEdit *field, const QString &warning);
