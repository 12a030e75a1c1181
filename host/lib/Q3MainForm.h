#pragma once

#include "Q3Global.h"

#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>

class QMdiSubWindow;

// The host's main window: a multi-document frame with its own top menus
// "File", "Anagrafiche", "Documenti", "Tabelle" and "?", into which modules
// merge theirs, a toolbar dock and a status bar with the user and the database.
class TQ3Connection;

class Q3_EXPORT TQ3MainForm : public QMainWindow
{
    Q_OBJECT

public:
    explicit TQ3MainForm(QWidget *parent = nullptr);
    ~TQ3MainForm() override;

    QMdiArea *MdiArea() const { return m_mdiArea; }

    // The host's top item with this caption (without accelerator marks), or null.
    QMenu *TopMenu(const QString &caption) const;
    // Adds a module's own top item before the "?" menu.
    void InsertTopMenu(QMenu *menuItem);

    void SetStatusInfo(const QString &userName, const QString &database);

private:
    void About();

    QMdiArea *m_mdiArea;
    QMenu *m_helpMenu;
    QLabel *m_userLabel;
    QLabel *m_databaseLabel;
};

// The application's main form, null until the host has made it.
Q3_EXPORT TQ3MainForm *GetQ3MainForm();

// Opens a module's connection on the database of the host's connection (the
// one the main form owns); leaves it as it is when there is no main form.
Q3_EXPORT void Q3UsaConnessioneHost(TQ3Connection *connection);

// Shows a module window as a child of the main form (a window of its own when
// there is no main form); brings it forward when it is already shown.
Q3_EXPORT void ShowQ3ChildForm(QWidget *form);

// Closes a module window, with the child frame that holds it.
Q3_EXPORT bool CloseQ3ChildForm(QWidget *form);
