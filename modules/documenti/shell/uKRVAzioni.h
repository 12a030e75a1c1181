#pragma once

#include "KRVAzioni.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class IKRVMain;
class TKRVCartellaFatturaPA;
class TKRVZipFatturePA;
class TKRVSalvaExcel;
class TKRVSalvaPDF;

// The shell's one view of the module's actions and windows: one row an action
// (its object name, caption, right, icon, hint and the window it makes), the
// save dialogs the windows share, and the one call into a window that a named
// request of the host makes.

// How an action brings up its window.
enum class TKRVActionShape {
    ShowReused,      // a non-modal child window, one instance, brought forward when open
    CreateOnly,      // a selection dialog: made once, shown by whoever needs it
    ModalPrint,      // a modal parameter dialog, then a print
    ModalStatistics, // a modal statistics dialog, reset before showing
};

// How the main object makes, prepares and follows up the window of an action.
struct TKRVFormClass
{
    std::function<QWidget *(IKRVMain &main)> Create;
    // Modal dialogs: run before every showing (a reset to defaults).
    std::function<void(QWidget *form)> Prepare;
    // Modal dialogs: run when the dialog closes with OK.
    std::function<void(QWidget *form)> Accepted;
};

struct TKRVActionInfo
{
    TKRVAzione Azione;
    QString Name; // the action's object name
    QString Category;
    QString Caption;
    QString Permission; // empty: every user may run it
    TKRVActionShape Shape;
    int Image; // one of the module's images (KRVImg...)
    TKRVFormClass Form;
    // The hint of the action's toolbar button, when it has one.
    QString HintTitle{};
    QString HintNote{};
};

// The module's 36 actions, in the order of the action list.
const QList<TKRVActionInfo> &KRVActionCatalogue();
const TKRVActionInfo &KRVAction(TKRVAzione azione);
// The action of that object name, or null.
const TKRVActionInfo *KRVFindAction(const QString &name);

// The save and folder dialogs of the module's windows, each made on first use and kept
// until the main object goes.
class TKRVDialoghiSalvataggio
{
public:
    TKRVDialoghiSalvataggio();
    ~TKRVDialoghiSalvataggio();
    TKRVDialoghiSalvataggio(const TKRVDialoghiSalvataggio &) = delete;
    TKRVDialoghiSalvataggio &operator=(const TKRVDialoghiSalvataggio &) = delete;

    TKRVSalvaPDF *PDF();
    TKRVSalvaExcel *Excel();
    TKRVCartellaFatturaPA *CartellaFatturaPA();
    TKRVZipFatturePA *ZipFatturePA();

private:
    std::unique_ptr<TKRVSalvaPDF> m_pdf;
    std::unique_ptr<TKRVSalvaExcel> m_excel;
    std::unique_ptr<TKRVCartellaFatturaPA> m_cartellaFatturaPA;
    std::unique_ptr<TKRVZipFatturePA> m_zipFatturePA;
};

// The invoice editor on the invoice of that key, made recurring once shown.
void KRVApriFatturaCiclica(QWidget *editor, int id);
