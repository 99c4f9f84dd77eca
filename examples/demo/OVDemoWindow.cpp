#include "OVDemoWindow.h"

#include "OVDemoColour.h"
#include "OVDemoLists.h"
#include "OVDemoLook.h"
#include "OVDemoStatistics.h"

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVEndpointMessanger.h"
#include "OVImageFileManager.h"
#include "OVMenuManager.h"
#include "OVRecentManager.h"
#include "OVToolBarManager.h"
#include "OVToolWidgetManager.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QProgressDialog>
#include <QScreen>
#include <QScrollArea>
#include <QSplashScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include <cmath>

namespace {

// Menu ids of the host's own entries.
enum HostEntry
{
    FileOpen = 10,
    FileOpenRecent = 20,
    FileFavourite = 25,
    FileExport = 30,
    FileQuit = 1000,
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
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, [this](int index) {
        m_documents.removeAt(index);
        delete m_tabs->widget(index);
    });
    setCentralWidget(m_tabs);
    m_status = new QLabel(this);
    statusBar()->addWidget(m_status, 1);
    connect(&m_host, &OVDemoHost::Status, m_status, &QLabel::setText);

    BuildFileMenu();
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
                OVDemoAdjustment step{data.value(QStringLiteral("adjustment")).toString(), data};
                step.parameters.remove(QStringLiteral("adjustment"));
                ApplyToCurrent(step);
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

    QAction* quit = OVMenuManager::CreateAction(OVMenuManager::File, FileQuit);
    quit->setText(tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
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
    m_documents << Document{result.path, result.image};
    if (OVRecentManager* recent = OVRecentManager::GetInstance())
        recent->PushRecent(result.path);
    QScrollArea* area = new QScrollArea;
    area->setAlignment(Qt::AlignCenter);
    area->setWidget(new QLabel);
    const int index = m_tabs->addTab(area, QFileInfo(result.path).fileName());
    m_tabs->setTabToolTip(index, result.path);
    ShowDocument(index);
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

void OVDemoWindow::AskAndApply(const QString& uid)
{
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    const OVAdjustment* adjustment = registry ? registry->GetAdjustment(uid) : nullptr;
    if (!adjustment || !Current())
        return;
    OVDemoAdjustment step{uid, {}};
    for (const OVAdjustmentParameter& parameter : adjustment->GetParameters()) {
        bool ok = false;
        const int value =
            QInputDialog::getInt(this, adjustment->GetName(), parameter.name, parameter.defaultValue,
                                 parameter.minimum, parameter.maximum, 1, &ok);
        if (!ok)
            return;
        step.parameters.insert(parameter.name, value);
    }
    ApplyToCurrent(step);
}

void OVDemoWindow::ApplyToCurrent(const OVDemoAdjustment& step)
{
    Document* document = Current();
    if (!document)
        return;
    document->image = OVDemoHost::Apply(document->image, {step});
    OVDemoStatistics::Send(OVDemoStatistics::Adjust, {{QStringLiteral("adjustment"), step.uid}});
    ShowDocument(m_tabs->currentIndex());
}

void OVDemoWindow::Export()
{
    const Document* document = Current();
    if (!document)
        return;
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
    QImage image = OVDemoLists::Fit(document->image, options.resolution);
    QString error;
    bool written = m_host.Write(image, path, &error);
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
        m_status->setText(tr("Exported %1 (%2 x %3)").arg(path).arg(image.width()).arg(image.height()));
        if (OVRecentManager* recent = OVRecentManager::GetInstance())
            recent->PushRecent(path);
        OVDemoStatistics::Send(OVDemoStatistics::Export,
                               {{QStringLiteral("format"), QFileInfo(path).suffix().toLower()}});
    } else {
        QMessageBox::warning(this, tr("Export"), tr("%1 could not be written: %2").arg(path, error));
    }
}

void OVDemoWindow::ShowDocument(int index)
{
    if (index < 0 || index >= m_documents.size())
        return;
    QScrollArea* area = qobject_cast<QScrollArea*>(m_tabs->widget(index));
    QLabel* label = area ? qobject_cast<QLabel*>(area->widget()) : nullptr;
    if (!label)
        return;
    label->setPixmap(QPixmap::fromImage(m_documents.at(index).image));
    label->adjustSize();
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
