// Languages: the folders found at start-up, translations from real ".qm" files made by lrelease,
// the names in the language loaded last, and the installer's default language. The look: themes
// from real resources and folders, the colours with their signals, texture patterns from real
// images, and gradient stops bound to the colours, converted and streamed; and when file
// bookmarks begin and end access to their paths, seen through the store.

#include "OVApplication.h"
#include "OVFileBookmark.h"
#include "OVGradientStop.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"
#include "private/OVFileBookmark_p.h"

#include <QImage>

using A = OVApplication;
using Stops = QVector<QPair<double, QColor>>;

namespace {

QString Folder(const QString& name)
{
    QDir().mkpath(OVTest::SandboxPath() + '/' + name);
    return OVTest::SandboxPath() + '/' + name;
}

// The colour a stop holds, whatever it is bound to.
QColor Stored(OVGradientStop stop)
{
    stop.SetBackground(false);
    stop.SetForeground(false);
    stop.SetUserColor(false);
    return stop.GetColor();
}

QVariantList Fields(const OVGradientStop& stop)
{
    return {stop.GetPosition(), Stored(stop), stop.IsBackground(), stop.IsForeground(), stop.IsUserColor()};
}

QStringList s_bookmarkCalls;
void RecordBookmark(FileBookmarkStore::Operation operation, const QString& path)
{
    s_bookmarkCalls << QStringLiteral("%1 %2").arg(QStringList({"begin", "end", "add"}).at(operation), path);
}

QString s_resources;

QStringList Names()
{
    QStringList names;
    for (const char* code : {"en", "de", "ru", "sv", "xx"})
        names << A::GetLanguageName(QLatin1String(code));
    return names;
}

} // namespace

class TestLook : public QObject
{
    Q_OBJECT

    OVApplication* app = A::GetInstance();
    OVTest::SignalLog m_signals;

private slots:
    void initTestCase()
    {
        m_signals.RecordByName(app, &A::BackgroundChanged, &A::ForegroundChanged, &A::MaskBackgroundChanged,
                               &A::MaskForegroundChanged);
    }

    void loadLanguages()
    {
        QCOMPARE(app->GetLanguages(), QStringList({"de", "ru", "sv"}));
        const QStringList missing = OVTest::StartupMessages().filter(" translations.");
        QVERIFY(missing.size() == 3 && missing[0].endsWith(". No en translations.\"") &&
                missing[1].contains(" fr ") && missing[2].contains(" pt "));

        OVTest::LogCapture log;
        QCOMPARE(Names(), QStringList({"", "", "", "", ""}));
        QVERIFY(!app->LoadLanguage("pt"));
        QVERIFY(app->GetLanguage().isEmpty());
        // Without translations the language still becomes current, with untranslated names.
        QVERIFY(!app->LoadLanguage("sv"));
        QCOMPARE(app->GetLanguage(), "sv");
        QCOMPARE(Names(), QStringList({"English", "German", "Russian", "Swedish", ""}));
        // a.qm, b.qm and C.qm load in that order, so C.qm's "English" wins over a.qm's.
        QVERIFY(app->LoadLanguage("de"));
        QCOMPARE(Names(), QStringList({"Englisch", "Deutsch", "Russisch", "Swedish", ""}));
        QCOMPARE(log.Matching(". Translations for \\\"pt\\\" language not found.").size(), 1);
        QCOMPARE(log.Matching(". Load translator \\\"b.qm\\\" error.").size(), 1);
        // A second language comes on top of the first, which stays installed beneath it.
        QVERIFY(app->LoadLanguage("ru"));
        QCOMPARE(app->GetLanguage(), "ru");
        QCOMPARE(Names(), QStringList({"Englisch", "Немецкий", "Russisch", "Swedish", ""}));
    }

    void defaultLanguage()
    {
        QCOMPARE(A::GetDefaultLanguage(), "en");
        QSettings(s_resources + "/settings/installsettings.ini", QSettings::IniFormat)
            .setValue("Language/Index", "pt_BR");
        QCOMPARE(A::GetDefaultLanguage(), "pt_BR");
    }

