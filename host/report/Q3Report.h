#pragma once

#include "Q3ReportData.h"
#include "Q3ReportSystem.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

// A report project file: the named report layouts that modules run, the data
// connections they read and the text parameters they print. Parameters keep
// their values from one run to the next until they are set again.
class Q3_EXPORT TQ3ReportProject : public QObject
{
    Q_OBJECT

public:
    explicit TQ3ReportProject(QObject *owner = nullptr);

    QString ProjectFile() const { return m_projectFile; }
    void SetProjectFile(const QString &fileName) { m_projectFile = fileName; }

    // Reads the project file; raises EQ3Exception when it cannot be read or
    // a layout in it is wrong.
    void Open();
    void Close();
    bool Active() const { return m_active; }
    QStringList ReportNames() const;
    std::shared_ptr<const TQ3ReportLayout> Report(const QString &name) const;

    void SetEngine(TQ3ReportSystem *engine) { m_engine = engine; }
    TQ3ReportSystem *Engine() const { return m_engine; }

    // A named data connection; the project does not own it.
    void RegisterConnection(const QString &name, IQ3ReportData *data);
    IQ3ReportData *Connection(const QString &name) const { return m_connections.value(name); }

    void SetParam(const QString &name, const QString &value) { m_parameters.insert(name, value); }
    QString GetParam(const QString &name) const { return m_parameters.value(name); }

    // Lays the report out over the connections as they are now.
    std::unique_ptr<TQ3ReportDocument> Generate(const QString &name, const std::function<void(int)> &onPage = {}) const;
    // Runs the report through the engine; raises EQ3Exception on failure.
    void ExecuteReport(const QString &name);

private:
    QString m_projectFile;
    bool m_active = false;
    QHash<QString, std::shared_ptr<const TQ3ReportLayout>> m_reports;
    QStringList m_order;
    QPointer<TQ3ReportSystem> m_engine;
    QHash<QString, IQ3ReportData *> m_connections;
    QHash<QString, QString> m_parameters;
};
