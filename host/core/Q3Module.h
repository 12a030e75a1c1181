#pragma once

#include "Q3Global.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtPlugin>

// The main object of a module, created by the host once the module is loaded.
class Q3_EXPORT IQ3Module
{
public:
    virtual ~IQ3Module() = default;
    virtual QObject *AsObject() = 0;
    virtual void Initialize() = 0;
    virtual int ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex) = 0;
    virtual void ModuloFinalize() = 0;
    virtual void Finalize() = 0;
};

// What a module library exposes to QPluginLoader. Loading the library runs its
// code initialisation, which registers the module with RegisterPackage.
class IQ3ModulePlugin
{
public:
    virtual ~IQ3ModulePlugin() = default;
    virtual QString ModuleFileName() const = 0;
};

#define IQ3ModulePlugin_iid "it.quillo3.IQ3ModulePlugin/1.0"
Q_DECLARE_INTERFACE(IQ3ModulePlugin, IQ3ModulePlugin_iid)
