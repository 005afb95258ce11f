#include "vtestsettings.h"

#include <logger.h>
#include <loggerabstractappender.h>
#include <loggerabstractstringappender.h>
#include <loggerconsoleappender.h>
#include <loggerfileappender.h>

#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {
const char* const s_thisFile = "Core/tests/core/tst_logger.cpp";

struct Record {
    Logger::LogLevel level;
    QString file;
    int line;
    QString function, category, message;
    QDateTime time;
};

// Keeps every argument the logger hands over; append() is serialised by the base class.
class RecordingAppender : public LoggerAbstractAppender {
public:
    explicit RecordingAppender(Logger::LogLevel level = Logger::Trace) { setDetailsLevel(level); }
    QVector<Record> records;
    QAtomicInt count;
    QVector<Logger::LogLevel> levels() const
    {
        QVector<Logger::LogLevel> result;
        for (const Record& r : records)
            result.append(r.level);
        return result;
    }

protected:
    void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
        const char* function, const QString& category, const QString& message) override
    {
        records.append(
            { level, QString::fromUtf8(file), line, QString::fromUtf8(function), category, message, time });
        count.fetchAndAddOrdered(1);
    }
};

// Keeps the formatted lines instead of writing them anywhere.
class LineAppender : public LoggerAbstractStringAppender {
public:
    QStringList lines;

protected:
    void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
        const char* function, const QString& category, const QString& message) override
    {
        lines.append(formattedString(time, level, file, line, function, category, message));
    }
};

// Registers an appender with the global logger for the lifetime of a test case.
struct Registration {
    explicit Registration(LoggerAbstractAppender* a)
        : appender(a)
    {
        cuteLoggerInstance()->registerAppender(a);
    }
    ~Registration() { cuteLoggerInstance()->removeAppender(appender); }
    LoggerAbstractAppender* appender;
};

const QDateTime s_fixedTime(QDate(2024, 3, 5), QTime(7, 8, 9, 45));
const char* const s_sampleFile = "Core/src/widgets/views/vtableview.cpp";
const char* const s_sampleFunction = "virtual void VTableView::onDoubleClicked(const QModelIndex&)";

void row(const char* name, const QString& input, const QString& expected)
{
    QTest::newRow(name) << input << expected;
}

void writeAt(LoggerAbstractAppender& appender, Logger::LogLevel level, const char* message)
{
    appender.write(
        s_fixedTime, level, s_sampleFile, 7, s_sampleFunction, QString(), QString::fromUtf8(message));
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}
} // namespace

class TestLogger : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("loggerTest")); }
    void macroForms();
    void levelFiltering();
    void formatPlaceholders_data();
    void formatPlaceholders();
    void defaultFormats();
    void stripFunctionName_data();
    void stripFunctionName();
    void fileAppender();
    void fileAppenderUnwritablePath();
    void consoleAppender();
    void appendersChangeWhileThreadsLog();

private:
    VTestSettings m_settings;
};

void TestLogger::macroForms()
{
    RecordingAppender recorder;
    Registration registration(&recorder);

    const QDateTime before = QDateTime::currentDateTime();
    const int firstLine = __LINE__ + 1;
    LOG_INFO("value %d and %s", 42, "text");
    LOG_WARNING() << "count" << 3 << QStringLiteral("quoted"); // sent once, no trailing space
    LOG_ERROR("no arguments");
    LOG_CINFO("sql")() << "select";
    const QDateTime after = QDateTime::currentDateTime();
    LOG_TRACE("t");
    LOG_DEBUG("d");
    LOG_FATAL("f");
    LOG_TRACE() << "t";
    LOG_DEBUG() << "d";
    LOG_INFO() << "i";
    LOG_ERROR() << "e";
    LOG_FATAL() << "f";

    QCOMPARE(recorder.levels(),
        (QVector<Logger::LogLevel> { Logger::Info, Logger::Warning, Logger::Error, Logger::Info,
            Logger::Trace, Logger::Debug, Logger::Fatal, Logger::Trace, Logger::Debug, Logger::Info,
            Logger::Error, Logger::Fatal }));
    const QStringList messages { "value 42 and text", "count 3 \"quoted\"", "no arguments", "select" };
    const QStringList categories { QString(), QString(), QString(), "sql" };
    for (int i = 0; i < 4; ++i) {
        const Record& r = recorder.records.at(i);
        QCOMPARE(r.file, QString::fromLatin1(s_thisFile));
        QCOMPARE(r.line, firstLine + i);
        QCOMPARE(r.function, QStringLiteral("void TestLogger::macroForms()"));
        QCOMPARE(r.category, categories.at(i));
        QCOMPARE(r.message, messages.at(i));
        QVERIFY(r.time >= before && r.time <= after);
    }

    // The widget library passes the levels as plain integers.
    QCOMPARE(int(Logger::Trace), 0);
    QCOMPARE(int(Logger::Fatal), 5);
    QCOMPARE(Logger::levelToString(Logger::Warning), QStringLiteral("Warning"));
    QCOMPARE(Logger::levelFromString(QStringLiteral("error")), Logger::Error);
    QCOMPARE(Logger::levelFromString(QStringLiteral("nonsense")), Logger::Debug);
}

