// The reads and writes of the master windows, run by the module's core on a
// session it is handed, with no module loaded and no window: one row of a
// master table, the category trees, the lists' searches and the articles'
// pages, and the module's datasets.
#include "KRVAggiornaDatabase.h"
#include "KRVArchivioCategorie.h"
#include "KRVArchivioRecord.h"
#include "KRVDatasets.h"
#include "KRVElenco.h"
#include "KRVQueryElenchi.h"
#include "Q3Dataset.h"
#include "Q3Exception.h"
#include "Q3TestDatabase.h"

#include <QTest>

#include <memory>

class TestArchiviMaster : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void datasetsKeepTheirNames();
    void newRecordTakesTheExpectedKeyThenItsOwn();
    void savedRecordIsUpdated();
    void missingRecordLeavesTheDatasetOnTheCurrentOne();
    void failedInsertIsRolledBackWithTheExpectedKey();
    void childCategoryGoesUnderItsNewParent();
    void renamedCategoryIsUpdated();
    void failedCategorySaveRollsBack_quirkKept();
    void deletedCategoryGoesAtOnce();
    void listSearchReadsHeadClauseAndTail();
    void articlesComeInPagesByCode();

private:
    TQ3Dataset &Dataset(const char *name) const { return *m_datasets.value(QString::fromLatin1(name)); }
    QSqlDatabase Sessione() const { return m_db->Db(); }
    QStringList Rows(const QString &sql) const { return m_db->Rows(sql); }

    std::unique_ptr<TQ3TestDatabase> m_db;
    std::unique_ptr<QObject> m_owner;
    QHash<QString, TQ3Dataset *> m_datasets;
};

void TestArchiviMaster::initTestCase()
{
    m_db = std::make_unique<TQ3TestDatabase>();
    AggiornaDatabase(Sessione());
}

void TestArchiviMaster::init()
{
    m_owner = std::make_unique<QObject>();
    m_datasets = KRVCreaDatasetModulo(m_owner.get(), m_db->Connection());
}

void TestArchiviMaster::cleanup()
{
    m_datasets.clear();
    m_owner.reset();
}

void TestArchiviMaster::datasetsKeepTheirNames()
{
    QStringList names = m_datasets.keys();
    names.sort();
    QCOMPARE(names,
             QStringList({QStringLiteral("adsAliquoteIVA"), QStringLiteral("adsAnaMaga"), QStringLiteral("adsAzienda"),
                          QStringLiteral("adsCategorieAnaMaga"), QStringLiteral("adsCategorieServizi"),
                          QStringLiteral("adsClienti"), QStringLiteral("adsFattVend"),
                          QStringLiteral("adsFattVendDett"), QStringLiteral("adsNotaDocumenti"),
                          QStringLiteral("adsNoteAccredito"), QStringLiteral("adsNoteAccreditoDett"),
                          QStringLiteral("adsServizi"), QStringLiteral("adsTipiPagamento"), QStringLiteral("adsUM")}));
    for (auto it = m_datasets.cbegin(); it != m_datasets.cend(); ++it) {
        QCOMPARE(it.value()->objectName(), it.key());
        QCOMPARE(it.value()->parent(), m_owner.get());
        QCOMPARE(it.value()->Connection(), m_db->Connection());
    }
    QCOMPARE(Dataset("adsUM").UpdateTable(), QStringLiteral("UM"));
    QCOMPARE(Dataset("adsUM").KeyField(), QStringLiteral("IDUM"));
    QVERIFY(
        Dataset("adsAzienda")
            .SQL()
            .contains(QStringLiteral(
                "CASE WHEN NOT PARTITAIVA = '' THEN 'P.I.: ' || PARTITAIVA || ' ' ELSE '' END AS PARTITAIVA_DESC")));
}

