#include "OVImageFileFixtures.h"

#include <QThread>

namespace OVTest {

QAtomicInt FakeReader::s_overlaps;

bool FakeReader::Read(const QString&, QImage&)
{
    if (m_users.fetchAndAddOrdered(1) != 0)
        s_overlaps.fetchAndAddOrdered(1);
    QThread::yieldCurrentThread();
    m_users.fetchAndSubOrdered(1);
    return true;
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
            m_capabilities.insert(
                format, FormatCapabilities(letters.contains(QLatin1Char('r')) ? CanRead : NoCapability) |
                            (letters.contains(QLatin1Char('w')) ? CanWrite : NoCapability));
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
