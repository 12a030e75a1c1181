#pragma once

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QString>
#include <QToolBar>
#include <QWidget>

#include <functional>

// Building blocks shared by the module's editors, search lists and selection
// dialogs.

// A toolbar whose buttons show their captions beside their icons.
QToolBar *KRVCreaToolBar(QWidget *owner, const QString &name);

// An action of a window, named for tests and screen readers; its handler runs
// under the failure guard, so a failure is shown and the window stays as it was.
QAction *KRVCreaAzione(QWidget *owner, const QString &name, const QString &caption, int image,
                       std::function<void()> handler);

// The label of an input: its buddy, and the input's accessible name.
QLabel *KRVEtichetta(const QString &caption, QWidget *field);

// A text input of at most maxLength characters (0: no limit), typed in upper
// case when asked.
QLineEdit *KRVCampoTesto(const QString &name, int maxLength = 0, bool upperCase = false);

// Whether a search may run with the text: when it holds characters that
// cannot reach the database, says which ("Attenzione") and answers false.
bool KRVTestoCercabile(const QString &testo);

// The refusal of the first text input of the window (a line or a memo) that
// holds characters that cannot reach the database, named by its label, or an
// empty text.
QString KRVCampoNonAmmesso(const QWidget *window);

// The refusal of a text, whose label names it, holding characters that cannot
// reach the database, or an empty text.
QString KRVTestoNonAmmesso(const QString &etichetta, const QString &testo);

// Whether the current user holds the right (an empty name needs none); when
// not, says so ("Attenzione") and answers false.
bool KRVVerificaPermesso(const QString &permesso);

// The module database session, for the window parts that are not handed the
// main object (selection dialogs, the search toolbar, category boxes, the
// permission check): the main object's ModADOConn, found through the host's
// module registry. Raises EQ3Exception when the module is not loaded.
QSqlDatabase KRVSessioneModulo();
