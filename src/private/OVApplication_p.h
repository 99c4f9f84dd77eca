#pragma once

#include "private/OVSettingsStore_p.h"

#include <QColor>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <vector>

class QAction;
class QPluginLoader;
class IBrushFactory;
class OVApplication;
class OVColorWidget;
class OVScreenTracker;
class StatisticsClient;

// One attempt to load a plug-in library, kept in attempt order.
struct PluginRecord
{
    enum PluginStatus
    {
        Pending = 1,
        Failed = 2,
        Loaded = 3,
        Missing = 7
    };

    int status = Pending;
    QString fileName;
    QString error;
    int loadMs = 0;
    QPluginLoader* loader = nullptr; // owned; set only while the plug-in is loaded
};

class OVApplicationPrivate
{
public:
    explicit OVApplicationPrivate(OVApplication* owner);
    ~OVApplicationPrivate();

    OVApplicationPrivate(const OVApplicationPrivate&) = delete;
    OVApplicationPrivate& operator=(const OVApplicationPrivate&) = delete;

    // The start-up sequence; runs once the public object can be found through GetInstance().
    void Start();

    // The private object of the live application, or null without one.
    static OVApplicationPrivate* Instance();

    // The process-wide brush factory, provided by a plug-in (not owned).
    static IBrushFactory* BrushFactory();
    static void SetBrushFactory(IBrushFactory* factory);

    // The statistics client to queue on, or null without an application object or while
    // statistics are off.
    static StatisticsClient* EventsClient();
    static StatisticsClient* IdentificationClient();

    OVApplication* const owner;
    OVSettingsStore settings;
    QString translationsDir;
    QStringList languages;
    QString language;
    QMap<QString, QString> languageNames;
    int theme = 0;
    std::vector<PluginRecord> plugins;
    QStringList patterns;
    QAction* refineSelection = nullptr;
    QColor recentColor;
    QColor recentPicker;
    OVColorWidget* colorWidget = nullptr;
    // The user's statistics choice, read from "user.ini" at start-up; the senders may read it
    // from any thread.
    std::atomic<bool> statisticsEnabled{true};
    StatisticsClient* statisticsClient = nullptr; // owned: the events client
    StatisticsClient* configuredClient = nullptr; // owned: the identification client
    // Owned: keeps the copy of the screen lists that the identification client reads current.
    OVScreenTracker* screenTracker = nullptr;
};
