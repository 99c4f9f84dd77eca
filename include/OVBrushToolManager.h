#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class OVBrushPlugin;
class OVBrushToolManagerPrivate;

// The process-wide registry of the brush tools that plug-ins offer, keyed by each brush
// plug-in's UID, and the one main brush plug-in. It does not own them. Registration and
// lookup are safe from any thread; the signals are emitted on the registering thread once
// the registry's lock is released. The main brush plug-in belongs to the GUI thread.
class OVCORE_EXPORT OVBrushToolManager : public QObject
{
    Q_OBJECT
public:
    static void InitInstance();
    static OVBrushToolManager* GetInstance();
    static void ReleaseInstance();

    // True when the plug-in is registered afterwards (or is null); false, with a log line,
    // when another plug-in already holds its UID.
    bool Register(OVBrushPlugin* plugin);
    // False when nothing is registered under id. The plug-in is not deleted.
    bool Unregister(const QString& id);
    OVBrushPlugin* GetPlugin(const QString& id);
    // The identifier the plug-in is registered under, or a null string.
    QString GetID(OVBrushPlugin* plugin);
    // Identifiers in the order they were registered in.
    QStringList GetRegistered();

    // The main brush plug-in need not be registered; it is forgotten when it is destroyed.
    void SetMainBrushPlugin(OVBrushPlugin* plugin);
    OVBrushPlugin* GetMainBrushPlugin() const;

signals:
    void Registred(const QString& id, OVBrushPlugin* plugin);
    void Unregistred(const QString& id, OVBrushPlugin* plugin);

public slots:
    void OnMainBrushPluginDestroyed();

private:
    OVBrushToolManager();
    ~OVBrushToolManager() override;
    Q_DISABLE_COPY(OVBrushToolManager)

    OVBrushToolManagerPrivate* const d;
};
