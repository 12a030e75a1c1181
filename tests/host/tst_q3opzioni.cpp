// The options window: the options the loaded modules declare in their
// metadata, read from and written to the host's option store, and the
// administration menu that opens it for administrators only.
#include "Q3ArchivioOpzioni.h"
#include "Q3Backup.h"
#include "Q3Exception.h"
#include "Q3Host.h"
#include "Q3MainForm.h"
#include "Q3MenuAmministrazione.h"
#include "Q3Messages.h"
#include "Q3ModuleMetadata.h"
#include "Q3OpzioniDialog.h"
#include "Q3TestDatabase.h"

#include <QComboBox>
#include <QDir>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QtTest>

namespace {

// The metadata of the real module, as the host reads it before loading it.
TQ3ModuleMetadata Documenti()
{
    return ReadQ3ModuleMetadata(QDir(TQ3Host::ModulesFolder()).filePath(QStringLiteral("Documenti.so")));
}

// A plug-in's metadata with these options.
QJsonObject ConOpzioni(const QByteArray &options)
{
    const QByteArray json = R"({"IID": "it.quillo3.IQ3ModulePlugin/2.1", "MetaData": {"Name": "Prova",
        "Version": "1.0", "Description": "Modulo di prova", "Options": )"
                            + options + "}}";
    return QJsonDocument::fromJson(json).object();
}

// The natures an invoice dated from 2021 may carry.
QStringList NatureIva()
{
    return {"N1",   "N2.1", "N2.2", "N3.1", "N3.2", "N3.3", "N3.4", "N3.5", "N3.6", "N4", "N5",
            "N6.1", "N6.2", "N6.3", "N6.4", "N6.5", "N6.6", "N6.7", "N6.8", "N6.9", "N7"};
}

const QString Natura = QStringLiteral("FATTURAPA_NATURA_NON_IMPONIBILE");

QString Opzione(const TQ3TestDatabase &db, const char *key)
{
    return db.Scalar(QStringLiteral("SELECT VALORE FROM OPZIONI WHERE OPZIONE = '%1'").arg(QLatin1String(key)))
        .toString();
}

int Righe(const TQ3TestDatabase &db, const char *key)
{
    return db.Scalar(QStringLiteral("SELECT COUNT(*) FROM OPZIONI WHERE OPZIONE = '%1'").arg(QLatin1String(key)))
        .toInt();
}

