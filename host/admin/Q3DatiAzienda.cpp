#include "Q3DatiAzienda.h"

#include "Q3AdminKit.h"
#include "Q3Guards.h"
#include "Q3Messages.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QWidget *Pagina(QTabWidget *tabs, const QString &caption, QFormLayout *&form)
{
    auto page = new QWidget;
    form = new QFormLayout(page);
    tabs->addTab(page, caption);
    return page;
}

int Lunghezza(const QString &column)
{
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda()) {
        if (QLatin1String(colonna.Colonna) == column)
            return colonna.Lunghezza;
    }
    return 0;
}

// The name of an input: "txt" and the column's words, each capitalised.
QString NomeCampo(const QString &column)
{
    QString name = QStringLiteral("txt");
    for (const QString &word : column.split(QLatin1Char('_')))
        name += word.left(1) + word.mid(1).toLower();
    return name;
}

} // namespace

TQ3DatiAzienda::TQ3DatiAzienda(const QSqlDatabase &db, QWidget *parent) : QDialog(parent), m_db(db)
{
    setObjectName(QStringLiteral("Q3DatiAzienda"));
    setWindowTitle(QStringLiteral("Dati azienda"));
    auto layout = new QVBoxLayout(this);
    auto tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("tabDatiAzienda"));
    layout->addWidget(tabs);

    QFormLayout *form = nullptr;
    Pagina(tabs, QStringLiteral("Anagrafica"), form);
    Campo(form, QStringLiteral("&Ragione sociale:"), QStringLiteral("RAGIONESOCIALE"));
    Campo(form, QStringLiteral("&Indirizzo:"), QStringLiteral("INDIRIZZO"));
    Campo(form, QStringLiteral("C&AP:"), QStringLiteral("CAP"));
    Campo(form, QStringLiteral("Ci&ttà:"), QStringLiteral("CITTA"));
    Campo(form, QStringLiteral("&Provincia:"), QStringLiteral("PROVINCIA"));
    Campo(form, QStringLiteral("&Nazione:"), QStringLiteral("NAZIONE"));
    Campo(form, QStringLiteral("&Codice nazione:"), QStringLiteral("CODICE_NAZIONE"));
    Campo(form, QStringLiteral("T&elefono:"), QStringLiteral("TELEFONO"));
    Campo(form, QStringLiteral("&Fax:"), QStringLiteral("FAX"));
    Campo(form, QStringLiteral("E-&mail:"), QStringLiteral("EMAIL"));
    Campo(form, QStringLiteral("Sito &web:"), QStringLiteral("WEB"));

    Pagina(tabs, QStringLiteral("Dati fiscali"), form);
    Campo(form, QStringLiteral("&Partita IVA:"), QStringLiteral("PARTITAIVA"));
    Campo(form, QStringLiteral("&Codice fiscale:"), QStringLiteral("CODICEFISCALE"));
    QList<std::pair<QString, QString>> regimi;
    for (const TQ3RegimeFiscale &regime : Q3RegimiFiscali())
        regimi.append({QString::fromLatin1(regime.Codice), QString::fromLatin1(regime.Codice) + QStringLiteral(" - ")
                                                               + QString::fromUtf8(regime.Descrizione)});
    cmbRegimeFiscale = Scelta(form, QStringLiteral("&Regime fiscale:"), QStringLiteral("cmbRegimeFiscale"), regimi);
    Campo(form, QStringLiteral("R&EA (come stampato):"), QStringLiteral("REA"));
    Campo(form, QStringLiteral("&Ufficio REA (provincia):"), QStringLiteral("REA_UFFICIO"));
    Campo(form, QStringLiteral("&Numero REA:"), QStringLiteral("REA_NUMERO"));
    Campo(form, QStringLiteral("Capita&le sociale:"), QStringLiteral("CAPITALE_SOCIALE"));
    cmbSocioUnico = Scelta(form, QStringLiteral("S&ocio unico:"), QStringLiteral("cmbSocioUnico"),
                           {{QString(), QStringLiteral("(non indicato)")},
                            {QStringLiteral("SU"), QStringLiteral("SU - Socio unico")},
                            {QStringLiteral("SM"), QStringLiteral("SM - Più soci")}});
    cmbStatoLiquidazione =
        Scelta(form, QStringLiteral("S&tato di liquidazione:"), QStringLiteral("cmbStatoLiquidazione"),
               {{QStringLiteral("LN"), QStringLiteral("LN - Non in liquidazione")},
                {QStringLiteral("LS"), QStringLiteral("LS - In liquidazione")}});

    Pagina(tabs, QStringLiteral("Banca"), form);
    Campo(form, QStringLiteral("&Banca:"), QStringLiteral("BANCA"));
    Campo(form, QStringLiteral("&IBAN:"), QStringLiteral("IBAN"));

    QWidget *logo = Pagina(tabs, QStringLiteral("Logo"), form);
    logo->setObjectName(QStringLiteral("pagLogo"));
    lblAnteprimaLogo = new QLabel;
    lblAnteprimaLogo->setObjectName(QStringLiteral("lblAnteprimaLogo"));
    lblAnteprimaLogo->setAlignment(Qt::AlignCenter);
    lblAnteprimaLogo->setMinimumSize(240, 120);
    lblAnteprimaLogo->setFrameShape(QFrame::StyledPanel);
    form->addRow(lblAnteprimaLogo);
    auto scegli = new QPushButton(QStringLiteral("Scegli &logo..."));
    scegli->setObjectName(QStringLiteral("btnScegliLogo"));
    btnRimuoviLogo = new QPushButton(QStringLiteral("Ri&muovi logo"));
    btnRimuoviLogo->setObjectName(QStringLiteral("btnRimuoviLogo"));
    auto bottoniLogo = new QHBoxLayout;
    bottoniLogo->addWidget(scegli);
    bottoniLogo->addWidget(btnRimuoviLogo);
    bottoniLogo->addStretch();
    form->addRow(bottoniLogo);
    connect(scegli, &QPushButton::clicked, this, [this] { Q3Guarded([this] { SceltaLogo(); }); });
    connect(btnRimuoviLogo, &QPushButton::clicked, this, &TQ3DatiAzienda::RimuoviLogo);

    auto bottoni = new QHBoxLayout;
    bottoni->addStretch();
    btnSalva = new QPushButton(QStringLiteral("&Salva"));
    btnSalva->setObjectName(QStringLiteral("btnSalva"));
    auto chiudi = new QPushButton(QStringLiteral("C&hiudi"));
    chiudi->setObjectName(QStringLiteral("btnChiudi"));
    bottoni->addWidget(btnSalva);
    bottoni->addWidget(chiudi);
    layout->addLayout(bottoni);
    connect(btnSalva, &QPushButton::clicked, this, [this] { Salva(); });
    connect(chiudi, &QPushButton::clicked, this, &TQ3DatiAzienda::reject);

    // Data that could not be read are never overwritten with an empty window.
    m_leggibile = Q3Guarded([this] { m_salvata = Q3LeggiAzienda(m_db); });
    btnSalva->setEnabled(m_leggibile);
    Mostra(m_salvata);
}

