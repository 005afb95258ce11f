#ifndef VALUESORTPROXYMODEL_H
#define VALUESORTPROXYMODEL_H

#include <vsortfilterproxymodel.h>

/**
 * @brief A VSortFilterProxyModel that sorts formatted columns by their values.
 *
 * Over a FormatModel the display role holds text ("1,299.99", "5 %"), which
 * would sort as text. While the sort role is the display role, rows are
 * ordered by the edit role (the raw value) instead: numbers as numbers, text
 * as text. Natural order (Qt::InitialSortOrderRole) and filtering are those
 * of VSortFilterProxyModel.
 */
class ValueSortProxyModel : public VSortFilterProxyModel {
    Q_OBJECT
public:
    explicit ValueSortProxyModel(QObject* parent = nullptr);

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
};

#endif // VALUESORTPROXYMODEL_H
