#include "private/OVLook_p.h"

#include "private/OVApplication_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVSettingsStore_p.h"

#include <QDir>
#include <QFile>

const OVLook::Colour OVLook::kBackground = {OVApplication::ColorsBackground, Qt::white,
                                            &OVApplication::BackgroundChanged};
const OVLook::Colour OVLook::kForeground = {OVApplication::ColorsForeground, Qt::black,
                                            &OVApplication::ForegroundChanged};
const OVLook::Colour OVLook::kMaskBackground = {OVApplication::ColorsMaskBackground, Qt::black,
                                                &OVApplication::MaskBackgroundChanged};
const OVLook::Colour OVLook::kMaskForeground = {OVApplication::ColorsMaskForeground, Qt::white,
                                                &OVApplication::MaskForegroundChanged};

OVLook::OVLook(OVApplicationPrivate& d)
    : d(d)
{}

QString OVLook::ThemeFolder(OVApplication::ThemeType type)
{
    switch (type) {
    case OVApplication::Dark:
        return QStringLiteral(":/Dark");
    case OVApplication::Light:
        return QStringLiteral(":/Light");
    }
    return QString();
}

bool OVLook::LoadTheme()
{
    const QString dark = ThemeFolder(OVApplication::Dark);
    const QString path = OVSettingsStore::UserValue(OVApplication::ThemePath, dark).toString();
    // Search paths are only added: Qt looks through them in the order they were added, so a
    // theme chosen later takes effect in a new process.
    QDir::addSearchPath(QStringLiteral("theme"), path);
    QFile styleSheet(QStringLiteral("theme:pixel.qss"));
    if (!styleSheet.open(QIODevice::ReadOnly)) {
        OV_BUILD_LOG(QStringLiteral("Load theme error."));
        return false;
    }
    d.owner->setStyleSheet(QString::fromLatin1(styleSheet.readAll()));
    d.theme = path == dark ? OVApplication::Dark : OVApplication::Light;
    return true;
}

int OVLook::LoadPatterns(const QString& folder)
{
    QDir dir(folder);
    if (!dir.exists())
        return 0;
    // The directory's default filter takes every entry whose name matches, sub-folders too.
    dir.setNameFilters({QStringLiteral("*.jpg"), QStringLiteral("*.png"), QStringLiteral("*.bmp")});
    const QFileInfoList entries = dir.entryInfoList();
    for (const QFileInfo& entry : entries)
        d.patterns << entry.absoluteFilePath();
    return entries.size();
}

QColor OVLook::GetColour(const Colour& colour)
{
    return OVSettingsStore::UserValue(colour.key, QColor(colour.def)).value<QColor>();
}

void OVLook::SetColour(const Colour& colour, const QColor& value)
{
    OVApplication* app = OVApplication::GetInstance();
    if (!app || value == GetColour(colour))
        return;
    OVSettingsStore::SetUserValue(colour.key, value);
    emit(app->*colour.changed)();
}

int OVLook::PatternIndex()
{
    return OVSettingsStore::UserValue(OVApplication::TexturePatternIndex, 0).toInt();
}

void OVLook::SetPatternIndex(int index)
{
    OVApplication* app = OVApplication::GetInstance();
    if (!app || index == PatternIndex())
        return;
    OVSettingsStore::SetUserValue(OVApplication::TexturePatternIndex, index);
    emit app->TexturePatternChanged(index);
}

QBrush& OVLook::Gradient()
{
    static QBrush gradient;
    return gradient;
}
