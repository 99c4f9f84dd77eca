#include "private/OVPostWorker_p.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace OVPost {

namespace {
// How often a send in flight looks whether its worker's shutdown grace has run out.
constexpr int kShutdownPollMs = 50;
} // namespace

void Send(const QNetworkRequest& request, const QByteArray& body, const OVPostShutdown& shutdown,
          const std::function<void(QNetworkAccessManager&)>& prepare,
          const std::function<void(QNetworkReply&)>& started,
          const std::function<void(QNetworkReply&)>& finished)
{
    QEventLoop loop;
    QNetworkAccessManager manager;
    if (prepare)
        prepare(manager);
    QObject::connect(&manager, SIGNAL(finished(QNetworkReply*)), &loop, SLOT(quit()));

    QNetworkReply* reply = manager.post(request, body);
    if (started)
        started(*reply);

    // The post itself has no time-out; only a shutdown whose grace has run out ends it early,
    // so that a network that never answers cannot keep the owner's destructor waiting.
    QTimer shutdownCheck;
    shutdownCheck.setInterval(kShutdownPollMs);
    QObject::connect(&shutdownCheck, &QTimer::timeout, reply, [&shutdown, reply] {
        if (shutdown.Expired())
            reply->abort();
    });
    shutdownCheck.start();

    if (!reply->isFinished())
        loop.exec();
    shutdownCheck.stop();
    if (finished)
        finished(*reply);
    // The manager owns the reply and takes it along when it goes.
    reply->deleteLater();
}

} // namespace OVPost
