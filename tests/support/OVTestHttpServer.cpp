#include "OVTestHttpServer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QRegularExpression>
#include <QResource>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <cstdlib>
#include <memory>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace OVTest {

namespace {

QByteArray Response(const QByteArray& status, const QByteArray& body, const QByteArray& extra = QByteArray(),
                    qint64 promisedLength = -1)
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/plain\r\nContent-Length: " +
           QByteArray::number(promisedLength < 0 ? body.size() : promisedLength) + "\r\n" + extra + "\r\n" +
           body;
}

// Takes one complete request off the front of buffer, if there is one.
bool ParseRequest(QByteArray& buffer, HttpRequest& request)
{
    const int headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return false;
    QList<QByteArray> lines = buffer.left(headEnd).split('\n');
    const QList<QByteArray> requestLine = lines.takeFirst().trimmed().split(' ');
    HttpRequest parsed{requestLine.value(0), requestLine.value(1), {}, {}};
    for (const QByteArray& line : lines) {
        const int colon = line.indexOf(':');
        if (colon >= 0)
            parsed.headers.insert(line.left(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
    }
    const int length = parsed.Header("Content-Length").toInt();
    if (buffer.size() - headEnd - 4 < length)
        return false;
    parsed.body = buffer.mid(headEnd + 4, length);
    buffer.remove(0, headEnd + 4 + length);
    request = parsed;
    return true;
}

} // namespace

HttpServer::HttpServer() = default;

HttpServer::~HttpServer()
{
    if (!m_thread)
        return;
    // A finishing thread deletes what was scheduled for deletion in it.
    m_context->deleteLater();
    m_thread->quit();
    m_thread->wait();
}

bool HttpServer::Start(qintptr listeningSocket)
{
    m_thread = std::make_unique<QThread>();
    m_thread->start();
    m_context = new QObject;
    m_context->moveToThread(m_thread.get());
    bool listening = false;
    const auto listen = [this, listeningSocket, &listening] {
        auto* server = new QTcpServer(m_context);
        listening = listeningSocket >= 0 ? server->setSocketDescriptor(listeningSocket)
                                         : server->listen(QHostAddress::LocalHost, 0);
        m_port = server->serverPort();
        QObject::connect(server, &QTcpServer::newConnection, m_context, [this, server] {
            while (QTcpSocket* connection = server->nextPendingConnection()) {
                auto buffer = std::make_shared<QByteArray>();
                QObject::connect(connection, &QTcpSocket::readyRead, m_context, [this, connection, buffer] {
                    *buffer += connection->readAll();
                    Serve(connection, *buffer);
                });
                QObject::connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
            }
        });
    };
    QMetaObject::invokeMethod(m_context, listen, Qt::BlockingQueuedConnection);
    return listening;
}

void HttpServer::Serve(QTcpSocket* connection, QByteArray& buffer)
{
    HttpRequest request;
    while (ParseRequest(buffer, request)) {
        QMutexLocker lock(&m_mutex);
        m_requests.append(request);
        m_recorded.wakeAll();
        const auto [answer, body] = m_routes.value(request.path, {Answer::Ok, "ok"});
        lock.unlock();
        if (answer == Answer::Hold) {
            m_held.append(qMakePair(QPointer<QTcpSocket>(connection), body));
        } else if (answer == Answer::ServerError) {
            connection->write(Response("500 Internal Server Error", body));
        } else if (answer == Answer::BasicAuth && request.Header("Authorization").isEmpty()) {
            connection->write(Response("401 Unauthorized", {}, "WWW-Authenticate: Basic realm=\"ov\"\r\n"));
        } else if (answer == Answer::CloseMidReply) {
            connection->write(Response("200 OK", body, {}, body.size() + 100000));
            connection->disconnectFromHost();
            return;
        } else {
            connection->write(Response("200 OK", body));
        }
    }
}

void HttpServer::SetAnswer(const QByteArray& path, Answer answer, const QByteArray& body)
{
    QMutexLocker lock(&m_mutex);
    m_routes[path] = {answer, body};
}

void HttpServer::Release()
{
    const auto release = [this] {
        for (const auto& held : std::exchange(m_held, {}))
            if (held.first)
                held.first->write(Response("200 OK", held.second));
    };
    QMetaObject::invokeMethod(m_context, release, Qt::BlockingQueuedConnection);
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

TlsServer::~TlsServer()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString TlsServer::Start(const QString& altName)
{
    const QString openssl = QStandardPaths::findExecutable(QStringLiteral("openssl"));
    if (openssl.isEmpty())
        return QStringLiteral("openssl is not installed (scripts/deps.sh installs it)");
    const QString key = m_dir.filePath("key.pem"), certificate = m_dir.filePath("cert.pem");
    QProcess req;
    req.setProcessChannelMode(QProcess::MergedChannels);
    req.start(openssl, {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                        "-days", "2", "-subj", "/CN=ovcore test", "-addext", "subjectAltName=" + altName,
                        "-keyout", key, "-out", certificate});
    if (!req.waitForFinished(60000) || req.exitStatus() != QProcess::NormalExit || req.exitCode() != 0)
        return QStringLiteral("openssl req failed: ") + QString::fromLocal8Bit(req.readAll());
    // Port 0 takes a free port, which the server names once it listens.
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(openssl,
                    {"s_server", "-accept", "127.0.0.1:0", "-cert", certificate, "-key", key, "-www"});
    const QRegularExpression accept(QStringLiteral("ACCEPT 127\\.0\\.0\\.1:(\\d+)"));
    while (m_port == 0 && m_process.waitForReadyRead(60000)) {
        m_output += m_process.readAll();
        m_port = quint16(accept.match(QString::fromLocal8Bit(m_output)).captured(1).toUInt());
    }
    return m_port ? QString()
                  : QStringLiteral("openssl s_server did not listen: ") + QString::fromLocal8Bit(m_output);
}

bool TlsServer::WaitForOutput(const QByteArray& text, int count, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (m_output.count(text) < count) {
        if (!m_process.waitForReadyRead(int(deadline.remainingTime())))
            return false;
        m_output += m_process.readAll();
    }
    return true;
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
