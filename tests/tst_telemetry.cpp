// Statistics events and the identification, posted by the application's two clients, and the
// endpoint messenger's posts, headers, authentication, errors with their log lines and shutdown:
// against a real HTTP server on 127.0.0.1 that the test's own ":core" names, and against a real
// TLS server nobody trusts.

#include "OVApplication.h"
#include "OVEndpointMessanger.h"
#include "OVTestHttpServer.h"
#include "OVTestSupport.h"
#include "private/OVStatisticsClient_p.h"
#include "private/OVSystemInfo_p.h"

#include <QNetworkReply>
#include <QSslError>
#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

#include <atomic>
#include <memory>
#include <thread>

using A = OVApplication;
using OVTest::HttpServer;
using Answer = HttpServer::Answer;
Q_DECLARE_METATYPE(Answer)

namespace {
constexpr int kWaitMs = 60000;
using Properties = QMap<QString, QString>;
HttpServer* s_server = nullptr;

// The two form items of a post, decoded.
QList<QPair<QString, QString>> Form(const OVTest::HttpRequest& request)
{
    return QUrlQuery(QString::fromUtf8(request.body)).queryItems(QUrl::FullyDecoded);
}

QJsonObject Payload(const OVTest::HttpRequest& request)
{
    return QJsonDocument::fromJson(Form(request).value(1).second.toUtf8()).object();
}

// The payloads posted to path, in arrival order.
QList<QJsonObject> Posted(const QByteArray& path)
{
    QList<QJsonObject> found;
    for (const OVTest::HttpRequest& request : s_server->Requests())
        if (request.path == path)
            found << Payload(request);
    return found;
}

QJsonDocument Doc(int seq)
{
    return QJsonDocument(QJsonObject{{"seq", seq}, {"text", "a&b=c+d %41"}});
}

// Posts Doc(1) through a messenger of its own and waits for the callback: the body it received
// and whether it ran on the GUI thread; "no callback" if it did not run.
QPair<QByteArray, bool> PostOne(const QString& url, const QString& user, const QString& contentType)
{
    OVEndpointMessanger messenger;
    const unsigned int id = messenger.RegisterEndpoint(url, user, "s3cret", contentType);
    QPair<QByteArray, bool> received{"no callback", false};
    QSemaphore done;
    messenger.PostMessage(id, Doc(1), [&](const QByteArray& b) {
        received = {b, QThread::currentThread() == qApp->thread()}, done.release();
    });
    done.tryAcquire(1, kWaitMs);
    return received;
}

// A screen that comes and changes through the platform interface, as a platform plug-in's
// screens do. It notes whether its scale is asked for off the GUI thread.
struct TestScreen : QPlatformScreen
{
    QRect geometry() const override { return rect; }
    int depth() const override { return 32; }
    QImage::Format format() const override { return QImage::Format_RGB32; }
    qreal devicePixelRatio() const override
    {
        offGuiThread = offGuiThread || QThread::currentThread() != qApp->thread();
        return ratio;
    }

    QRect rect{800, 0, 1280, 800};
    qreal ratio = 1;
    static inline std::atomic<bool> offGuiThread{false};
};

} // namespace

class TestTelemetry : public QObject
{
    Q_OBJECT
private slots:
    void init() { s_server->Clear(); }

