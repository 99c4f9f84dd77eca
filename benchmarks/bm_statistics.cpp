// What queueing a statistics event or a messenger post costs the caller while the server never
// answers, beside the floor of any such queue (a locked deque push and a notify); and the
// application object's whole construction beside a bare QApplication's.

#include "OVApplication.h"
#include "OVEndpointMessanger.h"
#include "OVTestHttpServer.h"
#include "OVTestSupport.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <ctime>
#include <deque>
#include <memory>
#include <mutex>

namespace {

int s_argc = 1;
char s_arg0[] = "bm_statistics";
char* s_argv[] = {s_arg0, nullptr};
qintptr s_socket = -1;
std::unique_ptr<OVApplication> s_app;
std::unique_ptr<OVTest::HttpServer> s_server;
std::unique_ptr<OVEndpointMessanger> s_messenger;

// The application and the server that holds every request, made once for the queueing runs.
void EnsureApplication()
{
    if (s_app)
        return;
    s_app = std::make_unique<OVApplication>(s_argc, s_argv);
    s_server = std::make_unique<OVTest::HttpServer>();
    s_server->SetAnswer("/events", OVTest::HttpServer::Answer::Hold);
    s_server->SetAnswer("/messages", OVTest::HttpServer::Answer::Hold);
    s_server->Start(s_socket);
}

const QJsonDocument kDocument(QJsonObject{{"event_type", "open"}, {"event_id", 7}});

// The constructing thread's processor time: the machine is shared, and wall time would mostly
// measure who else is running.
double ThreadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

template <typename App>
void Construction(benchmark::State& state)
{
    for (auto _ : state) {
        const double start = ThreadSeconds();
        App app(s_argc, s_argv);
        state.SetIterationTime(ThreadSeconds() - start);
    }
}

void BM_QApplicationConstruction(benchmark::State& state)
{
    Construction<QApplication>(state);
}

void BM_OVApplicationConstruction(benchmark::State& state)
{
    Construction<OVApplication>(state);
}

void BM_QueueFloor(benchmark::State& state)
{
    std::mutex lock;
    std::condition_variable wake;
    std::deque<QJsonDocument> queue;
    for (auto _ : state) {
        {
            std::lock_guard<std::mutex> guard(lock);
            queue.push_back(kDocument);
        }
        wake.notify_one();
    }
}

void BM_SendStatisticsEvent(benchmark::State& state)
{
    EnsureApplication();
    const QString type = QStringLiteral("open");
    for (auto _ : state)
        OVApplication::SendStatisticsEvent(type, 7);
}

void BM_PostMessage(benchmark::State& state)
{
    EnsureApplication();
    if (!s_messenger) {
        s_messenger = std::make_unique<OVEndpointMessanger>();
        s_messenger->RegisterEndpoint(s_server->Url("/messages"), {}, {}, {});
    }
    for (auto _ : state)
        s_messenger->PostMessage(0, kDocument, {});
}

} // namespace

// Construction first, while no application object exists; the queueing runs then share one.
BENCHMARK(BM_QApplicationConstruction)->UseManualTime()->Iterations(50)->Repetitions(9);
BENCHMARK(BM_OVApplicationConstruction)->UseManualTime()->Iterations(50)->Repetitions(9);
BENCHMARK(BM_QueueFloor)->Iterations(50000)->Repetitions(5);
BENCHMARK(BM_SendStatisticsEvent)->Iterations(50000)->Repetitions(5);
BENCHMARK(BM_PostMessage)->Iterations(50000)->Repetitions(5);

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    quint16 port = 0;
    s_socket = OVTest::HttpServer::ListenBeforeQt(&port);
    if (s_socket < 0 || !OVTest::RegisterTelemetryConfig(port))
        return 1;
    {
        // The first application object of a process pays for loading the platform plug-in
        // and the fonts; neither side of the comparison should.
        QApplication warmUp(s_argc, s_argv);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    // Each held post is given up once the shutdown grace has run out.
    s_messenger.reset();
    s_app.reset();
    s_server.reset();
    return 0;
}
