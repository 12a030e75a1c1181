// The host's "Amministrazione" menu as the running program builds it: its
// commands, the refusal for a user who is no administrator, and the windows
// they open for an administrator.
#include "Q3CambiaPassword.h"
#include "Q3Host.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3OpzioniDialog.h"
#include "Q3Packages.h"
#include "Q3Ruoli.h"
#include "Q3Users.h"
#include "Q3UtentiRuoli.h"

#include <QApplication>
#include <QGroupBox>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

namespace {

// Runs the action; the modal window it opens is looked at, then closed.
QString FinestraAperta(QAction *action, std::function<void(QWidget *)> guarda = {})
{
    QString aperta;
    // A timer of this call only: gone with it when no window opened.
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (QWidget *window = QApplication::activeModalWidget()) {
            aperta = window->objectName();
            if (guarda)
                guarda(window);
            window->close();
        }
    });
    timer.start(0);
    action->trigger();
    return aperta;
}

} // namespace

class TestQ3Amministrazione : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void menuHoldsTheCommands();
    void whoIsNoAdministratorIsRefused();
    void anAdministratorOpensEveryWindow();
    void optionsShowTheHostsAndTheModulesOptions();

private:
    QTemporaryDir m_dir;
    std::unique_ptr<TQ3Host> m_host;
    QMenu *m_menu = nullptr;

    QAction *Azione(const char *name) const { return m_menu->findChild<QAction *>(QLatin1String(name)); }
};

void TestQ3Amministrazione::init()
{
    TQ3StartOptions options;
    options.Database = m_dir.filePath(QStringLiteral("amministrazione.fdb"));
    m_host = std::make_unique<TQ3Host>(options);
    m_host->OpenDatabase();
    TQ3Ruoli ruoli(m_host->Connection()->Database());
    ruoli.NuovoUtente(QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    SetQ3CurrentUserName(QString::fromLatin1("admin"));
    m_host->LoadModules();
    m_host->CreaMenuAmministrazione();
    m_menu = m_host->MainForm()->TopMenu(QStringLiteral("Amministrazione"));
    QVERIFY(m_menu);
}

void TestQ3Amministrazione::cleanup()
{
    m_host.reset();
    QVERIFY(QFile::remove(m_dir.filePath(QStringLiteral("amministrazione.fdb"))));
}

void TestQ3Amministrazione::menuHoldsTheCommands()
{
    QStringList comandi;
    for (const QAction *action : m_menu->actions())
        comandi << (action->isSeparator() ? QStringLiteral("-")
                                          : action->objectName() + QLatin1Char('=') + action->text());
    QCOMPARE(comandi, (QStringList{"actDatiAzienda=Dati azienda...", "actUtentiRuoli=Utenti e ruoli...",
                                   "actOpzioni=Opzioni...", "-", "actBackup=Backup...", "actRipristino=Ripristino...",
                                   "-", "actCambiaPassword=Cambia password..."}));
}

void TestQ3Amministrazione::whoIsNoAdministratorIsRefused()
{
    SetQ3CurrentUserName(QStringLiteral("mrossi"));
    TQ3RecordingResponder boxes;
    for (const char *name : {"actDatiAzienda", "actUtentiRuoli", "actOpzioni", "actBackup", "actRipristino"}) {
        boxes.Clear();
        QCOMPARE(FinestraAperta(Azione(name)), QString());
        QCOMPARE(boxes.Messages().size(), 1);
        QCOMPARE(boxes.Messages().at(0).Title, QStringLiteral("Attenzione"));
        QCOMPARE(boxes.Messages().at(0).Text,
                 QStringLiteral("Non si dispone di diritti sufficienti per eseguire questa operazione."));
    }
    // Everybody changes their own password.
    boxes.Clear();
    QCOMPARE(FinestraAperta(Azione("actCambiaPassword")), QStringLiteral("Q3CambiaPassword"));
    QVERIFY(boxes.Messages().isEmpty());

    // Made administrator, the same user opens them.
    TQ3Ruoli ruoli(m_host->Connection()->Database());
    for (const TQ3Ruolo &ruolo : ruoli.Ruoli()) {
        if (ruolo.Nome == QLatin1String("Amministratore"))
            ruoli.AssegnaRuolo(QStringLiteral("mrossi"), ruolo.Id);
    }
    boxes.Clear();
    QCOMPARE(FinestraAperta(Azione("actOpzioni")), QStringLiteral("Q3Opzioni"));
    QVERIFY(boxes.Messages().isEmpty());
}

void TestQ3Amministrazione::anAdministratorOpensEveryWindow()
{
    TQ3RecordingResponder boxes;
    QCOMPARE(FinestraAperta(Azione("actDatiAzienda")), QStringLiteral("Q3DatiAzienda"));
    QCOMPARE(FinestraAperta(Azione("actUtentiRuoli")), QStringLiteral("Q3UtentiRuoli"));
    QCOMPARE(FinestraAperta(Azione("actOpzioni")), QStringLiteral("Q3Opzioni"));
    QCOMPARE(FinestraAperta(Azione("actBackup")), QStringLiteral("Q3Backup"));
    QCOMPARE(FinestraAperta(Azione("actRipristino")), QStringLiteral("Q3Ripristino"));
    QCOMPARE(FinestraAperta(Azione("actCambiaPassword")), QStringLiteral("Q3CambiaPassword"));
    QVERIFY(boxes.Messages().isEmpty());
}

void TestQ3Amministrazione::optionsShowTheHostsAndTheModulesOptions()
{
    QStringList gruppi;
    QStringList opzioni;
    FinestraAperta(Azione("actOpzioni"), [&](QWidget *window) {
        for (const QGroupBox *gruppo : window->findChildren<QGroupBox *>())
            gruppi << gruppo->title();
        for (const char *name : {"BACKUP_AUTOMATICO", "BACKUP_CARTELLA", "BACKUP_COPIE", "NUMERAZIONE_UNICA_FATTURE",
                                 "FATT_IVA_ESENTE_NOTE"}) {
            if (window->findChild<QWidget *>(QLatin1String(name)))
                opzioni << QLatin1String(name);
        }
    });
    QCOMPARE(gruppi, (QStringList{"Quillo 3", "Modulo Documenti"}));
    QCOMPARE(opzioni.size(), 5);
}

QTEST_MAIN(TestQ3Amministrazione)
#include "tst_q3amministrazione.moc"
