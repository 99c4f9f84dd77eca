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

/// The editor's one application object.
///
/// The host executable creates it with the process's arguments; everything else reaches it
/// through GetInstance(). It owns the settings files, the loaded plug-ins and the process-wide
/// preferences. Almost every operation is static: it looks up the live instance and does
/// nothing, or returns the given default, without one.
class OVCORE_EXPORT OVApplication : public QApplication
{
    Q_OBJECT
public:
    /// Well-known keys of "user.ini"; GetName(UseDataRole) maps each to its key.
    enum UseDataRole : int
    {
        Version = 1,                      ///< "Version": the version that created the file.
        LanguageIndex = 2,                ///< "Language/Index": the chosen language's code.
        ThemePath = 3,                    ///< "Theme/Path": the chosen theme's resource folder.
        CMWorkingProfileID = 4,           ///< "ColorManagement/WorkingProfileID": the working RGB profile.
        CMMissingPolicy = 5,              ///< "ColorManagement/MissingPolicy".
        CMEqualPolicy = 6,                ///< "ColorManagement/EqualPolicy".
        CMNotEqualPolicy = 7,             ///< "ColorManagement/NotEqualPolicy".
        CMColorSpaceMismatchPolicy = 8,   ///< "ColorManagement/ColorSpaceMismatchPolicy".
        ShowPNGCompressionSettings = 9,   ///< "MessagesAndConfirmationsSettings/ShowPNGCompressionSettings".
        ShowJPGCompressionSettings = 10,  ///< "MessagesAndConfirmationsSettings/ShowJPGCompressionSettings".
        ShowTIFFCompressionSettings = 11, ///< "MessagesAndConfirmationsSettings/ShowTIFFCompressionSettings".
        SavePathOpen = 12,                ///< "Save/PathOpen": the folder last opened from.
        SavePathExport = 13,              ///< "Save/PathExport": the folder last exported to.
        SaveAsSuffix = 14,                ///< "SaveAs/Suffix": the host's last "save as" suffix.
        BatchPathOpen = 15,               ///< "Batch/Path/Open".
        BatchPathInput = 16,              ///< "Batch/Path/Input".
        BatchPathOutput = 17,             ///< "Batch/Path/Output".
        ColorsBackground = 18,            ///< "Colors/Background".
        ColorsForeground = 19,            ///< "Colors/Foreground".
        ColorsMaskBackground = 20,        ///< "Colors/Mask/Background".
        ColorsMaskForeground = 21,        ///< "Colors/Mask/Foreground".
        StartupWindowShow = 22,           ///< "StartupWindow/Show", kept by the host.
        MiscellaneousCheckForUpdate = 23, ///< "Miscellaneous/CheckForUpdate", kept by the host.
        UpdateRemind = 24,                ///< "Update/Remind", kept by the host.
        UpdateRemindDate = 25,            ///< "Update/RemindDate", kept by the host.
        TexturePatternIndex = 26,         ///< "TexturePatternIndex": the chosen texture pattern.
        ApplicationTemporaryPath = 27     ///< "ApplicationTemporaryPath", kept by the host.
    };

    /// The well-known plug-in libraries that LoadPlugins(QFlags<PluginsLoadType>) takes.
    enum PluginsLoadType : int
    {
        Adjustments = 1, ///< "adjustments" in the general plug-in folder.
        Filters = 2,     ///< "filter" in the general plug-in folder.
        ImageIO = 4,     ///< "imageio" in the general plug-in folder.
        Brushes = 8, ///< Every library of the brush plug-in folder ("brushcontainer" is the well-known one).
        Tools = 16   ///< "basictools" and "generaltools" in the general plug-in folder.
    };
    Q_DECLARE_FLAGS(PluginsLoadTypes, PluginsLoadType)

    /// The editor's style-sheet themes.
    enum ThemeType : int
    {
        Dark = 1, ///< The resource folder ":/Dark".
        Light = 2 ///< The resource folder ":/Light".
    };

