#include "private/OVFileBookmark_p.h"

namespace {

// Created during static initialisation of the library and destroyed when it unloads.
FileBookmarkStore s_store;

} // namespace

FileBookmarkStore& FileBookmarkStore::Instance()
{
    return s_store;
}

void FileBookmarkStore::Begin(const QString& path)
{
    Notify(BeginAccess, path);
}

void FileBookmarkStore::End(const QString& path)
{
    Notify(EndAccess, path);
}

void FileBookmarkStore::Add(const QString& path)
{
    Notify(AddBookmark, path);
}

void FileBookmarkStore::SetObserver(Observer observer)
{
    s_store.m_observer = observer;
}

void FileBookmarkStore::Notify(Operation operation, const QString& path) const
{
    if (m_observer)
        m_observer(operation, path);
}
