#pragma once

#include <QString>

#include <functional>
#include <map>
#include <memory>

class OVEndpointMessanger;
class QObject;
class QWidget;

// The demo's usage statistics: the installation identifies itself once, then every start,
// open, adjustment and export is an event, all unless the user opted out (the application's
// statistics switch). The events go to the collector that the demo's ":core" names.
namespace OVDemoStatistics {

enum Event
{
    Start = 1,
    Open = 2,
    Adjust = 3,
    Export = 4
};

// Sends the identification once per profile, then the start event.
void Started();
void Send(Event event, std::map<QString, QString> properties = {});

// The collector's feedback endpoint, registered on messenger.
unsigned int FeedbackEndpoint(OVEndpointMessanger& messenger);
// Posts text as a JSON message; done gets the reply (or a note that none came) on context's thread.
void SendFeedback(OVEndpointMessanger& messenger, unsigned int endpoint, const QString& text,
                  QObject* context, std::function<void(const QString&)> done);

// Help > Send Usage Statistics (the opt-out) and Help > Send Feedback, which posts a JSON
// message through messenger to the collector and shows the reply in window.
void AddMenuEntries(int statisticsId, int feedbackId, QWidget* window, OVEndpointMessanger& messenger);

} // namespace OVDemoStatistics
