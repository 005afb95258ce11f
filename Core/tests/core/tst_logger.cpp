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
    QDateTime time;
    Logger::LogLevel level;
    QString file;
    int line;
    QString function;
    QString category;
    QString message;
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
            { time, level, QString::fromUtf8(file), line, QString::fromUtf8(function), category, message });
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
class Registration {
public:
    explicit Registration(LoggerAbstractAppender* appender)
        : m_appender(appender)
    {
        cuteLoggerInstance()->registerAppender(appender);
    }
    ~Registration() { cuteLoggerInstance()->removeAppender(m_appender); }

private:
    LoggerAbstractAppender* m_appender;
};

const QDateTime s_fixedTime(QDate(2024, 3, 5), QTime(7, 8, 9, 45));
const char* const s_sampleFile = "Core/src/widgets/views/vtableview.cpp";
const char* const s_sampleFunction = "virtual void VTableView::onDoubleClicked(const QModelIndex&)";
} // namespace

class TestLogger : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void macroForms();
    void allLevels();
    void levelFiltering();
    void categories();
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

void TestLogger::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("loggerTest"));
}

void TestLogger::macroForms()
{
    RecordingAppender recorder;
    Registration registration(&recorder);

    const QDateTime before = QDateTime::currentDateTime();
    const int printfLine = __LINE__ + 1;
    LOG_INFO("value %d and %s", 42, "text");
    const int streamLine = __LINE__ + 1;
    LOG_WARNING() << "count" << 3 << QStringLiteral("quoted");
    const int plainLine = __LINE__ + 1;
    LOG_ERROR("no arguments");
    const QDateTime after = QDateTime::currentDateTime();

    QCOMPARE(recorder.records.size(), 3);
    const QString function = QString::fromUtf8(Q_FUNC_INFO);
    QCOMPARE(function, QStringLiteral("void TestLogger::macroForms()"));

    const Record& printfRecord = recorder.records.at(0);
    QCOMPARE(printfRecord.level, Logger::Info);
    QCOMPARE(printfRecord.file, QString::fromLatin1(s_thisFile));
    QCOMPARE(printfRecord.line, printfLine);
    QCOMPARE(printfRecord.function, function);
    QCOMPARE(printfRecord.category, QString());
    QCOMPARE(printfRecord.message, QStringLiteral("value 42 and text"));
    QVERIFY(printfRecord.time >= before && printfRecord.time <= after);

    // The stream form is sent once, when the statement ends, without QDebug's trailing space.
    const Record& streamRecord = recorder.records.at(1);
    QCOMPARE(streamRecord.level, Logger::Warning);
    QCOMPARE(streamRecord.file, QString::fromLatin1(s_thisFile));
    QCOMPARE(streamRecord.line, streamLine);
    QCOMPARE(streamRecord.function, function);
    QCOMPARE(streamRecord.message, QStringLiteral("count 3 \"quoted\""));

    const Record& plainRecord = recorder.records.at(2);
    QCOMPARE(plainRecord.level, Logger::Error);
    QCOMPARE(plainRecord.line, plainLine);
    QCOMPARE(plainRecord.message, QStringLiteral("no arguments"));
}