void TestArchiviMaster::newRecordTakesTheExpectedKeyThenItsOwn()
{
    TKRVArchivioRecord archivio(Dataset("adsUM"), QStringLiteral("IDUM"), QStringLiteral("GN_IDUM"));
    const int attesa = KRVProssimaChiave(Sessione(), QStringLiteral("GN_IDUM"));
    int chiaveDurante = 0;
    int id = -1;
    archivio.Scrivi(
        true,
        [&](TQ3Dataset &dataset) {
            chiaveDurante = id;
            dataset.SetFieldValue(QStringLiteral("UM"), QStringLiteral("MT"));
        },
        id);
    QCOMPARE(chiaveDurante, attesa);
    QCOMPARE(Rows(QStringLiteral("SELECT IDUM FROM UM WHERE UM = 'MT'")), QStringList{QString::number(id)});
    QCOMPARE(Dataset("adsUM").FieldValue(QStringLiteral("IDUM")).toInt(), id);
    QCOMPARE(KRVProssimaChiave(Sessione(), QStringLiteral("GN_IDUM")), id + 1);
}

void TestArchiviMaster::savedRecordIsUpdated()
{
    TKRVArchivioRecord archivio(Dataset("adsUM"), QStringLiteral("IDUM"), QStringLiteral("GN_IDUM"));
    QVERIFY(archivio.Leggi(2, std::nullopt));
    QCOMPARE(Dataset("adsUM").FieldValue(QStringLiteral("UM")).toString(), QStringLiteral("ORE"));
    int id = 2;
    archivio.Scrivi(
        false, [](TQ3Dataset &dataset) { dataset.SetFieldValue(QStringLiteral("UM"), QStringLiteral("H")); }, id);
    QCOMPARE(id, 2);
    QCOMPARE(Rows(QStringLiteral("SELECT UM FROM UM WHERE IDUM = 2")), QStringList{QStringLiteral("H")});
}

void TestArchiviMaster::missingRecordLeavesTheDatasetOnTheCurrentOne()
{
    TQ3Dataset &dataset = Dataset("adsUM");
    TKRVArchivioRecord archivio(dataset, QStringLiteral("IDUM"), QStringLiteral("GN_IDUM"));
    QVERIFY(!archivio.Leggi(999, 1));
    QVERIFY(dataset.Active());
    QCOMPARE(dataset.FieldValue(QStringLiteral("UM")).toString(), QStringLiteral("PEZZI"));
    QVERIFY(!archivio.Leggi(999, std::nullopt));
    QVERIFY(!dataset.Active());
}

void TestArchiviMaster::failedInsertIsRolledBackWithTheExpectedKey()
{
    TKRVArchivioRecord archivio(Dataset("adsUM"), QStringLiteral("IDUM"), QStringLiteral("GN_IDUM"));
    const QStringList before = Rows(QStringLiteral("SELECT IDUM, UM FROM UM ORDER BY IDUM"));
    const int attesa = KRVProssimaChiave(Sessione(), QStringLiteral("GN_IDUM"));
    int id = -1;
    // Another unit of measure already has the name.
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, archivio.Scrivi(
                                               true,
                                               [](TQ3Dataset &dataset) {
                                                   dataset.SetFieldValue(QStringLiteral("UM"), QStringLiteral("KG"));
                                               },
                                               id));
    QCOMPARE(id, attesa);
    QCOMPARE(Rows(QStringLiteral("SELECT IDUM, UM FROM UM ORDER BY IDUM")), before);
    QVERIFY(Dataset("adsUM").State() != TQ3Dataset::TState::Insert);
}