void TestLogger::levelFiltering()
{
    RecordingAppender byDefault(Logger::Trace);
    byDefault.setDetailsLevel(Logger::Debug);
    RecordingAppender everything(Logger::Trace);
    RecordingAppender warnings(Logger::Warning);
    RecordingAppender fatalOnly;
    fatalOnly.setDetailsLevel(QStringLiteral("Fatal"));
    {
        Registration r1(&byDefault);
        Registration r2(&everything);
        Registration r3(&warnings);
        Registration r4(&fatalOnly);
        cuteLoggerInstance()->registerAppender(&warnings); // must not double the messages
        for (int level = Logger::Trace; level <= Logger::Fatal; ++level)
            CuteMessageLogger(cuteLoggerInstance(), Logger::LogLevel(level), __FILE__, __LINE__, Q_FUNC_INFO)
                .write("level %d", level);
    }
    LOG_FATAL("after removal");

    QCOMPARE(byDefault.levels(),
        (QVector<Logger::LogLevel> {
            Logger::Debug, Logger::Info, Logger::Warning, Logger::Error, Logger::Fatal }));
    QCOMPARE(everything.records.size(), 6);
    QCOMPARE(everything.records.first().message, QStringLiteral("level 0"));
    QCOMPARE(
        warnings.levels(), (QVector<Logger::LogLevel> { Logger::Warning, Logger::Error, Logger::Fatal }));
    QCOMPARE(fatalOnly.levels(), QVector<Logger::LogLevel> { Logger::Fatal });
    QCOMPARE(fatalOnly.detailsLevel(), Logger::Fatal);
    QCOMPARE(LineAppender().detailsLevel(), Logger::Debug);
}

void TestLogger::formatPlaceholders_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");
    row("time default", "%{time}", "2024-03-05T07:08:09.045");
    row("time format then text", "[%{time}{dd.MM.yyyy}]x", "[05.03.2024]x");
    row("type", "%{type}", "Warning");
    row("Type", "%{Type}", "WARNING");
    row("typeOne", "%{typeOne}", "w");
    row("TypeOne", "%{TypeOne}", "W");
    row("File", "%{File}", s_sampleFile);
    row("file", "%{file}", "vtableview.cpp");
    row("line", "%{line}", "123");
    row("Function", "%{Function}", s_sampleFunction);
    row("function", "%{function}", "VTableView::onDoubleClicked");
    row("category", "%{category}", "sql");
    row("message", "%{message}", "Hello, 100% world");
    row("appname", "%{appname}", "loggerTest");
    row("pid", "%{pid}", QString::number(QCoreApplication::applicationPid()));
    row("percent in text", "100%% sure", "100% sure");
    row("percent before placeholder", "%%%{line}", "%123");
    row("aligned", "[%{type:-9}|%{line:5}]", "[Warning  |  123]");
    row("width narrower than value", "[%{type:-3}]", "[Warning]");
    row("unknown placeholder", "%{nonsense}", "%{nonsense}");
    row("unclosed placeholder", "a %{type", "a %{type");
    row("lone percent at end", "50%", "50%");
    row("bad width", "%{type:x}", "%{type:x}");
    row("empty", "", "");
}

void TestLogger::formatPlaceholders()
{
    QFETCH(QString, format);
    QFETCH(QString, expected);
    LineAppender appender;
    appender.setFormat(format);
    QCOMPARE(appender.format(), format);
    QCOMPARE(appender.formattedString(s_fixedTime, Logger::Warning, s_sampleFile, 123, s_sampleFunction,
                 QStringLiteral("sql"), QStringLiteral("Hello, 100% world")),
        expected);
}

