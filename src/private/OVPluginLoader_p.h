#pragma once

#include "OVApplication.h"

#include <QStringList>

#include <vector>

class QFileInfo;
class OVApplicationPrivate;
class OVPlugin;

// Finds, loads and unloads the editor's plug-in libraries for the application object, and
// keeps its plug-in records.
class OVPluginLoader
{
public:
    explicit OVPluginLoader(OVApplicationPrivate& app);

    // The file suffix of plug-in libraries on this platform, without the dot.
    static QString Suffix();

    // Gathers the libraries of the brush folder (when brushes is set) and those of the general
    // folder (only the well-known ones of *wellKnownOnly when it is given), then loads them and
    // announces the end. Gives up silently, apart from its log line, when the general folder
    // is missing.
    void LoadFolders(bool brushes, const OVApplication::PluginsLoadTypes* wellKnownOnly);
    void Load(const QStringList& files);
    void UnloadAll();
    void Unload(const QStringList& files);
    // Tells the containers of the loaded libraries that the user interface is ready.
    void UIReady() const;

    // The libraries that did not load, in attempt order, and the error of one of them.
    std::vector<QString> ErrorFiles() const;
    QString ErrorInfo(const QString& fileName) const;

    // The installed path of each well-known library of one flag (an empty string for one that
    // does not exist).
    QStringList WellKnownFiles(OVApplication::PluginsLoadType type) const;
    // Whether a library of the general folder is one of the well-known ones of flags.
    static bool IsWellKnown(const QFileInfo& file, OVApplication::PluginsLoadTypes flags);

private:
    struct Folders
    {
        QString brush;
        QString general;
    };
    Folders ReadFolders() const;
    static QStringList Libraries(const QString& folder);
    void LoadOne(const QString& file);
    void UnloadLibrary(size_t index);
    // Enters a loaded plug-in object where the host finds it (the image file registry, the
    // brush factory), or takes it out again.
    static void Route(OVPlugin* plugin, bool enter);

    OVApplicationPrivate& m_app;
};
