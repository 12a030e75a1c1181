#pragma once

#include <QByteArray>
#include <QString>

// A compound document (version 3, 512-byte sectors) holding one stream below its
// root storage, as the legacy Office formats are stored. The stream is padded with
// zeros to 4,096 bytes when shorter, so that it always lives in regular sectors and
// the document needs no mini stream.
QByteArray Q3CompoundFile(const QString &streamName, const QByteArray &stream);
