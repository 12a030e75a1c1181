// Every right of the module's catalogue, refused to a user whose role grants
// all the others, in every action and window command that asks for it: the
// refusal box and nothing else.
#include "../documents/KRVFattureTestKit.h"
#include "uKRVAzioni.h"
#include "uKRVInserimentoBase.h"
#include "uKRVRicercaBase.h"

#include <QCheckBox>
#include <QSet>

#include <memory>

using namespace KRVTest;

namespace {

// The command "doppio clic" is the double click on the list's selected row.
const QString DoppioClic = QStringLiteral("doppio clic");

// A command of a window that asks for a right, the window being shown by its action.
struct TComandoProtetto
{
    QString Finestra;
    QString Comando;
    QString Permesso;
};

// The commands of a sales document's search list and editor, and which of the
// document's three rights ("<documento> (visualizzazione)", "(modifica)",
// "(eliminazione)") each asks for.
QList<TComandoProtetto> ComandiDocumento(const QString &lista, const QString &editor, const QString &documento)
{
    const QString visualizzazione = documento + QStringLiteral(" (visualizzazione)");
    const QString modifica = documento + QStringLiteral(" (modifica)");
    const QString eliminazione = documento + QStringLiteral(" (eliminazione)");
    return {{lista, QStringLiteral("actModifica"), visualizzazione},
            {lista, DoppioClic, visualizzazione},
            {lista, QStringLiteral("actNuovo"), modifica},
            {lista, QStringLiteral("actElimina"), eliminazione},
            {editor, QStringLiteral("actNuovo"), modifica},
            {editor, QStringLiteral("actSalva"), modifica},
            {editor, QStringLiteral("actElimina"), eliminazione}};
}

const QList<TComandoProtetto> &ComandiProtetti()
{
    static const QList<TComandoProtetto> comandi =
        ComandiDocumento(QStringLiteral("actRicercaFattureVendita"), QStringLiteral("actInserimentoFattureVendita"),
                         QStringLiteral("Fatture di vendita"))
        + ComandiDocumento(QStringLiteral("actRicercaNoteAccredito"), QStringLiteral("actInserimentoNoteAccredito"),
                           QStringLiteral("Note di accredito"));
    return comandi;
}

} // namespace

class TestDirittiNegati : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();
    void everyRightOfTheCatalogueIsAskedSomewhere();
    void refusedWithoutTheRight_data();
    void refusedWithoutTheRight();

private:
    const TQ3TestDatabase &Db() const { return m_module->Database; }
    // The main object's windows, which exist and which show, the editors'
    // records and the lists' rows, and the documents in the database.
    QStringList Stato() const;
    // As the administrator: shows the window, on the document, ready for the command.
    QWidget *Prepara(const QString &finestra, const QString &comando);
    void Esegui(QWidget *finestra, const QString &comando);
    void ChiudiFinestre();

    std::unique_ptr<TKRVTestModule> m_module;
    int m_fattura = 0;
    int m_nota = 0;
    int m_utenti = 0;
};

void TestDirittiNegati::initTestCase()
{
    UseItalianLocale();
    m_module = std::make_unique<TKRVTestModule>();
    InsertAnagraficheDocumenti(Db());
    const int anno = QDate::currentDate().year();
    m_fattura = KRVInsertDocumento(Db(), QStringLiteral("FATT_VEND"), 1, anno, QStringLiteral("CLN0000001"));
    m_nota = KRVInsertDocumento(Db(), QStringLiteral("NOTE_ACCREDITO"), 1, anno, QStringLiteral("CLN0000001"));
}

void TestDirittiNegati::cleanupTestCase()
{
    ChiudiFinestre();
    m_module.reset();
}

void TestDirittiNegati::cleanup()
{
    SetQ3CurrentUserName(QString::fromLatin1(Q3AdminUser));
    ChiudiFinestre();
}

void TestDirittiNegati::everyRightOfTheCatalogueIsAskedSomewhere()
{
    QSet<QString> chiesti;
    for (const TKRVActionInfo &azione : KRVActionCatalogue()) {
        if (!azione.Permission.isEmpty())
            chiesti << azione.Permission;
    }
    for (const TComandoProtetto &comando : ComandiProtetti())
        chiesti << comando.Permesso;
    const QStringList catalogo =
        Db().Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE GRUPPO = 'Documenti'"));
    QCOMPARE(catalogo.size(), 7);
    QCOMPARE(chiesti, QSet<QString>(catalogo.cbegin(), catalogo.cend()));
}

void TestDirittiNegati::refusedWithoutTheRight_data()
{
    QTest::addColumn<QString>("finestra");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<QString>("permesso");
    // The main object's actions: the window that would show is no window yet.
    for (const TKRVActionInfo &azione : KRVActionCatalogue()) {
        if (!azione.Permission.isEmpty())
            QTest::addRow("%s senza \"%s\"", qPrintable(azione.Name), qPrintable(azione.Permission))
                << QString() << azione.Name << azione.Permission;
    }
    for (const TComandoProtetto &comando : ComandiProtetti())
        QTest::addRow("%s, %s senza \"%s\"", qPrintable(comando.Finestra), qPrintable(comando.Comando),
                      qPrintable(comando.Permesso))
            << comando.Finestra << comando.Comando << comando.Permesso;
}