    void events_data()
    {
        // overload: 0 the document, 1 type and id, 2 with properties; expected: without the two stamps
        OVTest::Columns<int, QJsonDocument, Properties, QJsonObject>(
            {"overload", "doc", "properties", "expected"});
        const QJsonObject open{{"event_type", "open"}, {"event_id", 7}};
        QJsonObject withProperties = open;
        withProperties.insert("event_properties", QJsonObject{{"a", "1"}, {"b", "x y&z=%"}});
        QJsonObject emptyProperties = open;
        emptyProperties.insert("event_properties", QJsonObject());
        const QJsonObject huge{{"blob", QString(4 << 20, 'h')}};

        OVTest::Row("type and id", 1, QJsonDocument(), Properties(), open);
        OVTest::Row("properties", 2, QJsonDocument(), Properties{{"a", "1"}, {"b", "x y&z=%"}},
                    withProperties);
        OVTest::Row("no properties", 2, QJsonDocument(), Properties(), emptyProperties);
        OVTest::Row("stamps replaced", 0,
                    QJsonDocument(QJsonObject{{"device_id", "x"}, {"session_id", 1}, {"k", true}}),
                    Properties(), QJsonObject{{"k", true}});
        OVTest::Row("array", 0, QJsonDocument(QJsonArray{1, 2}), Properties(), QJsonObject());
        OVTest::Row("empty", 0, QJsonDocument(), Properties(), QJsonObject());
        OVTest::Row("huge", 0, QJsonDocument(huge), Properties(), huge);
    }
    void events()
    {
        QFETCH(int, overload);
        QFETCH(QJsonDocument, doc);
        QFETCH(Properties, properties);
        QFETCH(QJsonObject, expected);
        if (overload == 0)
            A::SendStatisticsEvent(doc);
        else if (overload == 1)
            A::SendStatisticsEvent("open", 7);
        else
            A::SendStatisticsEvent("open", 7, properties.toStdMap());
        QVERIFY(s_server->WaitForRequests(1, kWaitMs));
        const OVTest::HttpRequest request = s_server->Requests().value(0);
        QCOMPARE(request.path, QByteArray("/events"));
        QCOMPARE(request.Header("Content-Type"), QByteArray("application/x-www-form-urlencoded"));
        const auto form = Form(request);
        QCOMPARE(form.size(), 2);
        QCOMPARE(form[0], qMakePair(QStringLiteral("api_key"), QStringLiteral("k3y&=")));
        QCOMPARE(form[1].first, "event_json");

        const QJsonObject payload = Payload(request);
        QVERIFY(payload["session_id"].toDouble() > 0);
        expected.insert("device_id", MakeDeviceId());
        expected.insert("session_id", payload["session_id"]);
        QCOMPARE(payload, expected);
        // The indented text, keys in alphabetical order.
        QCOMPARE(form[1].second, QString::fromUtf8(QJsonDocument(expected).toJson()));
    }

    void identification()
    {
        // A language folder without translations still makes its language the current one.
        QVERIFY(QDir(A::GetResourcePath()).mkpath("translations/de.lproj"));
        A::GetInstance()->LoadLanguage("de");
        // Without an e-mail address the user is "Unknown".
        A::SendIdentificationEvent("pro", "store", "", "2.8");
        QVERIFY(s_server->WaitForRequests(1, kWaitMs));
        const OVTest::HttpRequest request = s_server->Requests().value(0);
        QCOMPARE(request.path, QByteArray("/identify"));
        const auto form = Form(request);
        QCOMPARE(form.size(), 2);
        QCOMPARE(form[0].first, "api_key");
        QCOMPARE(form[1].first, "ident_json");
        // The screen is the offscreen platform's one.
        const QJsonObject user{{"plan", "pro"},
                               {"channel", "store"},
                               {"email", "Unknown"},
                               {"start_version", "2.8"},
                               {"screen_resolution", QJsonArray{"800x600"}},
                               {"screen_scaling", QJsonArray{"100"}},
                               {"system_locale", QLocale::system().name()},
                               {"system_region", GetSystemRegion()}};
        const QJsonObject expected{
            {"app_version", "2.9.0.8191"}, {"device_id", MakeDeviceId()},           {"platform", "Windows"},
            {"os_name", "Windows"},        {"os_version", A::GetOSVersionString()}, {"language", "de"},
            {"user_properties", user}};
        QCOMPARE(Payload(request), expected);
    }

