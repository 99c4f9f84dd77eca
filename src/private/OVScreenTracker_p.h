#pragma once

#include <QObject>

class QScreen;

// Follows the toolkit's screens on the GUI thread and keeps the statistics' copy of the screen
// lists current (SetToolkitScreens): when a screen is added or removed, when the primary screen
// changes, and when a screen's geometry or scale changes. The identification payload is put
// together on a worker thread, which reads that copy and never the toolkit's screens, since
// those may be added and removed on the GUI thread meanwhile.
class OVScreenTracker : public QObject
{
    Q_OBJECT

public:
    // Copies the running application's screens and follows them; create it on the GUI thread.
    OVScreenTracker();
    // Empties the copy.
    ~OVScreenTracker() override;

private slots:
    void OnScreenAdded(QScreen* screen);
    void OnScreensChanged();

private:
    void Follow(QScreen* screen);
};
