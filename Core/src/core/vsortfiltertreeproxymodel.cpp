#include "vsortfiltertreeproxymodel.h"

VSortFilterTreeProxyModel::VSortFilterTreeProxyModel(QObject* parent)
    : VSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
}

VSortFilterTreeProxyModel::~VSortFilterTreeProxyModel() = default;

bool VSortFilterTreeProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (!VSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent))
        return false;
    if (!isSearchExcluded())
        return true;
    // Recursive filtering would bring back an excluded row for the sake of a
    // child that does not match; an excluded ancestor hides the whole subtree.
    for (QModelIndex ancestor = sourceParent; ancestor.isValid(); ancestor = ancestor.parent()) {
        if (rowMatchesSearch(ancestor.row(), ancestor.parent()))
            return false;
    }
    return true;
}
