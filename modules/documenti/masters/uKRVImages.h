#pragma once

#include <QIcon>

// The image list shared by the module's actions, menus, toolbars and trees.
enum TKRVImage : int {
    KRVImgNuovo = 0,
    KRVImgElimina = 1,
    KRVImgSalva = 2,
    KRVImgChiudi = 3,
    KRVImgCerca = 4,
    KRVImgRipristina = 5,
    KRVImgModifica = 6,
    KRVImgStampa = 7,
    KRVImgOK = 8,
    KRVImgAnnulla = 9,
    KRVImgFatture = 10,
    KRVImgClienti = 11,
    KRVImgArticoli = 12,
    KRVImgServizi = 13,
    KRVImgTabelle = 14,
    KRVImgStatistiche = 15,
    KRVImgPaginaPrima = 16,
    KRVImgPaginaPrecedente = 17,
    KRVImgPaginaSuccessiva = 18,
    KRVImgPaginaUltima = 19,
    KRVImgSelezionaTutti = 20,
    KRVImgDeselezionaTutti = 21,
    KRVImgFolderClosed = 38,
    KRVImgFolderOpen = 39,
};

QIcon KRVImage(int index);
