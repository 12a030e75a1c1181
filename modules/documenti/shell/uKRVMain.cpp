#include "uKRVMain.h"

#include "KRVDatasets.h"
#include "KRVUtils.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3ReportSetupDialog.h"
#include "Q3ReportStatus.h"
#include "Q3Users.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QToolButton>

namespace {

const QString ReqFatturaCiclica = QStringLiteral("Nuova fattura di vendita ciclica");
const QString ReqFatturaDaDdt = QStringLiteral("Crea fattura di vendita da D.d.T.");

} // namespace

TKRVMain::TKRVMain(QObject *owner) : QObject(owner), m_container(std::make_unique<QWidget>())
{
    setObjectName(QStringLiteral("KRVMain"));
    m_container->setObjectName(QStringLiteral("KRVMainContainer"));
    CreateActions();
    CreateToolBars();
    CreateMenus();
    m_modADOConn = new TQ3Connection(this);
    m_modADOConn->setObjectName(QStringLiteral("ModADOConn"));
    m_modADOConn->SetConnectionString(DesignedConnectionString());
    CreateDatasets();
    m_rProject = new TQ3ReportProject(this);
    m_rProject->setObjectName(QStringLiteral("rProject"));
    m_rProject->SetProjectFile(QStringLiteral("Documenti.rav"));
    CreateReportSystem();
}

TKRVMain::~TKRVMain()
{
    for (const QPointer<QWidget> &form : std::as_const(m_forms))
        delete form.data();
    delete m_rSystem;
    ReleasePackageMainObject(this);
}

QString TKRVMain::DesignedConnectionString()
{
    return QStringLiteral("Provider=MSDASQL.1;Persist Security Info=False;Data Source=QUILLO3_LOCAL;");
}

void TKRVMain::CreateReportSystem()
{
    m_rSystem = new TQ3ReportSystem(this);
    m_rSystem->setObjectName(QStringLiteral("rSystem"));
    m_rSystem->OnOverrideSetup = [this](TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form) {
        rSystemOverrideSetup(system, mode, form);
    };
    m_rSystem->OnOverridePreview = [this](TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form) {
        rSystemOverridePreview(system, mode, form);
    };
    new TQ3ReportStatus(m_rSystem, m_container.get());
    m_rRenderPDF = new TQ3RenderPDF(this);
    m_rRenderPDF->setObjectName(QStringLiteral("rRenderPDF"));
    m_rRenderPDF->Title = QStringLiteral("Quillo 3");
    m_rRenderPDF->Author = QStringLiteral("Quillo 3");
    m_rRenderPDF->Creator = QStringLiteral("Quillo 3");
    m_rRenderPDF->Producer = QStringLiteral("Quillo 3");
    m_rProject->SetEngine(m_rSystem);
    m_dsAzienda = std::make_unique<TQ3DatasetConnection>(Dataset(QStringLiteral("adsAzienda")));
    m_rProject->RegisterConnection(QStringLiteral("dsAzienda"), m_dsAzienda.get());
}

void TKRVMain::rSystemOverrideSetup(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)
{
    RaveSystemOverrideSetup(system, mode, form);
}

void TKRVMain::rSystemOverridePreview(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)
{
    RaveSystemOverridePreview(system, mode, form);
}

TQ3Dataset *TKRVMain::StampeDataset(const QString &name) const
{
    if (name == QLatin1String("adsAzienda"))
        return Dataset(name);
    TQ3Dataset *dataset = m_dmStampe ? m_dmStampe->Dataset(name) : nullptr;
    if (!dataset)
        throw EQ3Exception(QStringLiteral("Il dataset \"%1\" delle stampe non esiste.").arg(name));
    return dataset;
}

TQ3MemoryData *TKRVMain::StampeDatiCalcolati(const QString &connection) const
{
    TQ3MemoryData *dati = m_dmStampe ? m_dmStampe->Calcolati(connection) : nullptr;
    if (!dati)
        throw EQ3Exception(QStringLiteral("I dati \"%1\" delle stampe non esistono.").arg(connection));
    return dati;
}

