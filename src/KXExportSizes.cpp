#include "KXExportSizes.h"

#include "private/KXExportSizes_p.h"
#include "private/OVSingleton_p.h"

// The list's operations are KXExportList's, under the names of this class.

OV_DEFINE_SINGLETON(KXExportSizes)

KXExportSizes::KXExportSizes()
    : d(new KXExportSizesPrivate(this))
{}

KXExportSizes::~KXExportSizes()
{
    delete d;
}

QList<qint64> KXExportSizes::GetList()
{
    return KXExportSizesPrivate::List();
}

int KXExportSizes::GetSize()
{
    return KXExportSizesPrivate::Size();
}

qint64 KXExportSizes::Get(int index)
{
    return KXExportSizesPrivate::At(index);
}

int KXExportSizes::Add(qint64 item)
{
    return KXExportSizesPrivate::AddSorted(item);
}

void KXExportSizes::Add(int index, qint64 item)
{
    KXExportSizesPrivate::AddAt(index, item);
}

void KXExportSizes::Set(int index, qint64 item)
{
    KXExportSizesPrivate::Replace(index, item);
}

void KXExportSizes::Remove(int index)
{
    KXExportSizesPrivate::Erase(index);
}
