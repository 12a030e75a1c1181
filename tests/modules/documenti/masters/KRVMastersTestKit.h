#pragma once

// Driving the master-data windows as a user would: actions, inputs, grid rows,
// and the message boxes they show.
#include "KRVTestModule.h"
#include "Q3Messages.h"
#include "Q3Utils.h"
#include "Q3WidgetTestKit.h"
#include "uKRVGrigliaRisultati.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMdiSubWindow>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QToolBar>
#include <QtTest>

#include <functional>

namespace KRVTest {

// The windows show money and percentages in the Italian way.
inline void UseItalianLocale()
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
}

inline QAction *Action(QWidget *window, const QString &name)
{
    auto action = window->findChild<QAction *>(name);
    if (!action)
        qFatal("no action %s", qPrintable(name));
    return action;
}

// Runs the command as the user does; a user cannot run a disabled one, so a
// test that tries fails there.
inline void Trigger(QAction *action)
{
    if (!action->isEnabled()) {
        QTest::qFail(qPrintable(QStringLiteral("the command %1 is disabled").arg(action->objectName())), __FILE__,
                     __LINE__);
        return;
    }
    action->trigger();
}

inline void Trigger(QWidget *window, const QString &name)
{
    Trigger(Action(window, name));
}

using Q3Test::Click;
using Q3Test::Field;
using Q3Test::ShowPageOf;

// Replaces the text of an input by typing, as the user does.
inline void Type(QWidget *field, const QString &text)
{
    if (auto edit = qobject_cast<QLineEdit *>(field))
        edit->selectAll();
    else if (auto spin = qobject_cast<QAbstractSpinBox *>(field))
        spin->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

inline void PressEnter(QWidget *field)
{
    QTest::keyClick(field, Qt::Key_Return);
}

// Runs a main-object action and answers the window it keeps.
template <typename T>
T *Run(TKRVTestModule &module, const QString &action)
{
    Trigger(module.Main->Action(action));
    return module.Main->FormAs<T>(action);
}

// The texts a column shows, top to bottom.
inline QStringList Column(const TKRVGrigliaRisultati *grid, int column)
{
    QStringList texts;
    for (int row = 0; row < grid->rowCount(); ++row)
        texts << grid->Testo(row, column);
    return texts;
}

// The same for the statistics windows' grids.
inline QStringList Column(const QTableWidget *grid, int column)
{
    QStringList texts;
    for (int row = 0; row < grid->rowCount(); ++row)
        texts << (grid->item(row, column) ? grid->item(row, column)->text() : QString());
    return texts;
}

inline QStringList Titles(const TKRVGrigliaRisultati *grid)
{
    QStringList titles;
    for (int column = 0; column < grid->columnCount(); ++column)
        titles << grid->Titolo(column);
    return titles;
}

// The horizontal alignment a cell is drawn with.
inline Qt::Alignment Alignment(const TKRVGrigliaRisultati *grid, int row, int column)
{
    return Qt::Alignment::fromInt(grid->model()->index(row, column).data(Qt::TextAlignmentRole).toInt())
           & Qt::AlignHorizontal_Mask;
}

// Where a cell is drawn in the grid's viewport.
inline QRect CellRect(const TKRVGrigliaRisultati *grid, int row, int column)
{
    return grid->visualRect(grid->model()->index(row, column));
}

// The captions of a toolbar's buttons, left to right.
inline QStringList Captions(const QToolBar *bar)
{
    QStringList captions;
    for (QAction *action : bar->actions()) {
        if (!action->isSeparator() && !action->text().isEmpty())
            captions << action->text();
    }
    return captions;
}

// Shows the dialog modally, as its callers do, and acts on it while it is
// open; a dialog the actions left open is cancelled so that the test goes on.
inline int ShowModal(QDialog *dialog, const std::function<void()> &whileOpen)
{
    QTimer::singleShot(0, dialog, [dialog, whileOpen] {
        whileOpen();
        if (dialog->isVisible())
            dialog->reject();
    });
    return dialog->exec();
}

inline int RowOf(const TKRVGrigliaRisultati *grid, int column, const QString &text)
{
    for (int row = 0; row < grid->rowCount(); ++row) {
        if (grid->Testo(row, column) == text)
            return row;
    }
    return -1;
}

inline void SelectRow(TKRVGrigliaRisultati *grid, int row)
{
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, CellRect(grid, row, 1).center());
}

