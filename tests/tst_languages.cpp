// Languages: the folders found at start-up, translations from real ".qm" files made by lrelease,
// the names in the language loaded last, and the installer's default language.

#include "OVApplication.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"

#include <QDir>
#include <QSettings>

namespace {

OVTest::LogCapture* s_startupLog = nullptr;
QString s_resources;

QStringList Names()
{
    QStringList names;
    for (const char* code : {"en", "de", "ru", "sv", "xx"})
        names << OVApplication::GetLanguageName(QLatin1String(code));
    return names;
}

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void loadLanguages()
    {
        OVApplication* app = OVApplication::GetInstance();
        QCOMPARE(app->GetLanguages(), QStringList({"de", "ru", "sv"}));
        const QStringList missing = s_startupLog->Matching(QStringLiteral(" translations."));
        QVERIFY(missing.size() == 3 && missing[0].endsWith(QStringLiteral(". No en translations.\"")) &&
                missing[1].contains(QStringLiteral(" fr ")) && missing[2].contains(QStringLiteral(" pt ")));

        OVTest::LogCapture log;
        QCOMPARE(Names(), QStringList({"", "", "", "", ""}));
        QVERIFY(!app->LoadLanguage(QStringLiteral("pt")));
        QVERIFY(app->GetLanguage().isEmpty());
        // Without translations the language still becomes current, with untranslated names.
        QVERIFY(!app->LoadLanguage(QStringLiteral("sv")));
        QCOMPARE(app->GetLanguage(), QStringLiteral("sv"));
        QCOMPARE(Names(), QStringList({"English", "German", "Russian", "Swedish", ""}));
        // a.qm, b.qm and C.qm load in that order, so C.qm's "English" wins over a.qm's.
        QVERIFY(app->LoadLanguage(QStringLiteral("de")));
        QCOMPARE(Names(), QStringList({"Englisch", "Deutsch", "Russisch", "Swedish", ""}));
        QCOMPARE(log.Matching(QStringLiteral(". Translations for \\\"pt\\\" language not found.")).size(), 1);
        QCOMPARE(log.Matching(QStringLiteral(". Load translator \\\"b.qm\\\" error.")).size(), 1);
        // A second language comes on top of the first, which stays installed beneath it.
        QVERIFY(app->LoadLanguage(QStringLiteral("ru")));
        QCOMPARE(app->GetLanguage(), QStringLiteral("ru"));
        QCOMPARE(Names(), QStringList({"Englisch", "Немецкий", "Russisch", "Swedish", ""}));
    }

    void defaultLanguage()
    {
        QCOMPARE(OVApplication::GetDefaultLanguage(), QStringLiteral("en"));
        QSettings(s_resources + QStringLiteral("/settings/installsettings.ini"), QSettings::IniFormat)
            .setValue(QStringLiteral("Language/Index"), QStringLiteral("pt_BR"));
        QCOMPARE(OVApplication::GetDefaultLanguage(), QStringLiteral("pt_BR"));
    }
};

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    // The installation: "de" with two translation files around a garbage one, "ru" with one,
    // "sv" with none, and "xx", a language the editor does not know.
    s_resources = QFileInfo(QFile::decodeName(argv[0])).absolutePath() + QStringLiteral("/../Resources");
    QDir(s_resources).removeRecursively();
    const QString translations = s_resources + QStringLiteral("/translations/");
    for (const QString copy : {"de_a:de.lproj/a.qm", "de_c:de.lproj/C.qm", "ru:ru.lproj/ru.qm",
                               "ru:xx.lproj/xx.qm", ":sv.lproj/"}) {
        QDir().mkpath(translations + copy.section(QLatin1Char(':'), 1).section(QLatin1Char('/'), 0, 0));
        QFile::copy(QStringLiteral(OV_TEST_QM_DIR "/%1.qm").arg(copy.section(QLatin1Char(':'), 0, 0)),
                    translations + copy.section(QLatin1Char(':'), 1));
    }
    if (!OVTest::WriteFile(translations + QStringLiteral("de.lproj/b.qm"), "no translations"))
        return 1;

    OVTest::LogCapture startupLog;
    s_startupLog = &startupLog;
    OVApplication app(argc, argv);
    TestLanguages test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_languages.moc"
