#include "vcsvmodelwriter.h"

#include <logger.h>

#include <QAbstractItemModel>
#include <QDate>
#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// Text is gathered in UTF-16 and encoded once per chunk: 512K characters, 1 MiB.
constexpr int ChunkChars = 512 * 1024;

/*
 * Collects CSV text in one preallocated UTF-16 buffer and hands it to the file
 * in large encoded chunks. Encoding per chunk rather than per field is what
 * keeps a million-row export fast; the bytes equal those of a QTextStream with
 * the locale's codec and no byte-order mark.
 */
class CsvChunkWriter {
public:
    CsvChunkWriter(QFile* file, QTextCodec* codec)
        : m_file(file)
        , m_codec(codec)
    {
        m_state.flags |= QTextCodec::IgnoreHeader;
        m_buffer.resize(ChunkChars);
        m_begin = reinterpret_cast<char16_t*>(m_buffer.data());
        m_pos = m_begin;
        m_end = m_begin + ChunkChars;
    }

    bool ok() const { return m_ok; }

    void appendChar(char16_t c)
    {
        if (reserve(1))
            *m_pos++ = c;
    }

    void appendQuoted(const QString& text)
    {
        const char16_t* src = reinterpret_cast<const char16_t*>(text.constData());
        appendChar(u'"');
        int from = 0;
        for (int quote = text.indexOf(QLatin1Char('"')); quote >= 0;
             quote = text.indexOf(QLatin1Char('"'), from)) {
            appendText(src + from, quote + 1 - from);
            appendChar(u'"');
            from = quote + 1;
        }
        appendText(src + from, text.size() - from);
        appendChar(u'"');
    }

    /// The same digits as QString::number(), without a temporary string.
    void appendQuoted(qulonglong value, bool negative)
    {
        char16_t text[24];
        char16_t* end = text + sizeof(text) / sizeof(text[0]);
        char16_t* p = end;
        do {
            *--p = char16_t(u'0' + value % 10);
            value /= 10;
        } while (value);
        if (negative)
            *--p = u'-';
        appendQuotedPlain(p, int(end - p));
    }

    /*
     * The text QVariant::toString() gives a double: Qt's shortest round-trip
     * digits, which std::to_chars picks alike. Only Qt's plain decimal form is
     * built here (the point at most three places left of the first digit and at
     * most five zeros after the last); zero, infinities, NaN and the exponent
     * form return false and are left to QVariant.
     */
    bool appendQuoted(double value)
    {
        if (value == 0 || !std::isfinite(value))
            return false;
        char scientific[32];
        char* const end = scientific + sizeof(scientific);
        const auto converted = std::to_chars(scientific, end, value, std::chars_format::scientific);
        if (converted.ec != std::errc())
            return false;
        const char* p = scientific;
        const bool negative = *p == '-';
        if (negative)
            ++p;
        char digits[24];
        int count = 0;
        for (; p < converted.ptr && *p != 'e'; ++p) {
            if (*p != '.' && count < int(sizeof(digits)))
                digits[count++] = *p;
        }
        if (p == converted.ptr)
            return false;
        ++p;
        if (*p == '+')
            ++p;
        int exponent = 0;
        if (std::from_chars(p, converted.ptr, exponent).ec != std::errc())
            return false;
        const int point = exponent + 1; // digits before the decimal point
        if (point < -3 || point > count + 5)
            return false;

        char16_t text[48];
        char16_t* out = text;
        if (negative)
            *out++ = u'-';
        if (point <= 0) {
            *out++ = u'0';
            *out++ = u'.';
            for (int i = point; i < 0; ++i)
                *out++ = u'0';
            for (int i = 0; i < count; ++i)
                *out++ = char16_t(digits[i]);
        } else {
            for (int i = 0; i < count || i < point; ++i) {
                if (i == point)
                    *out++ = u'.';
                *out++ = i < count ? char16_t(digits[i]) : u'0';
            }
        }
        appendQuotedPlain(text, int(out - text));
        return true;
    }

    /// ISO "yyyy-MM-dd" as QVariant::toString() gives it; other years are left to QVariant.
    bool appendQuoted(const QDate& date)
    {
        int year = 0;
        int month = 0;
        int day = 0;
        date.getDate(&year, &month, &day);
        if (!date.isValid() || year < 1 || year > 9999)
            return false;
        const char16_t text[10] = { char16_t(u'0' + year / 1000), char16_t(u'0' + year / 100 % 10),
            char16_t(u'0' + year / 10 % 10), char16_t(u'0' + year % 10), u'-', char16_t(u'0' + month / 10),
            char16_t(u'0' + month % 10), u'-', char16_t(u'0' + day / 10), char16_t(u'0' + day % 10) };
        appendQuotedPlain(text, 10);
        return true;
    }

