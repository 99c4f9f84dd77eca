// The sibling libraries: ICC profiles read with Little CMS (bad files and the RGB profiles
// of a folder are the colour profile manager's test), and the pixel-ratio rounding.

#include "OVCMSProfile.h"
#include "OVPixelRatioRound.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"

class TestFamily : public QObject
{
    Q_OBJECT
private slots:
    void profiles_data()
    {
        OVTest::Columns<QByteArray, bool, quint32>({"bytes", "valid", "colorSpace"});
        QTest::newRow("sRGB") << OVTest::MakeProfile("sRGB") << true << quint32(OVCMSProfile::RGBSpace);
        QTest::newRow("gray") << OVTest::MakeProfile("gray") << true << quint32(OVCMSProfile::GraySpace);
        QTest::newRow("Lab") << OVTest::MakeProfile("lab") << true << quint32(OVCMSProfile::LabSpace);
        QTest::newRow("garbage") << QByteArray(512, '\x5a') << false << 0u;
    }
    void profiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);
        QTemporaryDir dir;
        const QString path = dir.filePath("profile.icc");
        QVERIFY(OVTest::WriteFile(path, bytes));

        OVCMSProfile profile;
        QCOMPARE(profile.Load(path), valid);
        QCOMPARE(profile.IsValid(), valid);
        QTEST(profile.GetColorSpace(), "colorSpace");
        QCOMPARE(profile.GetFilePath(), valid ? path : QString());
        QCOMPARE(profile.GetData(), valid ? bytes : QByteArray());
        // A failed load leaves an empty profile, whatever it held before.
        QVERIFY(!profile.Load(dir.filePath("missing.icc")));
        QVERIFY(!profile.IsValid());
        QCOMPARE(profile.GetColorSpace(), 0u);
    }

    void pixelRatio_data()
    {
        // device: of 10.4 logical units; logical: of 31 device pixels
        OVTest::Columns<double, double, int, int>({"ratio", "stored", "device", "logical"});
        QTest::newRow("1") << 1.0 << 1.0 << 10 << 31;
        QTest::newRow("1.5") << 1.5 << 1.5 << 16 << 21;
        QTest::newRow("2") << 2.0 << 2.0 << 21 << 16;
        QTest::newRow("zero falls back to 1") << 0.0 << 1.0 << 10 << 31;
        QTest::newRow("negative falls back to 1") << -2.0 << 1.0 << 10 << 31;
        QTest::newRow("NaN falls back to 1") << qQNaN() << 1.0 << 10 << 31;
    }
    void pixelRatio()
    {
        QFETCH(double, ratio);
        OVPixelRatioRound::SetPixelRatio(ratio);
        QTEST(OVPixelRatioRound::GetPixelRatio(), "stored");
        QTEST(OVPixelRatioRound::ToDevice(10.4), "device");
        QTEST(OVPixelRatioRound::ToLogical(31), "logical");
    }
};

QTEST_GUILESS_MAIN(TestFamily)

#include "tst_family.moc"
