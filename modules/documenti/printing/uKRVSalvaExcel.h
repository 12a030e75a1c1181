#pragma once

#include "uKRVSalvaFile.h"

// The module's save dialog for workbooks: it also asks before creating a file.
class TKRVSalvaExcel : public TKRVSalvaFile
{
    Q_OBJECT

public:
    explicit TKRVSalvaExcel(QWidget *parent = nullptr);
};
