#include "uKRVSalvaExcel.h"

TKRVSalvaExcel::TKRVSalvaExcel(QWidget *parent)
    : TKRVSalvaFile(QStringLiteral("dlgSalvaExcel"), QStringLiteral("Salva con nome..."),
                    QStringLiteral("Cartella di lavoro di Microsoft Excel (*.xls)"), QStringLiteral("xls"), parent)
{
    SetCreatePrompt(true);
}
