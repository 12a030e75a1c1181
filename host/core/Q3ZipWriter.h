#pragma once

#include "Q3Global.h"

#include <QByteArray>
#include <QList>
#include <QString>

struct zip;

// A ZIP file made entry by entry (libzip). Nothing is on the disk until Close
// writes the whole file; an archive destroyed before, or a Close that fails,
// leaves no file behind. Raises EQ3Exception with the reason in Italian.
class Q3_EXPORT TQ3ZipWriter
{
public:
    explicit TQ3ZipWriter(const QString &file);
    ~TQ3ZipWriter();
    TQ3ZipWriter(const TQ3ZipWriter &) = delete;
    TQ3ZipWriter &operator=(const TQ3ZipWriter &) = delete;

    // One entry, named in UTF-8; a second entry of the same name replaces the first.
    void Add(const QString &name, const QByteArray &content);
    int Count() const { return int(m_contents.size()); }
    void Close();

private:
    QString m_file;
    zip *m_archive = nullptr;
    // libzip reads the entries only at Close: they live until then.
    QList<QByteArray> m_contents;
};
