// The sample "basictools" library: three tools (hand, zoom, colour picker). Each tool is an
// OVActivateAction in the tool group, with a tool-bar content, a tool-widget content and an
// entry of the Edit menu. The menu entry carries the tool's UID in its "toolUID" property, so
// that the host can put the same action on its tool bar. The tools work on the host's canvas
// through OVSampleCanvasTool: the host hands the tool in effect its presses and drags.

#include "OVSampleCanvas.h"
#include "OVSampleContainer.h"

#include "OVActivateAction.h"
#include "OVApplication.h"
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

#include <cmath>
#include <iterator>

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

// A tool action that works on the canvas it was last shown while it is in effect.
class OVCanvasToolAction : public OVActivateAction, public OVSampleCanvasTool
{
    Q_OBJECT
    Q_INTERFACES(OVSampleCanvasTool)
public:
    OVCanvasToolAction()
    {
        connect(this, &OVActivateAction::ImplicitToggled, this, [this](bool checked) {
            if (!checked)
                Show(nullptr);
        });
    }

    void Press(OVSampleCanvas&, const QPointF&, Qt::KeyboardModifiers) override {}
    void Drag(OVSampleCanvas&, const QPointF&, Qt::KeyboardModifiers) override {}
    void Show(OVSampleCanvas* canvas) override { m_canvas = canvas; }

protected:
    OVSampleCanvas* m_canvas = nullptr;
};

// Keeps the image point taken at the press under the cursor while the mouse drags.
class OVHandTool : public OVCanvasToolAction
{
    Q_OBJECT
public:
    void Press(OVSampleCanvas&, const QPointF& point, Qt::KeyboardModifiers) override { m_grip = point; }
    void Drag(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers) override
    {
        canvas.ScrollBy(m_grip - point);
    }

private:
    QPointF m_grip;
};

// A click zooms in one step at the clicked point, an Alt-click out; the tool-bar box shows the
// zoom in percent and sets it about the middle of the view.
class OVZoomTool : public OVCanvasToolAction
{
    Q_OBJECT
public:
    void SetBox(QSpinBox* box)
    {
        m_box = box;
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int percent) {
            if (m_canvas)
                m_canvas->SetZoom(percent / 100.0, m_canvas->Centre());
        });
    }

    void Press(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers modifiers) override
    {
        canvas.SetZoom(Step(canvas.Zoom(), !(modifiers & Qt::AltModifier)), point);
    }
    void Show(OVSampleCanvas* canvas) override
    {
        m_canvas = canvas;
        if (m_box && canvas) {
            const QSignalBlocker blocker(m_box);
            m_box->setValue(qRound(canvas->Zoom() * 100));
        }
    }

    // The next zoom level above or below zoom.
    static double Step(double zoom, bool in)
    {
        static const double levels[] = {0.01, 0.02,   0.03, 0.05,   0.0667, 0.0833, 0.125, 0.1667,
                                        0.25, 0.3333, 0.5,  0.6667, 1,      1.5,    2,     3,
                                        4,    6,      8,    12,     16,     24,     32};
        if (in) {
            for (double level : levels)
                if (level > zoom * 1.001)
                    return level;
            return levels[std::size(levels) - 1];
        }
        for (auto it = std::rbegin(levels); it != std::rend(levels); ++it)
            if (*it < zoom / 1.001)
                return *it;
        return levels[0];
    }

private:
    QSpinBox* m_box = nullptr;
};

// Takes the colour at the clicked pixel, or the mean of the square around it, as the foreground
// and the recent picker colour.
class OVPickerTool : public OVCanvasToolAction
{
    Q_OBJECT
public:
    void SetSampleBox(QComboBox* box) { m_sample = box; }

    void Press(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers) override
    {
        const QImage& image = canvas.Image();
        const int x = int(std::floor(point.x()));
        const int y = int(std::floor(point.y()));
        if (!image.valid(x, y))
            return;
        const int radius = m_sample ? m_sample->currentIndex() : 0;
        int sum[4] = {0, 0, 0, 0};
        int n = 0;
        for (int j = qMax(0, y - radius); j <= qMin(image.height() - 1, y + radius); ++j) {
            for (int i = qMax(0, x - radius); i <= qMin(image.width() - 1, x + radius); ++i) {
                const QRgb p = image.pixel(i, j);
                sum[0] += qRed(p);
                sum[1] += qGreen(p);
                sum[2] += qBlue(p);
                sum[3] += qAlpha(p);
                ++n;
            }
        }
        const QColor colour(qRound(sum[0] / double(n)), qRound(sum[1] / double(n)),
                            qRound(sum[2] / double(n)), qRound(sum[3] / double(n)));
        OVApplication::SetForeground(colour);
        if (OVApplication* app = OVApplication::GetInstance())
            app->SetRecentPicker(colour);
    }
    void Drag(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers modifiers) override
    {
        Press(canvas, point, modifiers);
    }

private:
    QComboBox* m_sample = nullptr;
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

        OVCanvasToolAction* tool = nullptr;
        if (uid == QLatin1String("tool.hand"))
            tool = new OVHandTool;
        else if (uid == QLatin1String("tool.zoom"))
            tool = new OVZoomTool;
        else
            tool = new OVPickerTool;
        tool->setObjectName(uid);
        Own(tool);
        m_tools << tool;
        OVToolGroupManager::Add(tool, uid);

        QWidget* bar = ToolBarContent(tool, uid, name);
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
    QWidget* ToolBarContent(OVCanvasToolAction* tool, const QString& uid, const QString& name)
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
            zoom->setKeyboardTracking(false);
            static_cast<OVZoomTool*>(tool)->SetBox(zoom);
            layout->addWidget(zoom);
        } else if (uid == QLatin1String("tool.picker")) {
            QComboBox* sample = new QComboBox(bar);
            sample->addItems({tr("Point sample"), tr("3 by 3 average"), tr("5 by 5 average")});
            static_cast<OVPickerTool*>(tool)->SetSampleBox(sample);
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
