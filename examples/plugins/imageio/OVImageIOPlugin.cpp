#include "OVImageIOPlugin.h"

#include <QFile>
#include <QHash>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

namespace {

// The formats the plug-in offers when this Qt build supports them, one family per Qt format.
struct FamilyDefinition
{
    const char* name;
    const char* formats;
    bool endMarked;
    bool lossy;
};

const FamilyDefinition kFamilies[] = {
    {"JPEG", "jpg jpeg", true, true}, {"PNG", "png", true, false},        {"BMP", "bmp", false, false},
    {"GIF", "gif", false, false},     {"TIFF", "tif tiff", false, false}, {"WebP", "webp", false, true},
    {"ICO", "ico", false, false},     {"PBM", "pbm", false, false},       {"PGM", "pgm", false, false},
    {"PPM", "ppm", false, false},     {"XBM", "xbm", false, false},       {"XPM", "xpm", false, false},
};

// A file read without buffering, which notes when its reader asks for bytes past its end.
// Decoders read in blocks, so a complete file gives them a short last block and no further
// request; a decoder that comes back for more has not found the end of its data.
class OVEndWatchedFile : public QFile
{
public:
    using QFile::QFile;
    bool RanOut() const { return m_ranOut; }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        const qint64 read = QFile::readData(data, size);
        if (read == 0 && size > 0)
            m_ranOut = true;
        return read;
    }

private:
    bool m_ranOut = false;
};

// UIDs of one family: the role (1 reader, 2 writer, 3 group) and the family's place in the
// table make the last field.
QString FamilyUID(int role, int index)
{
    return QStringLiteral("{3F6A9C20-5D1B-4C7E-8A42-%1}")
        .arg(role * 0x100 + index, 12, 16, QLatin1Char('0'))
        .toUpper();
}

QStringList Supported(const QList<QByteArray>& formats)
{
    QStringList list;
    for (const QByteArray& format : formats)
        list << QString::fromLatin1(format).toLower();
    return list;
}

// The same pixels in the format that stores them in the fewest bytes a pixel: a palette for at
// most 256 colours (alpha included), grey levels for an opaque grey image, else the image as it is.
QImage Smallest(const QImage& image)
{
    if (image.format() != QImage::Format_RGB32 && image.format() != QImage::Format_ARGB32)
        return image;
    QImage indexed(image.size(), QImage::Format_Indexed8);
    QHash<QRgb, uchar> index;
    QVector<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* in = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* out = indexed.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            auto found = index.constFind(in[x]);
            if (found == index.constEnd()) {
                if (colours.size() == 256)
                    return image.format() == QImage::Format_RGB32 && image.allGray()
                               ? image.convertToFormat(QImage::Format_Grayscale8)
                               : image;
                found = index.insert(in[x], uchar(colours.size()));
                colours << in[x];
            }
            out[x] = *found;
        }
    }
    indexed.setColorTable(colours);
    return indexed;
}

} // namespace

// Reader

OVImageIOReader::OVImageIOReader(const OVImageIOFamily& family, const QString& format)
    : m_family(family)
    , m_format(format.toLatin1())
{}

QString OVImageIOReader::GetUID() const
{
    return m_family.readerUID;
}

bool OVImageIOReader::Read(const QString& path, QImage& image)
{
    OVEndWatchedFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        image = QImage();
        m_error = file.errorString();
        return false;
    }
    QImageReader reader(&file, m_format);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    image = reader.read();
    m_error = image.isNull() ? reader.errorString() : QString();
    // The decoder fills what it did not find with grey and reports success; the picture is
    // not what the file was meant to hold.
    if (!image.isNull() && m_family.endMarked && file.RanOut()) {
        image = QImage();
        m_error = tr("The file is damaged: its data ends early.");
    }
    return !image.isNull();
}

QStringList OVImageIOReader::GetFormats() const
{
    return m_family.formats;
}

QSize OVImageIOReader::ReadSize(const QString& path)
{
    QImageReader reader(path, m_format);
    reader.setDecideFormatFromContent(true);
    return reader.size();
}

QString OVImageIOReader::GetErrorString() const
{
    return m_error;
}

// Writer

