#include "uKRVModStatisticheFatturatoClientiServizi.h"

#include "KRVRedditivitaMensile.h"
#include "uKRVFormKit.h"
#include "uKRVImages.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

TKRVModStatisticheFatturatoClientiServizi::TKRVModStatisticheFatturatoClientiServizi(IKRVMain &main)
    : TKRVModStatisticheBase(main, {.Nome = QStringLiteral("KRVModStatisticheFatturatoClientiServizi"),
                                    .Caption = QStringLiteral("Fatturato clienti-servizi"),
                                    .Voce = &KRVVoceServizio(),
                                    .Scrittura = TKRVScritturaSQL::Spaziata,
                                    .CategoryTable = QStringLiteral("CATEGORIE_SERVIZI"),
                                    .CategoryKey = QStringLiteral("IDCATEGORIA_SERVIZI"),
                                    .Dataset = QStringLiteral("adsFatturatoClientiServizi"),
                                    .Report = QStringLiteral("FatturatoClientiServizi01"),
                                    .Titolo = QStringLiteral("Fatturato clienti-servizi dal ")}),
      chkVisualizzaTotali(new QCheckBox(QStringLiteral("Visualizza i totali per cliente"))),
      m_actRipristina(KRVCreaAzione(this, QStringLiteral("actRipristina"), QStringLiteral("Ripristina"),
                                    KRVImgRipristina, [this] { Ripristina(); }))
{
    chkVisualizzaTotali->setObjectName(QStringLiteral("chkVisualizzaTotali"));
    auto gruppo = new QGroupBox;
    gruppo->setObjectName(QStringLiteral("grpVisualizza"));
    auto layout = new QHBoxLayout(gruppo);
    layout->addWidget(chkVisualizzaTotali);
    Opzioni()->addWidget(gruppo);
    Pulsanti()->insertWidget(0, Pulsante(m_actRipristina, QStringLiteral("cmdRipristina")));
    FormCreate();
}

QString TKRVModStatisticheFatturatoClientiServizi::Istruzione(const TKRVFiltroRighe &filtro) const
{
    const bool conFattAcc = KRVEsisteFattAcc(Sessione());
    return KRVSQLFatturatoClientiServizi(KRVWhereRighe(filtro, Statistica().Scrittura), Dal(), Al(), conFattAcc);
}

QString TKRVModStatisticheFatturatoClientiServizi::Report() const
{
    return chkVisualizzaTotali->isChecked() ? QStringLiteral("FatturatoClientiServizi02")
                                            : TKRVModStatisticheBase::Report();
}
