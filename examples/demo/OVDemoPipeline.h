#pragma once

#include "OVDemoBatch.h"

#include <QAtomicInt>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QVector>

class OVImageFileWriter;

// One file of a batch: where it is read from and where its result goes (empty: not written).
struct OVDemoJob
{
    QString input;
    QString output;
};

// Reads, adjusts and writes files end to end on worker threads, so that a decoded image lives
// only while its worker writes it: however many files there are, at most one image per worker
// is in memory. Each worker owns one writer, made before the workers start and given back
// after they end, both on the thread that owns the pipeline.
class OVDemoPipeline : public QObject
{
    Q_OBJECT
public:
    struct Settings
    {
        QList<OVDemoAdjustment> steps;
        QString format;   // of the writers; empty: nothing is written
        int quality = -1; // for lossy writers; -1 keeps their default
        qint64 maxPixels = OVDemoBatch::kDefaultMaxPixels;
        int workers = 1;
    };

    explicit OVDemoPipeline(const Settings& settings, QObject* parent = nullptr);
    ~OVDemoPipeline() override;

    // Starts the workers on the jobs and returns.
    void Start(const QList<OVDemoJob>& jobs);
    // Starts no further file; the files in flight are finished.
    void Stop();
    // Runs the caller's event loop until every worker has ended and its writer is given back.
    void Wait();

signals:
    // One per file, on the owner's thread, in the order the files finish; the image is released.
    void Finished(const OVDemoImage& result);
    void AllFinished();

private:
    void Work(OVImageFileWriter* writer);
    OVDemoImage Process(const OVDemoJob& job, OVImageFileWriter* writer) const;
    void OnWorkerEnded();
    void ReleaseWriters();

    const Settings m_settings;
    QList<OVDemoJob> m_jobs;
    QVector<OVImageFileWriter*> m_writers;
    QAtomicInt m_next;
    QAtomicInt m_stopped;
    int m_running = 0;
    QThreadPool m_pool;
};
