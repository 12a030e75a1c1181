#pragma once

// Hostile texts for the windows' inputs: quotes, statements, comments,
// wildcards, control characters, scripts other than Latin, very long texts.
// They are typed (or pasted) as the user would, and the tables are compared
// before and after.
#include "KRVMastersTestKit.h"
#include "Q3Sql.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QPlainTextEdit>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace KRVTest {

// The texts the combinations start from.
inline QStringList TestiOstiliBase()
{
    const QChar nul(0);
    return {QStringLiteral("'"),
            QStringLiteral("''"),
            QStringLiteral("'''"),
            QStringLiteral("' OR '1'='1"),
            QStringLiteral("' OR 1=1 --"),
            QStringLiteral("' OR ''='"),
            QStringLiteral("--"),
            QStringLiteral(";"),
            QStringLiteral("x'; DELETE FROM CLIENTI; --"),
            QStringLiteral("x'; DROP TABLE ANA_MAGA; --"),
            QStringLiteral("'); UPDATE UM SET UM = 'X'; --"),
            QStringLiteral("' UNION SELECT RDB$RELATION_NAME FROM RDB$RELATIONS --"),
            QStringLiteral("/* */"),
            QStringLiteral("*/ OR 1=1 /*"),
            QStringLiteral("' || (SELECT FIRST 1 UM FROM UM) || '"),
            QStringLiteral("\\"),
            QStringLiteral("\\'"),
            QStringLiteral("\\\\'; --"),
            QStringLiteral("%"),
            QStringLiteral("_"),
            QStringLiteral("%_%"),
            QStringLiteral("100%_sconto"),
            QStringLiteral("{"),
            QStringLiteral("}"),
            QStringLiteral("{fn UCASE('a')}"),
            QStringLiteral("\""),
            QStringLiteral("\"; --"),
            QStringLiteral(":IDUM"),
            QStringLiteral("?"),
            QStringLiteral("a\tb"),
            QStringLiteral("riga 1\r\nriga 2"),
            QStringLiteral("\n"),
            QStringLiteral("\x01"),
            QStringLiteral("\x1b[31m"),
            QStringLiteral("a") + nul + QStringLiteral("b"),
            QStringLiteral("\u202Eabc"),
            QStringLiteral("\u200Fxyz"),
            QStringLiteral("😀"),
            QStringLiteral("👍🏽 ok"),
            QStringLiteral("漢字テスト"),
            QStringLiteral("Ωμέγα ßtraße"),
            QStringLiteral("e\u0301 à"),
            QStringLiteral("Привет"),
            QStringLiteral("   "),
            QString(10000, QLatin1Char('A')),
            QStringLiteral("€'").repeated(5000),
            QStringLiteral("x") + QChar(0xD800) + QStringLiteral("y")};
}

// Every base text alone and between a few prefixes and suffixes, each once.
inline QStringList TestiOstili()
{
    static const QStringList testi = [] {
        const QList<QPair<QString, QString>> contorni{{QString(), QString()},
                                                      {QStringLiteral("Rossi "), QString()},
                                                      {QString(), QStringLiteral(" srl")},
                                                      {QStringLiteral(" "), QStringLiteral(" ")},
                                                      {QStringLiteral("'"), QStringLiteral("'")},
                                                      {QStringLiteral("x"), QStringLiteral("--")}};
        QStringList tutti;
        QSet<QString> visti;
        for (const auto &[prima, dopo] : contorni) {
            for (const QString &base : TestiOstiliBase()) {
                const QString testo = prima + base + dopo;
                if (!visti.contains(testo)) {
                    visti.insert(testo);
                    tutti << testo;
                }
            }
        }
        return tutti;
    }();
    return testi;
}

