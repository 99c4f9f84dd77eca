#pragma once

#include "private/OVBuildLog_p.h"

#include <QMap>
#include <QMetaType>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <mutex>

// A registry of plug-in objects keyed by the identifier each object reports about itself
// (its GetUID()), shared by the adjustment and the brush tool registries.
//
// Any thread may register and look up; one mutex guards the map and the registration order,
// and the Face's Registred/Unregistred signals are emitted after it is released, so that a
// receiver may call back into the registry. Items are not owned. An item that is deleted
// while registered no longer holds its identifier: the next object that reports the
// identifier takes the entry over in place. Kept on purpose: holding the identifier for a
// deleted item would refuse every later one. Until then the entry keeps the pointer that was
// registered, so that GetID() and Unregister() still know the item while it is being
// destroyed (a receiver of its destroyed() may forget it under its identifier).
template <typename Face, typename Item>
class OVItemRegistry
{
public:
    // Where the refusal of a duplicate identifier is logged from, and the sentence that ends it.
    struct Refusal
    {
        int line;
        const char* file;
        const char* sentence;
    };

    OVItemRegistry(Face* owner, const Refusal& refusal)
        : owner(owner)
        , refusal(refusal)
    {
        qRegisterMetaType<Item*>();
    }

    // True for a null item and for an item that is already registered; false when another
    // live object holds the item's identifier.
    bool Register(Item* item)
    {
        if (!item)
            return true;
        QString id;
        bool refused = false;
        {
            std::lock_guard<std::mutex> guard(lock);
            for (Entry& stored : byId) {
                if (stored.item != item)
                    continue;
                if (stored.alive)
                    return true;
                // A deleted item's address, now another object's.
                stored.item = nullptr;
            }
            id = item->GetUID();
            auto it = byId.find(id);
            if (it == byId.end()) {
                byId.insert(id, {item, item});
                order.append(id);
            } else if (it.value().alive.isNull()) {
                it.value() = {item, item};
            } else {
                refused = true;
            }
        }
        if (refused) {
            OV_BUILD_LOG_AT(
                refusal.line, QString::fromLatin1(refusal.file),
                QStringLiteral("id:%1 already registered.%2").arg(id, QString::fromLatin1(refusal.sentence)));
            return false;
        }
        emit owner->Registred(id, item);
        return true;
    }

    bool Unregister(const QString& id)
    {
        Item* item = nullptr;
        {
            std::lock_guard<std::mutex> guard(lock);
            auto it = byId.find(id);
            if (it == byId.end())
                return false;
            item = it.value().item;
            byId.erase(it);
            order.removeOne(id);
        }
        emit owner->Unregistred(id, item);
        return true;
    }

    Item* Get(const QString& id) const
    {
        std::lock_guard<std::mutex> guard(lock);
        return byId.value(id).alive;
    }

    QString GetID(Item* item) const
    {
        if (!item)
            return QString();
        std::lock_guard<std::mutex> guard(lock);
        for (auto it = byId.cbegin(); it != byId.cend(); ++it) {
            if (it.value().item == item)
                return it.key();
        }
        return QString();
    }

    QStringList GetRegistered() const
    {
        std::lock_guard<std::mutex> guard(lock);
        return order;
    }

private:
    // The item as registered, and a guard that reads null once it is deleted.
    struct Entry
    {
        Item* item = nullptr;
        QPointer<Item> alive;
    };

    Face* const owner;
    const Refusal refusal;
    QMap<QString, Entry> byId;
    QStringList order;
    mutable std::mutex lock;
};
