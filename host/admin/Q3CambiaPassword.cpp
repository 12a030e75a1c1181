#include "Q3CambiaPassword.h"

#include "Q3Exception.h"
#include "Q3Ruoli.h"

TQ3CambiaPassword::TQ3CambiaPassword(const QSqlDatabase &db, const QString &userName, Modo modo, QWidget *parent)
    : TQ3ModuloCampi(QStringLiteral("Q3CambiaPassword"),
                     modo == Modo::Cambio ? QStringLiteral("Cambia password") : QStringLiteral("Imposta password"),
                     parent),
      m_db(db), m_userName(userName), m_modo(modo)
{
    if (modo == Modo::Cambio)
        AggiungiCampo(QStringLiteral("txtPasswordAttuale"), QStringLiteral("Password &attuale:"), true);
    else
        setWindowTitle(windowTitle() + QStringLiteral(" - ") + userName);
    AggiungiCampo(QStringLiteral("txtNuovaPassword"), QStringLiteral("&Nuova password:"), true);
    AggiungiCampo(QStringLiteral("txtRipetiPassword"), QStringLiteral("&Ripeti la nuova password:"), true);
    SetConferma([this] { Conferma(); });
}

void TQ3CambiaPassword::Conferma()
{
    const QString nuova = Testo(QStringLiteral("txtNuovaPassword"));
    if (nuova != Testo(QStringLiteral("txtRipetiPassword")))
        throw EQ3Rifiuto(QStringLiteral("La nuova password e la sua ripetizione non coincidono."));
    TQ3Ruoli ruoli(m_db);
    if (m_modo == Modo::Cambio)
        ruoli.CambiaPassword(m_userName, Testo(QStringLiteral("txtPasswordAttuale")), nuova);
    else
        ruoli.ImpostaPassword(m_userName, nuova);
}

void Q3ApriCambiaPassword(const QSqlDatabase &db, const QString &userName, QWidget *parent)
{
    TQ3CambiaPassword dialog(db, userName, TQ3CambiaPassword::Modo::Cambio, parent);
    dialog.exec();
}
