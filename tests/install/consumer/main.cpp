// A host built against the installed package. It loads the README's two plug-ins, built from
// examples/guide against the same installation, by their well-known names and uses them.
// Usage: consumer <plug-in folder> <folder for files>

#include <OVAdjustment.h>
#include <OVAdjustmentManager.h>
#include <OVApplication.h>
#include <OVCMSProfile.h>
#include <OVImageFileManager.h>
#include <OVImageFileReader.h>
#include <OVImageFileWriter.h>
#include <OVPixelRatioRound.h>

#include <QFile>
#include <QSettings>

#include <cstdio>

namespace {

bool Check(bool ok, const char* what)
{
    if (!ok)
        std::fprintf(stderr, "consumer: %s\n", what);
    return ok;
}

const QString kThreshold = QStringLiteral("{2C7D5E90-1B4A-4E3F-9A61-5D8E0C7B0001}");

} // namespace

int main(int argc, char** argv)
{
    OVApplication app(argc, argv);
    if (!Check(OVApplication::GetInstance() == &app && argc == 3, "usage: consumer <plug-ins> <files>"))
        return 1;
    const QString files = QString::fromLocal8Bit(argv[2]);
    OVApplication::SetUserValue(QStringLiteral("Consumer/Value"), 7);
    if (!Check(OVApplication::GetUserValue(QStringLiteral("Consumer/Value")).toInt() == 7, "settings") ||
        !Check(!OVCMSProfile().IsValid() && OVPixelRatioRound::GetPixelRatio() > 0, "sibling libraries"))
        return 1;

    // An absolute plug-in folder in "plugins.ini" is taken as it stands.
    QSettings(OVApplication::GetResourcePath() + QStringLiteral("/plugins.ini"), QSettings::IniFormat)
        .setValue(QStringLiteral("general"), QString::fromLocal8Bit(argv[1]));
    OVAdjustmentManager::InitInstance();
    OVImageFileManager::InitInstance();
    OVImageFileManager* registry = OVImageFileManager::GetInstance();
    OVApplication::LoadPlugins(OVApplication::Adjustments | OVApplication::ImageIO);
    for (const QString& file : OVApplication::GetErrorPlugins())
        std::fprintf(stderr, "%s: %s\n", qPrintable(file), qPrintable(OVApplication::GetErrorInfo(file)));
    if (!Check(OVApplication::GetErrorPlugins().empty(), "plug-ins failed") ||
        !Check(!OVApplication::PluginFileName(OVApplication::Adjustments).value(0).isEmpty() &&
                   !OVApplication::PluginFileName(OVApplication::ImageIO).value(0).isEmpty(),
               "well-known names not found"))
        return 2;

    const OVAdjustment* threshold = OVAdjustmentManager::GetInstance()->GetAdjustment(kThreshold);
    if (!Check(threshold, "the adjustment did not register itself"))
        return 3;
    QImage image(4, 1, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x)
        image.setPixel(x, 0, qRgb(x * 80, x * 80, x * 80));
    const QImage result = threshold->Apply(image, {{QStringLiteral("level"), 150}});
    if (!Check(result.pixel(1, 0) == qRgb(0, 0, 0) && result.pixel(2, 0) == qRgb(255, 255, 255), "threshold"))
        return 3;

    // Written by the plug-in's writer, read back by a reader of the pool.
    const QString path = files + QStringLiteral("/result.ppm");
    OVImageFileWriter* writer = registry->CreateWriter(QStringLiteral("ppm"));
    const bool written = writer && writer->Write(path, image);
    registry->ReleaseWriter(writer);
    OVImageFileManager::InitReadersPool();
    OVImageFileReader* reader = registry->AcquireReader(QStringLiteral("PPM"));
    QImage read;
    const bool ok = written && reader && reader->Read(path, read) && reader->ReadSize(path) == QSize(4, 1) &&
                    read.convertToFormat(QImage::Format_RGB32) == image;
    // Damaged files fail with a reason: the pixels cut short, an ASCII pixmap, a bad size.
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    file.close();
    bool refused = true;
    for (const QByteArray& damaged : {bytes.left(bytes.size() - 1), QByteArray("P3\n1 1\n255\n0 0 0\n"),
                                      QByteArray("P6\n0 1\n255\n"), QByteArray("P6\n1 1\n256\n")}) {
        if (file.open(QIODevice::WriteOnly))
            file.write(damaged);
        file.close();
        refused = refused && reader && !reader->Read(path, read) && !reader->GetErrorString().isEmpty();
    }
    registry->ReleaseAcquiredReader(reader);
    OVImageFileManager::ReleaseReadersPool();
    if (!Check(ok, "PPM round trip") || !Check(refused, "damaged PPM files"))
        return 4;

    // Unloading takes both plug-ins out of the registries again.
    OVApplication::UnloadPlugins();
    if (!Check(!OVAdjustmentManager::GetInstance()->GetAdjustment(kThreshold) &&
                   !registry->GetSupportedReadFormats().contains(QStringLiteral("ppm")),
               "unloading left registrations behind"))
        return 5;
    OVImageFileManager::ReleaseInstance();
    OVAdjustmentManager::ReleaseInstance();
    std::printf("consumer: both plug-ins loaded, used and unloaded\n");
    return 0;
}
