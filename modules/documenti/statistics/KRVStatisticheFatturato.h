#pragma once

#include "Q3XlsWriter.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The turnover net of VAT of a year and of the two before it, month by month:
// the grid of texts the window shows, the statements that fill it, and what
// the chart, the print and the workbook take from it.

inline constexpr int KRVFatturatoColonne = 8;
inline constexpr int KRVFatturatoRighe = 16;
inline constexpr int KRVFatturatoPrimaRiga = 2;
inline constexpr int KRVFatturatoRigaSeparatore = 14;
inline constexpr int KRVFatturatoRigaTotali = 15;

// Rows of columns of texts; numbers in the "%.2f" form with the locale's
// decimal separator.
using TKRVGrigliaFatturato = QList<QStringList>;

QString KRVTitoloFatturato();
QList<int> KRVLarghezzeFatturato();

// The empty grid: year headings from anno, captions, month names and "Totali".
TKRVGrigliaFatturato KRVGrigliaFatturatoVuota(int anno);
// The merged ranges of the grid.
QList<TQ3XlsUnione> KRVUnioniFatturato();

// The statement of one source table (FATT_VEND, FATT_ACC or NOTE_ACCREDITO)
// over the years from anno - 2.
QString KRVSQLFatturato(const QString &tabella, int anno);

// Zeroes the figures and fills them from the source tables that exist, as of
// the year anno; the grid keeps what was filled when a statement fails.
// Answers the statements run.
QStringList KRVAggiornaFatturato(const QSqlDatabase &db, TKRVGrigliaFatturato &griglia, int anno);
// The differences, percentages and totals of the filled grid.
void KRVCalcolaFatturato(TKRVGrigliaFatturato &griglia);

// A number as the grid keeps it, and back (0 for a text that is no number).
QString KRVTestoFatturato(double valore);
double KRVValoreFatturato(const QString &testo);

// What a cell shows, and whether it is drawn in red or as a heading.
QString KRVTestoVisualizzatoFatturato(const TKRVGrigliaFatturato &griglia, int riga, int colonna);
bool KRVCellaNegativaFatturato(const TKRVGrigliaFatturato &griglia, int riga, int colonna);
bool KRVCellaIntestazioneFatturato(int riga, int colonna);

// One line of the chart: its title, the values at positions 0, 1, ... and
// their labels.
struct TKRVSerieFatturato
{
    QString Titolo;
    QList<double> Valori;
    QStringList Etichette;
};
// The three lines of years anno, anno - 1, anno - 2 from rows 2 to 15.
QList<TKRVSerieFatturato> KRVSerieFatturato(const TKRVGrigliaFatturato &griglia, int anno);

// The text parameters of the print: the three years, then 13 per column.
QList<std::pair<QString, QString>> KRVParametriFatturato(const TKRVGrigliaFatturato &griglia);

// The grid as the worksheet "Fatturato".
TQ3XlsFoglio KRVFoglioFatturato(const TKRVGrigliaFatturato &griglia);
