#pragma once

#include "Q3Connection.h"
#include "Q3Dataset.h"
#include "Q3Report.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <vector>

// The report data module: the datasets the module's prints read, each exposed
// to the report project through a data connection of its own name
// (adsFattVend through dsFattVend, ...).
class TKRVdmStampe : public QObject
{
    Q_OBJECT

public:
    TKRVdmStampe(QObject *owner, TQ3Connection *connection, TQ3ReportProject *project);

    TQ3Dataset *Dataset(const QString &name) const { return m_datasets.value(name); }
    QStringList DatasetNames() const { return m_names; }

private:
    QHash<QString, TQ3Dataset *> m_datasets;
    QStringList m_names;
    std::vector<std::unique_ptr<TQ3DatasetConnection>> m_connections;
};
