#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

class QByteArray;
class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

// What a send in flight needs to know of its worker's shutdown.
class OVPostShutdown
{
public:
    // How long a send in flight, and the rest of the drain behind it, may still take once
    // shutdown has begun.
    static constexpr std::chrono::milliseconds kGrace{5000};

    // True once shutdown has begun and its grace has run out: a send in flight is aborted and
    // the rest of the queue is dropped unsent.
    bool Expired() const
    {
        return m_stop && std::chrono::steady_clock::now().time_since_epoch().count() >= m_deadline;
    }

protected:
    void Begin()
    {
        m_deadline = (std::chrono::steady_clock::now() + kGrace).time_since_epoch().count();
        m_stop = true;
    }

    std::atomic<bool> m_stop{false};
    std::atomic<std::chrono::steady_clock::rep> m_deadline{0};
};

// A background poster: items are handed over from any thread into a first-in, first-out queue,
// and one worker thread of its own sends them one at a time, in queue order. Callers only take
// the queue lock for the push; they never wait for the network.
//
// Shutting down sets the stop flag, wakes the worker and joins it. A worker that is draining
// the queue sends everything it finds there before it looks at the flag again, so the join
// waits for those sends; whatever is still queued after that is discarded unsent. A network
// that never answers would keep that join waiting for ever, so sends are given a grace period
// after shutdown begins (OVPostShutdown) and are abandoned once it has run out.
template <typename Item>
class OVPostWorker : public OVPostShutdown
{
public:
    using Sender = std::function<void(const Item&, const OVPostShutdown&)>;

    explicit OVPostWorker(Sender send)
        : m_send(std::move(send))
    {
        m_worker = std::thread([this] { Run(); });
    }

    // Joining from the worker thread itself (a callback destroying its owner) cannot work: the
    // join throws out of the destructor and the program ends.
    ~OVPostWorker()
    {
        Begin();
        // Taking the lock once orders the flag before a worker that has just found the queue
        // empty starts to wait, so the signal below cannot fall between its check and its wait.
        {
            std::lock_guard<std::mutex> lock(m_lock);
        }
        m_wake.notify_one();
        if (m_worker.joinable())
            m_worker.join();
    }

    OVPostWorker(const OVPostWorker&) = delete;
    OVPostWorker& operator=(const OVPostWorker&) = delete;

    // Constructs the item at the back of the queue.
    template <typename... Args>
    void Push(Args&&... args)
    {
        {
            std::lock_guard<std::mutex> lock(m_lock);
            m_queue.emplace_back(std::forward<Args>(args)...);
        }
        m_wake.notify_one();
    }

private:
    void Run()
    {
        while (!m_stop) {
            std::unique_lock<std::mutex> lock(m_lock);
            while (m_queue.empty()) {
                if (m_stop)
                    return;
                m_wake.wait(lock);
            }
            // The stop flag is not looked at while draining.
            while (!m_queue.empty()) {
                const Item item = std::move(m_queue.front());
                m_queue.pop_front();
                lock.unlock();
                if (!Expired())
                    m_send(item, *this);
                lock.lock();
            }
        }
    }

    Sender m_send;
    std::thread m_worker;
    std::mutex m_lock;
    std::condition_variable m_wake;
    std::deque<Item> m_queue;
};

namespace OVPost {

// Posts body with request from the calling thread, on a network manager and an event loop
// made for this one send, and returns when the reply has finished. There is no time-out while
// the worker runs; once its shutdown grace has expired the reply is aborted. prepare sees the manager
// before the post (to connect its signals), started the reply right after it, finished the reply when it is
// done. The reply, the manager and the loop are gone when the call returns. Any of the three may be empty.
void Send(const QNetworkRequest& request, const QByteArray& body, const OVPostShutdown& shutdown,
          const std::function<void(QNetworkAccessManager&)>& prepare,
          const std::function<void(QNetworkReply&)>& started,
          const std::function<void(QNetworkReply&)>& finished);

} // namespace OVPost
