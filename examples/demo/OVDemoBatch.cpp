#include "OVDemoBatch.h"

#include "OVImageFileManager.h"
#include "OVImageFileReader.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QThread>

OVDemoBatch::OVDemoBatch(int threads, QObject* parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(threads < 1 ? QThread::idealThreadCount() : threads);
}

OVDemoBatch::~OVDemoBatch()
{
    // Workers post their results to this object; none may be left running.
    m_pool.waitForDone();
}

void OVDemoBatch::Add(const QString& path)
{
    ++m_pending;
    const QList<OVDemoAdjustment> steps = m_steps;
    m_pool.start([this, path, steps] {
        const OVDemoImage result = Open(path, steps);
        QMetaObject::invokeMethod(
            this,
            [this, result] {
                --m_pending;
                emit Opened(result);
                if (m_pending == 0)
                    emit AllOpened();
            },
            Qt::QueuedConnection);
    });
}

void OVDemoBatch::WaitForAll()
{
    if (m_pending == 0)
        return;
    QEventLoop loop;
    connect(this, &OVDemoBatch::AllOpened, &loop, &QEventLoop::quit);
    loop.exec();
}

namespace {

QString TooLarge(const QSize& size, qint64 maxPixels)
{
    return OVDemoHost::tr("The image is %1x%2 pixels, above the limit of %3 megapixels (--max-megapixels).")
        .arg(size.width())
        .arg(size.height())
        .arg(double(maxPixels) / 1e6);
}

bool Above(const QSize& size, qint64 maxPixels)
{
    return qint64(size.width()) * size.height() > maxPixels;
}

} // namespace

OVDemoImage OVDemoBatch::Open(const QString& path, const QList<OVDemoAdjustment>& steps, qint64 maxPixels)
{
    QElapsedTimer timer;
    timer.start();
    OVDemoImage result;
    result.path = path;
    const QFileInfo info(path);
    result.format = info.suffix().toLower();
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    OVImageFileReader* reader = nullptr;
    if (!info.isFile()) {
        result.error = OVDemoHost::tr("The file does not exist.");
    } else if (!files || !(reader = files->AcquireReader(result.format))) {
        result.error = OVDemoHost::tr("No reader for the format \"%1\".").arg(result.format);
    } else {
        result.readerUID = reader->GetUID();
        // A file's header may claim any size; decoding it would allocate that much. A reader
        // that cannot tell the size without decoding is checked on the decoded image instead.
        const QSize stated = reader->ReadSize(path);
        if (Above(stated, maxPixels)) {
            result.error = TooLarge(stated, maxPixels);
        } else if (!reader->Read(path, result.image)) {
            result.error = reader->GetErrorString();
            if (result.error.isEmpty())
                result.error = OVDemoHost::tr("The file could not be read.");
            result.image = QImage();
        } else if (Above(result.image.size(), maxPixels)) {
            result.error = TooLarge(result.image.size(), maxPixels);
            result.image = QImage();
        }
    }
    if (reader)
        files->ReleaseAcquiredReader(reader);
    if (!result.image.isNull() && !steps.isEmpty())
        result.image = OVDemoHost::Apply(result.image, steps);
    result.size = result.image.size();
    result.ms = timer.elapsed();
    return result;
}
