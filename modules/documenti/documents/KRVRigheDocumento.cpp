#include "KRVRigheDocumento.h"

#include "KRVLookups.h"
#include "Q3Utils.h"

#include <QHash>
#include <QLocale>

#include <memory>

namespace {

QStringList TitoliFattura()
{
    return {{},
            {},
            QStringLiteral("Codice"),
            QStringLiteral("Descrizione"),
            {},
            QStringLiteral("Prezzo"),
            QStringLiteral("Sc."),
            QStringLiteral("Q.tà"),
            QStringLiteral("Importo"),
            {},
            QStringLiteral("IVA"),
            {},
            QStringLiteral("U.M."),
            {}};
}

QStringList TitoliNotaAccredito()
{
    return {{},
            QStringLiteral("Codice"),
            QStringLiteral("Descrizione"),
            {},
            QStringLiteral("Prezzo"),
            QStringLiteral("Q.tà"),
            QStringLiteral("Importo"),
            {},
            QStringLiteral("IVA"),
            {},
            QStringLiteral("U.M."),
            {}};
}

} // namespace

QList<int> TKRVLayoutRighe::Visibili() const
{
    QList<int> colonne{Codice, Descrizione, Prezzo};
    if (Sconto >= 0)
        colonne << Sconto;
    colonne << Quantita << Importo << Iva << UM;
    return colonne;
}

QString TKRVLayoutRighe::Titolo(int colonna) const
{
    const QStringList titoli = Colonne == 14 ? TitoliFattura() : TitoliNotaAccredito();
    return titoli.value(colonna);
}

const TKRVLayoutRighe &KRVLayoutFattura()
{
    static const TKRVLayoutRighe layout{.Colonne = 14,
                                        .Id = 0,
                                        .Costo = 1,
                                        .Codice = 2,
                                        .Descrizione = 3,
                                        .IdCategoria = 4,
                                        .Prezzo = 5,
                                        .Sconto = 6,
                                        .Quantita = 7,
                                        .Importo = 8,
                                        .IdIva = 9,
                                        .Iva = 10,
                                        .IdUM = 11,
                                        .UM = 12,
                                        .Tipo = 13,
                                        .DecimaliQuantita = 2,
                                        .NonImponibili = true};
    return layout;
}

const TKRVLayoutRighe &KRVLayoutNotaAccredito()
{
    static const TKRVLayoutRighe layout{.Colonne = 12,
                                        .Id = 0,
                                        .Costo = -1,
                                        .Codice = 1,
                                        .Descrizione = 2,
                                        .IdCategoria = 3,
                                        .Prezzo = 4,
                                        .Sconto = -1,
                                        .Quantita = 5,
                                        .Importo = 6,
                                        .IdIva = 7,
                                        .Iva = 8,
                                        .IdUM = 9,
                                        .UM = 10,
                                        .Tipo = 11,
                                        .DecimaliQuantita = 1,
                                        .NonImponibili = false};
    return layout;
}

TKRVRigheDocumento::TKRVRigheDocumento(const TKRVLayoutRighe &layout, QObject *owner)
    : QAbstractTableModel(owner), m_layout(layout)
{}

int TKRVRigheDocumento::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Righe();
}

int TKRVRigheDocumento::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_layout.Colonne;
}

QVariant TKRVRigheDocumento::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return Testo(index.row(), index.column());
    case Qt::EditRole:
        return Cella(index.row(), index.column());
    case Qt::TextAlignmentRole:
        if (Numerica(index.column()) || index.column() == m_layout.Iva || index.column() == m_layout.UM)
            return int(Qt::AlignRight | Qt::AlignTop);
        return int(Qt::AlignLeft | Qt::AlignTop);
    default:
        return {};
    }
}

