#include "OVImageFileFixtures.h"

#include <QMutexLocker>
#include <QThread>

namespace OVTest {

void CallLog::Add(const QString& call)
{
    QMutexLocker locker(&m_mutex);
    m_calls << call;
}

QStringList CallLog::Take()
{
    QMutexLocker locker(&m_mutex);
    QStringList calls;
    calls.swap(m_calls);
    return calls;
}

QStringList CallLog::Matching(const QString& prefix) const
{
    QMutexLocker locker(&m_mutex);
    QStringList found;
    for (const QString& call : m_calls) {
        if (call.startsWith(prefix))
            found << call;
    }
    return found;
}

QAtomicInt FakeReader::s_overlaps;

FakeReader::FakeReader(const QString& uid, const QStringList& formats, QObject* parent)
    : m_uid(uid)
    , m_formats(formats)
{
    setParent(parent);
}

QString FakeReader::GetUID() const
{
    return m_uid;
}

bool FakeReader::Read(const QString&, QImage&)
{
    if (m_users.fetchAndAddOrdered(1) != 0)
        s_overlaps.fetchAndAddOrdered(1);
    QThread::yieldCurrentThread();
    m_users.fetchAndSubOrdered(1);
    return true;
}

QStringList FakeReader::GetFormats() const
{
    return m_formats;
}

FakeWriter::FakeWriter(const QString& uid, QObject* parent)
    : m_uid(uid)
{
    setParent(parent);
}

QString FakeWriter::GetUID() const
{
    return m_uid;
}

bool FakeWriter::Write(const QString&, const QImage&)
{
    return true;
}

QStringList FakeWriter::GetFormats() const
{
    return QStringList();
}

FakeImagePlugin::FakeImagePlugin(const QString& definition, CallLog* log)
    : m_log(log)
{
    const QStringList words = definition.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    setObjectName(words.value(0));
    for (const QString& word : words.mid(1)) {
        if (word == QLatin1String("null")) {
            m_null = true;
        } else if (word == QLatin1String("disposes")) {
            m_disposes = true;
        } else if (word.startsWith(QLatin1String("r@"))) {
            m_readerUIDs << word.mid(2);
        } else if (word.startsWith(QLatin1String("w@"))) {
            m_writerUIDs << word.mid(2);
        } else if (word.startsWith(QLatin1Char('{'))) {
            const int close = word.indexOf(QLatin1Char('}'));
            const int equals = word.indexOf(QLatin1Char('='));
            const QString uid = word.left(close + 1);
            m_groups << uid;
            m_groupNames.insert(uid, word.mid(close + 1, equals - close - 1));
            m_groupFormats.insert(uid, word.mid(equals + 1).split(QLatin1Char(','), Qt::SkipEmptyParts));
        } else if (word.contains(QLatin1Char('>'))) {
            m_readerFormats.insert(word.section(QLatin1Char('>'), 0, 0),
                                   word.section(QLatin1Char('>'), 1).split(QLatin1Char(',')));
        } else {
            const bool listed = !word.startsWith(QLatin1Char('-'));
            const QString format = word.section(QLatin1Char(':'), 0, 0).mid(listed ? 0 : 1);
            const QString letters = word.section(QLatin1Char(':'), 1);
            FormatCapabilities capabilities;
            if (letters.contains(QLatin1Char('r')))
                capabilities |= CanRead;
            if (letters.contains(QLatin1Char('w')))
                capabilities |= CanWrite;
            m_capabilities.insert(format, capabilities);
            if (listed)
                m_formats << format;
        }
    }
}

void FakeImagePlugin::Log(const QString& call, const QString& argument) const
{
    if (m_log)
        m_log->Add(objectName() + QLatin1Char('.') + call + QLatin1Char('(') + argument + QLatin1Char(')'));
}

QString FakeImagePlugin::GetUID() const
{
    return objectName();
}

QStringList FakeImagePlugin::GetReaderUIDs() const
{
    Log(QStringLiteral("GetReaderUIDs"));
    return m_readerUIDs;
}

QStringList FakeImagePlugin::GetWriterUIDs() const
{
    Log(QStringLiteral("GetWriterUIDs"));
    return m_writerUIDs;
}

QStringList FakeImagePlugin::GetFormats() const
{
    Log(QStringLiteral("GetFormats"));
    return m_formats;
}

QStringList FakeImagePlugin::GetGroups() const
{
    Log(QStringLiteral("GetGroups"));
    return m_groups;
}

QString FakeImagePlugin::GetGroupName(const QString& groupUID) const
{
    Log(QStringLiteral("GetGroupName"), groupUID);
    return m_groupNames.value(groupUID);
}

QStringList FakeImagePlugin::GetGroupFormats(const QString& groupUID) const
{
    Log(QStringLiteral("GetGroupFormats"), groupUID);
    return m_groupFormats.value(groupUID);
}

OVImageFilePlugin::FormatCapabilities FakeImagePlugin::GetFormatCapabilities(const QString& format) const
{
    Log(QStringLiteral("GetFormatCapabilities"), format);
    return m_capabilities.value(format);
}

OVImageFileReader* FakeImagePlugin::CreateReader(const QString& format)
{
    Log(QStringLiteral("CreateReader"), format);
    return MakeReader(m_readerUIDs.value(0), format);
}

OVImageFileReader* FakeImagePlugin::CreateReaderByUID(const QString& uid)
{
    Log(QStringLiteral("CreateReaderByUID"), uid);
    return MakeReader(uid, m_formats.value(0));
}

OVImageFileWriter* FakeImagePlugin::CreateWriter(const QString& format)
{
    Log(QStringLiteral("CreateWriter"), format);
    return MakeWriter(m_writerUIDs.value(0));
}

OVImageFileWriter* FakeImagePlugin::CreateWriterByUID(const QString& uid)
{
    Log(QStringLiteral("CreateWriterByUID"), uid);
    return MakeWriter(uid);
}

void FakeImagePlugin::ReleaseReader(OVImageFileReader* reader)
{
    Log(QStringLiteral("ReleaseReader"), reader ? reader->objectName() : QStringLiteral("null"));
    if (m_disposes) {
        m_readers.removeOne(static_cast<FakeReader*>(reader));
        delete reader;
    }
}

void FakeImagePlugin::ReleaseWriter(OVImageFileWriter* writer)
{
    Log(QStringLiteral("ReleaseWriter"), writer ? writer->objectName() : QStringLiteral("null"));
}

FakeReader* FakeImagePlugin::MakeReader(const QString& uid, const QString& format)
{
    if (m_null)
        return nullptr;
    auto* reader = new FakeReader(uid, m_readerFormats.value(format, QStringList{format}), this);
    m_readers << reader;
    reader->setObjectName(objectName() + QStringLiteral(".r%1").arg(m_readers.size()));
    return reader;
}

FakeWriter* FakeImagePlugin::MakeWriter(const QString& uid)
{
    if (m_null)
        return nullptr;
    auto* writer = new FakeWriter(uid, this);
    writer->setObjectName(objectName() + QStringLiteral(".w%1").arg(++m_writers));
    return writer;
}

} // namespace OVTest
