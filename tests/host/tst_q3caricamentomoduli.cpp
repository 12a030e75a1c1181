#include "Q3Exception.h"
#include "Q3Host.h"
#include "Q3HostSchema.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3ModuleLoader.h"
#include "Q3ModuleMetadata.h"
#include "Q3Packages.h"
#include "Q3TestDatabase.h"
#include "Q3Users.h"
#include "plugins/Q3ModuloProva.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QMenuBar>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QtTest>

// The host's module loader on folders of small test modules (built into
// Q3_MODULI_PROVA by tests/host/plugins), and on the real "Documenti" module.
class TestQ3CaricamentoModuli : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void twoModulesStartInTheOrderOfTheirDependencies();
    void loadingTwiceRegistersOnce();
    void brokenLibraryIsToldAndTheOthersStart_data();
    void brokenLibraryIsToldAndTheOthersStart();
    void refusedModulesAreToldAndTheOthersStart_data();
    void refusedModulesAreToldAndTheOthersStart();
    void failedStartLeavesTheModuleOut_data();
    void failedStartLeavesTheModuleOut();
    void failuresLaterInLifeAreShownAndTheOthersGoOn();
    void metadataFieldsAreChecked_data();
    void metadataFieldsAreChecked();
    void documentiCarriesItsMetadata();
    void attivitaCarriesItsMetadata();
    void documentiStartsAsTheHostStartsIt();

private:
    // A folder with the test modules named "Source" or "Source>Target" (a
    // copy under another file name).
    static std::unique_ptr<QTemporaryDir> Folder(const QStringList &modules);
    static QStringList Events() { return qApp->property(Q3ProvaEventi).toStringList(); }
    // The boxes shown, each as "title: text".
    QStringList Messages() const;

    std::unique_ptr<TQ3RecordingResponder> m_responder;
};

std::unique_ptr<QTemporaryDir> TestQ3CaricamentoModuli::Folder(const QStringList &modules)
{
    auto folder = std::make_unique<QTemporaryDir>();
    for (const QString &module : modules) {
        const QString source = module.section(QLatin1Char('>'), 0, 0);
        const QString target = module.section(QLatin1Char('>'), -1);
        if (!QFile::copy(QStringLiteral(Q3_MODULI_PROVA "/%1.so").arg(source),
                         folder->filePath(target + QStringLiteral(".so"))))
            qFatal("Modulo di prova mancante: %s", qPrintable(source));
    }
    return folder;
}

QStringList TestQ3CaricamentoModuli::Messages() const
{
    QStringList messages;
    for (const TQ3Message &message : m_responder->Messages())
        messages << message.Title + QStringLiteral(": ") + message.Text;
    return messages;
}

void TestQ3CaricamentoModuli::init()
{
    qApp->setProperty(Q3ProvaEventi, QStringList());
    qApp->setProperty(Q3ProvaGuasti, QStringList());
    m_responder = std::make_unique<TQ3RecordingResponder>();
}

void TestQ3CaricamentoModuli::cleanup()
{
    m_responder.reset();
    QCOMPARE(PackageList().size(), 0);
}

void TestQ3CaricamentoModuli::twoModulesStartInTheOrderOfTheirDependencies()
{
    // "Aggiunta" comes first by name, but needs "Base".
    const auto folder = Folder({QStringLiteral("Aggiunta"), QStringLiteral("Base")});
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    QCOMPARE(Messages(), QStringList());
    QCOMPARE(loader.Started(), (QStringList{"Base.so", "Aggiunta.so"}));
    QCOMPARE(Events(), (QStringList{"Base.Created", "Base.Initialize", "Aggiunta.Created", "Aggiunta.Initialize",
                                    "Base.AllModulesInitialized", "Aggiunta.AllModulesInitialized"}));
    // Registered under their file names, with their metadata's descriptions.
    QCOMPARE(PackageList().size(), 2);
    const TQ3PackageEntry &base = PackageList().at(GetPackageIndex(QStringLiteral("Base.so")));
    QCOMPARE(base.Description, QStringLiteral("Modulo di prova Base"));
    QCOMPARE(base.MainObject->AsObject()->parent(), qApp);
    QCOMPARE(PackageList().at(GetPackageIndex(QStringLiteral("Aggiunta.so"))).Description,
             QStringLiteral("Modulo di prova che richiede Base"));

    qApp->setProperty(Q3ProvaEventi, QStringList());
    loader.Unload();
    QCOMPARE(Events(), (QStringList{"Aggiunta.ModuloFinalize", "Base.ModuloFinalize", "Aggiunta.Finalize",
                                    "Base.Finalize", "Aggiunta.Destroyed", "Base.Destroyed"}));
    QCOMPARE(GetPackageIndex(QStringLiteral("Base.so")), -1);
    QCOMPARE(loader.Started(), QStringList());
}