void TestArchiviMaster::childCategoryGoesUnderItsNewParent()
{
    TKRVArchivioCategorie archivio(Dataset("adsCategorieServizi"), QStringLiteral("CATEGORIE_SERVIZI"),
                                   QStringLiteral("IDCATEGORIA_SERVIZI"));
    QList<TKRVCategoria> categorie{
        {-1, QStringLiteral("Assistenza"), -1, -1, TKRVStatoCategoria::Nuova},
        {-1, QStringLiteral("Remota"), -1, 0, TKRVStatoCategoria::Nuova},
    };
    archivio.Salva(categorie);
    QVERIFY(categorie.at(0).Id > 0);
    QVERIFY(categorie.at(1).Id > categorie.at(0).Id);
    QCOMPARE(categorie.at(1).IdPadre, categorie.at(0).Id);
    QCOMPARE(categorie.at(0).Stato, TKRVStatoCategoria::Scritta);
    QCOMPARE(categorie.at(1).Stato, TKRVStatoCategoria::Scritta);
    QCOMPARE(Rows(QStringLiteral("SELECT C.CATEGORIA, P.CATEGORIA FROM CATEGORIE_SERVIZI C JOIN CATEGORIE_SERVIZI P "
                                 "ON P.IDCATEGORIA_SERVIZI = C.IDPADRE WHERE C.IDCATEGORIA_SERVIZI = ")
                  + QString::number(categorie.at(1).Id)),
             QStringList{QStringLiteral("Remota|Assistenza")});
    QCOMPARE(Rows(QStringLiteral("SELECT IDPADRE FROM CATEGORIE_SERVIZI WHERE IDCATEGORIA_SERVIZI = ")
                  + QString::number(categorie.at(0).Id)),
             QStringList{QStringLiteral("<null>")});
}

