// The look: themes from real resources and folders, the four colours and the pattern index
// with their signals, the gradient brush, texture patterns from real image files, and gradient
// stops bound to the colours, converted and streamed.

#include "OVApplication.h"
#include "OVBuildLogMessages.h"
#include "OVGradientStop.h"
#include "OVTestSupport.h"

#include <QBrush>
#include <QDataStream>
#include <QDir>
#include <QImage>
#include <QSettings>

namespace {

using Stops = QVector<QPair<double, QColor>>;
using ColourGetter = QColor (*)();
using ColourSetter = void (*)(const QColor&);

QString Folder(const QString& name)
{
    const QString path = OVTest::SandboxPath() + QLatin1Char('/') + name;
    QDir().mkpath(path);
    return path;
}

QByteArray ResourceFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Record(OVTest::SignalLog& log)
{
    OVApplication* app = OVApplication::GetInstance();
    log.Record(app, &OVApplication::BackgroundChanged, QStringLiteral("BackgroundChanged"));
    log.Record(app, &OVApplication::ForegroundChanged, QStringLiteral("ForegroundChanged"));
    log.Record(app, &OVApplication::MaskBackgroundChanged, QStringLiteral("MaskBackgroundChanged"));
    log.Record(app, &OVApplication::MaskForegroundChanged, QStringLiteral("MaskForegroundChanged"));
    log.Record(app, &OVApplication::TexturePatternChanged, QStringLiteral("TexturePatternChanged"));
}

} // namespace

Q_DECLARE_METATYPE(ColourGetter)
Q_DECLARE_METATYPE(ColourSetter)
Q_DECLARE_METATYPE(QDataStream::ByteOrder)
Q_DECLARE_METATYPE(QDataStream::FloatingPointPrecision)

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void themes();
    void colours_data();
    void colours();
    void patternIndexAndGradient();
    void patterns();
    void stopColours();
    void stopStreaming_data();
    void stopStreaming();
    void stopBytes();
};

void TestLook::themes()
{
    OVApplication* app = OVApplication::GetInstance();
    QCOMPARE(OVApplication::GetApplicationTheme(), OVApplication::Dark);
    QCOMPARE(int(app->GetTheme()), 0);
    QCOMPARE(OVApplication::GetName(OVApplication::Light), QStringLiteral(":/Light"));
    QVERIFY(OVApplication::GetName(OVApplication::ThemeType(3)).isEmpty());

    // A folder that does not exist counts as light and gives no style sheet.
    OVTest::LogCapture log;
    OVApplication::SetUserValue(OVApplication::ThemePath, OVTest::SandboxPath() + QStringLiteral("/none"));
    QCOMPARE(OVApplication::GetApplicationTheme(), OVApplication::Light);
    QVERIFY(!app->LoadTheme());
    QCOMPARE(OVTest::BuildLogMessages(log.Messages()), QStringList({"Load theme error."}));
    QCOMPARE(int(app->GetTheme()), 0);
    QVERIFY(qApp->styleSheet().isEmpty());

    // Bytes that are no Latin-1 text are taken as Latin-1 all the same.
    const QString folder = Folder(QStringLiteral("theme"));
    const QByteArray bytes("QWidget { font-family: \"\xc3\xa9\xff\xfe\x01\"; }");
    QFile qss(folder + QStringLiteral("/pixel.qss"));
    QVERIFY(qss.open(QIODevice::WriteOnly) && qss.write(bytes) == bytes.size());
    qss.close();
    OVApplication::SetUserValue(OVApplication::ThemePath, folder);
    QVERIFY(app->LoadTheme());
    QCOMPARE(qApp->styleSheet(), QString::fromLatin1(bytes));
    QCOMPARE(app->GetTheme(), OVApplication::Light);

    // The folders stay searched in the order they came: with the folder's sheet gone the dark
    // one is found, and it is still found after the light theme is chosen.
    QVERIFY(qss.remove());
    OVApplication::SetApplicationTheme(OVApplication::Dark);
    QVERIFY(app->LoadTheme());
    QCOMPARE(qApp->styleSheet(), QString::fromLatin1(ResourceFile(QStringLiteral(":/Dark/pixel.qss"))));
    QCOMPARE(app->GetTheme(), OVApplication::Dark);
    OVApplication::SetApplicationTheme(OVApplication::Light);
    QCOMPARE(OVApplication::GetUserValue(OVApplication::ThemePath).toString(), QStringLiteral(":/Light"));
    QVERIFY(app->LoadTheme());
    QCOMPARE(qApp->styleSheet(), QString::fromLatin1(ResourceFile(QStringLiteral(":/Dark/pixel.qss"))));
    QCOMPARE(app->GetTheme(), OVApplication::Light);

    OVApplication::SetApplicationTheme(OVApplication::ThemeType(0));
    QCOMPARE(OVApplication::GetUserValue(OVApplication::ThemePath).toString(), QString());
    QCOMPARE(OVApplication::GetApplicationTheme(), OVApplication::Light);
}

