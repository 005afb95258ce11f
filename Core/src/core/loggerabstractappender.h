#ifndef LOGGERABSTRACTAPPENDER_H
#define LOGGERABSTRACTAPPENDER_H

#include "logger.h"

#include <QAtomicInt>
#include <QMutex>

/**
 * @brief Base of every destination of log messages.
 *
 * The logger calls write() for each message at or above detailsLevel();
 * write() serialises calls and hands the message to the virtual append().
 */
class VOCORE_EXPORT LoggerAbstractAppender
{
public:
    LoggerAbstractAppender();
    virtual ~LoggerAbstractAppender();

    /// The lowest level this appender receives; Debug by default.
    Logger::LogLevel detailsLevel() const;
    void setDetailsLevel(Logger::LogLevel level);
    void setDetailsLevel(const QString& level);

    /// Passes the message to append() when its level reaches detailsLevel().
    void write(const QDateTime& time, Logger::LogLevel level, const char* file, int line, const char* function,
               const QString& category, const QString& message);

protected:
    virtual void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
                        const char* function, const QString& category, const QString& message)
        = 0;

private:
    Q_DISABLE_COPY(LoggerAbstractAppender)

    QAtomicInt m_detailsLevel;
    QMutex m_writeMutex;
};

#endif // LOGGERABSTRACTAPPENDER_H
