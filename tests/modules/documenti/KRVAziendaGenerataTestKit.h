#pragma once

// For the suites that compare statements on generated firms: a small firm of
// the generator's test size with the counts asked for, the firms a data-driven
// case runs on, the warehouse's
// invoices copied from its sales invoices, headers and lines written by hand
// into either invoice table, every row of a statement with the
// types of its values, and the pages a connection has read so far, to tell a
// statement that reads its period from one that reads every year.
#include "KRVGeneraAzienda.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

#include <initializer_list>

// A firm of the test size ending in 2025; a count of 0 keeps the size's own.
inline void KRVGeneraAziendaProva(const TQ3DatabaseTarget &target, quint64 seme, int anni, int clienti, int fattureAnno)
{
    TKRVOpzioniGenerazione opzioni;
    opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("prova"));
    if (anni > 0)
        opzioni.Dimensione.Anni = anni;
    if (clienti > 0)
        opzioni.Dimensione.Clienti = clienti;
    if (fattureAnno > 0)
        opzioni.Dimensione.FattureAnno = fattureAnno;
    opzioni.Seme = seme;
    opzioni.AnnoFinale = 2025;
    KRVPreparaDatabase(target);
    KRVGeneraAzienda(target, opzioni);
}

// The firms a data-driven case runs on, a row each: its name, the seed, the
// customers and the invoices a year (0: the test size's own).
struct TKRVAziendaProva
{
    const char *Nome;
    quint64 Seme;
    int Clienti;
    int FattureAnno;
};

inline void KRVAziendeProva(std::initializer_list<TKRVAziendaProva> aziende)
{
    QTest::addColumn<quint64>("seme");
    QTest::addColumn<int>("clienti");
    QTest::addColumn<int>("fattureAnno");
    for (const TKRVAziendaProva &azienda : aziende)
        QTest::newRow(azienda.Nome) << azienda.Seme << azienda.Clienti << azienda.FattureAnno;
}

// The firm of the running data row, with that many years (0: the test size's).
inline void KRVGeneraAziendaDelCaso(const TQ3DatabaseTarget &target, int anni)
{
    QFETCH(quint64, seme);
    QFETCH(int, clienti);
    QFETCH(int, fattureAnno);
    KRVGeneraAziendaProva(target, seme, anni, clienti, fattureAnno);
}

// The text of one column of a row as KRVRigheTipizzate writes it.
inline QString KRVColonnaRiga(const QString &riga, int colonna)
{
    return riga.split(QLatin1Char('|')).value(colonna);
}

// Two statements' rows ("type:value|..."), compared: the same count and, row
// by row, the same value in the key column; within each run of rows of one
// key, whose order the statements leave to the database's sort, the same rows
// as a whole.
inline void KRVConfrontaRighePerChiave(const QStringList &ottenute, const QStringList &attese, int chiave)
{
    QCOMPARE(ottenute.size(), attese.size());
    QStringList gruppoAtteso;
    QStringList gruppoOttenuto;
    for (qsizetype r = 0; r < attese.size(); ++r) {
        QCOMPARE(KRVColonnaRiga(ottenute.at(r), chiave), KRVColonnaRiga(attese.at(r), chiave));
        gruppoAtteso << attese.at(r);
        gruppoOttenuto << ottenute.at(r);
        if (r + 1 == attese.size()
            || KRVColonnaRiga(attese.at(r + 1), chiave) != KRVColonnaRiga(attese.at(r), chiave)) {
            gruppoAtteso.sort();
            gruppoOttenuto.sort();
            QCOMPARE(gruppoOttenuto, gruppoAtteso);
            gruppoAtteso.clear();
            gruppoOttenuto.clear();
        }
    }
}

// Page fetches of the connection so far.
inline qint64 KRVLetturePagine(const QSqlDatabase &db)
{
    return QueryScalar(db,
                       QStringLiteral("SELECT S.MON$PAGE_FETCHES FROM MON$ATTACHMENTS A JOIN MON$IO_STATS S ON "
                                      "S.MON$STAT_ID = A.MON$STAT_ID WHERE A.MON$ATTACHMENT_ID = CURRENT_CONNECTION"))
        .toLongLong();
}

