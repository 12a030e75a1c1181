#include "uKRVGrigliaRighe.h"

#include "KRVLookups.h"
#include "Q3Guards.h"
#include "Q3Messages.h"
#include "Q3Registry.h"
#include "Q3Utils.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"
#include "uKRVModSelezionaArticolo.h"
#include "uKRVModSelezionaServizio.h"
#include "uKRVServiziFinestre.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace {

// Descriptions are edited in a memo: Enter makes a new line, the arrows move
// inside the text and Tab stays in it. Other cells take one line of text.
class TKRVDelegatoRighe : public QStyledItemDelegate
{
public:
    TKRVDelegatoRighe(const TKRVLayoutRighe &layout, QObject *owner) : QStyledItemDelegate(owner), m_layout(layout) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (index.column() != m_layout.Descrizione)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto memo = new QPlainTextEdit(parent);
        memo->setObjectName(QStringLiteral("memoDescrizione"));
        memo->setTabChangesFocus(false);
        return memo;
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        if (auto memo = qobject_cast<QPlainTextEdit *>(editor)) {
            memo->setPlainText(index.data(Qt::EditRole).toString());
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }

    // The end of an edit: what the accepted value sets off (the totals, which
    // read the VAT rates) runs under the failure guard. The value is read here
    // rather than by the base class, so that a failure reaches the guard
    // through none of the widget library's frames, which release nothing on
    // the way out.
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        QVariant valore;
        if (auto memo = qobject_cast<QPlainTextEdit *>(editor))
            valore = memo->toPlainText();
        else
            valore = editor->property(editor->metaObject()->userProperty().name());
        Q3Guarded([&] { model->setData(index, valore); });
    }

    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override
    {
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
        // The memo has room for a few lines even on a one-line row.
        if (qobject_cast<QPlainTextEdit *>(editor))
            editor->resize(editor->width(), std::max(editor->height(), option.fontMetrics.height() * 4));
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (qobject_cast<QPlainTextEdit *>(object) && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Up || key == Qt::Key_Down)
                return false;
        }
        return QStyledItemDelegate::eventFilter(object, event);
    }

    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto righe = static_cast<const TKRVRigheDocumento *>(index.model());
        if (index.column() == m_layout.Iva && righe->Tipo(index.row()) == KRVRigaNonImponibile)
            option->backgroundBrush = QColor(0xC0, 0xC0, 0xC0);
    }

private:
    TKRVLayoutRighe m_layout;
};

struct TKRVComandoRiga
{
    const char *Nome;
    const char *Caption;
    int Image;
    const char *HintTitle;
    const char *HintNote;
    void (TKRVGrigliaRighe::*Handler)();
};

} // namespace

