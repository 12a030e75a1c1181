// Hostile texts typed into every filter of the search lists and the selection
// dialogs: no error box, exactly the rows that hold the text, and not one row
// of any table changed.
#include "../documents/KRVDdtTestRows.h"
#include "KRVInputOstile.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaCliente.h"
#include "uKRVModSelezionaDdtScaricoMulti.h"
#include "uKRVModSelezionaNotaDocumenti.h"
#include "uKRVModSelezionaServizio.h"
#include "uKRVModSelezionaTipoPagamento.h"
#include "uKRVModSelezionaUM.h"
#include "uKRVRicercaAliquoteIva.h"
#include "uKRVRicercaArticoli.h"
#include "uKRVRicercaClienti.h"
#include "uKRVRicercaFattureVendita.h"
#include "uKRVRicercaNoteAccredito.h"
#include "uKRVRicercaNoteDocumenti.h"
#include "uKRVRicercaServizi.h"
#include "uKRVRicercaTipiPagamento.h"
#include "uKRVRicercaUM.h"

#include <QDate>
#include <QRegularExpression>
#include <QScopeGuard>

#include <algorithm>

using namespace KRVTest;

namespace {

// A row as the filters see it: its key and the texts they search.
struct TRiga
{
    int Id = 0;
    QStringList Testi;
};

using TCorrispondenza = std::function<bool(const TRiga &riga, const QString &testo)>;

bool Contiene(const QString &testo, const QString &cercato)
{
    return testo.contains(cercato, Qt::CaseInsensitive);
}

// A filter on one of the row's texts.
TCorrispondenza Colonna(int i)
{
    return [i](const TRiga &riga, const QString &testo) { return Contiene(riga.Testi.at(i), testo); };
}

TCorrispondenza UnaDelle(QList<int> colonne)
{
    return [colonne](const TRiga &riga, const QString &testo) {
        return std::any_of(colonne.begin(), colonne.end(), [&](int i) { return Contiene(riga.Testi.at(i), testo); });
    };
}

// The names the database's LIKE finds with the pattern (no escape character).
bool Like(const QString &testo, const QString &modello)
{
    QString espressione;
    QString letterale;
    for (const QChar c : modello) {
        if (c == QLatin1Char('%') || c == QLatin1Char('_')) {
            espressione += QRegularExpression::escape(letterale)
                           + (c == QLatin1Char('%') ? QStringLiteral(".*") : QStringLiteral("."));
            letterale.clear();
        } else {
            letterale += c;
        }
    }
    espressione += QRegularExpression::escape(letterale);
    const QRegularExpression like(QRegularExpression::anchoredPattern(espressione),
                                  QRegularExpression::DotMatchesEverythingOption);
    if (!like.isValid())
        qFatal("pattern %s", qPrintable(espressione));
    return like.match(testo).hasMatch();
}

QList<int> Chiavi(const TKRVGrigliaRisultati *grid)
{
    QList<int> chiavi;
    for (int row = 0; row < grid->rowCount(); ++row)
        chiavi << grid->Valore(row, 0).toInt();
    std::sort(chiavi.begin(), chiavi.end());
    return chiavi;
}

QString Codice(int i, const QString &testo)
{
    return Taglia(QStringLiteral("%1").arg(i, 2, 10, QLatin1Char('0')) + testo, 20);
}

} // namespace

class TestInputOstileRicerca : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void customerListFilters();
    void customerLetterBars();
    void articleListFilters();
    void serviceListFilters();
    void unitListFilter();
    void vatListFilter();
    void documentNoteListFilter();
    void paymentTypeListHasNoFilter();
    void invoiceListFilters();
    void creditNoteListFilters();
    void customerDialogFilter();
    void articleAndServiceDialogFilters();
    void documentNoteDialogFilter();
    void deliveryNoteDialogFilter();
    void dialogsWithoutFiltersShowEveryRow();
    void deleteTestsTheCodeFilterAsTyped();
    void refusalSaysWhichCharacters();

