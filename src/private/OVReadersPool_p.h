#pragma once

#include "private/OVAutotestExport_p.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QSemaphore>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

class QObject;
class OVImageFileReader;

// One entry of the readers pool: readers that serve one set of formats, borrowed and returned
// by worker threads. The semaphore holds one permit per reader on the idle stack, so a borrower
// waits while every reader is out; the mutex guards the stack, the count and the lent counts.
class ReaderPoolEntry
{
public:
    // n permits, one for each of the n readers Fill() puts in while the pool is built.
    explicit ReaderPoolEntry(int n);

    ReaderPoolEntry(const ReaderPoolEntry&) = delete;
    ReaderPoolEntry& operator=(const ReaderPoolEntry&) = delete;

    void Fill(QObject* reader);
    // Waits for an idle reader and lends it: the last one returned is the next one lent.
    QObject* Borrow();
    // Puts a reader back on the idle stack; one that was not out stands there once more.
    void GiveBack(QObject* reader);
    // Takes every copy of a reader off the stack for good, once no reader of the entry is lent.
    // An entry left without readers keeps no permits, so a borrower of its formats waits.
    void Take(QObject* reader);
    // Waits until no reader of the entry is lent, then takes every idle copy off the stack with
    // its permit; they come back, top of the stack first. Refill() undoes it.
    std::vector<QObject*> Drain();

private:
    void Refill(const std::vector<QObject*>& idle);
    // The lent count of a reader, or lent.end(); called with the lock held.
    std::vector<std::pair<QObject*, int>>::iterator Lent(QObject* reader);

    std::vector<QObject*> readers; // the idle stack
    QSemaphore available;
    QMutex lock;
    int count; // readers that belong to the entry, idle or borrowed
    // How often each reader is out with a borrower. A reader returned more often than it was
    // lent stands on the idle stack more than once, so neither the stack nor the permits tell
    // whether a thread still holds one; these counts do.
    std::vector<std::pair<QObject*, int>> lent;
};

// The pool of ready-made readers that worker threads borrow from the image file registry: one
// entry per set of formats that its readers declare. Built once all image file plug-ins are
// registered and released once before they are unloaded, on the registry's thread; only
// Acquire() and GiveBack() run on other threads, and they only read the maps.
class OVReadersPool
{
public:
    OVReadersPool() = default;
    // Entries still listed are deleted without handing their readers back.
    ~OVReadersPool();

    OVReadersPool(const OVReadersPool&) = delete;
    OVReadersPool& operator=(const OVReadersPool&) = delete;

    // A new reader for a format (null when nobody makes one), and a reader's way back to the
    // plug-in that made it.
    using MakeReader = std::function<OVImageFileReader*(const QString& format)>;
    using HandBack = std::function<void(OVImageFileReader* reader)>;

    // Adds an entry of n readers (the machine's ideal thread count when n is below 1) for each
    // format, in order, that no entry serves yet.
    void Build(const QStringList& formats, int n, const MakeReader& make);
    // Hands each reader of each entry back once it is idle, then deletes the entries.
    void Release(const HandBack& handBack);
    // An idle reader of the entry that serves the format (lower case), waiting while none is
    // idle; null when no entry serves it.
    OVImageFileReader* Acquire(const QString& format) const;
    // Returns a borrowed reader; a reader the pool does not hold is ignored.
    void GiveBack(OVImageFileReader* reader) const;
    // Takes a reader out of its entry for good; waits until no reader of the entry is lent.
    void Remove(QObject* reader);

    // Called on the draining thread just before it waits for a lent reader, so that a test can
    // tell when the pool waits.
    static OVCORE_AUTOTEST_EXPORT void (*drainWaits)();

private:
    QMap<QString, ReaderPoolEntry*> byFormat;
    QList<ReaderPoolEntry*> entries;
    // A reader taken out of the pool keeps its key here, mapped to null, so that returning
    // it again afterwards does nothing. Kept on purpose: the plug-in may have deleted it, and
    // putting it back would lend a freed reader.
    QMap<QObject*, ReaderPoolEntry*> byReader;
};
