#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class OVAdjustment;
class OVAdjustmentManagerPrivate;

/// The process-wide registry of the adjustments that plug-ins offer, keyed by each
/// adjustment's UID.
///
/// It does not own them. A plug-in container registers its adjustments in its
/// OVPluginContainer::Initialize() and unregisters them in OVPluginContainer::Release().
/// Registration and lookup are safe from any thread; the signals are emitted on the
/// registering thread once the registry's lock is released.
class OVCORE_EXPORT OVAdjustmentManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the registry; a second call does nothing.
    static void InitInstance();
    /// The registry, or null before InitInstance() and after ReleaseInstance().
    static OVAdjustmentManager* GetInstance();
    /// Deletes the registry.
    static void ReleaseInstance();

    /// Registers the adjustment under its UID. True when it is registered afterwards (or is
    /// null); false, with a log line, when another adjustment already holds its UID.
    bool Register(OVAdjustment* adjustment);
    /// Unregisters what is registered under \a id, without deleting it; false when nothing is.
    bool Unregister(const QString& id);
    /// The adjustment registered under \a id, or null.
    OVAdjustment* GetAdjustment(const QString& id);
    /// The identifier the adjustment is registered under, or a null string.
    QString GetID(OVAdjustment* adjustment);
    /// The identifiers in the order they were registered in.
    QStringList GetRegistered();

signals:
    /// An adjustment was registered under \a id.
    void Registred(const QString& id, OVAdjustment* adjustment);
    /// What was registered under \a id was unregistered; the object may already be deleted.
    void Unregistred(const QString& id, OVAdjustment* adjustment);

private:
    OVAdjustmentManager();
    ~OVAdjustmentManager() override;
    Q_DISABLE_COPY(OVAdjustmentManager)

    OVAdjustmentManagerPrivate* const d;
};
