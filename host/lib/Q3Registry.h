#pragma once

#include "Q3Packages.h"

#include <QList>
#include <QMenu>
#include <QMenuBar>
#include <QSize>
#include <QToolBar>

#include <functional>

// A top menu item with this group index merges into the host's top item of the
// same caption; any other index adds it as a top item of its own.
inline constexpr int Q3MergeGroupIndex = 100;
Q3_EXPORT void SetMenuGroupIndex(QMenu *menuItem, int groupIndex);
Q3_EXPORT int MenuGroupIndex(const QMenu *menuItem);

// Merges one top menu item with its entries into the host's main menu.
Q3_EXPORT void MergeAdvMenuItems(QObject *hostApplication, const QString &topItemName, QMenu *menuItem, bool merge);
// Merges every top item of a module's main menu.
Q3_EXPORT void MergeAdvMenu(QObject *hostApplication, QMenuBar *mainMenu);

// The host's common toolbar looks.
enum class TQ3CommonToolBars { Documenti = 0, Anagrafiche = 1, Tabelle = 2 };

struct Q3_EXPORT TCommonToolBarProperties
{
    QSize IconSize{24, 24};
    Qt::ToolButtonStyle ButtonStyle = Qt::ToolButtonTextUnderIcon;
    Qt::ToolBarArea Area = Qt::TopToolBarArea;
    bool Movable = true;
};

Q3_EXPORT void GetQ3CommonToolBarProperties(TQ3CommonToolBars kind, TCommonToolBarProperties &properties);
// Adds a toolbar to the host's toolbar dock, styled with the given properties.
Q3_EXPORT void MergeAdvToolBarItems(QObject *hostApplication, const TCommonToolBarProperties &properties,
                                    QToolBar *toolBar);

// A toolbar button's rich hint: a title and a note.
Q3_EXPORT void SetRichHint(QWidget *button, const QString &title, const QString &note);
Q3_EXPORT QString RichHintTitle(const QWidget *button);
Q3_EXPORT QString RichHintNote(const QWidget *button);
