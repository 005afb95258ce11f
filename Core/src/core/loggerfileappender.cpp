#include "loggerfileappender.h"

#include <cstdio>

LoggerFileAppender::LoggerFileAppender(const QString& fileName)
{
    setFileName(fileName);
}

LoggerFileAppender::~LoggerFileAppender() = default;

QString LoggerFileAppender::fileName() const
{
    QMutexLocker locker(&m_fileMutex);
    return m_file.fileName();
}

void LoggerFileAppender::setFileName(const QString& fileName)
{
    QMutexLocker locker(&m_fileMutex);
    if (m_file.isOpen())
        m_file.close();
    m_file.setFileName(fileName);
    m_failed = false;
}

void LoggerFileAppender::append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
                                const char* function, const QString& category, const QString& message)
{
    QMutexLocker locker(&m_fileMutex);
    if (m_failed || m_file.fileName().isEmpty())
        return;
    if (!m_file.isOpen() && !m_file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        // Reported once: logging the failure through the logger would recurse.
        m_failed = true;
        std::fprintf(stderr, "LoggerFileAppender: cannot open %s: %s\n", qPrintable(m_file.fileName()),
                     qPrintable(m_file.errorString()));
        return;
    }
    m_file.write(formattedString(time, level, file, line, function, category, message).toUtf8());
    m_file.flush();
}
