// The demo host editor end to end: the real executable with the real sample plug-ins, run
// headless on generated images and windowed under a virtual X display.

#include "OVProfileFixtures.h"
#include "OVTestSupport.h"

#include "OVCMSManager.h"

#include <QColorSpace>
#include <QGuiApplication>
#include <QImage>

#include <algorithm>
#ifdef Q_OS_UNIX
#include <csignal>
#endif

namespace {

const QString kDemo = QStringLiteral(OV_DEMO_EXECUTABLE);

struct Run
{
    int status = -1;
    QStringList lines;
    QString errors;
};

Run RunDemo(const QStringList& arguments,
            const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(kDemo, arguments);
    Run run;
    if (!process.waitForFinished(300000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.lines = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// A picture with detail in every channel, so that a wrong adjustment or a swapped channel shows.
QImage Pattern(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb((x * 7 + seed) % 256, (y * 5 + seed * 3) % 256, (x * y + seed) % 256));
    return image;
}

// What the sample brightness adjustment makes of a decoded file: every channel moved by
// brightness * 255 / 100, clamped.
QImage Brightened(const QImage& source, int brightness)
{
    QImage image = source.convertToFormat(QImage::Format_ARGB32);
    const int offset = qRound(brightness * 255.0 / 100.0);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y);
            image.setPixel(x, y,
                           qRgb(qMin(255, qRed(p) + offset), qMin(255, qGreen(p) + offset),
                                qMin(255, qBlue(p) + offset)));
        }
    return image;
}

QString UserIni(const QString& home = QDir::homePath())
{
    return home + "/AppData/Local/Tamsendo/Orvelin/user.ini";
}

// The screen of a virtual X server of its own, with the demo on it, driven by xdotool.
class Screen
{
public:
    Screen()
    {
        m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1024x700x24", "-nolisten", "tcp"});
        if (m_server.waitForReadyRead(20000))
            m_environment.insert("DISPLAY", ':' + m_server.readLine().trimmed());
        m_environment.remove("QT_QPA_PLATFORM");
        // Neither GL nor the session bus: the window needs neither, and both keep memory to the end.
        m_environment.insert("QT_XCB_GL_INTEGRATION", "none");
        m_environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        m_environment.insert("NO_AT_BRIDGE", "1");
    }
    ~Screen()
    {
        m_demo.kill();
        m_demo.waitForFinished();
        m_server.kill();
        m_server.waitForFinished();
    }

    bool Start(const QStringList& arguments)
    {
        m_demo.setProcessEnvironment(m_environment);
        m_demo.start(kDemo, arguments);
        return m_demo.waitForStarted() && Focus() && (QTest::qWait(1500), true);
    }
    // The window takes the keys (there is no window manager to give it the focus).
    bool Focus(const QString& title = "core demo editor")
    {
        return Xdo({"search", "--sync", "--onlyvisible", "--name", title, "windowfocus", "--sync"});
    }
    bool Xdo(const QStringList& arguments)
    {
        QProcess xdo;
        xdo.setProcessEnvironment(m_environment);
        xdo.start("xdotool", arguments);
        const bool done = xdo.waitForFinished(20000) && xdo.exitCode() == 0;
        QTest::qWait(250); // for the demo to take the input in and paint
        return done;
    }
    QImage Shot()
    {
        QProcess import;
        import.setProcessEnvironment(m_environment);
        import.start("import", {"-window", "root", "png:-"});
        import.waitForFinished(20000);
        return QImage::fromData(import.readAllStandardOutput(), "PNG").convertToFormat(QImage::Format_RGB32);
    }
    bool Finished()
    {
        return (m_demo.state() == QProcess::NotRunning || m_demo.waitForFinished(20000)) &&
               m_demo.exitStatus() == QProcess::NormalExit && m_demo.exitCode() == 0;
    }

private:
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QProcess m_server;
    QProcess m_demo;
};

// Where image shows on the screen pixel for pixel, found by its first row; null if nowhere.
QPoint Find(const QImage& shot, const QImage& image)
{
    for (int y = 0; y < shot.height(); ++y)
        for (int x = 0; x + image.width() <= shot.width(); ++x)
            if (shot.pixel(x, y) == image.pixel(0, 0) &&
                shot.copy(x, y, image.width(), 1) == image.copy(0, 0, image.width(), 1))
                return QPoint(x, y);
    return QPoint();
}

// A row of headless(): the files, the arguments and the files read, each blank-separated.
void Headless(const char* name, const char* files, const char* extra, int status, const char* read,
              const QStringList& reasons = {}, const QString& blocked = {})
{
    QTest::newRow(name) << OVTest::Words(files) << OVTest::Words(extra) << status << OVTest::Words(read)
                        << reasons << blocked;
}

} // namespace