QVariant TKRVRigheDocumento::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_layout.Titolo(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags TKRVRigheDocumento::flags(const QModelIndex &index) const
{
    if (!index.isValid() || !Selezionabile(index.column()))
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (Modificabile(index.row(), index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool TKRVRigheDocumento::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || !Modificabile(index.row(), index.column()))
        return false;
    const QString testo = value.toString();
    if (!Valido(index.row(), index.column(), testo))
        return false;
    SetCella(index.row(), index.column(), Numerica(index.column()) ? testo.trimmed() : testo);
    emit CellaModificata(index.row(), index.column());
    return true;
}

void TKRVRigheDocumento::SetCella(int riga, int colonna, const QString &testo)
{
    m_righe[riga][colonna] = testo;
    const QModelIndex cella = index(riga, colonna);
    emit dataChanged(cella, cella);
}

double TKRVRigheDocumento::Numero(int riga, int colonna) const
{
    return LeggiNumero(Cella(riga, colonna)).value_or(0);
}

void TKRVRigheDocumento::SetNumero(int riga, int colonna, double valore)
{
    SetCella(riga, colonna, TestoNumero(valore, DecimaliMassimi(colonna)));
}

int TKRVRigheDocumento::DecimaliMassimi(int colonna) const
{
    if (colonna == m_layout.Prezzo)
        return KRVDecimaliPrezzo;
    if (colonna == m_layout.Quantita)
        return KRVDecimaliQuantita;
    return 2;
}

int TKRVRigheDocumento::Intero(int riga, int colonna) const
{
    return Cella(riga, colonna).trimmed().toInt();
}

void TKRVRigheDocumento::SetIntero(int riga, int colonna, int valore)
{
    SetCella(riga, colonna, QString::number(valore));
}

QString TKRVRigheDocumento::TestoNumero(double valore, int decimaliMassimi)
{
    QString testo = QString::asprintf("%.*f", DecimalsNeeded(valore, 2, qMax(2, decimaliMassimi)), valore);
    testo.replace(QLatin1Char('.'), QLocale().decimalPoint());
    return testo;
}

std::optional<double> TKRVRigheDocumento::LeggiNumero(const QString &testo)
{
    bool ok = false;
    const double valore = QLocale().toDouble(testo.trimmed(), &ok);
    if (!ok)
        return std::nullopt;
    return valore;
}

bool TKRVRigheDocumento::Numerica(int colonna) const
{
    return colonna == m_layout.Prezzo || colonna == m_layout.Sconto || colonna == m_layout.Quantita
           || colonna == m_layout.Importo;
}

QString TKRVRigheDocumento::Testo(int riga, int colonna) const
{
    const bool testo = Tipo(riga) == KRVRigaTesto;
    if (testo && (colonna == m_layout.Codice || Numerica(colonna)))
        return {};
    if (colonna == m_layout.Prezzo || colonna == m_layout.Importo)
        return FormatCurrency(Numero(riga, colonna), DecimaliMassimi(colonna));
    if (colonna == m_layout.Sconto)
        return FormatNumber(Numero(riga, colonna), 0) + QStringLiteral("%");
    if (colonna == m_layout.Quantita) {
        const double quantita = Numero(riga, colonna);
        return FormatNumber(quantita, DecimalsNeeded(quantita, m_layout.DecimaliQuantita, KRVDecimaliQuantita));
    }
    return Cella(riga, colonna);
}

bool TKRVRigheDocumento::Selezionabile(int colonna) const
{
    return m_layout.Visibili().contains(colonna);
}

bool TKRVRigheDocumento::Modificabile(int riga, int colonna) const
{
    const QString tipo = Tipo(riga);
    if (tipo == KRVRigaTesto)
        return colonna == m_layout.Descrizione;
    const bool numeri = colonna == m_layout.Prezzo || colonna == m_layout.Sconto || colonna == m_layout.Quantita;
    if (tipo == KRVRigaNonImponibile)
        return numeri || colonna == m_layout.Descrizione;
    return numeri;
}

bool TKRVRigheDocumento::Valido(int riga, int colonna, const QString &testo) const
{
    if (!Numerica(colonna))
        return true;
    const std::optional<double> valore = LeggiNumero(testo);
    if (!valore)
        return false;
    // More decimals than the column keeps would be lost at the save.
    const int massimi = DecimaliMassimi(colonna);
    if (DecimalsNeeded(*valore, 0, massimi + 1) > massimi)
        return false;
    if (colonna == m_layout.Quantita)
        return *valore > 0;
    if (colonna == m_layout.Sconto)
        return *valore >= 0;
    // Services and non-taxable lines take negative prices, for discounts and
    // deductions; articles do not. The credit note checks no price.
    if (colonna == m_layout.Prezzo && m_layout.Sconto >= 0 && Tipo(riga) == KRVRigaArticolo)
        return *valore >= 0;
    return true;
}

void TKRVRigheDocumento::Svuota()
{
    beginResetModel();
    m_righe.clear();
    endResetModel();
}

int TKRVRigheDocumento::AggiungiRiga()
{
    const int riga = Righe();
    beginInsertRows({}, riga, riga);
    QStringList celle;
    for (int c = 0; c < m_layout.Colonne; ++c)
        celle << QString();
    m_righe.append(celle);
    endInsertRows();
    return riga;
}

void TKRVRigheDocumento::AccodaRiga(const QStringList &celle)
{
    const int riga = Righe();
    beginInsertRows({}, riga, riga);
    QStringList piena = celle;
    while (piena.size() < m_layout.Colonne)
        piena << QString();
    m_righe.append(piena);
    endInsertRows();
}

int TKRVRigheDocumento::AggiungiVoce(const TKRVVoceCatalogo &voce)
{
    const TKRVLayoutRighe &l = m_layout;
    const int riga = AggiungiRiga();
    SetIntero(riga, l.Id, -1);
    if (l.Costo >= 0)
        SetNumero(riga, l.Costo, voce.Costo);
    SetCella(riga, l.Codice, voce.Codice);
    SetCella(riga, l.Descrizione, voce.Descrizione);
    SetIntero(riga, l.IdCategoria, voce.IdCategoria);
    SetNumero(riga, l.Prezzo, voce.Prezzo);
    if (l.Sconto >= 0)
        SetNumero(riga, l.Sconto, 0);
    SetNumero(riga, l.Quantita, 1);
    // One unit without discount.
    SetNumero(riga, l.Importo, voce.Prezzo);
    SetIntero(riga, l.IdIva, voce.IdIva);
    SetCella(riga, l.Iva, voce.CodiceIva);
    SetIntero(riga, l.IdUM, voce.IdUM);
    SetCella(riga, l.UM, voce.UM);
    SetCella(riga, l.Tipo, voce.Tipo);
    return riga;
}

int TKRVRigheDocumento::AggiungiTesto()
{
    const int riga = AggiungiRiga();
    SetCella(riga, m_layout.Tipo, KRVRigaTesto);
    return riga;
}

int TKRVRigheDocumento::AggiungiNonImponibile()
{
    const TKRVLayoutRighe &l = m_layout;
    const int riga = AggiungiRiga();
    SetCella(riga, l.Tipo, KRVRigaNonImponibile);
    SetNumero(riga, l.Costo, 0);
    SetNumero(riga, l.Prezzo, 0);
    SetNumero(riga, l.Sconto, 0);
    SetNumero(riga, l.Importo, 0);
    SetNumero(riga, l.Quantita, 1);
    return riga;
}

void TKRVRigheDocumento::EliminaRiga(int riga)
{
    beginRemoveRows({}, riga, riga);
    m_righe.removeAt(riga);
    endRemoveRows();
}

bool TKRVRigheDocumento::SpostaSu(int riga)
{
    if (Righe() < 2 || riga < 1 || riga >= Righe())
        return false;
    beginMoveRows({}, riga, riga, {}, riga - 1);
    m_righe.move(riga, riga - 1);
    endMoveRows();
    return true;
}

bool TKRVRigheDocumento::SpostaGiu(int riga)
{
    if (Righe() < 2 || riga < 0 || riga >= Righe() - 1)
        return false;
    beginMoveRows({}, riga, riga, {}, riga + 2);
    m_righe.move(riga, riga + 1);
    endMoveRows();
    return true;
}

TKRVCercaAliquota KRVAliquoteArchivio(const QSqlDatabase &db)
{
    auto lette = std::make_shared<QHash<int, std::optional<double>>>();
    return [db, lette](int id) -> std::optional<double> {
        auto trovata = lette->constFind(id);
        if (trovata != lette->constEnd())
            return *trovata;
        const TAliquotaIVA aliquota = GetAliquotaIVA(db, id);
        const std::optional<double> percentuale =
            aliquota.IDALIQUOTA_IVA > 0 ? std::optional<double>(aliquota.ALIQUOTA) : std::nullopt;
        lette->insert(id, percentuale);
        return percentuale;
    };
}

TKRVTotaliDocumento AggiornaTotaliDocumento(TKRVRigheDocumento &righe, bool ivaEsente,
                                            const TKRVCercaAliquota &aliquota)
{
    const TKRVLayoutRighe &l = righe.Layout();
    const bool fattura = l.Sconto >= 0;
    TKRVTotaliDocumento totali;
    for (int r = 0; r < righe.Righe(); ++r) {
        const QString tipo = righe.Tipo(r);
        if (tipo == KRVRigaTesto)
            continue;
        const double prezzo = righe.Numero(r, l.Prezzo);
        const double quantita = righe.Numero(r, l.Quantita);
        const double sconto = fattura ? righe.Numero(r, l.Sconto) : 0;
        righe.SetNumero(r, l.Importo, quantita * (prezzo - sconto * prezzo / 100));
        // The amount as the cell holds it, rounded to the cent.
        const double importo = righe.Numero(r, l.Importo);
        if (fattura && ivaEsente) {
            totali.Esente += importo;
            continue;
        }
        if (fattura && tipo == KRVRigaNonImponibile) {
            totali.NonImponibile += importo;
            continue;
        }
        totali.Imponibile += importo;
        const int idIva = righe.Intero(r, l.IdIva);
        if (idIva > 0) {
            if (const std::optional<double> percentuale = aliquota(idIva))
                totali.Imposta += importo * *percentuale / 100;
        }
    }
    return totali;
}
