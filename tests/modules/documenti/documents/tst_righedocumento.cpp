// The lines of a document and their totals, with no window at all.
#include "KRVRigheDocumento.h"

#include <QLocale>
#include <QSignalSpy>
#include <QtTest>

namespace {

// Rate 1 is 20 %, rate 2 is 4 %; any other key is unknown.
std::optional<double> Aliquote(int id)
{
    if (id == 1)
        return 20.0;
    if (id == 2)
        return 4.0;
    return std::nullopt;
}

TKRVVoceCatalogo Voce(const QString &tipo, double prezzo, int idIva = 1)
{
    return {tipo,
            1.5,
            QStringLiteral("A1"),
            QStringLiteral("Voce"),
            3,
            prezzo,
            idIva,
            QStringLiteral("20"),
            1,
            QStringLiteral("PEZZI")};
}

} // namespace

class TestRigheDocumento : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); }
    void invoiceLayoutHasFourteenColumns();
    void creditNoteLayoutHasTwelveColumns();
    void emptyGridTotalsAreZero();
    void articleLineCells();
    void discountShownRoundedWhileComputedExact_quirkKept();
    void amountRoundedToTheCentBeforeTax();
    void exemptInvoiceCountsEverythingExempt();
    void nonTaxableLineOutsideTaxable();
    void unknownRateCountsTaxableWithoutTax();
    void quantityMustBeAboveZero();
    void negativePriceOfServiceAccepted_articleRefused();
    void discountMustNotBeNegative();
    void textLineShowsOnlyItsDescription();
    void editableCellsByKind();
    void hiddenColumnsAreNotSelectable();
    void moveAtTheEdgesDoesNothing();
    void moveSwapsLines();
    void notANumberShowsZero();
    void creditNoteHasNoDiscountNorExempt();
    void creditNoteQuantityShowsOneDecimal();
    void acceptedEditIsReported();
    void typedPriceAndQuantityKeepTheirDecimals();
    void moreDecimalsThanKeptAreRefused();
    void creditNoteQuantityShowsTheDecimalsItHas();
};

void TestRigheDocumento::invoiceLayoutHasFourteenColumns()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    QCOMPARE(righe.columnCount(), 14);
    QStringList titoli;
    for (int c = 0; c < 14; ++c)
        titoli << righe.headerData(c, Qt::Horizontal).toString();
    QCOMPARE(titoli,
             (QStringList{
                 {}, {}, "Codice", "Descrizione", {}, "Prezzo", "Sc.", "Q.tà", "Importo", {}, "IVA", {}, "U.M.", {}}));
    QCOMPARE(KRVLayoutFattura().Visibili(), (QList<int>{2, 3, 5, 6, 7, 8, 10, 12}));
}

void TestRigheDocumento::creditNoteLayoutHasTwelveColumns()
{
    TKRVRigheDocumento righe(KRVLayoutNotaAccredito());
    QCOMPARE(righe.columnCount(), 12);
    QStringList titoli;
    for (int c = 0; c < 12; ++c)
        titoli << righe.headerData(c, Qt::Horizontal).toString();
    QCOMPARE(titoli,
             (QStringList{{}, "Codice", "Descrizione", {}, "Prezzo", "Q.tà", "Importo", {}, "IVA", {}, "U.M.", {}}));
    QCOMPARE(KRVLayoutNotaAccredito().Visibili(), (QList<int>{1, 2, 4, 5, 6, 8, 10}));
}

void TestRigheDocumento::emptyGridTotalsAreZero()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(totali.Imponibile, 0.0);
    QCOMPARE(totali.Imposta, 0.0);
    QCOMPARE(totali.Esente, 0.0);
    QCOMPARE(totali.NonImponibile, 0.0);
    QCOMPARE(totali.Totale(), 0.0);
}