QLineEdit *TQ3DatiAzienda::Campo(QFormLayout *form, const QString &caption, const QString &column)
{
    QLineEdit *edit = Q3CampoTesto(NomeCampo(column), Lunghezza(column));
    form->addRow(Q3Etichetta(caption, edit), edit);
    m_campi.insert(column, edit);
    return edit;
}

QComboBox *TQ3DatiAzienda::Scelta(QFormLayout *form, const QString &caption, const QString &name,
                                  const QList<std::pair<QString, QString>> &items)
{
    auto combo = new QComboBox;
    combo->setObjectName(name);
    // The long descriptions of the tax regimes do not widen the window.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(40);
    for (const auto &[code, text] : items)
        combo->addItem(text, code);
    form->addRow(Q3Etichetta(caption, combo), combo);
    return combo;
}

TQ3Azienda TQ3DatiAzienda::Azienda() const
{
    TQ3Azienda azienda;
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda()) {
        if (const QLineEdit *edit = m_campi.value(QString::fromLatin1(colonna.Colonna)))
            azienda.*colonna.Campo = edit->text();
    }
    azienda.RegimeFiscale = cmbRegimeFiscale->currentData().toString();
    azienda.SocioUnico = cmbSocioUnico->currentData().toString();
    azienda.StatoLiquidazione = cmbStatoLiquidazione->currentData().toString();
    azienda.Logo = m_logo;
    return azienda;
}

