#pragma once

#include "OVDemoBatch.h"
#include "OVDemoHost.h"

#include <QString>
#include <QStringList>

// What the headless mode is asked to do.
struct OVDemoHeadlessOptions
{
    QStringList inputs; // files, and folders whose files of the readable formats are taken
    bool recursive = false;
    QList<OVDemoAdjustment> steps;
    QString outputFolder; // empty: nothing is written
    QString format = QStringLiteral("png");
    int quality = -1; // for lossy writers; -1 keeps their default
    int jobs = 0;     // workers; below 1: the ideal thread count
    qint64 maxPixels = OVDemoBatch::kDefaultMaxPixels;
    QString feedback; // sent to the collector at the end when not empty
};

// Sets up the C library's allocator for a batch of large images. Call it before any thread
// starts, that is before the application object is made.
void OVDemoTuneHeadlessMemory();

// Reads, adjusts and writes the files on worker threads and prints one line per file on
// standard output, with a progress line on a terminal. SIGINT and SIGTERM stop the batch after
// the files in flight. Returns the process exit status: 0 when every file was read (and
// written), 1 otherwise, 128 plus the signal's number when stopped by one.
int OVDemoRunHeadless(OVDemoHost& host, const OVDemoHeadlessOptions& options);
