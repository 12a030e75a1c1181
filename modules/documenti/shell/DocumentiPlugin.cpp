// The library the host loads from its modules folder. Loading it initialises
// the module's code, which registers the module with the host.
#include "Q3Module.h"
#include "uKRVMain.h"

#include <QObject>

namespace {

const struct KRVMainUnit
{
    KRVMainUnit() { KRVMainUnitInitialization(); }
    ~KRVMainUnit() { KRVMainUnitFinalization(); }
} krvMainUnit;

} // namespace

class TKRVDocumentiPlugin : public QObject, public IQ3ModulePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IQ3ModulePlugin_iid)
    Q_INTERFACES(IQ3ModulePlugin)

public:
    QString ModuleFileName() const override { return KRVModuleFileName(); }
};

#include "DocumentiPlugin.moc"
