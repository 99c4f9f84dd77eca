#include "private/OVReadersPool_p.h"

#include "OVImageFileReader.h"

#include <QMutexLocker>
#include <QThread>

#include <algorithm>

// Entry

ReaderPoolEntry::ReaderPoolEntry(int n)
    : available(n)
    , count(n)
{}

void ReaderPoolEntry::Fill(QObject* reader)
{
    QMutexLocker locker(&lock);
    readers.push_back(reader);
}

QObject* ReaderPoolEntry::Borrow()
{
    available.acquire();
    QMutexLocker locker(&lock);
    QObject* reader = readers.back();
    readers.pop_back();
    const auto out = Lent(reader);
    if (out != lent.end())
        ++out->second;
    else
        lent.emplace_back(reader, 1);
    return reader;
}

void ReaderPoolEntry::GiveBack(QObject* reader)
{
    {
        QMutexLocker locker(&lock);
        readers.push_back(reader);
        // A reader that was not out comes back as one more copy on the stack.
        const auto out = Lent(reader);
        if (out != lent.end() && --out->second == 0) {
            *out = lent.back();
            lent.pop_back();
        }
    }
    available.release();
}

void ReaderPoolEntry::Take(QObject* reader)
{
    // With every reader of the entry idle, each copy of the reader leaves the stack with its
    // permit.
    std::vector<QObject*> idle = Drain();
    const auto copies = std::remove(idle.begin(), idle.end(), reader);
    if (copies != idle.end()) {
        idle.erase(copies, idle.end());
        QMutexLocker locker(&lock);
        --count;
    }
    Refill(idle);
}

std::vector<QObject*> ReaderPoolEntry::Drain()
{
    // Each permit stands for one copy on the stack, so taking one permit after another takes
    // the stack apart; a lent reader adds its copy when it comes back.
    std::vector<QObject*> idle;
    for (;;) {
        {
            QMutexLocker locker(&lock);
            if (readers.empty()) {
                if (lent.empty())
                    return idle;
                if (OVReadersPool::drainWaits)
                    OVReadersPool::drainWaits();
            }
        }
        available.acquire();
        QMutexLocker locker(&lock);
        idle.push_back(readers.back());
        readers.pop_back();
    }
}

void ReaderPoolEntry::Refill(const std::vector<QObject*>& idle)
{
    if (idle.empty())
        return;
    {
        QMutexLocker locker(&lock);
        readers.insert(readers.end(), idle.rbegin(), idle.rend());
    }
    available.release(int(idle.size()));
}

std::vector<std::pair<QObject*, int>>::iterator ReaderPoolEntry::Lent(QObject* reader)
{
    return std::find_if(lent.begin(), lent.end(), [reader](const auto& out) { return out.first == reader; });
}

// Pool

void (*OVReadersPool::drainWaits)() = nullptr;

OVReadersPool::~OVReadersPool()
{
    qDeleteAll(entries);
}

void OVReadersPool::Build(const QStringList& formats, int n, const MakeReader& make)
{
    if (n < 1)
        n = QThread::idealThreadCount();
    for (const QString& format : formats) {
        if (byFormat.contains(format))
            continue;
        auto* entry = new ReaderPoolEntry(n);
        OVImageFileReader* reader = nullptr;
        for (int i = 0; i < n; ++i) {
            reader = make(format);
            entry->Fill(reader);
            byReader.insert(reader, entry);
        }
        // The entry serves what its readers declare, which may be more than the format
        // that made it (a jpg reader that also reads jpeg), or may leave that format out.
        if (reader) {
            for (const QString& served : reader->GetFormats())
                byFormat.insert(served, entry);
        }
        entries.append(entry);
    }
}

void OVReadersPool::Release(const HandBack& handBack)
{
    for (ReaderPoolEntry* entry : qAsConst(entries)) {
        // Every reader of the entry is idle once it is drained; one returned more than once
        // is on the stack more than once, and goes back to its plug-in only the first time.
        // Only the pointer is compared, since the plug-in may have deleted it already.
        std::vector<QObject*> readers;
        for (QObject* reader : entry->Drain()) {
            if (std::find(readers.begin(), readers.end(), reader) == readers.end())
                readers.push_back(reader);
        }
        for (QObject* reader : readers) {
            // A reader no longer of this entry was handed back or destroyed already; a null
            // one from the plug-in is not followed and stays with the entry.
            if (byReader.value(reader) == entry)
                handBack(static_cast<OVImageFileReader*>(reader));
        }
        delete entry;
    }
    entries = QList<ReaderPoolEntry*>();
    // The keys stay, so that a format or reader of the old pool is still recognised; what
    // they pointed to is gone.
    for (auto& entry : byFormat)
        entry = nullptr;
    for (auto& entry : byReader)
        entry = nullptr;
}

OVImageFileReader* OVReadersPool::Acquire(const QString& format) const
{
    ReaderPoolEntry* entry = byFormat.value(format);
    // Only readers made by MakeReader are ever put into an entry.
    return entry ? static_cast<OVImageFileReader*>(entry->Borrow()) : nullptr;
}

void OVReadersPool::GiveBack(OVImageFileReader* reader) const
{
    if (ReaderPoolEntry* entry = byReader.value(reader))
        entry->GiveBack(reader);
}

void OVReadersPool::Remove(QObject* reader)
{
    const auto it = byReader.find(reader);
    if (it == byReader.end() || !it.value())
        return;
    it.value()->Take(reader);
    it.value() = nullptr;
}
