#include "uKRVNoteDocumentiElenco.h"

TKRVElencoInfo KRVElencoNoteDocumenti(const QString &caption, const QList<TKRVColonna> &columns)
{
    return {.Caption = caption,
            .QueryHead = QStringLiteral("SELECT * FROM NOTE_DOCUMENTI "),
            .QueryTail = QStringLiteral(" ORDER BY UPPER(TITOLO)"),
            .KeyField = QStringLiteral("IDNOTA_DOCUMENTI"),
            .Columns = columns,
            .Filters = {{QStringLiteral("txtTitolo"), QStringLiteral("    Titolo"), QStringLiteral("TITOLO CONTAINING ")}}};
}