void Clicca(QDialog &dialog, const char *name)
{
    auto button = dialog.findChild<QPushButton *>(QLatin1String(name));
    QVERIFY2(button && button->isEnabled() && button->isVisible(), name);
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace

class TestQ3Opzioni : public QObject
{
    Q_OBJECT

private slots:
    void theModuleDeclaresItsOptions();
    void wrongOptionsInTheMetadataAreRefused();
    void optionsShowWhatTheStoreHolds();
    void savedOptionsRoundTrip();
    void choiceShowsItsValuesAndStoresTheOneChosen();
    void choiceKeepsAStoredValueOutsideItsList();
    void hostileTextStoredUnchanged();
    void closingWithChangesAsksFirst();
    void noModuleOptionsSaysSo();
    void menuRefusesWhoIsNoAdministrator();
    void theBackupReadsSiNoAsTheWindowShowsIt();
};

void TestQ3Opzioni::theModuleDeclaresItsOptions()
{
    const TQ3ModuleMetadata metadata = Documenti();
    QCOMPARE(metadata.Options.size(), 4);
    QCOMPARE(metadata.Options.at(0).Key, QStringLiteral("NUMERAZIONE_UNICA_FATTURE"));
    QVERIFY(metadata.Options.at(0).Kind == TQ3ModuleOptionKind::SiNo);
    QCOMPARE(metadata.Options.at(0).Default, QStringLiteral("False"));
    QCOMPARE(metadata.Options.at(1).Key, QStringLiteral("FATT_IVA_ESENTE_NOTE"));
    QVERIFY(metadata.Options.at(1).Kind == TQ3ModuleOptionKind::Testo);
    QCOMPARE(metadata.Options.at(1).Default, QString());
    // The nature of the operation the "Non imponibile" lines carry on an electronic invoice.
    const TQ3ModuleOption &natura = metadata.Options.at(2);
    QCOMPARE(natura.Key, QStringLiteral("FATTURAPA_NATURA_NON_IMPONIBILE"));
    QVERIFY(natura.Kind == TQ3ModuleOptionKind::Scelta);
    QCOMPARE(natura.Default, QStringLiteral("N1"));
    QCOMPARE(natura.Values, NatureIva());
    // And the one the lines of an exempt invoice carry when their rate has none.
    const TQ3ModuleOption &esente = metadata.Options.at(3);
    QCOMPARE(esente.Key, QStringLiteral("FATTURAPA_NATURA_ESENTE"));
    QVERIFY(esente.Kind == TQ3ModuleOptionKind::Scelta);
    QCOMPARE(esente.Default, QStringLiteral("N4"));
    QCOMPARE(esente.Values, NatureIva());
}

void TestQ3Opzioni::wrongOptionsInTheMetadataAreRefused()
{
    const QString atteso = QStringLiteral("nei metadati del modulo il campo \"Options\" manca o non è valido.");
    for (const QByteArray &wrong :
         {QByteArray(R"("tutte")"), QByteArray(R"([{"Caption": "Senza chiave"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Numero"}])"),
          QByteArray(R"([{"Key": "K", "Type": "Testo"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Default": "A"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": []}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": "A"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": ["A", 1],
                                                    "Default": "A"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": ["A", " "],
                                                    "Default": "A"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": ["A", "B"],
                                                    "Default": "C"}])"),
          QByteArray(R"([{"Key": "K", "Caption": "C", "Type": "Scelta", "Values": ["A"]}])")}) {
        try {
            Q3ModuleMetadataFromJson(ConOpzioni(wrong));
            QFAIL(wrong.constData());
        } catch (const EQ3Exception &e) {
            QCOMPARE(e.Message(), atteso);
        }
    }
    const TQ3ModuleMetadata giusto =
        Q3ModuleMetadataFromJson(ConOpzioni(R"([{"Key": "K", "Caption": "Una", "Type": "SiNo", "Default": "True"}])"));
    QCOMPARE(giusto.Options.size(), 1);
    QVERIFY(giusto.Options.at(0).Kind == TQ3ModuleOptionKind::SiNo);
    const TQ3ModuleMetadata scelta = Q3ModuleMetadataFromJson(
        ConOpzioni(R"([{"Key": "K", "Caption": "Una", "Type": "Scelta", "Values": ["A", "B"], "Default": "B"}])"));
    QVERIFY(scelta.Options.at(0).Kind == TQ3ModuleOptionKind::Scelta);
    QCOMPARE(scelta.Options.at(0).Values, QStringList({"A", "B"}));
    QCOMPARE(scelta.Options.at(0).Default, QStringLiteral("B"));
}

