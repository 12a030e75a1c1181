#pragma once

// Driving any window as a user would: its pages, buttons and inputs.
#include <QAbstractButton>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QtTest>

namespace Q3Test {

// Brings the page that holds the input to the front, as the user does by
// choosing its tab; a hidden or disabled tab cannot be chosen.
inline void ShowPageOf(QWidget *input)
{
    for (QWidget *page = input; page && page->parentWidget(); page = page->parentWidget()) {
        auto stack = qobject_cast<QStackedWidget *>(page->parentWidget());
        auto tabs = stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
        const int index = tabs ? tabs->indexOf(page) : -1;
        if (index >= 0 && tabs->isTabVisible(index) && tabs->isTabEnabled(index))
            tabs->setCurrentIndex(index);
    }
}

// Clicks the button as the user does; a disabled or hidden one cannot be
// clicked, so a test that tries fails there.
inline void Click(QAbstractButton *button)
{
    ShowPageOf(button);
    if (!button->isEnabled() || !button->isVisibleTo(button->window())) {
        QTest::qFail(qPrintable(QStringLiteral("the button %1 cannot be clicked").arg(button->objectName())), __FILE__,
                     __LINE__);
        return;
    }
    button->click();
}

template <typename T = QLineEdit>
T *Field(QWidget *window, const QString &name)
{
    auto field = window->findChild<T *>(name);
    if (!field)
        qFatal("no field %s", qPrintable(name));
    return field;
}

} // namespace Q3Test
