#pragma once

#include "private/OVSettingsFile_p.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <stdexcept>

// One user-editable export list, kept in an INI file of the user and written back after every
// change; a file without "Version" is replaced by the defaults the host embeds as a resource
// (the library embeds none; without one the list starts empty). The two export lists differ
// only in their Table:
//   Face                   the public class: its GetInstance(), its private InitInstance(),
//                          ReleaseInstance() and d, and the Inserted/Changhed/Removed signals
//   Item, Arg              the item type, and how the public operations take one
//   Group()                the INI group holding one key per index, from 0
//   Resource(), FileName() the host's defaults, and the user file's name ("/name.ini")
//   Parse(value, &item)    true when a stored value is a valid item
//   Store(item)            the stored value of an item
//   SortKey(item)          the key of the sorted Add
//   Missing()              what Get answers without an instance
//   kOutOfRange            what Get throws for an index outside the list
template <typename Table>
class KXExportList
{
public:
    using Face = typename Table::Face;
    using Item = typename Table::Item;

    explicit KXExportList(Face* owner)
        : owner(owner)
    {}

    // The application object creates the list, loads it as its last start-up step and
    // releases it; nobody else does.
    static void Create() { Face::InitInstance(); }
    static void Release() { Face::ReleaseInstance(); }
    static void LoadInstance(const QString& filePath)
    {
        if (KXExportList* list = Instance())
            list->Load(filePath);
    }

    // The valid items under consecutive keys from 0, up to the first missing key. Values that
    // are no valid item are skipped; reading goes on with the next key.
    static QList<Item> Read(QSettings& settings)
    {
        QList<Item> items;
        settings.beginGroup(Table::Group());
        for (int i = 0;; ++i) {
            const QString key = QString::number(i);
            if (!settings.contains(key))
                break;
            Item item;
            if (Table::Parse(settings.value(key), &item))
                items.append(item);
        }
        settings.endGroup();
        return items;
    }

    // QSettings turns a value written as "@Variant(...)" back into a QVariant through
    // QDataStream, which believes the counts inside it: a damaged file could make it allocate
    // gigabytes. An export list never stores such a value, nor a backslash escape that could
    // spell one, so a file holding either counts as unreadable.
    static bool Readable(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return true; // nothing for QSettings to read either
        const QByteArray bytes = file.readAll();
        static const QRegularExpression escape(QStringLiteral("\\\\[xX0-7]"));
        return !bytes.contains("@Variant(") && !escape.match(QString::fromLatin1(bytes)).hasMatch();
    }

    static bool HasVersion(const QSettings& settings) { return settings.contains(QStringLiteral("Version")); }

    static QList<Item> List()
    {
        const KXExportList* list = Instance();
        return list ? list->items : QList<Item>();
    }

    static int Size()
    {
        const KXExportList* list = Instance();
        return list ? list->items.size() : -1;
    }

    static Item At(int index)
    {
        const KXExportList* list = Instance();
        if (!list)
            return Table::Missing();
        if (index < 0 || index >= list->items.size())
            throw std::out_of_range(Table::kOutOfRange);
        return list->items.at(index);
    }

    // Before the first item with a greater key, so equal keys keep their order of arrival.
    static int AddSorted(const Item& item)
    {
        KXExportList* list = Instance();
        if (!list)
            return -1;
        int index = 0;
        while (index < list->items.size() && !(Table::SortKey(item) < Table::SortKey(list->items.at(index))))
            ++index;
        list->Insert(index, item);
        return index;
    }

    static void AddAt(int index, const Item& item)
    {
        if (KXExportList* list = Instance())
            list->Insert(qBound(0, index, list->items.size()), item);
    }

    static void Replace(int index, const Item& item)
    {
        KXExportList* list = Instance();
        if (!list || index < 0 || index >= list->items.size() || list->items.at(index) == item)
            return;
        list->items[index] = item;
        emit list->owner->Changhed(index);
        list->Save();
    }

    static void Erase(int index)
    {
        KXExportList* list = Instance();
        if (!list || index < 0 || index >= list->items.size())
            return;
        list->items.removeAt(index);
        emit list->owner->Removed(index);
        list->Save();
    }

private:
    static KXExportList* Instance()
    {
        Face* face = Face::GetInstance();
        return face ? face->d : nullptr;
    }

    void Load(const QString& path)
    {
        filePath = path;
        if (Readable(filePath)) {
            OVSettingsFile user(filePath, OVSettingsFile::Read);
            if (user && HasVersion(*user)) {
                items = Read(*user);
                return;
            }
        } else {
            // The defaults are written to a new file: saving into this one would read it again.
            QFile::remove(filePath);
        }
        QSettings defaults(Table::Resource(), QSettings::IniFormat);
        items = Read(defaults);
        Save();
    }

    void Insert(int index, const Item& item)
    {
        items.insert(index, item);
        emit owner->Inserted(index);
        Save();
    }

    // Writes every item, then removes the keys from the new count up to the number of keys the
    // group held before, so that a shortened list leaves no entries behind it.
    void Save()
    {
        if (filePath.isEmpty())
            return;
        OVSettingsFile file(filePath, OVSettingsFile::Write);
        if (!file)
            return;
        QSettings& settings = *file;
        settings.setValue(QStringLiteral("Version"), QStringLiteral("2.3.0"));
        settings.beginGroup(Table::Group());
        const int keysBefore = settings.childKeys().size();
        for (int i = 0; i < items.size(); ++i)
            settings.setValue(QString::number(i), Table::Store(items.at(i)));
        for (int i = items.size(); i < keysBefore; ++i)
            settings.remove(QString::number(i));
        settings.endGroup();
    }

    Face* const owner;
    QList<Item> items;
    QString filePath;
};
