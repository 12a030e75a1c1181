#include "Q3ZipWriter.h"

#include "Q3Exception.h"

#include <QFile>

#include <zip.h>

namespace {

QString ZipErrorText(zip_error_t *error)
{
    return QString::fromLocal8Bit(zip_error_strerror(error));
}

} // namespace

TQ3ZipWriter::TQ3ZipWriter(const QString &file) : m_file(file)
{
    int code = 0;
    m_archive = zip_open(QFile::encodeName(file).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!m_archive) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const QString reason = ZipErrorText(&error);
        zip_error_fini(&error);
        throw EQ3Exception(QStringLiteral("Impossibile creare il file \"%1\":\n%2").arg(file, reason));
    }
}

TQ3ZipWriter::~TQ3ZipWriter()
{
    if (m_archive)
        zip_discard(m_archive);
}

void TQ3ZipWriter::Add(const QString &name, const QByteArray &content)
{
    if (!m_archive)
        throw EQ3Exception(QStringLiteral("Il file \"%1\" è già stato chiuso.").arg(m_file));
    m_contents.append(content);
    const QByteArray &kept = m_contents.constLast();
    zip_source_t *source = zip_source_buffer(m_archive, kept.constData(), zip_uint64_t(kept.size()), 0);
    if (!source
        || zip_file_add(m_archive, name.toUtf8().constData(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) < 0) {
        if (source)
            zip_source_free(source);
        throw EQ3Exception(QStringLiteral("Impossibile aggiungere \"%1\" al file \"%2\":\n%3")
                               .arg(name, m_file, ZipErrorText(zip_get_error(m_archive))));
    }
}

void TQ3ZipWriter::Close()
{
    if (!m_archive)
        return;
    if (zip_close(m_archive) < 0) {
        const QString reason = ZipErrorText(zip_get_error(m_archive));
        zip_discard(m_archive);
        m_archive = nullptr;
        QFile::remove(m_file);
        throw EQ3Exception(QStringLiteral("Impossibile scrivere il file \"%1\":\n%2").arg(m_file, reason));
    }
    m_archive = nullptr;
    m_contents.clear();
}
