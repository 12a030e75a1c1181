#pragma once

#include "Q3Global.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtPlugin>

#include <functional>

// A notice a module has for the user who has just logged in, which the host
// shows once: its title and text, and what opens the window it speaks of
// (when there is one, the box asks whether to open it).
struct TQ3AvvisoAccesso
{
    QString Titolo;
    QString Testo;
    std::function<void()> Apri{};
};

// The main object of a module, made by its plug-in's factory once the host has
// loaded the library. Its life, as the host's loader runs it:
//  - Initialize: once, after creation; a module's dependencies are initialised
//    before it. A failure raised here is shown, and the host goes on without
//    the module: it deletes the main object without the two calls below.
//  - AllModulesInitialized: once every module has been initialised, in the
//    same order; the place for work that needs the other modules running.
//  - AvvisiAccesso: once the main window shows, for the user who logged in.
//  - ModuloFinalize: the host is about to shut down; in the reverse order.
//  - Finalize: after every module's ModuloFinalize, in the reverse order;
//    then the host deletes the main object.
class Q3_EXPORT IQ3Module
{
public:
    virtual ~IQ3Module() = default;
    virtual QObject *AsObject() = 0;
    virtual void Initialize() = 0;
    virtual void AllModulesInitialized() {}
    // The notices for the user who has just logged in; none by default.
    virtual QList<TQ3AvvisoAccesso> AvvisiAccesso() { return {}; }
    virtual int ExecutePkgAction(const QString &actionName, const QVariantList &parameters, int lastIndex) = 0;
    virtual void ModuloFinalize() = 0;
    virtual void Finalize() = 0;
};

// What a module library exposes to QPluginLoader: its metadata, which the host
// reads before loading the library (Q_PLUGIN_METADATA with a FILE, described
// in Q3ModuleMetadata.h), and the factory of its main object. Loading the
// library registers nothing: the host registers the module under its file
// name with the metadata's description and this factory.
class IQ3ModulePlugin
{
public:
    virtual ~IQ3ModulePlugin() = default;
    // A new main object of the module, owned by the owner.
    virtual IQ3Module *CreateModule(QObject *owner) = 0;
};

#define IQ3ModulePlugin_iid "it.quillo3.IQ3ModulePlugin/2.1"
Q_DECLARE_INTERFACE(IQ3ModulePlugin, IQ3ModulePlugin_iid)
