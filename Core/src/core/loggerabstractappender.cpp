#include "loggerabstractappender.h"

LoggerAbstractAppender::LoggerAbstractAppender()
    : m_detailsLevel(Logger::Debug)
{
}

LoggerAbstractAppender::~LoggerAbstractAppender() = default;

Logger::LogLevel LoggerAbstractAppender::detailsLevel() const
{
    return Logger::LogLevel(m_detailsLevel.loadAcquire());
}

void LoggerAbstractAppender::setDetailsLevel(Logger::LogLevel level)
{
    m_detailsLevel.storeRelease(level);
}

void LoggerAbstractAppender::setDetailsLevel(const QString& level)
{
    setDetailsLevel(Logger::levelFromString(level));
}

void LoggerAbstractAppender::write(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
                                   const char* function, const QString& category, const QString& message)
{
    if (level < detailsLevel())
        return;
    QMutexLocker locker(&m_writeMutex);
    append(time, level, file, line, function, category, message);
}
