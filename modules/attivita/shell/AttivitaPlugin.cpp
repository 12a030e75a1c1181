// The library the host loads from its modules folder. The host reads its
// metadata (Attivita.json) before loading it, registers the module under its
// file name and makes the main object through the factory below.
#include "Q3Module.h"
#include "uKATMain.h"

#include <QObject>

class TKATAttivitaPlugin : public QObject, public IQ3ModulePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IQ3ModulePlugin_iid FILE "Attivita.json")
    Q_INTERFACES(IQ3ModulePlugin)

public:
    IQ3Module *CreateModule(QObject *owner) override { return new TKATMain(owner); }
};

#include "AttivitaPlugin.moc"