void TestLogger::defaultFormats()
{
    LineAppender appender;
    QCOMPARE(appender.format(),
        QStringLiteral("%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n"));
    QCOMPARE(LoggerConsoleAppender().format(), QStringLiteral("[%{type:-7}] <%{function}> %{message}\n"));

    // The thread id placeholder names the calling thread.
    appender.setFormat(QStringLiteral("%{threadid}"));
    const QString id
        = appender.formattedString(s_fixedTime, Logger::Info, nullptr, 0, nullptr, QString(), QString());
    QVERIFY2(id.startsWith(QLatin1String("0x")), qPrintable(id));
    bool ok = false;
    QCOMPARE(quintptr(id.mid(2).toULongLong(&ok, 16)), quintptr(QThread::currentThreadId()));
    QVERIFY(ok);

    // Null file and function pointers give empty fields.
    appender.setFormat(QStringLiteral("<%{File}|%{file}|%{Function}|%{function}>"));
    QCOMPARE(appender.formattedString(s_fixedTime, Logger::Info, nullptr, 0, nullptr, QString(), QString()),
        QStringLiteral("<|||>"));
}

void TestLogger::stripFunctionName_data()
{
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("expected");
    row("virtual member", s_sampleFunction, "VTableView::onDoubleClicked");
    row("const member", "void A::f(int) const", "A::f");
    row("free function", "int main(int, char**)", "main");
    row("static member", "static QString VFileUtils::folder(const QString&)", "VFileUtils::folder");
    row("reference return", "const QString& Foo::name() const", "Foo::name");
    row("template return", "std::map<int, QString> Foo::map() const", "Foo::map");
    row("function type in return", "std::function<void(int)> Foo::callback()", "Foo::callback");
    row("class template", "void Foo<T>::bar(T) [with T = int]", "Foo<T>::bar");
    row("template with space", "void Foo<std::pair<int, int> >::bar()", "Foo<std::pair<int, int> >::bar");
    row("constructor", "Foo::Foo(QObject*)", "Foo::Foo");
    row("destructor", "virtual Foo::~Foo()", "Foo::~Foo");
    row("call operator", "void Foo::operator()(int)", "Foo::operator()");
    row("less operator", "bool Foo::operator<(const Foo&) const", "Foo::operator<");
    row("stream operator", "QDebug operator<<(QDebug, const Foo&)", "operator<<");
    row("arrow operator", "Foo* Ptr::operator->() const", "Ptr::operator->");
    row("conversion", "Foo::operator QString() const", "Foo::operator QString");
    row("name containing operator", "void Foo::operatorName(int)", "Foo::operatorName");
    row("gcc anonymous namespace", "void {anonymous}::helper()", "{anonymous}::helper");
    row("clang anonymous namespace", "void (anonymous namespace)::helper()", "(anonymous namespace)::helper");
    row("no parameter list", "plainName", "plainName");
    row("empty", "", "");
}

void TestLogger::stripFunctionName()
{
    QFETCH(QString, signature);
    QFETCH(QString, expected);
    QCOMPARE(LoggerAbstractStringAppender::stripFunctionName(signature.toUtf8().constData()), expected);
    QCOMPARE(LoggerAbstractStringAppender::stripFunctionName(nullptr), QString());
}

void TestLogger::fileAppender()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("app.log"));
    {
        LoggerFileAppender appender(path);
        QCOMPARE(appender.fileName(), path);
        appender.setDetailsLevel(Logger::Info);
        appender.setFormat(QStringLiteral("%{type}|%{file}|%{line}|%{function}|%{message}\n"));
        Registration registration(&appender);
        const int first = __LINE__ + 1;
        LOG_INFO("first %d", 1);
        LOG_DEBUG("below the details level");
        LOG_ERROR() << "Grüße" << 2;
        // Nothing may wait in a buffer, so the file is read while the appender lives.
        QCOMPARE(readFile(path),
            QStringLiteral("Info|tst_logger.cpp|%1|TestLogger::fileAppender|first 1\n"
                           "Error|tst_logger.cpp|%2|TestLogger::fileAppender|Grüße 2\n")
                .arg(first)
                .arg(first + 2)
                .toUtf8());
    }
    // A second appender on the same file appends in the default format.
    {
        LoggerFileAppender appender(path);
        writeAt(appender, Logger::Warning, "third");
    }
    const QList<QByteArray> lines = readFile(path).split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(
        lines.at(2), QByteArray("2024-03-05T07:08:09.045 [Warning] <VTableView::onDoubleClicked> third"));
    QCOMPARE(lines.at(3), QByteArray());
}