// The warehouse's invoice tables, holding a copy of every third sales invoice
// of the firm (the table's trigger numbers the copies 1, 2, ...).
inline void KRVMagazzinoDaVendite(const TQ3TestDatabase &database)
{
    database.LoadFixture(QStringLiteral("magazzino.sql"));
    database.Exec(QStringLiteral(
        "INSERT INTO FATT_ACC (IDFATT_ACC, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, PAGATO, "
        "TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO) SELECT IDFATT_VEND, NUMERO, DATA, ANNO, CLI_CODICE, "
        "CLI_RAGIONESOCIALE, PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO FROM FATT_VEND WHERE "
        "MOD(IDFATT_VEND, 3) = 0 ORDER BY IDFATT_VEND"));
    database.Exec(QStringLiteral(
        "INSERT INTO FATT_ACC_DETT (IDFATT_ACC_DETT, IDFATT_ACC, CODICE, DESCRIZIONE, IDCATEGORIA, PREZZO, QUANTITA, "
        "IMPORTO, COSTO, TIPO_RIGA) SELECT IDFATT_VEND_DETT, IDFATT_VEND / 3, CODICE, DESCRIZIONE, IDCATEGORIA, PREZZO, "
        "QUANTITA, IMPORTO, COSTO, TIPO_RIGA FROM FATT_VEND_DETT WHERE MOD(IDFATT_VEND, 3) = 0"));
}

// A value with its type: "type:value", "type:NULL".
inline QString KRVValoreTipizzato(const QVariant &valore)
{
    return QStringLiteral("%1:%2").arg(QString::fromLatin1(valore.metaType().name()),
                                       valore.isNull() ? QStringLiteral("NULL") : valore.toString());
}

// Every row of a statement, each value with its type ("type:value", apart by
// "|"), or its failure.
inline QStringList KRVRigheTipizzate(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        return {QStringLiteral("ERRORE: ") + SqlErrorText(query.lastError())};
    QStringList righe;
    const int colonne = query.record().count();
    while (query.next()) {
        QStringList valori;
        for (int c = 0; c < colonne; ++c)
            valori << KRVValoreTipizzato(query.value(c));
        righe << valori.join(QLatin1Char('|'));
    }
    if (query.lastError().isValid())
        righe << QStringLiteral("ERRORE: ") + SqlErrorText(query.lastError());
    return righe;
}

// A header of the sales invoices ("FATT_VEND") or of the warehouse's
// ("FATT_ACC") on a day ("yyyy-MM-dd") for a customer code; answers its key.
inline int KRVTestataFattura(const TQ3TestDatabase &database, const QString &tabella, int numero, const QString &data,
                             const QString &cliente)
{
    const bool vendita = tabella == QLatin1String("FATT_VEND");
    return QueryScalar(database.Db(),
                       QStringLiteral("INSERT INTO %1 (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, "
                                      "PAGATO, TOTALE_IMPONIBILE, TOTALE_IMPOSTA, TOTALE_DOCUMENTO%2) VALUES "
                                      "(%3, '%4', %5, %6, 'Cliente', 'False', 0, 0, 0%7) RETURNING ID%1")
                           .arg(tabella, vendita ? QStringLiteral(", IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, FC_ABILITATO")
                                                 : QString())
                           .arg(numero)
                           .arg(data, data.left(4), QuotedStr(cliente),
                                vendita ? QStringLiteral(", 1, 'Rimessa diretta', 'False'") : QString()))
        .toInt();
}

// A line as written by hand: a null code is stored as NULL; the amount and
// the cost are SQL literals ("NULL" for none).
struct TKRVRigaProva
{
    QString Tipo;
    QString Codice;
    QString Descrizione;
    int Categoria = 0;
    QString Importo;
    QString Costo;
};

inline void KRVRigaFattura(const TQ3TestDatabase &database, const QString &tabella, int testata,
                           const TKRVRigaProva &riga)
{
    database.Exec(QStringLiteral("INSERT INTO %1_DETT (ID%1, TIPO_RIGA, CODICE, DESCRIZIONE, IDCATEGORIA, "
                                 "QUANTITA, IMPORTO, COSTO) VALUES (%2, %3, %4, %5, %6, 1, %7, %8)")
                      .arg(tabella)
                      .arg(testata)
                      .arg(QuotedStr(riga.Tipo), riga.Codice.isNull() ? QStringLiteral("NULL") : QuotedStr(riga.Codice),
                           QuotedStr(riga.Descrizione))
                      .arg(riga.Categoria)
                      .arg(riga.Importo, riga.Costo));
}
