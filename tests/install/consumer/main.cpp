#include <OVApplication.h>
#include <OVCMSProfile.h>
#include <OVImageFilePlugin.h>
#include <OVPixelRatioRound.h>
#include <OVPluginContainer.h>

#include <QDir>
#include <QPluginLoader>

#include <cstdio>

// Usage: consumer <folder holding the plug-in library>
int main(int argc, char** argv)
{
    OVApplication app(argc, argv);
    if (OVApplication::GetInstance() != &app || argc < 2)
        return 1;

    OVApplication::SetUserValue(QStringLiteral("Consumer/Value"), 7);
    if (OVApplication::GetUserValue(QStringLiteral("Consumer/Value")).toInt() != 7)
        return 2;
    if (OVCMSProfile().IsValid() || OVPixelRatioRound::GetPixelRatio() <= 0)
        return 3;

    // The plug-in built against the installed headers loads and offers its image plug-in.
    QDir folder(QString::fromLocal8Bit(argv[1]));
    const QStringList libraries = folder.entryList({QStringLiteral("*consumerplugin*")}, QDir::Files);
    if (libraries.isEmpty())
        return 4;
    QPluginLoader loader(folder.absoluteFilePath(libraries.first()));
    auto* container = qobject_cast<OVPluginContainer*>(loader.instance());
    if (!container)
        return 5;
    QList<OVPlugin*> plugins;
    container->GetPlugins(plugins);
    auto* image = plugins.isEmpty() ? nullptr : qobject_cast<OVImageFilePlugin*>(plugins.first());
    if (!image || image->GetType() != OVPlugin::ImageFileType || image->GetFormats() != QStringList{"raw"})
        return 6;

    std::printf("consumer: user data folder %s\n", qPrintable(OVApplication::GetUserDataFolder()));
    return 0;
}
