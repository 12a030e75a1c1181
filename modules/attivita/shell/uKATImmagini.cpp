#include "uKATImmagini.h"

#include <QApplication>
#include <QStyle>

QIcon KATImmagine(TKATImmagine immagine)
{
    struct TFonte
    {
        const char *Tema;
        QStyle::StandardPixmap Stile;
    };
    static const TFonte fonti[] = {
        {"appointment-soon", QStyle::SP_FileDialogDetailedView},
        {"view-refresh", QStyle::SP_BrowserReload},
        {"document-new", QStyle::SP_FileIcon},
        {"list-add", QStyle::SP_FileDialogNewFolder},
        {"document-properties", QStyle::SP_FileDialogInfoView},
        {"dialog-ok-apply", QStyle::SP_DialogApplyButton},
        {"edit-delete", QStyle::SP_TrashIcon},
    };
    const TFonte &fonte = fonti[int(immagine)];
    return QIcon::fromTheme(QString::fromLatin1(fonte.Tema), QApplication::style()->standardIcon(fonte.Stile));
}