OVImageIOWriter::OVImageIOWriter(const OVImageIOFamily& family, const QString& format)
    : m_family(family)
    , m_format(format.toLatin1())
{}

QString OVImageIOWriter::GetUID() const
{
    return m_family.writerUID;
}

bool OVImageIOWriter::Write(const QString& path, const QImage& image)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = file.errorString();
        return false;
    }
    QImageWriter writer(&file, m_format);
    // Lossless formats read a quality as a compression level; they keep their own default.
    if (m_quality >= 0 && m_family.lossy)
        writer.setQuality(m_quality);
    // PNG at zlib level 7 (78 on Qt's scale of 0 to 100) rather than Qt's 6: photos come out
    // half a per cent smaller for a quarter more encoding time, as with the common tools.
    if (m_format == "png")
        writer.setCompression(78);
    if (!writer.write(m_format == "png" ? Smallest(image) : image)) {
        m_error = writer.errorString();
        return false;
    }
    if (!file.commit()) {
        m_error = file.errorString();
        return false;
    }
    m_error.clear();
    return true;
}

QStringList OVImageIOWriter::GetFormats() const
{
    return m_family.formats;
}

void OVImageIOWriter::SetQuality(int quality)
{
    m_quality = quality;
}

QString OVImageIOWriter::GetErrorString() const
{
    return m_error;
}

// Plug-in

OVImageIOPlugin::OVImageIOPlugin(QObject* parent)
    : OVImageFilePlugin(parent)
    , m_readable(Supported(QImageReader::supportedImageFormats()))
    , m_writable(Supported(QImageWriter::supportedImageFormats()))
{
    int index = 0;
    for (const FamilyDefinition& definition : kFamilies) {
        ++index;
        OVImageIOFamily family;
        for (const QString& format : QString::fromLatin1(definition.formats).split(QLatin1Char(' '))) {
            if (m_readable.contains(format) || m_writable.contains(format))
                family.formats << format;
        }
        if (family.formats.isEmpty())
            continue;
        family.name = QString::fromLatin1(definition.name);
        family.endMarked = definition.endMarked;
        family.lossy = definition.lossy;
        family.readerUID = FamilyUID(1, index);
        family.writerUID = FamilyUID(2, index);
        if (family.formats.size() > 1)
            family.groupUID = FamilyUID(3, index);
        m_families << family;
    }
}

QString OVImageIOPlugin::GetUID() const
{
    return QStringLiteral("{3F6A9C20-5D1B-4C7E-8A42-000000000000}");
}

QString OVImageIOPlugin::GetName() const
{
    return QStringLiteral("Image I/O");
}

QString OVImageIOPlugin::GetVersion() const
{
    return QStringLiteral("1.0");
}

QString OVImageIOPlugin::GetFormatName(const QString& format) const
{
    const OVImageIOFamily* family = FamilyOf(format, NoCapability);
    return family ? family->name : OVImageFilePlugin::GetFormatName(format);
}

QString OVImageIOPlugin::GetDescription() const
{
    return QStringLiteral("Reads and writes the common image formats with Qt's image I/O.");
}

QStringList OVImageIOPlugin::GetReaderUIDs() const
{
    return UIDs(CanRead, &OVImageIOFamily::readerUID);
}

QString OVImageIOPlugin::GetReaderName(const QString& uid) const
{
    const OVImageIOFamily* family = FamilyBy(uid, &OVImageIOFamily::readerUID);
    return family ? family->name + QStringLiteral(" reader") : QString();
}

QStringList OVImageIOPlugin::GetWriterUIDs() const
{
    return UIDs(CanWrite, &OVImageIOFamily::writerUID);
}

QString OVImageIOPlugin::GetWriterName(const QString& uid) const
{
    const OVImageIOFamily* family = FamilyBy(uid, &OVImageIOFamily::writerUID);
    return family ? family->name + QStringLiteral(" writer") : QString();
}

QStringList OVImageIOPlugin::GetFormats() const
{
    QStringList formats;
    for (const OVImageIOFamily& family : m_families)
        formats << family.formats;
    return formats;
}

