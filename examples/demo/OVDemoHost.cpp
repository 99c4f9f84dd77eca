#include "OVDemoHost.h"

#include "OVDemoStatistics.h"

#include "OVDemoLook.h"

#include "OVDemoColour.h"

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVBrushToolManager.h"
#include "OVCMSManager.h"
#include "OVImageFileManager.h"
#include "OVImageFileWriter.h"
#include "OVRecentManager.h"
#include "OVToolBarManager.h"
#include "OVToolGroupManager.h"
#include "OVToolWidgetManager.h"

#include "KXDocumentInterface.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMenu>
#include <QRegularExpression>

namespace {

// Each registry's InitInstance, and its ReleaseInstance for shutdown.
struct Registry
{
    void (*init)();
    void (*release)();
};

const Registry kRegistries[] = {
    {&OVImageFileManager::InitInstance, &OVImageFileManager::ReleaseInstance},
    {&OVAdjustmentManager::InitInstance, &OVAdjustmentManager::ReleaseInstance},
    {&OVBrushToolManager::InitInstance, &OVBrushToolManager::ReleaseInstance},
    {&OVMenuManager::InitInstance, &OVMenuManager::ReleaseInstance},
    // Reads its lists from "user.ini" when made and writes them back when released.
    {&OVRecentManager::InitInstance, &OVRecentManager::ReleaseInstance},
    {&OVToolBarManager::InitInstance, &OVToolBarManager::ReleaseInstance},
    {&OVToolWidgetManager::InitInstance, &OVToolWidgetManager::ReleaseInstance},
    {&OVToolGroupManager::InitInstance, &OVToolGroupManager::ReleaseInstance},
};

// The host's top-level menus. They exist before the plug-ins load, so that plug-ins can put
// their entries into them.
struct MenuDefinition
{
    OVMenuManager::MenuRole role;
    const char* title;
};

const MenuDefinition kMenus[] = {
    {OVMenuManager::File, QT_TRANSLATE_NOOP("OVDemoHost", "&File")},
    {OVMenuManager::Edit, QT_TRANSLATE_NOOP("OVDemoHost", "&Edit")},
    {OVMenuManager::Image, QT_TRANSLATE_NOOP("OVDemoHost", "&Image")},
    {OVMenuManager::Filter, QT_TRANSLATE_NOOP("OVDemoHost", "Fil&ter")},
    {OVMenuManager::View, QT_TRANSLATE_NOOP("OVDemoHost", "&View")},
    {OVMenuManager::Help, QT_TRANSLATE_NOOP("OVDemoHost", "&Help")},
};

// The document the save hook writes: a flattened image and where it goes.
class OVDemoDocument : public KXDocumentInterface
{
public:
    OVDemoDocument(const QImage& image, const QString& path)
        : m_image(image)
        , m_path(path)
    {}

    QString GetFilePath() const override { return m_path; }
    void SetFilePath(const QString& path) override { m_path = path; }
    QImage GetImage() const override { return m_image; }
    bool IsModified() const override { return m_modified; }
    void SetModified(bool modified) override { m_modified = modified; }

private:
    QImage m_image;
    QString m_path;
    bool m_modified = true;
};

} // namespace

OVDemoHost::OVDemoHost(QObject* parent)
    : QObject(parent)
{}

OVDemoHost::~OVDemoHost()
{
    Stop();
}

