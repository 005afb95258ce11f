#ifndef VROWFILTER_P_H
#define VROWFILTER_P_H

#include <QStringMatcher>
#include <QVariant>
#include <QVector>

class QAbstractItemModel;
class QModelIndex;

// Case-insensitive substring test of a cell value against a fixed pattern.
// The pattern is prepared once; a cell is tested without copying its text.
class VTextMatcher
{
public:
    void setPattern(const QString& pattern);
    const QString& pattern() const { return m_pattern; }
    bool isEmpty() const { return m_pattern.isEmpty(); }
    bool matches(const QVariant& value) const;

private:
    template <typename T>
    bool matchesInteger(const QVariant& value) const;

    QString m_pattern;
    QStringMatcher m_matcher;
};

// The row test shared by the flat and the tree proxy: one fixed string per
// registered column (AND), then an optional whole-row search.
class VRowFilter
{
public:
    void addColumn(int column);
    bool hasColumn(int column) const;
    QList<int> columns() const;
    /// Returns false when the pattern of the column did not change.
    bool setPattern(int column, const QString& pattern);
    QString pattern(int column) const;
    void clearPatterns();

    bool setSearch(const QString& text, bool exclude);
    const QString& searchText() const { return m_search.pattern(); }
    bool searchExcluded() const { return m_searchExclude; }

    bool matchesSearch(const QAbstractItemModel* model, int row, const QModelIndex& parent, int role) const;
    bool accepts(const QAbstractItemModel* model, int row, const QModelIndex& parent, int role) const;

private:
    struct ColumnFilter {
        int column;
        VTextMatcher matcher;
    };
    void rebuildActive();

    QVector<ColumnFilter> m_columns;
    QVector<int> m_active; // indexes of the filters with a pattern, so rows skip the empty ones
    VTextMatcher m_search;
    bool m_searchExclude = false;
};

#endif // VROWFILTER_P_H