void TestLogger::allLevels()
{
    RecordingAppender recorder;
    Registration registration(&recorder);

    LOG_TRACE("t");
    LOG_DEBUG("d");
    LOG_INFO("i");
    LOG_WARNING("w");
    LOG_ERROR("e");
    LOG_FATAL("f");
    LOG_TRACE() << "t";
    LOG_DEBUG() << "d";
    LOG_INFO() << "i";
    LOG_WARNING() << "w";
    LOG_ERROR() << "e";
    LOG_FATAL() << "f";

    const QVector<Logger::LogLevel> once { Logger::Trace, Logger::Debug, Logger::Info, Logger::Warning,
        Logger::Error, Logger::Fatal };
    QCOMPARE(recorder.levels(), once + once);
    QStringList messages;
    for (const Record& r : qAsConst(recorder.records))
        messages << r.message;
    QCOMPARE(messages.join(QString()), QStringLiteral("tdiweftdiwef"));

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
    RecordingAppender neverRegistered(Logger::Trace);

    {
        Registration r1(&byDefault);
        Registration r2(&everything);
        Registration r3(&warnings);
        Registration r4(&fatalOnly);
        // A second registration must not double the messages.
        cuteLoggerInstance()->registerAppender(&warnings);

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
    QCOMPARE(neverRegistered.records.size(), 0);

    // Debug is the level a fresh appender starts with.
    LineAppender fresh;
    QCOMPARE(fresh.detailsLevel(), Logger::Debug);
}

void TestLogger::categories()
{
    RecordingAppender general;
    Registration registration(&general);
    LOG_CINFO("sql")() << "select";
    LOG_INFO("plain");
    QCOMPARE(general.records.size(), 2);
    QCOMPARE(general.records.at(0).category, QStringLiteral("sql"));
    QCOMPARE(general.records.at(0).message, QStringLiteral("select"));
    QCOMPARE(general.records.at(1).category, QString());
}

void TestLogger::formatPlaceholders_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");

    QTest::newRow("time default") << "%{time}"
                                  << "2024-03-05T07:08:09.045";
    QTest::newRow("time with format") << "%{time}{HH:mm}"
                                      << "07:08";
    QTest::newRow("time format then text") << "[%{time}{dd.MM.yyyy}]x"
                                           << "[05.03.2024]x";
    QTest::newRow("type") << "%{type}"
                          << "Warning";
    QTest::newRow("Type") << "%{Type}"
                          << "WARNING";
    QTest::newRow("typeOne") << "%{typeOne}"
                             << "w";
    QTest::newRow("TypeOne") << "%{TypeOne}"
                             << "W";
    QTest::newRow("File") << "%{File}" << s_sampleFile;
    QTest::newRow("file") << "%{file}"
                          << "vtableview.cpp";
    QTest::newRow("line") << "%{line}"
                          << "123";
    QTest::newRow("Function") << "%{Function}" << s_sampleFunction;
    QTest::newRow("function") << "%{function}"
                              << "VTableView::onDoubleClicked";
    QTest::newRow("category") << "%{category}"
                              << "sql";
    QTest::newRow("message") << "%{message}"
                             << "Hello, 100% world";
    QTest::newRow("appname") << "%{appname}"
                             << "loggerTest";
    QTest::newRow("pid") << "%{pid}" << QString::number(QCoreApplication::applicationPid());
    QTest::newRow("percent") << "%%"
                             << "%";
    QTest::newRow("percent in text") << "100%% sure"
                                     << "100% sure";
    QTest::newRow("percent before placeholder") << "%%%{line}"
                                                << "%123";
    QTest::newRow("left aligned") << "[%{type:-9}]"
                                  << "[Warning  ]";
    QTest::newRow("right aligned") << "[%{type:9}]"
                                   << "[  Warning]";
    QTest::newRow("width narrower than value") << "[%{type:-3}]"
                                               << "[Warning]";
    QTest::newRow("line width") << "[%{line:5}|%{line:-5}]"
                                << "[  123|123  ]";
    QTest::newRow("unknown placeholder") << "%{nonsense}"
                                         << "%{nonsense}";
    QTest::newRow("unclosed placeholder") << "a %{type"
                                          << "a %{type";
    QTest::newRow("lone percent at end") << "50%"
                                         << "50%";
    QTest::newRow("bad width") << "%{type:x}"
                               << "%{type:x}";
    QTest::newRow("no placeholders") << "plain text"
                                     << "plain text";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("combined")
        << "%{TypeOne} %{file}:%{line} <%{function}> [%{category}] %{message}\n"
        << "W vtableview.cpp:123 <VTableView::onDoubleClicked> [sql] Hello, 100% world\n";
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
    QCOMPARE(appender.formattedString(s_fixedTime, Logger::Info, s_sampleFile, 1, s_sampleFunction, QString(),
                 QStringLiteral("Updating view")),
        QStringLiteral("2024-03-05T07:08:09.045 [Info   ] <VTableView::onDoubleClicked> Updating view\n"));

    LoggerConsoleAppender console;
    QCOMPARE(console.format(), QStringLiteral("[%{type:-7}] <%{function}> %{message}\n"));

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

    QTest::newRow("virtual member") << s_sampleFunction << "VTableView::onDoubleClicked";
    QTest::newRow("const member") << "void A::f(int) const"
                                  << "A::f";
    QTest::newRow("free function") << "int main(int, char**)"
                                   << "main";
    QTest::newRow("static member") << "static QString VFileUtils::folder(const QString&)"
                                   << "VFileUtils::folder";
    QTest::newRow("namespace") << "QList<int> VCore::stringsToInts(const QStringList&)"
                               << "VCore::stringsToInts";
    QTest::newRow("reference return") << "const QString& Foo::name() const"
                                      << "Foo::name";
    QTest::newRow("pointer return") << "QString* Foo::ptr()"
                                    << "Foo::ptr";
    QTest::newRow("template return") << "std::map<int, QString> Foo::map() const"
                                     << "Foo::map";
    QTest::newRow("function type in return") << "std::function<void(int)> Foo::callback()"
                                             << "Foo::callback";
    QTest::newRow("class template") << "void Foo<T>::bar(T) [with T = int]"
                                    << "Foo<T>::bar";
    QTest::newRow("template with space") << "void Foo<std::pair<int, int> >::bar()"
                                         << "Foo<std::pair<int, int> >::bar";
    QTest::newRow("constructor") << "Foo::Foo(QObject*)"
                                 << "Foo::Foo";
    QTest::newRow("destructor") << "virtual Foo::~Foo()"
                                << "Foo::~Foo";
    QTest::newRow("call operator") << "void Foo::operator()(int)"
                                   << "Foo::operator()";
    QTest::newRow("less operator") << "bool Foo::operator<(const Foo&) const"
                                   << "Foo::operator<";
    QTest::newRow("greater operator") << "bool Foo::operator>(const Foo&) const"
                                      << "Foo::operator>";
    QTest::newRow("stream operator") << "QDebug operator<<(QDebug, const Foo&)"
                                     << "operator<<";
    QTest::newRow("arrow operator") << "Foo* Ptr::operator->() const"
                                    << "Ptr::operator->";
    QTest::newRow("assignment") << "Foo& Foo::operator=(const Foo&)"
                                << "Foo::operator=";
    QTest::newRow("conversion") << "Foo::operator QString() const"
                                << "Foo::operator QString";
    QTest::newRow("name containing operator") << "void Foo::operatorName(int)"
                                              << "Foo::operatorName";
    QTest::newRow("gcc anonymous namespace") << "void {anonymous}::helper()"
                                             << "{anonymous}::helper";
    QTest::newRow("clang anonymous namespace") << "void (anonymous namespace)::helper()"
                                               << "(anonymous namespace)::helper";
    QTest::newRow("no parameter list") << "plainName"
                                       << "plainName";
    QTest::newRow("empty") << ""
                           << "";
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
        const int second = __LINE__ + 1;
        LOG_ERROR() << "Grüße" << 2;
        // Nothing may wait in a buffer: a crash right after the statement must not lose the line.
        QFile partial(path);
        QVERIFY(partial.open(QIODevice::ReadOnly));
        const QByteArray expected
            = QStringLiteral("Info|tst_logger.cpp|%1|TestLogger::fileAppender|first 1\n"
                             "Error|tst_logger.cpp|%2|TestLogger::fileAppender|Grüße 2\n")
                  .arg(first)
                  .arg(second)
                  .toUtf8();
        QCOMPARE(partial.readAll(), expected);
    }

    // A second appender on the same file appends rather than truncates, in the default format.
    {
        LoggerFileAppender appender(path);
        appender.write(s_fixedTime, Logger::Warning, s_sampleFile, 7, s_sampleFunction, QString(),
            QStringLiteral("third"));
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(
        lines.at(2), QByteArray("2024-03-05T07:08:09.045 [Warning] <VTableView::onDoubleClicked> third"));
    QCOMPARE(lines.at(3), QByteArray());
}