void OVDemoHost::Start(const QStringList& extraPlugins)
{
    if (m_started)
        return;
    m_started = true;
    for (const Registry& registry : kRegistries)
        registry.init();
    OVDemoColour::InitInstance();

    for (const MenuDefinition& definition : kMenus) {
        QMenu* menu = OVMenuManager::CreateMenu(definition.role, QString());
        m_menus[definition.role].reset(menu);
    }
    RetitleMenus();

    OVApplication* app = OVApplication::GetInstance();
    connect(app, &OVApplication::PluginLoading, this, [this](const QString& file) {
        emit Status(tr("Loading %1...").arg(QFileInfo(file).completeBaseName()));
    });
    connect(app, &OVApplication::PluginLoaded, this, [this](const QString& file) { m_loaded << file; });
    connect(app, &OVApplication::PluginLoadingError, this, [this](const QString& file, const QString& error) {
        emit Status(tr("%1 did not load: %2").arg(QFileInfo(file).completeBaseName(), error));
    });
    OVApplication::LoadPlugins();
    // A plug-in under development, tried without copying it into the installation.
    if (!extraPlugins.isEmpty())
        OVApplication::LoadPlugins(extraPlugins);

    OVImageFileManager::InitReadersPool();
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    files->Register(&OVDemoHost::OpenHook, this);
    files->Register(&OVDemoHost::SaveHook, this);
    OVDemoLook::Load();
    RetitleMenus();
}

void OVDemoHost::UIReady()
{
    OVApplication::UIReady();
    OVDemoStatistics::Started();
}

void OVDemoHost::Stop()
{
    if (!m_started)
        return;
    m_started = false;
    if (OVImageFileManager* files = OVImageFileManager::GetInstance()) {
        files->Register(OVImageFileManager::OpenHook(nullptr), nullptr);
        files->Register(OVImageFileManager::SaveHook(nullptr), nullptr);
    }
    OVImageFileManager::ReleaseReadersPool();
    // Plug-ins write what they still hold before they go.
    OVApplication::FlushData();
    OVApplication::UnloadPlugins();
    for (const Registry& registry : kRegistries)
        registry.release();
    OVCMSManager::ReleaseInstance();
    m_menus.clear();
}

QMenu* OVDemoHost::Menu(OVMenuManager::MenuRole role) const
{
    const auto found = m_menus.find(role);
    return found == m_menus.end() ? nullptr : found->second.get();
}

QStringList OVDemoHost::FailedPlugins() const
{
    QStringList failed;
    for (const QString& file : OVApplication::GetErrorPlugins())
        failed << file + QStringLiteral(": ") + OVApplication::GetErrorInfo(file);
    return failed;
}

QString OVDemoHost::PluginSummary() const
{
    QStringList names;
    for (const QString& file : m_loaded)
        names << QFileInfo(file).completeBaseName();
    return tr("Plug-ins: %1 loaded (%2), %3 failed")
        .arg(m_loaded.size())
        .arg(names.join(QStringLiteral(", ")))
        .arg(FailedPlugins().size());
}

bool OVDemoHost::ParseAdjustment(const QString& text, OVDemoAdjustment* adjustment, QString* error)
{
    // "name", "name:key=value,...", or "key=value,..."
    const int colon = text.indexOf(QLatin1Char(':'));
    const bool bare = colon < 0 && !text.contains(QLatin1Char('='));
    const QString named = colon >= 0 ? text.left(colon).trimmed() : bare ? text.trimmed() : QString();
    QVariantMap values;
    for (const QString& setting : (bare ? QString() : text.mid(colon + 1)).split(QLatin1Char(','))) {
        const QString key = setting.section(QLatin1Char('='), 0, 0).trimmed();
        bool numeric = false;
        values.insert(key, setting.section(QLatin1Char('='), 1).trimmed().toInt(&numeric));
        if (!numeric && !key.isEmpty()) {
            *error = tr("The value of \"%1\" is not a whole number.").arg(key);
            return false;
        }
    }
    values.remove(QString());

    // Names match without case, spaces or punctuation: "greyscale" is "Grey-scale".
    const auto simple = [](const QString& name) {
        return name.toLower().remove(QRegularExpression(QStringLiteral("[\\W_]")));
    };
    const auto declares = [](const OVAdjustment* candidate, const QString& key) {
        for (const OVAdjustmentParameter& parameter : candidate->GetParameters())
            if (parameter.name == key)
                return true;
        return false;
    };
    const OVAdjustment* found = nullptr;
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    for (const QString& id : registry ? registry->GetRegistered() : QStringList()) {
        const OVAdjustment* candidate = registry->GetAdjustment(id);
        if (candidate && (named.isEmpty() ? !values.isEmpty() && declares(candidate, values.firstKey())
                                          : id == named || simple(candidate->GetName()) == simple(named))) {
            found = candidate;
            break;
        }
    }
    if (!found) {
        *error = (named.isEmpty()
                      ? tr("No adjustment takes \"%1\".").arg(values.isEmpty() ? text : values.firstKey())
                      : tr("No adjustment is named \"%1\".").arg(named)) +
                 QLatin1Char('\n') + DescribeAdjustments();
        return false;
    }

    adjustment->uid = found->GetUID();
    adjustment->parameters.clear();
    for (const OVAdjustmentParameter& parameter : found->GetParameters()) {
        const int value =
            values.contains(parameter.name) ? values.take(parameter.name).toInt() : parameter.defaultValue;
        if (value < parameter.minimum || value > parameter.maximum) {
            *error = tr("\"%1\" takes %2 to %3.")
                         .arg(parameter.name)
                         .arg(parameter.minimum)
                         .arg(parameter.maximum);
            return false;
        }
        adjustment->parameters.insert(parameter.name, value);
    }
    if (!values.isEmpty()) {
        *error = tr("%1 takes no \"%2\".").arg(found->GetName(), values.firstKey()) + QLatin1Char('\n') +
                 DescribeAdjustments();
        return false;
    }
    return true;
}

