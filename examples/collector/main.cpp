// A tiny statistics collector for the demo: an HTTP server on the loopback address that prints
// every form or JSON document posted to it as one line of JSON on standard output, and answers
// each post with a small JSON reply.
//
//   ovcollector [port]      port 0 (the default) takes a free one
//
// The first line it prints is "listening on <port>". Each post then gives one line:
//   {"path": "/events", "form": {"api_key": "...", "event": {...}}}       a form post
//   {"path": "/feedback", "json": {...}}                                  a JSON post
// Form values that hold JSON are printed as JSON, others as strings.

#include <QCoreApplication>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextStream>
#include <QUrlQuery>

#include <memory>

namespace {

// One connection's request as it arrives; complete once the body has the declared length.
struct Request
{
    QByteArray buffer;
    QByteArray method;
    QByteArray path;
    QByteArray contentType;
    int headerEnd = -1;
    int contentLength = 0;

    bool Feed(const QByteArray& data)
    {
        buffer += data;
        if (headerEnd < 0) {
            headerEnd = buffer.indexOf("\r\n\r\n");
            if (headerEnd < 0)
                return false;
            const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
            const QList<QByteArray> start = lines.value(0).trimmed().split(' ');
            method = start.value(0);
            path = start.value(1);
            for (const QByteArray& line : lines.mid(1)) {
                const int colon = line.indexOf(':');
                const QByteArray name = line.left(colon).trimmed().toLower();
                const QByteArray value = line.mid(colon + 1).trimmed();
                if (name == "content-length")
                    contentLength = value.toInt();
                else if (name == "content-type")
                    contentType = value;
            }
        }
        return buffer.size() - (headerEnd + 4) >= contentLength;
    }

    QByteArray Body() const { return buffer.mid(headerEnd + 4, contentLength); }
};

QJsonValue ValueOf(const QString& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (document.isObject())
        return document.object();
    return text;
}

QJsonObject Describe(const Request& request)
{
    QJsonObject line{{QStringLiteral("path"), QString::fromUtf8(request.path)}};
    const QByteArray body = request.Body();
    if (request.contentType.startsWith("application/x-www-form-urlencoded")) {
        QJsonObject form;
        // Qt writes a blank in a form value as it stands or as %20, never as '+'.
        const QUrlQuery query(QString::fromUtf8(body));
        for (const auto& item : query.queryItems(QUrl::FullyDecoded))
            form.insert(item.first, ValueOf(item.second));
        line.insert(QStringLiteral("form"), form);
    } else {
        line.insert(QStringLiteral("json"), ValueOf(QString::fromUtf8(body)));
    }
    return line;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTcpServer server;
    const quint16 port = argc > 1 ? quint16(QByteArray(argv[1]).toUShort()) : 0;
    if (!server.listen(QHostAddress::LocalHost, port)) {
        QTextStream(stderr) << "cannot listen: " << server.errorString() << '\n';
        return 1;
    }
    out << "listening on " << server.serverPort() << Qt::endl;

    int received = 0;
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            auto request = std::make_shared<Request>();
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [&, socket, request] {
                if (!request->Feed(socket->readAll()))
                    return;
                const QJsonObject line = Describe(*request);
                out << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
                const QByteArray reply =
                    QJsonDocument(QJsonObject{{QStringLiteral("received"), ++received},
                                              {QStringLiteral("reply"), QStringLiteral("Thank you.")}})
                        .toJson(QJsonDocument::Compact);
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\n"
                              "Content-Length: " +
                              QByteArray::number(reply.size()) + "\r\n\r\n" + reply);
                socket->disconnectFromHost();
                *request = Request();
            });
        }
    });
    return app.exec();
}
