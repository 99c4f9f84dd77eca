// Every static of the application object when no OVApplication runs: before any application
// object exists and under a plain QApplication.

#include "OVApplication.h"
#include "OVTestSupport.h"

#include <QDir>

namespace {
bool s_beforeApplication = false;
} // namespace

class TestNoInstance : public QObject
{
    Q_OBJECT

private slots:
    void beforeAnyApplication();
    void plainApplicationIsNotAnInstance();
    void gettersReturnDefaults();
    void settersDoNothing();
    void operationsAreHarmless();
};

void TestNoInstance::beforeAnyApplication()
{
    QVERIFY(s_beforeApplication);
}

void TestNoInstance::plainApplicationIsNotAnInstance()
{
    QVERIFY(qApp != nullptr);
    QCOMPARE(OVApplication::GetInstance(), nullptr);
    // The resource folder does not depend on the application class.
    QVERIFY(!OVApplication::GetResourcePath().isEmpty());
}

void TestNoInstance::gettersReturnDefaults()
{
    QCOMPARE(OVApplication::GetApplicationValue(QStringLiteral("k"), 5), QVariant(5));
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("k"), QStringLiteral("d")),
             QVariant(QStringLiteral("d")));
    // The default comes back as given, without the region stripping of stored languages.
    QCOMPARE(OVApplication::GetUserValue(OVApplication::LanguageIndex, QStringLiteral("pt_BR")),
             QVariant(QStringLiteral("pt_BR")));
    QCOMPARE(OVApplication::GetDataFolder(), QString());
    QCOMPARE(OVApplication::GetUserDataFolder(), QString());
    QCOMPARE(OVApplication::GetPathOpen(), QString());
    QCOMPARE(OVApplication::GetPathExport(), QString());
    QCOMPARE(OVApplication::GetBatchPathOpen(), QString());
    QCOMPARE(OVApplication::GetBatchPathInput(), QString());
    QCOMPARE(OVApplication::GetBatchPathOutput(), QString());
    QCOMPARE(OVApplication::IsPNGCompressionVisible(), true);
    QCOMPARE(OVApplication::IsJPGCompressionVisible(), true);
    QCOMPARE(OVApplication::IsTIFCompressionVisible(), true);
    QCOMPARE(OVApplication::WarnAboutLayerInfo(), true);
    QCOMPARE(OVApplication::GetColorManagementMissingPolicy(),
             OVApplication::ColorManagementMissingPolicy(1));
    QCOMPARE(OVApplication::GetColorManagementEqualPolicy(), OVApplication::ColorManagementEqualPolicy(1));
    QCOMPARE(OVApplication::GetColorManagementNotEqualPolicy(),
             OVApplication::ColorManagementNotEqualPolicy(3));
    QCOMPARE(OVApplication::GetColorManagementColorSpaceMismatchPolicy(),
             OVApplication::ColorManagementColorSpaceMismatchPolicy(0));
    QCOMPARE(OVApplication::GetBrushFactory(), nullptr);
    QCOMPARE(OVApplication::GetProgressTimeout(), 2000);
    // Key names need no instance.
    QCOMPARE(OVApplication::GetName(OVApplication::ThemePath), QStringLiteral("Theme/Path"));
}

void TestNoInstance::settersDoNothing()
{
    const QString home = QDir::homePath();
    const QStringList before = QDir(home).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);

    OVApplication::SetAppicationValue(QStringLiteral("k"), 1);
    OVApplication::SetUserValue(QStringLiteral("k"), 1);
    OVApplication::SetUserValue(OVApplication::ThemePath, QStringLiteral(":/Light"));
    OVApplication::SetDataFolder(home + QStringLiteral("/data"));
    OVApplication::SetUserDataFolder(home + QStringLiteral("/user"));
    OVApplication::SetPathOpen(QStringLiteral("/x"));
    OVApplication::SetPNGCompressionVisible(false);
    OVApplication::SetWarnAboutLayerInfo(false);
    OVApplication::SetColorManagementNotEqualPolicy(OVApplication::NotEqualAsk);

    QCOMPARE(QDir(home).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), before);
    QCOMPARE(OVApplication::GetPathOpen(), QString());
}

void TestNoInstance::operationsAreHarmless()
{
    OVApplication::FlushData();
    OVApplication::UIReady();
}

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    s_beforeApplication = OVApplication::GetInstance() == nullptr &&
                          OVApplication::GetResourcePath().isEmpty() &&
                          OVApplication::GetUserValue(QStringLiteral("k"), 3) == QVariant(3) &&
                          OVApplication::GetDataFolder().isEmpty();
    OVApplication::SetUserValue(QStringLiteral("k"), 1);
    OVApplication::FlushData();
    OVApplication::UIReady();

    QApplication app(argc, argv);
    TestNoInstance test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_noinstance.moc"
