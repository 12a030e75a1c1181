#pragma once

#include "Q3Global.h"

#include <QObject>
#include <QString>

// A report project file: the named report layouts that modules run.
class Q3_EXPORT TQ3ReportProject : public QObject
{
    Q_OBJECT

public:
    explicit TQ3ReportProject(QObject *owner = nullptr);

    QString ProjectFile() const { return m_projectFile; }
    void SetProjectFile(const QString &fileName) { m_projectFile = fileName; }

    // Reads the project file; raises EQ3Exception when it cannot be read.
    void Open();
    void Close();
    bool Active() const { return m_active; }
    QByteArray Content() const { return m_content; }

private:
    QString m_projectFile;
    QByteArray m_content;
    bool m_active = false;
};
