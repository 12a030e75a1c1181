#include "uKRVNoteDocumentiElenco.h"

#include "KRVEntita.h"
#include "KRVQueryElenchi.h"

TKRVElencoInfo KRVElencoNoteDocumenti(const QString &caption, const QList<TKRVColonna> &columns)
{
    return {.Caption = caption,
            .QueryHead = KRVQueryNoteDocumentiTesta,
            .QueryTail = KRVQueryNoteDocumentiCoda,
            .KeyField = KRVEntitaNoteDocumenti().Chiave,
            .Columns = columns,
            .Filters = {
                {QStringLiteral("txtTitolo"), QStringLiteral("    Titolo"), QStringLiteral("TITOLO CONTAINING ")}}};
}
