#pragma once

#include "uKRVSalvaFile.h"

#include <QFileDialog>

// The module's dialog for choosing an existing folder, which keeps the folder
// chosen last while the module is loaded.
class TKRVScegliCartella : public QFileDialog
{
    Q_OBJECT

public:
    TKRVScegliCartella(const QString &name, const QString &title, QWidget *parent = nullptr);

    // Shows the dialog; answers whether a folder was chosen, and which.
    bool Execute(QString &cartella);
    QString UltimaCartella() const { return m_ultima; }

private:
    QString m_ultima;
};

// The folder the electronic invoices are written into.
class TKRVCartellaFatturaPA : public TKRVScegliCartella
{
    Q_OBJECT

public:
    explicit TKRVCartellaFatturaPA(QWidget *parent = nullptr);
};

// The ZIP file many electronic invoices are written into.
class TKRVZipFatturePA : public TKRVSalvaFile
{
    Q_OBJECT

public:
    explicit TKRVZipFatturePA(QWidget *parent = nullptr);
};