void TestLogger::fileAppenderUnwritablePath()
{
    QTemporaryDir dir;
    const QString blocker = dir.filePath(QStringLiteral("plainfile"));
    {
        QFile f(blocker);
        QVERIFY(f.open(QIODevice::WriteOnly));
    }
    // A path below a regular file can never be created, whoever runs the test.
    const QString bad = blocker + QStringLiteral("/sub/app.log");
    const QString good = dir.filePath(QStringLiteral("good.log"));

    LoggerFileAppender appender(bad);
    appender.setFormat(QStringLiteral("%{message}\n"));
    appender.write(
        s_fixedTime, Logger::Error, s_sampleFile, 1, s_sampleFunction, QString(), QStringLiteral("lost"));
    appender.write(
        s_fixedTime, Logger::Error, s_sampleFile, 1, s_sampleFunction, QString(), QStringLiteral("lost"));
    QVERIFY(!QFile::exists(bad));

    appender.setFileName(good);
    appender.write(
        s_fixedTime, Logger::Error, s_sampleFile, 1, s_sampleFunction, QString(), QStringLiteral("kept"));
    QFile file(good);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kept\n"));

    // No file name at all drops messages quietly.
    LoggerFileAppender unnamed;
    unnamed.write(
        s_fixedTime, Logger::Error, s_sampleFile, 1, s_sampleFunction, QString(), QStringLiteral("x"));
    QCOMPARE(unnamed.fileName(), QString());
}

