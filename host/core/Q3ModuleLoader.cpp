#include "Q3ModuleLoader.h"

#include "Q3Exception.h"
#include "Q3Messages.h"
#include "Q3ModuleMetadata.h"
#include "Q3Packages.h"

#include <QDir>
#include <QPluginLoader>

#include <algorithm>
#include <functional>

namespace {

struct TCandidate
{
    QString FileName;
    QString Path;
    TQ3ModuleMetadata Metadata;
};

void CannotLoad(const QString &fileName, const QString &cause)
{
    Q3ShowError(QStringLiteral("Impossibile caricare il modulo \"%1\": %2").arg(fileName, cause));
}

void LeftOut(const QString &fileName, const QString &cause)
{
    Q3ShowWarning(QStringLiteral("Il modulo \"%1\" non viene caricato: %2").arg(fileName, cause));
}

QString NotLoaded(const QString &name)
{
    return QStringLiteral("richiede il modulo \"%1\", che non è stato caricato.").arg(name);
}

bool Registered(const QString &name)
{
    return GetPackageIndex(name + QString::fromLatin1(Q3ModuleFileExtension)) >= 0;
}

// Runs one call of a module's life; a failure is shown and the host goes on.
void Guarded(const QString &fileName, const QString &call, const std::function<void()> &run)
{
    try {
        run();
    } catch (const std::exception &e) {
        Q3ShowError(QStringLiteral("Errore del modulo \"%1\" (%2):\n\r%3").arg(fileName, call, ExceptionMessage(e)));
    }
}

// The module libraries of the folder whose metadata is read and whose file
// name is the one the metadata gives, by file name; the others are told, and
// their names (the file names without extension) are refused.
QList<TCandidate> ReadCandidates(const QString &folder, QStringList *refused)
{
    const QDir dir(folder);
    const QString pattern = QStringLiteral("*") + QString::fromLatin1(Q3ModuleFileExtension);
    QList<TCandidate> candidates;
    for (const QString &fileName : dir.entryList({pattern}, QDir::Files, QDir::Name)) {
        if (GetPackageIndex(fileName) >= 0)
            continue;
        try {
            TCandidate candidate{fileName, dir.filePath(fileName), ReadQ3ModuleMetadata(dir.filePath(fileName))};
            if (candidate.Metadata.FileName() != fileName)
                throw EQ3Exception(
                    QStringLiteral("i metadati chiamano il modulo \"%1\", quindi il file deve chiamarsi \"%2\".")
                        .arg(candidate.Metadata.Name, candidate.Metadata.FileName()));
            candidates << candidate;
        } catch (const EQ3Exception &e) {
            CannotLoad(fileName, e.Message());
            *refused << fileName.chopped(qsizetype(qstrlen(Q3ModuleFileExtension)));
        }
    }
    return candidates;
}

const TCandidate *Find(const QList<TCandidate> &candidates, const QString &name)
{
    for (const TCandidate &candidate : candidates) {
        if (candidate.Metadata.Name.compare(name, Qt::CaseInsensitive) == 0)
            return &candidate;
    }
    return nullptr;
}

enum class TReadiness { Ready, Waiting, Refused };

// Whether a module can take its place after the ones ordered so far; the
// cause when it never can.
TReadiness Readiness(const TCandidate &candidate, const QList<TCandidate> &all, const QList<TCandidate> &ordered,
                     const QStringList &refused, QString *cause)
{
    TReadiness readiness = TReadiness::Ready;
    for (const TQ3ModuleDependency &dependency : candidate.Metadata.Dependencies) {
        if (Registered(dependency.Name))
            continue;
        if (refused.contains(dependency.Name, Qt::CaseInsensitive)) {
            *cause = NotLoaded(dependency.Name);
            return TReadiness::Refused;
        }
        const TCandidate *needed = Find(all, dependency.Name);
        if (!needed) {
            *cause = QStringLiteral("richiede il modulo \"%1\", che non è presente.").arg(dependency.Name);
            return TReadiness::Refused;
        }
        if (needed->Metadata.Version < dependency.Version) {
            *cause =
                QStringLiteral(
                    "richiede il modulo \"%1\" nella versione %2 o successiva, ma è presente la versione %3.")
                    .arg(needed->Metadata.Name, dependency.Version.toString(), needed->Metadata.Version.toString());
            return TReadiness::Refused;
        }
        if (!Find(ordered, dependency.Name))
            readiness = TReadiness::Waiting;
    }
    return readiness;
}

// The modules in an order where each comes after the ones it depends on and,
// among those free to go, the first by file name goes first. A module whose
// dependencies are refused, missing, too old or make a cycle is told and left out.
QList<TCandidate> InDependencyOrder(const QList<TCandidate> &all, QStringList refused)
{
    QList<TCandidate> pending = all;
    QList<TCandidate> ordered;
    while (!pending.isEmpty()) {
        qsizetype next = 0;
        QString cause;
        TReadiness readiness = TReadiness::Waiting;
        for (; next < pending.size(); ++next) {
            readiness = Readiness(pending.at(next), all, ordered, refused, &cause);
            if (readiness != TReadiness::Waiting)
                break;
        }
        if (readiness == TReadiness::Waiting) {
            for (const TCandidate &candidate : std::as_const(pending))
                LeftOut(candidate.FileName, QStringLiteral("le sue dipendenze formano un ciclo."));
            break;
        }
        const TCandidate candidate = pending.takeAt(next);
        if (readiness == TReadiness::Ready) {
            ordered << candidate;
        } else {
            LeftOut(candidate.FileName, cause);
            refused << candidate.Metadata.Name;
        }
    }
    return ordered;
}

} // namespace

