// Languages: the folders found at start-up, translations loaded from real ".qm" files, the
// language names in the language loaded last, and the installer's default language.

#include "OVApplication.h"
#include "OVBuildLogMessages.h"
#include "OVTestSupport.h"

#include <QDir>
#include <QFile>
#include <QSettings>

namespace {

OVTest::LogCapture* s_startupLog = nullptr;

QString s_resources;

// The installation the application object finds at start: "de" with two good translation
// files around a garbage one, "ru" with one, "sv" without any, and a folder of a language the
// editor does not know.
void LayOutResources(const QString& resources)
{
    const QString translations = resources + QStringLiteral("/translations");
    QDir(resources).removeRecursively();
    for (const char* folder : {"de.lproj", "ru.lproj", "sv.lproj", "xx.lproj"})
        QDir().mkpath(translations + QLatin1Char('/') + QLatin1String(folder));
    const QString qm = QStringLiteral(OV_TEST_QM_DIR "/");
    QFile::copy(qm + QStringLiteral("de_a.qm"), translations + QStringLiteral("/de.lproj/a.qm"));
    QFile::copy(qm + QStringLiteral("de_c.qm"), translations + QStringLiteral("/de.lproj/C.qm"));
    QFile::copy(qm + QStringLiteral("ru.qm"), translations + QStringLiteral("/ru.lproj/ru.qm"));
    QFile::copy(qm + QStringLiteral("ru.qm"), translations + QStringLiteral("/xx.lproj/xx.qm"));
    QFile garbage(translations + QStringLiteral("/de.lproj/b.qm"));
    garbage.open(QIODevice::WriteOnly);
    garbage.write("this is not a compiled translation");
}

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void scanAtStartUp();
    void loadLanguages();
    void defaultLanguage_data();
    void defaultLanguage();
};

void TestLanguages::scanAtStartUp()
{
    QCOMPARE(OVApplication::GetInstance()->GetLanguages(), QStringList({"de", "ru", "sv"}));
    QCOMPARE(OVTest::BuildLogMessages(s_startupLog->Matching(QStringLiteral("translations."))),
             QStringList({"No en translations.", "No fr translations.", "No pt translations."}));
}

void TestLanguages::loadLanguages()
{
    OVApplication* app = OVApplication::GetInstance();
    QVERIFY(OVApplication::GetLanguageName(QStringLiteral("en")).isEmpty());
    QVERIFY(app->GetLanguage().isEmpty());

    OVTest::LogCapture log;
    QVERIFY(!app->LoadLanguage(QStringLiteral("pt")));
    QCOMPARE(OVTest::BuildLogMessages(log.Messages()),
             QStringList({"Translations for \"pt\" language not found."}));
    QVERIFY(app->GetLanguage().isEmpty());
    QVERIFY(OVApplication::GetLanguageName(QStringLiteral("de")).isEmpty());

    // A folder without translations still makes its language current, with untranslated names.
    QVERIFY(!app->LoadLanguage(QStringLiteral("sv")));
    QCOMPARE(app->GetLanguage(), QStringLiteral("sv"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("de")), QStringLiteral("German"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("pt")), QStringLiteral("Portuguese"));
    QVERIFY(OVApplication::GetLanguageName(QStringLiteral("xx")).isEmpty());

    // a.qm, b.qm and C.qm load in that order, so C.qm's "English" wins over a.qm's; the garbage
    // between them is logged and skipped.
    log.Clear();
    QVERIFY(app->LoadLanguage(QStringLiteral("de")));
    QCOMPARE(OVTest::BuildLogMessages(log.Messages()), QStringList({"Load translator \"b.qm\" error."}));
    QCOMPARE(app->GetLanguage(), QStringLiteral("de"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("de")), QStringLiteral("Deutsch"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("en")), QStringLiteral("Englisch"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("ru")), QStringLiteral("Russisch"));

    // A second language comes on top of the first, which stays installed beneath it.
    QVERIFY(app->LoadLanguage(QStringLiteral("ru")));
    QCOMPARE(app->GetLanguage(), QStringLiteral("ru"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("de")), QStringLiteral("Немецкий"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("en")), QStringLiteral("Englisch"));
    QCOMPARE(OVApplication::GetLanguageName(QStringLiteral("sv")), QStringLiteral("Swedish"));
}

void TestLanguages::defaultLanguage_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no file") << QVariant() << QStringLiteral("en");
    QTest::newRow("language") << QVariant(QStringLiteral("sv")) << QStringLiteral("sv");
    QTest::newRow("with region") << QVariant(QStringLiteral("pt_BR")) << QStringLiteral("pt_BR");
}

void TestLanguages::defaultLanguage()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, expected);
    const QString ini = s_resources + QStringLiteral("/settings/installsettings.ini");
    QFile::remove(ini);
    if (stored.isValid())
        QSettings(ini, QSettings::IniFormat).setValue(QStringLiteral("Language/Index"), stored);
    QCOMPARE(OVApplication::GetDefaultLanguage(), expected);
}

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    s_resources = QFileInfo(QFile::decodeName(argv[0])).absolutePath() + QStringLiteral("/../Resources");
    LayOutResources(s_resources);
    OVTest::LogCapture startupLog;
    s_startupLog = &startupLog;
    OVApplication app(argc, argv);
    TestLanguages test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_languages.moc"
