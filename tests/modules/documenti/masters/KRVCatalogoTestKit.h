#pragma once

// Rows of articles, services and their categories for the tests of their
// windows, and the modal showing of a selection dialog.
#include "../data/KRVServiceRows.h"
#include "KRVMastersTestKit.h"
#include "Q3Messages.h"
#include "uKRVCatalogo.h"
#include "uKRVInserimentoBase.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace KRVTest {

inline bool IsArticoli(const TKRVCatalogo &catalogo)
{
    return catalogo.Entita.Tabella == QLatin1String("ANA_MAGA");
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
    return QStringLiteral("INSERT INTO ") + catalogo.Entita.Tabella + QStringLiteral(" (CODICE, DESCRIZIONE, ")
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
                        catalogo.Entita.Generatore);
}

// Makes every delete from the table fail in the database.
inline void BlockDeletes(const TQ3TestDatabase &db, const QString &table)
{
    db.Exec(QStringLiteral("CREATE EXCEPTION E_%1_BLOCCATO 'Eliminazione bloccata'").arg(table));
    db.Exec(QStringLiteral("CREATE TRIGGER TG_BD_%1_TEST FOR %1 BEFORE DELETE AS BEGIN EXCEPTION E_%1_BLOCCATO; END")
                .arg(table));
}

// An article or service editor whose delete fails in the database reports it
// and still shows a new record; the row stays.
inline void VerifyFailedDeleteBlanks(const TQ3TestDatabase &db, const TKRVCatalogo &catalogo,
                                     TKRVInserimentoBase *editor, TQ3RecordingResponder &boxes)
{
    const int id = InsertVoce(db, catalogo, QStringLiteral("BLOCCATO"), QStringLiteral("Non si toglie"));
    BlockDeletes(db, catalogo.Entita.Tabella);
    QCOMPARE(editor->ApriRecord(id), 0);
    boxes.Enqueue(TQ3MsgResult::Yes);

    Trigger(editor->findChild<QAction *>(QStringLiteral("actElimina")));

    QCOMPARE(boxes.Messages().size(), 2);
    QCOMPARE(boxes.Messages().at(1).Title, QStringLiteral("Errore"));
    QCOMPARE(boxes.Messages().at(1).Text,
             QStringLiteral(
                 "Si è verificato un errore durante l'eliminazione dei dati,\n\rl'operazione è stata annullata!"));
    QCOMPARE(boxes.Messages().at(1).Icon, TQ3MsgIcon::Error);
    QCOMPARE(db.Scalar(QStringLiteral("SELECT COUNT(*) FROM ") + catalogo.Entita.Tabella).toInt(), 1);
    QVERIFY(editor->NewRecord());
    QCOMPARE(editor->IdRecord(), -1);
    QVERIFY(editor->findChild<QLineEdit *>(QStringLiteral("txtDescrizione"))->text().isEmpty());
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