void TestQ3CaricamentoModuli::loadingTwiceRegistersOnce()
{
    const auto folder = Folder({QStringLiteral("Base")});
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    loader.Load(folder->path(), qApp);
    QCOMPARE(PackageList().size(), 1);
    QCOMPARE(loader.Started(), QStringList{"Base.so"});
    QCOMPARE(Events(), (QStringList{"Base.Created", "Base.Initialize", "Base.AllModulesInitialized"}));
    QCOMPARE(Messages(), QStringList());
}

void TestQ3CaricamentoModuli::brokenLibraryIsToldAndTheOthersStart_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("cause");
    QTest::addColumn<QString>("detail");

    QFile base(QStringLiteral(Q3_MODULI_PROVA "/Base.so"));
    QVERIFY(base.open(QIODevice::ReadOnly));
    const QString notALibrary = QStringLiteral("il file non è una libreria di modulo valida.");
    QTest::newRow("a text") << "Testo.so" << QByteArray("Questo non è un modulo.\n") << notALibrary
                            << "not a valid ELF object";
    QTest::newRow("an empty file") << "Vuoto.so" << QByteArray() << notALibrary << "not a valid Qt plugin";
    QTest::newRow("a cut library") << "Tronco.so" << base.read(200) << notALibrary << "not a valid ELF object";
    // Empty content: the test module of that name, whose metadata is right.
    QTest::newRow("a symbol nobody defines")
        << "Irrisolto.so" << QByteArray() << QStringLiteral("il sistema non riesce a caricare la libreria.")
        << "q3ProvaDatoAssente";
}

void TestQ3CaricamentoModuli::brokenLibraryIsToldAndTheOthersStart()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, content);
    QFETCH(QString, cause);
    QFETCH(QString, detail);
    const bool testModule = fileName == QLatin1String("Irrisolto.so");
    const auto folder = Folder(testModule ? QStringList{"Base", "Irrisolto"} : QStringList{"Base"});
    if (!testModule) {
        QFile broken(folder->filePath(fileName));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write(content);
    }
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    const QList<TQ3Message> &messages = m_responder->Messages();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().Title, QStringLiteral("Errore"));
    QCOMPARE(messages.first().Icon, TQ3MsgIcon::Error);
    const QString head = QStringLiteral("Impossibile caricare il modulo \"%1\": %2\n\r").arg(fileName, cause);
    QVERIFY2(messages.first().Text.startsWith(head), qPrintable(messages.first().Text));
    QVERIFY2(messages.first().Text.contains(detail), qPrintable(messages.first().Text));
    QCOMPARE(loader.Started(), QStringList{"Base.so"});
    QCOMPARE(GetPackageIndex(fileName), -1);
}

