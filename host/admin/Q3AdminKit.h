#pragma once

#include "Q3Global.h"

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QWidget>

#include <functional>

// Building blocks of the administration windows.

// The label of an input: its buddy is the input, whose accessible name is the
// caption (without accelerator marks); the label is named "lbl" + the input's name.
Q3_EXPORT QLabel *Q3Etichetta(const QString &caption, QWidget *field);

// Before changes are left behind: asks the question ("Conferma", Yes/No/Cancel).
// Yes saves (salva answers whether it did), No drops them (abbandona, when
// given), Cancel stays. Answers whether the window may go on.
Q3_EXPORT bool Q3SalvaPrimaDiProseguire(const QString &domanda, const std::function<bool()> &salva,
                                        const std::function<void()> &abbandona = {});

// A one-line text input of that object name, at most maxLength characters (0: no limit).
Q3_EXPORT QLineEdit *Q3CampoTesto(const QString &name, int maxLength = 0);