void TestLogger::fileAppenderUnwritablePath()
{
    QTemporaryDir dir;
    const QString blocker = dir.filePath(QStringLiteral("plainfile"));
    QFile f(blocker);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.close();
    // A path below a regular file can never be created, whoever runs the test.
    const QString bad = blocker + QStringLiteral("/sub/app.log");

    LoggerFileAppender appender(bad);
    appender.setFormat(QStringLiteral("%{message}\n"));
    writeAt(appender, Logger::Error, "lost");
    writeAt(appender, Logger::Error, "lost");
    QVERIFY(!QFile::exists(bad));

    appender.setFileName(dir.filePath(QStringLiteral("good.log")));
    writeAt(appender, Logger::Error, "kept");
    QCOMPARE(readFile(dir.filePath(QStringLiteral("good.log"))), QByteArray("kept\n"));

    LoggerFileAppender unnamed; // drops messages quietly
    writeAt(unnamed, Logger::Error, "x");
    QCOMPARE(unnamed.fileName(), QString());
}

void TestLogger::consoleAppender()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("stderr.txt"));
    // Point file descriptor 2 at a file for the duration of two messages.
    std::fflush(stderr);
    const int saved = ::dup(2);
    QVERIFY(saved >= 0);
    {
        QFile capture(path);
        QVERIFY(capture.open(QIODevice::WriteOnly));
        QVERIFY(::dup2(capture.handle(), 2) >= 0);
        LoggerConsoleAppender console;
        writeAt(console, Logger::Error, "to stderr");
        writeAt(console, Logger::Trace, "filtered");
        std::fflush(stderr);
        ::dup2(saved, 2);
    }
    ::close(saved);
    QCOMPARE(readFile(path), QByteArray("[Error  ] <VTableView::onDoubleClicked> to stderr\n"));
}

void TestLogger::appendersChangeWhileThreadsLog()
{
    const int threadCount = 4;
    const int perThread = 3000;
    RecordingAppender permanent;
    Registration registration(&permanent);
    LineAppender flipping; // its format flips while other threads format through it
    flipping.setFormat(QStringLiteral("A:%{message}"));
    Registration flippingRegistration(&flipping);

    QAtomicInt running(threadCount);
    std::vector<std::unique_ptr<QThread>> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back(QThread::create([t, &running] {
            for (int i = 0; i < perThread; ++i)
                LOG_DEBUG("thread %d message %d", t, i);
            running.fetchAndSubOrdered(1);
        }));
    }
    int cycles = 0;
    int delivered = 0;
    threads.emplace_back(QThread::create([&] {
        for (; running.loadAcquire() > 0 || cycles < 50; ++cycles) {
            RecordingAppender temporary(Logger::Debug);
            cuteLoggerInstance()->registerAppender(&temporary);
            QThread::yieldCurrentThread();
            flipping.setFormat(cycles % 2 ? QStringLiteral("A:%{message}") : QStringLiteral("B:%{message}"));
            cuteLoggerInstance()->removeAppender(&temporary);
            // Once removed, no thread may still be inside it: its count is final.
            const int counted = temporary.count.loadAcquire();
            QThread::yieldCurrentThread();
            delivered = temporary.count.loadAcquire() != counted ? -1000000 : delivered + counted;
        }
    }));
    for (auto& thread : threads)
        thread->start();
    for (auto& thread : threads)
        QVERIFY(thread->wait(60000));

    QVERIFY(cycles >= 50);
    QVERIFY2(delivered >= 0 && delivered <= threadCount * perThread, "a removed appender still got messages");
    // Every message arrived, in order within each thread, and each line used one whole format.
    QCOMPARE(permanent.records.size(), threadCount * perThread);
    QVector<int> next(threadCount, 0);
    for (const Record& r : qAsConst(permanent.records)) {
        const QStringList parts = r.message.split(QLatin1Char(' '));
        QCOMPARE(parts.size(), 4);
        const int t = parts.at(1).toInt();
        QVERIFY(t >= 0 && t < threadCount);
        QCOMPARE(parts.at(3).toInt(), next[t]++);
        QCOMPARE(r.level, Logger::Debug);
    }
    QCOMPARE(next, QVector<int>(threadCount, perThread));
    QCOMPARE(flipping.lines.size(), threadCount * perThread);
    for (const QString& line : qAsConst(flipping.lines))
        QVERIFY2(line.startsWith(QLatin1String("A:thread ")) || line.startsWith(QLatin1String("B:thread ")),
            qPrintable(line));
}

QTEST_GUILESS_MAIN(TestLogger)
#include "tst_logger.moc"
