// Platform information on the application object and the system facts of the statistics:
// OS version, type and name, screens, device identifier and region.

#include "OVApplication.h"
#include "OVTestSupport.h"
#include "private/OVSystemInfo_p.h"

#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>

class TestPlatformInfo : public QObject
{
    Q_OBJECT

private slots:
    void nameKeepsFirstResult();
    void version();
    void screens();
    void deviceIdAndRegion();
};

void TestPlatformInfo::nameKeepsFirstResult()
{
    // Must stay the process's first calls: the kept name lives as long as the process.
    QCOMPARE(OVApplication::GetOSName(OVApplication::OSVersion(13), OVApplication::Workstation), QString());
    QCOMPARE(OVApplication::GetOSName(OVApplication::Windows7, OVApplication::Server),
             QStringLiteral("Windows7Server"));
    QCOMPARE(OVApplication::GetOSName(OVApplication::Windows10, OVApplication::Workstation),
             QStringLiteral("Windows7Server"));
}

void TestPlatformInfo::version()
{
    OVTest::LogCapture log;
    const OVApplication::OSVersion version = OVApplication::GetOSVersion();
    QCOMPARE(OVApplication::GetOSVersion(), version);
    const QString text = OVApplication::GetOSVersionString();
    const QStringList lines = log.Matching(QStringLiteral("Version "));
#ifdef Q_OS_WIN
    QVERIFY(version != OVApplication::Unknown);
    QCOMPARE(lines.size(), 1);
    const QStringList numbers = text.split(QLatin1Char('.'));
    QVERIFY(lines.first().endsWith(
        QStringLiteral(". Version %1.%2 build %3\"").arg(numbers[0], numbers[1], numbers[2])));
#else
    // Other systems have no Windows version: no name, no log line, and the kernel's numbers.
    QCOMPARE(version, OVApplication::Unknown);
    QVERIFY(lines.isEmpty());
    const QRegularExpressionMatch kernel =
        QRegularExpression(QStringLiteral("^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?"))
            .match(QSysInfo::kernelVersion());
    QVERIFY(kernel.hasMatch());
    QCOMPARE(text, QStringLiteral("%1.%2.%3")
                       .arg(kernel.captured(1).toInt())
                       .arg(kernel.captured(2).toInt())
                       .arg(kernel.captured(3).toInt()));
#endif
    QCOMPARE(OVApplication::GetOSType(), OVApplication::Workstation);
}

void TestPlatformInfo::screens()
{
    // The offscreen platform has one 800x600 screen at a pixel ratio of 1.
    QCOMPARE(GetScreenResolutions(), QStringList{QStringLiteral("800x600")});
    QCOMPARE(GetScreenScalings(), QStringList{QStringLiteral("100")});
}

void TestPlatformInfo::deviceIdAndRegion()
{
    const QString id = MakeDeviceId();
    QCOMPARE(MakeDeviceId(), id);
    QVERIFY2(QRegularExpression(QStringLiteral("^[0-9A-F]{4}(-[0-9A-F]{4}){5,}$")).match(id).hasMatch(),
             qPrintable(id));
    QFile machineId(QStringLiteral("/etc/machine-id"));
    if (machineId.open(QIODevice::ReadOnly) && machineId.readAll().trimmed().size() == 32)
        QCOMPARE(id.split(QLatin1Char('-')).size(), 14);

    const QString region = GetSystemRegion();
    QVERIFY2(region == QLatin1String("Unknown") || (region.size() > 1 && region.endsWith(QChar(0))),
             qPrintable(region));
}

OV_TEST_MAIN(TestPlatformInfo)
#include "tst_platforminfo.moc"