QStringList OVImageIOPlugin::GetGroups() const
{
    QStringList groups;
    for (const OVImageIOFamily& family : m_families) {
        if (!family.groupUID.isEmpty())
            groups << family.groupUID;
    }
    return groups;
}

QString OVImageIOPlugin::GetGroupName(const QString& groupUID) const
{
    const OVImageIOFamily* family = FamilyBy(groupUID, &OVImageIOFamily::groupUID);
    return family ? family->name : QString();
}

QStringList OVImageIOPlugin::GetGroupFormats(const QString& groupUID) const
{
    const OVImageIOFamily* family = FamilyBy(groupUID, &OVImageIOFamily::groupUID);
    return family ? family->formats : QStringList();
}

OVImageFilePlugin::FormatCapabilities OVImageIOPlugin::GetFormatCapabilities(const QString& format) const
{
    FormatCapabilities capabilities;
    if (!FamilyOf(format, NoCapability))
        return capabilities;
    if (m_readable.contains(format))
        capabilities |= CanRead;
    if (m_writable.contains(format))
        capabilities |= CanWrite;
    return capabilities;
}

OVImageFileReader* OVImageIOPlugin::CreateReader(const QString& format)
{
    const OVImageIOFamily* family = FamilyOf(format, CanRead);
    return family ? new OVImageIOReader(*family, format) : nullptr;
}

OVImageFileReader* OVImageIOPlugin::CreateReaderByUID(const QString& uid)
{
    const OVImageIOFamily* family = FamilyBy(uid, &OVImageIOFamily::readerUID);
    return family ? CreateReader(FirstFormat(*family, CanRead)) : nullptr;
}

OVImageFileWriter* OVImageIOPlugin::CreateWriter(const QString& format)
{
    const OVImageIOFamily* family = FamilyOf(format, CanWrite);
    return family ? new OVImageIOWriter(*family, format) : nullptr;
}

OVImageFileWriter* OVImageIOPlugin::CreateWriterByUID(const QString& uid)
{
    const OVImageIOFamily* family = FamilyBy(uid, &OVImageIOFamily::writerUID);
    return family ? CreateWriter(FirstFormat(*family, CanWrite)) : nullptr;
}

void OVImageIOPlugin::ReleaseReader(OVImageFileReader* reader)
{
    delete reader;
}

void OVImageIOPlugin::ReleaseWriter(OVImageFileWriter* writer)
{
    delete writer;
}

const OVImageIOFamily* OVImageIOPlugin::FamilyOf(const QString& format, FormatCapability capability) const
{
    if ((capability == CanRead && !m_readable.contains(format)) ||
        (capability == CanWrite && !m_writable.contains(format)))
        return nullptr;
    for (const OVImageIOFamily& family : m_families) {
        if (family.formats.contains(format))
            return &family;
    }
    return nullptr;
}

QString OVImageIOPlugin::FirstFormat(const OVImageIOFamily& family, FormatCapability capability) const
{
    for (const QString& format : family.formats) {
        if (FamilyOf(format, capability))
            return format;
    }
    return QString();
}

QStringList OVImageIOPlugin::UIDs(FormatCapability capability, QString OVImageIOFamily::*field) const
{
    QStringList uids;
    for (const OVImageIOFamily& family : m_families) {
        if (!FirstFormat(family, capability).isEmpty())
            uids << family.*field;
    }
    return uids;
}

const OVImageIOFamily* OVImageIOPlugin::FamilyBy(const QString& uid, QString OVImageIOFamily::*field) const
{
    for (const OVImageIOFamily& family : m_families) {
        if (!uid.isEmpty() && family.*field == uid)
            return &family;
    }
    return nullptr;
}

// Container

OVImageIOContainer::~OVImageIOContainer()
{
    delete m_plugin;
}

void OVImageIOContainer::Initialize()
{
    if (!m_plugin)
        m_plugin = new OVImageIOPlugin();
}

void OVImageIOContainer::Release()
{
    delete m_plugin;
    m_plugin = nullptr;
}

void OVImageIOContainer::UIReady() {}

void OVImageIOContainer::GetPlugins(QList<OVPlugin*>& plugins)
{
    if (m_plugin)
        plugins << m_plugin;
}
