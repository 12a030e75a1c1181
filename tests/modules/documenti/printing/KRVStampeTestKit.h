#pragma once

// Invoices, credit notes and firm data written with SQL for the print tests,
// and the modal windows of a print answered as a user would.
#include "../masters/KRVMastersTestKit.h"
#include "KRVTestModule.h"

#include "Q3PdfText.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <cmath>
#include <functional>

namespace KRVStampeTest {

struct TRiga
{
    QString Codice;
    QString Descrizione;
    double Prezzo = 0;
    double Quantita = 0;
    double Sconto = 0;
    QString IvaCodice = QStringLiteral("20");
    double Aliquota = 20;
    QString Um = QStringLiteral("PEZZI");
    QString Tipo = QStringLiteral("Articolo");
    QString IvaDescrizione = {}; // empty: by the code, as the VAT rates of the fixture
    // The amount as the editor stores it: rounded to the cent.
    double Importo() const { return std::round(Quantita * (Prezzo - Sconto * Prezzo / 100) * 100) / 100; }
    bool Testo() const { return Tipo == QLatin1String("Testo"); }
    bool NonImponibile() const { return Tipo == QLatin1String("Non imponibile"); }
};

inline QString Sql(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

// A number as SQL takes it, with the six decimals a unit price may have.
inline QString Number(double value)
{
    return QString::number(value, 'f', 6);
}

inline void SetAzienda(const TQ3TestDatabase &db)
{
    db.Exec(QStringLiteral(
        "UPDATE AZIENDA SET RAGIONESOCIALE='Rossi Impianti S.r.l.', INDIRIZZO='Via Garibaldi 12', CAP='40121', "
        "CITTA='Bologna', PROVINCIA='BO', NAZIONE='Italia', PARTITAIVA='01234567890', CODICEFISCALE='01234567890', "
        "TELEFONO='051 234567', FAX='051 234568', EMAIL='info@rossiimpianti.it', WEB='www.rossiimpianti.it', "
        "REA='BO-123456', CAPITALE_SOCIALE='Euro 10.000,00 i.v.', BANCA='Banca di Bologna', "
        "IBAN='IT60X0542811101000000123456'"));
}

// A sales invoice (or a credit note) with its lines; answers its key. Its
// totals are those the editor stores: the taxable amount and the unrounded
// sum of the taxes of the article and service lines, and the document's total
// with the "Non imponibile" lines too; on an exempt invoice ("True") every line
// is exempt: taxable amount and tax 0, the total of all the lines.
inline int InsertFattura(const TQ3TestDatabase &db, int numero, const QList<TRiga> &righe,
                         const QString &ivaEsente = QStringLiteral("False"),
                         const QString &table = QStringLiteral("FATT_VEND"))
{
    const bool fattura = table == QLatin1String("FATT_VEND");
    const bool esente = fattura && ivaEsente == QLatin1String("True");
    double imponibile = 0;
    double imposta = 0;
    double altro = 0;
    for (const TRiga &riga : righe) {
        if (riga.Testo())
            continue;
        if (esente || (fattura && riga.NonImponibile())) {
            altro += riga.Importo();
        } else {
            imponibile += riga.Importo();
            imposta += riga.Importo() * riga.Aliquota / 100;
        }
    }
    const QString key = fattura ? QStringLiteral("IDFATT_VEND") : QStringLiteral("IDNOTA_ACCREDITO");
    db.Exec(QStringLiteral("INSERT INTO %1 (%2, NUMERO, DATA, ANNO, CLI_CODICE, CLI_RAGIONESOCIALE, CLI_INDIRIZZO, "
                           "CLI_CITTA, CLI_CAP, CLI_PROVINCIA, CLI_NAZIONE, CLI_CODICEFISCALE, CLI_PARTITAIVA, "
                           "IDTIPO_PAGAMENTO, TIPO_PAGAMENTO, PAGATO, SCADENZA_PAGAMENTO, TOTALE_IMPONIBILE, "
                           "TOTALE_IMPOSTA, TOTALE_DOCUMENTO, NOTE%3) VALUES (0, %4, '2026-03-05', 2026, 'C0042', "
                           "'Bianchi & Figli S.n.c.', 'Corso Italia 7', 'Modena', '41121', 'MO', 'Italia', "
                           "'BNCMRA70A01F257X', '09876543210', 2, 'Bonifico 30 gg Data Fattura', 'False', "
                           "'2026-04-04', %5, %6, %7, 'Merce consegnata presso il cantiere di via Emilia.'%8)")
                .arg(table, key, fattura ? QStringLiteral(", FC_ABILITATO, IVA_ESENTE") : QString())
                .arg(numero)
                .arg(Number(imponibile), Number(imposta), Number(imponibile + imposta + altro),
                     fattura ? QStringLiteral(", 'False', ") + Sql(ivaEsente) : QString()));
    const int id = db.Scalar(QStringLiteral("SELECT MAX(%1) FROM %2").arg(key, table)).toInt();
    for (const TRiga &riga : righe) {
        const bool testo = riga.Testo();
        // Text and non-taxable lines carry no code, VAT rate or unit.
        const bool senzaIva = testo || riga.NonImponibile();
        const QString descrizioneIva = !riga.IvaDescrizione.isEmpty()          ? riga.IvaDescrizione
                                       : riga.IvaCodice == QLatin1String("20") ? QStringLiteral("Aliquota standard")
                                                                               : QStringLiteral("Aliquota esente");
        const QString iva = senzaIva ? QStringLiteral("NULL, NULL, NULL, NULL")
                                     : QStringLiteral("%1, %2, %3, %4")
                                           .arg(riga.IvaCodice == QLatin1String("20") ? 1 : 2)
                                           .arg(Sql(riga.IvaCodice), Sql(descrizioneIva), Number(riga.Aliquota));
        const QString valori =
            testo
                ? QStringLiteral("NULL, NULL, NULL")
                : QStringLiteral("%1, %2, %3").arg(Number(riga.Prezzo), Number(riga.Quantita), Number(riga.Importo()));
        db.Exec(QStringLiteral("INSERT INTO %1_DETT (%2_DETT, %2, CODICE, DESCRIZIONE, PREZZO, QUANTITA, IMPORTO, "
                               "IVA_IDALIQUOTA_IVA, IVA_CODICE, IVA_DESCRIZIONE, IVA_ALIQUOTA, IDUM, UM, TIPO_RIGA%3) "
                               "VALUES (0, %4, %5, %6, %7, %8, 1, %9, %10%11)")
                    .arg(table, key, fattura ? QStringLiteral(", SCONTO") : QString())
                    .arg(id)
                    .arg(senzaIva ? QStringLiteral("NULL") : Sql(riga.Codice), Sql(riga.Descrizione), valori, iva,
                         senzaIva ? QStringLiteral("NULL") : Sql(riga.Um), Sql(riga.Tipo),
                         fattura ? QStringLiteral(", ") + Number(riga.Sconto) : QString()));
    }
    return id;
}

// Runs an action that opens modal windows; each handler answers one window,
// in order. A window left without a handler is cancelled and recorded.
inline QStringList WithModals(const std::function<void()> &action, QList<std::function<void(QWidget *)>> handlers)
{
    QStringList seen;
    QWidget *last = nullptr;
    QTimer timer;
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == last)
            return;
        last = modal;
        seen << modal->windowTitle();
        if (handlers.isEmpty()) {
            if (auto dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
            seen << QStringLiteral("(annullata)");
            return;
        }
        handlers.takeFirst()(modal);
        // The same window may come back for the next run. The check belongs
        // to this run only: a dialog kept for later runs outlives `last`.
        QTimer::singleShot(0, &timer, [&last, modal = QPointer<QWidget>(modal)] {
            if (modal && !modal->isVisible() && last == modal)
                last = nullptr;
        });
    });
    timer.start();
    action();
    timer.stop();
    return seen;
}

