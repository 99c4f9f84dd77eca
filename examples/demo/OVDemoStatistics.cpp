#include "OVDemoStatistics.h"

#include "OVDemoCoreConfig.h"

#include "OVApplication.h"
#include "OVEndpointMessanger.h"
#include "OVMenuManager.h"

#include <QAction>
#include <QCoreApplication>
#include <QInputDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>

namespace {

const QString kIdentifiedKey = QStringLiteral("Demo/Identified");

const char* EventName(OVDemoStatistics::Event event)
{
    switch (event) {
    case OVDemoStatistics::Start:
        return "start";
    case OVDemoStatistics::Open:
        return "open";
    case OVDemoStatistics::Adjust:
        return "adjust";
    case OVDemoStatistics::Export:
        return "export";
    }
    return "unknown";
}

QString Tr(const char* text)
{
    return QCoreApplication::translate("OVDemoStatistics", text);
}

} // namespace

namespace OVDemoStatistics {

void Started()
{
    if (!OVApplication::IsStatisticsEnabled())
        return;
    if (!OVApplication::GetUserValue(kIdentifiedKey, false).toBool()) {
        OVApplication::SendIdentificationEvent(QStringLiteral("demo"), QStringLiteral("examples"), QString(),
                                               QCoreApplication::applicationVersion());
        OVApplication::SetUserValue(kIdentifiedKey, true);
    }
    Send(Start);
}

void Send(Event event, std::map<QString, QString> properties)
{
    if (OVApplication::IsStatisticsEnabled())
        OVApplication::SendStatisticsEvent(QLatin1String(EventName(event)), int(event),
                                           std::move(properties));
}

unsigned int FeedbackEndpoint(OVEndpointMessanger& messenger)
{
    return messenger.RegisterEndpoint(OVDemoCoreConfig::CollectorUrl() + QStringLiteral("/feedback"),
                                      QString(), QString(), QStringLiteral("application/json"));
}

void SendFeedback(OVEndpointMessanger& messenger, unsigned int endpoint, const QString& text,
                  QObject* context, std::function<void(const QString&)> done)
{
    const QJsonDocument message(
        QJsonObject{{QStringLiteral("feedback"), text},
                    {QStringLiteral("language"), OVApplication::GetInstance()->GetLanguage()}});
    // The reply arrives on the messenger's worker thread and is handed to the context's thread.
    messenger.PostMessage(endpoint, message, [context, done](const QByteArray& reply) {
        QMetaObject::invokeMethod(
            context,
            [done, reply] {
                done(reply.isEmpty() ? Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "No reply from %1."))
                                           .arg(OVDemoCoreConfig::CollectorUrl())
                                     : QString::fromUtf8(reply));
            },
            Qt::QueuedConnection);
    });
}

void AddMenuEntries(int statisticsId, int feedbackId, QWidget* window, OVEndpointMessanger& messenger)
{
    if (QAction* toggle = OVMenuManager::CreateAction(OVMenuManager::Help, statisticsId)) {
        toggle->setText(Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "Send Usage &Statistics")));
        toggle->setCheckable(true);
        toggle->setChecked(OVApplication::IsStatisticsEnabled());
        QObject::connect(toggle, &QAction::toggled, toggle, &OVApplication::SetStatisticsEnabled);
    }
    QAction* feedback = OVMenuManager::CreateAction(OVMenuManager::Help, feedbackId);
    if (!feedback)
        return;
    feedback->setText(Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "Send &Feedback...")));
    const unsigned int endpoint = FeedbackEndpoint(messenger);
    QObject::connect(feedback, &QAction::triggered, window, [window, &messenger, endpoint] {
        bool ok = false;
        const QString text = QInputDialog::getMultiLineText(
            window, Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "Send Feedback")),
            Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "What would you like to tell us?")), QString(), &ok);
        if (!ok || text.trimmed().isEmpty())
            return;
        // The messenger goes before the window, so no reply can arrive for a window that is gone.
        SendFeedback(messenger, endpoint, text, window, [window](const QString& reply) {
            QMessageBox::information(window, Tr(QT_TRANSLATE_NOOP("OVDemoStatistics", "Feedback")), reply);
        });
    });
}

} // namespace OVDemoStatistics
