#pragma once

#include "OVCoreExport.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QFlags>
#include <QString>
#include <QVariant>

#include <map>
#include <vector>

class QAction;
class QEvent;
class QJsonDocument;
class IBrushFactory;
class OVColorWidget;
class OVApplicationPrivate;

// The editor's one application object. The host executable creates it with the process's
// arguments; everything else reaches it through GetInstance(). It owns the settings files, the
// loaded plug-ins and the process-wide preferences. Almost every operation is static: it
// looks up the live instance and does nothing, or returns the given default, without one.
class OVCORE_EXPORT OVApplication : public QApplication
{
    Q_OBJECT
public:
    // Well-known keys of "user.ini"; GetName() maps each to its key.
    enum UseDataRole : int
    {
        Version = 1,
        LanguageIndex = 2,
        ThemePath = 3,
        CMWorkingProfileID = 4,
        CMMissingPolicy = 5,
        CMEqualPolicy = 6,
        CMNotEqualPolicy = 7,
        CMColorSpaceMismatchPolicy = 8,
        ShowPNGCompressionSettings = 9,
        ShowJPGCompressionSettings = 10,
        ShowTIFFCompressionSettings = 11,
        SavePathOpen = 12,
        SavePathExport = 13,
        SaveAsSuffix = 14,
        BatchPathOpen = 15,
        BatchPathInput = 16,
        BatchPathOutput = 17,
        ColorsBackground = 18,
        ColorsForeground = 19,
        ColorsMaskBackground = 20,
        ColorsMaskForeground = 21,
        StartupWindowShow = 22,
        MiscellaneousCheckForUpdate = 23,
        UpdateRemind = 24,
        UpdateRemindDate = 25,
        TexturePatternIndex = 26,
        ApplicationTemporaryPath = 27
    };

    // Which well-known plug-in libraries LoadPlugins(flags) takes.
    enum PluginsLoadType : int
    {
        Adjustments = 1,
        Filters = 2,
        ImageIO = 4,
        Brushes = 8,
        Tools = 16
    };
    Q_DECLARE_FLAGS(PluginsLoadTypes, PluginsLoadType)

    enum ThemeType : int
    {
        Dark = 1,
        Light = 2
    };

    enum OSVersion : int
    {
        Unknown = 0,
        WindowsXP = 1,
        WindowsXPSP1 = 2,
        WindowsXPSP2 = 3,
        WindowsXPSP3 = 4,
        WindowsVista = 5,
        WindowsVistaSP1 = 6,
        WindowsVistaSP2 = 7,
        Windows7 = 8,
        Windows7SP1 = 9,
        Windows8 = 10,
        Windows8Point1 = 11,
        Windows10 = 12
    };

    enum OSType : int
    {
        Workstation = 1,
        Server = 2
    };

    // What to do with an opened image that carries no colour profile.
    enum ColorManagementMissingPolicy : int
    {
        MissingLeaveAsIs = 0,
        MissingAssignWorking = 1,
        MissingAsk = 2
    };

    // What to do with an opened image whose profile equals the working profile.
    enum ColorManagementEqualPolicy : int
    {
        EqualIgnore = 0,
        EqualPreserve = 1,
        EqualAsk = 2
    };

    // What to do with an opened image whose profile differs from the working profile.
    enum ColorManagementNotEqualPolicy : int
    {
        NotEqualIgnore = 0,
        NotEqualPreserve = 1,
        NotEqualAssignWorking = 2,
        NotEqualConvertToWorking = 3,
        NotEqualAsk = 4
    };

    // What to do with an opened image whose profile is of another colour space than the
    // working profile (a grey or CMYK profile on an RGB working space).
    enum ColorManagementColorSpaceMismatchPolicy : int
    {
        MismatchIgnore = 0,
        MismatchConvert = 1,
        MismatchAsk = 2
    };

    OVApplication(int& argc, char** argv);
    ~OVApplication() override;

    static OVApplication* GetInstance();

    // The folder that holds "plugins.ini", the plug-in folders, "translations" and
    // "settings": "../Resources" beside the executable's folder, else that folder itself.
    static QString GetResourcePath();
    // Milliseconds the host waits before it shows progress.
    static int GetProgressTimeout();
    static IBrushFactory* GetBrushFactory();
    // Asks plug-ins to write their pending state (FlushPluginData()).
    static void FlushData();
    // Tells the loaded plug-in containers, last loaded first, that the user interface exists.
    static void UIReady();

    // Plug-in libraries. The loader reads the brush and general plug-in folders from
    // "plugins.ini" in the resource folder, loads each library with QPluginLoader, registers
    // its image file plug-ins and keeps one record per attempt.
    static void LoadPlugins();
    static void LoadPlugins(QFlags<PluginsLoadType> flags);
    static void LoadPlugins(const QStringList& files);
    static void LoadPlugin(const QString& file);
    static void UnloadPlugins();
    static void UnloadPlugins(const QStringList& files);
    static void UnloadPlugin(const QString& file);
    static QStringList PluginFileName(PluginsLoadType type);
    static std::vector<QString> GetErrorPlugins();
    static QString GetErrorInfo(const QString& fileName);

    // Usage statistics, queued from any thread and posted in the background to the statistics
    // service that the telemetry configuration names. Events carry the device id and the
    // current session; ChangeStatisticsSession() starts a new session for later events.
    static void SendStatisticsEvent(const QJsonDocument& doc);
    static void SendStatisticsEvent(const QString& type, int id);
    static void SendStatisticsEvent(const QString& type, int id, std::map<QString, QString> properties);
    static void SendIdentificationEvent(const QString& plan, const QString& channel, const QString& email,
                                        const QString& startVersion);
    static void ChangeStatisticsSession();
    // The user's choice, kept as "Statistics/Enabled" in "user.ini" (on unless turned off).
    // While off, nothing is queued.
    static void SetStatisticsEnabled(bool enabled);
    static bool IsStatisticsEnabled();

