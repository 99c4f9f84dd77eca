#pragma once

#include "OVDemoHost.h"

#include <QString>
#include <QStringList>

// What the headless mode is asked to do.
struct OVDemoHeadlessOptions
{
    QStringList files;
    QList<OVDemoAdjustment> steps;
    QString outputFolder; // empty: nothing is written
    QString format = QStringLiteral("png");
    QString feedback; // sent to the collector at the end when not empty
};

// Opens the files through the readers pool, applies the steps, writes the results and prints
// one line per file on standard output. Returns the process exit status: 0 when every file was
// read (and written), 1 otherwise.
int OVDemoRunHeadless(OVDemoHost& host, const OVDemoHeadlessOptions& options);
