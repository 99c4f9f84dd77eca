#include <OVImageFilePlugin.h>
#include <OVImageFileReader.h>
#include <OVImageFileWriter.h>
#include <OVPluginContainer.h>

class ConsumerImagePlugin : public OVImageFilePlugin
{
    Q_OBJECT
public:
    QString GetUID() const override { return QStringLiteral("{consumer-plugin}"); }
    QStringList GetReaderUIDs() const override { return {}; }
    QStringList GetWriterUIDs() const override { return {}; }
    QStringList GetFormats() const override { return {QStringLiteral("raw")}; }
    FormatCapabilities GetFormatCapabilities(const QString&) const override { return CanRead; }
    OVImageFileReader* CreateReader(const QString&) override { return nullptr; }
    OVImageFileReader* CreateReaderByUID(const QString&) override { return nullptr; }
    OVImageFileWriter* CreateWriter(const QString&) override { return nullptr; }
    OVImageFileWriter* CreateWriterByUID(const QString&) override { return nullptr; }
    void ReleaseReader(OVImageFileReader*) override {}
    void ReleaseWriter(OVImageFileWriter*) override {}
};

class ConsumerContainer : public QObject, public OVPluginContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    void Initialize() override {}
    void Release() override {}
    void UIReady() override {}
    void GetPlugins(QList<OVPlugin*>& plugins) override { plugins << &m_plugin; }

private:
    ConsumerImagePlugin m_plugin;
};

#include "plugin.moc"
