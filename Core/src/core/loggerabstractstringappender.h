#ifndef LOGGERABSTRACTSTRINGAPPENDER_H
#define LOGGERABSTRACTSTRINGAPPENDER_H

#include "loggerabstractappender.h"

#include <QReadWriteLock>
#include <QVector>

/**
 * @brief Base of appenders that turn each message into a line of text.
 *
 * The line format is a pattern with placeholders:
 * `%{time}` (optionally followed by a QDateTime format in braces,
 * `%{time}{HH:mm:ss.zzz}`), `%{type}` (Trace, Debug, ...), `%{Type}` (upper
 * case), `%{typeOne}`/`%{TypeOne}` (first letter), `%{File}` (path),
 * `%{file}` (file name), `%{line}`, `%{Function}` (full signature),
 * `%{function}` (bare name), `%{category}`, `%{message}`, `%{appname}`,
 * `%{pid}`, `%{threadid}` and `%%`. A width after a colon pads a field,
 * negative for left alignment: `%{type:-7}`. The pattern is parsed once when
 * it is set, not per message.
 */
class VOCORE_EXPORT LoggerAbstractStringAppender : public LoggerAbstractAppender
{
public:
    LoggerAbstractStringAppender();
    ~LoggerAbstractStringAppender() override;

    /// "%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n"
    static QString defaultFormat();

    void setFormat(const QString& format);
    QString format() const;

    QString formattedString(const QDateTime& time, Logger::LogLevel level, const char* file, int line,
                            const char* function, const QString& category, const QString& message) const;

    /// The bare function name of a compiler signature: "void A::f(int) const" gives "A::f".
    static QString stripFunctionName(const char* function);

private:
    struct Token {
        int kind = 0;
        int width = 0;
        QString text; // literal text or date-time format
    };
    static QVector<Token> parse(const QString& format);

    mutable QReadWriteLock m_formatLock;
    QString m_format;
    QVector<Token> m_tokens;
};

#endif // LOGGERABSTRACTSTRINGAPPENDER_H
