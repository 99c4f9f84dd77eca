#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class OVAdjustment;
class OVAdjustmentManagerPrivate;

// The process-wide registry of the adjustments that plug-ins offer, keyed by each
// adjustment's UID. It does not own them. Registration and lookup are safe from any thread;
// the signals are emitted on the registering thread once the registry's lock is released.
class OVCORE_EXPORT OVAdjustmentManager : public QObject
{
    Q_OBJECT
public:
    static void InitInstance();
    static OVAdjustmentManager* GetInstance();
    static void ReleaseInstance();

    // True when the adjustment is registered afterwards (or is null); false, with a log line,
    // when another adjustment already holds its UID.
    bool Register(OVAdjustment* adjustment);
    // False when nothing is registered under id. The adjustment is not deleted.
    bool Unregister(const QString& id);
    OVAdjustment* GetAdjustment(const QString& id);
    // The identifier the adjustment is registered under, or a null string.
    QString GetID(OVAdjustment* adjustment);
    // Identifiers in the order they were registered in.
    QStringList GetRegistered();

signals:
    void Registred(const QString& id, OVAdjustment* adjustment);
    void Unregistred(const QString& id, OVAdjustment* adjustment);

private:
    OVAdjustmentManager();
    ~OVAdjustmentManager() override;
    Q_DISABLE_COPY(OVAdjustmentManager)

    OVAdjustmentManagerPrivate* const d;
};
