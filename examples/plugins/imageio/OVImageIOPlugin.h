#pragma once

#include "OVImageFilePlugin.h"
#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "OVPluginContainer.h"

#include <QList>
#include <QString>
#include <QStringList>

// The suffixes of one image format as Qt's image I/O knows it ("jpg" and "jpeg"), with the
// UIDs of its reader and writer and, when it has more than one suffix, of its format group.
struct OVImageIOFamily
{
    QString name;
    QString readerUID;
    QString writerUID;
    QString groupUID;
    QStringList formats; // those this Qt build can read or write
    // The format's data ends with a marker that its decoder reads last (JPEG, PNG): a decoder
    // that asks for more than the file holds has met a file cut short.
    bool endMarked = false;
    // The format's writer takes a quality (JPEG, WebP).
    bool lossy = false;
};

// Decodes the files of one family with QImageReader. The format the reader was made for is
// a hint; the file's contents decide.
class OVImageIOReader : public OVImageFileReader
{
    Q_OBJECT
public:
    OVImageIOReader(const OVImageIOFamily& family, const QString& format);

    QString GetUID() const override;
    bool Read(const QString& path, QImage& image) override;
    QStringList GetFormats() const override;
    QSize ReadSize(const QString& path) override;
    QString GetErrorString() const override;

private:
    const OVImageIOFamily m_family;
    const QByteArray m_format;
    QString m_error;
};

// Encodes images with QImageWriter in the format it was made for, through a QSaveFile: the file
// appears under its name only once it is complete.
class OVImageIOWriter : public OVImageFileWriter
{
    Q_OBJECT
public:
    OVImageIOWriter(const OVImageIOFamily& family, const QString& format);

    QString GetUID() const override;
    bool Write(const QString& path, const QImage& image) override;
    QStringList GetFormats() const override;
    void SetQuality(int quality) override;
    QString GetErrorString() const override;

private:
    const OVImageIOFamily m_family;
    const QByteArray m_format;
    int m_quality = -1;
    QString m_error;
};

// Every format of the families below that this Qt build reads or writes.
class OVImageIOPlugin : public OVImageFilePlugin
{
    Q_OBJECT
public:
    explicit OVImageIOPlugin(QObject* parent = nullptr);

    QString GetUID() const override;
    QString GetName() const override;
    QString GetVersion() const override;
    QString GetFormatName(const QString& format) const override;
    QString GetDescription() const override;

    QStringList GetReaderUIDs() const override;
    QString GetReaderName(const QString& uid) const override;
    QStringList GetWriterUIDs() const override;
    QString GetWriterName(const QString& uid) const override;
    QStringList GetFormats() const override;
    QStringList GetGroups() const override;
    QString GetGroupName(const QString& groupUID) const override;
    QStringList GetGroupFormats(const QString& groupUID) const override;
    FormatCapabilities GetFormatCapabilities(const QString& format) const override;

    OVImageFileReader* CreateReader(const QString& format) override;
    OVImageFileReader* CreateReaderByUID(const QString& uid) override;
    OVImageFileWriter* CreateWriter(const QString& format) override;
    OVImageFileWriter* CreateWriterByUID(const QString& uid) override;
    void ReleaseReader(OVImageFileReader* reader) override;
    void ReleaseWriter(OVImageFileWriter* writer) override;

private:
    // The family that holds the format (or UID) and has the capability, or null.
    const OVImageIOFamily* FamilyOf(const QString& format, FormatCapability capability) const;
    const OVImageIOFamily* FamilyBy(const QString& uid, QString OVImageIOFamily::*field) const;
    // The family's first format with the capability, or an empty string.
    QString FirstFormat(const OVImageIOFamily& family, FormatCapability capability) const;
    // The reader or writer UIDs of the families that have a format with the capability.
    QStringList UIDs(FormatCapability capability, QString OVImageIOFamily::*field) const;

    QList<OVImageIOFamily> m_families;
    QStringList m_readable;
    QStringList m_writable;
};

// The library's root object.
class OVImageIOContainer : public QObject, public OVPluginContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    ~OVImageIOContainer() override;

    void Initialize() override;
    void Release() override;
    void UIReady() override;
    void GetPlugins(QList<OVPlugin*>& plugins) override;

private:
    OVImageIOPlugin* m_plugin = nullptr;
};
