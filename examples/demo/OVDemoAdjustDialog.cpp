#include "OVDemoAdjustDialog.h"

#include "OVDemoCanvas.h"

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QSlider>
#include <QSpinBox>
#include <QtConcurrent>

OVDemoAdjustDialog::OVDemoAdjustDialog(const QString& uid, const QVariantMap& initial, OVDemoCanvas* canvas,
                                       QWidget* parent)
    : QDialog(parent)
    , m_uid(uid)
    , m_canvas(canvas)
{
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    const OVAdjustment* adjustment = registry ? registry->GetAdjustment(uid) : nullptr;
    setWindowTitle(adjustment ? adjustment->GetName() : uid);
    QFormLayout* form = new QFormLayout(this);
    for (const OVAdjustmentParameter& parameter :
         adjustment ? adjustment->GetParameters() : QList<OVAdjustmentParameter>()) {
        QSlider* slider = new QSlider(Qt::Horizontal, this);
        QSpinBox* value = new QSpinBox(this);
        slider->setRange(parameter.minimum, parameter.maximum);
        value->setRange(parameter.minimum, parameter.maximum);
        value->setValue(initial.value(parameter.name, parameter.defaultValue).toInt());
        slider->setValue(value->value());
        slider->setMinimumWidth(200);
        connect(slider, &QSlider::valueChanged, value, &QSpinBox::setValue);
        connect(value, QOverload<int>::of(&QSpinBox::valueChanged), slider, &QSlider::setValue);
        connect(value, QOverload<int>::of(&QSpinBox::valueChanged), this, &OVDemoAdjustDialog::Preview);
        QHBoxLayout* row = new QHBoxLayout;
        row->addWidget(slider);
        row->addWidget(value);
        form->addRow(parameter.name, row);
        m_values.insert(parameter.name, value);
    }
    QDialogButtonBox* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    connect(&m_worker, &QFutureWatcher<QImage>::finished, this, &OVDemoAdjustDialog::OnPreviewed);
    Preview();
}

OVDemoAdjustDialog::~OVDemoAdjustDialog()
{
    m_worker.waitForFinished();
    m_canvas->SetPreview(QImage());
}

OVDemoAdjustment OVDemoAdjustDialog::Step() const
{
    OVDemoAdjustment step{m_uid, {}};
    for (auto it = m_values.begin(); it != m_values.end(); ++it)
        step.parameters.insert(it.key(), it.value()->value());
    return step;
}

void OVDemoAdjustDialog::Preview()
{
    if (m_worker.isRunning()) {
        m_pending = true;
        return;
    }
    m_pending = false;
    if (m_proxy.isNull()) {
        // First the copy to preview on: the image as large as the view shows it, at most.
        const QImage image = m_canvas->Image();
        const QSize size = image.size().scaled(m_canvas->viewport()->size() * m_canvas->devicePixelRatioF(),
                                               Qt::KeepAspectRatio);
        m_worker.setFuture(QtConcurrent::run([image, size] {
            return size.width() < image.width()
                       ? image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                       : image;
        }));
        m_pending = true;
        return;
    }
    m_worker.setFuture(QtConcurrent::run(&OVDemoHost::Apply, m_proxy, QList<OVDemoAdjustment>{Step()}));
}

void OVDemoAdjustDialog::OnPreviewed()
{
    if (m_proxy.isNull())
        m_proxy = m_worker.result();
    else
        m_canvas->SetPreview(m_worker.result());
    if (m_pending)
        Preview();
}
