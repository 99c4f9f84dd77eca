// Every static of the application object when no OVApplication runs: before any application
// object exists and under a plain QApplication.

#include "OVApplication.h"
#include "OVTestSupport.h"

namespace {
bool s_beforeApplication = false;
} // namespace

class TestNoInstance : public QObject
{
    Q_OBJECT
private slots:
    void defaultsAndHarmlessSetters()
    {
        using A = OVApplication;
        QVERIFY(s_beforeApplication);
        QCOMPARE(A::GetInstance(), nullptr);
        // The resource folder does not depend on the application class, nor do key names.
        QVERIFY(!A::GetResourcePath().isEmpty());
        QCOMPARE(A::GetName(A::ThemePath), "Theme/Path");

        const auto entries = [] { return QDir::home().entryList(QDir::AllEntries | QDir::NoDotAndDotDot); };
        const QStringList before = entries();
        A::SetAppicationValue("k", 1);
        A::SetUserValue("k", 1);
        A::SetDataFolder(QDir::homePath() + "/data");
        A::SetUserDataFolder(QDir::homePath() + "/user");
        A::SetPathOpen("/x");
        A::SetColorManagementNotEqualPolicy(A::NotEqualAsk);
        A::FlushData();
        A::UIReady();
        QCOMPARE(entries(), before);

        QCOMPARE(A::GetApplicationValue("k", 5), QVariant(5));
        // The default comes back as given, without the region stripping of stored languages.
        QCOMPARE(A::GetUserValue(A::LanguageIndex, "pt_BR"), QVariant("pt_BR"));
        QCOMPARE(A::GetDataFolder(), QString());
        QCOMPARE(A::GetUserDataFolder(), QString());
        QCOMPARE(A::GetPathOpen(), QString());
        QCOMPARE(int(A::GetColorManagementNotEqualPolicy()), 3);
        QCOMPARE(A::GetBrushFactory(), nullptr);
        QCOMPARE(A::GetProgressTimeout(), 2000);
    }
};

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    s_beforeApplication = OVApplication::GetInstance() == nullptr &&
                          OVApplication::GetResourcePath().isEmpty() &&
                          OVApplication::GetUserValue("k", 3) == QVariant(3);
    OVApplication::SetUserValue("k", 1);
    OVApplication::UIReady();
    return OVTest::Main<TestNoInstance, QApplication>(argc, argv);
}

#include "tst_noinstance.moc"
