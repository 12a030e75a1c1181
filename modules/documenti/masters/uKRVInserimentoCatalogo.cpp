#include "uKRVInserimentoCatalogo.h"

#include "KRVUtils.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "Q3Utils.h"
#include "uKRVEliminazione.h"
#include "uKRVFormKit.h"
#include "uKRVModSelezionaAliquotaIVA.h"
#include "uKRVModSelezionaUM.h"
#include "uKRVServiziFinestre.h"

namespace {

// Money as the columns keep it: DECIMAL(13, 2).
QDoubleSpinBox *CampoImporto(const QString &name)
{
    auto field = new QDoubleSpinBox;
    field->setObjectName(name);
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    field->setDecimals(2);
    field->setRange(-99999999999.99, 99999999999.99);
    field->setGroupSeparatorShown(true);
    field->setFixedWidth(140);
    return field;
}

// How a chosen VAT rate reads: its code, then its percentage without decimals, "20(20%)".
QString TestoAliquota(const TAliquotaIVA &aliquota)
{
    return aliquota.CODICE + QLatin1Char('(') + QString::number(aliquota.ALIQUOTA, 'f', 0) + QStringLiteral("%)");
}

} // namespace

TKRVInserimentoCatalogo::TKRVInserimentoCatalogo(IKRVMain &main, const TKRVCatalogo &catalogo, const QString &caption,
                                                 QSize minimumSize, int descriptionLength)
    : TKRVInserimentoBase(main, {.Caption = caption,
                                 .MinimumSize = minimumSize,
                                 .Entita = &catalogo.Entita,
                                 .RefreshAfterSave = false,
                                 .RefreshAfterDelete = false}),
      m_catalogo(catalogo), txtCodice(KRVCampoTesto(QStringLiteral("txtCodice"), 20)),
      txtDescrizione(KRVCampoTesto(QStringLiteral("txtDescrizione"), descriptionLength)),
      txtCategoria(new TKRVCategoriaBox(QStringLiteral("txtCategoria"), {.Table = catalogo.CategoryTable,
                                                                         .KeyColumn = catalogo.CategoryKey,
                                                                         .OrderBy = QString(),
                                                                         .FirstEntry = QString()})),
      txtPrezzo(CampoImporto(QStringLiteral("txtPrezzo"))), txtCosto(CampoImporto(QStringLiteral("txtCosto"))),
      m_aliquotaIVA(new TKRVCampoScelta(QStringLiteral("txtAliquotaIVA"), QStringLiteral("cmdSelezionaAliquotaIVA"))),
      m_um(new TKRVCampoScelta(QStringLiteral("txtUM"), QStringLiteral("cmdSelezionaUM")))
{
    txtCategoria->setFixedWidth(txtDescrizione->width());
    AggiungiCampo(QStringLiteral("Codice"), txtCodice);
    AggiungiCampo(QStringLiteral("Descrizione"), txtDescrizione);
    AggiungiCampo(QStringLiteral("Categoria"), txtCategoria);
    AggiungiCampo(QStringLiteral("Prezzo"), txtPrezzo);
    AggiungiCampo(QStringLiteral("Costo"), txtCosto);
    AggiungiCampo(QStringLiteral("Aliquota IVA"), m_aliquotaIVA);
    m_aliquotaIVA->Etichetta()->setAccessibleName(QStringLiteral("Aliquota IVA"));
    AggiungiCampo(QStringLiteral("Unità di misura"), m_um);
    m_um->Etichetta()->setAccessibleName(QStringLiteral("Unità di misura"));
    connect(m_aliquotaIVA->Pulsante(), &QToolButton::clicked, this,
            [this] { Q3Guarded([this] { cmdSelezionaAliquotaIVAClick(); }); });
    connect(m_um->Pulsante(), &QToolButton::clicked, this, [this] { Q3Guarded([this] { cmdSelezionaUMClick(); }); });
    Q3Guarded([this] { txtCategoria->CaricaCategorie(); });
}

void TKRVInserimentoCatalogo::cmdSelezionaAliquotaIVAClick()
{
    auto dialog = Main().Selezione<TKRVModSelezionaAliquotaIVA>(TKRVAzione::ModSelezionaAliquotaIVA);
    if (!dialog)
        return;
    const TAliquotaIVA aliquota = dialog->ApriSelezionato();
    m_aliquotaIVA->Imposta(aliquota.IDALIQUOTA_IVA, TestoAliquota(aliquota));
    SetModified(true);
}

