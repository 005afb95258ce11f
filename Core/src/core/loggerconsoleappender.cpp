#include "loggerconsoleappender.h"

#include <cstdio>

LoggerConsoleAppender::LoggerConsoleAppender()
{
    setFormat(QStringLiteral("[%{type:-7}] <%{function}> %{message}\n"));
}

void LoggerConsoleAppender::append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
                                   const char* function, const QString& category, const QString& message)
{
    const QByteArray text = formattedString(time, level, file, line, function, category, message).toLocal8Bit();
    std::fwrite(text.constData(), 1, size_t(text.size()), stderr);
    std::fflush(stderr);
}