class TestDemo : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(QFile::exists(kDemo));
        m_images = OVTest::SandboxPath() + "/images";
        QDir().mkpath(m_images);
        QVERIFY(Pattern(360, 240, 1).save(Image("a.png")));
        QVERIFY(Pattern(400, 300, 2).save(Image("b.jpg"), "JPEG", 90));
        // PNG data behind a BMP suffix: the BMP reader is chosen by the suffix and decodes it
        // by its contents.
        QVERIFY(Pattern(16, 24, 3).save(Image("wrong.bmp"), "PNG"));
        QVERIFY(OVTest::WriteFile(Image("empty.png"), QByteArray()));
        QVERIFY(OVTest::WriteFile(Image("corrupt.jpg"),
                                  QByteArray("\xff\xd8\xff\xe0", 4) + QByteArray(300, 'x')));
        QVERIFY(OVTest::WriteFile(Image("notes.xyz"), "not an image\n"));
        // A header that claims 20000 x 20000 pixels (1.6 GB decoded), and a photo cut short.
        QVERIFY(OVTest::WriteFile(Image("huge.ppm"), "P6\n20000 20000\n255\n" + QByteArray(1500, 'x')));
        QByteArray jpeg;
        QBuffer buffer(&jpeg);
        QVERIFY(buffer.open(QIODevice::WriteOnly) && Pattern(600, 400, 4).save(&buffer, "JPEG", 90));
        QVERIFY(OVTest::WriteFile(Image("cut.jpg"), jpeg.left(jpeg.size() * 2 / 3)));
    }

    // Each row runs the headless host once: the files, whether results are written, the exit
    // status, the files reported as read and the reasons reported for the others.
    void headless_data()
    {
        // blocked: an output name taken by a folder
        OVTest::Columns<QStringList, QStringList, int, QStringList, QStringList, QString>(
            {"files", "extra", "status", "read", "reasons", "blocked"});
        Headless("good files, brightened and written", "a.png b.jpg wrong.bmp", "--adjust brightness=20", 0,
                 "a.png b.jpg wrong.bmp");
        Headless("bad files, oversized and cut short among them, refused alone",
                 "a.png empty.png huge.ppm corrupt.jpg notes.xyz b.jpg missing.png cut.jpg",
                 "--adjust brightness=20", 1, "a.png b.jpg",
                 {"empty.png\t", "corrupt.jpg\t", "notes.xyz\tNo reader for the format \"xyz\".",
                  "missing.png\tThe file does not exist.",
                  "huge.ppm\tThe image is 20000x20000 pixels, above the limit of 100 megapixels",
                  "cut.jpg\tThe file is damaged"});
        Headless("an output that cannot be written fails alone", "a.png b.jpg",
                 "--adjust brightness=20 --jobs 1", 1, "a.png", {"b.jpg\tcannot write"}, "b.png");
        Headless("a format without a writer fails the write", "a.png", "--format xyz", 1, "",
                 {"a.png\tcannot write"});
        Headless("unknown adjustment stops before any file", "a.png", "--adjust sharpness=3", 2, "");
    }
    void headless()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, extra);
        QFETCH(int, status);
        QFETCH(QStringList, read);
        QFETCH(QStringList, reasons);
        QFETCH(QString, blocked);
        const QString output = OVTest::SandboxPath() + "/out-" + QTest::currentDataTag();
        if (!blocked.isEmpty())
            QVERIFY(QDir().mkpath(output + '/' + blocked));
        QStringList arguments = QStringList{"--headless", "--output", output} + extra;
        for (const QString& file : files)
            arguments << Image(file);
        const Run run = RunDemo(arguments);
        QCOMPARE(run.status, status);
        if (status == 2) {
            // The unknown name is followed by what there is to choose from.
            QVERIFY2(run.errors.contains("No adjustment takes \"sharpness\".") &&
                         run.errors.contains("brightness: -100 to 100, default 0"),
                     qPrintable(run.errors));
            return;
        }

        QCOMPARE(run.lines.first(),
                 QStringLiteral("Plug-ins: 5 loaded (brushcontainer, adjustments, basictools, "
                                "filter, imageio), 0 failed"));
        QCOMPARE(run.lines.last(), QString::asprintf("%d of %d files done, %d failed", read.size(),
                                                     files.size(), files.size() - read.size()));
        const QStringList ok = run.lines.filter(QRegularExpression("^OK\t"));
        const QStringList failed = run.lines.filter(QRegularExpression("^FAILED\t"));
        QCOMPARE(ok.size() + failed.size(), files.size());
        QCOMPARE(ok.size(), read.size());
        for (const QString& reason : reasons) {
            const QString line = "FAILED\t" + Image(QString()) + reason;
            QVERIFY2(std::any_of(failed.begin(), failed.end(),
                                 [&](const QString& l) { return l.startsWith(line); }),
                     qPrintable(line + " in\n" + failed.join('\n')));
        }
        if (status != 0)
            QVERIFY2(run.errors.contains("could not be read or written"), qPrintable(run.errors));

        for (const QString& line : ok) {
            // path, size, format, reader UID, milliseconds, output file
            const QStringList fields = line.split('\t');
            QCOMPARE(fields.size(), 7);
            const QFileInfo path(fields.at(1));
            const QImage source(path.filePath());
            QVERIFY(read.contains(path.fileName()));
            QCOMPARE(fields.at(2), QStringLiteral("%1x%2").arg(source.width()).arg(source.height()));
            QCOMPARE(fields.at(3), path.suffix());
            QVERIFY(fields.at(4).startsWith("{3F6A9C20-5D1B-4C7E-8A42-"));
            QVERIFY(fields.at(5).endsWith(" ms"));
            const QString written = output + '/' + path.completeBaseName() + ".png";
            QCOMPARE(fields.at(6), "-> " + written);
            QCOMPARE(QImage(written).convertToFormat(QImage::Format_ARGB32), Brightened(source, 20));
        }
    }

    // A folder with a subfolder: one worker and two write the same files, byte for byte, in the
    // same tree; without --recursive the subfolder is left out, and so is a file of no image format.
    void folders()
    {
        const QString tree = OVTest::SandboxPath() + "/tree";
        QVERIFY(QDir().mkpath(tree + "/sub"));
        for (const QString& name : QStringList{"a.png", "b.jpg", "notes.xyz", "sub/a.png", "sub/b.jpg"})
            QVERIFY(QFile::copy(Image(QFileInfo(name).fileName()), tree + '/' + name));
        QMap<QString, QByteArray> written[2];
        for (const int jobs : {1, 2}) {
            const QString output = OVTest::SandboxPath() + QStringLiteral("/tree-out-%1").arg(jobs);
            const Run run = RunDemo({"--headless", "--recursive", "--jobs", QString::number(jobs), "--adjust",
                                     "contrast=30", "--output", output, tree});
            QCOMPARE(run.status, 0);
            QCOMPARE(run.lines.last(), "4 of 4 files done, 0 failed");
            QDirIterator files(output, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                QFile file(files.next());
                QVERIFY(file.open(QIODevice::ReadOnly));
                written[jobs - 1].insert(QDir(output).relativeFilePath(file.fileName()), file.readAll());
            }
        }
        QCOMPARE(written[0].keys(), (QStringList{"a.png", "b.png", "sub/a.png", "sub/b.png"}));
        QVERIFY(written[0] == written[1]);
        QCOMPARE(RunDemo({"--headless", tree}).lines.last(), "2 of 2 files done, 0 failed");
    }

    // SIGINT once the first result is out: the files in flight are finished, no other is started,
    // every file in the output folder is complete, and the exit status says how the run ended.
    void interrupted()
    {
#ifdef Q_OS_UNIX
        const QString many = OVTest::SandboxPath() + "/many";
        QVERIFY(QDir().mkpath(many));
        QVERIFY(Pattern(1200, 900, 5).save(many + "/00.png"));
        for (int i = 1; i < 60; ++i)
            QVERIFY(QFile::copy(many + "/00.png",
                                many + QStringLiteral("/%1.png").arg(i, 2, 10, QLatin1Char('0'))));
        const QString output = OVTest::SandboxPath() + "/many-out";
        QProcess process;
        process.start(kDemo,
                      {"--headless", "--jobs", "2", "--adjust", "greyscale", "--output", output, many});
        QString lines;
        while (!lines.contains("OK\t") && process.waitForReadyRead(60000))
            lines += QString::fromUtf8(process.readAllStandardOutput());
        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(60000));
        lines += QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 128 + SIGINT);

        const int ok = lines.count(QRegularExpression("^OK\t", QRegularExpression::MultilineOption));
        QVERIFY2(ok < 60 && lines.endsWith(QStringLiteral("%1 of 60 files done, 0 failed\n").arg(ok)),
                 qPrintable(lines));
        const QStringList files = QDir(output).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(files.size(), ok);
        for (const QString& file : files)
            QCOMPARE(QImage(output + '/' + file).size(), QSize(1200, 900));
