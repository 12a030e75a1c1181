#pragma once

// For the suites that compare statements on generated firms: a small firm of
// the generator's test size with the counts asked for, and the pages a
// connection has read so far, to tell a statement that reads its period from
// one that reads every year.
#include "KRVGeneraAzienda.h"
#include "Q3Sql.h"

inline void KRVGeneraAziendaProva(const TQ3DatabaseTarget &target, quint64 seme, int anni, int clienti, int fattureAnno)
{
    TKRVOpzioniGenerazione opzioni;
    opzioni.Dimensione = KRVDimensioneAzienda(QStringLiteral("prova"));
    opzioni.Dimensione.Anni = anni;
    opzioni.Dimensione.Clienti = clienti;
    opzioni.Dimensione.FattureAnno = fattureAnno;
    opzioni.Seme = seme;
    opzioni.AnnoFinale = 2025;
    KRVPreparaDatabase(target);
    KRVGeneraAzienda(target, opzioni);
}

// Page fetches of the connection so far.
inline qint64 KRVLetturePagine(const QSqlDatabase &db)
{
    return QueryScalar(db,
                       QStringLiteral("SELECT S.MON$PAGE_FETCHES FROM MON$ATTACHMENTS A JOIN MON$IO_STATS S ON "
                                      "S.MON$STAT_ID = A.MON$STAT_ID WHERE A.MON$ATTACHMENT_ID = CURRENT_CONNECTION"))
        .toLongLong();
}
