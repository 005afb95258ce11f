#ifndef LOGWIDGETAPPENDER_H
#define LOGWIDGETAPPENDER_H

#include "veitikgip_export.h"

#include <loggerabstractstringappender.h>

#include <QObject>

/**
 * @brief A log appender that hands each message on as a signal.
 *
 * Every message that reaches it is formatted as
 * "%{Type:-5} %{time}{HH:mm:ss.zzz} %{message}" and emitted through
 * logMessage(). The signal is emitted on the thread that logged; connected
 * with the default connection type, a receiver in the GUI thread gets
 * messages from other threads through its event loop. VLoggerWidget uses it
 * to show the process-wide log.
 * @code
 * auto* appender = new LogWidgetAppender(this);
 * connect(appender, &LogWidgetAppender::logMessage, this, &StatusPane::showLine);
 * cuteLoggerInstance()->registerAppender(appender);
 * // ... and before the appender goes away:
 * cuteLoggerInstance()->removeAppender(appender);
 * @endcode
 */
class VEITIKGIP_EXPORT LogWidgetAppender : public QObject, public LoggerAbstractStringAppender {
    Q_OBJECT
public:
    explicit LogWidgetAppender(QObject* parent = nullptr);

signals:
    /// One formatted line and the level (Logger::LogLevel) it was logged with.
    void logMessage(const QString& line, int level);

protected:
    void append(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
        const char* function, const QString& category, const QString& message) override;
};

#endif // LOGWIDGETAPPENDER_H
