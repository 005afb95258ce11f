#include "valuesortproxymodel.h"

namespace {

bool isNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

} // namespace

ValueSortProxyModel::ValueSortProxyModel(QObject* parent)
    : VSortFilterProxyModel(parent)
{
}

bool ValueSortProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    if (sortRole() != Qt::DisplayRole)
        return VSortFilterProxyModel::lessThan(left, right);
    const QVariant a = left.data(Qt::EditRole);
    const QVariant b = right.data(Qt::EditRole);
    // Empty cells (an order not shipped yet) come first, as empty text would.
    if (a.isNull() || b.isNull())
        return a.isNull() && !b.isNull();
    if (isNumber(a) && isNumber(b))
        return a.toDouble() < b.toDouble();
    const QString x = a.toString();
    const QString y = b.toString();
    if (isSortLocaleAware())
        return x.localeAwareCompare(y) < 0;
    return x.compare(y, sortCaseSensitivity()) < 0;
}
