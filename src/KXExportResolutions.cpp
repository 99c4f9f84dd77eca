#include "KXExportResolutions.h"

#include "private/KXExportResolutions_p.h"
#include "private/OVSingleton_p.h"

// The list's operations are KXExportList's, under the names of this class.

OV_DEFINE_SINGLETON(KXExportResolutions)

KXExportResolutions::KXExportResolutions()
    : d(new KXExportResolutionsPrivate(this))
{}

KXExportResolutions::~KXExportResolutions()
{
    delete d;
}

QList<QSize> KXExportResolutions::GetList()
{
    return KXExportResolutionsPrivate::List();
}

int KXExportResolutions::GetSize()
{
    return KXExportResolutionsPrivate::Size();
}

QSize KXExportResolutions::Get(int index)
{
    return KXExportResolutionsPrivate::At(index);
}

int KXExportResolutions::Add(const QSize& item)
{
    return KXExportResolutionsPrivate::AddSorted(item);
}

void KXExportResolutions::Add(int index, const QSize& item)
{
    KXExportResolutionsPrivate::AddAt(index, item);
}

void KXExportResolutions::Set(int index, const QSize& item)
{
    KXExportResolutionsPrivate::Replace(index, item);
}

void KXExportResolutions::Remove(int index)
{
    KXExportResolutionsPrivate::Erase(index);
}