TQ3ModuleLoader::~TQ3ModuleLoader()
{
    Unload();
}

void TQ3ModuleLoader::Load(const QString &folder, QObject *owner)
{
    const qsizetype first = m_started.size();
    QStringList unreadable;
    const QList<TCandidate> candidates = ReadCandidates(folder, &unreadable);
    for (const TCandidate &candidate : InDependencyOrder(candidates, unreadable)) {
        // A module it needs may have failed to load or to start.
        const QList<TQ3ModuleDependency> &dependencies = candidate.Metadata.Dependencies;
        const auto missing =
            std::find_if(dependencies.cbegin(), dependencies.cend(),
                         [](const TQ3ModuleDependency &dependency) { return !Registered(dependency.Name); });
        if (missing != dependencies.cend()) {
            LeftOut(candidate.FileName, NotLoaded(missing->Name));
            continue;
        }
        QPluginLoader library(candidate.Path);
        auto plugin = qobject_cast<IQ3ModulePlugin *>(library.instance());
        if (!plugin) {
            CannotLoad(candidate.FileName, QStringLiteral("il sistema non riesce a caricare la libreria.\n\r%1")
                                               .arg(library.errorString()));
            continue;
        }
        RegisterPackage(candidate.FileName, candidate.Metadata.Description,
                        [plugin](QObject *mainOwner) { return plugin->CreateModule(mainOwner); });
        Start(candidate.Metadata, owner);
    }
    for (qsizetype i = first; i < m_started.size(); ++i) {
        IQ3Module *main = m_started.at(i).Main;
        Guarded(m_started.at(i).Metadata.FileName(), QStringLiteral("AllModulesInitialized"),
                [main] { main->AllModulesInitialized(); });
    }
}

void TQ3ModuleLoader::Start(const TQ3ModuleMetadata &metadata, QObject *owner)
{
    const QString fileName = metadata.FileName();
    IQ3Module *main = nullptr;
    try {
        const TQ3ModuleClass create = PackageList().at(GetPackageIndex(fileName)).ModuleClass;
        main = create(owner);
        PackageList()[GetPackageIndex(fileName)].MainObject = main;
        main->Initialize();
    } catch (const std::exception &e) {
        UnregisterPackage(fileName);
        if (main)
            delete main->AsObject();
        Q3ShowError(QStringLiteral("Impossibile avviare il modulo \"%1\": il programma continua senza.\n\r%2")
                        .arg(fileName, ExceptionMessage(e)));
        return;
    }
    m_started << TStarted{metadata, main};
}

void TQ3ModuleLoader::Unload()
{
    for (auto started = m_started.crbegin(); started != m_started.crend(); ++started) {
        IQ3Module *main = started->Main;
        Guarded(started->Metadata.FileName(), QStringLiteral("ModuloFinalize"), [main] { main->ModuloFinalize(); });
    }
    for (auto started = m_started.crbegin(); started != m_started.crend(); ++started) {
        IQ3Module *main = started->Main;
        Guarded(started->Metadata.FileName(), QStringLiteral("Finalize"), [main] { main->Finalize(); });
    }
    for (auto started = m_started.crbegin(); started != m_started.crend(); ++started) {
        UnregisterPackage(started->Metadata.FileName());
        delete started->Main->AsObject();
    }
    m_started.clear();
}

QStringList TQ3ModuleLoader::Started() const
{
    QStringList fileNames;
    for (const TStarted &started : m_started)
        fileNames << started.Metadata.FileName();
    return fileNames;
}

QList<TQ3ModuleMetadata> TQ3ModuleLoader::StartedMetadata() const
{
    QList<TQ3ModuleMetadata> metadata;
    for (const TStarted &started : m_started)
        metadata << started.Metadata;
    return metadata;
}

void Q3MostraAvvisiAccesso()
{
    QList<TQ3PackageEntry> moduli = PackageList();
    for (const TQ3PackageEntry &modulo : moduli) {
        IQ3Module *main = modulo.MainObject;
        if (!main)
            continue;
        Guarded(modulo.FileName, QStringLiteral("AvvisiAccesso"), [main] {
            for (const TQ3AvvisoAccesso &avviso : main->AvvisiAccesso()) {
                if (!avviso.Apri)
                    Q3MessageBox(avviso.Titolo, avviso.Testo, TQ3MsgIcon::Information);
                else if (Q3MessageBox(avviso.Titolo, avviso.Testo, TQ3MsgIcon::Question, TQ3MsgButtons::YesNo)
                         == TQ3MsgResult::Yes)
                    avviso.Apri();
            }
        });
    }
}
