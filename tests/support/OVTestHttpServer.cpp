#include "OVTestHttpServer.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QHostAddress>
#include <QPointer>
#include <QResource>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>

#include <cstdlib>

#ifdef Q_OS_WIN
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace OVTest {

QByteArray HttpRequest::Header(const QByteArray& name) const
{
    for (const auto& header : headers)
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return header.second;
    return QByteArray();
}

namespace {

QByteArray Response(int status, const QByteArray& reason, const QByteArray& body,
                    const QByteArray& extraHeaders = QByteArray(), qint64 promisedLength = -1)
{
    return "HTTP/1.1 " + QByteArray::number(status) + ' ' + reason + "\r\n" +
           "Content-Type: text/plain\r\nContent-Length: " +
           QByteArray::number(promisedLength < 0 ? body.size() : promisedLength) + "\r\n" + extraHeaders +
           "\r\n" + body;
}

// Takes one complete request off the front of buffer, if there is one.
bool ParseRequest(QByteArray* buffer, HttpRequest* request)
{
    const int headEnd = buffer->indexOf("\r\n\r\n");
    if (headEnd < 0)
        return false;
    const QList<QByteArray> lines = buffer->left(headEnd).split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    HttpRequest parsed;
    parsed.method = requestLine.value(0);
    parsed.path = requestLine.value(1);
    qint64 length = 0;
    for (int i = 1; i < lines.size(); ++i) {
        const int colon = lines[i].indexOf(':');
        if (colon < 0)
            continue;
        const QByteArray name = lines[i].left(colon).trimmed();
        const QByteArray value = lines[i].mid(colon + 1).trimmed();
        parsed.headers.append(qMakePair(name, value));
        if (name.compare("Content-Length", Qt::CaseInsensitive) == 0)
            length = value.toLongLong();
    }
    const int bodyStart = headEnd + 4;
    if (buffer->size() - bodyStart < length)
        return false;
    parsed.body = buffer->mid(bodyStart, static_cast<int>(length));
    buffer->remove(0, bodyStart + static_cast<int>(length));
    *request = parsed;
    return true;
}

} // namespace

class HttpServer::Worker : public QObject
{
public:
    explicit Worker(HttpServer* owner)
        : m_owner(owner)
    {}

    bool Listen(qintptr socket)
    {
        m_server = new QTcpServer(this);
        const bool listening = socket >= 0 ? m_server->setSocketDescriptor(socket)
                                           : m_server->listen(QHostAddress::LocalHost, 0);
        QObject::connect(m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* connection = m_server->nextPendingConnection()) {
                QObject::connect(connection, &QTcpSocket::readyRead, this,
                                 [this, connection] { Read(connection); });
                QObject::connect(connection, &QTcpSocket::disconnected, this, [this, connection] {
                    m_buffers.remove(connection);
                    connection->deleteLater();
                });
            }
        });
        return listening;
    }

    quint16 Port() const { return m_server->serverPort(); }

    void Release()
    {
        for (const auto& held : m_held)
            if (held.first)
                held.first->write(Response(200, "OK", held.second));
        m_held.clear();
    }

private:
    void Read(QTcpSocket* connection)
    {
        QByteArray& buffer = m_buffers[connection];
        buffer += connection->readAll();
        HttpRequest request;
        while (ParseRequest(&buffer, &request)) {
            m_owner->Record(request);
            const Route route = m_owner->RouteFor(request.path);
            switch (route.answer) {
            case Answer::Ok:
                connection->write(Response(200, "OK", route.body));
                break;
            case Answer::ServerError:
                connection->write(Response(500, "Internal Server Error", route.body));
                break;
            case Answer::BasicAuth:
                if (request.Header("Authorization").isEmpty())
                    connection->write(Response(401, "Unauthorized", QByteArray(),
                                               "WWW-Authenticate: Basic realm=\"ov\"\r\n"));
                else
                    connection->write(Response(200, "OK", route.body));
                break;
            case Answer::CloseMidReply:
                connection->write(Response(200, "OK", route.body, QByteArray(), route.body.size() + 100000));
                connection->disconnectFromHost();
                return;
            case Answer::Hold:
                m_held.append(qMakePair(QPointer<QTcpSocket>(connection), route.body));
                break;
            }
        }
    }

    HttpServer* m_owner;
    QTcpServer* m_server = nullptr;
    QHash<QTcpSocket*, QByteArray> m_buffers;
    QList<QPair<QPointer<QTcpSocket>, QByteArray>> m_held;
};