void TestRigheDocumento::articleLineCells()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 12.5));
    QCOMPARE(r, 0);
    QStringList celle;
    for (int c = 0; c < 14; ++c)
        celle << righe.Cella(r, c);
    QCOMPARE(celle, (QStringList{"-1", "1,50", "A1", "Voce", "3", "12,50", "0,00", "1,00", "12,50", "1", "20", "1",
                                 "PEZZI", "Articolo"}));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("12,50\u00A0€"));
    QCOMPARE(righe.Testo(r, 6), QStringLiteral("0%"));
    QCOMPARE(righe.Testo(r, 7), QStringLiteral("1,00"));
}

// 12,5 % shows as 13 % while the amount uses 12,5.
void TestRigheDocumento::discountShownRoundedWhileComputedExact_quirkKept()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QVERIFY(righe.setData(righe.index(r, 6), QStringLiteral("12,5")));
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("3")));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("26,25"));
    QCOMPARE(righe.Testo(r, 6), QStringLiteral("13%"));
    QCOMPARE(totali.Imponibile, 26.25);
    QCOMPARE(totali.Imposta, 26.25 * 20 / 100);
}

void TestRigheDocumento::amountRoundedToTheCentBeforeTax()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaServizio, 1));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("0,333")));
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("3")));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("1,00"));
    QCOMPARE(totali.Imponibile, 1.0);
    QCOMPARE(totali.Imposta, 0.2);
}

void TestRigheDocumento::exemptInvoiceCountsEverythingExempt()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiVoce(Voce(KRVRigaArticolo, 100));
    const int n = righe.AggiungiNonImponibile();
    QVERIFY(righe.setData(righe.index(n, 5), QStringLiteral("30")));
    righe.AggiungiTesto();
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, true, Aliquote);
    QCOMPARE(totali.Imponibile, 0.0);
    QCOMPARE(totali.Imposta, 0.0);
    QCOMPARE(totali.NonImponibile, 0.0);
    QCOMPARE(totali.Esente, 130.0);
    QCOMPARE(totali.Totale(), 130.0);
}

void TestRigheDocumento::nonTaxableLineOutsideTaxable()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiVoce(Voce(KRVRigaArticolo, 100));
    const int n = righe.AggiungiNonImponibile();
    QVERIFY(righe.setData(righe.index(n, 5), QStringLiteral("15")));
    QVERIFY(righe.setData(righe.index(n, 7), QStringLiteral("2")));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(totali.Imponibile, 100.0);
    QCOMPARE(totali.Imposta, 20.0);
    QCOMPARE(totali.NonImponibile, 30.0);
    QCOMPARE(totali.Totale(), 150.0);
}

void TestRigheDocumento::unknownRateCountsTaxableWithoutTax()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiVoce(Voce(KRVRigaArticolo, 100, 99));
    righe.AggiungiVoce(Voce(KRVRigaServizio, 50, 2));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(totali.Imponibile, 150.0);
    QCOMPARE(totali.Imposta, 2.0);
}

void TestRigheDocumento::quantityMustBeAboveZero()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QVERIFY(!righe.setData(righe.index(r, 7), QStringLiteral("0")));
    QVERIFY(!righe.setData(righe.index(r, 7), QStringLiteral("-2")));
    QVERIFY(!righe.setData(righe.index(r, 7), QStringLiteral("tre")));
    QCOMPARE(righe.Cella(r, 7), QStringLiteral("1,00"));
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("0,5")));
    QCOMPARE(righe.Cella(r, 7), QStringLiteral("0,5"));
}

// Services and non-taxable lines carry deductions; articles cannot.
void TestRigheDocumento::negativePriceOfServiceAccepted_articleRefused()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int a = righe.AggiungiVoce(Voce(KRVRigaArticolo, 100));
    const int s = righe.AggiungiVoce(Voce(KRVRigaServizio, 80));
    const int n = righe.AggiungiNonImponibile();
    QVERIFY(!righe.setData(righe.index(a, 5), QStringLiteral("-50")));
    QCOMPARE(righe.Cella(a, 5), QStringLiteral("100,00"));
    const double prima = AggiornaTotaliDocumento(righe, false, Aliquote).Totale();
    QVERIFY(righe.setData(righe.index(s, 5), QStringLiteral("-50")));
    QVERIFY(righe.setData(righe.index(n, 5), QStringLiteral("-10")));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(totali.Imponibile, 50.0);
    QCOMPARE(totali.NonImponibile, -10.0);
    QVERIFY(totali.Totale() < prima);
}

