#ifndef LOGGERCONSOLEAPPENDER_H
#define LOGGERCONSOLEAPPENDER_H

#include "loggerabstractstringappender.h"

/**
 * @brief Writes each log line to standard error.
 *
 * Default format: "[%{type:-7}] <%{function}> %{message}\n".
 */
class VOCORE_EXPORT LoggerConsoleAppender : public LoggerAbstractStringAppender
{
public:
    LoggerConsoleAppender();

protected:
    void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line, const char* function,
                const QString& category, const QString& message) override;
};

#endif // LOGGERCONSOLEAPPENDER_H
