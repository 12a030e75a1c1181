#include "uKRVInserimentoAliquoteIVA.h"

#include "KRVNatureIva.h"
#include "KRVUtils.h"
#include "Q3Dataset.h"
#include "Q3Guards.h"
#include "uKRVFormKit.h"

namespace {

const QString MsgAliquotaFuoriIntervallo = QStringLiteral("L'aliquota IVA deve essere compresa tra 0 e 100!");
const QString ColonnaNatura = QStringLiteral("NATURA");
const QString ColonnaRiferimento = QStringLiteral("RIFERIMENTO_NORMATIVO");

// The natures of the operation, each as "code - description" with the code as
// its data, after an empty entry for the rates that need none.
QComboBox *CampoNatura()
{
    auto combo = new QComboBox;
    combo->setObjectName(QStringLiteral("cboNatura"));
    combo->addItem(QString(), QString());
    for (const TKRVNaturaIva &natura : KRVNatureIva())
        combo->addItem(natura.Codice + QStringLiteral(" - ") + natura.Descrizione, natura.Codice);
    return combo;
}

// A percentage in the money format, with zero written plainly as "0".
class TCampoAliquota : public QDoubleSpinBox
{
public:
    QString textFromValue(double value) const override
    {
        return value == 0 ? QStringLiteral("0") : QDoubleSpinBox::textFromValue(value);
    }
};

} // namespace

TKRVInserimentoAliquoteIVA::TKRVInserimentoAliquoteIVA(IKRVMain &main)
    : TKRVInserimentoBase(main, {.Caption = QStringLiteral("Inserimento / Modifica aliquote IVA"),
                                 .MinimumSize = QSize(500, 200),
                                 .Entita = &KRVEntitaAliquoteIVA(),
                                 .RefreshAfterSave = true,
                                 .RefreshAfterDelete = true,
                                 .CheckIcon = TQ3MsgIcon::None,
                                 .SaveFailureIcon = TQ3MsgIcon::None}),
      txtCodice(KRVCampoTesto(QStringLiteral("txtCodice"), 2, true)),
      txtDescrizione(KRVCampoTesto(QStringLiteral("txtDescrizione"), 30)), txtAliquota(new TCampoAliquota),
      cboNatura(CampoNatura()), txtRiferimentoNormativo(KRVCampoTesto(QStringLiteral("txtRiferimentoNormativo"), 100))
{
    setObjectName(QStringLiteral("KRVInserimentoAliquoteIVA"));
    txtAliquota->setObjectName(QStringLiteral("txtAliquota"));
    txtAliquota->setButtonSymbols(QAbstractSpinBox::NoButtons);
    txtAliquota->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    txtAliquota->setDecimals(2);
    // Any amount may be typed: the range is the field's own check, with its message.
    txtAliquota->setRange(-99999999999.99, 99999999999.99);
    txtAliquota->setSuffix(QStringLiteral(" %"));
    txtAliquota->setFixedWidth(120);
    // The reference scrolls within the width of the natures rather than
    // widening the window past its size.
    txtRiferimentoNormativo->setFixedWidth(cboNatura->sizeHint().width());
    connect(txtAliquota, &QDoubleSpinBox::editingFinished, this,
            [this] { Q3Guarded([this] { txtAliquotaValueValidate(); }); });

    AggiungiCampo(QStringLiteral("Codice"), txtCodice);
    AggiungiCampo(QStringLiteral("Descrizione"), txtDescrizione);
    AggiungiCampo(QStringLiteral("Aliquota"), txtAliquota);
    AggiungiCampo(QStringLiteral("Natura"), cboNatura);
    AggiungiCampo(QStringLiteral("Riferimento normativo"), txtRiferimentoNormativo);
    BloccaSeSalvato(txtCodice);
    FormCreate();
}

bool TKRVInserimentoAliquoteIVA::AliquotaValida() const
{
    return txtAliquota->value() >= 0 && txtAliquota->value() <= 100;
}

bool TKRVInserimentoAliquoteIVA::txtAliquotaValueValidate()
{
    // The box takes the focus, which would finish the editing a second time.
    if (m_validating || AliquotaValida())
        return true;
    m_validating = true;
    Q3MessageBox(QStringLiteral("Attenzione"), MsgAliquotaFuoriIntervallo);
    m_validating = false;
    txtAliquota->setFocus();
    return false;
}

void TKRVInserimentoAliquoteIVA::ClearFields()
{
    txtCodice->clear();
    txtDescrizione->clear();
    txtAliquota->setValue(0);
    cboNatura->setCurrentIndex(0);
    txtRiferimentoNormativo->clear();
}

void TKRVInserimentoAliquoteIVA::FillFields(const TQ3Dataset &dataset)
{
    txtCodice->setText(dataset.FieldValue(QStringLiteral("CODICE")).toString());
    txtDescrizione->setText(dataset.FieldValue(QStringLiteral("DESCRIZIONE")).toString());
    txtAliquota->setValue(dataset.FieldValue(QStringLiteral("ALIQUOTA")).toDouble());
    // A code the list does not know (an older one) is shown as stored, so saving keeps it.
    const QString natura = dataset.FieldValue(ColonnaNatura).toString();
    if (cboNatura->findData(natura) < 0)
        cboNatura->addItem(natura, natura);
    cboNatura->setCurrentIndex(cboNatura->findData(natura));
    txtRiferimentoNormativo->setText(dataset.FieldValue(ColonnaRiferimento).toString());
}

void TKRVInserimentoAliquoteIVA::WriteFields(TQ3Dataset &dataset)
{
    dataset.SetFieldValue(QStringLiteral("CODICE"), txtCodice->text());
    dataset.SetFieldValue(QStringLiteral("DESCRIZIONE"), txtDescrizione->text());
    dataset.SetFieldValue(QStringLiteral("ALIQUOTA"), txtAliquota->value());
    dataset.SetFieldValue(ColonnaNatura, cboNatura->currentData().toString());
    dataset.SetFieldValue(ColonnaRiferimento, txtRiferimentoNormativo->text());
}

QString TKRVInserimentoAliquoteIVA::ValidationError()
{
    if (txtCodice->text().isEmpty())
        return QStringLiteral("Non è stato indicato il codice!");
    if (txtDescrizione->text().isEmpty())
        return QStringLiteral("Non è stata indicata la descrizione!");
    if (Entita().CodiceEsiste(Sessione(), txtCodice->text(), IdRecord()))
        return QStringLiteral("Codice già utilizzato!");
    // A percentage the field refused is never written.
    if (!AliquotaValida())
        return MsgAliquotaFuoriIntervallo;
    if (txtAliquota->value() == 0 && cboNatura->currentData().toString().isEmpty())
        return QStringLiteral("Per un'aliquota dello 0% indicare la natura dell'operazione.");
    return {};
}
