#include "OVCMSManager.h"

#include "private/OVCMSManager_p.h"

namespace {
OVCMSManager* s_instance = nullptr;
bool s_released = false;
} // namespace

void OVCMSManager::InitInstance(const QString& folder)
{
    if (s_instance || s_released)
        return;
    // The list is complete before any other thread can find the instance.
    auto* instance = new OVCMSManager();
    instance->d->Discover(folder);
    s_instance = instance;
}

OVCMSManager* OVCMSManager::GetInstance()
{
    return s_instance;
}

void OVCMSManager::ReleaseInstance()
{
    // The manager lives once per process: after release InitInstance still does nothing, but
    // the pointer is cleared rather than left to dangle, so GetInstance returns null and a
    // second release deletes nothing.
    OVCMSManager* instance = s_instance;
    if (!instance)
        return;
    s_instance = nullptr;
    s_released = true;
    delete instance;
}

OVCMSManager::OVCMSManager()
    : d(new OVCMSManagerPrivate)
{}

OVCMSManager::~OVCMSManager()
{
    delete d;
}

int OVCMSManager::GetRGBProfileCount() const
{
    std::lock_guard<std::mutex> guard(d->lock);
    return d->profiles.size();
}

OVCMSProfile OVCMSManager::GetRGBProfile(int index) const
{
    // The list does not change once discovery is done, so the range test needs no lock.
    if (index < 0 || index >= d->profiles.size())
        return OVCMSProfile();
    std::lock_guard<std::mutex> guard(d->lock);
    return *d->profiles.at(index);
}

int OVCMSManager::GetWorkingRGBIndex() const
{
    std::lock_guard<std::mutex> guard(d->lock);
    return d->workingIndex;
}

void OVCMSManager::SetWorkingRGBIndex(int index)
{
    {
        std::lock_guard<std::mutex> guard(d->lock);
        if (d->workingIndex == index)
            return;
        d->workingIndex = index;
    }
    emit WorkingRGBIndexChanged(index);
}
