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
// (adsFattVend through dsFattVend, ...), and the rows the prints compute
// themselves: the VAT summaries as the documents print them
// (dsFattVendRiepilogoIva, dsNoteAccreditoRiepilogoIva).
class TKRVdmStampe : public QObject
{
    Q_OBJECT

public:
    TKRVdmStampe(QObject *owner, TQ3Connection *connection, TQ3ReportProject *project);

    TQ3Dataset *Dataset(const QString &name) const { return m_datasets.value(name); }
    QStringList DatasetNames() const { return m_names; }
    // Rows a print computes, by the name of their connection; null for another name.
    TQ3MemoryData *Calcolati(const QString &connection) const { return m_calcolati.value(connection); }

private:
    QHash<QString, TQ3Dataset *> m_datasets;
    QStringList m_names;
    std::vector<std::unique_ptr<TQ3DatasetConnection>> m_connections;
    TQ3MemoryData m_riepilogoFattVend;
    TQ3MemoryData m_riepilogoNoteAccredito;
    QHash<QString, TQ3MemoryData *> m_calcolati;
};