HttpServer::HttpServer() = default;

HttpServer::~HttpServer()
{
    if (!m_thread)
        return;
    // A finishing thread deletes what was scheduled for deletion in it.
    m_worker->deleteLater();
    m_thread->quit();
    m_thread->wait();
}

bool HttpServer::Start(qintptr listeningSocket)
{
    m_thread = std::make_unique<QThread>();
    m_thread->start();
    m_worker = new Worker(this);
    m_worker->moveToThread(m_thread.get());
    bool listening = false;
    QMetaObject::invokeMethod(
        m_worker,
        [this, listeningSocket, &listening] {
            listening = m_worker->Listen(listeningSocket);
            m_port = m_worker->Port();
        },
        Qt::BlockingQueuedConnection);
    return listening;
}

QString HttpServer::Url(const QString& path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
}

void HttpServer::SetAnswer(const QByteArray& path, Answer answer, const QByteArray& body)
{
    QMutexLocker lock(&m_mutex);
    m_routes[path] = Route{answer, body};
}

void HttpServer::Release()
{
    QMetaObject::invokeMethod(
        m_worker, [this] { m_worker->Release(); }, Qt::BlockingQueuedConnection);
}

bool HttpServer::WaitForRequests(int count, int timeoutMs)
{
    QMutexLocker lock(&m_mutex);
    QDeadlineTimer deadline(timeoutMs);
    while (m_requests.size() < count)
        if (!m_recorded.wait(&m_mutex, deadline))
            return m_requests.size() >= count;
    return true;
}

QList<HttpRequest> HttpServer::Requests() const
{
    QMutexLocker lock(&m_mutex);
    return m_requests;
}

void HttpServer::Clear()
{
    QMutexLocker lock(&m_mutex);
    m_requests.clear();
}

HttpServer::Route HttpServer::RouteFor(const QByteArray& path) const
{
    QMutexLocker lock(&m_mutex);
    return m_routes.value(path);
}

void HttpServer::Record(const HttpRequest& request)
{
    QMutexLocker lock(&m_mutex);
    m_requests.append(request);
    m_recorded.wakeAll();
}

qintptr HttpServer::ListenBeforeQt(quint16* port)
{
    const auto fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    socklen_t size = sizeof(address);
    if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 || ::listen(fd, 64) != 0 ||
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return -1;
    *port = ntohs(address.sin_port);
    return static_cast<qintptr>(fd);
}

bool RegisterTelemetryConfig(quint16 port)
{
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/ovcore-core-XXXXXX"));
    const QString url = QStringLiteral("http://127.0.0.1:%1").arg(port);
    const QString xml =
        QStringLiteral("<doc><main><node1><A0>k3y&amp;=</A0><A2>%1/events</A2><A3>%1/identify</A3>"
                       "<A4>ident_json</A4><A5>event_json</A5></node1></main></doc>")
            .arg(url);
    QFile hex(dir.filePath("core.hex")), qrc(dir.filePath("core.qrc"));
    if (!dir.isValid() || !hex.open(QIODevice::WriteOnly) || !qrc.open(QIODevice::WriteOnly))
        return false;
    hex.write(xml.toUtf8().toHex());
    qrc.write("<RCC><qresource prefix=\"/\"><file alias=\"core\">core.hex</file></qresource></RCC>");
    hex.close(), qrc.close();
    const QString command = QStringLiteral("\"%1\" -binary \"%2\" -o \"%3\"")
                                .arg(QStringLiteral(OV_RCC), qrc.fileName(), dir.filePath("core.rcc"));
    return std::system(command.toLocal8Bit().constData()) == 0 &&
           QResource::registerResource(dir.filePath("core.rcc"));
}

} // namespace OVTest