TKRVdmStampe *TKRVMain::dmStampe() const
{
    return m_dmStampe;
}

QString TKRVMain::ReportProjectPath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("Documenti.rav"));
}

void TKRVMain::CreateDatasets()
{
    m_datasets = KRVCreaDatasetModulo(this, m_modADOConn);
}

void TKRVMain::CreateActions()
{
    for (const TKRVActionInfo &info : KRVActionCatalogue()) {
        auto action = new QAction(info.Caption, this);
        action->setObjectName(info.Name);
        action->setProperty("Category", info.Category);
        action->setIcon(KRVImage(info.Image));
        const TKRVAzione azione = info.Azione;
        connect(action, &QAction::triggered, this, [this, azione] { Run(azione); });
        m_actions.insert(azione, action);
        m_actionList.append(action);
    }
}

void TKRVMain::CreateToolBars()
{
    QList<QToolBar *> bars;
    for (const TKRVToolBarInfo &info : KRVToolBars()) {
        auto bar = new QToolBar(info.Caption, m_container.get());
        bar->setObjectName(info.Name);
        for (const TKRVAzione azione : info.Azioni) {
            QAction *action = Action(azione);
            bar->addAction(action);
            const TKRVActionInfo &riga = KRVAction(azione);
            SetRichHint(bar->widgetForAction(action), riga.HintTitle, riga.HintNote);
        }
        bars << bar;
    }
    m_tBarDocumenti = bars.at(0);
    m_tBarAnagrafiche = bars.at(1);
}

void TKRVMain::CreateMenus()
{
    for (const TKRVMenuInfo &info : KRVMenus()) {
        auto mainMenu = new QMenuBar(m_container.get());
        mainMenu->setObjectName(info.MainMenu);
        QMenu *top = mainMenu->addMenu(info.Caption);
        top->setObjectName(info.Name);
        SetMenuGroupIndex(top, info.GroupIndex);
        for (const TKRVMenuEntry &entry : info.Entries) {
            if (!entry.Azione) {
                top->addSeparator();
                continue;
            }
            QAction *action = Action(*entry.Azione);
            if (entry.Caption.isEmpty()) {
                top->addAction(action);
                continue;
            }
            // An entry with a caption of its own stands for its action.
            QAction *item = top->addAction(action->icon(), entry.Caption, action, &QAction::trigger);
            item->setObjectName(QStringLiteral("mi") + action->objectName());
            item->setEnabled(action->isEnabled());
            connect(action, &QAction::enabledChanged, item, &QAction::setEnabled);
        }
        m_mainMenus.insert(info.MainMenu, mainMenu);
        m_topItems.insert(info.Name, top);
    }
}

void TKRVMain::Initialize()
{
    try {
        for (const QString &name : {QStringLiteral("mnAnagrafiche"), QStringLiteral("mnDocumenti"),
                                    QStringLiteral("mnTabelle"), QStringLiteral("mnStampe")})
            MergeAdvMenuItems(qApp, name, m_topItems.value(name), true);
        MergeAdvMenu(qApp, m_mainMenus.value(QStringLiteral("MenuStatistiche")));

        TakeOverHostConnection();
        OpenReportProject();
        AggiornaDatabase(m_modADOConn->Database());
        m_dmStampe = new TKRVdmStampe(this, m_modADOConn, m_rProject);

        TCommonToolBarProperties properties;
        GetQ3CommonToolBarProperties(TQ3CommonToolBars(0), properties);
        MergeAdvToolBarItems(qApp, properties, m_tBarDocumenti);
        GetQ3CommonToolBarProperties(TQ3CommonToolBars(1), properties);
        MergeAdvToolBarItems(qApp, properties, m_tBarAnagrafiche);
    } catch (const std::exception &e) {
        throw EQ3Exception(ExceptionMessage(e));
    }
}

void TKRVMain::TakeOverHostConnection()
{
    Q3UsaConnessioneHost(m_modADOConn);
}