private:
    const QSqlDatabase Db() const { return m_module->Database.Db(); }
    void Semina();
    void SeminaDocumenti(const QString &tabella, const QString &righe, const QString &chiave, bool fattura);
    QList<TRiga> Righe(const QString &sql) const;
    // Types every hostile text into the filter and searches; checks the rows.
    void ProvaFiltro(QWidget *window, TKRVGrigliaRisultati *grid, const QString &filtro, bool invio,
                     const QList<TRiga> &righe, const TCorrispondenza &corrisponde);
    void Conta(const QString &dove);
    template <typename T>
    T *Lista(const QString &action)
    {
        return Run<T>(*m_module, action);
    }

    std::unique_ptr<TKRVTestModule> m_module;
    std::unique_ptr<TQ3RecordingResponder> m_boxes;
    QHash<QString, QStringList> m_foto;
    int m_anno = 0;
    int m_provati = 0;
};

void TestInputOstileRicerca::initTestCase()
{
    UseItalianLocale();
    UsaDatabaseInMemoria();
    m_module = std::make_unique<TKRVTestModule>();
    m_module->MainForm->show();
    m_boxes = std::make_unique<TQ3RecordingResponder>();
    m_anno = QDate::currentDate().year();
    Semina();
    m_foto = Fotografia(Db());
    qInfo("%d testi ostili per ogni filtro", int(TestiOstili().size()));
}

void TestInputOstileRicerca::cleanupTestCase()
{
    m_boxes.reset();
    m_module.reset();
}

void TestInputOstileRicerca::init()
{
    m_provati = 0;
    m_boxes->Clear();
}

// Not one row of any table changed, whatever was searched.
void TestInputOstileRicerca::cleanup()
{
    QVERIFY(Fotografia(Db()) == m_foto);
}

void TestInputOstileRicerca::Conta(const QString &dove)
{
    qInfo("%s: %d testi ostili provati", qPrintable(dove), m_provati);
}