    void themes()
    {
        QCOMPARE(A::GetApplicationTheme(), A::Dark);
        OVTest::LogCapture log;
        A::SetUserValue(A::ThemePath, OVTest::SandboxPath() + "/none");
        QCOMPARE(A::GetApplicationTheme(), A::Light);
        QVERIFY(!app->LoadTheme());
        QCOMPARE(log.Matching("\\\". Load theme error.").size(), 1);
        QCOMPARE(int(app->GetTheme()), 0);
        // Bytes that are no Latin-1 text are taken as Latin-1 all the same.
        const QByteArray bytes("QWidget { font-family: \"\xc3\xa9\xff\xfe\x01\"; }");
        const QString qss = Folder("theme") + "/pixel.qss";
        QVERIFY(OVTest::WriteFile(qss, bytes));
        A::SetUserValue(A::ThemePath, Folder("theme"));
        QVERIFY(app->LoadTheme());
        QCOMPARE(qApp->styleSheet(), QString::fromLatin1(bytes));
        QCOMPARE(app->GetTheme(), A::Light);
        // Folders stay searched in the order they came: with the folder's sheet gone the dark
        // one is found, and still after the light theme is chosen.
        QVERIFY(QFile::remove(qss));
        for (A::ThemeType type : {A::Dark, A::Light}) {
            A::SetApplicationTheme(type);
            QVERIFY(app->LoadTheme());
            QCOMPARE(qApp->styleSheet(), QString::fromLatin1(OVTest::ReadFile(":/Dark/pixel.qss")));
            QCOMPARE(app->GetTheme(), type);
        }
        QCOMPARE(A::GetUserValue(A::ThemePath).toString(), ":/Light");
    }

    void colours()
    {
        const struct
        {
            QColor (*get)();
            void (*set)(const QColor&);
            QColor def;
            QString signal;
        } cases[] = {{&A::GetBackground, &A::SetBackground, Qt::white, "BackgroundChanged()"},
                     {&A::GetForeground, &A::SetForeground, Qt::black, "ForegroundChanged()"},
                     {&A::GetMaskBackground, &A::SetMaskBackground, Qt::black, "MaskBackgroundChanged()"},
                     {&A::GetMaskForeground, &A::SetMaskForeground, Qt::white, "MaskForegroundChanged()"}};
        for (const auto& c : cases) {
            QCOMPARE(c.get(), c.def);
            for (const QColor& colour : {c.def, QColor::fromHsv(200, 100, 50), QColor::fromHsv(200, 100, 50)})
                c.set(colour);
            QCOMPARE(c.get(), QColor::fromHsv(200, 100, 50));
            c.set(c.def);
            QCOMPARE(m_signals.Take(), QStringList({c.signal, c.signal}));
        }
    }

    void patterns()
    {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        for (const QString name :
             {"one/b.png", "one/a.jpg", "one/C.bmp", "one/d.gif", "one/notes.txt", "two/z.PNG"})
            QVERIFY(image.save(Folder(name.left(3)) + name.mid(3), "PNG"));
        QVERIFY(QDir().mkdir(Folder("one") + "/folder.png"));

        QCOMPARE(app->LoadPatterns(OVTest::SandboxPath() + "/none"), 0);
        // Entries go by name alone, so the folder named like an image is one of them.
        QCOMPARE(app->LoadPatterns(Folder("one")), 4);
        QCOMPARE(app->LoadPatterns(Folder("two")), 1);
        QCOMPARE(app->LoadPatterns(Folder("one")), 4);
        QStringList files;
        for (int i = -1; i <= A::GetPatternCount(); ++i)
            files << A::GetPatternFile(i).remove(OVTest::SandboxPath());
        QCOMPARE(files,
                 QStringList({"", "/one/a.jpg", "/one/b.png", "/one/C.bmp", "/one/folder.png", "/two/z.PNG",
                              "/one/a.jpg", "/one/b.png", "/one/C.bmp", "/one/folder.png", ""}));
    }

    void stopColours()
    {
        A::SetBackground(Qt::blue);
        A::SetForeground(Qt::green);
        const QColor red(Qt::red);
        const QList<OVGradientStop> stops = {
            OVGradientStop(0.0, red, false, false, false), OVGradientStop(0.25, red, true, true, true),
            OVGradientStop(0.5, red, false, true, true), OVGradientStop(1.0, red, false, false, true)};
        QCOMPARE(ToGradientStops(stops),
                 Stops({{0.0, red}, {0.25, Qt::blue}, {0.5, Qt::green}, {1.0, Qt::black}}));
        QCOMPARE(ToReversedStops(stops),
                 Stops({{0.0, Qt::black}, {0.5, Qt::green}, {0.75, Qt::blue}, {1.0, red}}));
        A::SetBackground(Qt::yellow);
        QCOMPARE(ToGradientStops(stops).at(1).second, QColor(Qt::yellow));

        const Stops plain = {{0.0, red}, {0.25, Qt::cyan}, {1.0, Qt::gray}};
        QCOMPARE(ToGradientStops(FromGradientStops(plain)), plain);
        QCOMPARE(ToReversedStops(FromGradientStops(plain)),
                 Stops({{0.0, Qt::gray}, {0.75, Qt::cyan}, {1.0, red}}));
        QVERIFY(FromGradientStops({}).isEmpty() && ToReversedStops({}).isEmpty());
        m_signals.Clear();
    }