    void appendQuoted(const QVariant& value)
    {
        switch (value.userType()) {
        case QMetaType::QString:
            // Read in place: no copy of the string, no reference count traffic.
            appendQuoted(*static_cast<const QString*>(value.constData()));
            break;
        case QMetaType::Int: {
            const int v = *static_cast<const int*>(value.constData());
            appendQuoted(v < 0 ? 0ULL - qulonglong(qlonglong(v)) : qulonglong(v), v < 0);
            break;
        }
        case QMetaType::UInt:
            appendQuoted(qulonglong(*static_cast<const uint*>(value.constData())), false);
            break;
        case QMetaType::LongLong: {
            const qlonglong v = *static_cast<const qlonglong*>(value.constData());
            appendQuoted(v < 0 ? 0ULL - qulonglong(v) : qulonglong(v), v < 0);
            break;
        }
        case QMetaType::ULongLong:
            appendQuoted(*static_cast<const qulonglong*>(value.constData()), false);
            break;
        case QMetaType::Double:
            if (!appendQuoted(*static_cast<const double*>(value.constData())))
                appendQuoted(value.toString());
            break;
        case QMetaType::QDate:
            if (!appendQuoted(*static_cast<const QDate*>(value.constData())))
                appendQuoted(value.toString());
            break;
        case QMetaType::UnknownType:
            appendChar(u'"');
            appendChar(u'"');
            break;
        default:
            appendQuoted(value.toString());
            break;
        }
    }

    /// Encodes and writes what has been gathered; false once the device has failed.
    bool flush()
    {
        if (!m_ok)
            return false;
        const int length = int(m_pos - m_begin);
        if (length == 0)
            return true;
        const QByteArray bytes
            = m_codec->fromUnicode(reinterpret_cast<const QChar*>(m_begin), length, &m_state);
        m_pos = m_begin;
        if (m_file->write(bytes) != bytes.size()) {
            m_ok = false;
            LOG_WARNING("Cannot write %s: %s", qUtf8Printable(m_file->fileName()),
                qUtf8Printable(m_file->errorString()));
        }
        return m_ok;
    }

private:
    // Copies through the buffer piece by piece, so that a huge value needs no huge buffer.
    void appendText(const char16_t* text, int length)
    {
        while (length > 0 && m_ok) {
            int count = int(std::min<qint64>(length, m_end - m_pos));
            // A surrogate pair stays in one chunk.
            if (count < length && count > 0 && QChar::isHighSurrogate(text[count - 1]))
                --count;
            if (count == 0) {
                flush();
                continue;
            }
            std::memcpy(m_pos, text, sizeof(char16_t) * size_t(count));
            m_pos += count;
            text += count;
            length -= count;
        }
    }

    // Short text known to hold no double quote.
    void appendQuotedPlain(const char16_t* text, int length)
    {
        if (!reserve(length + 2))
            return;
        *m_pos++ = u'"';
        std::memcpy(m_pos, text, sizeof(char16_t) * size_t(length));
        m_pos += length;
        *m_pos++ = u'"';
    }

    // Makes room for @p count characters, at most a few dozen.
    bool reserve(int count) { return m_end - m_pos >= count || flush(); }

    QFile* m_file;
    QTextCodec* m_codec;
    QTextCodec::ConverterState m_state;
    QString m_buffer;
    char16_t* m_begin = nullptr;
    char16_t* m_pos = nullptr;
    char16_t* m_end = nullptr;
    bool m_ok = true;
};

} // namespace

VCsvModelWriter::VCsvModelWriter(const QString& fileName, QObject* parent)
    : QObject(parent)
    , m_fileName(fileName)
{
}

VCsvModelWriter::~VCsvModelWriter() = default;

void VCsvModelWriter::setModel(const QAbstractItemModel* model)
{
    m_model = model;
}

void VCsvModelWriter::addColumn(const QString& title, int column, int role)
{
    QString text = title;
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    m_columns.append({ text, column, role });
}

bool VCsvModelWriter::write()
{
    QFile file(m_fileName);
    // No text-mode flag: lines end with a single "\n" on every platform.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        LOG_WARNING("Cannot open %s: %s", qUtf8Printable(m_fileName), qUtf8Printable(file.errorString()));
        return false;
    }

    QTextCodec* codec = QTextCodec::codecForLocale();
    if (!codec)
        codec = QTextCodec::codecForName("UTF-8");
    CsvChunkWriter out(&file, codec);

    const int columnCount = m_columns.size();
    const Column* columns = m_columns.constData();
    for (int c = 0; c < columnCount; ++c) {
        if (c > 0)
            out.appendChar(u',');
        out.appendQuoted(columns[c].title);
    }
    out.appendChar(u'\n');

    const QAbstractItemModel* model = m_model.data();
    const int rows = model ? model->rowCount() : 0;
    for (int row = 0; row < rows && out.ok(); ++row) {
        for (int c = 0; c < columnCount; ++c) {
            if (c > 0)
                out.appendChar(u',');
            const QModelIndex index = model->index(row, columns[c].column);
            if (index.isValid())
                out.appendQuoted(model->data(index, columns[c].role));
            else
                out.appendQuoted(QVariant());
        }
        out.appendChar(u'\n');
    }

    // QFileDevice::close() forgets a write error, so the device is asked before closing.
    const bool ok = out.flush() && file.flush() && file.error() == QFileDevice::NoError;
    if (!ok && out.ok())
        LOG_WARNING("Cannot write %s: %s", qUtf8Printable(m_fileName), qUtf8Printable(file.errorString()));
    file.close();
    return ok && file.error() == QFileDevice::NoError;
}