// Rows holding the base texts (those the database can be handed), cut to
// their columns, besides a few plain ones.
void TestInputOstileRicerca::Semina()
{
    LoadDdtTables(m_module->Database);
    QSqlDatabase db = Db();
    // One commit for all the rows.
    db.transaction();
    QStringList basi;
    for (const QString &base : TestiOstiliBase()) {
        if (!NonAmmesso(base))
            basi << base;
    }
    basi << QStringLiteral("Rossi Mario") << QStringLiteral("alfa srl") << QStringLiteral("ROSSI & FIGLI SRL");

    InserisciRiga(db, QStringLiteral("CATEGORIE_ANA_MAGA"), {QStringLiteral("CATEGORIA")},
                  {QStringLiteral("Generale")});
    InserisciRiga(db, QStringLiteral("CATEGORIE_SERVIZI"), {QStringLiteral("CATEGORIA")}, {QStringLiteral("Generale")});
    const int catArticoli = GetLastGeneratorValue(QStringLiteral("GN_IDCATEGORIA_ANA_MAGA"), db);
    const int catServizi = GetLastGeneratorValue(QStringLiteral("GN_IDCATEGORIA_SERVIZI"), db);
    QSet<QString> um;
    for (int i = 0; i < basi.size(); ++i) {
        const QString &base = basi.at(i);
        QVariantList telefoni{QStringLiteral("059 1"), QStringLiteral("059 2"), QStringLiteral("059 3"),
                              QStringLiteral("059 4")};
        telefoni[i % 4] = Taglia(base, 20);
        InserisciRiga(db, QStringLiteral("CLIENTI"),
                      {QStringLiteral("CODICE"), QStringLiteral("RAGIONESOCIALE"), QStringLiteral("IDTIPO_PAGAMENTO"),
                       QStringLiteral("TELEFONO1"), QStringLiteral("TELEFONO2"), QStringLiteral("TELEFONO3"),
                       QStringLiteral("FAX")},
                      QVariantList{Codice(i, base), Taglia(QStringLiteral("Ditta ") + base, 100), 1} + telefoni);
        // Names that begin with the text itself, for the letter bars.
        InserisciRiga(db, QStringLiteral("CLIENTI"), {QStringLiteral("CODICE"), QStringLiteral("RAGIONESOCIALE")},
                      {Codice(i, QStringLiteral("N")), Taglia(base, 100)});
        for (const auto &[tabella, categoria, idCategoria, descrizione] :
             {std::tuple{QStringLiteral("ANA_MAGA"), QStringLiteral("IDCATEGORIA_ANA_MAGA"), catArticoli, 100},
              std::tuple{QStringLiteral("SERVIZI"), QStringLiteral("IDCATEGORIA_SERVIZI"), catServizi, 150}}) {
            QStringList colonne{QStringLiteral("CODICE"),
                                QStringLiteral("DESCRIZIONE"),
                                categoria,
                                QStringLiteral("PREZZO"),
                                QStringLiteral("COSTO"),
                                QStringLiteral("IDALIQUOTA_IVA"),
                                QStringLiteral("IDUM")};
            QVariantList
                valori{Codice(i, base), Taglia(QStringLiteral("Voce ") + base, descrizione), idCategoria, 10, 5, 1, 1};
            if (tabella == QLatin1String("ANA_MAGA")) {
                colonne << QStringLiteral("SOTTOSCORTA") << QStringLiteral("RIORDINO");
                valori << 0 << 0;
            }
            InserisciRiga(db, tabella, colonne, valori);
        }
        const QString unita = Taglia(base, 5);
        if (!um.contains(unita)) {
            um.insert(unita);
            InserisciRiga(db, QStringLiteral("UM"), {QStringLiteral("UM")}, {unita});
        }
        InserisciRiga(db, QStringLiteral("ALIQUOTE_IVA"),
                      {QStringLiteral("CODICE"), QStringLiteral("DESCRIZIONE"), QStringLiteral("ALIQUOTA")},
                      {QString(QChar(QLatin1Char('A').unicode() + i / 10)) + QString::number(i % 10), Taglia(base, 30),
                       10});
        InserisciRiga(db, QStringLiteral("TIPI_PAGAMENTO"), {QStringLiteral("TIPO_PAGAMENTO")},
                      {Taglia(QStringLiteral("%1 ").arg(i) + base, 50)});
        InserisciRiga(db, QStringLiteral("NOTE_DOCUMENTI"), {QStringLiteral("TITOLO"), QStringLiteral("TESTO")},
                      {Taglia(QStringLiteral("%1 ").arg(i) + base, 100), base});
    }
    SeminaDocumenti(QStringLiteral("FATT_VEND"), QStringLiteral("FATT_VEND_DETT"), QStringLiteral("IDFATT_VEND"), true);
    SeminaDocumenti(QStringLiteral("NOTE_ACCREDITO"), QStringLiteral("NOTE_ACCREDITO_DETT"),
                    QStringLiteral("IDNOTA_ACCREDITO"), false);
    for (int i = 0; i < basi.size(); ++i) {
        InserisciRiga(db, QStringLiteral("DDT_SCARICO"),
                      {QStringLiteral("IDDDT_SCARICO"), QStringLiteral("NUMERO"), QStringLiteral("DATA"),
                       QStringLiteral("ANNO"), QStringLiteral("CLI_CODICE"), QStringLiteral("CLI_RAGIONESOCIALE")},
                      {i + 1, i + 1, QDate(m_anno, 1, 1), m_anno, Codice(i, basi.at(i)),
                       Taglia(QStringLiteral("Ditta ") + basi.at(i), 100)});
    }
    db.commit();
}

