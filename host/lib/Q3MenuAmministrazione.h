#pragma once

#include "Q3Global.h"

#include <QList>
#include <QMenu>
#include <QString>

#include <functional>

class TQ3MainForm;

// A command of the "Amministrazione" menu: the action's object name and
// caption, whether only an administrator may run it, and what it does.
struct TQ3ComandoAmministrazione
{
    QString Nome;
    QString Caption;
    bool SoloAmministratori = true;
    std::function<void()> Esegui;
};

// Adds the "Amministrazione" menu (object name "mnAmministrazione") to the main
// form, before "?", with the commands in their order (an empty name: a
// separator). A command for administrators asks whether the logged-in user is
// one (isAdministrator) each time it is chosen, and refuses the others with
// the message above ("Attenzione").
Q3_EXPORT QMenu *Q3CreaMenuAmministrazione(TQ3MainForm *form, const QList<TQ3ComandoAmministrazione> &comandi,
                                           const std::function<bool()> &isAdministrator);