void TestQ3CaricamentoModuli::refusedModulesAreToldAndTheOthersStart_data()
{
    QTest::addColumn<QStringList>("modules");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QStringList>("started");

    QTest::newRow("no metadata")
        << QStringList{"Base", "SenzaMetadati"}
        << QStringList{"Errore: Impossibile caricare il modulo \"SenzaMetadati.so\": la libreria non contiene i metadati "
                       "del modulo (nome, versione, descrizione)."}
        << QStringList{"Base.so"};
    QTest::newRow("metadata without version")
        << QStringList{"Base", "SenzaVersione"}
        << QStringList{"Errore: Impossibile caricare il modulo \"SenzaVersione.so\": nei metadati del modulo il campo "
                       "\"Version\" manca o non è valido."}
        << QStringList{"Base.so"};
    QTest::newRow("another interface")
        << QStringList{"AltraInterfaccia", "Base"}
        << QStringList{"Errore: Impossibile caricare il modulo \"AltraInterfaccia.so\": la libreria non è un modulo di "
                       "questa versione di Quillo 3."}
        << QStringList{"Base.so"};
    QTest::newRow("file named otherwise than its metadata")
        << QStringList{"Base>Rinominato"}
        << QStringList{"Errore: Impossibile caricare il modulo \"Rinominato.so\": i metadati chiamano il modulo \"Base\", "
                       "quindi il file deve chiamarsi \"Base.so\"."}
        << QStringList();
    QTest::newRow("absent dependency")
        << QStringList{"Base", "Orfano"}
        << QStringList{"Attenzione: Il modulo \"Orfano.so\" non viene caricato: richiede il modulo \"Assente\", che non "
                       "è presente."}
        << QStringList{"Base.so"};
    QTest::newRow("dependency too old")
        << QStringList{"Base", "Esigente"}
        << QStringList{"Attenzione: Il modulo \"Esigente.so\" non viene caricato: richiede il modulo \"Base\" nella "
                       "versione 9.0 o successiva, ma è presente la versione 1.2.0."}
        << QStringList{"Base.so"};
    QTest::newRow("dependency refused")
        << QStringList{"Aggiunta", "SenzaMetadati>Base"}
        << QStringList{"Errore: Impossibile caricare il modulo \"Base.so\": la libreria non contiene i metadati del "
                       "modulo (nome, versione, descrizione).",
                       "Attenzione: Il modulo \"Aggiunta.so\" non viene caricato: richiede il modulo \"Base\", che non "
                       "è stato caricato."}
        << QStringList();
    QTest::newRow("dependency that cannot load")
        << QStringList{"Aggiunta", "Irrisolto>Base"}
        << QStringList{"Errore: Impossibile caricare il modulo \"Base.so\": i metadati chiamano il modulo \"Irrisolto\", "
                       "quindi il file deve chiamarsi \"Irrisolto.so\".",
                       "Attenzione: Il modulo \"Aggiunta.so\" non viene caricato: richiede il modulo \"Base\", che non "
                       "è stato caricato."}
        << QStringList();
    QTest::newRow("cycle")
        << QStringList{"Base", "CicloA", "CicloB"}
        << QStringList{"Attenzione: Il modulo \"CicloA.so\" non viene caricato: le sue dipendenze formano un ciclo.",
                       "Attenzione: Il modulo \"CicloB.so\" non viene caricato: le sue dipendenze formano un ciclo."}
        << QStringList{"Base.so"};
}

void TestQ3CaricamentoModuli::refusedModulesAreToldAndTheOthersStart()
{
    QFETCH(QStringList, modules);
    QFETCH(QStringList, messages);
    QFETCH(QStringList, started);
    const auto folder = Folder(modules);
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    QCOMPARE(Messages(), messages);
    QCOMPARE(loader.Started(), started);
    QCOMPARE(PackageList().size(), started.size());
}

void TestQ3CaricamentoModuli::failedStartLeavesTheModuleOut_data()
{
    QTest::addColumn<QString>("failure");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QStringList>("started");
    QTest::addColumn<QStringList>("events");

    QTest::newRow("the module needed fails to initialise")
        << "Base.Initialize"
        << QStringList{"Errore: Impossibile avviare il modulo \"Base.so\": il programma continua senza.\n\r"
                       "Guasto di prova in Base.Initialize.",
                       "Attenzione: Il modulo \"Aggiunta.so\" non viene caricato: richiede il modulo \"Base\", che non "
                       "è stato caricato."}
        << QStringList() << QStringList{"Base.Created", "Base.Initialize", "Base.Destroyed"};
    QTest::newRow("the module that needs it fails to initialise")
        << "Aggiunta.Initialize"
        << QStringList{"Errore: Impossibile avviare il modulo \"Aggiunta.so\": il programma continua senza.\n\r"
                       "Guasto di prova in Aggiunta.Initialize."}
        << QStringList{"Base.so"}
        << QStringList{"Base.Created",        "Base.Initialize",    "Aggiunta.Created",
                       "Aggiunta.Initialize", "Aggiunta.Destroyed", "Base.AllModulesInitialized"};
    QTest::newRow("its main object cannot be made")
        << "Aggiunta.Created"
        << QStringList{"Errore: Impossibile avviare il modulo \"Aggiunta.so\": il programma continua senza.\n\r"
                       "Guasto di prova in Aggiunta.Created."}
        << QStringList{"Base.so"}
        << QStringList{"Base.Created", "Base.Initialize", "Aggiunta.Created", "Base.AllModulesInitialized"};
}

void TestQ3CaricamentoModuli::failedStartLeavesTheModuleOut()
{
    QFETCH(QString, failure);
    QFETCH(QStringList, messages);
    QFETCH(QStringList, started);
    QFETCH(QStringList, events);
    qApp->setProperty(Q3ProvaGuasti, QStringList{failure});
    const auto folder = Folder({QStringLiteral("Aggiunta"), QStringLiteral("Base")});
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    QCOMPARE(Messages(), messages);
    QCOMPARE(loader.Started(), started);
    QCOMPARE(Events(), events);
    // The module left out is out of the registry: its siblings see it is not loaded.
    QCOMPARE(GetPackageIndex(failure.section(QLatin1Char('.'), 0, 0) + QStringLiteral(".so")), -1);
    QCOMPARE(PackageList().size(), started.size());
}