void TestLook::colours_data()
{
    QTest::addColumn<ColourGetter>("get");
    QTest::addColumn<ColourSetter>("set");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QColor>("def");
    QTest::addColumn<QString>("signal");
    QTest::newRow("background") << &OVApplication::GetBackground << &OVApplication::SetBackground
                                << "Colors/Background" << QColor(Qt::white) << "BackgroundChanged()";
    QTest::newRow("foreground") << &OVApplication::GetForeground << &OVApplication::SetForeground
                                << "Colors/Foreground" << QColor(Qt::black) << "ForegroundChanged()";
    QTest::newRow("mask background") << &OVApplication::GetMaskBackground << &OVApplication::SetMaskBackground
                                     << "Colors/Mask/Background" << QColor(Qt::black)
                                     << "MaskBackgroundChanged()";
    QTest::newRow("mask foreground") << &OVApplication::GetMaskForeground << &OVApplication::SetMaskForeground
                                     << "Colors/Mask/Foreground" << QColor(Qt::white)
                                     << "MaskForegroundChanged()";
}

void TestLook::colours()
{
    QFETCH(ColourGetter, get);
    QFETCH(ColourSetter, set);
    QFETCH(QString, key);
    QFETCH(QColor, def);
    QFETCH(QString, signal);
    OVTest::SignalLog log;
    Record(log);

    QCOMPARE(get(), def);
    set(def);
    const QColor other = QColor::fromHsv(200, 100, 50);
    set(other);
    set(other);
    QCOMPARE(get(), other);
    const QString userIni = OVApplication::GetUserDataFolder() + QStringLiteral("/user.ini");
    QCOMPARE(QSettings(userIni, QSettings::IniFormat).value(key).value<QColor>(), other);
    set(def);
    QCOMPARE(log.Take(), QStringList({signal, signal}));
}

void TestLook::patternIndexAndGradient()
{
    OVTest::SignalLog log;
    Record(log);
    QCOMPARE(OVApplication::GetTexturePatternIndex(), 0);
    OVApplication::SetTexturePatternIndex(0);
    OVApplication::SetTexturePatternIndex(7);
    OVApplication::SetTexturePatternIndex(7);
    OVApplication::SetTexturePatternIndex(-3);
    QCOMPARE(OVApplication::GetTexturePatternIndex(), -3);

    QCOMPARE(OVApplication::GetGradient(), QBrush());
    QLinearGradient gradient(0, 0, 1, 0);
    gradient.setColorAt(0.5, Qt::red);
    OVApplication::SetGradient(gradient);
    QCOMPARE(OVApplication::GetGradient(), QBrush(gradient));
    QCOMPARE(log.Take(), QStringList({"TexturePatternChanged(7)", "TexturePatternChanged(-3)"}));
}

