#pragma once

#include "KRVAzioni.h"

#include <QList>
#include <QString>

#include <optional>

// A menu entry: an action (shown with its own caption unless another is
// given), or a separator when it has no action.
struct TKRVMenuEntry
{
    std::optional<TKRVAzione> Azione;
    QString Caption{};
};

struct TKRVMenuInfo
{
    QString MainMenu; // the module's main menu that holds the top item
    QString Name;     // the top item
    QString Caption;
    int GroupIndex;
    QList<TKRVMenuEntry> Entries;
};

// The five menus merged into the host, in merging order.
const QList<TKRVMenuInfo> &KRVMenus();

struct TKRVToolBarInfo
{
    QString Name;
    QString Caption;
    QList<TKRVAzione> Azioni;
};

// The module's two toolbars.
const QList<TKRVToolBarInfo> &KRVToolBars();
