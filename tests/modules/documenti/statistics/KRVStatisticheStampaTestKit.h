#pragma once

// The four turnover print dialogs as their print tests see them, and the
// lines each one's layout prints for the rows it reads.
#include <QDate>
#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <tuple>

namespace KRVStatisticheTest {

const QString ActArticolo = QStringLiteral("actStatisticheFatturatoPerArticolo");
const QString ActServizio = QStringLiteral("actStatisticheFatturatoPerServizio");
const QString ActMedie = QStringLiteral("actStatisticheMedieServizi1");
const QString ActClienti = QStringLiteral("actStatisticheFatturatoClientiServizi");

// The period of most prints, and the days just outside it.
const QDate Dal(2026, 2, 1);
const QDate Al(2026, 2, 28);
const QDate Prima(2026, 1, 31);
const QDate Dopo(2026, 3, 1);

// A print dialog as the print tests see it: the lines it reads and how its
// layout shows them.
struct TDialogoStampa
{
    QString Azione;
    QString Tipo;   // the line kind: "Articolo" or "Servizio"
    QString Titolo; // the printed title before the dates
    QString Dataset;
    bool PerCliente = false;
};

const TDialogoStampa Articoli{ActArticolo, QStringLiteral("Articolo"), QStringLiteral("Fatturato per articolo dal "),
                              QStringLiteral("adsFatturatoPerArticolo")};
const TDialogoStampa Servizi{ActServizio, QStringLiteral("Servizio"), QStringLiteral("Fatturato per servizio dal "),
                             QStringLiteral("adsFatturatoPerServizio")};
// The averages print the services with the article layout and title.
const TDialogoStampa Medie{ActMedie, QStringLiteral("Servizio"), QStringLiteral("Fatturato per articolo dal "),
                           QStringLiteral("adsFatturatoPerArticolo")};
const TDialogoStampa Clienti{ActClienti, QStringLiteral("Servizio"), QStringLiteral("Fatturato clienti-servizi dal "),
                             QStringLiteral("adsFatturatoClientiServizi"), true};

// The code of the sold item n of the dialog's kind: "A1" an article, "S1" a service.
inline QString Codice(const TDialogoStampa &dialogo, int n)
{
    return (dialogo.Tipo == QLatin1String("Articolo") ? QStringLiteral("A") : QStringLiteral("S")) + QString::number(n);
}

// A row the print should show: the sales invoices' customer, or the
// warehouse's one.
struct TRigaStampata
{
    int Voce = 0; // the n of Codice()
    QString Descrizione;
    int Categoria = 0;
    double Importo = 0;
    bool Magazzino = false;
};

inline QString Importo(double importo)
{
    return QLocale(QLocale::Italian, QLocale::Italy).toString(importo, 'f', 2);
}

const QString Ditta = QStringLiteral("Rossi Impianti S.r.l.");

// The customers' statement orders by code and description only: below them,
// the order of customers and categories is the server's. Sorts each run of
// customer lines, so that lines can be compared.
inline QStringList ClientiInOrdine(QStringList linee)
{
    const auto cliente = [](const QString &linea) { return linea.startsWith(QLatin1String("C00")); };
    for (auto inizio = linee.begin(); inizio != linee.end();) {
        inizio = std::find_if(inizio, linee.end(), cliente);
        const auto fine = std::find_if_not(inizio, linee.end(), cliente);
        std::sort(inizio, fine);
        inizio = fine;
    }
    return linee;
}

// The lines the dialog's layout prints for the rows: title, firm, column
// titles, the rows in code order (the customers' layout, "Per servizio",
// groups them by code with each group's total), the grand total and the footer.
inline QStringList Attese(const TDialogoStampa &dialogo, const QDate &dal, const QDate &al, QList<TRigaStampata> righe)
{
    const QString titolo = dialogo.Titolo + dal.toString(QStringLiteral("dd/MM/yyyy")) + QStringLiteral(" al ")
                           + al.toString(QStringLiteral("dd/MM/yyyy"));
    std::sort(righe.begin(), righe.end(), [](const TRigaStampata &a, const TRigaStampata &b) {
        return std::tie(a.Voce, a.Categoria) < std::tie(b.Voce, b.Categoria);
    });
    double totale = 0;
    for (const TRigaStampata &riga : righe)
        totale += riga.Importo;
    QStringList linee{titolo, dialogo.PerCliente ? Ditta + QStringLiteral(" Per servizio") : Ditta};
    if (!dialogo.PerCliente) {
        linee << QStringLiteral("Codice Descrizione Cat. Importo");
        for (const TRigaStampata &riga : righe)
            linee << QStringList{Codice(dialogo, riga.Voce), riga.Descrizione, QString::number(riga.Categoria),
                                 Importo(riga.Importo)}
                         .join(QLatin1Char(' '));
        linee << QStringLiteral("Totale (righe: %1) %2 €").arg(righe.size()).arg(Importo(totale));
    } else {
        linee << QStringLiteral("Cliente Ragione sociale Cat. Importo");
        for (qsizetype i = 0; i < righe.size();) {
            const TRigaStampata &prima = righe.at(i);
            const QString codice = Codice(dialogo, prima.Voce);
            linee << codice + QLatin1Char(' ') + prima.Descrizione;
            double gruppo = 0;
            for (; i < righe.size() && righe.at(i).Voce == prima.Voce; ++i) {
                const TRigaStampata &riga = righe.at(i);
                linee << (riga.Magazzino ? QStringLiteral("C002 Cliente del magazzino ")
                                         : QStringLiteral("C001 Cliente di prova "))
                             + QString::number(riga.Categoria) + QLatin1Char(' ') + Importo(riga.Importo);
                gruppo += riga.Importo;
            }
            linee << QStringLiteral("Totale ") + codice + QLatin1Char(' ') + Importo(gruppo);
        }
        linee << QStringLiteral("Totale generale (righe: %1) %2 €").arg(righe.size()).arg(Importo(totale));
    }
    linee << Ditta + QStringLiteral(" - ") + titolo + QStringLiteral(" Pagina 1 di 1");
    return dialogo.PerCliente ? ClientiInOrdine(linee) : linee;
}

} // namespace KRVStatisticheTest