void TQ3DatiAzienda::Mostra(const TQ3Azienda &azienda)
{
    for (const TQ3ColonnaAzienda &colonna : Q3ColonneAzienda()) {
        if (QLineEdit *edit = m_campi.value(QString::fromLatin1(colonna.Colonna)))
            edit->setText(azienda.*colonna.Campo);
    }
    // A code the lists do not hold is kept, shown as it is stored.
    for (auto [combo, code] :
         {std::pair{cmbRegimeFiscale, azienda.RegimeFiscale}, std::pair{cmbSocioUnico, azienda.SocioUnico},
          std::pair{cmbStatoLiquidazione, azienda.StatoLiquidazione}}) {
        if (combo->findData(code) < 0)
            combo->addItem(code, code);
        combo->setCurrentIndex(combo->findData(code));
    }
    m_logo = azienda.Logo;
    MostraLogo();
}

void TQ3DatiAzienda::MostraLogo()
{
    const QImage image = QImage::fromData(m_logo);
    if (image.isNull()) {
        lblAnteprimaLogo->setPixmap(QPixmap());
        lblAnteprimaLogo->setText(m_logo.isEmpty() ? QStringLiteral("Nessun logo")
                                                   : QStringLiteral("Il logo salvato non è un'immagine leggibile."));
    } else {
        lblAnteprimaLogo->setPixmap(QPixmap::fromImage(
            image.scaled(lblAnteprimaLogo->minimumSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    }
    btnRimuoviLogo->setEnabled(!m_logo.isEmpty());
}

void TQ3DatiAzienda::SceltaLogo()
{
    QFileDialog dialog(this, QStringLiteral("Scegli logo"));
    dialog.setObjectName(QStringLiteral("dlgScegliLogo"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(QStringLiteral("Immagini (*.png *.jpg *.jpeg *.bmp *.gif)"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    QFile file(dialog.selectedFiles().constFirst());
    if (!file.open(QIODevice::ReadOnly)) {
        Q3ShowWarning(QStringLiteral("Impossibile leggere il file \"%1\".").arg(file.fileName()));
        return;
    }
    const QByteArray bytes = file.readAll();
    if (QImage::fromData(bytes).isNull()) {
        Q3ShowWarning(QStringLiteral("Il file \"%1\" non è un'immagine leggibile.").arg(file.fileName()));
        return;
    }
    m_logo = bytes;
    MostraLogo();
}

void TQ3DatiAzienda::RimuoviLogo()
{
    m_logo.clear();
    MostraLogo();
}

bool TQ3DatiAzienda::Salva()
{
    const TQ3Azienda azienda = Azienda();
    const QStringList problemi = Q3ProblemiAzienda(azienda);
    if (!problemi.isEmpty()) {
        Q3ShowWarning(problemi.join(QStringLiteral("\n\r")));
        return false;
    }
    if (!Q3Guarded([&] { Q3ScriviAzienda(m_db, azienda); }))
        return false;
    m_salvata = azienda;
    return true;
}

void TQ3DatiAzienda::reject()
{
    if (Modificata() && !Q3SalvaPrimaDiProseguire(QStringLiteral("Salvare le modifiche?"), [this] { return Salva(); }))
        return;
    QDialog::reject();
}

void Q3ApriDatiAzienda(const QSqlDatabase &db, QWidget *parent)
{
    TQ3DatiAzienda window(db, parent);
    window.exec();
}