inline void DoubleClickRow(TKRVGrigliaRisultati *grid, int row)
{
    const QPoint where = CellRect(grid, row, 1).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, where);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, where);
}

inline bool SameMessage(const TQ3Message &message, const QString &title, const QString &text, TQ3MsgIcon icon,
                        TQ3MsgButtons buttons)
{
    const bool same =
        message.Title == title && message.Text == text && message.Icon == icon && message.Buttons == buttons;
    if (!same)
        qWarning("box was: %s / %s / icon %d / buttons %d", qPrintable(message.Title), qPrintable(message.Text),
                 int(message.Icon), int(message.Buttons));
    return same;
}

// Closes a child window through its frame, as the frame's close box does, and
// lets the freed window go.
inline void CloseFrame(QWidget *window)
{
    auto frame = qobject_cast<QMdiSubWindow *>(window->parentWidget());
    if (frame)
        frame->close();
    else
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline void ProcessDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Saves the editor's new record while another workstation inserts the same
// code into the table at that very moment and takes the key this record
// expected: the save fails, and the record, stored nowhere, goes by the
// other one's key. Deleting it ("Elimina", confirmed when asked) must leave
// the other workstation's row alone and blank the window.
template <typename TEditor>
void DeleteAfterAFailedSaveBesideAnotherWorkstation(const TKRVTestModule &module, TEditor *editor,
                                                    TQ3RecordingResponder &boxes, const QString &table,
                                                    const QString &keyColumn, const QString &otherInsert)
{
    const TQ3TestDatabase &db = module.Database;
    const int expected = GetLastGeneratorValue(QStringLiteral("GN_") + keyColumn, db.Db()) + 1;
    db.InsertOfAnotherWorkstationAtNextInsert(table, otherInsert);
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(boxes.Messages().size(), 1);
    QCOMPARE(boxes.Messages().at(0).Title, QStringLiteral("Errore"));
    QVERIFY(!editor->NewRecord());
    QCOMPARE(editor->IdRecord(), expected);
    const QString others = QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(table, keyColumn);
    const QStringList before = db.Rows(others);
    QCOMPARE(db.Rows(QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3").arg(keyColumn, table).arg(expected)).size(), 1);

    boxes.Enqueue(TQ3MsgResult::Yes);
    Trigger(editor, QStringLiteral("actElimina"));
    QCOMPARE(db.Rows(others), before);
    QVERIFY(editor->NewRecord());
}

// Saves the editor's new record while another workstation's insert into the
// table takes the key the generator would have given next; then changes the
// record, saves it again and deletes it ("Elimina", confirmed). The record
// must go by its own row's key throughout, and the other workstation's row
// stay as it was.
template <typename TEditor>
void SaveChangeDeleteBesideAnotherWorkstation(const TKRVTestModule &module, TEditor *editor, const QString &table,
                                              const QString &keyColumn, const QString &otherInsert,
                                              const std::function<void()> &change)
{
    const TQ3TestDatabase &db = module.Database;
    const auto row = [&](int key) {
        return db.Rows(QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(table, keyColumn).arg(key));
    };
    const int expected = GetLastGeneratorValue(QStringLiteral("GN_") + keyColumn, db.Db()) + 1;
    db.InsertOfAnotherWorkstationAtNextInsert(table, otherInsert);
    Trigger(editor, QStringLiteral("actSalva"));
    const QStringList other = row(expected);
    QCOMPARE(other.size(), 1);
    QCOMPARE(editor->IdRecord(), expected + 1);
    const QStringList own = row(expected + 1);
    QCOMPARE(own.size(), 1);

    change();
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(row(expected), other);
    QCOMPARE(row(expected + 1).size(), 1);
    QVERIFY(row(expected + 1) != own);

    Trigger(editor, QStringLiteral("actElimina"));
    QVERIFY(editor->NewRecord());
    QCOMPARE(row(expected), other);
    QVERIFY(row(expected + 1).isEmpty());
}

} // namespace KRVTest

#define KRV_COMPARE_BOX(message, title, text, icon, buttons)                                                           \
    QVERIFY(KRVTest::SameMessage((message), QStringLiteral(title), QStringLiteral(text), TQ3MsgIcon::icon,             \
                                 TQ3MsgButtons::buttons))
