#include "private/OVPluginLoader_p.h"

#include "IBrushFactory.h"
#include "OVImageFileManager.h"
#include "OVImageFilePlugin.h"
#include "OVPlugin.h"
#include "OVPluginContainer.h"
#include "private/OVApplication_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVSettingsFile_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>

namespace {

const QString kPluginOK = QStringLiteral("Plugin OK.");

struct WellKnown
{
    OVApplication::PluginsLoadType flag;
    const char* name;
};

// The well-known libraries; the brush folder's one is named for PluginFileName() only, since
// every library of that folder is a brush library.
const WellKnown kWellKnown[] = {
    {OVApplication::Adjustments, "adjustments"}, {OVApplication::Filters, "filter"},
    {OVApplication::ImageIO, "imageio"},         {OVApplication::Brushes, "brushcontainer"},
    {OVApplication::Tools, "basictools"},        {OVApplication::Tools, "generaltools"},
};

OVPluginContainer* ContainerOf(QPluginLoader* loader)
{
    return loader ? qobject_cast<OVPluginContainer*>(loader->instance()) : nullptr;
}

QList<OVPlugin*> PluginsOf(OVPluginContainer* container)
{
    QList<OVPlugin*> plugins;
    container->GetPlugins(plugins);
    return plugins;
}

// The text after "key=" in the general section of an INI file, as written there.
QString RawIniValue(const QString& path, const QString& key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    bool general = true;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            general = line.compare(QLatin1String("[General]"), Qt::CaseInsensitive) == 0;
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (general && equals > 0 && line.left(equals).trimmed() == key)
            return line.mid(equals + 1).trimmed();
    }
    return QString();
}

} // namespace

OVPluginLoader::OVPluginLoader(OVApplicationPrivate& app)
    : m_app(app)
{}

QString OVPluginLoader::Suffix()
{
#ifdef Q_OS_WIN
    return QStringLiteral("dll");
#else
    return QStringLiteral("so");
#endif
}

OVPluginLoader::Folders OVPluginLoader::ReadFolders() const
{
    const QString path = OVApplication::GetResourcePath() + QStringLiteral("/plugins.ini");
    OVSettingsFile ini(path, OVSettingsFile::ReadInstalled);
    // QSettings takes an unquoted value with a comma ("my plugins, v2") for a list, which
    // names no folder; such a value is read as the text it is.
    const auto folder = [&](const QString& key) {
        const QVariant value = ini ? ini->value(key) : QVariant();
        return value.type() == QVariant::StringList ? RawIniValue(path, key) : value.toString();
    };
    return {folder(QStringLiteral("brush")), folder(QStringLiteral("general"))};
}

QStringList OVPluginLoader::Libraries(const QString& folder)
{
    QStringList files;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& entry : entries)
        if (entry.suffix().compare(Suffix(), Qt::CaseInsensitive) == 0)
            files << entry.absoluteFilePath();
    return files;
}

bool OVPluginLoader::IsWellKnown(const QFileInfo& file, OVApplication::PluginsLoadTypes flags)
{
    const QString name = file.baseName();
    for (const WellKnown& known : kWellKnown)
        if (known.flag != OVApplication::Brushes && flags.testFlag(known.flag) &&
            name == QLatin1String(known.name))
            return true;
    return false;
}

void OVPluginLoader::LoadFolders(bool brushes, const OVApplication::PluginsLoadTypes* wellKnownOnly)
{
    const Folders folders = ReadFolders();
    const QString appDir = QCoreApplication::applicationDirPath();
    QStringList files;

    if (brushes) {
        QDir brush(appDir);
        if (brush.cd(folders.brush))
            files << Libraries(brush.absolutePath());
        else
            OV_BUILD_LOG(QStringLiteral("Brush folder is missing"));
    }

    QDir general(appDir);
    if (!general.cd(folders.general)) {
        OV_BUILD_LOG(QStringLiteral("The plugins folder does not exist"));
        return;
    }
    for (const QString& file : Libraries(general.absolutePath()))
        if (!wellKnownOnly || IsWellKnown(QFileInfo(file), *wellKnownOnly))
            files << file;

    Load(files);
    emit m_app.owner->PluginsLoadingFinished();
}

void OVPluginLoader::Load(const QStringList& files)
{
    for (const QString& file : files)
        LoadOne(file);
}

