#include "OVDemoWindow.h"

#include "OVDemoAdjustDialog.h"
#include "OVDemoCanvas.h"
#include "OVDemoColour.h"
#include "OVDemoLists.h"
#include "OVDemoLook.h"
#include "OVDemoStatistics.h"
#include "OVSampleCanvas.h"

#include "OVActivateAction.h"
#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVEndpointMessanger.h"
#include "OVImageFileManager.h"
#include "OVMenuManager.h"
#include "OVRecentManager.h"
#include "OVToolBarManager.h"
#include "OVToolGroupManager.h"
#include "OVToolWidgetManager.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QProgressDialog>
#include <QScreen>
#include <QSplashScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QUndoGroup>
#include <QUndoStack>
#include <QWindow>
#include <QtConcurrent>

#include <cmath>

namespace {

// Menu ids of the host's own entries.
enum HostEntry
{
    FileOpen = 10,
    FileOpenRecent = 20,
    FileFavourite = 25,
    FileExport = 30,
    FileClose = 900,
    FileQuit = 1000,
    EditUndo = 10,
    EditRedo = 20,
    ViewFit = 10,
    ViewActualSize = 20,
    ImageAdjustments = 10,
    HelpStatistics = 20,
    HelpFeedback = 30,
    HelpAbout = 100,
};

QPixmap SplashPixmap()
{
    QPixmap pixmap(420, 160);
    pixmap.fill(QColor(0x2b, 0x2d, 0x31));
    QPainter painter(&pixmap);
    painter.setPen(QColor(0xe8, 0xe8, 0xe8));
    QFont font = painter.font();
    font.setPointSize(20);
    painter.setFont(font);
    painter.drawText(pixmap.rect().adjusted(20, 20, -20, -60), Qt::AlignLeft | Qt::AlignTop,
                     OVDemoHost::tr("core demo editor"));
    return pixmap;
}

// One change of an image: the image before and after it.
class ImageCommand : public QUndoCommand
{
public:
    ImageCommand(OVDemoCanvas* canvas, const QImage& before, const QImage& after, const QString& text)
        : QUndoCommand(text)
        , m_canvas(canvas)
        , m_before(before)
        , m_after(after)
    {}

    void undo() override { m_canvas->SetImage(m_before); }
    void redo() override { m_canvas->SetImage(m_after); }

private:
    OVDemoCanvas* m_canvas;
    QImage m_before;
    QImage m_after;
};

} // namespace

OVDemoWindow::OVDemoWindow(OVDemoHost& host, QWidget* parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_messenger(new OVEndpointMessanger)
{
    setWindowTitle(tr("core demo editor"));
    setAcceptDrops(true);
    resize(960, 640);
    connect(&m_batch, &OVDemoBatch::Opened, this, &OVDemoWindow::OnOpened);
    connect(&m_batch, &OVDemoBatch::AllOpened, this, &OVDemoWindow::OnAllOpened);
    connect(&m_host, &OVDemoHost::OpenRequested, &m_batch, &OVDemoBatch::Add);
}

OVDemoWindow::~OVDemoWindow()
{
    // An adjustment still running uses the plug-ins, which go after the window.
    QThreadPool::globalInstance()->waitForDone();
    // Tool contents may go with the window; what they announce then is not for it.
    if (OVToolBarManager* bar = OVToolBarManager::GetInstance())
        bar->disconnect(this);
    // The canvases go now, while the documents that point at them are still here, and no tool
    // keeps one.
    if (m_tabs) {
        m_tabs->disconnect(this);
        m_documents.clear();
        delete m_tabs;
        m_tabs = nullptr;
        ShowCanvasToTool();
    }
    // The general content widgets belong to their managers, which delete them on release.
    for (QWidget* general : {OVToolBarManager::GeneralContent(), OVToolWidgetManager::GeneralContent()}) {
        if (general)
            general->setParent(nullptr);
    }
}

void OVDemoWindow::ShowSplash()
{
    m_splash.reset(new QSplashScreen(SplashPixmap()));
    m_splash->show();
    connect(&m_host, &OVDemoHost::Status, m_splash.get(), [this](const QString& text) {
        m_splash->showMessage(text, Qt::AlignLeft | Qt::AlignBottom, QColor(0xc0, 0xc0, 0xc0));
    });
}

void OVDemoWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_splash) {
        m_splash->finish(this);
        m_splash.reset();
    }
}