    // Screens added, changed and removed on the GUI thread while an identification is being
    // posted: that post was put together before the change, the next one after it, and neither
    // asked the toolkit from the worker thread.
    void screenChanges_data()
    {
        OVTest::Columns<QStringList, QStringList, QStringList>({"steps", "resolutions", "scalings"});
        using OVTest::Words;
        OVTest::Row("added", Words("add"), Words("800x600 1280x800"), Words("100 100"));
        OVTest::Row("made primary", Words("add primary"), Words("1280x800 800x600"), Words("100 100"));
        OVTest::Row("geometry", Words("add geometry"), Words("800x600 1920x1080"), Words("100 100"));
        OVTest::Row("scale", Words("add scale"), Words("800x600 1920x1200"), Words("100 150"));
        OVTest::Row("removed", Words("add remove"), Words("800x600"), Words("100"));
    }
    void screenChanges()
    {
        QFETCH(QStringList, steps);
        s_server->SetAnswer("/identify", Answer::Hold);
        A::SendIdentificationEvent("before", "", "", "");
        QVERIFY(s_server->WaitForRequests(1, kWaitMs));
        A::SendIdentificationEvent("after", "", "", "");

        auto* screen = new TestScreen; // Qt's once added; deleted with its removal
        for (const QString& step : steps) {
            if (step == "add") {
                QWindowSystemInterface::handleScreenAdded(screen);
            } else if (step == "primary") {
                QWindowSystemInterface::handlePrimaryScreenChanged(screen);
            } else if (step == "geometry") {
                screen->rect.setSize({1920, 1080});
                QWindowSystemInterface::handleScreenGeometryChange(screen->screen(), screen->rect,
                                                                   screen->rect);
            } else if (step == "scale") {
                screen->ratio = 1.5;
                QWindowSystemInterface::handleScreenLogicalDotsPerInchChange(screen->screen(), 144, 144);
            } else if (step == "remove") {
                QWindowSystemInterface::handleScreenRemoved(std::exchange(screen, nullptr));
            }
            QWindowSystemInterface::flushWindowSystemEvents();
        }
        s_server->SetAnswer("/identify", Answer::Ok);
        s_server->Release();
        QVERIFY(s_server->WaitForRequests(2, kWaitMs));
        if (screen)
            QWindowSystemInterface::handleScreenRemoved(screen);

        const QList<QJsonObject> posted = Posted("/identify");
        QCOMPARE(posted.size(), 2);
        const auto screens = [&posted](int i, const char* key) {
            return posted[i]["user_properties"].toObject()[key].toVariant().toStringList();
        };
        QCOMPARE(screens(0, "screen_resolution"), QStringList{"800x600"});
        QTEST(screens(1, "screen_resolution"), "resolutions");
        QTEST(screens(1, "screen_scaling"), "scalings");
        QVERIFY(!TestScreen::offGuiThread);
    }

    void sessions()
    {
        // A is held by the server while B waits in the queue; C comes after the change.
        s_server->SetAnswer("/events", Answer::Hold);
        A::SendStatisticsEvent("A", 1);
        QVERIFY(s_server->WaitForRequests(1, kWaitMs));
        A::SendStatisticsEvent("B", 2);
        const qint64 before = qint64(Posted("/events").value(0)["session_id"].toDouble());
        // The new session must differ from the old one: let the clock pass it first.
        while (QDateTime::currentMSecsSinceEpoch() <= before) {
        }
        const qint64 changing = QDateTime::currentMSecsSinceEpoch();
        A::ChangeStatisticsSession();
        A::SendStatisticsEvent("C", 3);
        const qint64 changed = QDateTime::currentMSecsSinceEpoch();
        s_server->SetAnswer("/events", Answer::Ok);
        s_server->Release();
        QVERIFY(s_server->WaitForRequests(3, kWaitMs));

        const QList<QJsonObject> posted = Posted("/events");
        QCOMPARE(posted.size(), 3);
        QCOMPARE(posted[2]["event_type"], QJsonValue("C"));
        QCOMPARE(posted[1]["session_id"], QJsonValue(double(before)));
        const qint64 after = qint64(posted[2]["session_id"].toDouble());
        QVERIFY(after >= changing && after <= changed);
    }

