#include "vcsvmodelwriter.h"

#include <logger.h>

#include <QAbstractItemModel>
#include <QFile>
#include <QTextCodec>

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
        allocate(ChunkChars);
    }

    bool ok() const { return m_ok; }

    void appendChar(char16_t c)
    {
        if (reserve(1))
            *m_pos++ = c;
    }

    void appendQuoted(const QString& text)
    {
        const int length = text.size();
        const char16_t* src = reinterpret_cast<const char16_t*>(text.constData());
        int quote = text.indexOf(QLatin1Char('"'));
        if (quote < 0) {
            if (!reserve(length + 2))
                return;
            *m_pos++ = u'"';
            std::memcpy(m_pos, src, sizeof(char16_t) * size_t(length));
            m_pos += length;
            *m_pos++ = u'"';
            return;
        }
        // Worst case: every character a quote.
        if (!reserve(2 * length + 2))
            return;
        *m_pos++ = u'"';
        int from = 0;
        while (quote >= 0) {
            const int count = quote + 1 - from;
            std::memcpy(m_pos, src + from, sizeof(char16_t) * size_t(count));
            m_pos += count;
            *m_pos++ = u'"';
            from = quote + 1;
            quote = text.indexOf(QLatin1Char('"'), from);
        }
        std::memcpy(m_pos, src + from, sizeof(char16_t) * size_t(length - from));
        m_pos += length - from;
        *m_pos++ = u'"';
    }

    /// The same digits as QString::number(), without a temporary string.
    void appendQuoted(qulonglong value, bool negative)
    {
        char16_t digits[24];
        char16_t* end = digits + sizeof(digits) / sizeof(digits[0]);
        char16_t* p = end;
        do {
            *--p = char16_t(u'0' + value % 10);
            value /= 10;
        } while (value);
        if (negative)
            *--p = u'-';
        const int length = int(end - p);
        if (!reserve(length + 2))
            return;
        *m_pos++ = u'"';
        std::memcpy(m_pos, p, sizeof(char16_t) * size_t(length));
        m_pos += length;
        *m_pos++ = u'"';
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
    void allocate(int capacity)
    {
        m_buffer.resize(capacity);
        m_begin = reinterpret_cast<char16_t*>(m_buffer.data());
        m_pos = m_begin;
        m_end = m_begin + capacity;
    }

    // Makes room for @p count characters; flushes, and grows only for a field larger than a chunk.
    bool reserve(int count)
    {
        if (m_end - m_pos >= count)
            return true;
        if (!flush())
            return false;
        if (m_end - m_begin < count)
            allocate(count);
        return true;
    }

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