void TestQ3CaricamentoModuli::failuresLaterInLifeAreShownAndTheOthersGoOn()
{
    qApp->setProperty(Q3ProvaGuasti,
                      QStringList{"Base.AllModulesInitialized", "Aggiunta.ModuloFinalize", "Aggiunta.Finalize"});
    const auto folder = Folder({QStringLiteral("Aggiunta"), QStringLiteral("Base")});
    TQ3ModuleLoader loader;
    loader.Load(folder->path(), qApp);
    QCOMPARE(loader.Started(), (QStringList{"Base.so", "Aggiunta.so"}));
    loader.Unload();
    QCOMPARE(Messages(), (QStringList{"Errore: Errore del modulo \"Base.so\" (AllModulesInitialized):\n\r"
                                      "Guasto di prova in Base.AllModulesInitialized.",
                                      "Errore: Errore del modulo \"Aggiunta.so\" (ModuloFinalize):\n\r"
                                      "Guasto di prova in Aggiunta.ModuloFinalize.",
                                      "Errore: Errore del modulo \"Aggiunta.so\" (Finalize):\n\r"
                                      "Guasto di prova in Aggiunta.Finalize."}));
    QCOMPARE(Events(), (QStringList{"Base.Created", "Base.Initialize", "Aggiunta.Created", "Aggiunta.Initialize",
                                    "Base.AllModulesInitialized", "Aggiunta.AllModulesInitialized",
                                    "Aggiunta.ModuloFinalize", "Base.ModuloFinalize", "Aggiunta.Finalize",
                                    "Base.Finalize", "Aggiunta.Destroyed", "Base.Destroyed"}));
}

void TestQ3CaricamentoModuli::metadataFieldsAreChecked_data()
{
    QTest::addColumn<QByteArray>("metaData");
    QTest::addColumn<QString>("field");

    QTest::newRow("no name") << QByteArray(R"({"Version": "1.0", "Description": "D"})") << "Name";
    QTest::newRow("blank name") << QByteArray(R"({"Name": " ", "Version": "1.0", "Description": "D"})") << "Name";
    QTest::newRow("version with words") << QByteArray(R"({"Name": "N", "Version": "1.0 beta", "Description": "D"})")
                                        << "Version";
    QTest::newRow("version a number") << QByteArray(R"({"Name": "N", "Version": 1, "Description": "D"})") << "Version";
    QTest::newRow("no description") << QByteArray(R"({"Name": "N", "Version": "1.0"})") << "Description";
    QTest::newRow("dependencies an object")
        << QByteArray(R"({"Name": "N", "Version": "1", "Description": "D", "Dependencies": {"Name": "A"}})")
        << "Dependencies";
    QTest::newRow("dependency a text") << QByteArray(
        R"({"Name": "N", "Version": "1", "Description": "D", "Dependencies": ["A"]})")
                                       << "Dependencies";
    QTest::newRow("dependency with a wrong version") << QByteArray(
        R"({"Name": "N", "Version": "1", "Description": "D", "Dependencies": [{"Name": "A", "Version": "x"}]})")
                                                     << "Dependencies";
    QTest::newRow("right") << QByteArray(R"({"Name": "N", "Version": "1.2.3", "Description": "D",
                                             "Dependencies": [{"Name": "A", "Version": "2.1"}, {"Name": "B"}]})")
                           << QString();
}

void TestQ3CaricamentoModuli::metadataFieldsAreChecked()
{
    QFETCH(QByteArray, metaData);
    QFETCH(QString, field);
    const QJsonObject plugin{{QStringLiteral("IID"), QStringLiteral(IQ3ModulePlugin_iid)},
                             {QStringLiteral("MetaData"), QJsonDocument::fromJson(metaData).object()}};
    try {
        const TQ3ModuleMetadata read = Q3ModuleMetadataFromJson(plugin);
        QVERIFY2(field.isEmpty(), "accepted");
        QCOMPARE(read.Name, QStringLiteral("N"));
        QCOMPARE(read.Version, QVersionNumber(1, 2, 3));
        QCOMPARE(read.Description, QStringLiteral("D"));
        QCOMPARE(read.Dependencies.size(), 2);
        QCOMPARE(read.Dependencies.at(0).Name, QStringLiteral("A"));
        QCOMPARE(read.Dependencies.at(0).Version, QVersionNumber(2, 1));
        QCOMPARE(read.Dependencies.at(1).Name, QStringLiteral("B"));
        QVERIFY(read.Dependencies.at(1).Version.isNull());
        QCOMPARE(read.FileName(), QStringLiteral("N.so"));
    } catch (const EQ3Exception &e) {
        QCOMPARE(e.Message(),
                 QStringLiteral("nei metadati del modulo il campo \"%1\" manca o non è valido.").arg(field));
    }
}

