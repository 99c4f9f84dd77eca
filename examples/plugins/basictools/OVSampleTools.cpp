// The sample "basictools" library: three tools (hand, zoom, colour picker). Each tool is an
// OVActivateAction in the tool group, with a tool-bar content, a tool-widget content and an
// entry of the Edit menu. The menu entry carries the tool's UID in its "toolUID" property, so
// that the host can put the same action on its tool bar.

#include "OVSampleContainer.h"

#include "OVActivateAction.h"
#include "OVPlugin.h"
#include "OVToolBarManager.h"
#include "OVToolGroupManager.h"
#include "OVToolWidgetManager.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

struct ToolDefinition
{
    const char* uid;
    int menuId;
    const char* text;
    const char* shortcut;
    const char* help;
};

const ToolDefinition kTools[] = {
    {"tool.hand", 500, QT_TRANSLATE_NOOP("OVToolsContainer", "Hand"), "H",
     QT_TRANSLATE_NOOP("OVToolsContainer", "Drag the image to scroll it.")},
    {"tool.zoom", 510, QT_TRANSLATE_NOOP("OVToolsContainer", "Zoom"), "Z",
     QT_TRANSLATE_NOOP("OVToolsContainer", "Click to zoom in, Alt-click to zoom out.")},
    {"tool.picker", 520, QT_TRANSLATE_NOOP("OVToolsContainer", "Colour Picker"), "I",
     QT_TRANSLATE_NOOP("OVToolsContainer", "Click to take the foreground colour from the image.")},
};

// The plug-in object of one tool, offered through the container.
class OVSampleTool : public OVPlugin
{
    Q_OBJECT
public:
    explicit OVSampleTool(const ToolDefinition& definition)
        : m_definition(definition)
    {}

    int GetType() const override { return ToolType; }
    QString GetName() const override
    {
        return QCoreApplication::translate("OVToolsContainer", m_definition.text);
    }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QLatin1String(m_definition.uid); }

private:
    const ToolDefinition& m_definition;
};

} // namespace

class OVToolsContainer : public OVSampleContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    // The host's window exists now: the first tool becomes the chosen one.
    void UIReady() override
    {
        OVSampleContainer::UIReady();
        if (!m_tools.isEmpty() && !OVToolGroupManager::GetExplicitAction())
            OVToolGroupManager::Activate(m_tools.first());
    }

protected:
    void Setup() override
    {
        m_tools.clear();
        for (const ToolDefinition& definition : kTools)
            AddTool(definition);
    }

private:
    void AddTool(const ToolDefinition& definition)
    {
        const QString uid = QLatin1String(definition.uid);
        const QString name = tr(definition.text);
        AddPlugin(new OVSampleTool(definition));

        OVActivateAction* tool = new OVActivateAction;
        tool->setObjectName(uid);
        Own(tool);
        m_tools << tool;
        OVToolGroupManager::Add(tool, uid);

        QWidget* bar = ToolBarContent(uid, name);
        Own(bar);
        OVToolBarManager::Add(bar, uid);

        QWidget* panel = new QWidget;
        panel->setWindowTitle(name);
        QVBoxLayout* layout = new QVBoxLayout(panel);
        QLabel* help = new QLabel(tr(definition.help), panel);
        help->setWordWrap(true);
        layout->addWidget(help);
        layout->addStretch();
        Own(panel);
        OVToolWidgetManager::Add(panel, uid);

        QAction* entry = AddMenuEntry(OVMenuManager::Edit, definition.menuId, definition.text);
        if (entry) {
            entry->setCheckable(true);
            entry->setShortcut(QKeySequence(QLatin1String(definition.shortcut)));
            entry->setProperty("toolUID", uid);
            QObject::connect(entry, &QAction::triggered, tool, [tool, entry] {
                OVToolGroupManager::Activate(tool);
                entry->setChecked(tool->IsChecked());
            });
        }
        QObject::connect(tool, &OVActivateAction::Toggled, tool, [entry, bar, panel](bool checked) {
            if (entry)
                entry->setChecked(checked);
            if (checked) {
                OVToolBarManager::Activate(bar);
                OVToolWidgetManager::Activate(panel);
            }
        });
    }

    // The options a tool shows on the tool bar.
    QWidget* ToolBarContent(const QString& uid, const QString& name)
    {
        QWidget* bar = new QWidget;
        bar->setWindowTitle(name);
        QHBoxLayout* layout = new QHBoxLayout(bar);
        layout->setContentsMargins(4, 0, 4, 0);
        layout->addWidget(new QLabel(name + QLatin1Char(':'), bar));
        if (uid == QLatin1String("tool.zoom")) {
            QSpinBox* zoom = new QSpinBox(bar);
            zoom->setRange(1, 3200);
            zoom->setValue(100);
            zoom->setSuffix(QStringLiteral(" %"));
            layout->addWidget(zoom);
        } else if (uid == QLatin1String("tool.picker")) {
            QComboBox* sample = new QComboBox(bar);
            sample->addItems({tr("Point sample"), tr("3 by 3 average"), tr("5 by 5 average")});
            layout->addWidget(sample);
        } else {
            layout->addWidget(new QCheckBox(tr("Scroll all windows"), bar));
        }
        layout->addStretch();
        return bar;
    }

    QList<OVActivateAction*> m_tools;
};

#include "OVSampleTools.moc"
