#include "OVEndpointMessanger.h"

#include "private/OVBuildLog_p.h"
#include "private/OVEndpointMessanger_p.h"

#include <QAuthenticator>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#ifndef QT_NO_SSL
#include <QSslError>
#endif

OVEndpointMessangerPrivate::OVEndpointMessangerPrivate()
    : worker(&OVEndpointMessangerPrivate::Send)
{}

void OVEndpointMessangerPrivate::Send(const OVEndpointMessage& message, const OVPostShutdown& shutdown)
{
    const OVEndpoint& endpoint = *message.endpoint;
    QNetworkRequest request(QUrl(endpoint.url, QUrl::TolerantMode));
    if (!endpoint.contentType.isEmpty())
        request.setHeader(QNetworkRequest::ContentTypeHeader, endpoint.contentType);

    QByteArray response;
    const auto prepare = [&endpoint](QNetworkAccessManager& manager) {
        // Without a user nothing answers a challenge, and the post fails with it.
        if (!endpoint.user.isEmpty()) {
            QObject::connect(&manager, &QNetworkAccessManager::authenticationRequired,
                             [&endpoint](QNetworkReply*, QAuthenticator* authenticator) {
                                 authenticator->setUser(endpoint.user);
                                 authenticator->setPassword(endpoint.password);
                             });
        }
#ifndef QT_NO_SSL
        // Logged, not ignored: a TLS failure fails the post.
        QObject::connect(&manager, &QNetworkAccessManager::sslErrors,
                         [](QNetworkReply*, const QList<QSslError>& errors) {
                             for (const QSslError& error : errors)
                                 OV_BUILD_LOG(error.errorString());
                         });
#endif
    };
    const auto started = [&response](QNetworkReply& reply) {
        QObject::connect(&reply, &QNetworkReply::readyRead, [&response, &reply] {
            if (reply.error() == QNetworkReply::NoError)
                response += reply.readAll();
        });
    };
    const auto finished = [&message, &response](QNetworkReply& reply) {
        if (reply.error() != QNetworkReply::NoError) {
            OV_BUILD_LOG(QStringLiteral("Send event error: %1").arg(static_cast<int>(reply.error())));
            OV_BUILD_LOG(reply.errorString());
        }
        if (message.callback)
            message.callback(response);
    };
    OVPost::Send(request, message.document.toJson(), shutdown, prepare, started, finished);
}

OVEndpointMessanger::OVEndpointMessanger()
    : d(new OVEndpointMessangerPrivate)
{}

OVEndpointMessanger::~OVEndpointMessanger()
{
    delete d;
}

unsigned int OVEndpointMessanger::RegisterEndpoint(const QString& url, const QString& user,
                                                   const QString& password, const QString& contentType)
{
    d->endpoints.push_back(std::make_shared<const OVEndpoint>(OVEndpoint{url, user, password, contentType}));
    return static_cast<unsigned int>(d->endpoints.size() - 1);
}

bool OVEndpointMessanger::PostMessage(unsigned int endpointId, const QJsonDocument& document,
                                      const std::function<void(const QByteArray&)>& callback)
{
    if (endpointId >= d->endpoints.size())
        return false;
    d->worker.Push(d->endpoints[endpointId], document, callback);
    return true;
}
