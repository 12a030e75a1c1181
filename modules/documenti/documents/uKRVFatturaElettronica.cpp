#include "uKRVFatturaElettronica.h"

#include "Q3Guards.h"
#include "Q3Messages.h"
#include "uKRVScegliCartella.h"

#include <QDir>

void KRVCreaFatturaElettronica(TKRVCartellaFatturaPA &dialog, const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                               int id)
{
    QString cartella;
    if (!dialog.Execute(cartella))
        return;
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
        return;
    }
    Q3MessageBox(QStringLiteral("Informazioni"),
                 QStringLiteral("La fattura elettronica è stata creata nel file:\n\r")
                     + QDir::toNativeSeparators(esito.Percorso),
                 TQ3MsgIcon::Information);
}
