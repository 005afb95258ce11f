#include "vheaderstate_p.h"

#include <QDataStream>
#include <QVector>

namespace {
// Far beyond any real header, small enough that no check below can overflow.
const int s_maxSections = 1 << 20;
const int s_maxSectionSize = 1 << 22;

class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : m_bytes(bytes)
        , m_stream(bytes)
    {
        // saveState() writes with the stream version of the Qt that ran it;
        // every field used here has the same encoding in all Qt 5 versions.
        m_stream.setVersion(QDataStream::Qt_5_0);
    }

    bool ok() const { return m_stream.status() == QDataStream::Ok; }
    bool atEnd() const { return m_stream.atEnd(); }
    qint64 remaining() const { return m_bytes.size() - m_stream.device()->pos(); }

    int readInt()
    {
        qint32 v = 0;
        m_stream >> v;
        return v;
    }

    bool readBool()
    {
        bool v = false;
        m_stream >> v;
        return v;
    }

    // A container count, refused when the bytes left cannot hold that many elements.
    bool readCount(int elementSize, int* count)
    {
        quint32 n = 0;
        m_stream >> n;
        if (!ok() || n > quint32(s_maxSections) || qint64(n) * elementSize > remaining())
            return false;
        *count = int(n);
        return true;
    }

    bool readIntVector(QVector<int>* v)
    {
        int n = 0;
        if (!readCount(4, &n))
            return false;
        v->resize(n);
        for (int i = 0; i < n; ++i)
            (*v)[i] = readInt();
        return ok();
    }

    bool skipBitArray(int* bits)
    {
        quint32 n = 0;
        m_stream >> n;
        if (!ok() || n > quint32(s_maxSections))
            return false;
        const int bytes = int((n + 7) / 8);
        if (bytes > remaining())
            return false;
        m_stream.skipRawData(bytes);
        *bits = int(n);
        return ok();
    }

private:
    const QByteArray& m_bytes;
    QDataStream m_stream;
};

bool isPermutation(const QVector<int>& v, int count)
{
    if (v.size() != count)
        return false;
    QVector<bool> seen(count, false);
    for (int x : v) {
        if (x < 0 || x >= count || seen.at(x))
            return false;
        seen[x] = true;
    }
    return true;
}
} // namespace

bool VHeaderState::isUsable(const QByteArray& state, Qt::Orientation orientation, int sectionCount)
{
    if (state.isEmpty() || sectionCount < 0 || sectionCount > s_maxSections)
        return false;
    Reader in(state);
    if (in.readInt() != 0xff || in.readInt() != 0) // version marker and version
        return false;
    if (in.readInt() != int(orientation))
        return false;
    const int sortOrder = in.readInt();
    const int sortSection = in.readInt();
    in.readBool(); // sort indicator shown
    if (!in.ok() || (sortOrder != Qt::AscendingOrder && sortOrder != Qt::DescendingOrder) || sortSection < -1
        || sortSection >= qMax(sectionCount, 1))
        return false;

    QVector<int> visualIndices, logicalIndices;
    if (!in.readIntVector(&visualIndices) || !in.readIntVector(&logicalIndices))
        return false;
    if (visualIndices.size() != logicalIndices.size())
        return false;
    if (!visualIndices.isEmpty()) {
        if (!isPermutation(visualIndices, sectionCount) || !isPermutation(logicalIndices, sectionCount))
            return false;
        for (int i = 0; i < sectionCount; ++i) {
            if (visualIndices.at(logicalIndices.at(i)) != i)
                return false;
        }
    }

    int hiddenBits = 0;
    if (!in.skipBitArray(&hiddenBits) || (hiddenBits != 0 && hiddenBits != sectionCount))
        return false;

    int hiddenSizes = 0;
    if (!in.readCount(8, &hiddenSizes))
        return false;
    for (int i = 0; i < hiddenSizes; ++i) {
        const int section = in.readInt();
        const int size = in.readInt();
        if (section < 0 || section >= sectionCount || size < 0 || size > s_maxSectionSize)
            return false;
    }

    const qint64 length = in.readInt();
    const int count = in.readInt();
    for (int i = 0; i < 5; ++i) // movable, clickable, highlighted, stretch last, cascading
        in.readBool();
    const int stretchSections = in.readInt();
    const int contentsSections = in.readInt();
    const int defaultSectionSize = in.readInt();
    const int minimumSectionSize = in.readInt();
    in.readInt(); // default alignment
    const int globalResizeMode = in.readInt();
    if (!in.ok() || count != sectionCount || length < 0 || stretchSections < 0
        || stretchSections > sectionCount || contentsSections < 0 || contentsSections > sectionCount
        || defaultSectionSize < 0 || defaultSectionSize > s_maxSectionSize || minimumSectionSize < -1
        || minimumSectionSize > s_maxSectionSize || globalResizeMode < 0 || globalResizeMode > 3)
        return false;

    int items = 0;
    if (!in.readCount(12, &items) || items != sectionCount)
        return false;
    qint64 total = 0;
    for (int i = 0; i < items; ++i) {
        const int size = in.readInt();
        // A span other than 1 makes Qt expand the item into that many sections.
        const int span = in.readInt();
        const int resizeMode = in.readInt();
        if (size < 0 || size > s_maxSectionSize || span != 1 || resizeMode < 0 || resizeMode > 3)
            return false;
        total += size;
    }
    if (!in.ok() || total != length)
        return false;

    // Fields added in later Qt 5 releases: resize contents precision,
    // custom default section size and last section size. Each is optional.
    if (!in.atEnd()) {
        in.readInt();
        if (!in.atEnd())
            in.readBool();
        if (!in.atEnd())
            in.readInt();
    }
    return in.ok() && in.atEnd();
}
