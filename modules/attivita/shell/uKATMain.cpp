#include "uKATMain.h"

#include "KATAggiornaDatabase.h"
#include "KATDiritti.h"
#include "KATPromemoria.h"
#include "Q3Exception.h"
#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Packages.h"
#include "Q3Registry.h"
#include "Q3Ruoli.h"
#include "Q3Users.h"
#include "uKATElencoPromemoria.h"
#include "uKATImmagini.h"

#include <QApplication>
#include <QMenuBar>

namespace {

const QString NotificaFattura = QStringLiteral("Nuova fattura ciclica");
const QString RichiestaFatturaCiclica = QStringLiteral("Nuova fattura di vendita ciclica");
const QString ModuloDocumenti = QStringLiteral("Documenti");

} // namespace

TKATMain::TKATMain(QObject *owner) : QObject(owner), m_contenitore(std::make_unique<QWidget>())
{
    setObjectName(QStringLiteral("KATMain"));
    m_contenitore->setObjectName(QStringLiteral("KATMainContainer"));
    m_connessione = new TQ3Connection(this);
    m_connessione->setObjectName(QStringLiteral("KATConn"));

    m_actPromemoria = new QAction(KATImmagine(TKATImmagine::Promemoria), QStringLiteral("Promemoria"), this);
    m_actPromemoria->setObjectName(QStringLiteral("actPromemoria"));
    m_actPromemoria->setProperty("Category", QStringLiteral("Attività"));
    m_actPromemoria->setStatusTip(QStringLiteral("Promemoria e fatture cicliche da emettere."));
    connect(m_actPromemoria, &QAction::triggered, this, [this] { Q3Guarded([this] { ApriPromemoria(); }); });

    auto menu = new QMenuBar(m_contenitore.get());
    menu->setObjectName(QStringLiteral("MenuAttivita"));
    m_mnAttivita = menu->addMenu(QStringLiteral("Attività"));
    m_mnAttivita->setObjectName(QStringLiteral("mnAttivita"));
    m_mnAttivita->addAction(m_actPromemoria);

    m_tBarAttivita = new QToolBar(QStringLiteral("Attività"), m_contenitore.get());
    m_tBarAttivita->setObjectName(QStringLiteral("tBarKATAttivita"));
    m_tBarAttivita->addAction(m_actPromemoria);
    SetRichHint(m_tBarAttivita->widgetForAction(m_actPromemoria), QStringLiteral("Promemoria"),
                QStringLiteral("Elenco dei promemoria:\nfatture cicliche da emettere e attività."));
}

TKATMain::~TKATMain()
{
    delete m_elenco.data();
    ReleasePackageMainObject(this);
}

void TKATMain::Initialize()
{
    Q3UsaConnessioneHost(m_connessione);
    KATAggiornaDatabase(Sessione());
    MergeAdvMenuItems(qApp, m_mnAttivita->objectName(), m_mnAttivita, true);
    TCommonToolBarProperties properties;
    GetQ3CommonToolBarProperties(TQ3CommonToolBars::Documenti, properties);
    MergeAdvToolBarItems(qApp, properties, m_tBarAttivita);
}

int TKATMain::ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex)
{
    try {
        if (actionName != NotificaFattura || parameters.size() != 2 || lastIndex != 1)
            return 0;
        FatturaSalvata(Q3ParametroIntero(parameters.first()));
    } catch (const std::exception &e) {
        Q3ShowError(ExceptionMessage(e));
    }
    return 0;
}

void TKATMain::FatturaSalvata(int idFattura)
{
    const QSqlDatabase db = Sessione();
    Segnala(idFattura, KATAggiornaPromemoriaFattura(db, idFattura));
    if (m_generazione && KATFatturaGenerata(db, *m_generazione, idFattura)) {
        const int idPromemoria = m_generazione->IdPromemoria;
        m_generazione.reset();
        KATSegnaFatto(db, idPromemoria, KATNumeroFattura(db, idFattura));
    }
    if (m_elenco)
        m_elenco->Aggiorna();
}

// What is wrong with a recurrence's settings is told once per invoice in a session.
void TKATMain::Segnala(int idFattura, const TKATScadenze &scadenze)
{
    QString testo;
    if (scadenze.UnitaSconosciuta)
        testo = QStringLiteral("L'unità di tempo della fattura ciclica non è tra quelle previste (Giorno, Settimana, "
                               "Mese, Anno):\n\rnon viene creato alcun promemoria.");
    else if (scadenze.RegolaSconosciuta)
        testo = QStringLiteral("La data delle nuove fatture indicata nella fattura ciclica non è tra quelle "
                               "previste:\n\ri promemoria vengono datati con il giorno esatto.");
    else if (scadenze.Troncate)
        testo = QStringLiteral("La fattura ciclica prevede più di %1 scadenze:\n\rvengono creati i promemoria delle "
                               "prime %1.")
                    .arg(KATMaxScadenze);
    if (testo.isEmpty() || m_segnalate.contains(idFattura))
        return;
    m_segnalate.insert(idFattura);
    Q3ShowWarning(testo);
}

bool TKATMain::VerificaDiritto(const char *diritto) const
{
    if (Q3UtenteHaDiritto(Sessione(), GetQ3CurrentUserName(), QString::fromUtf8(diritto)))
        return true;
    Q3ShowWarning(QString::fromUtf8(Q3MsgDirittiInsufficienti));
    return false;
}

void TKATMain::ApriPromemoria()
{
    if (!VerificaDiritto(KATDirittoVisualizzazione))
        return;
    if (!m_elenco)
        m_elenco = new TKATElencoPromemoria(*this);
    else
        m_elenco->Aggiorna();
    ShowQ3ChildForm(m_elenco);
}

void TKATMain::GeneraFattura(int idPromemoria)
{
    if (!VerificaDiritto(KATDirittoModifica))
        return;
    if (!Q3ModuloCaricato(ModuloDocumenti)) {
        Q3ShowWarning(QStringLiteral("Il modulo Documenti non è caricato: impossibile generare la fattura."));
        return;
    }
    const TKATGenerazione generazione = KATIniziaGenerazione(Sessione(), idPromemoria);
    m_generazione = generazione;
    Q3EseguiAzioneModulo(ModuloDocumenti, RichiestaFatturaCiclica, {generazione.IdFattura});
}

QList<TQ3AvvisoAccesso> TKATMain::AvvisiAccesso()
{
    const QSqlDatabase db = Sessione();
    if (!Q3UtenteHaDiritto(db, GetQ3CurrentUserName(), QString::fromUtf8(KATDirittoVisualizzazione)))
        return {};
    const int scaduti = KATContaScaduti(db, QDate::currentDate());
    if (scaduti == 0)
        return {};
    const QString conteggio = scaduti == 1 ? QStringLiteral("C'è un promemoria scaduto da fare.")
                                           : QStringLiteral("Ci sono %1 promemoria scaduti da fare.").arg(scaduti);
    return {{QStringLiteral("Promemoria"), conteggio + QStringLiteral("\n\rAprire l'elenco dei promemoria?"),
             [this] { Q3Guarded([this] { ApriPromemoria(); }); }}};
}

TKATMain *KATMain()
{
    const int index = GetPackageIndex(QStringLiteral("Attivita") + QString::fromLatin1(Q3ModuleFileExtension));
    return index < 0 ? nullptr : dynamic_cast<TKATMain *>(PackageList().at(index).MainObject);
}
