#pragma once

// One workstation of the load test, on a connection of its own: it creates,
// opens, changes, searches and deletes sales invoices and credit notes of one
// year at random, through the module's stores and services as the editors
// call them, and records every request (KRVRegistroCarico.h).
#include "KRVFatturaVendita.h"
#include "KRVNotaAccredito.h"
#include "KRVRegistroCarico.h"
#include "Q3Connection.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QList>
#include <QObject>
#include <QRandomGenerator>
#include <QTextStream>

#include <functional>

struct TKRVParametriPostazione
{
    QString ConnectionString;
    int Postazione = 0;
    quint32 Seme = 1;
    int Secondi = 15;
    int Anno = 0;
};

// A workstation stops at its time, or at this many requests.
constexpr int KRVRichiesteMassimePostazione = 50000;
// A document saved by the workstations has from 1 to this many lines.
constexpr int KRVRigheMassimeCarico = 20;

class TKRVPostazione
{
public:
    // Opens the connection and reads the masters the documents draw on;
    // raises EQ3Exception on failure.
    TKRVPostazione(const TKRVParametriPostazione &parametri, QTextStream &out);
    ~TKRVPostazione();

    // Runs requests until its time is up; answers how many.
    int Esegui();

private:
    // What differs between invoices and credit notes.
    struct TTipo
    {
        QString Sigla;
        const TKRVLayoutRighe *Layout;
        // Read into and written from the workstation's header of that kind.
        TKRVTestataDocumento *Testata;
        TQ3Dataset *Testate; // the store's header dataset
        std::function<bool(int, TKRVRigheDocumento &)> Leggi;
        std::function<void(TKRVRigheDocumento &, const TKRVTotaliDocumento &, bool, int &)> Scrivi;
        std::function<bool()> IvaEsente;
        int (*Prossimo)(const QSqlDatabase &, int);
        bool (*Esiste)(const QSqlDatabase &, int, int, int);
        bool (*PuoEliminare)(const QSqlDatabase &, int);
        bool (*Elimina)(const QSqlDatabase &, int, bool);
        QList<int> Noti; // the documents of the year the last search found
    };

    void Nuovo(TTipo &tipo);
    void Modifica(TTipo &tipo);
    // Opens a document the last search found into the lines; answers its key,
    // or 0 when it could not be read.
    int Apri(TTipo &tipo, TKRVRigheDocumento &righe);
    void Cerca();
    void EliminaDocumento(TTipo &tipo);
    // Deletes a new document whose save failed, as the editor does.
    void Abbandona(TTipo &tipo, int id);

    // Saves the document as the editor's save does: the number checked, then
    // the store's write. Answers the outcome recorded.
    QString Salva(TTipo &tipo, TKRVRigheDocumento &righe, bool nuovo, int &id);
    void NuovaTestata(TKRVTestataDocumento &testata);
    void AggiungiRighe(TKRVRigheDocumento &righe, int quante);
    void Segna(TKRVTestataDocumento &testata, TKRVRigheDocumento &righe, const QString &segno);
    int Caso(int limite) { return int(m_caso.bounded(limite)); }

    TKRVRichiestaCarico Inizia(const QString &operazione, const QString &documento, int id) const;
    // Both answer the outcome recorded.
    QString Registra(TKRVRichiestaCarico &richiesta, const QString &esito);
    // The outcome of a failure: by design between workstations, or not.
    QString RegistraFallimento(TKRVRichiestaCarico &richiesta, const std::exception &e);

    TKRVParametriPostazione m_parametri;
    QTextStream &m_out;
    QRandomGenerator m_caso;
    TQ3Connection m_connessione;
    QObject m_proprietario; // of the datasets
    QHash<QString, TQ3Dataset *> m_dataset;
    TKRVArchivioFattureVendita m_fatture;
    TKRVArchivioNoteAccredito m_note;
    TKRVTestataFattura m_testataFattura;
    TKRVTestataNota m_testataNota;
    TTipo m_tipoFattura;
    TTipo m_tipoNota;
    QList<TCliente> m_clienti;
    QList<QPair<int, QString>> m_pagamenti;
    QList<TKRVVoceCatalogo> m_voci;
    int m_salvataggi = 0;
};