void TestLogger::consoleAppender()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("stderr.txt"));

    // Point file descriptor 2 at a file for the duration of one message.
    std::fflush(stderr);
    const int saved = ::dup(2);
    QVERIFY(saved >= 0);
    {
        QFile capture(path);
        QVERIFY(capture.open(QIODevice::WriteOnly));
        QVERIFY(::dup2(capture.handle(), 2) >= 0);
        LoggerConsoleAppender console;
        console.write(s_fixedTime, Logger::Error, s_sampleFile, 1, s_sampleFunction, QString(),
            QStringLiteral("to stderr"));
        console.write(s_fixedTime, Logger::Trace, s_sampleFile, 1, s_sampleFunction, QString(),
            QStringLiteral("filtered"));
        std::fflush(stderr);
        ::dup2(saved, 2);
    }
    ::close(saved);

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("[Error  ] <VTableView::onDoubleClicked> to stderr\n"));
}

void TestLogger::appendersChangeWhileThreadsLog()
{
    const int threadCount = 4;
    const int perThread = 3000;

    RecordingAppender permanent;
    Registration registration(&permanent);

    // A string appender whose format flips while other threads format through it.
    LineAppender flipping;
    flipping.setFormat(QStringLiteral("A:%{message}"));
    Registration flippingRegistration(&flipping);

    QAtomicInt running(threadCount);
    std::vector<std::unique_ptr<QThread>> loggers;
    for (int t = 0; t < threadCount; ++t) {
        loggers.emplace_back(QThread::create([t, &running] {
            for (int i = 0; i < perThread; ++i)
                LOG_DEBUG("thread %d message %d", t, i);
            running.fetchAndSubOrdered(1);
        }));
    }

    int cycles = 0;
    int delivered = 0;
    std::unique_ptr<QThread> churn(QThread::create([&] {
        while (running.loadAcquire() > 0 || cycles < 50) {
            auto temporary = std::make_unique<RecordingAppender>(Logger::Debug);
            cuteLoggerInstance()->registerAppender(temporary.get());
            QThread::yieldCurrentThread();
            flipping.setFormat(cycles % 2 ? QStringLiteral("A:%{message}") : QStringLiteral("B:%{message}"));
            cuteLoggerInstance()->removeAppender(temporary.get());
            // Once removed, no thread may still be inside it: its count is final.
            const int counted = temporary->count.loadAcquire();
            QThread::yieldCurrentThread();
            if (temporary->count.loadAcquire() != counted)
                delivered = -1000000;
            else
                delivered += counted;
            ++cycles;
        }
    }));

    churn->start();
    for (auto& thread : loggers)
        thread->start();
    for (auto& thread : loggers)
        QVERIFY(thread->wait(60000));
    QVERIFY(churn->wait(60000));

    QVERIFY(cycles >= 50);
    QVERIFY2(delivered >= 0, "a removed appender still received messages");
    QVERIFY(delivered <= threadCount * perThread);

    // The permanent appender got every message, in order within each thread.
    QCOMPARE(permanent.records.size(), threadCount * perThread);
    QVector<int> next(threadCount, 0);
    for (const Record& r : qAsConst(permanent.records)) {
        const QStringList parts = r.message.split(QLatin1Char(' '));
        QCOMPARE(parts.size(), 4);
        const int t = parts.at(1).toInt();
        QVERIFY(t >= 0 && t < threadCount);
        QCOMPARE(parts.at(3).toInt(), next[t]);
        ++next[t];
        QCOMPARE(r.level, Logger::Debug);
    }
    QCOMPARE(next, QVector<int>(threadCount, perThread));

    // Every formatted line used one whole format, never a mix.
    QCOMPARE(flipping.lines.size(), threadCount * perThread);
    for (const QString& line : qAsConst(flipping.lines)) {
        if (!line.startsWith(QLatin1String("A:thread ")) && !line.startsWith(QLatin1String("B:thread ")))
            QFAIL(qPrintable(line));
    }
}

QTEST_GUILESS_MAIN(TestLogger)
#include "tst_logger.moc"
