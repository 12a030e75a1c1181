#pragma once

#include <QHash>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class IKRVMain;
class TKRVSalvaExcel;
class TKRVSalvaPDF;

// The shell's one view of the module's windows: which window each action
// makes, the save dialogs the windows share, and the one call into a window
// that a named request of the host makes.

// How the main object makes, prepares and follows up the window of an action.
struct TKRVFormClass
{
    std::function<QWidget *(IKRVMain &main)> Create;
    // Modal dialogs: run before every showing (a reset to defaults).
    std::function<void(QWidget *form)> Prepare;
    // Modal dialogs: run when the dialog closes with OK.
    std::function<void(QWidget *form)> Accepted;
};

// The windows built so far, by the action that opens them. An action without
// an entry has no window yet and stays disabled.
const QHash<QString, TKRVFormClass> &KRVFormClasses();

// The save dialogs of the module's windows, each made on first use and kept
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

private:
    std::unique_ptr<TKRVSalvaPDF> m_pdf;
    std::unique_ptr<TKRVSalvaExcel> m_excel;
};

// The invoice editor on the invoice of that key, made recurring once shown.
void KRVApriFatturaCiclica(QWidget *editor, int id);
