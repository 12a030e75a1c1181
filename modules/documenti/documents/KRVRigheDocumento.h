#pragma once

#include "KRVDecimali.h"

#include <QAbstractTableModel>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// The four kinds of a document line, as stored in TIPO_RIGA.
inline const QString KRVRigaArticolo = QStringLiteral("Articolo");
inline const QString KRVRigaServizio = QStringLiteral("Servizio");
inline const QString KRVRigaTesto = QStringLiteral("Testo");
inline const QString KRVRigaNonImponibile = QStringLiteral("Non imponibile");

// Where a document's line grid keeps each value. A column the document does
// not have is -1.
struct TKRVLayoutRighe
{
    int Colonne;
    int Id;
    int Costo;
    int Codice;
    int Descrizione;
    int IdCategoria;
    int Prezzo;
    int Sconto;
    int Quantita;
    int Importo;
    int IdIva;
    int Iva;
    int IdUM;
    int UM;
    int Tipo;
    int DecimaliQuantita;
    bool NonImponibili; // the document knows the "Non imponibile" lines

    // The columns the user sees, in order, and their titles.
    QList<int> Visibili() const;
    QString Titolo(int colonna) const;
};

// The sales invoice's 14 columns and the credit note's 12.
const TKRVLayoutRighe &KRVLayoutFattura();
const TKRVLayoutRighe &KRVLayoutNotaAccredito();

// What an article or a service brings to a new line.
struct TKRVVoceCatalogo
{
    QString Tipo; // KRVRigaArticolo or KRVRigaServizio
    double Costo = 0;
    QString Codice;
    QString Descrizione;
    int IdCategoria = 0;
    double Prezzo = 0;
    int IdIva = 0;
    QString CodiceIva;
    int IdUM = 0;
    QString UM;
};

// A document's lines, each held as the texts of its grid cells; numbers are
// written as "%.2f" with the locale's decimal separator, so an amount written
// and read back is rounded to the cent. A unit price and a quantity keep the
// further decimals they have, up to KRVDecimaliPrezzo and KRVDecimaliQuantita.
// Row r of the model is the line of grid row r + 1: the titles are the header.
class TKRVRigheDocumento : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit TKRVRigheDocumento(const TKRVLayoutRighe &layout, QObject *owner = nullptr);

    const TKRVLayoutRighe &Layout() const { return m_layout; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    // An edit by the user: refused without a word when the value breaks the
    // column's rule, the cell keeping what it held.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    int Righe() const { return int(m_righe.size()); }
    QString Cella(int riga, int colonna) const { return m_righe.at(riga).at(colonna); }
    void SetCella(int riga, int colonna, const QString &testo);
    // The cell as a number (0 when its text is not one).
    double Numero(int riga, int colonna) const;
    void SetNumero(int riga, int colonna, double valore);
    int Intero(int riga, int colonna) const;
    void SetIntero(int riga, int colonna, int valore);
    QString Tipo(int riga) const { return Cella(riga, m_layout.Tipo); }

    // The text a cell shows.
    QString Testo(int riga, int colonna) const;
    bool Modificabile(int riga, int colonna) const;
    bool Selezionabile(int colonna) const;
    // Whether a typed value may replace the cell's content.
    bool Valido(int riga, int colonna, const QString &testo) const;

    // Back to no line at all.
    void Svuota();
    // A line of empty cells at the end; answers its row.
    int AggiungiRiga();
    int AggiungiVoce(const TKRVVoceCatalogo &voce);
    int AggiungiTesto();
    int AggiungiNonImponibile();
    void EliminaRiga(int riga);
    // Moves a line one place; answers whether it moved.
    bool SpostaSu(int riga);
    bool SpostaGiu(int riga);
    // Hands over a line written cell by cell by a reader, in one go.
    void AccodaRiga(const QStringList &celle);

    // The decimals a column's numbers keep at most.
    int DecimaliMassimi(int colonna) const;

    // The locale's number text that the cells hold (two decimals, or as many
    // as the value has up to the given most), and its reading.
    static QString TestoNumero(double valore, int decimaliMassimi = 2);
    static std::optional<double> LeggiNumero(const QString &testo);

signals:
    // A cell edited by the user and accepted.
    void CellaModificata(int riga, int colonna);

private:
    bool Numerica(int colonna) const;

    TKRVLayoutRighe m_layout;
    QList<QStringList> m_righe;
};

// The four sums of a document, unrounded.
struct TKRVTotaliDocumento
{
    double Imponibile = 0;
    double Imposta = 0;
    double Esente = 0;
    double NonImponibile = 0;

    double Totale() const { return Imponibile + Imposta + Esente + NonImponibile; }
};

// The percentage of a VAT rate by its key, when the rate exists.
using TKRVCercaAliquota = std::function<std::optional<double>(int)>;

// The rates of the VAT table on the session, each read once per use of the lookup.
TKRVCercaAliquota KRVAliquoteArchivio(const QSqlDatabase &db);

// Recomputes every line's amount into its cell and answers the document's
// sums. The credit note knows no discount, no exempt and no non-taxable lines.
TKRVTotaliDocumento AggiornaTotaliDocumento(TKRVRigheDocumento &righe, bool ivaEsente,
                                            const TKRVCercaAliquota &aliquota);
