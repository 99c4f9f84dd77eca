#pragma once

// A small HTTP/1.1 server for the tests, on 127.0.0.1 only, served from a thread of its own so
// that a test can block on a wait while the code under test talks to it.

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QPair>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QWaitCondition>

#include <memory>

class QThread;
class QTcpSocket;

namespace OVTest {

struct HttpRequest
{
    QByteArray method;
    QByteArray path;
    QMap<QByteArray, QByteArray> headers; // by lower-case name
    QByteArray body;

    // The value of the header of that name (any case), or a null array.
    QByteArray Header(const QByteArray& name) const { return headers.value(name.toLower()); }
};

class HttpServer
{
public:
    enum class Answer
    {
        Ok,            // 200 with the body
        ServerError,   // 500 with the body
        BasicAuth,     // 401 with a basic challenge until the request carries Authorization; then 200
        CloseMidReply, // the head of a 200 that promises more than it sends, then the connection drops
        Hold           // recorded at once, answered 200 with the body only by Release()
    };

    HttpServer();
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    // Serves from a free port of 127.0.0.1, or from the listening socket given (see
    // ListenBeforeQt). Needs the Qt application object.
    bool Start(qintptr listeningSocket = -1);
    QString Url(const QString& path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
    }

    // How requests for path are answered; paths not set get Ok with the body "ok".
    void SetAnswer(const QByteArray& path, Answer answer, const QByteArray& body = QByteArray("ok"));
    // Answers every held request.
    void Release();

    // Waits until at least count requests have been recorded since the last Clear().
    bool WaitForRequests(int count, int timeoutMs = 60000);
    QList<HttpRequest> Requests() const;
    void Clear()
    {
        QMutexLocker lock(&m_mutex);
        m_requests.clear();
    }

    // A listening socket on a free port of 127.0.0.1, made without Qt, for a test that must
    // know its server's address before the application object exists. Returns -1 on failure.
    static qintptr ListenBeforeQt(quint16* port);

private:
    // Answers the complete requests at the front of buffer; runs in m_thread.
    void Serve(QTcpSocket* connection, QByteArray& buffer);

    mutable QMutex m_mutex;
    QWaitCondition m_recorded;
    QList<HttpRequest> m_requests;
    QMap<QByteArray, QPair<Answer, QByteArray>> m_routes;
    QList<QPair<QPointer<QTcpSocket>, QByteArray>> m_held; // used in m_thread only
    quint16 m_port = 0;
    std::unique_ptr<QThread> m_thread;
    QObject* m_context = nullptr; // lives in m_thread, parent of the listening socket
};

// `openssl s_server` on a free port of 127.0.0.1 with a self-signed certificate that `openssl req`
// makes for it, with the subject alternative name given ("IP:127.0.0.1"). A client that does not
// trust the certificate fails its handshake. The server is stopped when the object goes.
class TlsServer
{
public:
    ~TlsServer();
    // Empty once the server listens, else what went wrong.
    QString Start(const QString& altName);
    QString Url(const QString& path) const
    {
        return QStringLiteral("https://127.0.0.1:%1%2").arg(m_port).arg(path);
    }
    // Waits until the server's output holds text count times.
    bool WaitForOutput(const QByteArray& text, int count, int timeoutMs = 60000);

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    QByteArray m_output;
    quint16 m_port = 0;
};

// Registers a telemetry configuration ":core" (made by rcc from the hexadecimal text of the XML)
// that names this address: "k3y&=" as the key, "<url>/events" and "<url>/identify" as the two
// endpoints and "event_json" and "ident_json" as the two form fields. Needs no Qt application.
bool RegisterTelemetryConfig(quint16 port);

} // namespace OVTest