TKRVGrigliaRighe::TKRVGrigliaRighe(IKRVMain &main, TKRVRigheDocumento *righe, const QString &name, QWidget *parent)
    : QTableView(parent), m_main(main), m_righe(righe)
{
    setObjectName(name);
    setModel(righe);
    setItemDelegate(new TKRVDelegatoRighe(righe->Layout(), this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                    | QAbstractItemView::AnyKeyPressed);
    setWordWrap(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    const TKRVLayoutRighe &l = righe->Layout();
    for (int c = 0; c < l.Colonne; ++c)
        setColumnHidden(c, !l.Visibili().contains(c));
    connect(righe, &TKRVRigheDocumento::CellaModificata, this, [this](int riga) {
        AdattaAltezzaRiga(riga);
        emit Modificata(true);
    });
    connect(righe, &QAbstractItemModel::modelReset, this, [this] { AdattaAltezzeRighe(); });
}

QToolBar *TKRVGrigliaRighe::BarraComandi()
{
    if (m_barra)
        return m_barra;
    const TKRVComandoRiga comandi[] = {
        {"actAggiungiArticolo", "Aggiungi articolo", KRVImgArticoli, "Aggiungi articolo",
         "Aggiunge un articolo selezionandolo\ntra quelli presenti in archivio.",
         &TKRVGrigliaRighe::actAggiungiArticoloExecute},
        {"actAggiungiServizio", "Aggiungi servizio", KRVImgServizi, "Aggiungi un servizio",
         "Aggiunge un servizio selezionandolo\ntra quelli presenti in archivio.",
         &TKRVGrigliaRighe::actAggiungiServizioExecute},
        {"actAggiungiTesto", "Aggiungi testo", KRVImgNuovo, "Aggiungi testo",
         "Aggiunge una riga testuale\nche non ha importo.", &TKRVGrigliaRighe::actAggiungiTestoExecute},
        {"actAggiungiNonImponibile", "Aggiungi non imponibile", KRVImgNuovo, "Aggiungi voce non imponibile",
         "Aggiunge una voce\nnon imponibile.", &TKRVGrigliaRighe::actAggiungiNonImponibileExecute},
        {"actEliminaRiga", "Elimina riga", KRVImgElimina, "Elimina riga", "Elimina la riga selezionata.",
         &TKRVGrigliaRighe::actEliminaRigaExecute},
        {"actSpostaRigaSu", "Sposta in alto", KRVImgPaginaPrecedente, "Sposta in alto",
         "Sposta la riga\nselezionata verso l'alto.", &TKRVGrigliaRighe::actSpostaRigaSuExecute},
        {"actSpostaRigaGiu", "Sposta in basso", KRVImgPaginaSuccessiva, "Sposta in basso",
         "Sposta la riga\nselezionata verso il basso.", &TKRVGrigliaRighe::actSpostaRigaGiuExecute},
    };
    m_barra = KRVCreaToolBar(this, QStringLiteral("tBarRighe"));
    for (const TKRVComandoRiga &comando : comandi) {
        if (!m_righe->Layout().NonImponibili
            && QLatin1String(comando.Nome) == QLatin1String("actAggiungiNonImponibile"))
            continue;
        const auto handler = comando.Handler;
        QAction *action = KRVCreaAzione(this, QString::fromLatin1(comando.Nome), QString::fromUtf8(comando.Caption),
                                        comando.Image, [this, handler] { (this->*handler)(); });
        m_barra->addAction(action);
        SetRichHint(m_barra->widgetForAction(action), QString::fromUtf8(comando.HintTitle),
                    QString::fromUtf8(comando.HintNote));
    }
    return m_barra;
}

void TKRVGrigliaRighe::RidimensionaGriglia()
{
    const TKRVLayoutRighe &l = m_righe->Layout();
    const int w = width() - 21;
    int codice = qRound(w * 13 / 100.0);
    QList<std::pair<int, int>> fisse{{l.Prezzo, 100}, {l.Quantita, 60}, {l.Importo, 100}, {l.Iva, 40}, {l.UM, 50}};
    if (l.Sconto >= 0)
        fisse << std::pair{l.Sconto, 50};
    int resto = w - codice;
    setColumnWidth(l.Codice, codice);
    for (const auto &[colonna, larghezza] : fisse) {
        setColumnWidth(colonna, larghezza);
        resto -= larghezza;
    }
    setColumnWidth(l.Descrizione, std::max(resto, 0));
}

void TKRVGrigliaRighe::AdattaAltezzeRighe()
{
    for (int r = 0; r < m_righe->Righe(); ++r)
        AdattaAltezzaRiga(r);
}

void TKRVGrigliaRighe::AdattaAltezzaRiga(int riga)
{
    // Every line of the description shows, those it wraps into included.
    const int colonna = m_righe->Layout().Descrizione;
    const int righeTesto = int(m_righe->Cella(riga, colonna).count(QLatin1Char('\n'))) + 1;
    const int altezza =
        std::max(righeTesto * fontMetrics().lineSpacing() + 8,
                 columnWidth(colonna) > 0 ? sizeHintForIndex(m_righe->index(riga, colonna)).height() : 0);
    setRowHeight(riga, std::max(verticalHeader()->defaultSectionSize(), altezza));
}

int TKRVGrigliaRighe::RigaSelezionata() const
{
    const QModelIndexList selezione = selectionModel()->selectedIndexes();
    return selezione.isEmpty() ? -1 : selezione.first().row();
}

void TKRVGrigliaRighe::SelezionaCella(int riga, int colonna)
{
    const QModelIndex cella = m_righe->index(riga, colonna);
    setCurrentIndex(cella);
    selectionModel()->select(cella, QItemSelectionModel::ClearAndSelect);
    scrollTo(cella);
}

void TKRVGrigliaRighe::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    RidimensionaGriglia();
    AdattaAltezzeRighe();
}

bool TKRVGrigliaRighe::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    bool mostrato = false;
    Q3Guarded([&] { mostrato = MostraSuggerimentoIva(*static_cast<QHelpEvent *>(event)); });
    if (!mostrato)
        QToolTip::hideText();
    return true;
}