    /// Versions of Windows that GetOSVersion() tells apart.
    enum OSVersion : int
    {
        Unknown = 0,         ///< Not recognised (and every system other than Windows).
        WindowsXP = 1,       ///< Windows XP.
        WindowsXPSP1 = 2,    ///< Windows XP with Service Pack 1.
        WindowsXPSP2 = 3,    ///< Windows XP with Service Pack 2.
        WindowsXPSP3 = 4,    ///< Windows XP with Service Pack 3.
        WindowsVista = 5,    ///< Windows Vista.
        WindowsVistaSP1 = 6, ///< Windows Vista with Service Pack 1.
        WindowsVistaSP2 = 7, ///< Windows Vista with Service Pack 2.
        Windows7 = 8,        ///< Windows 7.
        Windows7SP1 = 9,     ///< Windows 7 with Service Pack 1.
        Windows8 = 10,       ///< Windows 8.
        Windows8Point1 = 11, ///< Windows 8.1.
        Windows10 = 12       ///< Windows 10 or later.
    };

    /// The product type of the running system.
    enum OSType : int
    {
        Workstation = 1, ///< A desktop edition.
        Server = 2       ///< A server edition.
    };

    /// What to do with an opened image that carries no colour profile.
    enum ColorManagementMissingPolicy : int
    {
        MissingLeaveAsIs = 0,     ///< Leave the image without a profile.
        MissingAssignWorking = 1, ///< Assign the working profile.
        MissingAsk = 2            ///< Ask the user.
    };

    /// What to do with an opened image whose profile equals the working profile.
    enum ColorManagementEqualPolicy : int
    {
        EqualIgnore = 0,   ///< Ignore the profile.
        EqualPreserve = 1, ///< Keep the profile.
        EqualAsk = 2       ///< Ask the user.
    };

    /// What to do with an opened image whose profile differs from the working profile.
    enum ColorManagementNotEqualPolicy : int
    {
        NotEqualIgnore = 0,           ///< Ignore the profile.
        NotEqualPreserve = 1,         ///< Keep the image's own profile.
        NotEqualAssignWorking = 2,    ///< Assign the working profile without converting.
        NotEqualConvertToWorking = 3, ///< Convert the pixels to the working profile.
        NotEqualAsk = 4               ///< Ask the user.
    };

    /// What to do with an opened image whose profile is of another colour space than the
    /// working profile (a grey or CMYK profile on an RGB working space).
    enum ColorManagementColorSpaceMismatchPolicy : int
    {
        MismatchIgnore = 0,  ///< Ignore the profile.
        MismatchConvert = 1, ///< Convert the pixels to the working colour space.
        MismatchAsk = 2      ///< Ask the user.
    };

    /// Creates the application object with the process's arguments and works out the data
    /// folders, the languages and the export lists; one per process, before any other object
    /// of the library.
    OVApplication(int& argc, char** argv);
    /// Shuts the statistics clients down and frees what the object holds; plug-ins are not
    /// unloaded.
    ~OVApplication() override;

    /// The running application object, or null when there is none or it is of another class.
    static OVApplication* GetInstance();

    /// The folder that holds "plugins.ini", the plug-in folders, "translations" and
    /// "settings": "../Resources" beside the executable's folder, else that folder itself.
    static QString GetResourcePath();
    /// Milliseconds the host waits before it shows progress (2000).
    static int GetProgressTimeout();
    /// The brush factory of the loaded brush plug-in, or null.
    static IBrushFactory* GetBrushFactory();
    /// Asks plug-ins to write their pending state by emitting FlushPluginData().
    static void FlushData();
    /// Tells the loaded plug-in containers, last loaded first, that the user interface exists.
    static void UIReady();

