#pragma once

#include "OVDemoHost.h"

#include <QDialog>
#include <QFutureWatcher>
#include <QImage>
#include <QMap>

class OVDemoCanvas;
class QSpinBox;

// The parameters of one adjustment, a control for each it declares, with a live preview on the
// canvas. The preview is worked out on a copy scaled down to the view, on a worker thread, one
// at a time: a change made meanwhile is worked out when the one running is done, so the window
// stays responsive on a large photo. Closing the dialog takes the preview away.
class OVDemoAdjustDialog : public QDialog
{
    Q_OBJECT
public:
    // initial: parameter values to start from (a menu entry's); the declared defaults otherwise.
    OVDemoAdjustDialog(const QString& uid, const QVariantMap& initial, OVDemoCanvas* canvas, QWidget* parent);
    ~OVDemoAdjustDialog() override;

    OVDemoAdjustment Step() const;

private:
    void Preview();
    void OnPreviewed();

    QString m_uid;
    OVDemoCanvas* m_canvas;
    QMap<QString, QSpinBox*> m_values;
    QImage m_proxy;
    QFutureWatcher<QImage> m_worker;
    bool m_pending = false;
};
