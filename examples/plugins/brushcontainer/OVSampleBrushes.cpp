// The sample "brushcontainer" library of the brush folder: one brush plug-in that is also the
// editor's brush factory, entered into the brush registry as its main brush plug-in.

#include "OVSampleContainer.h"

#include "IBrushFactory.h"
#include "OVBrushPlugin.h"
#include "OVBrushToolManager.h"

namespace {

const char* const kBrushNames[] = {"round", "square", "soft"};

class OVSampleBrushes : public OVBrushPlugin, public IBrushFactory
{
    Q_OBJECT
public:
    QString GetName() const override { return tr("Basic brushes"); }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QLatin1String(BrushFactoryUID); }

    QStringList GetBrushNames() const override
    {
        QStringList names;
        for (const char* name : kBrushNames)
            names << QLatin1String(name);
        return names;
    }

    // A brush is a plain object named after its tip; painting tools read its properties.
    QObject* CreateBrush(const QString& name) override
    {
        if (!GetBrushNames().contains(name))
            return nullptr;
        QObject* brush = new QObject;
        brush->setObjectName(name);
        brush->setProperty("hardness", name == QLatin1String("soft") ? 0.2 : 1.0);
        return brush;
    }
};

} // namespace

class OVBrushContainer : public OVSampleContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    void Release() override
    {
        if (OVBrushToolManager* registry = OVBrushToolManager::GetInstance())
            registry->Unregister(m_brushes ? m_brushes->GetUID() : QString());
        m_brushes = nullptr;
        OVSampleContainer::Release();
    }

protected:
    void Setup() override
    {
        m_brushes = new OVSampleBrushes;
        AddPlugin(m_brushes);
        if (OVBrushToolManager* registry = OVBrushToolManager::GetInstance()) {
            registry->Register(m_brushes);
            registry->SetMainBrushPlugin(m_brushes);
        }
    }

private:
    OVSampleBrushes* m_brushes = nullptr;
};

#include "OVSampleBrushes.moc"
