#pragma once

#include "Q3BackupWindow.h"

// "Ripristino": a backup restored into a new database file, never over an
// existing file or the database in use, and checked. At the end the user may
// choose the restored database for the next start: the window says how to
// start on it, and the database in use stays as it is.
class Q3_EXPORT TQ3RipristinoDialog : public TQ3BackupWindow
{
    Q_OBJECT

public:
    explicit TQ3RipristinoDialog(const TQ3DatabaseTarget &target, QWidget *parent = nullptr);

    // The restored database the user chose to start on, or nothing.
    QString DatabaseScelto() const { return m_chosen; }

protected:
    void Run() override;
    void Succeeded(const QString &text) override;

private:
    QLineEdit *m_backup;
    QLineEdit *m_database;
    QString m_chosen;
};

// Opens the window next to the database in use, modal.
Q3_EXPORT void Q3ApriRipristino(const TQ3DatabaseTarget &target, QWidget *parent);
