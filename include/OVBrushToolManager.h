#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class OVBrushPlugin;
class OVBrushToolManagerPrivate;

/// The process-wide registry of the brush tools that plug-ins offer, keyed by each brush
/// plug-in's UID, and the one main brush plug-in.
///
/// It does not own them. Registration and lookup are safe from any thread; the signals are
/// emitted on the registering thread once the registry's lock is released. The main brush
/// plug-in belongs to the GUI thread.
class OVCORE_EXPORT OVBrushToolManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the registry; a second call does nothing.
    static void InitInstance();
    /// The registry, or null before InitInstance() and after ReleaseInstance().
    static OVBrushToolManager* GetInstance();
    /// Deletes the registry.
    static void ReleaseInstance();

    /// Registers the brush plug-in under its UID. True when it is registered afterwards (or
    /// is null); false, with a log line, when another plug-in already holds its UID.
    bool Register(OVBrushPlugin* plugin);
    /// Unregisters what is registered under \a id, without deleting it; false when nothing is.
    bool Unregister(const QString& id);
    /// The brush plug-in registered under \a id, or null.
    OVBrushPlugin* GetPlugin(const QString& id);
    /// The identifier the plug-in is registered under, or a null string.
    QString GetID(OVBrushPlugin* plugin);
    /// The identifiers in the order they were registered in.
    QStringList GetRegistered();

    /// Makes \a plugin the main brush plug-in (null for none); no signal. It need not be
    /// registered, and it is forgotten when it is destroyed.
    void SetMainBrushPlugin(OVBrushPlugin* plugin);
    /// The main brush plug-in, or null.
    OVBrushPlugin* GetMainBrushPlugin() const;

signals:
    /// A brush plug-in was registered under \a id.
    void Registred(const QString& id, OVBrushPlugin* plugin);
    /// What was registered under \a id was unregistered; the object may already be deleted.
    void Unregistred(const QString& id, OVBrushPlugin* plugin);

public slots:
    /// Forgets the main brush plug-in; connected to its destroyed() signal.
    void OnMainBrushPluginDestroyed();

private:
    OVBrushToolManager();
    ~OVBrushToolManager() override;
    Q_DISABLE_COPY(OVBrushToolManager)

    OVBrushToolManagerPrivate* const d;
};