#else
        QSKIP("signals are sent the Unix way");
#endif
    }

    // Help and headless runs need no display, and a headless run speaks German (the translation
    // lrelease made at build time) once the user picked it; a window without a display is refused.
    void noDisplay()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            environment.remove(QString::fromLatin1(name));
        QVERIFY(RunDemo({"--help"}, environment).lines.join('\n').contains("--max-megapixels"));
        const Run window = RunDemo({Image("a.png")}, environment);
        QCOMPARE(window.status, 1);
        QVERIFY2(window.errors.contains("no display"), qPrintable(window.errors));

        QSettings(UserIni(), QSettings::IniFormat).setValue("Language/Index", "de");
        const Run run = RunDemo({"--headless", Image("a.png"), Image("notes.xyz")}, environment);
        QSettings(UserIni(), QSettings::IniFormat).remove("Language/Index");
        QCOMPARE(run.status, 1);
        QCOMPARE(run.lines.last(), "1 von 2 Dateien erledigt, 1 fehlgeschlagen");
        QVERIFY2(run.lines.contains(
                     QStringLiteral("FAILED\t%1\tKein Leser für das Format „xyz“.").arg(Image("notes.xyz"))),
                 qPrintable(run.lines.join('\n')));
    }

    // The window under a virtual X server, driven by key presses and clicks: grey-scale undone and
    // redone, a zoom in and out at a clicked point, the picker's colour kept in "user.ini", an export
    // in the working profile, which the file carries, and the opened and exported files kept in the
    // recent list. OV_DEMO_SCREENSHOT names where to copy the window's picture (the README's).
    void interactive()
    {
        for (const char* program : {"Xvfb", "xdotool", "import"})
            if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
                QSKIP("Xvfb, xdotool and ImageMagick's import are needed");
        OVCMSManager::InitInstance("/usr/share/color/icc");
        int profile = 0;
        while (
            !OVCMSManager::GetInstance()->GetRGBProfile(profile).GetFilePath().endsWith("AdobeRGB1998.icc"))
            QVERIFY(++profile < OVCMSManager::GetInstance()->GetRGBProfileCount());
        QSettings(UserIni(), QSettings::IniFormat).setValue("ColorManagement/WorkingProfileID", profile);

        Screen screen;
        const QImage image = Pattern(600, 400, 6); // at 150% larger than the view
        QVERIFY(image.save(Image("c.png")));
        const QString shot = OVTest::SandboxPath() + "/window.png";
        QVERIFY(screen.Start({Image("c.png"), "--adjust", "greyscale", "--screenshot", shot}));
        // Taken once the images are open and adjusted.
        QTRY_VERIFY_WITH_TIMEOUT(!QImage(shot).isNull(), 20000);
        if (!qEnvironmentVariableIsEmpty("OV_DEMO_SCREENSHOT")) {
            QFile::remove(qEnvironmentVariable("OV_DEMO_SCREENSHOT"));
            QFile::copy(shot, qEnvironmentVariable("OV_DEMO_SCREENSHOT"));
        }
        const QImage grey = screen.Shot();
        QVERIFY(Find(grey, image).isNull());
        QVERIFY(screen.Xdo({"key", "ctrl+z"}));
        const QImage undone = screen.Shot();
        const QPoint at = Find(undone, image);
        QVERIFY(!at.isNull());
        QVERIFY(screen.Xdo({"key", "ctrl+shift+z"}));
        QCOMPARE(screen.Shot(), grey);
        QVERIFY(screen.Xdo({"key", "ctrl+z"}));
        // 150% about the click: the pixel clicked stays where it was, and 60 pixels of the screen
        // show 40 of the image; Alt-click goes back to the same picture.
        const QPoint click = at + QPoint(300, 200);
        QVERIFY(screen.Xdo({"key", "z"}) && screen.Xdo({"mousemove", QString::number(click.x()),
                                                        QString::number(click.y()), "click", "1"}));
        const QImage zoomed = screen.Shot();
        QCOMPARE(zoomed.pixel(click), undone.pixel(click));
        QSet<QRgb> columns;
        for (int x = 0; x < 60; ++x)
            columns.insert(zoomed.pixel(click + QPoint(x, 0)));
        QCOMPARE(columns.size(), 40);
        QVERIFY(screen.Xdo({"keydown", "alt", "click", "1", "keyup", "alt"}));
        QCOMPARE(Find(screen.Shot(), image), at);

        const QString exported = OVTest::SandboxPath() + "/exported.png";
        // The picker's panel may widen the dock and move the image.
        QVERIFY(screen.Xdo({"key", "i"}));
        const QPoint pick = Find(screen.Shot(), image) + click - at;
        QVERIFY(
            screen.Xdo({"mousemove", QString::number(pick.x()), QString::number(pick.y()), "click", "1"}));
        QVERIFY(screen.Xdo({"key", "ctrl+e"}) && screen.Focus("^Export$") &&
                screen.Xdo({"key", "ctrl+a", "type", exported}) && screen.Xdo({"key", "Return"}) &&
                screen.Focus("^Export options$") && screen.Xdo({"key", "Return"}) && screen.Focus() &&
                screen.Xdo({"key", "ctrl+q"}));
        QVERIFY(screen.Finished());
        const QSettings user(UserIni(), QSettings::IniFormat);
        QCOMPARE(user.value("Colors/Foreground").value<QColor>(), image.pixelColor(click - at));
        // The recent list as written at shutdown: a count, then the paths (a streamed QStringList).
        QDataStream stream(user.value("RecentFiles").toByteArray());
        QStringList recents;
        stream >> recents;
        QCOMPARE(recents, (QStringList{exported, Image("c.png")}));

        QFile icc(OVCMSManager::GetInstance()->GetRGBProfile(profile).GetFilePath());
        QVERIFY(icc.open(QIODevice::ReadOnly));
        QImage written(exported);
        QCOMPARE(written.colorSpace(), QColorSpace::fromIccProfile(icc.readAll()));
        // Other numbers in that profile, the same colour back in sRGB.
        const QPoint p = click - at;
        const QColor back = written.convertedToColorSpace(QColorSpace::SRgb).pixelColor(p);
        QVERIFY(written.pixel(p) != image.pixel(p));
        const QColor was = image.pixelColor(p);
        QVERIFY(qAbs(back.red() - was.red()) + qAbs(back.green() - was.green()) +
                    qAbs(back.blue() - was.blue()) <=
                4);
    }

    // The statistics end to end: the collector on a free loopback port, the headless host pointed
    // at it by OVDEMO_COLLECTOR_PORT with a profile of its own, three runs: the first identifies the
    // installation and reports its start, opens, adjustments and exports; the second only its start
    // and open, and posts feedback through the endpoint messenger; the third, opted out, sends no
    // statistics.
    void statistics()
    {
        QProcess collector;
        collector.start(QStringLiteral(OV_COLLECTOR_EXECUTABLE), {"0"});
        QVERIFY(collector.waitForReadyRead(60000));
        const QString first = QString::fromUtf8(collector.readLine()).trimmed();
        QVERIFY2(first.startsWith("listening on "), qPrintable(first));
        const QString home = OVTest::SandboxPath() + "/home-statistics";
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("OVDEMO_COLLECTOR_PORT", first.section(' ', 2));
        environment.insert("HOME", home);
        environment.insert("APPDATA", home);
        const QStringList full{"--headless",  "--adjust",     "greyscale",   "--output",
                               home + "/out", Image("a.png"), Image("b.jpg")};
        QCOMPARE(RunDemo(full, environment).status, 0);
        const Run second =
            RunDemo({"--headless", "--feedback", "Hello from the test", Image("a.png")}, environment);
        // The reply counts the posts so far, which the statistics posted meanwhile make unpredictable.
        const QRegularExpression reply(R"(^Feedback reply: \{"received":\d+,"reply":"Thank you."\}$)");
        QVERIFY2(second.lines.filter(reply).size() == 1, qPrintable(second.lines.join('\n')));
        QSettings(UserIni(home), QSettings::IniFormat).setValue("Statistics/Enabled", false);
        QCOMPARE(RunDemo({"--headless", Image("a.png")}, environment).status, 0);
        collector.kill();
        collector.waitForFinished();

        QStringList others;             // identifications and feedback, with the key or the text
        QMap<double, QStringList> runs; // event types by session, which number in start order
        for (const QByteArray& line : collector.readAllStandardOutput().trimmed().split('\n')) {
            const QJsonObject post = QJsonDocument::fromJson(line).object();
            const QJsonValue form = post["form"];
            const QString path = post["path"].toString() + ' ';
            if (path == "/feedback ")
                others << path + post["json"]["feedback"].toString();
            else if (path == "/identification ")
                others << path + form["api_key"].toString() + ' ' +
                              form["identification"]["user_properties"]["plan"].toString();
            else
                QCOMPARE(path + form["api_key"].toString(), "/events ovdemo-key");
            if (path == "/events ")
                runs[form["event"]["session_id"].toDouble()] << form["event"]["event_type"].toString();
        }
        QCOMPARE(others, (QStringList{"/identification ovdemo-key demo", "/feedback Hello from the test"}));
        QCOMPARE(runs.size(), 2);
        QCOMPARE(runs.first().first(), "start");
        QStringList sorted = runs.first();
        std::sort(sorted.begin(), sorted.end());
        QCOMPARE(sorted, (QStringList{"adjust", "adjust", "export", "export", "open", "open", "start"}));
        QCOMPARE(runs.last(), (QStringList{"start", "open"}));
    }

private:
    QString Image(const QString& name) const
    {
        return m_images + '/' + name;
    }

    QString m_images;
};

OV_TEST_MAIN(TestDemo, QGuiApplication)

#include "tst_demo.moc"
