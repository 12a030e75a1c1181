#include "uKRVImages.h"

#include <QApplication>
#include <QStyle>

QIcon KRVImage(int index)
{
    QStyle *style = QApplication::style();
    QStyle::StandardPixmap pixmap = QStyle::SP_FileIcon;
    switch (index) {
    case KRVImgNuovo: pixmap = QStyle::SP_FileIcon; break;
    case KRVImgElimina: pixmap = QStyle::SP_TrashIcon; break;
    case KRVImgSalva: pixmap = QStyle::SP_DialogSaveButton; break;
    case KRVImgChiudi: pixmap = QStyle::SP_DialogCloseButton; break;
    case KRVImgCerca: pixmap = QStyle::SP_FileDialogContentsView; break;
    case KRVImgRipristina: pixmap = QStyle::SP_BrowserReload; break;
    case KRVImgModifica: pixmap = QStyle::SP_FileDialogDetailedView; break;
    case KRVImgStampa: pixmap = QStyle::SP_DesktopIcon; break;
    case KRVImgOK: pixmap = QStyle::SP_DialogApplyButton; break;
    case KRVImgAnnulla: pixmap = QStyle::SP_DialogCancelButton; break;
    case KRVImgFatture: pixmap = QStyle::SP_FileDialogListView; break;
    case KRVImgClienti: pixmap = QStyle::SP_DirHomeIcon; break;
    case KRVImgArticoli: pixmap = QStyle::SP_DriveHDIcon; break;
    case KRVImgServizi: pixmap = QStyle::SP_ComputerIcon; break;
    case KRVImgTabelle: pixmap = QStyle::SP_FileDialogInfoView; break;
    case KRVImgStatistiche: pixmap = QStyle::SP_FileDialogDetailedView; break;
    case KRVImgPaginaPrima: pixmap = QStyle::SP_MediaSkipBackward; break;
    case KRVImgPaginaPrecedente: pixmap = QStyle::SP_MediaSeekBackward; break;
    case KRVImgPaginaSuccessiva: pixmap = QStyle::SP_MediaSeekForward; break;
    case KRVImgPaginaUltima: pixmap = QStyle::SP_MediaSkipForward; break;
    case KRVImgFolderClosed: pixmap = QStyle::SP_DirClosedIcon; break;
    case KRVImgFolderOpen: pixmap = QStyle::SP_DirOpenIcon; break;
    default: break;
    }
    return style->standardIcon(pixmap);
}
