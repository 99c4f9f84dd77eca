#pragma once

#include <QString>
#include <QStringList>

class OVApplicationPrivate;

// The user-interface languages of the application object: one folder of compiled translations
// ("<code>.lproj" holding "*.qm" files) per language in the translations folder. Works on the
// language fields of the application's private object.
class OVLanguages
{
public:
    explicit OVLanguages(OVApplicationPrivate& d);

    // The known codes whose folder exists, in the fixed order of the known languages; each
    // missing one is logged.
    QStringList Scan() const;
    // Installs every loadable translation file of code's folder on top of those installed
    // before; true if at least one was installed.
    bool Load(const QString& code);
    // Display name of code in the language installed last; empty before the first Load.
    QString Name(const QString& code) const;

    // The installer's language from "settings/installsettings.ini" in the resource folder.
    static QString DefaultLanguage();

private:
    OVApplicationPrivate& d;
};
