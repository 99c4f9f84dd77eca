// The sample plug-in libraries of the demo, loaded for real: what each enters into the
// registries, what its adjustments do to pixels, how its tools switch their contents, and
// that unloading takes every entry back out.

#include "IBrushFactory.h"
#include "OVActivateAction.h"
#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVBrushPlugin.h"
#include "OVBrushToolManager.h"
#include "OVMenuManager.h"
#include "OVTestSupport.h"
#include "OVToolBarManager.h"
#include "OVToolGroupManager.h"
#include "OVToolWidgetManager.h"

#include <QAction>
#include <QMenu>

#include <memory>

namespace {

const QString kBrightnessContrast = "{8E0C52A4-7A31-4B8C-9D3E-0000000A0001}";
const QString kGreyscale = "{8E0C52A4-7A31-4B8C-9D3E-0000000A0002}";
const QString kBoxBlur = "{8E0C52A4-7A31-4B8C-9D3E-0000000F0001}";

QImage Apply(const QString& uid, const QImage& image, const QVariantMap& parameters)
{
    const OVAdjustment* adjustment = OVAdjustmentManager::GetInstance()->GetAdjustment(uid);
    return adjustment ? adjustment->Apply(image, parameters) : QImage();
}

QImage Filled(int width, int height, QRgb pixel)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(pixel);
    return image;
}

QAction* Tool(const QMenu& menu, const QString& uid)
{
    for (QAction* action : menu.actions())
        if (action->property("toolUID").toString() == uid)
            return action;
    return nullptr;
}

} // namespace