// One document per base text, this year, with two lines holding the text;
// one of last year holds every text and must never be listed.
void TestInputOstileRicerca::SeminaDocumenti(const QString &tabella, const QString &righe, const QString &chiave,
                                             bool fattura)
{
    const QSqlDatabase db = Db();
    QStringList basi;
    for (const QString &base : TestiOstiliBase()) {
        if (!NonAmmesso(base))
            basi << base;
    }
    const auto documento = [&](int numero, int anno, const QString &codice, const QString &nome,
                               const QStringList &descrizioni) {
        QStringList colonne{QStringLiteral("NUMERO"),
                            QStringLiteral("DATA"),
                            QStringLiteral("ANNO"),
                            QStringLiteral("CLI_CODICE"),
                            QStringLiteral("CLI_RAGIONESOCIALE"),
                            QStringLiteral("IDTIPO_PAGAMENTO"),
                            QStringLiteral("TIPO_PAGAMENTO"),
                            QStringLiteral("PAGATO"),
                            QStringLiteral("TOTALE_IMPONIBILE"),
                            QStringLiteral("TOTALE_IMPOSTA"),
                            QStringLiteral("TOTALE_DOCUMENTO")};
        QVariantList valori{numero,
                            QDate(anno, 1, 15),
                            anno,
                            codice,
                            nome,
                            1,
                            QStringLiteral("Rimessa diretta"),
                            QStringLiteral("False"),
                            0,
                            0,
                            0};
        if (fattura) {
            colonne << QStringLiteral("FC_ABILITATO");
            valori << QStringLiteral("False");
        }
        InserisciRiga(db, tabella, colonne, valori);
        const int id = GetLastGeneratorValue(QStringLiteral("GN_") + chiave, db);
        for (const QString &descrizione : descrizioni)
            InserisciRiga(db, righe, {chiave, QStringLiteral("TIPO_RIGA"), QStringLiteral("DESCRIZIONE")},
                          {id, QStringLiteral("Testo"), descrizione});
    };
    for (int i = 0; i < basi.size(); ++i)
        documento(i + 1, m_anno, Codice(i, basi.at(i)), Taglia(QStringLiteral("Ditta ") + basi.at(i), 100),
                  {QStringLiteral("Riga ") + basi.at(i), basi.at(i) + QStringLiteral(" ancora")});
    documento(1, m_anno - 1, Taglia(basi.join(QString()), 20), Taglia(basi.join(QString()), 100), basi);
}

QList<TRiga> TestInputOstileRicerca::Righe(const QString &sql) const
{
    QList<TRiga> righe;
    QSqlQuery query = OpenQuery(Db(), sql);
    const int colonne = query.record().count();
    while (query.next()) {
        TRiga riga{query.value(0).toInt(), {}};
        for (int i = 1; i < colonne; ++i)
            riga.Testi << query.value(i).toString();
        righe << riga;
    }
    return righe;
}

void TestInputOstileRicerca::ProvaFiltro(QWidget *window, TKRVGrigliaRisultati *grid, const QString &filtro, bool invio,
                                         const QList<TRiga> &righe, const TCorrispondenza &corrisponde)
{
    QLineEdit *campo = Field(window, filtro);
    // The next filter starts alone, whatever happened here.
    const auto pulisci = qScopeGuard([campo] { campo->clear(); });
    for (const QString &testo : TestiOstili()) {
        m_boxes->Clear();
        ScriviOstile(campo, testo);
        QVERIFY2(campo->text() == testo,
                 qPrintable(Visibile(testo) + QStringLiteral(" shows ") + Visibile(campo->text())));
        if (invio)
            PressEnter(campo);
        else
            Trigger(window, QStringLiteral("actCerca"));
        ++m_provati;
        const QString errore = BoxErrore(*m_boxes);
        QVERIFY2(errore.isEmpty(),
                 qPrintable(filtro + QLatin1Char(' ') + Visibile(testo) + QStringLiteral(": ") + errore));
        if (NonAmmesso(testo)) {
            QCOMPARE(m_boxes->Messages().size(), 1);
            QCOMPARE(m_boxes->Messages().first().Title, QStringLiteral("Attenzione"));
            QVERIFY(m_boxes->Messages().first().Text.contains(QStringLiteral("caratteri non ammessi")));
            QCOMPARE(grid->rowCount(), 0);
            continue;
        }
        QVERIFY2(m_boxes->Messages().isEmpty(), qPrintable(filtro + QLatin1Char(' ') + Visibile(testo)
                                                           + QStringLiteral(": ") + m_boxes->Messages().value(0).Text));
        QList<int> attese;
        for (const TRiga &riga : righe) {
            if (corrisponde(riga, testo))
                attese << riga.Id;
        }
        std::sort(attese.begin(), attese.end());
        const QList<int> mostrate = Chiavi(grid);
        if (mostrate != attese)
            qWarning() << "shown" << mostrate << "expected" << attese;
        QVERIFY2(mostrate == attese, qPrintable(filtro + QLatin1Char(' ') + Visibile(testo)));
    }
}