void OVDemoWindow::Build()
{
    m_tabs = new QTabWidget(this);
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &OVDemoWindow::CloseDocument);
    m_undo = new QUndoGroup(this);
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        m_undo->setActiveStack(Current() ? Current()->undo : nullptr);
        ShowCanvasToTool();
    });
    // The tool in effect changed: its tool-bar content follows it.
    connect(OVToolBarManager::GetInstance(), &OVToolBarManager::ContentChanged, this,
            &OVDemoWindow::ShowCanvasToTool);
    setCentralWidget(m_tabs);
    m_status = new QLabel(this);
    statusBar()->addWidget(m_status, 1);
    connect(&m_host, &OVDemoHost::Status, m_status, &QLabel::setText);

    BuildFileMenu();
    BuildEditMenu();
    BuildViewMenu();
    BuildImageMenu();
    BuildHelpMenu();
    if (QMenu* view = m_host.Menu(OVMenuManager::View))
        OVDemoLook::AddMenus(view, statusBar());
    if (QMenu* view = m_host.Menu(OVMenuManager::View))
        OVDemoColour::AddMenu(view);
    // Entries whose data names an adjustment (the sample filters) apply it to the current image.
    for (OVMenuManager::MenuRole role : {OVMenuManager::Filter, OVMenuManager::Image}) {
        if (QMenu* menu = m_host.Menu(role)) {
            connect(menu, &QMenu::triggered, this, [this](QAction* action) {
                const QVariantMap data = action->data().toMap();
                if (!data.contains(QStringLiteral("adjustment")))
                    return;
                QVariantMap initial = data;
                initial.remove(QStringLiteral("adjustment"));
                AskAndApply(data.value(QStringLiteral("adjustment")).toString(), initial);
            });
        }
    }
    OVMenuManager::Setup(menuBar());
    BuildToolBars();
    m_status->setText(m_host.PluginSummary());
}

