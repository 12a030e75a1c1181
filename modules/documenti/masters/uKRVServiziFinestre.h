#pragma once

#include "KRVAzioni.h"
#include "Q3Connection.h"

#include <QDialog>
#include <QSqlDatabase>
#include <QString>
#include <QWidget>

class IKRVStampeHost;
class TKRVCartellaFatturaPA;
class TKRVSalvaExcel;
class TKRVSalvaPDF;
class TKRVZipFatturePA;
class TQ3Dataset;

// What the module's windows ask of its main object, and all they know of it:
// running its actions and the windows those keep, its datasets, its database
// session, what its prints need and the save dialogs the windows share.
class IKRVMain
{
public:
    virtual ~IKRVMain() = default;

    // Runs an action as a menu entry would.
    virtual void Run(TKRVAzione azione) = 0;
    // The window an action keeps, or null when it has none now.
    virtual QWidget *Form(TKRVAzione azione) const = 0;
    template <typename T>
    T *FormAs(TKRVAzione azione) const
    {
        return qobject_cast<T *>(Form(azione));
    }
    // Shows the selection dialog that the action keeps; answers it when the
    // user chose OK, null otherwise.
    template <typename T>
    T *Selezione(TKRVAzione azione)
    {
        Run(azione);
        T *dialog = FormAs<T>(azione);
        return dialog && dialog->exec() == QDialog::Accepted ? dialog : nullptr;
    }

    // The module's master datasets (adsAliquoteIVA, adsClienti, ...), on ModADOConn.
    virtual TQ3Dataset *Dataset(const QString &name) const = 0;
    virtual TQ3Connection *ModADOConn() const = 0;
    // The module database session, which the windows hand to the core services.
    QSqlDatabase Sessione() const { return ModADOConn()->Database(); }
    // The report project and the report datasets, as the prints use them.
    virtual IKRVStampeHost &Stampe() = 0;
    // The save dialog of every save-as-PDF command.
    virtual TKRVSalvaPDF *SaveDialogPDF() = 0;
    // The save dialog of the workbook exports.
    virtual TKRVSalvaExcel *SaveDialogExcel() = 0;
    // The folder dialog of the electronic invoices.
    virtual TKRVCartellaFatturaPA *FolderDialogFatturaPA() = 0;
    virtual TKRVZipFatturePA *ZipDialogFatturePA() = 0;
};
