#include "loggerabstractstringappender.h"

#include <QCoreApplication>
#include <QThread>

#include <cctype>
#include <cstring>

namespace {
enum Kind {
    Literal,
    Time,
    Type,
    TypeUpper,
    TypeOne,
    TypeOneUpper,
    FilePath,
    FileName,
    Line,
    FunctionFull,
    FunctionName,
    Category,
    Message,
    AppName,
    Pid,
    ThreadId
};

struct Placeholder {
    const char* name;
    Kind kind;
};

const Placeholder s_placeholders[] = {
    {"time", Time},         {"type", Type},         {"Type", TypeUpper},        {"typeOne", TypeOne},
    {"TypeOne", TypeOneUpper}, {"File", FilePath},  {"file", FileName},         {"line", Line},
    {"Function", FunctionFull}, {"function", FunctionName}, {"category", Category}, {"message", Message},
    {"appname", AppName},   {"pid", Pid},           {"threadid", ThreadId},
};

const QString s_defaultTimeFormat = QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz");

// "operator" as a whole word, not the start of "operatorName".
bool isOperatorKeyword(const QByteArray& sig, int i)
{
    auto isIdentifier = [](char c) { return std::isalnum(uchar(c)) || c == '_'; };
    return sig.mid(i, 8) == "operator" && (i == 0 || !isIdentifier(sig.at(i - 1)))
        && (i + 8 >= sig.size() || !isIdentifier(sig.at(i + 8)));
}

QString fileNameOf(const char* file)
{
    const QString path = QString::fromUtf8(file ? file : "");
    const int sep = qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return sep < 0 ? path : path.mid(sep + 1);
}
} // namespace

LoggerAbstractStringAppender::LoggerAbstractStringAppender()
{
    setFormat(defaultFormat());
}

LoggerAbstractStringAppender::~LoggerAbstractStringAppender() = default;

QString LoggerAbstractStringAppender::defaultFormat()
{
    return QStringLiteral("%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n");
}

void LoggerAbstractStringAppender::setFormat(const QString& format)
{
    QVector<Token> tokens = parse(format);
    QWriteLocker locker(&m_formatLock);
    m_format = format;
    m_tokens.swap(tokens);
}

QString LoggerAbstractStringAppender::format() const
{
    QReadLocker locker(&m_formatLock);
    return m_format;
}

QVector<LoggerAbstractStringAppender::Token> LoggerAbstractStringAppender::parse(const QString& format)
{
    QVector<Token> tokens;
    QString literal;
    auto flushLiteral = [&] {
        if (literal.isEmpty())
            return;
        Token t;
        t.kind = Literal;
        t.text = literal;
        tokens.append(t);
        literal.clear();
    };

    const int n = format.size();
    int i = 0;
    while (i < n) {
        const QChar c = format.at(i);
        if (c != QLatin1Char('%') || i + 1 >= n) {
            literal += c;
            ++i;
            continue;
        }
        if (format.at(i + 1) == QLatin1Char('%')) {
            literal += QLatin1Char('%');
            i += 2;
            continue;
        }
        const int close = format.at(i + 1) == QLatin1Char('{') ? format.indexOf(QLatin1Char('}'), i + 2) : -1;
        if (close < 0) {
            literal += c;
            ++i;
            continue;
        }
        QString name = format.mid(i + 2, close - i - 2);
        int width = 0;
        const int colon = name.indexOf(QLatin1Char(':'));
        bool widthOk = true;
        if (colon >= 0) {
            width = name.mid(colon + 1).toInt(&widthOk);
            name.truncate(colon);
        }
        const Placeholder* found = nullptr;
        for (const Placeholder& p : s_placeholders) {
            if (name == QLatin1String(p.name)) {
                found = &p;
                break;
            }
        }
        if (!found || !widthOk) {
            // Unknown placeholders are kept as written, so a typo shows in the output.
            literal += format.mid(i, close - i + 1);
            i = close + 1;
            continue;
        }
        flushLiteral();
        Token t;
        t.kind = found->kind;
        t.width = width;
        i = close + 1;
        if (t.kind == Time) {
            t.text = s_defaultTimeFormat;
            if (i < n && format.at(i) == QLatin1Char('{')) {
                const int end = format.indexOf(QLatin1Char('}'), i + 1);
                if (end >= 0) {
                    t.text = format.mid(i + 1, end - i - 1);
                    i = end + 1;
                }
            }
        }
        tokens.append(t);
    }
    flushLiteral();
    return tokens;
}