// Keeps a copy of a PDF for looking at when Q3_TEST_OUTPUT names a folder.
// The printed lines of a PDF's text, each with its words one blank apart.
inline QStringList Lines(const QString &text)
{
    QStringList lines;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty())
            lines << line.simplified();
    }
    return lines;
}

inline void KeepPdf(const QString &fileName, const QString &name)
{
    const QString folder = qEnvironmentVariable("Q3_TEST_OUTPUT");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    QFile::remove(QDir(folder).filePath(name));
    QFile::copy(fileName, QDir(folder).filePath(name));
}

inline void ClickOk(QWidget *dialog)
{
    KRVTest::Click(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
}

// Runs a print choosing the PDF file in the output options, as a user does;
// answers the file's text, empty when other windows came up. The file is kept
// under its own name for looking at (see KeepPdf).
inline QString PdfThroughOptions(const std::function<void()> &print, const QString &file)
{
    const QStringList seen =
        WithModals(print, {[&](QWidget *setup) {
                       setup->findChild<QRadioButton *>(QStringLiteral("rbFile"))->setChecked(true);
                       setup->findChild<QLineEdit *>(QStringLiteral("txtFile"))->setText(file);
                       ClickOk(setup);
                   }});
    if (seen != QStringList({QStringLiteral("Output Options")})) {
        qWarning("windows shown: %s", qPrintable(seen.join(QStringLiteral(", "))));
        return {};
    }
    KeepPdf(file, QFileInfo(file).fileName());
    return Q3PdfText(file);
}

} // namespace KRVStampeTest
