#ifndef LOGGERFILEAPPENDER_H
#define LOGGERFILEAPPENDER_H

#include "loggerabstractstringappender.h"

#include <QFile>

/**
 * @brief Appends each log line to a text file (UTF-8).
 *
 * The file is opened on the first message and flushed after every line, so
 * that nothing is lost when the process dies. A file that cannot be opened is
 * reported once on standard error; its messages are dropped.
 * @code
 * LoggerFileAppender file(QDir::home().filePath("app.log"));
 * cuteLoggerInstance()->registerAppender(&file);
 * @endcode
 */
class VOCORE_EXPORT LoggerFileAppender : public LoggerAbstractStringAppender
{
public:
    explicit LoggerFileAppender(const QString& fileName = QString());
    ~LoggerFileAppender() override;

    QString fileName() const;
    void setFileName(const QString& fileName);

protected:
    void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line, const char* function,
                const QString& category, const QString& message) override;

private:
    mutable QMutex m_fileMutex;
    QFile m_file;
    bool m_failed = false;
};

#endif // LOGGERFILEAPPENDER_H
