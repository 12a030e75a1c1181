#pragma once

// Fills a firm's database with realistic Italian data through the module's own
// tables: customers, articles, services, tables, category trees, document
// notes, and years of invoices and credit notes whose totals follow the
// module's own arithmetic. The same seed, size, final year and end date give
// the same firm.
#include "Q3Connection.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>

struct TKRVDimensioneAzienda
{
    QString Nome;
    int Anni = 1;
    int Clienti = 0;
    int Articoli = 0;
    int Servizi = 0;
    int FattureAnno = 0;
    bool TerzoLivello = false; // categories three levels deep
};

// "prova" (tests), "demo" (one year, ~300 invoices), "medio", "stress" (10 years, 200,000 invoices).
const QList<TKRVDimensioneAzienda> &KRVDimensioniAzienda();
// The size of that name; raises EQ3Exception for an unknown one.
TKRVDimensioneAzienda KRVDimensioneAzienda(const QString &nome);

struct TKRVOpzioniGenerazione
{
    TKRVDimensioneAzienda Dimensione;
    quint64 Seme = 1;
    int AnnoFinale = 0; // the last year of invoices
    // No document is dated after this day (the day of the generation): the
    // final year is cut there, with its invoices in proportion to the working
    // days it keeps. Invalid: the whole final year.
    QDate DataFinale;
    std::function<void(const QString &)> Avanzamento;
};

struct TKRVRiepilogoGenerazione
{
    qint64 Clienti = 0;
    qint64 Articoli = 0;
    qint64 Servizi = 0;
    qint64 Categorie = 0;
    qint64 Fatture = 0;
    qint64 RigheFatture = 0;
    qint64 NoteAccredito = 0;
    qint64 RigheNoteAccredito = 0;
    qint64 Promemoria = 0; // of the recurring invoices still running at the end
    double Secondi = 0;
};

// Creates an embedded database file when it is missing, then brings the host's
// and the modules' tables to their current shape, as the host's start does.
void KRVPreparaDatabase(const TQ3DatabaseTarget &target);

// Generates the firm into a prepared database that holds no invoice yet;
// raises EQ3Exception otherwise, when the end date falls before the final
// year, or on any database failure (nothing of the year being written is then
// kept).
TKRVRiepilogoGenerazione KRVGeneraAzienda(const TQ3DatabaseTarget &target, const TKRVOpzioniGenerazione &opzioni);