QString LoggerAbstractStringAppender::formattedString(const QDateTime& time, Logger::LogLevel level,
                                                      const char* file, int line, const char* function,
                                                      const QString& category, const QString& message) const
{
    QReadLocker locker(&m_formatLock);
    QString result;
    result.reserve(m_format.size() + message.size() + 64);
    const QString levelName = Logger::levelToString(level);
    for (const Token& t : m_tokens) {
        QString value;
        switch (t.kind) {
        case Literal:
            result += t.text;
            continue;
        case Time:
            value = time.toString(t.text);
            break;
        case Type:
            value = levelName;
            break;
        case TypeUpper:
            value = levelName.toUpper();
            break;
        case TypeOne:
            value = levelName.left(1).toLower();
            break;
        case TypeOneUpper:
            value = levelName.left(1).toUpper();
            break;
        case FilePath:
            value = QString::fromUtf8(file ? file : "");
            break;
        case FileName:
            value = fileNameOf(file);
            break;
        case Line:
            value = QString::number(line);
            break;
        case FunctionFull:
            value = QString::fromUtf8(function ? function : "");
            break;
        case FunctionName:
            value = stripFunctionName(function);
            break;
        case Category:
            value = category;
            break;
        case Message:
            value = message;
            break;
        case AppName:
            value = QCoreApplication::applicationName();
            break;
        case Pid:
            value = QString::number(QCoreApplication::applicationPid());
            break;
        case ThreadId:
            value = QStringLiteral("0x") + QString::number(quintptr(QThread::currentThreadId()), 16);
            break;
        }
        if (t.width != 0)
            result += QStringLiteral("%1").arg(value, t.width);
        else
            result += value;
    }
    return result;
}

QString LoggerAbstractStringAppender::stripFunctionName(const char* function)
{
    if (!function)
        return QString();
    const QByteArray sig(function);
    const int n = sig.size();
    // Find the parenthesis that opens the parameter list: the first '(' at
    // template depth 0. The symbols of an operator's name ("operator<",
    // "operator()", "operator->") are neither brackets nor that parenthesis,
    // and clang's "(anonymous namespace)" is part of a name.
    int depth = 0;
    int open = -1;
    int operatorStart = -1;
    for (int i = 0; i < n && open < 0; ++i) {
        const char c = sig.at(i);
        if (c == 'o' && isOperatorKeyword(sig, i)) {
            if (depth == 0)
                operatorStart = i;
            int j = i + 8;
            while (j < n && sig.at(j) == ' ')
                ++j;
            if (sig.mid(j, 2) == "()")
                j += 2;
            else
                while (j < n && std::strchr("+-*/%^&|~!=<>,[]", sig.at(j)))
                    ++j;
            i = j - 1;
        } else if (c == '<') {
            ++depth;
        } else if (c == '>' && depth > 0) {
            --depth;
        } else if (c == '(' && depth == 0) {
            if (sig.mid(i + 1, 9) == "anonymous") {
                const int close = sig.indexOf(')', i);
                if (close > 0) {
                    i = close;
                    continue;
                }
            }
            open = i;
        }
    }
    const int end = open < 0 ? n : open;
    // The name is the last word before the parameter list (or before the
    // operator keyword), skipping spaces inside template arguments and
    // "(anonymous namespace)".
    depth = 0;
    int start = 0;
    for (int i = (operatorStart >= 0 ? operatorStart : end) - 1; i >= 0; --i) {
        const char c = sig.at(i);
        if (c == '>' || c == ')')
            ++depth;
        else if ((c == '<' || c == '(') && depth > 0)
            --depth;
        else if ((c == ' ' || c == '*' || c == '&') && depth == 0) {
            start = i + 1;
            break;
        }
    }
    return QString::fromUtf8(sig.mid(start, end - start).trimmed());
}
