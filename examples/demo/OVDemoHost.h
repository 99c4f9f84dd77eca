#pragma once

#include "OVMenuManager.h"

#include <QImage>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <memory>

class QMenu;

// One adjustment step asked for by "--adjust" or a menu entry: the UID of a registered
// adjustment and the parameters to apply it with.
struct OVDemoAdjustment
{
    QString uid;
    QVariantMap parameters;
};

// The host side of the editor's life: start-up and shutdown in the editor's order around the
// one application object, the host's top-level menus, the open and save hooks, and the
// registries' adjustments. Both the window and the headless mode run on it.
class OVDemoHost : public QObject
{
    Q_OBJECT
public:
    explicit OVDemoHost(QObject* parent = nullptr);
    ~OVDemoHost() override;

    // Everything after the application object and before the user interface: the registries,
    // the host's menus, the plug-ins (the installation's, then extraPlugins), the readers pool,
    // the hooks, the language and the theme.
    void Start(const QStringList& extraPlugins = QStringList());
    // The last step of start-up, once the user interface is built.
    void UIReady();
    // Shutdown: the readers pool, the plug-ins, the registries. The application object goes last,
    // with main().
    void Stop();

    QMenu* Menu(OVMenuManager::MenuRole role) const;
    QStringList LoadedPlugins() const { return m_loaded; }
    // "file: error" for every plug-in that did not load.
    QStringList FailedPlugins() const;
    QString PluginSummary() const;

    // One step from the command line: "greyscale" (an adjustment's name or UID, with its
    // defaults), "brightness=20,contrast=10" (parameters of the adjustment that declares the
    // first) or "Brightness/Contrast:contrast=10". Names are compared without case and without
    // the characters between words. Parameters not given take their declared defaults.
    static bool ParseAdjustment(const QString& text, OVDemoAdjustment* adjustment, QString* error);
    // The registered adjustments with their UIDs and declared parameters, for the user.
    static QString DescribeAdjustments();
    // Applies the steps in order; safe from worker threads.
    static QImage Apply(const QImage& image, const QList<OVDemoAdjustment>& steps);

    // Writes image through the save hook with the writer for path's suffix.
    bool Write(const QImage& image, const QString& path, QString* error);

signals:
    void Status(const QString& text);
    // The open hook was asked to open path.
    void OpenRequested(const QString& path);

private:
    static bool OpenHook(const QString& path, bool* flag, void* data);
    static bool SaveHook(class KXDocumentInterface* document, void* data);
    void RetitleMenus();

    std::map<OVMenuManager::MenuRole, std::unique_ptr<QMenu>> m_menus;
    QStringList m_loaded;
    QString m_saveError;
    bool m_started = false;
};