    // The post queue, which the messenger shares with the statistics clients, keeps each thread's
    // order.
    void orderAcrossThreads()
    {
        constexpr int kThreads = 8, kEach = 25;
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([t] {
                for (int i = 0; i < kEach; ++i)
                    A::SendStatisticsEvent(QString::number(t), i);
            });
        for (std::thread& thread : threads)
            thread.join();
        QVERIFY(s_server->WaitForRequests(kThreads * kEach, kWaitMs));
        QVector<int> next(kThreads, 0);
        for (const QJsonObject& event : Posted("/events"))
            QCOMPARE(event["event_id"].toInt(), next[event["event_type"].toString().toInt()]++);
        QCOMPARE(next, QVector<int>(kThreads, kEach));
    }

    void optOut()
    {
        QVERIFY(A::IsStatisticsEnabled());
        A::SetStatisticsEnabled(false);
        const QSettings user(A::GetUserDataFolder() + "/user.ini", QSettings::IniFormat);
        QCOMPARE(user.value("Statistics/Enabled"), QVariant("false"));
        A::SendStatisticsEvent("off", 0);
        A::SendIdentificationEvent("off", "", "", "");
        A::SetStatisticsEnabled(true);
        // Each client posts in queue order, so what comes first shows what was queued.
        A::SendStatisticsEvent("on", 1);
        A::SendIdentificationEvent("on", "", "", "");
        QVERIFY(s_server->WaitForRequests(2, kWaitMs));
        QCOMPARE(Posted("/events").value(0)["event_type"].toString(), "on");
        QCOMPARE(Posted("/identify").value(0)["user_properties"].toObject()["plan"].toString(), "on");
    }

    // A statistics client pointed at a TLS server nobody trusts drops its events without a word.
    void statisticsOverTls()
    {
        OVTest::TlsServer server;
        const QString failure = server.Start("IP:127.0.0.1");
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        OVTest::LogCapture log;
        {
            StatisticsClient client("key", server.Url("/events"), "event_json");
            client.EnqueueEvent("tls", 1);
            client.EnqueueEvent("tls", 2);
            // The server notes each client that hung up on it after the handshake.
            QVERIFY(server.WaitForOutput(":error:", 2));
        }
        QCOMPARE(log.Messages(), QStringList());
    }

    void messengerEndpointIds()
    {
        OVEndpointMessanger messenger;
        for (unsigned int i = 0; i < 3; ++i)
            QCOMPARE(messenger.RegisterEndpoint(s_server->Url("/ids"), {}, {}, {}), i);
        QStringList calls;
        QSemaphore done;
        QVERIFY(!messenger.PostMessage(3, Doc(3), [&](const QByteArray&) { calls << "3"; }));
        // An empty callback is skipped; the next post shows that the queue went on past it.
        QVERIFY(messenger.PostMessage(0, Doc(0), {}));
        QVERIFY(messenger.PostMessage(2, Doc(2), [&](const QByteArray&) { calls << "2", done.release(); }));
        QVERIFY(done.tryAcquire(1, kWaitMs));
        QCOMPARE(calls, QStringList{"2"});
        QCOMPARE(s_server->Requests().size(), 2);
    }