void TestArchiviMaster::renamedCategoryIsUpdated()
{
    TKRVArchivioCategorie archivio(Dataset("adsCategorieServizi"), QStringLiteral("CATEGORIE_SERVIZI"),
                                   QStringLiteral("IDCATEGORIA_SERVIZI"));
    QList<TKRVCategoria> nuova{{-1, QStringLiteral("Consulenza"), -1, -1, TKRVStatoCategoria::Nuova}};
    archivio.Salva(nuova);
    const int id = nuova.at(0).Id;
    QList<TKRVCategoria> categorie{{id, QStringLiteral("Consulenze"), -1, -1, TKRVStatoCategoria::Rinominata},
                                   {-1, QStringLiteral("Non scritta"), -1, -1, TKRVStatoCategoria::Scritta}};
    archivio.Salva(categorie);
    QCOMPARE(categorie.at(0).Stato, TKRVStatoCategoria::Scritta);
    QCOMPARE(categorie.at(1).Id, -1);
    QCOMPARE(Rows(QStringLiteral("SELECT CATEGORIA FROM CATEGORIE_SERVIZI WHERE IDCATEGORIA_SERVIZI = ")
                  + QString::number(id)),
             QStringList{QStringLiteral("Consulenze")});
    QCOMPARE(Rows(QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_SERVIZI WHERE CATEGORIA = 'Non scritta'")),
             QStringList{QStringLiteral("0")});
}

// A failure rolls every row back, but the categories written before it keep
// the key they took and read as written.
void TestArchiviMaster::failedCategorySaveRollsBack_quirkKept()
{
    TKRVArchivioCategorie archivio(Dataset("adsCategorieAnaMaga"), QStringLiteral("CATEGORIE_ANA_MAGA"),
                                   QStringLiteral("IDCATEGORIA_ANA_MAGA"));
    const QStringList before = Rows(QStringLiteral("SELECT * FROM CATEGORIE_ANA_MAGA ORDER BY 1"));
    QList<TKRVCategoria> categorie{
        {-1, QStringLiteral("Viteria"), -1, -1, TKRVStatoCategoria::Nuova},
        {-1, QString(301, QLatin1Char('x')), -1, 0, TKRVStatoCategoria::Nuova},
    };
    QVERIFY_THROWS_EXCEPTION(EQ3Exception, archivio.Salva(categorie));
    QVERIFY(categorie.at(0).Id > 0);
    QCOMPARE(categorie.at(0).Stato, TKRVStatoCategoria::Scritta);
    QCOMPARE(categorie.at(1).Id, -1);
    QCOMPARE(categorie.at(1).IdPadre, -1);
    QCOMPARE(categorie.at(1).Stato, TKRVStatoCategoria::Nuova);
    QCOMPARE(Rows(QStringLiteral("SELECT * FROM CATEGORIE_ANA_MAGA ORDER BY 1")), before);
}

void TestArchiviMaster::deletedCategoryGoesAtOnce()
{
    TKRVArchivioCategorie archivio(Dataset("adsCategorieAnaMaga"), QStringLiteral("CATEGORIE_ANA_MAGA"),
                                   QStringLiteral("IDCATEGORIA_ANA_MAGA"));
    QList<TKRVCategoria> categorie{{-1, QStringLiteral("Bulloneria"), -1, -1, TKRVStatoCategoria::Nuova}};
    archivio.Salva(categorie);
    const QString query = QStringLiteral("SELECT COUNT(*) FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA = ")
                          + QString::number(categorie.at(0).Id);
    QCOMPARE(Rows(query), QStringList{QStringLiteral("1")});
    archivio.Elimina(categorie.at(0).Id);
    QCOMPARE(Rows(query), QStringList{QStringLiteral("0")});
}

void TestArchiviMaster::listSearchReadsHeadClauseAndTail()
{
    TKRVRisultati risultati;
    risultati.ImpostaColonne({{QString(), 0, QStringLiteral("IDUM"), TKRVTipoColonna::Intero},
                              {QStringLiteral("Unità di misura"), 100, QStringLiteral("UM"), TKRVTipoColonna::Testo}});
    KRVCercaElenco(Sessione(), KRVQueryUMTesta, QStringLiteral("WHERE UM CONTAINING 'I'"), KRVQueryUMCoda, risultati);
    QStringList trovate;
    for (int row = 0; row < risultati.rowCount(); ++row)
        trovate << risultati.Valore(row, 1);
    QCOMPARE(trovate, QStringList({QStringLiteral("PEZZI"), QStringLiteral("Q.LI")}));
    QVERIFY_THROWS_EXCEPTION(EQ3Exception,
                             KRVCercaElenco(Sessione(), KRVQueryUMTesta, QStringLiteral("WHERE NESSUNA = 1"),
                                            KRVQueryUMCoda, risultati));
}

void TestArchiviMaster::articlesComeInPagesByCode()
{
    for (const char *codice : {"e5", "A1", "c3", "B2", "d4"})
        m_db->Exec(
            QStringLiteral("INSERT INTO ANA_MAGA (CODICE, DESCRIZIONE, SOTTOSCORTA, RIORDINO, IDCATEGORIA_ANA_MAGA, "
                           "PREZZO, COSTO, IDALIQUOTA_IVA, IDUM) VALUES ('%1', 'Articolo', 0, 0, 1, 1, 1, 1, 1)")
                .arg(QLatin1String(codice)));
    QCOMPARE(KRVContaArticoli(Sessione(), QString()), 5);
    QCOMPARE(KRVContaArticoli(Sessione(), QStringLiteral("WHERE UPPER(CODICE) < 'C'")), 2);
    TKRVRisultati risultati;
    risultati.ImpostaColonne({{QString(), 0, QStringLiteral("IDANA_MAGA"), TKRVTipoColonna::Intero},
                              {QStringLiteral("Codice"), 100, QStringLiteral("CODICE"), TKRVTipoColonna::Testo},
                              {QStringLiteral("Categoria"), 100, QStringLiteral("CATEGORIA"), TKRVTipoColonna::Testo}});
    KRVCaricaPaginaArticoli(Sessione(), QString(), 2, 2, risultati);
    QCOMPARE(risultati.rowCount(), 2);
    QCOMPARE(risultati.Valore(0, 1), QStringLiteral("c3"));
    QCOMPARE(risultati.Valore(1, 1), QStringLiteral("d4"));
    QVERIFY(!risultati.Valore(0, 2).isEmpty());
}

QTEST_GUILESS_MAIN(TestArchiviMaster)
#include "tst_archivimaster.moc"
