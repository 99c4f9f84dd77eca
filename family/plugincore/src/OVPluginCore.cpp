// Out-of-line members of the plug-in interfaces. Defining the destructors here gives every
// interface one type-info and one vtable, owned by this library, so that qobject_cast and
// dynamic_cast work across the host and plug-in libraries.
#include "IBrushFactory.h"
#include "KXDocumentInterface.h"
#include "OVAdjustment.h"
#include "OVBrushPlugin.h"
#include "OVColorWidget.h"
#include "OVImageFilePlugin.h"
#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "OVPlugin.h"
#include "OVPluginContainer.h"

OVPlugin::OVPlugin(QObject* parent)
    : QObject(parent)
{}

OVPlugin::~OVPlugin() = default;

QString OVPlugin::GetName() const
{
    return metaObject()->className();
}

QString OVPlugin::GetVersion() const
{
    return QString();
}

OVPluginContainer::~OVPluginContainer() = default;

OVImageFilePlugin::OVImageFilePlugin(QObject* parent)
    : OVPlugin(parent)
{}

OVImageFilePlugin::~OVImageFilePlugin() = default;

int OVImageFilePlugin::GetType() const
{
    return ImageFileType;
}

QString OVImageFilePlugin::GetFormatName(const QString& format) const
{
    return format.toUpper();
}

QString OVImageFilePlugin::GetDescription() const
{
    return QString();
}

QString OVImageFilePlugin::GetReaderName(const QString& uid) const
{
    return uid;
}

QString OVImageFilePlugin::GetWriterName(const QString& uid) const
{
    return uid;
}

QStringList OVImageFilePlugin::GetGroups() const
{
    return QStringList();
}

QString OVImageFilePlugin::GetGroupName(const QString&) const
{
    return QString();
}

QStringList OVImageFilePlugin::GetGroupFormats(const QString&) const
{
    return QStringList();
}

OVImageFileReader::OVImageFileReader(QObject* parent)
    : QObject(parent)
{}

OVImageFileReader::~OVImageFileReader() = default;

QSize OVImageFileReader::ReadSize(const QString& path)
{
    QImage image;
    return Read(path, image) ? image.size() : QSize();
}

QString OVImageFileReader::GetErrorString() const
{
    return QString();
}

OVImageFileWriter::OVImageFileWriter(QObject* parent)
    : QObject(parent)
{}

OVImageFileWriter::~OVImageFileWriter() = default;

void OVImageFileWriter::SetQuality(int) {}

QString OVImageFileWriter::GetErrorString() const
{
    return QString();
}

KXDocumentInterface::~KXDocumentInterface() = default;

OVAdjustment::OVAdjustment(QObject* parent)
    : OVPlugin(parent)
{}

OVAdjustment::~OVAdjustment() = default;

int OVAdjustment::GetType() const
{
    return AdjustmentType;
}

QList<OVAdjustmentParameter> OVAdjustment::GetParameters() const
{
    return {};
}

OVBrushPlugin::OVBrushPlugin(QObject* parent)
    : OVPlugin(parent)
{}

OVBrushPlugin::~OVBrushPlugin() = default;

int OVBrushPlugin::GetType() const
{
    return BrushType;
}

QStringList OVBrushPlugin::GetBrushNames() const
{
    return QStringList();
}

IBrushFactory::~IBrushFactory() = default;

OVColorWidget::OVColorWidget(QWidget* parent)
    : QWidget(parent)
{}

OVColorWidget::~OVColorWidget() = default;

QColor OVColorWidget::GetColor() const
{
    return m_color;
}

void OVColorWidget::SetColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    emit ColorChanged(color);
}
