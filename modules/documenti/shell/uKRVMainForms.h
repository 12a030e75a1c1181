#pragma once

#include <QHash>
#include <QString>
#include <QWidget>

#include <functional>

class TKRVMain;

// How the main object makes, prepares and follows up the window of an action.
struct TKRVFormClass
{
    std::function<QWidget *(TKRVMain &main)> Create;
    // Modal dialogs: run before every showing (a reset to defaults).
    std::function<void(QWidget *form)> Prepare;
    // Modal dialogs: run when the dialog closes with OK.
    std::function<void(TKRVMain &main, QWidget *form)> Accepted;
};

// The windows built so far, by the action that opens them. An action without
// an entry has no window yet and stays disabled.
const QHash<QString, TKRVFormClass> &KRVFormClasses();