void TestInputOstileRicerca::customerListFilters()
{
    auto list = Lista<TKRVRicercaClienti>(QStringLiteral("actRicercaClienti"));
    const QList<TRiga> righe = Righe(
        QStringLiteral("SELECT IDCLIENTE, CODICE, RAGIONESOCIALE, TELEFONO1, TELEFONO2, TELEFONO3, FAX FROM CLIENTI"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtRagioneSociale"), true, righe, Colonna(1));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtTelefono"), true, righe, UnaDelle({2, 3, 4, 5}));
    Conta(QStringLiteral("Ricerca clienti"));
    CloseFrame(list);
}

// Every letter of the bars, and every hostile text handed to their handler:
// the names that begin with it, as LIKE reads the pattern.
void TestInputOstileRicerca::customerLetterBars()
{
    const QList<TRiga> righe = Righe(QStringLiteral("SELECT IDCLIENTE, UPPER(RAGIONESOCIALE) FROM CLIENTI"));
    auto list = Lista<TKRVRicercaClienti>(QStringLiteral("actRicercaClienti"));
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaCliente")));
    auto cliente = [this] {
        return m_module->Main->FormAs<TKRVModSelezionaCliente>(QStringLiteral("actModSelezionaCliente"));
    };
    const auto verifica = [&](TKRVGrigliaRisultati *grid, const QString &testo) {
        QVERIFY2(BoxErrore(*m_boxes).isEmpty(),
                 qPrintable(Visibile(testo) + QStringLiteral(": ") + BoxErrore(*m_boxes)));
        QList<int> attese;
        const bool tutte = testo == QLatin1String("*");
        for (const TRiga &riga : righe) {
            if (tutte || Like(riga.Testi.at(0), Maiuscole(testo) + QLatin1Char('%')))
                attese << riga.Id;
        }
        std::sort(attese.begin(), attese.end());
        QVERIFY2(Chiavi(grid) == attese, qPrintable(Visibile(testo)));
    };
    QStringList lettere;
    for (const QChar c : QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ*"))
        lettere << QString(c);
    for (const QString &lettera : std::as_const(lettere)) {
        const QString nome =
            QStringLiteral("actLettera") + (lettera == QLatin1String("*") ? QStringLiteral("Tutte") : lettera);
        m_boxes->Clear();
        Trigger(list, nome);
        verifica(list->GridRisultati(), lettera);
        if (QTest::currentTestFailed())
            return;
        ShowModal(cliente(), [&] {
            Trigger(cliente(), nome);
            verifica(cliente()->gridRisultati(), lettera);
        });
        if (QTest::currentTestFailed())
            return;
    }
    for (const QString &testo : TestiOstili()) {
        if (NonAmmesso(testo))
            continue;
        m_boxes->Clear();
        list->BarraRicercaButtonClick(testo);
        verifica(list->GridRisultati(), testo);
        if (QTest::currentTestFailed())
            return;
        cliente()->BarraRicercaButtonClick(testo);
        verifica(cliente()->gridRisultati(), testo);
        if (QTest::currentTestFailed())
            return;
        m_provati += 2;
    }
    Conta(QStringLiteral("Barre delle lettere (lista e finestra di scelta)"));
    CloseFrame(list);
}

void TestInputOstileRicerca::articleListFilters()
{
    auto list = Lista<TKRVRicercaArticoli>(QStringLiteral("actRicercaArticoli"));
    const QList<TRiga> righe = Righe(QStringLiteral("SELECT IDANA_MAGA, CODICE, DESCRIZIONE FROM ANA_MAGA"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtDescrizione"), true, righe, Colonna(1));
    Conta(QStringLiteral("Gestione articoli"));
    CloseFrame(list);
}

void TestInputOstileRicerca::serviceListFilters()
{
    auto list = Lista<TKRVRicercaServizi>(QStringLiteral("actRicercaServizi"));
    const QList<TRiga> righe = Righe(QStringLiteral("SELECT IDSERVIZIO, CODICE, DESCRIZIONE FROM SERVIZI"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtDescrizione"), true, righe, Colonna(1));
    Conta(QStringLiteral("Ricerca servizi"));
    CloseFrame(list);
}

void TestInputOstileRicerca::unitListFilter()
{
    auto list = Lista<TKRVRicercaUM>(QStringLiteral("actRicercaUM"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtUnitaMisura"), true,
                Righe(QStringLiteral("SELECT IDUM, UM FROM UM")), Colonna(0));
    Conta(QStringLiteral("Unità di misura"));
    CloseFrame(list);
}

void TestInputOstileRicerca::vatListFilter()
{
    auto list = Lista<TKRVRicercaAliquoteIva>(QStringLiteral("actRicercaAliquoteIVA"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtDescrizione"), true,
                Righe(QStringLiteral("SELECT IDALIQUOTA_IVA, DESCRIZIONE FROM ALIQUOTE_IVA")), Colonna(0));
    Conta(QStringLiteral("Aliquote IVA"));
    CloseFrame(list);
}

void TestInputOstileRicerca::documentNoteListFilter()
{
    auto list = Lista<TKRVRicercaNoteDocumenti>(QStringLiteral("actRicercaNoteDocumenti"));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtTitolo"), true,
                Righe(QStringLiteral("SELECT IDNOTA_DOCUMENTI, TITOLO FROM NOTE_DOCUMENTI")), Colonna(0));
    Conta(QStringLiteral("Gestione note documenti"));
    CloseFrame(list);
}

void TestInputOstileRicerca::paymentTypeListHasNoFilter()
{
    auto list = Lista<TKRVRicercaTipiPagamento>(QStringLiteral("actRicercaTipiPagamento"));
    QVERIFY(list->findChildren<QLineEdit *>().isEmpty());
    Trigger(list, QStringLiteral("actCerca"));
    QCOMPARE(list->GridRisultati()->rowCount(),
             int(Righe(QStringLiteral("SELECT IDTIPO_PAGAMENTO FROM TIPI_PAGAMENTO")).size()));
    QVERIFY(m_boxes->Messages().isEmpty());
    CloseFrame(list);
}

void TestInputOstileRicerca::invoiceListFilters()
{
    auto list = Lista<TKRVRicercaFattureVendita>(QStringLiteral("actRicercaFattureVendita"));
    const QString anno = QString::number(m_anno);
    const QList<TRiga> righe = Righe(
        QStringLiteral(
            "SELECT F.IDFATT_VEND, F.CLI_CODICE, F.CLI_RAGIONESOCIALE, R1.DESCRIZIONE, R2.DESCRIZIONE "
            "FROM FATT_VEND F JOIN FATT_VEND_DETT R1 ON R1.IDFATT_VEND = F.IDFATT_VEND "
            "JOIN FATT_VEND_DETT R2 ON R2.IDFATT_VEND = F.IDFATT_VEND AND R2.IDFATT_VEND_DETT > R1.IDFATT_VEND_DETT "
            "WHERE F.ANNO = ")
        + anno);
    QCOMPARE(righe.size(), int(TestiOstiliBase().size()) - 2);
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtRagioneSociale"), true, righe, Colonna(1));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtRigaDescrizione"), true, righe, UnaDelle({2, 3}));
    Conta(QStringLiteral("Gestione fatture di vendita"));
    CloseFrame(list);
}

void TestInputOstileRicerca::creditNoteListFilters()
{
    auto list = Lista<TKRVRicercaNoteAccredito>(QStringLiteral("actRicercaNoteAccredito"));
    const QList<TRiga> righe = Righe(
        QStringLiteral("SELECT IDNOTA_ACCREDITO, CLI_CODICE, CLI_RAGIONESOCIALE FROM NOTE_ACCREDITO WHERE ANNO = ")
        + QString::number(m_anno));
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
    QVERIFY(!QTest::currentTestFailed());
    ProvaFiltro(list, list->GridRisultati(), QStringLiteral("txtRagioneSociale"), true, righe, Colonna(1));
    Conta(QStringLiteral("Ricerca note di accredito"));
    CloseFrame(list);
}

void TestInputOstileRicerca::customerDialogFilter()
{
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaCliente")));
    auto cliente = m_module->Main->FormAs<TKRVModSelezionaCliente>(QStringLiteral("actModSelezionaCliente"));
    ShowModal(cliente, [&] {
        ProvaFiltro(cliente, cliente->gridRisultati(), QStringLiteral("txtRagioneSociale"), true,
                    Righe(QStringLiteral("SELECT IDCLIENTE, RAGIONESOCIALE FROM CLIENTI")), Colonna(0));
    });
    Conta(QStringLiteral("Seleziona un cliente"));
}

// The description does not search on Enter: "Cerca" does.
void TestInputOstileRicerca::articleAndServiceDialogFilters()
{
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaArticolo")));
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaServizio")));
    auto articolo = m_module->Main->FormAs<TKRVModSelezionaArticolo>(QStringLiteral("actModSelezionaArticolo"));
    auto servizio = m_module->Main->FormAs<TKRVModSelezionaServizio>(QStringLiteral("actModSelezionaServizio"));
    for (const auto &[dialog, sql] :
         {std::pair<TKRVModSelezionaBase *, QString>{articolo,
                                                     QStringLiteral(
                                                         "SELECT IDANA_MAGA, CODICE, DESCRIZIONE FROM ANA_MAGA")},
          std::pair<TKRVModSelezionaBase *, QString>{servizio,
                                                     QStringLiteral(
                                                         "SELECT IDSERVIZIO, CODICE, DESCRIZIONE FROM SERVIZI")}}) {
        const QList<TRiga> righe = Righe(sql);
        ShowModal(dialog, [&] {
            ProvaFiltro(dialog, dialog->gridRisultati(), QStringLiteral("txtCodice"), true, righe, Colonna(0));
            if (!QTest::currentTestFailed())
                ProvaFiltro(dialog, dialog->gridRisultati(), QStringLiteral("txtDescrizione"), false, righe,
                            Colonna(1));
        });
        if (QTest::currentTestFailed())
            return;
    }
    Conta(QStringLiteral("Seleziona un articolo, Seleziona un servizio"));
}

void TestInputOstileRicerca::documentNoteDialogFilter()
{
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaNotaDocumenti")));
    auto dialog = m_module->Main->FormAs<TKRVModSelezionaNotaDocumenti>(QStringLiteral("actModSelezionaNotaDocumenti"));
    ShowModal(dialog, [&] {
        ProvaFiltro(dialog, dialog->gridRisultati(), QStringLiteral("txtTitolo"), true,
                    Righe(QStringLiteral("SELECT IDNOTA_DOCUMENTI, TITOLO FROM NOTE_DOCUMENTI")), Colonna(0));
    });
    Conta(QStringLiteral("Seleziona nota documenti"));
}

void TestInputOstileRicerca::deliveryNoteDialogFilter()
{
    Trigger(m_module->Main->Action(QStringLiteral("actModSelezionaDdtScaricoMulti")));
    auto dialog =
        m_module->Main->FormAs<TKRVModSelezionaDdtScaricoMulti>(QStringLiteral("actModSelezionaDdtScaricoMulti"));
    ShowModal(dialog, [&] {
        ProvaFiltro(dialog, dialog->gridRisultati(), QStringLiteral("txtRagioneSociale"), true,
                    Righe(QStringLiteral("SELECT IDDDT_SCARICO, CLI_RAGIONESOCIALE FROM DDT_SCARICO")), Colonna(0));
    });
    Conta(QStringLiteral("Seleziona D.d.T. di scarico"));
}

// The delete rule of customers, articles and services looks up the code
// typed in the filter: whatever it holds, the rule answers or the window
// refuses the text; the deletion is then declined, and every row stays.
void TestInputOstileRicerca::deleteTestsTheCodeFilterAsTyped()
{
    const QStringList liste{QStringLiteral("actRicercaClienti"), QStringLiteral("actRicercaArticoli"),
                            QStringLiteral("actRicercaServizi")};
    for (const QString &azione : liste) {
        auto list = Lista<TKRVRicercaBase>(azione);
        if (azione == QLatin1String("actRicercaClienti"))
            Trigger(list, QStringLiteral("actLetteraTutte"));
        else
            Trigger(list, QStringLiteral("actCerca"));
        QVERIFY(list->GridRisultati()->rowCount() > 0);
        QLineEdit *codice = Field(list, QStringLiteral("txtCodice"));
        for (const QString &testo : TestiOstili()) {
            m_boxes->Clear();
            ScriviOstile(codice, testo);
            SelectRow(list->GridRisultati(), 0);
            m_boxes->Enqueue(TQ3MsgResult::No);
            Trigger(list, QStringLiteral("actElimina"));
            ++m_provati;
            const QString esito = EsitoEliminazione(*m_boxes, testo);
            QVERIFY2(esito.isEmpty(), qPrintable(esito));
        }
        CloseFrame(list);
    }
    Conta(QStringLiteral("Elimina di clienti, articoli e servizi"));
}

// Their rows hold the hostile texts: every row is shown, none is an error.
void TestInputOstileRicerca::dialogsWithoutFiltersShowEveryRow()
{
    const QList<std::pair<QString, QString>> dialoghi{{QStringLiteral("actModSelezionaUM"),
                                                       QStringLiteral("SELECT IDUM FROM UM")},
                                                      {QStringLiteral("actModSelezionaTipoPagamento"),
                                                       QStringLiteral("SELECT IDTIPO_PAGAMENTO FROM TIPI_PAGAMENTO")},
                                                      {QStringLiteral("actModSelezionaAliquotaIVA"),
                                                       QStringLiteral("SELECT IDALIQUOTA_IVA FROM ALIQUOTE_IVA")}};
    for (const auto &[azione, sql] : dialoghi) {
        Trigger(m_module->Main->Action(azione));
        auto dialog = m_module->Main->FormAs<TKRVModSelezionaBase>(azione);
        QList<int> attese;
        for (const TRiga &riga : Righe(sql))
            attese << riga.Id;
        std::sort(attese.begin(), attese.end());
        QList<int> mostrate;
        ShowModal(dialog, [&] { mostrate = Chiavi(dialog->gridRisultati()); });
        QCOMPARE(mostrate, attese);
    }
    QVERIFY(m_boxes->Messages().isEmpty());
}

// The refusal names the characters it cannot search for.
void TestInputOstileRicerca::refusalSaysWhichCharacters()
{
    auto list = Lista<TKRVRicercaUM>(QStringLiteral("actRicercaUM"));
    QLineEdit *campo = Field(list, QStringLiteral("txtUnitaMisura"));
    ScriviOstile(campo, QStringLiteral("a") + QChar(0) + QStringLiteral("b"));
    PressEnter(campo);
    QCOMPARE(m_boxes->Messages().size(), 1);
    KRV_COMPARE_BOX(m_boxes->Messages().first(), "Attenzione",
                    "Il testo da cercare contiene caratteri non ammessi: U+0000 (carattere nullo).", Warning, Ok);
    QCOMPARE(list->GridRisultati()->rowCount(), 0);
    CloseFrame(list);
}

QTEST_MAIN(TestInputOstileRicerca)
#include "tst_inputostile_ricerca.moc"
