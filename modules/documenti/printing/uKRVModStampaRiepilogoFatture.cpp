#include "uKRVModStampaRiepilogoFatture.h"

#include <QGroupBox>

namespace {

QRadioButton *Opzione(const char *nome, const char *caption)
{
    auto opzione = new QRadioButton(QString::fromUtf8(caption));
    opzione->setObjectName(QString::fromLatin1(nome));
    return opzione;
}

// A group of exclusive options, the last one chosen.
QGroupBox *Gruppo(const QString &nome, const QString &caption, const QList<QRadioButton *> &opzioni)
{
    auto gruppo = new QGroupBox(caption);
    gruppo->setObjectName(nome);
    auto layout = new QHBoxLayout(gruppo);
    for (QRadioButton *opzione : opzioni)
        layout->addWidget(opzione);
    opzioni.last()->setChecked(true);
    return gruppo;
}

} // namespace

TKRVModStampaRiepilogoFatture::TKRVModStampaRiepilogoFatture()
    : TKRVModStampaAnno(QStringLiteral("Stampa riepilogo fatture")),
      opzFatturePagate(Opzione("opzFatturePagate", "Pagate")),
      opzFattureDaPagare(Opzione("opzFattureDaPagare", "Da pagare")),
      opzFatturePagatoTutte(Opzione("opzFatturePagatoTutte", "Tutte")),
      opzFattureScadenzaInScadenza(Opzione("opzFattureScadenzaInScadenza", "In scadenza")),
      opzFattureScadenzaScadute(Opzione("opzFattureScadenzaScadute", "Scadute")),
      opzFattureScadenzaTutte(Opzione("opzFattureScadenzaTutte", "Tutte"))
{
    setObjectName(QStringLiteral("KRVModStampaRiepilogoFatture"));
    Scelte()->addWidget(Gruppo(QStringLiteral("grpPagato"), QStringLiteral("Pagamento"),
                               {opzFatturePagate, opzFattureDaPagare, opzFatturePagatoTutte}));
    Scelte()->addWidget(Gruppo(QStringLiteral("grpScadenza"), QStringLiteral("Scadenza"),
                               {opzFattureScadenzaInScadenza, opzFattureScadenzaScadute, opzFattureScadenzaTutte}));
    FormCreate();
}

TCustomBoolean TKRVModStampaRiepilogoFatture::Pagato() const
{
    if (opzFatturePagate->isChecked())
        return TCustomBoolean::cbTrue;
    if (opzFattureDaPagare->isChecked())
        return TCustomBoolean::cbFalse;
    return TCustomBoolean::cbNull;
}

TCustomBoolean TKRVModStampaRiepilogoFatture::Scadenza() const
{
    if (opzFattureScadenzaInScadenza->isChecked())
        return TCustomBoolean::cbFalse;
    if (opzFattureScadenzaScadute->isChecked())
        return TCustomBoolean::cbTrue;
    return TCustomBoolean::cbNull;
}
