// Platform information on the application object and the system facts of the statistics:
// OS version, type and name, screens, device identifier and region.

#include "OVApplication.h"
#include "OVTestSupport.h"
#include "private/OVSystemInfo_p.h"

#include <QRegularExpression>
#include <QSysInfo>

class TestPlatformInfo : public QObject
{
    Q_OBJECT

private slots:
    void nameKeepsFirstResult()
    {
        // Must stay the process's first calls: the kept name lives as long as the process.
        QCOMPARE(OVApplication::GetOSName(OVApplication::OSVersion(13), OVApplication::Workstation),
                 QString());
        QCOMPARE(OVApplication::GetOSName(OVApplication::Windows7, OVApplication::Server),
                 QStringLiteral("Windows7Server"));
        QCOMPARE(OVApplication::GetOSName(OVApplication::Windows10, OVApplication::Workstation),
                 QStringLiteral("Windows7Server"));
    }

    void version()
    {
#ifdef Q_OS_WIN
        QSKIP("The Windows answers are checked by the platform layer's own test program");
#endif
        // No Windows version here: no name and no version line, and the kernel's numbers.
        OVTest::LogCapture log;
        QCOMPARE(OVApplication::GetOSVersion(), OVApplication::Unknown);
        QVERIFY(log.Matching(QStringLiteral("Version ")).isEmpty());
        const QRegularExpressionMatch kernel =
            QRegularExpression(QStringLiteral("^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?"))
                .match(QSysInfo::kernelVersion());
        QCOMPARE(OVApplication::GetOSVersionString(), QStringLiteral("%1.%2.%3")
                                                          .arg(kernel.captured(1).toInt())
                                                          .arg(kernel.captured(2).toInt())
                                                          .arg(kernel.captured(3).toInt()));
        QCOMPARE(OVApplication::GetOSType(), OVApplication::Workstation);
    }

    void screens()
    {
        // Only the copy is read, never the toolkit's screens: emptied, it stays empty although
        // the offscreen platform has a screen; the primary screen comes first.
        SetToolkitScreens({}, {});
        QCOMPARE(GetScreenResolutions(), QStringList());
        SetToolkitScreens({{"1024x768", false}, {"800x600", true}}, {{"100", false}, {"150", true}});
        QCOMPARE(GetScreenResolutions(), (QStringList{"800x600", "1024x768"}));
        QCOMPARE(GetScreenScalings(), (QStringList{"150", "100"}));
    }

    void deviceIdAndRegion()
    {
        // The platform layer's own test checks the words; here the text crosses into Qt whole.
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9A-F]{4}(-[0-9A-F]{4}){5,}$"))
                    .match(MakeDeviceId())
                    .hasMatch());
        const QString region = GetSystemRegion();
        QVERIFY(region == QLatin1String("Unknown") || (region.size() > 1 && region.endsWith(QChar(0))));
    }
};

OV_TEST_MAIN(TestPlatformInfo)
#include "tst_platforminfo.moc"
