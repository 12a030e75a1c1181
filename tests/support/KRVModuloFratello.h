#pragma once

// A sibling module of the tests only ("Attivita", "Magazzino"), registered in
// the host's module registry for as long as it lives, recording the package
// actions it is asked for.
#include "Q3Module.h"
#include "Q3Packages.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantList>

struct TKRVAzioneRicevuta
{
    QString Nome;
    QVariantList Parametri;
    int UltimoIndice = -1;
};

class TKRVModuloFratello : public QObject, public IQ3Module
{
public:
    explicit TKRVModuloFratello(const QString &nome) : m_fileName(nome + QString::fromLatin1(Q3ModuleFileExtension))
    {
        RegisterPackage(m_fileName, QStringLiteral("Modulo ") + nome,
                        [this](QObject *) -> IQ3Module * { return this; });
        PackageList()[GetPackageIndex(m_fileName)].MainObject = this;
    }

    ~TKRVModuloFratello() override { UnregisterPackage(m_fileName); }

    TKRVModuloFratello(const TKRVModuloFratello &) = delete;
    TKRVModuloFratello &operator=(const TKRVModuloFratello &) = delete;

    QObject *AsObject() override { return this; }
    void Initialize() override {}
    int ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex) override
    {
        Ricevute.append({actionName, parameters, lastIndex});
        return 0;
    }
    void ModuloFinalize() override {}
    void Finalize() override {}

    QList<TKRVAzioneRicevuta> Ricevute;

private:
    QString m_fileName;
};