// Capitals one character at a time, as the database's UPPER makes them.
inline QString Maiuscole(const QString &testo)
{
    QString risultato;
    for (int i = 0; i < testo.size(); ++i) {
        if (testo.at(i).isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate()) {
            const char32_t maiuscola = QChar::toUpper(QChar::surrogateToUcs4(testo.at(i), testo.at(i + 1)));
            risultato += QString::fromUcs4(&maiuscola, 1);
            ++i;
        } else {
            risultato += testo.at(i).toUpper();
        }
    }
    return risultato;
}

// These suites save and search thousands of times, each a commit that waits
// for the disk: their databases live in memory when the machine has a
// memory-backed temporary folder.
inline void UsaDatabaseInMemoria()
{
    const QFileInfo memoria(QStringLiteral("/dev/shm"));
    if (memoria.isDir() && memoria.isWritable())
        qputenv("TMPDIR", QByteArrayLiteral("/dev/shm"));
}

// A character the database cannot be handed: NUL, or half of a surrogate pair.
inline bool NonAmmesso(const QString &testo)
{
    for (int i = 0; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        if (c.isNull())
            return true;
        if (c.isHighSurrogate() && i + 1 < testo.size() && testo.at(i + 1).isLowSurrogate()) {
            ++i;
            continue;
        }
        if (c.isSurrogate())
            return true;
    }
    return false;
}

// The first characters of a text that fit a column of that many characters,
// a pair of surrogates counting as one.
inline QString Taglia(const QString &testo, int caratteri)
{
    int i = 0;
    for (int n = 0; n < caratteri && i < testo.size(); ++n)
        i += (testo.at(i).isHighSurrogate() && i + 1 < testo.size()) ? 2 : 1;
    return testo.left(i);
}

inline void Incolla(QWidget *field, const QString &testo)
{
    QGuiApplication::clipboard()->setText(testo);
    QTest::keySequence(field, QKeySequence::Paste);
}

// Whether the user pastes the text rather than typing it: it is long, or
// holds characters no key types.
inline bool DaIncollare(const QString &testo)
{
    bool incolla = testo.size() > 120;
    for (const QChar c : testo)
        incolla = incolla || c.category() == QChar::Other_Control || c.category() == QChar::Other_Format
                  || (c.isSurrogate() && NonAmmesso(testo));
    return incolla;
}

// Replaces the input's text with the hostile one: typed character by
// character (a surrogate pair in one key event, as an input method sends
// it), or pasted when it is long or holds control characters, which no key
// types.
inline void ScriviOstile(QWidget *field, const QString &testo)
{
    if (auto memo = qobject_cast<QPlainTextEdit *>(field))
        memo->selectAll();
    else if (auto edit = qobject_cast<QLineEdit *>(field))
        edit->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    if (DaIncollare(testo)) {
        Incolla(field, testo);
        return;
    }
    for (int i = 0; i < testo.size(); ++i) {
        const QChar c = testo.at(i);
        if (c.isHighSurrogate()) {
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, testo.mid(i, 2), Qt::NoModifier);
            ++i;
        } else if (c.unicode() < 0x7F) {
            QTest::keyClick(field, c.toLatin1());
        } else {
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(c), Qt::NoModifier);
        }
    }
}

// What a memo holds of a typed text: its line breaks become line feeds.
inline QString TestoMemo(QString testo)
{
    testo.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    testo.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return testo;
}

// Every row of every table of the database's own (not the system's), in key
// order: what must not change.
inline QHash<QString, QStringList> Fotografia(const QSqlDatabase &db, const QStringList &escluse = {})
{
    QHash<QString, QStringList> foto;
    QSqlQuery tabelle =
        OpenQuery(db, QStringLiteral("SELECT TRIM(RDB$RELATION_NAME) FROM RDB$RELATIONS "
                                     "WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 AND RDB$VIEW_BLR IS NULL"));
    QStringList nomi;
    while (tabelle.next())
        nomi << tabelle.value(0).toString();
    for (const QString &nome : std::as_const(nomi)) {
        if (escluse.contains(nome))
            continue;
        QSqlQuery righe = OpenQuery(db, QStringLiteral("SELECT * FROM ") + nome + QStringLiteral(" ORDER BY 1"));
        QStringList testi;
        const int colonne = righe.record().count();
        while (righe.next()) {
            QStringList valori;
            for (int i = 0; i < colonne; ++i)
                valori << (righe.isNull(i) ? QStringLiteral("<null>") : righe.value(i).toString());
            testi << valori.join(QChar(0x1F));
        }
        foto.insert(nome, testi);
    }
    return foto;
}

