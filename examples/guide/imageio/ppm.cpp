// The plug-in library "imageio" with one image file plug-in: binary PPM ("P6") files, read
// with any maximum value up to 255 and written with 255.

#include <OVImageFilePlugin.h>
#include <OVImageFileReader.h>
#include <OVImageFileWriter.h>
#include <OVPluginContainer.h>

#include <QFile>
#include <QSaveFile>

namespace {

const QString kFormat = QStringLiteral("ppm");
const QString kReaderUID = QStringLiteral("{9E41B0C3-7D25-4A8F-B316-2F0A6C8D0001}");
const QString kWriterUID = QStringLiteral("{9E41B0C3-7D25-4A8F-B316-2F0A6C8D0002}");

// The next decimal number of the header, after blanks and "#" comments, and the one blank
// that ends it.
bool ReadNumber(QFile& file, int& number)
{
    char c = ' ';
    while (QChar::isSpace(uchar(c)) || c == '#') {
        if (c == '#')
            file.readLine();
        if (!file.getChar(&c))
            return false;
    }
    number = 0;
    while (c >= '0' && c <= '9' && number <= 100000) {
        number = number * 10 + (c - '0');
        if (!file.getChar(&c))
            return false;
    }
    return QChar::isSpace(uchar(c));
}

} // namespace

class PpmReader : public OVImageFileReader
{
    Q_OBJECT
public:
    QString GetUID() const override { return kReaderUID; }
    QStringList GetFormats() const override { return {kFormat}; }
    QString GetErrorString() const override { return m_error; }

    bool Read(const QString& path, QImage& image) override
    {
        QFile file(path);
        int width = 0, height = 0, maxValue = 0;
        if (!ReadHeader(file, path, width, height, maxValue))
            return false;
        if (file.size() - file.pos() < qint64(width) * height * 3)
            return Fail(tr("The file is truncated"));
        image = QImage(width, height, QImage::Format_RGB888);
        for (int y = 0; y < height; ++y) {
            uchar* line = image.scanLine(y);
            if (file.read(reinterpret_cast<char*>(line), width * 3) != width * 3)
                return Fail(file.errorString());
            for (int i = 0; maxValue != 255 && i < width * 3; ++i)
                line[i] = uchar(qMin<int>(line[i], maxValue) * 255 / maxValue);
        }
        m_error.clear();
        return true;
    }

    // From the header alone, without reading the pixels.
    QSize ReadSize(const QString& path) override
    {
        QFile file(path);
        int width = 0, height = 0, maxValue = 0;
        return ReadHeader(file, path, width, height, maxValue) ? QSize(width, height) : QSize();
    }

private:
    bool ReadHeader(QFile& file, const QString& path, int& width, int& height, int& maxValue)
    {
        file.setFileName(path);
        if (!file.open(QIODevice::ReadOnly))
            return Fail(file.errorString());
        if (file.read(2) != "P6" || !ReadNumber(file, width) || !ReadNumber(file, height) ||
            !ReadNumber(file, maxValue) || width < 1 || height < 1 || maxValue < 1 || maxValue > 255)
            return Fail(tr("Not a binary PPM file with 8-bit samples"));
        return true;
    }

    bool Fail(const QString& error)
    {
        m_error = error;
        return false;
    }

    QString m_error;
};

class PpmWriter : public OVImageFileWriter
{
    Q_OBJECT
public:
    QString GetUID() const override { return kWriterUID; }
    QStringList GetFormats() const override { return {kFormat}; }
    QString GetErrorString() const override { return m_error; }

    // Alpha is dropped. The file is replaced only once it is written completely.
    bool Write(const QString& path, const QImage& image) override
    {
        if (image.isNull())
            return Fail(tr("The image is empty"));
        const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return Fail(file.errorString());
        file.write(QStringLiteral("P6\n%1 %2\n255\n").arg(rgb.width()).arg(rgb.height()).toLatin1());
        for (int y = 0; y < rgb.height(); ++y)
            file.write(reinterpret_cast<const char*>(rgb.constScanLine(y)), rgb.width() * 3);
        if (!file.commit())
            return Fail(file.errorString());
        m_error.clear();
        return true;
    }

private:
    bool Fail(const QString& error)
    {
        m_error = error;
        return false;
    }

    QString m_error;
};

class PpmPlugin : public OVImageFilePlugin
{
    Q_OBJECT
public:
    QString GetUID() const override { return QStringLiteral("{9E41B0C3-7D25-4A8F-B316-2F0A6C8D0000}"); }
    QString GetName() const override { return QStringLiteral("PPM"); }
    QStringList GetReaderUIDs() const override { return {kReaderUID}; }
    QStringList GetWriterUIDs() const override { return {kWriterUID}; }
    QStringList GetFormats() const override { return {kFormat}; }
    QString GetFormatName(const QString&) const override { return tr("Portable Pixmap"); }
    FormatCapabilities GetFormatCapabilities(const QString& format) const override
    {
        return format == kFormat ? FormatCapabilities(CanRead | CanWrite) : FormatCapabilities(NoCapability);
    }

    // The readers pool asks for several readers of a format, one per processor thread, and
    // uses them side by side on worker threads: each call makes a reader of its own.
    OVImageFileReader* CreateReader(const QString& format) override
    {
        return format == kFormat ? new PpmReader : nullptr;
    }
    OVImageFileReader* CreateReaderByUID(const QString& uid) override
    {
        return uid == kReaderUID ? new PpmReader : nullptr;
    }
    OVImageFileWriter* CreateWriter(const QString& format) override
    {
        return format == kFormat ? new PpmWriter : nullptr;
    }
    OVImageFileWriter* CreateWriterByUID(const QString& uid) override
    {
        return uid == kWriterUID ? new PpmWriter : nullptr;
    }
    void ReleaseReader(OVImageFileReader* reader) override { delete reader; }
    void ReleaseWriter(OVImageFileWriter* writer) override { delete writer; }
};

// The library's root object. The plug-in loader itself enters image file plug-ins into the
// image file registry after GetPlugins(), and takes them out when it unloads the library.
class PpmContainer : public QObject, public OVPluginContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    void Initialize() override {}
    void Release() override {}
    void UIReady() override {}
    void GetPlugins(QList<OVPlugin*>& plugins) override { plugins << &m_plugin; }

private:
    PpmPlugin m_plugin;
};

#include "ppm.moc"