void TestRigheDocumento::discountMustNotBeNegative()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QVERIFY(!righe.setData(righe.index(r, 6), QStringLiteral("-1")));
    QVERIFY(righe.setData(righe.index(r, 6), QStringLiteral("150")));
    AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("-5,00"));
}

void TestRigheDocumento::textLineShowsOnlyItsDescription()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiTesto();
    QVERIFY(righe.setData(righe.index(r, 3), QStringLiteral("Prima riga\nseconda riga")));
    for (int c : {2, 5, 6, 7, 8}) {
        righe.SetCella(r, c, QStringLiteral("7"));
        QCOMPARE(righe.Testo(r, c), QString());
    }
    QCOMPARE(righe.Testo(r, 3), QStringLiteral("Prima riga\nseconda riga"));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(totali.Totale(), 0.0);
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("7"));
}

void TestRigheDocumento::editableCellsByKind()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int a = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    const int t = righe.AggiungiTesto();
    const int n = righe.AggiungiNonImponibile();
    const auto editabili = [&](int r) {
        QList<int> colonne;
        for (int c = 0; c < 14; ++c) {
            if (righe.flags(righe.index(r, c)) & Qt::ItemIsEditable)
                colonne << c;
        }
        return colonne;
    };
    QCOMPARE(editabili(a), (QList<int>{5, 6, 7}));
    QCOMPARE(editabili(t), (QList<int>{3}));
    QCOMPARE(editabili(n), (QList<int>{3, 5, 6, 7}));
}

void TestRigheDocumento::hiddenColumnsAreNotSelectable()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    for (int c : {0, 1, 4, 9, 11, 13})
        QCOMPARE(righe.flags(righe.index(r, c)), Qt::NoItemFlags);
    for (int c : {2, 3, 5, 6, 7, 8, 10, 12})
        QVERIFY(righe.flags(righe.index(r, c)) & Qt::ItemIsSelectable);
}

void TestRigheDocumento::moveAtTheEdgesDoesNothing()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiTesto();
    QVERIFY(!righe.SpostaSu(0));
    QVERIFY(!righe.SpostaGiu(0));
    righe.AggiungiNonImponibile();
    QVERIFY(!righe.SpostaSu(0));
    QVERIFY(!righe.SpostaGiu(1));
    QCOMPARE(righe.Tipo(0), KRVRigaTesto);
    QCOMPARE(righe.Tipo(1), KRVRigaNonImponibile);
}

void TestRigheDocumento::moveSwapsLines()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    righe.AggiungiTesto();
    righe.AggiungiNonImponibile();
    righe.AggiungiVoce(Voce(KRVRigaArticolo, 1));
    QVERIFY(righe.SpostaGiu(0));
    QCOMPARE(righe.Tipo(1), KRVRigaTesto);
    QVERIFY(righe.SpostaSu(2));
    QCOMPARE(righe.Tipo(1), KRVRigaArticolo);
    QCOMPARE(righe.Tipo(2), KRVRigaTesto);
}

void TestRigheDocumento::notANumberShowsZero()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiNonImponibile();
    righe.SetCella(r, 5, QStringLiteral("abc"));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("0,00\u00A0€"));
    QCOMPARE(righe.Numero(r, 5), 0.0);
}

void TestRigheDocumento::creditNoteHasNoDiscountNorExempt()
{
    TKRVRigheDocumento righe(KRVLayoutNotaAccredito());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QCOMPARE(righe.Cella(r, 11), KRVRigaArticolo);
    // Prices are not checked on a credit note.
    QVERIFY(righe.setData(righe.index(r, 4), QStringLiteral("-10")));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("2,5")));
    const TKRVTotaliDocumento totali = AggiornaTotaliDocumento(righe, true, Aliquote);
    QCOMPARE(righe.Cella(r, 6), QStringLiteral("-25,00"));
    QCOMPARE(totali.Imponibile, -25.0);
    QCOMPARE(totali.Imposta, -5.0);
    QCOMPARE(totali.Esente, 0.0);
}

