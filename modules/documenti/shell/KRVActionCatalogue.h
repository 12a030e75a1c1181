#pragma once

#include <QList>
#include <QString>

// How an action brings up its window.
enum class TKRVActionShape {
    ShowReused,       // a non-modal child window, one instance, brought forward when open
    CreateOnly,       // a selection dialog: made once, shown by whoever needs it
    ModalPrint,       // a modal parameter dialog, then a print
    ModalStatistics,  // a modal statistics dialog, reset before showing
};

struct TKRVActionInfo
{
    QString Name;
    QString Category;
    QString Caption;
    QString Permission;   // empty: every user may run it
    TKRVActionShape Shape;
};

// The module's 36 actions, in the order of the action list.
const QList<TKRVActionInfo> &KRVActionCatalogue();
const TKRVActionInfo *KRVFindAction(const QString &name);

// A menu entry: an action (shown with its own caption unless another is
// given), or a separator when the action name is "-".
struct TKRVMenuEntry
{
    QString Action;
    QString Caption;
};

struct TKRVMenuInfo
{
    QString MainMenu;    // the module's main menu that holds the top item
    QString Name;        // the top item
    QString Caption;
    int GroupIndex;
    QList<TKRVMenuEntry> Entries;
};

// The five menus merged into the host, in merging order.
const QList<TKRVMenuInfo> &KRVMenus();