void TestQ3Opzioni::optionsShowWhatTheStoreHolds()
{
    TQ3TestDatabase db;
    // The host's new database holds the numbering option ("False"), not the note.
    QCOMPARE(Opzione(db, "NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("False"));
    QCOMPARE(Righe(db, "FATT_IVA_ESENTE_NOTE"), 0);
    db.Exec(QStringLiteral("UPDATE OPZIONI SET VALORE = '1' WHERE OPZIONE = 'NUMERAZIONE_UNICA_FATTURE'"));

    TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Opzioni"));
    auto numerazione = dialog.findChild<QComboBox *>(QStringLiteral("NUMERAZIONE_UNICA_FATTURE"));
    auto nota = dialog.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE"));
    QVERIFY(numerazione && nota);
    QCOMPARE(numerazione->currentText(), QStringLiteral("Sì"));
    QCOMPARE(numerazione->count(), 2);
    QCOMPARE(nota->text(), QString());
    QCOMPARE(numerazione->accessibleName(), QStringLiteral("Numerazione unica per fatture e fatture accompagnatorie"));
    QCOMPARE(nota->accessibleName(), QStringLiteral("Nota stampata sulle fatture esenti IVA"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lblFATT_IVA_ESENTE_NOTE"))->buddy(), nota);
    QVERIFY(!dialog.findChild<QPushButton *>(QStringLiteral("btnSalva"))->isEnabled());
}

void TestQ3Opzioni::savedOptionsRoundTrip()
{
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    {
        TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
        dialog.show();
        dialog.findChild<QComboBox *>(QStringLiteral("NUMERAZIONE_UNICA_FATTURE"))
            ->setCurrentText(QStringLiteral("Sì"));
        QTest::keyClicks(dialog.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE")),
                         QStringLiteral("Operazione non imponibile art. 8"));
        Clicca(dialog, "btnSalva");
        QVERIFY(!dialog.Modificato());
    }
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Opzione(db, "NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True"));
    QCOMPARE(Opzione(db, "FATT_IVA_ESENTE_NOTE"), QStringLiteral("Operazione non imponibile art. 8"));
    QCOMPARE(Righe(db, "NUMERAZIONE_UNICA_FATTURE"), 1);

    TQ3OpzioniDialog again(db.Db(), {Documenti()});
    QCOMPARE(again.findChild<QComboBox *>(QStringLiteral("NUMERAZIONE_UNICA_FATTURE"))->currentText(),
             QStringLiteral("Sì"));
    QCOMPARE(again.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE"))->text(),
             QStringLiteral("Operazione non imponibile art. 8"));
    again.findChild<QComboBox *>(QStringLiteral("NUMERAZIONE_UNICA_FATTURE"))->setCurrentText(QStringLiteral("No"));
    QVERIFY(again.Salva());
    QCOMPARE(Opzione(db, "NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("False"));
}

// A choice shows its values in their order, its default while the store has
// none, and stores the one chosen.
void TestQ3Opzioni::choiceShowsItsValuesAndStoresTheOneChosen()
{
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    QCOMPARE(Righe(db, "FATTURAPA_NATURA_NON_IMPONIBILE"), 0);
    {
        TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
        dialog.show();
        auto natura = dialog.findChild<QComboBox *>(Natura);
        QVERIFY(natura);
        QStringList shown;
        for (int i = 0; i < natura->count(); ++i)
            shown << natura->itemText(i);
        QCOMPARE(shown, NatureIva());
        QCOMPARE(natura->currentText(), QStringLiteral("N1"));
        QCOMPARE(natura->accessibleName(),
                 QStringLiteral("Natura IVA delle righe \"Non imponibile\" nella fattura elettronica"));
        QVERIFY(!dialog.findChild<QPushButton *>(QStringLiteral("btnSalva"))->isEnabled());

        // Chosen from the keyboard, as the user does.
        natura->setFocus();
        for (int i = 0; i < 9; ++i)
            QTest::keyClick(natura, Qt::Key_Down);
        QCOMPARE(natura->currentText(), QStringLiteral("N4"));
        Clicca(dialog, "btnSalva");
        QVERIFY(!dialog.Modificato());
    }
    QVERIFY(boxes.Messages().isEmpty());
    QCOMPARE(Opzione(db, "FATTURAPA_NATURA_NON_IMPONIBILE"), QStringLiteral("N4"));
    TQ3OpzioniDialog again(db.Db(), {Documenti()});
    QCOMPARE(again.findChild<QComboBox *>(Natura)->currentText(), QStringLiteral("N4"));
    QVERIFY(!again.Modificato());
}

// A stored value the list does not offer (written by an older version, or by
// hand) is shown as it is, and saving other options keeps it.
void TestQ3Opzioni::choiceKeepsAStoredValueOutsideItsList()
{
    TQ3TestDatabase db;
    Q3ScriviOpzioni(db.Db(), {{Natura, QStringLiteral("N2")}});
    TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
    auto natura = dialog.findChild<QComboBox *>(Natura);
    QVERIFY(natura);
    QCOMPARE(natura->currentText(), QStringLiteral("N2"));
    QCOMPARE(natura->count(), NatureIva().size() + 1);
    QVERIFY(!dialog.Modificato());
    dialog.findChild<QComboBox *>(QStringLiteral("NUMERAZIONE_UNICA_FATTURE"))->setCurrentText(QStringLiteral("Sì"));
    QVERIFY(dialog.Salva());
    QCOMPARE(Opzione(db, "FATTURAPA_NATURA_NON_IMPONIBILE"), QStringLiteral("N2"));
    QCOMPARE(Opzione(db, "NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("True"));
}

void TestQ3Opzioni::hostileTextStoredUnchanged()
{
    TQ3TestDatabase db;
    const QStringList ostili{QStringLiteral("O'Brien \"citato\"; DROP TABLE OPZIONI; --"),
                             QStringLiteral("' OR '1'='1"), QString(1000, QLatin1Char('x')),
                             QStringLiteral("Ελληνικά и русский 中文 \\ %_")};
    for (const QString &testo : ostili) {
        TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
        auto nota = dialog.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE"));
        // Pasted: not every character has a key.
        nota->selectAll();
        nota->insert(testo);
        QVERIFY(dialog.Salva());
        QCOMPARE(Q3LeggiOpzione(db.Db(), QStringLiteral("FATT_IVA_ESENTE_NOTE")), testo);
    }
    QCOMPARE(Opzione(db, "NUMERAZIONE_UNICA_FATTURE"), QStringLiteral("False"));
}

void TestQ3Opzioni::closingWithChangesAsksFirst()
{
    TQ3TestDatabase db;
    TQ3RecordingResponder boxes;
    const auto cambia = [](TQ3OpzioniDialog &dialog, const QString &testo) {
        QTest::keyClicks(dialog.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE")), testo);
    };

    // Cancel: the window stays, with what was typed.
    TQ3OpzioniDialog dialog(db.Db(), {Documenti()});
    dialog.show();
    cambia(dialog, QStringLiteral("Prima"));
    boxes.Enqueue(TQ3MsgResult::Cancel);
    Clicca(dialog, "btnChiudi");
    QCOMPARE(boxes.Messages().size(), 1);
    QCOMPARE(boxes.Messages().at(0).Title, QStringLiteral("Conferma"));
    QCOMPARE(boxes.Messages().at(0).Text, QStringLiteral("Salvare le modifiche alle opzioni?"));
    QVERIFY(boxes.Messages().at(0).Icon == TQ3MsgIcon::Question);
    QVERIFY(boxes.Messages().at(0).Buttons == TQ3MsgButtons::YesNoCancel);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("FATT_IVA_ESENTE_NOTE"))->text(), QStringLiteral("Prima"));
    QCOMPARE(Righe(db, "FATT_IVA_ESENTE_NOTE"), 0);

    // No: closed, nothing stored.
    boxes.Enqueue(TQ3MsgResult::No);
    Clicca(dialog, "btnChiudi");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(Righe(db, "FATT_IVA_ESENTE_NOTE"), 0);

    // Yes: stored, then closed.
    TQ3OpzioniDialog second(db.Db(), {Documenti()});
    second.show();
    cambia(second, QStringLiteral("Seconda"));
    boxes.Enqueue(TQ3MsgResult::Yes);
    Clicca(second, "btnChiudi");
    QVERIFY(!second.isVisible());
    QCOMPARE(Opzione(db, "FATT_IVA_ESENTE_NOTE"), QStringLiteral("Seconda"));

    // Nothing changed: no question.
    boxes.Clear();
    TQ3OpzioniDialog third(db.Db(), {Documenti()});
    third.show();
    Clicca(third, "btnChiudi");
    QVERIFY(boxes.Messages().isEmpty());
    QVERIFY(!third.isVisible());
}

void TestQ3Opzioni::noModuleOptionsSaysSo()
{
    TQ3TestDatabase db;
    TQ3OpzioniDialog dialog(db.Db(), {});
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lblNessunaOpzione"))->text(),
             QStringLiteral("Nessun modulo caricato ha delle opzioni."));
    QVERIFY(!dialog.findChild<QComboBox *>());
}

void TestQ3Opzioni::menuRefusesWhoIsNoAdministrator()
{
    TQ3MainForm form;
    bool amministratore = false;
    int eseguiti = 0;
    int password = 0;
    QMenu *menu = Q3CreaMenuAmministrazione(&form,
                                            {{QStringLiteral("actOpzioni"), QStringLiteral("Opzioni..."), true,
                                              [&] { ++eseguiti; }},
                                             {},
                                             {QStringLiteral("actCambiaPassword"), QStringLiteral("Cambia password..."),
                                              false, [&] { ++password; }}},
                                            [&] { return amministratore; });
    QCOMPARE(form.TopMenu(QStringLiteral("Amministrazione")), menu);
    // Before "?".
    const QList<QAction *> top = form.menuBar()->actions();
    QCOMPARE(top.at(top.size() - 2)->menu(), menu);
    QCOMPARE(menu->actions().size(), 3);
    QVERIFY(menu->actions().at(1)->isSeparator());

    TQ3RecordingResponder boxes;
    auto opzioni = menu->findChild<QAction *>(QStringLiteral("actOpzioni"));
    QVERIFY(opzioni->isEnabled());
    opzioni->trigger();
    QCOMPARE(eseguiti, 0);
    QCOMPARE(boxes.Messages().size(), 1);
    QCOMPARE(boxes.Messages().at(0).Title, QStringLiteral("Attenzione"));
    QCOMPARE(boxes.Messages().at(0).Text,
             QStringLiteral("Non si dispone di diritti sufficienti per eseguire questa operazione."));
    QVERIFY(boxes.Messages().at(0).Icon == TQ3MsgIcon::Warning);

    // Every user may change their own password.
    menu->findChild<QAction *>(QStringLiteral("actCambiaPassword"))->trigger();
    QCOMPARE(password, 1);

    amministratore = true;
    opzioni->trigger();
    QCOMPARE(eseguiti, 1);
    QCOMPARE(boxes.Messages().size(), 1);
}

// A "Sì" the window shows is an automatic backup the exit makes, whatever word stored it.
void TestQ3Opzioni::theBackupReadsSiNoAsTheWindowShowsIt()
{
    for (const auto &[valore, vero] :
         {std::pair{"True", true}, std::pair{"true", true}, std::pair{"1", true}, std::pair{"-1", true},
          std::pair{"0", false}, std::pair{"False", false}, std::pair{"sì", false}, std::pair{"", false}})
        QCOMPARE(Q3OpzioneVera(QString::fromUtf8(valore)), vero);
    TQ3TestDatabase db;
    Q3ScriviOpzioni(db.Db(), {{QStringLiteral("BACKUP_AUTOMATICO"), QStringLiteral("1")}});
    QVERIFY(TQ3AutoBackupOptions::Read(db.Db()).Attivo);
    TQ3AutoBackupOptions opzioni;
    opzioni.Cartella = QStringLiteral("/copie");
    opzioni.Copie = 3;
    opzioni.Write(db.Db());
    QCOMPARE(Opzione(db, "BACKUP_AUTOMATICO"), QStringLiteral("False"));
    QCOMPARE(Opzione(db, "BACKUP_CARTELLA"), QStringLiteral("/copie"));
    QCOMPARE(Opzione(db, "BACKUP_COPIE"), QStringLiteral("3"));
}

QTEST_MAIN(TestQ3Opzioni)
#include "tst_q3opzioni.moc"