void TKRVInserimentoCatalogo::cmdSelezionaUMClick()
{
    auto dialog = Main().Selezione<TKRVModSelezionaUM>(TKRVAzione::ModSelezionaUM);
    if (!dialog)
        return;
    const TKRVVoceSelezionata um = dialog->ApriSelezionato();
    m_um->Imposta(um.Id, um.Text);
    SetModified(true);
}

void TKRVInserimentoCatalogo::ClearFields()
{
    const int next = ProssimaChiave();
    txtCodice->setText(GetCustomCodice(next, m_catalogo.CodePrefix, QString(), 10));
    txtDescrizione->clear();
    txtCategoria->SelezionaCategoria(-1);
    txtPrezzo->setValue(0);
    txtCosto->setValue(0);
    m_aliquotaIVA->Svuota();
    m_um->Svuota();
}

void TKRVInserimentoCatalogo::FillFields(const TQ3Dataset &dataset)
{
    txtCodice->setText(dataset.FieldValue(QStringLiteral("CODICE")).toString());
    txtDescrizione->setText(dataset.FieldValue(QStringLiteral("DESCRIZIONE")).toString());
    txtCategoria->SelezionaCategoria(dataset.FieldValue(m_catalogo.CategoryKey).toInt());
    txtPrezzo->setValue(dataset.FieldValue(QStringLiteral("PREZZO")).toDouble());
    txtCosto->setValue(dataset.FieldValue(QStringLiteral("COSTO")).toDouble());
    const TAliquotaIVA aliquota =
        GetAliquotaIVA(Sessione(), dataset.FieldValue(QStringLiteral("IDALIQUOTA_IVA")).toInt());
    if (aliquota.IDALIQUOTA_IVA > 0)
        m_aliquotaIVA->Imposta(aliquota.IDALIQUOTA_IVA, TestoAliquota(aliquota));
    else
        m_aliquotaIVA->Svuota();
    const int idUM = dataset.FieldValue(QStringLiteral("IDUM")).toInt();
    const QString um = GetUM(Sessione(), idUM);
    if (um.isEmpty())
        m_um->Svuota();
    else
        m_um->Imposta(idUM, um);
}

void TKRVInserimentoCatalogo::WriteFields(TQ3Dataset &dataset)
{
    dataset.SetFieldValue(QStringLiteral("CODICE"), txtCodice->text());
    dataset.SetFieldValue(QStringLiteral("DESCRIZIONE"), txtDescrizione->text());
    dataset.SetFieldValue(m_catalogo.CategoryKey, txtCategoria->Categoria());
    dataset.SetFieldValue(QStringLiteral("PREZZO"), txtPrezzo->value());
    dataset.SetFieldValue(QStringLiteral("COSTO"), txtCosto->value());
    dataset.SetFieldValue(QStringLiteral("IDALIQUOTA_IVA"), m_aliquotaIVA->Tag());
    dataset.SetFieldValue(QStringLiteral("IDUM"), m_um->Tag());
}

QString TKRVInserimentoCatalogo::ValidationError()
{
    if (txtCodice->text().isEmpty())
        return QStringLiteral("Non è stato indicato il codice!");
    if (txtDescrizione->text().isEmpty())
        return QStringLiteral("Non è stata indicata la descrizione!");
    if (txtCategoria->Categoria() < 0)
        return QStringLiteral("Non è stata indicata la categoria!");
    if (Entita().CodiceEsiste(Sessione(), txtCodice->text(), IdRecord()))
        return QStringLiteral("Codice già utilizzato!");
    if (m_aliquotaIVA->Tag() == 0)
        return QStringLiteral("Non è stata indicata l'aliquota IVA!");
    if (m_um->Tag() == 0)
        return QStringLiteral("Non è stata indicata l'unità di misura!");
    return {};
}

bool TKRVInserimentoCatalogo::CanDeleteRecord()
{
    // The code as the field shows it, even when not yet saved.
    return Entita().PerCodice.CanDelete(Sessione(), txtCodice->text());
}

bool TKRVInserimentoCatalogo::DeleteRecord()
{
    if (!Q3AskYesNo(QString::fromUtf8(KRVMsgConfermaEliminazione)))
        return false;
    // A failed delete is reported; the window blanks all the same.
    if (HaRigaPropria() && KRVEliminaRecord(Sessione(), Entita(), IdRecord()))
        AggiornaRicerca();
    return true;
}
