#pragma once

// Saved documents for the electronic invoice's suites: the firm's data, a
// customer with its electronic invoice data, a document that copies the
// customer as the editors do, and its lines of every kind, all written into a
// real database.
#include "Q3Azienda.h"
#include "Q3Sql.h"
#include "Q3TestDatabase.h"
#include "Q3Utils.h"

#include <QDate>
#include <QString>

namespace KRVTest {

// A firm with everything the file needs.
inline TQ3Azienda AziendaFatturaPA()
{
    TQ3Azienda a;
    a.RagioneSociale = QStringLiteral("Ferramenta Rossi & Figli S.r.l.");
    a.Indirizzo = QStringLiteral("Via Roma 1");
    a.Cap = QStringLiteral("20100");
    a.Citta = QStringLiteral("Milano");
    a.Provincia = QStringLiteral("MI");
    a.Nazione = QStringLiteral("Italia");
    a.PartitaIva = QStringLiteral("01234567897");
    a.CodiceFiscale = QStringLiteral("01234567897");
    a.Banca = QStringLiteral("Banca Popolare");
    a.Iban = QStringLiteral("IT60X0542811101000000123456");
    return a;
}

// The electronic invoice data of a customer.
struct TClienteFatturaPA
{
    QString Codice = QStringLiteral("C001");
    QString RagioneSociale = QStringLiteral("Bianchi S.p.A.");
    QString Nazione = QStringLiteral("Italia");
    QString Cap = QStringLiteral("10121");
    QString Provincia = QStringLiteral("TO");
    QString CodiceFiscale;
    QString PartitaIva = QStringLiteral("07654321012");
    QString CodiceDestinatario = QStringLiteral("ABC1234");
    QString Pec;
    QString TipoSoggetto = QStringLiteral("A");
    QString Nome;
    QString Cognome;
};

inline void InsertClienteFatturaPA(const TQ3TestDatabase &db, const TClienteFatturaPA &c)
{
    db.Exec(
        QStringLiteral("INSERT INTO CLIENTI (CODICE, RAGIONESOCIALE, INDIRIZZO, CITTA, CAP, PROVINCIA, NAZIONE, "
                       "CODICEFISCALE, PARTITAIVA, IDTIPO_PAGAMENTO, CODICE_DESTINATARIO, PEC, TIPO_SOGGETTO, NOME, "
                       "COGNOME) VALUES (%1, %2, 'Corso Italia 5', 'Torino', %3, %4, %5, %6, %7, 2, %8, %9, %10, "
                       "%11, %12)")
            .arg(QuotedStr(c.Codice), QuotedStr(c.RagioneSociale), QuotedStr(c.Cap), QuotedStr(c.Provincia),
                 QuotedStr(c.Nazione), QuotedStr(c.CodiceFiscale), QuotedStr(c.PartitaIva),
                 QuotedStr(c.CodiceDestinatario), QuotedStr(c.Pec))
            .arg(QuotedStr(c.TipoSoggetto), QuotedStr(c.Nome), QuotedStr(c.Cognome)));
}

// A saved invoice (FATT_VEND) or credit note (NOTE_ACCREDITO) of today, its
// customer's data copied from CLIENTI; answers its key.
inline int InsertDocumentoFatturaPA(const TQ3TestDatabase &db, const QString &tabella, int numero,
                                    const QString &cliente, bool esente = false)
{
    const bool fattura = tabella == QLatin1String("FATT_VEND");
    const QDate oggi = QDate::currentDate();
    db.Exec(QStringLiteral("INSERT INTO %1 (NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, "
                           "CLI_CITTA, CLI_CAP, CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, "
                           "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, SCADENZA_PAGAMENTO, TOTALE_IMPONIBILE, "
                           "TOTALE_IMPOSTA, TOTALE_DOCUMENTO%2) SELECT %3, %4, %5, CODICE, RAGIONESOCIALE, INDIRIZZO, "
                           "CITTA, CAP, PROVINCIA, NAZIONE, CODICEFISCALE, PARTITAIVA, 2, 'Bonifico', 'False', %6, 0, "
                           "0, 0%7 FROM CLIENTI WHERE CODICE = %8")
                .arg(tabella, fattura ? QStringLiteral(", FC_ABILITATO, IVA_ESENTE") : QString(),
                     QString::number(numero), QuotedStr(oggi.toString(Qt::ISODate)), QString::number(oggi.year()),
                     QuotedStr(oggi.addDays(30).toString(Qt::ISODate)),
                     fattura ? QStringLiteral(", 'False', ")
                                   + QuotedStr(esente ? QStringLiteral("True") : QStringLiteral("False"))
                             : QString(),
                     QuotedStr(cliente)));
    return GetLastGeneratorValue(fattura ? QStringLiteral("GN_IDFATT_VEND") : QStringLiteral("GN_IDNOTA_ACCREDITO"),
                                 db.Db());
}

// A line as the editors save it; the rate by its code ("" for none).
struct TRigaFatturaPA
{
    QString Tipo;
    QString Descrizione;
    double Quantita = 1;
    double Prezzo = 0;
    double Sconto = 0;
    QString CodiceIva;
};

inline void InsertRigaFatturaPA(const TQ3TestDatabase &db, const QString &tabella, int id, const TRigaFatturaPA &r)
{
    const bool fattura = tabella == QLatin1String("FATT_VEND");
    const QString righe = tabella + QStringLiteral("_DETT");
    const QString chiave = fattura ? QStringLiteral("IDFATT_VEND") : QStringLiteral("IDNOTA_ACCREDITO");
    if (r.Tipo == QLatin1String("Testo")) {
        db.Exec(QStringLiteral("INSERT INTO %1 (%2, TIPO_RIGA, DESCRIZIONE) VALUES (%3, 'Testo', %4)")
                    .arg(righe, chiave, QString::number(id), QuotedStr(r.Descrizione)));
        return;
    }
    const double importo = r.Quantita * (r.Prezzo - r.Sconto * r.Prezzo / 100);
    const QString iva = r.CodiceIva.isEmpty()
                            ? QStringLiteral("NULL, NULL, NULL")
                            : QStringLiteral("(SELECT IDALIQUOTA_IVA FROM ALIQUOTE_IVA WHERE CODICE = %1), %1, "
                                             "(SELECT ALIQUOTA FROM ALIQUOTE_IVA WHERE CODICE = %1)")
                                  .arg(QuotedStr(r.CodiceIva));
    db.Exec(QStringLiteral("INSERT INTO %1 (%2, TIPO_RIGA, CODICE, DESCRIZIONE, QUANTITA, UM, PREZZO, %3IMPORTO, "
                           "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_ALIQUOTA) VALUES (%4, %5, %6, %7, %8, %9, %10, %11%12, "
                           "%13)")
                .arg(righe, chiave, fattura ? QStringLiteral("SCONTO, ") : QString(), QString::number(id),
                     QuotedStr(r.Tipo),
                     r.Tipo == QLatin1String("Non imponibile") ? QStringLiteral("NULL") : QStringLiteral("'COD-1'"),
                     QuotedStr(r.Descrizione), QString::number(r.Quantita, 'f', 3))
                .arg(r.Tipo == QLatin1String("Articolo") ? QStringLiteral("'PZ'") : QStringLiteral("NULL"),
                     QString::number(r.Prezzo, 'f', 6),
                     fattura ? QString::number(r.Sconto, 'f', 2) + QStringLiteral(", ") : QString(),
                     QString::number(importo, 'f', 2), iva));
}

} // namespace KRVTest
