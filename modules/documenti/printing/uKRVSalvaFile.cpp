#include "uKRVSalvaFile.h"

#include "Q3Messages.h"

#include <QDir>
#include <QLineEdit>

TKRVSalvaFile::TKRVSalvaFile(const QString &name, const QString &title, const QString &filter, const QString &suffix,
                             QWidget *parent)
    : QFileDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setNameFilter(filter);
    setDefaultSuffix(suffix);
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setOption(QFileDialog::DontUseNativeDialog);
    setSizeGripEnabled(true);
}

bool TKRVSalvaFile::Execute(QString &fileName)
{
    if (!m_lastFileName.isEmpty())
        selectFile(m_lastFileName);
    if (exec() != QDialog::Accepted || selectedFiles().isEmpty())
        return false;
    m_lastFileName = selectedFiles().constFirst();
    fileName = m_lastFileName;
    return true;
}

void TKRVSalvaFile::accept()
{
    const QLineEdit *name = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (name && !name->text().isEmpty()) {
        const QFileInfo chosen(QDir(directory()).absoluteFilePath(name->text()));
        if (!chosen.isDir() && !chosen.dir().exists()) {
            Q3MessageBox(windowTitle(),
                         chosen.absolutePath()
                             + QStringLiteral("\nIl percorso non esiste.\nVerificare che il percorso "
                                              "indicato sia corretto."),
                         TQ3MsgIcon::Warning);
            return;
        }
        QString file = chosen.absoluteFilePath();
        if (!defaultSuffix().isEmpty() && chosen.suffix().isEmpty())
            file += QLatin1Char('.') + defaultSuffix();
        if (m_createPrompt && !chosen.isDir() && !QFileInfo::exists(file)
            && Q3MessageBox(windowTitle(), file + QStringLiteral("\nIl file non esiste.\nCrearlo?"),
                            TQ3MsgIcon::Question, TQ3MsgButtons::YesNo)
                   != TQ3MsgResult::Yes)
            return;
    }
    QFileDialog::accept();
}