void TestQ3CaricamentoModuli::documentiCarriesItsMetadata()
{
    const QString path = QDir(TQ3Host::ModulesFolder()).filePath(QStringLiteral("Documenti.so"));
    const TQ3ModuleMetadata metadata = ReadQ3ModuleMetadata(path);
    QCOMPARE(metadata.Name, QStringLiteral("Documenti"));
    QCOMPARE(metadata.Description, QStringLiteral("Modulo Documenti"));
    // The module's version is the release's.
    QCOMPARE(metadata.Version, QVersionNumber::fromString(QStringLiteral(Q3_VERSIONE)));
    QCOMPARE(metadata.Dependencies.size(), 0);
    QCOMPARE(metadata.FileName(), QStringLiteral("Documenti.so"));
    // Read without loading: nothing of the library ran.
    QVERIFY(!QPluginLoader(path).isLoaded());
    QCOMPARE(GetPackageIndex(QStringLiteral("Documenti.so")), -1);
}

void TestQ3CaricamentoModuli::attivitaCarriesItsMetadata()
{
    const QString path = QDir(TQ3Host::ModulesFolder()).filePath(QStringLiteral("Attivita.so"));
    const TQ3ModuleMetadata metadata = ReadQ3ModuleMetadata(path);
    QCOMPARE(metadata.Name, QStringLiteral("Attivita"));
    QCOMPARE(metadata.Description, QStringLiteral("Modulo Attività"));
    QCOMPARE(metadata.Version, QVersionNumber::fromString(QStringLiteral(Q3_VERSIONE)));
    QCOMPARE(metadata.FileName(), QStringLiteral("Attivita.so"));
    QVERIFY(!QPluginLoader(path).isLoaded());
}

void TestQ3CaricamentoModuli::documentiStartsAsTheHostStartsIt()
{
    TQ3TestDatabase database;
    auto mainForm = std::make_unique<TQ3MainForm>();
    auto hostConnection = new TQ3Connection(mainForm.get());
    hostConnection->SetConnectionString(database.ConnectionString());
    hostConnection->Open();
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));

    TQ3ModuleLoader loader;
    loader.Load(TQ3Host::ModulesFolder(), qApp);
    loader.Load(TQ3Host::ModulesFolder(), qApp);
    QCOMPARE(Messages(), QStringList());
    // The activities module starts beside it, in the order of their file names.
    QCOMPARE(loader.Started(), (QStringList{"Attivita.so", "Documenti.so"}));
    QCOMPARE(PackageList().size(), 2);
    const TQ3PackageEntry &attivita = PackageList().at(GetPackageIndex(QStringLiteral("Attivita.so")));
    QCOMPARE(attivita.Description, QStringLiteral("Modulo Attività"));
    QCOMPARE(attivita.MainObject->AsObject()->metaObject()->className(), "TKATMain");
    QVERIFY(mainForm->TopMenu(QStringLiteral("Attività")));
    QCOMPARE(database
                 .Scalar(QStringLiteral("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'PROMEMORIA'"))
                 .toInt(),
             1);
    const TQ3PackageEntry &entry = PackageList().at(GetPackageIndex(QStringLiteral("Documenti.so")));
    QCOMPARE(entry.Description, QStringLiteral("Modulo Documenti"));
    QCOMPARE(entry.MainObject->AsObject()->metaObject()->className(), "TKRVMain");
    QCOMPARE(entry.MainObject->AsObject()->parent(), qApp);
    // Initialised: its menus are in the host's, its tables in the database.
    QVERIFY(mainForm->TopMenu(QStringLiteral("Statistiche")));
    QCOMPARE(database.Scalar(QStringLiteral("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'FATT_VEND'"))
                 .toInt(),
             1);

    loader.Unload();
    QCOMPARE(GetPackageIndex(QStringLiteral("Documenti.so")), -1);
    QCOMPARE(GetPackageIndex(QStringLiteral("Attivita.so")), -1);
    QCOMPARE(Messages(), QStringList());
}

QTEST_MAIN(TestQ3CaricamentoModuli)
#include "tst_q3caricamentomoduli.moc"