void OVDemoWindow::BuildFileMenu()
{
    QAction* open = OVMenuManager::CreateAction(OVMenuManager::File, FileOpen);
    open->setText(tr("&Open..."));
    open->setShortcut(QKeySequence::Open);
    connect(open, &QAction::triggered, this, [this] {
        const QStringList files = QFileDialog::getOpenFileNames(
            this, tr("Open"), OVApplication::GetPathOpen(), OVImageFileManager::GetFilterForRead());
        if (files.isEmpty())
            return;
        OVApplication::SetPathOpen(QFileInfo(files.first()).absolutePath());
        OpenFiles(files);
    });

    OVDemoLists::AddFileEntries(
        FileOpenRecent, FileFavourite, [this](const QString& path) { OpenFiles({path}); },
        [this] { return Current() ? Current()->path : QString(); });

    QAction* exportAction = OVMenuManager::CreateAction(OVMenuManager::File, FileExport);
    exportAction->setText(tr("&Export..."));
    exportAction->setShortcut(QKeySequence(tr("Ctrl+E")));
    connect(exportAction, &QAction::triggered, this, &OVDemoWindow::Export);

    QAction* close = OVMenuManager::CreateAction(OVMenuManager::File, FileClose);
    close->setText(tr("&Close"));
    close->setShortcut(QKeySequence::Close);
    connect(close, &QAction::triggered, this, [this] {
        if (Current())
            CloseDocument(m_tabs->currentIndex());
    });

    QAction* quit = OVMenuManager::CreateAction(OVMenuManager::File, FileQuit);
    quit->setText(tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
}

void OVDemoWindow::BuildEditMenu()
{
    const struct
    {
        int id;
        QString text;
        QKeySequence keys;
        void (QUndoGroup::*run)();
        void (QUndoGroup::*can)(bool);
    } entries[] = {
        {EditUndo, tr("&Undo"), QKeySequence(tr("Ctrl+Z")), &QUndoGroup::undo, &QUndoGroup::canUndoChanged},
        {EditRedo, tr("&Redo"), QKeySequence(tr("Ctrl+Shift+Z")), &QUndoGroup::redo,
         &QUndoGroup::canRedoChanged}};
    for (const auto& entry : entries) {
        QAction* action = OVMenuManager::CreateAction(OVMenuManager::Edit, entry.id);
        if (!action)
            continue;
        action->setText(entry.text);
        action->setShortcut(entry.keys);
        action->setEnabled(false);
        connect(action, &QAction::triggered, m_undo, entry.run);
        connect(m_undo, entry.can, action, &QAction::setEnabled);
    }
}

void OVDemoWindow::BuildViewMenu()
{
    QAction* fit = OVMenuManager::CreateAction(OVMenuManager::View, ViewFit);
    if (fit) {
        fit->setText(tr("&Fit to Window"));
        fit->setShortcut(QKeySequence(tr("Ctrl+0")));
        connect(fit, &QAction::triggered, this, [this] {
            if (Current())
                Current()->canvas->FitToWindow();
        });
    }
    QAction* actual = OVMenuManager::CreateAction(OVMenuManager::View, ViewActualSize);
    if (actual) {
        actual->setText(tr("&Actual Size"));
        actual->setShortcut(QKeySequence(tr("Ctrl+1")));
        connect(actual, &QAction::triggered, this, [this] {
            if (Current())
                Current()->canvas->ActualSize();
        });
    }
}

void OVDemoWindow::BuildImageMenu()
{
    QMenu* adjustments = OVMenuManager::CreateMenu(OVMenuManager::Image, ImageAdjustments);
    if (!adjustments)
        return;
    adjustments->setTitle(tr("&Adjustments"));
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    for (const QString& id : registry->GetRegistered()) {
        const OVAdjustment* adjustment = registry->GetAdjustment(id);
        if (!adjustment || adjustment->GetType() != OVPlugin::AdjustmentType)
            continue;
        QAction* action = adjustments->addAction(adjustment->GetName() + QStringLiteral("..."));
        connect(action, &QAction::triggered, this, [this, id] { AskAndApply(id); });
    }
}

void OVDemoWindow::BuildHelpMenu()
{
    QAction* about = OVMenuManager::CreateAction(OVMenuManager::Help, HelpAbout);
    about->setText(tr("&About"));
    connect(about, &QAction::triggered, this, [this] {
        QMessageBox::about(this, tr("About"),
                           tr("The demo host editor of the core library.\n\n%1").arg(m_host.PluginSummary()));
    });
    OVDemoStatistics::AddMenuEntries(HelpStatistics, HelpFeedback, this, *m_messenger);
}

void OVDemoWindow::BuildToolBars()
{
    // The tools are the Edit menu's entries that carry a tool UID.
    QToolBar* tools = addToolBar(tr("Tools"));
    tools->setObjectName(QStringLiteral("tools"));
    if (QMenu* edit = m_host.Menu(OVMenuManager::Edit)) {
        for (QAction* action : edit->actions()) {
            if (action->property("toolUID").isValid())
                tools->addAction(action);
        }
    }
    tools->addSeparator();
    OVDemoLook::AddSwatches(tools);
    QToolBar* options = addToolBar(tr("Tool options"));
    options->setObjectName(QStringLiteral("options"));
    if (QWidget* general = OVToolBarManager::GeneralContent())
        options->addWidget(general);

    if (QWidget* general = OVToolWidgetManager::GeneralContent()) {
        QDockWidget* dock = new QDockWidget(tr("Tool"), this);
        dock->setObjectName(QStringLiteral("tool"));
        dock->setWidget(general);
        dock->setMinimumWidth(200);
        connect(OVToolWidgetManager::GetInstance(), &OVToolWidgetManager::ContentChanged, dock,
                [dock, general] { dock->setWindowTitle(general->windowTitle()); });
        addDockWidget(Qt::RightDockWidgetArea, dock);
    }
}

void OVDemoWindow::Automate(const QStringList& files, const QList<OVDemoAdjustment>& steps,
                            const QString& screenshot, bool quit)
{
    m_autoSteps = steps;
    m_autoScreenshot = screenshot;
    m_autoQuit = quit;
    m_automating = !files.isEmpty() || !screenshot.isEmpty() || quit;
    if (!files.isEmpty())
        OpenFiles(files);
    else if (m_automating)
        QTimer::singleShot(0, this, &OVDemoWindow::OnAllOpened);
}

void OVDemoWindow::OpenFiles(const QStringList& files)
{
    m_batchSize += files.size();
    if (!m_progress) {
        // Shown only when the batch takes longer than the library's progress timeout.
        m_progress = new QProgressDialog(tr("Opening images..."), QString(), 0, m_batchSize, this);
        m_progress->setAttribute(Qt::WA_DeleteOnClose);
        m_progress->setMinimumDuration(OVApplication::GetProgressTimeout());
        m_progress->setValue(0);
    }
    m_progress->setMaximum(m_batchSize);
    OVImageFileManager::GetInstance()->Open(files);
}

void OVDemoWindow::OnOpened(const OVDemoImage& result)
{
    if (m_progress)
        m_progress->setValue(m_progress->value() + 1);
    if (result.image.isNull()) {
        m_status->setText(tr("%1: %2").arg(QFileInfo(result.path).fileName(), result.error));
        return;
    }
    OVDemoStatistics::Send(OVDemoStatistics::Open, {{QStringLiteral("format"), result.format}});
    OVDemoCanvas* canvas = new OVDemoCanvas(result.image);
    QUndoStack* undo = new QUndoStack(canvas);
    m_undo->addStack(undo);
    m_documents << Document{result.path, canvas, undo};
    if (OVRecentManager* recent = OVRecentManager::GetInstance())
        recent->PushRecent(result.path);
    connect(canvas, &OVDemoCanvas::ZoomChanged, this, [this, canvas] {
        if (Current() && Current()->canvas == canvas)
            ShowCanvasToTool();
    });
    const int index = m_tabs->addTab(canvas, QFileInfo(result.path).fileName());
    m_tabs->setTabToolTip(index, result.path);
    m_tabs->setCurrentIndex(index);
    m_status->setText(tr("%1: %2 x %3, read by %4 in %5 ms")
                          .arg(QFileInfo(result.path).fileName())
                          .arg(result.image.width())
                          .arg(result.image.height())
                          .arg(result.readerUID)
                          .arg(result.ms));
}

void OVDemoWindow::OnAllOpened()
{
    m_batchSize = 0;
    if (m_progress)
        m_progress->close();
    if (!m_automating)
        return;
    m_automating = false;
    for (const OVDemoAdjustment& step : qAsConst(m_autoSteps)) {
        for (int i = 0; i < m_documents.size(); ++i) {
            m_tabs->setCurrentIndex(i);
            ApplyToCurrent(step);
        }
    }
    // Let the window paint what it now shows before it is photographed.
    QTimer::singleShot(300, this, [this] {
        if (!m_autoScreenshot.isEmpty()) {
            QScreen* screen = windowHandle() ? windowHandle()->screen() : QGuiApplication::primaryScreen();
            const QPixmap shot = screen ? screen->grabWindow(winId()) : grab();
            if (!(shot.isNull() ? grab() : shot).save(m_autoScreenshot))
                m_status->setText(tr("Cannot save %1").arg(m_autoScreenshot));
        }
        if (m_autoQuit)
            close();
    });
}

void OVDemoWindow::AskAndApply(const QString& uid, const QVariantMap& initial)
{
    Document* document = Current();
    if (!document || m_busy || !OVAdjustmentManager::GetInstance() ||
        !OVAdjustmentManager::GetInstance()->GetAdjustment(uid))
        return;
    OVDemoCanvas* canvas = document->canvas;
    OVDemoAdjustment step;
    {
        OVDemoAdjustDialog dialog(uid, initial, canvas, this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        step = dialog.Step();
    }
    // The whole image on a worker; the preview stays until the result replaces it.
    m_busy = true;
    canvas->SetPreview(
        OVDemoHost::Apply(canvas->Image().scaled(canvas->viewport()->size(), Qt::KeepAspectRatio), {step}));
    QFutureWatcher<QImage>* watcher = new QFutureWatcher<QImage>(this);
    const QPointer<OVDemoCanvas> target(canvas);
    const QString text = OVAdjustmentManager::GetInstance()->GetAdjustment(uid)->GetName();
    connect(watcher, &QFutureWatcher<QImage>::finished, this, [this, watcher, target, step, text] {
        watcher->deleteLater();
        m_busy = false;
        if (!target)
            return;
        target->SetPreview(QImage());
        Change(target, watcher->result(), text);
        OVDemoStatistics::Send(OVDemoStatistics::Adjust, {{QStringLiteral("adjustment"), step.uid}});
    });
    watcher->setFuture(QtConcurrent::run(&OVDemoHost::Apply, canvas->Image(), QList<OVDemoAdjustment>{step}));
}

void OVDemoWindow::ApplyToCurrent(const OVDemoAdjustment& step)
{
    Document* document = Current();
    if (!document)
        return;
    const OVAdjustment* adjustment = OVAdjustmentManager::GetInstance()
                                         ? OVAdjustmentManager::GetInstance()->GetAdjustment(step.uid)
                                         : nullptr;
    Change(document->canvas, OVDemoHost::Apply(document->canvas->Image(), {step}),
           adjustment ? adjustment->GetName() : step.uid);
    OVDemoStatistics::Send(OVDemoStatistics::Adjust, {{QStringLiteral("adjustment"), step.uid}});
}

void OVDemoWindow::Change(OVDemoCanvas* canvas, const QImage& after, const QString& text)
{
    for (const Document& document : qAsConst(m_documents)) {
        if (document.canvas == canvas)
            document.undo->push(new ImageCommand(canvas, canvas->Image(), after, text));
    }
}

void OVDemoWindow::Export()
{
    const Document* document = Current();
    if (!document)
        return;
    QUndoStack* undo = document->undo;
    const QImage source = document->canvas->Image();
    QString selected;
    const QString suggested =
        QFileInfo(OVApplication::GetPathExport(), QFileInfo(document->path).completeBaseName()).filePath() +
        QStringLiteral(".png");
    const QString path = QFileDialog::getSaveFileName(this, tr("Export"), suggested,
                                                      OVImageFileManager::GetFilterForWrite(), &selected);
    OVDemoLists::ExportOptions options;
    if (path.isEmpty() || !OVDemoLists::AskExportOptions(this, &options))
        return;
    OVApplication::SetPathExport(QFileInfo(path).absolutePath());
    QString error;
    // In the working colour profile, which the file carries.
    QImage image = OVDemoColour::ToWorkingSpace(OVDemoLists::Fit(source, options.resolution), &error);
    bool written = !image.isNull() && m_host.Write(image, path, &error);
    // Over the chosen size: smaller by the square root of the excess, a few times at most.
    for (int attempt = 0; written && options.maxBytes > 0 && attempt < 4; ++attempt) {
        const qint64 bytes = QFileInfo(path).size();
        if (bytes <= options.maxBytes)
            break;
        const double scale = std::sqrt(double(options.maxBytes) / double(bytes)) * 0.95;
        image = image.scaled(image.size() * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        written = m_host.Write(image, path, &error);
    }
    if (written) {
        undo->setClean();
        m_status->setText(tr("Exported %1 (%2 x %3)").arg(path).arg(image.width()).arg(image.height()));
        if (OVRecentManager* recent = OVRecentManager::GetInstance())
            recent->PushRecent(path);
        OVDemoStatistics::Send(OVDemoStatistics::Export,
                               {{QStringLiteral("format"), QFileInfo(path).suffix().toLower()}});
    } else {
        QMessageBox::warning(this, tr("Export"), tr("%1 could not be written: %2").arg(path, error));
    }
}

bool OVDemoWindow::CloseDocument(int index)
{
    if (index < 0 || index >= m_documents.size())
        return false;
    if (!m_documents.at(index).undo->isClean()) {
        m_tabs->setCurrentIndex(index);
        const QMessageBox::StandardButton answer =
            QMessageBox::question(this, tr("Close"),
                                  tr("%1 has changes that were not exported. Close it anyway?")
                                      .arg(QFileInfo(m_documents.at(index).path).fileName()),
                                  QMessageBox::Close | QMessageBox::Cancel, QMessageBox::Cancel);
        if (answer != QMessageBox::Close)
            return false;
    }
    QWidget* page = m_tabs->widget(index);
    m_documents.removeAt(index);
    delete page;
    return true;
}

void OVDemoWindow::closeEvent(QCloseEvent* event)
{
    // Automated runs quit without asking.
    while (!m_autoQuit && !m_documents.isEmpty()) {
        if (!CloseDocument(m_documents.size() - 1)) {
            event->ignore();
            return;
        }
    }
    QMainWindow::closeEvent(event);
}

void OVDemoWindow::ShowCanvasToTool()
{
    if (OVSampleCanvasTool* tool = qobject_cast<OVSampleCanvasTool*>(OVToolGroupManager::GetImplicitAction()))
        tool->Show(Current() ? Current()->canvas : nullptr);
}

OVDemoWindow::Document* OVDemoWindow::Current()
{
    const int index = m_tabs ? m_tabs->currentIndex() : -1;
    return index >= 0 && index < m_documents.size() ? &m_documents[index] : nullptr;
}

void OVDemoWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void OVDemoWindow::dropEvent(QDropEvent* event)
{
    QStringList files;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    if (!files.isEmpty()) {
        OpenFiles(files);
        event->acceptProposedAction();
    }
}