void TestRigheDocumento::creditNoteQuantityShowsOneDecimal()
{
    TKRVRigheDocumento righe(KRVLayoutNotaAccredito());
    const int r = righe.AggiungiVoce(Voce(KRVRigaServizio, 10));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("2,5")));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("2,5"));
    QVERIFY(!righe.setData(righe.index(r, 5), QStringLiteral("0")));
}

void TestRigheDocumento::acceptedEditIsReported()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QSignalSpy spy(&righe, &TKRVRigheDocumento::CellaModificata);
    QVERIFY(!righe.setData(righe.index(r, 7), QStringLiteral("0")));
    QCOMPARE(spy.count(), 0);
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("2")));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().at(0).toInt(), r);
}

QTEST_GUILESS_MAIN(TestRigheDocumento)
#include "tst_righedocumento.moc"

// A unit price of 0,333333 and a quantity of 1,125 stay as typed in their
// cells and on screen; the amount is still rounded to the cent.
void TestRigheDocumento::typedPriceAndQuantityKeepTheirDecimals()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaServizio, 1));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("0,333333")));
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("1,125")));
    AggiornaTotaliDocumento(righe, false, Aliquote);
    QCOMPARE(righe.Cella(r, 5), QStringLiteral("0,333333"));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("0,333333\u00A0€"));
    QCOMPARE(righe.Testo(r, 7), QStringLiteral("1,125"));
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("0,37"));
    // Written by the program, they keep their decimals too, and no more than two
    // when they have no more.
    righe.SetNumero(r, 5, 2.5);
    righe.SetNumero(r, 7, 0.333);
    QCOMPARE(righe.Cella(r, 5), QStringLiteral("2,50"));
    QCOMPARE(righe.Cella(r, 7), QStringLiteral("0,333"));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("2,50\u00A0€"));
    QCOMPARE(righe.Testo(r, 7), QStringLiteral("0,333"));
    righe.SetNumero(r, 8, 1.2345);
    QCOMPARE(righe.Cella(r, 8), QStringLiteral("1,23"));
}

// A seventh decimal of a price, a fourth of a quantity or a third of a
// discount would be lost at the save: the cell keeps what it held.
void TestRigheDocumento::moreDecimalsThanKeptAreRefused()
{
    TKRVRigheDocumento righe(KRVLayoutFattura());
    const int r = righe.AggiungiVoce(Voce(KRVRigaArticolo, 10));
    QVERIFY(!righe.setData(righe.index(r, 5), QStringLiteral("0,1234567")));
    QVERIFY(!righe.setData(righe.index(r, 7), QStringLiteral("1,0005")));
    QVERIFY(!righe.setData(righe.index(r, 6), QStringLiteral("12,555")));
    QCOMPARE(righe.Cella(r, 5), QStringLiteral("10,00"));
    QCOMPARE(righe.Cella(r, 7), QStringLiteral("1,00"));
    QCOMPARE(righe.Cella(r, 6), QStringLiteral("0,00"));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("0,123456")));
    QVERIFY(righe.setData(righe.index(r, 7), QStringLiteral("1,500")));
    QVERIFY(righe.setData(righe.index(r, 6), QStringLiteral("12,55")));
}

// The credit note shows one decimal of a quantity, or the ones it has up to three.
void TestRigheDocumento::creditNoteQuantityShowsTheDecimalsItHas()
{
    TKRVRigheDocumento righe(KRVLayoutNotaAccredito());
    const int r = righe.AggiungiVoce(Voce(KRVRigaServizio, 10));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("1,0"));
    QVERIFY(righe.setData(righe.index(r, 5), QStringLiteral("0,125")));
    QCOMPARE(righe.Testo(r, 5), QStringLiteral("0,125"));
    QVERIFY(righe.setData(righe.index(r, 4), QStringLiteral("0,3333")));
    QCOMPARE(righe.Testo(r, 4), QStringLiteral("0,3333\u00A0€"));
}
