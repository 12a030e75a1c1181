#include "uKRVScegliCartella.h"

TKRVScegliCartella::TKRVScegliCartella(const QString &name, const QString &title, QWidget *parent) : QFileDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setAcceptMode(QFileDialog::AcceptOpen);
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
    setOption(QFileDialog::DontUseNativeDialog);
    setSizeGripEnabled(true);
}

bool TKRVScegliCartella::Execute(QString &cartella)
{
    if (!m_ultima.isEmpty())
        setDirectory(m_ultima);
    if (exec() != QDialog::Accepted || selectedFiles().isEmpty())
        return false;
    m_ultima = selectedFiles().constFirst();
    cartella = m_ultima;
    return true;
}

TKRVCartellaFatturaPA::TKRVCartellaFatturaPA(QWidget *parent)
    : TKRVScegliCartella(QStringLiteral("DialogCartellaFatturaPA"),
                         QStringLiteral("Cartella della fattura elettronica"), parent)
{}

TKRVZipFatturePA::TKRVZipFatturePA(QWidget *parent)
    : TKRVSalvaFile(QStringLiteral("DialogZipFatturePA"), QStringLiteral("File ZIP delle fatture elettroniche"),
                    QStringLiteral("File ZIP (*.zip)"), QStringLiteral("zip"), parent)
{}
