#include "OVTestSupport.h"

#include <vector>

namespace OVTest {

namespace {

std::unique_ptr<QTemporaryDir>& Sandbox()
{
    static std::unique_ptr<QTemporaryDir> sandbox;
    return sandbox;
}

} // namespace

QString IsolateEnvironment()
{
    auto& sandbox = Sandbox();
    if (!sandbox) {
        sandbox = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/ovcore-test-XXXXXX"));
        if (!sandbox->isValid())
            qFatal("Cannot create a temporary folder for the test profile");
        QDir(sandbox->path()).mkpath(QStringLiteral("home"));
        QDir(sandbox->path()).mkpath(QStringLiteral("appdata"));
        qputenv("HOME", QFile::encodeName(sandbox->path() + QStringLiteral("/home")));
        qputenv("USERPROFILE", QFile::encodeName(sandbox->path() + QStringLiteral("/home")));
        qputenv("APPDATA", QFile::encodeName(sandbox->path() + QStringLiteral("/appdata")));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(sandbox->path() + QStringLiteral("/home/.config")));
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    return sandbox->path();
}

QStringList& StartupMessages()
{
    static QStringList messages;
    return messages;
}

QString SandboxPath()
{
    return Sandbox() ? Sandbox()->path() : QString();
}

struct LogCaptureRegistry
{
    QMutex mutex;
    std::vector<LogCapture*> captures;
    QtMessageHandler previous = nullptr;

    static LogCaptureRegistry& Get()
    {
        static LogCaptureRegistry registry;
        return registry;
    }

    static void Handler(QtMsgType type, const QMessageLogContext& context, const QString& message)
    {
        LogCaptureRegistry& registry = Get();
        QtMessageHandler previous;
        {
            QMutexLocker locker(&registry.mutex);
            for (LogCapture* capture : registry.captures)
                capture->m_messages << message;
            previous = registry.previous;
        }
        if (previous)
            previous(type, context, message);
    }
};

LogCapture::LogCapture()
{
    LogCaptureRegistry& registry = LogCaptureRegistry::Get();
    QMutexLocker locker(&registry.mutex);
    // QTest installs a handler of its own when it starts; take the channel back each time.
    const QtMessageHandler previous = qInstallMessageHandler(&LogCaptureRegistry::Handler);
    if (previous != &LogCaptureRegistry::Handler)
        registry.previous = previous;
    registry.captures.push_back(this);
}

LogCapture::~LogCapture()
{
    LogCaptureRegistry& registry = LogCaptureRegistry::Get();
    QMutexLocker locker(&registry.mutex);
    registry.captures.erase(std::find(registry.captures.begin(), registry.captures.end(), this));
    if (registry.captures.empty())
        qInstallMessageHandler(registry.previous);
}

QStringList LogCapture::Messages() const
{
    QMutexLocker locker(&LogCaptureRegistry::Get().mutex);
    return m_messages;
}

void LogCapture::Clear()
{
    QMutexLocker locker(&LogCaptureRegistry::Get().mutex);
    m_messages.clear();
}

QRegularExpression BuildLogLine(const QString& file, const QString& message, int line)
{
    QString quoted = file;
    quoted.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    return QRegularExpression(
        QStringLiteral("^\"Build date=[A-Z][a-z]{2} [ 0-9]\\d \\d{4}, time=\\d\\d:\\d\\d:\\d\\d\\. Line=%1, "
                       "file=\\\\\"%2\\\\\"\\. %3\"$")
            .arg(line > 0 ? QString::number(line) : QStringLiteral("\\d+"),
                 QRegularExpression::escape(quoted), QRegularExpression::escape(message)));
}

QString Describe(const QColor& value)
{
    return value.isValid() ? value.name(QColor::HexArgb) : QStringLiteral("invalid");
}

QString Describe(const QObject* value)
{
    if (!value)
        return QStringLiteral("null");
    return value->objectName().isEmpty() ? QString::fromLatin1(value->metaObject()->className())
                                         : value->objectName();
}

} // namespace OVTest
