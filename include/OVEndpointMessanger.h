#pragma once

#include "OVCoreExport.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QJsonDocument;
class OVEndpointMessangerPrivate;

/// Posts JSON documents to HTTP endpoints for the host's own services.
///
/// Register the endpoints first (URL, optional user and password for basic authentication,
/// optional Content-Type) and keep the number each gets; then post documents to an endpoint by
/// its number, optionally with a callback that receives the response body.
///
/// Posting never blocks: documents are queued and sent one after the other by a worker thread
/// that the messenger owns, and callbacks run on that thread (they must not destroy the
/// messenger). Destroying the messenger waits for the send under way; once the destructor has
/// returned no callback is called any more.
class OVCORE_EXPORT OVEndpointMessanger
{
public:
    /// A messenger without endpoints; starts its worker thread.
    OVEndpointMessanger();
    /// Stops the worker thread once the sends under way are done (a hanging network gets 5
    /// seconds), discards what is still queued, and frees everything.
    virtual ~OVEndpointMessanger();

    OVEndpointMessanger(const OVEndpointMessanger&) = delete;
    OVEndpointMessanger& operator=(const OVEndpointMessanger&) = delete;

    /// Adds an endpoint and returns its number: 0 for the first, then 1, 2, ...
    ///
    /// Endpoints are never removed or changed. Not synchronised with PostMessage: register
    /// every endpoint before other threads post.
    unsigned int RegisterEndpoint(const QString& url, const QString& user, const QString& password,
                                  const QString& contentType);

    /// Queues document for the endpoint; true means queued, not delivered.
    ///
    /// An unknown endpoint gives false and queues nothing. The callback, which may be empty,
    /// runs on the worker thread with the response body, also after an error.
    bool PostMessage(unsigned int endpointId, const QJsonDocument& document,
                     const std::function<void(const QByteArray&)>& callback);

private:
    OVEndpointMessangerPrivate* const d;
};
