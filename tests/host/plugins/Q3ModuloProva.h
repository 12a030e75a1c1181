#pragma once

// The main object of the loader's test modules. Each call of its life is
// written as "<name>.<call>" into a list of the application's (the property
// Q3ProvaEventi) that the test reads; a call the test names in the property
// Q3ProvaGuasti fails.
#include "Q3Exception.h"
#include "Q3Module.h"

#include <QCoreApplication>
#include <QObject>
#include <QStringList>

inline constexpr char Q3ProvaEventi[] = "q3ProvaEventi";
inline constexpr char Q3ProvaGuasti[] = "q3ProvaGuasti";

class TQ3ModuloProva : public QObject, public IQ3Module
{
public:
    TQ3ModuloProva(QObject *owner, const QString &nome) : QObject(owner), m_nome(nome) { Evento("Created"); }
    ~TQ3ModuloProva() override { Scrivi(m_nome + QStringLiteral(".Destroyed")); }

    TQ3ModuloProva(const TQ3ModuloProva &) = delete;
    TQ3ModuloProva &operator=(const TQ3ModuloProva &) = delete;

    QObject *AsObject() override { return this; }
    void Initialize() override { Evento("Initialize"); }
    void AllModulesInitialized() override { Evento("AllModulesInitialized"); }
    int ExecutePkgAction(const QString &, const QVariantList &, int) override { return 0; }
    void ModuloFinalize() override { Evento("ModuloFinalize"); }
    void Finalize() override { Evento("Finalize"); }

private:
    static void Scrivi(const QString &evento)
    {
        qApp->setProperty(Q3ProvaEventi, qApp->property(Q3ProvaEventi).toStringList() << evento);
    }

    void Evento(const char *call) const
    {
        const QString evento = m_nome + QLatin1Char('.') + QLatin1String(call);
        Scrivi(evento);
        if (qApp->property(Q3ProvaGuasti).toStringList().contains(evento))
            throw EQ3Exception(QStringLiteral("Guasto di prova in %1.").arg(evento));
    }

    QString m_nome;
};