    void messengerPost_data()
    {
        // body: what the callback receives; error: the logged error code, -1 for none
        OVTest::Columns<QString, Answer, QByteArray, QString, QString, int, QByteArray, int>(
            {"url", "answer", "served", "user", "contentType", "requests", "body", "error"});
        const QByteArray huge(32 << 20, 'x');
        OVTest::Row("json", "/a", Answer::Ok, QByteArray("hello"), "", "application/json", 1,
                    QByteArray("hello"), -1);
        OVTest::Row("gigantic", "/c", Answer::Ok, huge, "", "", 1, huge, -1);
        // Qt marks an HTTP error status only once the body has arrived, so the body gets through.
        OVTest::Row("500", "/d", Answer::ServerError, QByteArray("boom"), "", "", 1, QByteArray("boom"),
                    int(QNetworkReply::InternalServerError));
        OVTest::Row("auth", "/e", Answer::BasicAuth, QByteArray("in"), "alice", "", 2, QByteArray("in"), -1);
        OVTest::Row("auth, no user", "/f", Answer::BasicAuth, QByteArray("in"), "", "", 1, QByteArray(),
                    int(QNetworkReply::AuthenticationRequiredError));
        OVTest::Row("closed", "/g", Answer::CloseMidReply, QByteArray("part"), "", "", 1, QByteArray("part"),
                    int(QNetworkReply::RemoteHostClosedError));
        OVTest::Row("garbage url", "::garbage", Answer::Ok, QByteArray(), "", "", 0, QByteArray(),
                    int(QNetworkReply::ProtocolUnknownError));
    }
    void messengerPost()
    {
        QFETCH(QString, url);
        QFETCH(Answer, answer);
        QFETCH(QByteArray, served);
        QFETCH(QString, user);
        QFETCH(QString, contentType);
        QFETCH(int, requests);
        QFETCH(int, error);
        s_server->SetAnswer(url.toUtf8(), answer, served);
        OVTest::LogCapture log;
        const auto [received, onGuiThread] =
            PostOne(url.startsWith('/') ? s_server->Url(url) : url, user, contentType);
        QTEST(received, "body");
        QVERIFY(!onGuiThread);
        const QList<OVTest::HttpRequest> got = s_server->Requests();
        QCOMPARE(got.size(), requests);
        if (requests > 0) {
            QCOMPARE(got.last().method + ' ' + got.last().body, "POST " + Doc(1).toJson());
            QCOMPARE(got.last().Header("Content-Type"), contentType.isEmpty()
                                                            ? QByteArray("application/x-www-form-urlencoded")
                                                            : contentType.toUtf8());
            QCOMPARE(got.last().Header("Authorization"),
                     user.isEmpty() ? QByteArray() : "Basic " + QByteArray("alice:s3cret").toBase64());
        }
        // Two lines: the code, then the reply's error text.
        const QStringList lines = log.Matching("Build date=");
        const int at = lines.indexOf(OVTest::BuildLogLine("src\\OVEndpointMessanger.cpp",
                                                          QStringLiteral("Send event error: %1").arg(error)));
        QCOMPARE(at >= 0, error >= 0);
        QCOMPARE(log.Matching("Send event error").size(), error >= 0 ? 1 : 0);
        if (at >= 0)
            QVERIFY(lines.value(at + 1).contains("OVEndpointMessanger.cpp"));
    }

