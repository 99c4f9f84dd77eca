#include "OVDemoPipeline.h"

#include "OVImageFileManager.h"
#include "OVImageFileWriter.h"

#include <QElapsedTimer>
#include <QEventLoop>

OVDemoPipeline::OVDemoPipeline(const Settings& settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
{
    m_pool.setMaxThreadCount(qMax(1, settings.workers));
}

OVDemoPipeline::~OVDemoPipeline()
{
    Stop();
    m_pool.waitForDone();
    ReleaseWriters();
}

void OVDemoPipeline::Start(const QList<OVDemoJob>& jobs)
{
    m_jobs = jobs;
    m_next.storeRelaxed(0);
    m_stopped.storeRelaxed(0);
    const int workers = qMax(1, qMin(m_settings.workers, jobs.size()));
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    for (int i = 0; i < workers; ++i) {
        OVImageFileWriter* writer =
            files && !m_settings.format.isEmpty() ? files->CreateWriter(m_settings.format) : nullptr;
        if (writer)
            writer->SetQuality(m_settings.quality);
        m_writers << writer;
        ++m_running;
        m_pool.start([this, writer] { Work(writer); });
    }
}

void OVDemoPipeline::Stop()
{
    m_stopped.storeRelease(1);
}

void OVDemoPipeline::Wait()
{
    if (m_running == 0)
        return;
    QEventLoop loop;
    connect(this, &OVDemoPipeline::AllFinished, &loop, &QEventLoop::quit);
    loop.exec();
}

void OVDemoPipeline::Work(OVImageFileWriter* writer)
{
    while (!m_stopped.loadAcquire()) {
        const int index = m_next.fetchAndAddRelaxed(1);
        if (index >= m_jobs.size())
            break;
        const OVDemoImage result = Process(m_jobs.at(index), writer);
        QMetaObject::invokeMethod(
            this, [this, result] { emit Finished(result); }, Qt::QueuedConnection);
    }
    // Posted after this worker's last result, so the owner sees every result before the end.
    QMetaObject::invokeMethod(this, &OVDemoPipeline::OnWorkerEnded, Qt::QueuedConnection);
}

OVDemoImage OVDemoPipeline::Process(const OVDemoJob& job, OVImageFileWriter* writer) const
{
    QElapsedTimer timer;
    timer.start();
    OVDemoImage result = OVDemoBatch::Open(job.input, m_settings.steps, m_settings.maxPixels);
    if (result.error.isEmpty() && !job.output.isEmpty()) {
        QString reason;
        if (!writer)
            reason = OVDemoHost::tr("No writer for the format \"%1\".").arg(m_settings.format);
        else if (!writer->Write(job.output, result.image))
            reason = writer->GetErrorString().isEmpty() ? OVDemoHost::tr("The image could not be saved.")
                                                        : writer->GetErrorString();
        if (reason.isEmpty())
            result.written = job.output;
        else
            result.error = OVDemoHost::tr("cannot write %1: %2").arg(job.output, reason);
    }
    result.image = QImage();
    result.ms = timer.elapsed();
    return result;
}

void OVDemoPipeline::OnWorkerEnded()
{
    if (--m_running > 0)
        return;
    ReleaseWriters();
    emit AllFinished();
}

void OVDemoPipeline::ReleaseWriters()
{
    if (OVImageFileManager* files = OVImageFileManager::GetInstance()) {
        for (OVImageFileWriter* writer : m_writers)
            files->ReleaseWriter(writer);
    }
    m_writers.clear();
}
