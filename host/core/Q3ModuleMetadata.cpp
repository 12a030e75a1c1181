#include "Q3ModuleMetadata.h"

#include "Q3Exception.h"
#include "Q3Module.h"
#include "Q3Packages.h"

#include <QJsonArray>
#include <QPluginLoader>

namespace {

[[noreturn]] void Invalid(const QString &field)
{
    throw EQ3Exception(QStringLiteral("nei metadati del modulo il campo \"%1\" manca o non è valido.").arg(field));
}

QString Text(const QJsonObject &object, const QString &field)
{
    return object.value(field).toString().trimmed();
}

// A version of whole numbers separated by dots and nothing else; null otherwise.
QVersionNumber Version(const QString &text)
{
    qsizetype end = 0;
    const QVersionNumber version = QVersionNumber::fromString(text, &end);
    return end == text.size() ? version : QVersionNumber();
}

QList<TQ3ModuleDependency> Dependencies(const QJsonObject &metaData)
{
    const QString field = QStringLiteral("Dependencies");
    const QJsonValue value = metaData.value(field);
    if (value.isUndefined())
        return {};
    if (!value.isArray())
        Invalid(field);
    QList<TQ3ModuleDependency> dependencies;
    for (const QJsonValue &item : value.toArray()) {
        const QJsonObject dependency = item.toObject();
        TQ3ModuleDependency entry{Text(dependency, QStringLiteral("Name")), {}};
        const bool versioned = dependency.contains(QStringLiteral("Version"));
        if (versioned)
            entry.Version = Version(Text(dependency, QStringLiteral("Version")));
        if (entry.Name.isEmpty() || (versioned && entry.Version.isNull()))
            Invalid(field);
        dependencies << entry;
    }
    return dependencies;
}

// The values a choice offers: a list of texts, none empty, with the default among them.
QStringList Values(const QJsonObject &option, const QString &defaultValue, const QString &field)
{
    const QJsonValue value = option.value(QStringLiteral("Values"));
    if (!value.isArray() || value.toArray().isEmpty())
        Invalid(field);
    QStringList values;
    for (const QJsonValue &item : value.toArray()) {
        const QString text = item.toString().trimmed();
        if (!item.isString() || text.isEmpty())
            Invalid(field);
        values << text;
    }
    if (!values.contains(defaultValue))
        Invalid(field);
    return values;
}

QList<TQ3ModuleOption> Options(const QJsonObject &metaData)
{
    const QString field = QStringLiteral("Options");
    const QJsonValue value = metaData.value(field);
    if (value.isUndefined())
        return {};
    if (!value.isArray())
        Invalid(field);
    QList<TQ3ModuleOption> options;
    for (const QJsonValue &item : value.toArray()) {
        const QJsonObject option = item.toObject();
        TQ3ModuleOption entry{Text(option, QStringLiteral("Key")), Text(option, QStringLiteral("Caption")),
                              TQ3ModuleOptionKind::Testo, option.value(QStringLiteral("Default")).toString()};
        const QString type = Text(option, QStringLiteral("Type"));
        if (type == QLatin1String("SiNo")) {
            entry.Kind = TQ3ModuleOptionKind::SiNo;
        } else if (type == QLatin1String("Scelta")) {
            entry.Kind = TQ3ModuleOptionKind::Scelta;
            entry.Values = Values(option, entry.Default, field);
        } else if (type != QLatin1String("Testo")) {
            Invalid(field);
        }
        if (entry.Key.isEmpty() || entry.Caption.isEmpty())
            Invalid(field);
        options << entry;
    }
    return options;
}

} // namespace

QString TQ3ModuleMetadata::FileName() const
{
    return Name + QString::fromLatin1(Q3ModuleFileExtension);
}

TQ3ModuleMetadata ReadQ3ModuleMetadata(const QString &libraryPath)
{
    const QPluginLoader loader(libraryPath);
    const QJsonObject pluginMetaData = loader.metaData();
    if (pluginMetaData.isEmpty())
        throw EQ3Exception(
            QStringLiteral("il file non è una libreria di modulo valida.\n\r%1").arg(loader.errorString()));
    return Q3ModuleMetadataFromJson(pluginMetaData);
}

TQ3ModuleMetadata Q3ModuleMetadataFromJson(const QJsonObject &pluginMetaData)
{
    if (pluginMetaData.value(QStringLiteral("IID")).toString() != QLatin1String(IQ3ModulePlugin_iid))
        throw EQ3Exception(QStringLiteral("la libreria non è un modulo di questa versione di Quillo 3."));
    if (!pluginMetaData.value(QStringLiteral("MetaData")).isObject())
        throw EQ3Exception(
            QStringLiteral("la libreria non contiene i metadati del modulo (nome, versione, descrizione)."));
    const QJsonObject metaData = pluginMetaData.value(QStringLiteral("MetaData")).toObject();
    TQ3ModuleMetadata result;
    result.Name = Text(metaData, QStringLiteral("Name"));
    if (result.Name.isEmpty())
        Invalid(QStringLiteral("Name"));
    result.Version = Version(Text(metaData, QStringLiteral("Version")));
    if (result.Version.isNull())
        Invalid(QStringLiteral("Version"));
    result.Description = Text(metaData, QStringLiteral("Description"));
    if (result.Description.isEmpty())
        Invalid(QStringLiteral("Description"));
    result.Dependencies = Dependencies(metaData);
    result.Options = Options(metaData);
    return result;
}
