#include "OVFileBookmark.h"

#include "private/OVFileBookmark_p.h"

OVFileBookmark::OVFileBookmark()
    : d(new OVFileBookmarkPrivate)
{}

OVFileBookmark::OVFileBookmark(const QString& path)
    : OVFileBookmark()
{
    Acquire(path);
}

OVFileBookmark::OVFileBookmark(const OVFileBookmark& other)
    : OVFileBookmark()
{
    Acquire(other.d->path);
}

OVFileBookmark& OVFileBookmark::operator=(const OVFileBookmark& other)
{
    if (this != &other)
        Acquire(other.d->path);
    return *this;
}

OVFileBookmark::~OVFileBookmark()
{
    Release();
    delete d;
}

void OVFileBookmark::Acquire(const QString& path)
{
    if (d->acquired && path == d->path)
        return;
    Release();
    if (!path.isEmpty()) {
        FileBookmarkStore::Instance().Begin(path);
        d->acquired = true;
    }
    d->path = path;
}

void OVFileBookmark::Release()
{
    if (!d->acquired)
        return;
    FileBookmarkStore::Instance().End(d->path);
    d->acquired = false;
}

void OVFileBookmark::AddBookmark(const QString& path)
{
    FileBookmarkStore::Instance().Add(path);
}
