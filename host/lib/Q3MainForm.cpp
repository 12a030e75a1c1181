#include "Q3MainForm.h"

#include "Q3Connection.h"
#include "Q3Registry.h"
#include "Q3WidgetServices.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

namespace {

TQ3MainForm *mainForm = nullptr;

QString PlainCaption(QString caption)
{
    return caption.remove(QLatin1Char('&'));
}

} // namespace

TQ3MainForm::TQ3MainForm(QWidget *parent)
    : QMainWindow(parent), m_mdiArea(new QMdiArea(this)), m_userLabel(new QLabel(this)),
      m_databaseLabel(new QLabel(this))
{
    InstallQ3WidgetServices();
    setObjectName(QStringLiteral("Q3MainForm"));
    setWindowTitle(QStringLiteral("Quillo 3"));
    m_mdiArea->setObjectName(QStringLiteral("mdiArea"));
    m_mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setBackground(QColor(0x6b, 0x7f, 0x95));
    setCentralWidget(m_mdiArea);

    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnFile"));
    QAction *exit = file->addAction(QStringLiteral("&Esci"), this, &QWidget::close);
    exit->setObjectName(QStringLiteral("actEsci"));
    exit->setShortcut(QKeySequence::Quit);

    const struct
    {
        const char *name;
        const char *caption;
    } shared[] = {{"mnAnagrafiche", "Anagrafiche"}, {"mnDocumenti", "Documenti"}, {"mnTabelle", "Tabelle"}};
    for (const auto &item : shared) {
        QMenu *menu = menuBar()->addMenu(QString::fromUtf8(item.caption));
        menu->setObjectName(QString::fromLatin1(item.name));
    }

    m_helpMenu = menuBar()->addMenu(QStringLiteral("?"));
    m_helpMenu->setObjectName(QStringLiteral("mnHelp"));
    QAction *about = m_helpMenu->addAction(QStringLiteral("Informazioni su Quillo 3..."), this, &TQ3MainForm::About);
    about->setObjectName(QStringLiteral("actInformazioni"));

    m_userLabel->setObjectName(QStringLiteral("lblUtente"));
    m_databaseLabel->setObjectName(QStringLiteral("lblDatabase"));
    statusBar()->addPermanentWidget(m_userLabel);
    statusBar()->addPermanentWidget(m_databaseLabel);

    resize(1200, 800);
    mainForm = this;
}

TQ3MainForm::~TQ3MainForm()
{
    if (mainForm == this)
        mainForm = nullptr;
}

QMenu *TQ3MainForm::TopMenu(const QString &caption) const
{
    for (QAction *action : menuBar()->actions()) {
        if (action->menu() && PlainCaption(action->text()) == PlainCaption(caption))
            return action->menu();
    }
    return nullptr;
}

void TQ3MainForm::InsertTopMenu(QMenu *menuItem)
{
    menuBar()->insertMenu(m_helpMenu->menuAction(), menuItem);
}

void TQ3MainForm::SetStatusInfo(const QString &userName, const QString &database)
{
    m_userLabel->setText(QStringLiteral("Utente: %1").arg(userName));
    m_databaseLabel->setText(QStringLiteral("Database: %1").arg(database));
}

void TQ3MainForm::About()
{
    QStringList modules;
    for (const TQ3PackageEntry &entry : PackageList())
        modules << QStringLiteral("%1 (%2)").arg(entry.Description, entry.FileName);
    QMessageBox::about(this, QStringLiteral("Informazioni su Quillo 3"),
                       QStringLiteral("Quillo 3, versione %1\n\nModuli caricati:\n%2")
                           .arg(QCoreApplication::applicationVersion(),
                                modules.isEmpty() ? QStringLiteral("nessuno") : modules.join(QLatin1Char('\n'))));
}

TQ3MainForm *GetQ3MainForm()
{
    return mainForm;
}

void Q3UsaConnessioneHost(TQ3Connection *connection)
{
    TQ3MainForm *host = GetQ3MainForm();
    if (!host)
        return;
    for (QObject *component : host->children()) {
        if (auto hostConnection = qobject_cast<TQ3Connection *>(component)) {
            connection->Close();
            connection->SetConnectionString(hostConnection->ConnectionString());
            connection->Open();
            return;
        }
    }
}

void ShowQ3ChildForm(QWidget *form)
{
    TQ3MainForm *frame = GetQ3MainForm();
    if (!frame) {
        form->show();
        form->raise();
        form->activateWindow();
        return;
    }
    QMdiSubWindow *sub = nullptr;
    for (QMdiSubWindow *candidate : frame->MdiArea()->subWindowList()) {
        if (candidate->widget() == form)
            sub = candidate;
    }
    if (!sub) {
        sub = frame->MdiArea()->addSubWindow(form);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        // The frame's title bar and borders come on top of the window's own size.
        const QMargins frame = sub->contentsMargins();
        sub->resize(form->size().grownBy(frame));
    }
    sub->showNormal();
    form->show();
    frame->MdiArea()->setActiveSubWindow(sub);
}

bool CloseQ3ChildForm(QWidget *form)
{
    if (auto sub = qobject_cast<QMdiSubWindow *>(form->parentWidget()))
        return sub->close();
    return form->close();
}
