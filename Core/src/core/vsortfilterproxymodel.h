#ifndef VSORTFILTERPROXYMODEL_H
#define VSORTFILTERPROXYMODEL_H

#include "vocore_export.h"

#include <QSortFilterProxyModel>

class VRowFilter;

/**
 * @brief A sort/filter proxy that filters by several columns at once.
 *
 * Each registered column has one fixed-string filter, matched
 * case-insensitively (Unicode case folding) as a substring of the cell's
 * text in filterRole(); all non-empty filters must match (AND), an empty
 * pattern restricts nothing. On top of that a whole-row search keeps the rows
 * in which any column contains a text, or in exclude mode hides them.
 *
 * Column filters are applied by invalidateFilter(), which is public here and
 * rebuilds the mapping in one pass, so changing a filter on a million
 * filtered rows costs about as much as filtering them afresh:
 * @code
 * auto proxy = new VSortFilterProxyModel(this);
 * proxy->setSourceModel(orders);
 * proxy->addFilterKeyColumn(2);
 * proxy->addFilterFixedString(2, "berlin");
 * proxy->invalidateFilter();
 * @endcode
 *
 * Sorting by Qt::InitialSortOrderRole orders rows in their natural order:
 * a source that does not answer that role is ordered by source row.
 */
class VOCORE_EXPORT VSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit VSortFilterProxyModel(QObject* parent = nullptr);
    ~VSortFilterProxyModel() override;

    /// Registers a source column as filterable.
    void addFilterKeyColumn(int column);
    /// The registered columns, in registration order.
    QList<int> filterKeyColumns() const;
    /**
     * Sets (replaces) the fixed-string filter of a column, registering the
     * column if needed. Takes effect at the next invalidateFilter().
     */
    void addFilterFixedString(int column, const QString& pattern);
    QString filterFixedString(int column) const;
    /// Empties every column filter; takes effect at the next invalidateFilter().
    void clearFilterFixedStrings();

    /**
     * Keeps only the rows in which any column contains @p text, or with
     * @p exclude hides them. Re-filters at once; an empty text ends the search.
     */
    void setSearchString(const QString& text, bool exclude = false);
    /// The include-mode search text (the text that cells highlight); empty otherwise.
    QString searchString() const;
    bool isSearchExcluded() const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

public Q_SLOTS:
    /// Re-applies every filter by rebuilding the mapping (never Qt's row-by-row update).
    void invalidateFilter();

Q_SIGNALS:
    void searchStringChanged(const QString& text, bool exclude);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    /// Whether any column of the source row contains the search text (false without a search).
    bool rowMatchesSearch(int sourceRow, const QModelIndex& sourceParent) const;

private:
    VRowFilter* m_filter;
};

#endif // VSORTFILTERPROXYMODEL_H
