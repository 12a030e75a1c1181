#include "Q3BackupWindow.h"

#include "Q3AdminKit.h"
#include "Q3Messages.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QVBoxLayout>

TQ3BackupWindow::TQ3BackupWindow(const TQ3DatabaseTarget &target, const QString &title, const QString &name,
                                 const QString &runCaption, const QString &runName, QWidget *parent)
    : QDialog(parent), m_target(target), m_form(new QFormLayout), m_progress(new QProgressBar),
      m_run(new QPushButton(runCaption)), m_close(new QPushButton(QStringLiteral("Chiudi"))),
      m_job(new TQ3BackupJob(this))
{
    setWindowTitle(title);
    setObjectName(name);
    m_progress->setObjectName(QStringLiteral("pbAvanzamento"));
    m_progress->setRange(0, 1);
    m_progress->setValue(0);
    m_run->setObjectName(runName);
    m_run->setDefault(true);
    m_close->setObjectName(QStringLiteral("btnChiudi"));
    m_form->addRow(Q3Etichetta(QStringLiteral("Avanzamento:"), m_progress), m_progress);

    auto buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_run);
    buttons->addWidget(m_close);
    auto layout = new QVBoxLayout(this);
    layout->addLayout(m_form);
    layout->addLayout(buttons);
    setMinimumWidth(560);

    connect(m_run, &QPushButton::clicked, this, [this] { Run(); });
    connect(m_close, &QPushButton::clicked, this, &TQ3BackupWindow::reject);
    connect(m_job, &TQ3BackupJob::Progress, this, [this](int done, int tables) {
        m_progress->setRange(0, qMax(tables, 1));
        m_progress->setValue(done);
    });
    connect(m_job, &TQ3BackupJob::Finished, this, [this](bool succeeded, const QString &text) {
        SetRunning(false);
        if (succeeded) {
            m_progress->setValue(m_progress->maximum());
            Succeeded(text);
        } else {
            m_progress->setValue(0);
            Q3ShowError(text);
        }
    });
}

void TQ3BackupWindow::reject()
{
    if (!Running())
        QDialog::reject();
}

QLineEdit *TQ3BackupWindow::AddFileField(const QString &caption, const QString &name, TFileChoice choice,
                                         const QString &filter)
{
    QLineEdit *edit = Q3CampoTesto(name);
    auto browse = new QPushButton(QStringLiteral("Sfoglia..."));
    browse->setObjectName(QStringLiteral("btnSfoglia") + name.mid(3));
    auto row = new QHBoxLayout;
    row->addWidget(edit);
    row->addWidget(browse);
    const QString shown =
        m_target.IsRemote() ? caption + QStringLiteral(" (percorso sul server):") : caption + QLatin1Char(':');
    // The rows go before the progress bar.
    m_form->insertRow(m_form->rowCount() - 1, Q3Etichetta(shown, edit), row);
    connect(browse, &QPushButton::clicked, this, [this, edit, caption, choice, filter] {
        const QString file = choice == TFileChoice::Open
                                 ? QFileDialog::getOpenFileName(this, caption, edit->text(), filter)
                                 : QFileDialog::getSaveFileName(this, caption, edit->text(), filter);
        if (!file.isEmpty())
            edit->setText(file);
    });
    return edit;
}

void TQ3BackupWindow::RunJob(TQ3BackupJob::TWork work)
{
    SetRunning(true);
    m_progress->setRange(0, 0);
    m_job->Start(std::move(work));
}

void TQ3BackupWindow::SetRunning(bool running)
{
    for (QWidget *child : findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        if (child != m_progress)
            child->setEnabled(!running);
}

bool Q3FileFieldFilled(const QLineEdit *field, const QString &warning)
{
    if (!field->text().trimmed().isEmpty())
        return true;
    Q3ShowWarning(warning);
    return false;
}