class TestSamplePlugins : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        OVAdjustmentManager::InitInstance();
        OVBrushToolManager::InitInstance();
        OVMenuManager::InitInstance();
        OVToolBarManager::InitInstance();
        OVToolWidgetManager::InitInstance();
        OVToolGroupManager::InitInstance();
        m_edit.reset(OVMenuManager::CreateMenu(OVMenuManager::Edit, "Edit"));
        m_filter.reset(OVMenuManager::CreateMenu(OVMenuManager::Filter, "Filter"));
        OVApplication::LoadPlugins(
            QStringList{OV_PLUGIN_BRUSHES, OV_PLUGIN_ADJUSTMENTS, OV_PLUGIN_FILTER, OV_PLUGIN_TOOLS});
        QVERIFY(OVApplication::GetErrorPlugins().empty());
        OVApplication::UIReady();
    }

    void registrations()
    {
        QCOMPARE(OVAdjustmentManager::GetInstance()->GetRegistered(),
                 (QStringList{kBrightnessContrast, kGreyscale, kBoxBlur}));
        QCOMPARE(OVAdjustmentManager::GetInstance()->GetAdjustment(kBoxBlur)->GetType(),
                 int(OVPlugin::FilterType));

        OVBrushPlugin* brushes = OVBrushToolManager::GetInstance()->GetMainBrushPlugin();
        QVERIFY(brushes);
        QCOMPARE(OVBrushToolManager::GetInstance()->GetRegistered(), QStringList{brushes->GetUID()});
        IBrushFactory* factory = OVApplication::GetBrushFactory();
        QCOMPARE(dynamic_cast<QObject*>(factory), static_cast<QObject*>(brushes));
        std::unique_ptr<QObject> soft(factory->CreateBrush("soft"));
        QCOMPARE(soft->objectName(), "soft");
        QCOMPARE(factory->CreateBrush("fuzzy"), nullptr);
        // A filter entry names its adjustment and the parameters it applies.
        QCOMPARE(m_filter->actions().size(), 2);
        const QVariantMap large = m_filter->actions().at(1)->data().toMap();
        QCOMPARE(large.value("adjustment").toString(), kBoxBlur);
        QCOMPARE(large.value("radius").toInt(), 8);
        // UIReady chose the first tool and showed its contents.
        QCOMPARE(OVToolGroupManager::GetExplicitToolUID(), "tool.hand");
        QVERIFY(Tool(*m_edit, "tool.hand")->isChecked());
        QCOMPARE(OVToolBarManager::GeneralContent()->windowTitle(), "Hand");
        QCOMPARE(OVToolWidgetManager::GeneralContent()->windowTitle(), "Hand");
    }

    void adjustments_data()
    {
        OVTest::Columns<QString, QVariantMap, QRgb, QRgb>({"uid", "parameters", "pixel", "expected"});
        OVTest::Row("brightness -100 is black, alpha kept", kBrightnessContrast,
                    QVariantMap{{"brightness", -100}}, qRgba(10, 100, 250, 128), qRgba(0, 0, 0, 128));
        OVTest::Row("contrast +100 doubles the distance from grey", kBrightnessContrast,
                    QVariantMap{{"contrast", 100}}, qRgba(100, 128, 160, 255), qRgba(73, 129, 193, 255));
        OVTest::Row("out-of-range parameters are bounded", kBrightnessContrast,
                    QVariantMap{{"brightness", 500}}, qRgba(0, 0, 0, 255), qRgba(255, 255, 255, 255));
        OVTest::Row("grey-scale", kGreyscale, QVariantMap(), qRgba(255, 0, 0, 200),
                    qRgba(qGray(255, 0, 0), qGray(255, 0, 0), qGray(255, 0, 0), 200));
        OVTest::Row("blur keeps a flat colour", kBoxBlur, QVariantMap{{"radius", 3}}, qRgba(30, 60, 90, 255),
                    qRgba(30, 60, 90, 255));
    }
    void adjustments()
    {
        QFETCH(QString, uid);
        QFETCH(QVariantMap, parameters);
        QFETCH(QRgb, pixel);
        const QImage result = Apply(uid, Filled(7, 5, pixel), parameters);
        QCOMPARE(result.size(), QSize(7, 5));
        QTEST(result.pixel(3, 2), "expected");
        QCOMPARE(result.pixel(0, 0), result.pixel(3, 2));
    }

    // A white dot on black spreads over a 3 by 3 square at radius 1; an opaque red dot on a
    // transparent field stays red where it spreads, only less opaque.
    void boxBlur()
    {
        QImage dot = Filled(5, 5, qRgba(0, 0, 0, 255));
        dot.setPixel(2, 2, qRgba(255, 255, 255, 255));
        const QImage blurred = Apply(kBoxBlur, dot, {{"radius", 1}});
        QCOMPARE(qRed(blurred.pixel(2, 2)), 255 / 3 / 3);
        QCOMPARE(qRed(blurred.pixel(1, 3)), 255 / 3 / 3);
        QCOMPARE(qRed(blurred.pixel(0, 2)), 0);

        QImage red = Filled(5, 5, qRgba(0, 0, 0, 0));
        red.setPixel(2, 2, qRgba(255, 0, 0, 255));
        const QRgb edge = Apply(kBoxBlur, red, {{"radius", 1}}).pixel(1, 1);
        QCOMPARE(qAlpha(edge), 255 / 3 / 3);
        QVERIFY2(qRed(edge) > 240 && qGreen(edge) == 0, qPrintable(QString::number(edge, 16)));
    }

    // Picking a tool in the menu makes it the chosen tool of the group and shows its contents.
    void toolSwitching()
    {
        QAction* zoom = Tool(*m_edit, "tool.zoom");
        zoom->trigger();
        QCOMPARE(OVToolGroupManager::GetExplicitToolUID(), "tool.zoom");
        QVERIFY(zoom->isChecked());
        QVERIFY(!Tool(*m_edit, "tool.hand")->isChecked());
        QCOMPARE(OVToolBarManager::GeneralContent()->windowTitle(), "Zoom");
        QCOMPARE(OVToolWidgetManager::GeneralContent()->windowTitle(), "Zoom");
        // Picking it again keeps it chosen.
        zoom->trigger();
        QVERIFY(zoom->isChecked());
    }

    // Unloading takes back every menu entry, registration, tool and content.
    void cleanupTestCase()
    {
        OVApplication::UnloadPlugins();
        QVERIFY(m_edit->actions().isEmpty());
        QVERIFY(m_filter->actions().isEmpty());
        QVERIFY(OVAdjustmentManager::GetInstance()->GetRegistered().isEmpty());
        QVERIFY(OVBrushToolManager::GetInstance()->GetRegistered().isEmpty());
        QCOMPARE(OVBrushToolManager::GetInstance()->GetMainBrushPlugin(), nullptr);
        QCOMPARE(OVApplication::GetBrushFactory(), nullptr);
        QCOMPARE(OVToolGroupManager::GetExplicitAction(), nullptr);
        QVERIFY(OVToolBarManager::IsGeneralContentEmpty());
        QVERIFY(OVToolBarManager::GeneralContent()
                    ->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)
                    .isEmpty());
        OVToolGroupManager::ReleaseInstance();
        OVToolWidgetManager::ReleaseInstance();
        OVToolBarManager::ReleaseInstance();
        OVMenuManager::ReleaseInstance();
        OVBrushToolManager::ReleaseInstance();
        OVAdjustmentManager::ReleaseInstance();
    }

private:
    std::unique_ptr<QMenu> m_edit;
    std::unique_ptr<QMenu> m_filter;
};

OV_TEST_MAIN(TestSamplePlugins)

#include "tst_sampleplugins.moc"
