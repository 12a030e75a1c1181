#pragma once

// Checking an electronic invoice file twice: by the program's own schema
// validator and by xmllint, offline, against the reference schema copy in the
// sources with its catalog (Q3_FATTURAPA_RIFERIMENTO, the folder of both).
#include "KRVValidaFatturaPA.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace KRVTest {

inline const QString Riferimento = QStringLiteral(Q3_FATTURAPA_RIFERIMENTO);

// The texts of every element with that name, in the file's order.
inline QStringList Valori(const QByteArray &xml, const QString &elemento)
{
    QStringList valori;
    QXmlStreamReader lettore(xml);
    while (!lettore.atEnd()) {
        lettore.readNext();
        if (lettore.isStartElement() && lettore.name() == elemento)
            valori.append(lettore.readElementText(QXmlStreamReader::IncludeChildElements));
    }
    return valori;
}

// xmllint's complaints about the file, validated offline against the reference schema.
inline QString Xmllint(const QByteArray &xml, const QString &xmllint)
{
    QTemporaryDir cartella;
    QFile file(cartella.filePath(QStringLiteral("fattura.xml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size())
        return QStringLiteral("file temporaneo non scritto");
    file.close();
    QProcess processo;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QStringLiteral("XML_CATALOG_FILES"), Riferimento + QStringLiteral("/catalog.xml"));
    processo.setProcessEnvironment(ambiente);
    processo.setProcessChannelMode(QProcess::MergedChannels);
    processo.start(xmllint,
                   {QStringLiteral("--noout"), QStringLiteral("--nonet"), QStringLiteral("--catalogs"),
                    QStringLiteral("--schema"),
                    Riferimento + QStringLiteral("/Schema_del_file_xml_FatturaPA_v1.2.2.xsd"), file.fileName()});
    if (!processo.waitForFinished(60000))
        return QStringLiteral("xmllint non ha finito");
    return processo.exitCode() == 0 ? QString() : QString::fromUtf8(processo.readAll());
}

// What the program's validator and xmllint (when installed) find wrong in the file; empty when valid.
inline QString ProblemiFatturaPA(const QByteArray &xml)
{
    QStringList problemi = KRVValidaSchemaFatturaPA(xml);
    const QString xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (!xmllint.isEmpty())
        problemi << Xmllint(xml, xmllint);
    problemi.removeAll(QString());
    return problemi.join(QLatin1Char('\n'));
}

} // namespace KRVTest

// The file is valid for the program's validator and for xmllint (skipped when it is missing).
#define VALIDA(xml)                                                                                                    \
    do {                                                                                                               \
        const QString problemi = KRVTest::ProblemiFatturaPA(xml);                                                      \
        QVERIFY2(problemi.isEmpty(), qPrintable(problemi));                                                            \
        if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())                                       \
            QSKIP("xmllint is not installed");                                                                         \
    } while (false)
