#pragma once

#include "private/OVAutotestExport_p.h"
#include "private/OVPostWorker_p.h"

#include <QJsonDocument>
#include <QString>

#include <atomic>
#include <map>

class QJsonObject;

// One queued statistics post. Its JSON is put together on the worker thread, so that a caller
// pays no more than the queue push; what is posted is what building it at queueing time would
// have given, as the session is taken when the record is queued.
struct OVCORE_AUTOTEST_EXPORT StatisticsRecord
{
    enum Kind
    {
        Document,      // an event made of the caller's document
        TypeAndId,     // an event of type and id, with properties when hasProperties
        Identification // the four values of an identification, in document
    };
    Kind kind = Document;
    QJsonDocument document;
    QString type;
    int id = 0;
    bool hasProperties = false;
    std::map<QString, QString> properties;
    qint64 sessionId = 0;
};

// One statistics client: it queues statistics and posts each, from a worker thread of its own,
// as a form with two items, "api_key" and the payload field carrying the JSON text. The
// application owns two: the events client, whose events carry the device id and the session,
// and the identification client, whose identifications are completed with the facts of the
// system when they are posted. A failed post is dropped silently.
class OVCORE_AUTOTEST_EXPORT StatisticsClient
{
public:
    // The events client: the access key, the events endpoint and the event field, read from
    // the telemetry configuration.
    StatisticsClient();
    StatisticsClient(const QString& apiKey, const QString& endpoint, const QString& payloadField);

    StatisticsClient(const StatisticsClient&) = delete;
    StatisticsClient& operator=(const StatisticsClient&) = delete;

    // The document's object (an empty one for an array), with "device_id" and "session_id" set
    // over whatever it held.
    void EnqueueEvent(const QJsonDocument& document);
    // {"event_type", "event_id"} and, with properties, "event_properties", stamped the same way.
    void EnqueueEvent(const QString& type, int id);
    void EnqueueEvent(const QString& type, int id, std::map<QString, QString> properties);
    // The four values, an empty email as "Unknown"; the rest is added when it is posted.
    void EnqueueIdentification(const QString& plan, const QString& channel, const QString& email,
                               const QString& startVersion);
    // Later events carry a new session id; queued ones keep theirs.
    void ChangeSession();

    // The form text posted for record.
    QByteArray FormFor(const StatisticsRecord& record) const;

private:
    void Push(StatisticsRecord record);
    QJsonDocument EventPayload(const StatisticsRecord& record) const;
    QJsonDocument IdentificationPayload(const QJsonObject& identification) const;

    std::atomic<qint64> m_sessionId;
    const QString m_apiKey;
    const QString m_endpoint;
    const QString m_payloadField;
    const QString m_deviceId;
    // Last, so that its thread starts with everything else in place and stops before it goes.
    OVPostWorker<StatisticsRecord> m_worker;
};