    // The stream format, byte for byte; a colour model Qt does not know reads as an invalid colour.
    // Stops read with the settings they were written with (here not the default ones) come back
    // field by field; cut short, the read says so and leaves values it read or defaults.
    void stopStreams()
    {
        QByteArray bytes;
        QDataStream first(&bytes, QIODevice::WriteOnly);
        first << OVGradientStop(0.25, QColor(255, 0, 0), true, false, true);
        QCOMPARE(bytes.toHex(' '),
                 QByteArray("3f d0 00 00 00 00 00 00 01 ff ff ff ff 00 00 00 00 00 00 01 00 01"));
        bytes[8] = char(0x40);
        QDataStream unknown(bytes);
        OVGradientStop read;
        unknown >> read;
        QCOMPARE(unknown.status(), QDataStream::Ok);
        QCOMPARE(Fields(read), QVariantList({0.25, QColor(), true, false, true}));

        const auto configure = [](QDataStream& stream) {
            stream.setByteOrder(QDataStream::LittleEndian);
            stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
        };
        const QList<OVGradientStop> stops = {
            OVGradientStop(0.375, QColor::fromHsv(30, 40, 50, 60), true, false, true),
            OVGradientStop(-0.5, QColor(), false, true, false)};
        bytes.clear();
        QDataStream out(&bytes, QIODevice::WriteOnly);
        configure(out);
        out << stops[0] << stops[1];
        QDataStream in(bytes);
        configure(in);
        for (const OVGradientStop& written : stops) {
            in >> read;
            QCOMPARE(Fields(read), Fields(written));
        }
        QVERIFY(in.status() == QDataStream::Ok && in.atEnd());

        const int positionSize = 4;
        for (int cut = 0; cut < positionSize + 14; ++cut) {
            QDataStream part(bytes.left(cut));
            configure(part);
            read = OVGradientStop(0.9, Qt::magenta, true, true, true);
            part >> read;
            QCOMPARE(part.status(), QDataStream::ReadPastEnd);
            QCOMPARE(Fields(read).mid(2), QVariantList({cut >= positionSize + 12, false, false}));
            QCOMPARE(read.GetPosition(), cut < positionSize ? 0.0 : 0.375);
            QVERIFY(cut > positionSize || !Stored(read).isValid());
        }
    }

    void bookmarkStoreCalls()
    {
        FileBookmarkStore::SetObserver(&RecordBookmark);
        {
            const OVFileBookmark empty;
            OVFileBookmark a("/a");
            a.Acquire("/a");
            OVFileBookmark copy(a);
            a.Acquire("/b");
            a.Release();
            a.Release();
            OVFileBookmark& same = copy;
            copy = same;
            copy = empty;
            copy.Release();
            a.Acquire("/b");
            OVFileBookmark::AddBookmark("/x");
        }
        FileBookmarkStore::SetObserver(nullptr);
        // Every access that began has ended, none before it began.
        QCOMPARE(s_bookmarkCalls, QStringList({"begin /a", "begin /a", "end /a", "begin /b", "end /b",
                                               "end /a", "begin /b", "add /x", "end /b"}));
    }
};

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    // The installation: "de" with two translation files around a garbage one, "ru" with one,
    // "sv" with none, and "xx", a language the editor does not know.
    s_resources = QFileInfo(QFile::decodeName(argv[0])).absolutePath() + "/../Resources";
    QDir(s_resources).removeRecursively();
    const QString translations = s_resources + "/translations/";
    for (const QString copy : {"de_a:de.lproj/a.qm", "de_c:de.lproj/C.qm", "ru:ru.lproj/ru.qm",
                               "ru:xx.lproj/xx.qm", ":sv.lproj/"}) {
        QDir().mkpath(translations + copy.section(':', 1).section('/', 0, 0));
        QFile::copy(QStringLiteral(OV_TEST_QM_DIR "/%1.qm").arg(copy.section(':', 0, 0)),
                    translations + copy.section(':', 1));
    }
    if (!OVTest::WriteFile(translations + "de.lproj/b.qm", "no translations"))
        return 1;
    return OVTest::Main<TestLook>(argc, argv);
}

#include "tst_look.moc"
