#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstring>

// Little-endian integers and doubles appended to a binary buffer, as the
// legacy Office file formats store them.
inline void AppendU8(QByteArray &out, quint8 value)
{
    out.append(char(value));
}

inline void AppendU16(QByteArray &out, quint16 value)
{
    const quint16 le = qToLittleEndian(value);
    out.append(reinterpret_cast<const char *>(&le), sizeof le);
}

inline void AppendU32(QByteArray &out, quint32 value)
{
    const quint32 le = qToLittleEndian(value);
    out.append(reinterpret_cast<const char *>(&le), sizeof le);
}

inline void AppendDouble(QByteArray &out, double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const quint64 le = qToLittleEndian(bits);
    out.append(reinterpret_cast<const char *>(&le), sizeof le);
}

// Overwrites four bytes at `offset` with a little-endian value.
inline void PutU32(QByteArray &out, qsizetype offset, quint32 value)
{
    qToLittleEndian(value, out.data() + offset);
}
