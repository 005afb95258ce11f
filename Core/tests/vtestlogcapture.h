#ifndef VTESTLOGCAPTURE_H
#define VTESTLOGCAPTURE_H

#include <logger.h>
#include <loggerabstractappender.h>

#include <QList>
#include <QMutex>
#include <QString>

/**
 * Records every message that reaches the process-wide logger while it lives,
 * so that tests can check what the library logged.
 */
class VTestLogCapture : public LoggerAbstractAppender {
public:
    struct Entry {
        Logger::LogLevel level;
        QString file;
        int line;
        QString function;
        QString message;
    };

    VTestLogCapture()
    {
        setDetailsLevel(Logger::Trace);
        cuteLoggerInstance()->registerAppender(this);
    }
    ~VTestLogCapture() override { cuteLoggerInstance()->removeAppender(this); }

    QList<Entry> entries() const
    {
        QMutexLocker locker(&m_mutex);
        return m_entries;
    }

    void clear()
    {
        QMutexLocker locker(&m_mutex);
        m_entries.clear();
    }

    /// The messages logged at @p level, in order.
    QStringList messages(Logger::LogLevel level) const
    {
        QStringList result;
        for (const Entry& e : entries()) {
            if (e.level == level)
                result << e.message;
        }
        return result;
    }

protected:
    void append(const QDateTime&, Logger::LogLevel level, const char* file, int line, const char* function,
        const QString&, const QString& message) override
    {
        QMutexLocker locker(&m_mutex);
        m_entries.append({ level, QString::fromUtf8(file), line, QString::fromUtf8(function), message });
    }

private:
    mutable QMutex m_mutex;
    QList<Entry> m_entries;
};

#endif // VTESTLOGCAPTURE_H