// The length in characters of each text column of a table.
inline QHash<QString, int> LunghezzeColonne(const QSqlDatabase &db, const QString &tabella)
{
    QHash<QString, int> lunghezze;
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT TRIM(RF.RDB$FIELD_NAME), F.RDB$CHARACTER_LENGTH FROM RDB$RELATION_FIELDS RF "
                                 "JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = RF.RDB$FIELD_SOURCE "
                                 "WHERE RF.RDB$RELATION_NAME = ? AND F.RDB$FIELD_TYPE IN (14, 37)"));
    query.addBindValue(tabella);
    if (!query.exec())
        qFatal("column lengths of %s", qPrintable(tabella));
    while (query.next())
        lunghezze.insert(query.value(0).toString(), query.value(1).toInt());
    return lunghezze;
}

// Inserts a row with bound values; answers nothing (the trigger gives the key).
inline void InserisciRiga(const QSqlDatabase &db, const QString &tabella, const QStringList &colonne,
                          const QVariantList &valori)
{
    QStringList segnaposti;
    for (int i = 0; i < colonne.size(); ++i)
        segnaposti << QStringLiteral("?");
    QSqlQuery query(db);
    query.prepare(QStringLiteral("INSERT INTO ") + tabella + QStringLiteral(" (") + colonne.join(QStringLiteral(", "))
                  + QStringLiteral(") VALUES (") + segnaposti.join(QStringLiteral(", ")) + QLatin1Char(')'));
    for (const QVariant &valore : valori)
        query.addBindValue(valore);
    if (!query.exec())
        qFatal("insert into %s: %s", qPrintable(tabella), qPrintable(SqlErrorText(query.lastError())));
}

// The boxes titled "Errore" among those shown, as text for a failure message.
inline QString BoxErrore(const TQ3RecordingResponder &boxes)
{
    for (const TQ3Message &box : boxes.Messages()) {
        if (box.Title == QLatin1String("Errore"))
            return box.Text;
    }
    return {};
}

inline QString Visibile(const QString &testo);

// What "Elimina" may show with that code typed: one box, the refusal of its
// characters, or the delete rule's answer (the question, answered No, or the
// related-data warning). Answers what was wrong, or an empty text.
inline QString EsitoEliminazione(const TQ3RecordingResponder &boxes, const QString &codice)
{
    const QString dove = Visibile(codice) + QStringLiteral(": ");
    if (boxes.Messages().size() != 1)
        return dove + QString::number(boxes.Messages().size()) + QStringLiteral(" boxes, the first: ")
               + boxes.Messages().value(0).Text;
    const TQ3Message &box = boxes.Messages().first();
    const bool rifiuto =
        box.Title == QLatin1String("Attenzione") && box.Text.contains(QStringLiteral("caratteri non ammessi"));
    const bool regola = box.Title == QLatin1String("Conferma") || box.Text.contains(QStringLiteral("dati correlati"));
    return (NonAmmesso(codice) ? rifiuto : regola) ? QString() : dove + box.Title + QStringLiteral(" / ") + box.Text;
}

inline QString Visibile(const QString &testo)
{
    QString corto = testo.left(60);
    for (QChar &c : corto) {
        if (c.unicode() < 0x20 || c.isSurrogate() || c.category() == QChar::Other_Format)
            c = QLatin1Char('.');
    }
    return QLatin1Char('[') + corto
           + (testo.size() > 60
                  ? QStringLiteral("...] (") + QString::number(testo.size()) + QStringLiteral(" caratteri)")
                  : QStringLiteral("]"));
}

} // namespace KRVTest
