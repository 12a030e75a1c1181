#include "Q3Registry.h"

#include "Q3MainForm.h"

#include <QAction>
#include <QMainWindow>
#include <QToolButton>

namespace {

const char GroupIndexProperty[] = "q3GroupIndex";
const char HintTitleProperty[] = "q3HintTitle";
const char HintNoteProperty[] = "q3HintNote";

void AppendEntries(QMenu *target, const QMenu *source)
{
    if (!target->actions().isEmpty() && !source->actions().isEmpty())
        target->addSeparator();
    for (QAction *action : source->actions()) {
        if (action->isSeparator())
            target->addSeparator();
        else
            target->addAction(action);
    }
}

} // namespace

void SetMenuGroupIndex(QMenu *menuItem, int groupIndex)
{
    menuItem->setProperty(GroupIndexProperty, groupIndex);
}

int MenuGroupIndex(const QMenu *menuItem)
{
    return menuItem->property(GroupIndexProperty).toInt();
}

void MergeAdvMenuItems(QObject *, const QString &, QMenu *menuItem, bool merge)
{
    TQ3MainForm *frame = GetQ3MainForm();
    if (!frame || !menuItem)
        return;
    QMenu *hostItem = MenuGroupIndex(menuItem) == Q3MergeGroupIndex ? frame->TopMenu(menuItem->title()) : nullptr;
    if (hostItem && merge)
        AppendEntries(hostItem, menuItem);
    else
        frame->InsertTopMenu(menuItem);
}

void MergeAdvMenu(QObject *hostApplication, QMenuBar *mainMenu)
{
    for (QAction *top : mainMenu->actions()) {
        if (top->menu())
            MergeAdvMenuItems(hostApplication, top->menu()->objectName(), top->menu(), true);
    }
}

void GetQ3CommonToolBarProperties(TQ3CommonToolBars kind, TCommonToolBarProperties &properties)
{
    properties = TCommonToolBarProperties();
    // Table toolbars are the least used: icons only, to leave room on the dock.
    if (kind == TQ3CommonToolBars::Tabelle)
        properties.ButtonStyle = Qt::ToolButtonIconOnly;
}

void MergeAdvToolBarItems(QObject *, const TCommonToolBarProperties &properties, QToolBar *toolBar)
{
    TQ3MainForm *frame = GetQ3MainForm();
    if (!frame || !toolBar)
        return;
    toolBar->setIconSize(properties.IconSize);
    toolBar->setToolButtonStyle(properties.ButtonStyle);
    toolBar->setMovable(properties.Movable);
    frame->addToolBar(properties.Area, toolBar);
    toolBar->show();
}

void SetRichHint(QWidget *button, const QString &title, const QString &note)
{
    button->setProperty(HintTitleProperty, title);
    button->setProperty(HintNoteProperty, note);
    // The note's lines stay lines in the tooltip.
    QString html = note.toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    const QString tip = QStringLiteral("<b>%1</b><br>%2").arg(title.toHtmlEscaped(), html);
    button->setToolTip(tip);
    button->setStatusTip(note);
    // A tool button takes its action's texts again whenever the action changes.
    if (auto tool = qobject_cast<QToolButton *>(button); tool && tool->defaultAction()) {
        tool->defaultAction()->setToolTip(tip);
        tool->defaultAction()->setStatusTip(note);
    }
}

QString RichHintTitle(const QWidget *button)
{
    return button->property(HintTitleProperty).toString();
}

QString RichHintNote(const QWidget *button)
{
    return button->property(HintNoteProperty).toString();
}
