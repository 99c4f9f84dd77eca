#pragma once

#include "OVDemoBatch.h"
#include "OVDemoHost.h"

#include <QImage>
#include <QMainWindow>
#include <QPointer>

#include <memory>

class OVEndpointMessanger;
class QLabel;
class QProgressDialog;
class QSplashScreen;
class QTabWidget;

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

private:
    struct Document
    {
        QString path;
        QImage image;
    };

    void BuildFileMenu();
    void BuildImageMenu();
    void BuildHelpMenu();
    void BuildToolBars();
    void OnOpened(const OVDemoImage& result);
    void OnAllOpened();
    void ApplyToCurrent(const OVDemoAdjustment& step);
    void AskAndApply(const QString& uid);
    void Export();
    void ShowDocument(int index);
    Document* Current();

    OVDemoHost& m_host;
    OVDemoBatch m_batch;
    QTabWidget* m_tabs = nullptr;
    QLabel* m_status = nullptr;
    QList<Document> m_documents;
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
