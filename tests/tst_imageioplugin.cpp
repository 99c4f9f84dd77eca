// The sample image I/O plug-in library in the registry: loaded as a plug-in, its writers and
// pooled readers carry real files both ways.

#include "OVApplication.h"
#include "OVImageFileManager.h"
#include "OVImageFilePlugin.h"
#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "OVPluginContainer.h"
#include "OVTestSupport.h"

#include <QPainter>
#include <QPluginLoader>
#include <QTemporaryDir>

class TestImageIOPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        OVImageFileManager::InitInstance();
        m_container = qobject_cast<OVPluginContainer*>(m_loader.instance());
        QVERIFY2(m_container, qPrintable(m_loader.errorString()));
        m_container->Initialize();
        QList<OVPlugin*> plugins;
        m_container->GetPlugins(plugins);
        QCOMPARE(plugins.size(), 1);
        m_plugin = qobject_cast<OVImageFilePlugin*>(plugins.first());
        QVERIFY(m_plugin);
        QVERIFY(OVImageFileManager::GetInstance()->Register(m_plugin));
        OVImageFileManager::InitReadersPool();
    }

    void cleanupTestCase()
    {
        // A reader returned twice stands twice in the pool; the plug-in, which deletes what it is
        // given back, still gets it once.
        OVImageFileManager* m = OVImageFileManager::GetInstance();
        OVImageFileReader* twice = m->AcquireReader(QStringLiteral("png"));
        m->ReleaseAcquiredReader(twice);
        m->ReleaseAcquiredReader(twice);
        OVImageFileManager::ReleaseReadersPool();
        if (m_plugin)
            QVERIFY(OVImageFileManager::GetInstance()->Unregister(m_plugin));
        if (m_container)
            m_container->Release();
        m_loader.unload();
        OVImageFileManager::ReleaseInstance();
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("lossless");
        QTest::newRow("png") << "png" << true;
        QTest::newRow("jpeg") << "Jpeg" << false;
    }
    void roundTrip()
    {
        QFETCH(QString, format);
        QFETCH(bool, lossless);
        OVImageFileManager* m = OVImageFileManager::GetInstance();

        QImage image(37, 21, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        QPainter(&image).fillRect(5, 5, 10, 10, Qt::yellow);
        const QString path = m_dir.filePath(QStringLiteral("picture.") + format.toLower());

        OVImageFileWriter* writer = m->CreateWriter(format);
        QVERIFY2(writer->Write(path, image), qPrintable(writer->GetErrorString()));
        m->ReleaseWriter(writer);

        OVImageFileReader* reader = m->AcquireReader(format);
        QImage read;
        const QSize size = reader->ReadSize(path);
        QImage none;
        const bool missing = reader->Read(m_dir.filePath(QStringLiteral("missing.png")), none);
        const QString error = reader->GetErrorString();
        const bool ok = reader->Read(path, read);
        m->ReleaseAcquiredReader(reader);

        QVERIFY(ok && !missing && !error.isEmpty());
        QCOMPARE(size, image.size());
        QCOMPARE(read.size(), image.size());
        if (lossless)
            QCOMPARE(read.convertToFormat(QImage::Format_RGB32), image);
    }

private:
    QPluginLoader m_loader{QStringLiteral(OV_IMAGEIO_PLUGIN)};
    OVPluginContainer* m_container = nullptr;
    OVImageFilePlugin* m_plugin = nullptr;
    QTemporaryDir m_dir;
};

OV_TEST_MAIN(TestImageIOPlugin)
#include "tst_imageioplugin.moc"
