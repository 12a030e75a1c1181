#pragma once

#include <QString>
#include <QToolBar>
#include <QWidget>

#include <functional>

// The row of buttons "A" to "Z" and "*" that lists the customers by the first
// letter of their name; "*" stands for all of them.
class TKRVBarraLettere : public QToolBar
{
    Q_OBJECT

public:
    // The handler receives the letter of the button pressed and runs under the
    // failure guard.
    TKRVBarraLettere(QWidget *owner, const std::function<void(const QString &letter)> &handler);

    static QString Alfabeto() { return QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ*"); }
};
