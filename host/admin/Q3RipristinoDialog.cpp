#include "Q3RipristinoDialog.h"

#include "Q3DatabaseFile.h"
#include "Q3Messages.h"

TQ3RipristinoDialog::TQ3RipristinoDialog(const TQ3DatabaseTarget &target, QWidget *parent)
    : TQ3BackupWindow(target, QStringLiteral("Ripristino"), QStringLiteral("Q3Ripristino"),
                      QStringLiteral("Esegui ripristino"), QStringLiteral("btnEseguiRipristino"), parent)
{
    m_backup = AddFileField(QStringLiteral("File di backup"), QStringLiteral("edtFileBackup"), TFileChoice::Open,
                            QStringLiteral("Backup di Quillo 3 (*.fbk)"));
    m_database = AddFileField(QStringLiteral("Nuovo file di database"), QStringLiteral("edtNuovoDatabase"),
                              TFileChoice::Save, QStringLiteral("Database di Quillo 3 (*.fdb)"));
}

void TQ3RipristinoDialog::Run()
{
    if (!Q3FileFieldFilled(m_backup, QStringLiteral("Indicare il file di backup da ripristinare."))
        || !Q3FileFieldFilled(m_database, QStringLiteral("Indicare il nuovo file di database.")))
        return;
    m_chosen.clear();
    const TQ3DatabaseTarget target = m_target;
    const QString backup = m_backup->text().trimmed();
    const QString database = m_database->text().trimmed();
    RunJob([target, backup, database](const TQ3BackupProgress &progress) {
        return Q3RestoreDatabase(target, backup, database, progress).Database;
    });
}

void TQ3RipristinoDialog::Succeeded(const QString &text)
{
    if (!Q3AskYesNo(QStringLiteral("Ripristino completato nel nuovo database \"%1\".\n"
                                   "Usare il database ripristinato al prossimo avvio di Quillo 3? "
                                   "Il database in uso resta invariato.")
                        .arg(text)))
        return;
    ImpostaQ3DatabaseAllAvvio(text);
    m_chosen = text;
    Q3MessageBox(QStringLiteral("Informazioni"),
                 QStringLiteral("Al prossimo avvio Quillo 3 userà il database ripristinato \"%1\".\n"
                                "Per scegliere un altro database: quillo3 --database <file>")
                     .arg(text),
                 TQ3MsgIcon::Information);
}

void Q3ApriRipristino(const TQ3DatabaseTarget &target, QWidget *parent)
{
    TQ3RipristinoDialog dialog(target, parent);
    dialog.exec();
}
