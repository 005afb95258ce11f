#include "logger.h"

#include "loggerabstractappender.h"

#include <QMultiHash>
#include <QReadWriteLock>
#include <QVector>

#include <cstdarg>
#include <cstdio>

class LoggerPrivate
{
public:
    // Readers are the threads that log; writers register and remove appenders.
    // Holding the read lock for the whole dispatch makes removeAppender wait
    // until no thread is still inside the appender it removes.
    mutable QReadWriteLock lock{QReadWriteLock::Recursive};
    QVector<LoggerAbstractAppender*> appenders;
    QMultiHash<QString, LoggerAbstractAppender*> categoryAppenders;
    QString defaultCategory;
};

namespace {
Q_GLOBAL_STATIC(Logger, s_globalLogger)

const char* const s_levelNames[] = {"Trace", "Debug", "Info", "Warning", "Error", "Fatal"};

void writeToStderr(Logger::LogLevel level, const char* function, const QString& message)
{
    const QByteArray line = QStringLiteral("[%1] <%2> %3\n")
                                .arg(Logger::levelToString(level), -7)
                                .arg(QString::fromUtf8(function ? function : ""), message)
                                .toLocal8Bit();
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fflush(stderr);
}
} // namespace

Logger::Logger()
    : d(new LoggerPrivate)
{
}

Logger::Logger(const QString& defaultCategory)
    : Logger()
{
    d->defaultCategory = defaultCategory;
}

Logger::~Logger()
{
    delete d;
}

QString Logger::levelToString(LogLevel level)
{
    if (level < Trace || level > Fatal)
        return QString();
    return QString::fromLatin1(s_levelNames[level]);
}

Logger::LogLevel Logger::levelFromString(const QString& s)
{
    const QString name = s.trimmed();
    for (int i = Trace; i <= Fatal; ++i) {
        if (name.compare(QLatin1String(s_levelNames[i]), Qt::CaseInsensitive) == 0)
            return LogLevel(i);
    }
    return Debug;
}

Logger* Logger::globalInstance()
{
    return s_globalLogger();
}

void Logger::registerAppender(LoggerAbstractAppender* appender)
{
    if (!appender)
        return;
    QWriteLocker locker(&d->lock);
    if (!d->appenders.contains(appender))
        d->appenders.append(appender);
}

void Logger::registerCategoryAppender(const QString& category, LoggerAbstractAppender* appender)
{
    if (!appender)
        return;
    QWriteLocker locker(&d->lock);
    if (!d->categoryAppenders.contains(category, appender))
        d->categoryAppenders.insert(category, appender);
}

void Logger::removeAppender(LoggerAbstractAppender* appender)
{
    QWriteLocker locker(&d->lock);
    d->appenders.removeAll(appender);
    for (auto it = d->categoryAppenders.begin(); it != d->categoryAppenders.end();) {
        if (it.value() == appender)
            it = d->categoryAppenders.erase(it);
        else
            ++it;
    }
}

void Logger::setDefaultCategory(const QString& category)
{
    QWriteLocker locker(&d->lock);
    d->defaultCategory = category;
}

QString Logger::defaultCategory() const
{
    QReadLocker locker(&d->lock);
    return d->defaultCategory;
}

void Logger::write(const QDateTime& time, LogLevel level, const char* file, int line, const char* function,
                   const char* category, const QString& message)
{
    QReadLocker locker(&d->lock);
    const QString categoryName = category ? QString::fromLatin1(category) : d->defaultCategory;
    bool delivered = false;
    if (categoryName.isEmpty() || d->categoryAppenders.isEmpty()) {
        for (LoggerAbstractAppender* appender : qAsConst(d->appenders)) {
            appender->write(time, level, file, line, function, categoryName, message);
            delivered = true;
        }
    } else {
        const auto range = d->categoryAppenders.equal_range(categoryName);
        for (auto it = range.first; it != range.second; ++it) {
            it.value()->write(time, level, file, line, function, categoryName, message);
            delivered = true;
        }
        if (!delivered) {
            for (LoggerAbstractAppender* appender : qAsConst(d->appenders)) {
                appender->write(time, level, file, line, function, categoryName, message);
                delivered = true;
            }
        }
    }
    if (!delivered && d->categoryAppenders.isEmpty() && level >= Warning)
        writeToStderr(level, function, message);
}

void Logger::write(LogLevel level, const char* file, int line, const char* function, const char* category,
                   const QString& message)
{
    write(QDateTime::currentDateTime(), level, file, line, function, category, message);
}

Logger* cuteLoggerInstance()
{
    return Logger::globalInstance();
}

CuteMessageLogger::CuteMessageLogger(Logger* logger, Logger::LogLevel level, const char* file, int line,
                                     const char* function, const char* category)
    : m_logger(logger)
    , m_level(level)
    , m_file(file)
    , m_line(line)
    , m_function(function)
    , m_category(category)
{
}

CuteMessageLogger::~CuteMessageLogger()
{
    if (!m_streamed || !m_logger)
        return;
    // QDebug separates items with a space and leaves one after the last item.
    if (m_message.endsWith(QLatin1Char(' ')))
        m_message.chop(1);
    m_logger->write(m_level, m_file, m_line, m_function, m_category, m_message);
}

void CuteMessageLogger::write(const char* format, ...) const
{
    if (!m_logger)
        return;
    va_list args;
    va_start(args, format);
    const QString message = QString::vasprintf(format ? format : "", args);
    va_end(args);
    m_logger->write(m_level, m_file, m_line, m_function, m_category, message);
}

void CuteMessageLogger::write(const QString& message) const
{
    if (m_logger)
        m_logger->write(m_level, m_file, m_line, m_function, m_category, message);
}

QDebug CuteMessageLogger::write()
{
    m_streamed = true;
    return QDebug(&m_message);
}
