#pragma once

// Shared helpers of the test programs: an isolated profile, captured debug output and one
// ordered log of the signals of many objects.

#include <QColor>
#include <QtTest> // and with it all of QtCore, which the test programs take from here

#include <memory>
#include <type_traits>
#include <utility>

class OVApplication;

namespace OVTest {

// Points HOME and APPDATA at folders inside a fresh temporary folder (removed at exit) and
// selects the offscreen platform, so that nothing a test does reaches a real profile or
// display. Call it before any application object exists (Main() does); returns the folder.
QString IsolateEnvironment();

// The folder returned by IsolateEnvironment().
QString SandboxPath();

// Collects every Qt message while it lives. Nested captures each see every message.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    QStringList Messages() const;
    // Messages that contain text.
    QStringList Matching(const QString& text) const { return Messages().filter(text); }
    void Clear();

private:
    friend struct LogCaptureRegistry;
    QStringList m_messages;
};

// Matches one build-log line as qDebug() prints it (quoted, with \" and \\ escaped). file is the
// source path as the line names it ("src\\OVApplication.cpp"); line 0 matches any line number.
QRegularExpression BuildLogLine(const QString& file, const QString& message, int line = 0);

// The blank-separated words of text, so that a whole expected sequence fits on one line.
inline QStringList Words(const QString& text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// The '|'-separated parts of text, for expected lines that hold blanks.
inline QStringList Lines(const QString& text)
{
    return text.split(QLatin1Char('|'));
}

// Adds the columns of a _data() function: one of each type, under the names in the same order.
template <typename... Types>
void Columns(const char* const (&names)[sizeof...(Types)])
{
    int i = 0;
    static_cast<void>((QTest::addColumn<Types>(names[i++]), ...));
}

// Adds a row of a _data() function with the values of its columns.
template <typename... Values>
void Row(const char* name, const Values&... values)
{
    static_cast<void>((QTest::newRow(name) << ... << values));
}

// Text for a signal argument in a SignalLog entry: an object by its objectName() (else its class),
// other pointers as "ptr" or "null", enums as numbers, the rest as QVariant shows it.
QString Describe(const QColor& value);
QString Describe(const QObject* value);
template <typename T>
QString Describe(const T& value)
{
    using Pointee = std::remove_cv_t<std::remove_pointer_t<T>>;
    if constexpr (std::is_enum_v<T>)
        return QString::number(static_cast<long long>(value));
    else if constexpr (std::is_pointer_v<T> && std::is_base_of_v<QObject, Pointee>)
        return Describe(static_cast<const QObject*>(value));
    else if constexpr (std::is_pointer_v<T>)
        return value ? QStringLiteral("ptr") : QStringLiteral("null");
    else
        return QVariant::fromValue(value).toString();
}

// One ordered list of signal emissions across any number of objects, so that a test can
// compare a whole sequence: entries read "label(arg1,arg2)", where an object argument is
// shown by its objectName().
class SignalLog : public QObject
{
public:
    template <typename Sender, typename Signal>
    void Record(const Sender* sender, Signal signal, const QString& label)
    {
        connect(sender, signal, this, [this, label](const auto&... args) {
            QStringList parts;
            static_cast<void>((parts << ... << Describe(args)));
            m_entries << label + QLatin1Char('(') + parts.join(QLatin1Char(',')) + QLatin1Char(')');
        });
    }

    // Records each of the signals under its own name.
    template <typename Sender, typename... Signals>
    void RecordByName(const Sender* sender, Signals... each)
    {
        (Record(sender, each, QString::fromLatin1(QMetaMethod::fromSignal(each).name())), ...);
    }

    // Adds an entry of the test's own, such as a marker of when an event was processed.
    void Append(const QString& entry) { m_entries << entry; }
    QStringList Entries() const { return m_entries; }
    QStringList Take() { return std::exchange(m_entries, {}); }
    void Clear() { m_entries.clear(); }

private:
    QStringList m_entries;
};

// The messages logged while Main() made the application object.
QStringList& StartupMessages();

// The body of a test program's main(): an isolated profile, one application object (an
// OVApplication unless named) for the whole process, then the test object's functions.
template <typename TestObject, typename Application = OVApplication>
int Main(int argc, char** argv)
{
    IsolateEnvironment();
    auto startup = std::make_unique<LogCapture>();
    Application app(argc, argv);
    StartupMessages() = std::exchange(startup, nullptr)->Messages();
    TestObject test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace OVTest

// main() of a test program; the arguments are those of Main().
#define OV_TEST_MAIN(...)                                                                                    \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        return OVTest::Main<__VA_ARGS__>(argc, argv);                                                        \
    }
