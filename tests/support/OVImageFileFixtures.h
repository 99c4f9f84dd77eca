#pragma once

// In-process image file plug-ins for the registry's tests and benchmarks. A plug-in is described
// by one line of text and writes every call the registry makes into a shared call log; the
// readers and writers it makes are its children and, unless told to dispose of them, stay alive
// after they are given back, so that a test can count what came back and how often.

#include "OVImageFilePlugin.h"
#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"

#include <QAtomicInt>
#include <QMap>
#include <QMutex>
#include <QMutexLocker>
#include <QStringList>

#include <utility>

namespace OVTest {

// Calls in the order they were made, from any thread.
class CallLog
{
public:
    void Add(const QString& call)
    {
        QMutexLocker locker(&m_mutex);
        m_calls << call;
    }
    QStringList Take()
    {
        QMutexLocker locker(&m_mutex);
        return std::exchange(m_calls, {});
    }

private:
    QMutex m_mutex;
    QStringList m_calls;
};

class FakeReader : public OVImageFileReader
{
    Q_OBJECT
public:
    FakeReader(const QString& uid, const QStringList& formats, QObject* parent)
        : OVImageFileReader(parent)
        , m_uid(uid)
        , m_formats(formats)
    {}

    QString GetUID() const override { return m_uid; }
    // Busy for a moment; a second thread inside at the same time is counted in s_overlaps.
    bool Read(const QString& path, QImage& image) override;
    QStringList GetFormats() const override { return m_formats; }

    static QAtomicInt s_overlaps;

private:
    const QString m_uid;
    const QStringList m_formats;
    QAtomicInt m_users;
};

class FakeWriter : public OVImageFileWriter
{
    Q_OBJECT
public:
    FakeWriter(const QString& uid, QObject* parent)
        : OVImageFileWriter(parent)
        , m_uid(uid)
    {}

    QString GetUID() const override { return m_uid; }
    bool Write(const QString&, const QImage&) override { return true; }
    QStringList GetFormats() const override { return {}; }

private:
    const QString m_uid;
};

// A plug-in described by blank-separated words, the first being its name:
//   png:rw        a format and its capabilities (r, w, both or neither)
//   -jpeg:rw      a capability for a format that GetFormats() leaves out
//   {J}JPEG=a,b   a group with its UID, name and formats
//   r@UID w@UID   a reader or writer UID
//   jpg>jpg,jpeg  the formats a reader made for jpg declares (else just the one)
//   null          hand out no readers or writers
//   disposes      delete readers when they are given back (else keep them)
// Readers and writers are named <plug-in>.r<n> and <plug-in>.w<n>.
class FakeImagePlugin : public OVImageFilePlugin
{
    Q_OBJECT
public:
    explicit FakeImagePlugin(const QString& definition, CallLog* log = nullptr);

    QString GetUID() const override { return objectName(); }
    QStringList GetReaderUIDs() const override { return Log("GetReaderUIDs", {}, m_readerUIDs); }
    QStringList GetWriterUIDs() const override { return Log("GetWriterUIDs", {}, m_writerUIDs); }
    QStringList GetFormats() const override { return Log("GetFormats", {}, m_formats); }
    QStringList GetGroups() const override { return Log("GetGroups", {}, m_groups); }
    QString GetGroupName(const QString& uid) const override
    {
        return Log("GetGroupName", uid, m_groupNames.value(uid));
    }
    QStringList GetGroupFormats(const QString& uid) const override
    {
        return Log("GetGroupFormats", uid, m_groupFormats.value(uid));
    }
    FormatCapabilities GetFormatCapabilities(const QString& format) const override
    {
        return Log("GetFormatCapabilities", format, m_capabilities.value(format));
    }

    OVImageFileReader* CreateReader(const QString& format) override
    {
        return Log("CreateReader", format, MakeReader(m_readerUIDs.value(0), format));
    }
    OVImageFileReader* CreateReaderByUID(const QString& uid) override
    {
        return Log("CreateReaderByUID", uid, MakeReader(uid, m_formats.value(0)));
    }
    OVImageFileWriter* CreateWriter(const QString& format) override
    {
        return Log("CreateWriter", format, MakeWriter(m_writerUIDs.value(0)));
    }
    OVImageFileWriter* CreateWriterByUID(const QString& uid) override
    {
        return Log("CreateWriterByUID", uid, MakeWriter(uid));
    }
    void ReleaseReader(OVImageFileReader* reader) override;
    void ReleaseWriter(OVImageFileWriter* writer) override { Log("ReleaseWriter", writer->objectName(), 0); }

    // Readers made so far, in order.
    QList<FakeReader*> Readers() const { return m_readers; }

private:
    // Logs the call and passes the result on.
    template <typename T>
    T Log(const char* call, const QString& argument, T result) const
    {
        if (m_log)
            m_log->Add(objectName() + '.' + QLatin1String(call) + '(' + argument + ')');
        return result;
    }
    FakeReader* MakeReader(const QString& uid, const QString& format);
    FakeWriter* MakeWriter(const QString& uid);

    CallLog* const m_log;
    QStringList m_readerUIDs, m_writerUIDs, m_formats, m_groups;
    QMap<QString, FormatCapabilities> m_capabilities;
    QMap<QString, QString> m_groupNames;
    QMap<QString, QStringList> m_groupFormats;
    QMap<QString, QStringList> m_readerFormats;
    bool m_null = false;
    bool m_disposes = false;
    QList<FakeReader*> m_readers;
    int m_writers = 0;
};

} // namespace OVTest
