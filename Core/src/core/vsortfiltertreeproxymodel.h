#ifndef VSORTFILTERTREEPROXYMODEL_H
#define VSORTFILTERTREEPROXYMODEL_H

#include "vsortfilterproxymodel.h"

/**
 * @brief The tree counterpart of VSortFilterProxyModel.
 *
 * The same column filters and whole-row search, for tree models: a row is
 * shown when it or any of its descendants matches, so the path to every
 * match stays visible. In exclude mode a matching row is hidden together
 * with its subtree.
 * @code
 * auto proxy = new VSortFilterTreeProxyModel(this);
 * proxy->setSourceModel(customersAndOrders);
 * proxy->setSearchString("mueller");
 * @endcode
 */
class VOCORE_EXPORT VSortFilterTreeProxyModel : public VSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit VSortFilterTreeProxyModel(QObject* parent = nullptr);
    ~VSortFilterTreeProxyModel() override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
};

#endif // VSORTFILTERTREEPROXYMODEL_H
