#pragma once

// What one workstation of the load test did: one record per request, written
// by the workstation (q3_postazione) to its file, one line each, and read back
// by the test that started it.
#include <QList>
#include <QString>
#include <QTextStream>

// The requests a workstation makes and how each ended.
namespace KRVCarico {
inline const QString Nuovo = QStringLiteral("nuovo");
inline const QString Modifica = QStringLiteral("modifica");
inline const QString Apri = QStringLiteral("apri");
inline const QString Cerca = QStringLiteral("cerca");
inline const QString Elimina = QStringLiteral("elimina");
// The delete of a new document whose save failed: it deletes no document of
// another workstation.
inline const QString Abbandona = QStringLiteral("abbandona");

inline const QString Riuscito = QStringLiteral("ok");
// Met by design between workstations: a lock or update conflict, a deadlock,
// a number taken meanwhile, a document deleted meanwhile.
inline const QString Conflitto = QStringLiteral("conflitto");
// The number was already taken when the save checked it: nothing was written.
inline const QString Rifiutato = QStringLiteral("rifiutato");
// The document opened was gone.
inline const QString Assente = QStringLiteral("assente");
// The header read was of another save than the lines read after it.
inline const QString LetturaMista = QStringLiteral("mista");
// Anything else: a failure nobody expects.
inline const QString Errore = QStringLiteral("errore");

// The documents: sales invoices and credit notes.
inline const QString Fattura = QStringLiteral("F");
inline const QString Nota = QStringLiteral("N");
} // namespace KRVCarico

struct TKRVRichiestaCarico
{
    int Postazione = 0;
    QString Operazione;
    QString Documento; // KRVCarico::Fattura or Nota; empty for a search
    int Id = 0;
    int Numero = 0;    // the document's number, for a save
    qint64 Inizio = 0; // milliseconds since the epoch, the machine's clock
    qint64 Fine = 0;
    QString Esito;
    int Righe = 0;     // the lines the save wrote or the read found
    QString Segno;     // the mark of the save: "P<workstation>.<n>"
    QString Messaggio; // the failure's message

    qint64 Durata() const { return Fine - Inizio; }
    bool Salvataggio() const { return Operazione == KRVCarico::Nuovo || Operazione == KRVCarico::Modifica; }
};

// Each save marks its document: the header's note holds the mark and the
// number of lines written, each line's description begins with the mark.
QString KRVNotaCarico(const QString &segno, int righe);
// The mark and the lines of a note; false for a note no workstation wrote.
bool KRVLeggiNotaCarico(const QString &nota, QString &segno, int &righe);
// A line's description: the mark, a blank, the line's number.
QString KRVDescrizioneCarico(const QString &segno, int riga);

void KRVScriviRichiesta(QTextStream &out, const TKRVRichiestaCarico &richiesta);
// The records of a workstation's file; raises EQ3Exception for a malformed line.
QList<TKRVRichiestaCarico> KRVLeggiRichieste(const QString &fileName);
