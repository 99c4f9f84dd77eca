#include "private/OVLanguages_p.h"

#include "OVApplication.h"
#include "private/OVApplication_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVSettingsFile_p.h"
#include "private/OVSettingsStore_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTranslator>

namespace {

struct KnownLanguage
{
    const char* code;
    const char* name;
};

// The languages the editor ships, in the order they are offered. The names are translated in
// the application object's context when a language is loaded.
const KnownLanguage kKnownLanguages[] = {
    {"en", QT_TRANSLATE_NOOP("OVApplication", "English")},
    {"de", QT_TRANSLATE_NOOP("OVApplication", "German")},
    {"ru", QT_TRANSLATE_NOOP("OVApplication", "Russian")},
    {"sv", QT_TRANSLATE_NOOP("OVApplication", "Swedish")},
    {"fr", QT_TRANSLATE_NOOP("OVApplication", "French")},
    {"pt", QT_TRANSLATE_NOOP("OVApplication", "Portuguese")},
};

QString FolderName(const QString& code)
{
    return code + QStringLiteral(".lproj");
}

} // namespace

OVLanguages::OVLanguages(OVApplicationPrivate& d)
    : d(d)
{}

QStringList OVLanguages::Scan() const
{
    const QDir translations(d.translationsDir);
    QStringList found;
    for (const KnownLanguage& language : kKnownLanguages) {
        const QString code = QString::fromLatin1(language.code);
        if (translations.exists(FolderName(code)))
            found << code;
        else
            OV_BUILD_LOG(QStringLiteral("No %1 translations.").arg(code));
    }
    return found;
}

bool OVLanguages::Load(const QString& code)
{
    QDir folder(d.translationsDir);
    if (!folder.cd(FolderName(code))) {
        OV_BUILD_LOG(QStringLiteral("Translations for \"%1\" language not found.").arg(code));
        return false;
    }

    int installed = 0;
    // Translators are only ever added: Qt asks the one installed last first, so a language
    // loaded later wins over those loaded before without taking them away.
    const QStringList files = folder.entryList({QStringLiteral("*.qm")}, QDir::Files);
    for (const QString& file : files) {
        auto* translator = new QTranslator(d.owner);
        if (translator->load(folder.absoluteFilePath(file))) {
            QCoreApplication::installTranslator(translator);
            ++installed;
        } else {
            OV_BUILD_LOG(QStringLiteral("Load translator \"%1\" error.").arg(file));
            delete translator;
        }
    }

    d.languageNames.clear();
    for (const KnownLanguage& language : kKnownLanguages)
        d.languageNames.insert(QString::fromLatin1(language.code), OVApplication::tr(language.name));
    d.language = code;
    return installed > 0;
}

QString OVLanguages::Name(const QString& code) const
{
    return d.languageNames.value(code);
}

QString OVLanguages::DefaultLanguage()
{
    const QString ini = OVApplication::GetResourcePath() + QStringLiteral("/settings/installsettings.ini");
    return OVSettingsFile::Value(ini, OVSettingsStore::Key(OVApplication::LanguageIndex),
                                 QStringLiteral("en"), OVSettingsFile::ReadInstalled)
        .toString();
}
