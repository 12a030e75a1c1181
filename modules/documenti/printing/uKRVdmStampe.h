#pragma once

#include <QObject>

// The report data module: the datasets and report runs of the module's prints.
class TKRVdmStampe : public QObject
{
    Q_OBJECT

public:
    explicit TKRVdmStampe(QObject *owner);
};