QString OVDemoHost::DescribeAdjustments()
{
    QStringList lines{tr("Adjustments (--adjust NAME, NAME:PARAMETER=VALUE,... or PARAMETER=VALUE,...):")};
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    for (const QString& id : registry ? registry->GetRegistered() : QStringList()) {
        const OVAdjustment* adjustment = registry->GetAdjustment(id);
        if (!adjustment)
            continue;
        lines << QStringLiteral("  %1  %2").arg(adjustment->GetName(), id);
        for (const OVAdjustmentParameter& parameter : adjustment->GetParameters())
            lines << QStringLiteral("      ") + tr("%1: %2 to %3, default %4")
                                                    .arg(parameter.name)
                                                    .arg(parameter.minimum)
                                                    .arg(parameter.maximum)
                                                    .arg(parameter.defaultValue);
    }
    return lines.join(QLatin1Char('\n'));
}

QImage OVDemoHost::Apply(const QImage& image, const QList<OVDemoAdjustment>& steps)
{
    QImage result = image;
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    for (const OVDemoAdjustment& step : steps) {
        if (const OVAdjustment* adjustment = registry ? registry->GetAdjustment(step.uid) : nullptr)
            result = adjustment->Apply(result, step.parameters);
    }
    return result;
}

bool OVDemoHost::Write(const QImage& image, const QString& path, QString* error)
{
    OVDemoDocument document(image, path);
    m_saveError.clear();
    const bool saved =
        OVImageFileManager::GetInstance() && OVImageFileManager::GetInstance()->Save(&document);
    if (!saved && error)
        *error = m_saveError.isEmpty() ? tr("The image could not be saved.") : m_saveError;
    return saved;
}

bool OVDemoHost::OpenHook(const QString& path, bool*, void* data)
{
    emit static_cast<OVDemoHost*>(data)->OpenRequested(path);
    return true;
}

bool OVDemoHost::SaveHook(KXDocumentInterface* document, void* data)
{
    OVDemoHost* host = static_cast<OVDemoHost*>(data);
    const QString path = document->GetFilePath();
    const QString format = QFileInfo(path).suffix().toLower();
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    OVImageFileWriter* writer = files->CreateWriter(format);
    if (!writer) {
        host->m_saveError = tr("No writer for the format \"%1\".").arg(format);
        return false;
    }
    const bool written = writer->Write(path, document->GetImage());
    if (!written)
        host->m_saveError = writer->GetErrorString();
    files->ReleaseWriter(writer);
    if (written)
        document->SetModified(false);
    return written;
}

void OVDemoHost::RetitleMenus()
{
    for (const MenuDefinition& definition : kMenus) {
        if (QMenu* menu = Menu(definition.role))
            menu->setTitle(tr(definition.title));
    }
}
