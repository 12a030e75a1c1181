#include "uKRVFatturaElettronica.h"

#include "Q3Guards.h"
#include "Q3Messages.h"
#include "uKRVScegliCartella.h"

#include <QDir>

bool KRVCreaFatturaElettronica(TKRVCartellaFatturaPA &dialog, const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                               int id)
{
    QString cartella;
    if (!dialog.Execute(cartella))
        return false;
    TKRVEmissioneFatturaPA esito;
    {
        TQ3BusyCursor attesa;
        esito = KRVEmettiFatturaPA(db, tipo, id, cartella);
    }
    if (!esito.Errori.isEmpty()) {
        Q3MessageBox(QStringLiteral("Attenzione"),
                     QStringLiteral("La fattura elettronica non è stata creata.\n\rCorreggere prima:\n\r")
                         + esito.Errori.join(QStringLiteral("\n\r")),
                     TQ3MsgIcon::Warning);
        return false;
    }
    Q3MessageBox(QStringLiteral("Informazioni"),
                 QStringLiteral("La fattura elettronica è stata creata nel file:\n\r")
                     + QDir::toNativeSeparators(esito.Percorso),
                 TQ3MsgIcon::Information);
    return true;
}

QString KRVMsgDocumentoEmesso(const TKRVStatoFatturaPA &stato)
{
    return QStringLiteral("La fattura elettronica di questo documento è già stata prodotta (file %1 del %2).\n\r"
                          "Il documento non si può più modificare: le correzioni si fanno con una nota di accredito.")
        .arg(stato.NomeFile, stato.Prodotta.toString(QStringLiteral("dd/MM/yyyy")));
}
