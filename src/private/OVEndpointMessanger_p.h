#pragma once

#include "private/OVPostWorker_p.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct OVEndpoint
{
    QString url;
    QString user; // empty: no authentication
    QString password;
    QString contentType; // empty: no Content-Type header
};

// One queued post: the endpoint as it was when the message was posted, the document and the
// callback that gets the response body (may be empty).
struct OVEndpointMessage
{
    OVEndpointMessage(const std::shared_ptr<const OVEndpoint>& endpoint, const QJsonDocument& document,
                      const std::function<void(const QByteArray&)>& callback)
        : endpoint(endpoint)
        , document(document)
        , callback(callback)
    {}

    // Endpoints never change once registered, so sharing the record is copying it.
    std::shared_ptr<const OVEndpoint> endpoint;
    QJsonDocument document;
    std::function<void(const QByteArray&)> callback;
};

class OVEndpointMessangerPrivate
{
public:
    OVEndpointMessangerPrivate();

    // Sends one message on the worker thread and hands the response body to its callback.
    static void Send(const OVEndpointMessage& message, const OVPostShutdown& shutdown);

    std::vector<std::shared_ptr<const OVEndpoint>> endpoints;
    // Last, so that the worker is stopped and joined before the rest goes.
    OVPostWorker<OVEndpointMessage> worker;
};
