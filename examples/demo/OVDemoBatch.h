#pragma once

#include "OVDemoHost.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QThreadPool>

// What opening one file gave: the image (null on failure) and its pixel size, the format its
// reader was chosen by, the reader's UID, the error text, the milliseconds it took and, in a
// batch that writes, the file written.
struct OVDemoImage
{
    QString path;
    QString format;
    QString readerUID;
    QImage image;
    QSize size;
    QString error;
    qint64 ms = 0;
    QString written;
};

// Opens files on worker threads, each with a reader borrowed from the image file registry's
// readers pool, and applies the adjustment steps there too. Results come back on the thread
// that owns the batch, one Opened() per file, in the order they finish.
class OVDemoBatch : public QObject
{
    Q_OBJECT
public:
    // threads < 1 takes QThread::idealThreadCount().
    explicit OVDemoBatch(int threads = 0, QObject* parent = nullptr);
    ~OVDemoBatch() override;

    void SetSteps(const QList<OVDemoAdjustment>& steps) { m_steps = steps; }
    void Add(const QString& path);
    // Files added and not reported yet.
    int Pending() const { return m_pending; }
    // Runs the caller's event loop until every file added so far is reported.
    void WaitForAll();

    // The largest image opened by default: 100 megapixels, 400 MB decoded.
    static constexpr qint64 kDefaultMaxPixels = 100 * 1000 * 1000;

    // Reads one file with a pooled reader on the calling thread. An image of more than maxPixels
    // pixels is refused by the size its file states, before it is decoded.
    static OVDemoImage Open(const QString& path, const QList<OVDemoAdjustment>& steps,
                            qint64 maxPixels = kDefaultMaxPixels);

signals:
    void Opened(const OVDemoImage& result);
    void AllOpened();

private:
    QThreadPool m_pool;
    QList<OVDemoAdjustment> m_steps;
    int m_pending = 0;
};
