#include "vrowfilter_p.h"

#include <QAbstractItemModel>

namespace {
// Decimal digits of an integer into a stack buffer, so numeric cells need no heap.
template <typename T>
int formatInteger(T value, QChar* end)
{
    const bool negative = value < 0;
    using U = std::make_unsigned_t<T>;
    U magnitude = negative ? U(0) - U(value) : U(value);
    QChar* p = end;
    do {
        *--p = QLatin1Char(char('0' + magnitude % 10));
        magnitude /= 10;
    } while (magnitude);
    if (negative)
        *--p = QLatin1Char('-');
    return int(end - p);
}
} // namespace

void VTextMatcher::setPattern(const QString& pattern)
{
    m_pattern = pattern;
    m_matcher.setPattern(pattern);
    m_matcher.setCaseSensitivity(Qt::CaseInsensitive);
}

template <typename T>
bool VTextMatcher::matchesInteger(const QVariant& value) const
{
    QChar buffer[24];
    QChar* const end = buffer + 24;
    const int n = formatInteger(*static_cast<const T*>(value.constData()), end);
    return m_matcher.indexIn(end - n, n) >= 0;
}

bool VTextMatcher::matches(const QVariant& value) const
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return false;
    case QMetaType::QString: {
        const QString* text = static_cast<const QString*>(value.constData());
        return m_matcher.indexIn(text->constData(), text->size()) >= 0;
    }
    case QMetaType::Int:
        return matchesInteger<int>(value);
    case QMetaType::UInt:
        return matchesInteger<uint>(value);
    case QMetaType::LongLong:
        return matchesInteger<qlonglong>(value);
    case QMetaType::ULongLong:
        return matchesInteger<qulonglong>(value);
    default:
        return m_matcher.indexIn(value.toString()) >= 0;
    }
}

void VRowFilter::addColumn(int column)
{
    if (column < 0 || hasColumn(column))
        return;
    ColumnFilter filter;
    filter.column = column;
    m_columns.append(filter);
    rebuildActive();
}

bool VRowFilter::hasColumn(int column) const
{
    for (const ColumnFilter& f : m_columns) {
        if (f.column == column)
            return true;
    }
    return false;
}

QList<int> VRowFilter::columns() const
{
    QList<int> result;
    for (const ColumnFilter& f : m_columns)
        result.append(f.column);
    return result;
}

bool VRowFilter::setPattern(int column, const QString& pattern)
{
    if (column < 0)
        return false;
    addColumn(column);
    for (ColumnFilter& f : m_columns) {
        if (f.column != column)
            continue;
        if (f.matcher.pattern() == pattern)
            return false;
        f.matcher.setPattern(pattern);
        break;
    }
    rebuildActive();
    return true;
}

QString VRowFilter::pattern(int column) const
{
    for (const ColumnFilter& f : m_columns) {
        if (f.column == column)
            return f.matcher.pattern();
    }
    return QString();
}

void VRowFilter::clearPatterns()
{
    for (ColumnFilter& f : m_columns)
        f.matcher.setPattern(QString());
    rebuildActive();
}

bool VRowFilter::setSearch(const QString& text, bool exclude)
{
    if (text == m_search.pattern() && exclude == m_searchExclude)
        return false;
    m_search.setPattern(text);
    m_searchExclude = exclude;
    return true;
}

void VRowFilter::rebuildActive()
{
    m_active.clear();
    for (int i = 0; i < m_columns.size(); ++i) {
        if (!m_columns.at(i).matcher.isEmpty())
            m_active.append(i);
    }
}

bool VRowFilter::accepts(const QAbstractItemModel* model, int row, const QModelIndex& parent, int role) const
{
    if (m_active.isEmpty() && m_search.isEmpty())
        return true;
    const int columnCount = model->columnCount(parent);
    for (int i : m_active) {
        const ColumnFilter& f = m_columns.at(i);
        if (f.column >= columnCount)
            continue;
        if (!f.matcher.matches(model->index(row, f.column, parent).data(role)))
            return false;
    }
    if (m_search.isEmpty())
        return true;
    return matchesSearch(model, row, parent, role) != m_searchExclude;
}

bool VRowFilter::matchesSearch(const QAbstractItemModel* model, int row, const QModelIndex& parent,
                               int role) const
{
    if (m_search.isEmpty())
        return false;
    const int columnCount = model->columnCount(parent);
    for (int column = 0; column < columnCount; ++column) {
        if (m_search.matches(model->index(row, column, parent).data(role)))
            return true;
    }
    return false;
}
