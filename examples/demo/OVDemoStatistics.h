#pragma once

#include <QString>

#include <map>
#include <memory>

class OVEndpointMessanger;
class QMenu;
class QWidget;

// The demo's usage statistics: the installation identifies itself once, then every start,
// open, adjustment and export is an event, all unless the user opted out. The events go to
// the collector that the demo's ":core" names.
namespace OVDemoStatistics {

enum Event
{
    Start = 1,
    Open = 2,
    Adjust = 3,
    Export = 4
};

// The opt-out, kept in "user.ini" under "Demo/SendStatistics" (default on).
bool IsEnabled();
void SetEnabled(bool enabled);
// Sends the identification once per profile, then the start event.
void Started();
void Send(Event event, std::map<QString, QString> properties = {});

// Help > Send Usage Statistics (the opt-out) and Help > Send Feedback, which posts a JSON
// message through messenger to the collector and shows the reply in window.
void AddMenuEntries(int statisticsId, int feedbackId, QWidget* window, OVEndpointMessanger& messenger);

} // namespace OVDemoStatistics