    /// Loads every library of the brush folder, then every library of the general folder.
    ///
    /// The folders are read from "plugins.ini" in the resource folder, relative to the
    /// application folder. Each library is loaded with QPluginLoader, its container
    /// initialised and its image file plug-ins registered; one record is kept per attempt.
    /// Emits PluginsLoadingFinished() at the end, unless the general folder is missing.
    static void LoadPlugins();
    /// Like LoadPlugins(), restricted to the well-known libraries that \a flags select.
    static void LoadPlugins(QFlags<PluginsLoadType> flags);
    /// Loads the given library files in the given order; emits no finishing signal.
    static void LoadPlugins(const QStringList& files);
    /// Loads one library file.
    static void LoadPlugin(const QString& file);
    /// Releases and unloads every loaded library, last loaded first, unregistering its image
    /// file plug-ins; the records stay.
    static void UnloadPlugins();
    /// Releases and unloads the named libraries and forgets their records.
    static void UnloadPlugins(const QStringList& files);
    /// Releases and unloads one library and forgets its records.
    static void UnloadPlugin(const QString& file);
    /// The canonical paths of the well-known libraries of one flag ("basictools" first for
    /// Tools); an empty string for a file that does not exist, an empty list for any other value.
    static QStringList PluginFileName(PluginsLoadType type);
    /// The files of every load attempt that did not load, in attempt order.
    static std::vector<QString> GetErrorPlugins();
    /// The error text recorded for a file ("Plugin OK." when it loaded), or "Errors not found".
    static QString GetErrorInfo(const QString& fileName);

    /// Queues a usage statistics event: the document's object, with the device id and the
    /// current session added.
    ///
    /// Events are queued from any thread and posted in the background to the statistics
    /// service that the telemetry configuration names. Nothing is queued while statistics are
    /// turned off (SetStatisticsEnabled()).
    static void SendStatisticsEvent(const QJsonDocument& doc);
    /// Queues the event {"event_type": type, "event_id": id}.
    static void SendStatisticsEvent(const QString& type, int id);
    /// Queues the event {"event_type": type, "event_id": id, "event_properties": properties}.
    static void SendStatisticsEvent(const QString& type, int id, std::map<QString, QString> properties);
    /// Queues the identification of this installation on the identification client; an empty
    /// email is sent as "Unknown".
    static void SendIdentificationEvent(const QString& plan, const QString& channel, const QString& email,
                                        const QString& startVersion);
    /// Starts a new statistics session for the events queued from now on.
    static void ChangeStatisticsSession();
    /// Turns usage statistics on or off, kept as "Statistics/Enabled" in "user.ini".
    static void SetStatisticsEnabled(bool enabled);
    /// Whether usage statistics are sent (on unless the user turned them off).
    static bool IsStatisticsEnabled();

    /// Stores the host's "refine selection" action and announces it with
    /// RefineSelectionRegistered(), unless it is the one stored already.
    void RegisterRefineSelectionAction(QAction* action);
    /// The stored "refine selection" action, or null.
    QAction* GetRefineSelection() const;
    /// The host's colour chooser, or null.
    const OVColorWidget* GetColorWidget() const;
    /// Sets the colour last used and announces a change with RecentColorChanged().
    void SetRecentColor(const QColor& color);
    /// Sets the colour last picked and announces a change with RecentPickerChanged().
    void SetRecentPicker(const QColor& color);

    /// The codes of the languages found at start-up: one folder "<code>.lproj" of compiled
    /// translations per language in the "translations" folder of the resource folder.
    QStringList GetLanguages();
    /// The code last loaded with LoadLanguage(); empty before.
    QString GetLanguage() const;
    /// Installs the translations of a language on top of those loaded before; true when at
    /// least one file was installed.
    bool LoadLanguage(const QString& code);
    /// The display name of a language code; empty for an unknown code or before a language
    /// was loaded.
    static QString GetLanguageName(const QString& code);
    /// The language the installer chose ("Language/Index" of "settings/installsettings.ini"
    /// in the resource folder), or "en".
    static QString GetDefaultLanguage();

