// The library the host loads from its modules folder. The host reads its
// metadata (Documenti.json) before loading it, registers the module under its
// file name and makes the main object through the factory below.
#include "Q3Module.h"
#include "uKRVMain.h"

#include <QObject>

class TKRVDocumentiPlugin : public QObject, public IQ3ModulePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IQ3ModulePlugin_iid FILE "Documenti.json")
    Q_INTERFACES(IQ3ModulePlugin)

public:
    IQ3Module *CreateModule(QObject *owner) override { return new TKRVMain(owner); }
};

#include "DocumentiPlugin.moc"
