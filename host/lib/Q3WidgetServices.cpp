#include "Q3WidgetServices.h"

#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Utils.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

namespace {

QMessageBox::Icon DialogIcon(TQ3MsgIcon icon)
{
    switch (icon) {
    case TQ3MsgIcon::Information:
        return QMessageBox::Information;
    case TQ3MsgIcon::Warning:
        return QMessageBox::Warning;
    case TQ3MsgIcon::Error:
        return QMessageBox::Critical;
    case TQ3MsgIcon::Question:
        return QMessageBox::Question;
    case TQ3MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

TQ3MsgResult ShowDialog(const TQ3Message &message)
{
    // Texts keep their "\n\r" line breaks; a dialog shows them as one break.
    QMessageBox box(DialogIcon(message.Icon), message.Title, NormalizeLineBreaks(message.Text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    QPushButton *yes = nullptr;
    QPushButton *no = nullptr;
    if (message.Buttons == TQ3MsgButtons::Ok) {
        QPushButton *ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box.setDefaultButton(ok);
        box.setEscapeButton(ok);
    } else {
        yes = box.addButton(QStringLiteral("&Sì"), QMessageBox::YesRole);
        no = box.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
        box.setDefaultButton(yes);
        if (message.Buttons == TQ3MsgButtons::YesNoCancel)
            box.setEscapeButton(box.addButton(QStringLiteral("Annulla"), QMessageBox::RejectRole));
        else
            box.setEscapeButton(no);
    }
    box.exec();
    const QAbstractButton *clicked = box.clickedButton();
    if (clicked && clicked == yes)
        return TQ3MsgResult::Yes;
    if (clicked && clicked == no)
        return TQ3MsgResult::No;
    if (message.Buttons == TQ3MsgButtons::Ok)
        return TQ3MsgResult::Ok;
    return message.Buttons == TQ3MsgButtons::YesNo ? TQ3MsgResult::No : TQ3MsgResult::Cancel;
}

void ShowBusy()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

void RestoreBusy()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QApplication::restoreOverrideCursor();
}

} // namespace

void InstallQ3WidgetServices()
{
    // Without a desktop's own icon theme, the application's icons come from Tango.
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == QLatin1String("hicolor"))
        QIcon::setThemeName(QStringLiteral("Tango"));
    SetQ3MessagePresenter(&ShowDialog);
    SetQ3BusyCursorHooks(&ShowBusy, &RestoreBusy);
}
