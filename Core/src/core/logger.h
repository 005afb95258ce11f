#ifndef LOGGER_H
#define LOGGER_H

#include "vocore_export.h"

#include <QDateTime>
#include <QDebug>
#include <QObject>
#include <QString>

class LoggerAbstractAppender;
class LoggerPrivate;

/**
 * @brief The process-wide logging facility (after the CuteLogger design).
 *
 * Log statements (LOG_TRACE ... LOG_FATAL) hand each message with its level,
 * source file, line and function signature to the logger, which passes it to
 * every registered appender whose details level it reaches. Appenders are not
 * owned by the logger; remove one before destroying it. Registering and
 * removing appenders is safe while other threads log.
 *
 * When no appender is registered, messages of level Warning and above go to
 * standard error, so that misuse is never silent.
 * @code
 * LoggerConsoleAppender console;
 * cuteLoggerInstance()->registerAppender(&console);
 * LOG_INFO() << "Loaded" << rows << "rows";
 * LOG_WARNING("Cannot open %s", qPrintable(path));
 * @endcode
 */
class VOCORE_EXPORT Logger
{
    Q_GADGET
public:
    /// Log levels; the numeric values are part of the interface.
    enum LogLevel {
        Trace = 0, ///< routine tracing
        Debug = 1, ///< debugging details
        Info = 2, ///< normal events
        Warning = 3, ///< something unexpected that the program copes with
        Error = 4, ///< misuse or a failed operation
        Fatal = 5 ///< the program cannot go on (logged; the logger does not abort)
    };
    Q_ENUM(LogLevel)

    Logger();
    explicit Logger(const QString& defaultCategory);
    ~Logger();

    /// "Trace", "Debug", "Info", "Warning", "Error" or "Fatal".
    static QString levelToString(LogLevel level);
    /// The level named @p s (case-insensitive); Debug for an unknown name.
    static LogLevel levelFromString(const QString& s);

    /// The process-wide logger, created on first use; null only while the process exits.
    static Logger* globalInstance();

    void registerAppender(LoggerAbstractAppender* appender);
    /// The appender receives only messages logged with @p category.
    void registerCategoryAppender(const QString& category, LoggerAbstractAppender* appender);
    void removeAppender(LoggerAbstractAppender* appender);

    /// Category given to messages logged without one; empty by default.
    void setDefaultCategory(const QString& category);
    QString defaultCategory() const;

    void write(const QDateTime& time, LogLevel level, const char* file, int line, const char* function,
               const char* category, const QString& message);
    void write(LogLevel level, const char* file, int line, const char* function, const char* category,
               const QString& message);

private:
    Q_DISABLE_COPY(Logger)
    LoggerPrivate* d;
};

/// The process-wide logger that the LOG_* statements write to.
VOCORE_EXPORT Logger* cuteLoggerInstance();

/**
 * @brief One log message on its way to the logger.
 *
 * Created on the stack by each LOG_* statement. write(format, ...) sends a
 * printf-style message at once; write() returns a QDebug stream whose text is
 * sent when this object is destroyed at the end of the statement.
 */
class VOCORE_EXPORT CuteMessageLogger
{
public:
    CuteMessageLogger(Logger* logger, Logger::LogLevel level, const char* file, int line, const char* function,
                      const char* category = nullptr);
    ~CuteMessageLogger();

    void write(const char* format, ...) const
#if defined(Q_CC_GNU) || defined(Q_CC_CLANG)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    void write(const QString& message) const;
    QDebug write();

private:
    Q_DISABLE_COPY(CuteMessageLogger)

    Logger* m_logger;
    Logger::LogLevel m_level;
    const char* m_file;
    int m_line;
    const char* m_function;
    const char* m_category;
    QString m_message;
    bool m_streamed = false;
};

#define CUTE_LOG_MESSAGE(level, category)                                                                    \
    CuteMessageLogger(cuteLoggerInstance(), level, __FILE__, __LINE__, Q_FUNC_INFO, category).write

#define LOG_TRACE CUTE_LOG_MESSAGE(Logger::Trace, nullptr)
#define LOG_DEBUG CUTE_LOG_MESSAGE(Logger::Debug, nullptr)
#define LOG_INFO CUTE_LOG_MESSAGE(Logger::Info, nullptr)
#define LOG_WARNING CUTE_LOG_MESSAGE(Logger::Warning, nullptr)
#define LOG_ERROR CUTE_LOG_MESSAGE(Logger::Error, nullptr)
#define LOG_FATAL CUTE_LOG_MESSAGE(Logger::Fatal, nullptr)

#define LOG_CTRACE(category) CUTE_LOG_MESSAGE(Logger::Trace, category)
#define LOG_CDEBUG(category) CUTE_LOG_MESSAGE(Logger::Debug, category)
#define LOG_CINFO(category) CUTE_LOG_MESSAGE(Logger::Info, category)
#define LOG_CWARNING(category) CUTE_LOG_MESSAGE(Logger::Warning, category)
#define LOG_CERROR(category) CUTE_LOG_MESSAGE(Logger::Error, category)
#define LOG_CFATAL(category) CUTE_LOG_MESSAGE(Logger::Fatal, category)

#endif // LOGGER_H
