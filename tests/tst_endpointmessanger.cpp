// The endpoint messenger against a real HTTP server on 127.0.0.1: headers, authentication,
// errors and their log lines, and what shutdown may and may not do. The queue itself is the
// statistics clients' too; its order across threads is tested there.

#include "OVEndpointMessanger.h"
#include "OVTestHttpServer.h"
#include "OVTestSupport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QSemaphore>
#include <QSslError>

#include <atomic>
#include <memory>
#include <thread>

using OVTest::HttpServer;
Q_DECLARE_METATYPE(HttpServer::Answer)

namespace {
constexpr int kWaitMs = 60000;

QJsonDocument Doc(int thread, int seq)
{
    return QJsonDocument(QJsonObject{{"thread", thread}, {"seq", seq}, {"text", "a&b=c+d %41"}});
}
} // namespace

class TestEndpointMessanger : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_server.Start()); }
    void init() { m_server.Clear(); }

    void endpointIds()
    {
        OVEndpointMessanger messenger;
        for (unsigned int i = 0; i < 3; ++i)
            QCOMPARE(messenger.RegisterEndpoint(m_server.Url("/ids"), {}, {}, {}), i);
        QStringList calls;
        QSemaphore done;
        QVERIFY(!messenger.PostMessage(3, Doc(0, 3), [&](const QByteArray&) { calls << "3"; }));
        // An empty callback is skipped; the next post shows that the queue went on past it.
        QVERIFY(messenger.PostMessage(0, Doc(0, 0), {}));
        QVERIFY(
            messenger.PostMessage(2, Doc(0, 2), [&](const QByteArray&) { calls << "2", done.release(); }));
        QVERIFY(done.tryAcquire(1, kWaitMs));
        QCOMPARE(calls, QStringList{"2"});
        QCOMPARE(m_server.Requests().size(), 2);
    }

    void post_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<HttpServer::Answer>("answer");
        QTest::addColumn<QByteArray>("served");
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("contentType");
        QTest::addColumn<int>("requests");
        QTest::addColumn<QByteArray>("body"); // what the callback receives
        QTest::addColumn<int>("error");       // logged error code, -1 for none
        using A = HttpServer::Answer;
        const QByteArray huge(32 << 20, 'x');
        QTest::newRow("json") << "/a" << A::Ok << QByteArray("hello") << ""
                              << "application/json" << 1 << QByteArray("hello") << -1;
        QTest::newRow("gigantic") << "/c" << A::Ok << huge << ""
                                  << "" << 1 << huge << -1;
        // Qt marks an HTTP error status only once the body has arrived, so the body gets through.
        QTest::newRow("500") << "/d" << A::ServerError << QByteArray("boom") << ""
                             << "" << 1 << QByteArray("boom") << int(QNetworkReply::InternalServerError);
        QTest::newRow("auth") << "/e" << A::BasicAuth << QByteArray("in") << "alice"
                              << "" << 2 << QByteArray("in") << -1;
        QTest::newRow("auth, no user")
            << "/f" << A::BasicAuth << QByteArray("in") << ""
            << "" << 1 << QByteArray() << int(QNetworkReply::AuthenticationRequiredError);
        QTest::newRow("closed") << "/g" << A::CloseMidReply << QByteArray("part") << ""
                                << "" << 1 << QByteArray("part") << int(QNetworkReply::RemoteHostClosedError);
        QTest::newRow("garbage url") << "::garbage" << A::Ok << QByteArray() << ""
                                     << "" << 0 << QByteArray() << int(QNetworkReply::ProtocolUnknownError);
    }

    void post()
    {
        QFETCH(QString, url);
        QFETCH(HttpServer::Answer, answer);
        QFETCH(QByteArray, served);
        QFETCH(QString, user);
        QFETCH(QString, contentType);
        QFETCH(int, requests);
        QFETCH(int, error);

        m_server.SetAnswer(url.toUtf8(), answer, served);
        OVTest::LogCapture log;
        OVEndpointMessanger messenger;
        const unsigned int id = messenger.RegisterEndpoint(url.startsWith('/') ? m_server.Url(url) : url,
                                                           user, QStringLiteral("s3cret"), contentType);
        QByteArray received;
        QThread* callbackThread = nullptr;
        QSemaphore done;
        QVERIFY(messenger.PostMessage(id, Doc(1, 1), [&](const QByteArray& b) {
            received = b, callbackThread = QThread::currentThread(), done.release();
        }));
        QVERIFY(done.tryAcquire(1, kWaitMs));

        QTEST(received, "body");
        QVERIFY(callbackThread != QCoreApplication::instance()->thread());
        const QList<OVTest::HttpRequest> got = m_server.Requests();
        QCOMPARE(got.size(), requests);
        if (requests > 0) {
            const OVTest::HttpRequest& last = got.last();
            QCOMPARE(last.method, QByteArray("POST"));
            QCOMPARE(last.body, Doc(1, 1).toJson());
            QCOMPARE(last.Header("Content-Type"), contentType.isEmpty()
                                                      ? QByteArray("application/x-www-form-urlencoded")
                                                      : contentType.toUtf8());
            QCOMPARE(last.Header("Authorization"),
                     user.isEmpty() ? QByteArray() : "Basic " + QByteArray("alice:s3cret").toBase64());
        }
        // Two lines: the code, then the reply's error text.
        const QStringList lines = log.Matching(QStringLiteral("Build date="));
        const QString file = QStringLiteral("src\\OVEndpointMessanger.cpp");
        const int at =
            lines.indexOf(OVTest::BuildLogLine(file, QStringLiteral("Send event error: %1").arg(error)));
        QCOMPARE(at >= 0, error >= 0);
        QCOMPARE(log.Matching(QStringLiteral("Send event error")).size(), error >= 0 ? 1 : 0);
        if (at >= 0)
            QVERIFY(lines.value(at + 1).contains(QStringLiteral("OVEndpointMessanger.cpp")));
    }

    // Against a real TLS server whose self-signed certificate nobody trusts: each TLS error is
    // logged with its text, then the failure, and the callback gets the empty body.
    void tls_data()
    {
        QTest::addColumn<QString>("altName");
        QTest::addColumn<QList<int>>("errors"); // in the order Qt reports them
        QTest::newRow("self-signed") << "IP:127.0.0.1" << QList<int>{QSslError::SelfSignedCertificate};
        QTest::newRow("self-signed, another host")
            << "DNS:elsewhere.invalid"
            << QList<int>{QSslError::HostNameMismatch, QSslError::SelfSignedCertificate};
    }

    void tls()
    {
        QFETCH(QString, altName);
        QFETCH(QList<int>, errors);
        OVTest::TlsServer server;
        const QString failure = server.Start(altName);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        OVTest::LogCapture log;
        OVEndpointMessanger messenger;
        const unsigned int id = messenger.RegisterEndpoint(server.Url("/tls"), {}, {}, "application/json");
        QByteArray received("unset");
        QSemaphore done;
        QVERIFY(
            messenger.PostMessage(id, Doc(0, 0), [&](const QByteArray& b) { received = b, done.release(); }));
        QVERIFY(done.tryAcquire(1, kWaitMs));
        QCOMPARE(received, QByteArray());

        // The whole sequence: the TLS errors, the failure's code and the reply's error text.
        QStringList expected;
        for (int error : errors)
            expected << QSslError(QSslError::SslError(error)).errorString();
        expected << QStringLiteral("Send event error: %1").arg(int(QNetworkReply::SslHandshakeFailedError))
                 << QStringLiteral("SSL handshake failed");
        const QStringList lines = log.Matching(QStringLiteral("Build date="));
        QCOMPARE(lines.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(OVTest::BuildLogLine(QStringLiteral("src\\OVEndpointMessanger.cpp"), expected[i])
                         .match(lines[i])
                         .hasMatch(),
                     qPrintable(lines[i]));
    }

    void shutdown_data()
    {
        QTest::addColumn<bool>("hold");
        QTest::addColumn<bool>("release");
        QTest::addColumn<int>("callbacks"); // -1: any number up to all
        QTest::addColumn<int>("requests");
        // The post in flight is answered while the destructor waits: the drain goes on to the end.
        QTest::newRow("answered") << true << true << 3 << 3;
        // Never answered: the destructor still returns; the aborted post reports, the rest is dropped.
        QTest::newRow("never answered") << true << false << 1 << 1;
        // Destroyed at once: each post is either sent with its callback or dropped without it.
        QTest::newRow("at once") << false << false << -1 << -1;
    }

    void shutdown()
    {
        QFETCH(bool, hold);
        QFETCH(bool, release);
        QFETCH(int, callbacks);
        QFETCH(int, requests);

        m_server.SetAnswer("/held", hold ? HttpServer::Answer::Hold : HttpServer::Answer::Ok);
        auto messenger = std::make_unique<OVEndpointMessanger>();
        const unsigned int id = messenger->RegisterEndpoint(m_server.Url("/held"), {}, {}, {});
        std::atomic<int> called{0};
        std::atomic<bool> returned{false};
        std::atomic<int> late{0};
        for (int i = 0; i < 3; ++i)
            messenger->PostMessage(id, Doc(0, i),
                                   [&](const QByteArray&) { ++called, late += returned.load(); });
        if (hold)
            QVERIFY(m_server.WaitForRequests(1, kWaitMs));
        std::thread releaser;
        if (release)
            releaser = std::thread([this] {
                m_server.SetAnswer("/held", HttpServer::Answer::Ok);
                m_server.Release();
            });
        messenger.reset();
        returned = true;
        if (releaser.joinable())
            releaser.join();
        m_server.Release();

        if (callbacks >= 0)
            QCOMPARE(called.load(), callbacks);
        if (requests >= 0)
            QCOMPARE(m_server.Requests().size(), requests);
        QVERIFY(called <= m_server.Requests().size());
        QCOMPARE(late.load(), 0);
    }

private:
    HttpServer m_server;
};

OV_TEST_MAIN_WITH(TestEndpointMessanger, QCoreApplication)

#include "tst_endpointmessanger.moc"
