#include "Q3CompoundFile.h"

#include "Q3Bytes.h"

#include <QList>

namespace {
constexpr int SectorSize = 512;
constexpr int IdsPerSector = SectorSize / 4;
constexpr int HeaderDifatEntries = 109;
constexpr int MiniStreamCutoff = 4096;
constexpr int DirectoryEntrySize = 128;

constexpr quint32 DifSect = 0xFFFFFFFC;
constexpr quint32 FatSect = 0xFFFFFFFD;
constexpr quint32 EndOfChain = 0xFFFFFFFE;
constexpr quint32 FreeSect = 0xFFFFFFFF;
constexpr quint32 NoStream = 0xFFFFFFFF;

constexpr quint8 TypeStream = 2;
constexpr quint8 TypeRoot = 5;
constexpr quint8 Black = 1;

int SectorsFor(qsizetype bytes, int perSector)
{
    return int((bytes + perSector - 1) / perSector);
}

// One 128-byte directory entry; an empty name makes an unused entry.
QByteArray DirectoryEntry(const QString &name, quint8 type, quint32 child, quint32 start, quint32 size)
{
    QByteArray entry;
    entry.reserve(DirectoryEntrySize);
    for (QChar c : name)
        AppendU16(entry, c.unicode());
    const quint16 nameBytes = name.isEmpty() ? 0 : quint16((name.size() + 1) * 2);
    entry.append(64 - entry.size(), '\0');
    AppendU16(entry, nameBytes);
    AppendU8(entry, type);
    AppendU8(entry, name.isEmpty() ? 0 : Black);
    AppendU32(entry, NoStream); // left sibling
    AppendU32(entry, NoStream); // right sibling
    AppendU32(entry, child);
    entry.append(16 + 4 + 8 + 8, '\0'); // class id, state bits, creation and modification times
    AppendU32(entry, start);
    AppendU32(entry, size);
    AppendU32(entry, 0); // high half of the size, always zero in version 3
    return entry;
}
} // namespace

QByteArray Q3CompoundFile(const QString &streamName, const QByteArray &stream)
{
    QByteArray content = stream;
    if (content.size() < MiniStreamCutoff)
        content.append(MiniStreamCutoff - content.size(), '\0');

    // Sectors in file order: the stream, one directory sector, the FAT, the DIFAT.
    // The FAT describes itself and the DIFAT too, so their counts are found together.
    const int streamSectors = SectorsFor(content.size(), SectorSize);
    const int directorySectors = 1;
    int fatSectors = 1;
    int difatSectors = 0;
    for (;;) {
        const int total = streamSectors + directorySectors + fatSectors + difatSectors;
        const int neededFat = SectorsFor(total, IdsPerSector);
        const int neededDifat =
            neededFat > HeaderDifatEntries ? SectorsFor(neededFat - HeaderDifatEntries, IdsPerSector - 1) : 0;
        if (neededFat == fatSectors && neededDifat == difatSectors)
            break;
        fatSectors = neededFat;
        difatSectors = neededDifat;
    }
    const quint32 directoryStart = quint32(streamSectors);
    const quint32 fatStart = directoryStart + directorySectors;
    const quint32 difatStart = fatStart + quint32(fatSectors);

    QList<quint32> fat(qsizetype(fatSectors) * IdsPerSector, FreeSect);
    for (int i = 0; i < streamSectors; ++i)
        fat[i] = i + 1 < streamSectors ? quint32(i + 1) : EndOfChain;
    fat[directoryStart] = EndOfChain;
    for (int i = 0; i < fatSectors; ++i)
        fat[fatStart + i] = FatSect;
    for (int i = 0; i < difatSectors; ++i)
        fat[difatStart + i] = DifSect;

    // FAT sector locations: the first 109 in the header, the rest in DIFAT sectors
    // of 127 locations and the next DIFAT sector's.
    QList<quint32> fatLocations(qsizetype(HeaderDifatEntries) + qsizetype(difatSectors) * (IdsPerSector - 1), FreeSect);
    for (int i = 0; i < fatSectors; ++i)
        fatLocations[i] = fatStart + quint32(i);

    QByteArray file;
    file.reserve(qsizetype(1 + streamSectors + directorySectors + fatSectors + difatSectors) * SectorSize);
    file.append("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    file.append(16, '\0');   // class id
    AppendU16(file, 0x003E); // minor version
    AppendU16(file, 0x0003); // major version: 512-byte sectors
    AppendU16(file, 0xFFFE); // byte order mark: little-endian
    AppendU16(file, 9);      // sector size 2^9
    AppendU16(file, 6);      // mini sector size 2^6
    file.append(6, '\0');
    AppendU32(file, 0); // directory sectors: not counted in version 3
    AppendU32(file, quint32(fatSectors));
    AppendU32(file, directoryStart);
    AppendU32(file, 0); // transaction signature
    AppendU32(file, MiniStreamCutoff);
    AppendU32(file, EndOfChain); // no mini FAT
    AppendU32(file, 0);
    AppendU32(file, difatSectors > 0 ? difatStart : EndOfChain);
    AppendU32(file, quint32(difatSectors));
    for (int i = 0; i < HeaderDifatEntries; ++i)
        AppendU32(file, fatLocations[i]);

    file.append(content);
    file.append(qsizetype(streamSectors) * SectorSize - content.size(), '\0');

    file.append(DirectoryEntry(QStringLiteral("Root Entry"), TypeRoot, 1, EndOfChain, 0));
    file.append(DirectoryEntry(streamName, TypeStream, NoStream, 0, quint32(content.size())));
    file.append(DirectoryEntry(QString(), 0, NoStream, 0, 0));
    file.append(DirectoryEntry(QString(), 0, NoStream, 0, 0));

    for (quint32 id : fat)
        AppendU32(file, id);

    for (int d = 0; d < difatSectors; ++d) {
        for (int i = 0; i < IdsPerSector - 1; ++i)
            AppendU32(file, fatLocations[HeaderDifatEntries + d * (IdsPerSector - 1) + i]);
        AppendU32(file, d + 1 < difatSectors ? difatStart + quint32(d + 1) : EndOfChain);
    }
    return file;
}
