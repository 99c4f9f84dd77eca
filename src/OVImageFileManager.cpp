#include "OVImageFileManager.h"

#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "private/OVImageFileManager_p.h"
#include "private/OVSingleton_p.h"

OV_DEFINE_SINGLETON(OVImageFileManager)

namespace {

using GroupFormats = QStringList (OVImageFileManager::*)(const QString&) const;

// One filter entry per group, "Name (*.a *.b)", joined by ";;". The blank after the last
// pattern becomes the closing text; for a group without formats that is the opening
// parenthesis, which leaves "Name )".
QString BuildFilter(const OVImageFileManager* manager, const QStringList& groups, GroupFormats formats)
{
    QString filter;
    for (int i = 0; i < groups.size(); ++i) {
        filter += manager->GetGroupName(groups.at(i));
        filter += OVImageFileManager::tr(" (");
        for (const QString& format : (manager->*formats)(groups.at(i)))
            filter += QStringLiteral("*.%1 ").arg(format);
        filter.chop(1);
        filter += i + 1 < groups.size() ? QStringLiteral(");;") : QStringLiteral(")");
    }
    return filter;
}

} // namespace

OVImageFileManager::OVImageFileManager()
    : d(new OVImageFileManagerPrivate(this))
{}

OVImageFileManager::~OVImageFileManager()
{
    delete d;
}

// Registration and queries

bool OVImageFileManager::Register(OVImageFilePlugin* plugin)
{
    return d->Register(plugin);
}

bool OVImageFileManager::Unregister(OVImageFilePlugin* plugin)
{
    return d->Unregister(plugin);
}

OVImageFilePlugin* OVImageFileManager::GetPluginForRead(const QString& format) const
{
    return OVImageFileManagerPrivate::FirstPlugin(d->read, format.toLower());
}

OVImageFilePlugin* OVImageFileManager::GetPluginForWrite(const QString& format) const
{
    return OVImageFileManagerPrivate::FirstPlugin(d->write, format.toLower());
}

QStringList OVImageFileManager::GetSupportedReadFormats() const
{
    return GetGroupReadFormats(QString::fromLatin1(AllGroupUID));
}

QStringList OVImageFileManager::GetSupportedWriteFormats() const
{
    return GetGroupWriteFormats(QString::fromLatin1(AllGroupUID));
}

QStringList OVImageFileManager::GetSupportedReadGroups() const
{
    return d->read.groups.keys();
}

QStringList OVImageFileManager::GetSupportedWriteGroups() const
{
    QStringList groups = d->write.groups.keys();
    groups.removeOne(QString::fromLatin1(AllGroupUID));
    return groups;
}

QString OVImageFileManager::GetGroupName(const QString& groupUID) const
{
    const auto it = d->groupNames.constFind(groupUID);
    return it != d->groupNames.cend() ? it.value() : tr("Unknown");
}

QStringList OVImageFileManager::GetGroupReadFormats(const QString& groupUID) const
{
    return d->read.groups.value(groupUID);
}

QStringList OVImageFileManager::GetGroupWriteFormats(const QString& groupUID) const
{
    return d->write.groups.value(groupUID);
}

QStringList OVImageFileManager::GetGroupFormats(const QString& groupUID) const
{
    const auto it = d->read.groups.constFind(groupUID);
    return it != d->read.groups.cend() ? it.value() : GetGroupWriteFormats(groupUID);
}

QString OVImageFileManager::GetFilterForRead()
{
    const OVImageFileManager* manager = GetInstance();
    return manager ? BuildFilter(manager, manager->GetSupportedReadGroups(),
                                 &OVImageFileManager::GetGroupReadFormats)
                   : QString();
}

QString OVImageFileManager::GetFilterForWrite()
{
    const OVImageFileManager* manager = GetInstance();
    return manager ? BuildFilter(manager, manager->GetSupportedWriteGroups(),
                                 &OVImageFileManager::GetGroupWriteFormats)
                   : QString();
}

// Readers and writers

OVImageFileReader* OVImageFileManager::CreateReader(const QString& format)
{
    const QString key = format.toLower();
    return d->Create(d->read, OVImageFileManagerPrivate::FirstPlugin(d->read, key),
                     &OVImageFilePlugin::CreateReader, key);
}

OVImageFileReader* OVImageFileManager::CreateReaderByUID(const QString& uid)
{
    return d->Create(d->read, OVImageFileManagerPrivate::UIDOwner(d->read, uid),
                     &OVImageFilePlugin::CreateReaderByUID, uid);
}

OVImageFileWriter* OVImageFileManager::CreateWriter(const QString& format)
{
    const QString key = format.toLower();
    return d->Create(d->write, OVImageFileManagerPrivate::FirstPlugin(d->write, key),
                     &OVImageFilePlugin::CreateWriter, key);
}

OVImageFileWriter* OVImageFileManager::CreateWriterByUID(const QString& uid)
{
    return d->Create(d->write, OVImageFileManagerPrivate::UIDOwner(d->write, uid),
                     &OVImageFilePlugin::CreateWriterByUID, uid);
}

void OVImageFileManager::ReleaseReader(OVImageFileReader* reader)
{
    d->Release(d->read, reader, &OVImageFilePlugin::ReleaseReader);
}

void OVImageFileManager::ReleaseWriter(OVImageFileWriter* writer)
{
    d->Release(d->write, writer, &OVImageFilePlugin::ReleaseWriter);
}

void OVImageFileManager::OnReaderDestroyed(QObject* object)
{
    d->OnProductDestroyed(d->read, object);
}

void OVImageFileManager::OnWriterDestroyed(QObject* object)
{
    d->OnProductDestroyed(d->write, object);
}

void OVImageFileManager::OnPluginDestroyed(QObject* object)
{
    d->OnPluginDestroyed(object);
}

// Readers pool

void OVImageFileManager::InitReadersPool()
{
    if (s_instance)
        s_instance->d->BuildReadersPool(-1);
}

void OVImageFileManager::ReleaseReadersPool()
{
    if (s_instance)
        s_instance->d->ReleaseReadersPool();
}

OVImageFileReader* OVImageFileManager::AcquireReader(const QString& format)
{
    return d->pool.Acquire(format.toLower());
}

void OVImageFileManager::ReleaseAcquiredReader(OVImageFileReader* reader)
{
    d->pool.GiveBack(reader);
}

// Hooks

void OVImageFileManager::Register(OpenHook hook, void* data)
{
    d->openHook = hook;
    d->openHookData = data;
}

void OVImageFileManager::Register(SaveHook hook, void* data)
{
    d->saveHook = hook;
    d->saveHookData = data;
}

bool OVImageFileManager::Open(const QString& path, bool* flag)
{
    if (d->openHook)
        return d->openHook(path, flag, d->openHookData);
    if (flag)
        *flag = false;
    return false;
}

void OVImageFileManager::Open(const QStringList& paths)
{
    // The hook stops the batch by clearing the flag; without a hook nothing is opened.
    bool go = true;
    const QStringList batch = paths;
    for (const QString& path : batch) {
        if (!go)
            break;
        if (d->openHook)
            d->openHook(path, &go, d->openHookData);
        else
            go = false;
    }
}

bool OVImageFileManager::Save(KXDocumentInterface* document)
{
    return d->saveHook ? d->saveHook(document, d->saveHookData) : false;
}
