#include "Q3BackupDialog.h"

#include "Q3Messages.h"

#include <QDir>
#include <QFileInfo>

TQ3BackupDialog::TQ3BackupDialog(const TQ3DatabaseTarget &target, QWidget *parent)
    : TQ3BackupWindow(target, QStringLiteral("Backup"), QStringLiteral("Q3Backup"), QStringLiteral("Esegui backup"),
                      QStringLiteral("btnEseguiBackup"), parent)
{
    m_file = AddFileField(QStringLiteral("File di backup"), QStringLiteral("edtFileBackup"), TFileChoice::Save,
                          QStringLiteral("Backup di Quillo 3 (*.fbk)"));
    // A file of this computer's user; a server's path is the user's to tell.
    if (!target.IsRemote())
        m_file->setText(QDir(QDir::homePath()).filePath(Q3AutoBackupFileName(QDateTime::currentDateTime())));
}

void TQ3BackupDialog::Run()
{
    if (!Q3FileFieldFilled(m_file, QStringLiteral("Indicare il file di backup.")))
        return;
    const QString file = m_file->text().trimmed();
    if (QFileInfo::exists(file)
        && !Q3AskYesNo(QStringLiteral("Il file \"%1\" esiste già: sostituirlo con il nuovo backup?").arg(file)))
        return;
    const TQ3DatabaseTarget target = m_target;
    RunJob([target, file](const TQ3BackupProgress &progress) {
        const TQ3BackupResult made = Q3BackupDatabase(target, file, progress);
        return QStringLiteral("Backup completato: %1 (%2).").arg(made.File, Q3BackupSizeText(made.Size));
    });
}

void TQ3BackupDialog::Succeeded(const QString &text)
{
    Q3MessageBox(QStringLiteral("Informazioni"), text, TQ3MsgIcon::Information);
}

void Q3ApriBackup(const TQ3DatabaseTarget &target, QWidget *parent)
{
    TQ3BackupDialog dialog(target, parent);
    dialog.exec();
}
