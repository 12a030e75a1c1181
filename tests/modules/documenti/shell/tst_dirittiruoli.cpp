// Rights given in the host's window "Utenti e ruoli" rule the module's
// commands at once: a colleague whose role lacks a right is refused, and the
// same command goes through as soon as the administrator grants it, with
// nothing restarted.
#include "../documents/KRVFattureTestKit.h"
#include "Q3AdminTestKit.h"
#include "Q3UtentiRuoli.h"
#include "uKRVInserimentoBase.h"

#include <QCheckBox>

#include <memory>

using namespace KRVTest;

namespace {

const QString Modifica = QStringLiteral("Fatture di vendita (modifica)");

} // namespace

class TestDirittiRuoli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void grantedInTheWindowTakesEffectWithoutRestart();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    QString Pagato() const
    {
        return Db()
            .Scalar(QStringLiteral("SELECT PAGATO FROM FATT_VEND WHERE IDFATT_VEND = %1").arg(m_fattura))
            .toString();
    }

    std::unique_ptr<TKRVTestModule> m_module;
    int m_fattura = 0;
};

void TestDirittiRuoli::initTestCase()
{
    UseItalianLocale();
    m_module = std::make_unique<TKRVTestModule>();
    InsertAnagraficheDocumenti(Db());
    m_fattura = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, QDate::currentDate().year(),
                                   QStringLiteral("CLN0000001"));
}

void TestDirittiRuoli::cleanupTestCase()
{
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    if (auto editor =
            qobject_cast<TKRVInserimentoBase *>(m_module->Main->Form(QStringLiteral("actInserimentoFattureVendita")))) {
        editor->SetModified(false);
        CloseFrame(editor);
    }
    m_module.reset();
}

void TestDirittiRuoli::grantedInTheWindowTakesEffectWithoutRestart()
{
    TQ3RecordingResponder boxes;
    // The administrator: a colleague, with a role of every right of the module but one.
    TQ3UtentiRuoli window(Db().Db());
    window.show();
    Q3AdminTest::NewUser(&window, QStringLiteral("mrossi"), QStringLiteral("Mario Rossi"));
    Q3AdminTest::NewRole(&window, QStringLiteral("Vendite"));
    const QStringList documenti =
        Db().Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE GRUPPO = 'Documenti'"));
    QVERIFY(documenti.contains(Modifica));
    for (const QString &diritto : documenti) {
        if (diritto != Modifica)
            Q3AdminTest::Right(&window, diritto)->setCheckState(0, Qt::Checked);
    }
    Q3AdminTest::Click(&window, QStringLiteral("btnSalvaDiritti"));
    Q3AdminTest::SelectUser(&window, QStringLiteral("mrossi"));
    const int vendite =
        Db().Scalar(QStringLiteral("SELECT IDRUOLO_UTENTE FROM RUOLI_UTENTE WHERE RUOLO_UTENTE = 'Vendite'")).toInt();
    Q3AdminTest::Click(Q3AdminTest::RoleBox(&window, vendite));
    Q3AdminTest::SetPassword(&window, QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    QCOMPARE(boxes.Messages().size(), 0);

    // The colleague logs in and opens the invoice.
    const QString utente = TQ3Users(Db().Db()).Login(QStringLiteral("mrossi"), QStringLiteral("segreto1"));
    QCOMPARE(utente, QStringLiteral("mrossi"));
    SetQ3CurrentUserName(utente);
    Trigger(m_module->Main->Action(QStringLiteral("actInserimentoFattureVendita")));
    auto editor =
        qobject_cast<TKRVInserimentoBase *>(m_module->Main->Form(QStringLiteral("actInserimentoFattureVendita")));
    QVERIFY(editor);
    editor->ApriRecord(m_fattura);
    const QString prima = Pagato();
    KRVTest::Click(Field<QCheckBox>(editor, QStringLiteral("chkPagato")));
    QVERIFY(editor->Modified());
    boxes.Clear();
    Trigger(editor, QStringLiteral("actSalva"));
    QCOMPARE(boxes.Messages().size(), 1);
    KRV_COMPARE_BOX(boxes.Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QCOMPARE(Pagato(), prima);
    QVERIFY(editor->Modified());

    // The administrator grants the right in the window still open.
    Q3AdminTest::SelectRole(&window, QStringLiteral("Vendite"));
    QCOMPARE(Q3AdminTest::Right(&window, Modifica)->checkState(0), Qt::Unchecked);
    Q3AdminTest::Right(&window, Modifica)->setCheckState(0, Qt::Checked);
    Q3AdminTest::Click(&window, QStringLiteral("btnSalvaDiritti"));
    QVERIFY(!window.DirittiModificati());

    // The same save, by the same colleague, now goes through.
    boxes.Clear();
    Trigger(editor, QStringLiteral("actSalva"));
    for (const TQ3Message &message : boxes.Messages())
        QVERIFY2(!message.Text.contains(QLatin1String("diritti sufficienti")), qPrintable(message.Text));
    QVERIFY(Pagato() != prima);
    QVERIFY(!editor->Modified());
}

QTEST_MAIN(TestDirittiRuoli)
#include "tst_dirittiruoli.moc"