    // The messenger against a TLS server whose self-signed certificate nobody trusts: each TLS
    // error is logged with its text, then the failure, and the callback gets the empty body.
    void messengerTls_data()
    {
        // errors: in the order Qt reports them
        OVTest::Columns<QString, QList<int>>({"altName", "errors"});
        OVTest::Row("self-signed", "IP:127.0.0.1", QList<int>{QSslError::SelfSignedCertificate});
        OVTest::Row("self-signed, another host", "DNS:elsewhere.invalid",
                    QList<int>{QSslError::HostNameMismatch, QSslError::SelfSignedCertificate});
    }
    void messengerTls()
    {
        QFETCH(QString, altName);
        QFETCH(QList<int>, errors);
        OVTest::TlsServer server;
        const QString failure = server.Start(altName);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        OVTest::LogCapture log;
        QCOMPARE(PostOne(server.Url("/tls"), {}, "application/json").first, QByteArray());
        // The whole sequence: the TLS errors, the failure's code and the reply's error text.
        QStringList expected;
        for (int error : errors)
            expected << QSslError(QSslError::SslError(error)).errorString();
        expected << QStringLiteral("Send event error: %1").arg(int(QNetworkReply::SslHandshakeFailedError))
                 << "SSL handshake failed";
        const QStringList lines = log.Matching("Build date=");
        QCOMPARE(lines.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(
                OVTest::BuildLogLine("src\\OVEndpointMessanger.cpp", expected[i]).match(lines[i]).hasMatch(),
                qPrintable(lines[i]));
    }

    void messengerShutdown_data()
    {
        // callbacks: -1: any number up to all
        OVTest::Columns<bool, bool, int, int>({"hold", "release", "callbacks", "requests"});
        // The post in flight is answered while the destructor waits: the drain goes on to the end.
        OVTest::Row("answered", true, true, 3, 3);
        // Never answered: the destructor still returns; the aborted post reports, the rest is dropped.
        OVTest::Row("never answered", true, false, 1, 1);
        // Destroyed at once: each post is either sent with its callback or dropped without it.
        OVTest::Row("at once", false, false, -1, -1);
    }
    void messengerShutdown()
    {
        QFETCH(bool, hold);
        QFETCH(bool, release);
        QFETCH(int, callbacks);
        QFETCH(int, requests);
        s_server->SetAnswer("/held", hold ? Answer::Hold : Answer::Ok);
        auto messenger = std::make_unique<OVEndpointMessanger>();
        const unsigned int id = messenger->RegisterEndpoint(s_server->Url("/held"), {}, {}, {});
        std::atomic<int> called{0};
        std::atomic<bool> returned{false};
        std::atomic<int> late{0};
        for (int i = 0; i < 3; ++i)
            messenger->PostMessage(id, Doc(i), [&](const QByteArray&) { ++called, late += returned.load(); });
        if (hold)
            QVERIFY(s_server->WaitForRequests(1, kWaitMs));
        std::thread releaser;
        if (release)
            releaser = std::thread([] {
                s_server->SetAnswer("/held", Answer::Ok);
                s_server->Release();
            });
        messenger.reset();
        returned = true;
        if (releaser.joinable())
            releaser.join();
        s_server->Release();

        if (callbacks >= 0)
            QCOMPARE(called.load(), callbacks);
        if (requests >= 0)
            QCOMPARE(s_server->Requests().size(), requests);
        QVERIFY(called <= s_server->Requests().size());
        QCOMPARE(late.load(), 0);
    }
};

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    quint16 port = 0;
    const qintptr socket = HttpServer::ListenBeforeQt(&port);
    if (socket < 0 || !OVTest::RegisterTelemetryConfig(port))
        qFatal("Cannot prepare the statistics server and its configuration");

    auto app = std::make_unique<A>(argc, argv);
    HttpServer server;
    s_server = &server;
    if (!server.Start(socket))
        qFatal("Cannot start the statistics server");
    TestTelemetry test;
    QTEST_SET_MAIN_SOURCE_PATH
    int failures = QTest::qExec(&test, argc, argv);

    // Shutdown: the post in flight is answered while the application object goes, and the
    // drain it belongs to posts the events queued behind it before the destructor returns.
    server.Clear();
    server.SetAnswer("/events", Answer::Hold);
    A::SendStatisticsEvent("last", 0);
    if (!server.WaitForRequests(1, kWaitMs))
        ++failures;
    A::SendStatisticsEvent("last", 1);
    A::SendStatisticsEvent("last", 2);
    std::thread releaser([&server] {
        server.SetAnswer("/events", Answer::Ok);
        server.Release();
    });
    app.reset();
    releaser.join();
    if (Posted("/events").size() != 3) {
        qWarning("Shutdown lost a post that was draining");
        ++failures;
    }
    return failures;
}

#include "tst_telemetry.moc"
