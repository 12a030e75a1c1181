#pragma once

#include "Q3BackupWindow.h"

// "Backup": the database in use saved by Firebird's backup into the file the
// user chooses; at the end "Backup completato: <file> (<size>)."
class Q3_EXPORT TQ3BackupDialog : public TQ3BackupWindow
{
    Q_OBJECT

public:
    explicit TQ3BackupDialog(const TQ3DatabaseTarget &target, QWidget *parent = nullptr);

protected:
    void Run() override;
    void Succeeded(const QString &text) override;

private:
    QLineEdit *m_file;
};

// Opens the window on the database in use, modal.
Q3_EXPORT void Q3ApriBackup(const TQ3DatabaseTarget &target, QWidget *parent);
