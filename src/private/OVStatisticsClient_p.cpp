#include "private/OVStatisticsClient_p.h"

#include "OVApplication.h"
#include "private/OVCoreConfig_p.h"
#include "private/OVSystemInfo_p.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>
#include <QNetworkRequest>
#include <QUrl>
#include <QUrlQuery>

namespace {

const QString kDeviceId = QStringLiteral("device_id");
const QString kSessionId = QStringLiteral("session_id");

qint64 Now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

// The release process writes the build number over the placeholder; an unstamped build
// reports 999999.
QString AppVersion()
{
    QString build = QStringLiteral("8191");
    build.replace(QStringLiteral("[PRODUCT_BUILD_NUMBER]"), QStringLiteral("999999"));
    return QStringLiteral("2.9.0.") + build;
}

// The collection service knows the editor's one platform by this name, whatever the build.
QString PlatformName()
{
    return QStringLiteral("Windows");
}

} // namespace

// A braced list evaluates its values left to right, so the three are read in this order.
StatisticsClient::StatisticsClient()
    : StatisticsClient{ReadCoreConfigValue(QStringLiteral("node1/A0")),
                       ReadCoreConfigValue(QStringLiteral("node1/A2")),
                       ReadCoreConfigValue(QStringLiteral("node1/A5"))}
{}

StatisticsClient::StatisticsClient(const QString& apiKey, const QString& endpoint,
                                   const QString& payloadField)
    : m_sessionId(Now())
    , m_apiKey(apiKey)
    , m_endpoint(endpoint)
    , m_payloadField(payloadField)
    , m_deviceId(MakeDeviceId())
    , m_worker([this](const StatisticsRecord& record, const OVPostShutdown& shutdown) {
        QNetworkRequest request(QUrl(m_endpoint, QUrl::TolerantMode));
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QStringLiteral("application/x-www-form-urlencoded"));
        // The outcome is not looked at: a failed post is dropped, with no retry and no log.
        OVPost::Send(request, FormFor(record), shutdown, {}, {}, {});
    })
{}

void StatisticsClient::EnqueueEvent(const QJsonDocument& document)
{
    StatisticsRecord record;
    record.document = document;
    Push(std::move(record));
}

void StatisticsClient::EnqueueEvent(const QString& type, int id)
{
    StatisticsRecord record;
    record.kind = StatisticsRecord::TypeAndId;
    record.type = type;
    record.id = id;
    Push(std::move(record));
}

void StatisticsClient::EnqueueEvent(const QString& type, int id, std::map<QString, QString> properties)
{
    StatisticsRecord record;
    record.kind = StatisticsRecord::TypeAndId;
    record.type = type;
    record.id = id;
    record.hasProperties = true;
    record.properties = std::move(properties);
    Push(std::move(record));
}

void StatisticsClient::EnqueueIdentification(const QString& plan, const QString& channel,
                                             const QString& email, const QString& startVersion)
{
    StatisticsRecord record;
    record.kind = StatisticsRecord::Identification;
    record.document = QJsonDocument(
        QJsonObject{{QStringLiteral("plan"), plan},
                    {QStringLiteral("channel"), channel},
                    {QStringLiteral("email"), email.isEmpty() ? QStringLiteral("Unknown") : email},
                    {QStringLiteral("start_version"), startVersion}});
    Push(std::move(record));
}

void StatisticsClient::ChangeSession()
{
    m_sessionId = Now();
}

void StatisticsClient::Push(StatisticsRecord record)
{
    record.sessionId = m_sessionId;
    m_worker.Push(std::move(record));
}

QByteArray StatisticsClient::FormFor(const StatisticsRecord& record) const
{
    const QJsonDocument payload = record.kind == StatisticsRecord::Identification
                                      ? IdentificationPayload(record.document.object())
                                      : EventPayload(record);
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("api_key"), m_apiKey);
    form.addQueryItem(m_payloadField, QString::fromUtf8(payload.toJson()));
    return form.query().toUtf8();
}

QJsonDocument StatisticsClient::EventPayload(const StatisticsRecord& record) const
{
    QJsonObject event = record.document.object();
    if (record.kind == StatisticsRecord::TypeAndId) {
        event.insert(QStringLiteral("event_type"), record.type);
        event.insert(QStringLiteral("event_id"), record.id);
        if (record.hasProperties) {
            QJsonObject properties;
            for (const auto& property : record.properties)
                properties.insert(property.first, property.second);
            event.insert(QStringLiteral("event_properties"), properties);
        }
    }
    event.insert(kDeviceId, m_deviceId);
    event.insert(kSessionId, QJsonValue(record.sessionId));
    return QJsonDocument(event);
}

QJsonDocument StatisticsClient::IdentificationPayload(const QJsonObject& identification) const
{
    QJsonObject user;
    for (const char* key : {"plan", "channel", "email", "start_version"})
        user.insert(QLatin1String(key), identification.value(QLatin1String(key)));
    user.insert(QStringLiteral("screen_resolution"), QJsonArray::fromStringList(GetScreenResolutions()));
    user.insert(QStringLiteral("screen_scaling"), QJsonArray::fromStringList(GetScreenScalings()));
    user.insert(QStringLiteral("system_locale"), QLocale::system().name());
    user.insert(QStringLiteral("system_region"), GetSystemRegion());

    const OVApplication* app = OVApplication::GetInstance();
    return QJsonDocument(QJsonObject{{QStringLiteral("app_version"), AppVersion()},
                                     {kDeviceId, m_deviceId},
                                     {QStringLiteral("platform"), PlatformName()},
                                     {QStringLiteral("os_name"), PlatformName()},
                                     {QStringLiteral("os_version"), OVApplication::GetOSVersionString()},
                                     {QStringLiteral("language"), app ? app->GetLanguage() : QString()},
                                     {QStringLiteral("user_properties"), user}});
}