void OVPluginLoader::LoadOne(const QString& file)
{
    OVApplication* app = m_app.owner;
    emit app->PluginLoading(file);
    QCoreApplication::processEvents();

    PluginRecord record;
    record.fileName = file;
    record.error = kPluginOK;
    QElapsedTimer timer;
    timer.start();

    if (!QFileInfo::exists(file)) {
        record.status = PluginRecord::Missing;
        record.error = QStringLiteral("Missing file");
    } else {
        // Parented to the application, so that a loader given up with deleteLater() is freed
        // at the latest with the application even when no event loop runs.
        auto* loader = new QPluginLoader(file, app);
        QObject* root = loader->instance();
        auto* container = qobject_cast<OVPluginContainer*>(root);
        if (!root) {
            record.status = PluginRecord::Failed;
            record.error = loader->errorString();
            delete loader;
        } else if (!container) {
            record.status = PluginRecord::Failed;
            record.error = QStringLiteral("Is not an Orvelin's plugin.");
            loader->unload();
            loader->deleteLater();
        } else {
            container->Initialize();
            const QList<OVPlugin*> plugins = PluginsOf(container);
            if (plugins.isEmpty()) {
                record.status = PluginRecord::Failed;
                record.error = QStringLiteral("Empty container.");
                loader->unload();
                loader->deleteLater();
            } else {
                for (OVPlugin* plugin : plugins)
                    Route(plugin, true);
                record.status = PluginRecord::Loaded;
                record.loader = loader;
            }
        }
    }

    record.loadMs = int(timer.elapsed());
    const bool loaded = record.loader != nullptr;
    const QString error = record.error;
    const QString seconds = QString::number(record.loadMs / 1000.0, 'g', 6);
    m_app.plugins.push_back(record);

    if (loaded) {
        OV_BUILD_LOG(
            QStringLiteral("Plugin: \"%1\" loaded successfully. Loading time is %2 sec.").arg(file, seconds));
        emit app->PluginLoaded(file);
    } else {
        OV_BUILD_LOG(
            QStringLiteral("Plugin: \"%1\" loading error. Loading time is %2 sec. Error message is \"%3\".")
                .arg(file, seconds, error));
        emit app->PluginLoadingError(file, error);
    }
    QCoreApplication::processEvents();
}

void OVPluginLoader::Route(OVPlugin* plugin, bool enter)
{
    if (!plugin)
        return;
    if (plugin->GetType() == OVPlugin::ImageFileType) {
        OVImageFileManager* registry = OVImageFileManager::GetInstance();
        auto* imagePlugin = qobject_cast<OVImageFilePlugin*>(plugin);
        if (registry && imagePlugin)
            enter ? registry->Register(imagePlugin) : registry->Unregister(imagePlugin);
    } else if (plugin->GetUID() == QLatin1String(OVPlugin::BrushFactoryUID)) {
        // A later brush plug-in replaces an earlier one, even one that claims the brush
        // factory's identifier without being a factory: the process is then left without one.
        OVApplicationPrivate::SetBrushFactory(enter ? dynamic_cast<IBrushFactory*>(plugin) : nullptr);
    }
}

void OVPluginLoader::UnloadAll()
{
    for (size_t i = m_app.plugins.size(); i-- > 0;) {
        if (m_app.plugins[i].status != PluginRecord::Loaded || !m_app.plugins[i].loader)
            continue;
        if (OVPluginContainer* container = ContainerOf(m_app.plugins[i].loader)) {
            for (OVPlugin* plugin : PluginsOf(container))
                Route(plugin, false);
            container->Release();
        }
        UnloadLibrary(i);
    }
}

void OVPluginLoader::Unload(const QStringList& files)
{
    for (size_t i = 0; i < m_app.plugins.size();) {
        if (!files.contains(m_app.plugins[i].fileName)) {
            ++i;
            continue;
        }
        // Only the container hears of it: its plug-ins stay registered until the library's
        // end destroys them.
        if (OVPluginContainer* container = ContainerOf(m_app.plugins[i].loader))
            container->Release();
        UnloadLibrary(i);
        m_app.plugins.erase(m_app.plugins.begin() + std::ptrdiff_t(i));
    }
}

void OVPluginLoader::UIReady() const
{
    // Last loaded first, so that a plug-in finds the plug-ins it was loaded after still
    // unaware of the user interface, as they were when it was loaded.
    for (auto it = m_app.plugins.rbegin(); it != m_app.plugins.rend(); ++it)
        if (it->status == PluginRecord::Loaded)
            if (OVPluginContainer* container = ContainerOf(it->loader))
                container->UIReady();
}

std::vector<QString> OVPluginLoader::ErrorFiles() const
{
    std::vector<QString> files;
    for (const PluginRecord& record : m_app.plugins)
        if (record.status != PluginRecord::Loaded)
            files.push_back(record.fileName);
    return files;
}

QString OVPluginLoader::ErrorInfo(const QString& fileName) const
{
    for (const PluginRecord& record : m_app.plugins)
        if (record.fileName == fileName)
            return record.error;
    return QStringLiteral("Errors not found");
}

void OVPluginLoader::UnloadLibrary(size_t index)
{
    PluginRecord& record = m_app.plugins[index];
    if (!record.loader)
        return;
    if (record.loader->unload())
        OV_BUILD_LOG(QStringLiteral("Plugin: \"%1\" is unloaded successfully.").arg(record.fileName));
    else
        OV_BUILD_LOG(QStringLiteral("Plugin: \"%1\" unloading error.").arg(record.fileName));
    delete record.loader;
    record.loader = nullptr;
}

QStringList OVPluginLoader::WellKnownFiles(OVApplication::PluginsLoadType type) const
{
    const Folders folders = ReadFolders();
    const QString folder = type == OVApplication::Brushes ? folders.brush : folders.general;
    // A folder given as an absolute path stands for itself, as LoadPlugins() finds it; a
    // relative one is taken from the application folder. Kept so on purpose, so that the
    // path named is the library that is loaded.
    const QString base = QDir::isAbsolutePath(folder)
                             ? folder
                             : QCoreApplication::applicationDirPath() + QStringLiteral("/%1").arg(folder);
    QStringList files;
    for (const WellKnown& known : kWellKnown)
        if (known.flag == type)
            files << QFileInfo(base + QStringLiteral("/%1.%2").arg(QLatin1String(known.name), Suffix()))
                         .canonicalFilePath();
    return files;
}
