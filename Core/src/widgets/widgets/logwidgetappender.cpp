#include "logwidgetappender.h"

LogWidgetAppender::LogWidgetAppender(QObject* parent)
    : QObject(parent)
{
    setFormat(QStringLiteral("%{Type:-5} %{time}{HH:mm:ss.zzz} %{message}"));
}

void LogWidgetAppender::append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
    const char* function, const QString& category, const QString& message)
{
    emit logMessage(formattedString(time, level, file, line, function, category, message), int(level));
}
