#pragma once

#include "private/OVPostWorker_p.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include <functional>
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
    OVEndpoint endpoint;
    QJsonDocument document;
    std::function<void(const QByteArray&)> callback;
};

class OVEndpointMessangerPrivate
{
public:
    OVEndpointMessangerPrivate();

    // Sends one message on the worker thread and hands the response body to its callback.
    static void Send(const OVEndpointMessage& message, const OVPostShutdown& shutdown);

    std::vector<OVEndpoint> endpoints;
    // Last, so that the worker is stopped and joined before the rest goes.
    OVPostWorker<OVEndpointMessage> worker;
};
