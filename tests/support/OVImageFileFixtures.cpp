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

bool FakeReader::Read(const QString&, QImage&)
{
    if (m_users.fetchAndAddOrdered(1) != 0)
        s_overlaps.fetchAndAddOrdered(1);
    QThread::yieldCurrentThread();
    m_users.fetchAndSubOrdered(1);
    return true;
}

FakeWriter::FakeWriter(const QString& uid, QObject* parent)
    : m_uid(uid)
{
    setParent(parent);
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

void FakeImagePlugin::ReleaseReader(OVImageFileReader* reader)
{
    Log("ReleaseReader", reader->objectName(), 0);
    if (m_disposes) {
        m_readers.removeOne(static_cast<FakeReader*>(reader));
        delete reader;
    }
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