bool TKRVGrigliaRighe::MostraSuggerimentoIva(const QHelpEvent &help)
{
    const QModelIndex cella = indexAt(help.pos());
    const TKRVLayoutRighe &l = m_righe->Layout();
    if (!cella.isValid() || cella.column() != l.Iva)
        return false;
    const TAliquotaIVA aliquota = GetAliquotaIVA(m_main.Sessione(), m_righe->Intero(cella.row(), l.IdIva));
    if (aliquota.IDALIQUOTA_IVA <= 0)
        return false;
    QToolTip::showText(help.globalPos(),
                       QStringLiteral("<b>Aliquota IVA</b><br>%1<br>%2<br>%3")
                           .arg((QStringLiteral("Codice: ") + aliquota.CODICE).toHtmlEscaped(),
                                (QStringLiteral("Descrizione: ") + aliquota.DESCRIZIONE).toHtmlEscaped(),
                                (QStringLiteral("Aliquota: ") + FormatNumber(aliquota.ALIQUOTA, 0)
                                 + QStringLiteral(" %"))
                                    .toHtmlEscaped()),
                       viewport(), visualRect(cella));
    return true;
}

void TKRVGrigliaRighe::AggiungiVoce(const TKRVVoceCatalogo &voce)
{
    const int riga = m_righe->AggiungiVoce(voce);
    SelezionaCella(riga, m_righe->Layout().Prezzo);
    emit Modificata(true);
}

void TKRVGrigliaRighe::actAggiungiArticoloExecute()
{
    auto dialog = m_main.Selezione<TKRVModSelezionaArticolo>(TKRVAzione::ModSelezionaArticolo);
    if (!dialog)
        return;
    const TArticolo articolo = GetArticolo(m_main.Sessione(), dialog->ApriSelezionato());
    if (articolo.IDANA_MAGA <= 0)
        return;
    const TAliquotaIVA aliquota = GetAliquotaIVA(m_main.Sessione(), articolo.IDALIQUOTA_IVA);
    AggiungiVoce({KRVRigaArticolo, articolo.COSTO, articolo.CODICE, articolo.DESCRIZIONE, articolo.IDCATEGORIA_ANA_MAGA,
                  articolo.PREZZO, articolo.IDALIQUOTA_IVA, aliquota.CODICE, articolo.IDUM,
                  GetUM(m_main.Sessione(), articolo.IDUM)});
}

void TKRVGrigliaRighe::actAggiungiServizioExecute()
{
    auto dialog = m_main.Selezione<TKRVModSelezionaServizio>(TKRVAzione::ModSelezionaServizio);
    if (!dialog)
        return;
    const TServizio servizio = GetServizio(m_main.Sessione(), dialog->ApriSelezionato());
    if (servizio.IDSERVIZIO <= 0)
        return;
    const TAliquotaIVA aliquota = GetAliquotaIVA(m_main.Sessione(), servizio.IDALIQUOTA_IVA);
    AggiungiVoce({KRVRigaServizio, servizio.COSTO, servizio.CODICE, servizio.DESCRIZIONE, servizio.IDCATEGORIA_SERVIZI,
                  servizio.PREZZO, servizio.IDALIQUOTA_IVA, aliquota.CODICE, servizio.IDUM,
                  GetUM(m_main.Sessione(), servizio.IDUM)});
}

void TKRVGrigliaRighe::actAggiungiTestoExecute()
{
    const int riga = m_righe->AggiungiTesto();
    SelezionaCella(riga, m_righe->Layout().Descrizione);
    emit Modificata(false);
}

void TKRVGrigliaRighe::actAggiungiNonImponibileExecute()
{
    const int riga = m_righe->AggiungiNonImponibile();
    SelezionaCella(riga, m_righe->Layout().Descrizione);
    emit Modificata(false);
}

void TKRVGrigliaRighe::actEliminaRigaExecute()
{
    const int riga = RigaSelezionata();
    if (riga < 0 || !Q3AskYesNo(QStringLiteral("Eliminare la riga selezionata?")))
        return;
    m_righe->EliminaRiga(riga);
    emit Modificata(true);
}

void TKRVGrigliaRighe::SpostaRiga(bool su)
{
    const int riga = RigaSelezionata();
    const QModelIndex corrente = currentIndex();
    if (!(su ? m_righe->SpostaSu(riga) : m_righe->SpostaGiu(riga)))
        return;
    const int destinazione = su ? riga - 1 : riga + 1;
    AdattaAltezzaRiga(riga);
    AdattaAltezzaRiga(destinazione);
    SelezionaCella(destinazione, corrente.column());
    emit Modificata(false);
}

void TKRVGrigliaRighe::actSpostaRigaSuExecute()
{
    SpostaRiga(true);
}

void TKRVGrigliaRighe::actSpostaRigaGiuExecute()
{
    SpostaRiga(false);
}
