#include "uKRVImages.h"

#include <QApplication>
#include <QStyle>

namespace {

struct TKRVImageSource
{
    const char *ThemeName;           // the freedesktop icon name
    QStyle::StandardPixmap Fallback; // when no icon theme has it
};

TKRVImageSource Source(int index)
{
    switch (index) {
    case KRVImgNuovo:
        return {"document-new", QStyle::SP_FileIcon};
    case KRVImgElimina:
        return {"edit-delete", QStyle::SP_TrashIcon};
    case KRVImgSalva:
        return {"document-save", QStyle::SP_DialogSaveButton};
    case KRVImgChiudi:
        return {"system-log-out", QStyle::SP_DialogCloseButton};
    case KRVImgCerca:
        return {"edit-find", QStyle::SP_FileDialogContentsView};
    case KRVImgRipristina:
        return {"edit-clear", QStyle::SP_BrowserReload};
    case KRVImgModifica:
        return {"document-properties", QStyle::SP_FileDialogDetailedView};
    case KRVImgStampa:
        return {"document-print", QStyle::SP_DesktopIcon};
    case KRVImgOK:
        return {"dialog-ok", QStyle::SP_DialogApplyButton};
    case KRVImgAnnulla:
        return {"process-stop", QStyle::SP_DialogCancelButton};
    case KRVImgFatture:
        return {"x-office-document", QStyle::SP_FileDialogListView};
    case KRVImgClienti:
        return {"system-users", QStyle::SP_DirHomeIcon};
    case KRVImgArticoli:
        return {"package-x-generic", QStyle::SP_DriveHDIcon};
    case KRVImgServizi:
        return {"preferences-system", QStyle::SP_ComputerIcon};
    case KRVImgTabelle:
        return {"x-office-spreadsheet", QStyle::SP_FileDialogInfoView};
    case KRVImgStatistiche:
        return {"x-office-presentation", QStyle::SP_FileDialogDetailedView};
    case KRVImgPaginaPrima:
        return {"go-first", QStyle::SP_MediaSkipBackward};
    case KRVImgPaginaPrecedente:
        return {"go-previous", QStyle::SP_MediaSeekBackward};
    case KRVImgPaginaSuccessiva:
        return {"go-next", QStyle::SP_MediaSeekForward};
    case KRVImgPaginaUltima:
        return {"go-last", QStyle::SP_MediaSkipForward};
    case KRVImgSelezionaTutti:
        return {"edit-select-all", QStyle::SP_DialogYesButton};
    case KRVImgDeselezionaTutti:
        return {"list-remove", QStyle::SP_DialogNoButton};
    case KRVImgFolderClosed:
        return {"folder", QStyle::SP_DirClosedIcon};
    case KRVImgFolderOpen:
        return {"folder-open", QStyle::SP_DirOpenIcon};
    default:
        break;
    }
    return {"text-x-generic", QStyle::SP_FileIcon};
}

} // namespace

QIcon KRVImage(int index)
{
    const TKRVImageSource source = Source(index);
    return QIcon::fromTheme(QString::fromLatin1(source.ThemeName),
                            QApplication::style()->standardIcon(source.Fallback));
}
