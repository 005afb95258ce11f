#include "vsortfilterproxymodel.h"

#include "vnaturalorder_p.h"
#include "vrowfilter_p.h"

VSortFilterProxyModel::VSortFilterProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_filter(new VRowFilter)
{
}

VSortFilterProxyModel::~VSortFilterProxyModel()
{
    delete m_filter;
}

void VSortFilterProxyModel::addFilterKeyColumn(int column)
{
    m_filter->addColumn(column);
}

QList<int> VSortFilterProxyModel::filterKeyColumns() const
{
    return m_filter->columns();
}

void VSortFilterProxyModel::addFilterFixedString(int column, const QString& pattern)
{
    m_filter->setPattern(column, pattern);
}

QString VSortFilterProxyModel::filterFixedString(int column) const
{
    return m_filter->pattern(column);
}

void VSortFilterProxyModel::clearFilterFixedStrings()
{
    m_filter->clearPatterns();
}

void VSortFilterProxyModel::setSearchString(const QString& text, bool exclude)
{
    if (!m_filter->setSearch(text, exclude))
        return;
    invalidateFilter();
    Q_EMIT searchStringChanged(text, exclude);
}

QString VSortFilterProxyModel::searchString() const
{
    return m_filter->searchExcluded() ? QString() : m_filter->searchText();
}

bool VSortFilterProxyModel::isSearchExcluded() const
{
    return m_filter->searchExcluded();
}

void VSortFilterProxyModel::invalidateFilter()
{
    // QSortFilterProxyModel::invalidateFilter() updates an existing mapping
    // row by row, which grows with the square of the rows; clearing the
    // mapping and building it again is one linear pass (plus the sort).
    invalidate();
}

QVariant VSortFilterProxyModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::InitialSortOrderRole)
        return VNaturalOrder::data(this, index);
    return QSortFilterProxyModel::data(index, role);
}

bool VSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (!m_filter->accepts(sourceModel(), sourceRow, sourceParent, filterRole()))
        return false;
    return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

bool VSortFilterProxyModel::rowMatchesSearch(int sourceRow, const QModelIndex& sourceParent) const
{
    return m_filter->matchesSearch(sourceModel(), sourceRow, sourceParent, filterRole());
}

bool VSortFilterProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    if (sortRole() == Qt::InitialSortOrderRole)
        return VNaturalOrder::lessThan(left, right);
    return QSortFilterProxyModel::lessThan(left, right);
}
