#pragma once

#include "OVDemoBatch.h"
#include "OVDemoHost.h"

#include <QImage>
#include <QMainWindow>
#include <QPointer>

#include <memory>

class OVDemoCanvas;
class OVEndpointMessanger;
class QLabel;
class QProgressDialog;
class QSplashScreen;
class QTabWidget;
class QUndoGroup;
class QUndoStack;

// The demo's editor window: one tab per open image, the menus of the menu manager, the tool
// bar with the tools and the tool-bar content, and a dock with the tool-widget content.
class OVDemoWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit OVDemoWindow(OVDemoHost& host, QWidget* parent = nullptr);
    ~OVDemoWindow() override;

    // A splash screen that follows the plug-in loading until the window is shown.
    void ShowSplash();
    // Puts the host's entries into the registries' menus and builds the window from them.
    void Build();
    // Opens files as File > Open does; once they are all open, applies steps to each of them,
    // saves a picture of the window to screenshot and quits, each when asked for.
    void Automate(const QStringList& files, const QList<OVDemoAdjustment>& steps, const QString& screenshot,
                  bool quit);

    void OpenFiles(const QStringList& files);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // An open image: its canvas (the tab's page) and its undo stack (a child of the canvas).
    struct Document
    {
        QString path;
        OVDemoCanvas* canvas;
        QUndoStack* undo;
    };

    void BuildFileMenu();
    void BuildEditMenu();
    void BuildViewMenu();
    void BuildImageMenu();
    void BuildHelpMenu();
    void BuildToolBars();
    void OnOpened(const OVDemoImage& result);
    void OnAllOpened();
    void ApplyToCurrent(const OVDemoAdjustment& step);
    // The adjustment's dialog, starting from initial; on OK the step is applied on a worker.
    void AskAndApply(const QString& uid, const QVariantMap& initial = QVariantMap());
    // Replaces the document's image by after, undoably.
    void Change(OVDemoCanvas* canvas, const QImage& after, const QString& text);
    void Export();
    // Closes the tab, asking first when it has changes not exported; false when kept.
    bool CloseDocument(int index);
    // Tells the tool in effect which canvas is shown now.
    void ShowCanvasToTool();
    Document* Current();

    OVDemoHost& m_host;
    OVDemoBatch m_batch;
    QTabWidget* m_tabs = nullptr;
    QLabel* m_status = nullptr;
    QList<Document> m_documents;
    QUndoGroup* m_undo = nullptr;
    bool m_busy = false; // an adjustment is being applied on a worker
    QPointer<QProgressDialog> m_progress;
    int m_batchSize = 0;
    std::unique_ptr<QSplashScreen> m_splash;

    // What Automate() still has to do once the files are open.
    QList<OVDemoAdjustment> m_autoSteps;
    QString m_autoScreenshot;
    bool m_autoQuit = false;
    bool m_automating = false;
    // Last, so that it is destroyed first: its worker may still hand a reply to this window.
    std::unique_ptr<OVEndpointMessanger> m_messenger;
};
