#pragma once

#include "Q3Global.h"

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QWidget>

// Building blocks of the administration windows.

// The label of an input: its buddy is the input, whose accessible name is the
// caption (without accelerator marks); the label is named "lbl" + the input's name.
Q3_EXPORT QLabel *Q3Etichetta(const QString &caption, QWidget *field);

// A one-line text input of that object name, at most maxLength characters (0: no limit).
Q3_EXPORT QLineEdit *Q3CampoTesto(const QString &name, int maxLength = 0);
