#pragma once

// Driving the host's administration windows as a user would: buttons, check
// boxes, inputs, combo boxes, the small forms and file dialogs they open
// modally, and the rights a user holds.
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3WidgetTestKit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

#include <functional>

namespace Q3AdminTest {

using Q3Test::Click;
using Q3Test::Field;
using Q3Test::ShowPageOf;

inline void Click(QWidget *window, const QString &name)
{
    Click(Field<QAbstractButton>(window, name));
}

// Types into an input after selecting what it holds, one key per character,
// letters of any script as a keyboard of that script sends them.
inline void Type(QWidget *window, const QString &name, const QString &text)
{
    auto edit = Field<QLineEdit>(window, name);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    for (char32_t letter : text.toUcs4()) {
        const QString typed = QString::fromUcs4(&letter, 1);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
        QApplication::sendEvent(edit, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, typed);
        QApplication::sendEvent(edit, &release);
    }
}

// When the next modal dialog of that object name opens, runs the steps on it;
// a dialog the steps leave open is cancelled, so that the test goes on.
// Answers through the flag whether the dialog opened.
inline void WhenModal(const QString &name, const std::function<void(QDialog *)> &steps, bool *opened = nullptr)
{
    QTimer::singleShot(0, qApp, [name, steps, opened] {
        auto dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (opened)
            *opened = dialog && dialog->objectName() == name;
        if (!dialog)
            return;
        if (dialog->objectName() == name)
            steps(dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

// Fills the form's inputs in order and presses "OK"; answers whether the form closed.
inline bool FillAndConfirm(QDialog *form, const QList<std::pair<QString, QString>> &inputs)
{
    for (const auto &[name, text] : inputs)
        Type(form, name, text);
    Click(form, QStringLiteral("btnOK"));
    return !form->isVisible();
}

// The item of a tree, at any depth, whose first column shows the text.
inline QTreeWidgetItem *TreeItem(QTreeWidget *tree, const QString &text)
{
    const QList<QTreeWidgetItem *> found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

// Clicks the row of the list, as the user does.
inline void ClickRow(QAbstractItemView *view, const QModelIndex &index)
{
    ShowPageOf(view);
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(index).center());
}

inline void SelectUser(QWidget *window, const QString &name)
{
    auto list = Field<QTreeWidget>(window, QStringLiteral("lstUtenti"));
    const QList<QTreeWidgetItem *> items = list->findItems(name, Qt::MatchExactly);
    QVERIFY2(items.size() == 1, qPrintable(name));
    ClickRow(list, list->indexFromItem(items.first()));
    QCOMPARE(list->currentItem(), items.first());
}

inline void SelectRole(QWidget *window, const QString &name)
{
    auto list = Field<QListWidget>(window, QStringLiteral("lstRuoli"));
    const QList<QListWidgetItem *> items = list->findItems(name, Qt::MatchExactly);
    QVERIFY2(items.size() == 1, qPrintable(name));
    ClickRow(list, list->indexFromItem(items.first()));
}

inline QString CurrentRole(QWidget *window)
{
    QListWidgetItem *item = Field<QListWidget>(window, QStringLiteral("lstRuoli"))->currentItem();
    return item ? item->text() : QString();
}

inline QTreeWidgetItem *Right(QWidget *window, const QString &name)
{
    QTreeWidgetItem *item = TreeItem(Field<QTreeWidget>(window, QStringLiteral("treeDiritti")), name);
    if (!item)
        qFatal("no right %s", qPrintable(name));
    return item;
}

inline QCheckBox *RoleBox(QWidget *window, int idRuolo)
{
    return Field<QCheckBox>(window, QStringLiteral("chkRuolo%1").arg(idRuolo));
}

// Through the window "Utenti e ruoli": a new user, a new role (which it then
// shows), a user's new password; each form is expected to close.
inline void NewUser(QWidget *window, const QString &name, const QString &fullName)
{
    bool closed = false;
    WhenModal(QStringLiteral("Q3NuovoUtente"), [&](QDialog *form) {
        closed = FillAndConfirm(form, {{QStringLiteral("txtNomeUtente"), name},
                                       {QStringLiteral("txtNomeCompleto"), fullName}});
    });
    Click(window, QStringLiteral("btnNuovoUtente"));
    QVERIFY(closed);
}

inline void NewRole(QWidget *window, const QString &name)
{
    bool closed = false;
    WhenModal(QStringLiteral("Q3NuovoRuolo"), [&](QDialog *form) {
        closed = FillAndConfirm(form, {{QStringLiteral("txtNomeRuolo"), name}});
    });
    Click(window, QStringLiteral("btnNuovoRuolo"));
    QVERIFY(closed);
}

inline void SetPassword(QWidget *window, const QString &user, const QString &password)
{
    SelectUser(window, user);
    bool closed = false;
    WhenModal(QStringLiteral("Q3CambiaPassword"), [&](QDialog *form) {
        closed = FillAndConfirm(form, {{QStringLiteral("txtNuovaPassword"), password},
                                       {QStringLiteral("txtRipetiPassword"), password}});
    });
    Click(window, QStringLiteral("btnPasswordUtente"));
    QVERIFY(closed);
}

// Whether the user's roles grant the right, read from the tables as the
// module's check reads them at each command.
inline bool UserHolds(const TQ3TestDatabase &db, const QString &user, const QString &right)
{
    return db.Scalar(
                 QStringLiteral(
                     "SELECT COUNT(*) FROM UTENTI_RUOLI UR "
                     "JOIN ABILITAZIONI_RUOLI AR ON AR.IDRUOLO_UTENTE = UR.IDRUOLO_UTENTE "
                     "JOIN ABILITAZIONI_UTENTE A ON A.IDABILITAZIONE_UTENTE = AR.IDABILITAZIONE_UTENTE "
                     "WHERE UPPER(UR.USER_NAME) = UPPER(%1) AND A.ABILITAZIONE_UTENTE IN (%2, 'Controllo completo')")
                     .arg(QuotedStr(user), QuotedStr(right)))
               .toInt()
           > 0;
}

// The same by a name written as a literal.
inline void Click(QWidget *window, const char *name)
{
    Click(window, QString::fromLatin1(name));
}

inline void Type(QWidget *window, const char *name, const QString &text)
{
    Type(window, QString::fromLatin1(name), text);
}

inline QLineEdit *Edit(QWidget *window, const char *name)
{
    return Field<QLineEdit>(window, QString::fromLatin1(name));
}

// Chooses the combo box's entry whose data is the code.
inline void Choose(QWidget *window, const char *name, const QString &code)
{
    auto combo = Field<QComboBox>(window, QString::fromLatin1(name));
    combo->setCurrentIndex(combo->findData(code));
}

// Answers the file dialog the next click opens: the file's path typed in its
// name and Enter pressed.
inline void ChooseFileWhenShown(QObject *owner, const QString &file)
{
    auto timer = new QTimer(owner);
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, file] {
        auto dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        auto name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setText(file);
        QTest::keyClick(name, Qt::Key_Return);
    });
    timer->start();
}

// A picture file of one colour, twice as wide as tall; answers its path.
inline QString LogoFile(const QString &folder, const QColor &colour = QColor(200, 0, 0))
{
    QImage image(QSize(120, 60), QImage::Format_RGB32);
    image.fill(colour);
    const QString file = folder + QStringLiteral("/logo.png");
    image.save(file);
    return file;
}

} // namespace Q3AdminTest