void TestDirittiNegati::refusedWithoutTheRight()
{
    QFETCH(QString, finestra);
    QFETCH(QString, comando);
    QFETCH(QString, permesso);
    if (finestra.isEmpty() && !m_module->Main->Action(comando)->isEnabled())
        QSKIP("The action has no window yet: it is disabled and asks nothing.");

    QWidget *window = finestra.isEmpty() ? nullptr : Prepara(finestra, comando);
    QVERIFY(finestra.isEmpty() || window);
    const QStringList prima = Stato();

    QStringList diritti =
        Db().Rows(QStringLiteral("SELECT ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE WHERE GRUPPO = 'Documenti'"));
    QVERIFY(diritti.removeAll(permesso) == 1);
    LoginWithRights(Db(), QStringLiteral("utente%1").arg(++m_utenti), diritti);
    TQ3RecordingResponder boxes;
    const QStringList modali = ModalTitlesWhile([&] { Esegui(window, comando); });

    QCOMPARE(boxes.Messages().size(), 1);
    KRV_COMPARE_BOX(boxes.Messages().at(0), "Attenzione",
                    "Non si dispone di diritti sufficienti per eseguire questa operazione.", Warning, Ok);
    QCOMPARE(modali, QStringList());
    QCOMPARE(Stato(), prima);
}

QStringList TestDirittiNegati::Stato() const
{
    QStringList stato;
    for (const TKRVActionInfo &azione : KRVActionCatalogue()) {
        QWidget *form = m_module->Main->Form(azione.Name);
        if (!form)
            continue;
        QString riga = azione.Name + (form->isVisible() ? QStringLiteral(" visibile") : QStringLiteral(" nascosta"));
        if (auto editor = qobject_cast<TKRVInserimentoBase *>(form))
            riga += QStringLiteral(" record %1 nuovo %2 modificato %3")
                        .arg(editor->IdRecord())
                        .arg(editor->NewRecord())
                        .arg(editor->Modified());
        if (auto lista = qobject_cast<TKRVRicercaBase *>(form))
            riga += QStringLiteral(" righe %1 selezionata %2")
                        .arg(lista->GridRisultati()->rowCount())
                        .arg(lista->GridRisultati()->ChiaveSelezionata());
        stato << riga;
    }
    stato << Db().Rows(QStringLiteral("SELECT 'FATT_VEND', IDFATT_VEND, NUMERO, PAGATO FROM FATT_VEND ORDER BY 2"))
          << Db().Rows(QStringLiteral(
                 "SELECT 'NOTE_ACCREDITO', IDNOTA_ACCREDITO, NUMERO, PAGATO FROM NOTE_ACCREDITO ORDER BY 2"))
          << Db().Rows(QStringLiteral("SELECT 'RIGHE', (SELECT COUNT(*) FROM FATT_VEND_DETT), "
                                      "(SELECT COUNT(*) FROM NOTE_ACCREDITO_DETT) FROM RDB$DATABASE"));
    return stato;
}

QWidget *TestDirittiNegati::Prepara(const QString &finestra, const QString &comando)
{
    Trigger(m_module->Main->Action(finestra));
    QWidget *window = m_module->Main->Form(finestra);
    if (auto lista = qobject_cast<TKRVRicercaBase *>(window)) {
        Trigger(lista, QStringLiteral("actCerca"));
        SelectRow(lista->GridRisultati(), 0);
    } else if (auto editor = qobject_cast<TKRVInserimentoBase *>(window)) {
        editor->ApriRecord(finestra == QLatin1String("actInserimentoFattureVendita") ? m_fattura : m_nota);
        if (comando == QLatin1String("actSalva"))
            Click(Field<QCheckBox>(editor, QStringLiteral("chkPagato")));
    }
    return window;
}

void TestDirittiNegati::Esegui(QWidget *finestra, const QString &comando)
{
    if (!finestra)
        Trigger(m_module->Main->Action(comando));
    else if (comando == DoppioClic)
        DoubleClickRow(qobject_cast<TKRVRicercaBase *>(finestra)->GridRisultati(), 0);
    else
        Trigger(finestra, comando);
}

void TestDirittiNegati::ChiudiFinestre()
{
    for (const TKRVActionInfo &azione : KRVActionCatalogue()) {
        QWidget *form = m_module ? m_module->Main->Form(azione.Name) : nullptr;
        if (!form || azione.Shape != TKRVActionShape::ShowReused)
            continue;
        if (auto editor = qobject_cast<TKRVInserimentoBase *>(form))
            editor->SetModified(false);
        CloseFrame(form);
    }
}

QTEST_MAIN(TestDirittiNegati)
#include "tst_dirittinegati.moc"