void TKRVMain::OpenReportProject()
{
    m_rProject->Close();
    const QString path = ReportProjectPath();
    if (!QFileInfo::exists(path)) {
        Q3MessageBox(QStringLiteral("Errore"),
                     QStringLiteral("Impossibile trovare il file delle stampe del modulo documenti!"),
                     TQ3MsgIcon::Error);
        return;
    }
    m_rProject->SetProjectFile(path);
    m_rProject->Open();
}

void TKRVMain::ModuloFinalize()
{
    try {
        // Nothing of its own to do: every clean-up follows from ownership.
    } catch (const std::exception &e) {
        Q3MessageBox(QStringLiteral("Errore"), QStringLiteral("[TKRVMain.ModuloFinalize]\n\r") + ExceptionMessage(e),
                     TQ3MsgIcon::Error);
    }
}

void TKRVMain::Finalize() {}

QAction *TKRVMain::Action(const QString &name) const
{
    const TKRVActionInfo *info = KRVFindAction(name);
    return info ? Action(info->Azione) : nullptr;
}

QWidget *TKRVMain::Form(const QString &actionName) const
{
    const TKRVActionInfo *info = KRVFindAction(actionName);
    return info ? Form(info->Azione) : nullptr;
}

void TKRVMain::Run(const QString &actionName)
{
    if (const TKRVActionInfo *info = KRVFindAction(actionName))
        Run(info->Azione);
}

void TKRVMain::Run(TKRVAzione azione)
{
    QAction *action = Action(azione);
    if (!action || !action->isEnabled())
        return;
    Q3Guarded([&] { ExecuteAction(KRVAction(azione)); });
}

void TKRVMain::ExecuteAction(const TKRVActionInfo &info)
{
    if (!KRVVerificaPermesso(info.Permission))
        return;
    switch (info.Shape) {
    case TKRVActionShape::ShowReused:
        ShowQ3ChildForm(EnsureForm(info));
        break;
    case TKRVActionShape::CreateOnly:
        EnsureForm(info);
        break;
    case TKRVActionShape::ModalPrint:
    case TKRVActionShape::ModalStatistics:
        ShowModal(info);
        break;
    }
}

QWidget *TKRVMain::EnsureForm(const TKRVActionInfo &info)
{
    QPointer<QWidget> &form = m_forms[info.Azione];
    if (!form)
        form = info.Form.Create(*this);
    return form;
}

void TKRVMain::ShowModal(const TKRVActionInfo &info)
{
    const TKRVFormClass &formClass = info.Form;
    auto dialog = qobject_cast<QDialog *>(EnsureForm(info));
    if (!dialog)
        return;
    if (formClass.Prepare)
        formClass.Prepare(dialog);
    if (dialog->exec() == QDialog::Accepted && formClass.Accepted)
        formClass.Accepted(dialog);
}

int TKRVMain::ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex)
{
    try {
        if (lastIndex != 0 || parameters.size() != 1)
            return 0;
        if (actionName == ReqFatturaCiclica)
            return ApriFatturaCiclica(parameters);
        if (actionName == ReqFatturaDaDdt) {
            if (Form(TKRVAzione::InserimentoFattureVendita)) {
                Q3MessageBox(QStringLiteral("Attenzione"),
                             QStringLiteral(
                                 "Impossibile proseguire, chiudere la maschera di inserimento fatture e riprovare."),
                             TQ3MsgIcon::Warning);
                Run(TKRVAzione::InserimentoFattureVendita);
                return 0;
            }
            return ApriFatturaCiclica(parameters);
        }
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    }
    return 0;
}

int TKRVMain::ApriFatturaCiclica(const QVariantList &parameters)
{
    const int id = Q3ParametroIntero(parameters.first());
    const TKRVAzione editorAction = TKRVAzione::InserimentoFattureVendita;
    Run(editorAction);
    KRVApriFatturaCiclica(Form(editorAction), id);
    return 0;
}

TKRVMain *KRVMain()
{
    const int index = GetPackageIndex(KRVModuleFileName());
    return index < 0 ? nullptr : dynamic_cast<TKRVMain *>(PackageList().at(index).MainObject);
}