    /// The resource folder of a theme (":/Dark" or ":/Light"), or empty for another value.
    static QString GetName(ThemeType type);
    /// The stored theme ("Theme/Path"); Dark when nothing is stored.
    static ThemeType GetApplicationTheme();
    /// Stores the theme for the next LoadTheme(), which a new process makes.
    static void SetApplicationTheme(ThemeType type);
    /// Applies the stored theme's style sheet "pixel.qss"; false when it cannot be read.
    bool LoadTheme();
    /// The theme the last successful LoadTheme() applied; 0 before.
    ThemeType GetTheme() const;
    /// The background colour (white by default).
    static QColor GetBackground();
    /// Stores the background colour and announces a change with BackgroundChanged().
    static void SetBackground(const QColor& color);
    /// The foreground colour (black by default).
    static QColor GetForeground();
    /// Stores the foreground colour and announces a change with ForegroundChanged().
    static void SetForeground(const QColor& color);
    /// The mask background colour (black by default).
    static QColor GetMaskBackground();
    /// Stores the mask background colour and announces a change with MaskBackgroundChanged().
    static void SetMaskBackground(const QColor& color);
    /// The mask foreground colour (white by default).
    static QColor GetMaskForeground();
    /// Stores the mask foreground colour and announces a change with MaskForegroundChanged().
    static void SetMaskForeground(const QColor& color);
    /// The process-wide gradient brush (not kept across runs).
    static QBrush GetGradient();
    /// Sets the process-wide gradient brush; no signal.
    static void SetGradient(const QBrush& brush);
    /// Appends the folder's "*.jpg", "*.png" and "*.bmp" images to the texture patterns;
    /// returns how many were appended.
    int LoadPatterns(const QString& folder);
    /// The number of texture patterns.
    static int GetPatternCount();
    /// The path of texture pattern \a i, or an empty string outside the list.
    static QString GetPatternFile(int i);
    /// The chosen texture pattern's index (0 by default).
    static int GetTexturePatternIndex();
    /// Stores the chosen texture pattern's index and announces a change with
    /// TexturePatternChanged().
    static void SetTexturePatternIndex(int index);

    /// A value of "app.ini" in the data folder, or \a def.
    static QVariant GetApplicationValue(const QString& key, const QVariant& def = QVariant());
    /// Writes a value into "app.ini".
    static void SetAppicationValue(const QString& key, const QVariant& value);
    /// A value of "user.ini" in the user data folder, or \a def. "Language/Index" is read
    /// without its region ("de_AT" reads as "de").
    static QVariant GetUserValue(const QString& key, const QVariant& def = QVariant());
    /// Writes a value into "user.ini".
    static void SetUserValue(const QString& key, const QVariant& value);
    /// The value of a well-known key of "user.ini", or \a def.
    static QVariant GetUserValue(UseDataRole role, const QVariant& def = QVariant());
    /// Writes the value of a well-known key into "user.ini".
    static void SetUserValue(UseDataRole role, const QVariant& value);
    /// The key of a well-known role, or empty.
    static QString GetName(UseDataRole role);

    /// The folder of "app.ini".
    static QString GetDataFolder();
    /// Reads and writes "app.ini" in another folder from now on, creating the folder when
    /// missing; nothing is moved or copied, and an empty folder is ignored.
    static void SetDataFolder(const QString& folder);
    /// The folder of "user.ini" and the user's lists.
    static QString GetUserDataFolder();
    /// Reads and writes "user.ini" in another folder from now on, creating the folder when
    /// missing; nothing is moved or copied, and an empty folder is ignored.
    static void SetUserDataFolder(const QString& folder);

    /// The folder last opened from (empty by default).
    static QString GetPathOpen();
    /// Stores the folder last opened from.
    static void SetPathOpen(const QString& path);
    /// The folder last exported to (empty by default).
    static QString GetPathExport();
    /// Stores the folder last exported to.
    static void SetPathExport(const QString& path);
    /// The batch dialog's folder to open from (empty by default).
    static QString GetBatchPathOpen();
    /// Stores the batch dialog's folder to open from.
    static void SetBatchPathOpen(const QString& path);
    /// The batch dialog's input folder (empty by default).
    static QString GetBatchPathInput();
    /// Stores the batch dialog's input folder.
    static void SetBatchPathInput(const QString& path);
    /// The batch dialog's output folder (empty by default).
    static QString GetBatchPathOutput();
    /// Stores the batch dialog's output folder.
    static void SetBatchPathOutput(const QString& path);

