#pragma once

#include <QFileDialog>

// The module's save dialogs: a file in an existing folder, a question before
// replacing a file, and the name chosen last while the module is loaded.
class TKRVSalvaFile : public QFileDialog
{
    Q_OBJECT

public:
    TKRVSalvaFile(const QString &name, const QString &title, const QString &filter, const QString &suffix,
                  QWidget *parent = nullptr);

    // Shows the dialog; answers whether a file was chosen, and which.
    bool Execute(QString &fileName);
    QString LastFileName() const { return m_lastFileName; }

    // Whether a name of a file that does not exist yet is confirmed first.
    void SetCreatePrompt(bool prompt) { m_createPrompt = prompt; }

    void accept() override;

private:
    QString m_lastFileName;
    bool m_createPrompt = false;
};
