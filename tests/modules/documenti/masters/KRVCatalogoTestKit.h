#pragma once

// Rows of articles, services and their categories for the tests of their
// windows, and the modal showing of a selection dialog.
#include "../data/KRVServiceRows.h"
#include "uKRVCatalogo.h"

#include <QDialog>
#include <QTimer>

#include <functional>

namespace KRVTest {

inline bool IsArticoli(const TKRVCatalogo &catalogo)
{
    return catalogo.Table == QLatin1String("ANA_MAGA");
}

// A category under the parent (0: top level); answers its key.
inline int InsertCategoria(const TQ3TestDatabase &db, const TKRVCatalogo &catalogo, const QString &name, int parent = 0)
{
    return KRVInsertRow(db,
                        QStringLiteral("INSERT INTO ") + catalogo.CategoryTable
                            + QStringLiteral(" (CATEGORIA, IDPADRE) VALUES (") + QuotedStr(name) + QStringLiteral(", ")
                            + (parent > 0 ? QString::number(parent) : QStringLiteral("NULL")) + QStringLiteral(")"),
                        QStringLiteral("GN_") + catalogo.CategoryKey);
}

// The insert of one article or service; the VAT rate 1 is "20" at 20%, the unit 1 "PEZZI".
inline QString InsertVoceSQL(const TKRVCatalogo &catalogo, const QString &codice, const QString &descrizione,
                             int categoria, const QString &prezzo)
{
    const bool articoli = IsArticoli(catalogo);
    return QStringLiteral("INSERT INTO ") + catalogo.Table + QStringLiteral(" (CODICE, DESCRIZIONE, ")
           + catalogo.CategoryKey + QStringLiteral(", PREZZO, COSTO, IDALIQUOTA_IVA, IDUM")
           + (articoli ? QStringLiteral(", SOTTOSCORTA, RIORDINO") : QString()) + QStringLiteral(") VALUES (") + codice
           + QStringLiteral(", ") + QuotedStr(descrizione) + QStringLiteral(", ") + QString::number(categoria)
           + QStringLiteral(", ") + prezzo + QStringLiteral(", 1, 1, 1")
           + (articoli ? QStringLiteral(", 5, 10") : QString()) + QStringLiteral(")");
}

inline int InsertVoce(const TQ3TestDatabase &db, const TKRVCatalogo &catalogo, const QString &codice,
                      const QString &descrizione, int categoria = 1, const QString &prezzo = QStringLiteral("12.5"))
{
    return KRVInsertRow(db, InsertVoceSQL(catalogo, QuotedStr(codice), descrizione, categoria, prezzo),
                        catalogo.Generator);
}

// count rows coded prefix + a 4-digit number from 0001, in one statement.
inline void InsertVoci(const TQ3TestDatabase &db, const TKRVCatalogo &catalogo, const QString &prefix, int count,
                       int categoria = 1)
{
    db.Exec(QStringLiteral("EXECUTE BLOCK AS DECLARE I INTEGER = 1; BEGIN WHILE (I <= ") + QString::number(count)
            + QStringLiteral(") DO BEGIN ")
            + InsertVoceSQL(catalogo, QuotedStr(prefix) + QStringLiteral(" || LPAD(:I, 4, '0')"),
                            QStringLiteral("Voce"), categoria, QStringLiteral("1"))
            + QStringLiteral("; I = I + 1; END END"));
}

// Shows the dialog modally, as its callers do, and acts on it while it is
// open; a dialog the actions left open is cancelled so that the test goes on.
inline void WhileModal(QDialog *dialog, const std::function<void()> &whileOpen)
{
    QTimer::singleShot(0, dialog, [dialog, whileOpen] {
        whileOpen();
        if (dialog->isVisible())
            dialog->reject();
    });
}

} // namespace KRVTest