void TestLook::patterns()
{
    OVApplication* app = OVApplication::GetInstance();
    const QString first = Folder(QStringLiteral("patterns1"));
    const QString second = Folder(QStringLiteral("patterns2"));
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    for (const char* name : {"b.png", "a.jpg", "C.bmp", "d.gif"})
        QVERIFY(image.save(first + QLatin1Char('/') + QLatin1String(name), "PNG"));
    QVERIFY(image.save(second + QStringLiteral("/z.PNG"), "PNG"));
    QFile text(first + QStringLiteral("/notes.txt"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not an image") > 0);
    QVERIFY(QDir(first).mkdir(QStringLiteral("folder.png")));

    QCOMPARE(app->LoadPatterns(OVTest::SandboxPath() + QStringLiteral("/none")), 0);
    QCOMPARE(OVApplication::GetPatternCount(), 0);
    // Entries are taken by name alone, so the folder named like an image is among them.
    QCOMPARE(app->LoadPatterns(first), 4);
    QCOMPARE(app->LoadPatterns(second), 1);
    QCOMPARE(app->LoadPatterns(first), 4);
    QStringList files;
    for (int i = 0; i < OVApplication::GetPatternCount(); ++i)
        files << OVApplication::GetPatternFile(i).section(QLatin1Char('/'), -2);
    QCOMPARE(files, QStringList({"patterns1/a.jpg", "patterns1/b.png", "patterns1/C.bmp",
                                 "patterns1/folder.png", "patterns2/z.PNG", "patterns1/a.jpg",
                                 "patterns1/b.png", "patterns1/C.bmp", "patterns1/folder.png"}));
    QVERIFY(QFileInfo(OVApplication::GetPatternFile(0)).isAbsolute());
    QVERIFY(OVApplication::GetPatternFile(-1).isEmpty());
    QVERIFY(OVApplication::GetPatternFile(OVApplication::GetPatternCount()).isEmpty());
}

void TestLook::stopColours()
{
    OVApplication::SetBackground(Qt::blue);
    OVApplication::SetForeground(Qt::green);
    const QColor red(Qt::red);
    const QList<OVGradientStop> stops = {
        OVGradientStop(0.0, red, false, false, false), OVGradientStop(0.25, red, true, true, true),
        OVGradientStop(0.5, red, false, true, true), OVGradientStop(1.0, red, false, false, true)};
    QCOMPARE(
        ToGradientStops(stops),
        Stops({{0.0, red}, {0.25, QColor(Qt::blue)}, {0.5, QColor(Qt::green)}, {1.0, QColor(Qt::black)}}));
    QCOMPARE(
        ToReversedStops(stops),
        Stops({{0.0, QColor(Qt::black)}, {0.5, QColor(Qt::green)}, {0.75, QColor(Qt::blue)}, {1.0, red}}));

    // Bound colours follow the application's colours at the time of the conversion.
    OVApplication::SetBackground(Qt::yellow);
    QCOMPARE(ToGradientStops(stops).at(1).second, QColor(Qt::yellow));

    const Stops plain = {{0.0, red}, {0.3, QColor(Qt::cyan)}, {1.0, QColor(Qt::gray)}};
    const QList<OVGradientStop> converted = FromGradientStops(plain);
    QCOMPARE(converted.size(), 3);
    QVERIFY(!converted[1].IsBackground() && !converted[1].IsForeground() && !converted[1].IsUserColor());
    QCOMPARE(ToGradientStops(converted), plain);
    const Stops reversed = ToReversedStops(converted);
    QCOMPARE(reversed.size(), 3);
    QCOMPARE(reversed[0], qMakePair(0.0, plain[2].second));
    QCOMPARE(reversed[1].first, 1.0 - 0.3);
    QCOMPARE(reversed[1].second, plain[1].second);
    QCOMPARE(reversed[2].first, 1.0);
    QVERIFY(FromGradientStops({}).isEmpty() && ToGradientStops({}).isEmpty() &&
            ToReversedStops({}).isEmpty());
    OVApplication::SetBackground(Qt::white);
    OVApplication::SetForeground(Qt::black);
}

void TestLook::stopStreaming_data()
{
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QDataStream::FloatingPointPrecision>("precision");
    QTest::newRow("big endian, double") << QDataStream::BigEndian << QDataStream::DoublePrecision;
    QTest::newRow("big endian, single") << QDataStream::BigEndian << QDataStream::SinglePrecision;
    QTest::newRow("little endian, double") << QDataStream::LittleEndian << QDataStream::DoublePrecision;
    QTest::newRow("little endian, single") << QDataStream::LittleEndian << QDataStream::SinglePrecision;
}

// Stops written and read with the same settings come back field by field; cut short, the read
// says so and leaves nothing but values it read or defaults.
void TestLook::stopStreaming()
{
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QDataStream::FloatingPointPrecision, precision);
    const QList<OVGradientStop> stops = {
        OVGradientStop(0.375, QColor::fromHsv(30, 40, 50, 60), true, false, true),
        OVGradientStop(1.0, QColor(), false, true, false),
        OVGradientStop(-0.5, QColor::fromCmyk(1, 2, 3, 4), true, true, true)};
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(order);
    out.setFloatingPointPrecision(precision);
    for (const OVGradientStop& stop : stops)
        out << stop;

    QDataStream in(bytes);
    in.setByteOrder(order);
    in.setFloatingPointPrecision(precision);
    for (const OVGradientStop& stop : stops) {
        OVGradientStop read;
        in >> read;
        QCOMPARE(read.GetPosition(), stop.GetPosition());
        QCOMPARE(read.IsBackground(), stop.IsBackground());
        QCOMPARE(read.IsForeground(), stop.IsForeground());
        QCOMPARE(read.IsUserColor(), stop.IsUserColor());
        OVGradientStop written = stop;
        for (OVGradientStop* unbound : {&read, &written}) {
            unbound->SetBackground(false);
            unbound->SetForeground(false);
            unbound->SetUserColor(false);
        }
        QCOMPARE(read.GetColor(), written.GetColor());
    }
    QCOMPARE(in.status(), QDataStream::Ok);
    QVERIFY(in.atEnd());

    const int positionSize = precision == QDataStream::DoublePrecision ? 8 : 4;
    const int size = positionSize + 11 + 3;
    for (int cut = 0; cut < size; ++cut) {
        QDataStream part(bytes.left(cut));
        part.setByteOrder(order);
        part.setFloatingPointPrecision(precision);
        OVGradientStop read(0.9, Qt::magenta, true, true, true);
        part >> read;
        QCOMPARE(part.status(), QDataStream::ReadPastEnd);
        QCOMPARE(read.GetPosition(), cut < positionSize ? 0.0 : 0.375);
        QCOMPARE(read.IsBackground(), cut >= size - 2);
        QVERIFY(!read.IsForeground() && !read.IsUserColor());
        if (cut <= positionSize)
            QVERIFY(!read.GetColor().isValid());
    }
}

void TestLook::stopBytes()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << OVGradientStop(0.25, QColor(255, 0, 0), true, false, true);
    QCOMPARE(bytes.toHex(' '),
             QByteArray("3f d0 00 00 00 00 00 00 01 ff ff ff ff 00 00 00 00 00 00 01 00 01"));

    // A colour specification Qt does not know reads as an invalid colour.
    bytes[8] = char(0x40);
    QDataStream in(bytes);
    OVGradientStop read;
    in >> read;
    QCOMPARE(in.status(), QDataStream::Ok);
    QCOMPARE(read.GetPosition(), 0.25);
    QVERIFY(read.IsBackground() && !read.IsForeground() && read.IsUserColor());
    read.SetBackground(false);
    read.SetUserColor(false);
    QVERIFY(!read.GetColor().isValid());
}

OV_TEST_MAIN(TestLook)

#include "tst_look.moc"
