#pragma once

#include "KRVMenus.h"
#include "KRVSession.h"
#include "KRVStampe.h"
#include "KRVdmStampe.h"
#include "Q3Dataset.h"
#include "Q3Module.h"
#include "Q3Report.h"
#include "uKRVAzioni.h"
#include "uKRVServiziFinestre.h"

#include <QAction>
#include <QDialog>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QPointer>
#include <QToolBar>

#include <memory>

// The module's main object: owns the actions, menus, toolbars, the module
// database session and the report project, and keeps one instance of every
// window its actions open. The windows see it through the services they use
// (IKRVMain); it makes them through the window table.
class TKRVMain : public QObject, public IQ3Module, public IKRVModuleSession, public IKRVStampeHost, public IKRVMain
{
    Q_OBJECT

public:
    explicit TKRVMain(QObject *owner);
    ~TKRVMain() override;

    // IQ3Module
    QObject *AsObject() override { return this; }
    void Initialize() override;
    int ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex) override;
    void ModuloFinalize() override;
    void Finalize() override;

    // IKRVModuleSession, IKRVMain
    TQ3Connection *ModADOConn() const override { return m_modADOConn; }

    // The designed connection string, replaced by the host's at start.
    static QString DesignedConnectionString();
    // Where the report project is looked for: beside the host executable.
    static QString ReportProjectPath();

    QAction *Action(TKRVAzione azione) const { return m_actions.value(azione); }
    // The action of that object name, or null.
    QAction *Action(const QString &name) const;
    const QList<QAction *> &actListModDocumenti() const { return m_actionList; }
    QMenuBar *MainMenu(const QString &name) const { return m_mainMenus.value(name); }
    QMenu *TopItem(const QString &name) const { return m_topItems.value(name); }
    QToolBar *tBarKRVDocumenti() const { return m_tBarDocumenti; }
    QToolBar *tBarKRVAnagrafiche() const { return m_tBarAnagrafiche; }
    // IKRVStampeHost
    TQ3ReportProject *rProject() const override { return m_rProject; }
    TQ3ReportSystem *rSystem() const override { return m_rSystem; }
    TQ3RenderPDF *rRenderPDF() const override { return m_rRenderPDF; }
    TQ3Dataset *StampeDataset(const QString &name) const override;
    TQ3MemoryData *StampeDatiCalcolati(const QString &connection) const override;
    // IKRVMain
    IKRVStampeHost &Stampe() override { return *this; }
    TKRVSalvaPDF *SaveDialogPDF() override { return m_dialoghiSalvataggio.PDF(); }
    TKRVSalvaExcel *SaveDialogExcel() override { return m_dialoghiSalvataggio.Excel(); }
    TKRVCartellaFatturaPA *FolderDialogFatturaPA() override { return m_dialoghiSalvataggio.CartellaFatturaPA(); }
    TKRVZipFatturePA *ZipDialogFatturePA() override { return m_dialoghiSalvataggio.ZipFatturePA(); }
    TQ3Dataset *Dataset(const QString &name) const override { return m_datasets.value(name); }
    QWidget *Form(TKRVAzione azione) const override { return m_forms.value(azione); }
    void Run(TKRVAzione azione) override;
    // The same by the action's object name, as the host and the tests know it.
    QWidget *Form(const QString &actionName) const;
    void Run(const QString &actionName);
    using IKRVMain::FormAs;
    template <typename T>
    T *FormAs(const QString &actionName) const
    {
        return qobject_cast<T *>(Form(actionName));
    }

    TKRVdmStampe *dmStampe() const;

private:
    void CreateActions();
    void CreateMenus();
    void CreateToolBars();
    void CreateDatasets();
    void TakeOverHostConnection();
    void OpenReportProject();
    void CreateReportSystem();
    void rSystemOverrideSetup(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form);
    void rSystemOverridePreview(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form);
    void ExecuteAction(const TKRVActionInfo &info);
    QWidget *EnsureForm(const TKRVActionInfo &info);
    void ShowModal(const TKRVActionInfo &info);
    int ApriFatturaCiclica(const QVariantList &parameters);

    std::unique_ptr<QWidget> m_container;
    QToolBar *m_tBarDocumenti = nullptr;
    QToolBar *m_tBarAnagrafiche = nullptr;
    QHash<QString, QMenuBar *> m_mainMenus;
    QHash<QString, QMenu *> m_topItems;
    QHash<TKRVAzione, QAction *> m_actions;
    QList<QAction *> m_actionList;
    TQ3Connection *m_modADOConn = nullptr;
    TQ3ReportProject *m_rProject = nullptr;
    TQ3ReportSystem *m_rSystem = nullptr;
    TQ3RenderPDF *m_rRenderPDF = nullptr;
    std::unique_ptr<TQ3DatasetConnection> m_dsAzienda;
    TKRVDialoghiSalvataggio m_dialoghiSalvataggio;
    QPointer<TKRVdmStampe> m_dmStampe;
    QHash<QString, TQ3Dataset *> m_datasets;
    QHash<TKRVAzione, QPointer<QWidget>> m_forms;
};

// The module's main object, found through the host's registry (null when the
// module is not loaded).
TKRVMain *KRVMain();