    void RegisterRefineSelectionAction(QAction* action);
    QAction* GetRefineSelection() const;
    const OVColorWidget* GetColorWidget() const;
    void SetRecentColor(const QColor& color);
    void SetRecentPicker(const QColor& color);

    // Languages: one folder "<code>.lproj" of compiled translations per language in the
    // "translations" folder of the resource folder, found at start-up. Loading a language adds
    // its translators on top of those of the languages loaded before.
    QStringList GetLanguages();
    QString GetLanguage() const;
    bool LoadLanguage(const QString& code);
    static QString GetLanguageName(const QString& code);
    static QString GetDefaultLanguage();

    // Theme, colours and patterns. The theme is a resource folder with the style sheet
    // "pixel.qss", stored under "Theme/Path"; the colours and the pattern index are kept in
    // "user.ini" and announced by their signals.
    static QString GetName(ThemeType type);
    static ThemeType GetApplicationTheme();
    static void SetApplicationTheme(ThemeType type);
    bool LoadTheme();
    ThemeType GetTheme() const;
    static QColor GetBackground();
    static void SetBackground(const QColor& color);
    static QColor GetForeground();
    static void SetForeground(const QColor& color);
    static QColor GetMaskBackground();
    static void SetMaskBackground(const QColor& color);
    static QColor GetMaskForeground();
    static void SetMaskForeground(const QColor& color);
    static QBrush GetGradient();
    static void SetGradient(const QBrush& brush);
    int LoadPatterns(const QString& folder);
    static int GetPatternCount();
    static QString GetPatternFile(int i);
    static int GetTexturePatternIndex();
    static void SetTexturePatternIndex(int index);

    // Settings: "app.ini" in the data folder and "user.ini" in the user data folder.
    static QVariant GetApplicationValue(const QString& key, const QVariant& def = QVariant());
    static void SetAppicationValue(const QString& key, const QVariant& value);
    static QVariant GetUserValue(const QString& key, const QVariant& def = QVariant());
    static void SetUserValue(const QString& key, const QVariant& value);
    static QVariant GetUserValue(UseDataRole role, const QVariant& def = QVariant());
    static void SetUserValue(UseDataRole role, const QVariant& value);
    static QString GetName(UseDataRole role);

    static QString GetDataFolder();
    static void SetDataFolder(const QString& folder);
    static QString GetUserDataFolder();
    static void SetUserDataFolder(const QString& folder);

    static QString GetPathOpen();
    static void SetPathOpen(const QString& path);
    static QString GetPathExport();
    static void SetPathExport(const QString& path);
    static QString GetBatchPathOpen();
    static void SetBatchPathOpen(const QString& path);
    static QString GetBatchPathInput();
    static void SetBatchPathInput(const QString& path);
    static QString GetBatchPathOutput();
    static void SetBatchPathOutput(const QString& path);

    static bool IsPNGCompressionVisible();
    static void SetPNGCompressionVisible(bool visible);
    static bool IsJPGCompressionVisible();
    static void SetJPGCompressionVisible(bool visible);
    static bool IsTIFCompressionVisible();
    static void SetTIFCompressionVisible(bool visible);

    static bool WarnAboutLayerInfo();
    static void SetWarnAboutLayerInfo(bool warn);

    static ColorManagementMissingPolicy GetColorManagementMissingPolicy();
    static void SetColorManagementMissingPolicy(ColorManagementMissingPolicy policy);
    static ColorManagementEqualPolicy GetColorManagementEqualPolicy();
    static void SetColorManagementEqualPolicy(ColorManagementEqualPolicy policy);
    static ColorManagementNotEqualPolicy GetColorManagementNotEqualPolicy();
    static void SetColorManagementNotEqualPolicy(ColorManagementNotEqualPolicy policy);
    static ColorManagementColorSpaceMismatchPolicy GetColorManagementColorSpaceMismatchPolicy();
    static void SetColorManagementColorSpaceMismatchPolicy(ColorManagementColorSpaceMismatchPolicy policy);

    // Platform information. The version and the product type are worked out once per process.
    static OSVersion GetOSVersion();
    static OSType GetOSType();
    // The version's name, "Server" appended for a server. The first non-empty name is kept
    // and answered to every later call, whatever its arguments.
    static QString GetOSName(OSVersion version, OSType type);
    // "major.minor.build" of the running system, or "0.0.0".
    static QString GetOSVersionString();

signals:
    void BackgroundChanged();
    void ForegroundChanged();
    void RecentColorChanged(const QColor& color);
    void RecentPickerChanged(const QColor& color);
    void MaskBackgroundChanged();
    void MaskForegroundChanged();
    void TexturePatternChanged(int index);
    void PluginLoading(const QString& fileName);
    void PluginLoaded(const QString& fileName);
    void PluginLoadingError(const QString& fileName, const QString& error);
    void PluginsLoadingFinished();
    void RefineSelectionRegistered(QAction* pAction);
    void FlushPluginData();
    void AboutActivated();
    void AboutDeactivated();

protected:
    bool event(QEvent* e) override;
    void SetColorWidget(OVColorWidget* widget);

private:
    friend class OVApplicationPrivate;
    OVApplicationPrivate* const d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OVApplication::PluginsLoadTypes)