    /// Whether the PNG compression settings are shown on saving (true by default).
    static bool IsPNGCompressionVisible();
    /// Stores whether the PNG compression settings are shown on saving.
    static void SetPNGCompressionVisible(bool visible);
    /// Whether the JPEG compression settings are shown on saving (true by default).
    static bool IsJPGCompressionVisible();
    /// Stores whether the JPEG compression settings are shown on saving.
    static void SetJPGCompressionVisible(bool visible);
    /// Whether the TIFF compression settings are shown on saving (true by default).
    static bool IsTIFCompressionVisible();
    /// Stores whether the TIFF compression settings are shown on saving.
    static void SetTIFCompressionVisible(bool visible);

    /// Whether to warn that a format keeps only part of a document's layer information (true
    /// by default).
    static bool WarnAboutLayerInfo();
    /// Stores whether to warn that a format keeps only part of the layer information.
    static void SetWarnAboutLayerInfo(bool warn);

    /// The stored policy for images without a profile (MissingAssignWorking by default).
    static ColorManagementMissingPolicy GetColorManagementMissingPolicy();
    /// Stores the policy for images without a profile.
    static void SetColorManagementMissingPolicy(ColorManagementMissingPolicy policy);
    /// The stored policy for images with the working profile (EqualPreserve by default).
    static ColorManagementEqualPolicy GetColorManagementEqualPolicy();
    /// Stores the policy for images with the working profile.
    static void SetColorManagementEqualPolicy(ColorManagementEqualPolicy policy);
    /// The stored policy for images with another profile (NotEqualConvertToWorking by default).
    static ColorManagementNotEqualPolicy GetColorManagementNotEqualPolicy();
    /// Stores the policy for images with another profile.
    static void SetColorManagementNotEqualPolicy(ColorManagementNotEqualPolicy policy);
    /// The stored policy for images of another colour space (MismatchIgnore by default).
    static ColorManagementColorSpaceMismatchPolicy GetColorManagementColorSpaceMismatchPolicy();
    /// Stores the policy for images of another colour space.
    static void SetColorManagementColorSpaceMismatchPolicy(ColorManagementColorSpaceMismatchPolicy policy);

    /// The running version of Windows, worked out once per process; Unknown elsewhere.
    static OSVersion GetOSVersion();
    /// The running system's product type, worked out once per process.
    static OSType GetOSType();
    /// The version's name, "Server" appended for a server. The first non-empty name is kept
    /// and answered to every later call, whatever its arguments.
    static QString GetOSName(OSVersion version, OSType type);
    /// "major.minor.build" of the running system, or "0.0.0".
    static QString GetOSVersionString();

signals:
    /// The background colour changed.
    void BackgroundChanged();
    /// The foreground colour changed.
    void ForegroundChanged();
    /// The colour last used changed.
    void RecentColorChanged(const QColor& color);
    /// The colour last picked changed.
    void RecentPickerChanged(const QColor& color);
    /// The mask background colour changed.
    void MaskBackgroundChanged();
    /// The mask foreground colour changed.
    void MaskForegroundChanged();
    /// The chosen texture pattern changed.
    void TexturePatternChanged(int index);
    /// A plug-in library is about to be loaded.
    void PluginLoading(const QString& fileName);
    /// A plug-in library loaded.
    void PluginLoaded(const QString& fileName);
    /// A plug-in library failed to load, for the reason given.
    void PluginLoadingError(const QString& fileName, const QString& error);
    /// LoadPlugins() has loaded every library it found.
    void PluginsLoadingFinished();
    /// The host registered its "refine selection" action.
    void RefineSelectionRegistered(QAction* pAction);
    /// Plug-ins should write their pending state now (FlushData()).
    void FlushPluginData();
    /// The application became active.
    void AboutActivated();
    /// The application stopped being active.
    void AboutDeactivated();

protected:
    /// Announces the application's activation and deactivation, then handles the event as
    /// QApplication does.
    bool event(QEvent* e) override;
    /// Stores the host's colour chooser; no signal.
    void SetColorWidget(OVColorWidget* widget);

private:
    friend class OVApplicationPrivate;
    OVApplicationPrivate* const d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OVApplication::PluginsLoadTypes)
